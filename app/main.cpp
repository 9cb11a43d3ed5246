// LinkDeck: the connection manager's executable. The core brings the plugins up; this file only
// wires the command line to it.
#include "AppController.h"
#include "AppOptions.h"
#include "Inspection.h"

#include <QApplication>
#include <QLoggingCategory>

int main(int argc, char *argv[])
{
    // The core's log lines carry their own source prefixes; print them as they are written
    // (QT_MESSAGE_PATTERN still overrides this).
    qSetMessagePattern(QStringLiteral("%{message}"));
    if (isInspection(argc, argv)) {
        // Answers from the files alone: no display, and the core's log stays quiet unless
        // QT_LOGGING_RULES asks for it.
        QCoreApplication app(argc, argv);
        QLoggingCategory::setFilterRules(QStringLiteral("linkdeck.*=false"));
        return runInspection(parseAppOptions(app));
    }
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("linkdeck"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LINKDECK_VERSION));

    AppController controller(app, parseAppOptions(app));
    controller.start();
    const int exitCode = app.exec();
    controller.shutDown();
    if (exitCode != 0)
        return exitCode;
    return controller.succeeded() ? 0 : 2;
}
