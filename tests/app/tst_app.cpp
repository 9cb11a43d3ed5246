#include <QImage>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kEndOfStartup = QStringLiteral("../../src/core/Startup/Startup: ~Startup: entered");

// The sample plugins that logged "<name>: <call>", in log order.
QStringList pluginsThatLogged(const QStringList &log, const QString &call)
{
    return log.filter(QRegularExpression("^\\w+Plugin: " + call + "$"))
        .replaceInStrings(": " + call, "");
}

} // namespace

// The whole application as its own process on the offscreen platform, with a private settings
// file; the device and operator options select the sample configuration's plugin sets.
class tst_App : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    int m_exitCode = -1;

    // Runs the application with a fresh settings file; returns its log without time stamps.
    QStringList runApp(const QStringList &arguments)
    {
        QFile::remove(m_dir.filePath("settings.ini"));
        QFile::remove(m_dir.filePath("screen.png"));
        QProcess process;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("LINKDECK_SETTINGS", m_dir.filePath("settings.ini"));
        env.insert("QT_LOGGING_RULES", "*.debug=true;qt.*.debug=false");
        env.remove("QT_MESSAGE_PATTERN");
        process.setProcessEnvironment(env);
        process.start(LINKDECK_APP_PATH,
                      arguments + QStringList{"--screenshot", m_dir.filePath("screen.png")});
        // A run that hangs is killed when the process object goes.
        const bool ended = process.waitForFinished(30000);
        m_exitCode =
            ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        return QString::fromLocal8Bit(process.readAllStandardError())
            .split('\n')
            .replaceInStrings(QRegularExpression("^\\d\\d:\\d\\d:\\d\\d:\\d{3} ?: "), "");
    }

private slots:
    void pluginSetFollowsDeviceAndOperator_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("initialized"); // in this order
        QTest::addColumn<QString>("lastUsed");        // device kept for the next start
        QTest::addColumn<QStringList>("order");       // lines that appear in this order

        // The device manager comes with the container, the main frame right after it; while its
        // window is built, the layout of its pages and the call plugin its toolbar asks for; then
        // the rest in the library file's order.
        const QStringList common = {"DeviceMgrUIPlugin", "XFramePlugin",     "LayoutPlugin",
                                    "CallUIPlugin",      "AddrBookUIPlugin", "SettingsUIPlugin",
                                    "StatusBarMgrPlugin"};
        const QStringList withNotify = common + QStringList{"NotifyPlugin"};
        const QString unloaded =
            QStringLiteral("../../src/core/PluginContainer/PluginContainer: "
                           "UpdateAllStaticOrActivePlugins: Unload plugin %1 bUnloaded 1");
        // Start-up loading first; the update after it is what loads the plugins start-up postpones.
        const QString container =
            QStringLiteral("../../src/core/PluginContainer/PluginContainer: ");
        QTest::newRow("no device")
            << QStringList{} << common << QString()
            << QStringList{container + "LoadAllStaticOrActivePlugin: plugin count = 8",
                           container +
                               "UpdateAllStaticOrActivePlugins: XFramePlugin to be loaded..."};
        // Worker threads end before start-up is torn down and the plugins are released.
        QTest::newRow("E3372 adds notifications")
            << QStringList{"--device", "E3372"} << withNotify << "E3372"
            << QStringList{"../../src/core/common/CommonUtils: WaitThreadsStop: stop thread called",
                           "NotifyPlugin: StopThreads",
                           "../../src/core/common/CommonUtils: ThreadCountDec: threadCount is 0; "
                           "thread: NotifyWorker: run",
                           kEndOfStartup, "NotifyPlugin: Release"};
        QTest::newRow("operator adds notifications")
            << QStringList{"--operator", "nordtel"} << withNotify << QString() << QStringList{};
        // Plugins the switch takes out are released there, not again at shut-down.
        QTest::newRow("switch from E3372 to K5160")
            << QStringList{"--device", "E3372", "--switch-device", "K5160", "--switch-after", "500"}
            << withNotify << "K5160"
            << QStringList{"NotifyPlugin: Initialize",
                           "DeviceMgrUIPlugin: switched to K5160: 0 plugins enabled, 2 disabled",
                           "StatusBarMgrPlugin: Release",
                           unloaded.arg("StatusBarMgrPlugin"),
                           "NotifyPlugin: Release",
                           unloaded.arg("NotifyPlugin"),
                           kEndOfStartup};
    }

    void pluginSetFollowsDeviceAndOperator()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QStringList, initialized);
        QFETCH(QString, lastUsed);
        QFETCH(QStringList, order);
        const QStringList log = runApp(arguments + QStringList{"--quit-after", "1200"});
        QVERIFY2(m_exitCode == 0, qPrintable(log.join('\n')));
        QCOMPARE(pluginsThatLogged(log, "Initialize"), initialized);
        // Released in hash order; the main frame twice, since the container compares its name
        // with clsids.
        QStringList released = pluginsThatLogged(log, "Release"), expected = initialized;
        expected << "XFramePlugin";
        released.sort();
        expected.sort();
        QCOMPARE(released, expected);
        int from = 0; // the lines of "order" appear in this order
        for (auto line = order.cbegin(); line != order.cend() && from >= 0; ++line)
            from = log.indexOf(*line, from);
        QVERIFY2(from >= 0, qPrintable(log.join('\n')));
        QVERIFY(!log.filter("XFramePlugin: splash screen shown for ").isEmpty());
        const QImage screen(m_dir.filePath("screen.png"));
        QVERIFY(screen.width() > 100 && screen.height() > 100);
        const QSettings settings(m_dir.filePath("settings.ini"), QSettings::IniFormat);
        QCOMPARE(settings.value("devicemgr/lastused").toString(), lastUsed);
    }

    void badCommandLineFails()
    {
        const QStringList log = runApp({"--quit-after", "soon"});
        QVERIFY(m_exitCode > 0);
        QVERIFY(!log.filter("--quit-after needs a number of milliseconds").isEmpty());
    }
    // The main window draws its own title bar; a cell broadcast reaches its ticker, a rejected
    // device brings up the notice, and neither keeps the application from quitting on time.
    void customChrome_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("expectedLine");
        QTest::addColumn<bool>("expected");
        const QString cbs = "../../src/core/TitleBar/TitleBar, TitleBarShowCBS : set CBS Content";
        QTest::newRow("cell broadcast") << QStringList{"--cbs", "Storm"} << cbs << true;
        QTest::newRow("no cell broadcast") << QStringList{} << cbs << false;
        QTest::newRow("device rejected") << QStringList{"--reject-device-after", "300"}
                                         << "DeviceMgrUIPlugin: device rejected" << true;
    }

    void customChrome()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, expectedLine);
        QFETCH(bool, expected);
        const QStringList log =
            runApp(arguments + QStringList{"--no-splash", "--quit-after", "1200"});
        QVERIFY2(m_exitCode == 0, qPrintable(log.join('\n')));
        QCOMPARE(log.contains(expectedLine), expected);
        // The title bar's blue runs across the top, above the light menu bar.
        const QImage screen(m_dir.filePath("screen.png"));
        const QColor title = screen.pixelColor(320, 3), menu = screen.pixelColor(320, 40);
        QVERIFY(title.blue() > title.red() + 60 && menu.red() > 200);
    }
};

QTEST_GUILESS_MAIN(tst_App)
#include "tst_app.moc"
