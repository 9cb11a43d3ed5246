#ifndef NEXO_FILELOCK_H
#define NEXO_FILELOCK_H

#include <string>

namespace nexo {

// An exclusive flock() on a lock file, held while the object lives. The lock file is separate
// from the file it guards because that file is replaced by rename on every write.
class FileLock
{
public:
    explicit FileLock(const std::string &lockPath);
    ~FileLock();
    FileLock(const FileLock &) = delete;
    FileLock &operator=(const FileLock &) = delete;

    bool isLocked() const { return m_fd >= 0; }

private:
    int m_fd = -1;
};

} // namespace nexo

#endif // NEXO_FILELOCK_H
