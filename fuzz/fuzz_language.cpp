// A plugin's language file for the current language (en-us).
#include "Change.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Fuzz::writeAppFile(QStringLiteral("plugins/FuzzPlugin/FuzzPlugin_en-us.lang"),
                       Fuzz::bytes(data, size));
    Change::LoadLangFile(QStringLiteral("FuzzPlugin"));
    return 0;
}
