#include "FuzzSupport.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <fcntl.h>
#include <unistd.h>

namespace {

bool g_verbose = false;
int g_warningsFd = 2;

// Warnings stay readable after a crash (one unbuffered write each) without filling the disk.
void messageSink(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    const int fd = g_verbose || type == QtFatalMsg ? 2 : g_warningsFd;
    if (fd != 2 && (type == QtDebugMsg || type == QtInfoMsg))
        return;
    if (fd != 2 && lseek(fd, 0, SEEK_END) > (8 << 20))
        static_cast<void>(ftruncate(fd, 0));
    const QByteArray line = message.toLocal8Bit() + '\n';
    static_cast<void>(write(fd, line.constData(), size_t(line.size())));
}

} // namespace

namespace Fuzz {

QString appPath(const QString &relative)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + relative;
}

// Rewritten in place and cut to size: a file truncated to nothing and written again is flushed
// to the disk when closed (ext4), which would cost milliseconds per input.
QString writeAppFile(const QString &relative, const QByteArray &data)
{
    const QString path = appPath(relative);
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)) {
        QDir().mkpath(QFileInfo(path).absolutePath());
        file.open(QIODevice::ReadWrite);
    }
    if (file.write(data) != data.size() || !file.resize(data.size()))
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

} // namespace Fuzz

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static int appArgc = 1;
    static char *appArgv[] = {(*argv)[0], nullptr};
    Q_UNUSED(argc)
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Never deleted: readers and worker threads of the core may use it until the process ends.
    new QApplication(appArgc, appArgv);
    g_verbose = !qEnvironmentVariableIsEmpty("FUZZ_LOG");
    if (!g_verbose) {
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
        g_warningsFd = open(qPrintable(Fuzz::appPath(QStringLiteral("warnings.log"))),
                            O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0644);
        if (g_warningsFd < 0)
            g_warningsFd = 2;
    }
    qInstallMessageHandler(messageSink);
    const QString settings =
        Fuzz::writeAppFile(QStringLiteral("settings.ini"), "[customize]\noperator=nordtel\n");
    qputenv("LINKDECK_SETTINGS", QFile::encodeName(settings));
    return 0;
}
