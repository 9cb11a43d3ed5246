#include "CommonUtils.h"
#include "LogCapture.h"
#include "TestFiles.h"

#include <QtTest>

class tst_Settings : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestFiles::useFreshSettings(); }

    // The library reports success as 0, which SetSettings reports as false; a read is one debug
    // line. Texts of every kind are the device-service library's business (tst_sdksettings).
    void roundTrip()
    {
        const QString value = QString::fromUtf8("中文 x=y\n[z]\\ 📶");
        QVERIFY(!CommonUtils::SetSettings("a=b", "[c]", value));
        LogCapture log;
        QCOMPARE(CommonUtils::GetSettings("a=b", "[c]"), value);
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
        QVERIFY(lines[0].type == QtDebugMsg && lines[1].type == QtWarningMsg);
        const QString status = lines[0].text.section(' ', -1);
        QVERIFY(status.toLong() != 0);
        const QString source = "../../src/core/common/CommonUtils: GetSettings: NEXO_GetSettings ";
        QCOMPARE(log.unstamped(),
                 (QStringList{source + "(customize, nothing-here) returned " + status,
                              source + "returned " + status}));
    }

    void setFailureIsReportedAsTrue()
    {
        // A settings file below a regular file cannot be written: the library fails.
        TestFiles::writeAppFile("/settings/blocker", "x");
        qputenv("LINKDECK_SETTINGS",
                QFile::encodeName(TestFiles::appDir() + "/settings/blocker/settings.ini"));
        QVERIFY(CommonUtils::SetSettings("g", "k", "v"));
    }
};

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_settings.moc"
