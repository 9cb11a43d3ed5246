#ifndef LINKDECK_TESTS_TESTUIONLYFRAME_H
#define LINKDECK_TESTS_TESTUIONLYFRAME_H

#include "PluginInterfaces.h"

#include <QObject>

// A main frame that lacks the service interface 4113: start-up must stop before creating it.
class TestUiOnlyFrame : public QObject, public IBasePlugin, public IUIPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin IUIPlugin)
public:
    void Release() override { qDebug("TestUiOnlyFrame: Release"); }
    int GetLastError() override { return 0; }
    bool Initialize() override
    {
        qDebug("TestUiOnlyFrame: Initialize");
        return true;
    }
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override
    {
        *ppInterface = iInterfaceNumber == LD_INTERFACE_ROOT ? this : nullptr;
        return *ppInterface != nullptr;
    }
    void Create(QWidget *, const QRect &) override { qDebug("TestUiOnlyFrame: Create"); }
};

#endif // LINKDECK_TESTS_TESTUIONLYFRAME_H
