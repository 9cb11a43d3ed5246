#ifndef NEXO_CALLBACKREGISTRY_H
#define NEXO_CALLBACKREGISTRY_H

#include "DeviceBackend.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace nexo {

// The callbacks registered with a backend and their delivery, as NexoSdk.h promises: an event
// reaches each distinct function once, whatever kinds it is registered under; a callback runs
// without any lock held, so it may call back into the library; removing a function's last
// registration waits until a delivery to it that is under way has returned (unless called from
// inside that delivery).
class CallbackRegistry
{
public:
    // 0, or NEXO_ERR_INVALID_ARGUMENT for null. Registering twice under one kind counts once.
    long add(CallbackKind kind, NEXO_DevEventCallback callback);
    // 0, NEXO_ERR_INVALID_ARGUMENT, or NEXO_ERR_NOT_REGISTERED.
    long remove(CallbackKind kind, NEXO_DevEventCallback callback);
    int count();
    // Calls each distinct registered function with the event, on the calling thread.
    void deliver(int type);

private:
    std::vector<NEXO_DevEventCallback> &list(CallbackKind kind);
    bool isRegisteredLocked(NEXO_DevEventCallback callback) const;

    std::mutex m_mutex;
    std::condition_variable m_callbackReturned;
    std::vector<NEXO_DevEventCallback> m_devInit;
    std::vector<NEXO_DevEventCallback> m_devMgr;
    NEXO_DevEventCallback m_running = nullptr;
    std::thread::id m_runningOn;
};

} // namespace nexo

#endif // NEXO_CALLBACKREGISTRY_H
