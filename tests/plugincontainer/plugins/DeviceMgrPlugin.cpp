#include "DeviceMgrPlugin.h"

#include "TestProbe.h"

#include <NexoSim.h>

#include <QThread>

DeviceMgrPlugin::DeviceMgrPlugin()
{
    TestProbe::record(QStringLiteral("Load:DeviceMgr"));
}

DeviceMgrPlugin::~DeviceMgrPlugin()
{
    TestProbe::record(QStringLiteral("Unload:DeviceMgr"));
}

void DeviceMgrPlugin::Release()
{
    TestProbe::record(QStringLiteral("Release:DeviceMgr"));
}

bool DeviceMgrPlugin::Initialize()
{
    TestProbe::record(QStringLiteral("Initialize:DeviceMgr"));
    return TestProbe::option(QStringLiteral("devmgr.init"), true).toBool();
}

bool DeviceMgrPlugin::QueryInterface(int iInterfaceNumber, QObject **ppInterface)
{
    if (iInterfaceNumber != LD_INTERFACE_DEVICE_MGR) {
        *ppInterface = nullptr;
        return false;
    }
    *ppInterface = this;
    return true;
}

void DeviceMgrPlugin::StartDetectDevice()
{
    TestProbe::record(QStringLiteral("StartDetectDevice"));
    TestProbe::noteThread(QStringLiteral("StartDetectDevice"));
    const int blockMs = TestProbe::option(QStringLiteral("devmgr.blockMs"), 0).toInt();
    if (blockMs > 0)
        QThread::msleep(blockMs);
    NexoSim_StartDetection();
    if (TestProbe::option(QStringLiteral("devmgr.sync"), false).toBool())
        NexoSim_WaitIdle(5000);
}

QString DeviceMgrPlugin::GetLastUsedDevice()
{
    TestProbe::record(QStringLiteral("GetLastUsedDevice"));
    return TestProbe::option(QStringLiteral("devmgr.lastUsed")).toString();
}
