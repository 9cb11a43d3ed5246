#include "CallbackRegistry.h"

#include <algorithm>

namespace nexo {

long CallbackRegistry::add(CallbackKind kind, NEXO_DevEventCallback callback)
{
    if (!callback)
        return NEXO_ERR_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(m_mutex);
    auto &callbacks = list(kind);
    if (std::find(callbacks.begin(), callbacks.end(), callback) == callbacks.end())
        callbacks.push_back(callback);
    return 0;
}

long CallbackRegistry::remove(CallbackKind kind, NEXO_DevEventCallback callback)
{
    if (!callback)
        return NEXO_ERR_INVALID_ARGUMENT;
    std::unique_lock<std::mutex> lock(m_mutex);
    auto &callbacks = list(kind);
    const auto it = std::find(callbacks.begin(), callbacks.end(), callback);
    if (it == callbacks.end())
        return NEXO_ERR_NOT_REGISTERED;
    callbacks.erase(it);
    // The caller may unload the callback's code once its last registration is gone.
    if (!isRegisteredLocked(callback))
        m_callbackReturned.wait(lock, [&] {
            return m_running != callback || m_runningOn == std::this_thread::get_id();
        });
    return 0;
}

int CallbackRegistry::count()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return static_cast<int>(m_devInit.size() + m_devMgr.size());
}

void CallbackRegistry::deliver(int type)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    std::vector<NEXO_DevEventCallback> distinct = m_devInit;
    for (NEXO_DevEventCallback callback : m_devMgr) {
        if (std::find(distinct.begin(), distinct.end(), callback) == distinct.end())
            distinct.push_back(callback);
    }
    for (NEXO_DevEventCallback callback : distinct) {
        // An earlier callback may have unregistered this one.
        if (!isRegisteredLocked(callback))
            continue;
        m_running = callback;
        m_runningOn = std::this_thread::get_id();
        lock.unlock();
        try {
            callback(type, nullptr);
        } catch (...) {
            // A callback's exception must not end the backend's thread.
        }
        lock.lock();
        m_running = nullptr;
        m_runningOn = std::thread::id();
        m_callbackReturned.notify_all();
    }
}

std::vector<NEXO_DevEventCallback> &CallbackRegistry::list(CallbackKind kind)
{
    return kind == CallbackKind::DevInit ? m_devInit : m_devMgr;
}

bool CallbackRegistry::isRegisteredLocked(NEXO_DevEventCallback callback) const
{
    return std::find(m_devInit.begin(), m_devInit.end(), callback) != m_devInit.end() ||
           std::find(m_devMgr.begin(), m_devMgr.end(), callback) != m_devMgr.end();
}

} // namespace nexo
