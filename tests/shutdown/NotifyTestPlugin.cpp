#include "NotifyTestPlugin.h"

#include "CommonUtils.h"

void NotifyWorker::run()
{
    CommonUtils::ThreadCountInc("NotifyWorker", "run");
    while (!stopRequested.loadAcquire())
        QThread::msleep(10);
    CommonUtils::ThreadCountDec("NotifyWorker", "run");
}

NotifyTestPlugin::~NotifyTestPlugin()
{
    m_worker.stopRequested.storeRelease(1);
    m_worker.wait();
}

void NotifyTestPlugin::Release()
{
    StopThreads();
    m_worker.wait();
}

bool NotifyTestPlugin::Initialize()
{
    m_worker.start();
    return true;
}

bool NotifyTestPlugin::QueryInterface(int iInterfaceNumber, QObject **ppInterface)
{
    if (!ppInterface)
        return false;
    *ppInterface =
        (iInterfaceNumber == LD_INTERFACE_NOTIFY_SERVICE || iInterfaceNumber == 0) ? this : nullptr;
    return *ppInterface != nullptr;
}

void NotifyTestPlugin::StopThreads()
{
    qDebug("NotifyTestPlugin: StopThreads");
    m_worker.stopRequested.storeRelease(1);
}
