#ifndef LINKDECK_XFRAMEPLUGIN_MAINWINDOWCHROME_H
#define LINKDECK_XFRAMEPLUGIN_MAINWINDOWCHROME_H

#include "QBuildMenu.h"
#include "ToolBarLogic.h"

#include <QList>
#include <QObject>
#include <QPointer>

class QButtonGroup;
class QHBoxLayout;
class QLabel;
class QMainWindow;
class QMenu;
class QSystemTrayIcon;
class QToolBar;

// The main window's menu bar, tray menu and toolbar, built from the plugin's "MainMenu.xml" and
// "ToolBar.xml" with the operator's menu customization applied, and the actions behind them.
class MainWindowChrome : public QObject
{
    Q_OBJECT
public:
    explicit MainWindowChrome(QMainWindow *pWindow);
    ~MainWindowChrome() override;

    void build();

private:
    void buildMenus();
    void buildToolBar();
    void buildTray(QMenu *pTrayMenu);
    void connectActions();
    void connectAction(const QString &textId, void (MainWindowChrome::*slot)());

    void onToolButton(int id);
    void toggleSearchBox();
    void filterPluginList();
    void setLeftToRight();
    void setRightToLeft();
    void setDirection(Qt::LayoutDirection direction);
    void toggleToolBar();
    void showAbout();
    void showWindow();
    void openOperatorPortal();
    void detectDevice();
    void makeCall();
    void quit();

    QMainWindow *m_pWindow;
    QList<MENU::QActionInfo> m_actions;
    QList<ToolItem> m_toolItems;
    QPointer<QWidget> m_pToolBarWidget;
    QToolBar *m_pToolBar = nullptr;
    QButtonGroup *m_pButtonGroup = nullptr;
    QHBoxLayout *m_pSearchLayout = nullptr;
    SearchLineEdit *m_pSearchEdit = nullptr;
    QLabel *m_pSearchIcon = nullptr;
    bool m_bSearchShown = false;
    QSystemTrayIcon *m_pTray = nullptr;
};

#endif // LINKDECK_XFRAMEPLUGIN_MAINWINDOWCHROME_H
