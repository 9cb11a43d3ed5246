// The ModemManager backend through the unchanged C API, against the real daemon with fake
// modems (run inside tests/mm/mm_testenv.py).
#include "MmControl.h"

#include <NexoBackend.h>
#include <NexoSdk.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMutex>
#include <QThread>
#include <QtTest>

#include <atomic>
#include <cstring>

namespace {

QMutex g_mutex;
// "A6606" per delivery in order; marked when it ran on the test's thread.
QStringList g_seen;

QStringList seen()
{
    QMutexLocker lock(&g_mutex);
    return g_seen;
}

template<char Name>
int recordingCallback(int type, void *)
{
    const bool onTestThread = QThread::currentThread() == QCoreApplication::instance()->thread();
    QMutexLocker lock(&g_mutex);
    g_seen.append(Name + QString::number(type) + (onTestThread ? " on the test's thread" : ""));
    return 1;
}

// Waits until the deliveries are exactly these (in this order), then a little longer for
// any that should not come.
bool deliveriesBecome(const QStringList &expected)
{
    const bool reached = QTest::qWaitFor([&] { return seen().size() >= expected.size(); }, 15000);
    QTest::qWait(200);
    return reached && seen() == expected;
}

void clearSeen()
{
    QMutexLocker lock(&g_mutex);
    g_seen.clear();
}

QByteArray command(const QByteArray &text)
{
    return QByteArray::fromStdString(MmControl::send(text.toStdString()));
}

// Modems a case plugged and has not unplugged yet; cleanup() unplugs them.
QByteArrayList g_plugged;

#define CONTROL(text)                                                                              \
    do {                                                                                           \
        const QByteArray line = text;                                                              \
        const QByteArray answer = command(line);                                                   \
        QVERIFY2(answer.startsWith("ok"), answer.constData());                                     \
        const QByteArrayList words = line.split(' ');                                              \
        if (words[0] == "plug")                                                                    \
            g_plugged.append(words[1]);                                                            \
        else if (words[0] == "unplug")                                                             \
            g_plugged.removeAll(words[1]);                                                         \
    } while (false)

constexpr char kPattern = char(0xAB);

// The block as the library must leave one prefilled with kPattern.
QByteArray expectedBlock(const QList<QByteArray> &names)
{
    QByteArray block(NEXO_DEVICE_LIST_SIZE, kPattern);
    const qint32 count = names.size();
    std::memcpy(block.data(), &count, sizeof count);
    for (int i = 0; i < names.size(); ++i)
        std::memcpy(block.data() + 12 + i * NEXO_DEVICE_NAME_SLOT, names[i].constData(),
                    size_t(names[i].size()) + 1);
    return block;
}

QByteArray deviceList()
{
    QByteArray block(NEXO_DEVICE_LIST_SIZE, kPattern);
    if (NEXO_DevSrv_GetAvailableDeviceList(block.data()) != 0)
        return "failed";
    return block;
}

void setSetting(const QString &group, const QString &key, const QString &value)
{
    QCOMPARE(NEXO_SetSettings(group.utf16(), key.utf16(), value.utf16()), 0L);
}

// A callback that takes a while; unregistering must wait for it.
std::atomic<int> s_slowState{0}; // 1 running, 2 returned
int slowCallback(int, void *)
{
    s_slowState = 1;
    QThread::msleep(400);
    s_slowState = 2;
    return 1;
}

} // namespace

class tst_MmBackend : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(MmControl::available(), "run inside tests/mm/mm_testenv.py");
        // "auto" finds the daemon on the (private) system bus.
        QCOMPARE(NEXO_Backend_Select("auto"), 0L);
        QCOMPARE(QByteArray(NEXO_Backend_Name()), QByteArray("modemmanager"));
    }
    void init() { clearSeen(); }
    void cleanup()
    {
        for (const QByteArray &id : qAsConst(g_plugged))
            command("unplug " + id);
        g_plugged.clear();
        // The daemon's signals reach this process after the environment's answer.
        QTRY_COMPARE(deviceList(), expectedBlock({}));
    }

    void modemsComeAndGo()
    {
        // A modem present when the backend starts is reported to the first registration as if
        // just plugged, once although the function is registered under both kinds.
        CONTROL("plug zero E3372");
        QCOMPARE(NEXO_DevSrv_RegisterDevInitEventCallback(recordingCallback<'A'>), 0L);
        QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(recordingCallback<'A'>), 0L);
        QVERIFY2(deliveriesBecome({"A6606"}), qPrintable(seen().join(' ')));
        QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(recordingCallback<'B'>), 0L);
        QCOMPARE(NEXO_Backend_Select("simulator"), long(NEXO_ERR_BUSY));
        clearSeen();
        CONTROL("unplug zero");
        QVERIFY2(deliveriesBecome({"A6601", "B6601"}), qPrintable(seen().join(' ')));
        QCOMPARE(deviceList(), expectedBlock({}));

        // Once per distinct function, never on the caller's thread.
        clearSeen();
        CONTROL("plug one E3372");
        QVERIFY2(deliveriesBecome({"A6606", "B6606"}), qPrintable(seen().join(' ')));
        QCOMPARE(deviceList(), expectedBlock({"E3372"}));

        clearSeen();
        CONTROL("plug two K5160-with-a-longer-model-name");
        QVERIFY2(deliveriesBecome({"A6606", "B6606"}), qPrintable(seen().join(' ')));
        QCOMPARE(deviceList(), expectedBlock({"E3372", "K5160-with-a-longer-model-name"}));

        // One of two leaving changes the list; the last leaving invalidates the device.
        clearSeen();
        CONTROL("unplug one");
        QVERIFY2(deliveriesBecome({"A6606", "B6606"}), qPrintable(seen().join(' ')));
        QCOMPARE(deviceList(), expectedBlock({"K5160-with-a-longer-model-name"}));
        clearSeen();
        CONTROL("unplug two");
        QVERIFY2(deliveriesBecome({"A6601", "B6601"}), qPrintable(seen().join(' ')));
        QCOMPARE(deviceList(), expectedBlock({}));

        // Detection reports nothing while no modem is there, and the present one when asked.
        clearSeen();
        QCOMPARE(NEXO_Backend_StartDetection(), 0L);
        QVERIFY(deliveriesBecome({}));
        CONTROL("plug three E3372");
        QVERIFY(deliveriesBecome({"A6606", "B6606"}));
        clearSeen();
        QCOMPARE(NEXO_DevSrv_UnRegisterDevMgrCallback(recordingCallback<'B'>), 0L);
        QCOMPARE(NEXO_Backend_StartDetection(), 0L);
        QVERIFY(deliveriesBecome({"A6606"}));

        clearSeen();
        CONTROL("unplug three");
        QVERIFY(deliveriesBecome({"A6601"}));
        QCOMPARE(NEXO_DevSrv_UnRegisterDevInitEventCallback(recordingCallback<'A'>), 0L);
        QCOMPARE(NEXO_DevSrv_UnRegisterDevMgrCallback(recordingCallback<'A'>), 0L);
        QCOMPARE(NEXO_DevSrv_UnRegisterDevMgrCallback(recordingCallback<'A'>),
                 long(NEXO_ERR_NOT_REGISTERED));
    }

    // The device list block has room for long names only up to their slot.
    void longModelNameIsCutToItsSlot()
    {
        const QByteArray model(700, 'M');
        CONTROL("plug long " + model);
        QTRY_COMPARE(deviceList(), expectedBlock({model.left(NEXO_DEVICE_NAME_SLOT - 1)}));
    }

    void customizationFollowsTheSimOperator_data()
    {
        QTest::addColumn<QByteArray>("imsi");    // "-": SIM locked by a PIN
        QTest::addColumn<int>("mncLength");      // from the SIM's administrative data
        QTest::addColumn<QString>("mapDefault"); // empty: no default
        QTest::addColumn<QByteArray>("operatorId");
        QTest::addColumn<QByteArray>("customization"); // empty: none (an error)
        QTest::newRow("mapped, two-digit MNC") << QByteArray("262019876543210") << 2 << "common"
                                               << QByteArray("26201") << QByteArray("nordtel");
        QTest::newRow("mapped, three-digit MNC") << QByteArray("310410123456789") << 3 << "common"
                                                 << QByteArray("310410") << QByteArray("att");
        QTest::newRow("unmapped, default") << QByteArray("208011234567890") << 2 << "common"
                                           << QByteArray("20801") << QByteArray("common");
        QTest::newRow("unmapped, no default") << QByteArray("208011234567890") << 2 << QString()
                                              << QByteArray("20801") << QByteArray();
        QTest::newRow("locked SIM, default")
            << QByteArray("-") << 2 << "fallback" << QByteArray() << QByteArray("fallback");
    }
    void customizationFollowsTheSimOperator()
    {
        QFETCH(QByteArray, imsi);
        QFETCH(int, mncLength);
        QFETCH(QString, mapDefault);
        QFETCH(QByteArray, operatorId);
        QFETCH(QByteArray, customization);
        static int plugged = 0;
        const QByteArray id = "sim" + QByteArray::number(++plugged);

        QVERIFY(qputenv("LINKDECK_SETTINGS",
                        QFile::encodeName(QDir::currentPath() + "/" + id + ".ini")));
        setSetting("customize-map", "26201", "nordtel");
        setSetting("customize-map", "31041", "wrong: the MNC has three digits");
        setSetting("customize-map", "310410", "att");
        if (!mapDefault.isEmpty())
            setSetting("customize-map", "default", mapDefault);

        char buffer[NEXO_CUSTOMIZE_NAME_SIZE];
        QCOMPARE(NEXO_DevSrv_GetCustomizeName(buffer), long(NEXO_ERR_NO_CUSTOMIZATION));
        QCOMPARE(NEXO_DevSrv_GetSimOperatorId(buffer), long(NEXO_ERR_NOT_FOUND));

        CONTROL("plug " + id + " E3372 " + imsi + ' ' + QByteArray::number(mncLength));
        QTRY_COMPARE(deviceList(), expectedBlock({"E3372"}));
        std::memset(buffer, 'x', sizeof buffer);
        QCOMPARE(NEXO_DevSrv_GetSimOperatorId(buffer), 0L);
        QCOMPARE(QByteArray(buffer), operatorId);
        std::memset(buffer, 'x', sizeof buffer);
        const long status = NEXO_DevSrv_GetCustomizeName(buffer);
        QCOMPARE(status, customization.isEmpty() ? long(NEXO_ERR_NO_CUSTOMIZATION) : 0L);
        if (status == 0)
            QCOMPARE(QByteArray(buffer), customization);
    }

    void unregisteringWaitsForARunningDelivery()
    {
        s_slowState = 0;
        QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(slowCallback), 0L);
        CONTROL("plug slow E3372");
        QVERIFY(QTest::qWaitFor([] { return s_slowState != 0; }, 15000));
        QCOMPARE(NEXO_DevSrv_UnRegisterDevMgrCallback(slowCallback), 0L);
        QCOMPARE(s_slowState.load(), 2);
        CONTROL("unplug slow");
        QCOMPARE(s_slowState.load(), 2);
    }

    // A daemon that stops sends no removals: its leaving the bus invalidates the device, and a
    // registration while it is away fails at once; a restarted daemon's modem is new again.
    void daemonStopAndRestart()
    {
        QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(recordingCallback<'A'>), 0L);
        CONTROL("plug steady K5160");
        QVERIFY(deliveriesBecome({"A6606"}));

        clearSeen();
        CONTROL("stop-daemon");
        QVERIFY2(deliveriesBecome({"A6601"}), qPrintable(seen().join(' ')));
        QCOMPARE(deviceList(), expectedBlock({}));
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(NEXO_DevSrv_RegisterDevInitEventCallback(recordingCallback<'B'>),
                 long(NEXO_ERR_SERVICE_UNAVAILABLE));
        QVERIFY(timer.elapsed() < 2000);

        clearSeen();
        CONTROL("start-daemon"); // plugs the modems that were plugged
        QVERIFY2(deliveriesBecome({"A6606"}), qPrintable(seen().join(' ')));
        QCOMPARE(deviceList(), expectedBlock({"K5160"}));
        QCOMPARE(NEXO_DevSrv_UnRegisterDevMgrCallback(recordingCallback<'A'>), 0L);
    }
};

QTEST_GUILESS_MAIN(tst_MmBackend)
#include "tst_mmbackend.moc"
