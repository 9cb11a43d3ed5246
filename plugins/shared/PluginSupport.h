#ifndef LINKDECK_PLUGINS_PLUGINSUPPORT_H
#define LINKDECK_PLUGINS_PLUGINSUPPORT_H

// Small helpers the sample plugins share: their life-cycle log lines and access to the main
// window that the main-frame plugin provides.

#include "PluginInterfaces.h"
#include "Startup.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QStatusBar>
#include <QThread>
#include <QtGlobal>

namespace PluginSupport {

// "<plugin>: <call>", e.g. "StatusBarMgrPlugin: Initialize".
inline void logCall(const char *plugin, const char *call)
{
    qDebug("%s: %s", plugin, call);
}

// The main window's status bar, or null when there is no main window yet or the caller is not
// on the user-interface thread (plugins may be initialised from the container's worker thread).
inline QStatusBar *mainStatusBar()
{
    if (!QCoreApplication::instance() ||
        QThread::currentThread() != QCoreApplication::instance()->thread())
        return nullptr;
    IMainFrameUIService *pService = Startup::GetMainFrameService();
    auto *pWindow = qobject_cast<QMainWindow *>(pService ? pService->GetMainWindow() : nullptr);
    return pWindow ? pWindow->statusBar() : nullptr;
}

} // namespace PluginSupport

#endif // LINKDECK_PLUGINS_PLUGINSUPPORT_H
