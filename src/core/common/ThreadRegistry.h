#ifndef LINKDECK_THREADREGISTRY_H
#define LINKDECK_THREADREGISTRY_H

#include <QMutex>
#include <QWaitCondition>

// Process-wide bookkeeping of registered worker threads, shared by the CommonUtils thread
// functions. Members are declared in the order they must be constructed.
namespace ThreadRegistry {

extern QMutex countMutex;
extern QMutex waitMutex;
extern QWaitCondition threadFinished;
extern int threadCount;
// 500 ms waits spent by WaitThreadsStop over the life of the process; never reset.
extern int waitCount;

} // namespace ThreadRegistry

#endif // LINKDECK_THREADREGISTRY_H
