#include "NexoSim.h"
#include "SdkTestStrings.h"
#include "TestFiles.h"

#include <QCoreApplication>
#include <QMutex>
#include <QProcess>
#include <QSemaphore>
#include <QThread>
#include <QtTest>

#include <atomic>
#include <cstring>

namespace {

struct Delivery
{
    char callback;
    int type;
    Qt::HANDLE thread;
    void *data;
};

// What the callbacks saw; they run on the library's thread.
class Recorder
{
public:
    void add(char callback, int type, void *data)
    {
        QMutexLocker lock(&m_mutex);
        m_deliveries.append({callback, type, QThread::currentThreadId(), data});
    }
    QList<Delivery> deliveries() const
    {
        QMutexLocker lock(&m_mutex);
        return m_deliveries;
    }
    QList<int> types() const
    {
        QList<int> result;
        for (const Delivery &delivery : deliveries())
            result.append(delivery.type);
        return result;
    }
    // The callbacks that were called, sorted, e.g. "AB".
    QString callbacks() const
    {
        QString result;
        for (const Delivery &delivery : deliveries())
            result.append(QLatin1Char(delivery.callback));
        std::sort(result.begin(), result.end());
        return result;
    }
    void clear()
    {
        QMutexLocker lock(&m_mutex);
        m_deliveries.clear();
    }

private:
    mutable QMutex m_mutex;
    QList<Delivery> m_deliveries;
};

Recorder g_recorder;

template<char Name>
int recordingCallback(int type, void *data)
{
    g_recorder.add(Name, type, data);
    return 1;
}

NEXO_DevEventCallback callbackNamed(QChar name)
{
    switch (name.toLatin1()) {
    case 'A':
        return recordingCallback<'A'>;
    case 'B':
        return recordingCallback<'B'>;
    default:
        return recordingCallback<'C'>;
    }
}

// "init:A" or "mgr:B": register the callback under that kind; the result of the call.
long registerBySpec(const QString &spec)
{
    const QStringList parts = spec.split(QLatin1Char(':'));
    const NEXO_DevEventCallback callback = callbackNamed(parts.at(1).at(0));
    return parts.at(0) == QLatin1String("init") ? NEXO_DevSrv_RegisterDevInitEventCallback(callback)
                                                : NEXO_DevSrv_RegisterDevMgrCallback(callback);
}

long unregisterBySpec(const QString &spec)
{
    const QStringList parts = spec.split(QLatin1Char(':'));
    const NEXO_DevEventCallback callback = callbackNamed(parts.at(1).at(0));
    return parts.at(0) == QLatin1String("init")
               ? NEXO_DevSrv_UnRegisterDevInitEventCallback(callback)
               : NEXO_DevSrv_UnRegisterDevMgrCallback(callback);
}

QStringList specs(const QString &text)
{
    return text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

constexpr char kPattern = char(0xAB);

// The device list block as the library must leave a block prefilled with kPattern.
QByteArray expectedBlock(const QList<QByteArray> &names)
{
    QByteArray block(NEXO_DEVICE_LIST_SIZE, kPattern);
    const qint32 count = names.size();
    std::memcpy(block.data() + NEXO_DEVICE_LIST_COUNT_OFFSET, &count, sizeof count);
    for (int i = 0; i < names.size(); ++i) {
        char *slot = block.data() + NEXO_DEVICE_LIST_NAMES_OFFSET + i * NEXO_DEVICE_NAME_SLOT;
        std::memcpy(slot, names.at(i).constData(), size_t(names.at(i).size()) + 1);
    }
    return block;
}

void setDevices(const QList<QByteArray> &names)
{
    QVector<const char *> pointers;
    for (const QByteArray &name : names)
        pointers.append(name.constData());
    NexoSim_SetDevices(pointers.constData(), pointers.size());
}

QList<QByteArray> deviceList(long *status = nullptr)
{
    QByteArray block(NEXO_DEVICE_LIST_SIZE, '\0');
    const long result = NEXO_DevSrv_GetAvailableDeviceList(block.data());
    if (status)
        *status = result;
    qint32 count = 0;
    std::memcpy(&count, block.constData(), sizeof count);
    QList<QByteArray> names;
    for (int i = 0; i < count && i < NEXO_DEVICE_LIST_MAX; ++i)
        names.append(QByteArray(block.constData() + NEXO_DEVICE_LIST_NAMES_OFFSET +
                                i * NEXO_DEVICE_NAME_SLOT));
    return names;
}

QByteArray readCustomizeName(long *status)
{
    char buffer[NEXO_CUSTOMIZE_NAME_SIZE] = {};
    *status = NEXO_DevSrv_GetCustomizeName(buffer);
    return *status == 0 ? QByteArray(buffer) : QByteArray();
}

// What a callback that calls back into the library saw.
struct ReentrantObservations
{
    QList<QByteArray> devices;
    long listStatus = -1;
    int registeredInside = -1;
    long waitIdleInside = -1;
    long unregisterInit = -1;
    long unregisterMgr = -1;
};
ReentrantObservations g_reentrant;

int reentrantCallback(int type, void *data)
{
    g_recorder.add('R', type, data);
    g_reentrant.devices = deviceList(&g_reentrant.listStatus);
    g_reentrant.registeredInside = NexoSim_RegisteredCallbackCount();
    g_reentrant.waitIdleInside = NexoSim_WaitIdle(5000);
    g_reentrant.unregisterInit = NEXO_DevSrv_UnRegisterDevInitEventCallback(reentrantCallback);
    g_reentrant.unregisterMgr = NEXO_DevSrv_UnRegisterDevMgrCallback(reentrantCallback);
    NexoSim_PostEvent(NEXO_EVENT_DEV_DEVICE_INVALID, 0);
    return 1;
}

QSemaphore g_slowStarted;
std::atomic<bool> g_slowFinished{false};

int slowCallback(int, void *)
{
    g_slowStarted.release();
    QThread::msleep(200);
    g_slowFinished = true;
    return 1;
}

} // namespace

// The simulated device service behind NEXO_DevSrv_* and its NexoSim_* controls.
class tst_SdkSimulator : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void detectionIsDeliveredOnTheLibraryThread_data();
    void detectionIsDeliveredOnTheLibraryThread();
    void eventReachesEachDistinctCallbackOnce_data();
    void eventReachesEachDistinctCallbackOnce();
    void unregisterStopsDelivery_data();
    void unregisterStopsDelivery();
    void nullCallbacksAreRejected();
    void registerResult_data();
    void registerResult();
    void deviceListBlockLayout_data();
    void deviceListBlockLayout();
    void deviceListFailure();
    void customizeName_data();
    void customizeName();
    void resetDropsPendingEventsAndState();
    void eventsAreDeliveredInDueOrder();
    void callbackCallsBackIntoTheLibrary();
    void unregisterWaitsForARunningCallback();
    void waitIdleTimesOut();
    void loadFromSettings_data();
    void loadFromSettings();
    void exitIsClean_data();
    void exitIsClean();
};

void tst_SdkSimulator::init()
{
    NexoSim_Reset();
    g_recorder.clear();
}

void tst_SdkSimulator::cleanup()
{
    NexoSim_Reset();
}

void tst_SdkSimulator::detectionIsDeliveredOnTheLibraryThread_data()
{
    QTest::addColumn<int>("type"); // -1: leave the detection as Reset made it
    QTest::addColumn<int>("delayMs");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("reject at once")
        << int(NEXO_EVENT_DEV_REJECT) << 0 << QList<int>{NEXO_EVENT_DEV_REJECT};
    QTest::newRow("invalid device later")
        << int(NEXO_EVENT_DEV_DEVICE_INVALID) << 20 << QList<int>{NEXO_EVENT_DEV_DEVICE_INVALID};
    QTest::newRow("no event configured") << 0 << 0 << QList<int>{};
    // Runs after the rows above: Reset brings the default back.
    QTest::newRow("default after reset") << -1 << 0 << QList<int>{NEXO_EVENT_DEV_DETECTED};
}

void tst_SdkSimulator::detectionIsDeliveredOnTheLibraryThread()
{
    QFETCH(int, type);
    QFETCH(int, delayMs);
    QFETCH(QList<int>, expected);
    QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(recordingCallback<'A'>), 0L);
    if (type >= 0)
        NexoSim_SetDetection(type, delayMs);

    QCOMPARE(NexoSim_StartDetection(), 0L);
    QCOMPARE(NexoSim_WaitIdle(5000), 0L);

    QCOMPARE(g_recorder.types(), expected);
    for (const Delivery &delivery : g_recorder.deliveries()) {
        QVERIFY(delivery.thread != QThread::currentThreadId());
        QVERIFY(delivery.data == nullptr);
    }
}

void tst_SdkSimulator::eventReachesEachDistinctCallbackOnce_data()
{
    QTest::addColumn<QString>("registrations");
    QTest::addColumn<int>("registeredCount");
    QTest::addColumn<QString>("called");
    QTest::newRow("one function under both kinds") << "init:A mgr:A" << 2 << "A";
    QTest::newRow("twice under one kind counts once") << "init:A init:A" << 1 << "A";
    QTest::newRow("repeated under both kinds") << "mgr:A mgr:A init:A init:A" << 2 << "A";
    QTest::newRow("two functions") << "init:A mgr:B" << 2 << "AB";
    QTest::newRow("three functions, overlapping") << "init:A init:B mgr:B mgr:C" << 4 << "ABC";
    QTest::newRow("nothing registered") << "" << 0 << "";
}

void tst_SdkSimulator::eventReachesEachDistinctCallbackOnce()
{
    QFETCH(QString, registrations);
    QFETCH(int, registeredCount);
    QFETCH(QString, called);
    for (const QString &spec : specs(registrations))
        QCOMPARE(registerBySpec(spec), 0L);
    QCOMPARE(NexoSim_RegisteredCallbackCount(), registeredCount);

    NexoSim_PostEvent(NEXO_EVENT_DEV_DETECTED, 0);
    QCOMPARE(NexoSim_WaitIdle(5000), 0L);

    QCOMPARE(g_recorder.callbacks(), called);
}

void tst_SdkSimulator::unregisterStopsDelivery_data()
{
    QTest::addColumn<QString>("registrations");
    QTest::addColumn<QString>("unregistrations"); // "kind:callback=expected result"
    QTest::addColumn<int>("registeredCount");
    QTest::addColumn<QString>("called");
    const QString notRegistered = QString::number(NEXO_ERR_NOT_REGISTERED);
    QTest::newRow("one kind of two") << "init:A mgr:A"
                                     << "init:A=0" << 1 << "A";
    QTest::newRow("both kinds") << "init:A mgr:A"
                                << "init:A=0 mgr:A=0" << 0 << "";
    QTest::newRow("other kind than registered")
        << "init:A" << ("mgr:A=" + notRegistered) << 1 << "A";
    QTest::newRow("unknown callback") << "init:A" << ("init:B=" + notRegistered) << 1 << "A";
    QTest::newRow("double registration, double removal")
        << "init:A init:A" << ("init:A=0 init:A=" + notRegistered) << 0 << "";
    QTest::newRow("one of two functions") << "init:A init:B"
                                          << "init:B=0" << 1 << "A";
    QTest::newRow("nothing registered") << "" << ("mgr:C=" + notRegistered) << 0 << "";
}

void tst_SdkSimulator::unregisterStopsDelivery()
{
    QFETCH(QString, registrations);
    QFETCH(QString, unregistrations);
    QFETCH(int, registeredCount);
    QFETCH(QString, called);
    for (const QString &spec : specs(registrations))
        QCOMPARE(registerBySpec(spec), 0L);
    for (const QString &spec : specs(unregistrations)) {
        const QStringList parts = spec.split(QLatin1Char('='));
        QCOMPARE(unregisterBySpec(parts.at(0)), parts.at(1).toLong());
    }
    QCOMPARE(NexoSim_RegisteredCallbackCount(), registeredCount);

    NexoSim_PostEvent(NEXO_EVENT_DEV_DETECTED, 0);
    QCOMPARE(NexoSim_WaitIdle(5000), 0L);

    QCOMPARE(g_recorder.callbacks(), called);
}

void tst_SdkSimulator::nullCallbacksAreRejected()
{
    const long invalid = NEXO_ERR_INVALID_ARGUMENT;
    QCOMPARE(NEXO_DevSrv_RegisterDevInitEventCallback(nullptr), invalid);
    QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(nullptr), invalid);
    QCOMPARE(NEXO_DevSrv_UnRegisterDevInitEventCallback(nullptr), invalid);
    QCOMPARE(NEXO_DevSrv_UnRegisterDevMgrCallback(nullptr), invalid);
    QCOMPARE(NexoSim_RegisteredCallbackCount(), 0);
}

void tst_SdkSimulator::registerResult_data()
{
    QTest::addColumn<long>("result");
    QTest::newRow("success") << 0L;
    QTest::newRow("positive error") << 3L;
    QTest::newRow("negative error") << -1L;
    QTest::newRow("large error") << 0x7FFFFFFFL;
}

void tst_SdkSimulator::registerResult()
{
    QFETCH(long, result);
    NexoSim_SetRegisterResult(result);

    QCOMPARE(NEXO_DevSrv_RegisterDevInitEventCallback(recordingCallback<'A'>), result);
    QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(recordingCallback<'B'>), result);
    QCOMPARE(NexoSim_RegisteredCallbackCount(), result == 0 ? 2 : 0);
    NexoSim_PostEvent(NEXO_EVENT_DEV_DETECTED, 0);
    QCOMPARE(NexoSim_WaitIdle(5000), 0L);
    QCOMPARE(g_recorder.callbacks(), result == 0 ? QStringLiteral("AB") : QString());

    // A failed registration leaves nothing to unregister; a later one succeeds.
    NexoSim_SetRegisterResult(0);
    QCOMPARE(NEXO_DevSrv_UnRegisterDevMgrCallback(recordingCallback<'B'>),
             result == 0 ? 0L : long(NEXO_ERR_NOT_REGISTERED));
    QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(recordingCallback<'C'>), 0L);
}

void tst_SdkSimulator::deviceListBlockLayout_data()
{
    QTest::addColumn<QList<QByteArray>>("devices");
    QTest::addColumn<QList<QByteArray>>("expected");

    QList<QByteArray> seventeen;
    for (int i = 0; i < 17; ++i)
        seventeen.append("Modem " + QByteArray::number(i));
    const QByteArray slotFull(NEXO_DEVICE_NAME_SLOT - 1, 'n');
    const QByteArray multiByteAtTheCut = QByteArray(NEXO_DEVICE_NAME_SLOT - 2, 'm') + "中";

    QTest::newRow("none") << QList<QByteArray>{} << QList<QByteArray>{};
    QTest::newRow("one") << QList<QByteArray>{"USB Modem E173"}
                         << QList<QByteArray>{"USB Modem E173"};
    QTest::newRow("two") << QList<QByteArray>{"first", "second"}
                         << QList<QByteArray>{"first", "second"};
    QTest::newRow("empty name") << QList<QByteArray>{"", "x"} << QList<QByteArray>{"", "x"};
    QTest::newRow("utf-8 name") << QList<QByteArray>{"Modem Ü 中"}
                                << QList<QByteArray>{"Modem Ü 中"};
    QTest::newRow("seventeen: sixteen reported") << seventeen << seventeen.mid(0, 16);
    QTest::newRow("name filling its slot")
        << QList<QByteArray>{slotFull, "next"} << QList<QByteArray>{slotFull, "next"};
    QTest::newRow("name longer than its slot")
        << QList<QByteArray>{slotFull + "tail", "next"} << QList<QByteArray>{slotFull, "next"};
    QTest::newRow("cut falls inside a character")
        << QList<QByteArray>{multiByteAtTheCut}
        << QList<QByteArray>{QByteArray(NEXO_DEVICE_NAME_SLOT - 2, 'm')};
}

void tst_SdkSimulator::deviceListBlockLayout()
{
    QFETCH(QList<QByteArray>, devices);
    QFETCH(QList<QByteArray>, expected);
    setDevices(devices);

    // Prefilled instead of zero-filled: what the library does not own must stay untouched.
    QByteArray block(NEXO_DEVICE_LIST_SIZE, kPattern);
    QCOMPARE(NEXO_DevSrv_GetAvailableDeviceList(block.data()), 0L);

    QCOMPARE(block.size(), int(NEXO_DEVICE_LIST_SIZE));
    QCOMPARE(block, expectedBlock(expected));
    if (expected.size() >= 2) { // the fixed offsets the core relies on
        QCOMPARE(QByteArray(block.constData() + 12), expected.at(0));
        QCOMPARE(QByteArray(block.constData() + 12 + NEXO_DEVICE_NAME_SLOT), expected.at(1));
    }
}

void tst_SdkSimulator::deviceListFailure()
{
    setDevices({"modem"});
    NexoSim_SetDeviceListResult(9);
    QByteArray block(NEXO_DEVICE_LIST_SIZE, kPattern);
    QCOMPARE(NEXO_DevSrv_GetAvailableDeviceList(block.data()), 9L);
    QCOMPARE(block, QByteArray(NEXO_DEVICE_LIST_SIZE, kPattern));
    QCOMPARE(NEXO_DevSrv_GetAvailableDeviceList(nullptr), long(NEXO_ERR_INVALID_ARGUMENT));

    NexoSim_SetDeviceListResult(0);
    long status = -1;
    QCOMPARE(deviceList(&status), QList<QByteArray>{"modem"});
    QCOMPARE(status, 0L);
}

void tst_SdkSimulator::customizeName_data()
{
    QTest::addColumn<QByteArray>("name");     // null: set to NULL
    QTest::addColumn<QByteArray>("expected"); // null: the call fails
    QTest::newRow("plain") << QByteArray("vodafone") << QByteArray("vodafone");
    QTest::newRow("empty but set") << QByteArray("") << QByteArray("");
    QTest::newRow("utf-8") << QByteArray("运营商") << QByteArray("运营商");
    QTest::newRow("255 bytes fit") << QByteArray(255, 'a') << QByteArray(255, 'a');
    QTest::newRow("256 bytes cut") << QByteArray(256, 'b') << QByteArray(255, 'b');
    QTest::newRow("300 bytes cut") << QByteArray(300, 'c') << QByteArray(255, 'c');
    QTest::newRow("cut inside a character") << QByteArray(254, 'd') + "é" << QByteArray(254, 'd');
    QTest::newRow("NULL") << QByteArray() << QByteArray();
}

void tst_SdkSimulator::customizeName()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, expected);
    NexoSim_SetCustomizeName(name.isNull() ? nullptr : name.constData());

    constexpr int canary = 16;
    QByteArray buffer(NEXO_CUSTOMIZE_NAME_SIZE + canary, kPattern);
    const long status = NEXO_DevSrv_GetCustomizeName(buffer.data());

    QByteArray untouched(NEXO_CUSTOMIZE_NAME_SIZE + canary, kPattern);
    if (expected.isNull()) {
        QCOMPARE(status, long(NEXO_ERR_NO_CUSTOMIZATION));
        QCOMPARE(buffer, untouched);
        return;
    }
    QCOMPARE(status, 0L);
    QByteArray written = expected + '\0';
    QCOMPARE(buffer, untouched.replace(0, written.size(), written));
}

void tst_SdkSimulator::resetDropsPendingEventsAndState()
{
    QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(recordingCallback<'A'>), 0L);
    setDevices({"modem"});
    NexoSim_SetCustomizeName("operator");
    NexoSim_SetRegisterResult(5);
    NexoSim_SetDeviceListResult(7);
    NexoSim_PostEvent(NEXO_EVENT_DEV_REJECT, 5000);

    NexoSim_Reset();
    QCOMPARE(NexoSim_WaitIdle(0), 0L); // nothing left to deliver

    QCOMPARE(NexoSim_RegisteredCallbackCount(), 0);
    long status = -1;
    QCOMPARE(deviceList(&status), QList<QByteArray>{});
    QCOMPARE(status, 0L);
    QCOMPARE(readCustomizeName(&status), QByteArray());
    QCOMPARE(status, long(NEXO_ERR_NO_CUSTOMIZATION));
    QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(recordingCallback<'A'>), 0L);
    NexoSim_PostEvent(NEXO_EVENT_DEV_DETECTED, 0);
    QCOMPARE(NexoSim_WaitIdle(5000), 0L);
    QCOMPARE(g_recorder.types(), QList<int>{NEXO_EVENT_DEV_DETECTED});
}

void tst_SdkSimulator::eventsAreDeliveredInDueOrder()
{
    QCOMPARE(NEXO_DevSrv_RegisterDevInitEventCallback(recordingCallback<'A'>), 0L);
    NexoSim_PostEvent(NEXO_EVENT_DEV_REJECT, 300);
    NexoSim_PostEvent(NEXO_EVENT_DEV_DEVICE_INVALID, 0);
    NexoSim_PostEvent(NEXO_EVENT_DEV_DETECTED, 150);
    QCOMPARE(NexoSim_WaitIdle(5000), 0L);
    QCOMPARE(g_recorder.types(), (QList<int>{NEXO_EVENT_DEV_DEVICE_INVALID, NEXO_EVENT_DEV_DETECTED,
                                             NEXO_EVENT_DEV_REJECT}));
    // One thread delivers them all.
    const QList<Delivery> deliveries = g_recorder.deliveries();
    QCOMPARE(deliveries.at(0).thread, deliveries.at(2).thread);
}

void tst_SdkSimulator::callbackCallsBackIntoTheLibrary()
{
    g_reentrant = ReentrantObservations();
    setDevices({"E173"});
    QCOMPARE(NEXO_DevSrv_RegisterDevInitEventCallback(reentrantCallback), 0L);
    QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(reentrantCallback), 0L);
    QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(recordingCallback<'A'>), 0L);

    NexoSim_PostEvent(NEXO_EVENT_DEV_DETECTED, 0);
    QCOMPARE(NexoSim_WaitIdle(5000), 0L);

    QCOMPARE(g_reentrant.listStatus, 0L);
    QCOMPARE(g_reentrant.devices, QList<QByteArray>{"E173"});
    QCOMPARE(g_reentrant.registeredInside, 3);
    QCOMPARE(g_reentrant.waitIdleInside, long(NEXO_ERR_TIMEOUT)); // at once, not a deadlock
    QCOMPARE(g_reentrant.unregisterInit, 0L);
    QCOMPARE(g_reentrant.unregisterMgr, 0L);
    QCOMPARE(NexoSim_RegisteredCallbackCount(), 1);
    // The event posted from inside reached A only: R had unregistered itself.
    QList<QPair<char, int>> seen;
    for (const Delivery &delivery : g_recorder.deliveries())
        seen.append({delivery.callback, delivery.type});
    QCOMPARE(seen, (QList<QPair<char, int>>{{'R', NEXO_EVENT_DEV_DETECTED},
                                            {'A', NEXO_EVENT_DEV_DETECTED},
                                            {'A', NEXO_EVENT_DEV_DEVICE_INVALID}}));
}

void tst_SdkSimulator::unregisterWaitsForARunningCallback()
{
    g_slowFinished = false;
    QCOMPARE(NEXO_DevSrv_RegisterDevInitEventCallback(slowCallback), 0L);
    NexoSim_PostEvent(NEXO_EVENT_DEV_DETECTED, 0);
    QVERIFY(g_slowStarted.tryAcquire(1, 5000));

    QCOMPARE(NEXO_DevSrv_UnRegisterDevInitEventCallback(slowCallback), 0L);
    // Once unregistered the callback's code may go away: it is no longer running.
    QVERIFY(g_slowFinished);
}

void tst_SdkSimulator::waitIdleTimesOut()
{
    NexoSim_PostEvent(NEXO_EVENT_DEV_DETECTED, 10000);
    QCOMPARE(NexoSim_WaitIdle(20), long(NEXO_ERR_TIMEOUT));
    NexoSim_Reset();
    QCOMPARE(NexoSim_WaitIdle(0), 0L);
}

void tst_SdkSimulator::loadFromSettings_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<long>("status");
    QTest::addColumn<QList<QByteArray>>("devices");
    QTest::addColumn<QByteArray>("customize"); // null: GetCustomizeName fails

    const QList<QByteArray> preset{"preset"};
    QTest::newRow("both keys") << QByteArray("[simulator]\ndevices=E173;E1750\ncustomize=acme\n")
                               << 0L << QList<QByteArray>{"E173", "E1750"} << QByteArray("acme");
    QTest::newRow("blanks and empty entries")
        << QByteArray("[simulator]\ndevices= A ;;B C ; \n") << 0L << QList<QByteArray>{"A", "B C"}
        << QByteArray();
    QTest::newRow("empty device list")
        << QByteArray("[simulator]\ndevices=\n") << 0L << QList<QByteArray>{} << QByteArray();
    QTest::newRow("only the name")
        << QByteArray("[simulator]\ncustomize=运营商\n") << 0L << preset << QByteArray("运营商");
    QTest::newRow("neither key") << QByteArray("[other]\ndevices=x\n") << long(NEXO_ERR_NOT_FOUND)
                                 << preset << QByteArray();
}

void tst_SdkSimulator::loadFromSettings()
{
    QFETCH(QByteArray, file);
    QFETCH(long, status);
    QFETCH(QList<QByteArray>, devices);
    QFETCH(QByteArray, customize);
    QVERIFY(TestFiles::writeFile(TestFiles::useFreshSettings(), file));
    setDevices({"preset"});

    QCOMPARE(NexoSim_LoadFromSettings(), status);

    QCOMPARE(deviceList(), devices);
    long nameStatus = -1;
    QCOMPARE(readCustomizeName(&nameStatus), customize);
    QCOMPARE(nameStatus == 0, !customize.isNull());
}

void tst_SdkSimulator::exitIsClean_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("dispatcher never started") << "never-started" << 0 << QByteArray();
    QTest::newRow("pending event is dropped") << "pending" << 0 << QByteArray();
    QTest::newRow("running callback is waited for")
        << "running" << 0 << QByteArray("callback started\ncallback finished\n");
    QTest::newRow("exit from inside a callback")
        << "exit-in-callback" << 3 << QByteArray("callback started\n");
}

void tst_SdkSimulator::exitIsClean()
{
    QFETCH(QString, mode);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, output);
    QProcess process;
    process.start(QCoreApplication::applicationDirPath() + "/sdk_simulator_exit", {mode});
    QVERIFY(process.waitForFinished(30000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), exitCode);
    QCOMPARE(process.readAllStandardOutput(), output);
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

QTEST_GUILESS_MAIN(tst_SdkSimulator)
#include "tst_sdksimulator.moc"
