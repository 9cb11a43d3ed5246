// The converter run as the build runs it on a small database, and the list the build ships checked
// against the real database (read here with QDom). Both are read back through the table.

#include "StatusBarOpListParse.h"

#include "TestFiles.h"

#include <QDomDocument>
#include <QProcess>
#include <QtTest>

namespace {

const QString kList = QStringLiteral("/plugins/StatusBarMgrPlugin/OperatorList.xml");

const QByteArray kDatabase = R"(<serviceproviders format="2.0">
<country code="xa"><name>Alphaland</name>
  <provider><name xml:lang="de">Erster</name><name>First</name>
    <gsm><network-id mcc="901" mnc="01"/></gsm></provider>
  <provider><name>Big</name>
    <gsm><network-id mcc="901" mnc="02"/><network-id mcc="901" mnc="01"/></gsm></provider>
  <provider><name>Virtual</name><gsm><network-id mcc="901" mnc="04"/></gsm></provider>
  <provider primary="true"><name>Owner</name><gsm><network-id mcc="901" mnc="04"/></gsm></provider>
</country>
<country code="xb"><name>Betaland</name>
  <provider><name>Beta</name><gsm><network-id mcc="902" mnc="20"/></gsm></provider>
</country>
</serviceproviders>
)";

// The converter's exit code (-1: it crashed or hung); its error output goes to *errors.
int convert(const QString &database, QString *errors)
{
    QProcess converter;
    converter.start(QStringLiteral(MBPI2OPERATORLIST), {database, TestFiles::appDir() + kList});
    if (!converter.waitForFinished(30000) || converter.exitStatus() != QProcess::NormalExit)
        return -1;
    *errors = QString::fromLocal8Bit(converter.readAllStandardError());
    return converter.exitCode();
}

// "short|full|region" of a lookup in the list read afresh.
QString described(const QString &mcc, const QString &mnc)
{
    const _ST_MCCMNC_ITEM item = StatusBarOpListParse::GetInstance()->GetOperatorData(mcc, mnc);
    return item.strShortDescr + '|' + item.strFullDescr + '|' + item.strRegionDescr;
}

// The document element; a null one when the file cannot be read.
QDomElement readDocument(const QString &path)
{
    QFile file(path);
    QDomDocument document;
    document.setContent(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
    return document.documentElement();
}

} // namespace

class tst_OperatorConverter : public QObject
{
    Q_OBJECT

private slots:
    void init() { StatusBarOpListParse::DestroyInstance(); }
    void cleanupTestCase() { StatusBarOpListParse::DestroyInstance(); }
    // One item per distinct pair, named after its primary provider or else the one with the most
    // networks (all providers in the full name); MCC-only entries name the country.
    void convertsSmallDatabase()
    {
        QString errors; // without its database the converter fails and writes nothing
        QVERIFY(TestFiles::removeAppPath(kList));
        QCOMPARE(convert(TestFiles::appDir() + "/db/missing.xml", &errors), 1);
        QVERIFY2(errors.contains("mobile-broadband-provider-info"), qPrintable(errors));
        QVERIFY(!QFile::exists(TestFiles::appDir() + kList));

        QVERIFY(TestFiles::writeAppFile("/db/serviceproviders.xml", kDatabase));
        QCOMPARE(convert(TestFiles::appDir() + "/db/serviceproviders.xml", &errors), 0);
        const QDomElement list = readDocument(TestFiles::appDir() + kList);
        QCOMPARE(list.firstChildElement("MccMnc").elementsByTagName("Item").size(), 4);
        const QStringList expected{"901 01 Big|Big, First|Alphaland",
                                   "901 02 Big|Big|Alphaland",
                                   "901 04 Owner|Owner, Virtual|Alphaland",
                                   "902 20 Beta|Beta|Betaland",
                                   "901 99 Alphaland 99|Alphaland |",
                                   "902 77 Betaland 77|Betaland |",
                                   "123 45 ||"};
        QStringList found;
        for (const QString &line : expected)
            found << line.left(7) + described(line.left(3), line.mid(4, 2));
        QCOMPARE(found, expected);
    }
    // As many items as the database has distinct pairs, and every pair resolves to its providers.
    void shippedListHoldsTheRealDatabase()
    {
        QMap<QString, QStringList> providers; // "mcc/mnc" -> provider names
        QHash<QString, QStringList> countries;
        const auto nameOf = [](const QDomNode &node) { // the first name is the untranslated one
            return node.firstChildElement("name").text().trimmed();
        };
        const QDomNodeList ids = readDocument(LINKDECK_PROVIDER_DB).elementsByTagName("network-id");
        for (int i = 0; i < ids.size(); ++i) { // country/provider/gsm/network-id
            const QDomElement id = ids.at(i).toElement();
            const QDomNode provider = id.parentNode().parentNode();
            const QString key = id.attribute("mcc") + '/' + id.attribute("mnc");
            providers[key] << nameOf(provider);
            countries[key] << nameOf(provider.parentNode());
        }
        QVERIFY2(providers.size() > 100, "the database names too few networks to be the real one");

        QStringList items;
        const QDomNodeList shipped = readDocument(LINKDECK_OPERATOR_LIST)
                                         .firstChildElement("MccMnc")
                                         .elementsByTagName("Item");
        for (int i = 0; i < shipped.size(); ++i)
            items << shipped.at(i).toElement().attribute("mcc") + '/' +
                         shipped.at(i).toElement().attribute("mnc");
        items.sort();
        QCOMPARE(items, providers.keys());

        QVERIFY(TestFiles::removeAppPath(kList) &&
                QFile::copy(LINKDECK_OPERATOR_LIST, TestFiles::appDir() + kList));
        for (auto pair = providers.cbegin(); pair != providers.cend(); ++pair) {
            const QStringList item =
                described(pair.key().section('/', 0, 0), pair.key().section('/', 1)).split('|');
            bool named =
                pair->contains(item.at(0)) && countries.value(pair.key()).contains(item.at(2));
            for (const QString &provider : *pair)
                named = named && item.at(1).contains(provider);
            QVERIFY2(named, qPrintable(pair.key() + ": " + item.join(" / ")));
        }
    }
};

QTEST_GUILESS_MAIN(tst_OperatorConverter)
#include "tst_operatorconverter.moc"
