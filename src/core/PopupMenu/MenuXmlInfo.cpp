#include "MenuParse.h"

namespace MENU {

MenuXmlInfo::MenuXmlInfo()
    : m_pPopupMenuList(new QList<MenuXmlInfo *>)
{}

MenuXmlInfo::~MenuXmlInfo()
{
    releaseXMlInfo();
}

int MenuXmlInfo::GetMenuType() const
{
    return m_iMenuType;
}

void MenuXmlInfo::SetMenuType(int iType)
{
    m_iMenuType = iType;
}

void MenuXmlInfo::GetMenuName(QString &strName) const
{
    strName = m_strMenuName;
}

void MenuXmlInfo::SetMenuName(QString strName)
{
    m_strMenuName = strName;
}

QString MenuXmlInfo::GetMenuTextID() const
{
    return m_strMenuTextID;
}

void MenuXmlInfo::SetMenuTextID(QString strTextID)
{
    m_strMenuTextID = strTextID;
}

void MenuXmlInfo::GetPopupParent(QString &strParent) const
{
    strParent = m_strPopupParent;
}

void MenuXmlInfo::SetPopupParent(QString strParent)
{
    m_strPopupParent = strParent;
}

void MenuXmlInfo::GetMenuFullIntoPlugin(QString &strText) const
{
    strText = m_strMenuFullIntoPlugin;
}

void MenuXmlInfo::SetMenuFullIntoPlugin(QString strText)
{
    m_strMenuFullIntoPlugin = strText;
}

QList<MenuXmlInfo *> *MenuXmlInfo::GetPopupMenuList() const
{
    return m_pPopupMenuList;
}

void MenuXmlInfo::SetPopupMenuList(QList<MenuXmlInfo *> *pList)
{
    if (pList == m_pPopupMenuList)
        return;
    // Children moved over into the new list live on there; the others go with the old list.
    if (m_pPopupMenuList) {
        for (MenuXmlInfo *pChild : qAsConst(*m_pPopupMenuList)) {
            if (!pList || !pList->contains(pChild))
                delete pChild;
        }
        delete m_pPopupMenuList;
    }
    m_pPopupMenuList = pList;
}

void MenuXmlInfo::releaseXMlInfo()
{
    if (!m_pPopupMenuList)
        return;
    qDeleteAll(*m_pPopupMenuList);
    m_pPopupMenuList->clear();
    delete m_pPopupMenuList;
    m_pPopupMenuList = nullptr;
}

} // namespace MENU
