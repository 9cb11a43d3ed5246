#include "ToolBarLogic.h"
#include "ToolBarShared.h"

#include "IPluginContainer.h"
#include "Startup.h"
#include "common/CoreLogging.h"

// Items of a toolbar file may belong to a plugin; they are shown only while it is loaded.
QObject *ToolBarLogic::getPlugin(QString strPluginName)
{
    const QByteArray prefix = LogLine::prefix(ToolBarShared::kSource, "getPlugin");
    qCDebug(lcToolBar, "%s: Enter", prefix.constData());
    IPluginContainer *pContainer = Startup::GetPluginContainer();
    if (!pContainer) {
        qCDebug(lcToolBar, "%s: Plugin container is null ", prefix.constData());
        return nullptr;
    }
    // Asking by clsid keeps the container from loading a plugin that is not loaded yet.
    const QString strClsid = pContainer->GetClsidByName(strPluginName);
    if (strClsid.isEmpty() || !pContainer->IsPluginLoaded(strClsid)) {
        qCDebug(lcToolBar, "%s: plugin is not loaded ", prefix.constData());
        return nullptr;
    }
    return pContainer->GetPlugin(strClsid, 0);
}
