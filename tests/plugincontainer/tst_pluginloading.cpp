// Loading, initialising, handing out and unloading real plugin libraries.
#include "ContainerProbe.h"
#include "LogCapture.h"
#include "PluginInterfaces.h"
#include "TestProbe.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

Q_DECLARE_METATYPE(QList<PluginEntry>)

namespace {

const QString kSource = QStringLiteral("../../src/core/PluginContainer/PluginContainer");
const QString kPostponedFirst = QStringLiteral("FCDC307E-06DC-4dfa-AC83-834D0E306D48");
const QString kPostponedSecond = QStringLiteral("D2AB6727-AF80-4ef7-B37E-F217803B85A4");

PluginEntry entry(const QString &url, bool active = true, bool isStatic = false)
{
    return {QStringLiteral("P") + url, QStringLiteral("C") + url, url, active, isStatic};
}

QString line(const char *function, const QString &rest)
{
    return kSource + QStringLiteral(": ") + QLatin1String(function) + QStringLiteral(": ") + rest;
}

QStringList loadAndInitEvents()
{
    QStringList events;
    for (const QString &event : TestProbe::events()) {
        if (event.startsWith(QLatin1String("Load:")) ||
            event.startsWith(QLatin1String("Initialize:")))
            events.append(event);
    }
    return events;
}

} // namespace

class TestPluginLoading : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        TestFiles::useFreshSettings();
        TestFiles::removeAppPath(QStringLiteral("/config"));
        TestProbe::reset();
    }

    void loadAllLoadsEverythingBeforeInitialising();
    void loadAllTwiceInitialisesOnce();
    void postponedUntilUpdate_data();
    void postponedUntilUpdate();
    void firstMatchingFileThatYieldsAnInstanceWins_data();
    void firstMatchingFileThatYieldsAnInstanceWins();
    void libraryInstalledBeforeThePassIsSeen();
    void isPluginAvailableLoadsWithoutInitialising();
    void disabledRecordIsNeverHandedOut();
    void getPluginByName();
    void interfaceNumbersGoThroughQueryInterface();
    void pluginWithoutBaseInterface();
    void libraryThatIsNoPlugin();
    void failedInitialiseStaysInitialised();
    void updateFollowsTheEnabledFlags_data();
    void updateFollowsTheEnabledFlags();
    void unloadByNameDoesNothing();
    void destroyPlugin();
    void unloadAllPlugins_data();
    void unloadAllPlugins();
    void destructorReleasesAndUnloadsEverything();
};

// All plugins are loaded before any is initialised; both follow the file's order.
void TestPluginLoading::loadAllLoadsEverythingBeforeInitialising()
{
    auto container =
        makeContainer(pluginsLibFile(QStringLiteral("Main"),
                                     {entry("Gamma"), entry("Alpha"), entry("Beta", false, true),
                                      entry("FailInit", false, false), entry("NoBase")}),
                      pluginsConfigFile({"CGamma", "CAlpha", "CBeta", "CFailInit"}));
    LogCapture log;
    container->LoadAllStaticOrActivePlugin();

    QCOMPARE(loadAndInitEvents(),
             (QStringList{"Load:Gamma", "Load:Alpha", "Load:Beta", "Initialize:Gamma",
                          "Initialize:Alpha", "Initialize:Beta"}));
    QCOMPARE(container->GetLoadedPluginClsids(), (QList<QString>{"CGamma", "CAlpha", "CBeta"}));
    QVERIFY(log.containsInOrder(
        {line("loadAllStaticOrActivePlugin", "Gamma to be loaded..."),
         line("loadAllStaticOrActivePlugin", "Beta to be loaded..."),
         line("loadAllStaticOrActivePlugin", "PGamma calling initPlugin"),
         line("initPlugin", "base IBasePlugin load success, PGamma init: Start"),
         line("LoadAllStaticOrActivePlugin", "plugin count = 5")}));
    const QRegularExpression done(QStringLiteral(
        "^\\.\\./\\.\\./src/core/PluginContainer/PluginContainer: initPlugin: base IBasePlugin "
        "load success, init=1, PAlpha init: elapsed=\\d+ms$"));
    bool critical = false;
    for (const LogCapture::Line &l : log.lines()) {
        if (done.match(l.text).hasMatch())
            critical = l.type == QtCriticalMsg;
    }
    QVERIFY(critical);
    QVERIFY(container->record(QStringLiteral("CAlpha"))->IsInitialized());
    QVERIFY(!container->IsPluginLoaded(QStringLiteral("CFailInit")));
    QVERIFY(!container->IsPluginLoaded(QStringLiteral("CNoBase")));
}

void TestPluginLoading::loadAllTwiceInitialisesOnce()
{
    auto container = makeContainer(pluginsLibFile(QStringLiteral("Main"), {entry("Alpha")}),
                                   pluginsConfigFile({"CAlpha"}));
    container->LoadAllStaticOrActivePlugin();
    LogCapture log;
    container->LoadAllStaticOrActivePlugin();
    QCOMPARE(TestProbe::events(QStringLiteral("Initialize:")), QStringList{"Initialize:Alpha"});
    QVERIFY(log.containsUnstamped(line("initPlugin", "CAlpha is initialized")));
    QVERIFY(LogCapture::hasStamp(log.texts().filter(QStringLiteral("is initialized")).value(0)));
}

void TestPluginLoading::postponedUntilUpdate_data()
{
    QTest::addColumn<QString>("clsid");
    QTest::addColumn<bool>("postponed");
    QTest::newRow("first") << kPostponedFirst << true;
    QTest::newRow("second") << kPostponedSecond << true;
    QTest::newRow("other case is another clsid") << kPostponedFirst.toUpper() << false;
}

void TestPluginLoading::postponedUntilUpdate()
{
    QFETCH(QString, clsid);
    QFETCH(bool, postponed);
    auto container =
        makeContainer(pluginsLibFile(QStringLiteral("Main"),
                                     {{"Late", clsid, "Postponed", true}, entry("Alpha")}),
                      pluginsConfigFile({clsid, "CAlpha"}));
    LogCapture log;
    container->LoadAllStaticOrActivePlugin();
    QCOMPARE(container->IsPluginLoaded(clsid), !postponed);
    QCOMPARE(log.contains(
                 line("loadAllStaticOrActivePlugin", "Late is not going to be loaded at first...")),
             postponed);

    log.clear();
    container->UpdateAllStaticOrActivePlugins();
    QVERIFY(container->IsPluginLoaded(clsid));
    QCOMPARE(TestProbe::events(QStringLiteral("Initialize:")),
             (QStringList{postponed ? "Initialize:Alpha" : "Initialize:Postponed",
                          postponed ? "Initialize:Postponed" : "Initialize:Alpha"}));
    QCOMPARE(log.contains(line("UpdateAllStaticOrActivePlugins", "Loaded plugin: Late.")),
             postponed);
    QCOMPARE(log.contains(line("UpdateAllStaticOrActivePlugins", "Late calling initPlugin")),
             postponed);
    // Already initialised plugins are not visited by the update's second pass.
    QVERIFY(!log.contains(line("UpdateAllStaticOrActivePlugins", "PAlpha calling initPlugin")));
}

void TestPluginLoading::firstMatchingFileThatYieldsAnInstanceWins_data()
{
    QTest::addColumn<bool>("inPass");
    QTest::newRow("on demand") << false;
    QTest::newRow("loading pass") << true;
}

// Which file comes first is the directory's business; the test follows the directory's order.
void TestPluginLoading::firstMatchingFileThatYieldsAnInstanceWins()
{
    QFETCH(bool, inPass);
    TestFiles::writeAppFile(QStringLiteral("/libTwin.txt"), "not a library");
    QDir dir(TestFiles::appDir(), QStringLiteral("libTwin*"));
    const QStringList files = dir.entryList(QDir::Files, QDir::NoSort);
    QCOMPARE(files.size(), 4);

    auto container = makeContainer(pluginsLibFile(QStringLiteral("Main"), {entry("Twin")}),
                                   pluginsConfigFile({"CTwin"}));
    LogCapture log;
    QObject *plugin = nullptr;
    if (inPass) {
        container->LoadAllStaticOrActivePlugin();
        plugin = container->record(QStringLiteral("CTwin"))->Plugin();
    } else {
        plugin = container->GetPlugin(QStringLiteral("CTwin"), 0);
    }
    QVERIFY(plugin);

    const QHash<QString, QString> tags{{"libTwin.so", "TwinPlain"}, {"libTwin-b.so", "TwinB"}};
    bool found = false;
    for (const QString &file : files) {
        const QString errorStart = line("loadPlugin", dir.absoluteFilePath(file) + ": error : ");
        const bool errorLogged = !log.texts().filter(errorStart).isEmpty();
        if (file == QLatin1String("libTwin.txt")) {
            QVERIFY(!errorLogged);
        } else if (file == QLatin1String("libTwin-x.so")) {
            QCOMPARE(errorLogged, !found);
        } else if (!found) {
            found = true;
            QCOMPARE(TestProbe::events(QStringLiteral("Load:")),
                     QStringList{QStringLiteral("Load:") + tags.value(file)});
            QVERIFY(
                log.contains(line("loadPlugin", "strFileName = " + dir.absoluteFilePath(file) +
                                                    ", QObject* plugin loaded successfully Twin")));
        }
    }
    QVERIFY(found);
    TestFiles::removeAppPath(QStringLiteral("/libTwin.txt"));
}

void TestPluginLoading::libraryInstalledBeforeThePassIsSeen()
{
    auto container =
        makeContainer(pluginsLibFile(QStringLiteral("Main"), {entry("Alpha"), entry("Delta")}),
                      pluginsConfigFile({"CAlpha", "CDelta"}));
    const QString copy = TestFiles::appDir() + QStringLiteral("/libDelta.so");
    QFile::remove(copy);
    QVERIFY(QFile::copy(TestFiles::appDir() + QStringLiteral("/libGamma.so"), copy));
    container->LoadAllStaticOrActivePlugin();
    QVERIFY(container->IsPluginLoaded(QStringLiteral("CDelta")));
    QCOMPARE(TestProbe::events(QStringLiteral("Initialize:")),
             (QStringList{"Initialize:Alpha", "Initialize:Gamma"}));
    container.reset();
    QVERIFY(QFile::remove(copy));
}

void TestPluginLoading::isPluginAvailableLoadsWithoutInitialising()
{
    auto container =
        makeContainer(pluginsLibFile(QStringLiteral("Main"), {entry("Alpha"), entry("Beta")}),
                      pluginsConfigFile({"CAlpha"}));
    LogCapture log;
    QVERIFY(container->IsPluginAvailable(QStringLiteral("CAlpha")));
    QVERIFY(log.contains(line("IsPluginAvailable", "CAlpha is available")));
    QVERIFY(container->IsPluginLoaded(QStringLiteral("CAlpha")));
    QVERIFY(!container->record(QStringLiteral("CAlpha"))->IsInitialized());
    QCOMPARE(TestProbe::events(), QStringList{"Load:Alpha"});

    // Asking by name is not understood here.
    QVERIFY(!container->IsPluginAvailable(QStringLiteral("PAlpha")));
    QVERIFY(log.contains(line("IsPluginAvailable", "PAlpha is not available")));
    QVERIFY(!container->IsPluginAvailable(QStringLiteral("CBeta")));
    QVERIFY(!container->IsPluginLoaded(QStringLiteral("CBeta")));

    QObject *plugin = container->GetPlugin(QStringLiteral("CAlpha"), 0);
    QVERIFY(plugin);
    QCOMPARE(plugin, container->record(QStringLiteral("CAlpha"))->Plugin());
    QCOMPARE(TestProbe::events(), (QStringList{"Load:Alpha", "Initialize:Alpha"}));
    QVERIFY(log.contains(line("getPlugin", "Alpha plugin loaded,,,")));
}

void TestPluginLoading::disabledRecordIsNeverHandedOut()
{
    auto container = makeContainer(
        pluginsLibFile(QStringLiteral("Main"), {entry("Alpha"), entry("Beta", true, true)}),
        pluginsConfigFile({"CAlpha"}));
    LogCapture log;
    QVERIFY(!container->GetPlugin(QStringLiteral("CBeta"), 0));
    QVERIFY(!container->GetPlugin(QStringLiteral("PBeta"), 0));
    QCOMPARE(log.count(line("getPlugin", "CBeta not enabled")), 2);
    QVERIFY(!container->IsPluginAvailable(QStringLiteral("CBeta")));
    container->LoadAllStaticOrActivePlugin();
    container->UpdateAllStaticOrActivePlugins();
    QVERIFY(!container->IsPluginLoaded(QStringLiteral("CBeta")));
    QVERIFY(TestProbe::events(QStringLiteral("Load:Beta")).isEmpty());
}

void TestPluginLoading::getPluginByName()
{
    auto container = makeContainer(pluginsLibFile(QStringLiteral("Main"), {entry("Alpha")}),
                                   pluginsConfigFile({"CAlpha"}));
    QString key = QStringLiteral("PAlpha");
    QObject *plugin = container->getPlugin(key, true, 0);
    QVERIFY(plugin);
    QCOMPARE(key, QStringLiteral("CAlpha"));
    QCOMPARE(container->GetPlugin(QStringLiteral("PAlpha"), 0), plugin);
    QCOMPARE(TestProbe::events(QStringLiteral("Initialize:")), QStringList{"Initialize:Alpha"});

    QString unknown = QStringLiteral("Nobody");
    QVERIFY(!container->getPlugin(unknown, true, 0));
    QCOMPARE(unknown, QString());
}

void TestPluginLoading::interfaceNumbersGoThroughQueryInterface()
{
    auto container =
        makeContainer(pluginsLibFile(QStringLiteral("Main"),
                                     {entry("MainFrame"), entry("Alpha"), entry("NoBase")}),
                      pluginsConfigFile({"CMainFrame", "CAlpha", "CNoBase"}));
    QObject *service = container->GetPlugin(QStringLiteral("CMainFrame"), 4113);
    QVERIFY(qobject_cast<IMainFrameUIService *>(service));
    QVERIFY(!container->GetPlugin(QStringLiteral("CMainFrame"), 8209));
    QVERIFY(!container->GetPlugin(QStringLiteral("CAlpha"), 4097));
    QCOMPARE(TestProbe::events(QStringLiteral("QueryInterface:")),
             (QStringList{"QueryInterface:MainFrame:4113", "QueryInterface:MainFrame:8209",
                          "QueryInterface:Alpha:4097"}));
    // The root object itself is handed out for 0, without asking the plugin.
    QVERIFY(qobject_cast<IBasePlugin *>(container->GetPlugin(QStringLiteral("CAlpha"), 0)));
    QCOMPARE(TestProbe::events(QStringLiteral("QueryInterface:")).size(), 3);
    QVERIFY(!container->GetPlugin(QStringLiteral("CNoBase"), 4097));
    QVERIFY(container->IsPluginLoaded(QStringLiteral("CNoBase")));
}

void TestPluginLoading::pluginWithoutBaseInterface()
{
    auto container = makeContainer(pluginsLibFile(QStringLiteral("Main"), {entry("NoBase")}),
                                   pluginsConfigFile({"CNoBase"}));
    container->LoadAllStaticOrActivePlugin();
    QVERIFY(container->IsPluginLoaded(QStringLiteral("CNoBase")));
    QVERIFY(!container->record(QStringLiteral("CNoBase"))->IsInitialized());
    QVERIFY(container->GetPlugin(QStringLiteral("CNoBase"), 0));
    QVERIFY(!container->DestroyPlugin(QStringLiteral("CNoBase")));
    QVERIFY(container->UnloadPlugin(QStringLiteral("CNoBase")));
    QCOMPARE(TestProbe::events(), (QStringList{"Load:NoBase", "Unload:NoBase"}));
}

void TestPluginLoading::libraryThatIsNoPlugin()
{
    auto container = makeContainer(pluginsLibFile(QStringLiteral("Main"), {entry("NotAPlugin")}),
                                   pluginsConfigFile({"CNotAPlugin"}));
    LogCapture log;
    QVERIFY(!container->GetPlugin(QStringLiteral("CNotAPlugin"), 0));
    const QString file = TestFiles::appDir() + QStringLiteral("/libNotAPlugin.so");
    QCOMPARE(log.texts().filter(line("loadPlugin", file + ": error : ")).size(), 1);
    QVERIFY(log.contains(line("getPlugin", "NotAPlugin plugin NOT LOADED !!!,,,")));
    QVERIFY(!container->IsPluginLoaded(QStringLiteral("CNotAPlugin")));
    QVERIFY(!container->record(QStringLiteral("CNotAPlugin"))->Loader());
}

void TestPluginLoading::failedInitialiseStaysInitialised()
{
    auto container = makeContainer(pluginsLibFile(QStringLiteral("Main"), {entry("FailInit")}),
                                   pluginsConfigFile({"CFailInit"}));
    LogCapture log;
    container->LoadAllStaticOrActivePlugin();
    const PluginInfo *info = container->record(QStringLiteral("CFailInit"));
    QVERIFY(info->IsLoaded());
    QVERIFY(info->IsInitialized());
    QCOMPARE(log.texts().filter(QStringLiteral("init=0, PFailInit init: elapsed=")).size(), 1);
    QVERIFY(container->GetPlugin(QStringLiteral("CFailInit"), 0));
    QCOMPARE(TestProbe::events(QStringLiteral("Initialize:")), QStringList{"Initialize:FailInit"});
}

void TestPluginLoading::updateFollowsTheEnabledFlags_data()
{
    QTest::addColumn<QString>("mainPlugin");
    QTest::addColumn<bool>("mainProtected");
    QTest::newRow("main plugin named by clsid") << "CMainFrame" << true;
    QTest::newRow("main plugin named by name") << "PMainFrame" << false;
}

// Loads what became enabled, releases and unloads what became disabled; the main plugin is
// protected only when the file names it by clsid.
void TestPluginLoading::updateFollowsTheEnabledFlags()
{
    QFETCH(QString, mainPlugin);
    QFETCH(bool, mainProtected);
    auto container =
        makeContainer(pluginsLibFile(mainPlugin, {entry("Alpha"), entry("Beta"), entry("Gamma"),
                                                  entry("MainFrame")}),
                      pluginsConfigFile({"CAlpha", "CBeta", "CMainFrame"},
                                        deviceSection("Dev", {"CGamma"}, {"CBeta", "CMainFrame"})));
    container->LoadAllStaticOrActivePlugin();
    TestProbe::reset();

    container->ApplyCustomizationForDevice(QStringLiteral("Dev"));
    LogCapture log;
    container->UpdateAllStaticOrActivePlugins();

    QStringList expected{"Release:Beta", "Unload:Beta", "Load:Gamma"};
    if (!mainProtected)
        expected << "Release:MainFrame"
                 << "Unload:MainFrame";
    expected << "Initialize:Gamma";
    QCOMPARE(TestProbe::events(), expected);
    const QList<QString> stillLoaded = mainProtected
                                           ? QList<QString>{"CAlpha", "CGamma", "CMainFrame"}
                                           : QList<QString>{"CAlpha", "CGamma"};
    QCOMPARE(container->GetLoadedPluginClsids(), stillLoaded);
    QVERIFY(log.containsInOrder(
        {"Destroying Plugin Name: PBeta, Plugin ClsID: CBeta",
         line("unloadPlugin", "plugin CBeta unloaded"),
         line("UpdateAllStaticOrActivePlugins", "Unload plugin PBeta bUnloaded 1"),
         line("UpdateAllStaticOrActivePlugins", "Gamma to be loaded..."),
         line("UpdateAllStaticOrActivePlugins", "Loaded plugin: PGamma."),
         line("UpdateAllStaticOrActivePlugins", "PGamma calling initPlugin")}));
    QVERIFY(log.contains(line("UpdateAllStaticOrActivePlugins", "Alpha to be loaded...")));
    QVERIFY(!log.contains(line("UpdateAllStaticOrActivePlugins", "Loaded plugin: PAlpha.")));
}

void TestPluginLoading::unloadByNameDoesNothing()
{
    auto container = makeContainer(pluginsLibFile(QStringLiteral("Main"), {entry("Alpha")}),
                                   pluginsConfigFile({"CAlpha"}));
    QVERIFY(container->GetPlugin(QStringLiteral("CAlpha"), 0));
    QVERIFY(!container->UnloadPlugin(QStringLiteral("PAlpha")));
    QVERIFY(container->IsPluginLoaded(QStringLiteral("CAlpha")));
    LogCapture log;
    QVERIFY(container->UnloadPlugin(QStringLiteral("CAlpha")));
    QVERIFY(log.contains(line("unloadPlugin", "plugin CAlpha unloaded")));
    const PluginInfo *info = container->record(QStringLiteral("CAlpha"));
    QVERIFY(!info->IsLoaded() && !info->IsInitialized() && !info->Plugin() && !info->Loader());
    QVERIFY(!container->UnloadPlugin(QStringLiteral("CAlpha")));
    QCOMPARE(TestProbe::events(), (QStringList{"Load:Alpha", "Initialize:Alpha", "Unload:Alpha"}));
}

void TestPluginLoading::destroyPlugin()
{
    auto container =
        makeContainer(pluginsLibFile(QStringLiteral("CMainFrame"),
                                     {entry("Alpha"), entry("Beta"), entry("MainFrame")}),
                      pluginsConfigFile({"CAlpha", "CBeta", "CMainFrame"}));
    QVERIFY(container->GetPlugin(QStringLiteral("CAlpha"), 0));
    QVERIFY(container->GetPlugin(QStringLiteral("CMainFrame"), 0));
    QVERIFY(container->IsPluginAvailable(QStringLiteral("CBeta")));
    LogCapture log;
    QVERIFY(container->DestroyPlugin(QStringLiteral("CAlpha")));
    QVERIFY(!container->DestroyPlugin(QStringLiteral("CBeta")));      // not initialised
    QVERIFY(!container->DestroyPlugin(QStringLiteral("CMainFrame"))); // the main plugin
    QVERIFY(!container->DestroyPlugin(QStringLiteral("PAlpha")));     // names are not clsids
    QCOMPARE(log.texts(), QStringList{"Destroying Plugin Name: PAlpha, Plugin ClsID: CAlpha"});
    QCOMPARE(TestProbe::events(QStringLiteral("Release:")), QStringList{"Release:Alpha"});
    QVERIFY(container->IsPluginLoaded(QStringLiteral("CAlpha")));
    QVERIFY(container->record(QStringLiteral("CAlpha"))->IsInitialized());
}

void TestPluginLoading::unloadAllPlugins_data()
{
    QTest::addColumn<QString>("mainPlugin");
    QTest::addColumn<QList<PluginEntry>>("plugins");
    QTest::addColumn<QStringList>("releasesBeforeMain");
    QTest::addColumn<QStringList>("expectedTail");
    QTest::addColumn<int>("unloaded");
    QTest::addColumn<bool>("mainUnloadedLast");

    const QList<PluginEntry> three{entry("Alpha"), entry("MainFrame"), entry("Beta")};
    QTest::newRow("main plugin named by clsid")
        << "CMainFrame" << three << QStringList{"Release:Alpha", "Release:Beta"}
        << QStringList{"Release:MainFrame", "Unload:Alpha", "Unload:Beta", "Unload:MainFrame"} << 1
        << true;
    // Named by name, the main plugin goes with the others and is released a second time.
    QTest::newRow("main plugin named by name")
        << "PMainFrame" << three
        << QStringList{"Release:Alpha", "Release:Beta", "Release:MainFrame"}
        << QStringList{"Release:MainFrame", "Unload:Alpha", "Unload:Beta", "Unload:MainFrame"} << 1
        << false;
    // Two records on one library: the first unload cannot take the library away.
    QTest::newRow("one library, two records")
        << "CMainFrame"
        << QList<PluginEntry>{{"A1", "CA1", "Alpha"}, {"A2", "CA2", "Alpha"}, entry("MainFrame")}
        << QStringList{"Release:Alpha", "Release:Alpha"}
        << QStringList{"Release:MainFrame", "Unload:Alpha", "Unload:MainFrame"} << 0 << true;
}

void TestPluginLoading::unloadAllPlugins()
{
    QFETCH(QString, mainPlugin);
    QFETCH(QList<PluginEntry>, plugins);
    QFETCH(QStringList, releasesBeforeMain);
    QFETCH(QStringList, expectedTail);
    QFETCH(int, unloaded);
    QFETCH(bool, mainUnloadedLast);

    QStringList common;
    for (const PluginEntry &p : plugins)
        common.append(p.clsid);
    auto container = makeContainer(pluginsLibFile(mainPlugin, plugins), pluginsConfigFile(common));
    container->LoadAllStaticOrActivePlugin();
    TestProbe::reset();
    LogCapture log;
    QCOMPARE(int(container->unloadAllPlugins()), unloaded);

    // Hash order decides among the others; the main plugin comes after them.
    const QStringList events = TestProbe::events();
    QStringList head = events.mid(0, releasesBeforeMain.size());
    head.sort();
    QCOMPARE(head, releasesBeforeMain);
    QStringList tail = events.mid(releasesBeforeMain.size());
    QCOMPARE(tail.first(), expectedTail.first());
    if (mainUnloadedLast)
        QCOMPARE(tail.last(), QStringLiteral("Unload:MainFrame"));
    tail.sort();
    QStringList sortedTail = expectedTail;
    sortedTail.sort();
    QCOMPARE(tail, sortedTail);

    const QString first = line("unloadAllPlugins", "bUnloaded 1");
    const QString second = line("unloadAllPlugins", QStringLiteral("bUnloaded %1").arg(unloaded));
    QVERIFY(log.containsInOrder({first, second}));
    QCOMPARE(log.count(first) + (first == second ? 0 : log.count(second)), 2);
    if (!unloaded) {
        QCOMPARE(log.texts().filter(QStringLiteral("NOT UNLOADED; ")).size(), 1);
        // The record whose unload failed still claims its plugin, whose library has gone since.
        for (PluginInfo *info : container->records()) {
            info->SetLoaded(false);
            info->SetPlugin(nullptr);
        }
    } else {
        QVERIFY(container->GetLoadedPluginClsids().isEmpty());
    }
}

void TestPluginLoading::destructorReleasesAndUnloadsEverything()
{
    auto container = makeContainer(
        pluginsLibFile(QStringLiteral("CMainFrame"),
                       {entry("Alpha"), entry("Beta", false), entry("MainFrame"), entry("NoBase")}),
        pluginsConfigFile({"CAlpha", "CBeta", "CMainFrame", "CNoBase"}));
    container->LoadAllStaticOrActivePlugin();
    QVERIFY(container->IsPluginAvailable(QStringLiteral("CBeta")));
    TestProbe::reset();
    container.reset();
    // Only initialised plugins with the base interface are released; every library goes.
    const QStringList events = TestProbe::events();
    QCOMPARE(events.filter(QStringLiteral("Release:")).size(), 2);
    QCOMPARE(events.filter(QStringLiteral("Unload:")).size(), 4);
    QCOMPARE(events.filter(QStringLiteral("Release:")).last(), QStringLiteral("Release:MainFrame"));
    QCOMPARE(events.last(), QStringLiteral("Unload:MainFrame"));
}

QTEST_GUILESS_MAIN(TestPluginLoading)
#include "tst_pluginloading.moc"
