#include "IniEscape.h"

namespace nexo {
namespace {

bool isBlank(char c)
{
    return c == ' ';
}

bool isMarker(char c)
{
    return c == '[' || c == ']' || c == '=' || c == ';' || c == '#';
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

void appendControl(unsigned char c, std::string &out)
{
    static const char digits[] = "0123456789ABCDEF";
    switch (c) {
    case '\n':
        out += "\\n";
        return;
    case '\r':
        out += "\\r";
        return;
    case '\t':
        out += "\\t";
        return;
    default:
        out += "\\x";
        out.push_back(digits[c >> 4]);
        out.push_back(digits[c & 0x0F]);
    }
}

} // namespace

std::string iniEscape(std::string_view text, IniField field)
{
    // Blanks at either end would be lost to the trimming of lines when read back.
    size_t leading = 0;
    while (leading < text.size() && isBlank(text[leading]))
        ++leading;
    size_t trailingStart = text.size();
    while (trailingStart > leading && isBlank(text[trailingStart - 1]))
        --trailingStart;

    std::string out;
    out.reserve(text.size() + 8);
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\\') {
            out += "\\\\";
        } else if (byte < 0x20 || byte == 0x7F) {
            appendControl(byte, out);
        } else if (isBlank(c) && (i < leading || i >= trailingStart)) {
            out += "\\s";
        } else if (field != IniField::Value && isMarker(c)) {
            out.push_back('\\');
            out.push_back(c);
        } else {
            out.push_back(c);
        }
    }
    return out;
}

std::optional<std::string> iniUnescape(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c != '\\') {
            out.push_back(c);
            continue;
        }
        if (++i >= text.size())
            return std::nullopt;
        switch (text[i]) {
        case '\\':
            out.push_back('\\');
            break;
        case 'n':
            out.push_back('\n');
            break;
        case 'r':
            out.push_back('\r');
            break;
        case 't':
            out.push_back('\t');
            break;
        case 's':
            out.push_back(' ');
            break;
        case '[':
        case ']':
        case '=':
        case ';':
        case '#':
            out.push_back(text[i]);
            break;
        case 'x': {
            if (i + 2 >= text.size())
                return std::nullopt;
            const int high = hexDigit(text[i + 1]);
            const int low = hexDigit(text[i + 2]);
            if (high < 0 || low < 0 || (high << 4 | low) == 0)
                return std::nullopt;
            out.push_back(static_cast<char>(high << 4 | low));
            i += 2;
            break;
        }
        default:
            return std::nullopt;
        }
    }
    return out;
}

size_t findUnescapedSeparator(std::string_view line)
{
    for (size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\\')
            ++i;
        else if (line[i] == '=')
            return i;
    }
    return std::string_view::npos;
}

} // namespace nexo
