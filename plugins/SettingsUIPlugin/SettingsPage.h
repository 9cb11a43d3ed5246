#ifndef LINKDECK_SETTINGSUIPLUGIN_SETTINGSPAGE_H
#define LINKDECK_SETTINGSUIPLUGIN_SETTINGSPAGE_H

class QWidget;

// The settings page: whether to connect on its own when a device is found (settings
// "settings", "autoconnect") and the user-interface language, which a click on its label opens.
namespace SettingsPage {
QWidget *create();
} // namespace SettingsPage

#endif // LINKDECK_SETTINGSUIPLUGIN_SETTINGSPAGE_H
