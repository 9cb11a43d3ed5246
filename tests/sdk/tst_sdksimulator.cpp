#include "NexoSim.h"
#include "TestFiles.h"

#include <QCoreApplication>
#include <QMutex>
#include <QThread>
#include <QtTest>

#include <cstring>

namespace {

QMutex g_mutex;
// "A6606" per delivery (callback, event) in order; marked if with data or on the test's thread.
QStringList g_seen;

QStringList seen()
{
    QMutexLocker lock(&g_mutex);
    return g_seen;
}

template<char Name>
int recordingCallback(int type, void *data)
{
    // Not qApp: under QTEST_GUILESS_MAIN there is no QApplication to cast to.
    const bool onTestThread = QThread::currentThread() == QCoreApplication::instance()->thread();
    QMutexLocker lock(&g_mutex);
    g_seen.append(Name + QString::number(type) + (data ? " with data" : "") +
                  (onTestThread ? " on the test's thread" : ""));
    return 1;
}

// "+init:A" registers callback A under the init kind, "-mgr:B" unregisters B from the manager
// kind; true when the call gave 0, or NEXO_ERR_NOT_REGISTERED when the text ends with '!'.
bool apply(const QString &spec)
{
    const auto cb = spec.contains('A') ? recordingCallback<'A'> : recordingCallback<'B'>;
    const bool init = spec.contains("init");
    const long result = spec.startsWith('+')
                            ? (init ? NEXO_DevSrv_RegisterDevInitEventCallback(cb)
                                    : NEXO_DevSrv_RegisterDevMgrCallback(cb))
                            : (init ? NEXO_DevSrv_UnRegisterDevInitEventCallback(cb)
                                    : NEXO_DevSrv_UnRegisterDevMgrCallback(cb));
    return result == (spec.endsWith('!') ? long(NEXO_ERR_NOT_REGISTERED) : 0L);
}

constexpr char kPattern = char(0xAB);

// The device list block as the library must leave a block prefilled with kPattern: 8708
// bytes, the count at offset 0, the names in fixed slots from offset 12 on.
QByteArray expectedBlock(const QList<QByteArray> &names)
{
    QByteArray block(8708, kPattern);
    const qint32 count = names.size();
    std::memcpy(block.data(), &count, sizeof count);
    for (int i = 0; i < names.size(); ++i)
        std::memcpy(block.data() + 12 + i * NEXO_DEVICE_NAME_SLOT, names[i].constData(),
                    size_t(names[i].size()) + 1);
    return block;
}

void setDevices(const QList<QByteArray> &names)
{
    QVector<const char *> pointers;
    for (const QByteArray &name : names)
        pointers.append(name.constData());
    NexoSim_SetDevices(pointers.constData(), pointers.size());
}

long readDeviceList(QByteArray *block)
{
    *block = QByteArray(NEXO_DEVICE_LIST_SIZE, kPattern);
    return NEXO_DevSrv_GetAvailableDeviceList(block->data());
}

} // namespace

class tst_SdkSimulator : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        NexoSim_Reset();
        QMutexLocker lock(&g_mutex);
        g_seen.clear();
    }
    void cleanup() { NexoSim_Reset(); }

    void eventsArriveInDueOrderOnTheLibraryThread()
    {
        QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(recordingCallback<'A'>), 0L);
        NexoSim_PostEvent(NEXO_EVENT_DEV_REJECT, 300);
        NexoSim_PostEvent(NEXO_EVENT_DEV_DEVICE_INVALID, 0);
        QCOMPARE(NexoSim_StartDetection(), 0L); // the detection event, after 100 ms by default
        QCOMPARE(NexoSim_WaitIdle(5000), 0L);
        QCOMPARE(seen(), QStringList({"A6601", "A6606", "A6016"}));
    }

    void registrationsDecideWhoIsCalled_data()
    {
        QTest::addColumn<QString>("specs");
        QTest::addColumn<int>("registeredCount");
        QTest::addColumn<QString>("called");
        QTest::newRow("two functions") << "+init:A +mgr:B" << 2 << "A6606 B6606";
        QTest::newRow("one kind of two removed") << "+init:A +mgr:A -init:A" << 1 << "A6606";
        QTest::newRow("registered twice counts once") << "+mgr:A +mgr:A -mgr:A -mgr:A!" << 0 << "";
    }
    void registrationsDecideWhoIsCalled()
    {
        QFETCH(QString, specs);
        QFETCH(int, registeredCount);
        QFETCH(QString, called);
        for (const QString &spec : specs.split(' '))
            QVERIFY2(apply(spec), qPrintable(spec));
        QCOMPARE(NexoSim_RegisteredCallbackCount(), registeredCount);
        NexoSim_PostEvent(NEXO_EVENT_DEV_DETECTED, 0);
        QCOMPARE(NexoSim_WaitIdle(5000), 0L);
        QStringList deliveries = seen();
        deliveries.sort(); // in no particular order
        QCOMPARE(deliveries.join(' '), called);
    }

    void deviceListBlockLayout_data()
    {
        using Names = QList<QByteArray>;
        QTest::addColumn<Names>("devices");
        QTest::addColumn<Names>("expected");
        Names seventeen;
        for (int i = 0; i < 17; ++i)
            seventeen.append("Modem " + QByteArray::number(i));
        const QByteArray full(NEXO_DEVICE_NAME_SLOT - 1, 'n');
        const QByteArray cut(NEXO_DEVICE_NAME_SLOT - 2, 'm');
        QTest::newRow("seventeen: sixteen reported") << seventeen << seventeen.mid(0, 16);
        QTest::newRow("longer than a slot") << Names{full + "x", "next"} << Names{full, "next"};
        QTest::newRow("cut in a character") << Names{cut + "中"} << Names{cut};
    }
    // Prefilled instead of zero-filled: what the library does not own must stay untouched.
    void deviceListBlockLayout()
    {
        QFETCH(QList<QByteArray>, devices);
        QFETCH(QList<QByteArray>, expected);
        setDevices(devices);
        QByteArray block;
        QCOMPARE(readDeviceList(&block), 0L);
        QCOMPARE(block, expectedBlock(expected));
    }

    // A failed registration is not in force; a failed list leaves the caller's block alone. Reset
    // drops all of it.
    void configuredResultsAndReset()
    {
        QVERIFY(apply("+mgr:A"));
        NexoSim_SetRegisterResult(3);
        QCOMPARE(NEXO_DevSrv_RegisterDevInitEventCallback(recordingCallback<'B'>), 3L);
        QVERIFY(apply("-init:B!"));
        setDevices({"modem"});
        NexoSim_SetCustomizeName("operator");
        NexoSim_SetDeviceListResult(9);
        QByteArray block;
        QCOMPARE(readDeviceList(&block), 9L);
        QCOMPARE(block, QByteArray(NEXO_DEVICE_LIST_SIZE, kPattern));
        NexoSim_PostEvent(NEXO_EVENT_DEV_REJECT, 5000);
        NexoSim_Reset();
        QCOMPARE(NexoSim_WaitIdle(0), 0L); // nothing left to deliver
        QVERIFY(NexoSim_RegisteredCallbackCount() == 0 && readDeviceList(&block) == 0L);
        QCOMPARE(block, expectedBlock({}));
        char name[NEXO_CUSTOMIZE_NAME_SIZE];
        QCOMPARE(NEXO_DevSrv_GetCustomizeName(name), long(NEXO_ERR_NO_CUSTOMIZATION));
    }

    // The message set wins over the settings file's; cut to the buffer and always terminated.
    void cellBroadcast_data()
    {
        QTest::addColumn<QByteArray>("set"); // null: NexoSim_SetCellBroadcast(NULL)
        QTest::addColumn<bool>("inSettings");
        QTest::addColumn<int>("size");
        QTest::addColumn<long>("status");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("none") << QByteArray() << false << 64 << long(NEXO_ERR_NOT_FOUND)
                              << QByteArray("");
        QTest::newRow("set wins") << QByteArray("Storm") << true << 64 << 0L << QByteArray("Storm");
        QTest::newRow("from the settings")
            << QByteArray("") << true << 64 << 0L << QByteArray("Flood");
        QTest::newRow("cut to fit") << QByteArray("Storm") << false << 4 << 0L << QByteArray("Sto");
        QTest::newRow("no room") << QByteArray("Storm") << false << 0
                                 << long(NEXO_ERR_INVALID_ARGUMENT) << QByteArray("x");
    }
    void cellBroadcast()
    {
        QFETCH(QByteArray, set);
        QFETCH(bool, inSettings);
        QFETCH(int, size);
        const QString settings = TestFiles::useFreshSettings(QTest::currentDataTag());
        if (inSettings)
            QVERIFY(TestFiles::writeFile(settings, "[simulator]\ncbs=Flood\n"));
        NexoSim_SetCellBroadcast(set.isNull() ? nullptr : set.constData());
        char buffer[64] = "x";
        QTEST(NexoSim_GetCellBroadcast(buffer, size), "status");
        QTEST(QByteArray(buffer), "text");
        QCOMPARE(NexoSim_GetCellBroadcast(nullptr, 64), long(NEXO_ERR_INVALID_ARGUMENT));
    }
};

QTEST_GUILESS_MAIN(tst_SdkSimulator)
#include "tst_sdksimulator.moc"
