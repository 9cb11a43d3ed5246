#include "CallUIPlugin.h"
#include "CallDialog.h"

#include "PluginSupport.h"

namespace {

constexpr char kName[] = "CallUIPlugin";

} // namespace

CallUIPlugin::~CallUIPlugin()
{
    // The dialog's code lives in this library.
    delete m_pDialog;
}

bool CallUIPlugin::Initialize()
{
    PluginSupport::logCall(kName, "Initialize");
    return true;
}

void CallUIPlugin::Release()
{
    PluginSupport::logCall(kName, "Release");
    delete m_pDialog;
}

bool CallUIPlugin::QueryInterface(int iInterfaceNumber, QObject **ppInterface)
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

void CallUIPlugin::MakeCall(const QString &strNumber, int)
{
    qDebug("%s: MakeCall %s", kName, qPrintable(strNumber));
    IMainFrameUIService *pService = Startup::GetMainFrameService();
    if (!m_pDialog)
        m_pDialog = new CallDialog(pService ? pService->GetMainWindow() : nullptr);
    m_pDialog->showCall(strNumber);
}
