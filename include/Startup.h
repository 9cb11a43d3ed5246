#ifndef LINKDECK_STARTUP_H
#define LINKDECK_STARTUP_H

#include "CoreGlobal.h"

#include <QElapsedTimer>
#include <QString>

class IMainFrameUIService;
class IPluginContainer;
class IUIPlugin;
class QSplashScreen;
class QXmlStreamReader;

// Brings the core up: optional splash screen, the one plugin container of the process, and the
// main-frame plugin. Its state is process-wide so that any plugin reaches the container and the
// main frame through the static accessors.
class CORE_EXPORT Startup
{
public:
    // bFlag true suppresses the splash screen and is handed to the container as its start flag.
    explicit Startup(bool bFlag);
    ~Startup();

    Startup(const Startup &) = delete;
    Startup &operator=(const Startup &) = delete;

    // Null until the container exists and again after ~Startup.
    static IPluginContainer *GetPluginContainer();
    static IUIPlugin *GetMainFrame();
    static IMainFrameUIService *GetMainFrameService();
    // Hands the splash screen over to the caller, who closes and deletes it; elapsed receives the
    // milliseconds it has been shown. A second call returns null.
    static QSplashScreen *GetSplashScreen(int &elapsed);

    // Whether the main frame's configuration file below appDir wants a splash for an operator
    // customization name (the start flag aside), and what decided it: haveSplashScreen's answer.
    struct SplashDecision
    {
        bool splash;
        QString reason;
    };
    static SplashDecision decideSplash(const QString &appDir, const QString &strOperator);

    bool initializePluginContainer(QString &strPluginsFile, QString &strConfigFile, bool bFlag);
    bool loadMainFramePlugin();
    void showSplashScreen();
    bool haveSplashScreen();
    void operatorHaveSplashScreen(QXmlStreamReader &reader, QString strOperator, bool &bSplash);

private:
    static IPluginContainer *m_pPluginContainer;
    static IUIPlugin *m_pUiPlugin;
    static IMainFrameUIService *m_pUiPluginService;
    static QSplashScreen *m_pSplashScreen;
    static QElapsedTimer m_pSplashStartAt;
};

#endif // LINKDECK_STARTUP_H
