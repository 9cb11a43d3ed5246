#include "CommonUtils.h"

#include "CoreLogging.h"
#include "LogLine.h"
#include "ThreadRegistry.h"

#include <QMutexLocker>
#include <QThread>

namespace ThreadRegistry {
QMutex countMutex;
QMutex waitMutex;
QWaitCondition threadFinished;
int threadCount = 0;
int waitCount = 0;
} // namespace ThreadRegistry

namespace {
const char kSource[] = LD_SOURCE("common/CommonUtils");
} // namespace

void CommonUtils::ThreadCountInc(QString strClass, QString strFunction)
{
    QMutexLocker locker(&ThreadRegistry::countMutex);
    const int count = ++ThreadRegistry::threadCount;
    qCWarning(lcCommon, "%s:threadCount is %d; thread: %s: %s",
              LogLine::stampedPrefix(kSource, "ThreadCountInc").constData(), count,
              LogLine::arg(strClass).constData(), LogLine::arg(strFunction).constData());
}

int CommonUtils::ThreadCountDec(QString strClass, QString strFunction)
{
    QMutexLocker locker(&ThreadRegistry::countMutex);
    const int count = --ThreadRegistry::threadCount;
    qCWarning(lcCommon, "%s: threadCount is %d; thread: %s: %s",
              LogLine::stampedPrefix(kSource, "ThreadCountDec").constData(), count,
              LogLine::arg(strClass).constData(), LogLine::arg(strFunction).constData());
    if (count <= 0) {
        qCWarning(lcCommon, "%s:ThreadFinished.wakeAll();",
                  LogLine::stampedPrefix(kSource, "ThreadCountDec").constData());
        ThreadRegistry::threadFinished.wakeAll();
    }
    return count;
}

void CommonUtils::WaitForThreadToStop(QThread *pThread, unsigned int unMaxWait)
{
    qCDebug(lcCommon, "%s: Enter. unMaxWait: %u",
            LogLine::stampedPrefix(kSource, "WaitForThreadToStop").constData(), unMaxWait);
    if (!pThread)
        return;

    pThread->quit();
    if (pThread->isRunning())
        pThread->wait(unMaxWait * 1000);
    if (pThread->isRunning())
        pThread->terminate();
    qCDebug(lcCommon, "%s: Leave ",
            LogLine::stampedPrefix(kSource, "WaitForThreadToStop").constData());
}
