#ifndef LINKDECK_TESTS_MMCONTROL_H
#define LINKDECK_TESTS_MMCONTROL_H

// Commands to the ModemManager test environment (tests/mm/mm_testenv.py) through the unix
// socket named by $LINKDECK_MM_CONTROL: "plug ID MODEL [IMSI [MNC_LENGTH]]", "unplug ID",
// "stop-daemon", "start-daemon", "modems". Each answer is one line, "ok ..." or "error ...".

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace MmControl {

inline bool available()
{
    const char *path = std::getenv("LINKDECK_MM_CONTROL");
    return path && *path;
}

// The answer without its line end; "error ..." when the environment could not be reached.
inline std::string send(const std::string &command)
{
    const char *path = std::getenv("LINKDECK_MM_CONTROL");
    if (!path || std::strlen(path) >= sizeof(sockaddr_un::sun_path))
        return "error LINKDECK_MM_CONTROL is not set: run under tests/mm/mm_testenv.py";
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, path);
    if (fd < 0 || ::connect(fd, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0) {
        if (fd >= 0)
            ::close(fd);
        return "error cannot reach the environment";
    }
    const std::string line = command + "\n";
    std::string answer;
    if (::send(fd, line.data(), line.size(), MSG_NOSIGNAL) == ssize_t(line.size())) {
        char buffer[512];
        ssize_t got = 0;
        while (answer.find('\n') == std::string::npos &&
               (got = ::recv(fd, buffer, sizeof buffer, 0)) > 0)
            answer.append(buffer, size_t(got));
    }
    ::close(fd);
    if (answer.empty())
        return "error no answer";
    return answer.substr(0, answer.find('\n'));
}

// The words of an answer: {"ok", "/org/.../Modem/0", "123"}.
inline std::vector<std::string> words(const std::string &answer)
{
    std::istringstream stream(answer);
    std::vector<std::string> result;
    for (std::string word; stream >> word;)
        result.push_back(word);
    return result;
}

} // namespace MmControl

#endif // LINKDECK_TESTS_MMCONTROL_H
