// The application on the real ModemManager daemon (inside tests/mm/mm_testenv.py): with
// --backend modemmanager it finds the fake modem, applies the customization of its model and
// shows the model and the SIM operator's name in the status bar.
#include "MmControl.h"

#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

class tst_AppModemManager : public QObject
{
    Q_OBJECT

private slots:
    void modemDecides_data()
    {
        QTest::addColumn<QByteArray>("modem");  // plug ID MODEL IMSI MNC_LENGTH
        QTest::addColumn<QString>("statusBar"); // empty: the status bar plugin is left out
        QTest::addColumn<bool>("notifications");
        // E3372 brings notifications; 26201 is Telekom's code in the shipped operator list.
        QTest::newRow("E3372 on 262 01")
            << QByteArray("stick E3372 262019876543210 2")
            << "StatusBarMgrPlugin: shows \"Device: E3372  |  Operator: T-Mobile(Telekom)\""
            << true;
        // K5160 takes the status bar out.
        QTest::newRow("K5160") << QByteArray("router K5160 262019876543210 2") << QString()
                               << false;
        // A locked SIM has no operator id: the operator customization is shown.
        QTest::newRow("unknown model, locked SIM")
            << QByteArray("other MF823 - 2")
            << "StatusBarMgrPlugin: shows \"Device: MF823  |  Operator: common\"" << false;
    }
    void modemDecides()
    {
        QFETCH(QByteArray, modem);
        QFETCH(QString, statusBar);
        QFETCH(bool, notifications);
        QVERIFY2(MmControl::available(), "run inside tests/mm/mm_testenv.py");
        const std::string plugged = MmControl::send("plug " + modem.toStdString());
        QVERIFY2(plugged.rfind("ok", 0) == 0, plugged.c_str());

        QTemporaryDir dir;
        QProcess process;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("LINKDECK_SETTINGS", dir.filePath("settings.ini"));
        env.insert("QT_LOGGING_RULES", "*.debug=true;qt.*.debug=false");
        env.remove("QT_MESSAGE_PATTERN");
        env.remove("LINKDECK_DEVICE_BACKEND");
        process.setProcessEnvironment(env);
        process.start(LINKDECK_APP_PATH,
                      {"--backend", "modemmanager", "--no-splash", "--quit-after", "2500"});
        QVERIFY(process.waitForFinished(30000));
        const QString out = QString::fromLocal8Bit(process.readAllStandardOutput());
        const QStringList log = QString::fromLocal8Bit(process.readAllStandardError()).split('\n');
        MmControl::send("unplug " + modem.split(' ').at(0).toStdString());
        QCOMPARE(process.exitCode(), 0);
        QVERIFY2(out.contains("Device backend: modemmanager"), qPrintable(out));
        if (statusBar.isEmpty())
            QVERIFY(log.filter("StatusBarMgrPlugin: Initialize").isEmpty());
        else
            QVERIFY2(log.contains(statusBar),
                     qPrintable(log.filter("StatusBarMgrPlugin").join('\n')));
        QCOMPARE(log.contains("NotifyPlugin: Initialize"), notifications);
        const QSettings settings(dir.filePath("settings.ini"), QSettings::IniFormat);
        QCOMPARE(settings.value("devicemgr/lastused").toByteArray(), modem.split(' ').at(1));
    }
};

QTEST_GUILESS_MAIN(tst_AppModemManager)
#include "tst_appmodemmanager.moc"
