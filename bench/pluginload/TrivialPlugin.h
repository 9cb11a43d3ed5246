#ifndef LINKDECK_BENCH_TRIVIALPLUGIN_H
#define LINKDECK_BENCH_TRIVIALPLUGIN_H

#include "PluginInterfaces.h"

#include <QObject>

// A plugin that does nothing: what is measured is the cost of getting it loaded.
class TrivialPlugin : public QObject, public IBasePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin)

public:
    void Release() override {}
    int GetLastError() override { return 0; }
    bool Initialize() override { return true; }
    bool QueryInterface(int, QObject **ppInterface) override
    {
        *ppInterface = nullptr;
        return false;
    }
};

#endif // LINKDECK_BENCH_TRIVIALPLUGIN_H
