// The choice of the backend behind NEXO_DevSrv_*.

#include "DeviceBackend.h"
#include "DeviceSimulator.h"
#include "ModemManagerBackend.h"
#include "NexoBackend.h"
#include "SettingsStore.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>

namespace nexo {
namespace {

constexpr char kEnvironmentKey[] = "LINKDECK_DEVICE_BACKEND";
constexpr char kSettingsGroup[] = "device";
constexpr char kSettingsKey[] = "backend";

// The simulator as a backend: every call goes to DeviceSimulator unchanged.
class SimulatorBackend final : public DeviceBackend
{
public:
    const char *name() const override { return "simulator"; }
    long registerCallback(CallbackKind kind, NEXO_DevEventCallback callback) override
    {
        return simulator().registerCallback(simulatorKind(kind), callback);
    }
    long unregisterCallback(CallbackKind kind, NEXO_DevEventCallback callback) override
    {
        return simulator().unregisterCallback(simulatorKind(kind), callback);
    }
    int registeredCallbackCount() override { return simulator().registeredCallbackCount(); }
    long fillDeviceList(void *block) override { return simulator().fillDeviceList(block); }
    long copyCustomizeName(char *buffer) override { return simulator().copyCustomizeName(buffer); }
    long copySimOperatorId(char *buffer) override { return simulator().copySimOperatorId(buffer); }
    long startDetection() override { return simulator().startDetection(); }

private:
    static DeviceSimulator &simulator() { return DeviceSimulator::instance(); }
    static DeviceSimulator::CallbackKind simulatorKind(CallbackKind kind)
    {
        return kind == CallbackKind::DevInit ? DeviceSimulator::CallbackKind::DevInit
                                             : DeviceSimulator::CallbackKind::DevMgr;
    }
};

DeviceBackend &simulatorBackend()
{
    static SimulatorBackend *backend = new SimulatorBackend; // outlives exit, as the simulator
    return *backend;
}

std::mutex s_choiceMutex;
std::atomic<DeviceBackend *> s_active{nullptr};

// "simulator", "modemmanager" or "auto" from the environment, else the settings, else "".
std::string configuredName()
{
    if (const char *fromEnvironment = std::getenv(kEnvironmentKey);
        fromEnvironment && *fromEnvironment)
        return fromEnvironment;
    std::string fromSettings;
    if (SettingsStore::instance().value(kSettingsGroup, kSettingsKey, fromSettings) == 0)
        return fromSettings;
    return std::string();
}

// The backend a name stands for; null with status set when there is none.
DeviceBackend *backendNamed(const std::string &name, long &status)
{
    status = 0;
    if (name == "simulator")
        return &simulatorBackend();
    if (name == "modemmanager") {
        DeviceBackend *backend = modemManagerBackend();
        if (!backend)
            status = NEXO_ERR_NOT_FOUND;
        return backend;
    }
    if (name == "auto")
        return modemManagerOnSystemBus() ? modemManagerBackend() : &simulatorBackend();
    status = NEXO_ERR_INVALID_ARGUMENT;
    return nullptr;
}

// The configured backend; an unusable configuration is said once and gives the simulator.
DeviceBackend *configuredBackend()
{
    const std::string name = configuredName();
    if (name.empty())
        return &simulatorBackend();
    long status = 0;
    if (DeviceBackend *backend = backendNamed(name, status))
        return backend;
    std::fprintf(stderr, "libsdk: device backend \"%s\" %s; using the simulator\n", name.c_str(),
                 status == NEXO_ERR_NOT_FOUND ? "is not built in" : "is unknown");
    return &simulatorBackend();
}

} // namespace

DeviceBackend &activeBackend()
{
    if (DeviceBackend *backend = s_active.load(std::memory_order_acquire))
        return *backend;
    std::lock_guard<std::mutex> lock(s_choiceMutex);
    if (!s_active.load(std::memory_order_relaxed))
        s_active.store(configuredBackend(), std::memory_order_release);
    return *s_active.load(std::memory_order_relaxed);
}

long selectBackend(const char *name)
{
    std::lock_guard<std::mutex> lock(s_choiceMutex);
    DeviceBackend *current = s_active.load(std::memory_order_relaxed);
    long status = 0;
    DeviceBackend *chosen = name ? backendNamed(name, status) : configuredBackend();
    if (!chosen)
        return status;
    if (current && current != chosen && current->registeredCallbackCount() > 0)
        return NEXO_ERR_BUSY;
    s_active.store(chosen, std::memory_order_release);
    return 0;
}

} // namespace nexo
