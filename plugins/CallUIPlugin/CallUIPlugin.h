#ifndef LINKDECK_CALLUIPLUGIN_CALLUIPLUGIN_H
#define LINKDECK_CALLUIPLUGIN_CALLUIPLUGIN_H

#include "PluginInterfaces.h"

#include <QObject>
#include <QPointer>

class CallDialog;

// The call screen: MakeCall shows the number being called in a framed dialog above the main
// window. Served under the device-manager interface number (4097), as the core asks for it.
class CallUIPlugin : public QObject, public IBasePlugin, public ICallUIPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin ICallUIPlugin)
public:
    ~CallUIPlugin() override;

    // IBaseInterface
    void Release() override;
    int GetLastError() override { return 0; }
    // IBasePlugin
    bool Initialize() override;
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override;
    // ICallUIPlugin: iFlag is reserved (0).
    void MakeCall(const QString &strNumber, int iFlag) override;

private:
    QPointer<CallDialog> m_pDialog;
};

#endif // LINKDECK_CALLUIPLUGIN_CALLUIPLUGIN_H
