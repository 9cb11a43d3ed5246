#include "CommonUtils.h"

#include "Change.h"

#include <cstdio>

namespace {

QString unitLabel(const TagUnits &unit, const QString &strPluginName)
{
    return unit.strTrKey.isEmpty() ? unit.strUnitName : Change::tr(unit.strTrKey, strPluginName);
}

// The last row in table order whose threshold lies strictly below the value, else the first
// row: callers list rows by rising threshold and so get the largest unit that fits.
const TagUnits &chooseUnit(const QVector<TagUnits> &units, unsigned long long ullValue)
{
    const TagUnits *chosen = &units.first();
    for (const TagUnits &unit : units) {
        if (unit.ullThreshold < ullValue)
            chosen = &unit;
    }
    return *chosen;
}

// The override mark for punctuation that follows a character of the given direction, or null.
QChar overrideMarkAfter(QChar::Direction direction)
{
    switch (direction) {
    case QChar::DirL:
        return QChar(0x202D); // LEFT-TO-RIGHT OVERRIDE
    case QChar::DirR:
        return QChar(0x202E); // RIGHT-TO-LEFT OVERRIDE
    default:
        return QChar();
    }
}

bool isCorrectedPunctuation(char c)
{
    switch (c) {
    case ',':
    case '"':
    case '(':
    case ')':
    case '[':
    case ']':
    case '{':
    case '}':
        return true;
    default:
        return false;
    }
}

} // namespace

QString CommonUtils::SpeedUnitToString(QVector<TagUnits> units, QString strPluginName)
{
    if (units.isEmpty())
        return QString();
    return unitLabel(units.first(), strPluginName);
}

QString CommonUtils::SpeedFluxToString(QVector<TagUnits> units, unsigned long long ullValue,
                                       QString strPluginName)
{
    if (units.isEmpty())
        return QString();
    const TagUnits &unit = chooseUnit(units, ullValue);
    // printf's own formatting, so a zero divisor prints as printf prints infinities and NaNs.
    char number[64];
    std::snprintf(number, sizeof number, "%.1f",
                  static_cast<double>(ullValue) / static_cast<double>(unit.iDivisor));
    return QString::fromLatin1(number) + QLatin1Char(' ') + unitLabel(unit, strPluginName);
}

// The length is taken once although the text grows, and each correction replaces every
// occurrence of the character, so a character met several times collects several marks. Both
// are how the labels have always been corrected.
void CommonUtils::ParanthesisCorrection(QString &strText)
{
    const int iLength = strText.length();
    for (int i = 1; i < iLength; ++i) {
        const QChar current = strText.at(i);
        const char c = current.toLatin1();
        if (!isCorrectedPunctuation(c))
            continue;
        const QChar mark = overrideMarkAfter(strText.at(i - 1).direction());
        if (mark.isNull())
            continue;
        strText.replace(current, QString(QLatin1Char(c)) + mark);
    }
}

bool CommonUtils::IsCurLangIsEnglish()
{
    return Change::GetLangName() == QLatin1String("en-us");
}
