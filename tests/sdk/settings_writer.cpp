// Writes <count> keys "<prefix><n>" with values "value-<prefix><n>" into group <group> of the
// settings file that LINKDECK_SETTINGS names, once <start file> exists (so that several such
// processes write at the same time). Exit status: the number of failed writes (at most 100).

#include "NexoSdk.h"

#include <chrono>
#include <cstdlib>
#include <string>
#include <sys/stat.h>
#include <thread>

namespace {

std::u16string toUtf16(const std::string &ascii)
{
    return std::u16string(ascii.begin(), ascii.end());
}

const NEXO_CHAR16 *nexoText(const std::u16string &text)
{
    return reinterpret_cast<const NEXO_CHAR16 *>(text.c_str());
}

bool waitForFile(const char *path)
{
    struct stat st
    {
    };
    for (int i = 0; i < 1000; ++i) {
        if (::stat(path, &st) == 0)
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 5)
        return 100;
    const std::u16string group = toUtf16(argv[1]);
    const std::string prefix = argv[2];
    const int count = std::atoi(argv[3]);
    if (!waitForFile(argv[4]))
        return 100;
    int failures = 0;
    for (int i = 0; i < count; ++i) {
        const std::string key = prefix + std::to_string(i);
        if (NEXO_SetSettings(nexoText(group), nexoText(toUtf16(key)),
                             nexoText(toUtf16("value-" + key))) != 0)
            ++failures;
    }
    return failures > 99 ? 99 : failures;
}
