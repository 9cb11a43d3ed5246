#ifndef LINKDECK_SETTINGSUIPLUGIN_SETTINGSUIPLUGIN_H
#define LINKDECK_SETTINGSUIPLUGIN_SETTINGSUIPLUGIN_H

#include "PagePlugin.h"
#include "SettingsPage.h"

// The settings page: the choices the user makes for the next start.
class SettingsUIPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin)
public:
    SettingsUIPlugin()
        : PagePlugin("SettingsUIPlugin", "IDS_SETTINGS_TITLE", &SettingsPage::create)
    {}
};

#endif // LINKDECK_SETTINGSUIPLUGIN_SETTINGSUIPLUGIN_H
