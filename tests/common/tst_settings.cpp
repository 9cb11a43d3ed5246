#include "CommonUtils.h"
#include "LogCapture.h"
#include "TestFiles.h"

#include <NexoSim.h>

#include <QtTest>

namespace {
const QString kSource = QStringLiteral("../../src/core/common/CommonUtils: GetSettings: ");
}

class tst_Settings : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestFiles::useFreshSettings(); }

    void roundTrip_data()
    {
        QTest::addColumn<QString>("group");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::newRow("chinese arabic emoji")
            << "language"
            << "active" << QString::fromUtf8("中文 العربية 📶🙂");
        QTest::newRow("empty value") << "g"
                                     << "k" << QString();
        QTest::newRow("separators") << "a=b"
                                    << "[c]"
                                    << "x=y\n[z]\\";
    }
    // The library reports success as 0, which SetSettings reports as false; a read is one line.
    void roundTrip()
    {
        QFETCH(QString, group);
        QFETCH(QString, key);
        QFETCH(QString, value);
        QVERIFY(!CommonUtils::SetSettings(group, key, value));
        LogCapture log;
        QCOMPARE(CommonUtils::GetSettings(group, key), value);
        QCOMPARE(log.lines().size(), 1);
        QCOMPARE(log.lines().first().type, QtDebugMsg);
    }

    // A missing key: a stamped debug line with the status, then a stamped warning.
    void missingKeyLogsBothLines()
    {
        LogCapture log;
        QCOMPARE(CommonUtils::GetSettings("customize", "nothing-here"), QString());
        const QList<LogCapture::Line> lines = log.lines();
        QCOMPARE(lines.size(), 2);
        QVERIFY(LogCapture::hasStamp(lines[0].text) && LogCapture::hasStamp(lines[1].text));
        QCOMPARE(lines[0].type + 10 * lines[1].type, QtDebugMsg + 10 * QtWarningMsg);
        const QString status = lines[0].text.section(' ', -1);
        QVERIFY(status.toLong() != 0);
        QCOMPARE(
            log.unstamped(),
            (QStringList{kSource + "NEXO_GetSettings (customize, nothing-here) returned " + status,
                         kSource + "NEXO_GetSettings returned " + status}));
    }

    void setFailureIsReportedAsTrue()
    {
        // A settings file below a regular file cannot be written: the library fails.
        TestFiles::writeAppFile("/settings/blocker", "x");
        qputenv("LINKDECK_SETTINGS",
                QFile::encodeName(TestFiles::appDir() + "/settings/blocker/settings.ini"));
        QVERIFY(CommonUtils::SetSettings("g", "k", "v"));
    }

    void flags()
    {
        QVERIFY(CommonUtils::GetSMSSeperatorConfigValue());
        CommonUtils::SetSMSSeperatorConfigValue(false);
        QVERIFY(!gSeparator && !CommonUtils::GetSMSSeperatorConfigValue());
        CommonUtils::SetSMSSeperatorConfigValue(true);
        QVERIFY(!CommonUtils::IsShuttingDown());
        CommonUtils::SetShutDownFlag();
        QVERIFY(CommonUtils::IsShuttingDown());
        CommonUtils::ResetShutDownFlag();
        QVERIFY(!CommonUtils::IsShuttingDown());
    }

    void settingsFileLocation_data()
    {
        QTest::addColumn<QByteArray>("xdgConfigHome");
        QTest::addColumn<QString>("expected");
        QTest::newRow("XDG_CONFIG_HOME") << QByteArray("/xdg") << "/xdg/linkdeck/settings.ini";
        QTest::newRow("XDG default") << QByteArray() << "/home/.config/linkdeck/settings.ini";
    }
    void settingsFileLocation()
    {
        QFETCH(QByteArray, xdgConfigHome);
        QFETCH(QString, expected);
        const QString root = TestFiles::appDir() + "/location";
        QDir(root).removeRecursively();
        qunsetenv("LINKDECK_SETTINGS");
        qputenv("HOME", QFile::encodeName(root + "/home"));
        if (xdgConfigHome.isEmpty())
            qunsetenv("XDG_CONFIG_HOME");
        else
            qputenv("XDG_CONFIG_HOME", QFile::encodeName(root) + xdgConfigHome);
        QVERIFY(!CommonUtils::SetSettings("customize", "operator", "nordtel"));
        QVERIFY(QFile::exists(root + expected));
        QCOMPARE(CommonUtils::GetSettings("customize", "operator"), QString("nordtel"));
    }

    void simulatorReadsItsSetupFromSettings()
    {
        NexoSim_Reset();
        CommonUtils::SetSettings("simulator", "devices", "E3372; K5160;");
        CommonUtils::SetSettings("simulator", "customize", "nordtel");
        QCOMPARE(NexoSim_LoadFromSettings(), 0L);
        QByteArray block(NEXO_DEVICE_LIST_SIZE, '\0');
        QCOMPARE(NEXO_DevSrv_GetAvailableDeviceList(block.data()), 0L);
        QCOMPARE(*reinterpret_cast<const qint32 *>(block.constData()), 2);
        QCOMPARE(QByteArray(block.constData() + NEXO_DEVICE_LIST_NAMES_OFFSET), "E3372");
        char name[NEXO_CUSTOMIZE_NAME_SIZE] = {};
        QCOMPARE(NEXO_DevSrv_GetCustomizeName(name), 0L);
        QCOMPARE(QByteArray(name), "nordtel");
        NexoSim_Reset();
    }
};

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_settings.moc"
