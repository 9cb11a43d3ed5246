#ifndef NEXO_INIESCAPE_H
#define NEXO_INIESCAPE_H

#include <optional>
#include <string>
#include <string_view>

namespace nexo {

// What a piece of text is in a settings file line; it decides which characters need escaping.
enum class IniField { Group, Key, Value };

// Escapes text so that it reads back unchanged from its place in a line:
//   \\ backslash, \n \r \t, \xHH other control characters, \s a blank at either end
//   (lines are trimmed when read), and in groups and keys \[ \] \= \; \# (the characters
//   that mark headers, separators and comments).
std::string iniEscape(std::string_view text, IniField field);

// The reverse of iniEscape; nullopt for an unknown or cut-off escape.
std::optional<std::string> iniUnescape(std::string_view text);

// Index of the first '=' not preceded by an escaping backslash, or npos.
size_t findUnescapedSeparator(std::string_view line);

} // namespace nexo

#endif // NEXO_INIESCAPE_H
