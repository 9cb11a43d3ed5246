#ifndef LINKDECK_LAYOUTPLUGIN_LAYOUTPLUGIN_H
#define LINKDECK_LAYOUTPLUGIN_LAYOUTPLUGIN_H

#include "PluginInterfaces.h"

#include <QObject>
#include <QPointer>

class QTabWidget;

// The layout of the main window's pages: one tab per page plugin. The main frame names this
// plugin in its Config.xml and shows the layout widget; page plugins add their pages to it.
class LayoutPlugin : public QObject, public IBasePlugin, public ILayout
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin ILayout)
public:
    ~LayoutPlugin() override;

    // IBaseInterface
    void Release() override;
    int GetLastError() override { return 0; }
    // IBasePlugin
    bool Initialize() override;
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override;
    // ILayout: a QTabWidget ("LayoutPlugin_Pages"), made on first use on the user-interface
    // thread; null elsewhere.
    QWidget *GetLayoutWidget() override;

private:
    QPointer<QTabWidget> m_pPages;
};

#endif // LINKDECK_LAYOUTPLUGIN_LAYOUTPLUGIN_H
