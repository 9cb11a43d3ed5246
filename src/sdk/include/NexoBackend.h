/* What backs the device service, and what the design's NexoSdk.h does not offer: the choice of
   backend, a detection start that works with every backend, and the SIM's operator id. */
#ifndef NEXO_BACKEND_H
#define NEXO_BACKEND_H

#include "NexoSdk.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Status codes besides those of NexoSdk.h. */
enum {
    NEXO_ERR_SERVICE_UNAVAILABLE = 7, /* the device service (bus or daemon) cannot be reached */
    NEXO_ERR_BUSY = 8                 /* callbacks are registered with the active backend */
};

enum { NEXO_OPERATOR_ID_SIZE = 16 };

/* The NEXO_DevSrv_* functions forward to one backend:
     "simulator"     the simulated device service of NexoSim.h;
     "modemmanager"  the modems of ModemManager on the system bus ($DBUS_SYSTEM_BUS_ADDRESS is
                     honoured), with callbacks on the library's own thread;
     "auto"          ModemManager when its name is on the system bus now, else the simulator.
   Unless NEXO_Backend_Select chose one, the first device function chooses from
   $LINKDECK_DEVICE_BACKEND, else the settings key [device] backend, else "simulator". */

/* Chooses the backend now: one of the names above, or NULL for the environment and settings as
   described. 0; NEXO_ERR_INVALID_ARGUMENT for an unknown name; NEXO_ERR_NOT_FOUND when this
   library was built without ModemManager; NEXO_ERR_BUSY while callbacks are registered with
   the active backend (the choice stays). */
NEXO_API long NEXO_Backend_Select(const char *name);
/* The active backend, "simulator" or "modemmanager" (chosen first when none is yet). */
NEXO_API const char *NEXO_Backend_Name(void);
/* What a device manager calls to start detection. Simulator: NexoSim_StartDetection.
   ModemManager: NEXO_EVENT_DEV_DETECTED to the registered callbacks when a modem is present. */
NEXO_API long NEXO_Backend_StartDetection(void);

/* The SIM's operator identifier of the first available device (MCC followed by MNC, 5 or 6
   digits; "" when the SIM is locked or absent), NUL-terminated into a buffer of
   NEXO_OPERATOR_ID_SIZE bytes. NEXO_ERR_NOT_FOUND when no device is available. */
NEXO_API long NEXO_DevSrv_GetSimOperatorId(char *buffer);

#ifdef __cplusplus
}
#endif

#endif /* NEXO_BACKEND_H */
