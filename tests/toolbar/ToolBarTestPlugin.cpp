#include "PluginInterfaces.h"

// A plugin with nothing but the base interface: toolbar items only ask whether it is loaded.
class ToolBarTestPlugin : public QObject, public IBasePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin)

public:
    void Release() override {}
    int GetLastError() override { return 0; }
    bool Initialize() override { return true; }
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override
    {
        return ppInterface &&
               (*ppInterface = iInterfaceNumber == LD_INTERFACE_ROOT ? this : nullptr) != nullptr;
    }
};

#include "ToolBarTestPlugin.moc"
