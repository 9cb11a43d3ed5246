#ifndef LINKDECK_STARTUPPROFILE_H
#define LINKDECK_STARTUPPROFILE_H

#include "CoreGlobal.h"

#include <QList>
#include <QString>

// Where start-up spends its time: named phases and each plugin's load and initialisation, in
// milliseconds since the core library was loaded (before main). Recording is always on; it costs
// a clock read and a short locked append per event, and any thread may record.
class CORE_EXPORT StartupProfile
{
public:
    struct Phase
    {
        QString name;
        double startMs;
        double durationMs;
    };
    struct PluginTimes
    {
        QString name;
        double loadMs = 0;
        double initMs = 0;
    };

    static double now();
    static void recordPhase(const QString &name, double startMs, double endMs);
    static void recordPluginLoad(const QString &name, double ms);
    static void recordPluginInit(const QString &name, double ms);

    // Phases in the order they ended; a phase recorded twice keeps both entries.
    static QList<Phase> phases();
    // Every plugin loaded or initialised, the slowest (load and init together) first.
    static QList<PluginTimes> pluginsSlowestFirst();
    // Both as a plain-text table.
    static QString table();

    // Records one phase from its construction to its destruction.
    class Scope
    {
    public:
        explicit Scope(QString name);
        ~Scope();
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        QString m_name;
        double m_startMs;
    };
};

#endif // LINKDECK_STARTUPPROFILE_H
