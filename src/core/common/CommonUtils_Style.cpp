#include "CommonUtils.h"

#include "CoreLogging.h"
#include "LogLine.h"

#include <QFile>
#include <QTextStream>
#include <QWidget>

namespace {

const char kSource[] = LD_SOURCE("common/CommonUtils");

// Read once, on the user-interface thread, by the first widget that is named.
QString s_strStyleSheet;

} // namespace

// The lines are joined with nothing between them, as skins have always been written for.
QString CommonUtils::GetQStyleString()
{
    QString strStyle;
    QFile file(GetPluginLibraryPath() + QStringLiteral("/skin/IDS_SKIN_DEFAULT.qss"));
    if (!file.exists() || !file.open(QIODevice::ReadOnly))
        return strStyle;
    QTextStream stream(&file);
    while (!stream.atEnd())
        strStyle += stream.readLine();
    return strStyle;
}

void CommonUtils::setObjectNameExForLDK(QWidget *pWidget, QString strName)
{
    if (!pWidget) {
        qCDebug(lcCommon, "%s: widget is NULL",
                LogLine::prefix(kSource, "setObjectNameExForLDK").constData());
        return;
    }
    pWidget->setObjectName(IsCurLangIsEnglish() ? strName : strName + QStringLiteral("_Ru"));
    if (s_strStyleSheet.isEmpty())
        s_strStyleSheet = GetQStyleString();
    // Setting the sheet again makes the new name's rules apply.
    pWidget->setStyleSheet(s_strStyleSheet);
}
