#ifndef NEXO_INIDOCUMENT_H
#define NEXO_INIDOCUMENT_H

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace nexo {

// The contents of a settings file: groups of key=value pairs in file order, all UTF-8.
//
//   [group]
//   key=value
//
// Lines are trimmed; empty lines and lines starting with ';' or '#' are comments. Keys before
// the first header belong to the group "" (written back as "[]"). A repeated key keeps its last
// value. Escapes (see IniEscape.h) let any text round-trip.
class IniDocument
{
public:
    // nullopt when the text is not valid UTF-8, holds a raw control character other than tab
    // and line ends, or has a line that cannot be understood.
    static std::optional<IniDocument> parse(std::string_view text);

    std::string serialize() const;

    const std::string *value(const std::string &group, const std::string &key) const;
    void setValue(const std::string &group, const std::string &key, const std::string &value);
    size_t keyCount() const;

private:
    struct Group
    {
        std::string name;
        std::vector<std::pair<std::string, std::string>> entries;
        std::unordered_map<std::string, size_t> index;
    };

    Group &group(const std::string &name);
    const Group *findGroup(const std::string &name) const;

    std::vector<Group> m_groups;
    std::unordered_map<std::string, size_t> m_groupIndex;
};

} // namespace nexo

#endif // NEXO_INIDOCUMENT_H
