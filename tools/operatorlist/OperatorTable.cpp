#include "OperatorTable.h"

#include <QHash>
#include <QLocale>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {

struct PairProviders
{
    NetworkId id;
    QVector<int> providers; // indexes into the database, in document order
};

QString pairKey(const NetworkId &id)
{
    return id.mcc + QLatin1Char('/') + id.mnc;
}

// Every distinct pair with the providers that list it, in the order of first appearance.
QVector<PairProviders> collectPairs(const ProviderDatabase &database)
{
    QVector<PairProviders> pairs;
    QHash<QString, int> indexOfPair;
    for (int p = 0; p < database.providers.size(); ++p) {
        for (const NetworkId &id : database.providers.at(p).networks) {
            const QString key = pairKey(id);
            auto it = indexOfPair.find(key);
            if (it == indexOfPair.end()) {
                it = indexOfPair.insert(key, pairs.size());
                pairs.append({id, {}});
            }
            QVector<int> &providers = pairs[*it].providers;
            if (!providers.contains(p))
                providers.append(p);
        }
    }
    return pairs;
}

int networkOwner(const ProviderDatabase &database, const QVector<int> &providers)
{
    int best = providers.first();
    for (int candidate : providers) {
        const Provider &c = database.providers.at(candidate);
        const Provider &b = database.providers.at(best);
        if (c.primary != b.primary ? c.primary : c.networks.size() > b.networks.size())
            best = candidate;
    }
    return best;
}

QString providerNames(const ProviderDatabase &database, int owner, const QVector<int> &providers)
{
    QStringList names{database.providers.at(owner).name};
    for (int p : providers) {
        const QString &name = database.providers.at(p).name;
        if (!names.contains(name))
            names.append(name);
    }
    return names.join(QLatin1String(", "));
}

QString localeCountryName(const QString &code)
{
    static const QHash<QString, QString> names = [] {
        QHash<QString, QString> byCode;
        const auto locales =
            QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
        for (const QLocale &locale : locales) {
            const QString name = locale.name(); // "de_AT"
            const int separator = name.indexOf(QLatin1Char('_'));
            if (separator > 0)
                byCode.insert(name.mid(separator + 1).toLower(),
                              QLocale::countryToString(locale.country()));
        }
        return byCode;
    }();
    return names.value(code.toLower());
}

// For each MCC, the country with the most pairs under it (the first such on a tie).
QVector<OperatorItem> mccOnlyItems(const ProviderDatabase &database,
                                   const QVector<OperatorRegion> &regions,
                                   const QVector<int> &regionCountry)
{
    QHash<QString, QVector<int>> pairsPerCountry; // mcc -> count per region index
    for (int r = 0; r < regions.size(); ++r) {
        for (const OperatorItem &item : regions.at(r).items) {
            QVector<int> &counts = pairsPerCountry[item.mcc];
            counts.resize(regions.size());
            ++counts[r];
        }
    }
    QVector<OperatorItem> items;
    for (auto it = pairsPerCountry.cbegin(); it != pairsPerCountry.cend(); ++it) {
        const QVector<int> &counts = it.value();
        const int region = int(std::max_element(counts.begin(), counts.end()) - counts.begin());
        const QString name = countryDisplayName(database.countries.at(regionCountry.at(region)));
        // The status bar appends the MNC to the short name: "Austria 05".
        items.append({it.key(), QString(), name + QLatin1Char(' '), name});
    }
    std::sort(items.begin(), items.end(),
              [](const OperatorItem &a, const OperatorItem &b) { return a.mcc < b.mcc; });
    return items;
}

} // namespace

QString countryDisplayName(const Country &country)
{
    if (!country.name.isEmpty())
        return country.name;
    const QString fromLocale = localeCountryName(country.code);
    return fromLocale.isEmpty() ? country.code.toUpper() : fromLocale;
}

OperatorTable buildOperatorTable(const ProviderDatabase &database)
{
    QVector<QVector<OperatorItem>> itemsPerCountry(database.countries.size());
    for (const PairProviders &pair : collectPairs(database)) {
        const int owner = networkOwner(database, pair.providers);
        itemsPerCountry[database.providers.at(owner).country].append(
            {pair.id.mcc, pair.id.mnc, database.providers.at(owner).name,
             providerNames(database, owner, pair.providers)});
    }

    OperatorTable table;
    QVector<int> regionCountry;
    for (int c = 0; c < database.countries.size(); ++c) {
        if (itemsPerCountry.at(c).isEmpty())
            continue;
        table.regions.append({countryDisplayName(database.countries.at(c)), itemsPerCountry.at(c)});
        regionCountry.append(c);
    }
    table.mccOnly = mccOnlyItems(database, table.regions, regionCountry);
    return table;
}

bool writeOperatorList(const OperatorTable &table, QIODevice *device, const QString &sourceName)
{
    QXmlStreamWriter xml(device);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(2);
    xml.writeStartDocument();
    xml.writeComment(QStringLiteral(" Generated from %1 (mobile-broadband-provider-info); "
                                    "edit the converter, not this file. ")
                         .arg(sourceName));
    xml.writeStartElement(QStringLiteral("OperatorList"));

    xml.writeStartElement(QStringLiteral("MccMnc"));
    for (const OperatorRegion &region : table.regions) {
        xml.writeEmptyElement(QStringLiteral("Region"));
        xml.writeAttribute(QStringLiteral("descr"), region.descr);
        for (const OperatorItem &item : region.items) {
            xml.writeEmptyElement(QStringLiteral("Item"));
            xml.writeAttribute(QStringLiteral("mcc"), item.mcc);
            xml.writeAttribute(QStringLiteral("mnc"), item.mnc);
            xml.writeAttribute(QStringLiteral("shortdescr"), item.shortDescr);
            xml.writeAttribute(QStringLiteral("fulldescr"), item.fullDescr);
        }
    }
    xml.writeEndElement();

    xml.writeStartElement(QStringLiteral("MccOnly"));
    for (const OperatorItem &item : table.mccOnly) {
        xml.writeEmptyElement(QStringLiteral("Item"));
        xml.writeAttribute(QStringLiteral("mcc"), item.mcc);
        xml.writeAttribute(QStringLiteral("shortdescr"), item.shortDescr);
        xml.writeAttribute(QStringLiteral("fulldescr"), item.fullDescr);
    }
    xml.writeEndElement();

    xml.writeEndElement();
    xml.writeEndDocument();
    return !xml.hasError();
}
