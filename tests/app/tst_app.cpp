#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

// Long enough for the simulated detection (100 ms) and the plugin set to load.
const QString kQuitAfter = QStringLiteral("1200");
const QStringList kSamplePlugins = {"XFramePlugin", "DeviceMgrUIPlugin", "StatusBarMgrPlugin",
                                    "NotifyPlugin"};

struct Run
{
    int exitCode = -1;
    QProcess::ExitStatus exitStatus = QProcess::CrashExit;
    QStringList out;
    QStringList log;
    QString screenshot;
};

// True when every expected line occurs in the log, in this order.
bool appearInOrder(const QStringList &log, const QStringList &expected)
{
    int from = 0;
    for (const QString &line : expected) {
        from = log.indexOf(line, from);
        if (from < 0)
            return false;
    }
    return true;
}

} // namespace

// The whole application, started as its own process on the offscreen platform with a private
// settings file: the device and operator options select the sample configuration's plugin sets.
class tst_App : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void pluginSetFollowsDeviceAndOperator_data();
    void pluginSetFollowsDeviceAndOperator();
    void lastUsedDeviceCarriesOverToTheNextStart();
    void shutDownStopsThreadsBeforeReleasingPlugins();
    void deviceSwitchReplacesPluginsAtRuntime_data();
    void deviceSwitchReplacesPluginsAtRuntime();
    void languageOptionSwitchesTexts();
    void badCommandLineFails();

private:
    Run runApp(const QStringList &arguments);

    std::unique_ptr<QTemporaryDir> m_pDir;
};

void tst_App::init()
{
    m_pDir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pDir->isValid());
}

Run tst_App::runApp(const QStringList &arguments)
{
    Run run;
    run.screenshot = m_pDir->filePath(QStringLiteral("screen.png"));
    QFile::remove(run.screenshot);

    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("LINKDECK_SETTINGS", m_pDir->filePath(QStringLiteral("settings.ini")));
    env.insert("QT_LOGGING_RULES", "*.debug=true;qt.*.debug=false");
    env.remove("QT_MESSAGE_PATTERN");
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(LINKDECK_APP_PATH),
                  arguments + QStringList{"--screenshot", run.screenshot});
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.exitCode = process.exitCode();
    run.exitStatus = process.exitStatus();
    run.out = QString::fromLocal8Bit(process.readAllStandardOutput()).split('\n');
    run.log = QString::fromLocal8Bit(process.readAllStandardError()).split('\n');
    return run;
}

void tst_App::pluginSetFollowsDeviceAndOperator_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("expected");

    const QStringList base = {"XFramePlugin", "DeviceMgrUIPlugin"};
    const QStringList common = base + QStringList{"StatusBarMgrPlugin"};
    QTest::newRow("no device") << QStringList{} << common;
    QTest::newRow("E3372 adds notifications")
        << QStringList{"--device", "E3372"} << common + QStringList{"NotifyPlugin"};
    QTest::newRow("K5160 removes the status bar") << QStringList{"--device", "K5160"} << base;
    QTest::newRow("two devices fall back to the common set")
        << QStringList{"--device", "E3372", "--device", "K5160"} << common;
    QTest::newRow("operator adds notifications")
        << QStringList{"--operator", "nordtel"} << common + QStringList{"NotifyPlugin"};
    QTest::newRow("operator and K5160")
        << QStringList{"--operator", "nordtel", "--device", "K5160", "--no-splash"}
        << base + QStringList{"NotifyPlugin"};
}

void tst_App::pluginSetFollowsDeviceAndOperator()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, expected);

    const Run run = runApp(arguments + QStringList{"--quit-after", kQuitAfter});
    const QString log = run.log.join('\n');
    QCOMPARE(run.exitStatus, QProcess::NormalExit);
    QVERIFY2(run.exitCode == 0, qPrintable(log));

    for (const QString &plugin : kSamplePlugins) {
        const bool wanted = expected.contains(plugin);
        QVERIFY2(run.log.contains(plugin + ": Initialize") == wanted, qPrintable(plugin));
        QVERIFY2(run.log.contains(plugin + ": Release") == wanted, qPrintable(plugin));
        QVERIFY2(run.log.contains(QStringLiteral("../../src/core/PluginContainer/PluginContainer: "
                                                 "initPlugin: base IBasePlugin load success, ") +
                                  plugin + " init: Start") == wanted,
                 qPrintable(plugin));
    }
    QVERIFY(run.log.contains(QStringLiteral("../../src/core/PluginContainer/PluginContainer: "
                                            "LoadAllStaticOrActivePlugin: plugin count = 4")));
    // The shipped main frame wants a splash; XFramePlugin takes it over from start-up.
    const bool splash = !arguments.contains("--no-splash");
    bool tookSplash = false;
    for (const QString &line : run.log)
        tookSplash |= line.startsWith("XFramePlugin: splash screen shown for ");
    QCOMPARE(tookSplash, splash);

    QVERIFY(run.out.contains("Title: LinkDeck"));
    QVERIFY(run.out.contains("Language: en-us"));
    QVERIFY(run.out.contains("Settings file: " + m_pDir->filePath("settings.ini")));
    QVERIFY(QFileInfo(run.screenshot).size() > 0);
    const QImage screen(run.screenshot);
    QVERIFY(!screen.isNull());
    QVERIFY(screen.width() > 100 && screen.height() > 100);
}

void tst_App::lastUsedDeviceCarriesOverToTheNextStart()
{
    const Run first = runApp({"--device", "K5160", "--quit-after", kQuitAfter});
    QCOMPARE(first.exitCode, 0);
    QVERIFY(first.log.contains("DeviceMgrUIPlugin: last used device is now K5160"));

    // No device this time: start-up falls back to the one the device manager remembered.
    const Run second = runApp({"--quit-after", kQuitAfter});
    QCOMPARE(second.exitCode, 0);
    bool fellBack = false;
    for (const QString &line : second.log)
        fellBack |= line.endsWith("No available device. Get last used device: K5160");
    QVERIFY2(fellBack, qPrintable(second.log.join('\n')));
    QVERIFY(second.log.contains("XFramePlugin: Initialize"));
    QVERIFY(!second.log.contains("StatusBarMgrPlugin: Initialize"));
}

void tst_App::shutDownStopsThreadsBeforeReleasingPlugins()
{
    const Run run = runApp({"--device", "E3372", "--quit-after", kQuitAfter});
    QCOMPARE(run.exitCode, 0);
    const QStringList order = {
        "../../src/core/common/CommonUtils: WaitThreadsStop: stop thread called",
        "NotifyPlugin: StopThreads", "../../src/core/Startup/Startup: ~Startup: entered",
        "NotifyPlugin: Release"};
    QVERIFY2(appearInOrder(run.log, order), qPrintable(run.log.join('\n')));
    // The worker deregistered before the wait gave up.
    bool threadEnded = false;
    for (const QString &line : run.log)
        threadEnded |= line.endsWith("ThreadCountDec: threadCount is 0; thread: NotifyWorker: run");
    QVERIFY(threadEnded);
    QVERIFY(QFileInfo(run.screenshot).size() > 0);
}

void tst_App::deviceSwitchReplacesPluginsAtRuntime_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QStringList>("order");

    const QString destroyed = QStringLiteral("../../src/core/PluginContainer/PluginContainer: "
                                             "UpdateAllStaticOrActivePlugins: Unload plugin %1 "
                                             "bUnloaded 1");
    const QString end = QStringLiteral("../../src/core/Startup/Startup: ~Startup: entered");
    QTest::newRow("E3372 to K5160 takes two plugins out")
        << "E3372"
        << "K5160"
        << QStringList{"NotifyPlugin: Initialize",
                       "DeviceMgrUIPlugin: switched to K5160: 0 plugins enabled, 2 disabled",
                       "StatusBarMgrPlugin: Release",
                       destroyed.arg("StatusBarMgrPlugin"),
                       "NotifyPlugin: Release",
                       destroyed.arg("NotifyPlugin"),
                       end};
    QTest::newRow("K5160 to E3372 brings two plugins in")
        << "K5160"
        << "E3372"
        << QStringList{"DeviceMgrUIPlugin: switched to E3372: 2 plugins enabled, 0 disabled",
                       "StatusBarMgrPlugin: Initialize", "NotifyPlugin: Initialize", end,
                       "NotifyPlugin: Release"};
}

void tst_App::deviceSwitchReplacesPluginsAtRuntime()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QStringList, order);

    const Run run = runApp({"--device", from, "--switch-device", to, "--switch-after", "500",
                            "--quit-after", "1400", "--no-splash"});
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.out.contains("Switching to device " + to));
    QVERIFY2(appearInOrder(run.log, order), qPrintable(run.log.join('\n')));
    // Released once: at the switch or at shut-down, never both.
    QCOMPARE(run.log.count("NotifyPlugin: Release"), 1);
    QCOMPARE(run.log.count("StatusBarMgrPlugin: Release"), 1);
    QVERIFY(run.log.contains("DeviceMgrUIPlugin: last used device is now " + to));
}

void tst_App::languageOptionSwitchesTexts()
{
    const Run run = runApp({"--language", "de-de", "--quit-after", "300", "--no-splash"});
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.out.contains("Language: de-de"));
    QVERIFY(
        run.log.contains(QStringLiteral("../../src/core/Change/Change: LoadLangFile: loading ") +
                         QFileInfo(QStringLiteral(LINKDECK_APP_PATH)).absolutePath() +
                         "/plugins/XFramePlugin/XFramePlugin_de-de.lang"));
}

void tst_App::badCommandLineFails()
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(LINKDECK_APP_PATH), {"--quit-after", "soon"});
    QVERIFY(process.waitForFinished(10000));
    QVERIFY(process.exitCode() != 0);
    QVERIFY(process.readAllStandardError().contains("--quit-after"));
}

QTEST_GUILESS_MAIN(tst_App)
#include "tst_app.moc"
