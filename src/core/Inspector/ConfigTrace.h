#ifndef LINKDECK_CONFIGTRACE_H
#define LINKDECK_CONFIGTRACE_H

#include "PluginContainer.h"
#include "PluginContainer/ConfigObserver.h"

#include <QList>
#include <QStringList>

// Records what an inspected container's readers found and what its rules did.
class ConfigTrace : public ConfigObserver
{
public:
    struct Entry
    {
        QString section; // "common", "device" or "customize"
        QString owner;
        QString action; // "item", "add" or "remove"
        QString clsid;
        bool known;
        qint64 line;
    };
    struct Step
    {
        QString rule; // "common", "add" or "remove"
        QString owner;
        QString clsid;
        bool enable;
    };

    void entryRead(const QString &section, const QString &owner, const QString &action,
                   const QString &clsid, bool known, qint64 line) override;
    void operatorSectionSeen(const QString &name) override;
    void ruleStarted(const QString &rule, const QString &owner) override;
    void flagSet(const QString &clsid, bool enable) override;
    void recordRemoved(const QString &clsid) override;

    QList<Entry> entries;
    QStringList operatorSections;
    QList<Step> steps;
    QStringList removed;
    QList<QPair<QString, QString>> rules; // (rule, owner) as started

private:
    QPair<QString, QString> m_current;
};

// A container built for inspection, with access to its records. Applying a device does what the
// initialisation thread does once the device is known.
class InspectedContainer : public PluginContainer
{
public:
    InspectedContainer(const QString &appDir, const QString &customizeName, ConfigTrace *trace)
        : PluginContainer(appDir, customizeName, trace)
    {}
    void applyDevice(const QString &device) { updateDeviceCustomization(device); }
    const QList<PluginInfo *> &records() const { return *m_pListPlugins; }
    QString mainPlugin() const { return m_strMainPlugin; }
    // The library file that loading would try first; empty when there is none.
    QString libraryFile(const PluginInfo &info) const;
};

#endif // LINKDECK_CONFIGTRACE_H
