// A toolbar file (no plugin container: items naming a plugin are left out).
#include "FuzzSupport.h"
#include "ToolBarLogic.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString path = Fuzz::writeAppFile(QStringLiteral("plugins/XFramePlugin/ToolBar.xml"),
                                            Fuzz::bytes(data, size));
    QList<ToolItem> items;
    bool groupInGroup = false;
    ToolBarLogic::GetXmlData(path, items, groupInGroup, QString());
    return 0;
}
