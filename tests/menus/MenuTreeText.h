#ifndef LINKDECK_TESTS_MENUTREETEXT_H
#define LINKDECK_TESTS_MENUTREETEXT_H

#include "MenuParse.h"

#include <QStringList>

// A menu tree written out on one line, so that a whole tree is compared at once:
//   Main(I:IDS_OPEN=Open@null, P:IDS_VIEW=View[I:IDS_ZOOM=Zoom@View, S@View], S@null)
// I item, P popup (children in brackets), S separator, U an entry whose type is unset.
namespace MenuTreeText {

inline QString entryText(const MENU::MenuXmlInfo *pEntry);

inline QString entriesText(const QList<MENU::MenuXmlInfo *> *pList)
{
    if (!pList)
        return QStringLiteral("<no list>");
    QStringList parts;
    for (const MENU::MenuXmlInfo *pEntry : *pList)
        parts << entryText(pEntry);
    return parts.join(QStringLiteral(", "));
}

inline QString entryText(const MENU::MenuXmlInfo *pEntry)
{
    QString name;
    QString parent;
    pEntry->GetMenuName(name);
    pEntry->GetPopupParent(parent);
    const QString idAndName = pEntry->GetMenuTextID() + QLatin1Char('=') + name;
    switch (pEntry->GetMenuType()) {
    case MENU::MENU_TYPE_ITEM:
        return QStringLiteral("I:") + idAndName + QLatin1Char('@') + parent;
    case MENU::MENU_TYPE_POPUP:
        return QStringLiteral("P:") + idAndName + QLatin1Char('[') +
               entriesText(pEntry->GetPopupMenuList()) + QLatin1Char(']');
    case MENU::MENU_TYPE_SEPARATOR:
        return QStringLiteral("S@") + parent;
    default:
        return QStringLiteral("U:") + idAndName + QLatin1Char('@') + parent;
    }
}

inline QString treeText(const MENU::MenuParse &parser)
{
    const QList<MENU::STMENUINFO *> *pMenus = parser.GetMenuInfoList();
    if (!pMenus)
        return QStringLiteral("<no tree>");
    QStringList parts;
    for (const MENU::STMENUINFO *pMenu : *pMenus)
        parts << pMenu->strMenuName + QLatin1Char('(') + entriesText(pMenu->pMenuItemList) +
                     QLatin1Char(')');
    return parts.join(QStringLiteral("; "));
}

} // namespace MenuTreeText

#endif // LINKDECK_TESTS_MENUTREETEXT_H
