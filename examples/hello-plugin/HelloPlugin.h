#ifndef HELLOPLUGIN_H
#define HELLOPLUGIN_H

#include "PluginInterfaces.h"

#include <QObject>
#include <QPointer>

class QMenu;

// A plugin that adds a "Hello" menu to the main window's menu bar; its entry greets the user.
// The texts come from the plugin's language files (plugins/HelloPlugin/HelloPlugin_<lang>.lang).
class HelloPlugin : public QObject, public IBasePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin)
public:
    ~HelloPlugin() override;

    // IBaseInterface
    void Release() override;
    int GetLastError() override { return 0; }
    // IBasePlugin
    bool Initialize() override;
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override;

private:
    void addMenu();
    void sayHello();

    QPointer<QMenu> m_pMenu;
};

#endif // HELLOPLUGIN_H
