#ifndef LINKDECK_DEVICEMGRUIPLUGIN_LASTUSEDDEVICE_H
#define LINKDECK_DEVICEMGRUIPLUGIN_LASTUSEDDEVICE_H

#include <QString>

// The device the last detection found, kept in the settings (group "devicemgr", key "lastused").
namespace LastUsedDevice {

QString load();
void store(const QString &device);

// The device service's only available device, or an empty string when it reports none, several
// or no list at all.
QString singleAvailableDevice();

} // namespace LastUsedDevice

#endif // LINKDECK_DEVICEMGRUIPLUGIN_LASTUSEDDEVICE_H
