#include "ConfigTrace.h"

#include "PluginContainer/PluginDirectoryListing.h"

void ConfigTrace::entryRead(const QString &section, const QString &owner, const QString &action,
                            const QString &clsid, bool known, qint64 line)
{
    entries.append({section, owner, action, clsid, known, line});
}

void ConfigTrace::operatorSectionSeen(const QString &name)
{
    if (!operatorSections.contains(name))
        operatorSections.append(name);
}

void ConfigTrace::ruleStarted(const QString &rule, const QString &owner)
{
    m_current = {rule, owner};
    rules.append(m_current);
}

void ConfigTrace::flagSet(const QString &clsid, bool enable)
{
    steps.append({m_current.first, m_current.second, clsid, enable});
}

void ConfigTrace::recordRemoved(const QString &clsid)
{
    removed.append(clsid);
}

QString InspectedContainer::libraryFile(const PluginInfo &info) const
{
    return PluginDirectoryListing(m_pluginDir).librariesFor(info.Url()).value(0);
}
