#ifndef NEXO_DEVICESIMULATOR_H
#define NEXO_DEVICESIMULATOR_H

#include "NexoSdk.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace nexo {

// The simulated device service: the devices it reports, its customization name, the callbacks
// registered with it, and one dispatcher thread that delivers queued events to them.
//
// Callbacks run on the dispatcher thread without any lock held, so a callback may call back
// into the library (list the devices, unregister itself, post another event).
class DeviceSimulator
{
public:
    enum class CallbackKind { DevInit, DevMgr };

    // Lives until the process ends; its dispatcher is stopped and joined when exit starts.
    static DeviceSimulator &instance();

    void reset();
    void setDevices(std::vector<std::string> names);
    void setCustomizeName(std::optional<std::string> name);
    void setSimOperatorId(std::string operatorId);
    void setRegisterResult(long result);
    void setDeviceListResult(long result);
    void setDetection(int type, int delayMs);

    long registerCallback(CallbackKind kind, NEXO_DevEventCallback callback);
    long unregisterCallback(CallbackKind kind, NEXO_DevEventCallback callback);
    int registeredCallbackCount();

    long fillDeviceList(void *block);
    long copyCustomizeName(char *buffer);
    long copySimOperatorId(char *buffer);

    void postEvent(int type, int delayMs);
    long startDetection();
    long waitIdle(int timeoutMs);

    // Drops pending events, stops the dispatcher and waits for it (bounded). Called at exit.
    void shutdown();

private:
    using Clock = std::chrono::steady_clock;

    struct PendingEvent
    {
        int type;
        std::uint64_t generation; // events of a generation before the last reset are void
    };

    DeviceSimulator() = default;

    void ensureDispatcherLocked();
    void dispatchLoop();
    void deliver(int type, std::uint64_t generation, std::unique_lock<std::mutex> &lock);
    std::vector<NEXO_DevEventCallback> distinctCallbacksLocked() const;
    bool isRegisteredLocked(NEXO_DevEventCallback callback) const;
    bool isIdleLocked() const;
    std::vector<NEXO_DevEventCallback> &callbacks(CallbackKind kind);

    std::mutex m_mutex;
    std::condition_variable m_wakeDispatcher;
    std::condition_variable m_stateChanged; // idle, a callback returned, dispatcher ended

    std::vector<std::string> m_devices;
    std::optional<std::string> m_customizeName;
    std::string m_simOperatorId;
    long m_registerResult = 0;
    long m_deviceListResult = 0;
    int m_detectionType = NEXO_EVENT_DEV_DETECTED;
    int m_detectionDelayMs = 100;
    std::vector<NEXO_DevEventCallback> m_devInitCallbacks;
    std::vector<NEXO_DevEventCallback> m_devMgrCallbacks;

    // Ordered by due time; equal times keep the order of posting.
    std::multimap<Clock::time_point, PendingEvent> m_queue;
    std::uint64_t m_generation = 0;
    bool m_delivering = false;
    NEXO_DevEventCallback m_runningCallback = nullptr;

    std::thread m_dispatcher;
    std::thread::id m_dispatcherId;
    bool m_dispatcherRunning = false;
    bool m_stopping = false;
};

} // namespace nexo

#endif // NEXO_DEVICESIMULATOR_H
