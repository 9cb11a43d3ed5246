#ifndef LINKDECK_PLUGINCLSID_H
#define LINKDECK_PLUGINCLSID_H

#include <QString>

// Class identifiers of plugins that the core itself knows, compared exactly.
namespace PluginClsid {
inline const QString mainFrame()
{
    return QStringLiteral("D754AE84-535F-4c18-85F8-F154CFE34DDF");
}
inline const QString deviceManager()
{
    return QStringLiteral("8772F2BF-3227-4203-AFDD-DBAD1E9D1F98");
}
inline const QString callUi()
{
    return QStringLiteral("58A0343A-93DB-4ea2-92B4-C51589629381");
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

#endif // LINKDECK_PLUGINCLSID_H
