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

const char kPlugin[] = "FormatTestPlugin";

TagUnits unit(const char *name, qint32 divisor, quint64 threshold, const char *trKey = "")
{
    return TagUnits{QString::fromUtf8(name), divisor, threshold, QString::fromUtf8(trKey)};
}

const QVector<TagUnits> &risingUnits()
{
    static const QVector<TagUnits> units{unit("B", 1, 0), unit("KB", 1024, 1023),
                                         unit("MB", 1048576, 1048575)};
    return units;
}

const QString kLro = QStringLiteral("\u202D");
const QString kRlo = QStringLiteral("\u202E");

// "<stamp>: ../../src/core/common/CommonUtils: <function> <line> : <text>"
bool hasMeasureLine(const LogCapture &log, const QString &function, const QString &text)
{
    const QRegularExpression pattern(
        QStringLiteral("^\\.\\./\\.\\./src/core/common/CommonUtils: %1 \\d+ : %2$")
            .arg(function, QRegularExpression::escape(text)));
    for (const QString &line : log.texts()) {
        if (LogCapture::hasStamp(line) && pattern.match(LogCapture::stripStamp(line)).hasMatch())
            return true;
    }
    return false;
}

} // namespace

class tst_TextFormat : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void speedFlux_data();
    void speedFlux();
    void speedUnit_data();
    void speedUnit();
    void parenthesisCorrection_data();
    void parenthesisCorrection();
    void widgetStringSize();
    void widgetStringSizeBadInput_data();
    void widgetStringSizeBadInput();
    void applicationStringSize();
    void englishLanguage_data();
    void englishLanguage();
};

void tst_TextFormat::initTestCase()
{
    TestFiles::useFreshSettings();
    QVERIFY(TestFiles::writeAppFile(
        QStringLiteral("/plugins/FormatTestPlugin/FormatTestPlugin_en-us.lang"),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<lang>\n"
        "  <item name=\"IDS_UNIT_B\">Byte</item>\n"
        "  <item name=\"IDS_UNIT_KB\">KiB/s</item>\n"
        "</lang>\n"));
    QCOMPARE(Change::GetLangName(), QStringLiteral("en-us"));
}

void tst_TextFormat::speedFlux_data()
{
    QTest::addColumn<QVector<TagUnits>>("units");
    QTest::addColumn<quint64>("value");
    QTest::addColumn<QString>("expected");

    const QVector<TagUnits> rising = risingUnits();
    QTest::newRow("empty table") << QVector<TagUnits>() << quint64(5) << QString();
    QTest::newRow("0: no row qualifies, first row") << rising << quint64(0) << "0.0 B";
    QTest::newRow("1023 equals the KB threshold") << rising << quint64(1023) << "1023.0 B";
    QTest::newRow("1024") << rising << quint64(1024) << "1.0 KB";
    QTest::newRow("1536") << rising << quint64(1536) << "1.5 KB";
    QTest::newRow("1075 rounds down") << rising << quint64(1075) << "1.0 KB";
    QTest::newRow("1126 rounds up") << rising << quint64(1126) << "1.1 KB";
    QTest::newRow("1048575 equals the MB threshold") << rising << quint64(1048575) << "1024.0 KB";
    QTest::newRow("1048576") << rising << quint64(1048576) << "1.0 MB";

    const QVector<TagUnits> falling{rising.at(2), rising.at(1), rising.at(0)};
    QTest::newRow("falling table: last qualifying row wins")
        << falling << quint64(5000000) << "5000000.0 B";
    QTest::newRow("falling table, 0: first row") << falling << quint64(0) << "0.0 MB";

    const QVector<TagUnits> sameThreshold{unit("first", 1, 10), unit("second", 2, 10)};
    QTest::newRow("equal thresholds, above: later row")
        << sameThreshold << quint64(11) << "5.5 second";
    QTest::newRow("equal thresholds, at: first row")
        << sameThreshold << quint64(10) << "10.0 first";

    QTest::newRow("largest value as unsigned")
        << QVector<TagUnits>{unit("B", 1, 0)} << std::numeric_limits<quint64>::max()
        << "18446744073709551616.0 B";
    QTest::newRow("negative divisor")
        << QVector<TagUnits>{unit("X", -2, 0)} << quint64(5) << "-2.5 X";
    QTest::newRow("zero divisor") << QVector<TagUnits>{unit("X", 0, 0)} << quint64(5) << "inf X";

    QTest::newRow("translated label replaces the unit name")
        << QVector<TagUnits>{unit("B", 1, 0), unit("KB", 1024, 1023, "IDS_UNIT_KB")}
        << quint64(2048) << "2.0 KiB/s";
    QTest::newRow("key without translation: empty label")
        << QVector<TagUnits>{unit("B", 1, 0, "IDS_UNIT_MISSING")} << quint64(7) << "7.0 ";
}

void tst_TextFormat::speedFlux()
{
    QFETCH(QVector<TagUnits>, units);
    QFETCH(quint64, value);
    QFETCH(QString, expected);
    QCOMPARE(CommonUtils::SpeedFluxToString(units, value, kPlugin), expected);
}

void tst_TextFormat::speedUnit_data()
{
    QTest::addColumn<QVector<TagUnits>>("units");
    QTest::addColumn<QString>("expected");
    QTest::newRow("empty table") << QVector<TagUnits>() << QString();
    QTest::newRow("first row only") << risingUnits() << "B";
    QTest::newRow("first row translated")
        << QVector<TagUnits>{unit("B", 1, 0, "IDS_UNIT_B"), unit("KB", 1024, 1023)} << "Byte";
    QTest::newRow("later rows' keys are ignored")
        << QVector<TagUnits>{unit("B", 1, 0), unit("KB", 1024, 1023, "IDS_UNIT_KB")} << "B";
}

void tst_TextFormat::speedUnit()
{
    QFETCH(QVector<TagUnits>, units);
    QFETCH(QString, expected);
    QCOMPARE(CommonUtils::SpeedUnitToString(units, kPlugin), expected);
}

void tst_TextFormat::parenthesisCorrection_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("comma after Latin") << "a,b"
                                       << "a," + kLro + "b";
    for (const char c : {'"', '(', ')', '[', ']', '{', '}'}) {
        const QString mark = QString(QLatin1Char(c));
        QTest::addRow("%c after Latin", c) << "x" + mark << "x" + mark + kLro;
    }
    QTest::newRow("semicolon untouched") << "a;b"
                                         << "a;b";
    QTest::newRow("full-width comma untouched")
        << QStringLiteral("a\uFF0Cb") << QStringLiteral("a\uFF0Cb");
    QTest::newRow("bracket at the start stays alone") << "(abc)"
                                                      << "(abc)" + kLro;
    QTest::newRow("comma after Hebrew")
        << QStringLiteral("\u05E9\u05DC\u05D5\u05DD,\u05E2")
        << QStringLiteral("\u05E9\u05DC\u05D5\u05DD,") + kRlo + QStringLiteral("\u05E2");
    QTest::newRow("comma after Arabic (AL) unchanged")
        << QStringLiteral("\u0633\u0644\u0627\u0645,\u0639")
        << QStringLiteral("\u0633\u0644\u0627\u0645,\u0639");
    QTest::newRow("comma after a digit unchanged") << "1,2"
                                                   << "1,2";
    QTest::newRow("comma after a blank unchanged") << "a ,b"
                                                   << "a ,b";
    QTest::newRow("every occurrence marked at once")
        << QStringLiteral("\u05D0,a,") << QStringLiteral("\u05D0,") + kRlo + "a," + kRlo;
    QTest::newRow("repeated commas accumulate marks")
        << "a,b,c,d"
        << "a," + kLro.repeated(4) + "b," + kLro.repeated(4) + "c," + kLro.repeated(4) + "d";
    QTest::newRow("loop stops at the original length") << "ab,c,"
                                                       << "ab," + kLro + "c," + kLro;
}

void tst_TextFormat::parenthesisCorrection()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    CommonUtils::ParanthesisCorrection(text);
    QCOMPARE(text, expected);
}

// The widget's own font is measured, width into the first reference, height into the second.
void tst_TextFormat::widgetStringSize()
{
    QWidget widget;
    QFont font = widget.font();
    font.setPixelSize(40);
    widget.setFont(font);
    const QString text = QStringLiteral("MMMMMMMMMMMMMMMMMMMM");

    int first = -1;
    int second = -1;
    QCOMPARE(CommonUtils::GetWidgetStringHeightAndWidth(&widget, text, first, second), 0);
    const QFontMetrics metrics(font);
    QCOMPARE(first, metrics.horizontalAdvance(text));
    QCOMPARE(second, metrics.height());
    QVERIFY(first > second);

    int appFirst = -1;
    int appSecond = -1;
    CommonUtils::GetApplicationStringHeightAndWidth(text, appFirst, appSecond);
    QVERIFY(appSecond != second); // the 40-pixel font is the widget's alone
}

void tst_TextFormat::widgetStringSizeBadInput_data()
{
    QTest::addColumn<bool>("withWidget");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("logText");
    QTest::newRow("null widget") << false << "text" << 23 << "Bad input Param";
    QTest::newRow("empty text") << true << QString() << 0 << "Empty String in the widget";
}

void tst_TextFormat::widgetStringSizeBadInput()
{
    QFETCH(bool, withWidget);
    QFETCH(QString, text);
    QFETCH(int, result);
    QFETCH(QString, logText);
    QWidget widget;
    int first = -1;
    int second = -1;
    LogCapture log;
    QCOMPARE(CommonUtils::GetWidgetStringHeightAndWidth(withWidget ? &widget : nullptr, text, first,
                                                        second),
             result);
    QCOMPARE(first, 0);
    QCOMPARE(second, 0);
    QVERIFY2(hasMeasureLine(log, "GetWidgetStringHeightAndWidth", logText),
             qPrintable(log.texts().join('\n')));
}

void tst_TextFormat::applicationStringSize()
{
    QFont font = QApplication::font();
    font.setPixelSize(17);
    QApplication::setFont(font);
    const QString text = QStringLiteral("two\nlines are measured as one");
    int first = -1;
    int second = -1;
    CommonUtils::GetApplicationStringHeightAndWidth(text, first, second);
    const QFontMetrics metrics(font);
    QCOMPARE(first, metrics.horizontalAdvance(text));
    QCOMPARE(second, metrics.height());

    LogCapture log;
    CommonUtils::GetApplicationStringHeightAndWidth(QString(), first, second);
    QCOMPARE(first, 0);
    QCOMPARE(second, 0);
    QVERIFY2(
        hasMeasureLine(log, "GetApplicationStringHeightAndWidth", "Empty String in the widget"),
        qPrintable(log.texts().join('\n')));
}

void tst_TextFormat::englishLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("english");
    QTest::newRow("en-us") << "en-us" << true;
    QTest::newRow("de-de") << "de-de" << false;
    QTest::newRow("upper case") << "EN-US" << false;
    QTest::newRow("en-gb") << "en-gb" << false;
}

void tst_TextFormat::englishLanguage()
{
    QFETCH(QString, language);
    QFETCH(bool, english);
    Change::SetLangName(language);
    const bool result = CommonUtils::IsCurLangIsEnglish();
    Change::SetLangName(QStringLiteral("en-us"));
    QCOMPARE(result, english);
}

QTEST_MAIN(tst_TextFormat)
#include "tst_textformat.moc"
