// The converter from mobile-broadband-provider-info's database to OperatorList.xml, run as the
// build runs it, on small databases written here; its output is read back through the table.

#include "StatusBarOpListParse.h"

#include "TestFiles.h"

#include <QProcess>
#include <QtTest>

namespace {

const QString kOutput = QStringLiteral("/plugins/StatusBarMgrPlugin/OperatorList.xml");

const QByteArray kDatabase = R"(<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE serviceproviders SYSTEM "serviceproviders.2.dtd">
<serviceproviders format="2.0">
<country code="xa">
  <name>Alphaland</name>
  <provider>
    <name xml:lang="de">Erster</name>
    <name>First</name>
    <gsm>
      <network-id mcc="901" mnc="01"/>
      <apn value="internet"><name>Not a provider name</name></apn>
    </gsm>
  </provider>
  <provider>
    <name>Big</name>
    <gsm>
      <network-id mcc="901" mnc="02"/>
      <network-id mcc="901" mnc="01"/>
      <network-id mcc="901" mnc="001"/>
      <!--network-id mcc="901" mnc="99"/-->
    </gsm>
  </provider>
  <provider>
    <name>Virtual</name>
    <gsm><network-id mcc="901" mnc="04"/></gsm>
  </provider>
  <provider primary="true">
    <name>Owner</name>
    <gsm><network-id mcc="901" mnc="04"/></gsm>
  </provider>
  <provider>
    <name>Tie A</name>
    <gsm><network-id mcc="901" mnc="05"/></gsm>
  </provider>
  <provider>
    <name>Tie B</name>
    <gsm><network-id mcc="901" mnc="05"/><network-id mcc="901" mnc=""/></gsm>
  </provider>
  <provider>
    <name xml:lang="ru">Только</name>
    <gsm><network-id mcc="902" mnc="10"/></gsm>
  </provider>
  <provider>
    <name>CDMA only</name>
    <cdma><sid value="1"/></cdma>
  </provider>
</country>
<country code="xb">
  <name>Betaland</name>
  <provider>
    <name>Beta One</name>
    <gsm><network-id mcc="902" mnc="20"/><network-id mcc="902" mnc="21"/></gsm>
  </provider>
</country>
<country code="at">
  <provider>
    <name>Unnamed country</name>
    <gsm><network-id mcc="232" mnc="01"/></gsm>
  </provider>
</country>
<country code="qq">
  <provider>
    <name>Nowhere</name>
    <gsm><network-id mcc="999" mnc="01"/></gsm>
  </provider>
</country>
</serviceproviders>
)";

struct Run
{
    int exitCode = -1;
    QString errorOutput;
};

Run runConverter(const QStringList &arguments)
{
    QProcess converter;
    converter.start(QStringLiteral(MBPI2OPERATORLIST), arguments);
    if (!converter.waitForFinished(30000))
        return {};
    return {converter.exitStatus() == QProcess::NormalExit ? converter.exitCode() : -1,
            QString::fromLocal8Bit(converter.readAllStandardError())};
}

QString appPath(const QString &relative)
{
    return TestFiles::appDir() + relative;
}

} // namespace

class tst_OperatorConverter : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void convertedEntries_data();
    void convertedEntries();
    void failures_data();
    void failures();
};

void tst_OperatorConverter::initTestCase()
{
    QVERIFY(TestFiles::writeAppFile("/db/serviceproviders.xml", kDatabase));
    QVERIFY(TestFiles::removeAppPath(kOutput));
    const Run run = runConverter({appPath("/db/serviceproviders.xml"), appPath(kOutput)});
    QVERIFY2(run.exitCode == 0, qPrintable(run.errorOutput));
}

void tst_OperatorConverter::cleanupTestCase()
{
    StatusBarOpListParse::DestroyInstance();
}

void tst_OperatorConverter::convertedEntries_data()
{
    QTest::addColumn<QString>("mcc");
    QTest::addColumn<QString>("mnc");
    QTest::addColumn<QStringList>("expected"); // short, full, region

    QTest::newRow("the provider with more networks names the pair")
        << "901"
        << "01" << QStringList{"Big", "Big, First", "Alphaland"};
    QTest::newRow("untranslated name preferred") << "901"
                                                 << "02" << QStringList{"Big", "Big", "Alphaland"};
    QTest::newRow("three-digit MNC kept as written")
        << "901"
        << "001" << QStringList{"Big", "Big", "Alphaland"};
    QTest::newRow("primary provider wins")
        << "901"
        << "04" << QStringList{"Owner", "Owner, Virtual", "Alphaland"};
    QTest::newRow("tie: the first provider")
        << "901"
        << "05" << QStringList{"Tie A", "Tie A, Tie B", "Alphaland"};
    QTest::newRow("only a translated name") << "902"
                                            << "10" << QStringList{"Только", "Только", "Alphaland"};
    QTest::newRow("country without name: Qt's name for the code")
        << "232"
        << "01" << QStringList{"Unnamed country", "Unnamed country", "Austria"};
    QTest::newRow("unknown code without name: the code")
        << "999"
        << "01" << QStringList{"Nowhere", "Nowhere", "QQ"};
    QTest::newRow("commented-out network: MCC-only")
        << "901"
        << "99" << QStringList{"Alphaland 99", "Alphaland ", ""};
    QTest::newRow("MCC of two countries: the one with more pairs")
        << "902"
        << "77" << QStringList{"Betaland 77", "Betaland ", ""};
    QTest::newRow("MCC-only from Qt's name") << "232"
                                             << "02" << QStringList{"Austria 02", "Austria ", ""};
    QTest::newRow("empty MNC skipped") << "901"
                                       << "" << QStringList{"Alphaland ", "Alphaland ", ""};
    QTest::newRow("unknown MCC") << "123"
                                 << "45" << QStringList{"", "", ""};
}

void tst_OperatorConverter::convertedEntries()
{
    QFETCH(QString, mcc);
    QFETCH(QString, mnc);
    QFETCH(QStringList, expected);
    const _ST_MCCMNC_ITEM item = StatusBarOpListParse::GetInstance()->GetOperatorData(mcc, mnc);
    QCOMPARE((QStringList{item.strShortDescr, item.strFullDescr, item.strRegionDescr}), expected);
}

void tst_OperatorConverter::failures_data()
{
    QTest::addColumn<QByteArray>("database"); // empty: no file at all
    QTest::addColumn<int>("argumentCount");
    QTest::addColumn<QString>("message");
    QTest::newRow("missing database") << QByteArray() << 2 << "mobile-broadband-provider-info";
    QTest::newRow("malformed database")
        << QByteArray("<serviceproviders><country code=\"xa\">\n<provider></country>") << 2
        << "at line 2";
    QTest::newRow("no GSM network")
        << QByteArray("<serviceproviders><country code=\"xa\"><name>A</name></country>"
                      "</serviceproviders>")
        << 2 << "names no GSM network";
    QTest::newRow("wrong arguments") << QByteArray("<serviceproviders/>") << 1 << "usage";
}

void tst_OperatorConverter::failures()
{
    QFETCH(QByteArray, database);
    QFETCH(int, argumentCount);
    QFETCH(QString, message);
    const QString input = appPath("/db/failing.xml");
    const QString output = appPath("/out/OperatorList.xml");
    QVERIFY(TestFiles::removeAppPath("/db/failing.xml"));
    QVERIFY(TestFiles::removeAppPath("/out"));
    if (!database.isEmpty())
        QVERIFY(TestFiles::writeFile(input, database));

    const Run run = runConverter(QStringList{input, output}.mid(0, argumentCount));
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.errorOutput.contains(message), qPrintable(run.errorOutput));
    QVERIFY(!QFile::exists(output));
}

QTEST_GUILESS_MAIN(tst_OperatorConverter)
#include "tst_operatorconverter.moc"
