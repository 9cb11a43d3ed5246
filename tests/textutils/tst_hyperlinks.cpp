#include "CommonUtils.h"

#include <QRandomGenerator>
#include <QtTest>

namespace {

QString anchor(const QString &target, const QString &text)
{
    return QStringLiteral("<a href = ") + target + QStringLiteral(">") + text +
           QStringLiteral("</a>");
}

const QString kCjk = QStringLiteral("\u4E2D\u6587"); // two Chinese characters

// The parser written out step by step from the public helpers, without shortcuts: the linker's
// token scanner must give the same output for every text.
QString linkStepByStep(const QString &text)
{
    bool bFlag = true;
    QStringList lines = CommonUtils::SplitAsciiString(text, bFlag);
    for (QString &line : lines) {
        line = CommonUtils::addSpaceToNewLine(line);
        line.replace(QStringLiteral(" "), QStringLiteral("&nbsp;"));
        QStringList tokens = line.split(QStringLiteral("&nbsp;"), Qt::KeepEmptyParts);
        const int count = line.count(QStringLiteral("&nbsp;"), Qt::CaseInsensitive);
        for (int i = 0; i <= count && i < tokens.size(); ++i) {
            QStringList runs = CommonUtils::SplitAsciiAndUnicodeString(tokens.at(i));
            for (QString &run : runs) {
                QString w = run;
                w.replace(QStringLiteral("<"), QStringLiteral("&lt;"));
                w.replace(QStringLiteral(">"), QStringLiteral("&gt;"));
                const auto isWeb = [](const QString &s) {
                    return s.startsWith(QStringLiteral("www."), Qt::CaseInsensitive) &&
                           CommonUtils::CheckForWebAddr(s) && s.count(QStringLiteral("www.")) < 2;
                };
                if (CommonUtils::isNonAsciiCharPresent(w))
                    continue;
                if (CommonUtils::CheckForEmailAddr(w)) {
                    run = anchor(QStringLiteral("mailto:") + w, w);
                } else if (w.startsWith(QStringLiteral("\n"))) {
                    w.remove(QLatin1Char('\n'));
                    if (CommonUtils::CheckForEmailAddr(w))
                        run = QStringLiteral("\n") + anchor(QStringLiteral("mailto:") + w, w);
                    else if (isWeb(w) || CommonUtils::CheckForHttpAddr(w))
                        run = QStringLiteral("\n") + anchor(QStringLiteral("http://") + w, w);
                } else if (isWeb(w)) {
                    run = anchor(QStringLiteral("http://") + w, w);
                } else {
                    run = CommonUtils::createLinkForHttpAndFtp(w);
                }
            }
            tokens[i] = runs.join(QString());
        }
        line = tokens.join(QStringLiteral("&nbsp;"));
    }
    return lines.join(QString());
}

} // namespace

class tst_Hyperlinks : public QObject
{
    Q_OBJECT

private slots:
    void links_data();
    void links();
    void sameAsStepByStep();
    void emailPattern_data();
    void emailPattern();
    void webPattern_data();
    void webPattern();
    void httpPattern_data();
    void httpPattern();
    void httpAndFtpLink_data();
    void httpAndFtpLink();
    void runs_data();
    void runs();
    void splitAsciiString_data();
    void splitAsciiString();
    void addSpaceToNewLine_data();
    void addSpaceToNewLine();
};

void tst_Hyperlinks::links_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    const QString mail = QStringLiteral("john.doe@example.com");
    const QString web = QStringLiteral("www.example.com");
    const QString webAnchor = anchor(QStringLiteral("http://") + web, web);

    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("blanks") << "one two  three"
                            << "one&nbsp;two&nbsp;&nbsp;three";
    QTest::newRow("e-mail among words")
        << "write to " + mail + " today"
        << "write&nbsp;to&nbsp;" + anchor("mailto:" + mail, mail) + "&nbsp;today";
    QTest::newRow("lower-case www") << web << webAnchor;
    QTest::newRow("www with two final labels")
        << "www.example.co.uk" << anchor("http://www.example.co.uk", "www.example.co.uk");
    QTest::newRow("upper-case www") << "WWW.EXAMPLE.COM"
                                    << "WWW.EXAMPLE.COM";
    QTest::newRow("www twice") << "www.www.example.com"
                               << "www.www.example.com";
    QTest::newRow("http") << "http://example.com/a?b=1"
                          << anchor("http://example.com/a?b=1", "http://example.com/a?b=1");
    QTest::newRow("https") << "https://example.com"
                           << anchor("https://example.com", "https://example.com");
    QTest::newRow("upper-case scheme")
        << "HTTP://EXAMPLE.COM" << anchor("HTTP://EXAMPLE.COM", "HTTP://EXAMPLE.COM");
    QTest::newRow("http, third slash") << "http:///example.com"
                                       << "http:///example.com";
    QTest::newRow("https, no letter after scheme") << "https://-x.com"
                                                   << "https://-x.com";
    QTest::newRow("scheme alone") << "https://"
                                  << "https://";
    QTest::newRow("ftp without pattern test")
        << "ftp://files.example.com/a|b"
        << anchor("ftp://files.example.com/a|b", "ftp://files.example.com/a|b");
    QTest::newRow("ftp scheme alone") << "ftp://"
                                      << "ftp://";
    QTest::newRow("angle brackets") << "a<b>c <i>"
                                    << "a&lt;b&gt;c&nbsp;&lt;i&gt;";
    QTest::newRow("bracketed www is no address") << "<" + web + ">"
                                                 << "&lt;" + web + "&gt;";
    QTest::newRow("ampersand stays") << "a & b"
                                     << "a&nbsp;&&nbsp;b";
    QTest::newRow("line feed before https: scheme doubled in the target")
        << "see\nhttps://example.com"
        << "see&nbsp;\n" + anchor("http://https://example.com", "https://example.com");
    QTest::newRow("line feed before a third-slash address: linked after all")
        << "\nhttp:///x"
        << "&nbsp;\n" + anchor("http://http:///x", "http:///x");
    QTest::newRow("line feed before www")
        << "hi\n" + web << "hi&nbsp;\n" + anchor("http://" + web, web);
    QTest::newRow("line feed before e-mail")
        << "hi\n" + mail << "hi&nbsp;\n" + anchor("mailto:" + mail, mail);
    QTest::newRow("line feed before ftp: not linked") << "hi\nftp://example.com"
                                                      << "hi&nbsp;\nftp://example.com";
    QTest::newRow("line feed before a word with brackets: not escaped") << "x\n<b>"
                                                                        << "x&nbsp;\n<b>";
    QTest::newRow("two line feeds") << "a\n\nb"
                                    << "a&nbsp;\n&nbsp;\nb";
    QTest::newRow("address followed by Chinese") << web + kCjk << webAnchor + kCjk;
    QTest::newRow("Chinese, bracket, Chinese") << kCjk + "<" + kCjk << kCjk + "&lt;" + kCjk;
    QTest::newRow("comma after address") << web + "," << web + ",";
    QTest::newRow("full stop after e-mail") << mail + "." << mail + ".";
    QTest::newRow("closing bracket after https")
        << "https://example.com)" << anchor("https://example.com)", "https://example.com)");
    QTest::newRow("bracketed e-mail") << "(" + mail + ")"
                                      << "(" + mail + ")";
    QTest::newRow("&nbsp; in the text separates tokens")
        << "a&nbsp;" + web << "a&nbsp;" + webAnchor;
    QTest::newRow("upper-case &NBSP;: more counted than split")
        << "A&NBSP;&NBSP;&NBSP; " + web << "A&NBSP;&NBSP;&NBSP;&nbsp;" + webAnchor;
    QTest::newRow("Latin-1 letter keeps the address in its run")
        << web + QStringLiteral("\u00E9") << web + QStringLiteral("\u00E9");
    QTest::newRow("Latin-1 letter inside an http address")
        << QStringLiteral("http://example.com/caf\u00E9")
        << anchor(QStringLiteral("http://example.com/caf\u00E9"),
                  QStringLiteral("http://example.com/caf\u00E9"));
    QTest::newRow("character above U+00FF ends an http address")
        << QStringLiteral("http://example.com/\u0109x")
        << anchor("http://example.com/", "http://example.com/") + QStringLiteral("\u0109x");
}

void tst_Hyperlinks::links()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(CommonUtils::ParseAndCreateHyperLinks(text), expected);
}

// Random texts from fragments that touch every rule and every token boundary.
void tst_Hyperlinks::sameAsStepByStep()
{
    const QStringList fragments = {" ",
                                   "  ",
                                   "\n",
                                   "&nbsp;",
                                   "&NBSP;",
                                   "&nbsp",
                                   "nbsp;",
                                   "&",
                                   "<",
                                   ">",
                                   "word",
                                   "42",
                                   "www.",
                                   "www.example.com",
                                   "WWW.Example.com",
                                   "example.org",
                                   "a@b.cd",
                                   "@",
                                   ".",
                                   "x.y@mail.example.net",
                                   "http://",
                                   "https://",
                                   "ftp://",
                                   "http://x.org/p?q=1",
                                   "https:///x",
                                   "HTTPS://X.ORG",
                                   "Ftp://y",
                                   "wWw.a.bc",
                                   "\nWWW.a.bc",
                                   "shh://",
                                   "hp://a",
                                   "|://b",
                                   ",",
                                   ")",
                                   "(",
                                   kCjk,
                                   QStringLiteral("\u00E9"),
                                   QStringLiteral("\u05D0"),
                                   QString(QChar(0)),
                                   QStringLiteral("\u0109"),
                                   "-",
                                   "_"};
    QRandomGenerator random(20261122);
    for (int round = 0; round < 3000; ++round) {
        QString text;
        const int pieces = random.bounded(1, 12);
        for (int i = 0; i < pieces; ++i)
            text += fragments.at(random.bounded(fragments.size()));
        const QString expected = linkStepByStep(text);
        if (CommonUtils::ParseAndCreateHyperLinks(text) != expected) {
            QCOMPARE(CommonUtils::ParseAndCreateHyperLinks(text), expected); // shows the text
            return;
        }
    }
}

void tst_Hyperlinks::emailPattern_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("matches");
    QTest::newRow("plain") << "a@b.cd" << true;
    QTest::newRow("dots, dash, underscore") << "a.b-c_d@x-y.z.w" << true;
    QTest::newRow("accented letters are word characters")
        << QStringLiteral("j\u00F6rg@b\u00FCro.de") << true;
    QTest::newRow("no domain dot") << "a@b" << false;
    QTest::newRow("double dot") << "a..b@c.d" << false;
    QTest::newRow("trailing dot") << "a@b.cd." << false;
    QTest::newRow("plus sign") << "a+b@c.de" << false;
    QTest::newRow("leading line feed") << "\na@b.cd" << false;
}

void tst_Hyperlinks::emailPattern()
{
    QFETCH(QString, text);
    QFETCH(bool, matches);
    QCOMPARE(CommonUtils::CheckForEmailAddr(text), matches);
}

void tst_Hyperlinks::webPattern_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("matches");
    QTest::newRow("www") << "www.example.com" << true;
    QTest::newRow("no www") << "example.com" << true;
    QTest::newRow("two final labels") << "www.example.co.uk" << true;
    QTest::newRow("six letters") << "a.museum" << true;
    QTest::newRow("seven letters") << "a.example" << false;
    QTest::newRow("one letter") << "www.example.c" << false;
    QTest::newRow("upper case") << "WWW.EXAMPLE.COM" << false;
    QTest::newRow("digit in final label") << "x.a1" << false;
    QTest::newRow("path") << "www.example.com/a" << false;
}

void tst_Hyperlinks::webPattern()
{
    QFETCH(QString, text);
    QFETCH(bool, matches);
    QCOMPARE(CommonUtils::CheckForWebAddr(text), matches);
}

void tst_Hyperlinks::httpPattern_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("matches");
    QTest::newRow("http") << "http://x" << true;
    QTest::newRow("https, upper case") << "HTTPS://X" << true;
    QTest::newRow("any run of h, t, p, s") << "shh://x" << true;
    QTest::newRow("ph") << "ph://x" << true;
    QTest::newRow("bar") << "|://x" << true;
    QTest::newRow("ftp") << "ftp://x" << false;
    QTest::newRow("empty tail") << "http://" << true;
    QTest::newRow("U+00FF in the tail") << QStringLiteral("http://\u00FF") << true;
    QTest::newRow("U+0100 in the tail") << QStringLiteral("http://\u0100") << false;
    QTest::newRow("NUL in the tail") << QStringLiteral("http://a") + QChar(0) << true;
    QTest::newRow("single slash") << "http:/x" << false;
}

void tst_Hyperlinks::httpPattern()
{
    QFETCH(QString, text);
    QFETCH(bool, matches);
    QCOMPARE(CommonUtils::CheckForHttpAddr(text), matches);
}

void tst_Hyperlinks::httpAndFtpLink_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("expected");
    QTest::newRow("http") << "http://x.org" << anchor("http://x.org", "http://x.org");
    QTest::newRow("leading line feed kept, all others removed")
        << "\nhttp://x.org\n/a"
        << "\n" + anchor("http://x.org/a", "http://x.org/a");
    QTest::newRow("line feed, no link") << "\nfoo\nbar"
                                        << "\nfoobar";
    QTest::newRow("accented letter after scheme")
        << QStringLiteral("http://\u00E9t\u00E9.fr")
        << anchor(QStringLiteral("http://\u00E9t\u00E9.fr"),
                  QStringLiteral("http://\u00E9t\u00E9.fr"));
    QTest::newRow("http, character above U+00FF")
        << QStringLiteral("http://x\u0100") << QStringLiteral("http://x\u0100");
    QTest::newRow("ftp, character above U+00FF")
        << QStringLiteral("ftp://x\u0100")
        << anchor(QStringLiteral("ftp://x\u0100"), QStringLiteral("ftp://x\u0100"));
    QTest::newRow("ftp, digit") << "FTP://1" << anchor("FTP://1", "FTP://1");
    QTest::newRow("ftp, slash") << "ftp:///x"
                                << "ftp:///x";
    QTest::newRow("no scheme") << "example.com"
                               << "example.com";
}

void tst_Hyperlinks::httpAndFtpLink()
{
    QFETCH(QString, word);
    QFETCH(QString, expected);
    QCOMPARE(CommonUtils::createLinkForHttpAndFtp(word), expected);
}

void tst_Hyperlinks::runs_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("runs");
    QTest::addColumn<bool>("nonAscii");
    QTest::newRow("empty") << QString() << QStringList{QString()} << false;
    QTest::newRow("ASCII") << "abc" << QStringList{"abc"} << false;
    QTest::newRow("one character") << "a" << QStringList{"a"} << false;
    QTest::newRow("ASCII then Chinese") << "abc" + kCjk << QStringList{"abc", kCjk} << true;
    QTest::newRow("Chinese then ASCII") << kCjk + "a" << QStringList{kCjk, "a"} << true;
    QTest::newRow("Latin-1 counts as ASCII")
        << QStringLiteral("a\u00E9\u00FF") + kCjk + "b"
        << QStringList{QStringLiteral("a\u00E9\u00FF"), kCjk, "b"} << true;
    QTest::newRow("NUL counts as non-ASCII")
        << QStringLiteral("x") + QChar(0) + "y" << QStringList{"x", QString(QChar(0)), "y"} << true;
}

void tst_Hyperlinks::runs()
{
    QFETCH(QString, text);
    QFETCH(QStringList, runs);
    QFETCH(bool, nonAscii);
    QCOMPARE(CommonUtils::SplitAsciiAndUnicodeString(text), runs);
    QCOMPARE(CommonUtils::isNonAsciiCharPresent(text), nonAscii);
}

void tst_Hyperlinks::splitAsciiString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("empty") << QString() << QStringList();
    QTest::newRow("several lines stay one") << "a b\nc" + kCjk << QStringList{"a b\nc" + kCjk};
}

void tst_Hyperlinks::splitAsciiString()
{
    QFETCH(QString, text);
    QFETCH(QStringList, lines);
    bool bFlag = true;
    QCOMPARE(CommonUtils::SplitAsciiString(text, bFlag), lines);
    QVERIFY(!bFlag);
}

void tst_Hyperlinks::addSpaceToNewLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << "ab"
                          << "ab";
    QTest::newRow("each line feed") << "a\nb\n"
                                    << "a \nb \n";
    QTest::newRow("carriage return untouched") << "a\r\nb"
                                               << "a\r \nb";
}

void tst_Hyperlinks::addSpaceToNewLine()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(CommonUtils::addSpaceToNewLine(text), expected);
}

QTEST_GUILESS_MAIN(tst_Hyperlinks)
#include "tst_hyperlinks.moc"
