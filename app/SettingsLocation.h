#ifndef LINKDECK_APP_SETTINGSLOCATION_H
#define LINKDECK_APP_SETTINGSLOCATION_H

#include <QString>

// The settings file the device-service library uses: $LINKDECK_SETTINGS, else
// $XDG_CONFIG_HOME/linkdeck/settings.ini with $HOME/.config when XDG_CONFIG_HOME is unset or
// relative.
QString settingsFileInUse();

#endif // LINKDECK_APP_SETTINGSLOCATION_H
