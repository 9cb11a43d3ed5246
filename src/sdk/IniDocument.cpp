#include "IniDocument.h"

#include "IniEscape.h"
#include "Utf16.h"

#include <algorithm>

namespace nexo {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

// Control characters are always written escaped; a raw one means the file was damaged.
bool hasStrayControlCharacter(std::string_view text)
{
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte < 0x20 && c != '\n' && c != '\r' && c != '\t') || byte == 0x7F)
            return true;
    }
    return false;
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

// True when the last character of text is not itself escaped by a backslash.
bool endsUnescaped(std::string_view text)
{
    size_t backslashes = 0;
    for (size_t i = text.size() - 1; i > 0 && text[i - 1] == '\\'; --i)
        ++backslashes;
    return backslashes % 2 == 0;
}

// Escaped text as it reads back, or nullopt when that would not be valid UTF-8 without NUL:
// such text could not be handed out, nor written back so that it reads the same.
std::optional<std::string> decodedText(std::string_view escaped)
{
    auto text = iniUnescape(escaped);
    if (text && !isValidUtf8(*text))
        text.reset();
    return text;
}

} // namespace

std::optional<IniDocument> IniDocument::parse(std::string_view text, std::vector<Refusal> *refusals)
{
    if (!isValidUtf8(text) || hasStrayControlCharacter(text))
        return std::nullopt;
    if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark)
        text.remove_prefix(kByteOrderMark.size());

    IniDocument document;
    // An index, not a pointer: opening a group may move the others.
    size_t current = document.indexOf(document.group(std::string()));
    size_t lineNumber = 0;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        const std::string_view line =
            trimmed(text.substr(0, end == std::string_view::npos ? text.size() : end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        ++lineNumber;

        if (line.empty() || line.front() == ';' || line.front() == '#')
            continue;
        bool refused = document.m_groups[current].refused;
        if (line.front() == '[') {
            if (line.size() < 2 || line.back() != ']' || !endsUnescaped(line))
                return std::nullopt;
            const auto name = decodedText(line.substr(1, line.size() - 2));
            refused = !name;
            current = document.indexOf(name ? document.group(*name) : document.refusedGroup(line));
        } else {
            const size_t separator = findUnescapedSeparator(line);
            if (separator == std::string_view::npos)
                return std::nullopt;
            const auto key = decodedText(trimmed(line.substr(0, separator)));
            const auto value = decodedText(trimmed(line.substr(separator + 1)));
            refused = refused || !key || !value;
            if (refused)
                document.m_groups[current].keptLines.emplace_back(line);
            else
                document.setValue(document.m_groups[current].name, *key, *value);
        }
        if (refused && refusals)
            refusals->push_back(Refusal{lineNumber, std::string(line)});
    }
    return document;
}

std::string IniDocument::serialize() const
{
    std::string out;
    for (const Group &g : m_groups) {
        if (g.entries.empty() && g.keptLines.empty())
            continue;
        if (!out.empty())
            out += '\n';
        out += g.refused ? g.name : '[' + iniEscape(g.name, IniField::Group) + ']';
        out += '\n';
        for (const auto &[key, value] : g.entries) {
            out += iniEscape(key, IniField::Key);
            out += '=';
            out += iniEscape(value, IniField::Value);
            out += '\n';
        }
        for (const std::string &line : g.keptLines) {
            out += line;
            out += '\n';
        }
    }
    return out;
}

// Groups without lines are not written, so they do not count.
bool IniDocument::operator==(const IniDocument &other) const
{
    const auto written = [](const IniDocument &document) {
        std::vector<const Group *> groups;
        for (const Group &g : document.m_groups) {
            if (!g.entries.empty() || !g.keptLines.empty())
                groups.push_back(&g);
        }
        return groups;
    };
    const auto mine = written(*this);
    const auto theirs = written(other);
    return std::equal(mine.begin(), mine.end(), theirs.begin(), theirs.end(),
                      [](const Group *a, const Group *b) { return *a == *b; });
}

bool IniDocument::Group::operator==(const Group &other) const
{
    return name == other.name && refused == other.refused && entries == other.entries &&
           keptLines == other.keptLines;
}

const std::string *IniDocument::value(const std::string &group, const std::string &key) const
{
    const Group *g = findGroup(group);
    if (!g)
        return nullptr;
    const auto it = g->index.find(key);
    return it == g->index.end() ? nullptr : &g->entries[it->second].second;
}

void IniDocument::setValue(const std::string &groupName, const std::string &key,
                           const std::string &value)
{
    Group &g = group(groupName);
    const auto it = g.index.find(key);
    if (it != g.index.end()) {
        g.entries[it->second].second = value;
        return;
    }
    g.index.emplace(key, g.entries.size());
    g.entries.emplace_back(key, value);
}

size_t IniDocument::keyCount() const
{
    size_t count = 0;
    for (const Group &g : m_groups)
        count += g.entries.size();
    return count;
}

IniDocument::Group &IniDocument::group(const std::string &name)
{
    const auto it = m_groupIndex.find(name);
    if (it != m_groupIndex.end())
        return m_groups[it->second];
    m_groupIndex.emplace(name, m_groups.size());
    m_groups.push_back(Group{name, false, {}, {}, {}});
    return m_groups.back();
}

size_t IniDocument::indexOf(const Group &g) const
{
    return size_t(&g - m_groups.data());
}

IniDocument::Group &IniDocument::refusedGroup(std::string_view headerLine)
{
    m_groups.push_back(Group{std::string(headerLine), true, {}, {}, {}});
    return m_groups.back();
}

const IniDocument::Group *IniDocument::findGroup(const std::string &name) const
{
    const auto it = m_groupIndex.find(name);
    return it == m_groupIndex.end() ? nullptr : &m_groups[it->second];
}

} // namespace nexo
