#ifndef LINKDECK_XFRAMEPLUGIN_MAINWINDOWTITLE_H
#define LINKDECK_XFRAMEPLUGIN_MAINWINDOWTITLE_H

#include <QObject>
#include <QTimer>

class QWidget;
class TitleBar;

// The main window's own chrome when Config.xml asks for it: the window goes frameless, a
// TitleBar runs across its top (the window keeps titleHeight pixels at the top and frameWidth
// at the other edges free of its contents), and the title bar's ticker shows the cell-broadcast
// text the device service reports.
class MainWindowTitle : public QObject
{
    Q_OBJECT
public:
    MainWindowTitle(QWidget *pWindow, int titleHeight, int frameWidth);

    TitleBar *titleBar() const { return m_pBar; }

protected:
    bool eventFilter(QObject *pWatched, QEvent *pEvent) override;

private:
    void placeBar();
    void pollCellBroadcast();
    void logButtons() const;

    QWidget *m_pWindow;
    TitleBar *m_pBar;
    int m_iTitleHeight;
    QTimer m_cbsPoll;
    QString m_strCbs;
};

#endif // LINKDECK_XFRAMEPLUGIN_MAINWINDOWTITLE_H
