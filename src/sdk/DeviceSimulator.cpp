#include "DeviceSimulator.h"

#include "CopyTruncated.h"
#include "NexoBackend.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace nexo {
namespace {

constexpr int kDefaultDetectionType = NEXO_EVENT_DEV_DETECTED;
constexpr int kDefaultDetectionDelayMs = 100;
// How long exit waits for a callback that is still running.
constexpr std::chrono::seconds kShutdownWait{5};

} // namespace

DeviceSimulator &DeviceSimulator::instance()
{
    // Never destroyed: a dispatcher that outlives a stuck exit still finds valid state.
    static DeviceSimulator *simulator = new DeviceSimulator;
    return *simulator;
}

void DeviceSimulator::reset()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_queue.clear();
    ++m_generation;
    m_devInitCallbacks.clear();
    m_devMgrCallbacks.clear();
    m_devices.clear();
    m_customizeName.reset();
    m_simOperatorId.clear();
    m_registerResult = 0;
    m_deviceListResult = 0;
    m_detectionType = kDefaultDetectionType;
    m_detectionDelayMs = kDefaultDetectionDelayMs;
    m_stateChanged.notify_all();
    // After a reset from outside the dispatcher no callback is running any more.
    if (std::this_thread::get_id() != m_dispatcherId)
        m_stateChanged.wait(lock, [this] { return m_runningCallback == nullptr; });
}

void DeviceSimulator::setDevices(std::vector<std::string> names)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_devices = std::move(names);
}

void DeviceSimulator::setCustomizeName(std::optional<std::string> name)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_customizeName = std::move(name);
}

void DeviceSimulator::setSimOperatorId(std::string operatorId)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_simOperatorId = std::move(operatorId);
}

void DeviceSimulator::setRegisterResult(long result)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_registerResult = result;
}

void DeviceSimulator::setDeviceListResult(long result)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_deviceListResult = result;
}

void DeviceSimulator::setDetection(int type, int delayMs)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_detectionType = type;
    m_detectionDelayMs = std::max(0, delayMs);
}

long DeviceSimulator::registerCallback(CallbackKind kind, NEXO_DevEventCallback callback)
{
    if (!callback)
        return NEXO_ERR_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_registerResult != 0)
        return m_registerResult;
    auto &list = callbacks(kind);
    if (std::find(list.begin(), list.end(), callback) == list.end())
        list.push_back(callback);
    return 0;
}

long DeviceSimulator::unregisterCallback(CallbackKind kind, NEXO_DevEventCallback callback)
{
    if (!callback)
        return NEXO_ERR_INVALID_ARGUMENT;
    std::unique_lock<std::mutex> lock(m_mutex);
    auto &list = callbacks(kind);
    const auto it = std::find(list.begin(), list.end(), callback);
    if (it == list.end())
        return NEXO_ERR_NOT_REGISTERED;
    list.erase(it);
    // Once the last registration is gone the caller may unload the callback's code: let a
    // call that is under way finish first (unless this is that call).
    if (!isRegisteredLocked(callback) && std::this_thread::get_id() != m_dispatcherId)
        m_stateChanged.wait(lock, [&] { return m_runningCallback != callback; });
    return 0;
}

int DeviceSimulator::registeredCallbackCount()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return static_cast<int>(m_devInitCallbacks.size() + m_devMgrCallbacks.size());
}

long DeviceSimulator::fillDeviceList(void *block)
{
    if (!block)
        return NEXO_ERR_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_deviceListResult != 0)
        return m_deviceListResult;
    fillDeviceBlock(m_devices, block);
    return 0;
}

long DeviceSimulator::copyCustomizeName(char *buffer)
{
    if (!buffer)
        return NEXO_ERR_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_customizeName)
        return NEXO_ERR_NO_CUSTOMIZATION;
    copyTruncated(*m_customizeName, buffer, NEXO_CUSTOMIZE_NAME_SIZE);
    return 0;
}

long DeviceSimulator::copySimOperatorId(char *buffer)
{
    if (!buffer)
        return NEXO_ERR_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_devices.empty())
        return NEXO_ERR_NOT_FOUND;
    copyTruncated(m_simOperatorId, buffer, NEXO_OPERATOR_ID_SIZE);
    return 0;
}

void DeviceSimulator::postEvent(int type, int delayMs)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_stopping)
        return;
    ensureDispatcherLocked();
    const auto due = Clock::now() + std::chrono::milliseconds(std::max(0, delayMs));
    m_queue.emplace(due, PendingEvent{type, m_generation});
    m_wakeDispatcher.notify_one();
}

long DeviceSimulator::startDetection()
{
    int type = 0;
    int delayMs = 0;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        type = m_detectionType;
        delayMs = m_detectionDelayMs;
    }
    if (type != 0)
        postEvent(type, delayMs);
    return 0;
}

long DeviceSimulator::waitIdle(int timeoutMs)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    // A callback waiting for the end of its own delivery would wait forever.
    if (std::this_thread::get_id() == m_dispatcherId)
        return isIdleLocked() ? 0 : NEXO_ERR_TIMEOUT;
    const bool idle = m_stateChanged.wait_for(
        lock, std::chrono::milliseconds(std::max(0, timeoutMs)), [this] { return isIdleLocked(); });
    return idle ? 0 : NEXO_ERR_TIMEOUT;
}

void DeviceSimulator::shutdown()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_stopping = true;
    m_queue.clear();
    m_wakeDispatcher.notify_all();
    if (!m_dispatcher.joinable())
        return;
    if (std::this_thread::get_id() == m_dispatcherId) {
        m_dispatcher.detach(); // exit was called from a callback; the thread ends with the process
        return;
    }
    const bool ended =
        m_stateChanged.wait_for(lock, kShutdownWait, [this] { return !m_dispatcherRunning; });
    lock.unlock();
    if (ended) {
        m_dispatcher.join();
    } else {
        std::fprintf(stderr, "libsdk: a device event callback did not return at exit\n");
        m_dispatcher.detach();
    }
}

void DeviceSimulator::ensureDispatcherLocked()
{
    if (m_dispatcherRunning)
        return;
    static std::once_flag atExitRegistered;
    std::call_once(atExitRegistered,
                   [] { std::atexit([] { DeviceSimulator::instance().shutdown(); }); });
    // The new thread starts by taking m_mutex, held here, so it sees the state set below.
    m_dispatcher = std::thread(&DeviceSimulator::dispatchLoop, this);
    m_dispatcherRunning = true;
    m_dispatcherId = m_dispatcher.get_id();
}

void DeviceSimulator::dispatchLoop()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_stopping) {
        if (m_queue.empty()) {
            m_wakeDispatcher.wait(lock);
            continue;
        }
        const auto next = m_queue.begin();
        // A copy: the wait may outlive the queue entry (a reset clears the queue).
        const Clock::time_point due = next->first;
        if (Clock::now() < due) {
            m_wakeDispatcher.wait_until(lock, due);
            continue;
        }
        const PendingEvent event = next->second;
        m_queue.erase(next);
        m_delivering = true;
        deliver(event.type, event.generation, lock);
        m_delivering = false;
        m_stateChanged.notify_all();
    }
    m_dispatcherRunning = false;
    m_stateChanged.notify_all();
}

void DeviceSimulator::deliver(int type, std::uint64_t generation,
                              std::unique_lock<std::mutex> &lock)
{
    for (NEXO_DevEventCallback callback : distinctCallbacksLocked()) {
        // An earlier callback may have unregistered this one, or the simulator was reset.
        if (m_stopping || generation != m_generation || !isRegisteredLocked(callback))
            continue;
        m_runningCallback = callback;
        lock.unlock();
        try {
            callback(type, nullptr);
        } catch (...) {
            // A callback's exception must not end the dispatcher (and with it the process).
        }
        lock.lock();
        m_runningCallback = nullptr;
        m_stateChanged.notify_all();
    }
}

std::vector<NEXO_DevEventCallback> DeviceSimulator::distinctCallbacksLocked() const
{
    std::vector<NEXO_DevEventCallback> result = m_devInitCallbacks;
    for (NEXO_DevEventCallback callback : m_devMgrCallbacks) {
        if (std::find(result.begin(), result.end(), callback) == result.end())
            result.push_back(callback);
    }
    return result;
}

bool DeviceSimulator::isRegisteredLocked(NEXO_DevEventCallback callback) const
{
    return std::find(m_devInitCallbacks.begin(), m_devInitCallbacks.end(), callback) !=
               m_devInitCallbacks.end() ||
           std::find(m_devMgrCallbacks.begin(), m_devMgrCallbacks.end(), callback) !=
               m_devMgrCallbacks.end();
}

bool DeviceSimulator::isIdleLocked() const
{
    return m_queue.empty() && !m_delivering;
}

std::vector<NEXO_DevEventCallback> &DeviceSimulator::callbacks(CallbackKind kind)
{
    return kind == CallbackKind::DevInit ? m_devInitCallbacks : m_devMgrCallbacks;
}

} // namespace nexo
