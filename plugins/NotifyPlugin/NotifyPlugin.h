#ifndef LINKDECK_NOTIFYPLUGIN_NOTIFYPLUGIN_H
#define LINKDECK_NOTIFYPLUGIN_NOTIFYPLUGIN_H

#include "PluginInterfaces.h"

#include <QLabel>
#include <QObject>
#include <QPointer>

#include <memory>

class NotifyWorker;

// The notification service (interface number 8209): a background worker looks for news and the
// status bar shows how many rounds it has made. Shut-down stops the worker through StopThreads.
class NotifyPlugin : public QObject, public IBasePlugin, public INotifyService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin INotifyService)
public:
    NotifyPlugin();
    ~NotifyPlugin() override;

    void Release() override;
    int GetLastError() override { return 0; }
    bool Initialize() override;
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override;
    // INotifyService: asks the worker to end; the core's thread bookkeeping waits for it.
    void StopThreads() override;

private:
    void showRound(int round);
    void stopAndJoinWorker();

    std::unique_ptr<NotifyWorker> m_pWorker;
    QPointer<QLabel> m_pLabel;
};

#endif // LINKDECK_NOTIFYPLUGIN_NOTIFYPLUGIN_H
