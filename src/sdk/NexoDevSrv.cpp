// NEXO_DevSrv_* and NexoSim_*: the C face of the device simulator.

#include "NexoSdk.h"
#include "NexoSim.h"

#include "DeviceSimulator.h"
#include "SettingsStore.h"

using nexo::DeviceSimulator;

namespace {

DeviceSimulator &simulator()
{
    return DeviceSimulator::instance();
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

} // namespace

extern "C" {

NEXO_API long NEXO_DevSrv_RegisterDevInitEventCallback(NEXO_DevEventCallback cb)
{
    return simulator().registerCallback(DeviceSimulator::CallbackKind::DevInit, cb);
}

NEXO_API long NEXO_DevSrv_RegisterDevMgrCallback(NEXO_DevEventCallback cb)
{
    return simulator().registerCallback(DeviceSimulator::CallbackKind::DevMgr, cb);
}

NEXO_API long NEXO_DevSrv_UnRegisterDevInitEventCallback(NEXO_DevEventCallback cb)
{
    return simulator().unregisterCallback(DeviceSimulator::CallbackKind::DevInit, cb);
}

NEXO_API long NEXO_DevSrv_UnRegisterDevMgrCallback(NEXO_DevEventCallback cb)
{
    return simulator().unregisterCallback(DeviceSimulator::CallbackKind::DevMgr, cb);
}

NEXO_API long NEXO_DevSrv_GetAvailableDeviceList(void *block)
{
    return simulator().fillDeviceList(block);
}

NEXO_API long NEXO_DevSrv_GetCustomizeName(char *buffer)
{
    return simulator().copyCustomizeName(buffer);
}

NEXO_API void NexoSim_Reset(void)
{
    simulator().reset();
}

NEXO_API void NexoSim_SetDevices(const char *const *names, int count)
{
    std::vector<std::string> devices;
    for (int i = 0; names && i < count; ++i) {
        if (names[i])
            devices.emplace_back(names[i]);
    }
    simulator().setDevices(std::move(devices));
}

NEXO_API void NexoSim_SetCustomizeName(const char *name)
{
    simulator().setCustomizeName(name ? std::optional<std::string>(name) : std::nullopt);
}

NEXO_API void NexoSim_SetRegisterResult(long result)
{
    simulator().setRegisterResult(result);
}

NEXO_API void NexoSim_SetDeviceListResult(long result)
{
    simulator().setDeviceListResult(result);
}

NEXO_API void NexoSim_PostEvent(int enNotifyType, int delayMs)
{
    simulator().postEvent(enNotifyType, delayMs);
}

NEXO_API int NexoSim_RegisteredCallbackCount(void)
{
    return simulator().registeredCallbackCount();
}

NEXO_API void NexoSim_SetDetection(int enNotifyType, int delayMs)
{
    simulator().setDetection(enNotifyType, delayMs);
}

NEXO_API long NexoSim_StartDetection(void)
{
    return simulator().startDetection();
}

NEXO_API long NexoSim_WaitIdle(int timeoutMs)
{
    return simulator().waitIdle(timeoutMs);
}

NEXO_API long NexoSim_LoadFromSettings(void)
{
    nexo::SettingsStore &store = nexo::SettingsStore::instance();
    long found = NEXO_ERR_NOT_FOUND;
    std::string text;
    if (store.value("simulator", "devices", text) == 0) {
        simulator().setDevices(splitDeviceNames(text));
        found = 0;
    }
    if (store.value("simulator", "customize", text) == 0) {
        simulator().setCustomizeName(text);
        found = 0;
    }
    return found;
}

} // extern "C"
