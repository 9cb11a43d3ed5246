#ifndef LINKDECK_TICKER_H
#define LINKDECK_TICKER_H

#include "CoreGlobal.h"

#include <QPixmap>
#include <QString>
#include <QWidget>

// One-line marquee: the text scrolls one pixel to the left every 30 ms while the widget is
// shown, copies laid end to end so the strip wraps round without a seam. The ticker is opaque
// (it paints its parent's background, cached, beneath the text), so each tick moves the pixels
// already drawn and repaints only the uncovered one-pixel column.
class CORE_EXPORT Ticker : public QWidget
{
    Q_OBJECT
public:
    explicit Ticker(QWidget *parent = nullptr);

    void setText(const QString &text);
    QString text() const { return m_strText; }
    // Pixels scrolled so far, and the running timer (0 while hidden).
    int offset() const { return m_iOffset; }
    int timerId() const { return m_iTimerId; }

    QSize sizeHint() const override;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    int textWidth() const;
    // What the parent draws beneath the ticker, rendered once per place and size.
    const QPixmap &background();

    QString m_strText;
    int m_iOffset = 0;
    int m_iTimerId = 0;
    QPixmap m_background;
};

#endif // LINKDECK_TICKER_H
