#include "Change.h"
#include "CommonUtils.h"
#include "LogCapture.h"
#include "TestFiles.h"

#include <QApplication>
#include <QBuffer>
#include <QPushButton>
#include <QStyle>
#include <QThread>
#include <QtTest>

namespace {

const QString kLoading = QStringLiteral("../../src/core/Change/Change: LoadLangFile: loading ");

void writeLanguage(const QString &plugin, const QString &lang, const QStringList &namesAndTexts)
{
    QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<language>\n";
    for (int i = 0; i + 1 < namesAndTexts.size(); i += 2)
        xml += "<item name=\"" + namesAndTexts[i].toUtf8() + "\">" +
               namesAndTexts[i + 1].toHtmlEscaped().toUtf8() + "</item>\n";
    QVERIFY(TestFiles::writeAppFile("/plugins/" + plugin + "/" + plugin + "_" + lang + ".lang",
                                    xml + "</language>\n"));
}

bool readXml(QByteArray xml, const QString &plugin)
{
    QBuffer buffer(&xml);
    buffer.open(QIODevice::ReadOnly);
    return Change::readXmlFile(&buffer, plugin);
}

} // namespace

class tst_Change : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        TestFiles::useFreshSettings();
        Change::SetLangName("en-us");
    }

    // Key hints of the language are cut off the end, escapes and runs of blanks cleaned up.
    void cleaning_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("raw");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const char *lang, const char *raw, const char *out) {
            QTest::newRow(name) << lang << QString::fromUtf8(raw) << QString::fromUtf8(out);
        };
        row("ctrl hint", "en-us", "Save (Ctrl+S)", "Save");
        // A marker at the very start is left alone, but the next marker still looks further in.
        row("marker at start kept", "en-us", "Ctrl+S", "Ctrl+S");
        row("bracketed marker at start", "en-us", "(Ctrl+S) Save", "(");
        row("german", "de-de", "Drucken (Strg+P)", "Drucken");
        row("english marker in german", "de-de", "Speichern (Ctrl+S)", "Speichern (Ctrl+S)");
        row("literal escapes", "en-us", "Line\\none\\ttab\\r\\v\\fend", "Lineone tabend");
        row("white space", "en-us", "  many \n  blanks\t here ", "many blanks here");
    }
    void cleaning()
    {
        QFETCH(QString, language);
        QFETCH(QString, raw);
        QFETCH(QString, expected);
        Change::SetLangName(language);
        writeLanguage("Clean", language, {"IDS_X", raw});
        Change::LoadLangFile("Clean");
        QCOMPARE(Change::tr("IDS_X", "Clean"), expected);
    }

    // A later duplicate wins, other elements are ignored; a broken document or no device fails.
    void readXmlFile()
    {
        QVERIFY(readXml("<root><group><item name=\"A\">first</item><other name=\"A\">no</other>"
                        "<item name=\"A\">second</item></group><item name=\"B\">b</item></root>",
                        "Dup"));
        QCOMPARE(Change::tr("A", "Dup") + Change::tr("B", "Dup"), QString("secondb"));
        LogCapture log; // keeps the broken document's warning out of the output
        QVERIFY(!Change::readXmlFile(nullptr, "Null") &&
                !readXml("<root><item name=\"A\">text</root>", "Broken"));
    }

    // A missing text re-reads the file each time, and finds what the file gained meanwhile.
    void missingIdentifierRereadsFile()
    {
        writeLanguage("Lazy", "en-us", {"IDS_OK", "OK"});
        LogCapture log;
        QCOMPARE(Change::tr("IDS_OK", "Lazy") + Change::tr("IDS_OK", "Lazy"), QString("OKOK"));
        const QString loading = kLoading + TestFiles::appDir() + "/plugins/Lazy/Lazy_en-us.lang";
        QCOMPARE(log.count(loading), 1);
        QCOMPARE(Change::tr("IDS_MISSING", "Lazy") + Change::tr("IDS_MISSING", "Lazy"), QString());
        QCOMPARE(log.count(loading), 3);
        writeLanguage("Lazy", "en-us", {"IDS_OK", "OK", "IDS_MISSING", "Found"});
        QCOMPARE(Change::tr("IDS_MISSING", "Lazy"), QString("Found"));
    }

    void setLangNameReloadsLoadedFilesAndStores()
    {
        writeLanguage("Switch", "en-us", {"IDS_PRINT", "Print", "IDS_ONLY_EN", "English only"});
        writeLanguage("Switch", "de-de", {"IDS_PRINT", "Drucken (Strg+P)"});
        writeLanguage("Unloaded", "de-de", {"IDS_X", "x"});
        QVERIFY(Change::tr("IDS_PRINT", "Switch") == "Print" && CommonUtils::IsCurLangIsEnglish());
        LogCapture log;
        Change::SetLangName("de-de");
        QVERIFY(Change::GetLangName() == "de-de" && !CommonUtils::IsCurLangIsEnglish());
        QCOMPARE(CommonUtils::GetSettings("language", "active"), QString("_de-de"));
        // Files not yet used are not read by the switch.
        QCOMPARE(log.texts().filter(QRegularExpression("(Unloaded|Switch)_de-de.lang$")),
                 QStringList{kLoading + TestFiles::appDir() + "/plugins/Switch/Switch_de-de.lang"});
        // A text the new language lacks keeps the one loaded before.
        QCOMPARE(Change::tr("IDS_PRINT", "Switch") + '/' + Change::tr("IDS_ONLY_EN", "Switch"),
                 QString("Drucken/English only"));
    }

    void trFromManyThreads()
    {
        writeLanguage("Threads", "en-us", {"IDS_A", "Alpha", "IDS_B", "Beta"});
        QAtomicInt wrong;
        QList<QThread *> threads;
        for (int i = 0; i < 4; ++i)
            threads.append(QThread::create([&wrong] {
                for (int n = 0; n < 500; ++n)
                    wrong += Change::tr("IDS_A", "Threads") + Change::tr("IDS_B", "Threads") !=
                             QLatin1String("AlphaBeta");
            }));
        for (QThread *thread : threads)
            thread->start();
        for (QThread *thread : threads)
            thread->wait();
        qDeleteAll(threads);
        QCOMPARE(wrong.loadRelaxed(), 0);
    }

    // A missing skin file changes nothing; a skin puts our style under the sheet, every time.
    void skins()
    {
        qApp->setStyleSheet("QWidget { color: red; }");
        QStyle *before = QApplication::style();
        const QString missing = TestFiles::appDir() + "/skin/none.qss";
        LogCapture log;
        QVERIFY(!Change::ChangSkin(qApp, missing));
        QCOMPARE(log.texts(),
                 QStringList{"../../src/core/Change/Change: ChangSkin: File does not exist or "
                             "failed to open " +
                             missing});
        QVERIFY(log.lines().first().type == QtDebugMsg && QApplication::style() == before);
        QCOMPARE(qApp->styleSheet(), QString("QWidget { color: red; }"));

        const QByteArray sheet = "QPushButton#Core_ButtonClose { background: #123456; }";
        QVERIFY(TestFiles::writeAppFile("/skin/IDS_SKIN_DEFAULT.qss", sheet));
        for (int i = 0; i < 3; ++i)
            QVERIFY(Change::ChangSkin(qApp, TestFiles::appDir() + "/skin/IDS_SKIN_DEFAULT.qss"));
        QCOMPARE(qApp->styleSheet(), QString::fromUtf8(sheet));
        // The style sheet wraps the installed style; the metrics show that ours is underneath.
        QVERIFY(QApplication::style()->inherits("QStyleSheetStyle"));
        QPushButton button("x");
        button.show();
        QCOMPARE(button.style()->pixelMetric(QStyle::PM_ScrollBarExtent), 13);
    }
};

QTEST_MAIN(tst_Change)
#include "tst_change.moc"
