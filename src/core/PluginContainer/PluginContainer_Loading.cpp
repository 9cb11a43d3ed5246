// Loading, initialising, handing out and unloading plugins.
#include "PluginContainer.h"

#include "ContainerLog.h"
#include "LoadingPassScope.h"
#include "PluginInterfaces.h"
#include "StartupProfile.h"

#include <QElapsedTimer>
#include <QLibrary>
#include <QMutexLocker>
#include <QPluginLoader>

namespace {

IBasePlugin *basePlugin(QObject *plugin)
{
    return qobject_cast<IBasePlugin *>(plugin);
}

bool isPostponedAtStart(const QString &clsid)
{
    return clsid == PluginClsid::postponedFirst() || clsid == PluginClsid::postponedSecond();
}

QByteArray prefix(const char *function)
{
    return LogLine::prefix(kContainerSource, function);
}

} // namespace

// The first file of the directory, in the directory's own order, that yields an instance wins.
QObject *PluginContainer::loadPlugin(PluginInfo *info, QString url)
{
    if (m_bInspectionOnly)
        return nullptr;
    const QStringList files = m_pLoadingPass
                                  ? m_pLoadingPass->listing().librariesFor(url)
                                  : PluginDirectoryListing(m_pluginDir).librariesFor(url);
    for (const QString &file : files) {
        const double startMs = StartupProfile::now();
        auto *loader = new QPluginLoader(file);
        QObject *plugin = loader->instance();
        StartupProfile::recordPluginLoad(info->Name(), StartupProfile::now() - startMs);
        if (plugin) {
            qCDebug(lcPlugins, "%s: strFileName = %s, QObject* plugin loaded successfully %s",
                    prefix("loadPlugin").constData(), LogLine::arg(file).constData(),
                    LogLine::arg(url).constData());
            info->SetLoader(loader);
            return plugin;
        }
        qCDebug(lcPlugins, "%s: %s: error : %s", prefix("loadPlugin").constData(),
                LogLine::arg(file).constData(), LogLine::arg(loader->errorString()).constData());
        delete loader;
    }
    return nullptr;
}

// A plugin being initialised already counts as initialised, so that it is never initialised
// twice, even when its own initialisation asks the container for it.
void PluginContainer::initPlugin(QObject *plugin, QString clsid, PluginInfo *info)
{
    if (info->IsInitialized()) {
        qCDebug(lcPlugins, "%s: %s is initialized",
                LogLine::stampedPrefix(kContainerSource, "initPlugin").constData(),
                LogLine::arg(clsid).constData());
        return;
    }
    if (!plugin) {
        qCDebug(lcPlugins, "%s: pPlugin is NULL",
                LogLine::stampedPrefix(kContainerSource, "initPlugin").constData());
        return;
    }
    IBasePlugin *base = basePlugin(plugin);
    if (!base)
        return;

    info->SetInitialized(true);
    QElapsedTimer timer;
    timer.start();
    qCCritical(lcPlugins, "%s: base IBasePlugin load success, %s init: Start",
               prefix("initPlugin").constData(), LogLine::arg(info->Name()).constData());
    const bool result = base->Initialize();
    StartupProfile::recordPluginInit(info->Name(), timer.nsecsElapsed() / 1e6);
    qCCritical(lcPlugins, "%s: base IBasePlugin load success, init=%d, %s init: elapsed=%dms",
               prefix("initPlugin").constData(), result, LogLine::arg(info->Name()).constData(),
               int(timer.elapsed()));
    if (clsid == PluginClsid::deviceManager())
        m_bDeviceMgrInitialized = result;
}

void PluginContainer::loadIntoRecord(PluginInfo *info)
{
    if (info->IsLoaded())
        return;
    if (QObject *plugin = loadPlugin(info, info->Url())) {
        info->SetLoaded(true);
        info->SetPlugin(plugin);
    }
}

void PluginContainer::initRecord(const QByteArray &linePrefix, PluginInfo *info)
{
    qCDebug(lcPlugins, "%s: %s calling initPlugin", linePrefix.constData(),
            LogLine::arg(info->Name()).constData());
    initPlugin(info->Plugin(), info->Clsid(), info);
}

// Every plugin is loaded before any is initialised; initialisation follows the file's order.
void PluginContainer::loadAllStaticOrActivePlugin()
{
    QMutexLocker locker(&m_mutex);
    if (m_pListPlugins->isEmpty())
        return;
    LoadingPassScope pass(*this);
    const QByteArray linePrefix = prefix("loadAllStaticOrActivePlugin");

    for (PluginInfo *info : qAsConst(*m_pListPlugins)) {
        if (!info->IsEnabled() || !(info->IsActive() || info->IsStatic()))
            continue;
        if (isPostponedAtStart(info->Clsid())) {
            qCDebug(lcPlugins, "%s: %s is not going to be loaded at first...",
                    linePrefix.constData(), LogLine::arg(info->Name()).constData());
            continue;
        }
        qCDebug(lcPlugins, "%s: %s to be loaded...", linePrefix.constData(),
                LogLine::arg(info->Url()).constData());
        loadIntoRecord(info);
    }

    for (PluginInfo *info : qAsConst(*m_pListPlugins)) {
        if (info->IsLoaded())
            initRecord(linePrefix, info);
    }
}

void PluginContainer::LoadAllStaticOrActivePlugin()
{
    QMutexLocker locker(&m_mutex);
    loadAllStaticOrActivePlugin();
    qCDebug(lcPlugins, "%s: plugin count = %d", prefix("LoadAllStaticOrActivePlugin").constData(),
            int(m_pHashPlugins->count()));
}

// The main plugin is compared by clsid; when the file names it by name, nothing protects it.
void PluginContainer::UpdateAllStaticOrActivePlugins()
{
    QMutexLocker locker(&m_mutex);
    if (m_pListPlugins->isEmpty())
        return;
    LoadingPassScope pass(*this);
    const QByteArray linePrefix = prefix("UpdateAllStaticOrActivePlugins");

    for (PluginInfo *info : qAsConst(*m_pListPlugins)) {
        if (info->IsEnabled()) {
            if (!(info->IsActive() || info->IsStatic()))
                continue;
            qCDebug(lcPlugins, "%s: %s to be loaded...", linePrefix.constData(),
                    LogLine::arg(info->Url()).constData());
            if (info->IsLoaded())
                continue;
            loadIntoRecord(info);
            qCDebug(lcPlugins, "%s: Loaded plugin: %s.", linePrefix.constData(),
                    LogLine::arg(info->Name()).constData());
        } else if (info->IsLoaded()) {
            const bool isMain = info->Clsid() == m_strMainPlugin;
            if (info->IsInitialized() && !isMain)
                DestroyPlugin(info->Clsid());
            if (!isMain) {
                const bool unloaded = unloadPlugin(info);
                qCDebug(lcPlugins, "%s: Unload plugin %s bUnloaded %i", linePrefix.constData(),
                        LogLine::arg(info->Name()).constData(), int(unloaded));
            }
        }
    }

    for (PluginInfo *info : qAsConst(*m_pListPlugins)) {
        if (info->IsLoaded() && !info->IsInitialized())
            initRecord(linePrefix, info);
    }
}

// key may be a clsid or a plugin name; it is left holding the clsid.
QObject *PluginContainer::getPlugin(QString &key, bool init, int interfaceNumber)
{
    QMutexLocker locker(&m_mutex);
    PluginInfo *info = m_pHashPlugins->value(key);
    if (!info) {
        // Qualified: the initialisation thread comes here while a derived class may be under
        // construction.
        key = PluginContainer::GetClsidByName(key);
        info = m_pHashPlugins->value(key);
    }
    if (!info)
        return nullptr;
    if (!info->IsEnabled()) {
        qCDebug(lcPlugins, "%s: %s not enabled", prefix("getPlugin").constData(),
                LogLine::arg(key).constData());
        return nullptr;
    }

    if (!(info->IsLoaded() && info->IsInitialized())) {
        QObject *plugin = info->IsLoaded() ? info->Plugin() : loadPlugin(info, info->Url());
        if (!plugin) {
            qCDebug(lcPlugins, "%s: %s plugin NOT LOADED !!!,,,", prefix("getPlugin").constData(),
                    LogLine::arg(info->Url()).constData());
            return nullptr;
        }
        qCDebug(lcPlugins, "%s: %s plugin loaded,,,", prefix("getPlugin").constData(),
                LogLine::arg(info->Url()).constData());
        if (init && !info->IsInitialized())
            initPlugin(plugin, key, info);
        info->SetLoaded(true);
        info->SetPlugin(plugin);
    }
    if (interfaceNumber == 0)
        return info->Plugin();

    IBasePlugin *base = basePlugin(info->Plugin());
    QObject *requested = nullptr;
    if (base && base->QueryInterface(interfaceNumber, &requested))
        return requested;
    return nullptr;
}

QObject *PluginContainer::GetPlugin(QString clsid, int interfaceNumber)
{
    return getPlugin(clsid, true, interfaceNumber);
}

// Asking makes the plugin resident, without initialising it.
bool PluginContainer::IsPluginAvailable(QString clsid)
{
    QMutexLocker locker(&m_mutex);
    const PluginInfo *info = m_pHashPlugins->value(clsid);
    QString key = clsid;
    if (info && info->IsEnabled() && getPlugin(key, false, 0)) {
        qCDebug(lcPlugins, "%s: %s is available", prefix("IsPluginAvailable").constData(),
                LogLine::arg(clsid).constData());
        return true;
    }
    qCDebug(lcPlugins, "%s: %s is not available", prefix("IsPluginAvailable").constData(),
            LogLine::arg(clsid).constData());
    return false;
}

bool PluginContainer::unloadPlugin(PluginInfo *info)
{
    QPluginLoader *loader = info->Loader();
    if (!loader || !loader->unload()) {
        qCDebug(lcPlugins, "%s: plugin %s NOT UNLOADED; %s", prefix("unloadPlugin").constData(),
                LogLine::arg(info->Clsid()).constData(),
                LogLine::arg(loader ? loader->errorString() : QString()).constData());
        return false;
    }
    info->SetLoaded(false);
    info->SetInitialized(false);
    info->SetPlugin(nullptr);
    info->SetLoader(nullptr);
    qCDebug(lcPlugins, "%s: plugin %s unloaded", prefix("unloadPlugin").constData(),
            LogLine::arg(info->Clsid()).constData());
    return true;
}

// Unloading by plugin name has no effect: the looked-up clsid is not used.
bool PluginContainer::UnloadPlugin(QString clsid)
{
    QMutexLocker locker(&m_mutex);
    PluginInfo *info = m_pHashPlugins->value(clsid);
    if (!info)
        GetClsidByName(clsid);
    if (info && info->IsLoaded())
        return unloadPlugin(info);
    return false;
}

bool PluginContainer::DestroyPlugin(QString clsid)
{
    QMutexLocker locker(&m_mutex);
    for (PluginInfo *info : qAsConst(*m_pHashPlugins)) {
        if (info->Clsid() != clsid || !info->IsLoaded() || !info->IsInitialized() ||
            info->Clsid() == m_strMainPlugin || !info->Plugin())
            continue;
        IBasePlugin *base = basePlugin(info->Plugin());
        if (!base)
            continue;
        qCDebug(lcPlugins, "Destroying Plugin Name: %s, Plugin ClsID: %s",
                LogLine::arg(info->Name()).constData(), LogLine::arg(info->Clsid()).constData());
        base->Release();
        return true;
    }
    return false;
}

// Releases every plugin, the main one last, then unloads them, the main one last. The first
// bUnloaded line always shows 1.
bool PluginContainer::unloadAllPlugins()
{
    QMutexLocker locker(&m_mutex);
    const QByteArray linePrefix = prefix("unloadAllPlugins");
    auto release = [this](const QString &key) {
        if (IBasePlugin *base = basePlugin(GetPlugin(key, 0)))
            base->Release();
    };

    for (PluginInfo *info : qAsConst(*m_pHashPlugins)) {
        if (info->IsLoaded() && info->IsInitialized() && info->Clsid() != m_strMainPlugin)
            release(info->Clsid());
    }
    release(m_strMainPlugin);
    qCDebug(lcPlugins, "%s: bUnloaded %i", linePrefix.constData(), 1);

    bool unloaded = true;
    for (PluginInfo *info : qAsConst(*m_pHashPlugins)) {
        if (info->IsLoaded() && info->Clsid() != m_strMainPlugin)
            unloaded = unloadPlugin(info) && unloaded;
    }
    qCDebug(lcPlugins, "%s: bUnloaded %i", linePrefix.constData(), int(unloaded));
    UnloadPlugin(m_strMainPlugin);
    return unloaded;
}

bool PluginContainer::UnloadAllPlugins()
{
    return unloadAllPlugins();
}
