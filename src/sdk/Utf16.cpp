#include "Utf16.h"

#include <algorithm>
#include <vector>

namespace nexo {
namespace {

bool isHighSurrogate(unsigned unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isLowSurrogate(unsigned unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

void appendUtf8(char32_t cp, std::string &out)
{
    if (cp < 0x80) {
        out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
}

// Decodes one code point at pos and advances pos; false on malformed input.
bool decodeUtf8(std::string_view text, size_t &pos, char32_t &cp)
{
    const auto lead = static_cast<unsigned char>(text[pos]);
    int length = 0;
    char32_t minimum = 0;
    if (lead < 0x80) {
        cp = lead;
        ++pos;
        return true;
    } else if ((lead & 0xE0) == 0xC0) {
        length = 2;
        cp = lead & 0x1F;
        minimum = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3;
        cp = lead & 0x0F;
        minimum = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4;
        cp = lead & 0x07;
        minimum = 0x10000;
    } else {
        return false;
    }
    if (pos + length > text.size())
        return false;
    for (int i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[pos + i]);
        if ((next & 0xC0) != 0x80)
            return false;
        cp = (cp << 6) | (next & 0x3F);
    }
    if (cp < minimum || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))
        return false;
    pos += length;
    return true;
}

} // namespace

bool utf16ToUtf8(const NEXO_CHAR16 *text, std::string &out)
{
    out.clear();
    for (const NEXO_CHAR16 *p = text; *p; ++p) {
        const unsigned unit = *p;
        if (isHighSurrogate(unit)) {
            const unsigned low = p[1];
            if (!isLowSurrogate(low))
                return false;
            appendUtf8(0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00), out);
            ++p;
        } else if (isLowSurrogate(unit)) {
            return false;
        } else {
            appendUtf8(unit, out);
        }
    }
    return true;
}

NEXO_CHAR16 *newUtf16FromUtf8(std::string_view utf8)
{
    std::vector<NEXO_CHAR16> units;
    units.reserve(utf8.size() + 1);
    size_t pos = 0;
    char32_t cp = 0;
    while (pos < utf8.size()) {
        if (!decodeUtf8(utf8, pos, cp)) {
            ++pos; // stored text is validated on reading; never expected here
            cp = 0xFFFD;
        }
        if (cp >= 0x10000) {
            cp -= 0x10000;
            units.push_back(static_cast<NEXO_CHAR16>(0xD800 + (cp >> 10)));
            units.push_back(static_cast<NEXO_CHAR16>(0xDC00 + (cp & 0x3FF)));
        } else {
            units.push_back(static_cast<NEXO_CHAR16>(cp));
        }
    }
    auto *result = new NEXO_CHAR16[units.size() + 1];
    std::copy(units.begin(), units.end(), result);
    result[units.size()] = 0;
    return result;
}

bool isValidUtf8(std::string_view text)
{
    size_t pos = 0;
    char32_t cp = 0;
    while (pos < text.size()) {
        if (!decodeUtf8(text, pos, cp))
            return false;
    }
    return true;
}

} // namespace nexo
