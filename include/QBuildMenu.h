#ifndef LINKDECK_QBUILDMENU_H
#define LINKDECK_QBUILDMENU_H

#include "CoreGlobal.h"
#include "MenuParse.h"

#include <QList>
#include <QString>

#include <memory>

class QAction;
class QMenu;
class QWidget;

namespace MENU {

// One action created by QBuildMenu; callers find actions by text id (and popup parent) to set
// translated texts and connect them.
struct QActionInfo
{
    QAction *action = nullptr; // owned by the parent widget handed to the builder
    QString textId;            // e.g. "IDS_MENU_SEARCH"
    QString popupParent;       // "null" for entries of the top-level menu, else the popup's name
};

// Turns the menus of one plugin menu file into QMenus. Actions get the entry texts of the file
// and nothing else: no translation, shortcuts or connections.
class CORE_EXPORT QBuildMenu
{
public:
    // Two empty strings load nothing; otherwise the file is read with its operator customization.
    QBuildMenu(QString strPluginName, QString strFileName);
    ~QBuildMenu();
    QBuildMenu(const QBuildMenu &) = delete;
    QBuildMenu &operator=(const QBuildMenu &) = delete;

    // A new menu (child of pParent) for the top-level menu strMenuName, or null when there is no
    // such menu; appends one record per created item and popup to pActionList.
    QMenu *CreateMenuBar(QString strMenuName, QWidget *pParent, QList<QActionInfo> *pActionList);
    // Fills pMenu with the entries of pMenuInfo. The separator that follows "IDS_MENU_SEARCH"
    // appears only while CommonUtils::GetSMSSeperatorConfigValue() is true.
    bool AddMenuItem(STMENUINFO *pMenuInfo, QMenu *pMenu, QWidget *pParent,
                     QList<QActionInfo> *pActionList);

private:
    std::unique_ptr<MenuParse> m_pMenuParse;
    QList<STMENUINFO *> *m_pMenuInfoList = nullptr; // owned by m_pMenuParse
};

} // namespace MENU

#endif // LINKDECK_QBUILDMENU_H
