// The status bar's operator list, read afresh by a new instance for every input.
#include "FuzzSupport.h"
#include "StatusBarOpListParse.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Fuzz::writeAppFile(QStringLiteral("plugins/StatusBarMgrPlugin/OperatorList.xml"),
                       Fuzz::bytes(data, size));
    StatusBarOpListParse *list = StatusBarOpListParse::GetInstance();
    list->GetOperatorData(QStringLiteral("262"), QStringLiteral("01"));
    list->GetOperatorData(QStringLiteral("262"), QStringLiteral("99"));
    StatusBarOpListParse::DestroyInstance();
    return 0;
}
