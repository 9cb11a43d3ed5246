#include "DeviceMgrUIPlugin.h"

#include "Change.h"
#include "CommonUtils.h"
#include "IPluginContainer.h"
#include "LastUsedDevice.h"
#include "NexoBackend.h"
#include "PluginSupport.h"

#include <atomic>

namespace {

constexpr char kName[] = "DeviceMgrUIPlugin";

// The registered instance. Unregistering waits for a callback under way, so the instance is
// alive whenever the callback reads it.
std::atomic<DeviceMgrUIPlugin *> s_pInstance{nullptr};

} // namespace

DeviceMgrUIPlugin::~DeviceMgrUIPlugin()
{
    // The callback's code goes away with this library.
    unregisterCallback();
}

bool DeviceMgrUIPlugin::Initialize()
{
    PluginSupport::logCall(kName, "Initialize");
    if (m_bRegistered)
        return true;
    s_pInstance = this;
    m_lastError = int(NEXO_DevSrv_RegisterDevMgrCallback(&DeviceMgrUIPlugin::onDeviceEvent));
    m_bRegistered = m_lastError == 0;
    if (!m_bRegistered) {
        s_pInstance = nullptr;
        qWarning("%s: device service refused the event callback (%d)", kName, m_lastError);
    }
    return m_bRegistered;
}

void DeviceMgrUIPlugin::Release()
{
    PluginSupport::logCall(kName, "Release");
    unregisterCallback();
}

void DeviceMgrUIPlugin::unregisterCallback()
{
    if (!m_bRegistered)
        return;
    NEXO_DevSrv_UnRegisterDevMgrCallback(&DeviceMgrUIPlugin::onDeviceEvent);
    s_pInstance = nullptr;
    m_bRegistered = false;
}

bool DeviceMgrUIPlugin::QueryInterface(int iInterfaceNumber, QObject **ppInterface)
{
    if (!ppInterface)
        return false;
    if (iInterfaceNumber == LD_INTERFACE_ROOT || iInterfaceNumber == LD_INTERFACE_DEVICE_MGR) {
        *ppInterface = this;
        return true;
    }
    *ppInterface = nullptr;
    return false;
}

void DeviceMgrUIPlugin::StartDetectDevice()
{
    PluginSupport::logCall(kName, "StartDetectDevice");
    m_bStartupDetection = true;
    // The simulator runs its configured detection; ModemManager reports the modems present.
    NEXO_Backend_StartDetection();
}

QString DeviceMgrUIPlugin::GetLastUsedDevice()
{
    return LastUsedDevice::load();
}

int DeviceMgrUIPlugin::onDeviceEvent(int enNotifyType, void *)
{
    DeviceMgrUIPlugin *pPlugin = s_pInstance;
    if (!pPlugin)
        return 1;
    // Whatever the answer to start-up's detection is, later events are device changes.
    const bool bStartup = pPlugin->m_bStartupDetection.exchange(false);
    if (enNotifyType == NEXO_EVENT_DEV_REJECT)
        QMetaObject::invokeMethod(
            pPlugin, [pPlugin] { pPlugin->deviceRejected(); }, Qt::QueuedConnection);
    if (enNotifyType != NEXO_EVENT_DEV_DETECTED)
        return 1;
    // Several devices or none leave the stored one as it is, which is also what start-up falls
    // back to.
    const QString device = LastUsedDevice::singleAvailableDevice();
    if (device.isEmpty())
        return 1;
    if (device != LastUsedDevice::load()) {
        qDebug("%s: last used device is now %s", kName, qPrintable(device));
        LastUsedDevice::store(device);
    }
    if (!bStartup)
        QMetaObject::invokeMethod(
            pPlugin, [pPlugin, device] { pPlugin->deviceDetected(device); }, Qt::QueuedConnection);
    return 1;
}

void DeviceMgrUIPlugin::deviceDetected(const QString &device)
{
    IPluginContainer *pContainer = Startup::GetPluginContainer();
    // Until start-up has applied its device there is nothing to switch from.
    if (!pContainer || !pContainer->IsPluginsConfigInitialized())
        return;

    QList<QString> enabled;
    QList<QString> disabled;
    pContainer->HandleDeviceSwitched(device, enabled, disabled);
    qDebug("%s: switched to %s: %d plugins enabled, %d disabled", kName, qPrintable(device),
           int(enabled.size()), int(disabled.size()));
    // This plugin is part of every device's set, so it survives the update it starts.
    if (!enabled.isEmpty() || !disabled.isEmpty())
        pContainer->UpdateAllStaticOrActivePlugins();
}

void DeviceMgrUIPlugin::deviceRejected()
{
    qDebug("%s: device rejected", kName);
    const QString plugin = QLatin1String(kName);
    CommonUtils::ShowMessageEx(QMessageBox::Warning, nullptr,
                               Change::tr(QStringLiteral("IDS_DEVICE_REJECTED_TITLE"), plugin),
                               Change::tr(QStringLiteral("IDS_DEVICE_REJECTED_TEXT"), plugin),
                               QStringLiteral("IDS_OK"), QString(), QString(), true, Qt::Dialog,
                               nullptr, QStringLiteral("IDS_OK"));
}
