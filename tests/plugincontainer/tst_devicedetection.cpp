// Finding the device through the device-service simulator and the device-manager plugin.
#include "ContainerProbe.h"
#include "LogCapture.h"
#include "TestProbe.h"

#include <NexoSim.h>

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QThread>
#include <QtTest>

#include <vector>

namespace {

const QString kSource = QStringLiteral("../../src/core/PluginContainer/PluginContainer");
const QString kDeviceMgr = QStringLiteral("8772F2BF-3227-4203-AFDD-DBAD1E9D1F98");

QString line(const char *function, const QString &rest)
{
    return kSource + QStringLiteral(": ") + QLatin1String(function) + QStringLiteral(": ") + rest;
}

// Lines whose function name is followed by a blank, not a colon.
QString spaced(const char *function, const QString &rest)
{
    return kSource + QStringLiteral(": ") + QLatin1String(function) + QLatin1Char(' ') + rest;
}

// The fallback line is stamped with blanks around its colons: " : ".
bool hasFallbackLine(const LogCapture &log, const QString &device)
{
    const QRegularExpression pattern(
        QStringLiteral("^\\d\\d:\\d\\d:\\d\\d:\\d\\d\\d : ") +
        QRegularExpression::escape(kSource +
                                   QStringLiteral(" : getDeviceName : There is no device or more "
                                                  "than one device. No available device. Get last "
                                                  "used device: ") +
                                   device) +
        QLatin1Char('$'));
    for (const QString &text : log.texts()) {
        if (pattern.match(text).hasMatch())
            return true;
    }
    return false;
}

QByteArray pluginsLib()
{
    return pluginsLibFile(QStringLiteral("CMainFrame"),
                          {{"DeviceMgrUIPlugin", kDeviceMgr, "DeviceMgr"},
                           {"PAlpha", "CAlpha", "Alpha"},
                           {"PMainFrame", "CMainFrame", "MainFrame"}});
}

QByteArray pluginsConfig()
{
    return pluginsConfigFile({kDeviceMgr, "CMainFrame"},
                             deviceSection("ModemX", {"CAlpha"}, {}) +
                                 deviceSection("ModemY", {}, {"CMainFrame"}));
}

void setDevices(const QStringList &names)
{
    std::vector<QByteArray> bytes;
    for (const QString &name : names)
        bytes.push_back(name.toLocal8Bit());
    std::vector<const char *> pointers;
    for (const QByteArray &b : bytes)
        pointers.push_back(b.constData());
    NexoSim_SetDevices(pointers.data(), int(pointers.size()));
}

// Records the thread that writes the callback's first line.
QThread *s_callbackThread = nullptr;
QtMessageHandler s_previousHandler = nullptr;
void noteCallbackThread(QtMsgType type, const QMessageLogContext &context, const QString &msg)
{
    if (msg.contains(QLatin1String("OnDevMgrEvent: entered, enNotifyType")))
        s_callbackThread = QThread::currentThread();
    if (s_previousHandler)
        s_previousHandler(type, context, msg);
}

} // namespace

class TestDeviceDetection : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        TestFiles::useFreshSettings();
        TestFiles::removeAppPath(QStringLiteral("/config"));
        TestProbe::reset();
        TestProbe::setOption(QStringLiteral("devmgr.lastUsed"), QStringLiteral("ModemY"));
        NexoSim_Reset();
    }
    void cleanup() { NexoSim_WaitIdle(2000); }

    void detection_data();
    void detection();
    void nameIsConsumedOnce();
    void callbackRunsOnTheSimulatorThread();
    void deviceManagerInitialiseFails();
    void deviceManagerNotObtainable();
    void registrationFailureIsLoggedAndIgnored();
    void missedEventWaitsTheFullTime();
    void destructorStopsARunningThread();
};

void TestDeviceDetection::detection_data()
{
    QTest::addColumn<int>("event");
    QTest::addColumn<QStringList>("devices");
    QTest::addColumn<int>("listResult");
    QTest::addColumn<QString>("device");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QStringList>("enabled");

    const QStringList modemX{"CAlpha", "CMainFrame"};
    const QStringList modemY{kDeviceMgr};
    QTest::newRow("one device")
        << int(NEXO_EVENT_DEV_DETECTED) << QStringList{"ModemX"} << 0 << "ModemX"
        << QStringList{line("OnDevMgrEvent", "entered, enNotifyType = 6606"),
                       spaced("OnDevMgrEvent", "called NEXO_DevSrv_GetAvailableDeviceList, 0"),
                       line("OnDevMgrEvent", "strDeviceName = ModemX"),
                       line("OnDevMgrEvent", "entered, NEXO_EVENT_DEV_DETECTED wake all"),
                       spaced("getDeviceName", "waiting for sdk finished exit")}
        << QStringList{kDeviceMgr, "CAlpha", "CMainFrame"};
    QTest::newRow("two devices")
        << int(NEXO_EVENT_DEV_DETECTED) << QStringList{"ModemX", "ModemZ"} << 0 << "ModemY"
        << QStringList{line("OnDevMgrEvent",
                            "NEXO_DevSrv_GetAvailableDeviceList returned device count: 2"),
                       spaced("getDeviceName", "waiting for sdk finished exit")}
        << modemY;
    QTest::newRow("no device")
        << int(NEXO_EVENT_DEV_DETECTED) << QStringList{} << 0 << "ModemY"
        << QStringList{line("OnDevMgrEvent",
                            "NEXO_DevSrv_GetAvailableDeviceList returned device count: 0")}
        << modemY;
    QTest::newRow("device list fails")
        << int(NEXO_EVENT_DEV_DETECTED) << QStringList{"ModemX"} << 3 << "ModemY"
        << QStringList{line("OnDevMgrEvent", "entered, NEXO_EVENT_DEV_DETECTED wake all")}
        << modemY;
    const QString rejectLine =
        line("OnDevMgrEvent",
             "entered, NEXO_EVENT_DEV_REJECT || NEXO_EVENT_DEV_DEVICE_INVALID, wake all");
    QTest::newRow("reject") << int(NEXO_EVENT_DEV_REJECT) << QStringList{"ModemX"} << 0 << "ModemY"
                            << QStringList{line("OnDevMgrEvent", "entered, enNotifyType = 6016"),
                                           rejectLine}
                            << modemY;
    QTest::newRow("invalid device")
        << int(NEXO_EVENT_DEV_DEVICE_INVALID) << QStringList{"ModemX"} << 0 << "ModemY"
        << QStringList{line("OnDevMgrEvent", "entered, enNotifyType = 6601"), rejectLine} << modemY;
}

void TestDeviceDetection::detection()
{
    QFETCH(int, event);
    QFETCH(QStringList, devices);
    QFETCH(int, listResult);
    QFETCH(QString, device);
    QFETCH(QStringList, lines);
    QFETCH(QStringList, enabled);
    setDevices(devices);
    NexoSim_SetDeviceListResult(listResult);
    NexoSim_SetDetection(event, 100);

    LogCapture log;
    auto container = makeContainer(pluginsLib(), pluginsConfig());
    QVERIFY(container->IsPluginsConfigInitialized());
    QVERIFY(container->deviceMgrInitialized());

    QStringList expected{spaced("getDeviceName", "calling registration functions"),
                         spaced("getDeviceName", "calling registration finished"),
                         spaced("getDeviceName", "waiting for sdk finished enter")};
    expected << lines << spaced("getDeviceName", "calling unregistration functions")
             << line("updateDeviceCustomization", "for device " + device + "!!!");
    QVERIFY2(log.containsInOrder(expected), qPrintable(log.unstamped().join(QLatin1Char('\n'))));
    QCOMPARE(container->enabledClsids(), enabled);
    QCOMPARE(NexoSim_RegisteredCallbackCount(), 0);
    const bool fallback = device != QLatin1String("ModemX");
    QCOMPARE(TestProbe::events(QStringLiteral("GetLastUsedDevice")).size(), fallback ? 1 : 0);
    QCOMPARE(hasFallbackLine(log, device), fallback);
    for (const QString &text : log.texts()) {
        if (text.contains(QLatin1String("PluginContainer: getDeviceName ")) ||
            text.contains(QLatin1String("called NEXO_")))
            QVERIFY2(LogCapture::hasStamp(text), qPrintable(text));
    }
}

// A delivered name serves one request only.
void TestDeviceDetection::nameIsConsumedOnce()
{
    setDevices({"ModemX"});
    auto container = makeContainer(pluginsLib(), pluginsConfig());
    QVERIFY(container->IsPluginsConfigInitialized());
    QVERIFY(container->IsPluginLoaded(QStringLiteral("CAlpha")) == false);
    QCOMPARE(container->enabledClsids(), (QStringList{kDeviceMgr, "CAlpha", "CMainFrame"}));

    // This event wakes the waiter without touching the stored name.
    NexoSim_SetDeviceListResult(3);
    QCOMPARE(container->getDeviceName(false), QStringLiteral("ModemY"));

    // Delivered but not yet taken: the next request takes it.
    NexoSim_SetDeviceListResult(0);
    PluginContainer::OnDevMgrEvent(NEXO_EVENT_DEV_DETECTED, nullptr);
    NexoSim_SetDeviceListResult(3);
    NexoSim_SetDetection(NEXO_EVENT_DEV_DETECTED, 50);
    QCOMPARE(container->getDeviceName(false), QStringLiteral("ModemX"));
    QCOMPARE(container->getDeviceName(false), QStringLiteral("ModemY"));
}

void TestDeviceDetection::callbackRunsOnTheSimulatorThread()
{
    setDevices({"ModemX"});
    s_callbackThread = nullptr;
    s_previousHandler = qInstallMessageHandler(noteCallbackThread);
    auto container = makeContainer(pluginsLib(), pluginsConfig());
    qInstallMessageHandler(s_previousHandler);

    QThread *detecting = TestProbe::thread(QStringLiteral("StartDetectDevice"));
    QVERIFY(detecting);
    QCOMPARE(detecting->metaObject()->className(), "CInitConfigThread");
    QVERIFY(s_callbackThread);
    QVERIFY(s_callbackThread != QThread::currentThread());
    QVERIFY(s_callbackThread != detecting);
    // The device manager was initialised by the constructor, on this thread.
    QCOMPARE(TestProbe::events(QStringLiteral("Initialize:")), QStringList{"Initialize:DeviceMgr"});
}

// Both unregistrations run even when nothing was registered: a registration left over from
// elsewhere is gone afterwards.
void TestDeviceDetection::deviceManagerInitialiseFails()
{
    TestProbe::setOption(QStringLiteral("devmgr.init"), false);
    QCOMPARE(NEXO_DevSrv_RegisterDevInitEventCallback(&PluginContainer::OnDevMgrEvent), 0L);
    QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(&PluginContainer::OnDevMgrEvent), 0L);
    QVERIFY(NexoSim_RegisteredCallbackCount() >= 1);

    LogCapture log;
    auto container = makeContainer(pluginsLib(), pluginsConfig());
    QVERIFY(container->IsPluginsConfigInitialized());
    QVERIFY(!container->deviceMgrInitialized());
    QCOMPARE(NexoSim_RegisteredCallbackCount(), 0);
    bool warned = false;
    for (const LogCapture::Line &l : log.lines()) {
        if (l.text == line("getDeviceName", "init deviceMgr failed"))
            warned = l.type == QtWarningMsg;
    }
    QVERIFY(warned);
    QVERIFY(log.containsUnstamped(spaced("getDeviceName", "calling unregistration functions")));
    QVERIFY(!log.containsUnstamped(spaced("getDeviceName", "calling registration functions")));
    QCOMPARE(log.texts().filter(QStringLiteral("init=0, DeviceMgrUIPlugin init: elapsed=")).size(),
             1);
    QVERIFY(TestProbe::events(QStringLiteral("StartDetectDevice")).isEmpty());
    // No device: only the common set.
    QCOMPARE(container->enabledClsids(), (QStringList{kDeviceMgr, "CMainFrame"}));
}

void TestDeviceDetection::deviceManagerNotObtainable()
{
    setDevices({"ModemX"});
    auto container = makeContainer(pluginsLib(), pluginsConfig());
    QVERIFY(container->IsPluginsConfigInitialized());
    container->disableAllPlugins();
    LogCapture log;
    QCOMPARE(container->getDeviceName(false), QString());
    QVERIFY(log.containsInOrder({spaced("getDeviceName", "calling registration finished"),
                                 line("getDeviceName", "get deviceMgr failed"),
                                 spaced("getDeviceName", "calling unregistration functions")}));
    QCOMPARE(NexoSim_RegisteredCallbackCount(), 0);
}

// The container's own registration fails; a registration made earlier still delivers the event,
// and the container's unregistration removes it.
void TestDeviceDetection::registrationFailureIsLoggedAndIgnored()
{
    setDevices({"ModemX"});
    QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(&PluginContainer::OnDevMgrEvent), 0L);
    NexoSim_SetRegisterResult(42);
    LogCapture log;
    auto container = makeContainer(pluginsLib(), pluginsConfig());
    QVERIFY(container->IsPluginsConfigInitialized());
    QCOMPARE(NexoSim_RegisteredCallbackCount(), 0);
    QVERIFY(container->enabledClsids().contains(QStringLiteral("CAlpha")));
    QVERIFY(log.containsUnstamped(
        spaced("getDeviceName", "register callback failed . DevInitEventError = 42")));
    QVERIFY(log.containsUnstamped(
        spaced("getDeviceName", "register callback failed . DevMgrError = 42")));
    QVERIFY(log.containsUnstamped(spaced("getDeviceName", "waiting for sdk finished exit")));
}

// The event arrives before the wait begins: the wait runs its full ten seconds, and with two
// devices the last used device is taken.
void TestDeviceDetection::missedEventWaitsTheFullTime()
{
    setDevices({"ModemX", "ModemZ"});
    NexoSim_SetDetection(NEXO_EVENT_DEV_DETECTED, 0);
    TestProbe::setOption(QStringLiteral("devmgr.sync"), true);
    LogCapture log;
    QElapsedTimer timer;
    timer.start();
    auto container = makeContainer(pluginsLib(), pluginsConfig(), 15000);
    QVERIFY(container->IsPluginsConfigInitialized());
    QVERIFY(timer.elapsed() >= 9500);
    QVERIFY(log.containsInOrder({line("OnDevMgrEvent", "entered, NEXO_EVENT_DEV_DETECTED wake all"),
                                 spaced("getDeviceName", "waiting for sdk finished enter"),
                                 spaced("getDeviceName", "waiting for sdk finished exit")}));
    QVERIFY(hasFallbackLine(log, QStringLiteral("ModemY")));
    QCOMPARE(container->enabledClsids(), QStringList{kDeviceMgr});
}

// The initialisation thread still busy at destruction is given five seconds, then terminated.
void TestDeviceDetection::destructorStopsARunningThread()
{
#if defined(__SANITIZE_ADDRESS__)
    // Cancelling a thread unwinds it in a way AddressSanitizer's bookkeeping cannot follow.
    QSKIP("thread termination is not supported under AddressSanitizer");
#endif
    TestProbe::setOption(QStringLiteral("devmgr.blockMs"), 9000);
    LogCapture log;
    auto container = makeContainer(pluginsLib(), pluginsConfig(), 0);
    QVERIFY(QTest::qWaitFor(
        [] { return !TestProbe::events(QStringLiteral("StartDetectDevice")).isEmpty(); }, 5000));
    QVERIFY(!container->IsPluginsConfigInitialized());
    QElapsedTimer timer;
    timer.start();
    container.reset();
    const qint64 elapsed = timer.elapsed();
    QVERIFY2(elapsed >= 4500 && elapsed < 8500, QByteArray::number(elapsed));
    QVERIFY(log.containsUnstamped(QStringLiteral(
        "../../src/core/common/CommonUtils: WaitForThreadToStop: Enter. unMaxWait: 5")));
    QVERIFY(TestProbe::events().contains(QStringLiteral("Release:DeviceMgr")));
    QVERIFY(TestProbe::events().contains(QStringLiteral("Unload:DeviceMgr")));
}

QTEST_GUILESS_MAIN(TestDeviceDetection)
#include "tst_devicedetection.moc"
