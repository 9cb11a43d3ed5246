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
    // The container takes a plugin name as well and loads an enabled plugin on demand.
    QObject *pPlugin = pContainer->GetPlugin(strPluginName, 0);
    if (!pPlugin)
        qCDebug(lcToolBar, "%s: plugin is not loaded ", prefix.constData());
    return pPlugin;
}
