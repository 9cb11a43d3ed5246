#include "TitleBar.h"
#include "TitleBarSource.h"

#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QToolButton>
#include <QWindow>

namespace {

// A drag may bring the cursor no closer than this to the available area's edge.
constexpr int kEdgeMargin = 3;

} // namespace

bool TitleBar::isWayland()
{
    return QGuiApplication::platformName() == QLatin1String("wayland");
}

bool TitleBar::isIconPressed(const QPoint &pos)
{
    const QByteArray prefix = LogLine::listPrefix(kTitleBarSource, "isIconPressed");
    if (!m_pLabelIcon) {
        qCDebug(lcChrome, "%s : title Icon is null", prefix.constData());
        return false;
    }
    if (m_pLabelIcon->isHidden()) {
        qCDebug(lcChrome, "%s : title Icon is hidden", prefix.constData());
        return false;
    }
    return m_pLabelIcon->geometry().contains(pos);
}

void TitleBar::unsetWindowCursor()
{
    if (window()->cursor().shape() != Qt::ArrowCursor)
        window()->unsetCursor();
}

void TitleBar::mousePressEvent(QMouseEvent *event)
{
    if (!event) {
        qCDebug(lcChrome, "%s QMouseEvent is NULL",
                LogLine::listPrefix(kTitleBarSource, "mousePressEvent").constData());
        return;
    }
    m_ptPressGlobal = event->globalPos();
    m_ptPressOffset = mapTo(window(), event->pos());
    m_bMousePressed = true;
    if (isIconPressed(event->pos()))
        showSystemMenu(event->globalPos());
    else
        unsetWindowCursor();
}

void TitleBar::mouseReleaseEvent(QMouseEvent *)
{
    m_bMousePressed = false;
}

void TitleBar::enterEvent(QEvent *)
{
    unsetWindowCursor();
}

void TitleBar::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (!event || !m_pBtnRestore || !m_pBtnMaximize || isIconPressed(event->pos()))
        return;
    if (m_pBtnRestore->isHidden() && m_pBtnMaximize->isHidden())
        return;
    if (event->button() == Qt::LeftButton)
        showMaxRestore();
}

void TitleBar::mouseMoveEvent(QMouseEvent *event)
{
    if (!event || (m_bMaximized && !m_bMoveable) || !m_bMousePressed)
        return;
    if (isWayland()) {
        // The compositor moves the window; it takes the rest of this drag over.
        QWindow *pHandle = window()->windowHandle();
        const bool started = pHandle && pHandle->startSystemMove();
        qCDebug(lcChrome, "%s : system move requested, started = %d",
                LogLine::listPrefix(kTitleBarSource, "mouseMoveEvent").constData(), started);
        m_bMousePressed = false;
        return;
    }
    dragTo(event->globalPos());
}

void TitleBar::dragTo(const QPoint &globalPos)
{
    QWidget *pWindow = window();
    QRect oldGeometry = pWindow->geometry();
    QScreen *pScreen = pWindow->screen();
    if (!pScreen) {
        qCWarning(lcChrome, "%s, %s : Can't get desktopwidget!!!", LogLine::timeStamp().constData(),
                  LogLine::listPrefix(kTitleBarSource, "mouseMoveEvent").constData());
        return;
    }
    const QRect available = pScreen->availableGeometry();
    const QPoint margin(kEdgeMargin, kEdgeMargin);
    if (!available.contains(globalPos + margin) || !available.contains(globalPos - margin)) {
        qCDebug(lcChrome, "%s, %s : Move out of available area!!", LogLine::timeStamp().constData(),
                LogLine::listPrefix(kTitleBarSource, "mouseMoveEvent").constData());
        return;
    }
    pWindow->move(globalPos - m_ptPressOffset);
    if (m_bMiniState) {
        QRect newGeometry = pWindow->geometry();
        setOccupyState(true, oldGeometry);
        setOccupyState(false, newGeometry);
    }
}
