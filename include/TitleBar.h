#ifndef LINKDECK_TITLEBAR_H
#define LINKDECK_TITLEBAR_H

#include "CoreGlobal.h"

#include <QFrame>
#include <QList>
#include <QPixmap>
#include <QPoint>
#include <QRect>

class QHBoxLayout;
class QLabel;
class QToolButton;
class Ticker;

// The title bar of a frameless top-level window (the main frame or a dialog): icon, title,
// cell-broadcast ticker and the minimize, maximize, restore and close buttons. Dragging it moves
// the window, a double-click maximizes or restores, and minimizing sends the window to a strip
// in a process-wide grid of 160 x 30 slots along the bottom of the available desktop area
// (mini mode).
//
// When every slot of the grid is taken, minimizing leaves the window where and as it is: no
// cell is marked and the window does not enter mini mode, so no later restore or drag can
// release cells it never claimed. A line "no free mini-mode slot" is logged.
//
// On the "wayland" platform clients cannot place their windows: a drag asks the compositor for
// an interactive move (QWindow::startSystemMove) and maximize/restore ask it to maximize or
// restore the window; every other platform places the window itself.
class CORE_EXPORT TitleBar : public QFrame
{
    Q_OBJECT
public:
    // One slot of the mini-mode grid; nOccupy counts the window rectangles that claim it.
    struct OccupyCell
    {
        int nOccupy = 0;
        QRect rect;
        QWidget *pWidget = nullptr;
    };

    // parent: the top-level window the bar belongs to; type is stored for callers.
    TitleBar(QWidget *parent, int type);

    void SetWindowTitle(const QString &title);
    void TitleBarShowCBS(const QString &text);
    // An empty path means the application's "/plugins/XFramePlugin/TitleIcon".
    void setCusTitleBarIcon(QString path, int width, int height);
    QLabel *GetTitleLabel() const { return m_pLabelTitle; }
    bool IsMaximized() const { return m_bMaximized; }
    bool IsMiniState() const { return m_bMiniState; }
    int GetType() const { return m_iType; }
    void SetMoveable(bool bMoveable) { m_bMoveable = bMoveable; }
    void SetMinimizeBehavior(bool bHide) { m_bMinimizeHide = bHide; }
    void SetMainFrmMiniMode(bool bMiniMode) { m_bMainFrmMiniMode = bMiniMode; }
    void EnableIcon(bool bEnable);
    void EnableMaximizeButton(bool bEnable);
    void EnableMinimizeButton(bool bEnable);
    void EnableCloseButton(bool bEnable);
    void GrayoutCloseButton(bool bEnable);
    bool IsCloseButtonEnable() const;
    void HideAllControl();
    void ShowAllControl();
    bool ShowWindow(QRect &rect);
    // Hides the application's visible non-modal ExtendDialogs (other than this bar's window)
    // and shows them again later.
    void HideAllPopupWindow();
    void RestoreAllPopupWindow();

    // Mini mode.
    void setMiniState();
    // False when every slot is taken (the window then stays as it is).
    bool moveToMiniPos();
    // Decrements (release) or increments the counts of the cells that rect covers.
    void setOccupyState(bool release, QRect &rect);
    void ReleaseOccupy();
    bool isIconPressed(const QPoint &pos);

    // The grid shared by every title bar of the process: null until the first window goes to
    // mini mode, then built once from that window's screen and never freed.
    static OccupyCell **s_ppMatrixOccupy;
    static int iVerticalCnt;
    static int iHorizontalCnt;

signals:
    void minimizedDialog();

public slots:
    void showSmall();
    void showMaxRestore();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void enterEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void buildControls();
    void buildLayout();
    void showSystemMenu(const QPoint &pos);
    void initSysmenu() {}
    void unsetWindowCursor();
    void dragTo(const QPoint &globalPos);
    static void buildGrid(const QRect &available);
    static bool isWayland();

    QToolButton *m_pBtnMinimize = nullptr;
    QToolButton *m_pBtnMaximize = nullptr;
    QToolButton *m_pBtnRestore = nullptr;
    QToolButton *m_pBtnClose = nullptr;
    QPixmap m_pixNormal;
    QPixmap m_pixPressed;
    bool m_bMaximized = false;
    QPoint m_ptPressGlobal;
    QPoint m_ptPressOffset;
    QLabel *m_pLabelIcon = nullptr;
    QLabel *m_pLabelTitle = nullptr;
    Ticker *m_pTicker = nullptr;
    QHBoxLayout *m_pLayout = nullptr;
    bool m_bMousePressed = false;
    bool m_bMaxEnabled = true;
    int m_iType = 0;
    QRect m_rectNormal;
    bool m_bMoveable = false;
    bool m_bMinimizeHide = false;
    bool m_bMiniState = false;
    QList<QWidget *> m_listHiddenPopups;
    bool m_bSysMenu = false;
    bool m_bMainFrmMiniMode = false;
};

#endif // LINKDECK_TITLEBAR_H
