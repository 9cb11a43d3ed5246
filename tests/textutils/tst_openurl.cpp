#include "CommonUtils.h"

#include "LogCapture.h"
#include "TestFiles.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QtTest>

namespace {

const char kPlainScript[] = "/sbin/velmora-open-usermanual";
const char kPdfScript[] = "/sbin/velmora-open-usermanual-pdf";
const char kMissingScriptLine[] =
    "../../src/core/common/CommonUtils: OpenUrl: the script file  is not found ...";

QString recordPath(const QString &script)
{
    return TestFiles::appDir() + script + ".args";
}

// A real helper script that writes its arguments, one a line, next to itself. It writes a
// temporary file and renames it, so the test never reads half a record.
void installScript(const QString &script)
{
    const QString record = recordPath(script);
    const QByteArray body = "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + QFile::encodeName(record) +
                            ".tmp' && mv '" + QFile::encodeName(record) + ".tmp' '" +
                            QFile::encodeName(record) + "'\n";
    QVERIFY(TestFiles::writeAppFile(script, body));
    QVERIFY(QFile::setPermissions(TestFiles::appDir() + script, QFileDevice::ReadOwner |
                                                                    QFileDevice::WriteOwner |
                                                                    QFileDevice::ExeOwner));
}

QStringList recordedArguments(const QString &script)
{
    QFile file(recordPath(script));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLocal8Bit(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

// Stands in for the desktop's URL handlers.
class UrlRecorder : public QObject
{
    Q_OBJECT
public:
    QList<QUrl> opened;
public slots:
    void open(const QUrl &url) { opened.append(url); }
};

class tst_OpenUrl : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void runsScript_data();
    void runsScript();
    void addressIsNotQuoted();
    void fallsBackWithoutScript_data();
    void fallsBackWithoutScript();

private:
    UrlRecorder m_desktop;
};

void tst_OpenUrl::init()
{
    QVERIFY(TestFiles::removeAppPath(QStringLiteral("/sbin")));
    m_desktop.opened.clear();
    for (const char *scheme : {"file", "http", "https", "mailto"})
        QDesktopServices::setUrlHandler(QLatin1String(scheme), &m_desktop, "open");
}

void tst_OpenUrl::cleanup()
{
    for (const char *scheme : {"file", "http", "https", "mailto"})
        QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
}

void tst_OpenUrl::runsScript_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("expectedScript");
    QTest::newRow("pdf manual") << "/usr/share/doc/linkdeck/manual.pdf" << kPdfScript;
    QTest::newRow("html page") << "/usr/share/doc/linkdeck/index.html" << kPlainScript;
    QTest::newRow("web address") << "http://example.com/help" << kPlainScript;
    QTest::newRow("upper-case PDF is no pdf") << "/tmp/MANUAL.PDF" << kPlainScript;
}

// Both scripts are present: the address decides which one runs, and it gets the address as it
// was given (not the file URL).
void tst_OpenUrl::runsScript()
{
    QFETCH(QString, address);
    QFETCH(QString, expectedScript);
    installScript(kPlainScript);
    installScript(kPdfScript);
    const QString otherScript = expectedScript == kPdfScript ? kPlainScript : kPdfScript;

    LogCapture log;
    QVERIFY(CommonUtils::OpenUrl(address));
    QTRY_COMPARE_WITH_TIMEOUT(recordedArguments(expectedScript), QStringList{address}, 5000);
    QVERIFY(!QFile::exists(recordPath(otherScript)));
    QVERIFY(m_desktop.opened.isEmpty());
    QVERIFY(!log.contains(kMissingScriptLine));
}

void tst_OpenUrl::addressIsNotQuoted()
{
    installScript(kPdfScript);
    QVERIFY(CommonUtils::OpenUrl(QStringLiteral("/tmp/user manual.pdf")));
    QTRY_COMPARE_WITH_TIMEOUT(recordedArguments(kPdfScript),
                              (QStringList{"/tmp/user", "manual.pdf"}), 5000);
}

void tst_OpenUrl::fallsBackWithoutScript_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("presentScript");
    QTest::addColumn<QUrl>("expectedUrl");
    QTest::newRow("pdf, no scripts") << "/opt/linkdeck/manual.pdf" << QString()
                                     << QUrl::fromLocalFile("/opt/linkdeck/manual.pdf");
    QTest::newRow("html, only the pdf script") << "/opt/linkdeck/index.html" << kPdfScript
                                               << QUrl::fromLocalFile("/opt/linkdeck/index.html");
    QTest::newRow("pdf, only the plain script") << "/opt/linkdeck/manual.pdf" << kPlainScript
                                                << QUrl::fromLocalFile("/opt/linkdeck/manual.pdf");
    QTest::newRow("web address") << "https://example.com/a?b=c" << QString()
                                 << QUrl("https://example.com/a?b=c");
    QTest::newRow("mail address") << "mailto:support@example.com" << QString()
                                  << QUrl("mailto:support@example.com");
}

void tst_OpenUrl::fallsBackWithoutScript()
{
    QFETCH(QString, address);
    QFETCH(QString, presentScript);
    QFETCH(QUrl, expectedUrl);
    if (!presentScript.isEmpty())
        installScript(presentScript);

    LogCapture log;
    QVERIFY(CommonUtils::OpenUrl(address));
    QCOMPARE(m_desktop.opened, QList<QUrl>{expectedUrl});
    QCOMPARE(log.count(kMissingScriptLine), 1);
    QTest::qWait(200); // a script started by mistake would have written its record by now
    if (!presentScript.isEmpty())
        QVERIFY(!QFile::exists(recordPath(presentScript)));
}

QTEST_MAIN(tst_OpenUrl)
#include "tst_openurl.moc"
