// Every reader of a configuration file reports a broken file with one warning of its own
// category, naming the file and where the XML went wrong.
#include "Change.h"
#include "LogCapture.h"
#include "MenuParse.h"
#include "StatusBarOpListParse.h"
#include "TestFiles.h"
#include "ToolBarLogic.h"

#include <QtTest>

class TestXmlErrors : public QObject
{
    Q_OBJECT

private slots:
    void truncatedFileIsReported_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QString>("where");
        QTest::newRow("menu") << "/plugins/P/Menu.xml"
                              << QByteArray("<nexodoc>\n<menu name=\"m\" parent=\"null\">\n<item")
                              << "line 3, column 6: Premature end of document.";
        QTest::newRow("toolbar") << "/plugins/P/ToolBar.xml"
                                 << QByteArray("<ToolBar count=\"2\">\n<item id=\"1\"/>\n")
                                 << "line 3, column 1: Premature end of document.";
        QTest::newRow("operator list")
            << "/plugins/StatusBarMgrPlugin/Truncated.xml"
            << QByteArray("<OperatorList><MccMnc><Item mcc=\"262\" mnc=\"01\"/>\n</MccM")
            << "line 2, column 7: Premature end of document.";
        QTest::newRow("language") << "/plugins/P/P_en-us.lang"
                                  << QByteArray("<lang><item name=\"IDS_A\">A</item><item")
                                  << "line 1, column 39: Premature end of document.";
        QTest::newRow("trailing garbage after what the reader needs")
            << "/plugins/StatusBarMgrPlugin/Truncated.xml"
            << QByteArray("<OperatorList><MccOnly/></OperatorList>\n<x>")
            << "line 2, column 4: Extra content at end of document.";
    }
    void truncatedFileIsReported()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, contents);
        QFETCH(QString, where);
        QVERIFY(TestFiles::writeAppFile(file, contents));
        const QString path = TestFiles::appDir() + file;

        LogCapture log;
        if (file.endsWith("Menu.xml")) {
            MENU::MenuParse menu("P", "Menu.xml");
        } else if (file.endsWith("ToolBar.xml")) {
            QList<ToolItem> items;
            bool groupInGroup = false;
            ToolBarLogic::GetXmlData(path, items, groupInGroup, QString());
        } else if (file.endsWith(".lang")) {
            QVERIFY(!Change::LoadLangFile("P"));
        } else {
            QVERIFY(!StatusBarOpListParse::GetInstance()->LoadFile("Truncated.xml") ||
                    contents.endsWith("<x>"));
        }

        QStringList warnings;
        for (const LogCapture::Line &line : log.lines()) {
            if (line.category == "linkdeck.core.xml")
                warnings.append(QString::number(line.type) + ' ' + line.text);
        }
        QCOMPARE(warnings, QStringList{QString::number(QtWarningMsg) + " XML error in " + path +
                                       " at " + where});
    }
};

QTEST_MAIN(TestXmlErrors)
#include "tst_xmlerrors.moc"
