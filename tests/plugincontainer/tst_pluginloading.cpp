// Loading, initialising, handing out and unloading real plugin libraries.
#include "ContainerProbe.h"
#include "PluginInterfaces.h"

#include <QtTest>

Q_DECLARE_METATYPE(QList<PluginEntry>)

namespace {

PluginEntry entry(const QString &url, bool active = true, bool isStatic = false)
{
    return {"P" + url, "C" + url, url, active, isStatic};
}

// A container over the plugins, all named by the "common" section except those in off.
std::unique_ptr<ContainerProbe> makeLoading(const QString &mainPlugin,
                                            const QList<PluginEntry> &plugins,
                                            const QStringList &off = {},
                                            const QByteArray &sections = {})
{
    QStringList common;
    for (const PluginEntry &p : plugins) {
        if (!off.contains(p.clsid))
            common.append(p.clsid);
    }
    return makeContainer(pluginsLibFile(mainPlugin, plugins), pluginsConfigFile(common, sections));
}

} // namespace

class TestPluginLoading : public QObject
{
    Q_OBJECT

private slots:
    void init() { freshConfig(); }

    void loadAllLoadsEverythingBeforeInitialising();
    void postponedUntilUpdate();
    void firstMatchingFileThatYieldsAnInstanceWins_data();
    void firstMatchingFileThatYieldsAnInstanceWins();
    void libraryInstalledBeforeThePassIsSeen();
    void isPluginAvailableLoadsWithoutInitialising();
    void namesWorkForGetPluginOnly();
    void oddPluginsAndInterfaceNumbers();
    void updateFollowsTheEnabledFlags_data();
    void updateFollowsTheEnabledFlags();
    void destroyPlugin();
    void unloadAllPlugins_data();
    void unloadAllPlugins();
    void destructorReleasesAndUnloadsEverything();
};

// All plugins are loaded before any is initialised, both in file order; a failed initialise
// leaves the plugin loaded and initialised.
void TestPluginLoading::loadAllLoadsEverythingBeforeInitialising()
{
    auto container = makeLoading("Main",
                                 {entry("Gamma"), entry("Alpha"), entry("Beta", false, true),
                                  entry("FailInit"), entry("NoBase", false), entry("Postponed")},
                                 {"CPostponed"});
    LogCapture log;
    container->LoadAllStaticOrActivePlugin();
    QCOMPARE(events(log), (QStringList{"Load:Gamma", "Load:Alpha", "Load:Beta", "Load:FailInit",
                                       "Initialize:Gamma", "Initialize:Alpha", "Initialize:Beta",
                                       "Initialize:FailInit"}));
    QCOMPARE(container->GetLoadedPluginClsids(),
             (QList<QString>{"CGamma", "CAlpha", "CBeta", "CFailInit"}));
    QVERIFY(container->record("CFailInit")->IsInitialized());
    QVERIFY(log.containsInOrder(
        {pcLine("loadAllStaticOrActivePlugin", "Gamma to be loaded..."),
         pcLine("loadAllStaticOrActivePlugin", "Beta to be loaded..."),
         pcLine("loadAllStaticOrActivePlugin", "PGamma calling initPlugin"),
         pcLine("initPlugin", "base IBasePlugin load success, PGamma init: Start"),
         pcLine("LoadAllStaticOrActivePlugin", "plugin count = 6")}));
    const QRegularExpression done("^" + QRegularExpression::escape(pcLine("initPlugin", "")) +
                                  "base IBasePlugin load success, init=(\\d), (\\w+) init: "
                                  "elapsed=\\d+ms$");
    QStringList results;
    for (const LogCapture::Line &l : log.lines()) {
        const QRegularExpressionMatch m = done.match(l.text);
        if (m.hasMatch() && l.type == QtCriticalMsg)
            results.append(m.captured(1) + ' ' + m.captured(2));
    }
    QCOMPARE(results, (QStringList{"1 PGamma", "1 PAlpha", "1 PBeta", "0 PFailInit"}));

    log.clear();
    container->LoadAllStaticOrActivePlugin();
    QVERIFY(events(log).isEmpty());
    const QString again = log.texts().filter("CAlpha is initialized").value(0);
    QVERIFY(LogCapture::hasStamp(again));
    QCOMPARE(LogCapture::stripStamp(again), pcLine("initPlugin", "CAlpha is initialized"));
}

// Start-up loading leaves two clsids (exactly as written) to the update.
void TestPluginLoading::postponedUntilUpdate()
{
    auto container =
        makeLoading("Main", {{"Late1", "FCDC307E-06DC-4dfa-AC83-834D0E306D48", "Postponed"},
                             {"Late2", "D2AB6727-AF80-4ef7-B37E-F217803B85A4", "Alpha"},
                             {"Upper", "FCDC307E-06DC-4DFA-AC83-834D0E306D48", "Gamma"}});
    LogCapture log;
    container->LoadAllStaticOrActivePlugin();
    QCOMPARE(events(log), (QStringList{"Load:Gamma", "Initialize:Gamma"}));
    QVERIFY(log.containsInOrder(
        {pcLine("loadAllStaticOrActivePlugin", "Late1 is not going to be loaded at first..."),
         pcLine("loadAllStaticOrActivePlugin", "Late2 is not going to be loaded at first...")}));
    log.clear();
    container->UpdateAllStaticOrActivePlugins();
    QCOMPARE(events(log), (QStringList{"Load:Postponed", "Load:Alpha", "Initialize:Postponed",
                                       "Initialize:Alpha"}));
    QVERIFY(log.containsInOrder(
        {pcLine("UpdateAllStaticOrActivePlugins", "Loaded plugin: Late1."),
         pcLine("UpdateAllStaticOrActivePlugins", "Late1 calling initPlugin")}));
    // Already initialised plugins are not visited by the update's second pass.
    QVERIFY(!log.contains(pcLine("UpdateAllStaticOrActivePlugins", "Upper calling initPlugin")));
}

void TestPluginLoading::firstMatchingFileThatYieldsAnInstanceWins_data()
{
    QTest::addColumn<bool>("inPass");
    QTest::newRow("on demand") << false;
    QTest::newRow("loading pass") << true;
}

// The files are tried in the directory's own order, up to the first that yields an instance.
void TestPluginLoading::firstMatchingFileThatYieldsAnInstanceWins()
{
    QFETCH(bool, inPass);
    TestFiles::writeAppFile("/libTwin.txt", "not a library");
    QDir dir(TestFiles::appDir(), "libTwin*");
    const QStringList files = dir.entryList(QDir::Files, QDir::NoSort);
    QCOMPARE(files.size(), 4);
    QStringList expected;
    QString tag;
    for (const QString &file : files) {
        const QString path = dir.absoluteFilePath(file);
        if (file == "libTwin-x.so") {
            expected << pcLine("loadPlugin", path + ": error : ");
        } else if (file.endsWith(".so")) {
            expected << pcLine("loadPlugin", "strFileName = " + path +
                                                 ", QObject* plugin loaded successfully Twin");
            tag = file == "libTwin.so" ? "TwinPlain" : "TwinB";
            break;
        }
    }

    auto container = makeLoading("Main", {entry("Twin")});
    LogCapture log;
    if (inPass)
        container->LoadAllStaticOrActivePlugin();
    else
        QVERIFY(container->GetPlugin("CTwin", 0));
    QVERIFY(container->record("CTwin")->Plugin());
    QStringList seen = log.texts().filter(pcLine("loadPlugin", ""));
    for (QString &text : seen) {
        if (text.contains(": error : "))
            text.truncate(text.indexOf(": error : ") + 10);
    }
    QCOMPARE(seen, expected);
    QCOMPARE(events(log, "Load:"), QStringList{"Load:" + tag});
    TestFiles::removeAppPath("/libTwin.txt");
}

void TestPluginLoading::libraryInstalledBeforeThePassIsSeen()
{
    auto container = makeLoading("Main", {entry("Alpha"), entry("Delta")});
    const QString copy = TestFiles::appDir() + "/libDelta.so";
    QFile::remove(copy);
    QVERIFY(QFile::copy(TestFiles::appDir() + "/libGamma.so", copy));
    LogCapture log;
    container->LoadAllStaticOrActivePlugin();
    QVERIFY(container->IsPluginLoaded("CDelta"));
    QCOMPARE(events(log, "Initialize:"), (QStringList{"Initialize:Alpha", "Initialize:Gamma"}));
    container.reset();
    QVERIFY(QFile::remove(copy));
}

// IsPluginAvailable loads without initialising; a disabled record is never handed out.
void TestPluginLoading::isPluginAvailableLoadsWithoutInitialising()
{
    auto container = makeLoading("Main", {entry("Alpha"), entry("Beta", true, true)}, {"CBeta"});
    LogCapture log;
    QVERIFY(container->IsPluginAvailable("CAlpha"));
    QVERIFY(log.contains(pcLine("IsPluginAvailable", "CAlpha is available")));
    QVERIFY(container->IsPluginLoaded("CAlpha"));
    QVERIFY(!container->record("CAlpha")->IsInitialized());
    QCOMPARE(events(log), QStringList{"Load:Alpha"});
    // Asking by name is not understood here.
    QVERIFY(!container->IsPluginAvailable("PAlpha"));
    QVERIFY(log.contains(pcLine("IsPluginAvailable", "PAlpha is not available")));
    QObject *plugin = container->GetPlugin("CAlpha", 0);
    QVERIFY(plugin);
    QCOMPARE(plugin, container->record("CAlpha")->Plugin());
    QCOMPARE(events(log), (QStringList{"Load:Alpha", "Initialize:Alpha"}));
    QVERIFY(log.contains(pcLine("getPlugin", "Alpha plugin loaded,,,")));

    // A disabled record is never handed out.
    QVERIFY(!container->GetPlugin("CBeta", 0));
    QVERIFY(!container->GetPlugin("PBeta", 0));
    QCOMPARE(log.count(pcLine("getPlugin", "CBeta not enabled")), 2);
    QVERIFY(!container->IsPluginAvailable("CBeta"));
    QVERIFY(log.contains(pcLine("IsPluginAvailable", "CBeta is not available")));
    container->LoadAllStaticOrActivePlugin();
    container->UpdateAllStaticOrActivePlugins();
    QVERIFY(!container->IsPluginLoaded("CBeta"));
    QVERIFY(events(log, "Load:Beta").isEmpty());
}

// getPlugin takes a name and hands back the clsid; UnloadPlugin by name does nothing.
void TestPluginLoading::namesWorkForGetPluginOnly()
{
    auto container = makeLoading("Main", {entry("Alpha")});
    LogCapture log;
    QString key = "PAlpha";
    QObject *plugin = container->getPlugin(key, true, 0);
    QVERIFY(plugin);
    QCOMPARE(key, QStringLiteral("CAlpha"));
    QCOMPARE(container->GetPlugin("PAlpha", 0), plugin);
    QString unknown = "Nobody";
    QVERIFY(!container->getPlugin(unknown, true, 0));
    QCOMPARE(unknown, QString());

    QVERIFY(!container->UnloadPlugin("PAlpha"));
    QVERIFY(container->IsPluginLoaded("CAlpha"));
    QVERIFY(container->UnloadPlugin("CAlpha"));
    QVERIFY(log.contains(pcLine("unloadPlugin", "plugin CAlpha unloaded")));
    const PluginInfo *info = container->record("CAlpha");
    QVERIFY(!info->IsLoaded() && !info->IsInitialized() && !info->Plugin() && !info->Loader());
    QVERIFY(!container->UnloadPlugin("CAlpha"));
    QCOMPARE(events(log), (QStringList{"Load:Alpha", "Initialize:Alpha", "Unload:Alpha"}));
}

// Interface numbers go through QueryInterface; a plugin without the base interface is loaded but
// never initialised or released, and can be unloaded; a library that is no plugin is refused.
void TestPluginLoading::oddPluginsAndInterfaceNumbers()
{
    auto container = makeLoading(
        "Main", {entry("MainFrame"), entry("Alpha"), entry("NoBase"), entry("NotAPlugin")});
    LogCapture log;
    QVERIFY(qobject_cast<IMainFrameUIService *>(container->GetPlugin("CMainFrame", 4113)));
    QVERIFY(!container->GetPlugin("CMainFrame", 8209));
    QVERIFY(!container->GetPlugin("CAlpha", 4097));
    // The root object itself is handed out for 0, without asking the plugin.
    QVERIFY(qobject_cast<IBasePlugin *>(container->GetPlugin("CAlpha", 0)));
    QCOMPARE(events(log, "QueryInterface:"),
             (QStringList{"QueryInterface:MainFrame:4113", "QueryInterface:MainFrame:8209",
                          "QueryInterface:Alpha:4097"}));

    QVERIFY(!container->GetPlugin("CNoBase", 4097));
    QVERIFY(container->GetPlugin("CNoBase", 0));
    container->LoadAllStaticOrActivePlugin();
    QVERIFY(container->IsPluginLoaded("CNoBase"));
    QVERIFY(!container->record("CNoBase")->IsInitialized());
    QVERIFY(!container->DestroyPlugin("CNoBase"));
    QVERIFY(container->UnloadPlugin("CNoBase"));
    QCOMPARE(events(log, "Load:NoBase") + events(log, "Unload:NoBase"),
             (QStringList{"Load:NoBase", "Unload:NoBase"}));

    QVERIFY(!container->GetPlugin("CNotAPlugin", 0));
    const QString file = TestFiles::appDir() + "/libNotAPlugin.so";
    QVERIFY(log.count(pcLine("getPlugin", "NotAPlugin plugin NOT LOADED !!!,,,")) == 1);
    QCOMPARE(log.texts().filter(pcLine("loadPlugin", file + ": error : ")).size(), 2);
    QVERIFY(!container->IsPluginLoaded("CNotAPlugin"));
    QVERIFY(!container->record("CNotAPlugin")->Loader());
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
        makeLoading(mainPlugin, {entry("Alpha"), entry("Beta"), entry("Gamma"), entry("MainFrame")},
                    {"CGamma"}, deviceSection("Dev", {"CGamma"}, {"CBeta", "CMainFrame"}));
    container->LoadAllStaticOrActivePlugin();
    container->ApplyCustomizationForDevice("Dev");
    LogCapture log;
    container->UpdateAllStaticOrActivePlugins();

    QStringList expected{"Release:Beta", "Unload:Beta", "Load:Gamma"};
    if (!mainProtected)
        expected << "Release:MainFrame"
                 << "Unload:MainFrame";
    QCOMPARE(events(log), expected << "Initialize:Gamma");
    QCOMPARE(container->GetLoadedPluginClsids().join(' '),
             mainProtected ? "CAlpha CGamma CMainFrame" : "CAlpha CGamma");
    QVERIFY(log.containsInOrder(
        {"Destroying Plugin Name: PBeta, Plugin ClsID: CBeta",
         pcLine("unloadPlugin", "plugin CBeta unloaded"),
         pcLine("UpdateAllStaticOrActivePlugins", "Unload plugin PBeta bUnloaded 1"),
         pcLine("UpdateAllStaticOrActivePlugins", "Gamma to be loaded..."),
         pcLine("UpdateAllStaticOrActivePlugins", "Loaded plugin: PGamma."),
         pcLine("UpdateAllStaticOrActivePlugins", "PGamma calling initPlugin")}));
    QVERIFY(log.contains(pcLine("UpdateAllStaticOrActivePlugins", "Alpha to be loaded...")));
    QVERIFY(!log.contains(pcLine("UpdateAllStaticOrActivePlugins", "Loaded plugin: PAlpha.")));
}

void TestPluginLoading::destroyPlugin()
{
    auto container = makeLoading("CMainFrame", {entry("Alpha"), entry("Beta"), entry("MainFrame")});
    QVERIFY(container->GetPlugin("CAlpha", 0));
    QVERIFY(container->GetPlugin("CMainFrame", 0));
    QVERIFY(container->IsPluginAvailable("CBeta"));
    LogCapture log;
    QVERIFY(container->DestroyPlugin("CAlpha"));
    QVERIFY(!container->DestroyPlugin("CBeta"));      // not initialised
    QVERIFY(!container->DestroyPlugin("CMainFrame")); // the main plugin
    QVERIFY(!container->DestroyPlugin("PAlpha"));     // names are not clsids
    QCOMPARE(log.texts(), (QStringList{"Destroying Plugin Name: PAlpha, Plugin ClsID: CAlpha",
                                       "@Release:Alpha"}));
    QVERIFY(container->IsPluginLoaded("CAlpha"));
    QVERIFY(container->record("CAlpha")->IsInitialized());
}

void TestPluginLoading::unloadAllPlugins_data()
{
    QTest::addColumn<QString>("mainPlugin");
    QTest::addColumn<QList<PluginEntry>>("plugins");
    QTest::addColumn<QStringList>("releases");
    QTest::addColumn<QStringList>("unloads");
    QTest::addColumn<bool>("unloaded");
    const QList<PluginEntry> three{entry("Alpha"), entry("MainFrame"), entry("Beta")};
    QTest::newRow("main plugin named by clsid")
        << "CMainFrame" << three << QStringList{"Alpha", "Beta", "MainFrame"}
        << QStringList{"Alpha", "Beta", "MainFrame"} << true;
    // Named by name, the main plugin goes with the others and is released a second time.
    QTest::newRow("main plugin named by name")
        << "PMainFrame" << three << QStringList{"Alpha", "Beta", "MainFrame", "MainFrame"}
        << QStringList{"Alpha", "Beta", "MainFrame"} << true;
    // Two records on one library: the first unload cannot take the library away.
    QTest::newRow("one library, two records")
        << "CMainFrame"
        << QList<PluginEntry>{{"A1", "CA1", "Alpha"}, {"A2", "CA2", "Alpha"}, entry("MainFrame")}
        << QStringList{"Alpha", "Alpha", "MainFrame"} << QStringList{"Alpha", "MainFrame"} << false;
}

// Releases in hash order, the main plugin last, then unloads likewise: events are compared as
// "Release:<others in any order>, Release:<main>, Unload:<...>" with the others sorted.
void TestPluginLoading::unloadAllPlugins()
{
    QFETCH(QString, mainPlugin);
    QFETCH(QList<PluginEntry>, plugins);
    QFETCH(QStringList, releases);
    QFETCH(QStringList, unloads);
    QFETCH(bool, unloaded);
    auto container = makeLoading(mainPlugin, plugins);
    container->LoadAllStaticOrActivePlugin();
    LogCapture log;
    QCOMPARE(container->unloadAllPlugins(), unloaded);

    QStringList released = events(log, "Release:").replaceInStrings("Release:", "");
    QStringList gone = events(log, "Unload:").replaceInStrings("Unload:", "");
    QCOMPARE(released.last(), QStringLiteral("MainFrame"));
    const bool mainByClsid = mainPlugin.startsWith('C');
    if (mainByClsid)
        QCOMPARE(gone.last(), QStringLiteral("MainFrame"));
    QCOMPARE(events(log).indexOf(QRegularExpression("^Unload:.*")), released.size());
    released.sort();
    gone.sort();
    QCOMPARE(released, releases);
    QCOMPARE(gone, unloads);

    const QString first = pcLine("unloadAllPlugins", "bUnloaded 1");
    const QString second =
        pcLine("unloadAllPlugins", QStringLiteral("bUnloaded %1").arg(int(unloaded)));
    QCOMPARE(log.texts().filter(pcLine("unloadAllPlugins", "bUnloaded ")),
             (QStringList{first, second}));
    if (unloaded) {
        QVERIFY(container->GetLoadedPluginClsids().isEmpty());
        return;
    }
    QCOMPARE(log.texts().filter("NOT UNLOADED; ").size(), 1);
    // The record whose unload failed still claims its plugin, whose library has gone since.
    for (PluginInfo *info : container->records()) {
        info->SetLoaded(false);
        info->SetPlugin(nullptr);
    }
}

// Only initialised plugins with the base interface are released; every library goes.
void TestPluginLoading::destructorReleasesAndUnloadsEverything()
{
    auto container = makeLoading(
        "CMainFrame", {entry("Alpha"), entry("Beta", false), entry("MainFrame"), entry("NoBase")});
    container->LoadAllStaticOrActivePlugin();
    QVERIFY(container->IsPluginAvailable("CBeta"));
    LogCapture log;
    container.reset();
    const QStringList released = events(log, "Release:");
    QCOMPARE(released.size(), 2);
    QCOMPARE(released.last(), QStringLiteral("Release:MainFrame"));
    QCOMPARE(events(log, "Unload:").size(), 4);
    QCOMPARE(events(log).last(), QStringLiteral("Unload:MainFrame"));
}

QTEST_GUILESS_MAIN(TestPluginLoading)
#include "tst_pluginloading.moc"
