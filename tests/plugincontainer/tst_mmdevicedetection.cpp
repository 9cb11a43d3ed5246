// The container's device wait on the real ModemManager daemon (inside tests/mm/mm_testenv.py):
// the detection thread ends on a fake modem's arrival and applies that device's section.
#include "ContainerProbe.h"
#include "MmControl.h"

#include <NexoBackend.h>

#include <QElapsedTimer>
#include <QtTest>

namespace {

const QString kDeviceMgr = QStringLiteral("8772F2BF-3227-4203-AFDD-DBAD1E9D1F98");

QByteArray control(const QByteArray &text)
{
    return QByteArray::fromStdString(MmControl::send(text.toStdString()));
}

} // namespace

class tst_MmDeviceDetection : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(MmControl::available(), "run inside tests/mm/mm_testenv.py");
        QCOMPARE(NEXO_Backend_Select("modemmanager"), 0L);
    }

    void waitEndsOnTheModem_data()
    {
        QTest::addColumn<bool>("pluggedBefore"); // else plugged while the container waits
        QTest::newRow("plugged while waiting") << false;
        QTest::newRow("present at start") << true;
    }
    void waitEndsOnTheModem()
    {
        QFETCH(bool, pluggedBefore);
        const QByteArray id = pluggedBefore ? "before" : "while";
        freshConfig();
        if (pluggedBefore)
            QVERIFY(control("plug " + id + " ModemX").startsWith("ok"));
        TestFiles::writeAppFile(
            "/config/pluginslib.xml",
            pluginsLibFile("CMainFrame", {{"DeviceMgrUIPlugin", kDeviceMgr, "DeviceMgr"},
                                          {"PAlpha", "CAlpha", "Alpha"},
                                          {"PMainFrame", "CMainFrame", "MainFrame"}}));
        TestFiles::writeAppFile(
            "/config/PluginsConfig.xml",
            pluginsConfigFile({kDeviceMgr, "CMainFrame"}, deviceSection("ModemX", {"CAlpha"}, {})));
        LogCapture log;
        QElapsedTimer timer;
        timer.start();
        ContainerProbe container(appConfigPath("pluginslib.xml"),
                                 appConfigPath("PluginsConfig.xml"), true);
        if (!pluggedBefore) {
            QVERIFY(QTest::qWaitFor(
                [&] {
                    return log.containsUnstamped(kSource +
                                                 ": getDeviceName waiting for sdk finished enter");
                },
                5000));
            QVERIFY(control("plug " + id + " ModemX").startsWith("ok"));
        }
        QVERIFY(QTest::qWaitFor([&] { return container.IsPluginsConfigInitialized(); }, 15000));
        // Well before the ten seconds after which the wait would give up.
        QVERIFY2(timer.elapsed() < 8000, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(log.containsUnstamped(pcLine("OnDevMgrEvent", "strDeviceName = ModemX")));
        QVERIFY(log.containsUnstamped(pcLine("updateDeviceCustomization", "for device ModemX!!!")));
        QVERIFY(events(log, "GetLastUsedDevice").isEmpty());
        QCOMPARE(container.enabledClsids().join(' '), kDeviceMgr + " CAlpha CMainFrame");
        QVERIFY(control("unplug " + id).startsWith("ok"));
    }
};

QTEST_GUILESS_MAIN(tst_MmDeviceDetection)
#include "tst_mmdevicedetection.moc"
