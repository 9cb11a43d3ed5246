#ifndef NEXO_UTF16_H
#define NEXO_UTF16_H

#include "NexoSdk.h"

#include <string>
#include <string_view>

namespace nexo {

// Converts a NUL-terminated UTF-16 string to UTF-8. False for an unpaired surrogate, which has
// no UTF-8 form and so could not be stored and read back unchanged.
bool utf16ToUtf8(const NEXO_CHAR16 *text, std::string &out);

// A new[]-allocated, NUL-terminated UTF-16 copy of valid UTF-8 text, for the caller's delete[].
NEXO_CHAR16 *newUtf16FromUtf8(std::string_view utf8);

// True for well-formed UTF-8 (no overlong forms, no surrogates, nothing above U+10FFFF).
bool isValidUtf8(std::string_view text);

} // namespace nexo

#endif // NEXO_UTF16_H
