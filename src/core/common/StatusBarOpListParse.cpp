#include "StatusBarOpListParse.h"

#include "Change.h"
#include "CommonUtils.h"
#include "CoreLogging.h"
#include "LogLine.h"
#include "XmlReading.h"

#include <new>

namespace {

const char kSource[] = LD_SOURCE("common/StatusBarOpListParse");
const QLatin1String kPluginName("StatusBarMgrPlugin");

using XmlReading::attribute;
using XmlReading::isEndOf;
using XmlReading::isStartOf;

_ST_MCCMNC_ITEM readItem(const QXmlStreamReader &reader, const QString &strRegion)
{
    return {attribute(reader, "shortdescr"), attribute(reader, "fulldescr"), strRegion,
            attribute(reader, "langid")};
}

} // namespace

StatusBarOpListParse *StatusBarOpListParse::m_spInstance = nullptr;

StatusBarOpListParse *StatusBarOpListParse::GetInstance()
{
    if (!m_spInstance)
        m_spInstance = new StatusBarOpListParse();
    return m_spInstance;
}

void StatusBarOpListParse::DestroyInstance()
{
    delete m_spInstance;
    m_spInstance = nullptr;
}

StatusBarOpListParse::StatusBarOpListParse()
    : m_pHashMccMnc(new (std::nothrow) QHash<QString, _ST_MCCMNC_ITEM>)
    , m_pHashMccOnly(new (std::nothrow) QHash<QString, _ST_MCCMNC_ITEM>)
{
    if (!m_pHashMccMnc || !m_pHashMccOnly) {
        qCWarning(lcOperators, "%s: memory creation fails",
                  LogLine::prefix(kSource, "StatusBarOpListParse").constData());
        return;
    }
    // A failed load keeps what was read so far; the instance serves it all the same.
    LoadFile(QStringLiteral("OperatorList.xml"));
}

StatusBarOpListParse::~StatusBarOpListParse()
{
    ReleaseData();
}

QString StatusBarOpListParse::GetLoadFileName()
{
    return m_strLoadFileName;
}

bool StatusBarOpListParse::LoadFile(QString strFileName)
{
    const QString strPath = CommonUtils::GetPluginLibraryPath() +
                            QLatin1String("/plugins/StatusBarMgrPlugin/") + strFileName;
    qCDebug(lcOperators, "%s: called", LogLine::prefix(kSource, "LoadFile").constData());

    XmlReading::FileReader reader(strPath);
    const QByteArray prefix = LogLine::prefix(kSource, "LoadFile");
    const QByteArray path = LogLine::arg(strPath);
    switch (reader.open(lcOperators(), prefix + ": File " + path + " does not exist",
                        prefix + ": Error open file:" + path,
                        QIODevice::ReadOnly | QIODevice::Text)) {
    case XmlReading::FileReader::Missing:
        return false;
    case XmlReading::FileReader::Unopened:
        m_strLoadFileName.clear();
        return false;
    case XmlReading::FileReader::Opened:
        break;
    }
    const bool bResult = readFile(reader);
    m_strLoadFileName = strFileName;
    return bResult;
}

bool StatusBarOpListParse::readFile(QXmlStreamReader &reader)
{
    qCDebug(lcOperators, "%s: called", LogLine::prefix(kSource, "readFile").constData());
    bool bResult = true;
    while (!reader.atEnd() && bResult) {
        reader.readNext();
        if (reader.hasError())
            break;
        if (isStartOf(reader, "OperatorList")) {
            bResult = readOperatorList(reader);
            reader.readNext();
        }
    }
    if (reader.hasError()) {
        qCDebug(lcOperators, "%s",
                XmlReading::errorLine(reader, "Error:  %1  at line  %2 , column  %3 ").constData());
        return false;
    }
    return bResult;
}

// Reading ends with the "MccOnly" section: whatever follows it is not read.
bool StatusBarOpListParse::readOperatorList(QXmlStreamReader &reader)
{
    qCDebug(lcOperators, "%s: called", LogLine::prefix(kSource, "readOperatorList").constData());
    bool bResult = true;
    while (!reader.atEnd() && bResult) {
        if (isStartOf(reader, "MccMnc")) {
            if (!readMccMncInfo(reader))
                return false;
        } else if (isStartOf(reader, "MccOnly")) {
            return readMccOnlyInfo(reader);
        } else {
            reader.readNext();
            bResult = checkError(reader);
        }
    }
    return bResult;
}

// A "Region" names the country of the items that follow it; a later item with the same pair
// replaces the earlier one.
bool StatusBarOpListParse::readMccMncInfo(QXmlStreamReader &reader)
{
    qCDebug(lcOperators, "%s: called",
            LogLine::stampedPrefix(kSource, "readMccMncInfo").constData());
    if (!m_pHashMccMnc) {
        qCWarning(lcOperators, "%s: pre condition failed",
                  LogLine::stampedPrefix(kSource, "readMccMncInfo").constData());
        return false;
    }
    QString strRegion;
    bool bResult = true;
    while (!reader.atEnd() && bResult) {
        if (isEndOf(reader, "MccMnc"))
            return bResult;
        if (isStartOf(reader, "Region")) {
            strRegion = attribute(reader, "descr");
        } else if (isStartOf(reader, "Item")) {
            const QString strKey = attribute(reader, "mcc") + attribute(reader, "mnc");
            m_pHashMccMnc->insert(strKey, readItem(reader, strRegion));
        }
        reader.readNext();
        bResult = checkError(reader);
    }
    return bResult;
}

bool StatusBarOpListParse::readMccOnlyInfo(QXmlStreamReader &reader)
{
    qCDebug(lcOperators, "%s: called",
            LogLine::stampedPrefix(kSource, "readMccOnlyInfo").constData());
    if (!m_pHashMccOnly) {
        qCWarning(lcOperators, "%s: pre condition failed",
                  LogLine::stampedPrefix(kSource, "readMccOnlyInfo").constData());
        return false;
    }
    bool bResult = true;
    while (!reader.atEnd() && bResult) {
        if (isEndOf(reader, "MccOnly"))
            return bResult;
        if (isStartOf(reader, "Item"))
            m_pHashMccOnly->insert(attribute(reader, "mcc"), readItem(reader, QString()));
        reader.readNext();
        bResult = checkError(reader);
    }
    return bResult;
}

bool StatusBarOpListParse::checkError(QXmlStreamReader &reader)
{
    if (!reader.hasError())
        return true;
    qCWarning(lcOperators, "%s",
              XmlReading::errorLine(reader, "Error: %1  at line  %2 , column  %3 ").constData());
    return false;
}

// An exact pair wins; an MCC-only entry gives the country's name with the MNC appended, and its
// short name doubles as the full name.
_ST_MCCMNC_ITEM StatusBarOpListParse::GetOperatorData(QString strMcc, QString strMnc)
{
    _ST_MCCMNC_ITEM result;
    if (!m_pHashMccMnc || !m_pHashMccOnly)
        return result;

    const auto exact = m_pHashMccMnc->constFind(strMcc + strMnc);
    if (exact != m_pHashMccMnc->constEnd()) {
        result = *exact;
    } else {
        const auto country = m_pHashMccOnly->constFind(strMcc);
        if (country != m_pHashMccOnly->constEnd()) {
            result.strShortDescr = country->strShortDescr + strMnc;
            result.strFullDescr = country->strShortDescr;
            result.strLangId = country->strLangId;
        }
    }
    if (!result.strLangId.isEmpty()) {
        const QString strTranslated = Change::tr(result.strLangId, kPluginName);
        if (!strTranslated.isEmpty())
            result.strShortDescr = strTranslated;
    }
    return result;
}

// Meant to run once, from the destructor. The MCC+MNC pointer is cleared twice and the MCC-only
// pointer is left as it was; lookups then find a table missing and read neither. A caller may call
// it before the destructor does: the cleared MCC+MNC pointer then says the MCC-only table is gone.
void StatusBarOpListParse::ReleaseData()
{
    qCDebug(lcOperators, "%s: called", LogLine::prefix(kSource, "ReleaseData").constData());
    const bool bReleased = !m_pHashMccMnc;
    delete m_pHashMccMnc;
    m_pHashMccMnc = nullptr;
    if (!bReleased)
        delete m_pHashMccOnly;
    m_pHashMccMnc = nullptr;
}
