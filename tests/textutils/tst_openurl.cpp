#include "CommonUtils.h"

#include "LogCapture.h"
#include "TestFiles.h"

#include <QDesktopServices>
#include <QFile>
#include <QtTest>

namespace {

const QString kPlain = QStringLiteral("/sbin/velmora-open-usermanual");
const QString kPdf = QStringLiteral("/sbin/velmora-open-usermanual-pdf");
const QString kMissingScriptLine =
    QStringLiteral("../../src/core/common/CommonUtils: OpenUrl: the script file  is not found ...");

// A real helper script that writes its arguments, one a line, to "<script>.args" (through a
// temporary file, so the test never reads half a record).
void installScript(const QString &script)
{
    QVERIFY(TestFiles::writeAppFile(
        script, "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.tmp\" && mv \"$0.tmp\" \"$0.args\"\n"));
    QVERIFY(QFile::setPermissions(TestFiles::appDir() + script,
                                  QFileDevice::ReadOwner | QFileDevice::ExeOwner));
}

QStringList recordedArguments(const QString &script)
{
    QFile file(TestFiles::appDir() + script + ".args");
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLocal8Bit(file.readAll()).split('\n', Qt::SkipEmptyParts);
}

void row(const char *name, const QString &address, const QStringList &installed,
         const QString &runs, const QUrl &fallback = QUrl())
{
    QTest::newRow(name) << address << installed << runs << fallback;
}

} // namespace

class tst_OpenUrl : public QObject
{
    Q_OBJECT

public slots: // stands in for the desktop's URL handlers
    void open(const QUrl &url) { m_opened.append(url); }

private slots:
    void openUrl_data();
    void openUrl();

private:
    QList<QUrl> m_opened;
};

void tst_OpenUrl::openUrl_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QStringList>("installed");
    QTest::addColumn<QString>("runs"); // empty: the desktop opens the fallback URL instead
    QTest::addColumn<QUrl>("fallback");
    const QStringList both{kPlain, kPdf};
    const QString pdf = QStringLiteral("/opt/linkdeck/manual.pdf");
    const QString html = QStringLiteral("/opt/linkdeck/index.html");
    row("pdf manual", pdf, both, kPdf);
    row("html page", html, both, kPlain);
    row("web address", "http://example.com/help", both, kPlain);
    row("upper-case PDF is no pdf", "/tmp/MANUAL.PDF", both, kPlain);
    row("address is not quoted", "/tmp/user manual.pdf", {kPdf}, kPdf);
    row("pdf, no scripts", pdf, {}, {}, QUrl::fromLocalFile(pdf));
    row("html, only the pdf script", html, {kPdf}, {}, QUrl::fromLocalFile(html));
    row("pdf, only the plain script", pdf, {kPlain}, {}, QUrl::fromLocalFile(pdf));
    row("web address, no scripts", "https://x.org/a?b=c", {}, {}, QUrl("https://x.org/a?b=c"));
}

// The address decides which script runs, and the script gets the address as it was given; a
// missing script sends the URL to the desktop instead.
void tst_OpenUrl::openUrl()
{
    QFETCH(QString, address);
    QFETCH(QStringList, installed);
    QFETCH(QString, runs);
    QFETCH(QUrl, fallback);
    QVERIFY(TestFiles::removeAppPath(QStringLiteral("/sbin")));
    for (const QString &script : installed)
        installScript(script);
    m_opened.clear();
    for (const char *scheme : {"file", "http", "https"})
        QDesktopServices::setUrlHandler(scheme, this, "open");

    LogCapture log;
    QVERIFY(CommonUtils::OpenUrl(address));
    if (runs.isEmpty()) {
        QCOMPARE(m_opened, QList<QUrl>{fallback});
        QTest::qWait(200); // a script started by mistake would have written its record by now
    } else {
        QTRY_COMPARE_WITH_TIMEOUT(recordedArguments(runs), address.split(' '), 5000);
        QVERIFY(m_opened.isEmpty());
    }
    QCOMPARE(log.count(kMissingScriptLine), runs.isEmpty() ? 1 : 0);
    for (const QString &script : installed)
        QCOMPARE(recordedArguments(script).isEmpty(), script != runs);
}

QTEST_MAIN(tst_OpenUrl)
#include "tst_openurl.moc"
