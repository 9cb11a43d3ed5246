#include "CommonUtils.h"

#include "CoreLogging.h"
#include "LogLine.h"

#include <QApplication>
#include <QFontMetrics>
#include <QWidget>

namespace {

const char kSource[] = LD_SOURCE("common/CommonUtils");

// Width first, height second: the order callers have always received, whatever the names say.
void measure(const QFont &font, const QString &strText, int &iFirst, int &iSecond)
{
    const QFontMetrics metrics(font);
    iFirst = metrics.horizontalAdvance(strText);
    iSecond = metrics.height();
}

} // namespace

void CommonUtils::GetApplicationStringHeightAndWidth(QString strText, int &iFirst, int &iSecond)
{
    iFirst = 0;
    iSecond = 0;
    if (strText.isEmpty()) {
        qCDebug(lcCommon, "%s %d : Empty String in the widget",
                LogLine::stampedPrefix(kSource, "GetApplicationStringHeightAndWidth").constData(),
                __LINE__);
        return;
    }
    measure(QApplication::font(), strText, iFirst, iSecond);
}

int CommonUtils::GetWidgetStringHeightAndWidth(QWidget *pWidget, QString strText, int &iFirst,
                                               int &iSecond)
{
    iFirst = 0;
    iSecond = 0;
    if (!pWidget) {
        qCDebug(lcCommon, "%s %d : Bad input Param",
                LogLine::stampedPrefix(kSource, "GetWidgetStringHeightAndWidth").constData(),
                __LINE__);
        return 23;
    }
    if (strText.isEmpty()) {
        qCDebug(lcCommon, "%s %d : Empty String in the widget",
                LogLine::stampedPrefix(kSource, "GetWidgetStringHeightAndWidth").constData(),
                __LINE__);
        return 0;
    }
    measure(pWidget->font(), strText, iFirst, iSecond);
    return 0;
}
