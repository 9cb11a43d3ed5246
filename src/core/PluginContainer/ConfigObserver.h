#ifndef LINKDECK_CONFIGOBSERVER_H
#define LINKDECK_CONFIGOBSERVER_H

#include <QString>

// Watches a container built for inspection: what its readers find in the customization file and
// what its rules do to the records, in the order they do it.
class ConfigObserver
{
public:
    virtual ~ConfigObserver() = default;

    // An "item", "add" or "remove" entry of the "common", "device" or "customize" section owned
    // by owner (a device or operator name; empty for "common").
    virtual void entryRead(const QString &section, const QString &owner, const QString &action,
                           const QString &clsid, bool known, qint64 line) = 0;
    // A "customize" section, whether or not it is the operator's.
    virtual void operatorSectionSeen(const QString &name) = 0;
    // The rule that switches the next records: "common" (the common set) or a device's "add" or
    // "remove" entries.
    virtual void ruleStarted(const QString &rule, const QString &owner) = 0;
    virtual void flagSet(const QString &clsid, bool enable) = 0;
    virtual void recordRemoved(const QString &clsid) = 0;
};

#endif // LINKDECK_CONFIGOBSERVER_H
