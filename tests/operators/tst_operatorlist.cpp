#include "StatusBarOpListParse.h"

#include "LogCapture.h"
#include "TestFiles.h"

#include <QDir>
#include <QtTest>

namespace {

const QString kDir = QStringLiteral("/plugins/StatusBarMgrPlugin/");
const QString kSource = QStringLiteral("../../src/core/common/StatusBarOpListParse");

const QByteArray kList = R"(<OperatorList>
  <MccMnc>
    <Region descr="China"/>
    <Item mcc="460" mnc="01" shortdescr="CU" fulldescr="China Unicom" langid=""/>
    <Item mcc="460" mnc="00" shortdescr="CMCC" fulldescr="China Mobile" langid="IDS_OP_CMCC"/>
    <Item mcc="460" mnc="03" shortdescr="CT" fulldescr="China Telecom" langid="IDS_OP_MISSING"/>
    <Item mcc="460" mnc="07" shortdescr="Old" fulldescr="Old name"/>
    <Item mcc="460" mnc="07" shortdescr="New" fulldescr="New name"/>
    <Region descr="Austria"/>
    <Item mcc="232" mnc="01" shortdescr="A1" fulldescr="A1 Telekom"/>
    <Item mcc="232" mnc="001" shortdescr="A1 three digits"/>
    <Unknown mcc="460" mnc="11" shortdescr="Ignored"/>
  </MccMnc>
  <MccOnly>
    <Item mcc="460" shortdescr="ABC" fulldescr="Republic of China" langid=""/>
    <Item mcc="232" shortdescr="AT-" fulldescr="Austria" langid="IDS_OP_AT"/>
    <Item mcc="228" shortdescr="CH-" fulldescr="Switzerland"/>
    <Item mcc="228" shortdescr="SUI " fulldescr="Switzerland"/>
  </MccOnly>
  <MccMnc><Item mcc="999" mnc="99" shortdescr="Late" fulldescr="Late"/></MccMnc>
</OperatorList>
)";

// The four fields of a lookup as one text: short|full|region|language key.
QString described(const QString &mcc, const QString &mnc)
{
    const _ST_MCCMNC_ITEM item = StatusBarOpListParse::GetInstance()->GetOperatorData(mcc, mnc);
    return QStringList{item.strShortDescr, item.strFullDescr, item.strRegionDescr, item.strLangId}
        .join('|');
}

} // namespace

class tst_OperatorList : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        TestFiles::useFreshSettings();
        QVERIFY(TestFiles::writeAppFile(
            kDir + "StatusBarMgrPlugin_en-us.lang",
            "<lang><item name=\"IDS_OP_CMCC\">China Mobile (translated)</item>"
            "<item name=\"IDS_OP_AT\">Austria, translated</item></lang>"));
    }
    void init() { QVERIFY(TestFiles::writeAppFile(kDir + "OperatorList.xml", kList)); }
    void cleanup() { StatusBarOpListParse::DestroyInstance(); }
    // "mcc mnc short|full|region|language key"
    // Then one read per instance: a changed file shows only after DestroyInstance. The two
    // section readers stamp their lines.
    void lookup()
    {
        LogCapture log;
        const QStringList expected{
            "460 01 CU|China Unicom|China|", // pair beats MCC-only
            "460 00 China Mobile (translated)|China Mobile|China|IDS_OP_CMCC", // translated
            "460 03 CT|China Telecom|China|IDS_OP_MISSING",                    // no translation
            "460 07 New|New name|China|",                // later duplicate wins
            "232 01 A1|A1 Telekom|Austria|",             // latest Region
            "460 02 ABC02|ABC||",                        // MCC-only composition
            "232 05 Austria, translated|AT-||IDS_OP_AT", // MNC dropped too
            "460 11 ABC11|ABC||",                        // unknown element
            "999 99 |||",                                // MccMnc after MccOnly
            "310 410 |||"};
        QStringList found;
        for (const QString &line : expected)
            found << line.section(' ', 0, 1) + ' ' +
                         described(line.section(' ', 0, 0), line.section(' ', 1, 1));
        QCOMPARE(found, expected);
        QCOMPARE(StatusBarOpListParse::GetInstance()->GetLoadFileName(),
                 QString("OperatorList.xml"));
        QVERIFY(TestFiles::writeAppFile(kDir + "OperatorList.xml",
                                        QByteArray(kList).replace("\"CU\"", "\"Unicom\"")));
        QCOMPARE(described("460", "01"), QString("CU|China Unicom|China|"));
        const QString called = kSource + ": %1: called";
        const QStringList stamped = log.texts().filter(kSource);
        QCOMPARE(log.unstamped().filter(kSource),
                 (QStringList{called.arg("LoadFile"), called.arg("readFile"),
                              called.arg("readOperatorList"), called.arg("readMccMncInfo"),
                              called.arg("readMccOnlyInfo")}));
        QCOMPARE(stamped.mid(0, 3), log.unstamped().filter(kSource).mid(0, 3));
        QVERIFY(LogCapture::hasStamp(stamped.at(3)) && LogCapture::hasStamp(stamped.at(4)));

        // A caller's own release empties the lookups; the destruction that follows frees nothing
        // twice.
        log.clear();
        StatusBarOpListParse::GetInstance()->ReleaseData();
        QCOMPARE(described("460", "01"), QString("|||"));
        StatusBarOpListParse::DestroyInstance();
        QCOMPARE(log.texts(), QStringList({called.arg("ReleaseData"), called.arg("ReleaseData")}));
        QCOMPARE(described("460", "01"), QString("Unicom|China Unicom|China|"));
    }
    // Through LoadFile a missing file leaves the load file name alone and one that cannot be opened
    // (a directory) clears it; without its list the table answers every lookup empty.
    void unreadableFiles()
    {
        StatusBarOpListParse *table = StatusBarOpListParse::GetInstance();
        const QString path = TestFiles::appDir() + kDir;
        QVERIFY(QDir().mkpath(path + "Folder.xml"));
        LogCapture log;
        QVERIFY(!table->LoadFile("Missing.xml"));
        QCOMPARE(table->GetLoadFileName(), QString("OperatorList.xml"));
        QVERIFY(!table->LoadFile("Folder.xml"));
        QCOMPARE(table->GetLoadFileName(), QString());
        QVERIFY(TestFiles::removeAppPath(kDir + "OperatorList.xml"));
        StatusBarOpListParse::DestroyInstance();
        QCOMPARE(described("460", "01") + described("460", "02"), QString("||||||"));
        QVERIFY(log.containsInOrder(
            {kSource + ": LoadFile: File " + path + "Missing.xml does not exist",
             kSource + ": LoadFile: Error open file:" + path + "Folder.xml",
             kSource + ": LoadFile: File " + path + "OperatorList.xml does not exist"}));
    }
};

QTEST_GUILESS_MAIN(tst_OperatorList)
#include "tst_operatorlist.moc"
