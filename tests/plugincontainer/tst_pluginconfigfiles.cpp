// The readers of the plugin library file and the customization file.
#include "CommonUtils.h"
#include "ContainerProbe.h"
#include "LogCapture.h"

#include <QDir>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

const QString kSource = QStringLiteral("../../src/core/PluginContainer/PluginContainer");

QByteArray onePlugin(const QByteArray &children)
{
    return "<plugins><plugin>" + children + "</plugin></plugins>";
}

// The error a streaming reader reports for the document, with its position.
struct XmlError
{
    QString text;
    qint64 line = 0;
    qint64 column = 0;
};

XmlError firstError(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        reader.readNext();
    return {reader.errorString(), reader.lineNumber(), reader.columnNumber()};
}

} // namespace

class TestPluginConfigFiles : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        TestFiles::useFreshSettings();
        TestFiles::removeAppPath(QStringLiteral("/config"));
    }

    void urlIsRewritten_data();
    void urlIsRewritten();
    void flagsNeedExactTrue_data();
    void flagsNeedExactTrue();
    void typeIsDecimal_data();
    void typeIsDecimal();
    void staticClosesTheRecord();
    void duplicateClsidKeepsLaterInHashBothInList();
    void laterNameWinsInGetClsidByName();
    void mainPluginIsStoredAndLaterOneWins();
    void unknownClsidLookups();
    void pluginFileErrorLine();
    void configFileErrorLine();
    void missingAndUnreadableFiles();
    void commonAndDeviceSections();
    void deviceSectionEndsWithPluginEndTag();
    void customizeSectionOfOtherOperatorIgnored();
    void customizeSectionOfThisOperator();
    void emptyOperatorMatchesNamelessSection();
};

void TestPluginConfigFiles::urlIsRewritten_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("url");
    QTest::newRow("dot-backslash and dll") << ".\\Foo.dll"
                                           << "Foo";
    QTest::newRow("upper-case DLL stays") << "Foo.DLL"
                                          << "Foo.DLL";
    QTest::newRow("only first .dll") << "lib.dllx.dll"
                                     << "libx.dll";
    QTest::newRow("only first dot-backslash") << "a.\\b.\\c"
                                              << "ab.\\c";
    QTest::newRow("dot-slash stays") << "./Foo"
                                     << "./Foo";
    QTest::newRow("plain") << "XFramePlugin"
                           << "XFramePlugin";
}

void TestPluginConfigFiles::urlIsRewritten()
{
    QFETCH(QString, text);
    QFETCH(QString, url);
    auto container = makeContainer(onePlugin("<name>P</name><clsid>C1</clsid><url>" +
                                             text.toUtf8() + "</url><static>true</static>"),
                                   pluginsConfigFile({}));
    QCOMPARE(container->records().size(), 1);
    QCOMPARE(container->record(QStringLiteral("C1"))->Url(), url);
}

void TestPluginConfigFiles::flagsNeedExactTrue_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("value");
    QTest::newRow("true") << "true" << true;
    QTest::newRow("True") << "True" << false;
    QTest::newRow("TRUE") << "TRUE" << false;
    QTest::newRow("1") << "1" << false;
    QTest::newRow("blank around") << " true" << false;
    QTest::newRow("empty") << "" << false;
}

void TestPluginConfigFiles::flagsNeedExactTrue()
{
    QFETCH(QString, text);
    QFETCH(bool, value);
    const QByteArray t = text.toUtf8();
    auto container = makeContainer(onePlugin("<name>P</name><clsid>C1</clsid><active>" + t +
                                             "</active><setting_title>" + t +
                                             "</setting_title><static>" + t + "</static>"),
                                   pluginsConfigFile({}));
    const PluginInfo *info = container->record(QStringLiteral("C1"));
    QVERIFY(info);
    QCOMPARE(info->IsActive(), value);
    QCOMPARE(info->IsSettingTitle(), value);
    QCOMPARE(info->IsStatic(), value);
    QVERIFY(!info->IsEnabled());
    QVERIFY(!info->IsLoaded());
}

void TestPluginConfigFiles::typeIsDecimal_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("type");
    QTest::newRow("number") << "7" << 7;
    QTest::newRow("negative") << "-3" << -3;
    QTest::newRow("letters") << "abc" << 0;
    QTest::newRow("trailing letters") << "12x" << 0;
    QTest::newRow("hex") << "0x10" << 0;
}

void TestPluginConfigFiles::typeIsDecimal()
{
    QFETCH(QString, text);
    QFETCH(int, type);
    auto container = makeContainer(onePlugin("<name>P</name><clsid>C1</clsid><type>" +
                                             text.toUtf8() + "</type><static>false</static>"),
                                   pluginsConfigFile({}));
    QCOMPARE(container->GetPluginType(QStringLiteral("C1")), type);
    QCOMPARE(container->GetPluginClsidsByType(type), QList<QString>{QStringLiteral("C1")});
}

// A plugin without "static" takes in the next plugin's children; children after "static" are
// nobody's.
void TestPluginConfigFiles::staticClosesTheRecord()
{
    const QByteArray xml = "<plugins>"
                           "<plugin><name>A</name><clsid>CA</clsid><url>UA</url>"
                           "<active>true</active><setting_title>true</setting_title></plugin>"
                           "<plugin><name>B</name><clsid>CB</clsid><type>5</type>"
                           "<static>true</static></plugin>"
                           "<plugin><name>D</name><clsid>CD</clsid><static>false</static>"
                           "<name>X</name><clsid>CX</clsid></plugin>"
                           "</plugins>";
    auto container = makeContainer(xml, pluginsConfigFile({}));
    const QList<PluginInfo *> records = container->records();
    QCOMPARE(records.size(), 2);
    const PluginInfo *merged = records.at(0);
    QCOMPARE(merged->Name(), QStringLiteral("B"));
    QCOMPARE(merged->Clsid(), QStringLiteral("CB"));
    QCOMPARE(merged->Url(), QStringLiteral("UA"));
    QVERIFY(merged->IsActive());
    QVERIFY(merged->IsSettingTitle());
    QVERIFY(merged->IsStatic());
    QCOMPARE(merged->Type(), 5);
    QCOMPARE(records.at(1)->Name(), QStringLiteral("D"));
    QCOMPARE(records.at(1)->Clsid(), QStringLiteral("CD"));
    QVERIFY(!container->isPluginInList(QStringLiteral("CA")));
    QVERIFY(!container->isPluginInList(QStringLiteral("CX")));
}

void TestPluginConfigFiles::duplicateClsidKeepsLaterInHashBothInList()
{
    auto container = makeContainer(
        pluginsLibFile(QStringLiteral("Main"), {{"First", "DUP", "u1", true, false, true, 3},
                                                {"Second", "DUP", "u2", true, false, true, 3}}),
        pluginsConfigFile({QStringLiteral("DUP")}));
    QCOMPARE(container->GetPluginNameByClsid(QStringLiteral("DUP")), QStringLiteral("Second"));
    QCOMPARE(container->records().size(), 2);
    QCOMPARE(container->hashSize(), 1);
    QCOMPARE(container->GetPluginClsidsByType(3), (QList<QString>{"DUP", "DUP"}));
    // Only the hash's record is switched on by the rules.
    QVERIFY(!container->records().at(0)->IsEnabled());
    QVERIFY(container->records().at(1)->IsEnabled());
    QCOMPARE(container->GetSettingsPlugins(), QList<QString>{QStringLiteral("DUP")});
}

void TestPluginConfigFiles::laterNameWinsInGetClsidByName()
{
    auto container = makeContainer(
        pluginsLibFile(QStringLiteral("Main"),
                       {{"Same", "C1", "u1"}, {"Other", "C2", "u2"}, {"Same", "C3", "u3"}}),
        pluginsConfigFile({}));
    QCOMPARE(container->GetClsidByName(QStringLiteral("Same")), QStringLiteral("C3"));
    QCOMPARE(container->GetClsidByName(QStringLiteral("same")), QString());
    QCOMPARE(container->GetClsidByName(QStringLiteral("Other")), QStringLiteral("C2"));
}

void TestPluginConfigFiles::mainPluginIsStoredAndLaterOneWins()
{
    LogCapture log;
    auto container = makeContainer(
        "<plugins><mainplugin>First</mainplugin><mainplugin>XFramePlugin</mainplugin></plugins>",
        pluginsConfigFile({}));
    QCOMPARE(container->GetMainFramePluginName(), QStringLiteral("XFramePlugin"));
    QVERIFY(log.containsInOrder(
        {kSource + QStringLiteral(": populatePluginInfo: m_strMainPlugin = First"),
         kSource + QStringLiteral(": populatePluginInfo: m_strMainPlugin = XFramePlugin")}));
}

void TestPluginConfigFiles::unknownClsidLookups()
{
    auto container = makeContainer(pluginsLibFile(QStringLiteral("Main"), {{"P", "C1", "u1"}}),
                                   pluginsConfigFile({QStringLiteral("C1")}));
    const QString unknown = QStringLiteral("c1");
    QVERIFY(!container->IsPluginLoaded(unknown));
    QVERIFY(!container->isPluginInList(unknown));
    QCOMPARE(container->GetPluginType(unknown), -1);
    QCOMPARE(container->GetPluginNameByClsid(unknown), QString());
    QCOMPARE(container->GetLastError(), 0);
    QVERIFY(!container->IsPluginAvailable(QStringLiteral("NOPE")));
    QCOMPARE(container->GetLastError(), 0);
}

void TestPluginConfigFiles::pluginFileErrorLine()
{
    const QByteArray xml =
        "<plugins>\n<plugin><name>A</name><clsid>CA</clsid><static>true</static></plugin>\n"
        "<plugin><name>B</name></oops>\n</plugins>\n";
    const XmlError error = firstError(xml);
    QVERIFY(!error.text.isEmpty());
    LogCapture log;
    auto container = makeContainer(xml, pluginsConfigFile({}));
    const QString path = appConfigPath(QStringLiteral("pluginslib.xml"));
    const QString line = QStringLiteral("Error:  %1  in file  %2  at line  %3 ,column  %4 ")
                             .arg(error.text, path)
                             .arg(error.line)
                             .arg(error.column);
    QVERIFY2(log.contains(line), qPrintable(log.texts().join(QLatin1Char('\n'))));
    // What was read before the error stays.
    QVERIFY(container->isPluginInList(QStringLiteral("CA")));
    QVERIFY(!container->populatePluginInfo(path));
    QVERIFY(container->populatePluginInfo(appConfigPath(QStringLiteral("PluginsConfig.xml"))));
}

void TestPluginConfigFiles::configFileErrorLine()
{
    const QByteArray config = "<config>\n<common><item clsid=\"C1\"/></common>\n"
                              "<device name=\"D\"><plugin><add clsid=\"C2\"/></plugin></device>\n"
                              "<bogus>\n</config>\n<common><item clsid=\"C2\"/></common>\n";
    const XmlError error = firstError(config);
    QVERIFY(!error.text.isEmpty());
    LogCapture log;
    auto container = makeContainer(
        pluginsLibFile(QStringLiteral("Main"), {{"P1", "C1", "u1"}, {"P2", "C2", "u2"}}), config);
    const QString line = QStringLiteral("Error: %1  in file  %2  at line  %3 , column  %4 ")
                             .arg(error.text, appConfigPath(QStringLiteral("PluginsConfig.xml")))
                             .arg(error.line)
                             .arg(error.column);
    QVERIFY2(log.contains(line), qPrintable(log.texts().join(QLatin1Char('\n'))));
    QCOMPARE(container->commonSet(), QSet<QString>{QStringLiteral("C1")});
    QCOMPARE(container->enableList(QStringLiteral("D")), QStringList{QStringLiteral("C2")});
}

void TestPluginConfigFiles::missingAndUnreadableFiles()
{
    LogCapture log;
    const QString missing = TestFiles::appDir() + QStringLiteral("/config/none.xml");
    const QString directory = TestFiles::appDir() + QStringLiteral("/config/adir.xml");
    QVERIFY(QDir().mkpath(directory));
    ContainerProbe container(missing, directory, true);
    QVERIFY(QTest::qWaitFor([&] { return container.IsPluginsConfigInitialized(); }, 5000));
    QVERIFY(log.contains(QStringLiteral("File %1 does not exist").arg(missing)));
    QVERIFY(log.contains(QStringLiteral("Failed to open file %1").arg(directory)));
    QVERIFY(container.records().isEmpty());
    QVERIFY(container.commonSet().isEmpty());
    QVERIFY(!container.populatePluginInfo(missing));
    QVERIFY(!container.populatePluginInfo(directory));
    QCOMPARE(container.GetClsidByName(QString()), QString());
    QVERIFY(container.GetLoadedPluginClsids().isEmpty());
    QVERIFY(log.contains(
        kSource + QStringLiteral(": PluginContainer: DeviceMgrUIPlugin LOAD FAILED !!!,,,")));
}

void TestPluginConfigFiles::commonAndDeviceSections()
{
    LogCapture log;
    auto container = makeContainer(
        pluginsLibFile(QStringLiteral("Main"),
                       {{"P1", "C1", "u1"}, {"P2", "C2", "u2"}, {"P3", "C3", "u3"}}),
        pluginsConfigFile({"C1", "GHOST"},
                          deviceSection("Dev1", {"C2", "C2", "GHOST"}, {"C3", "GHOST"})));
    QCOMPARE(container->commonSet(), QSet<QString>{QStringLiteral("C1")});
    QCOMPARE(container->enableList(QStringLiteral("common")), QStringList{QStringLiteral("C1")});
    // The same pair may be filed twice.
    QCOMPARE(container->enableList(QStringLiteral("Dev1")), (QStringList{"C2", "C2"}));
    QCOMPARE(container->disableList(QStringLiteral("Dev1")), QStringList{QStringLiteral("C3")});
    QVERIFY(log.contains(
        QStringLiteral("readDeviceElements: common: Enabling need to enable C1 plugin")));
    QVERIFY(log.contains(
        QStringLiteral("readDeviceElements: Dev1: Enabling need to enable C2 plugin")));
    QVERIFY(log.contains(
        QStringLiteral("readDeviceElements: Dev1: Disabling need to enable C3 plugin")));
    QVERIFY(log.contains(
        QStringLiteral("readDeviceElements: Dev1: have to enable GHOST, but not in list")));
    QVERIFY(log.contains(
        QStringLiteral("readDeviceElements: Dev1: have to disable GHOST, but not in list")));
    // An unknown common item goes without a word.
    QVERIFY(!log.contains(
        QStringLiteral("readDeviceElements: common: have to enable GHOST, but not in list")));
    QCOMPARE(container->enabledClsids(), QStringList{QStringLiteral("C1")});
}

void TestPluginConfigFiles::deviceSectionEndsWithPluginEndTag()
{
    const QByteArray sections = "  <device name=\"D1\"><add clsid=\"C1\"/></device>\n" +
                                deviceSection("D2", {"C2"}, {"C3"});
    auto container =
        makeContainer(pluginsLibFile(QStringLiteral("Main"),
                                     {{"P1", "C1", "u1"}, {"P2", "C2", "u2"}, {"P3", "C3", "u3"}}),
                      pluginsConfigFile({}, sections));
    QCOMPARE(container->enableList(QStringLiteral("D1")), (QStringList{"C2", "C1"}));
    QCOMPARE(container->disableList(QStringLiteral("D1")), QStringList{QStringLiteral("C3")});
    QVERIFY(container->enableList(QStringLiteral("D2")).isEmpty());
}

void TestPluginConfigFiles::customizeSectionOfOtherOperatorIgnored()
{
    CommonUtils::SetSettings(QStringLiteral("customize"), QStringLiteral("operator"),
                             QStringLiteral("OpA"));
    LogCapture log;
    auto container = makeContainer(
        pluginsLibFile(QStringLiteral("Main"), {{"P1", "C1", "u1"}, {"P2", "C2", "u2"}}),
        pluginsConfigFile({}, customizeSection("OpB", {"C1"}, {"C2"})));
    QVERIFY(log.contains(QStringLiteral("getDeviceName: m_strCustomizeName =>OpA<=")));
    QVERIFY(container->commonSet().isEmpty());
    QVERIFY(container->isPluginInList(QStringLiteral("C2")));
    QVERIFY(container->enabledClsids().isEmpty());
    QVERIFY(!log.contains(QStringLiteral("readCustomizeElements: C2 will be removed")));
}

void TestPluginConfigFiles::customizeSectionOfThisOperator()
{
    CommonUtils::SetSettings(QStringLiteral("customize"), QStringLiteral("operator"),
                             QStringLiteral("OpA"));
    LogCapture log;
    auto container = makeContainer(
        pluginsLibFile(QStringLiteral("Main"),
                       {{"P1", "C1", "u1"}, {"P2", "C2", "u2"}, {"P3", "C3", "u3"}}),
        pluginsConfigFile({"C3"}, customizeSection("OpA", {"C1", "C3", "GHOST"}, {"C2", "GHOST"})));
    QCOMPARE(container->commonSet(), (QSet<QString>{"C1", "C3"}));
    QVERIFY(log.contains(QStringLiteral("readCustomizeElements: C1 will be enabled by default")));
    QVERIFY(
        !log.contains(QStringLiteral("readCustomizeElements: GHOST will be enabled by default")));
    QVERIFY(log.contains(QStringLiteral("readCustomizeElements: C2 will be removed")));
    QVERIFY(log.contains(QStringLiteral("removed C2")));
    QVERIFY(log.contains(QStringLiteral("readCustomizeElements: GHOST will be removed")));
    QVERIFY(!log.contains(QStringLiteral("removed GHOST")));
    QVERIFY(!container->isPluginInList(QStringLiteral("C2")));
    QCOMPARE(container->records().size(), 2);
    // The operator's additions are not device-list entries.
    QCOMPARE(container->enableList(QStringLiteral("common")), QStringList{QStringLiteral("C3")});
    QCOMPARE(container->enabledClsids(), (QStringList{"C1", "C3"}));
}

void TestPluginConfigFiles::emptyOperatorMatchesNamelessSection()
{
    auto container = makeContainer(
        pluginsLibFile(QStringLiteral("Main"), {{"P1", "C1", "u1"}, {"P2", "C2", "u2"}}),
        pluginsConfigFile({}, "<customize><plugin><add clsid=\"C1\"/></plugin></customize>\n" +
                                  customizeSection("", {"C2"}, {})));
    QCOMPARE(container->commonSet(), (QSet<QString>{"C1", "C2"}));
}

QTEST_GUILESS_MAIN(TestPluginConfigFiles)
#include "tst_pluginconfigfiles.moc"
