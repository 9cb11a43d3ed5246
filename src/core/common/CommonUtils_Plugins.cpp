#include "CommonUtils.h"

#include "CoreLogging.h"
#include "LogLine.h"
#include "PluginClsid.h"
#include "PluginInterfaces.h"
#include "Startup.h"
#include "UtilityLog.h"

#include <algorithm>
#include <iterator>

namespace {

const char kSource[] = LD_SOURCE("common/CommonUtils");
// Written at this line of the original source; integrators' log filters look for it.
constexpr int kMakeCallStartLine = 1118;

// Helper plugins that never put a page into the main frame's user interface.
const QString kNotEmbedded[] = {PluginClsid::mainFrame(),
                                QStringLiteral("140B81C0-F62B-4ee0-9897-BDC3F8F03B18"),
                                PluginClsid::postponedSecond(),
                                PluginClsid::postponedFirst(),
                                QStringLiteral("385BDF98-9AA3-4121-9FBB-CACB1CD9608B"),
                                QStringLiteral("881EA87E-882C-4f22-961C-466E0686F707"),
                                QStringLiteral("90DC623D-19BD-4dee-8940-470AD75BB60E")};

bool isEmbedded(const QString &clsid)
{
    return std::find(std::begin(kNotEmbedded), std::end(kNotEmbedded), clsid) ==
           std::end(kNotEmbedded);
}

// The interface T that the plugin hands out for the number, or null.
template<typename T>
T *pluginInterface(IPluginContainer *pContainer, const QString &key, int interfaceNumber)
{
    return qobject_cast<T *>(pContainer->GetPlugin(key, interfaceNumber));
}

} // namespace

QWidget *CommonUtils::GetMainWindow()
{
    UtilityLog::enter("GetMainWindow", __LINE__);
    IPluginContainer *pContainer = Startup::GetPluginContainer();
    if (!pContainer) {
        qCDebug(lcCommon, "%s: Startup::GetPluginContainer failed",
                LogLine::prefix(kSource, "GetMainWindow").constData());
        return nullptr;
    }
    QObject *pPlugin =
        pContainer->GetPlugin(PluginClsid::mainFrame(), LD_INTERFACE_MAIN_FRAME_SERVICE);
    if (!pPlugin) {
        qCDebug(lcCommon, "%s: pPluginContainer->GetPlugin failed",
                LogLine::prefix(kSource, "GetMainWindow").constData());
        return nullptr;
    }
    auto *pService = qobject_cast<IMainFrameUIService *>(pPlugin);
    QWidget *pWindow = pService ? pService->GetMainWindow() : nullptr;
    UtilityLog::exit("GetMainWindow", __LINE__);
    return pWindow;
}

IDeviceMgr *CommonUtils::GetDeviceMgrPlugin()
{
    IPluginContainer *pContainer = Startup::GetPluginContainer();
    if (!pContainer) {
        qCDebug(lcCommon, "%s:Get plugin container error",
                LogLine::stampedPrefix(kSource, "GetDeviceMgrPlugin").constData());
        return nullptr;
    }
    auto *pDeviceMgr = pluginInterface<IDeviceMgr>(pContainer, PluginClsid::deviceManager(),
                                                   LD_INTERFACE_DEVICE_MGR);
    if (!pDeviceMgr)
        qCDebug(lcCommon, "%s:fail to get plugin",
                LogLine::stampedPrefix(kSource, "GetDeviceMgrPlugin").constData());
    return pDeviceMgr;
}

ILayout *CommonUtils::GetLayoutPlugin()
{
    IPluginContainer *pContainer = Startup::GetPluginContainer();
    if (!pContainer)
        return nullptr;
    auto *pService = pluginInterface<IMainFrameUIService>(
        pContainer, pContainer->GetMainFramePluginName(), LD_INTERFACE_MAIN_FRAME_SERVICE);
    if (!pService)
        return nullptr;
    return pluginInterface<ILayout>(pContainer, pService->GetLayoutPluginClsid(),
                                    LD_INTERFACE_DEVICE_MGR);
}

QList<QString> CommonUtils::GetUIEmbedPlugibList()
{
    QList<QString> clsids;
    IPluginContainer *pContainer = Startup::GetPluginContainer();
    if (!pContainer)
        return clsids;
    qCDebug(lcCommon, "%s: entered", LogLine::prefix(kSource, "GetUIEmbedPlugibList").constData());
    clsids = pContainer->GetPluginClsidsByType(0);
    clsids.erase(std::remove_if(clsids.begin(), clsids.end(),
                                [](const QString &clsid) { return !isEmbedded(clsid); }),
                 clsids.end());
    return clsids;
}

bool CommonUtils::IsPluginAvailable(QString clsid)
{
    IPluginContainer *pContainer = Startup::GetPluginContainer();
    return pContainer && pContainer->IsPluginAvailable(clsid);
}

void CommonUtils::MakeCall(QString strNumber)
{
    UtilityLog::start("MakeCall", kMakeCallStartLine);
    IPluginContainer *pContainer = Startup::GetPluginContainer();
    if (!pContainer) {
        UtilityLog::nullPointer("MakeCall", __LINE__);
        return;
    }
    auto *pCall =
        pluginInterface<ICallUIPlugin>(pContainer, PluginClsid::callUi(), LD_INTERFACE_DEVICE_MGR);
    if (!pCall) {
        UtilityLog::nullPointer("MakeCall", __LINE__);
        return;
    }
    pCall->MakeCall(strNumber, 0);
    UtilityLog::end("MakeCall", __LINE__);
}
