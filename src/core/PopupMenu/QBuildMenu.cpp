#include "QBuildMenu.h"

#include "CommonUtils.h"
#include "MenuShared.h"
#include "common/CoreLogging.h"

#include <QAction>
#include <QMenu>
#include <QPointer>

#include <new>

namespace MENU {

namespace {
const QString kSearchTextId = QStringLiteral("IDS_MENU_SEARCH");

void appendRecord(QList<QActionInfo> *pActionList, QAction *pAction, const MenuXmlInfo *pEntry)
{
    if (!pActionList)
        return;
    QActionInfo info;
    info.action = pAction;
    info.textId = pEntry->GetMenuTextID();
    pEntry->GetPopupParent(info.popupParent);
    pActionList->append(info);
}

QString menuName(const MenuXmlInfo *pEntry)
{
    QString strName;
    pEntry->GetMenuName(strName);
    return strName;
}

// Items and separators of a popup; nested popups have no place in a sub-menu and are skipped.
void fillSubMenu(QMenu *pSubMenu, const QList<MenuXmlInfo *> &children, QWidget *pParent,
                 QList<QActionInfo> *pActionList)
{
    for (const MenuXmlInfo *pChild : children) {
        if (!pChild)
            continue;
        if (pChild->GetMenuType() == MENU_TYPE_SEPARATOR) {
            pSubMenu->addSeparator();
        } else if (pChild->GetMenuType() == MENU_TYPE_ITEM) {
            auto *pAction = new QAction(menuName(pChild), pParent);
            pSubMenu->addAction(pAction);
            appendRecord(pActionList, pAction, pChild);
        }
    }
}
} // namespace

QBuildMenu::QBuildMenu(QString strPluginName, QString strFileName)
{
    if (strPluginName.isEmpty() && strFileName.isEmpty())
        return;
    m_pMenuParse = std::make_unique<MenuParse>(strPluginName, strFileName);
    m_pMenuInfoList = m_pMenuParse->GetMenuInfoList();
}

QBuildMenu::~QBuildMenu() = default;

QMenu *QBuildMenu::CreateMenuBar(QString strMenuName, QWidget *pParent,
                                 QList<QActionInfo> *pActionList)
{
    qCDebug(lcMenus, "%s:CreateMenuBar ",
            LogLine::prefix(MenuShared::kSource, "CreateMenuBar").constData());
    if (strMenuName.isEmpty() || !pParent || !m_pMenuInfoList)
        return nullptr;
    for (STMENUINFO *pMenuInfo : qAsConst(*m_pMenuInfoList)) {
        if (!pMenuInfo || pMenuInfo->strMenuName != strMenuName)
            continue;
        auto *pMenu = new QMenu(pParent);
        AddMenuItem(pMenuInfo, pMenu, pParent, pActionList);
        return pMenu;
    }
    return nullptr;
}

bool QBuildMenu::AddMenuItem(STMENUINFO *pMenuInfo, QMenu *pMenu, QWidget *pParent,
                             QList<QActionInfo> *pActionList)
{
    qCDebug(lcMenus, "%s:AddMenuItem ",
            LogLine::prefix(MenuShared::kSource, "AddMenuItem").constData());
    if (!pMenuInfo || !pMenuInfo->pMenuItemList)
        return true;
    bool bAfterSearch = false;
    for (const MenuXmlInfo *pEntry : qAsConst(*pMenuInfo->pMenuItemList)) {
        if (!pEntry)
            continue;
        const int iType = pEntry->GetMenuType();
        // Every entry gets an action, separators included (theirs is never shown).
        auto *pAction = new (std::nothrow) QAction(menuName(pEntry), pParent);
        if (!pAction)
            return false;
        if (!pMenu)
            continue;
        if (pEntry->GetMenuTextID() == kSearchTextId)
            bAfterSearch = true;

        if (iType == MENU_TYPE_SEPARATOR) {
            // Only the first separator after the search entry follows the SMS switch, however
            // many items stand between them.
            if (!bAfterSearch || CommonUtils::GetSMSSeperatorConfigValue())
                pMenu->addSeparator();
            bAfterSearch = false;
            continue;
        }

        pMenu->addAction(pAction);
        appendRecord(pActionList, pAction, pEntry);
        if (iType != MENU_TYPE_POPUP)
            continue;
        auto *pSubMenu = new (std::nothrow) QMenu;
        if (!pSubMenu)
            return false;
        const QList<MenuXmlInfo *> *pChildren = pEntry->GetPopupMenuList();
        if (!pChildren) {
            // A popup without a child list ends the whole menu here.
            delete pSubMenu;
            return false;
        }
        fillSubMenu(pSubMenu, *pChildren, pParent, pActionList);
        pAction->setMenu(pSubMenu);
        // Parentless, the sub-menu lives exactly as long as the action that opens it.
        QObject::connect(pAction, &QObject::destroyed,
                         [pGuard = QPointer<QMenu>(pSubMenu)] { delete pGuard.data(); });
    }
    return true;
}

} // namespace MENU
