#ifndef LINKDECK_TICKER_H
#define LINKDECK_TICKER_H

#include "CoreGlobal.h"

#include <QString>
#include <QWidget>

// One-line marquee: the text scrolls one pixel to the left every 30 ms while the widget is
// shown, copies laid end to end so the strip wraps round without a seam. Only the uncovered
// one-pixel column is repainted per tick.
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

private:
    int textWidth() const;

    QString m_strText;
    int m_iOffset = 0;
    int m_iTimerId = 0;
};

#endif // LINKDECK_TICKER_H
