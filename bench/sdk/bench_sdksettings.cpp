// Cost of NEXO_GetSettings on an unchanged file (served from the parsed copy after one stat of
// each file) next to the least any lookup has to do: a map lookup under a mutex plus the new[]
// UTF-16 copy the caller receives. Also prints what one NEXO_SetSettings costs (a locked
// re-read, a synced temporary file and a rename), which the disk dominates.
#include "NexoSdk.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

const int kKeys = 200;
const int kLookupsPerRound = 50000;
const int kRounds = 9;

using Clock = std::chrono::steady_clock;

std::u16string utf16(const std::string &ascii)
{
    return std::u16string(ascii.begin(), ascii.end());
}

const NEXO_CHAR16 *nexo(const std::u16string &text)
{
    return reinterpret_cast<const NEXO_CHAR16 *>(text.c_str());
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

template<typename Lookup>
double nanosecondsPerLookup(const std::vector<std::u16string> &keys, Lookup lookup)
{
    const auto start = Clock::now();
    size_t total = 0;
    for (int n = 0; n < kLookupsPerRound; ++n)
        total += lookup(keys[static_cast<size_t>(n) % keys.size()]);
    const double elapsed = std::chrono::duration<double, std::nano>(Clock::now() - start).count();
    if (total == 0)
        std::fprintf(stderr, "no value found\n");
    return elapsed / kLookupsPerRound;
}

} // namespace

int main()
{
    char directory[] = "/tmp/bench_sdksettings-XXXXXX";
    if (!mkdtemp(directory))
        return 1;
    const std::string file = std::string(directory) + "/settings.ini";
    setenv("LINKDECK_SETTINGS", file.c_str(), 1);

    const std::u16string group = utf16("bench");
    std::vector<std::u16string> keys;
    std::map<std::u16string, std::u16string> table;
    for (int i = 0; i < kKeys; ++i) {
        keys.push_back(utf16("key" + std::to_string(i)));
        table[keys.back()] = utf16("value number " + std::to_string(i));
    }

    std::vector<double> writeTimes;
    for (int i = 0; i < kKeys; ++i) {
        const auto start = Clock::now();
        if (NEXO_SetSettings(nexo(group), nexo(keys[i]), nexo(table[keys[i]])) != 0)
            return 2;
        writeTimes.push_back(
            std::chrono::duration<double, std::micro>(Clock::now() - start).count());
    }

    std::mutex mutex;
    const auto bare = [&](const std::u16string &key) -> size_t {
        std::lock_guard<std::mutex> lock(mutex);
        const auto found = table.find(key);
        if (found == table.end())
            return 0;
        auto *copy = new NEXO_CHAR16[found->second.size() + 1];
        std::copy(found->second.begin(), found->second.end(), copy);
        copy[found->second.size()] = 0;
        const size_t size = found->second.size();
        delete[] copy;
        return size;
    };
    const auto library = [&](const std::u16string &key) -> size_t {
        NEXO_CHAR16 *value = nullptr;
        if (NEXO_GetSettings(nexo(group), nexo(key), &value) != 0)
            return 0;
        size_t size = 0;
        while (value[size])
            ++size;
        delete[] value;
        return size;
    };

    std::vector<double> bareTimes, libraryTimes;
    for (int round = 0; round < kRounds; ++round) {
        bareTimes.push_back(nanosecondsPerLookup(keys, bare));
        libraryTimes.push_back(nanosecondsPerLookup(keys, library));
    }
    const double bareNs = median(bareTimes);
    const double libraryNs = median(libraryTimes);
    std::printf("bare map lookup + copy:        %10.1f ns\n", bareNs);
    std::printf("NEXO_GetSettings (cached):     %10.1f ns\n", libraryNs);
    std::printf("ratio get / bare:              %10.2f\n", libraryNs / bareNs);
    std::printf("NEXO_SetSettings (median):     %10.1f us (new keys into a file of 0..%d)\n",
                median(writeTimes), kKeys - 1);

    for (const char *suffix : {"", ".lock"})
        unlink((file + suffix).c_str());
    rmdir(directory);
    return 0;
}
