// The readers of the plugin library file and the customization file, and the rules that switch
// records on and off for everybody, an operator and a device.
#include "Change.h"
#include "CommonUtils.h"
#include "ContainerProbe.h"

#include <QDir>
#include <QtTest>

namespace {

// Records P1/C1/u1 to Pn/Cn/un.
std::unique_ptr<ContainerProbe> makeNumbered(const QStringList &common, const QByteArray &sections,
                                             int count = 6)
{
    QList<PluginEntry> plugins;
    for (int i = 1; i <= count; ++i)
        plugins.append(
            {"P" + QString::number(i), "C" + QString::number(i), "u" + QString::number(i)});
    return makeContainer(pluginsLibFile("Main", plugins), pluginsConfigFile(common, sections));
}

QString finding(const char *what)
{
    return pcLine("IsCustomizationForDevice",
                  "need to " + QString::fromLatin1(what) + " pPluginInfo->Clsid ()");
}

} // namespace

class TestPluginConfig : public QObject
{
    Q_OBJECT

private slots:
    void init() { freshConfig(); }

    // The url rewriting, flags that need the exact text "true", decimal types; a plugin without
    // "static" takes in the next one's children, and those after "static" are nobody's; the hash
    // keeps the later of two records with one clsid, the list both.
    void pluginLibraryFile()
    {
        const QByteArray xml = R"(<plugins><mainplugin>First</mainplugin>
    <plugin><clsid>U1</clsid><url>.\Foo.dll</url><static/></plugin>
    <plugin><clsid>U2</clsid><url>Foo.DLL</url><static/></plugin>
    <plugin><clsid>U3</clsid><url>lib.dllx.dll</url><static/></plugin>
    <plugin><clsid>U4</clsid><url>a.\b.\c</url><static/></plugin>
    <plugin><clsid>U5</clsid><url>./Foo</url><static/></plugin>
    <plugin><clsid>F1</clsid><active>true</active><setting_title>true</setting_title><static>true</static></plugin>
    <plugin><clsid>F2</clsid><active>True</active><setting_title>1</setting_title><static> true</static></plugin>
    <plugin><clsid>T1</clsid><type>-3</type><static/></plugin>
    <plugin><clsid>T2</clsid><type>abc</type><static/></plugin>
    <plugin><clsid>T3</clsid><type>12x</type><static/></plugin>
    <plugin><name>A</name><clsid>CA</clsid><url>UA</url><active>true</active><setting_title>true</setting_title></plugin>
    <plugin><name>B</name><clsid>CB</clsid><type>5</type><static>true</static></plugin>
    <plugin><name>D</name><clsid>CD</clsid><static>false</static><name>X</name><clsid>CX</clsid></plugin>
    <plugin><name>First</name><clsid>DUP</clsid><type>3</type><setting_title>true</setting_title><static/></plugin>
    <plugin><name>Second</name><clsid>DUP</clsid><type>3</type><setting_title>true</setting_title><static/></plugin>
    <plugin><name>Same</name><clsid>C1</clsid><static/></plugin>
    <plugin><name>Same</name><clsid>C2</clsid><static/></plugin>
    <mainplugin>XFramePlugin</mainplugin></plugins>)";
        LogCapture log;
        auto container = makeContainer(xml, pluginsConfigFile({"DUP"}));
        QCOMPARE(container->recordsText(),
                 ":U1:Foo:0:; :U2:Foo.DLL:0:; :U3:libx.dll:0:; :U4:ab.\\c:0:; :U5:./Foo:0:; "
                 ":F1::0:ast; :F2::0:; :T1::-3:; :T2::0:; :T3::0:; B:CB:UA:5:ast; D:CD::0:; "
                 "First:DUP::3:t; Second:DUP::3:te; Same:C1::0:; Same:C2::0:");
        QCOMPARE(container->hashSize(), 15);
        QCOMPARE(container->GetPluginNameByClsid("DUP"), QStringLiteral("Second"));
        QCOMPARE(container->GetPluginClsidsByType(3), (QList<QString>{"DUP", "DUP"}));
        QCOMPARE(container->GetSettingsPlugins(), QList<QString>{"DUP"});
        QVERIFY(container->GetClsidByName("Same") == "C2" &&
                container->GetClsidByName("same").isNull());
        QCOMPARE(container->GetMainFramePluginName(), QStringLiteral("XFramePlugin"));
        QVERIFY(
            log.containsInOrder({pcLine("populatePluginInfo", "m_strMainPlugin = First"),
                                 pcLine("populatePluginInfo", "m_strMainPlugin = XFramePlugin")}));

        QVERIFY(!container->isPluginInList("dup") && container->GetPluginType("dup") == -1);
        // Removal takes the hash's record, the later one, out of the list.
        container->removePluginInfo("DUP");
        QCOMPARE(container->records().at(12)->Name() + container->records().at(13)->Name(),
                 "FirstSame");
    }
    void missingAndUnreadableFiles()
    {
        LogCapture log;
        const QString missing = appConfigPath("none.xml");
        const QString directory = appConfigPath("adir.xml");
        QVERIFY(QDir().mkpath(directory));
        ContainerProbe container(missing, directory, true);
        QVERIFY(QTest::qWaitFor([&] { return container.IsPluginsConfigInitialized(); }, 5000));
        QVERIFY(log.containsInOrder(
            {pcLine("PluginContainer", "entered, strPluginsFile = " + missing),
             "File " + missing + " does not exist", "Failed to open file " + directory,
             pcLine("PluginContainer", "DeviceMgrUIPlugin LOAD FAILED !!!,,,")}));
        // No language file for the main frame: the language falls back.
        QCOMPARE(Change::GetLangName(), QStringLiteral("en-us"));
        QVERIFY(container.records().isEmpty() && container.commonSet().isEmpty());
        QVERIFY(!container.populatePluginInfo(missing) && !container.populatePluginInfo(directory));
    }
    // "D1" lacks its "plugin" child, so it runs on to the end of the next section's "plugin".
    void commonAndDeviceSections()
    {
        const QByteArray sections = deviceSection("Dev1", {"C2", "C2", "GHOST"}, {"C3", "GHOST"}) +
                                    "<device name=\"D1\"><add clsid=\"C1\"/></device>\n" +
                                    deviceSection("D2", {"C2"}, {"C3"});
        LogCapture log;
        auto container = makeNumbered({"C1", "GHOST"}, sections, 3);
        QVERIFY(container->commonSet() == QSet<QString>{"C1"} &&
                container->enabledClsids() == QStringList{"C1"});
        QCOMPARE(container->enableList("common") + container->enableList("Dev1") +
                     container->disableList("Dev1") + container->enableList("D1") +
                     container->disableList("D1") + container->enableList("D2"),
                 (QStringList{"C1", "C2", "C2", "C3", "C2", "C1", "C3"}));
        // An unknown common item goes without a word.
        QCOMPARE(log.texts().filter(QRegularExpression("readDeviceElements: (common|Dev1): ")),
                 (QStringList{"readDeviceElements: common: Enabling need to enable C1 plugin",
                              "readDeviceElements: Dev1: Enabling need to enable C2 plugin",
                              "readDeviceElements: Dev1: Enabling need to enable C2 plugin",
                              "readDeviceElements: Dev1: have to enable GHOST, but not in list",
                              "readDeviceElements: Dev1: Disabling need to enable C3 plugin",
                              "readDeviceElements: Dev1: have to disable GHOST, but not in list"}));
    }
    // Only the operator's own "customize" section counts: its "add" switches plugins on by default,
    // its "remove" deletes the record. Then common < device add < device remove. The check for a
    // device counts a plugin only the operator switches on as one to switch off (kept so).
    void precedence_data()
    {
        QTest::addColumn<QString>("device");
        QTest::addColumn<QStringList>("enabled");
        QTest::addColumn<bool>("check");
        QTest::newRow("no device") << "" << QStringList{"C1", "C2", "C3"} << true;
        QTest::newRow("device adds and removes") << "Dev" << QStringList{"C2", "C3", "C4"} << true;
        QTest::newRow("device adds") << "Other" << QStringList{"C1", "C2", "C3", "C4"} << false;
        QTest::newRow("device names a removed record")
            << "Ghostly" << QStringList{"C1", "C2", "C3"} << true;
    }
    void precedence()
    {
        QFETCH(QString, device);
        QFETCH(QStringList, enabled);
        QFETCH(bool, check);
        CommonUtils::SetSettings("customize", "operator", "OpA");
        LogCapture log;
        auto container =
            makeNumbered({"C1", "C2", "C5"},
                         deviceSection("OpA", {"C3", "GHOST"}, {"C5", "GHOST"}, "customize") +
                             deviceSection("OpB", {"C4"}, {"C1"}, "customize") +
                             deviceSection("Dev", {"C4", "C6", "C5"}, {"C1", "C6"}) +
                             deviceSection("Other", {"C4", "C3"}, {}) +
                             deviceSection("Ghostly", {"C5"}, {"C5"}));
        QVERIFY(log.contains("getDeviceName: m_strCustomizeName =>OpA<="));
        QCOMPARE(log.texts().filter(QRegularExpression("^(readCustomizeElements|removed )")),
                 (QStringList{"readCustomizeElements: C3 will be enabled by default",
                              "readCustomizeElements: C5 will be removed", "removed C5",
                              "readCustomizeElements: GHOST will be removed"}));
        QVERIFY(container->enabledClsids() == QStringList({"C1", "C2", "C3"}) &&
                container->records().size() == 5);
        log.clear();
        container->ApplyCustomizationForDevice(device);
        QCOMPARE(container->enabledClsids(), enabled);
        // The common set still names the removed C5; updating it is silent.
        QVERIFY(log.texts().filter("C5").isEmpty());
        QCOMPARE(log.texts().filter("updateDeviceCustomization").isEmpty(), device.isEmpty());
        QCOMPARE(container->IsCustomizationForDevice(device), check);
        // Each application starts from scratch.
        container->ApplyCustomizationForDevice("Dev");
        container->ApplyCustomizationForDevice(device);
        QCOMPARE(container->enabledClsids(), enabled);
    }
    void isCustomizationForDevice_data()
    {
        QTest::addColumn<QStringList>("enabled");
        QTest::addColumn<QString>("device");
        QTest::addColumn<QString>("line");
        QTest::newRow("flags match") << QStringList{"C1", "C2"} << "DevA" << QString();
        QTest::newRow("1: device add is off") << QStringList{"C1"} << "DevA" << finding("enable");
        QTest::newRow("2: device remove is on")
            << QStringList{"C1", "C2", "C3"} << "DevA" << finding("disable");
        QTest::newRow("3: common off, device removes it") << QStringList{} << "DevC" << QString();
        QTest::newRow("4: on without reason")
            << QStringList{"C1", "C2", "C4"} << "DevA" << finding("disable");
    }
    // True (with its one line) at the first finding; nothing is changed.
    void isCustomizationForDevice()
    {
        QFETCH(QStringList, enabled);
        QFETCH(QString, device);
        QFETCH(QString, line);
        auto container = makeNumbered({"C1"}, deviceSection("DevA", {"C2"}, {"C3"}) +
                                                  deviceSection("DevC", {}, {"C1"}));
        container->disableAllPlugins();
        for (const QString &clsid : enabled)
            container->updatePluginInfo(clsid, true);
        LogCapture log;
        QCOMPARE(container->IsCustomizationForDevice(device), !line.isEmpty());
        QCOMPARE(log.texts(), line.isEmpty() ? QStringList() : QStringList{line});
        QCOMPARE(container->enabledClsids(), enabled);
    }
};

QTEST_GUILESS_MAIN(TestPluginConfig)
#include "tst_pluginconfig.moc"
