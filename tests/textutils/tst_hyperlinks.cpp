#include "CommonUtils.h"

#include <QtTest>

namespace {

const QString kCjk = QStringLiteral("\u4E2D\u6587"); // two Chinese characters
const QString kMail = QStringLiteral("john.doe@example.com");
const QString kWeb = QStringLiteral("www.example.com");

QString a(const QString &target, const QString &text)
{
    return "<a href = " + target + ">" + text + "</a>";
}

// An address that is both target and text.
QString link(const QString &address)
{
    return a(address, address);
}

void row(const char *name, const QString &text, const QString &expected)
{
    QTest::newRow(name) << text << expected;
}

// The texts of the list that the check accepts.
QStringList accepted(bool (*check)(QString), const QStringList &texts)
{
    QStringList result;
    for (const QString &text : texts) {
        if (check(text))
            result << text;
    }
    return result;
}

} // namespace

class tst_Hyperlinks : public QObject
{
    Q_OBJECT

private slots:
    void links_data();
    void links();
    void patterns();
    void httpAndFtpLink();
    void textHelpers();
};

void tst_Hyperlinks::links_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const QString web = a("http://" + kWeb, kWeb);
    row("empty", "", "");
    row("blanks", "one two  three", "one&nbsp;two&nbsp;&nbsp;three");
    row("e-mail among words", "to " + kMail + " now",
        "to&nbsp;" + a("mailto:" + kMail, kMail) + "&nbsp;now");
    row("lower-case www", kWeb, web);
    row("upper-case www", "WWW.EXAMPLE.COM", "WWW.EXAMPLE.COM");
    row("www twice", "www.www.example.com", "www.www.example.com");
    row("http", "http://example.com/a?b=1", link("http://example.com/a?b=1"));
    row("https", "https://example.com", link("https://example.com"));
    row("upper-case scheme", "HTTP://EXAMPLE.COM", link("HTTP://EXAMPLE.COM"));
    row("http, third slash", "http:///example.com", "http:///example.com");
    row("https, no letter after scheme", "https://-x.com", "https://-x.com");
    row("schemes alone", "https:// ftp://", "https://&nbsp;ftp://");
    row("ftp without pattern test", "ftp://f.example.com/a|b", link("ftp://f.example.com/a|b"));
    row("upper-case ftp", "Ftp://1", link("Ftp://1"));
    row("Latin-1 letter inside an http address", "http://x.com/caf\u00E9",
        link("http://x.com/caf\u00E9"));
    row("other h/t/p/s schemes only after a line feed", "ph://x\nph://x",
        "ph://x&nbsp;\n" + a("http://ph://x", "ph://x"));
    row("angle brackets, ampersand kept", "a<b>c & <i>", "a&lt;b&gt;c&nbsp;&&nbsp;&lt;i&gt;");
    row("bracketed www is no address", "<" + kWeb + ">", "&lt;" + kWeb + "&gt;");
    row("line feed before https: scheme doubled", "see\nhttps://example.com",
        "see&nbsp;\n" + a("http://https://example.com", "https://example.com"));
    row("line feed before a third-slash address", "\nhttp:///x",
        "&nbsp;\n" + a("http://http:///x", "http:///x"));
    row("line feed before www", "hi\n" + kWeb, "hi&nbsp;\n" + web);
    row("line feed before e-mail", "hi\n" + kMail, "hi&nbsp;\n" + a("mailto:" + kMail, kMail));
    row("line feed before ftp: not linked", "hi\nftp://example.com", "hi&nbsp;\nftp://example.com");
    row("line feed before a word with brackets", "x\n<b>", "x&nbsp;\n<b>");
    row("two line feeds", "a\n\nb", "a&nbsp;\n&nbsp;\nb");
    row("address followed by Chinese", kWeb + kCjk, web + kCjk);
    row("Chinese, bracket, Chinese", kCjk + "<" + kCjk, kCjk + "&lt;" + kCjk);
    row("NUL ends an address", kWeb + QChar(0), web + QChar(0));
    row("punctuation after addresses", kWeb + ", (" + kMail + "). https://example.com)",
        kWeb + ",&nbsp;(" + kMail + ").&nbsp;" + link("https://example.com)"));
    row("&nbsp; in the text separates tokens", "a&nbsp;" + kWeb, "a&nbsp;" + web);
    row("&nbsp without semicolon", "a&nbsp " + kWeb, "a&nbsp&nbsp;" + web);
    row("upper-case &NBSP;: more counted than split", "A&NBSP;&NBSP;&NBSP; " + kWeb,
        "A&NBSP;&NBSP;&NBSP;&nbsp;" + web);
    row("Latin-1 letter keeps the address in its run", kWeb + "\u00E9", kWeb + "\u00E9");
    row("character above U+00FF ends an http address", "http://x.com/\u0109x",
        link("http://x.com/") + "\u0109x");
}

void tst_Hyperlinks::links()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(CommonUtils::ParseAndCreateHyperLinks(text), expected);
}

// The patterns as written: mail and web case-sensitive, web with final labels of 2 to 6 letters,
// http a character set ("[http|https]+") with a tail of characters up to U+00FF.
void tst_Hyperlinks::patterns()
{
    QCOMPARE(accepted(CommonUtils::CheckForEmailAddr,
                      {"a.b-c_d@x-y.z.w", "j\u00F6rg@b\u00FCro.de", "a@b", "a..b@c.d", "a+b@c.de"}),
             (QStringList{"a.b-c_d@x-y.z.w", "j\u00F6rg@b\u00FCro.de"}));
    QCOMPARE(accepted(CommonUtils::CheckForWebAddr,
                      {"www.example.co.uk", "a.museum", "a.example", "x.a1", "W.EXAMPLE.COM"}),
             (QStringList{"www.example.co.uk", "a.museum"}));
    QCOMPARE(accepted(CommonUtils::CheckForHttpAddr,
                      {"HTTPS://X", "shh://x", "|://x", "http://", "http://\u00FF", "ftp://x",
                       "http://\u0100", "http:/x"}),
             (QStringList{"HTTPS://X", "shh://x", "|://x", "http://", "http://\u00FF"}));
}

// Every line feed goes, the first one stays in front; the scheme needs a letter or digit (any
// script) after it.
void tst_Hyperlinks::httpAndFtpLink()
{
    QCOMPARE(CommonUtils::createLinkForHttpAndFtp("\nhttp://x.org\n/a"),
             "\n" + link("http://x.org/a"));
    QCOMPARE(CommonUtils::createLinkForHttpAndFtp("http://\u00E9t.fr"), link("http://\u00E9t.fr"));
    QCOMPARE(CommonUtils::createLinkForHttpAndFtp("http://x\u0100"),
             QStringLiteral("http://x\u0100"));
    QCOMPARE(CommonUtils::createLinkForHttpAndFtp("ftp:///x"), QStringLiteral("ftp:///x"));
}

// Latin-1 letters count as ASCII, NUL does not; one text is one line, and the flag is cleared.
void tst_Hyperlinks::textHelpers()
{
    const QString nul(QChar(0));
    QCOMPARE(CommonUtils::SplitAsciiAndUnicodeString("a\u00E9" + kCjk + "b" + nul),
             (QStringList{"a\u00E9", kCjk, "b", nul}));
    QCOMPARE(CommonUtils::SplitAsciiAndUnicodeString(""), QStringList{""});
    QCOMPARE(CommonUtils::SplitAsciiAndUnicodeString("a"), QStringList{"a"});
    QVERIFY(!CommonUtils::isNonAsciiCharPresent("a\u00E9\u00FF") &&
            CommonUtils::isNonAsciiCharPresent("a" + nul));
    bool flag = true;
    QCOMPARE(CommonUtils::SplitAsciiString("", flag), QStringList());
    QCOMPARE(CommonUtils::SplitAsciiString("a b\nc" + kCjk, flag), QStringList{"a b\nc" + kCjk});
    QVERIFY(!flag);
    QCOMPARE(CommonUtils::addSpaceToNewLine("a\r\nb\n"), QStringLiteral("a\r \nb \n"));
}

QTEST_GUILESS_MAIN(tst_Hyperlinks)
#include "tst_hyperlinks.moc"
