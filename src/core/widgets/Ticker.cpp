#include "Ticker.h"

#include <QPainter>
#include <QTimerEvent>

namespace {

constexpr int kTickMs = 30;

} // namespace

Ticker::Ticker(QWidget *parent)
    : QWidget(parent)
{}

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

void Ticker::paintEvent(QPaintEvent *)
{
    const int width = textWidth();
    if (width < 1)
        return;
    QPainter painter(this);
    for (int x = -m_iOffset; x <= this->width() - 1; x += width)
        painter.drawText(QRect(x, 0, width, height()), Qt::AlignLeft | Qt::AlignVCenter, m_strText);
}
