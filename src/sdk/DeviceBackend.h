#ifndef NEXO_DEVICEBACKEND_H
#define NEXO_DEVICEBACKEND_H

#include "NexoSdk.h"

namespace nexo {

enum class CallbackKind { DevInit, DevMgr };

// One implementation of the device service behind NEXO_DevSrv_*: the simulator or ModemManager.
// Every operation may be called from any thread; events reach the registered callbacks on the
// backend's own thread, once per distinct function, and removing a function's last
// registration waits for a delivery to it that is under way (unless called from inside it).
class DeviceBackend
{
public:
    virtual ~DeviceBackend() = default;

    virtual const char *name() const = 0;
    virtual long registerCallback(CallbackKind kind, NEXO_DevEventCallback callback) = 0;
    virtual long unregisterCallback(CallbackKind kind, NEXO_DevEventCallback callback) = 0;
    virtual int registeredCallbackCount() = 0;
    virtual long fillDeviceList(void *block) = 0;
    virtual long copyCustomizeName(char *buffer) = 0;
    virtual long copySimOperatorId(char *buffer) = 0;
    virtual long startDetection() = 0;
};

// The backend that NEXO_DevSrv_* uses now, chosen on first use (see NexoBackend.h).
DeviceBackend &activeBackend();
// NEXO_Backend_Select: nullptr chooses from the environment and the settings.
long selectBackend(const char *name);

} // namespace nexo

#endif // NEXO_DEVICEBACKEND_H
