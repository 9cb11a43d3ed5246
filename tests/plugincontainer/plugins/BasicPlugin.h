#ifndef LINKDECK_TESTS_BASICPLUGIN_H
#define LINKDECK_TESTS_BASICPLUGIN_H

#include "PluginInterfaces.h"

#include <QObject>

// A plugin that only has the base interface. Its tag (a compile definition) names it in the
// notebook: "Load:<tag>" when its library is loaded, "Unload:<tag>" when the object goes with the
// library, "Initialize:<tag>", "Release:<tag>", "QueryInterface:<tag>:<number>".
class BasicPlugin : public QObject, public IBasePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin)

public:
    BasicPlugin();
    ~BasicPlugin() override;

    void Release() override;
    int GetLastError() override { return 0; }
    bool Initialize() override;
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override;
};

#endif // LINKDECK_TESTS_BASICPLUGIN_H
