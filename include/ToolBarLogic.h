#ifndef LINKDECK_TOOLBARLOGIC_H
#define LINKDECK_TOOLBARLOGIC_H

#include "CoreGlobal.h"

#include <QLineEdit>
#include <QList>
#include <QString>

class QButtonGroup;
class QHBoxLayout;
class QKeyEvent;
class QLabel;
class QObject;
class QToolButton;
class QWidget;
class QXmlStreamReader;

// One toolbar button as the toolbar file describes it; kept by value in the caller's list.
struct ToolItem
{
    int id = 0;          // the button's id in the button group
    QString resource;    // text id of the tool tip
    QString enabled;     // icon file (relative to the plugin folder) of the enabled state
    QString disabled;    // icon file of the disabled state
    bool search = false; // resource contains "SEARCH": the button that opens the search box
    QToolButton *button = nullptr; // set by CreateToolBar, cleared by DestroyToolButtonGroup
};

// The search box of a toolbar: Up and Down move the cursor, Ctrl+N and Ctrl+F are reported.
class CORE_EXPORT SearchLineEdit : public QLineEdit
{
    Q_OBJECT
public:
    explicit SearchLineEdit(QWidget *parent = nullptr);

signals:
    void controlF();
    void controlN();

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

// Toolbars described by XML files: reading the file, building a row of tool buttons with icons
// from the plugin's folder (mirrored in right-to-left layouts), switching single buttons on and
// off, and the optional search box. The caller keeps the item list, the button group and the
// search widgets and hands them back to every call.
class CORE_EXPORT ToolBarLogic
{
public:
    // Fills lstItems from the toolbar file strPath; bGroupInGroup takes the "GroupInGroup"
    // element's "enable" value when there is one. strUnused has no effect.
    static bool GetXmlData(QString strPath, QList<ToolItem> &lstItems, bool &bGroupInGroup,
                           QString strUnused);
    static bool getToolBarCoount(QXmlStreamReader &reader, int &iCount);
    // The plugin of that name from the container, which loads it when it is enabled; or null.
    static QObject *getPlugin(QString strPluginName);

    // Builds the buttons into pToolBar. With all three search out-arguments given, also creates
    // the search box, which ShowHideSearchBox then shows and hides.
    static bool CreateToolBar(QString strPluginName, QWidget *pToolBar, QList<ToolItem> &lstItems,
                              QButtonGroup **ppButtonGroup, QHBoxLayout **ppSearchLayout,
                              SearchLineEdit **ppSearchEdit, QLabel **ppSearchIcon);
    static void EnableDisableItem(QString strPluginName, QList<ToolItem> &lstItems, int iId,
                                  bool bEnable);
    // Reloads every button's enabled icon, mirrored or not; disabled buttons thus show their
    // enabled icon afterwards.
    static void ChangeToolBarIconDirection(QString strPluginName, QList<ToolItem> &lstItems,
                                           bool bMirror, QLabel **ppSearchIcon);
    static void DestroyToolButtonGroup(QList<ToolItem> &lstItems, QButtonGroup **ppButtonGroup);

    static void setIcon(QToolButton *pButton, bool bActive, QString strIconPath);
    static void setMirrorIcon(QToolButton *pButton, bool bActive, QString strIconPath,
                              bool bMirror);

    // The search box is not placed anywhere; while it is hidden the caller owns the layout, and
    // the label and edit until they were shown once (then the toolbar widget owns them).
    static bool createSearchBox(QHBoxLayout **ppSearchLayout, SearchLineEdit **ppSearchEdit,
                                QString strIconPath, QLabel **ppSearchIcon);
    static void ShowHideSearchBox(QWidget *pToolBar, QHBoxLayout *pSearchLayout,
                                  SearchLineEdit *pSearchEdit, bool bShow);

    // "ToolBar_" + plugin name: the object name of a plugin's toolbar widget.
    static QString GetObjectName(QString strPluginName);
};

#endif // LINKDECK_TOOLBARLOGIC_H
