#ifndef LINKDECK_DEVICEMGRUIPLUGIN_DEVICEMGRUIPLUGIN_H
#define LINKDECK_DEVICEMGRUIPLUGIN_DEVICEMGRUIPLUGIN_H

#include "PluginInterfaces.h"

#include <QObject>

// The device manager on the device service: starts detection for the core and remembers the
// device the last detection found, so that the next start knows it when none is reported.
class DeviceMgrUIPlugin : public QObject, public IBasePlugin, public IDeviceMgr
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin IDeviceMgr)
public:
    ~DeviceMgrUIPlugin() override;

    // IBaseInterface
    void Release() override;
    int GetLastError() override { return m_lastError; }
    // IBasePlugin: fails when the device service refuses the event callback.
    bool Initialize() override;
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override;
    // IDeviceMgr
    void StartDetectDevice() override;
    QString GetLastUsedDevice() override;

private:
    void unregisterCallback();

    bool m_bRegistered = false;
    int m_lastError = 0;
};

#endif // LINKDECK_DEVICEMGRUIPLUGIN_DEVICEMGRUIPLUGIN_H
