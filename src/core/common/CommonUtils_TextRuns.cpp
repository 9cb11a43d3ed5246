#include "CommonUtils.h"

#include "CharClass.h"

bool CommonUtils::isNonAsciiCharPresent(QString strText)
{
    for (const QChar c : qAsConst(strText)) {
        if (!CharClass::isAscii(c))
            return true;
    }
    return false;
}

QStringList CommonUtils::SplitAsciiAndUnicodeString(QString strText)
{
    QStringList runs;
    CharClass::forEachRun(strText, [&runs](QStringView run) { runs.append(run.toString()); });
    return runs;
}

QStringList CommonUtils::SplitAsciiString(QString strText, bool &bFlag)
{
    // The flag is never raised; callers test it all the same.
    bFlag = false;
    if (strText.isEmpty())
        return QStringList();
    return QStringList(strText);
}

QString CommonUtils::addSpaceToNewLine(QString strText)
{
    if (strText.contains(QLatin1Char('\n')))
        strText.replace(QLatin1Char('\n'), QLatin1String(" \n"));
    return strText;
}
