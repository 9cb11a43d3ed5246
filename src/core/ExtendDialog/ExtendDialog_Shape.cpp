#include "ExtendDialog.h"
#include "ExtendDialogSource.h"

#include <QBitmap>

namespace {

constexpr int kCorner = 7;
constexpr int kCircle = 14;

// The part of the corner square outside the circle that rounds the corner.
QRegion cornerCut(int squareLeft, int squareTop, int circleLeft, int circleTop)
{
    const QRegion square(squareLeft, squareTop, kCorner, kCorner);
    const QRegion circle(circleLeft, circleTop, kCircle, kCircle, QRegion::Ellipse);
    return square.xored(square.intersected(circle));
}

} // namespace

void ExtendDialog::getCornerRegion(QRegion &topLeft, QRegion &topRight, QRegion &bottomLeft,
                                   QRegion &bottomRight)
{
    const int w = width();
    const int h = height();
    topLeft = cornerCut(0, 0, 0, 0);
    topRight = cornerCut(w - kCorner, 0, w - kCircle, 0);
    bottomLeft = cornerCut(0, h - kCorner, 0, h - kCircle);
    bottomRight = cornerCut(w - kCorner, h - kCorner, w - kCircle, h - kCircle);
}

void ExtendDialog::paintEvent(QPaintEvent *event)
{
    QDialog::paintEvent(event);
    if (!m_bUseMaskBitmap) {
        if (!m_bCusTitle)
            return;
        QRegion topLeft, topRight, bottomLeft, bottomRight;
        getCornerRegion(topLeft, topRight, bottomLeft, bottomRight);
        setMask(QRegion(rect()) - topLeft - topRight - bottomLeft - bottomRight);
        return;
    }
    if (!m_bmpMask.isNull())
        setMask(m_bmpMask);
    else
        qCDebug(lcChrome, "%s : NULL_POINTER LINE %d",
                LogLine::listPrefix(kExtendDialogSource, "paintEvent").constData(), __LINE__);
}

void ExtendDialog::LoadMaskBitmap(QString path)
{
    const QBitmap bitmap(path);
    if (bitmap.isNull()) {
        qCDebug(lcChrome, "%s : NULL_POINTER LINE %d",
                LogLine::listPrefix(kExtendDialogSource, "LoadMaskBitmap").constData(), __LINE__);
        return;
    }
    m_bmpMask = bitmap;
}
