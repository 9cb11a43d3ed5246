#ifndef LINKDECK_LANGUAGETEXT_H
#define LINKDECK_LANGUAGETEXT_H

#include <QString>

// Turns the raw text of a language file's "item" into the text shown: literal escape sequences
// taken out, a trailing shortcut hint cut off, white space simplified.
namespace LanguageText {

QString clean(QString text, const QString &language);

} // namespace LanguageText

#endif // LINKDECK_LANGUAGETEXT_H
