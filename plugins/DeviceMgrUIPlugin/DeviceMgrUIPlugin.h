#ifndef LINKDECK_DEVICEMGRUIPLUGIN_DEVICEMGRUIPLUGIN_H
#define LINKDECK_DEVICEMGRUIPLUGIN_DEVICEMGRUIPLUGIN_H

#include "PluginInterfaces.h"

#include <QObject>

#include <atomic>

// The device manager on the device service. It starts detection for the core, remembers the
// device each detection finds (so that the next start knows it when none is reported), and when
// another device turns up after start-up it has the container switch the plugin set over.
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
    // Device-service callback; runs on the service's thread.
    static int onDeviceEvent(int enNotifyType, void *pData);
    // On the user-interface thread: the device the service now reports.
    void deviceDetected(const QString &device);
    // On the user-interface thread: the service refused the device (SIM lock and the like).
    void deviceRejected();
    void unregisterCallback();

    // Set while the detection start-up asked for is under way: its result is start-up's business.
    std::atomic<bool> m_bStartupDetection{false};
    bool m_bRegistered = false;
    int m_lastError = 0;
};

#endif // LINKDECK_DEVICEMGRUIPLUGIN_DEVICEMGRUIPLUGIN_H
