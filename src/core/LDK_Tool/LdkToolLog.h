#ifndef LINKDECK_LDKTOOLLOG_H
#define LINKDECK_LDKTOOLLOG_H

#include "common/CoreLogging.h"
#include "common/LogLine.h"

// The widgets' debug lines: "<build time> <source> <line> <function> <text>", the build time
// being the one these widgets have always reported.
namespace LdkToolLog {

constexpr char kSourceFile[] = LD_SOURCE("LDK_Tool/LDK_Tool.cpp");
constexpr char kBuildTime[] = "12:07:50";

inline void note(const char *function, int line, const char *text)
{
    qCDebug(lcWidgets, "%s %s %d %s %s", kBuildTime, kSourceFile, line, function, text);
}

// "Arg is NULL: <time>: <source>: <function> <line>".
inline void argIsNull(const char *function, int line)
{
    qCDebug(lcWidgets, "Arg is NULL: %s %d",
            LogLine::stampedPrefix(kSourceFile, function).constData(), line);
}

} // namespace LdkToolLog

#endif // LINKDECK_LDKTOOLLOG_H
