#include "MainWindow.h"
#include "MainWindowChrome.h"

#include "Change.h"
#include "CommonUtils.h"
#include "IPluginContainer.h"
#include "PluginInterfaces.h"
#include "Startup.h"

#include <QLabel>
#include <QListWidget>
#include <QStatusBar>
#include <QVBoxLayout>

namespace {

const QString kPlugin = QStringLiteral("XFramePlugin");
constexpr int kRefreshMs = 250;

QString text(const char *id)
{
    return Change::tr(QLatin1String(id), kPlugin);
}

} // namespace

MainWindow::MainWindow(QWidget *pParent, Qt::WindowFlags flags)
    : QMainWindow(pParent, flags)
{
    setObjectName(QStringLiteral("XFramePlugin_MainFrameWindow"));
    setWindowTitle(text("IDS_APP_TITLE"));
    setupCentralArea();
    setupChrome();

    // Device changes switch plugins on and off while the window is up.
    m_refreshTimer.setInterval(kRefreshMs);
    connect(&m_refreshTimer, &QTimer::timeout, this, &MainWindow::refreshPluginList);
    m_refreshTimer.start();
    refreshPluginList();
}

void MainWindow::setupCentralArea()
{
    auto *pCentral = new QWidget(this);
    pCentral->setObjectName(QStringLiteral("XFramePlugin_CentralWidget"));
    auto *pLayout = new QVBoxLayout(pCentral);

    auto *pTitle = new QLabel(text("IDS_APP_TITLE"), pCentral);
    pTitle->setObjectName(QStringLiteral("XFramePlugin_TitleLabel"));
    auto *pWelcome = new QLabel(text("IDS_WELCOME"), pCentral);
    pWelcome->setObjectName(QStringLiteral("XFramePlugin_WelcomeLabel"));
    pWelcome->setWordWrap(true);
    auto *pListTitle = new QLabel(text("IDS_LOADED_PLUGINS"), pCentral);
    pListTitle->setObjectName(QStringLiteral("XFramePlugin_ListTitle"));
    m_pPluginList = new QListWidget(pCentral);
    m_pPluginList->setObjectName(QStringLiteral("XFramePlugin_PluginList"));

    pLayout->addWidget(pTitle);
    pLayout->addWidget(pWelcome);
    // The plugins' pages, held by the layout plugin that Config.xml names.
    ILayout *pPages = CommonUtils::GetLayoutPlugin();
    if (QWidget *pPagesWidget = pPages ? pPages->GetLayoutWidget() : nullptr)
        pLayout->addWidget(pPagesWidget, 2);
    pLayout->addWidget(pListTitle);
    pLayout->addWidget(m_pPluginList, 1);
    setCentralWidget(pCentral);
}

void MainWindow::setupChrome()
{
    statusBar()->setObjectName(QStringLiteral("XFramePlugin_StatusBar"));
    statusBar()->showMessage(text("IDS_STATUS_READY"));
    (new MainWindowChrome(this))->build();
}

void MainWindow::refreshPluginList()
{
    IPluginContainer *pContainer = Startup::GetPluginContainer();
    if (!pContainer)
        return;
    QStringList names;
    const QList<QString> clsids = pContainer->GetLoadedPluginClsids();
    for (const QString &clsid : clsids)
        names << pContainer->GetPluginNameByClsid(clsid);
    if (names == m_shownPlugins)
        return;
    m_shownPlugins = names;
    m_pPluginList->clear();
    m_pPluginList->addItems(names);
}
