#include "CommonUtils.h"
#include "LogCapture.h"
#include "PluginInterfaces.h"
#include "Startup.h"
#include "TestFiles.h"

#include <QSplashScreen>
#include <QtTest>

#include <memory>

namespace {

const QString kSource = QStringLiteral("../../src/core/Startup/Startup");
const QString kFrameConfig = QStringLiteral("/plugins/XFramePlugin/Config.xml");
const QString kSplashImage = QStringLiteral("/plugins/XFramePlugin/splash");
const QByteArray kFunctionTrue = "<function><splash>true</splash></function>";
const QByteArray kFunctionFalse = "<function><splash>false</splash></function>";

QString line(const char *function, const QString &text)
{
    return kSource + ": " + function + ": " + text;
}

QByteArray operatorPart(const char *name, const char *splash, const char *device = "")
{
    return QByteArray("<customize name=\"") + name + "\"" + device + "><splash>" + splash +
           "</splash></customize>";
}

// Main frames: a complete one, one without the service interface, one without a library.
void writeConfiguration(const QString &mainPlugin, const QByteArray &frameConfig)
{
    QByteArray library = "<pluginslib><mainplugin>" + mainPlugin.toLatin1() + "</mainplugin>";
    QByteArray common = "<pluginsconfig><common>";
    const char *const frames[][2] = {{"TestFrame", ".\\TestMainFrame.dll"},
                                     {"UiOnlyFrame", "TestUiOnlyFrame"},
                                     {"GhostFrame", "TestGhostFrame"}};
    for (int i = 0; i < 3; ++i) {
        const QByteArray clsid = "5D0C1F2A-0000-4000-8000-00000000F00" + QByteArray::number(i);
        library += QByteArray("<plugin><name>") + frames[i][0] + "</name><clsid>" + clsid +
                   "</clsid><url>" + frames[i][1] +
                   "</url><active>true</active><type>1</type><static>true</static></plugin>";
        common += "<item clsid=\"" + clsid + "\"/>";
    }
    QVERIFY(TestFiles::writeAppFile("/config/pluginslib.xml", library + "</pluginslib>"));
    QVERIFY(
        TestFiles::writeAppFile("/config/PluginsConfig.xml", common + "</common></pluginsconfig>"));
    if (frameConfig.isNull())
        QVERIFY(TestFiles::removeAppPath(kFrameConfig));
    else
        QVERIFY(TestFiles::writeAppFile(kFrameConfig, "<xframe>" + frameConfig + "</xframe>"));
}

} // namespace

class tst_Startup : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        TestFiles::useFreshSettings();
        // A plain PBM image: the splash image format is detected from its content.
        QVERIFY(TestFiles::writeAppFile(kSplashImage, "P1\n2 1\n0 1\n"));
    }
    void cleanup()
    {
        m_pStartup.reset();
        int elapsed = 0;
        delete Startup::GetSplashScreen(elapsed);
    }

    void splashDecision_data()
    {
        QTest::addColumn<QByteArray>("config"); // null: no Config.xml
        QTest::addColumn<QString>("operatorName");
        QTest::addColumn<int>("logged"); // the splash=%d value; -1: start flag set, no decision

        const QString common = "common", nordtel = "nordtel";
        QTest::newRow("start flag suppresses the splash") << kFunctionTrue << common << -1;
        QTest::newRow("function part true") << kFunctionTrue << common << 1;
        QTest::newRow("only the exact text true counts")
            << QByteArray("<function><splash>True</splash></function>") << common << 0;
        QTest::newRow("operator true without device wins over function false")
            << kFunctionFalse + operatorPart("nordtel", "true") << nordtel << 1;
        QTest::newRow("only the operator's own part counts, false wins over function true")
            << kFunctionTrue + operatorPart("other", "true") + operatorPart("nordtel", "false")
            << nordtel << 0;
        QTest::newRow("operator true bound to a device gives none")
            << kFunctionTrue + operatorPart("nordtel", "true", " device=\"K5160\"") << nordtel << 0;
        QTest::newRow("operator part without splash takes a later element's")
            << kFunctionFalse + "<customize name=\"nordtel\"/>" + operatorPart("x", "true")
            << nordtel << 1;
        QTest::newRow("missing Config.xml") << QByteArray() << common << 0;
        QTest::newRow("unreadable XML keeps the initial true")
            << QByteArray("<<not XML>>") << common << 1;
    }
    void splashDecision()
    {
        QFETCH(QByteArray, config);
        QFETCH(QString, operatorName);
        QFETCH(int, logged);
        writeConfiguration("TestFrame", config);
        CommonUtils::SetSettings("customize", "operator", operatorName);
        LogCapture log;
        m_pStartup = std::make_unique<Startup>(logged < 0);

        QStringList expected;
        if (logged >= 0)
            expected << line("haveSplashScreen", "splash=" + QString::number(logged));
        if (logged == 1)
            expected << line("Startup", "showing splash screen...");
        QCOMPARE(log.unstamped().filter("splash"), expected);

        int elapsed = -1;
        std::unique_ptr<QSplashScreen> splash(Startup::GetSplashScreen(elapsed));
        QCOMPARE(bool(splash), logged == 1);
        QVERIFY(!splash || (splash->isVisible() && !splash->pixmap().isNull()));
    }
    void startUpAndShutDown()
    {
        // Without its image the splash screen is still shown, with an empty pixmap.
        writeConfiguration("TestFrame", kFunctionTrue);
        QVERIFY(TestFiles::removeAppPath(kSplashImage));
        LogCapture log;
        m_pStartup = std::make_unique<Startup>(false);
        // The splash is up before any plugin loads.
        QVERIFY2(log.containsInOrder(
                     {line("Startup", "entered"), line("Startup", "showing splash screen..."),
                      line("initializePluginContainer", "entered"),
                      line("loadMainFramePlugin", "entered"),
                      QStringLiteral("TestMainFrame: Initialize"),
                      line("loadMainFramePlugin", "m_pUiPlugin loaded..."),
                      QStringLiteral("TestMainFrame: Create parent=null rect=null")}),
                 qPrintable(log.texts().join('\n')));
        QVERIFY(!log.containsUnstamped(line("showSplashScreen", "create splash screen failed")));
        IMainFrameUIService *service = Startup::GetMainFrameService();
        QVERIFY(Startup::GetMainFrame() && service && service->GetMainWindow()->isVisible());

        QTest::qWait(60);
        int elapsed = -1;
        std::unique_ptr<QSplashScreen> splash(Startup::GetSplashScreen(elapsed));
        QVERIFY(splash && splash->isVisible() && splash->pixmap().isNull() && elapsed >= 60);
        QVERIFY(!Startup::GetSplashScreen(elapsed)); // handed over once

        log.clear();
        m_pStartup.reset();
        QVERIFY(log.containsInOrder({line("~Startup", "entered"), "TestMainFrame: Release"}));
        QVERIFY(!Startup::GetPluginContainer());
    }
    void missingMainFrame_data()
    {
        QTest::addColumn<QString>("mainPlugin");
        QTest::addColumn<QStringList>("lines"); // of loadMainFramePlugin

        QTest::newRow("library missing")
            << "GhostFrame" << QStringList{"entered", "loadMainFramePlugin failed..."};
        QTest::newRow("no service interface")
            << "UiOnlyFrame"
            << QStringList{"entered", "m_pUiPlugin loaded...", "m_pUiPluginService load fail!..."};
    }
    void missingMainFrame()
    {
        QFETCH(QString, mainPlugin);
        QFETCH(QStringList, lines);
        writeConfiguration(mainPlugin, QByteArray());
        LogCapture log;
        m_pStartup = std::make_unique<Startup>(true);

        const QString prefix = line("loadMainFramePlugin", QString());
        QCOMPARE(log.unstamped().filter(prefix).replaceInStrings(prefix, QString()), lines);
        QVERIFY(Startup::GetPluginContainer() && !Startup::GetMainFrameService());
        QCOMPARE(bool(Startup::GetMainFrame()), lines.size() > 2);
        QVERIFY(log.texts().filter("TestMainFrame: Create").isEmpty());
        QVERIFY(!m_pStartup->loadMainFramePlugin());
    }

private:
    std::unique_ptr<Startup> m_pStartup;
};

QTEST_MAIN(tst_Startup)
#include "tst_startup.moc"
