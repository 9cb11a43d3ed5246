// A plugin's menu file, read for the operator "nordtel".
#include "FuzzSupport.h"
#include "MenuParse.h"

#include <NexoSim.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool operatorSet = (NexoSim_SetCustomizeName("nordtel"), true);
    Q_UNUSED(operatorSet)
    Fuzz::writeAppFile(QStringLiteral("plugins/FuzzPlugin/Menu.xml"), Fuzz::bytes(data, size));
    MENU::MenuParse parse(QStringLiteral("FuzzPlugin"), QStringLiteral("Menu.xml"));
    return 0;
}
