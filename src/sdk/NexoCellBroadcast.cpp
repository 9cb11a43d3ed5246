// NexoSim_*CellBroadcast: the text a simulated network broadcasts to every device in a cell.

#include "NexoSim.h"

#include "SettingsStore.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <string>

namespace {

std::mutex g_cbsMutex;
std::string g_cbsText;

long copyOut(const std::string &text, char *buffer, int size)
{
    const size_t length = std::min(text.size(), size_t(size) - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return 0;
}

} // namespace

extern "C" {

NEXO_API void NexoSim_SetCellBroadcast(const char *text)
{
    try {
        std::lock_guard<std::mutex> lock(g_cbsMutex);
        g_cbsText = text ? text : "";
    } catch (...) {
    }
}

NEXO_API long NexoSim_GetCellBroadcast(char *buffer, int size)
{
    if (!buffer || size < 1)
        return NEXO_ERR_INVALID_ARGUMENT;
    try {
        std::string text;
        {
            std::lock_guard<std::mutex> lock(g_cbsMutex);
            text = g_cbsText;
        }
        if (text.empty() && nexo::SettingsStore::instance().value("simulator", "cbs", text) != 0)
            text.clear();
        if (text.empty()) {
            buffer[0] = '\0';
            return NEXO_ERR_NOT_FOUND;
        }
        return copyOut(text, buffer, size);
    } catch (...) {
        buffer[0] = '\0';
        return NEXO_ERR_IO;
    }
}

} // extern "C"
