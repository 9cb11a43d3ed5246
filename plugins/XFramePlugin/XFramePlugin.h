#ifndef LINKDECK_XFRAMEPLUGIN_XFRAMEPLUGIN_H
#define LINKDECK_XFRAMEPLUGIN_XFRAMEPLUGIN_H

#include "FrameConfig.h"
#include "PluginInterfaces.h"

#include <QObject>
#include <QPointer>

class MainWindow;

// The main-frame plugin: owns the main window and answers the frame questions of the other
// plugins (interface number 4113).
class XFramePlugin : public QObject,
                     public IBasePlugin,
                     public IUIPlugin,
                     public IMainFrameUIService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin IUIPlugin IMainFrameUIService)
public:
    XFramePlugin();
    ~XFramePlugin() override;

    // IBaseInterface. Release may come twice at shut-down; the second call finds nothing to do.
    void Release() override;
    int GetLastError() override { return 0; }
    // IBasePlugin
    bool Initialize() override;
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override;
    // IUIPlugin: shows the main window and takes the splash screen over from start-up.
    void Create(QWidget *pParent, const QRect &rect) override;
    // IMainFrameUIService
    QWidget *GetMainWindow() override;
    QString GetLayoutPluginClsid() override;
    bool IsCustomTitleBar() override;
    int GetTitleHeight() override;
    int GetFrameWidth() override;

private:
    void closeSplashScreen();

    FrameConfig m_config;
    QPointer<MainWindow> m_pWindow;
};

#endif // LINKDECK_XFRAMEPLUGIN_XFRAMEPLUGIN_H
