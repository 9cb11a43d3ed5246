// NEXO_DevSrv_* and NEXO_Backend_*: the C face of the device service, forwarded to the active
// backend; NexoSim_*: the controls of the device simulator, whichever backend is active.

#include "NexoBackend.h"
#include "NexoSdk.h"
#include "NexoSim.h"

#include "DeviceBackend.h"
#include "DeviceSimulator.h"
#include "SettingsStore.h"

using nexo::DeviceSimulator;
using Kind = nexo::CallbackKind;

namespace {

DeviceSimulator &simulator()
{
    return DeviceSimulator::instance();
}

nexo::DeviceBackend &backend()
{
    return nexo::activeBackend();
}

// Nothing may cross the C boundary: a failure to get memory or a thread becomes a status.
template<typename Function>
long statusOf(Function &&function) noexcept
{
    try {
        return function();
    } catch (...) {
        return NEXO_ERR_IO;
    }
}

template<typename Function>
void guarded(Function &&function) noexcept
{
    try {
        function();
    } catch (...) {
    }
}

// "a; b;;c" -> {"a", "b", "c"}: blanks around names and empty entries are dropped.
std::vector<std::string> splitDeviceNames(const std::string &text)
{
    std::vector<std::string> names;
    size_t start = 0;
    while (start <= text.size()) {
        size_t end = text.find(';', start);
        if (end == std::string::npos)
            end = text.size();
        size_t first = start;
        size_t last = end;
        while (first < last && text[first] == ' ')
            ++first;
        while (last > first && text[last - 1] == ' ')
            --last;
        if (last > first)
            names.emplace_back(text, first, last - first);
        start = end + 1;
    }
    return names;
}

long loadFromSettings()
{
    nexo::SettingsStore &store = nexo::SettingsStore::instance();
    long status = NEXO_ERR_NOT_FOUND;
    std::string text;
    if (store.value("simulator", "devices", text) == 0) {
        simulator().setDevices(splitDeviceNames(text));
        status = 0;
    }
    if (store.value("simulator", "customize", text) == 0) {
        simulator().setCustomizeName(text);
        status = 0;
    }
    if (store.value("simulator", "operatorid", text) == 0) {
        simulator().setSimOperatorId(text);
        status = 0;
    }
    return status;
}

} // namespace

extern "C" {

NEXO_API long NEXO_DevSrv_RegisterDevInitEventCallback(NEXO_DevEventCallback cb)
{
    return statusOf([cb] { return backend().registerCallback(Kind::DevInit, cb); });
}

NEXO_API long NEXO_DevSrv_RegisterDevMgrCallback(NEXO_DevEventCallback cb)
{
    return statusOf([cb] { return backend().registerCallback(Kind::DevMgr, cb); });
}

NEXO_API long NEXO_DevSrv_UnRegisterDevInitEventCallback(NEXO_DevEventCallback cb)
{
    return statusOf([cb] { return backend().unregisterCallback(Kind::DevInit, cb); });
}

NEXO_API long NEXO_DevSrv_UnRegisterDevMgrCallback(NEXO_DevEventCallback cb)
{
    return statusOf([cb] { return backend().unregisterCallback(Kind::DevMgr, cb); });
}

NEXO_API long NEXO_DevSrv_GetAvailableDeviceList(void *block)
{
    return statusOf([block] { return backend().fillDeviceList(block); });
}

NEXO_API long NEXO_DevSrv_GetCustomizeName(char *buffer)
{
    return statusOf([buffer] { return backend().copyCustomizeName(buffer); });
}

NEXO_API long NEXO_DevSrv_GetSimOperatorId(char *buffer)
{
    return statusOf([buffer] { return backend().copySimOperatorId(buffer); });
}

NEXO_API long NEXO_Backend_Select(const char *name)
{
    return statusOf([name] { return nexo::selectBackend(name); });
}

NEXO_API const char *NEXO_Backend_Name(void)
{
    const char *name = "simulator";
    guarded([&name] { name = backend().name(); });
    return name;
}

NEXO_API long NEXO_Backend_StartDetection(void)
{
    return statusOf([] { return backend().startDetection(); });
}

NEXO_API void NexoSim_Reset(void)
{
    guarded([] { simulator().reset(); });
}

NEXO_API void NexoSim_SetDevices(const char *const *names, int count)
{
    guarded([names, count] {
        std::vector<std::string> devices;
        for (int i = 0; names && i < count; ++i) {
            if (names[i])
                devices.emplace_back(names[i]);
        }
        simulator().setDevices(std::move(devices));
    });
}

NEXO_API void NexoSim_SetCustomizeName(const char *name)
{
    guarded([name] {
        simulator().setCustomizeName(name ? std::optional<std::string>(name) : std::nullopt);
    });
}

NEXO_API void NexoSim_SetSimOperatorId(const char *operatorId)
{
    guarded([operatorId] { simulator().setSimOperatorId(operatorId ? operatorId : ""); });
}

NEXO_API void NexoSim_SetRegisterResult(long result)
{
    guarded([result] { simulator().setRegisterResult(result); });
}

NEXO_API void NexoSim_SetDeviceListResult(long result)
{
    guarded([result] { simulator().setDeviceListResult(result); });
}

NEXO_API void NexoSim_PostEvent(int enNotifyType, int delayMs)
{
    guarded([=] { simulator().postEvent(enNotifyType, delayMs); });
}

NEXO_API int NexoSim_RegisteredCallbackCount(void)
{
    int count = 0;
    guarded([&count] { count = simulator().registeredCallbackCount(); });
    return count;
}

NEXO_API void NexoSim_SetDetection(int enNotifyType, int delayMs)
{
    guarded([=] { simulator().setDetection(enNotifyType, delayMs); });
}

NEXO_API long NexoSim_StartDetection(void)
{
    return statusOf([] { return simulator().startDetection(); });
}

NEXO_API long NexoSim_WaitIdle(int timeoutMs)
{
    return statusOf([timeoutMs] { return simulator().waitIdle(timeoutMs); });
}

NEXO_API long NexoSim_LoadFromSettings(void)
{
    return statusOf(loadFromSettings);
}

} // extern "C"
