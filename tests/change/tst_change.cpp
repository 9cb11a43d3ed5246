#include "Change.h"
#include "CommonUtils.h"
#include "LogCapture.h"
#include "TestFiles.h"

#include <QBuffer>
#include <QThread>
#include <QtTest>

namespace {

QByteArray languageFile(const QList<QPair<QString, QString>> &items)
{
    QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<language>\n";
    for (const auto &item : items)
        xml += "  <item name=\"" + item.first.toUtf8() + "\">" +
               item.second.toHtmlEscaped().toUtf8() + "</item>\n";
    return xml + "</language>\n";
}

void writeLanguage(const QString &plugin, const QString &lang,
                   const QList<QPair<QString, QString>> &items)
{
    QVERIFY(TestFiles::writeAppFile("/plugins/" + plugin + "/" + plugin + "_" + lang + ".lang",
                                    languageFile(items)));
}

QString storedLanguage()
{
    return CommonUtils::GetSettings("language", "active");
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

    void cleaning_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("raw");
        QTest::addColumn<QString>("expected");
        QTest::newRow("ctrl hint") << "en-us"
                                   << "Save (Ctrl+S)"
                                   << "Save";
        QTest::newRow("ctrl without bracket") << "en-us"
                                              << "Copy Ctrl+C"
                                              << "Copy";
        // A marker at the very start is left alone, but the next marker still looks further in.
        QTest::newRow("marker at start kept") << "en-us"
                                              << "Ctrl+S"
                                              << "Ctrl+S";
        QTest::newRow("bracketed marker at start") << "en-us"
                                                   << "(Ctrl+S) Save"
                                                   << "(";
        QTest::newRow("last occurrence") << "en-us"
                                         << "A (Ctrl+B) C (Ctrl+D)"
                                         << "A (Ctrl+B) C";
        QTest::newRow("del hint") << "en-us"
                                  << "Remove (Del)"
                                  << "Remove";
        QTest::newRow("ends with Del") << "en-us"
                                       << "Model Del"
                                       << "Model";
        QTest::newRow("F2 hint") << "en-us"
                                 << "Rename F2"
                                 << "Rename";
        QTest::newRow("german marker in english") << "en-us"
                                                  << "Drucken (Strg+P)"
                                                  << "Drucken (Strg+P)";
        QTest::newRow("german") << "de-de"
                                << "Drucken (Strg+P)"
                                << "Drucken";
        QTest::newRow("german entf") << "de-de"
                                     << "Löschen (Entf)"
                                     << "Löschen";
        QTest::newRow("english marker in german") << "de-de"
                                                  << "Speichern (Ctrl+S)"
                                                  << "Speichern (Ctrl+S)";
        QTest::newRow("literal escapes") << "en-us"
                                         << "Line\\none\\ttab\\r\\v\\fend"
                                         << "Lineone tabend";
        QTest::newRow("white space") << "en-us"
                                     << "  many \n  blanks\t here "
                                     << "many blanks here";
        QTest::newRow("cjk") << "zh-cn" << QString::fromUtf8("保存 (Ctrl+S)")
                             << QString::fromUtf8("保存");
    }
    void cleaning()
    {
        QFETCH(QString, language);
        QFETCH(QString, raw);
        QFETCH(QString, expected);
        Change::SetLangName(language);
        writeLanguage("Clean", language, {{"IDS_X", raw}});
        Change::LoadLangFile("Clean");
        QCOMPARE(Change::tr("IDS_X", "Clean"), expected);
    }

    void laterDuplicateWinsAndOtherElementsIgnored()
    {
        QByteArray xml = "<root><group><item name=\"A\">first</item><other name=\"A\">no</other>"
                         "<item name=\"A\">second</item></group><item name=\"B\">b</item></root>";
        QBuffer buffer(&xml);
        buffer.open(QIODevice::ReadOnly);
        QVERIFY(Change::readXmlFile(&buffer, "Dup"));
        QCOMPARE(Change::tr("A", "Dup"), QString("second"));
        QCOMPARE(Change::tr("B", "Dup"), QString("b"));
    }

    void readXmlFileRejects()
    {
        QVERIFY(!Change::readXmlFile(nullptr, "Null"));
        QByteArray broken = "<root><item name=\"A\">text</root>";
        QBuffer buffer(&broken);
        buffer.open(QIODevice::ReadOnly);
        LogCapture log;
        QVERIFY(!Change::readXmlFile(&buffer, "Broken"));
        QVERIFY(!log.lines().isEmpty());
    }

    void missingIdentifierRereadsFile()
    {
        writeLanguage("Lazy", "en-us", {{"IDS_OK", "OK"}});
        LogCapture log;
        QCOMPARE(Change::tr("IDS_OK", "Lazy"), QString("OK"));
        QCOMPARE(Change::tr("IDS_OK", "Lazy"), QString("OK"));
        const QString loading = "../../src/core/Change/Change: LoadLangFile: loading " +
                                TestFiles::appDir() + "/plugins/Lazy/Lazy_en-us.lang";
        QCOMPARE(log.count(loading), 1);

        QCOMPARE(Change::tr("IDS_MISSING", "Lazy"), QString());
        QCOMPARE(Change::tr("IDS_MISSING", "Lazy"), QString());
        QCOMPARE(log.count(loading), 3);

        // The re-read picks up a file that gained the text in the meantime.
        writeLanguage("Lazy", "en-us", {{"IDS_OK", "OK"}, {"IDS_MISSING", "Found"}});
        QCOMPARE(Change::tr("IDS_MISSING", "Lazy"), QString("Found"));
    }

    void missingFileLogsAndFails()
    {
        LogCapture log;
        QVERIFY(!Change::LoadLangFile("Nowhere"));
        const QString path = TestFiles::appDir() + "/plugins/Nowhere/Nowhere_en-us.lang";
        QCOMPARE(log.texts(),
                 (QStringList{"../../src/core/Change/Change: LoadLangFile: loading " + path,
                              "File " + path + " does not exist"}));
        for (const LogCapture::Line &line : log.lines())
            QCOMPARE(line.type, QtDebugMsg);
        QCOMPARE(Change::tr("IDS_ANY", "Nowhere"), QString());
    }

    void storedLanguageDropsFirstCharacter_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("expected");
        QTest::newRow("prefixed") << "_de-de"
                                  << "de-de";
        QTest::newRow("unprefixed loses a letter") << "de-de"
                                                   << "e-de";
        QTest::newRow("only prefix") << "_"
                                     << "";
    }
    void storedLanguageDropsFirstCharacter()
    {
        QFETCH(QString, stored);
        QFETCH(QString, expected);
        CommonUtils::SetSettings("language", "active", stored);
        QCOMPARE(Change::GetSettingDefaultLang(), expected);
        QCOMPARE(Change::GetLangName(), expected);
    }

    void missingStoredLanguageIsEmpty()
    {
        TestFiles::useFreshSettings();
        QCOMPARE(Change::GetSettingDefaultLang(), QString());
    }

    void setLangNameReloadsLoadedFilesAndStores()
    {
        writeLanguage("Switch", "en-us", {{"IDS_PRINT", "Print"}, {"IDS_ONLY_EN", "English only"}});
        writeLanguage("Switch", "de-de", {{"IDS_PRINT", "Drucken (Strg+P)"}});
        writeLanguage("Unloaded", "de-de", {{"IDS_X", "x"}});
        QCOMPARE(Change::tr("IDS_PRINT", "Switch"), QString("Print"));

        LogCapture log;
        Change::SetLangName("de-de");
        QCOMPARE(Change::GetLangName(), QString("de-de"));
        QCOMPARE(storedLanguage(), QString("_de-de"));
        // Files not yet used are not read by the switch.
        QVERIFY(!log.texts().join('\n').contains("Unloaded_de-de.lang"));
        QVERIFY(log.texts().join('\n').contains("Switch_de-de.lang"));
        QCOMPARE(Change::tr("IDS_PRINT", "Switch"), QString("Drucken"));
        // A text the new language lacks keeps the one loaded before.
        QCOMPARE(Change::tr("IDS_ONLY_EN", "Switch"), QString("English only"));
    }

    void trFromManyThreads()
    {
        writeLanguage("Threads", "en-us", {{"IDS_A", "Alpha"}, {"IDS_B", "Beta"}});
        QAtomicInt wrong;
        QList<QThread *> threads;
        for (int i = 0; i < 4; ++i) {
            threads.append(QThread::create([&wrong] {
                for (int n = 0; n < 500; ++n) {
                    if (Change::tr("IDS_A", "Threads") != QLatin1String("Alpha") ||
                        Change::tr("IDS_B", "Threads") != QLatin1String("Beta"))
                        wrong.ref();
                }
            }));
        }
        for (QThread *thread : threads)
            thread->start();
        for (QThread *thread : threads) {
            thread->wait();
            delete thread;
        }
        QCOMPARE(wrong.loadRelaxed(), 0);
    }
};

QTEST_GUILESS_MAIN(tst_Change)
#include "tst_change.moc"
