// Text (UTF-8) turned into rich text with anchors.
#include "CommonUtils.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    CommonUtils::ParseAndCreateHyperLinks(QString::fromUtf8(Fuzz::bytes(data, size)));
    return 0;
}
