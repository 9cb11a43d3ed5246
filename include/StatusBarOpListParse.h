#ifndef LINKDECK_STATUSBAROPLISTPARSE_H
#define LINKDECK_STATUSBAROPLISTPARSE_H

#include "CoreGlobal.h"

#include <QHash>
#include <QString>

class QXmlStreamReader;

// One operator entry of the operator list.
struct _ST_MCCMNC_ITEM
{
    QString strShortDescr;  // short operator name, shown in the status bar
    QString strFullDescr;   // full operator name
    QString strRegionDescr; // region or country text (MCC+MNC entries only)
    QString strLangId;      // key of a translated short name in StatusBarMgrPlugin's language file
};

// The operator names by MCC and MNC, read once from the status-bar plugin's "OperatorList.xml".
// A process-wide singleton; it takes no locks.
class CORE_EXPORT StatusBarOpListParse
{
public:
    // Creates the instance and reads the file on the first call.
    static StatusBarOpListParse *GetInstance();
    // A later GetInstance() creates a new instance and reads the file afresh.
    static void DestroyInstance();

    // The entry of the exact pair; failing that, one composed from the country's MCC-only entry;
    // failing that, four empty strings. A translated name replaces the short description.
    _ST_MCCMNC_ITEM GetOperatorData(QString strMcc, QString strMnc);
    QString GetLoadFileName();
    // Reads strFileName from the status-bar plugin's directory into the tables.
    bool LoadFile(QString strFileName);
    void ReleaseData();

    StatusBarOpListParse(const StatusBarOpListParse &) = delete;
    StatusBarOpListParse &operator=(const StatusBarOpListParse &) = delete;

private:
    StatusBarOpListParse();
    ~StatusBarOpListParse();

    bool readFile(QXmlStreamReader &reader);
    bool readOperatorList(QXmlStreamReader &reader);
    bool readMccMncInfo(QXmlStreamReader &reader);
    bool readMccOnlyInfo(QXmlStreamReader &reader);
    bool checkError(QXmlStreamReader &reader);

    QHash<QString, _ST_MCCMNC_ITEM> *m_pHashMccMnc = nullptr;  // key: MCC text + MNC text
    QHash<QString, _ST_MCCMNC_ITEM> *m_pHashMccOnly = nullptr; // key: MCC text
    QString m_strLoadFileName;

    static StatusBarOpListParse *m_spInstance;
};

#endif // LINKDECK_STATUSBAROPLISTPARSE_H
