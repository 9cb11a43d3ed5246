#ifndef LINKDECK_UTILITYLOG_H
#define LINKDECK_UTILITYLOG_H

#include "LogLine.h"

// The bracketing lines of the utility class's plugin shortcuts. They name the source file with
// its extension, unlike the class's other lines, and carry the time stamp and a line number.
namespace UtilityLog {

constexpr char kSourceFile[] = LD_SOURCE("common/CommonUtils.cpp");

// "<time>: <file>: <function> : <line> : Enter" and "... : Exit".
void enter(const char *function, int line);
void exit(const char *function, int line);
// "Start: <time>: <file>: <function> <line>" and "End  : ...".
void start(const char *function, int line);
void end(const char *function, int line);
// "Null pointer returning from : <time>: <file>: <function> <line>".
void nullPointer(const char *function, int line);

} // namespace UtilityLog

#endif // LINKDECK_UTILITYLOG_H
