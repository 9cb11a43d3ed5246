// The choice of the device backend, and the ModemManager backend where there is no daemon (no
// system bus at all: DBUS_SYSTEM_BUS_ADDRESS names a socket that does not exist).
#include <NexoBackend.h>
#include <NexoSim.h>

#include <QElapsedTimer>
#include <QtTest>

namespace {

int unusedCallback(int, void *)
{
    return 1;
}

void setSetting(const QString &group, const QString &key, const QString &value)
{
    QCOMPARE(NEXO_SetSettings(group.utf16(), key.utf16(), value.utf16()), 0L);
}

} // namespace

class tst_MmNoDaemon : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(qputenv("DBUS_SYSTEM_BUS_ADDRESS",
                        "unix:path=" + QFile::encodeName(QDir::currentPath()) + "/no-bus"));
    }
    void cleanup()
    {
        qunsetenv("LINKDECK_DEVICE_BACKEND");
        QCOMPARE(NEXO_Backend_Select("simulator"), 0L);
    }

    void choiceFromEnvironmentAndSettings_data()
    {
        QTest::addColumn<QByteArray>("environment"); // empty: unset
        QTest::addColumn<QString>("setting");        // empty: absent
        QTest::addColumn<QByteArray>("chosen");
        QTest::newRow("nothing configured") << QByteArray() << QString() << QByteArray("simulator");
        QTest::newRow("setting") << QByteArray() << "modemmanager" << QByteArray("modemmanager");
        QTest::newRow("environment over setting")
            << QByteArray("simulator") << "modemmanager" << QByteArray("simulator");
        QTest::newRow("auto without a daemon")
            << QByteArray("auto") << QString() << QByteArray("simulator");
        QTest::newRow("unknown name")
            << QByteArray("carrier-pigeon") << QString() << QByteArray("simulator");
    }
    void choiceFromEnvironmentAndSettings()
    {
        QFETCH(QByteArray, environment);
        QFETCH(QString, setting);
        QFETCH(QByteArray, chosen);
        if (!environment.isEmpty())
            QVERIFY(qputenv("LINKDECK_DEVICE_BACKEND", environment));
        setSetting("device", "backend", setting);
        QCOMPARE(NEXO_Backend_Select(nullptr), 0L);
        QCOMPARE(QByteArray(NEXO_Backend_Name()), chosen);
    }

    void unknownNameIsRefused()
    {
        QCOMPARE(NEXO_Backend_Select("carrier-pigeon"), long(NEXO_ERR_INVALID_ARGUMENT));
        QCOMPARE(QByteArray(NEXO_Backend_Name()), QByteArray("simulator"));
    }

    // The explicit choice stands; its functions fail at once instead of waiting for a bus.
    void modemManagerWithoutDaemonFails()
    {
        QCOMPARE(NEXO_Backend_Select("modemmanager"), 0L);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(NEXO_DevSrv_RegisterDevInitEventCallback(unusedCallback),
                 long(NEXO_ERR_SERVICE_UNAVAILABLE));
        QCOMPARE(NEXO_DevSrv_RegisterDevMgrCallback(unusedCallback),
                 long(NEXO_ERR_SERVICE_UNAVAILABLE));
        QByteArray block(NEXO_DEVICE_LIST_SIZE, '\0');
        QCOMPARE(NEXO_DevSrv_GetAvailableDeviceList(block.data()),
                 long(NEXO_ERR_SERVICE_UNAVAILABLE));
        char buffer[NEXO_CUSTOMIZE_NAME_SIZE];
        QCOMPARE(NEXO_DevSrv_GetCustomizeName(buffer), long(NEXO_ERR_NO_CUSTOMIZATION));
        QCOMPARE(NEXO_Backend_StartDetection(), long(NEXO_ERR_SERVICE_UNAVAILABLE));
        QCOMPARE(NEXO_DevSrv_UnRegisterDevMgrCallback(unusedCallback),
                 long(NEXO_ERR_NOT_REGISTERED));
        QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
    }

    // The simulator's controls work whichever backend is active, and the simulator reports its
    // SIM's operator id while it has devices.
    void simulatorOperatorId()
    {
        NexoSim_Reset();
        char buffer[NEXO_OPERATOR_ID_SIZE];
        QCOMPARE(NEXO_DevSrv_GetSimOperatorId(buffer), long(NEXO_ERR_NOT_FOUND));
        const char *devices[] = {"E3372"};
        NexoSim_SetDevices(devices, 1);
        QCOMPARE(NEXO_DevSrv_GetSimOperatorId(buffer), 0L);
        QCOMPARE(QByteArray(buffer), QByteArray());
        NexoSim_SetSimOperatorId("26201");
        QCOMPARE(NEXO_DevSrv_GetSimOperatorId(buffer), 0L);
        QCOMPARE(QByteArray(buffer), QByteArray("26201"));
        NexoSim_Reset();
    }
};

QTEST_GUILESS_MAIN(tst_MmNoDaemon)
#include "tst_mmnodaemon.moc"
