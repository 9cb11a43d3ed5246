#include "CommonUtils.h"
#include "IPluginContainer.h"
#include "LogCapture.h"
#include "Startup.h"
#include "TestFiles.h"

#include <QtTest>

namespace {
const QString kSource = QStringLiteral("../../src/core/common/CommonUtils");
const QString kStartWait = kSource + ": WaitThreadsStop: start ThreadFinished.wait";
const QString kEndWait = kSource + ": WaitThreadsStop: end ThreadFinished.wait";
const char kNotifyClsid[] = "C986A689-A5F6-4215-84BD-39BA626F1F57";

} // namespace

// The shut-down wait, in the order a process lives through it: the budget of twenty waits is
// spent once per process, so the test functions depend on running in this order.
class tst_ShutdownWait : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        TestFiles::useFreshSettings();
        QVERIFY(TestFiles::writeAppFile(
            "/config/pluginslib.xml",
            QByteArray("<plugins><plugin><name>NotifyPlugin</name><clsid>") + kNotifyClsid +
                "</clsid><url>.\\NotifyPlugin.dll</url><active>true</active><type>3</type>"
                "<static>true</static></plugin></plugins>\n"));
        QVERIFY(TestFiles::writeAppFile("/config/PluginsConfig.xml",
                                        QByteArray("<config><common><item clsid=\"") +
                                            kNotifyClsid + "\"/></common></config>\n"));
    }

    void withoutContainerOnlyLogs()
    {
        CommonUtils::ThreadCountInc("Worker", "pending");
        LogCapture log;
        CommonUtils::WaitThreadsStop();
        QCOMPARE(log.texts(),
                 QStringList{kSource + ": WaitThreadsStop: Startup::GetPluginContainer failed"});
        CommonUtils::ThreadCountDec("Worker", "pending");
    }

    void notificationServiceStopsItsThreads()
    {
        m_startup.reset(new Startup(true));
        IPluginContainer *container = Startup::GetPluginContainer();
        QVERIFY(container);
        {
            LogCapture started;
            container->LoadAllStaticOrActivePlugin();
            QVERIFY(container->IsPluginLoaded(kNotifyClsid));
            QTRY_VERIFY(started.unstamped().contains(
                kSource + ": ThreadCountInc:threadCount is 1; thread: NotifyWorker: run"));
        }

        LogCapture log;
        CommonUtils::WaitThreadsStop();
        QVERIFY(log.containsUnstamped(kEndWait)); // the stop lines are pinned by tst_app
        m_waitsSpent = log.countUnstamped(kStartWait);
        // The worker ends within a wait or two; a missed wake-up costs one 500 ms wait.
        QVERIFY2(m_waitsSpent <= 3, qPrintable(QString::number(m_waitsSpent)));
        QCOMPARE(CommonUtils::ThreadCountDec("Probe", "count"), -1);
        CommonUtils::ThreadCountInc("Probe", "count");
    }

    void budgetOfTwentyWaitsPerProcess()
    {
        CommonUtils::ThreadCountInc("Never", "ends");
        LogCapture log;
        CommonUtils::WaitThreadsStop();
        QCOMPARE(log.countUnstamped(kStartWait), 20 - m_waitsSpent);
        QCOMPARE(log.unstamped().last(), kEndWait);

        log.clear();
        CommonUtils::WaitThreadsStop();
        QCOMPARE(log.countUnstamped(kStartWait), 0);
        QCOMPARE(log.countUnstamped(kEndWait), 1);
        CommonUtils::ThreadCountDec("Never", "ends");
    }

    void cleanupTestCase() { m_startup.reset(); }

private:
    QScopedPointer<Startup> m_startup;
    int m_waitsSpent = 0;
};

QTEST_MAIN(tst_ShutdownWait)
#include "tst_shutdownwait.moc"
