// Detection latency of the ModemManager backend against the real daemon, over 20 plug/unplug
// cycles of a fake modem (run inside tests/mm/mm_testenv.py). For each plug and unplug:
//   daemon:  from the environment's request (Test.SetProfile, InhibitDevice) to the daemon's
//            InterfacesAdded/InterfacesRemoved as a bare GDBus subscriber in this process sees it;
//   library: from that moment to the callback registered through NEXO_DevSrv_* (DEV_DETECTED,
//            DEV_DEVICE_INVALID), i.e. what libsdk adds. Target: at most 5 ms.
// Times are CLOCK_MONOTONIC here and in the environment.
#include "MmControl.h"
#include "NexoBackend.h"

#include <gio/gio.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int kCycles = 20;
constexpr double kTargetMs = 5.0;

using Clock = std::chrono::steady_clock;

std::int64_t nowNs()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now().time_since_epoch())
        .count();
}

std::mutex g_mutex;
std::condition_variable g_changed;
std::map<int, std::vector<std::int64_t>> g_callbacks;   // event -> times
std::map<std::string, std::int64_t> g_added, g_removed; // object path -> time seen

int onDeviceEvent(int type, void *)
{
    const std::int64_t at = nowNs();
    std::lock_guard<std::mutex> lock(g_mutex);
    g_callbacks[type].push_back(at);
    g_changed.notify_all();
    return 1;
}

// The bare baseline: a GDBus subscription to the daemon's object manager signals on its own
// connection and main context, on its own thread.
class BareSubscriber
{
public:
    bool start()
    {
        GError *error = nullptr;
        gchar *address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, &error);
        m_context = g_main_context_new();
        g_main_context_push_thread_default(m_context);
        m_bus = address ? g_dbus_connection_new_for_address_sync(
                              address,
                              GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                   G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
                              nullptr, nullptr, &error)
                        : nullptr;
        g_free(address);
        if (m_bus)
            g_dbus_connection_signal_subscribe(m_bus, nullptr, "org.freedesktop.DBus.ObjectManager",
                                               nullptr, "/org/freedesktop/ModemManager1", nullptr,
                                               G_DBUS_SIGNAL_FLAGS_NONE, onSignal, nullptr,
                                               nullptr);
        g_main_context_pop_thread_default(m_context);
        g_clear_error(&error);
        if (!m_bus)
            return false;
        m_loop = g_main_loop_new(m_context, FALSE);
        m_thread = std::thread([this] {
            g_main_context_push_thread_default(m_context);
            g_main_loop_run(m_loop);
            g_main_context_pop_thread_default(m_context);
        });
        return true;
    }
    void stop()
    {
        if (!m_loop)
            return;
        g_main_loop_quit(m_loop);
        m_thread.join();
        g_object_unref(m_bus);
        g_main_loop_unref(m_loop);
        g_main_context_unref(m_context);
    }

private:
    static void onSignal(GDBusConnection *, const gchar *, const gchar *, const gchar *,
                         const gchar *signal, GVariant *parameters, gpointer)
    {
        const std::int64_t at = nowNs();
        const gchar *path = nullptr;
        g_variant_get_child(parameters, 0, "&o", &path);
        std::lock_guard<std::mutex> lock(g_mutex);
        (std::string(signal) == "InterfacesAdded" ? g_added : g_removed)[path] = at;
        g_changed.notify_all();
    }

    GMainContext *m_context = nullptr;
    GMainLoop *m_loop = nullptr;
    GDBusConnection *m_bus = nullptr;
    std::thread m_thread;
};

// The time of the n-th callback with this event, waiting up to 10 s; -1 when none came.
std::int64_t callbackTime(int type, size_t n)
{
    std::unique_lock<std::mutex> lock(g_mutex);
    g_changed.wait_for(lock, std::chrono::seconds(10),
                       [&] { return g_callbacks[type].size() > n; });
    return g_callbacks[type].size() > n ? g_callbacks[type][n] : -1;
}

std::int64_t seenTime(std::map<std::string, std::int64_t> &seen, const std::string &path)
{
    std::unique_lock<std::mutex> lock(g_mutex);
    g_changed.wait_for(lock, std::chrono::seconds(10), [&] { return seen.count(path) > 0; });
    return seen.count(path) ? seen[path] : -1;
}

struct Figures
{
    const char *what;
    std::vector<double> ms;
};

void print(const Figures &figures)
{
    std::vector<double> sorted = figures.ms;
    std::sort(sorted.begin(), sorted.end());
    std::printf("  %-52s median %8.3f ms   worst %8.3f ms\n", figures.what,
                sorted[sorted.size() / 2], sorted.back());
}

} // namespace

int main()
{
    if (!MmControl::available()) {
        std::fprintf(stderr, "run inside tests/mm/mm_testenv.py\n");
        return 2;
    }
    BareSubscriber baseline;
    if (!baseline.start() || NEXO_Backend_Select("modemmanager") != 0 ||
        NEXO_DevSrv_RegisterDevMgrCallback(onDeviceEvent) != 0) {
        std::fprintf(stderr, "no ModemManager on the system bus\n");
        return 1;
    }
    Figures plugDaemon{"plug: daemon (SetProfile to InterfacesAdded)", {}};
    Figures plugLibrary{"plug: library (InterfacesAdded to DEV_DETECTED)", {}};
    Figures unplugDaemon{"unplug: daemon (InhibitDevice to InterfacesRemoved)", {}};
    Figures unplugLibrary{"unplug: library (InterfacesRemoved to DEV_INVALID)", {}};
    for (int cycle = 0; cycle < kCycles; ++cycle) {
        const std::string id = "bench" + std::to_string(cycle);
        const auto plugged = MmControl::words(MmControl::send("plug " + id + " E3372"));
        if (plugged.size() < 4 || plugged[0] != "ok") {
            std::fprintf(stderr, "plug failed\n");
            return 1;
        }
        const std::int64_t added = seenTime(g_added, plugged[1]);
        const std::int64_t detected = callbackTime(NEXO_EVENT_DEV_DETECTED, size_t(cycle));
        const auto unplugged = MmControl::words(MmControl::send("unplug " + id));
        const std::int64_t removed = seenTime(g_removed, plugged[1]);
        const std::int64_t invalid = callbackTime(NEXO_EVENT_DEV_DEVICE_INVALID, size_t(cycle));
        if (added < 0 || detected < 0 || unplugged.size() < 3 || removed < 0 || invalid < 0) {
            std::fprintf(stderr, "cycle %d: an event did not arrive\n", cycle);
            return 1;
        }
        plugDaemon.ms.push_back((added - std::stoll(plugged[3])) / 1e6);
        plugLibrary.ms.push_back((detected - added) / 1e6);
        unplugDaemon.ms.push_back((removed - std::stoll(unplugged[2])) / 1e6);
        unplugLibrary.ms.push_back((invalid - removed) / 1e6);
    }
    NEXO_DevSrv_UnRegisterDevMgrCallback(onDeviceEvent);
    baseline.stop();

    std::printf("ModemManager backend, %d plug/unplug cycles of a fake modem:\n", kCycles);
    for (const Figures *figures : {&plugDaemon, &plugLibrary, &unplugDaemon, &unplugLibrary})
        print(*figures);
    double libraryMedian = 0; // the larger of the plug and unplug medians
    for (const Figures *figures : {&plugLibrary, &unplugLibrary}) {
        std::vector<double> sorted = figures->ms;
        std::sort(sorted.begin(), sorted.end());
        libraryMedian = std::max(libraryMedian, sorted[sorted.size() / 2]);
    }
    std::printf("  library adds (median): %.3f ms, target at most %.0f ms: %s\n", libraryMedian,
                kTargetMs, libraryMedian <= kTargetMs ? "met" : "NOT met");
    return 0;
}
