#include "Ticker.h"

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
    // The width-th tick wraps to 0; an empty text stays at 0; another timer does not scroll.
    void offsetWraps_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("extraTicks");
        QTest::addColumn<bool>("ownTimer");
        QTest::newRow("empty text") << QString() << 0 << true;
        QTest::newRow("exactly the width") << "Cell broadcast" << 0 << true;
        QTest::newRow("past the width") << "x          " << 5 << true;
        QTest::newRow("another timer") << "Cell broadcast" << -1 << false;
    }
    void offsetWraps()
    {
        QFETCH(QString, text);
        QFETCH(int, extraTicks);
        QFETCH(bool, ownTimer);
        Ticker ticker;
        ticker.setText(text);
        ticker.show();
        const int width = ticker.fontMetrics().horizontalAdvance(text);
        tick(ticker, qMax(1, width + extraTicks), ticker.timerId() + (ownTimer ? 0 : 1000));
        QCOMPARE(ticker.offset(), width == 0 || !ownTimer ? 0 : (width + extraTicks) % width);
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
        ticker.show();
        QVERIFY(ticker.timerId() != 0);
        tick(ticker, 1, ticker.timerId());
        QCOMPARE(ticker.offset(), 8);
    }
};

QTEST_MAIN(tst_Ticker)
#include "tst_ticker.moc"
