#include "CommonUtils.h"
#include "LogCapture.h"

#include <QElapsedTimer>
#include <QThread>
#include <QtTest>

namespace {
const QString kSource = QStringLiteral("../../src/core/common/CommonUtils");

// A thread that runs until asked to stop, without an event loop, so quit() cannot end it.
class StubbornThread : public QThread
{
public:
    QAtomicInt stop;
    void run() override
    {
        while (!stop.loadAcquire())
            QThread::msleep(5);
    }
};
} // namespace

class tst_ThreadCount : public QObject
{
    Q_OBJECT

private slots:
    void incAndDecLines()
    {
        LogCapture log;
        CommonUtils::ThreadCountInc("Worker", "run");
        QCOMPARE(CommonUtils::ThreadCountDec("Worker", "run"), 0);
        const QStringList lines = log.unstamped();
        QCOMPARE(lines.size(), 3);
        // The two lines differ by the blank after the function name; both are kept.
        QCOMPARE(lines[0], kSource + ": ThreadCountInc:threadCount is 1; thread: Worker: run");
        QCOMPARE(lines[1], kSource + ": ThreadCountDec: threadCount is 0; thread: Worker: run");
        QCOMPARE(lines[2], kSource + ": ThreadCountDec:ThreadFinished.wakeAll();");
        for (const LogCapture::Line &line : log.lines()) {
            QCOMPARE(line.type, QtWarningMsg);
            QVERIFY(LogCapture::hasStamp(line.text));
        }
    }

    void decBelowZeroStillWakes()
    {
        LogCapture log;
        QCOMPARE(CommonUtils::ThreadCountDec("Orphan", "exit"), -1);
        QVERIFY(log.containsUnstamped(kSource + ": ThreadCountDec:ThreadFinished.wakeAll();"));
        CommonUtils::ThreadCountInc("Orphan", "rebalance");
    }

    void concurrentCountsBalance()
    {
        QList<QThread *> threads;
        for (int i = 0; i < 8; ++i) {
            threads.append(QThread::create([] {
                for (int n = 0; n < 200; ++n) {
                    CommonUtils::ThreadCountInc("T", "inc");
                    CommonUtils::ThreadCountDec("T", "dec");
                }
            }));
        }
        LogCapture log; // keeps the lines from flooding the output
        for (QThread *thread : threads)
            thread->start();
        for (QThread *thread : threads) {
            thread->wait();
            delete thread;
        }
        CommonUtils::ThreadCountInc("Check", "final");
        QCOMPARE(CommonUtils::ThreadCountDec("Check", "final"), 0);
    }

    void waitForNullThreadWritesOnlyEnter()
    {
        LogCapture log;
        CommonUtils::WaitForThreadToStop(nullptr, 7);
        QCOMPARE(log.unstamped(),
                 QStringList{kSource + ": WaitForThreadToStop: Enter. unMaxWait: 7"});
    }

    void waitForThreadWithEventLoopQuits()
    {
        QThread thread;
        thread.start();
        LogCapture log;
        CommonUtils::WaitForThreadToStop(&thread, 5);
        QVERIFY(thread.isFinished());
        QCOMPARE(log.unstamped(),
                 (QStringList{kSource + ": WaitForThreadToStop: Enter. unMaxWait: 5",
                              kSource + ": WaitForThreadToStop: Leave "}));
    }

    void waitZeroTerminatesAtOnce()
    {
        StubbornThread thread;
        thread.start();
        QElapsedTimer clock;
        clock.start();
        CommonUtils::WaitForThreadToStop(&thread, 0);
        thread.wait(5000);
        QVERIFY(thread.isFinished());
        QVERIFY(clock.elapsed() < 4000);
    }
};

QTEST_GUILESS_MAIN(tst_ThreadCount)
#include "tst_threadcount.moc"
