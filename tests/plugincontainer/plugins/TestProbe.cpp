#include "TestProbe.h"

#include <QHash>
#include <QMutex>
#include <QMutexLocker>
#include <QThread>

namespace {
struct Notebook
{
    QMutex mutex;
    QStringList events;
    QHash<QString, QVariant> options;
    QHash<QString, QThread *> threads;
};

Notebook &notebook()
{
    static Notebook book;
    return book;
}
} // namespace

namespace TestProbe {

void record(const QString &event)
{
    QMutexLocker locker(&notebook().mutex);
    notebook().events.append(event);
}

QStringList events()
{
    QMutexLocker locker(&notebook().mutex);
    return notebook().events;
}

QStringList events(const QString &prefix)
{
    QStringList matching;
    for (const QString &event : events()) {
        if (event.startsWith(prefix))
            matching.append(event);
    }
    return matching;
}

void setOption(const QString &key, const QVariant &value)
{
    QMutexLocker locker(&notebook().mutex);
    notebook().options.insert(key, value);
}

QVariant option(const QString &key, const QVariant &fallback)
{
    QMutexLocker locker(&notebook().mutex);
    return notebook().options.value(key, fallback);
}

void noteThread(const QString &what)
{
    QMutexLocker locker(&notebook().mutex);
    notebook().threads.insert(what, QThread::currentThread());
}

QThread *thread(const QString &what)
{
    QMutexLocker locker(&notebook().mutex);
    return notebook().threads.value(what);
}

void reset()
{
    QMutexLocker locker(&notebook().mutex);
    notebook().events.clear();
    notebook().options.clear();
    notebook().threads.clear();
}

} // namespace TestProbe
