#ifndef LINKDECK_TESTS_MAINFRAMEPLUGIN_H
#define LINKDECK_TESTS_MAINFRAMEPLUGIN_H

#include "PluginInterfaces.h"

#include <QObject>

// Stands for the main-frame plugin: hands out its main-frame service for the number 4113 and
// records like BasicPlugin.
class MainFramePlugin : public QObject,
                        public IBasePlugin,
                        public IUIPlugin,
                        public IMainFrameUIService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin IUIPlugin IMainFrameUIService)

public:
    MainFramePlugin();
    ~MainFramePlugin() override;

    void Release() override;
    int GetLastError() override { return 0; }
    bool Initialize() override;
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override;

    void Create(QWidget *pParent, const QRect &rect) override;

    QWidget *GetMainWindow() override { return nullptr; }
    QString GetLayoutPluginClsid() override { return QString(); }
    bool IsCustomTitleBar() override { return false; }
    int GetTitleHeight() override { return 0; }
    int GetFrameWidth() override { return 0; }
};

#endif // LINKDECK_TESTS_MAINFRAMEPLUGIN_H
