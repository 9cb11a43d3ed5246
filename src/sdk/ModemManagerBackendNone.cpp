// Built instead of ModemManagerBackend.cpp when libmm-glib was not found (or
// LINKDECK_MODEMMANAGER is off): the simulator is the only backend.

#include "ModemManagerBackend.h"

namespace nexo {

DeviceBackend *modemManagerBackend()
{
    return nullptr;
}

bool modemManagerOnSystemBus()
{
    return false;
}

} // namespace nexo
