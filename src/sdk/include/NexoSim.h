/* Control of the simulated device service. */
#ifndef NEXO_SIM_H
#define NEXO_SIM_H

#include "NexoSdk.h"

#ifdef __cplusplus
extern "C" {
#endif

/* No devices, no customization name, results 0, no pending events, detection defaults. */
NEXO_API void NexoSim_Reset(void);
/* The available device list (at most NEXO_DEVICE_LIST_MAX names are reported). */
NEXO_API void NexoSim_SetDevices(const char *const *names, int count);
/* NULL: GetCustomizeName fails (non-zero). */
NEXO_API void NexoSim_SetCustomizeName(const char *name);
/* The SIM's operator id (MCC and MNC) that NEXO_DevSrv_GetSimOperatorId reports while devices
   are set; "" by default and for NULL. */
NEXO_API void NexoSim_SetSimOperatorId(const char *operatorId);
/* What both Register functions return. */
NEXO_API void NexoSim_SetRegisterResult(long result);
/* What GetAvailableDeviceList returns. */
NEXO_API void NexoSim_SetDeviceListResult(long result);
/* Delivers the event after delayMs on the library's own thread, once to each distinct
   registered callback. */
NEXO_API void NexoSim_PostEvent(int enNotifyType, int delayMs);
/* Registrations of both kinds now in force. */
NEXO_API int NexoSim_RegisteredCallbackCount(void);

/* Detection as a device manager starts it: NexoSim_StartDetection posts the configured event
   (0 posts nothing) after the configured delay. Default: NEXO_EVENT_DEV_DETECTED after 100 ms. */
NEXO_API void NexoSim_SetDetection(int enNotifyType, int delayMs);
NEXO_API long NexoSim_StartDetection(void);
/* Blocks until every event posted so far has been delivered (or timeoutMs passed); 0 when idle,
   NEXO_ERR_TIMEOUT otherwise (at once when called from inside a callback). */
NEXO_API long NexoSim_WaitIdle(int timeoutMs);

/* Takes the devices and the customization name from the settings store, group "simulator":
   key "devices" (names separated by ';', blanks around them dropped), key "customize" and key
   "operatorid" (the SIM's operator id).
   A missing key leaves that part as it is. 0 when at least one key was found, otherwise
   NEXO_ERR_NOT_FOUND. */
NEXO_API long NexoSim_LoadFromSettings(void);

/* The cell-broadcast message the simulated network sends; NULL or "" means none. */
NEXO_API void NexoSim_SetCellBroadcast(const char *text);
/* Copies the current cell-broadcast message (UTF-8) NUL-terminated, cut to fit, into buffer of
   size bytes. Without a message set, the settings store's group "simulator", key "cbs" gives it.
   0, NEXO_ERR_NOT_FOUND when there is no message, NEXO_ERR_INVALID_ARGUMENT for no buffer. */
NEXO_API long NexoSim_GetCellBroadcast(char *buffer, int size);

#ifdef __cplusplus
}
#endif

#endif /* NEXO_SIM_H */
