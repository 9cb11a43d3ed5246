#ifndef LINKDECK_MENUPARSE_H
#define LINKDECK_MENUPARSE_H

#include "CoreGlobal.h"

#include <QList>
#include <QString>

class QXmlStreamReader;

namespace MENU {

// Values of MenuXmlInfo::GetMenuType().
enum MenuType {
    MENU_TYPE_UNSET = 0,
    MENU_TYPE_ITEM = 1,
    MENU_TYPE_POPUP = 2,
    MENU_TYPE_SEPARATOR = 3
};

// One entry of a menu file: an item, a popup (holding its own entries) or a separator.
// An entry owns its child list and the entries in it.
class CORE_EXPORT MenuXmlInfo
{
public:
    MenuXmlInfo();
    ~MenuXmlInfo();
    MenuXmlInfo(const MenuXmlInfo &) = delete;
    MenuXmlInfo &operator=(const MenuXmlInfo &) = delete;

    int GetMenuType() const;
    void SetMenuType(int iType);
    void GetMenuName(QString &strName) const;
    void SetMenuName(QString strName);
    QString GetMenuTextID() const;
    void SetMenuTextID(QString strTextID);
    void GetPopupParent(QString &strParent) const;
    void SetPopupParent(QString strParent);
    void GetMenuFullIntoPlugin(QString &strText) const;
    void SetMenuFullIntoPlugin(QString strText);

    // The children of a popup; null after releaseXMlInfo().
    QList<MenuXmlInfo *> *GetPopupMenuList() const;
    // Frees the current list and the children not carried over into pList, then takes
    // ownership of pList.
    void SetPopupMenuList(QList<MenuXmlInfo *> *pList);
    // Frees the children and the list; the list pointer becomes null.
    void releaseXMlInfo();

private:
    QList<MenuXmlInfo *> *m_pPopupMenuList;
    int m_iMenuType = MENU_TYPE_UNSET;
    QString m_strMenuName;
    QString m_strMenuFullIntoPlugin;
    QString m_strPopupParent;
    QString m_strMenuTextID;
};

// One named top-level menu of a menu file with its entries in file order; owns both.
struct CORE_EXPORT STMENUINFO
{
    explicit STMENUINFO(const QString &name = QString());
    ~STMENUINFO();
    STMENUINFO(const STMENUINFO &) = delete;
    STMENUINFO &operator=(const STMENUINFO &) = delete;

    QString strMenuName;
    QList<MenuXmlInfo *> *pMenuItemList;
};

// Reads a plugin's menu file into a tree of top-level menus and their entries, then applies the
// operator's customization section of the same file. The parser owns the whole tree.
class CORE_EXPORT MenuParse
{
public:
    MenuParse();
    // Takes the operator name from the device service and loads
    // <application dir>/plugins/<strPluginName>/<strFileName>.
    MenuParse(QString strPluginName, QString strFileName);
    ~MenuParse();
    MenuParse(const MenuParse &) = delete;
    MenuParse &operator=(const MenuParse &) = delete;

    // False when the file is missing or unreadable, and also after a complete read of a file
    // with a "nexodoc" root: callers look at the tree, not at the result.
    bool LoadFile(QString strPluginName, QString strFileName);
    // Asks the device service for the operator customization name; empty when it has none.
    QString GetOperator();
    // Stays owned by the parser; null after release().
    QList<STMENUINFO *> *GetMenuInfoList() const;

    // Reading stages, each consuming tokens of the reader.
    bool ReadFile(QXmlStreamReader &reader);
    bool ReadInfo(QXmlStreamReader &reader);
    bool ReadMenuItem(QXmlStreamReader &reader);
    bool CustomizeOperator(QXmlStreamReader &reader);
    bool CustomizeItemParse(QXmlStreamReader &reader);

    // Tree insertion; each returns the new entry or null when its menu or popup is unknown.
    MenuXmlInfo *AddMenuPopup(QString strMenuName);
    MenuXmlInfo *AddMenuItem(QString strMenuName, QString strPopupName);
    MenuXmlInfo *AddMenuSeparator(QString strMenuName, QString strPopupName);
    MenuXmlInfo *AddMenuType(QString strMenuName, QString strPopupName, int iType);

    // Tree removal; unknown menus, popups and ids change nothing.
    void DeleteMenuPopup(QString strMenuName, QString strTextID);
    void DeleteMenuItem(QString strMenuName, QString strPopupName, QString strTextID);

    // Frees the whole tree; safe to call more than once.
    void release();

private:
    STMENUINFO *findMenu(const QString &strMenuName) const;
    static MenuXmlInfo *findPopup(const STMENUINFO *pMenu, const QString &strPopupName);
    static void readIdAndText(QXmlStreamReader &reader, MenuXmlInfo *pEntry);

    QList<STMENUINFO *> *m_pMenuInfoList;
    QString m_strFileName;
    QString m_strOperator;

    // Remembered between calls and shared by all parsers; emptied after a complete pass.
    static QString s_strCurrentMenu;
    static QString s_strCurrentParent;
    static QString s_strCustomizeMenu;
    static QString s_strCustomizeParent;
};

} // namespace MENU

#endif // LINKDECK_MENUPARSE_H
