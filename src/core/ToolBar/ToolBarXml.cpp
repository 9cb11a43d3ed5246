#include "ToolBarLogic.h"
#include "ToolBarShared.h"
#include "common/CoreLogging.h"
#include "common/XmlReading.h"

// Reading the toolbar file into the caller's item list.
namespace {
using ToolBarShared::kSource;

const QString kCallPlugin = QStringLiteral("CallUIPlugin");

using XmlReading::attribute;
using XmlReading::isStartOf;
using XmlReading::readToNextStart;

// The call buttons appear only while the call-voice setting begins with "1".
bool callVoiceEnabled()
{
    const QString strValue =
        CommonUtils::GetSettings(QStringLiteral("callui"), QStringLiteral("callvoice"));
    return !strValue.isEmpty() && strValue.at(0) == QLatin1Char('1');
}

bool keepItem(const QString &strPluginName)
{
    if (strPluginName.isEmpty())
        return true;
    if (!ToolBarLogic::getPlugin(strPluginName))
        return false;
    return strPluginName != kCallPlugin || callVoiceEnabled();
}

ToolItem itemFrom(const QXmlStreamReader &reader)
{
    ToolItem item;
    item.id = attribute(reader, "id").toInt();
    item.resource = attribute(reader, "resource");
    item.enabled = attribute(reader, "enabled");
    item.disabled = attribute(reader, "disabled");
    item.search = item.resource.contains(QLatin1String("SEARCH"), Qt::CaseSensitive);
    return item;
}
} // namespace

bool ToolBarLogic::getToolBarCoount(QXmlStreamReader &reader, int &iCount)
{
    for (; !reader.atEnd(); reader.readNext()) {
        if (isStartOf(reader, "ToolBar")) {
            iCount = attribute(reader, "count").toInt();
            return true;
        }
    }
    qCDebug(lcToolBar, "%s: Exit: XML File Content is Wrong!",
            LogLine::prefix(kSource, "getToolBarCoount").constData());
    return false;
}

bool ToolBarLogic::GetXmlData(QString strPath, QList<ToolItem> &lstItems, bool &bGroupInGroup,
                              QString strUnused)
{
    Q_UNUSED(strUnused)
    const QByteArray prefix = LogLine::prefix(kSource, "GetXmlData");
    lstItems.clear();
    qCDebug(lcToolBar, "%s: Enter", prefix.constData());

    XmlReading::FileReader reader(strPath);
    if (reader.open(lcToolBar(), QByteArray(), prefix + ": Exit: XML File is not opened",
                    QIODevice::ReadOnly | QIODevice::Text) != XmlReading::FileReader::Opened)
        return false;
    reader.readNext();
    int iCount = 0;
    getToolBarCoount(reader, iCount);
    if (iCount == 0) {
        qCDebug(lcToolBar, "%s: Exit: Item Count is ZERO!", prefix.constData());
        return false;
    }

    // Skipped items still use up one of the counted places.
    for (int i = 0; i < iCount; ++i) {
        if (!readToNextStart(reader, "item"))
            return false;
        if (keepItem(attribute(reader, "pluginname")))
            lstItems.append(itemFrom(reader));
    }
    if (readToNextStart(reader, "GroupInGroup"))
        bGroupInGroup = attribute(reader, "enable").toInt() != 0;

    qCDebug(lcToolBar, "%s: Exit", prefix.constData());
    return true;
}
