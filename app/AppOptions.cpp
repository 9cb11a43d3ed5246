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
                       "settings (an inspection only uses it)."),
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
    const QCommandLineOption profile(
        QStringLiteral("profile"),
        QStringLiteral("Print the start-up phases and each plugin's load and init times at exit."));
    const QCommandLineOption listPlugins(
        QStringLiteral("list-plugins"),
        QStringLiteral("List every plugin record for --operator and --device, then exit."));
    const QCommandLineOption explain(
        QStringLiteral("explain"),
        QStringLiteral("Explain which rule enables or disables each plugin for --operator and "
                       "--device, and the splash decision, then exit."));
    const QCommandLineOption checkConfig(
        QStringLiteral("check-config"),
        QStringLiteral("Check the configuration of an application directory (the argument; "
                       "default: this one). Exit status 1 and one line per problem."));
    const QCommandLineOption json(QStringLiteral("json"),
                                  QStringLiteral("Inspections print JSON instead of text."));
    parser.addOptions({backend, device, operatorOption, language, screenshot, quitAfter,
                       switchDevice, switchAfter, noSplash, cbs, rejectAfter, profile, listPlugins,
                       explain, checkConfig, json});
    parser.addPositionalArgument(QStringLiteral("appdir"),
                                 QStringLiteral("With --check-config: the directory to check."),
                                 QStringLiteral("[appdir]"));
    parser.process(app);

    AppOptions options;
    const int inspections = int(parser.isSet(listPlugins)) + int(parser.isSet(explain)) +
                            int(parser.isSet(checkConfig));
    if (inspections > 1)
        failWith(parser, QStringLiteral("Use one of --list-plugins, --explain, --check-config"));
    if (parser.isSet(listPlugins))
        options.inspection = AppOptions::Inspection::ListPlugins;
    else if (parser.isSet(explain))
        options.inspection = AppOptions::Inspection::Explain;
    else if (parser.isSet(checkConfig))
        options.inspection = AppOptions::Inspection::CheckConfig;
    options.json = parser.isSet(json);
    options.profile = parser.isSet(profile);

    QStringList positional = parser.positionalArguments();
    if (options.inspection == AppOptions::Inspection::CheckConfig && positional.size() == 1)
        options.inspectedDir = QFileInfo(positional.takeFirst()).absoluteFilePath();
    if (!positional.isEmpty())
        failWith(parser, QStringLiteral("Unexpected argument: %1").arg(positional.constFirst()));

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

bool isInspection(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (argument == "--list-plugins" || argument == "--explain" || argument == "--check-config")
            return true;
    }
    return false;
}
