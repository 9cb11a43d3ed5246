// What a scrolling cell-broadcast ticker costs.
// 1. The application idles for 20 s on the offscreen platform with a ticker scrolling in its
//    title bar, and again without cell-broadcast text; both runs' CPU time (user + system) is
//    compared: the ticker may add at most 2% of one core.
// 2. In this process, a title bar on a main window scrolls for 3 s while every paint of the
//    ticker and of the bar beneath it is summed: the area repainted per tick.
#include "Ticker.h"
#include "TitleBar.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPaintEvent>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/resource.h>

#include <cstdio>

namespace {

constexpr int kIdleMs = 20000;
constexpr int kPaintRunMs = 3000;
constexpr double kAllowedCorePercent = 2.0;
const char kCbs[] = "Severe weather warning for the coast: storm gusts up to 110 km/h tonight.";

double childrenCpuSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// CPU seconds of one application run that idles for kIdleMs; negative when it failed.
double idleRun(const QStringList &extra)
{
    QTemporaryDir dir;
    QProcess app;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("LINKDECK_SETTINGS", dir.filePath("settings.ini"));
    env.insert("QT_LOGGING_RULES", "*.debug=false");
    app.setProcessEnvironment(env);
    app.setStandardOutputFile(QProcess::nullDevice());
    app.setStandardErrorFile(QProcess::nullDevice());
    const double before = childrenCpuSeconds();
    app.start(LINKDECK_APP_PATH,
              QStringList{"--no-splash", "--quit-after", QString::number(kIdleMs)} + extra);
    if (!app.waitForFinished(kIdleMs + 30000) || app.exitCode() != 0)
        return -1;
    return childrenCpuSeconds() - before;
}

// Sums the area of every paint event of the watched widgets.
class PaintMeter : public QObject
{
public:
    qint64 area = 0;
    int paints = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            const QRegion region = static_cast<QPaintEvent *>(event)->region();
            for (const QRect &rect : region)
                area += qint64(rect.width()) * rect.height();
            ++paints;
        }
        return QObject::eventFilter(watched, event);
    }
};

void measureRepaintArea()
{
    QWidget window(nullptr, Qt::FramelessWindowHint);
    window.setObjectName("XFramePlugin_MainFrameWindow");
    auto *pBar = new TitleBar(&window, 0);
    QRect barRect(0, 0, 640, 28);
    pBar->ShowWindow(barRect);
    pBar->TitleBarShowCBS(QString::fromUtf8(kCbs));
    window.resize(640, 420);
    window.show();
    auto *pTicker = pBar->findChild<Ticker *>("Core_CBSLabel_MainFrame");
    QCoreApplication::processEvents();
    PaintMeter meter;
    pTicker->installEventFilter(&meter);
    pBar->installEventFilter(&meter);
    const int startOffset = pTicker->offset();
    QTimer::singleShot(kPaintRunMs, qApp, &QCoreApplication::quit);
    qApp->exec();
    const int ticks = qMax(1, pTicker->offset() - startOffset);
    std::printf("ticker %dx%d px, bar %dx%d px: %d ticks, %d paint events, %.0f px repainted "
                "per tick\n",
                pTicker->width(), pTicker->height(), pBar->width(), pBar->height(), ticks,
                meter.paints, double(meter.area) / ticks);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    measureRepaintArea();

    std::printf("idling %d s each, with and without cell-broadcast text...\n", kIdleMs / 1000);
    std::fflush(stdout);
    const double plain = idleRun({});
    const double ticker = idleRun({"--cbs", QString::fromUtf8(kCbs)});
    if (plain < 0 || ticker < 0) {
        std::fprintf(stderr, "bench_ticker: an application run failed\n");
        return 1;
    }
    const double addedPercent = (ticker - plain) / (kIdleMs / 1000.0) * 100.0;
    std::printf("CPU without ticker %.3f s, with ticker %.3f s: the ticker adds %.2f%% of one "
                "core (allowed %.1f%%) %s\n",
                plain, ticker, addedPercent, kAllowedCorePercent,
                addedPercent <= kAllowedCorePercent ? "PASS" : "FAIL");
    return addedPercent <= kAllowedCorePercent ? 0 : 1;
}
