#ifndef LINKDECK_TOOLS_OPERATORTABLE_H
#define LINKDECK_TOOLS_OPERATORTABLE_H

#include "ProviderDatabase.h"

#include <QString>
#include <QVector>

class QIODevice;

// The contents of an "OperatorList.xml": one item per MCC+MNC pair, grouped by country, and one
// MCC-only item per country code so that an unknown network still shows its country.
struct OperatorItem
{
    QString mcc;
    QString mnc;
    QString shortDescr;
    QString fullDescr;
};

struct OperatorRegion
{
    QString descr;
    QVector<OperatorItem> items;
};

struct OperatorTable
{
    QVector<OperatorRegion> regions; // in the database's country order
    QVector<OperatorItem> mccOnly;   // sorted by MCC; mnc empty
};

// Several providers may share a pair (virtual operators ride on another's network): the item
// names the one marked primary, else the one with the most networks, else the first; its full
// description lists every provider of the pair, that one first. The pair goes to that provider's
// country. An MCC used by several countries names the one with the most pairs under it.
OperatorTable buildOperatorTable(const ProviderDatabase &database);

// The country's name from the database, else Qt's locale data, else its code in capitals.
QString countryDisplayName(const Country &country);

bool writeOperatorList(const OperatorTable &table, QIODevice *device, const QString &sourceName);

#endif // LINKDECK_TOOLS_OPERATORTABLE_H
