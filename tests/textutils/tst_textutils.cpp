#include "CommonUtils.h"

#include "TestFiles.h"

#include <QApplication>
#include <QFontMetrics>
#include <QWidget>
#include <QtTest>

Q_DECLARE_METATYPE(QVector<TagUnits>)

namespace {

const QString kMail = QStringLiteral("john.doe@example.com");
const QString kWeb = QStringLiteral("www.example.com");
const QString kLro = QStringLiteral("\u202D");
const QString kRlo = QStringLiteral("\u202E");
// An anchor; its text is its target unless given.
QString a(const QString &target, const QString &text = QString())
{
    return "<a href = " + target + ">" + (text.isNull() ? target : text) + "</a>";
}

void row(const char *name, const QString &text, const QString &expected)
{
    QTest::newRow(name) << text << expected;
}

} // namespace

class tst_TextUtils : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        TestFiles::useFreshSettings();
        QVERIFY(TestFiles::writeAppFile("/plugins/FormatTestPlugin/FormatTestPlugin_en-us.lang",
                                        "<lang><item name=\"IDS_UNIT_B\">Byte</item>"
                                        "<item name=\"IDS_UNIT_KB\">KiB/s</item></lang>\n"));
    }
    void links_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const QString web = a("http://" + kWeb, kWeb);
        row("blanks", "one two  three", "one&nbsp;two&nbsp;&nbsp;three");
        row("e-mail among words", "to " + kMail + " now",
            "to&nbsp;" + a("mailto:" + kMail, kMail) + "&nbsp;now");
        row("lower-case www", kWeb, web);
        row("http", "http://example.com/a?b=1", a("http://example.com/a?b=1"));
        row("other h/t/p/s schemes only after a line feed", "ph://x\nph://x",
            "ph://x&nbsp;\n" + a("http://ph://x", "ph://x"));
        row("angle brackets, ampersand kept", "a<b>c & <i>", "a&lt;b&gt;c&nbsp;&&nbsp;&lt;i&gt;");
        row("punctuation after addresses", kWeb + ", (" + kMail + "). https://example.com)",
            kWeb + ",&nbsp;(" + kMail + ").&nbsp;" + a("https://example.com)"));
        row("character above U+00FF ends an http address", "http://x.com/\u0109x",
            a("http://x.com/") + "\u0109x");
    }
    void links()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(CommonUtils::ParseAndCreateHyperLinks(text), expected);
    }
    // A mark after punctuation that follows an L or R letter.
    void parenthesisCorrection_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        for (const char c : {',', '"', '(', ')', '[', ']', '{', '}'})
            QTest::addRow("%c after Latin", c) << "x" + QString(c) << "x" + QString(c) + kLro;
        row("comma after Hebrew", "\u05E9\u05DC,\u05E2", "\u05E9\u05DC," + kRlo + "\u05E2");
        row("comma after a digit or a blank, semicolon", "1,2 ,a;", "1,2 ,a;");
        row("loop stops at the original length", "ab,c,", "ab," + kLro + "c," + kLro);
    }
    void parenthesisCorrection()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        CommonUtils::ParanthesisCorrection(text);
        QCOMPARE(text, expected);
    }
    // The last row (in table order) whose threshold lies strictly below the value, else the first.
    void units_data()
    {
        QTest::addColumn<QVector<TagUnits>>("units");
        QTest::addColumn<quint64>("value");
        QTest::addColumn<QString>("flux");     // SpeedFluxToString
        QTest::addColumn<QString>("unitOnly"); // SpeedUnitToString: the first row
        const auto unitRow = [](const char *name, const QVector<TagUnits> &units, quint64 value,
                                const QString &flux, const QString &unitOnly) {
            QTest::newRow(name) << units << value << flux << unitOnly;
        };
        const QVector<TagUnits> rising{{"B", 1, 0}, {"KB", 1024, 1023}, {"MB", 1048576, 1048575}};
        unitRow("empty table", {}, 5, "", "");
        unitRow("1023 equals the KB threshold", rising, 1023, "1023.0 B", "B");
        unitRow("1536", rising, 1536, "1.5 KB", "B");
        unitRow("zero divisor", {{"X", 0, 0}}, 5, "inf X", "X");
        unitRow("translated label; later rows' keys ignored",
                {{"B", 1, 0}, {"KB", 1024, 1023, "IDS_UNIT_KB"}}, 2048, "2.0 KiB/s", "B");
    }
    void units()
    {
        QFETCH(QVector<TagUnits>, units);
        QFETCH(quint64, value);
        QFETCH(QString, flux);
        QFETCH(QString, unitOnly);
        QCOMPARE(CommonUtils::SpeedFluxToString(units, value, "FormatTestPlugin"), flux);
        QCOMPARE(CommonUtils::SpeedUnitToString(units, "FormatTestPlugin"), unitOnly);
    }
    // Width into the first reference, height into the second, in the widget's or the application's
    // font. Bad input leaves both 0.
    void stringSize()
    {
        QWidget widget;
        widget.setFont(QFont(QApplication::font().family(), 40));
        const QFontMetrics inWidget(widget.font()), inApp(QApplication::font());
        QVERIFY(inWidget.height() != inApp.height());
        const QString text = QStringLiteral("two\nlines are measured as one");
        int first = -1, second = -1, third = -1, fourth = -1;
        QCOMPARE(CommonUtils::GetWidgetStringHeightAndWidth(&widget, text, first, second), 0);
        CommonUtils::GetApplicationStringHeightAndWidth(text, third, fourth);
        QCOMPARE(QRect(first, second, third, fourth),
                 QRect(inWidget.horizontalAdvance(text), inWidget.height(),
                       inApp.horizontalAdvance(text), inApp.height()));

        QCOMPARE(CommonUtils::GetWidgetStringHeightAndWidth(nullptr, text, first, second), 23);
        QCOMPARE(CommonUtils::GetWidgetStringHeightAndWidth(&widget, "", third, fourth), 0);
        CommonUtils::GetApplicationStringHeightAndWidth("", fourth, fourth);
        QCOMPARE(QRect(first, second, third, fourth), QRect(0, 0, 0, 0));
    }
};

QTEST_MAIN(tst_TextUtils)
#include "tst_textutils.moc"
