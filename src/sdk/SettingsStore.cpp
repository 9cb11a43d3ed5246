#include "SettingsStore.h"

#include "FileLock.h"
#include "NexoSdk.h"
#include "SettingsPaths.h"

#include <cstdio>

namespace nexo {
namespace {

// Tests and tools switch between many files; old entries are simply dropped.
constexpr size_t kMaxCachedFiles = 16;

const IniDocument &emptyDocument()
{
    static const IniDocument *empty = new IniDocument; // outlives exit, as the store does
    return *empty;
}

// Lines that cannot be represented are refused one by one, each named with file and line.
std::optional<IniDocument> parseSettingsFile(const std::string &path, const std::string &bytes)
{
    std::vector<IniDocument::Refusal> refusals;
    auto parsed = IniDocument::parse(bytes, &refusals);
    for (const IniDocument::Refusal &refusal : refusals) {
        std::fprintf(stderr,
                     "libsdk: settings file %s, line %zu: \"%s\" does not decode to valid "
                     "text; refused, kept in the file as it is\n",
                     path.c_str(), refusal.line, refusal.text.c_str());
    }
    return parsed;
}

} // namespace

SettingsStore &SettingsStore::instance()
{
    // Never destroyed: threads still running while the process exits (a device callback, a
    // plugin's worker) may read settings after static destructors have begun.
    static SettingsStore *store = new SettingsStore;
    return *store;
}

long SettingsStore::value(const std::string &group, const std::string &key, std::string &out)
{
    std::lock_guard<std::mutex> guard(m_mutex);
    for (const std::string &path : {userSettingsPath(), defaultSettingsPath()}) {
        if (const std::string *found = document(path).value(group, key)) {
            out = *found;
            return 0;
        }
    }
    return NEXO_ERR_NOT_FOUND;
}

long SettingsStore::setValue(const std::string &group, const std::string &key,
                             const std::string &value)
{
    std::lock_guard<std::mutex> guard(m_mutex);
    const std::string userPath = userSettingsPath();
    if (!makeParentDirectories(userPath))
        return NEXO_ERR_IO;
    const std::string path = resolveSymlinks(userPath);
    // Another process may have written since this one last read: re-read under the lock.
    FileLock lock(path + ".lock");
    if (!lock.isLocked())
        return NEXO_ERR_IO;

    IniDocument current;
    bool fileUsable = false;
    if (!loadForUpdate(path, current, fileUsable))
        return NEXO_ERR_IO;
    const std::string *old = current.value(group, key);
    if (fileUsable && old && *old == value)
        return 0;

    current.setValue(group, key, value);
    FileId id;
    if (!writeFileAtomically(path, current.serialize(), id))
        return NEXO_ERR_IO;
    if (m_cache.size() >= kMaxCachedFiles)
        m_cache.clear();
    m_cache[userPath] = CachedDocument{id, std::move(current)};
    return 0;
}

const IniDocument &SettingsStore::document(const std::string &path)
{
    FileId id;
    if (!fileId(path, id)) {
        m_cache.erase(path);
        return emptyDocument();
    }
    const auto cached = m_cache.find(path);
    if (cached != m_cache.end() && cached->second.id == id)
        return cached->second.document;

    FileContents contents = readWholeFile(path);
    if (contents.state == FileContents::State::Missing) {
        m_cache.erase(path);
        return emptyDocument();
    }
    std::optional<IniDocument> parsed;
    if (contents.state == FileContents::State::Read)
        parsed = parseSettingsFile(path, contents.bytes);
    if (m_cache.size() >= kMaxCachedFiles)
        m_cache.clear();
    CachedDocument &entry = m_cache[path];
    entry.id = contents.id;
    entry.document = parsed ? std::move(*parsed) : IniDocument();
    return entry.document;
}

bool SettingsStore::loadForUpdate(const std::string &path, IniDocument &document, bool &fileUsable)
{
    const FileContents contents = readWholeFile(path);
    if (contents.state == FileContents::State::Missing) {
        fileUsable = false;
        return true;
    }
    if (contents.state == FileContents::State::Read) {
        if (auto parsed = parseSettingsFile(path, contents.bytes)) {
            document = std::move(*parsed);
            fileUsable = true;
            return true;
        }
    }
    // Never overwrite what cannot be understood: keep it for the user, then start afresh.
    const std::string aside = keepAside(path);
    if (aside.empty()) {
        std::fprintf(stderr,
                     "libsdk: settings file %s is unreadable or corrupt and could not be "
                     "kept aside; not writing\n",
                     path.c_str());
        return false;
    }
    std::fprintf(stderr, "libsdk: settings file %s is unreadable or corrupt; kept as %s\n",
                 path.c_str(), aside.c_str());
    fileUsable = false;
    return true;
}

} // namespace nexo
