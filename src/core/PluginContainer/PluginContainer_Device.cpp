// Finding the attached device through the device service, and switching devices.
#include "PluginContainer.h"

#include "ContainerLog.h"
#include "PluginInterfaces.h"
#include "StartupProfile.h"

#include <NexoSdk.h>

#include <QMutexLocker>
#include <QWaitCondition>

#include <cstring>
#include <memory>
#include <vector>

// Created in this order by static initialisation: the device wait pair, then the device name and
// its lock.
static QWaitCondition s_deviceWait;
static QMutex s_deviceWaitMutex;
QString PluginContainer::m_strDeviceName;
QMutex PluginContainer::m_LockStrDevName(QMutex::Recursive);

namespace {

enum { kDeviceWaitMs = 10000 };

QByteArray stamped(const char *function)
{
    return LogLine::stampedPrefix(kContainerSource, function);
}

struct DeviceList
{
    int count = 0;
    QString firstName;
};

// The block holds the device count at offset 0 and the first name, NUL-terminated in the local
// 8-bit encoding, from offset 12.
bool fetchDeviceList(DeviceList &list, long &result)
{
    std::vector<char> block(NEXO_DEVICE_LIST_SIZE, 0);
    result = NEXO_DevSrv_GetAvailableDeviceList(block.data());
    if (result != 0)
        return false;
    qint32 count = 0;
    std::memcpy(&count, block.data(), sizeof count);
    const char *name = block.data() + 12;
    list.count = count;
    list.firstName = QString::fromLocal8Bit(name, int(qstrnlen(name, block.size() - 12)));
    return true;
}

} // namespace

// Always answers 1. Wakes the waiter without holding the wait mutex.
int PluginContainer::OnDevMgrEvent(int enNotifyType, void *)
{
    const QByteArray linePrefix = LogLine::prefix(kContainerSource, "OnDevMgrEvent");
    qCDebug(lcPlugins, "%s: entered, enNotifyType = %d", linePrefix.constData(), enNotifyType);

    if (enNotifyType == NEXO_EVENT_DEV_REJECT || enNotifyType == NEXO_EVENT_DEV_DEVICE_INVALID) {
        {
            QMutexLocker locker(&m_LockStrDevName);
            m_strDeviceName.clear();
        }
        qCDebug(lcPlugins,
                "%s: entered, NEXO_EVENT_DEV_REJECT || NEXO_EVENT_DEV_DEVICE_INVALID, wake all",
                linePrefix.constData());
        s_deviceWait.wakeAll();
        return 1;
    }
    if (enNotifyType != NEXO_EVENT_DEV_DETECTED)
        return 1;

    DeviceList list;
    long result = 0;
    if (fetchDeviceList(list, result)) {
        qCDebug(lcPlugins, "%s called NEXO_DevSrv_GetAvailableDeviceList, %d",
                stamped("OnDevMgrEvent").constData(), int(result));
        QMutexLocker locker(&m_LockStrDevName);
        if (list.count == 1) {
            m_strDeviceName = list.firstName;
            qCDebug(lcPlugins, "%s: strDeviceName = %s", linePrefix.constData(),
                    LogLine::arg(m_strDeviceName).constData());
        } else {
            // None, or more than one: the device manager's last used device decides.
            m_strDeviceName.clear();
            qCDebug(lcPlugins, "%s: NEXO_DevSrv_GetAvailableDeviceList returned device count: %d",
                    linePrefix.constData(), list.count);
        }
    }
    qCDebug(lcPlugins, "%s: entered, NEXO_EVENT_DEV_DETECTED wake all", linePrefix.constData());
    s_deviceWait.wakeAll();
    return 1;
}

// Detection is started before the wait mutex is taken: an event delivered before the wait
// begins is missed and the wait runs its full time, after which the stored name still counts.
QString PluginContainer::getDeviceName(bool)
{
    const QByteArray linePrefix = stamped("getDeviceName");
    QString device;

    if (!m_bDeviceMgrInitialized) {
        qCWarning(lcPlugins, "%s: init deviceMgr failed",
                  LogLine::prefix(kContainerSource, "getDeviceName").constData());
    } else {
        qCDebug(lcPlugins, "%s calling registration functions", linePrefix.constData());
        if (long error = NEXO_DevSrv_RegisterDevInitEventCallback(OnDevMgrEvent)) {
            qCDebug(lcPlugins, "%s register callback failed . DevInitEventError = %ld",
                    stamped("getDeviceName").constData(), error);
        }
        if (long error = NEXO_DevSrv_RegisterDevMgrCallback(OnDevMgrEvent)) {
            qCDebug(lcPlugins, "%s register callback failed . DevMgrError = %ld",
                    stamped("getDeviceName").constData(), error);
        }
        qCDebug(lcPlugins, "%s calling registration finished",
                stamped("getDeviceName").constData());

        QString clsid = PluginClsid::deviceManager();
        auto *deviceMgr =
            qobject_cast<IDeviceMgr *>(getPlugin(clsid, true, kDeviceManagerInterface));
        if (!deviceMgr) {
            qCWarning(lcPlugins, "%s: get deviceMgr failed",
                      LogLine::prefix(kContainerSource, "getDeviceName").constData());
        } else {
            deviceMgr->StartDetectDevice();
            s_deviceWaitMutex.lock();
            qCDebug(lcPlugins, "%s waiting for sdk finished enter",
                    stamped("getDeviceName").constData());
            s_deviceWait.wait(&s_deviceWaitMutex, kDeviceWaitMs);
            qCDebug(lcPlugins, "%s waiting for sdk finished exit",
                    stamped("getDeviceName").constData());
            s_deviceWaitMutex.unlock();

            QMutexLocker locker(&m_LockStrDevName);
            if (!m_strDeviceName.isEmpty()) {
                device = m_strDeviceName;
                m_strDeviceName.clear();
            } else {
                device = deviceMgr->GetLastUsedDevice();
                qCDebug(lcPlugins,
                        "%s : %s : %s : There is no device or more than one device. No available "
                        "device. Get last used device: %s",
                        LogLine::timeStamp().constData(), kContainerSource, "getDeviceName",
                        LogLine::arg(device).constData());
            }
        }
    }

    qCDebug(lcPlugins, "%s calling unregistration functions", stamped("getDeviceName").constData());
    NEXO_DevSrv_UnRegisterDevInitEventCallback(OnDevMgrEvent);
    NEXO_DevSrv_UnRegisterDevMgrCallback(OnDevMgrEvent);
    return device;
}

void PluginContainer::StartInitPluginsConfig()
{
    startInitPluginsConfig();
}

void PluginContainer::startInitPluginsConfig()
{
    QString device;
    {
        StartupProfile::Scope phase(QStringLiteral("device wait"));
        device = getDeviceName(false);
    }
    updateDeviceCustomization(device);
    m_bPluginsConfigInitialized = true;
}

// Compares position by position with a snapshot taken before the new device's rules apply. The
// caller's lists are appended to.
void PluginContainer::HandleDeviceSwitched(QString device, QList<QString> &enabled,
                                           QList<QString> &disabled)
{
    QMutexLocker locker(&m_mutex);
    std::vector<std::unique_ptr<PluginInfo>> before;
    before.reserve(m_pListPlugins->size());
    for (const PluginInfo *info : qAsConst(*m_pListPlugins)) {
        auto copy = std::make_unique<PluginInfo>(info->Name(), info->Clsid(), info->Url(), 0,
                                                 info->IsActive(), info->IsStatic(),
                                                 info->IsSettingTitle(), info->IsLoaded());
        copy->SetEnabled(info->IsEnabled());
        copy->SetInitialized(info->IsInitialized());
        before.push_back(std::move(copy));
    }

    ApplyCustomizationForDevice(device);

    const int common = qMin(int(before.size()), m_pListPlugins->size());
    for (int i = 0; i < common; ++i) {
        const PluginInfo *was = before[size_t(i)].get();
        const PluginInfo *now = m_pListPlugins->at(i);
        if (was->Clsid() != now->Clsid() || was->IsEnabled() == now->IsEnabled())
            continue;
        (now->IsEnabled() ? enabled : disabled).append(now->Clsid());
    }
}
