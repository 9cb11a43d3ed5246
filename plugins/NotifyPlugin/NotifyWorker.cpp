#include "NotifyWorker.h"

#include "CommonUtils.h"

namespace {

// Short sleeps keep the worker quick to stop.
constexpr int kTickMs = 20;

} // namespace

NotifyWorker::NotifyWorker(int periodMs, QObject *pParent)
    : QThread(pParent)
    , m_periodMs(periodMs)
{}

bool NotifyWorker::shouldStop() const
{
    return m_bStop || CommonUtils::IsShuttingDown();
}

void NotifyWorker::run()
{
    CommonUtils::ThreadCountInc(QStringLiteral("NotifyWorker"), QStringLiteral("run"));
    int round = 0;
    int waitedMs = 0;
    while (!shouldStop()) {
        msleep(kTickMs);
        waitedMs += kTickMs;
        if (waitedMs >= m_periodMs) {
            waitedMs = 0;
            emit notified(++round);
        }
    }
    CommonUtils::ThreadCountDec(QStringLiteral("NotifyWorker"), QStringLiteral("run"));
}
