#include "TitleBar.h"
#include "TitleBarSource.h"

#include <QGuiApplication>
#include <QScreen>
#include <QToolButton>
#include <QWindow>

namespace {

constexpr int kSlotWidth = 160;
constexpr int kSlotHeight = 30;

QRect availableArea(QWidget *pWindow)
{
    QScreen *pScreen = pWindow->screen();
    if (!pScreen)
        pScreen = QGuiApplication::primaryScreen();
    return pScreen ? pScreen->availableGeometry() : QRect();
}

} // namespace

TitleBar::OccupyCell **TitleBar::s_ppMatrixOccupy = nullptr;
int TitleBar::iVerticalCnt = 0;
int TitleBar::iHorizontalCnt = 0;

void TitleBar::showMaxRestore()
{
    if (!m_pBtnMinimize || !m_pBtnMaximize || !m_pBtnRestore) {
        qCDebug(lcChrome, "%s : maximize or restore button is null",
                LogLine::listPrefix(kTitleBarSource, "showMaxRestore").constData());
        return;
    }
    QWidget *pWindow = window();
    if (!m_bMaximized && !m_bMiniState) {
        m_rectNormal = pWindow->geometry();
        if (isWayland()) {
            pWindow->showMaximized();
        } else {
            pWindow->setGeometry(availableArea(pWindow));
            pWindow->repaint();
        }
        m_bMaximized = true;
        m_pBtnMaximize->hide();
        m_pBtnRestore->show();
        return;
    }
    QRect noted = pWindow->geometry();
    if (m_bMaximized && isWayland())
        pWindow->showNormal();
    pWindow->setGeometry(m_rectNormal);
    if (m_bMaximized) {
        m_bMaximized = false;
        m_pBtnMaximize->show();
    } else if (!m_bMinimizeHide) {
        m_bMiniState = false;
        m_pBtnMinimize->show();
        setOccupyState(true, noted);
    }
    m_pBtnRestore->hide();
}

void TitleBar::showSmall()
{
    const QByteArray prefix = LogLine::listPrefix(kTitleBarSource, "showSmall");
    qCDebug(lcChrome, "%s : entered", prefix.constData());
    if (m_bMinimizeHide) {
        qCDebug(lcChrome, "%s : hide called", prefix.constData());
        window()->hide();
        return;
    }
    if (moveToMiniPos())
        setMiniState();
}

void TitleBar::setMiniState()
{
    if (m_bMinimizeHide)
        return;
    if (!m_pBtnRestore) {
        qCDebug(lcChrome, "%s : restore button is null",
                LogLine::listPrefix(kTitleBarSource, "setMiniState").constData());
        return;
    }
    m_pBtnMinimize->hide();
    m_pBtnRestore->show();
}

void TitleBar::buildGrid(const QRect &available)
{
    iVerticalCnt = available.height() / kSlotHeight;
    iHorizontalCnt = available.width() / kSlotWidth;
    s_ppMatrixOccupy = new OccupyCell *[iVerticalCnt];
    for (int row = 0; row < iVerticalCnt; ++row) {
        s_ppMatrixOccupy[row] = new OccupyCell[iHorizontalCnt];
        const int top = available.bottom() - kSlotHeight * (row + 1);
        for (int column = 0; column < iHorizontalCnt; ++column)
            s_ppMatrixOccupy[row][column].rect =
                QRect(available.left() + kSlotWidth * column, top, kSlotWidth, kSlotHeight);
    }
}

bool TitleBar::moveToMiniPos()
{
    QWidget *pWindow = window();
    m_rectNormal = pWindow->geometry();
    if (!s_ppMatrixOccupy)
        buildGrid(availableArea(pWindow));
    for (int row = 0; row < iVerticalCnt; ++row) {
        for (int column = 0; column < iHorizontalCnt; ++column) {
            OccupyCell &cell = s_ppMatrixOccupy[row][column];
            if (cell.nOccupy != 0)
                continue;
            cell.nOccupy = 1;
            cell.pWidget = pWindow;
            pWindow->setGeometry(cell.rect);
            pWindow->move(cell.rect.topLeft());
            m_bMiniState = true;
            return true;
        }
    }
    qCDebug(lcChrome, "%s : no free mini-mode slot",
            LogLine::listPrefix(kTitleBarSource, "moveToMiniPos").constData());
    return false;
}

void TitleBar::setOccupyState(bool release, QRect &rect)
{
    const int change = release ? -1 : 1;
    int hits = 0;
    for (int row = 0; row < iVerticalCnt && s_ppMatrixOccupy; ++row) {
        for (int column = 0; column < iHorizontalCnt; ++column) {
            OccupyCell &cell = s_ppMatrixOccupy[row][column];
            if (cell.rect == rect) {
                cell.nOccupy += change;
                hits = 4;
            } else if (cell.rect.intersects(rect)) {
                cell.nOccupy += change;
                ++hits;
            }
        }
        if (hits > 3)
            return;
    }
}

void TitleBar::ReleaseOccupy()
{
    QRect geometry = window()->geometry();
    setOccupyState(true, geometry);
}
