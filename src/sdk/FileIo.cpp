#include "FileIo.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nexo {
namespace {

// Closes a descriptor when it goes out of scope.
class Descriptor
{
public:
    explicit Descriptor(int fd)
        : m_fd(fd)
    {}
    ~Descriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int get() const { return m_fd; }
    bool isValid() const { return m_fd >= 0; }
    // Closes now and reports whether the close succeeded (it can report a late write error).
    bool close()
    {
        const int fd = m_fd;
        m_fd = -1;
        return ::close(fd) == 0;
    }

private:
    int m_fd;
};

FileId idFromStat(const struct stat &st)
{
    FileId id;
    id.device = st.st_dev;
    id.inode = st.st_ino;
    id.size = st.st_size;
    id.modified = st.st_mtim;
    return id;
}

std::string parentDirectory(const std::string &path)
{
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool writeAll(int fd, const char *data, size_t size)
{
    while (size > 0) {
        const ssize_t written = ::write(fd, data, size);
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        data += written;
        size -= static_cast<size_t>(written);
    }
    return true;
}

bool readAll(int fd, std::string &out)
{
    char buffer[65536];
    for (;;) {
        const ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        if (got == 0)
            return true;
        out.append(buffer, static_cast<size_t>(got));
    }
}

void syncDirectory(const std::string &directory)
{
    Descriptor fd(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (fd.isValid())
        ::fsync(fd.get());
}

std::string timeStamp()
{
    const time_t now = ::time(nullptr);
    tm local{};
    localtime_r(&now, &local);
    char buffer[32];
    strftime(buffer, sizeof buffer, "%Y%m%d%H%M%S", &local);
    return buffer;
}

// Writes a byte-for-byte copy of source to target, which must not exist yet. errno tells why
// it failed (EEXIST when target exists).
bool copyToNewFile(const std::string &source, const std::string &target)
{
    Descriptor in(::open(source.c_str(), O_RDONLY | O_CLOEXEC));
    std::string bytes;
    if (!in.isValid() || !readAll(in.get(), bytes))
        return false;
    Descriptor out(::open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!out.isValid())
        return false;
    if (!writeAll(out.get(), bytes.data(), bytes.size()) || ::fsync(out.get()) != 0 ||
        !out.close()) {
        const int error = errno;
        ::unlink(target.c_str());
        errno = error == EEXIST ? EIO : error;
        return false;
    }
    return true;
}

} // namespace

bool FileId::operator==(const FileId &other) const
{
    return device == other.device && inode == other.inode && size == other.size &&
           modified.tv_sec == other.modified.tv_sec && modified.tv_nsec == other.modified.tv_nsec;
}

bool fileId(const std::string &path, FileId &id)
{
    struct stat st
    {
    };
    if (::stat(path.c_str(), &st) != 0)
        return false;
    id = idFromStat(st);
    return true;
}

FileContents readWholeFile(const std::string &path)
{
    FileContents contents;
    Descriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd.isValid()) {
        contents.state =
            errno == ENOENT ? FileContents::State::Missing : FileContents::State::Unreadable;
        if (contents.state == FileContents::State::Unreadable)
            fileId(path, contents.id);
        return contents;
    }
    struct stat st
    {
    };
    if (::fstat(fd.get(), &st) != 0 || !readAll(fd.get(), contents.bytes)) {
        contents.state = FileContents::State::Unreadable;
        contents.bytes.clear();
        return contents;
    }
    contents.id = idFromStat(st);
    contents.state = FileContents::State::Read;
    return contents;
}

std::string resolveSymlinks(const std::string &path)
{
    char *resolved = ::realpath(path.c_str(), nullptr);
    if (!resolved)
        return path;
    std::string result(resolved);
    std::free(resolved);
    return result;
}

bool makeParentDirectories(const std::string &path)
{
    const std::string directory = parentDirectory(path);
    for (size_t pos = 1; pos <= directory.size(); ++pos) {
        if (pos != directory.size() && directory[pos] != '/')
            continue;
        const std::string prefix = directory.substr(0, pos);
        if (::mkdir(prefix.c_str(), 0700) != 0 && errno != EEXIST)
            return false;
    }
    struct stat st
    {
    };
    return ::stat(directory.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

bool writeFileAtomically(const std::string &path, const std::string &bytes, FileId &id)
{
    static std::atomic<unsigned> s_counter{0};
    struct stat previous
    {
    };
    const bool replacing = ::stat(path.c_str(), &previous) == 0;

    std::string temporary;
    int rawFd = -1;
    for (int attempt = 0; attempt < 100 && rawFd < 0; ++attempt) {
        temporary = path + ".tmp-" + std::to_string(::getpid()) + "-" +
                    std::to_string(s_counter.fetch_add(1));
        rawFd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (rawFd < 0 && errno != EEXIST)
            return false;
    }
    Descriptor fd(rawFd);
    if (!fd.isValid())
        return false;

    struct stat written
    {
    };
    const bool ok = (!replacing || ::fchmod(fd.get(), previous.st_mode & 07777) == 0) &&
                    writeAll(fd.get(), bytes.data(), bytes.size()) && ::fsync(fd.get()) == 0 &&
                    ::fstat(fd.get(), &written) == 0 && fd.close() &&
                    ::rename(temporary.c_str(), path.c_str()) == 0;
    if (!ok) {
        ::unlink(temporary.c_str());
        return false;
    }
    syncDirectory(parentDirectory(path));
    id = idFromStat(written);
    return true;
}

std::string keepAside(const std::string &path)
{
    const std::string base = path + ".corrupt-" + timeStamp();
    for (int attempt = 1; attempt < 1000; ++attempt) {
        const std::string candidate = attempt == 1 ? base : base + "-" + std::to_string(attempt);
        // A second name for the same bytes needs no read permission and cannot be torn.
        if (::link(path.c_str(), candidate.c_str()) == 0)
            return candidate;
        if (errno == EEXIST)
            continue;
        if (copyToNewFile(path, candidate))
            return candidate;
        if (errno != EEXIST)
            return std::string();
    }
    return std::string();
}

} // namespace nexo
