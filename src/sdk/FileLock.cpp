#include "FileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace nexo {

FileLock::FileLock(const std::string &lockPath)
{
    const int fd = ::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (fd < 0)
        return;
    int result = 0;
    do {
        result = ::flock(fd, LOCK_EX);
    } while (result != 0 && errno == EINTR);
    if (result != 0) {
        ::close(fd);
        return;
    }
    m_fd = fd;
}

FileLock::~FileLock()
{
    if (m_fd >= 0)
        ::close(m_fd); // closing the last descriptor releases the lock
}

} // namespace nexo
