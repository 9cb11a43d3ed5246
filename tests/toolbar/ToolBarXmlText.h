#ifndef LINKDECK_TESTS_TOOLBARXMLTEXT_H
#define LINKDECK_TESTS_TOOLBARXMLTEXT_H

#include "ToolBarLogic.h"

#include <QByteArray>
#include <QStringList>

// Toolbar files and item lists written compactly for the toolbar tests.
namespace ToolBarXmlText {

// <item id="N" resource="IDS_TB_N" enabled="N_on.png" disabled="N_off.png" [pluginname="P"]/>
inline QByteArray item(int id, const QByteArray &pluginName = QByteArray(),
                       const QByteArray &resource = QByteArray())
{
    const QByteArray n = QByteArray::number(id);
    QByteArray line = "<item id=\"" + n + "\" resource=\"" +
                      (resource.isEmpty() ? "IDS_TB_" + n : resource) + "\" enabled=\"" + n +
                      "_on.png\" disabled=\"" + n + "_off.png\"";
    if (!pluginName.isNull())
        line += " pluginname=\"" + pluginName + "\"";
    return line + "/>\n";
}

inline QByteArray toolbar(const QByteArray &count, const QByteArray &items,
                          const QByteArray &after = QByteArray())
{
    return "<?xml version=\"1.0\"?>\n<root><ToolBar count=\"" + count + "\">\n" + items +
           "</ToolBar>" + after + "</root>\n";
}

// The ids of the items, comma-separated.
inline QString ids(const QList<ToolItem> &items)
{
    QStringList parts;
    for (const ToolItem &item : items)
        parts << QString::number(item.id);
    return parts.join(QLatin1Char(','));
}

} // namespace ToolBarXmlText

#endif // LINKDECK_TESTS_TOOLBARXMLTEXT_H
