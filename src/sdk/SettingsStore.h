#ifndef NEXO_SETTINGSSTORE_H
#define NEXO_SETTINGSSTORE_H

#include "FileIo.h"
#include "IniDocument.h"

#include <mutex>
#include <string>
#include <unordered_map>

namespace nexo {

// The persistent group/key/value store behind NEXO_GetSettings and NEXO_SetSettings (UTF-8
// here; the C functions convert). The user's file wins over the shipped defaults key by key.
//
// Reads are served from the parsed file while its FileId stays the same. Writes never trust
// that copy: they re-read the file under the file lock, so no process loses another's key.
// (Two foreign rewrites within one time-stamp tick that reuse an inode and keep the size could
// leave a read stale until the next change; writes are unaffected.)
class SettingsStore
{
public:
    static SettingsStore &instance();

    // 0 and the value, or NEXO_ERR_NOT_FOUND when neither file has the key.
    long value(const std::string &group, const std::string &key, std::string &out);
    // 0, or NEXO_ERR_IO when the file could not be written (or a corrupt one kept aside).
    long setValue(const std::string &group, const std::string &key, const std::string &value);

private:
    struct CachedDocument
    {
        FileId id;
        IniDocument document;
    };

    // The parsed file at path, re-read only when its identity changed. A missing, unreadable
    // or corrupt file reads as empty. Requires m_mutex.
    const IniDocument &document(const std::string &path);
    // The file's current contents for a change; a corrupt or unreadable one is kept aside
    // first. False when that was not possible. Requires m_mutex and the file lock.
    bool loadForUpdate(const std::string &path, IniDocument &document, bool &fileUsable);

    std::mutex m_mutex;
    std::unordered_map<std::string, CachedDocument> m_cache;
};

} // namespace nexo

#endif // NEXO_SETTINGSSTORE_H
