#include "Change.h"
#include "CommonUtils.h"

#include "LogCapture.h"
#include "TestFiles.h"

#include <QApplication>
#include <QFontMetrics>
#include <QRegularExpression>
#include <QWidget>
#include <QtTest>

#include <limits>

Q_DECLARE_METATYPE(QVector<TagUnits>)

namespace {

TagUnits unit(const char *name, qint32 divisor, quint64 threshold, const char *trKey = "")
{
    return TagUnits{name, divisor, threshold, trKey};
}

void unitRow(const char *name, const QVector<TagUnits> &units, quint64 value, const QString &flux,
             const QString &unitOnly)
{
    QTest::newRow(name) << units << value << flux << unitOnly;
}

void row(const char *name, const QString &text, const QString &expected)
{
    QTest::newRow(name) << text << expected;
}

const QString kLro = QStringLiteral("\u202D");
const QString kRlo = QStringLiteral("\u202E");

} // namespace

class tst_TextFormat : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void units_data();
    void units();
    void parenthesisCorrection_data();
    void parenthesisCorrection();
    void stringSize();
    void englishLanguage();
};

void tst_TextFormat::initTestCase()
{
    TestFiles::useFreshSettings();
    QVERIFY(TestFiles::writeAppFile("/plugins/FormatTestPlugin/FormatTestPlugin_en-us.lang",
                                    "<lang><item name=\"IDS_UNIT_B\">Byte</item>"
                                    "<item name=\"IDS_UNIT_KB\">KiB/s</item></lang>\n"));
    QCOMPARE(Change::GetLangName(), QStringLiteral("en-us"));
}

// The last row (in table order) whose threshold lies strictly below the value, else the first.
void tst_TextFormat::units_data()
{
    QTest::addColumn<QVector<TagUnits>>("units");
    QTest::addColumn<quint64>("value");
    QTest::addColumn<QString>("flux");     // SpeedFluxToString
    QTest::addColumn<QString>("unitOnly"); // SpeedUnitToString: the first row
    const QVector<TagUnits> rising{unit("B", 1, 0), unit("KB", 1024, 1023),
                                   unit("MB", 1048576, 1048575)};
    const QVector<TagUnits> falling{rising.at(2), rising.at(1), rising.at(0)};
    const QVector<TagUnits> same{unit("first", 1, 10), unit("second", 2, 10)};
    unitRow("empty table", {}, 5, "", "");
    unitRow("0: first row", rising, 0, "0.0 B", "B");
    unitRow("1023 equals the KB threshold", rising, 1023, "1023.0 B", "B");
    unitRow("1536", rising, 1536, "1.5 KB", "B");
    unitRow("1126 rounds up", rising, 1126, "1.1 KB", "B");
    unitRow("falling table: last qualifying row", falling, 5000000, "5000000.0 B", "MB");
    unitRow("falling table, 0: first row", falling, 0, "0.0 MB", "MB");
    unitRow("equal thresholds, above: later row", same, 11, "5.5 second", "first");
    unitRow("largest value as unsigned", {unit("B", 1, 0)}, std::numeric_limits<quint64>::max(),
            "18446744073709551616.0 B", "B");
    unitRow("negative divisor", {unit("X", -2, 0)}, 5, "-2.5 X", "X");
    unitRow("zero divisor", {unit("X", 0, 0)}, 5, "inf X", "X");
    unitRow("translated label; later rows' keys ignored",
            {unit("B", 1, 0), unit("KB", 1024, 1023, "IDS_UNIT_KB")}, 2048, "2.0 KiB/s", "B");
    unitRow("first row translated", {unit("B", 1, 0, "IDS_UNIT_B"), unit("KB", 1024, 1023)}, 1,
            "1.0 Byte", "Byte");
    unitRow("key without translation: empty label", {unit("B", 1, 0, "IDS_UNIT_MISSING")}, 7,
            "7.0 ", "");
}

void tst_TextFormat::units()
{
    QFETCH(QVector<TagUnits>, units);
    QFETCH(quint64, value);
    QFETCH(QString, flux);
    QFETCH(QString, unitOnly);
    QCOMPARE(CommonUtils::SpeedFluxToString(units, value, "FormatTestPlugin"), flux);
    QCOMPARE(CommonUtils::SpeedUnitToString(units, "FormatTestPlugin"), unitOnly);
}

void tst_TextFormat::parenthesisCorrection_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    row("empty", "", "");
    for (const char c : {',', '"', '(', ')', '[', ']', '{', '}'})
        QTest::addRow("%c after Latin", c) << "x" + QString(c) << "x" + QString(c) + kLro;
    row("semicolon, full-width comma", "a;b\uFF0Cc", "a;b\uFF0Cc");
    row("bracket at the start stays alone", "(abc)", "(abc)" + kLro);
    row("comma after Hebrew", "\u05E9\u05DC,\u05E2", "\u05E9\u05DC," + kRlo + "\u05E2");
    row("comma after Arabic (AL)", "\u0633\u0644,\u0639", "\u0633\u0644,\u0639");
    row("comma after a digit or a blank", "1,2 ,3", "1,2 ,3");
    row("every occurrence marked at once", "\u05D0,a,", "\u05D0," + kRlo + "a," + kRlo);
    const QString marks = kLro.repeated(4);
    row("repeated commas accumulate marks", "a,b,c,d",
        "a," + marks + "b," + marks + "c," + marks + "d");
    row("loop stops at the original length", "ab,c,", "ab," + kLro + "c," + kLro);
}

void tst_TextFormat::parenthesisCorrection()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    CommonUtils::ParanthesisCorrection(text);
    QCOMPARE(text, expected);
}

// Width into the first reference, height into the second, in the widget's or the application's
// font. Bad input leaves both 0 and logs a stamped line with the function and the source line.
void tst_TextFormat::stringSize()
{
    QFont appFont = QApplication::font();
    appFont.setPixelSize(17);
    QApplication::setFont(appFont);
    QWidget widget;
    QFont font = widget.font();
    font.setPixelSize(40);
    widget.setFont(font);
    const QString text = QStringLiteral("two\nlines are measured as one");
    const auto size = [&text](const QFont &f) {
        return QSize(QFontMetrics(f).horizontalAdvance(text), QFontMetrics(f).height());
    };
    int first = -1, second = -1;
    QCOMPARE(CommonUtils::GetWidgetStringHeightAndWidth(&widget, text, first, second), 0);
    QCOMPARE(QSize(first, second), size(font));
    CommonUtils::GetApplicationStringHeightAndWidth(text, first, second);
    QCOMPARE(QSize(first, second), size(appFont));

    LogCapture log;
    QCOMPARE(CommonUtils::GetWidgetStringHeightAndWidth(nullptr, text, first, second), 23);
    QCOMPARE(QSize(first, second), QSize(0, 0));
    first = second = -1;
    QCOMPARE(CommonUtils::GetWidgetStringHeightAndWidth(&widget, "", first, second), 0);
    QCOMPARE(QSize(first, second), QSize(0, 0));
    first = second = -1;
    CommonUtils::GetApplicationStringHeightAndWidth("", first, second);
    QCOMPARE(QSize(first, second), QSize(0, 0));
    const QRegularExpression line(R"(^\.\./\.\./src/core/common/CommonUtils: (\w+) \d+ : (.*)$)");
    QStringList logged;
    for (const QString &entry : log.texts()) {
        const QRegularExpressionMatch match = line.match(LogCapture::stripStamp(entry));
        if (LogCapture::hasStamp(entry) && match.hasMatch())
            logged << match.captured(1) + ": " + match.captured(2);
    }
    QCOMPARE(logged,
             (QStringList{"GetWidgetStringHeightAndWidth: Bad input Param",
                          "GetWidgetStringHeightAndWidth: Empty String in the widget",
                          "GetApplicationStringHeightAndWidth: Empty String in the widget"}));
}

void tst_TextFormat::englishLanguage()
{
    for (const char *other : {"EN-US", "en-gb"}) {
        Change::SetLangName(other);
        QVERIFY2(!CommonUtils::IsCurLangIsEnglish(), other);
    }
    Change::SetLangName("en-us");
    QVERIFY(CommonUtils::IsCurLangIsEnglish());
}

QTEST_MAIN(tst_TextFormat)
#include "tst_textformat.moc"
