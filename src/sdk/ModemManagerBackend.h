#ifndef NEXO_MODEMMANAGERBACKEND_H
#define NEXO_MODEMMANAGERBACKEND_H

#include "DeviceBackend.h"

namespace nexo {

// The ModemManager backend, or null when this library was built without libmm-glib. Created on
// the first call and kept until the process ends; its thread stops at exit.
DeviceBackend *modemManagerBackend();

// True when ModemManager's name has an owner on the system bus now (bounded wait); false also
// when the backend is not built in.
bool modemManagerOnSystemBus();

} // namespace nexo

#endif // NEXO_MODEMMANAGERBACKEND_H
