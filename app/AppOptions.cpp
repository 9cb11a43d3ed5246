#include "AppOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void failWith(const QCommandLineParser &parser, const QString &message)
{
    std::fprintf(stderr, "%s\n\n%s", qPrintable(message), qPrintable(parser.helpText()));
    std::exit(EXIT_FAILURE);
}

int milliseconds(const QCommandLineParser &parser, const QCommandLineOption &option)
{
    bool ok = false;
    const int value = parser.value(option).toInt(&ok);
    if (!ok || value < 0)
        failWith(
            parser,
            QStringLiteral("--%1 needs a number of milliseconds").arg(option.names().constFirst()));
    return value;
}

} // namespace

AppOptions parseAppOptions(const QCoreApplication &app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("LinkDeck connection manager on a simulated device service or on the "
                       "modems of ModemManager."));
    parser.addHelpOption();
    const QCommandLineOption backend(
        QStringLiteral("backend"),
        QStringLiteral("Device service: simulator, modemmanager (the modems of ModemManager) or "
                       "auto (ModemManager when it runs). Default: $LINKDECK_DEVICE_BACKEND, "
                       "else the settings key [device] backend, else simulator."),
        QStringLiteral("name"));
    const QCommandLineOption device(
        QStringLiteral("device"),
        QStringLiteral("Simulated available device (repeat for several devices)."),
        QStringLiteral("name"));
    const QCommandLineOption operatorOption(
        QStringLiteral("operator"),
        QStringLiteral("Operator customization name reported by the device and stored in the "
                       "settings."),
        QStringLiteral("name"));
    const QCommandLineOption language(QStringLiteral("language"),
                                      QStringLiteral("User-interface language, e.g. de-de."),
                                      QStringLiteral("code"));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral("Write the main window to this PNG file just before quitting."),
        QStringLiteral("file"));
    const QCommandLineOption quitAfter(QStringLiteral("quit-after"),
                                       QStringLiteral("Quit after this many milliseconds."),
                                       QStringLiteral("ms"));
    const QCommandLineOption switchDevice(
        QStringLiteral("switch-device"),
        QStringLiteral("Replace the simulated devices by this one later (see --switch-after)."),
        QStringLiteral("name"));
    const QCommandLineOption switchAfter(
        QStringLiteral("switch-after"),
        QStringLiteral("Milliseconds after start for --switch-device (default 1000)."),
        QStringLiteral("ms"));
    const QCommandLineOption noSplash(QStringLiteral("no-splash"),
                                      QStringLiteral("Do not show the splash screen."));
    const QCommandLineOption cbs(
        QStringLiteral("cbs"),
        QStringLiteral("Cell-broadcast text the simulated network sends (shown in the title bar)."),
        QStringLiteral("text"));
    const QCommandLineOption rejectAfter(
        QStringLiteral("reject-device-after"),
        QStringLiteral("The simulated service rejects the device after this many milliseconds."),
        QStringLiteral("ms"));
    parser.addOptions({backend, device, operatorOption, language, screenshot, quitAfter,
                       switchDevice, switchAfter, noSplash, cbs, rejectAfter});
    parser.process(app);

    if (!parser.positionalArguments().isEmpty())
        failWith(parser, QStringLiteral("Unexpected argument: %1")
                             .arg(parser.positionalArguments().constFirst()));

    AppOptions options;
    options.backend = parser.value(backend);
    if (!options.backend.isEmpty() &&
        !QStringList{"simulator", "modemmanager", "auto"}.contains(options.backend))
        failWith(parser, QStringLiteral("--backend is simulator, modemmanager or auto"));
    options.devices = parser.values(device);
    options.operatorName = parser.value(operatorOption);
    options.language = parser.value(language);
    options.noSplash = parser.isSet(noSplash);
    if (parser.isSet(screenshot)) {
        if (parser.value(screenshot).isEmpty())
            failWith(parser, QStringLiteral("--screenshot needs a file name"));
        // Resolved now: the application later works from its own directory.
        options.screenshotFile = QFileInfo(parser.value(screenshot)).absoluteFilePath();
    }
    if (parser.isSet(quitAfter))
        options.quitAfterMs = milliseconds(parser, quitAfter);
    options.switchDevice = parser.value(switchDevice);
    if (parser.isSet(switchAfter))
        options.switchAfterMs = milliseconds(parser, switchAfter);
    options.cellBroadcast = parser.value(cbs);
    if (parser.isSet(rejectAfter))
        options.rejectAfterMs = milliseconds(parser, rejectAfter);
    return options;
}
