#include "MenuParse.h"

#include "CommonUtils.h"
#include "MenuShared.h"
#include "NexoSdk.h"
#include "common/CoreLogging.h"

#include <QFile>

namespace MENU {

QString MenuParse::s_strCurrentMenu;
QString MenuParse::s_strCurrentParent;

using MenuShared::attribute;

MenuParse::MenuParse()
    : m_pMenuInfoList(new QList<STMENUINFO *>)
{}

MenuParse::MenuParse(QString strPluginName, QString strFileName)
    : m_pMenuInfoList(new QList<STMENUINFO *>)
{
    m_strOperator = GetOperator();
    LoadFile(strPluginName, strFileName);
}

MenuParse::~MenuParse()
{
    release();
}

QList<STMENUINFO *> *MenuParse::GetMenuInfoList() const
{
    return m_pMenuInfoList;
}

QString MenuParse::GetOperator()
{
    m_strOperator.clear();
    char buffer[NEXO_CUSTOMIZE_NAME_SIZE] = {};
    if (NEXO_DevSrv_GetCustomizeName(buffer) == 0) {
        buffer[NEXO_CUSTOMIZE_NAME_SIZE - 1] = '\0';
        m_strOperator = QString::fromLocal8Bit(buffer);
    }
    return m_strOperator;
}

bool MenuParse::LoadFile(QString strPluginName, QString strFileName)
{
    const QString strPath = CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/") +
                            strPluginName + QLatin1Char('/') + strFileName;
    XmlReading::FileReader reader(strPath);
    switch (reader.open(lcMenus(), "File " + LogLine::arg(strPath) + " does not exist",
                        LogLine::timeStamp() + " : " + MenuShared::kSource +
                            ": LoadFile: file open error",
                        QIODevice::ReadOnly | QIODevice::Text)) {
    case XmlReading::FileReader::Missing:
        return false;
    case XmlReading::FileReader::Unopened:
        m_strFileName.clear();
        return false;
    case XmlReading::FileReader::Opened:
        break;
    }
    const bool bResult = ReadFile(reader);
    m_strFileName = strFileName;
    return bResult;
}

bool MenuParse::ReadFile(QXmlStreamReader &reader)
{
    if (!reader.device())
        return false;
    bool bResult = true;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.hasError())
            return false;
        if (XmlReading::isStartOf(reader, "nexodoc")) {
            reader.readNext();
            bResult = ReadInfo(reader);
        }
    }
    return bResult;
}

bool MenuParse::ReadInfo(QXmlStreamReader &reader)
{
    for (; !reader.atEnd(); reader.readNext()) {
        if (XmlReading::isStartOf(reader, "menu")) {
            qCDebug(lcMenus, "%s:open file ",
                    LogLine::prefix(MenuShared::kSource, "ReadInfo").constData());
            ReadMenuItem(reader);
            break;
        }
    }
    // Whatever follows the menus (the rest of a customization section) is skipped, never read
    // as menu definitions.
    while (!reader.atEnd())
        reader.readNext();
    // Reported as failure even after a complete read; callers look at the tree instead.
    return false;
}

void MenuParse::readIdAndText(QXmlStreamReader &reader, MenuXmlInfo *pEntry)
{
    const QString strTextID = attribute(reader, "id");
    const QString strName = reader.readElementText();
    if (!pEntry)
        return;
    pEntry->SetMenuTextID(strTextID);
    pEntry->SetMenuName(strName);
}

bool MenuParse::ReadMenuItem(QXmlStreamReader &reader)
{
    qCDebug(lcMenus, "%s:ReadMenuItem ",
            LogLine::prefix(MenuShared::kSource, "ReadMenuItem").constData());
    // Tokens are matched by element name only: the end tag of "menu" carries no "parent" and
    // so empties the current parent.
    for (; !reader.atEnd(); reader.readNext()) {
        const QStringRef name = reader.name();
        if (name == QLatin1String("menu")) {
            s_strCurrentParent = attribute(reader, "parent");
            if (s_strCurrentParent != MenuShared::topLevel())
                continue;
            s_strCurrentMenu = attribute(reader, "name");
            if (!m_pMenuInfoList)
                return false;
            m_pMenuInfoList->append(new STMENUINFO(s_strCurrentMenu));
        } else if (name == QLatin1String("item")) {
            const QString strType = attribute(reader, "type");
            if (strType == QLatin1String("POPUP")) {
                readIdAndText(reader, AddMenuPopup(s_strCurrentMenu));
            } else if (strType == QLatin1String("ITEM")) {
                readIdAndText(reader, AddMenuItem(s_strCurrentMenu, s_strCurrentParent));
            } else if (strType == QLatin1String("SEPERATOR")) {
                AddMenuSeparator(s_strCurrentMenu, s_strCurrentParent);
            }
        } else if (name == QLatin1String("customize")) {
            qCDebug(lcMenus, "%s:read traymenu customization ",
                    LogLine::prefix(MenuShared::kSource, "ReadMenuItem").constData());
            if (CustomizeOperator(reader)) {
                reader.readNext();
                CustomizeItemParse(reader);
            }
            return true;
        }
    }
    s_strCurrentMenu.clear();
    s_strCurrentParent.clear();
    return true;
}

void MenuParse::release()
{
    if (!m_pMenuInfoList)
        return;
    qDeleteAll(*m_pMenuInfoList);
    m_pMenuInfoList->clear();
    delete m_pMenuInfoList;
    m_pMenuInfoList = nullptr;
}

} // namespace MENU
