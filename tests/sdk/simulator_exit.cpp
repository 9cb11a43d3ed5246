// Ends the process in a given state of the device simulator, for the test of a clean exit.
//   never-started     no event was ever posted (no dispatcher thread)
//   pending           an event is due in 2 s when main returns: it must be dropped
//   running           a callback is still running when main returns: exit waits for it
//   exit-in-callback  a callback calls exit(3) itself
// Prints what the callback did; exit status 0 unless the mode says otherwise.

#include "NexoSim.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace {

std::atomic<bool> g_started{false};
const char *g_mode = "";

void say(const char *text)
{
    std::fputs(text, stdout);
    std::fflush(stdout);
}

int onEvent(int, void *)
{
    say("callback started\n");
    g_started = true;
    if (std::strcmp(g_mode, "exit-in-callback") == 0)
        std::exit(3);
    if (std::strcmp(g_mode, "running") == 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    say("callback finished\n");
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
        return 100;
    g_mode = argv[1];
    if (NEXO_DevSrv_RegisterDevMgrCallback(onEvent) != 0)
        return 101;
    if (std::strcmp(g_mode, "never-started") == 0)
        return 0;
    if (std::strcmp(g_mode, "pending") == 0) {
        NexoSim_PostEvent(NEXO_EVENT_DEV_DETECTED, 2000);
        return 0;
    }
    NexoSim_PostEvent(NEXO_EVENT_DEV_DETECTED, 0);
    for (int i = 0; i < 500 && !g_started; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (std::strcmp(g_mode, "exit-in-callback") == 0)
        std::this_thread::sleep_for(std::chrono::seconds(10)); // the callback ends the process
    return g_started ? 0 : 102;
}
