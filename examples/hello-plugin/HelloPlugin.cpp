#include "HelloPlugin.h"

#include "Change.h"
#include "Startup.h"

#include <QAction>
#include <QCoreApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QThread>

namespace {

// The name under which Change finds plugins/HelloPlugin/HelloPlugin_<lang>.lang.
const QString kPlugin = QStringLiteral("HelloPlugin");

// The text of id in the current language; the id itself when the language file lacks it, so that
// a missing file shows instead of hiding behind built-in English.
QString text(const char *id)
{
    const QString translated = Change::tr(QLatin1String(id), kPlugin);
    return translated.isEmpty() ? QLatin1String(id) : translated;
}

QMainWindow *mainWindow()
{
    IMainFrameUIService *pFrame = Startup::GetMainFrameService();
    return qobject_cast<QMainWindow *>(pFrame ? pFrame->GetMainWindow() : nullptr);
}

} // namespace

HelloPlugin::~HelloPlugin()
{
    // The menu calls into this library; it must not outlive it.
    delete m_pMenu;
}

bool HelloPlugin::Initialize()
{
    qDebug("HelloPlugin: Initialize");
    // Widgets belong to the user-interface thread. The container initialises the start-up plugins
    // there; a plugin first asked for from another thread moves there and adds its menu later.
    QCoreApplication *pApp = QCoreApplication::instance();
    if (pApp && QThread::currentThread() != pApp->thread()) {
        moveToThread(pApp->thread());
        QMetaObject::invokeMethod(this, &HelloPlugin::addMenu, Qt::QueuedConnection);
        return true;
    }
    addMenu();
    return true;
}

void HelloPlugin::addMenu()
{
    if (m_pMenu)
        return;
    QMainWindow *pWindow = mainWindow();
    if (!pWindow) {
        qDebug("HelloPlugin: no main window to add a menu to");
        return;
    }
    m_pMenu = pWindow->menuBar()->addMenu(text("IDS_HELLO_MENU"));
    m_pMenu->setObjectName(QStringLiteral("HelloPlugin_Menu"));
    QAction *pEntry = m_pMenu->addAction(text("IDS_HELLO_ENTRY"));
    connect(pEntry, &QAction::triggered, this, &HelloPlugin::sayHello);
    qDebug("HelloPlugin: menu entry \"%s\" added", qUtf8Printable(pEntry->text()));
}

void HelloPlugin::sayHello()
{
    QMessageBox::information(mainWindow(), text("IDS_HELLO_TITLE"), text("IDS_HELLO_TEXT"));
}

void HelloPlugin::Release()
{
    qDebug("HelloPlugin: Release");
    delete m_pMenu;
}

bool HelloPlugin::QueryInterface(int iInterfaceNumber, QObject **ppInterface)
{
    if (!ppInterface)
        return false;
    *ppInterface = iInterfaceNumber == LD_INTERFACE_ROOT ? this : nullptr;
    return *ppInterface != nullptr;
}
