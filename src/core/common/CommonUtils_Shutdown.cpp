#include "CommonUtils.h"

#include "CoreLogging.h"
#include "LogLine.h"
#include "PluginInterfaces.h"
#include "Startup.h"
#include "ThreadRegistry.h"

#include <QMutexLocker>

namespace {
const char kSource[] = LD_SOURCE("common/CommonUtils");
const char kNotifyPluginClsid[] = "C986A689-A5F6-4215-84BD-39BA626F1F57";
const int kWaitSliceMs = 500;
const int kMaxWaits = 20;

void stopNotificationThreads(IPluginContainer *container)
{
    QObject *object =
        container->GetPlugin(QString::fromLatin1(kNotifyPluginClsid), LD_INTERFACE_NOTIFY_SERVICE);
    INotifyService *service = qobject_cast<INotifyService *>(object);
    if (!service)
        return;
    qCDebug(lcCommon, "%s: stop thread called",
            LogLine::prefix(kSource, "WaitThreadsStop").constData());
    service->StopThreads();
}
} // namespace

void CommonUtils::WaitThreadsStop()
{
    IPluginContainer *container = Startup::GetPluginContainer();
    if (!container) {
        qCDebug(lcCommon, "%s: Startup::GetPluginContainer failed",
                LogLine::prefix(kSource, "WaitThreadsStop").constData());
        return;
    }
    stopNotificationThreads(container);

    // The count is read without its mutex, and the budget of waits is spent once per process:
    // a second shut-down wait after it is used up returns at once.
    while (ThreadRegistry::threadCount >= 1) {
        if (ThreadRegistry::waitCount >= kMaxWaits)
            break;
        QMutexLocker locker(&ThreadRegistry::waitMutex);
        qCWarning(lcCommon, "%s: start ThreadFinished.wait",
                  LogLine::stampedPrefix(kSource, "WaitThreadsStop").constData());
        ThreadRegistry::threadFinished.wait(&ThreadRegistry::waitMutex, kWaitSliceMs);
        ++ThreadRegistry::waitCount;
    }
    qCWarning(lcCommon, "%s: end ThreadFinished.wait",
              LogLine::stampedPrefix(kSource, "WaitThreadsStop").constData());
}
