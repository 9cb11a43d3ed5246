#ifndef LINKDECK_PLUGINCONTAINER_H
#define LINKDECK_PLUGINCONTAINER_H

#include "CoreGlobal.h"
#include "IPluginContainer.h"

#include <QDir>
#include <QHash>
#include <QList>
#include <QMultiHash>
#include <QMutex>
#include <QSet>
#include <QString>
#include <QStringRef>

#include <atomic>

class CInitConfigThread;
class ConfigObserver;
class LoadingPassScope;
class QObject;
class QPluginLoader;
class QXmlStreamReader;

// One plugin of the plugin library file. Owned by the container; owns the loader that loaded the
// plugin's library (the plugin object itself belongs to that loader).
class CORE_EXPORT PluginInfo
{
public:
    PluginInfo(QString name, QString clsid, QString url, int type, bool active, bool isStatic,
               bool settingTitle, bool loaded);
    ~PluginInfo();
    PluginInfo(const PluginInfo &) = delete;
    PluginInfo &operator=(const PluginInfo &) = delete;

    QString Name() const { return m_strName; }
    QString Clsid() const { return m_strClsid; }
    QString Url() const { return m_strUrl; }
    bool IsActive() const { return m_bActive; }
    bool IsStatic() const { return m_bStatic; }
    bool IsSettingTitle() const { return m_bSettingTitle; }
    bool IsLoaded() const { return m_bLoaded; }
    bool IsInitialized() const { return m_bInitialized; }
    bool IsEnabled() const { return m_bEnabled; }
    int Type() const { return m_iType; }
    QObject *Plugin() const { return m_pPlugin; }
    QPluginLoader *Loader() const { return m_pLoader; }

    void SetLoaded(bool loaded) { m_bLoaded = loaded; }
    void SetPlugin(QObject *plugin) { m_pPlugin = plugin; }
    void SetInitialized(bool initialized) { m_bInitialized = initialized; }
    void SetEnabled(bool enabled) { m_bEnabled = enabled; }
    // Takes ownership; a loader held before is deleted (its library stays loaded).
    void SetLoader(QPluginLoader *loader);

private:
    QString m_strName;
    QString m_strClsid;
    QString m_strUrl;
    bool m_bActive;
    bool m_bStatic;
    bool m_bSettingTitle;
    bool m_bLoaded;
    bool m_bInitialized = false;
    bool m_bEnabled = false;
    int m_iType;
    QObject *m_pPlugin = nullptr;
    QPluginLoader *m_pLoader = nullptr;
};

// The registry of every plugin the application knows: reads the plugin library and customization
// files, decides per operator and device which plugins are enabled, loads, initialises, hands out
// and unloads them, and follows the attached device.
class CORE_EXPORT PluginContainer : public IPluginContainer
{
public:
    PluginContainer(QString strPluginsFile, QString strConfigFile, bool bStart);
    ~PluginContainer() override;
    PluginContainer(const PluginContainer &) = delete;
    PluginContainer &operator=(const PluginContainer &) = delete;

    // IBaseInterface
    void Release() override;
    int GetLastError() override;

    // IPluginContainer, in slot order
    bool IsPluginAvailable(QString clsid) override;
    bool IsPluginLoaded(QString clsid) override;
    QList<QString> GetLoadedPluginClsids() override;
    QList<QString> GetPluginClsidsByType(int type) override;
    QList<QString> GetSettingsPlugins() override;
    QObject *GetPlugin(QString clsid, int interfaceNumber) override;
    int GetPluginType(QString clsid) override;
    QString GetMainFramePluginName() override;
    void LoadAllStaticOrActivePlugin() override;
    bool IsCustomizationForDevice(QString device) override;
    bool UnloadPlugin(QString clsid) override;
    bool UnloadAllPlugins() override;
    void ApplyCustomizationForDevice(QString device) override;
    QString GetPluginNameByClsid(QString clsid) override;
    QString GetClsidByName(QString name) override;
    void HandleDeviceSwitched(QString device, QList<QString> &enabled,
                              QList<QString> &disabled) override;
    bool DestroyPlugin(QString clsid) override;
    bool IsPluginsConfigInitialized() override;
    void StartInitPluginsConfig() override;
    void UpdateAllStaticOrActivePlugins() override;

    // Device-service callback; runs on the library's own thread.
    static int OnDevMgrEvent(int enNotifyType, void *pData);

protected:
    // For inspecting a configuration: reads both files of appDir and applies the common and
    // operator rules for customizeName exactly as the constructor above does, telling the
    // observer every entry read and every rule applied. It reads no settings, loads no plugin
    // (loadPlugin refuses to), starts no thread and loads no language file.
    PluginContainer(const QString &appDir, const QString &customizeName, ConfigObserver *observer);

    // Registry
    bool isPluginInList(QString clsid);
    QString getPluginNameByClsid(QString clsid);

    // Configuration files
    bool populatePluginInfo(QString fileName);
    PluginInfo *readPluginElement(QXmlStreamReader &xml);
    void populatePluginsConfig(QString fileName);
    void readCommonElement(QXmlStreamReader &xml);
    void readDeviceElements(QString deviceName, QXmlStreamReader &xml);
    void readCustomizeElements(QXmlStreamReader &xml);
    void addToDisEnableList(QString owner, QMultiHash<QString, QString> *list, QStringRef clsid,
                            bool enable);

    // Customization rules
    void updatePluginInfo(QString clsid, bool enable);
    void removePluginInfo(QString clsid);
    void disableAllPlugins();
    void processFromSet(QSet<QString> *set, bool enable);
    void processFromList(QString key, QMultiHash<QString, QString> *list, bool enable);
    void updateCommonOperatorCustomization();
    void updateDeviceCustomization(QString device);

    // Loading and unloading
    QObject *loadPlugin(PluginInfo *info, QString url);
    void initPlugin(QObject *plugin, QString clsid, PluginInfo *info);
    void loadAllStaticOrActivePlugin();
    QObject *getPlugin(QString &key, bool init, int interfaceNumber);
    bool unloadPlugin(PluginInfo *info);
    bool unloadAllPlugins();

    // Device detection. The initialisation thread runs startInitPluginsConfig, which reaches the
    // container only through non-virtual calls: the thread starts inside the constructor, and a
    // virtual call could land in a derived class that is still being built.
    QString getDeviceName(bool);
    void startInitPluginsConfig();

    QDir m_pluginDir;
    QString m_strMainPlugin;
    QHash<QString, PluginInfo *> *m_pHashPlugins = nullptr;
    QList<PluginInfo *> *m_pListPlugins = nullptr;
    QSet<QString> *m_pSetCommon = nullptr;
    QMultiHash<QString, QString> *m_pEnableList = nullptr;
    QMultiHash<QString, QString> *m_pDisableList = nullptr;
    QString m_strCustomizeName;
    std::atomic<bool> m_bDeviceMgrInitialized{false};
    QMutex m_mutex{QMutex::Recursive};
    std::atomic<bool> m_bPluginsConfigInitialized{false};
    bool m_bStart;
    CInitConfigThread *m_pInitConfigThread = nullptr;
    // The loading pass under way, which lists the plugin directory once; null outside a pass.
    LoadingPassScope *m_pLoadingPass = nullptr;
    // Set only by the inspecting constructor.
    ConfigObserver *m_pObserver = nullptr;
    bool m_bInspectionOnly = false;

    static QString m_strDeviceName;
    static QMutex m_LockStrDevName;

private:
    friend class LoadingPassScope;
    friend class CInitConfigThread;

    void createRegistry();
    // Both files, then the common and operator rules.
    void readConfiguration(const QString &strPluginsFile, const QString &strConfigFile);
    // Tells the observer, if any, about the customization file's entry under the reader.
    void noteEntry(const QXmlStreamReader &xml, const char *section, const QString &owner);

    // Loads the record's library unless it is loaded; a failure leaves the record unloaded.
    void loadIntoRecord(PluginInfo *info);
    // Initialises the record's plugin after the loading pass's "calling initPlugin" line.
    void initRecord(const QByteArray &linePrefix, PluginInfo *info);
};

#endif // LINKDECK_PLUGINCONTAINER_H
