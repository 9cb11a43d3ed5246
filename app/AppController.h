#ifndef LINKDECK_APP_APPCONTROLLER_H
#define LINKDECK_APP_APPCONTROLLER_H

#include "AppOptions.h"

#include <QObject>
#include <QTimer>

#include <memory>

class QApplication;
class Startup;

// Runs the application's life: start-up behind the splash, the plugin set once the device
// customization is known, and the ordered shut-down.
class AppController : public QObject
{
    Q_OBJECT
public:
    AppController(QApplication &app, AppOptions options);
    ~AppController() override;

    // Skin, simulator, settings, then the core's start-up. Prints what the run uses to stdout.
    void start();
    // Stops the plugins' threads and destroys the core in the order the plugins rely on.
    void shutDown();
    // False when a screenshot was asked for and could not be written.
    bool succeeded() const { return m_bSucceeded; }

protected:
    // With --profile: notes when the main window is first on screen.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void applySkin();
    void selectBackend();
    void configureSimulator();
    void applyLanguageAndOperator();
    void printRunInfo() const;
    void pollPluginsConfig();
    // Simulates unplugging the devices and plugging in the --switch-device one.
    void switchDevice();
    void writeScreenshot();

    QApplication &m_app;
    const AppOptions m_options;
    std::unique_ptr<Startup> m_pStartup;
    QTimer m_configPoll;
    bool m_bSucceeded = true;
};

#endif // LINKDECK_APP_APPCONTROLLER_H
