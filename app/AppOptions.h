#ifndef LINKDECK_APP_APPOPTIONS_H
#define LINKDECK_APP_APPOPTIONS_H

#include <QString>
#include <QStringList>

class QCoreApplication;

// What the command line asks of this run.
struct AppOptions
{
    QString backend;        // device service: simulator, modemmanager or auto; empty: settings
    QStringList devices;    // the simulated device service's available devices
    QString operatorName;   // customization name of the device and the settings' operator
    QString language;       // language code such as "de-de"; empty keeps the stored one
    QString screenshotFile; // absolute path of the PNG written just before quitting
    int quitAfterMs = -1;   // quit on our own after this many milliseconds; -1 runs until closed
    QString switchDevice;   // the device the simulated service reports from switchAfterMs on
    int switchAfterMs = 1000;
    bool noSplash = false;
    QString cellBroadcast;  // the text the simulated network broadcasts (title-bar ticker)
    int rejectAfterMs = -1; // the service rejects the device this long after start; -1 never
    bool profile = false;   // print the start-up profile at exit

    // Inspecting the configuration instead of starting
    enum class Inspection { None, ListPlugins, Explain, CheckConfig };
    Inspection inspection = Inspection::None;
    QString inspectedDir; // --check-config's application directory; empty: our own
    bool json = false;
};

// True when the command line asks for an inspection, which needs no display.
bool isInspection(int argc, char *argv[]);

// Parses the application's arguments; prints the help or an error and exits on bad input.
AppOptions parseAppOptions(const QCoreApplication &app);

#endif // LINKDECK_APP_APPOPTIONS_H
