#include "DeviceMgrUIPlugin.h"

#include "LastUsedDevice.h"
#include "NexoSim.h"
#include "PluginSupport.h"

namespace {

constexpr char kName[] = "DeviceMgrUIPlugin";

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
    m_lastError = int(NEXO_DevSrv_RegisterDevMgrCallback(&LastUsedDevice::onDeviceEvent));
    m_bRegistered = m_lastError == 0;
    if (!m_bRegistered)
        qWarning("%s: device service refused the event callback (%d)", kName, m_lastError);
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
    NEXO_DevSrv_UnRegisterDevMgrCallback(&LastUsedDevice::onDeviceEvent);
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
    NexoSim_StartDetection();
}

QString DeviceMgrUIPlugin::GetLastUsedDevice()
{
    return LastUsedDevice::load();
}
