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
//
// A line whose escapes do not decode to valid UTF-8 without NUL (a hand edit such as
// "odd=caf\xe9") is refused alone: it cannot be read, but it is kept verbatim and written back as
// it was, so nothing the user wrote is lost and the file stays valid. A refused header refuses the
// lines of its section the same way.
class IniDocument
{
public:
    struct Refusal
    {
        size_t line; // 1-based
        std::string text;
    };

    // nullopt when the text is not valid UTF-8, holds a raw control character other than tab
    // and line ends, or has a line that cannot be understood. Refused lines go to refusals.
    static std::optional<IniDocument> parse(std::string_view text,
                                            std::vector<Refusal> *refusals = nullptr);

    std::string serialize() const;
    bool operator==(const IniDocument &other) const;

    const std::string *value(const std::string &group, const std::string &key) const;
    void setValue(const std::string &group, const std::string &key, const std::string &value);
    size_t keyCount() const;

private:
    struct Group
    {
        std::string name; // the raw header line when refused
        bool refused = false;
        std::vector<std::pair<std::string, std::string>> entries;
        std::unordered_map<std::string, size_t> index;
        std::vector<std::string> keptLines; // refused lines, verbatim

        bool operator==(const Group &other) const;
    };

    Group &group(const std::string &name);
    Group &refusedGroup(std::string_view headerLine);
    size_t indexOf(const Group &g) const;
    const Group *findGroup(const std::string &name) const;

    std::vector<Group> m_groups;
    std::unordered_map<std::string, size_t> m_groupIndex;
};

} // namespace nexo

#endif // NEXO_INIDOCUMENT_H
