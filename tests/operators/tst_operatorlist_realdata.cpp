// The shipped operator list against the database it was converted from. The database is read
// here with QDom, independently of the converter.

#include "StatusBarOpListParse.h"

#include "TestFiles.h"

#include <QDomDocument>
#include <QFile>
#include <QSet>
#include <QtTest>

namespace {

struct SourcePair
{
    QStringList providers; // untranslated names, in document order
    QStringList countries;
};

// The text of the first child "name" without xml:lang (the untranslated one).
QString untranslatedName(const QDomElement &parent)
{
    for (QDomElement name = parent.firstChildElement("name"); !name.isNull();
         name = name.nextSiblingElement("name")) {
        if (!name.hasAttribute("xml:lang"))
            return name.text().trimmed();
    }
    return parent.firstChildElement("name").text().trimmed();
}

QString pairKey(const QString &mcc, const QString &mnc)
{
    return mcc + '/' + mnc;
}

} // namespace

class tst_OperatorListRealData : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void everyPairIsShippedOnce();
    void everyPairResolvesToItsProviders();
    void unknownNetworkShowsItsCountry_data();
    void unknownNetworkShowsItsCountry();

private:
    QHash<QString, SourcePair> m_pairs;     // "mcc/mnc"
    QHash<QString, QSet<QString>> m_mccs;   // mcc -> country names
    QList<QPair<QString, QString>> m_order; // pairs in first-appearance order
};

void tst_OperatorListRealData::initTestCase()
{
    QFile source(QStringLiteral(LINKDECK_PROVIDER_DB));
    QVERIFY2(source.open(QIODevice::ReadOnly), LINKDECK_PROVIDER_DB);
    QDomDocument database;
    QString error;
    QVERIFY2(database.setContent(&source, false, &error), qPrintable(error));

    const QDomElement root = database.documentElement();
    for (QDomElement country = root.firstChildElement("country"); !country.isNull();
         country = country.nextSiblingElement("country")) {
        const QString countryName = untranslatedName(country);
        for (QDomElement provider = country.firstChildElement("provider"); !provider.isNull();
             provider = provider.nextSiblingElement("provider")) {
            const QString providerName = untranslatedName(provider);
            const QDomNodeList ids =
                provider.firstChildElement("gsm").elementsByTagName("network-id");
            for (int i = 0; i < ids.size(); ++i) {
                const QString mcc = ids.at(i).toElement().attribute("mcc");
                const QString mnc = ids.at(i).toElement().attribute("mnc");
                const QString key = pairKey(mcc, mnc);
                if (!m_pairs.contains(key))
                    m_order.append({mcc, mnc});
                SourcePair &pair = m_pairs[key];
                if (!pair.providers.contains(providerName))
                    pair.providers.append(providerName);
                if (!pair.countries.contains(countryName))
                    pair.countries.append(countryName);
                m_mccs[mcc].insert(countryName);
            }
        }
    }
    QVERIFY2(m_pairs.size() > 100, "the database names too few networks to be the real one");

    QFile shipped(QStringLiteral(LINKDECK_OPERATOR_LIST));
    QVERIFY2(shipped.open(QIODevice::ReadOnly), LINKDECK_OPERATOR_LIST);
    QVERIFY(
        TestFiles::writeAppFile("/plugins/StatusBarMgrPlugin/OperatorList.xml", shipped.readAll()));
}

void tst_OperatorListRealData::cleanupTestCase()
{
    StatusBarOpListParse::DestroyInstance();
}

void tst_OperatorListRealData::everyPairIsShippedOnce()
{
    QFile shipped(QStringLiteral(LINKDECK_OPERATOR_LIST));
    QVERIFY(shipped.open(QIODevice::ReadOnly));
    QDomDocument list;
    QVERIFY(list.setContent(&shipped));
    const QDomNodeList items =
        list.documentElement().firstChildElement("MccMnc").elementsByTagName("Item");
    QSet<QString> shippedPairs;
    for (int i = 0; i < items.size(); ++i) {
        const QDomElement item = items.at(i).toElement();
        const QString key = pairKey(item.attribute("mcc"), item.attribute("mnc"));
        QVERIFY2(!shippedPairs.contains(key), qPrintable("shipped twice: " + key));
        QVERIFY2(m_pairs.contains(key), qPrintable("not in the database: " + key));
        shippedPairs.insert(key);
    }
    QCOMPARE(items.size(), m_pairs.size());
}

void tst_OperatorListRealData::everyPairResolvesToItsProviders()
{
    StatusBarOpListParse *table = StatusBarOpListParse::GetInstance();
    QCOMPARE(table->GetLoadFileName(), QStringLiteral("OperatorList.xml"));
    for (const auto &id : qAsConst(m_order)) {
        const SourcePair &pair = m_pairs.value(pairKey(id.first, id.second));
        const _ST_MCCMNC_ITEM item = table->GetOperatorData(id.first, id.second);
        const QByteArray where = pairKey(id.first, id.second).toUtf8() + ": " +
                                 item.strShortDescr.toUtf8() + " / " + item.strFullDescr.toUtf8();
        QVERIFY2(pair.providers.contains(item.strShortDescr), where.constData());
        QVERIFY2(item.strFullDescr.startsWith(item.strShortDescr), where.constData());
        for (const QString &provider : pair.providers)
            QVERIFY2(item.strFullDescr.contains(provider), where.constData());
        if (pair.providers.size() == 1)
            QCOMPARE(item.strFullDescr, item.strShortDescr);
        QVERIFY2(pair.countries.contains(item.strRegionDescr), where.constData());
        QCOMPARE(item.strLangId, QString());
    }
}

void tst_OperatorListRealData::unknownNetworkShowsItsCountry_data()
{
    QTest::addColumn<QString>("mcc");
    QStringList mccs = m_mccs.keys();
    mccs.sort();
    for (const QString &mcc : qAsConst(mccs))
        QTest::newRow(qPrintable(mcc)) << mcc;
}

// No real network has the MNC "x": the MCC-only entry answers with the country and the MNC.
void tst_OperatorListRealData::unknownNetworkShowsItsCountry()
{
    QFETCH(QString, mcc);
    const _ST_MCCMNC_ITEM item = StatusBarOpListParse::GetInstance()->GetOperatorData(mcc, "x");
    QCOMPARE(item.strShortDescr, item.strFullDescr + "x");
    QVERIFY2(m_mccs.value(mcc).contains(item.strFullDescr.trimmed()),
             qPrintable(item.strFullDescr));
    QVERIFY(item.strFullDescr.endsWith(' '));
    QCOMPARE(item.strRegionDescr, QString());
}

QTEST_GUILESS_MAIN(tst_OperatorListRealData)
#include "tst_operatorlist_realdata.moc"
