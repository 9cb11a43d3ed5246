#include "CommonUtils.h"
#include "LogCapture.h"

#include <QThread>
#include <QtTest>

namespace {
const QString kSource = QStringLiteral("../../src/core/common/CommonUtils: ");
const QString kWake = kSource + "ThreadCountDec:ThreadFinished.wakeAll();";
} // namespace

class tst_ThreadCount : public QObject
{
    Q_OBJECT

private slots:
    // Stamped warnings; the two count lines differ by the blank after the function name.
    void incAndDecLines()
    {
        LogCapture log;
        CommonUtils::ThreadCountInc("Worker", "run");
        QCOMPARE(CommonUtils::ThreadCountDec("Worker", "run"), 0);
        QCOMPARE(log.unstamped(),
                 (QStringList{kSource + "ThreadCountInc:threadCount is 1; thread: Worker: run",
                              kSource + "ThreadCountDec: threadCount is 0; thread: Worker: run",
                              kWake}));
        for (const LogCapture::Line &line : log.lines())
            QVERIFY(line.type == QtWarningMsg && LogCapture::hasStamp(line.text));
        // Below zero it still wakes.
        QCOMPARE(CommonUtils::ThreadCountDec("Orphan", "exit"), -1);
        QCOMPARE(log.unstamped().last(), kWake);
        CommonUtils::ThreadCountInc("Orphan", "rebalance");
    }

    void concurrentCountsBalance()
    {
        QList<QThread *> threads;
        for (int i = 0; i < 8; ++i)
            threads.append(QThread::create([] {
                for (int n = 0; n < 200; ++n) {
                    CommonUtils::ThreadCountInc("T", "inc");
                    CommonUtils::ThreadCountDec("T", "dec");
                }
            }));
        LogCapture log; // keeps the lines from flooding the output
        for (QThread *thread : threads)
            thread->start();
        for (QThread *thread : threads)
            thread->wait();
        qDeleteAll(threads);
        CommonUtils::ThreadCountInc("Check", "final");
        QCOMPARE(CommonUtils::ThreadCountDec("Check", "final"), 0);
    }

    // A null thread gets only the first line; a thread with an event loop quits.
    void waitForThreadToStop()
    {
        QThread thread;
        thread.start();
        LogCapture log;
        CommonUtils::WaitForThreadToStop(nullptr, 7);
        CommonUtils::WaitForThreadToStop(&thread, 5);
        QVERIFY(thread.isFinished());
        QCOMPARE(log.unstamped(), (QStringList{kSource + "WaitForThreadToStop: Enter. unMaxWait: 7",
                                               kSource + "WaitForThreadToStop: Enter. unMaxWait: 5",
                                               kSource + "WaitForThreadToStop: Leave "}));
    }

    // No wait: a thread that ignores quit() is terminated at once.
    void waitZeroTerminates()
    {
        // A plain run(): QThread::create's std::future swallows the cancellation unwind, which
        // UndefinedBehaviorSanitizer reports as a null reference inside libstdc++.
        struct Spinner : QThread
        {
            QAtomicInt stop;
            void run() override
            {
                while (!stop.loadAcquire())
                    msleep(5);
            }
        } thread;
        thread.start();
        CommonUtils::WaitForThreadToStop(&thread, 0);
        const bool ended = thread.wait(3000);
        thread.stop = 1;
        thread.wait();
        QVERIFY(ended);
    }
};

QTEST_GUILESS_MAIN(tst_ThreadCount)
#include "tst_threadcount.moc"
