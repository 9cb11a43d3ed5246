#ifndef LINKDECK_DEVICEMGRUIPLUGIN_LASTUSEDDEVICE_H
#define LINKDECK_DEVICEMGRUIPLUGIN_LASTUSEDDEVICE_H

#include <QString>

// The device the last detection found, kept in the settings (group "devicemgr", key "lastused").
namespace LastUsedDevice {

QString load();
void store(const QString &device);

// Device-service event handler: on a detection event that reports exactly one device, that
// device becomes the last used one (several or none leave the stored device as it is, which is
// also what start-up falls back to). Runs on the device service's thread.
int onDeviceEvent(int enNotifyType, void *pData);

} // namespace LastUsedDevice

#endif // LINKDECK_DEVICEMGRUIPLUGIN_LASTUSEDDEVICE_H
