#include "Startup.h"

#include "CommonUtils.h"
#include "PluginContainer.h"
#include "PluginInterfaces.h"
#include "StartupProfile.h"
#include "StartupSource.h"
#include "common/CoreLogging.h"

#include <QRect>
#include <QSplashScreen>

IPluginContainer *Startup::m_pPluginContainer = nullptr;
IUIPlugin *Startup::m_pUiPlugin = nullptr;
IMainFrameUIService *Startup::m_pUiPluginService = nullptr;

Startup::Startup(bool bFlag)
{
    qCDebug(lcStartup, "%s: entered", LogLine::prefix(kStartupSource, "Startup").constData());

    const QString appDir = CommonUtils::GetPluginLibraryPath();
    QString strPluginsFile = appDir + QStringLiteral("/config/pluginslib.xml");
    QString strConfigFile = appDir + QStringLiteral("/config/PluginsConfig.xml");

    // The splash goes up before the container loads any plugin.
    if (!bFlag && haveSplashScreen()) {
        qCDebug(lcStartup, "%s: showing splash screen...",
                LogLine::prefix(kStartupSource, "Startup").constData());
        showSplashScreen();
    }

    initializePluginContainer(strPluginsFile, strConfigFile, bFlag);
    loadMainFramePlugin();
}

Startup::~Startup()
{
    qCDebug(lcStartup, "%s: entered", LogLine::prefix(kStartupSource, "~Startup").constData());
    // The main-frame interfaces live in a plugin that the container unloads.
    m_pUiPlugin = nullptr;
    m_pUiPluginService = nullptr;
    delete m_pPluginContainer;
    m_pPluginContainer = nullptr;
    // A splash that no main frame took over would otherwise stay on screen for good.
    delete m_pSplashScreen;
    m_pSplashScreen = nullptr;
}

IPluginContainer *Startup::GetPluginContainer()
{
    return m_pPluginContainer;
}

IUIPlugin *Startup::GetMainFrame()
{
    return m_pUiPlugin;
}

IMainFrameUIService *Startup::GetMainFrameService()
{
    return m_pUiPluginService;
}

bool Startup::initializePluginContainer(QString &strPluginsFile, QString &strConfigFile, bool bFlag)
{
    qCDebug(lcStartup, "%s: entered",
            LogLine::prefix(kStartupSource, "initializePluginContainer").constData());
    StartupProfile::Scope phase(QStringLiteral("container construction"));
    m_pPluginContainer = new PluginContainer(strPluginsFile, strConfigFile, bFlag);
    return true;
}

bool Startup::loadMainFramePlugin()
{
    const QByteArray prefix = LogLine::prefix(kStartupSource, "loadMainFramePlugin");
    qCDebug(lcStartup, "%s: entered", prefix.constData());
    StartupProfile::Scope phase(QStringLiteral("main-frame plugin"));

    m_pUiPlugin = nullptr;
    if (m_pPluginContainer) {
        const QString strMainPlugin = m_pPluginContainer->GetMainFramePluginName();
        m_pUiPlugin = qobject_cast<IUIPlugin *>(
            m_pPluginContainer->GetPlugin(strMainPlugin, LD_INTERFACE_ROOT));
    }
    if (!m_pUiPlugin) {
        qCDebug(lcStartup, "%s: loadMainFramePlugin failed...", prefix.constData());
        return false;
    }
    qCDebug(lcStartup, "%s: m_pUiPlugin loaded...", prefix.constData());

    m_pUiPluginService = qobject_cast<IMainFrameUIService *>(m_pPluginContainer->GetPlugin(
        m_pPluginContainer->GetMainFramePluginName(), LD_INTERFACE_MAIN_FRAME_SERVICE));
    if (!m_pUiPluginService) {
        qCDebug(lcStartup, "%s: m_pUiPluginService load fail!...", prefix.constData());
        return false;
    }

    m_pUiPlugin->Create(nullptr, QRect());
    return true;
}
