#ifndef NEXO_FILEIO_H
#define NEXO_FILEIO_H

#include <string>
#include <sys/types.h>
#include <time.h>

namespace nexo {

// What identifies one version of a file cheaply: a rewrite by rename changes the inode, an
// edit in place changes the size or the modification time.
struct FileId
{
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    timespec modified{};

    bool operator==(const FileId &other) const;
    bool operator!=(const FileId &other) const { return !(*this == other); }
};

struct FileContents
{
    enum class State { Missing, Unreadable, Read };
    State state = State::Missing;
    FileId id;
    std::string bytes;
};

// False when nothing is at path (or it cannot be looked at).
bool fileId(const std::string &path, FileId &id);

FileContents readWholeFile(const std::string &path);

// The file a path finally names, following symbolic links, so that a write replaces the
// linked-to file and leaves the link in place. The path itself when nothing is there yet.
std::string resolveSymlinks(const std::string &path);

// Creates the folders above path that are missing.
bool makeParentDirectories(const std::string &path);

// Replaces path with bytes so that readers see either the old or the new file: writes a
// temporary file beside it, syncs it, renames it over path and syncs the folder. The file keeps
// the permissions of the one it replaces. id receives the new file's identity.
bool writeFileAtomically(const std::string &path, const std::string &bytes, FileId &id);

// Keeps the current file at path under the unique name "<path>.corrupt-<YYYYMMDDhhmmss>[-N]",
// with its bytes unchanged. Returns that name, or an empty string when it could not be kept.
std::string keepAside(const std::string &path);

} // namespace nexo

#endif // NEXO_FILEIO_H
