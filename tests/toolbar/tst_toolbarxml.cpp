#include "ToolBarLogic.h"
#include "ToolBarXmlText.h"

#include "LogCapture.h"
#include "TestFiles.h"

#include <QtTest>

using namespace ToolBarXmlText;

namespace {
const QString kSource = QStringLiteral("../../src/core/ToolBar/ToolBarLogic.cpp");

QString writeToolBarFile(const QByteArray &contents)
{
    const QString path =
        TestFiles::appDir() + QStringLiteral("/toolbars/tb_%1.xml").arg(qHash(contents));
    if (!TestFiles::writeFile(path, contents))
        qFatal("cannot write the toolbar file");
    return path;
}

QString line(const char *function, const char *text)
{
    return kSource + QStringLiteral(": ") + QLatin1String(function) + QStringLiteral(": ") +
           QLatin1String(text);
}
} // namespace

// Reading toolbar files where no plugin container exists: items that name a plugin are dropped.
class tst_ToolBarXml : public QObject
{
    Q_OBJECT

private slots:
    void items_data();
    void items();
    void itemFieldsAndSearchFlag();
    void missingFileClearsList();
    void countLogs_data();
    void countLogs();
    void itemOfPluginWithoutContainer();
};

void tst_ToolBarXml::items_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<bool>("groupBefore");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QString>("ids");
    QTest::addColumn<bool>("groupAfter");

    const QByteArray three = item(1) + item(2) + item(3);
    const QByteArray group1 = "<GroupInGroup enable=\"1\"/>";
    QTest::newRow("count equals items")
        << toolbar("3", three, group1) << false << true << "1,2,3" << true;
    QTest::newRow("count smaller than items")
        << toolbar("2", three, group1) << false << true << "1,2" << true;
    QTest::newRow("count larger than items")
        << toolbar("5", three, group1) << false << false << "1,2,3" << false;
    QTest::newRow("count zero") << toolbar("0", three, group1) << false << false << "" << false;
    QTest::newRow("count not a number")
        << toolbar("three", three, group1) << false << false << "" << false;
    QTest::newRow("negative count") << toolbar("-1", three, group1) << false << true << "" << true;
    QTest::newRow("no ToolBar element")
        << QByteArray("<root>" + three + "</root>") << true << false << "" << true;
    QTest::newRow("items before ToolBar not read")
        << QByteArray("<root>" + item(9) + "<ToolBar count=\"2\">" + item(1) + item(2) +
                      "</ToolBar></root>")
        << false << true << "1,2" << false;
    QTest::newRow("items found at any depth")
        << toolbar("2", "<group>" + item(1) + "</group><x><y>" + item(2) + "</y></x>") << false
        << true << "1,2" << false;
    QTest::newRow("element names are case-sensitive")
        << toolbar("2", item(1) + "<Item id=\"5\"/>" + item(2)) << false << true << "1,2" << false;
    QTest::newRow("group enable 0")
        << toolbar("3", three, "<GroupInGroup enable=\"0\"/>") << true << true << "1,2,3" << false;
    QTest::newRow("group enable 7")
        << toolbar("3", three, "<GroupInGroup enable=\"7\"/>") << false << true << "1,2,3" << true;
    QTest::newRow("no group element keeps true")
        << toolbar("3", three) << true << true << "1,2,3" << true;
    QTest::newRow("no group element keeps false")
        << toolbar("3", three) << false << true << "1,2,3" << false;
    QTest::newRow("XML error after the items")
        << toolbar("3", three, "<broken a=>" + group1) << false << true << "1,2,3" << false;
    QTest::newRow("XML error among the items")
        << toolbar("3", item(1) + "<broken a=>" + item(2) + item(3)) << false << false << "1"
        << false;
}

void tst_ToolBarXml::items()
{
    QFETCH(QByteArray, contents);
    QFETCH(bool, groupBefore);
    QFETCH(bool, result);
    QFETCH(QString, ids);
    QFETCH(bool, groupAfter);

    QList<ToolItem> list{ToolItem()}; // a stale entry that reading must remove
    bool group = groupBefore;
    QCOMPARE(ToolBarLogic::GetXmlData(writeToolBarFile(contents), list, group, QStringLiteral("x")),
             result);
    QCOMPARE(ToolBarXmlText::ids(list), ids);
    QCOMPARE(group, groupAfter);
}

void tst_ToolBarXml::itemFieldsAndSearchFlag()
{
    const QByteArray items =
        item(4) + item(5, QByteArray(), "IDS_TB_SEARCH") + item(6, QByteArray(), "IDS_TB_search") +
        item(7, QByteArray(), "MYSEARCHBOX") + item(8, QByteArray(), "IDS_TB_Search");
    QList<ToolItem> list;
    bool group = false;
    QVERIFY(
        ToolBarLogic::GetXmlData(writeToolBarFile(toolbar("5", items)), list, group, QString()));
    QCOMPARE(list.size(), 5);
    const ToolItem &first = list.at(0);
    QCOMPARE(first.id, 4);
    QCOMPARE(first.resource, QStringLiteral("IDS_TB_4"));
    QCOMPARE(first.enabled, QStringLiteral("4_on.png"));
    QCOMPARE(first.disabled, QStringLiteral("4_off.png"));
    QCOMPARE(first.button, nullptr);
    QList<bool> search;
    for (const ToolItem &i : qAsConst(list))
        search << i.search;
    QCOMPARE(search, (QList<bool>{false, true, false, true, false}));
}

void tst_ToolBarXml::missingFileClearsList()
{
    LogCapture log;
    QList<ToolItem> list{ToolItem()};
    bool group = true;
    QVERIFY(!ToolBarLogic::GetXmlData(TestFiles::appDir() + QStringLiteral("/toolbars/absent.xml"),
                                      list, group, QString()));
    QVERIFY(list.isEmpty());
    QVERIFY(group);
    QVERIFY(log.containsInOrder(
        {line("GetXmlData", "Enter"), line("GetXmlData", "Exit: XML File is not opened")}));
}

void tst_ToolBarXml::countLogs_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QStringList>("absent");

    const QString wrong = line("getToolBarCoount", "Exit: XML File Content is Wrong!");
    const QString zero = line("GetXmlData", "Exit: Item Count is ZERO!");
    const QString exit = line("GetXmlData", "Exit");
    QTest::newRow("no ToolBar") << QByteArray("<root/>") << QStringList{wrong, zero}
                                << QStringList{exit};
    QTest::newRow("count zero") << toolbar("0", item(1)) << QStringList{zero}
                                << QStringList{wrong, exit};
    QTest::newRow("complete") << toolbar("1", item(1)) << QStringList{exit}
                              << QStringList{wrong, zero};
    // Running out of items ends without the exit line.
    QTest::newRow("too few items")
        << toolbar("2", item(1)) << QStringList() << QStringList{wrong, zero, exit};
}

void tst_ToolBarXml::countLogs()
{
    QFETCH(QByteArray, contents);
    QFETCH(QStringList, lines);
    QFETCH(QStringList, absent);
    const QString path = writeToolBarFile(contents);
    LogCapture log;
    QList<ToolItem> list;
    bool group = false;
    ToolBarLogic::GetXmlData(path, list, group, QString());
    QVERIFY(log.contains(line("GetXmlData", "Enter")));
    for (const QString &text : qAsConst(lines))
        QVERIFY2(log.contains(text), qPrintable(text));
    for (const QString &text : qAsConst(absent))
        QVERIFY2(!log.contains(text), qPrintable(text));
}

void tst_ToolBarXml::itemOfPluginWithoutContainer()
{
    // The dropped item still uses up one of the counted places.
    const QString path =
        writeToolBarFile(toolbar("3", item(1) + item(2, "Helper") + item(3) + item(4)));
    LogCapture log;
    QList<ToolItem> list;
    bool group = false;
    QVERIFY(ToolBarLogic::GetXmlData(path, list, group, QString()));
    QCOMPARE(ids(list), QStringLiteral("1,3"));
    QVERIFY(log.containsInOrder(
        {line("getPlugin", "Enter"), line("getPlugin", "Plugin container is null ")}));
    // An empty plugin name needs no plugin at all.
    QVERIFY(ToolBarLogic::GetXmlData(writeToolBarFile(toolbar("2", item(1, "") + item(2))), list,
                                     group, QString()));
    QCOMPARE(ids(list), QStringLiteral("1,2"));
}

QTEST_GUILESS_MAIN(tst_ToolBarXml)
#include "tst_toolbarxml.moc"
