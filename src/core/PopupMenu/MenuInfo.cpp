#include "MenuParse.h"

namespace MENU {

STMENUINFO::STMENUINFO(const QString &name)
    : strMenuName(name)
    , pMenuItemList(new QList<MenuXmlInfo *>)
{}

STMENUINFO::~STMENUINFO()
{
    if (!pMenuItemList)
        return;
    qDeleteAll(*pMenuItemList);
    delete pMenuItemList;
}

} // namespace MENU
