// NEXO_DevSrv_* and NexoSim_*: the C face of the device simulator.

#include "NexoSdk.h"
#include "NexoSim.h"

#include "DeviceSimulator.h"
#include "SettingsStore.h"

using nexo::DeviceSimulator;
using Kind = nexo::DeviceSimulator::CallbackKind;

namespace {

DeviceSimulator &simulator()
{
    return DeviceSimulator::instance();
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
    return status;
}

} // namespace

extern "C" {

NEXO_API long NEXO_DevSrv_RegisterDevInitEventCallback(NEXO_DevEventCallback cb)
{
    return statusOf([cb] { return simulator().registerCallback(Kind::DevInit, cb); });
}

NEXO_API long NEXO_DevSrv_RegisterDevMgrCallback(NEXO_DevEventCallback cb)
{
    return statusOf([cb] { return simulator().registerCallback(Kind::DevMgr, cb); });
}

NEXO_API long NEXO_DevSrv_UnRegisterDevInitEventCallback(NEXO_DevEventCallback cb)
{
    return statusOf([cb] { return simulator().unregisterCallback(Kind::DevInit, cb); });
}

NEXO_API long NEXO_DevSrv_UnRegisterDevMgrCallback(NEXO_DevEventCallback cb)
{
    return statusOf([cb] { return simulator().unregisterCallback(Kind::DevMgr, cb); });
}

NEXO_API long NEXO_DevSrv_GetAvailableDeviceList(void *block)
{
    return statusOf([block] { return simulator().fillDeviceList(block); });
}

NEXO_API long NEXO_DevSrv_GetCustomizeName(char *buffer)
{
    return statusOf([buffer] { return simulator().copyCustomizeName(buffer); });
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
