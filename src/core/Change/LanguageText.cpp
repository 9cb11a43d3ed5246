#include "LanguageText.h"

#include <QLatin1String>

namespace {

const int kMarkerCount = 5;
const QLatin1String kShortcutMarkers[kMarkerCount] = {QLatin1String("(Ctrl+"),
                                                      QLatin1String("Ctrl+"), QLatin1String("(Del"),
                                                      QLatin1String("(F2"), QLatin1String("F2")};
const QLatin1String kGermanShortcutMarkers[kMarkerCount] = {
    QLatin1String("(Strg+"), QLatin1String("Strg+"), QLatin1String("(Entf"), QLatin1String("(F2"),
    QLatin1String("F2")};

// Translators write escape sequences literally ("\n" as two characters); line breaks are
// handled by the simplification.
QString removeLiteralEscapes(QString text)
{
    text.remove(QLatin1String("\\n"));
    text.remove(QLatin1String("\\r"));
    text.replace(QLatin1String("\\t"), QLatin1String(" "));
    text.remove(QLatin1String("\\v"));
    text.remove(QLatin1String("\\f"));
    return text;
}

// Menus show shortcuts themselves. A marker at the very start is part of the text, not a hint.
QString cutShortcutHint(QString text, const QString &language)
{
    const QLatin1String *markers =
        language == QLatin1String("de-de") ? kGermanShortcutMarkers : kShortcutMarkers;
    for (int i = 0; i < kMarkerCount; ++i) {
        const int position = text.lastIndexOf(markers[i]);
        if (position > 0) {
            text.truncate(position);
            break;
        }
    }
    if (text.endsWith(QLatin1String("Del")))
        text.truncate(text.lastIndexOf(QLatin1String("Del")));
    return text;
}

} // namespace

namespace LanguageText {

QString clean(QString text, const QString &language)
{
    return cutShortcutHint(removeLiteralEscapes(std::move(text)), language).simplified();
}

} // namespace LanguageText
