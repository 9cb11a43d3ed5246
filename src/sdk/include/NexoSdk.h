/* The device-service library: settings store and device service. 0 means success. */
#ifndef NEXO_SDK_H
#define NEXO_SDK_H

#if defined(NEXO_SDK_LIBRARY)
#define NEXO_API __attribute__((visibility("default")))
#else
#define NEXO_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef unsigned short NEXO_CHAR16; /* UTF-16 code unit */
typedef int (*NEXO_DevEventCallback)(int enNotifyType, void *pData);

enum {
    NEXO_EVENT_DEV_REJECT = 6016,
    NEXO_EVENT_DEV_DEVICE_INVALID = 6601,
    NEXO_EVENT_DEV_DETECTED = 6606
};

enum { NEXO_DEVICE_LIST_SIZE = 8708, NEXO_CUSTOMIZE_NAME_SIZE = 256 };

/* Device list block: device count (int32) at offset 0, then the names, NUL-terminated in the
   local 8-bit encoding, each in a slot of NEXO_DEVICE_NAME_SLOT bytes from offset 12 on. */
enum {
    NEXO_DEVICE_LIST_COUNT_OFFSET = 0,
    NEXO_DEVICE_LIST_NAMES_OFFSET = 12,
    NEXO_DEVICE_NAME_SLOT = 543,
    NEXO_DEVICE_LIST_MAX = 16
};

/* Status codes besides 0. */
enum {
    NEXO_ERR_INVALID_ARGUMENT = 1,
    NEXO_ERR_NOT_FOUND = 2,
    NEXO_ERR_IO = 3,
    NEXO_ERR_NOT_REGISTERED = 4,
    NEXO_ERR_NO_CUSTOMIZATION = 5,
    NEXO_ERR_TIMEOUT = 6
};

/* Settings: the file $LINKDECK_SETTINGS, else $XDG_CONFIG_HOME/linkdeck/settings.ini (default
   $HOME/.config), looked up on every call; config/defaults.ini beside the executable supplies
   keys the user's file lacks. Group, key and value are NUL-terminated UTF-16; one with an
   unpaired surrogate is rejected with NEXO_ERR_INVALID_ARGUMENT.
   NEXO_GetSettings: 0 and *value = a new[] copy for the caller's delete[]; NEXO_ERR_NOT_FOUND
   (or another error) leaves *value null. A corrupt file reads as empty.
   NEXO_SetSettings: 0, or NEXO_ERR_IO. Writes replace the file atomically and are serialised
   across threads and processes; a corrupt or unreadable file is first kept aside as
   "<file>.corrupt-<YYYYMMDDhhmmss>" and never overwritten unkept. */
NEXO_API long NEXO_GetSettings(const NEXO_CHAR16 *group, const NEXO_CHAR16 *key,
                               NEXO_CHAR16 **value);
NEXO_API long NEXO_SetSettings(const NEXO_CHAR16 *group, const NEXO_CHAR16 *key,
                               const NEXO_CHAR16 *value);

/* Device events are delivered on the library's own thread, once per event to each distinct
   registered function (whatever kinds it is registered under), with pData NULL. Registering a
   function twice under one kind counts once; unregistering one that is not registered under
   that kind gives NEXO_ERR_NOT_REGISTERED. When the last registration of a function goes, the
   call returns only after a delivery to it that is under way has ended (except when called
   from inside that delivery). Callbacks may call any function of this library. */
NEXO_API long NEXO_DevSrv_RegisterDevInitEventCallback(NEXO_DevEventCallback cb);
NEXO_API long NEXO_DevSrv_RegisterDevMgrCallback(NEXO_DevEventCallback cb);
NEXO_API long NEXO_DevSrv_UnRegisterDevInitEventCallback(NEXO_DevEventCallback cb);
NEXO_API long NEXO_DevSrv_UnRegisterDevMgrCallback(NEXO_DevEventCallback cb);
/* Writes the count and the names (cut to fit their slots) into the caller's zero-filled block;
   nothing else of the block is touched. */
NEXO_API long NEXO_DevSrv_GetAvailableDeviceList(void *block); /* NEXO_DEVICE_LIST_SIZE bytes */
/* Copies the name NUL-terminated, cut to fit; NEXO_ERR_NO_CUSTOMIZATION when there is none. */
NEXO_API long NEXO_DevSrv_GetCustomizeName(char *buffer); /* NEXO_CUSTOMIZE_NAME_SIZE bytes */

#ifdef __cplusplus
}
#endif

#endif /* NEXO_SDK_H */
