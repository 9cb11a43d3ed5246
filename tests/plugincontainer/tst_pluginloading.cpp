// Loading, initialising, handing out and unloading real plugin libraries.
#include "ContainerProbe.h"

#include <QtTest>

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
    for (const PluginEntry &p : plugins)
        if (!off.contains(p.clsid))
            common.append(p.clsid);
    return makeContainer(pluginsLibFile(mainPlugin, plugins), pluginsConfigFile(common, sections));
}

} // namespace

class TestPluginLoading : public QObject
{
    Q_OBJECT

private slots:
    void init() { freshConfig(); }
    // All plugins are loaded before any is initialised, both in file order; a failed initialise
    // leaves the plugin loaded and initialised. Two clsids (exactly as written) wait for the
    // update.
    void loadAllLoadsEverythingBeforeInitialising()
    {
        auto container =
            makeLoading("Main", {entry("Gamma"),
                                 entry("Alpha"),
                                 entry("Beta", false, true),
                                 entry("FailInit"),
                                 entry("NoBase", false),
                                 {"Late1", "FCDC307E-06DC-4dfa-AC83-834D0E306D48", "Epsilon"},
                                 {"Late2", "D2AB6727-AF80-4ef7-B37E-F217803B85A4", "Postponed"},
                                 {"Upper", "FCDC307E-06DC-4DFA-AC83-834D0E306D48", "Zeta"}});
        LogCapture log;
        container->LoadAllStaticOrActivePlugin();
        QCOMPARE(events(log).join(' '), "Load:Gamma Load:Alpha Load:Beta Load:FailInit Load:Zeta "
                                        "Initialize:Gamma Initialize:Alpha Initialize:Beta "
                                        "Initialize:FailInit Initialize:Zeta");
        QCOMPARE(container->recordsText(true).section(' ', 0, 4),
                 "CGamma=aeli CAlpha=aeli CBeta=seli CFailInit=aeli CNoBase=e");
        QVERIFY(log.containsInOrder(
            {pcLine("loadAllStaticOrActivePlugin", "Gamma to be loaded..."),
             pcLine("loadAllStaticOrActivePlugin", "Late1 is not going to be loaded at first..."),
             pcLine("loadAllStaticOrActivePlugin", "Late2 is not going to be loaded at first..."),
             pcLine("loadAllStaticOrActivePlugin", "PGamma calling initPlugin"),
             pcLine("initPlugin", "base IBasePlugin load success, PGamma init: Start"),
             pcLine("LoadAllStaticOrActivePlugin", "plugin count = 8")}));

        const QString failed = QRegularExpression::escape(pcLine(
            "initPlugin", "base IBasePlugin load success, init=0, PFailInit init: elapsed="));
        QCOMPARE(log.unstamped().filter(QRegularExpression("^" + failed + "\\d+ms$")).size(), 1);
        log.clear();
        container->LoadAllStaticOrActivePlugin();
        QVERIFY(events(log).isEmpty());
        const QString again = log.texts().filter("CAlpha is initialized").value(0);
        QCOMPARE(LogCapture::stripStamp(again), pcLine("initPlugin", "CAlpha is initialized"));
        QVERIFY(LogCapture::hasStamp(again));

        log.clear();
        container->UpdateAllStaticOrActivePlugins();
        QCOMPARE(events(log).join(' '),
                 "Load:Epsilon Load:Postponed Initialize:Epsilon Initialize:Postponed");
        QVERIFY(log.containsInOrder(
            {pcLine("UpdateAllStaticOrActivePlugins", "Loaded plugin: Late1."),
             pcLine("UpdateAllStaticOrActivePlugins", "Late1 calling initPlugin")}));
        QVERIFY(
            !log.contains(pcLine("UpdateAllStaticOrActivePlugins", "PGamma calling initPlugin")));
    }
    // The files are tried in the directory's own order, up to the first that yields an instance.
    void firstMatchingFileThatYieldsAnInstanceWins()
    {
        TestFiles::writeAppFile("/libTwin.txt", "not a library"); // no library suffix: never tried
        QDir dir(TestFiles::appDir(), "libTwin*");
        QStringList expected;
        QString tag;
        for (const QString &file : dir.entryList(QDir::Files, QDir::NoSort)) {
            const QString path = dir.absoluteFilePath(file);
            if (!file.endsWith(".so"))
                continue;
            tag = file == "libTwin.so" ? "TwinPlain" : "TwinB";
            expected << pcLine("loadPlugin",
                               file == "libTwin-x.so"
                                   ? path + ": error : "
                                   : "strFileName = " + path +
                                         ", QObject* plugin loaded successfully Twin");
            if (file != "libTwin-x.so")
                break;
        }
        auto container = makeLoading("Main", {entry("Twin")});
        LogCapture log;
        QVERIFY(container->GetPlugin("CTwin", 0));
        QStringList seen = log.texts().filter(pcLine("loadPlugin", ""));
        for (QString &text : seen)
            if (text.contains(": error : "))
                text.truncate(text.indexOf(": error : ") + 10);
        QCOMPARE(seen, expected);
        QCOMPARE(events(log, "Load:"), QStringList{"Load:" + tag});
    }
    // IsPluginAvailable loads without initialising (by clsid only); GetPlugin also takes a name and
    // hands back the clsid; a disabled record is never handed out; UnloadPlugin by name does
    // nothing.
    void handingOutAndUnloadingOne()
    {
        auto container =
            makeLoading("Main", {entry("Alpha"), entry("Beta", true, true)}, {"CBeta"});
        LogCapture log;
        QVERIFY(container->IsPluginAvailable("CAlpha"));
        QVERIFY(!container->IsPluginAvailable("PAlpha") && !container->IsPluginAvailable("CBeta"));
        QCOMPARE(container->recordsText(true), "CAlpha=ael CBeta=as");
        QCOMPARE(events(log), QStringList{"Load:Alpha"});
        QString key = "PAlpha", unknown = "Nobody";
        QObject *plugin = container->getPlugin(key, true, 0);
        QVERIFY(key == "CAlpha" && plugin && plugin == container->record("CAlpha")->Plugin());
        QCOMPARE(container->GetPlugin("PAlpha", 0), plugin);
        QVERIFY(!container->getPlugin(unknown, true, 0) && unknown.isNull());
        QVERIFY(!container->GetPlugin("CBeta", 0) && !container->GetPlugin("PBeta", 0));
        container->LoadAllStaticOrActivePlugin();
        container->UpdateAllStaticOrActivePlugins();
        QVERIFY(!container->UnloadPlugin("PAlpha"));
        QCOMPARE(container->recordsText(true), "CAlpha=aeli CBeta=as");
        QVERIFY(container->UnloadPlugin("CAlpha"));
        QVERIFY(!container->record("CAlpha")->Plugin() && !container->record("CAlpha")->Loader());
        QVERIFY(!container->UnloadPlugin("CAlpha"));
        QCOMPARE(container->recordsText(true), "CAlpha=ae CBeta=as");
        QCOMPARE(events(log), (QStringList{"Load:Alpha", "Initialize:Alpha", "Unload:Alpha"}));
        QVERIFY(log.containsInOrder({pcLine("IsPluginAvailable", "CAlpha is available"),
                                     pcLine("IsPluginAvailable", "PAlpha is not available"),
                                     pcLine("IsPluginAvailable", "CBeta is not available"),
                                     pcLine("getPlugin", "Alpha plugin loaded,,,"),
                                     pcLine("unloadPlugin", "plugin CAlpha unloaded")}));
        QCOMPARE(log.count(pcLine("getPlugin", "CBeta not enabled")), 2);
    }
    // Interface numbers go through QueryInterface; a plugin without the base interface is loaded
    // but never initialised or released; a library that is no plugin is refused. DestroyPlugin
    // releases only an initialised plugin that is not the main one, named by clsid.
    void oddPluginsAndInterfaceNumbers()
    {
        auto container =
            makeLoading("CMainFrame", {entry("MainFrame"), entry("Alpha"), entry("Beta"),
                                       entry("NoBase"), entry("NotAPlugin")});
        LogCapture log;
        QObject *mainFrame = container->GetPlugin("CMainFrame", 4113);
        QVERIFY(mainFrame && mainFrame == container->record("CMainFrame")->Plugin());
        QVERIFY(!container->GetPlugin("CMainFrame", 8209) && !container->GetPlugin("CAlpha", 4097));
        QVERIFY(container->GetPlugin("CAlpha", 0) && !container->GetPlugin("CNoBase", 4097));
        QVERIFY(!container->GetPlugin("CNotAPlugin", 0) && container->IsPluginAvailable("CBeta"));
        QCOMPARE(events(log, "QueryInterface:"),
                 (QStringList{"QueryInterface:MainFrame:4113", "QueryInterface:MainFrame:8209",
                              "QueryInterface:Alpha:4097"}));
        const QString file = TestFiles::appDir() + "/libNotAPlugin.so";
        QCOMPARE(log.texts().filter(pcLine("loadPlugin", file + ": error : ")).size(), 1);
        QVERIFY(log.contains(pcLine("getPlugin", "NotAPlugin plugin NOT LOADED !!!,,,")));
        QCOMPARE(container->recordsText(true),
                 "CMainFrame=aeli CAlpha=aeli CBeta=ael CNoBase=ael CNotAPlugin=ae");

        log.clear();
        QVERIFY(container->DestroyPlugin("CAlpha") && !container->DestroyPlugin("CBeta"));
        QVERIFY(!container->DestroyPlugin("CMainFrame") && !container->DestroyPlugin("PAlpha"));
        QVERIFY(!container->DestroyPlugin("CNoBase"));
        QCOMPARE(log.texts(), (QStringList{"Destroying Plugin Name: PAlpha, Plugin ClsID: CAlpha",
                                           "@Release:Alpha"}));

        // The destructor releases the initialised plugins with the base interface, the main one
        // last, and unloads every library, the main one last.
        log.clear();
        container.reset();
        QCOMPARE(events(log, "Release:"), (QStringList{"Release:Alpha", "Release:MainFrame"}));
        QCOMPARE(events(log, "Unload:").size(), 4);
        QCOMPARE(events(log).last(), QStringLiteral("Unload:MainFrame"));
    }
    void updateFollowsTheEnabledFlags_data()
    {
        QTest::addColumn<QString>("mainPlugin");
        QTest::newRow("main plugin named by clsid") << "CMainFrame";
        QTest::newRow("main plugin named by name") << "PMainFrame";
    }
    // Loads what became enabled, releases and unloads what became disabled; the main plugin is
    // protected only when the file names it by clsid.
    void updateFollowsTheEnabledFlags()
    {
        QFETCH(QString, mainPlugin);
        const bool mainProtected = mainPlugin == "CMainFrame";
        auto container = makeLoading(
            mainPlugin, {entry("Alpha"), entry("Beta"), entry("Gamma"), entry("MainFrame")},
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
        QCOMPARE(container->recordsText(true), "CAlpha=aeli CBeta=a CGamma=aeli CMainFrame=" +
                                                   QString(mainProtected ? "ali" : "a"));
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
    void unloadAllPlugins_data()
    {
        QTest::addColumn<QString>("mainPlugin");
        QTest::addColumn<QString>("alphaClsids");
        QTest::addColumn<QString>("sorted");
        QTest::newRow("main plugin named by clsid") << "CMainFrame"
                                                    << "CAlpha"
                                                    << "R:Alpha R:Beta U:Alpha U:Beta U:MainFrame";
        // Named by name, the main plugin goes with the others and is released a second time.
        QTest::newRow("main plugin named by name")
            << "PMainFrame"
            << "CAlpha"
            << "R:Alpha R:Beta R:MainFrame U:Alpha U:Beta U:MainFrame";
        // Two records on one library: the first unload cannot take the library away.
        QTest::newRow("one library, two records")
            << "CMainFrame"
            << "CA1 CA2"
            << "R:Alpha R:Alpha R:Beta U:Alpha U:Beta U:MainFrame";
    }
    // Releases (in hash order) come before unloads, the main plugin's release after the others;
    // "sorted" lists the other events sorted.
    void unloadAllPlugins()
    {
        QFETCH(QString, mainPlugin);
        QFETCH(QString, alphaClsids);
        QFETCH(QString, sorted);
        const bool unloaded = !alphaClsids.contains(' ');
        QList<PluginEntry> plugins{entry("MainFrame"), entry("Beta")};
        for (const QString &clsid : alphaClsids.split(' '))
            plugins.append({"P" + clsid, clsid, "Alpha"});
        auto container = makeLoading(mainPlugin, plugins);
        container->LoadAllStaticOrActivePlugin();
        LogCapture log;
        QCOMPARE(container->unloadAllPlugins(), unloaded);

        QStringList all =
            events(log).replaceInStrings("Release:", "R:").replaceInStrings("Unload:", "U:");
        const int mainRelease = all.lastIndexOf("R:MainFrame");
        QVERIFY(mainRelease > 0);
        QCOMPARE(all.indexOf(QRegularExpression("U:.*")), mainRelease + 1);
        if (mainPlugin == "CMainFrame")
            QCOMPARE(all.last(), QStringLiteral("U:MainFrame"));
        all.removeAt(mainRelease);
        all.sort();
        QCOMPARE(all.join(' '), sorted);
        QCOMPARE(
            log.texts().filter(pcLine("unloadAllPlugins", "bUnloaded ")),
            (QStringList{pcLine("unloadAllPlugins", "bUnloaded 1"),
                         pcLine("unloadAllPlugins", unloaded ? "bUnloaded 1" : "bUnloaded 0")}));
        QCOMPARE(log.texts().filter("NOT UNLOADED; ").size(), unloaded ? 0 : 1);
        QCOMPARE(container->GetLoadedPluginClsids().isEmpty(), unloaded);
        // The record whose unload failed still claims its plugin, whose library has gone since.
        for (PluginInfo *info : container->records()) {
            info->SetLoaded(false);
            info->SetPlugin(nullptr);
        }
    }
};

QTEST_GUILESS_MAIN(TestPluginLoading)
#include "tst_pluginloading.moc"
