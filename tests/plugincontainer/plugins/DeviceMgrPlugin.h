#ifndef LINKDECK_TESTS_DEVICEMGRPLUGIN_H
#define LINKDECK_TESTS_DEVICEMGRPLUGIN_H

#include "PluginInterfaces.h"

#include <QObject>

// A device manager on the device-service simulator. Options read from the notebook:
// "devmgr.init" (Initialize's result, default true), "devmgr.lastUsed" (the last used device),
// "devmgr.sync" (wait until the detection event has been delivered before returning, so that
// the container's wait begins after it), "devmgr.blockMs" (sleep before starting detection).
class DeviceMgrPlugin : public QObject, public IBasePlugin, public IDeviceMgr
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin IDeviceMgr)

public:
    DeviceMgrPlugin();
    ~DeviceMgrPlugin() override;

    void Release() override;
    int GetLastError() override { return 0; }
    bool Initialize() override;
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override;

    void StartDetectDevice() override;
    QString GetLastUsedDevice() override;
};

#endif // LINKDECK_TESTS_DEVICEMGRPLUGIN_H
