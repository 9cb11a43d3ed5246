// Start-up loading cost against bare plugin loading, for generated sets of 10, 50 and 200 trivial
// plugins. Every measurement runs in a fresh child process (this program started again from the
// set's directory), so that both sides pay the real cost of loading each library once.
//
//   bench_pluginload [--repeat R]                   the table
//   bench_pluginload --child container|bare N       one measurement, printed as "RESULT ..."
#include "PluginContainer.h"
#include "PluginSet.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QPluginLoader>
#include <QProcess>
#include <QProcessEnvironment>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

const int kSizes[] = {10, 50, 200};
const double kTargetRatio = 1.3;
const int kTargetSize = 50;

// The children keep quiet: formatting the log lines is part of the container's cost, printing
// them is not.
void discardMessage(QtMsgType, const QMessageLogContext &, const QString &) {}

QString appDir()
{
    return QCoreApplication::applicationDirPath();
}

int runContainer()
{
    PluginContainer container(appDir() + QStringLiteral("/config/pluginslib.xml"),
                              appDir() + QStringLiteral("/config/PluginsConfig.xml"), true);
    QElapsedTimer settle;
    settle.start();
    while (!container.IsPluginsConfigInitialized() && settle.elapsed() < 5000)
        QThread::msleep(1);

    QElapsedTimer timer;
    timer.start();
    container.LoadAllStaticOrActivePlugin();
    const qint64 ns = timer.nsecsElapsed();
    std::printf("RESULT %lld %d 0\n", static_cast<long long>(ns),
                int(container.GetLoadedPluginClsids().size()));
    return 0;
}

qint64 medianOf(std::vector<qint64> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

qint64 minimumOf(const std::vector<qint64> &values)
{
    return values.empty() ? 0 : *std::min_element(values.begin(), values.end());
}

// One filtered listing of the set's directory, as a container that listed once per plugin
// would pay it for every plugin.
qint64 timeOneListing()
{
    std::vector<qint64> times;
    for (int i = 0; i < 5; ++i) {
        QElapsedTimer timer;
        timer.start();
        QDir dir(appDir());
        dir.setNameFilters(
            QStringList(QStringLiteral("lib") + PluginSet::url(i) + QLatin1Char('*')));
        const QStringList files = dir.entryList(QDir::Files, QDir::NoSort);
        times.push_back(files.isEmpty() ? 0 : timer.nsecsElapsed());
    }
    return medianOf(times);
}

int runBare(int count)
{
    QStringList libraries;
    for (int i = 0; i < count; ++i)
        libraries.append(appDir() + QStringLiteral("/lib") + PluginSet::url(i) +
                         QStringLiteral(".so"));

    std::vector<std::unique_ptr<QPluginLoader>> loaders;
    loaders.reserve(size_t(count));
    int loaded = 0;
    QElapsedTimer timer;
    timer.start();
    for (const QString &library : qAsConst(libraries)) {
        loaders.push_back(std::make_unique<QPluginLoader>(library));
        if (loaders.back()->instance())
            ++loaded;
    }
    const qint64 ns = timer.nsecsElapsed();
    std::printf("RESULT %lld %d %lld\n", static_cast<long long>(ns), loaded,
                static_cast<long long>(timeOneListing()));
    return 0;
}

struct Sample
{
    qint64 ns = 0;
    int loaded = 0;
    qint64 listingNs = 0;
};

bool runChild(const PluginSet &set, const char *mode, int count, Sample &sample)
{
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("LINKDECK_SETTINGS"),
               set.directory() + QStringLiteral("/settings.ini"));
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    child.setProcessEnvironment(env);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(set.executable(),
                {QStringLiteral("--child"), QString::fromLatin1(mode), QString::number(count)});
    if (!child.waitForFinished(120000) || child.exitCode() != 0)
        return false;
    const QList<QByteArray> fields = child.readAllStandardOutput().trimmed().split(' ');
    if (fields.size() != 4 || fields.at(0) != "RESULT")
        return false;
    sample = {fields.at(1).toLongLong(), fields.at(2).toInt(), fields.at(3).toLongLong()};
    return sample.loaded == count;
}

int runTable(int repeats)
{
    const QString root = appDir() + QStringLiteral("/sets");
    const QString library = appDir() + QStringLiteral("/libBenchTrivial.so");
    std::printf("Plugin loading: LoadAllStaticOrActivePlugin() (load + initialise) against bare "
                "QPluginLoader (load + instance),\nmedian of %d fresh child processes per side\n\n",
                repeats);
    std::printf("%8s %14s %14s %7s %11s %16s %16s %14s\n", "plugins", "container ms", "bare ms",
                "ratio", "ratio(min)", "container us/pl", "bare us/pl", "1 listing us");

    bool targetMet = true;
    for (int count : kSizes) {
        const PluginSet set(root, count);
        if (!set.create(library, QCoreApplication::applicationFilePath())) {
            std::fprintf(stderr, "cannot create the plugin set in %s\n",
                         qPrintable(set.directory()));
            return 2;
        }
        std::vector<qint64> container, bare, listing;
        for (int r = 0; r < repeats; ++r) {
            Sample c, b;
            // Alternate which side goes first, so that neither profits from the other's warm-up.
            const bool containerFirst = r % 2 == 0;
            if (!runChild(set, containerFirst ? "container" : "bare", count,
                          containerFirst ? c : b) ||
                !runChild(set, containerFirst ? "bare" : "container", count,
                          containerFirst ? b : c)) {
                std::fprintf(stderr, "a measurement of %d plugins failed\n", count);
                return 2;
            }
            container.push_back(c.ns);
            bare.push_back(b.ns);
            listing.push_back(b.listingNs);
        }
        const double c = medianOf(container) / 1e6, b = medianOf(bare) / 1e6;
        const double ratio = c / b;
        if (count == kTargetSize && ratio > kTargetRatio)
            targetMet = false;
        const double minRatio = double(minimumOf(container)) / double(minimumOf(bare));
        std::printf("%8d %14.2f %14.2f %7.2f %11.2f %16.1f %16.1f %14.1f\n", count, c, b, ratio,
                    minRatio, c * 1000.0 / count, b * 1000.0 / count, medianOf(listing) / 1e3);
        QDir(set.directory()).removeRecursively();
    }
    std::printf("\nTarget: ratio at most %.1f at %d plugins: %s\n", kTargetRatio, kTargetSize,
                targetMet ? "met" : "MISSED");
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() == 4 && args.at(1) == QLatin1String("--child")) {
        qInstallMessageHandler(discardMessage);
        const int count = args.at(3).toInt();
        return args.at(2) == QLatin1String("container") ? runContainer() : runBare(count);
    }
    int repeats = 7;
    const int at = args.indexOf(QStringLiteral("--repeat"));
    if (at > 0 && at + 1 < args.size())
        repeats = qMax(1, args.at(at + 1).toInt());
    return runTable(repeats);
}
