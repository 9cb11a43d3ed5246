#ifndef NOTIFYTESTPLUGIN_H
#define NOTIFYTESTPLUGIN_H

#include "PluginInterfaces.h"

#include <QAtomicInt>
#include <QObject>
#include <QThread>

// A notification service whose worker thread is registered with the core and runs until
// StopThreads is called.
class NotifyWorker : public QThread
{
public:
    QAtomicInt stopRequested;

protected:
    void run() override;
};

class NotifyTestPlugin : public QObject, public IBasePlugin, public INotifyService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin INotifyService)

public:
    ~NotifyTestPlugin() override;

    void Release() override;
    int GetLastError() override { return 0; }
    bool Initialize() override;
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override;
    void StopThreads() override;

private:
    NotifyWorker m_worker;
};

#endif // NOTIFYTESTPLUGIN_H
