#include "Ticker.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTimerEvent>

namespace {

constexpr int kTickMs = 30;

} // namespace

Ticker::Ticker(QWidget *parent)
    : QWidget(parent)
{
    // Opaque, scroll() shifts the drawn pixels instead of repainting the whole strip and the
    // parent beneath it: a scrolling broadcast must cost next to nothing.
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void Ticker::setText(const QString &text)
{
    m_strText = text;
    update();
    updateGeometry();
}

int Ticker::textWidth() const
{
    return fontMetrics().horizontalAdvance(m_strText);
}

QSize Ticker::sizeHint() const
{
    return fontMetrics().size(Qt::TextSingleLine, m_strText);
}

void Ticker::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!m_iTimerId)
        m_iTimerId = startTimer(kTickMs);
}

void Ticker::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (m_iTimerId)
        killTimer(m_iTimerId);
    m_iTimerId = 0;
}

void Ticker::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_iTimerId || !m_iTimerId) {
        QWidget::timerEvent(event);
        return;
    }
    ++m_iOffset;
    if (m_iOffset >= textWidth())
        m_iOffset = 0;
    scroll(-1, 0);
}

void Ticker::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_background = QPixmap();
}

void Ticker::moveEvent(QMoveEvent *event)
{
    QWidget::moveEvent(event);
    m_background = QPixmap();
}

void Ticker::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    // A new skin or palette repaints the parent differently.
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::PaletteChange) {
        m_background = QPixmap();
        update();
    }
}

const QPixmap &Ticker::background()
{
    if (!m_background.isNull() || size().isEmpty())
        return m_background;
    m_background = QPixmap(size());
    m_background.fill(palette().color(backgroundRole()));
    if (QWidget *pParent = parentWidget())
        pParent->render(&m_background, QPoint(), QRegion(geometry()),
                        QWidget::DrawWindowBackground);
    return m_background;
}

void Ticker::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const QRect dirty = event->rect();
    painter.drawPixmap(dirty, background(), dirty);
    const int width = textWidth();
    if (width < 1)
        return;
    for (int x = -m_iOffset; x <= this->width() - 1; x += width) {
        const QRect copy(x, 0, width, height());
        if (copy.intersects(dirty))
            painter.drawText(copy, Qt::AlignLeft | Qt::AlignVCenter, m_strText);
    }
}
