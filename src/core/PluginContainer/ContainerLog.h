#ifndef LINKDECK_CONTAINERLOG_H
#define LINKDECK_CONTAINERLOG_H

#include "common/CoreLogging.h"
#include "common/LogLine.h"

// Source path of every line the container writes.
static const char kContainerSource[] = LD_SOURCE("PluginContainer/PluginContainer");

// Class identifiers the container itself knows.
namespace PluginClsid {
inline const QString deviceManager()
{
    return QStringLiteral("8772F2BF-3227-4203-AFDD-DBAD1E9D1F98");
}
// Start-up plugins that the first loading pass leaves for later.
inline const QString postponedFirst()
{
    return QStringLiteral("FCDC307E-06DC-4dfa-AC83-834D0E306D48");
}
inline const QString postponedSecond()
{
    return QStringLiteral("D2AB6727-AF80-4ef7-B37E-F217803B85A4");
}
} // namespace PluginClsid

enum { kDeviceManagerInterface = 4097 };

#endif // LINKDECK_CONTAINERLOG_H
