#ifndef LINKDECK_TOOLS_PROVIDERDATABASE_H
#define LINKDECK_TOOLS_PROVIDERDATABASE_H

#include <QString>
#include <QVector>

class QIODevice;

// The parts of mobile-broadband-provider-info's serviceproviders.xml that name GSM networks.
struct NetworkId
{
    QString mcc;
    QString mnc;
};

struct Provider
{
    QString name;                // the untranslated name (the first without xml:lang)
    bool primary = false;        // primary="true": the network's own operator
    int country = -1;            // index into ProviderDatabase::countries
    QVector<NetworkId> networks; // those with both codes
};

struct Country
{
    QString code; // ISO 3166 code as written in the file ("at")
    QString name; // the file's untranslated name; empty when it has none
};

struct ProviderDatabase
{
    QVector<Country> countries;
    QVector<Provider> providers; // in document order
};

// Reads the database; on failure returns false and describes the problem in errorText.
bool readProviderDatabase(QIODevice *device, ProviderDatabase &database, QString &errorText);

#endif // LINKDECK_TOOLS_PROVIDERDATABASE_H
