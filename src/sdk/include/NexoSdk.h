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

NEXO_API long NEXO_GetSettings(const NEXO_CHAR16 *group, const NEXO_CHAR16 *key,
                               NEXO_CHAR16 **value);
NEXO_API long NEXO_SetSettings(const NEXO_CHAR16 *group, const NEXO_CHAR16 *key,
                               const NEXO_CHAR16 *value);

NEXO_API long NEXO_DevSrv_RegisterDevInitEventCallback(NEXO_DevEventCallback cb);
NEXO_API long NEXO_DevSrv_RegisterDevMgrCallback(NEXO_DevEventCallback cb);
NEXO_API long NEXO_DevSrv_UnRegisterDevInitEventCallback(NEXO_DevEventCallback cb);
NEXO_API long NEXO_DevSrv_UnRegisterDevMgrCallback(NEXO_DevEventCallback cb);
NEXO_API long NEXO_DevSrv_GetAvailableDeviceList(void *block); /* NEXO_DEVICE_LIST_SIZE bytes */
NEXO_API long NEXO_DevSrv_GetCustomizeName(char *buffer);      /* NEXO_CUSTOMIZE_NAME_SIZE bytes */

#ifdef __cplusplus
}
#endif

#endif /* NEXO_SDK_H */
