#include "SettingsPaths.h"

#include <cstdlib>
#include <limits.h>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace nexo {
namespace {

std::string environment(const char *name)
{
    const char *value = std::getenv(name);
    return value ? std::string(value) : std::string();
}

std::string homeDirectory()
{
    std::string home = environment("HOME");
    if (!home.empty())
        return home;
    long size = sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(size > 0 ? static_cast<size_t>(size) : 16384);
    passwd entry{};
    passwd *result = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &result) == 0 && result)
        return result->pw_dir;
    return std::string();
}

std::string applicationDirectory()
{
    char buffer[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer - 1);
    if (length <= 0)
        return std::string();
    std::string path(buffer, static_cast<size_t>(length));
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

} // namespace

std::string userSettingsPath()
{
    const std::string explicitPath = environment("LINKDECK_SETTINGS");
    if (!explicitPath.empty())
        return explicitPath;
    std::string configHome = environment("XDG_CONFIG_HOME");
    if (configHome.empty() || configHome.front() != '/')
        configHome = homeDirectory() + "/.config";
    return configHome + "/linkdeck/settings.ini";
}

std::string defaultSettingsPath()
{
    // The executable does not move while the process runs. Never destroyed, so that readers
    // still running at exit find it.
    static const std::string *path =
        new std::string(applicationDirectory() + "/config/defaults.ini");
    return *path;
}

} // namespace nexo
