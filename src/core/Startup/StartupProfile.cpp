#include "StartupProfile.h"

#include <QElapsedTimer>
#include <QMutex>
#include <QMutexLocker>

#include <algorithm>

namespace {

struct Records
{
    QMutex mutex;
    QList<StartupProfile::Phase> phases;
    QList<StartupProfile::PluginTimes> plugins;
};

Records &records()
{
    // Never destroyed: a plugin thread may still record while the process exits.
    static Records *instance = new Records;
    return *instance;
}

// Started while the library is being loaded, so the clock runs from before main.
const QElapsedTimer &profileClock()
{
    static const QElapsedTimer timer = [] {
        QElapsedTimer t;
        t.start();
        return t;
    }();
    return timer;
}
const bool clockStartedAtLoad = (profileClock(), true);

StartupProfile::PluginTimes &pluginEntry(Records &r, const QString &name)
{
    for (StartupProfile::PluginTimes &entry : r.plugins) {
        if (entry.name == name)
            return entry;
    }
    r.plugins.append({name, 0, 0});
    return r.plugins.last();
}

QString row(const QString &name, int width, const QStringList &numbers)
{
    QString line = name.leftJustified(width);
    for (const QString &number : numbers)
        line += number.rightJustified(10);
    return line + QLatin1Char('\n');
}

QString ms(double value)
{
    return QString::number(value, 'f', 1);
}

} // namespace

double StartupProfile::now()
{
    Q_UNUSED(clockStartedAtLoad);
    return profileClock().nsecsElapsed() / 1e6;
}

void StartupProfile::recordPhase(const QString &name, double startMs, double endMs)
{
    Records &r = records();
    QMutexLocker locker(&r.mutex);
    r.phases.append({name, startMs, endMs - startMs});
}

void StartupProfile::recordPluginLoad(const QString &name, double ms)
{
    Records &r = records();
    QMutexLocker locker(&r.mutex);
    pluginEntry(r, name).loadMs += ms;
}

void StartupProfile::recordPluginInit(const QString &name, double ms)
{
    Records &r = records();
    QMutexLocker locker(&r.mutex);
    pluginEntry(r, name).initMs += ms;
}

QList<StartupProfile::Phase> StartupProfile::phases()
{
    Records &r = records();
    QMutexLocker locker(&r.mutex);
    QList<Phase> result = r.phases;
    // In the order they ended: the time line of start-up.
    std::stable_sort(result.begin(), result.end(), [](const Phase &a, const Phase &b) {
        return a.startMs + a.durationMs < b.startMs + b.durationMs;
    });
    return result;
}

QList<StartupProfile::PluginTimes> StartupProfile::pluginsSlowestFirst()
{
    Records &r = records();
    QMutexLocker locker(&r.mutex);
    QList<PluginTimes> result = r.plugins;
    std::stable_sort(result.begin(), result.end(), [](const PluginTimes &a, const PluginTimes &b) {
        return a.loadMs + a.initMs > b.loadMs + b.initMs;
    });
    return result;
}

QString StartupProfile::table()
{
    QString text = QStringLiteral("Start-up profile (ms since the core was loaded)\n");
    text += row(QStringLiteral("phase"), 28,
                {QStringLiteral("start"), QStringLiteral("end"), QStringLiteral("takes")});
    for (const Phase &phase : phases())
        text +=
            row(phase.name, 28,
                {ms(phase.startMs), ms(phase.startMs + phase.durationMs), ms(phase.durationMs)});
    text += row(QStringLiteral("plugin"), 28,
                {QStringLiteral("load"), QStringLiteral("init"), QStringLiteral("total")});
    for (const PluginTimes &plugin : pluginsSlowestFirst())
        text += row(plugin.name, 28,
                    {ms(plugin.loadMs), ms(plugin.initMs), ms(plugin.loadMs + plugin.initMs)});
    return text;
}

StartupProfile::Scope::Scope(QString name)
    : m_name(std::move(name))
    , m_startMs(now())
{}

StartupProfile::Scope::~Scope()
{
    recordPhase(m_name, m_startMs, now());
}
