#include "CommonUtils.h"
#include "IPluginContainer.h"
#include "LogCapture.h"
#include "PluginInterfaces.h"
#include "Startup.h"
#include "TestFiles.h"

#include <QBuffer>
#include <QImage>
#include <QSplashScreen>
#include <QtTest>

#include <memory>

namespace {

const QString kSource = QStringLiteral("../../src/core/Startup/Startup");
const QString kFrameConfig = QStringLiteral("/plugins/XFramePlugin/Config.xml");
const QString kSplashImage = QStringLiteral("/plugins/XFramePlugin/splash");

QString line(const char *function, const QString &text)
{
    return kSource + QStringLiteral(": ") + QLatin1String(function) + QStringLiteral(": ") + text;
}

// Four main-frame candidates: a complete one, one without the service interface, one whose
// library does not exist and one that no customization switches on.
QByteArray pluginLibrary(const char *mainPlugin)
{
    const auto record = [](const char *name, const char *clsid, const char *url) {
        return QByteArray("<plugin><name>") + name + "</name><clsid>" + clsid + "</clsid><url>" +
               url + "</url><active>true</active><type>1</type>" +
               "<setting_title>false</setting_title><static>true</static></plugin>\n";
    };
    return QByteArray("<pluginslib>\n<mainplugin>") + mainPlugin + "</mainplugin>\n" +
           record("TestFrame", "5D0C1F2A-0000-4000-8000-00000000F001", ".\\TestMainFrame.dll") +
           record("UiOnlyFrame", "5D0C1F2A-0000-4000-8000-00000000F002", "TestUiOnlyFrame") +
           record("GhostFrame", "5D0C1F2A-0000-4000-8000-00000000F003", "TestGhostFrame") +
           record("DisabledFrame", "5D0C1F2A-0000-4000-8000-00000000F004", "TestMainFrame") +
           "</pluginslib>\n";
}

QByteArray pluginsConfig()
{
    return "<pluginsconfig><common>"
           "<item clsid=\"5D0C1F2A-0000-4000-8000-00000000F001\"/>"
           "<item clsid=\"5D0C1F2A-0000-4000-8000-00000000F002\"/>"
           "<item clsid=\"5D0C1F2A-0000-4000-8000-00000000F003\"/>"
           "</common></pluginsconfig>\n";
}

QByteArray pngImage()
{
    QImage image(24, 12, QImage::Format_RGB32);
    image.fill(Qt::darkBlue);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray frameConfig(const QByteArray &body)
{
    return "<?xml version=\"1.0\"?>\n<xframe>" + body + "</xframe>\n";
}

} // namespace

class tst_Startup : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void splashDecision_data();
    void splashDecision();
    void splashIsUpBeforeAnyPluginLoads();
    void getSplashScreenHandsOverOnce();
    void missingSplashImageStillShowsSplash();
    void loadsAndCreatesMainFrameByName();
    void mainFrameFailures_data();
    void mainFrameFailures();
    void destructorReleasesPluginsAndClearsState();

private:
    void writeFiles(const char *mainPlugin, const QByteArray &config);

    std::unique_ptr<Startup> m_pStartup;
};

void tst_Startup::initTestCase()
{
    // Before any start-up the process has neither container nor main frame; the shut-down
    // wait relies on the null container.
    QVERIFY(!Startup::GetPluginContainer());
    QVERIFY(!Startup::GetMainFrame());
    QVERIFY(!Startup::GetMainFrameService());
    int elapsed = -1;
    QVERIFY(!Startup::GetSplashScreen(elapsed));
}

void tst_Startup::init()
{
    TestFiles::useFreshSettings();
    QVERIFY(TestFiles::writeAppFile(kSplashImage, pngImage()));
}

void tst_Startup::cleanup()
{
    m_pStartup.reset();
    int elapsed = 0;
    delete Startup::GetSplashScreen(elapsed);
}

void tst_Startup::writeFiles(const char *mainPlugin, const QByteArray &config)
{
    QVERIFY(TestFiles::writeAppFile("/config/pluginslib.xml", pluginLibrary(mainPlugin)));
    QVERIFY(TestFiles::writeAppFile("/config/PluginsConfig.xml", pluginsConfig()));
    if (config.isNull())
        QVERIFY(TestFiles::removeAppPath(kFrameConfig));
    else
        QVERIFY(TestFiles::writeAppFile(kFrameConfig, config));
}

void tst_Startup::splashDecision_data()
{
    QTest::addColumn<QByteArray>("config");    // null: no Config.xml
    QTest::addColumn<QString>("operatorName"); // null: setting absent
    QTest::addColumn<bool>("startFlag");
    QTest::addColumn<int>("logged"); // the splash=%d value; -1: no decision made
    QTest::addColumn<bool>("shown");

    const QByteArray functionTrue = "<function><splash>true</splash></function>";
    const QByteArray functionFalse = "<function><splash>false</splash></function>";
    const QString common = QStringLiteral("common");
    const QString nordtel = QStringLiteral("nordtel");

    QTest::newRow("start flag suppresses the splash")
        << frameConfig(functionTrue) << common << true << -1 << false;
    QTest::newRow("function part true")
        << frameConfig(functionTrue) << common << false << 1 << true;
    QTest::newRow("function part false")
        << frameConfig(functionFalse) << common << false << 0 << false;
    QTest::newRow("only the exact text true counts")
        << frameConfig("<function><splash>True</splash></function>") << common << false << 0
        << false;
    QTest::newRow("function part without splash keeps true")
        << frameConfig("<function><other>false</other></function>") << common << false << 1 << true;
    QTest::newRow("operator true without device wins over function false")
        << frameConfig(functionFalse +
                       "<customize name=\"nordtel\"><splash>true</splash></customize>")
        << nordtel << false << 1 << true;
    QTest::newRow("operator false wins over function true")
        << frameConfig(functionTrue +
                       "<customize name=\"nordtel\"><splash>false</splash></customize>")
        << nordtel << false << 0 << false;
    QTest::newRow("operator true bound to a device gives none")
        << frameConfig(
               functionTrue +
               "<customize name=\"nordtel\" device=\"K5160\"><splash>true</splash></customize>")
        << nordtel << false << 0 << false;
    QTest::newRow("operator common is not consulted")
        << frameConfig(functionFalse +
                       "<customize name=\"common\"><splash>true</splash></customize>")
        << common << false << 0 << false;
    QTest::newRow("another operator's part is passed over")
        << frameConfig(functionFalse +
                       "<customize name=\"other\"><splash>true</splash></customize>" +
                       "<customize name=\"nordtel\"><splash>false</splash></customize>")
        << nordtel << false << 0 << false;
    QTest::newRow("operator name compared exactly")
        << frameConfig(functionFalse +
                       "<customize name=\"Nordtel\"><splash>true</splash></customize>")
        << nordtel << false << 0 << false;
    QTest::newRow("operator part without splash takes a later element's")
        << frameConfig(functionFalse + "<customize name=\"nordtel\"/>" +
                       "<customize name=\"other\"><splash>true</splash></customize>")
        << nordtel << false << 1 << true;
    QTest::newRow("operator part without any later splash keeps the function value")
        << frameConfig(functionTrue + "<customize name=\"nordtel\"/>") << nordtel << false << 1
        << true;
    QTest::newRow("absent operator setting matches a nameless part")
        << frameConfig(functionTrue + "<customize><splash>false</splash></customize>") << QString()
        << false << 0 << false;
    QTest::newRow("missing Config.xml") << QByteArray() << common << false << 0 << false;
    QTest::newRow("unreadable XML keeps the initial true")
        << QByteArray("this is not XML") << common << false << 1 << true;
}

void tst_Startup::splashDecision()
{
    QFETCH(QByteArray, config);
    QFETCH(QString, operatorName);
    QFETCH(bool, startFlag);
    QFETCH(int, logged);
    QFETCH(bool, shown);

    writeFiles("TestFrame", config);
    if (!operatorName.isNull())
        CommonUtils::SetSettings("customize", "operator", operatorName);

    LogCapture log;
    m_pStartup = std::make_unique<Startup>(startFlag);

    const QString decision = line("haveSplashScreen", QStringLiteral("splash="));
    if (logged < 0) {
        QCOMPARE(log.countUnstamped(decision + "0") + log.countUnstamped(decision + "1"), 0);
    } else {
        QCOMPARE(log.countUnstamped(decision + QString::number(logged)), 1);
    }
    QCOMPARE(log.countUnstamped(line("Startup", "showing splash screen...")), shown ? 1 : 0);

    int elapsed = -1;
    std::unique_ptr<QSplashScreen> splash(Startup::GetSplashScreen(elapsed));
    QCOMPARE(bool(splash), shown);
    if (splash)
        QVERIFY(splash->isVisible());
}

void tst_Startup::splashIsUpBeforeAnyPluginLoads()
{
    writeFiles("TestFrame", frameConfig("<function><splash>true</splash></function>"));
    LogCapture log;
    m_pStartup = std::make_unique<Startup>(false);
    QVERIFY2(log.containsInOrder({line("Startup", "entered"),
                                  line("Startup", "showing splash screen..."),
                                  line("initializePluginContainer", "entered"),
                                  line("loadMainFramePlugin", "entered"),
                                  QStringLiteral("TestMainFrame: Initialize"),
                                  line("loadMainFramePlugin", "m_pUiPlugin loaded..."),
                                  QStringLiteral("TestMainFrame: Create parent=null rect=null")}),
             qPrintable(log.texts().join('\n')));
}

void tst_Startup::getSplashScreenHandsOverOnce()
{
    writeFiles("TestFrame", frameConfig("<function><splash>true</splash></function>"));
    m_pStartup = std::make_unique<Startup>(false);
    QTest::qWait(60);

    int elapsed = -1;
    std::unique_ptr<QSplashScreen> splash(Startup::GetSplashScreen(elapsed));
    QVERIFY(splash);
    QVERIFY2(elapsed >= 60, qPrintable(QString::number(elapsed)));
    QVERIFY(!splash->pixmap().isNull());

    int again = -1;
    QVERIFY(!Startup::GetSplashScreen(again));
    QVERIFY(again >= elapsed);
}

void tst_Startup::missingSplashImageStillShowsSplash()
{
    writeFiles("TestFrame", frameConfig("<function><splash>true</splash></function>"));
    QVERIFY(TestFiles::removeAppPath(kSplashImage));
    LogCapture log;
    m_pStartup = std::make_unique<Startup>(false);

    int elapsed = 0;
    std::unique_ptr<QSplashScreen> splash(Startup::GetSplashScreen(elapsed));
    QVERIFY(splash);
    QVERIFY(splash->pixmap().isNull());
    QVERIFY(splash->isVisible());
    QVERIFY(!log.containsUnstamped(line("showSplashScreen", "create splash screen failed")));
}

void tst_Startup::loadsAndCreatesMainFrameByName()
{
    writeFiles("TestFrame", QByteArray());
    LogCapture log;
    m_pStartup = std::make_unique<Startup>(true);

    IPluginContainer *container = Startup::GetPluginContainer();
    QVERIFY(container);
    QCOMPARE(container->GetMainFramePluginName(), QStringLiteral("TestFrame"));
    QVERIFY(container->IsPluginLoaded("5D0C1F2A-0000-4000-8000-00000000F001"));

    QVERIFY(Startup::GetMainFrame());
    IMainFrameUIService *service = Startup::GetMainFrameService();
    QVERIFY(service);
    QVERIFY(service->GetMainWindow());
    QVERIFY(service->GetMainWindow()->isVisible());
    QCOMPARE(log.count("TestMainFrame: Create parent=null rect=null"), 1);
    QCOMPARE(log.count("TestMainFrame: Initialize"), 1);
}

void tst_Startup::mainFrameFailures_data()
{
    QTest::addColumn<QString>("mainPlugin");
    QTest::addColumn<bool>("haveFrame");
    QTest::addColumn<QString>("failure");

    const QString noPlugin = line("loadMainFramePlugin", "loadMainFramePlugin failed...");
    QTest::newRow("library missing") << "GhostFrame" << false << noPlugin;
    QTest::newRow("not in the registry") << "NoSuchFrame" << false << noPlugin;
    QTest::newRow("switched off") << "DisabledFrame" << false << noPlugin;
    QTest::newRow("no service interface")
        << "UiOnlyFrame" << true << line("loadMainFramePlugin", "m_pUiPluginService load fail!...");
}

void tst_Startup::mainFrameFailures()
{
    QFETCH(QString, mainPlugin);
    QFETCH(bool, haveFrame);
    QFETCH(QString, failure);

    writeFiles(mainPlugin.toLatin1().constData(), QByteArray());
    LogCapture log;
    m_pStartup = std::make_unique<Startup>(true);

    QVERIFY(Startup::GetPluginContainer());
    QCOMPARE(log.countUnstamped(failure), 1);
    QCOMPARE(bool(Startup::GetMainFrame()), haveFrame);
    QVERIFY(!Startup::GetMainFrameService());
    QCOMPARE(log.countUnstamped(line("loadMainFramePlugin", "m_pUiPlugin loaded...")),
             haveFrame ? 1 : 0);
    QVERIFY(!log.contains("TestUiOnlyFrame: Create"));
    QVERIFY(!m_pStartup->loadMainFramePlugin());
}

void tst_Startup::destructorReleasesPluginsAndClearsState()
{
    writeFiles("TestFrame", frameConfig("<function><splash>true</splash></function>"));
    m_pStartup = std::make_unique<Startup>(false);
    QVERIFY(Startup::GetPluginContainer());
    QVERIFY(Startup::GetMainFrameService());

    LogCapture log;
    m_pStartup.reset();
    QVERIFY(log.containsInOrder({line("~Startup", "entered"), "TestMainFrame: Release"}));
    QVERIFY(!Startup::GetPluginContainer());
    QVERIFY(!Startup::GetMainFrame());
    QVERIFY(!Startup::GetMainFrameService());
    // The splash nobody took over went with its owner.
    int elapsed = 0;
    QVERIFY(!Startup::GetSplashScreen(elapsed));
}

QTEST_MAIN(tst_Startup)
#include "tst_startup.moc"
