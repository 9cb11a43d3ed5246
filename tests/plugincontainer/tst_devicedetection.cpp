#include "ContainerProbe.h"

#include <NexoSim.h>

#include <QSemaphore>
#include <QThread>
#include <QtTest>

#include <atomic>
#include <vector>

namespace {

const QString kDeviceMgr = QStringLiteral("8772F2BF-3227-4203-AFDD-DBAD1E9D1F98");

// getDeviceName's stamped lines put a blank, not a colon, after the function name.
QString spaced(const QString &rest)
{
    return kSource + QStringLiteral(": getDeviceName ") + rest;
}

// The stamped fallback line has blanks around its colons.
bool hasFallbackLine(const LogCapture &log, const QString &device)
{
    const QString text = kSource +
                         " : getDeviceName : There is no device or more than one "
                         "device. No available device. Get last used device: " +
                         device;
    return log.containsUnstamped(text) && !log.contains(text);
}

// The plugin's library is "DeviceMgr", or "DeviceMgrFailing" whose Initialize fails.
std::unique_ptr<ContainerProbe> makeDetecting(const QString &url = "DeviceMgr")
{
    return makeContainer(pluginsLibFile("CMainFrame", {{"DeviceMgrUIPlugin", kDeviceMgr, url},
                                                       {"PAlpha", "CAlpha", "Alpha"},
                                                       {"PMainFrame", "CMainFrame", "MainFrame"}}),
                         pluginsConfigFile({kDeviceMgr, "CMainFrame"},
                                           deviceSection("ModemX", {"CAlpha"}, {}) +
                                               deviceSection("ModemY", {}, {"CMainFrame"})));
}

void setDevices(const QByteArrayList &names)
{
    std::vector<const char *> pointers;
    for (const QByteArray &name : names)
        pointers.push_back(name.constData());
    NexoSim_SetDevices(pointers.data(), int(pointers.size()));
}

QtMessageHandler s_capture = nullptr;

// A container class derived further, whose construction outlasts the initialisation thread's
// work: the thread is held just before it asks for the device manager until the derived
// constructor runs, and that constructor returns only once the thread is done.
QSemaphore s_derivedRunning;
std::atomic<bool> s_derivedConstructed{false};
std::atomic<int> s_reachedEarly{0};
void holdUntilDerived(QtMsgType type, const QMessageLogContext &context, const QString &msg)
{
    if (msg.endsWith(QLatin1String("getDeviceName calling registration finished")))
        s_derivedRunning.tryAcquire(1, 5000);
    s_capture(type, context, msg);
}

class SlowlyBuiltProbe : public ContainerProbe
{
public:
    SlowlyBuiltProbe(const QString &lib, const QString &config)
        : ContainerProbe(lib, config, true)
    {
        s_derivedRunning.release();
        QTest::qWaitFor([this] { return IsPluginsConfigInitialized(); }, 5000);
        s_derivedConstructed = true;
    }
    QObject *GetPlugin(QString clsid, int interfaceNumber) override
    {
        s_reachedEarly += !s_derivedConstructed;
        return ContainerProbe::GetPlugin(clsid, interfaceNumber);
    }
    void StartInitPluginsConfig() override
    {
        s_reachedEarly += !s_derivedConstructed;
        ContainerProbe::StartInitPluginsConfig();
    }
};

} // namespace

class TestDeviceDetection : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        freshConfig();
        NexoSim_Reset();
    }
    void cleanup() { NexoSim_WaitIdle(2000); }

    void detection_data()
    {
        QTest::addColumn<int>("event");
        QTest::addColumn<QByteArrayList>("devices");
        QTest::addColumn<QStringList>("lines");
        const QString wake = pcLine("OnDevMgrEvent", "entered, NEXO_EVENT_DEV_DETECTED wake all");
        const QString reject = pcLine("OnDevMgrEvent", "entered, NEXO_EVENT_DEV_REJECT || "
                                                       "NEXO_EVENT_DEV_DEVICE_INVALID, wake all");
        const QString count = "NEXO_DevSrv_GetAvailableDeviceList returned device count: ";
        QTest::newRow("one device")
            << int(NEXO_EVENT_DEV_DETECTED) << QByteArrayList{"ModemX"}
            << QStringList{pcLine("OnDevMgrEvent", "entered, enNotifyType = 6606"),
                           kSource + ": OnDevMgrEvent called NEXO_DevSrv_GetAvailableDeviceList, 0",
                           pcLine("OnDevMgrEvent", "strDeviceName = ModemX"), wake};
        QTest::newRow("no device") << int(NEXO_EVENT_DEV_DETECTED) << QByteArrayList{}
                                   << QStringList{pcLine("OnDevMgrEvent", count + "0"), wake};
        QTest::newRow("reject") << int(NEXO_EVENT_DEV_REJECT) << QByteArrayList{"ModemX"}
                                << QStringList{
                                       pcLine("OnDevMgrEvent", "entered, enNotifyType = 6016"),
                                       reject};
    }
    // The detection's lines, the customization for the device found or else for the last used
    // device.
    void detection()
    {
        QFETCH(int, event);
        QFETCH(QByteArrayList, devices);
        QFETCH(QStringList, lines);
        setDevices(devices);
        NexoSim_SetDetection(event, 100);
        const bool found = QTest::currentDataTag() == QLatin1String("one device");
        const QString device = found ? "ModemX" : "ModemY";

        LogCapture log;
        auto container = makeDetecting();
        QVERIFY(container->IsPluginsConfigInitialized());
        QVERIFY(log.containsInOrder(
            QStringList{spaced("calling registration functions"),
                        spaced("calling registration finished"),
                        spaced("waiting for sdk finished enter")}
            << lines << spaced("waiting for sdk finished exit")
            << spaced("calling unregistration functions")
            << pcLine("updateDeviceCustomization", "for device " + device + "!!!")));
        QCOMPARE(container->enabledClsids().join(' '),
                 found ? kDeviceMgr + " CAlpha CMainFrame" : kDeviceMgr);
        QCOMPARE(events(log, "StartDetectDevice"),
                 QStringList{"StartDetectDevice:CInitConfigThread"});
        QCOMPARE(NexoSim_RegisteredCallbackCount(), 0);
        QCOMPARE(events(log, "GetLastUsedDevice").size(), found ? 0 : 1);
        QCOMPARE(hasFallbackLine(log, device), !found);
    }
    // A delivered name serves one request only; a failed device list keeps the stored name.
    void nameIsConsumedOnce()
    {
        setDevices({"ModemX"});
        auto container = makeDetecting();
        QVERIFY(container->enabledClsids().contains("CAlpha"));
        NexoSim_SetDeviceListResult(3);
        QCOMPARE(container->getDeviceName(false), QStringLiteral("ModemY"));
        NexoSim_SetDeviceListResult(0);
        PluginContainer::OnDevMgrEvent(NEXO_EVENT_DEV_DETECTED, nullptr);
        NexoSim_SetDeviceListResult(3);
        NexoSim_SetDetection(NEXO_EVENT_DEV_DETECTED, 50);
        QCOMPARE(container->getDeviceName(false), QStringLiteral("ModemX"));
        QCOMPARE(container->getDeviceName(false), QStringLiteral("ModemY"));

        // Failed registrations are logged and ignored: one made earlier still delivers the event,
        // and the unregistration removes it.
        QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(&PluginContainer::OnDevMgrEvent), 0L);
        NexoSim_SetRegisterResult(42);
        NexoSim_SetDeviceListResult(0);
        LogCapture log;
        QCOMPARE(container->getDeviceName(false), QStringLiteral("ModemX"));
        QVERIFY(log.containsInOrder({spaced("register callback failed . DevInitEventError = 42"),
                                     spaced("register callback failed . DevMgrError = 42")}));
        QCOMPARE(NexoSim_RegisteredCallbackCount(), 0);
    }
    // Both unregistrations run although nothing was registered: registrations left over from
    // elsewhere are gone afterwards.
    void deviceManagerInitialiseFails()
    {
        QCOMPARE(NEXO_DevSrv_RegisterDevInitEventCallback(&PluginContainer::OnDevMgrEvent), 0L);
        QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(&PluginContainer::OnDevMgrEvent), 0L);
        LogCapture log;
        auto container = makeDetecting("DeviceMgrFailing");
        QVERIFY(container->IsPluginsConfigInitialized() && !container->deviceMgrInitialized());
        QCOMPARE(NexoSim_RegisteredCallbackCount(), 0);
        QVERIFY(log.contains(pcLine("getDeviceName", "init deviceMgr failed")) &&
                log.containsUnstamped(spaced("calling unregistration functions")));
        QVERIFY(!log.containsUnstamped(spaced("calling registration functions")) &&
                events(log, "StartDetectDevice").isEmpty());
        QCOMPARE(container->enabledClsids(), (QStringList{kDeviceMgr, "CMainFrame"}));
    }
    void threadNeverReachesAHalfBuiltDerivedClass()
    {
        setDevices({"ModemX"});
        makeDetecting().reset(); // writes the files
        LogCapture log;
        s_capture = qInstallMessageHandler(holdUntilDerived);
        SlowlyBuiltProbe container(appConfigPath("pluginslib.xml"),
                                   appConfigPath("PluginsConfig.xml"));
        qInstallMessageHandler(s_capture);
        QVERIFY(container.IsPluginsConfigInitialized() && s_reachedEarly == 0);
        QVERIFY(log.containsUnstamped(spaced("calling unregistration functions")));
        QCOMPARE(container.enabledClsids().join(' '), kDeviceMgr + " CAlpha CMainFrame");
    }
};

QTEST_GUILESS_MAIN(TestDeviceDetection)
#include "tst_devicedetection.moc"
