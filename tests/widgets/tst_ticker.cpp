#include "Ticker.h"

#include <QTimerEvent>
#include <QtTest>

namespace {

void tick(Ticker &ticker, int times, int timerId)
{
    for (int i = 0; i < times; ++i) {
        QTimerEvent event(timerId);
        QCoreApplication::sendEvent(&ticker, &event);
    }
}

} // namespace

class tst_Ticker : public QObject
{
    Q_OBJECT

private slots:
    // Ticks sent before the text's width is reached advance; the width-th tick wraps to 0.
    void offsetWraps_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("extraTicks");
        QTest::newRow("empty text stays at 0") << QString() << 0;
        QTest::newRow("one short of the width") << QStringLiteral("Cell broadcast") << -1;
        QTest::newRow("exactly the width") << QStringLiteral("Cell broadcast") << 0;
        QTest::newRow("past the width") << QStringLiteral("x          ") << 5;
    }
    void offsetWraps()
    {
        QFETCH(QString, text);
        QFETCH(int, extraTicks);
        Ticker ticker;
        ticker.setText(text);
        ticker.resize(80, 20);
        ticker.show();
        QVERIFY(ticker.timerId() != 0);
        const int width = ticker.fontMetrics().horizontalAdvance(text);
        tick(ticker, qMax(1, width + extraTicks), ticker.timerId());
        const int expected = width == 0 ? 0 : (width + extraTicks) % width;
        QCOMPARE(ticker.offset(), expected);
    }

    void foreignTimerDoesNotScroll()
    {
        Ticker ticker;
        ticker.setText(QStringLiteral("text"));
        ticker.show();
        tick(ticker, 3, ticker.timerId() + 1000);
        QCOMPARE(ticker.offset(), 0);
    }

    // Hidden: no timer, and the offset is kept for the next show.
    void hiddenKeepsOffsetWithoutTimer()
    {
        Ticker ticker;
        ticker.setText(QStringLiteral("A longer ticker text"));
        QCOMPARE(ticker.timerId(), 0);
        ticker.show();
        tick(ticker, 7, ticker.timerId());
        const int oldTimer = ticker.timerId();
        ticker.hide();
        QCOMPARE(ticker.timerId(), 0);
        tick(ticker, 2, oldTimer);
        QCOMPARE(ticker.offset(), 7);
        ticker.show();
        QVERIFY(ticker.timerId() != 0);
        tick(ticker, 1, ticker.timerId());
        QCOMPARE(ticker.offset(), 8);
    }

    // A tick shifts what is drawn and repaints only the uncovered column at the right edge.
    void tickRepaintsOneColumn()
    {
        QWidget parent;
        auto *pTicker = new Ticker(&parent);
        pTicker->setText(QStringLiteral("Storm warning"));
        pTicker->setGeometry(10, 5, 120, 20);
        parent.resize(200, 40);
        parent.show();
        QVERIFY(QTest::qWaitForWindowExposed(&parent));
        struct PaintSpy : QObject
        {
            QRegion painted;
            bool eventFilter(QObject *, QEvent *event) override
            {
                if (event->type() == QEvent::Paint)
                    painted += static_cast<QPaintEvent *>(event)->region();
                return false;
            }
        } spy;
        pTicker->installEventFilter(&spy);
        tick(*pTicker, 1, pTicker->timerId());
        QCoreApplication::processEvents();
        QCOMPARE(spy.painted, QRegion(119, 0, 1, 20));
    }

    void sizeHintFollowsText()
    {
        Ticker ticker;
        ticker.setText(QStringLiteral("abc"));
        const int shortWidth = ticker.sizeHint().width();
        ticker.setText(QStringLiteral("abcabcabc"));
        QVERIFY(ticker.sizeHint().width() > shortWidth);
        QCOMPARE(ticker.sizeHint().width(),
                 ticker.fontMetrics().horizontalAdvance(QStringLiteral("abcabcabc")));
    }
};

QTEST_MAIN(tst_Ticker)
#include "tst_ticker.moc"
