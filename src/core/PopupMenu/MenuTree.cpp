#include "MenuParse.h"
#include "MenuShared.h"
#include "common/CoreLogging.h"

// Insertion into and removal from the menu tree, by top-level menu name, popup name and text id.
namespace MENU {

namespace {
// Takes the first entry with the given text id out of the list and frees it.
void removeByTextId(QList<MenuXmlInfo *> *pList, const QString &strTextID)
{
    if (!pList)
        return;
    for (int i = 0; i < pList->size(); ++i) {
        MenuXmlInfo *pEntry = pList->at(i);
        if (pEntry && pEntry->GetMenuTextID() == strTextID) {
            delete pList->takeAt(i);
            return;
        }
    }
}
} // namespace

STMENUINFO *MenuParse::findMenu(const QString &strMenuName) const
{
    if (!m_pMenuInfoList)
        return nullptr;
    for (STMENUINFO *pMenu : qAsConst(*m_pMenuInfoList)) {
        if (pMenu && pMenu->strMenuName == strMenuName)
            return pMenu;
    }
    return nullptr;
}

MenuXmlInfo *MenuParse::findPopup(const STMENUINFO *pMenu, const QString &strPopupName)
{
    if (!pMenu || !pMenu->pMenuItemList)
        return nullptr;
    for (MenuXmlInfo *pEntry : qAsConst(*pMenu->pMenuItemList)) {
        if (!pEntry || pEntry->GetMenuType() != MENU_TYPE_POPUP)
            continue;
        QString strName;
        pEntry->GetMenuName(strName);
        if (strName == strPopupName)
            return pEntry;
    }
    return nullptr;
}

MenuXmlInfo *MenuParse::AddMenuPopup(QString strMenuName)
{
    STMENUINFO *pMenu = findMenu(strMenuName);
    if (!pMenu || !pMenu->pMenuItemList) {
        qCDebug(lcMenus, "%s:AddMenuPopup ",
                LogLine::prefix(MenuShared::kSource, "AddMenuPopup").constData());
        return nullptr;
    }
    auto *pEntry = new MenuXmlInfo;
    pEntry->SetMenuType(MENU_TYPE_POPUP);
    pMenu->pMenuItemList->append(pEntry);
    return pEntry;
}

MenuXmlInfo *MenuParse::AddMenuItem(QString strMenuName, QString strPopupName)
{
    return AddMenuType(strMenuName, strPopupName, MENU_TYPE_ITEM);
}

MenuXmlInfo *MenuParse::AddMenuSeparator(QString strMenuName, QString strPopupName)
{
    return AddMenuType(strMenuName, strPopupName, MENU_TYPE_SEPARATOR);
}

MenuXmlInfo *MenuParse::AddMenuType(QString strMenuName, QString strPopupName, int iType)
{
    STMENUINFO *pMenu = findMenu(strMenuName);
    if (!pMenu)
        return nullptr;
    QList<MenuXmlInfo *> *pTarget = nullptr;
    if (strPopupName == MenuShared::topLevel()) {
        pTarget = pMenu->pMenuItemList;
    } else if (MenuXmlInfo *pPopup = findPopup(pMenu, strPopupName)) {
        pTarget = pPopup->GetPopupMenuList();
    }
    if (!pTarget)
        return nullptr;

    auto *pEntry = new MenuXmlInfo;
    if (iType == MENU_TYPE_ITEM || iType == MENU_TYPE_SEPARATOR)
        pEntry->SetMenuType(iType);
    pEntry->SetPopupParent(strPopupName);
    pTarget->append(pEntry);
    return pEntry;
}

void MenuParse::DeleteMenuPopup(QString strMenuName, QString strTextID)
{
    if (STMENUINFO *pMenu = findMenu(strMenuName))
        removeByTextId(pMenu->pMenuItemList, strTextID);
}

void MenuParse::DeleteMenuItem(QString strMenuName, QString strPopupName, QString strTextID)
{
    STMENUINFO *pMenu = findMenu(strMenuName);
    if (!pMenu)
        return;
    if (strPopupName == MenuShared::topLevel()) {
        removeByTextId(pMenu->pMenuItemList, strTextID);
    } else if (MenuXmlInfo *pPopup = findPopup(pMenu, strPopupName)) {
        removeByTextId(pPopup->GetPopupMenuList(), strTextID);
    }
}

} // namespace MENU
