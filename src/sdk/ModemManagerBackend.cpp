// The device service on ModemManager: libmm-glib on a private GLib main context that runs on
// the backend's own thread, where every signal of the daemon is handled and every callback runs.
//
// Events: a modem appearing gives NEXO_EVENT_DEV_DETECTED; a modem leaving gives
// NEXO_EVENT_DEV_DEVICE_INVALID when it was the last one and NEXO_EVENT_DEV_DETECTED (the list
// changed) otherwise; the daemon leaving the bus while modems were present gives
// NEXO_EVENT_DEV_DEVICE_INVALID once (a daemon that stops sends no removals of its own). The
// object manager client follows the daemon's name owner, so a restarted daemon's modems arrive
// as new modems.

#include "ModemManagerBackend.h"

#include "CallbackRegistry.h"
#include "CopyTruncated.h"
#include "NexoBackend.h"
#include "SettingsStore.h"

#include <libmm-glib.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace nexo {
namespace {

constexpr char kService[] = "org.freedesktop.ModemManager1";
constexpr char kModemInterface[] = "org.freedesktop.ModemManager1.Modem";
constexpr char kSimInterface[] = "org.freedesktop.ModemManager1.Sim";
constexpr int kCallTimeoutMs = 5000;
// How long a caller waits for the backend to connect before it is told the service is away.
constexpr std::chrono::seconds kStartWait{10};
// How long exit waits for the backend's thread.
constexpr std::chrono::seconds kShutdownWait{5};
constexpr unsigned kDetectionDelayMs = 100;
constexpr char kCustomizeGroup[] = "customize-map";
constexpr char kCustomizeDefaultKey[] = "default";

// A private connection to the system bus ($DBUS_SYSTEM_BUS_ADDRESS as GLib reads it), so that
// closing it affects nobody else in the process; null with a message when there is none.
GDBusConnection *connectSystemBus(std::string &problem)
{
    GError *error = nullptr;
    gchar *address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, &error);
    GDBusConnection *bus = nullptr;
    if (address) {
        bus = g_dbus_connection_new_for_address_sync(
            address,
            GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                 G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, &error);
        g_free(address);
    }
    if (!bus) {
        problem = error ? error->message : "no address";
        g_clear_error(&error);
        return nullptr;
    }
    g_dbus_connection_set_exit_on_close(bus, FALSE);
    return bus;
}

bool nameHasOwner(GDBusConnection *bus)
{
    GVariant *reply = g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "NameHasOwner", g_variant_new("(s)", kService), G_VARIANT_TYPE("(b)"),
        G_DBUS_CALL_FLAGS_NONE, kCallTimeoutMs, nullptr, nullptr);
    gboolean owned = FALSE;
    if (reply) {
        g_variant_get(reply, "(b)", &owned);
        g_variant_unref(reply);
    }
    return owned;
}

// One property of an object of the daemon, read with Properties.Get; null when that failed.
GVariant *daemonProperty(GDBusConnection *bus, const std::string &path, const char *interface,
                         const char *property)
{
    GVariant *reply = g_dbus_connection_call_sync(
        bus, kService, path.c_str(), "org.freedesktop.DBus.Properties", "Get",
        g_variant_new("(ss)", interface, property), G_VARIANT_TYPE("(v)"),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, kCallTimeoutMs, nullptr, nullptr);
    if (!reply)
        return nullptr;
    GVariant *value = nullptr;
    g_variant_get(reply, "(v)", &value);
    g_variant_unref(reply);
    return value;
}

std::string stringOf(GVariant *value)
{
    std::string text;
    if (value && (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) ||
                  g_variant_is_of_type(value, G_VARIANT_TYPE_OBJECT_PATH)))
        text = g_variant_get_string(value, nullptr);
    if (value)
        g_variant_unref(value);
    return text;
}

class ModemManagerBackend final : public DeviceBackend
{
public:
    ModemManagerBackend()
    {
        std::atexit([] {
            if (DeviceBackend *backend = modemManagerBackend())
                static_cast<ModemManagerBackend *>(backend)->shutdown();
        });
    }

    const char *name() const override { return "modemmanager"; }

    long registerCallback(CallbackKind kind, NEXO_DevEventCallback callback) override
    {
        if (!callback)
            return NEXO_ERR_INVALID_ARGUMENT;
        if (const long status = ensureRunning())
            return status;
        if (!daemonPresent())
            return NEXO_ERR_SERVICE_UNAVAILABLE;
        const long status = m_callbacks.add(kind, callback);
        if (status == 0) {
            // The modems found when the backend started are reported to the first registration,
            // as if they had just been plugged.
            bool first = false;
            {
                std::lock_guard<std::mutex> lock(m_mutex);
                first = !m_startReported;
                m_startReported = true;
            }
            if (first)
                post([this] { reportPresentModems(); });
        }
        return status;
    }

    long unregisterCallback(CallbackKind kind, NEXO_DevEventCallback callback) override
    {
        return m_callbacks.remove(kind, callback);
    }

    int registeredCallbackCount() override { return m_callbacks.count(); }

    long fillDeviceList(void *block) override
    {
        if (!block)
            return NEXO_ERR_INVALID_ARGUMENT;
        if (const long status = ensureRunning())
            return status;
        std::vector<std::string> models;
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            for (const auto &modem : m_modems)
                models.push_back(modem.model);
        }
        fillDeviceBlock(models, block);
        return 0;
    }

    long copyCustomizeName(char *buffer) override
    {
        if (!buffer)
            return NEXO_ERR_INVALID_ARGUMENT;
        std::string operatorId;
        if (simOperatorId(operatorId) != 0)
            return NEXO_ERR_NO_CUSTOMIZATION;
        SettingsStore &store = SettingsStore::instance();
        std::string name;
        if ((operatorId.empty() || store.value(kCustomizeGroup, operatorId, name) != 0) &&
            store.value(kCustomizeGroup, kCustomizeDefaultKey, name) != 0)
            return NEXO_ERR_NO_CUSTOMIZATION;
        copyTruncated(name, buffer, NEXO_CUSTOMIZE_NAME_SIZE);
        return 0;
    }

    long copySimOperatorId(char *buffer) override
    {
        if (!buffer)
            return NEXO_ERR_INVALID_ARGUMENT;
        std::string operatorId;
        if (const long status = simOperatorId(operatorId))
            return status;
        copyTruncated(operatorId, buffer, NEXO_OPERATOR_ID_SIZE);
        return 0;
    }

    // The report comes after a short delay, as the simulator's detection does by default: the
    // core starts detection before it begins to wait, and would miss an answer given at once.
    long startDetection() override
    {
        if (const long status = ensureRunning())
            return status;
        post([this] { reportPresentModems(); }, kDetectionDelayMs);
        return 0;
    }

private:
    enum class State { Idle, Starting, Running, Failed, Stopped };

    struct Modem
    {
        std::string path;
        std::string model;
    };

    // Starts the thread unless it runs; waits (bounded) until it is connected to the bus.
    long ensureRunning()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (m_state == State::Failed || m_state == State::Stopped) {
            if (m_stopping)
                return NEXO_ERR_SERVICE_UNAVAILABLE;
            // The last attempt failed and its thread has ended: try again.
            std::thread ended = std::move(m_thread);
            lock.unlock();
            if (ended.joinable())
                ended.join();
            lock.lock();
            if (m_state == State::Failed || m_state == State::Stopped)
                m_state = State::Idle;
        }
        if (m_state == State::Idle) {
            m_state = State::Starting;
            m_thread = std::thread(&ModemManagerBackend::run, this);
        }
        m_stateChanged.wait_for(lock, kStartWait, [this] { return m_state != State::Starting; });
        return m_state == State::Running ? 0 : NEXO_ERR_SERVICE_UNAVAILABLE;
    }

    bool daemonPresent()
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_daemonPresent;
    }

    // The backend's thread: connects, then serves the private context until shut down.
    void run()
    {
        GMainContext *context = g_main_context_new();
        g_main_context_push_thread_default(context);
        std::string problem;
        GDBusConnection *bus = connectSystemBus(problem);
        MMManager *manager = nullptr;
        if (bus) {
            GError *error = nullptr;
            manager = mm_manager_new_sync(bus, G_DBUS_OBJECT_MANAGER_CLIENT_FLAGS_DO_NOT_AUTO_START,
                                          nullptr, &error);
            if (!manager) {
                problem = error ? error->message : "no object manager";
                g_clear_error(&error);
            }
        }
        if (!manager) {
            std::fprintf(stderr, "libsdk: ModemManager backend: no system bus: %s\n",
                         problem.c_str());
            if (bus)
                g_object_unref(bus);
            finishThread(context, State::Failed);
            return;
        }

        g_signal_connect(manager, "object-added", G_CALLBACK(onObjectAdded), this);
        g_signal_connect(manager, "object-removed", G_CALLBACK(onObjectRemoved), this);
        g_signal_connect(manager, "notify::name-owner", G_CALLBACK(onNameOwner), this);
        GMainLoop *loop = g_main_loop_new(context, FALSE);
        bool stopping = false;
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            // A shut-down that came while connecting found no loop to quit.
            stopping = m_stopping;
            m_bus = bus;
            m_context = context;
            m_loop = loop;
            m_modems.clear();
            m_daemonPresent = hasNameOwner(manager);
            GList *objects = g_dbus_object_manager_get_objects(G_DBUS_OBJECT_MANAGER(manager));
            for (GList *item = objects; item; item = item->next)
                addModemLocked(G_DBUS_OBJECT(item->data));
            g_list_free_full(objects, g_object_unref);
            m_state = State::Running;
        }
        m_stateChanged.notify_all();
        if (!stopping)
            g_main_loop_run(loop);

        g_signal_handlers_disconnect_by_data(manager, this);
        g_object_unref(manager);
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_bus = nullptr;
            m_loop = nullptr;
            m_context = nullptr;
            m_modems.clear();
            m_daemonPresent = false;
        }
        g_dbus_connection_close_sync(bus, nullptr, nullptr);
        g_object_unref(bus);
        g_main_loop_unref(loop);
        finishThread(context, State::Stopped);
    }

    void finishThread(GMainContext *context, State state)
    {
        // Sources still attached (posted reports) go with the context, undispatched.
        g_main_context_pop_thread_default(context);
        g_main_context_unref(context);
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_state = state;
        }
        m_stateChanged.notify_all();
    }

    // Stops the thread at exit (bounded); a thread stuck in a callback is left to the exit.
    void shutdown()
    {
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_stopping = true; // a thread still connecting then does not enter its loop
        }
        // Queued on the loop: a quit before the loop has begun to run would be lost.
        post([this] { g_main_loop_quit(m_loop); });
        std::unique_lock<std::mutex> lock(m_mutex);
        if (!m_thread.joinable())
            return;
        if (std::this_thread::get_id() == m_thread.get_id()) {
            m_thread.detach(); // exit was called from a callback
            return;
        }
        const bool ended = m_stateChanged.wait_for(lock, kShutdownWait, [this] {
            return m_state == State::Stopped || m_state == State::Failed;
        });
        std::thread thread = std::move(m_thread);
        lock.unlock();
        if (ended) {
            thread.join();
        } else {
            std::fprintf(stderr, "libsdk: a device event callback did not return at exit\n");
            thread.detach();
        }
    }

    // Runs function on the backend's thread from its loop after delayMs, never inside the
    // caller's call, so that a callback asking for detection does not get a delivery nested in
    // its own.
    void post(std::function<void()> function, unsigned delayMs = 0)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_context)
            return;
        GSource *source = delayMs ? g_timeout_source_new(delayMs) : g_idle_source_new();
        g_source_set_priority(source, G_PRIORITY_DEFAULT);
        g_source_set_callback(
            source,
            [](gpointer data) -> gboolean {
                (*static_cast<std::function<void()> *>(data))();
                return G_SOURCE_REMOVE;
            },
            new std::function<void()>(std::move(function)),
            [](gpointer data) { delete static_cast<std::function<void()> *>(data); });
        g_source_attach(source, m_context);
        g_source_unref(source);
    }

    // The SIM's operator id of the first modem, read from the daemon now (SIM objects are not
    // in the object manager); "" for a locked or missing SIM.
    long simOperatorId(std::string &operatorId)
    {
        if (const long status = ensureRunning())
            return status;
        std::string modemPath;
        GDBusConnection *bus = nullptr;
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            if (m_modems.empty() || !m_bus)
                return NEXO_ERR_NOT_FOUND;
            modemPath = m_modems.front().path;
            bus = G_DBUS_CONNECTION(g_object_ref(m_bus));
        }
        const std::string simPath =
            stringOf(daemonProperty(bus, modemPath, kModemInterface, "Sim"));
        operatorId.clear();
        if (!simPath.empty() && simPath != "/")
            operatorId =
                stringOf(daemonProperty(bus, simPath, kSimInterface, "OperatorIdentifier"));
        g_object_unref(bus);
        return 0;
    }

    // --- on the backend's thread ---

    static bool hasNameOwner(MMManager *manager)
    {
        gchar *owner =
            g_dbus_object_manager_client_get_name_owner(G_DBUS_OBJECT_MANAGER_CLIENT(manager));
        const bool present = owner != nullptr;
        g_free(owner);
        return present;
    }

    bool addModemLocked(GDBusObject *object)
    {
        MMModem *modem = mm_object_peek_modem(MM_OBJECT(object));
        if (!modem)
            return false;
        const std::string path = g_dbus_object_get_object_path(object);
        if (std::any_of(m_modems.begin(), m_modems.end(),
                        [&](const Modem &known) { return known.path == path; }))
            return false;
        const char *model = mm_modem_get_model(modem);
        m_modems.push_back(Modem{path, model && *model ? model : "modem"});
        return true;
    }

    void reportPresentModems()
    {
        bool present = false;
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            present = !m_modems.empty();
        }
        if (present)
            m_callbacks.deliver(NEXO_EVENT_DEV_DETECTED);
    }

    static void onObjectAdded(GDBusObjectManager *, GDBusObject *object, gpointer data)
    {
        auto *self = static_cast<ModemManagerBackend *>(data);
        bool added = false;
        {
            std::lock_guard<std::mutex> lock(self->m_mutex);
            self->m_daemonPresent = true;
            added = self->addModemLocked(object);
        }
        if (added)
            self->m_callbacks.deliver(NEXO_EVENT_DEV_DETECTED);
    }

    static void onObjectRemoved(GDBusObjectManager *, GDBusObject *object, gpointer data)
    {
        auto *self = static_cast<ModemManagerBackend *>(data);
        const std::string path = g_dbus_object_get_object_path(object);
        bool removed = false;
        bool nonePresent = false;
        {
            std::lock_guard<std::mutex> lock(self->m_mutex);
            const auto it = std::find_if(self->m_modems.begin(), self->m_modems.end(),
                                         [&](const Modem &known) { return known.path == path; });
            if (it != self->m_modems.end()) {
                self->m_modems.erase(it);
                removed = true;
                nonePresent = self->m_modems.empty();
            }
        }
        if (removed)
            self->m_callbacks.deliver(nonePresent ? NEXO_EVENT_DEV_DEVICE_INVALID
                                                  : NEXO_EVENT_DEV_DETECTED);
    }

    // The client announces a vanished owner before it drops the objects one by one: the
    // modems go at once, with one event.
    static void onNameOwner(GObject *manager, GParamSpec *, gpointer data)
    {
        auto *self = static_cast<ModemManagerBackend *>(data);
        const bool present = hasNameOwner(MM_MANAGER(manager));
        bool lost = false;
        {
            std::lock_guard<std::mutex> lock(self->m_mutex);
            self->m_daemonPresent = present;
            if (!present) {
                lost = !self->m_modems.empty();
                self->m_modems.clear();
            }
        }
        if (lost)
            self->m_callbacks.deliver(NEXO_EVENT_DEV_DEVICE_INVALID);
    }

    std::mutex m_mutex;
    std::condition_variable m_stateChanged;
    State m_state = State::Idle;
    bool m_stopping = false;
    bool m_daemonPresent = false;
    bool m_startReported = false;
    std::vector<Modem> m_modems; // in the order they arrived
    // Set while the thread serves its loop; the thread owns them.
    GDBusConnection *m_bus = nullptr;
    GMainContext *m_context = nullptr;
    GMainLoop *m_loop = nullptr;
    std::thread m_thread;
    CallbackRegistry m_callbacks;
};

} // namespace

DeviceBackend *modemManagerBackend()
{
    // Never destroyed: its thread may still run while static destructors do.
    static ModemManagerBackend *backend = new ModemManagerBackend;
    return backend;
}

bool modemManagerOnSystemBus()
{
    std::string problem;
    GDBusConnection *bus = connectSystemBus(problem);
    if (!bus)
        return false;
    const bool present = nameHasOwner(bus);
    g_dbus_connection_close_sync(bus, nullptr, nullptr);
    g_object_unref(bus);
    return present;
}

} // namespace nexo
