// Construction and destruction of the container.
#include "PluginContainer.h"

#include "CInitConfigThread.h"
#include "Change.h"
#include "CommonUtils.h"
#include "ContainerLog.h"
#include "StartupProfile.h"

namespace {
enum { kTerminatedThreadGraceMs = 2000 };
}

PluginContainer::PluginContainer(QString strPluginsFile, QString strConfigFile, bool bStart)
    : m_bStart(bStart)
{
    qCDebug(lcPlugins, "%s: entered, strPluginsFile = %s",
            LogLine::prefix(kContainerSource, "PluginContainer").constData(),
            LogLine::arg(strPluginsFile).constData());
    m_pluginDir.setPath(CommonUtils::GetPluginLibraryPath());

    createRegistry();
    if (!m_pHashPlugins || !m_pListPlugins) {
        qCDebug(lcPlugins, "%s: m_pHashPlugins or m_pListPlugins is NULL",
                LogLine::prefix(kContainerSource, "PluginContainer").constData());
        return;
    }
    m_strCustomizeName =
        CommonUtils::GetSettings(QStringLiteral("customize"), QStringLiteral("operator"));
    qCDebug(lcPlugins, "getDeviceName: m_strCustomizeName =>%s<=",
            LogLine::arg(m_strCustomizeName).constData());
    readConfiguration(strPluginsFile, strConfigFile);

    if (!GetPlugin(PluginClsid::deviceManager(), kDeviceManagerInterface)) {
        qCDebug(lcPlugins, "%s: DeviceMgrUIPlugin LOAD FAILED !!!,,,",
                LogLine::prefix(kContainerSource, "PluginContainer").constData());
    }

    if (!m_pInitConfigThread) {
        m_pInitConfigThread = new CInitConfigThread;
        m_pInitConfigThread->Init(this);
    }
    m_pInitConfigThread->start(QThread::InheritPriority);

    Change::GetSettingDefaultLang();
    if (!Change::LoadLangFile(QStringLiteral("XFramePlugin"))) {
        qCDebug(lcPlugins, "%s: load XFramePlugin lan file failed",
                LogLine::stampedPrefix(kContainerSource, "PluginContainer").constData());
        Change::SetLangName(QStringLiteral("en-us"));
    }
}

PluginContainer::PluginContainer(const QString &appDir, const QString &customizeName,
                                 ConfigObserver *observer)
    : m_strCustomizeName(customizeName)
    , m_bStart(true)
    , m_pObserver(observer)
    , m_bInspectionOnly(true)
{
    m_pluginDir.setPath(appDir);
    createRegistry();
    readConfiguration(appDir + QStringLiteral("/config/pluginslib.xml"),
                      appDir + QStringLiteral("/config/PluginsConfig.xml"));
}

void PluginContainer::createRegistry()
{
    m_pHashPlugins = new QHash<QString, PluginInfo *>;
    m_pListPlugins = new QList<PluginInfo *>;
    m_pSetCommon = new QSet<QString>;
    m_pEnableList = new QMultiHash<QString, QString>;
    m_pDisableList = new QMultiHash<QString, QString>;
}

void PluginContainer::readConfiguration(const QString &strPluginsFile, const QString &strConfigFile)
{
    StartupProfile::Scope phase(QStringLiteral("configuration files"));
    populatePluginInfo(strPluginsFile);
    populatePluginsConfig(strConfigFile);
    updateCommonOperatorCustomization();
}

PluginContainer::~PluginContainer()
{
    QMutexLocker locker(&m_mutex);
    if (m_pInitConfigThread) {
        if (m_pInitConfigThread->isRunning())
            CommonUtils::WaitForThreadToStop(m_pInitConfigThread, 5);
        // A terminated thread ends at its next cancellation point; deleting it before then
        // would abort the process.
        if (m_pInitConfigThread->wait(kTerminatedThreadGraceMs))
            delete m_pInitConfigThread;
        m_pInitConfigThread = nullptr;
    }

    // Unloading asks for the main plugin, which would load it.
    if (m_pHashPlugins && m_pListPlugins && !m_bInspectionOnly)
        unloadAllPlugins();

    // The hash shares its records with the list; the list deletes them.
    delete m_pHashPlugins;
    m_pHashPlugins = nullptr;
    while (m_pListPlugins && !m_pListPlugins->isEmpty())
        delete m_pListPlugins->takeFirst();
    delete m_pListPlugins;
    m_pListPlugins = nullptr;

    delete m_pSetCommon;
    m_pSetCommon = nullptr;
    delete m_pEnableList;
    m_pEnableList = nullptr;
    delete m_pDisableList;
    m_pDisableList = nullptr;
}

void PluginContainer::Release() {}

int PluginContainer::GetLastError()
{
    return 0;
}

QString PluginContainer::GetMainFramePluginName()
{
    return m_strMainPlugin;
}

bool PluginContainer::IsPluginsConfigInitialized()
{
    return m_bPluginsConfigInitialized;
}
