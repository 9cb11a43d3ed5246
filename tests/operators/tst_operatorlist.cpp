#include "StatusBarOpListParse.h"

#include "LogCapture.h"
#include "TestFiles.h"

#include <QDir>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

const QString kDir = QStringLiteral("/plugins/StatusBarMgrPlugin/");
const QString kSource = QStringLiteral("../../src/core/common/StatusBarOpListParse");

const QByteArray kList = R"(<?xml version="1.0" encoding="UTF-8"?>
<OperatorList>
  <MccMnc>
    <Region descr="China"/>
    <Item mcc="460" mnc="01" shortdescr="CU" fulldescr="China Unicom" langid=""/>
    <Item mcc="460" mnc="00" shortdescr="CMCC" fulldescr="China Mobile" langid="IDS_OP_CMCC"/>
    <Item mcc="460" mnc="03" shortdescr="CT" fulldescr="China Telecom" langid="IDS_OP_MISSING"/>
    <Item mcc="460" mnc="07" shortdescr="Old" fulldescr="Old name"/>
    <Item mcc="460" mnc="07" shortdescr="New" fulldescr="New name"/>
    <Region descr="Austria"/>
    <Item mcc="232" mnc="01" shortdescr="A1" fulldescr="A1 Telekom"/>
    <Item mcc="232" mnc="001" shortdescr="A1 three digits" fulldescr="A1 Telekom 001"/>
    <Item mcc="232" mnc="10"/>
    <Unknown mcc="460" mnc="11" shortdescr="Ignored"/>
  </MccMnc>
  <MccOnly>
    <Item mcc="460" shortdescr="ABC" fulldescr="People's Republic of China" langid=""/>
    <Item mcc="232" shortdescr="AT-" fulldescr="Austria" langid="IDS_OP_AT"/>
    <Item mcc="228" shortdescr="CH-" fulldescr="Switzerland"/>
    <Item mcc="228" shortdescr="SUI " fulldescr="Switzerland"/>
  </MccOnly>
  <MccMnc>
    <Region descr="Late"/>
    <Item mcc="999" mnc="99" shortdescr="Late" fulldescr="Late"/>
    <Item mcc="460" mnc="01" shortdescr="Override" fulldescr="Override"/>
  </MccMnc>
</OperatorList>
)";

const QByteArray kLanguageFile = R"(<?xml version="1.0" encoding="UTF-8"?>
<lang>
  <item name="IDS_OP_CMCC">China Mobile (translated)</item>
  <item name="IDS_OP_AT">Austria, translated</item>
</lang>
)";

QStringList fields(const _ST_MCCMNC_ITEM &item)
{
    return {item.strShortDescr, item.strFullDescr, item.strRegionDescr, item.strLangId};
}

void writeList(const QByteArray &contents)
{
    QVERIFY(TestFiles::writeAppFile(kDir + "OperatorList.xml", contents));
}

// Where and why a reader stops on the given text: the same words the table's log line uses.
struct XmlError
{
    QString text;
    qint64 line;
    qint64 column;
};

XmlError firstXmlError(const QByteArray &contents)
{
    QXmlStreamReader reader(contents);
    while (!reader.atEnd())
        reader.readNext();
    return {reader.errorString(), reader.lineNumber(), reader.columnNumber()};
}

QString errorLine(const QString &lead, const XmlError &error)
{
    return QStringLiteral("%1 %2  at line  %3 , column  %4 ")
        .arg(lead, error.text)
        .arg(error.line)
        .arg(error.column);
}

} // namespace

class tst_OperatorList : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void lookup_data();
    void lookup();
    void readsOnceAndLogsTheReaders();
    void destroyThenGetReadsAfresh();
    void missingFile();
    void fileThatCannotBeOpened();
    void malformedXml_data();
    void malformedXml();
    void listWithoutMccOnly();
    void loadFileAddsToTheTables();
};

void tst_OperatorList::initTestCase()
{
    TestFiles::useFreshSettings();
    QVERIFY(TestFiles::writeAppFile(kDir + "StatusBarMgrPlugin_en-us.lang", kLanguageFile));
}

void tst_OperatorList::init()
{
    writeList(kList);
}

void tst_OperatorList::cleanup()
{
    StatusBarOpListParse::DestroyInstance();
}

void tst_OperatorList::lookup_data()
{
    QTest::addColumn<QString>("mcc");
    QTest::addColumn<QString>("mnc");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("exact pair beats MCC-only")
        << "460"
        << "01" << QStringList{"CU", "China Unicom", "China", ""};
    QTest::newRow("translated short name")
        << "460"
        << "00" << QStringList{"China Mobile (translated)", "China Mobile", "China", "IDS_OP_CMCC"};
    QTest::newRow("language key without translation")
        << "460"
        << "03" << QStringList{"CT", "China Telecom", "China", "IDS_OP_MISSING"};
    QTest::newRow("later duplicate wins") << "460"
                                          << "07" << QStringList{"New", "New name", "China", ""};
    QTest::newRow("MCC-only composition") << "460"
                                          << "02" << QStringList{"ABC02", "ABC", "", ""};
    QTest::newRow("MCC-only, translated: MNC dropped too")
        << "232"
        << "05" << QStringList{"Austria, translated", "AT-", "", "IDS_OP_AT"};
    QTest::newRow("MCC-only, later duplicate wins")
        << "228"
        << "99" << QStringList{"SUI 99", "SUI ", "", ""};
    QTest::newRow("region follows the latest Region")
        << "232"
        << "01" << QStringList{"A1", "A1 Telekom", "Austria", ""};
    QTest::newRow("leading zeros make another key")
        << "232"
        << "001" << QStringList{"A1 three digits", "A1 Telekom 001", "Austria", ""};
    QTest::newRow("missing attributes read empty") << "232"
                                                   << "10" << QStringList{"", "", "Austria", ""};
    QTest::newRow("unknown elements ignored") << "460"
                                              << "11" << QStringList{"ABC11", "ABC", "", ""};
    QTest::newRow("MccMnc after MccOnly ignored") << "999"
                                                  << "99" << QStringList{"", "", "", ""};
    QTest::newRow("unknown pair") << "310"
                                  << "410" << QStringList{"", "", "", ""};
    QTest::newRow("empty codes") << ""
                                 << "" << QStringList{"", "", "", ""};
}

void tst_OperatorList::lookup()
{
    QFETCH(QString, mcc);
    QFETCH(QString, mnc);
    QFETCH(QStringList, expected);
    StatusBarOpListParse *table = StatusBarOpListParse::GetInstance();
    QVERIFY(table);
    QCOMPARE(fields(table->GetOperatorData(mcc, mnc)), expected);
    QCOMPARE(table->GetLoadFileName(), QStringLiteral("OperatorList.xml"));
}

void tst_OperatorList::readsOnceAndLogsTheReaders()
{
    LogCapture log;
    StatusBarOpListParse *first = StatusBarOpListParse::GetInstance();
    QCOMPARE(StatusBarOpListParse::GetInstance(), first);
    QVERIFY2(log.containsInOrder({kSource + ": LoadFile: called", kSource + ": readFile: called",
                                  kSource + ": readOperatorList: called",
                                  kSource + ": readMccMncInfo: called",
                                  kSource + ": readMccOnlyInfo: called"}),
             qPrintable(log.texts().join('\n')));
    QCOMPARE(log.countUnstamped(kSource + ": LoadFile: called"), 1);
    for (const QString &line : log.texts()) {
        if (line.contains("readMccMncInfo") || line.contains("readMccOnlyInfo"))
            QVERIFY2(LogCapture::hasStamp(line), qPrintable(line));
    }
}

void tst_OperatorList::destroyThenGetReadsAfresh()
{
    StatusBarOpListParse *table = StatusBarOpListParse::GetInstance();
    QCOMPARE(table->GetOperatorData("460", "01").strShortDescr, QStringLiteral("CU"));

    QByteArray changed = kList;
    changed.replace("shortdescr=\"CU\"", "shortdescr=\"Unicom\"");
    writeList(changed);
    QCOMPARE(StatusBarOpListParse::GetInstance()->GetOperatorData("460", "01").strShortDescr,
             QStringLiteral("CU"));

    LogCapture log;
    StatusBarOpListParse::DestroyInstance();
    QVERIFY(log.contains(kSource + ": ReleaseData: called"));
    QCOMPARE(StatusBarOpListParse::GetInstance()->GetOperatorData("460", "01").strShortDescr,
             QStringLiteral("Unicom"));
}

void tst_OperatorList::missingFile()
{
    QVERIFY(TestFiles::removeAppPath(kDir + "OperatorList.xml"));
    LogCapture log;
    StatusBarOpListParse *table = StatusBarOpListParse::GetInstance();
    QVERIFY(table);
    QVERIFY(log.contains(kSource + ": LoadFile: File " + TestFiles::appDir() + kDir +
                         "OperatorList.xml does not exist"));
    QCOMPARE(fields(table->GetOperatorData("460", "01")), QStringList({"", "", "", ""}));
    QCOMPARE(fields(table->GetOperatorData("460", "02")), QStringList({"", "", "", ""}));
    QCOMPARE(table->GetLoadFileName(), QString());
}

// A directory in the file's place exists but cannot be opened for reading. A missing file
// leaves the load file name alone; one that cannot be opened clears it.
void tst_OperatorList::fileThatCannotBeOpened()
{
    StatusBarOpListParse *table = StatusBarOpListParse::GetInstance();
    QCOMPARE(table->GetLoadFileName(), QStringLiteral("OperatorList.xml"));

    QVERIFY(!table->LoadFile("Missing.xml"));
    QCOMPARE(table->GetLoadFileName(), QStringLiteral("OperatorList.xml"));

    QVERIFY(QDir().mkpath(TestFiles::appDir() + kDir + "Folder.xml"));
    LogCapture log;
    QVERIFY(!table->LoadFile("Folder.xml"));
    QVERIFY(log.contains(kSource + ": LoadFile: Error open file:" + TestFiles::appDir() + kDir +
                         "Folder.xml"));
    QCOMPARE(table->GetLoadFileName(), QString());
    QCOMPARE(table->GetOperatorData("460", "01").strShortDescr, QStringLiteral("CU"));
    QVERIFY(TestFiles::removeAppPath(kDir + "Folder.xml"));
}

void tst_OperatorList::malformedXml_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<bool>("insideSection"); // the sections' reader sees the error first
    QTest::addColumn<QStringList>("kept");   // mcc, mnc, expected short name

    QTest::newRow("broken item in MccMnc")
        << QByteArray("<OperatorList>\n<MccMnc>\n<Region descr=\"R\"/>\n"
                      "<Item mcc=\"1\" mnc=\"2\" shortdescr=\"Kept\"/>\n"
                      "<Item mcc=\"1\" mnc=\"3\" shortdescr=\"Broken\"\n"
                      "</MccMnc>\n<MccOnly><Item mcc=\"1\" shortdescr=\"Never\"/></MccOnly>\n"
                      "</OperatorList>\n")
        << true << QStringList{"1", "2", "Kept", "1", "9", ""};
    QTest::newRow("mismatched tag in MccOnly")
        << QByteArray("<OperatorList>\n<MccMnc>\n<Item mcc=\"1\" mnc=\"2\" shortdescr=\"Kept\"/>\n"
                      "</MccMnc>\n<MccOnly>\n<Item mcc=\"1\" shortdescr=\"Country\"/>\n"
                      "</Wrong>\n</MccOnly>\n</OperatorList>\n")
        << true << QStringList{"1", "2", "Kept", "1", "9", "Country9"};
    QTest::newRow("not XML at all")
        << QByteArray("this is no operator list\n") << false << QStringList{"1", "2", ""};
    QTest::newRow("unclosed document")
        << QByteArray("<OperatorList>\n<MccMnc>\n<Item mcc=\"1\" mnc=\"2\" shortdescr=\"Kept\"/>\n")
        << true << QStringList{"1", "2", "Kept"};
}

// Entries read before the error stay; the error is reported with the reader's own words.
void tst_OperatorList::malformedXml()
{
    QFETCH(QByteArray, contents);
    QFETCH(bool, insideSection);
    QFETCH(QStringList, kept);
    writeList(contents);
    const XmlError error = firstXmlError(contents);

    LogCapture log;
    StatusBarOpListParse *table = StatusBarOpListParse::GetInstance();
    for (int i = 0; i + 2 < kept.size(); i += 3)
        QCOMPARE(table->GetOperatorData(kept.at(i), kept.at(i + 1)).strShortDescr, kept.at(i + 2));
    QCOMPARE(table->GetLoadFileName(), QStringLiteral("OperatorList.xml"));

    const QString debugLine = errorLine("Error: ", error);
    const QString warningLine = errorLine("Error:", error);
    int debugLines = 0;
    int warningLines = 0;
    for (const LogCapture::Line &line : log.lines()) {
        debugLines += line.type == QtDebugMsg && line.text == debugLine;
        warningLines += line.type == QtWarningMsg && line.text == warningLine;
    }
    QVERIFY2(debugLines == 1 && warningLines == (insideSection ? 1 : 0),
             qPrintable(log.texts().join('\n') + "\nwanted: " + debugLine));
}

// Without an "MccOnly" section the reader steps past the end of the document: the entries stay,
// the load reports failure.
void tst_OperatorList::listWithoutMccOnly()
{
    StatusBarOpListParse *table = StatusBarOpListParse::GetInstance();
    QVERIFY(TestFiles::writeAppFile(
        kDir + "NoMccOnly.xml",
        "<OperatorList><MccMnc><Item mcc=\"1\" mnc=\"2\" shortdescr=\"Only\"/></MccMnc>"
        "</OperatorList>"));
    LogCapture log;
    QVERIFY(!table->LoadFile("NoMccOnly.xml"));
    QCOMPARE(table->GetOperatorData("1", "2").strShortDescr, QStringLiteral("Only"));
    QCOMPARE(table->GetLoadFileName(), QStringLiteral("NoMccOnly.xml"));
    int errorLines = 0;
    for (const LogCapture::Line &line : log.lines())
        errorLines += line.type == QtDebugMsg && line.text.startsWith("Error:  ");
    QCOMPARE(errorLines, 1);
}

void tst_OperatorList::loadFileAddsToTheTables()
{
    StatusBarOpListParse *table = StatusBarOpListParse::GetInstance();
    QVERIFY(TestFiles::writeAppFile(
        kDir + "Extra.xml", "<OperatorList><MccMnc><Region descr=\"X\"/>"
                            "<Item mcc=\"460\" mnc=\"01\" shortdescr=\"Replaced\"/>"
                            "<Item mcc=\"001\" mnc=\"01\" shortdescr=\"Test network\"/></MccMnc>"
                            "<MccOnly/></OperatorList>"));
    QVERIFY(table->LoadFile("Extra.xml"));
    QCOMPARE(table->GetLoadFileName(), QStringLiteral("Extra.xml"));
    QCOMPARE(table->GetOperatorData("460", "01").strShortDescr, QStringLiteral("Replaced"));
    QCOMPARE(table->GetOperatorData("001", "01").strShortDescr, QStringLiteral("Test network"));
    QCOMPARE(table->GetOperatorData("232", "01").strShortDescr, QStringLiteral("A1"));
}

QTEST_GUILESS_MAIN(tst_OperatorList)
#include "tst_operatorlist.moc"
