// Time to the first main window. Alternating runs of the application (--profile, offscreen, no
// splash) and of a bare Qt main window with a menu bar and a toolbar; compares the medians of
// the application's "first window shown" and the bare program's. Target: at most 1.5 times.
// The device wait runs beside the window's creation and is reported apart.
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int kRuns = 15;
constexpr double kTargetRatio = 1.5;

QProcessEnvironment offscreenEnvironment(const QTemporaryDir &dir)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("LINKDECK_SETTINGS", dir.filePath("settings.ini"));
    env.insert("QT_LOGGING_RULES", "*.debug=false");
    return env;
}

// The standard output of one run; empty when it failed.
QString runOnce(const QString &program, const QStringList &arguments)
{
    QTemporaryDir dir;
    QProcess process;
    process.setProcessEnvironment(offscreenEnvironment(dir));
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        return QString();
    return QString::fromLocal8Bit(process.readAllStandardOutput());
}

// The "takes" column of a profile row, or the bare program's figure.
double figure(const QString &output, const QString &label)
{
    const QRegularExpression row(
        QRegularExpression::escape(label) +
        QStringLiteral("\\s+([0-9.]+)(?:\\s+([0-9.]+))?(?:\\s+([0-9.]+))?"));
    const QRegularExpressionMatch match = row.match(output);
    if (!match.hasMatch())
        return -1;
    return match.captured(match.lastCapturedIndex()).toDouble();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? -1 : values[values.size() / 2];
}

} // namespace

int main()
{
    std::vector<double> app, bare, deviceWait;
    for (int i = 0; i < kRuns; ++i) {
        const QString profile =
            runOnce(LINKDECK_APP_PATH, {"--profile", "--no-splash", "--quit-after", "1500"});
        const QString baseline = runOnce(BARE_WINDOW_PATH, {});
        const double appMs = figure(profile, QStringLiteral("first window shown"));
        const double bareMs = figure(baseline, QStringLiteral("first window shown"));
        if (appMs < 0 || bareMs < 0) {
            std::fprintf(stderr, "run %d failed\n", i + 1);
            return 1;
        }
        app.push_back(appMs);
        bare.push_back(bareMs);
        deviceWait.push_back(figure(profile, QStringLiteral("device wait")));
    }
    const double ratio = median(app) / median(bare);
    std::printf("first window shown, median of %d runs: application %.1f ms, bare QMainWindow "
                "%.1f ms, ratio %.2f (target at most %.1f)\n",
                kRuns, median(app), median(bare), ratio, kTargetRatio);
    std::printf("device wait (beside the window, not in the figure above): median %.1f ms\n",
                median(deviceWait));
    return ratio <= kTargetRatio ? 0 : 1;
}
