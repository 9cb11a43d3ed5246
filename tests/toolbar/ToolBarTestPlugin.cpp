#include "ToolBarTestPlugin.h"

bool ToolBarTestPlugin::QueryInterface(int iInterfaceNumber, QObject **ppInterface)
{
    if (!ppInterface)
        return false;
    *ppInterface = iInterfaceNumber == LD_INTERFACE_ROOT ? this : nullptr;
    return *ppInterface != nullptr;
}
