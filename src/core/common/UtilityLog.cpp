#include "UtilityLog.h"

#include "CoreLogging.h"

namespace UtilityLog {

namespace {

QByteArray stamped(const char *function)
{
    return LogLine::stampedPrefix(kSourceFile, function);
}

} // namespace

void enter(const char *function, int line)
{
    qCDebug(lcCommon, "%s : %d : Enter", stamped(function).constData(), line);
}

void exit(const char *function, int line)
{
    qCDebug(lcCommon, "%s : %d : Exit", stamped(function).constData(), line);
}

void start(const char *function, int line)
{
    qCDebug(lcCommon, "Start: %s %d", stamped(function).constData(), line);
}

void end(const char *function, int line)
{
    qCDebug(lcCommon, "End  : %s %d", stamped(function).constData(), line);
}

void nullPointer(const char *function, int line)
{
    qCDebug(lcCommon, "Null pointer returning from : %s %d", stamped(function).constData(), line);
}

} // namespace UtilityLog
