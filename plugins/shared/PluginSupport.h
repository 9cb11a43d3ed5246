#ifndef LINKDECK_PLUGINS_PLUGINSUPPORT_H
#define LINKDECK_PLUGINS_PLUGINSUPPORT_H

// Small helpers the sample plugins share: their life-cycle log lines and access to the main
// window that the main-frame plugin provides.

#include "CommonUtils.h"
#include "PluginInterfaces.h"
#include "Startup.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QStatusBar>
#include <QTabWidget>
#include <QThread>
#include <QtGlobal>

namespace PluginSupport {

// "<plugin>: <call>", e.g. "StatusBarMgrPlugin: Initialize".
inline void logCall(const char *plugin, const char *call)
{
    qDebug("%s: %s", plugin, call);
}

// Plugins may be initialised from the container's worker thread, where no widget may be made.
inline bool onUiThread()
{
    return QCoreApplication::instance() &&
           QThread::currentThread() == QCoreApplication::instance()->thread();
}

// The main window's status bar, or null when there is no main window yet or the caller is not
// on the user-interface thread.
inline QStatusBar *mainStatusBar()
{
    if (!onUiThread())
        return nullptr;
    IMainFrameUIService *pService = Startup::GetMainFrameService();
    auto *pWindow = qobject_cast<QMainWindow *>(pService ? pService->GetMainWindow() : nullptr);
    return pWindow ? pWindow->statusBar() : nullptr;
}

// Puts a page among the main window's pages, which the layout plugin holds; false when there is
// no layout plugin (the caller keeps and deletes the page).
inline bool addPage(QWidget *pPage, const QString &title)
{
    ILayout *pLayout = CommonUtils::GetLayoutPlugin();
    auto *pPages = qobject_cast<QTabWidget *>(pLayout ? pLayout->GetLayoutWidget() : nullptr);
    if (!pPages)
        return false;
    pPages->addTab(pPage, title);
    return true;
}

} // namespace PluginSupport

#endif // LINKDECK_PLUGINS_PLUGINSUPPORT_H
