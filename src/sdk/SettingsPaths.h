#ifndef NEXO_SETTINGSPATHS_H
#define NEXO_SETTINGSPATHS_H

#include <string>

namespace nexo {

// The user's settings file: $LINKDECK_SETTINGS if set, else
// $XDG_CONFIG_HOME/linkdeck/settings.ini ($HOME/.config when XDG_CONFIG_HOME is unset or not
// absolute). Read from the environment on every call so that a process may switch files.
std::string userSettingsPath();

// The shipped defaults: config/defaults.ini in the directory of the running executable.
std::string defaultSettingsPath();

} // namespace nexo

#endif // NEXO_SETTINGSPATHS_H
