// The settings file parser of the device-service library, with its round trip: a document that
// parses serializes to text that parses to the same content and serializes to the same bytes.
#include "IniDocument.h"
#include "IniEscape.h"

#include <cstdio>
#include <cstdlib>

namespace {

void require(bool ok, const char *what, const std::string &serialized)
{
    if (ok)
        return;
    std::fprintf(stderr, "settings round trip: %s; serialized:\n%.2000s\n", what,
                 serialized.c_str());
    std::abort();
}

// The (group, key) pairs of serialized text, read back line by line.
std::vector<std::pair<std::string, std::string>> keysOf(std::string_view text)
{
    std::vector<std::pair<std::string, std::string>> keys;
    std::string group;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        const size_t separator = nexo::findUnescapedSeparator(line);
        if (!line.empty() && line.front() == '[' && line.back() == ']')
            group = nexo::iniUnescape(line.substr(1, line.size() - 2)).value_or(std::string());
        else if (separator != std::string_view::npos)
            if (auto key = nexo::iniUnescape(line.substr(0, separator)))
                keys.emplace_back(group, *key);
    }
    return keys;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using nexo::IniDocument;
    const auto first = IniDocument::parse({reinterpret_cast<const char *>(data), size});
    if (!first)
        return 0;
    const std::string text = first->serialize();
    const auto second = IniDocument::parse(text);
    require(second.has_value(), "the serialized document does not parse", text);
    require(second->serialize() == text, "serializing it again gives other bytes", text);
    require(second->keyCount() == first->keyCount(), "the key counts differ", text);
    for (const auto &[group, key] : keysOf(text)) {
        const std::string *before = first->value(group, key), *after = second->value(group, key);
        require(before ? after && *before == *after : !after, "a value differs", text);
    }
    return 0;
}
