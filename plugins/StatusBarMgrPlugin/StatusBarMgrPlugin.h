#ifndef LINKDECK_STATUSBARMGRPLUGIN_STATUSBARMGRPLUGIN_H
#define LINKDECK_STATUSBARMGRPLUGIN_STATUSBARMGRPLUGIN_H

#include "PluginInterfaces.h"

#include <QLabel>
#include <QObject>
#include <QPointer>

// Shows the device in use and the operator customization in the main window's status bar.
class StatusBarMgrPlugin : public QObject, public IBasePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin)
public:
    ~StatusBarMgrPlugin() override;

    void Release() override;
    int GetLastError() override { return 0; }
    bool Initialize() override;
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override;

private:
    // The label belongs to the status bar; it may go with the main window before Release.
    QPointer<QLabel> m_pLabel;
};

#endif // LINKDECK_STATUSBARMGRPLUGIN_STATUSBARMGRPLUGIN_H
