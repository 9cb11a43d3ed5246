#ifndef LINKDECK_IPLUGINCONTAINER_H
#define LINKDECK_IPLUGINCONTAINER_H

#include <QList>
#include <QString>

class QObject;

// Root of the abstract interfaces handed across library boundaries.
class IBaseInterface
{
public:
    virtual ~IBaseInterface() {}
    virtual void Release() = 0;
    virtual int GetLastError() = 0;
};

// The plugin registry as plugins and start-up see it. The order of the operations is part of
// the binary interface: do not reorder.
class IPluginContainer : public IBaseInterface
{
public:
    virtual bool IsPluginAvailable(QString clsid) = 0;
    virtual bool IsPluginLoaded(QString clsid) = 0;
    virtual QList<QString> GetLoadedPluginClsids() = 0;
    virtual QList<QString> GetPluginClsidsByType(int type) = 0;
    virtual QList<QString> GetSettingsPlugins() = 0;
    virtual QObject *GetPlugin(QString clsid, int interfaceNumber) = 0;
    virtual int GetPluginType(QString clsid) = 0;
    virtual QString GetMainFramePluginName() = 0;
    virtual void LoadAllStaticOrActivePlugin() = 0;
    virtual bool IsCustomizationForDevice(QString device) = 0;
    virtual bool UnloadPlugin(QString clsid) = 0;
    virtual bool UnloadAllPlugins() = 0;
    virtual void ApplyCustomizationForDevice(QString device) = 0;
    virtual QString GetPluginNameByClsid(QString clsid) = 0;
    virtual QString GetClsidByName(QString name) = 0;
    virtual void HandleDeviceSwitched(QString device, QList<QString> &enabled,
                                      QList<QString> &disabled) = 0;
    virtual bool DestroyPlugin(QString clsid) = 0;
    virtual bool IsPluginsConfigInitialized() = 0;
    virtual void StartInitPluginsConfig() = 0;
    virtual void UpdateAllStaticOrActivePlugins() = 0;
};

#endif // LINKDECK_IPLUGINCONTAINER_H
