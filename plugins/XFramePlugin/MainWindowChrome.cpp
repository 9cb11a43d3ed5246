#include "MainWindowChrome.h"

#include "Change.h"
#include "CommonUtils.h"
#include "IPluginContainer.h"
#include "PluginInterfaces.h"
#include "Startup.h"

#include <QAction>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QCoreApplication>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QToolBar>

namespace {

const QString kPlugin = QStringLiteral("XFramePlugin");
const QString kMenuFile = QStringLiteral("MainMenu.xml");
const QString kToolBarFile = QStringLiteral("/plugins/XFramePlugin/ToolBar.xml");
const QString kTrayIcon = QStringLiteral("/plugins/XFramePlugin/images/tray.png");

enum ToolButtonId { TB_DETECT = 1, TB_CALL = 2, TB_ABOUT = 3, TB_SEARCH = 4 };
// Detection reports within a few seconds; the button stays off meanwhile.
constexpr int kDetectBusyMs = 3000;

// The translated text, or the fallback where the language file has none.
QString text(const QString &id, const QString &fallback = QString())
{
    const QString translated = Change::tr(id, kPlugin);
    return translated.isEmpty() ? fallback : translated;
}

// The plugin's object for an interface number, asked by plugin name.
QObject *pluginInterface(const QString &name, int interfaceNumber)
{
    IPluginContainer *pContainer = Startup::GetPluginContainer();
    if (!pContainer)
        return nullptr;
    const QString clsid = pContainer->GetClsidByName(name);
    return clsid.isEmpty() ? nullptr : pContainer->GetPlugin(clsid, interfaceNumber);
}

} // namespace

MainWindowChrome::MainWindowChrome(QMainWindow *pWindow)
    : QObject(pWindow)
    , m_pWindow(pWindow)
{}

MainWindowChrome::~MainWindowChrome()
{
    if (m_pToolBarWidget)
        ToolBarLogic::DestroyToolButtonGroup(m_toolItems, &m_pButtonGroup);
    // A search box that is not shown has no owner but us.
    if (m_pSearchLayout && !m_pSearchLayout->parent()) {
        delete m_pSearchLayout;
        if (!m_pSearchEdit->parent())
            delete m_pSearchEdit;
        if (!m_pSearchIcon->parent())
            delete m_pSearchIcon;
    }
}

void MainWindowChrome::build()
{
    buildMenus();
    buildToolBar();
    connectActions();
}

void MainWindowChrome::buildMenus()
{
    MENU::QBuildMenu builder(kPlugin, kMenuFile);
    // The bar shows the popups of "MainMenu" as its menus.
    if (QMenu *pBar = builder.CreateMenuBar(QStringLiteral("MainMenu"), m_pWindow, &m_actions))
        m_pWindow->menuBar()->addActions(pBar->actions());
    buildTray(builder.CreateMenuBar(QStringLiteral("Tray"), m_pWindow, &m_actions));

    for (const MENU::QActionInfo &info : qAsConst(m_actions))
        info.action->setText(text(info.textId, info.action->text()));
}

void MainWindowChrome::buildTray(QMenu *pTrayMenu)
{
    if (!pTrayMenu || !QSystemTrayIcon::isSystemTrayAvailable())
        return;
    m_pTray = new QSystemTrayIcon(QIcon(CommonUtils::GetPluginLibraryPath() + kTrayIcon), this);
    m_pTray->setToolTip(text(QStringLiteral("IDS_APP_TITLE")));
    m_pTray->setContextMenu(pTrayMenu);
    m_pTray->show();
}

void MainWindowChrome::buildToolBar()
{
    bool bGroupInGroup = false;
    if (!ToolBarLogic::GetXmlData(CommonUtils::GetPluginLibraryPath() + kToolBarFile, m_toolItems,
                                  bGroupInGroup, QString()))
        return;
    m_pToolBar = new QToolBar(m_pWindow);
    m_pToolBar->setMovable(false);
    m_pToolBar->setObjectName(QStringLiteral("XFramePlugin_ToolBar"));
    m_pToolBarWidget = new QWidget(m_pToolBar);
    m_pToolBarWidget->setObjectName(ToolBarLogic::GetObjectName(kPlugin));
    if (!ToolBarLogic::CreateToolBar(kPlugin, m_pToolBarWidget, m_toolItems, &m_pButtonGroup,
                                     &m_pSearchLayout, &m_pSearchEdit, &m_pSearchIcon)) {
        delete m_pToolBar;
        m_pToolBar = nullptr;
        return;
    }
    m_pToolBar->addWidget(m_pToolBarWidget);
    m_pWindow->addToolBar(Qt::TopToolBarArea, m_pToolBar);
    if (m_pWindow->layoutDirection() == Qt::RightToLeft)
        ToolBarLogic::ChangeToolBarIconDirection(kPlugin, m_toolItems, true, &m_pSearchIcon);

    connect(m_pButtonGroup, &QButtonGroup::idClicked, this, &MainWindowChrome::onToolButton);
    m_pSearchEdit->setPlaceholderText(text(QStringLiteral("IDS_SEARCH_PLACEHOLDER")));
    connect(m_pSearchEdit, &QLineEdit::textChanged, this, &MainWindowChrome::filterPluginList);
    connect(m_pSearchEdit, &SearchLineEdit::controlF, m_pSearchEdit, &QLineEdit::selectAll);
    connect(m_pSearchEdit, &SearchLineEdit::controlN, m_pSearchEdit, &QLineEdit::clear);
    // The window refills its list as plugins come and go; keep the filter applied.
    if (auto *pList =
            m_pWindow->findChild<QListWidget *>(QStringLiteral("XFramePlugin_PluginList")))
        connect(pList->model(), &QAbstractItemModel::rowsInserted, this,
                &MainWindowChrome::filterPluginList);
}

void MainWindowChrome::connectAction(const QString &textId, void (MainWindowChrome::*slot)())
{
    for (const MENU::QActionInfo &info : qAsConst(m_actions)) {
        if (info.textId == textId)
            connect(info.action, &QAction::triggered, this, slot);
    }
}

void MainWindowChrome::connectActions()
{
    connectAction(QStringLiteral("IDS_MENU_SEARCH"), &MainWindowChrome::toggleSearchBox);
    connectAction(QStringLiteral("IDS_MENU_EXIT"), &MainWindowChrome::quit);
    connectAction(QStringLiteral("IDS_MENU_TOOLBAR"), &MainWindowChrome::toggleToolBar);
    connectAction(QStringLiteral("IDS_MENU_LEFT_TO_RIGHT"), &MainWindowChrome::setLeftToRight);
    connectAction(QStringLiteral("IDS_MENU_RIGHT_TO_LEFT"), &MainWindowChrome::setRightToLeft);
    connectAction(QStringLiteral("IDS_MENU_ABOUT"), &MainWindowChrome::showAbout);
    connectAction(QStringLiteral("IDS_MENU_SHOW"), &MainWindowChrome::showWindow);
    connectAction(QStringLiteral("IDS_MENU_OPERATOR_PORTAL"),
                  &MainWindowChrome::openOperatorPortal);
    for (const MENU::QActionInfo &info : qAsConst(m_actions)) {
        if (info.textId == QLatin1String("IDS_MENU_TOOLBAR")) {
            info.action->setCheckable(true);
            info.action->setChecked(m_pToolBar != nullptr);
            info.action->setEnabled(m_pToolBar != nullptr);
        } else if (info.textId == QLatin1String("IDS_MENU_EXIT")) {
            info.action->setShortcut(QKeySequence::Quit);
        }
    }
}

void MainWindowChrome::onToolButton(int id)
{
    switch (id) {
    case TB_DETECT:
        detectDevice();
        break;
    case TB_CALL:
        makeCall();
        break;
    case TB_ABOUT:
        showAbout();
        break;
    case TB_SEARCH:
        toggleSearchBox();
        break;
    default:
        break;
    }
}

void MainWindowChrome::toggleSearchBox()
{
    if (!m_pToolBarWidget)
        return;
    m_bSearchShown = !m_bSearchShown;
    ToolBarLogic::ShowHideSearchBox(m_pToolBarWidget, m_pSearchLayout, m_pSearchEdit,
                                    m_bSearchShown);
    filterPluginList();
}

void MainWindowChrome::filterPluginList()
{
    auto *pList = m_pWindow->findChild<QListWidget *>(QStringLiteral("XFramePlugin_PluginList"));
    if (!pList || !m_pSearchEdit)
        return;
    const QString filter = m_bSearchShown ? m_pSearchEdit->text() : QString();
    for (int i = 0; i < pList->count(); ++i) {
        QListWidgetItem *pItem = pList->item(i);
        pItem->setHidden(!pItem->text().contains(filter, Qt::CaseInsensitive));
    }
}

void MainWindowChrome::setLeftToRight()
{
    setDirection(Qt::LeftToRight);
}

void MainWindowChrome::setRightToLeft()
{
    setDirection(Qt::RightToLeft);
}

void MainWindowChrome::setDirection(Qt::LayoutDirection direction)
{
    m_pWindow->setLayoutDirection(direction);
    ToolBarLogic::ChangeToolBarIconDirection(kPlugin, m_toolItems, direction == Qt::RightToLeft,
                                             &m_pSearchIcon);
}

void MainWindowChrome::toggleToolBar()
{
    if (m_pToolBar)
        m_pToolBar->setVisible(!m_pToolBar->isVisible());
}

void MainWindowChrome::showAbout()
{
    CommonUtils::ShowMessage(
        QMessageBox::Information, m_pWindow, text(QStringLiteral("IDS_ABOUT_TITLE")),
        text(QStringLiteral("IDS_ABOUT_TEXT")), QStringLiteral("IDS_OK"), QString(), QString(),
        false, Qt::Dialog | Qt::WindowCloseButtonHint, nullptr, QStringLiteral("IDS_OK"), true);
}

void MainWindowChrome::showWindow()
{
    m_pWindow->showNormal();
    m_pWindow->raise();
    m_pWindow->activateWindow();
}

void MainWindowChrome::openOperatorPortal()
{
    CommonUtils::OpenUrl(text(QStringLiteral("IDS_OPERATOR_PORTAL_URL")));
}

void MainWindowChrome::detectDevice()
{
    auto *pDeviceMgr = qobject_cast<IDeviceMgr *>(
        pluginInterface(QStringLiteral("DeviceMgrUIPlugin"), LD_INTERFACE_DEVICE_MGR));
    if (!pDeviceMgr)
        return;
    ToolBarLogic::EnableDisableItem(kPlugin, m_toolItems, TB_DETECT, false);
    m_pWindow->statusBar()->showMessage(text(QStringLiteral("IDS_STATUS_DETECTING")),
                                        kDetectBusyMs);
    pDeviceMgr->StartDetectDevice();
    QTimer::singleShot(kDetectBusyMs, this, [this] {
        ToolBarLogic::EnableDisableItem(kPlugin, m_toolItems, TB_DETECT, true);
    });
}

void MainWindowChrome::makeCall()
{
    // The number comes from the search box, where a user types what to look for or whom to call.
    CommonUtils::MakeCall(m_pSearchEdit ? m_pSearchEdit->text().trimmed() : QString());
}

void MainWindowChrome::quit()
{
    QCoreApplication::quit();
}
