#include "MenuParse.h"
#include "MenuTreeText.h"

#include "LogCapture.h"
#include "NexoSim.h"
#include "TestFiles.h"

#include <QtTest>

using MenuTreeText::treeText;

namespace {
const QString kPlugin = QStringLiteral("MenuTest");
const QString kNoOperator = QStringLiteral("<sdk fails>");
const QString kSource = QStringLiteral("../../src/core/PopupMenu/MenuParse.cpp");

const char kBaseMenus[] = R"(
  <menu parent="null" name="Main">
    <item type="ITEM" id="IDS_OPEN">Open</item>
    <item type="POPUP" id="IDS_VIEW">View</item>
    <item type="SEPERATOR"/>
    <item type="ITEM" id="IDS_EXIT">Exit</item>
  </menu>
  <menu parent="View">
    <item type="ITEM" id="IDS_ZOOM">Zoom</item>
    <item type="SEPERATOR"/>
  </menu>
)";
const char kBaseTree[] = "Main(I:IDS_OPEN=Open@null, P:IDS_VIEW=View[I:IDS_ZOOM=Zoom@View, "
                         "S@View], S@null, I:IDS_EXIT=Exit@null)";

const char kAcmeBlock[] = R"(
  <operator name="Acme">
    <menu parent="null" name="Main">
      <item type="ITEM" action="add" id="IDS_HELP">Help</item>
      <item type="ITEM" action="rem" id="IDS_OPEN"/>
      <item type="POPUP" action="add" id="IDS_TOOLS">Tools</item>
    </menu>
    <menu parent="View" name="Main">
      <item type="ITEM" action="add" id="IDS_FULL">Full</item>
      <item type="ITEM" action="rem" id="IDS_ZOOM"/>
      <item type="SEPERATOR" action="rem"/>
    </menu>
  </operator>
)";
const char kAcmeTree[] = "Main(P:IDS_VIEW=View[S@View, I:IDS_FULL=Full@View, S@View], S@null, "
                         "I:IDS_EXIT=Exit@null, I:IDS_HELP=Help@null, P:IDS_TOOLS=Tools[])";

QByteArray document(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- menus -->\n<nexodoc>" + body +
           "</nexodoc>\n";
}

QByteArray customize(const QByteArray &blocks)
{
    return "<customize>" + blocks + "</customize>";
}

QByteArray block(const char *op, const QByteArray &content)
{
    return QByteArray("<operator name=\"") + op + "\">" + content + "</operator>";
}

void setOperator(const QString &name)
{
    if (name == kNoOperator)
        NexoSim_SetCustomizeName(nullptr);
    else
        NexoSim_SetCustomizeName(name.toLocal8Bit().constData());
}

// Writes the menu file of the current test row and returns its file name.
QString writeMenuFile(const QByteArray &contents)
{
    const QString fileName = QString::fromLatin1(QTest::currentTestFunction()) + QLatin1Char('_') +
                             QString::number(qHash(contents)) + QStringLiteral(".xml");
    if (!TestFiles::writeAppFile(
            QStringLiteral("/plugins/") + kPlugin + QLatin1Char('/') + fileName, contents))
        qFatal("cannot write the menu file");
    return fileName;
}
} // namespace

class tst_MenuParse : public QObject
{
    Q_OBJECT

private slots:
    void init() { NexoSim_Reset(); }

    void tree_data();
    void tree();
    void customization_data();
    void customization();
    void loadResult_data();
    void loadResult();
    void missingFileLogsAndLeavesEmptyTree();
    void unopenableFileLogsStampedLine();
    void readingStagesLog();
    void operatorNameFromDevice();
    void typeOfAddedEntrySetOnlyForItemsAndSeparators();
    void popupWithoutChildListTakesNoEntries();
    void setPopupMenuListReplacesChildren();
    void releaseTwice();
};

void tst_MenuParse::tree_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("expected");

    QTest::newRow("popup collects a later menu element")
        << QByteArray(kBaseMenus) << QString(kBaseTree);
    QTest::newRow("entries before any top-level menu") << QByteArray(R"(
        <item type="ITEM" id="IDS_EARLY">Early</item>
        <item type="POPUP" id="IDS_EARLYPOP">EarlyPop</item>
        <item type="SEPERATOR"/>
        <menu parent="null" name="Main"><item type="ITEM" id="IDS_A">A</item></menu>)")
                                                       << "Main(I:IDS_A=A@null)";
    QTest::newRow("entries under a popup menu before any top-level menu") << QByteArray(R"(
        <menu parent="Pop"><item type="POPUP" id="IDS_P">Pop</item><item type="ITEM" id="IDS_X">X</item></menu>
        <menu parent="null" name="Main"><item type="ITEM" id="IDS_A">A</item></menu>)")
                                                                          << "Main(I:IDS_A=A@null)";
    QTest::newRow("only entries, no menu") << QByteArray(R"(
        <item type="ITEM" id="IDS_EARLY">Early</item><item type="POPUP" id="IDS_P">P</item>)")
                                           << QString();
    QTest::newRow("unknown popup parent dropped") << QByteArray(R"(
        <menu parent="null" name="Main"><item type="POPUP" id="IDS_P">Pop</item></menu>
        <menu parent="Nope"><item type="ITEM" id="IDS_X">X</item><item type="SEPERATOR"/></menu>)")
                                                  << "Main(P:IDS_P=Pop[])";
    QTest::newRow("popup found by its text, not its id") << QByteArray(R"(
        <menu parent="null" name="Main"><item type="POPUP" id="IDS_P">Pop</item></menu>
        <menu parent="IDS_P"><item type="ITEM" id="IDS_X">X</item></menu>)")
                                                         << "Main(P:IDS_P=Pop[])";
    QTest::newRow("types and names are case-sensitive") << QByteArray(R"(
        <menu parent="null" name="Main">
          <item type="item" id="IDS_1">1</item><item type="Item" id="IDS_2">2</item>
          <item type="SEPARATOR"/><item type="separator"/><item type="Seperator"/>
          <item type="popup" id="IDS_3">3</item><Item type="ITEM" id="IDS_4">4</Item>
          <item type="ITEM" id="IDS_OK">Ok</item>
        </menu>
        <Menu parent="null" name="Upper"><item type="ITEM" id="IDS_5">5</item></Menu>)")
                                                        << "Main(I:IDS_OK=Ok@null)";
    QTest::newRow("entries between menu elements dropped") << QByteArray(R"(
        <menu parent="null" name="Main"><item type="ITEM" id="IDS_A">A</item></menu>
        <item type="ITEM" id="IDS_B">B</item><item type="SEPERATOR"/>)")
                                                           << "Main(I:IDS_A=A@null)";
    QTest::newRow("closing a nested menu ends its parent too") << QByteArray(R"(
        <menu parent="null" name="Main">
          <item type="POPUP" id="IDS_P">Pop</item>
          <menu parent="Pop"><item type="ITEM" id="IDS_IN">In</item></menu>
          <item type="ITEM" id="IDS_AFTER">After</item>
        </menu>)") << "Main(P:IDS_P=Pop[I:IDS_IN=In@Pop])";
    QTest::newRow("two top-level menus") << QByteArray(R"(
        <menu parent="null" name="Main"><item type="ITEM" id="IDS_A">A</item></menu>
        <menu parent="null" name="Tray"><item type="SEPERATOR"/><item type="ITEM" id="IDS_B">B</item></menu>)")
                                         << "Main(I:IDS_A=A@null); Tray(S@null, I:IDS_B=B@null)";
    QTest::newRow("a repeated menu name fills the first")
        << QByteArray(R"(
        <menu parent="null" name="Main"><item type="ITEM" id="IDS_A">A</item></menu>
        <menu parent="null" name="Main"><item type="ITEM" id="IDS_B">B</item></menu>)")
        << "Main(I:IDS_A=A@null, I:IDS_B=B@null); Main()";
    QTest::newRow("reading stops at an XML error") << QByteArray(R"(
        <menu parent="null" name="Main"><item type="ITEM" id="IDS_A">A</item><item type="SEPERATOR"/>
        <broken attr=></menu>
        <menu parent="null" name="Late"><item type="ITEM" id="IDS_B">B</item></menu>)")
                                                   << "Main(I:IDS_A=A@null, S@null)";
    QTest::newRow("menus after customize not read") << QByteArray(kBaseMenus) + customize("") + R"(
        <menu parent="null" name="Late"><item type="ITEM" id="IDS_LATE">Late</item></menu>)"
                                                    << QString(kBaseTree);
}

void tst_MenuParse::tree()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, expected);
    setOperator(QStringLiteral("Nobody"));
    MENU::MenuParse parser(kPlugin, writeMenuFile(document(body)));
    QCOMPARE(treeText(parser), expected);
}

void tst_MenuParse::customization_data()
{
    QTest::addColumn<QString>("op");
    QTest::addColumn<QByteArray>("section");
    QTest::addColumn<QString>("expected");

    const QByteArray acme = customize(kAcmeBlock);
    QTest::newRow("operator block applied") << "Acme" << acme << QString(kAcmeTree);
    QTest::newRow("operator not listed") << "Other" << acme << QString(kBaseTree);
    QTest::newRow("operator names are case-sensitive") << "acme" << acme << QString(kBaseTree);
    QTest::newRow("empty operator applies the first block") << "" << acme << QString(kAcmeTree);
    QTest::newRow("no operator from the device") << kNoOperator << acme << QString(kAcmeTree);

    const QByteArray addA =
        R"(<menu parent="null" name="Main"><item type="ITEM" action="add" id="IDS_A">A</item></menu>)";
    const QByteArray addB =
        R"(<menu parent="null" name="Main"><item type="ITEM" action="add" id="IDS_B">B</item></menu>)";
    const QByteArray twoBlocks = customize(block("Acme", addA) + block("Beta", addB));
    const QString base = QString(kBaseTree).chopped(1);
    QTest::newRow("later operator blocks applied too")
        << "Acme" << twoBlocks << base + ", I:IDS_A=A@null, I:IDS_B=B@null)";
    QTest::newRow("earlier operator blocks skipped")
        << "Beta" << twoBlocks << base + ", I:IDS_B=B@null)";

    QTest::newRow("rem of unknown ids changes nothing") << "Acme" << customize(block("Acme", R"(
        <menu parent="null" name="Main">
          <item type="ITEM" action="rem" id="IDS_NONE"/>
          <item type="POPUP" action="rem" id="IDS_NONE"/>
        </menu>
        <menu parent="View" name="Main"><item type="ITEM" action="rem" id="IDS_NONE"/></menu>
        <menu parent="Nope" name="Main"><item type="ITEM" action="rem" id="IDS_ZOOM"/></menu>
        <menu parent="null" name="Nope"><item type="ITEM" action="rem" id="IDS_OPEN"/></menu>
        <menu parent="null" name="Main"><item type="ITEM" action="rem" id="IDS_ZOOM"/></menu>)"))
                                                        << QString(kBaseTree);
    QTest::newRow("rem of a popup takes its entries along")
        << "Acme" << customize(block("Acme", R"(
        <menu parent="null" name="Main"><item type="POPUP" action="rem" id="IDS_VIEW"/></menu>)"))
        << "Main(I:IDS_OPEN=Open@null, S@null, I:IDS_EXIT=Exit@null)";
    QTest::newRow("popup removal matches entries of any type")
        << "Acme" << customize(block("Acme", R"(
        <menu parent="null" name="Main"><item type="POPUP" action="rem" id="IDS_EXIT"/></menu>)"))
        << base.chopped(QStringLiteral(", I:IDS_EXIT=Exit@null").size()) + ")";
    QTest::newRow("separator with rem is added") << "Acme" << customize(block("Acme", R"(
        <menu parent="null" name="Main"><item type="SEPERATOR" action="rem"/><item type="SEPERATOR"/></menu>)"))
                                                 << base + ", S@null, S@null)";
    QTest::newRow("other actions do nothing") << "Acme" << customize(block("Acme", R"(
        <menu parent="null" name="Main">
          <item type="ITEM" action="Add" id="IDS_X">X</item><item type="ITEM" action="rem " id="IDS_OPEN"/>
          <item type="ITEM" id="IDS_Y">Y</item>
        </menu>)")) << QString(kBaseTree);
    QTest::newRow("added popup collects added items") << "Acme" << customize(block("Acme", R"(
        <menu parent="null" name="Main"><item type="POPUP" action="add" id="IDS_EXTRA">Extra</item></menu>
        <menu parent="Extra" name="Main">
          <item type="ITEM" action="add" id="IDS_E1">E1</item><item type="SEPERATOR" action="add"/>
        </menu>)")) << base + ", P:IDS_EXTRA=Extra[I:IDS_E1=E1@Extra, S@Extra])";
    QTest::newRow("customization creates no menus") << "Acme" << customize(block("Acme", R"(
        <menu parent="null" name="Late"><item type="ITEM" action="add" id="IDS_L">L</item></menu>)"))
                                                    << QString(kBaseTree);
    QTest::newRow("entries after a closing menu tag dropped")
        << "Acme" << customize(block("Acme", R"(
        <menu parent="null" name="Main"></menu><item type="ITEM" action="add" id="IDS_L">L</item>)"))
        << QString(kBaseTree);
}

void tst_MenuParse::customization()
{
    QFETCH(QString, op);
    QFETCH(QByteArray, section);
    QFETCH(QString, expected);
    setOperator(op);
    MENU::MenuParse parser(kPlugin, writeMenuFile(document(kBaseMenus + section)));
    QCOMPARE(treeText(parser), expected);
}

void tst_MenuParse::loadResult_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QString>("expected");

    // A complete read still reports false; only a document without "nexodoc" reports true.
    QTest::newRow("complete menu file") << document(kBaseMenus) << false << QString(kBaseTree);
    QTest::newRow("file with customization")
        << document(kBaseMenus + customize(kAcmeBlock)) << false << QString(kAcmeTree);
    QTest::newRow("no nexodoc root") << QByteArray(R"(<other><menu parent="null" name="Main">
        <item type="ITEM" id="IDS_A">A</item></menu></other>)")
                                     << true << QString();
    QTest::newRow("error before nexodoc")
        << QByteArray("<a><b></a><nexodoc/>") << false << QString();
    QTest::newRow("empty file") << QByteArray() << false << QString();
}

void tst_MenuParse::loadResult()
{
    QFETCH(QByteArray, contents);
    QFETCH(bool, result);
    QFETCH(QString, expected);
    MENU::MenuParse parser; // no operator: the first block applies
    QCOMPARE(parser.LoadFile(kPlugin, writeMenuFile(contents)), result);
    QCOMPARE(treeText(parser), expected);
}

void tst_MenuParse::missingFileLogsAndLeavesEmptyTree()
{
    LogCapture log;
    MENU::MenuParse parser;
    QVERIFY(!parser.LoadFile(kPlugin, QStringLiteral("absent.xml")));
    QVERIFY(log.contains(QStringLiteral("File %1/plugins/MenuTest/absent.xml does not exist")
                             .arg(TestFiles::appDir())));
    QCOMPARE(treeText(parser), QString());
}

void tst_MenuParse::unopenableFileLogsStampedLine()
{
    // A directory exists under the file's name but cannot be read as a file.
    QVERIFY(TestFiles::writeAppFile(QStringLiteral("/plugins/MenuTest/dir.xml/inner"), "x"));
    LogCapture log;
    MENU::MenuParse parser;
    QVERIFY(!parser.LoadFile(kPlugin, QStringLiteral("dir.xml")));
    const QStringList texts = log.texts();
    const QString tail = QStringLiteral(" : %1: LoadFile: file open error").arg(kSource);
    const auto stamped = std::find_if(texts.begin(), texts.end(), [&](const QString &line) {
        return line.endsWith(tail) &&
               QRegularExpression(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d:\\d\\d\\d$"))
                   .match(line.left(line.size() - tail.size()))
                   .hasMatch();
    });
    QVERIFY2(stamped != texts.end(), qPrintable(texts.join(QLatin1Char('\n'))));
    QCOMPARE(treeText(parser), QString());
}

void tst_MenuParse::readingStagesLog()
{
    setOperator(QStringLiteral("Acme"));
    const QString file =
        writeMenuFile(document(R"(<menu parent="P"><item type="POPUP" id="IDS_P">P</item></menu>)" +
                               QByteArray(kBaseMenus) + customize(kAcmeBlock)));
    LogCapture log;
    MENU::MenuParse parser(kPlugin, file);
    QVERIFY(log.containsInOrder({
        kSource + QStringLiteral(": ReadInfo:open file "),
        kSource + QStringLiteral(": ReadMenuItem:ReadMenuItem "),
        kSource + QStringLiteral(": AddMenuPopup:AddMenuPopup "),
        kSource + QStringLiteral(": ReadMenuItem:read traymenu customization "),
        kSource + QStringLiteral(": CustomizeItemParse:ReadMenuItem "),
    }));
    QCOMPARE(log.count(kSource + QStringLiteral(": AddMenuPopup:AddMenuPopup ")), 1);
}

void tst_MenuParse::operatorNameFromDevice()
{
    MENU::MenuParse parser;
    NexoSim_SetCustomizeName("Acme Mobile");
    QCOMPARE(parser.GetOperator(), QStringLiteral("Acme Mobile"));
    NexoSim_SetCustomizeName(nullptr);
    QCOMPARE(parser.GetOperator(), QString()); // the earlier name is cleared
}

void tst_MenuParse::typeOfAddedEntrySetOnlyForItemsAndSeparators()
{
    MENU::MenuParse parser;
    parser.LoadFile(kPlugin, writeMenuFile(document(kBaseMenus)));
    QVERIFY(
        parser.AddMenuType(QStringLiteral("Main"), QStringLiteral("null"), MENU::MENU_TYPE_POPUP));
    QVERIFY(parser.AddMenuType(QStringLiteral("Main"), QStringLiteral("View"), 7));
    QVERIFY(parser.AddMenuSeparator(QStringLiteral("Main"), QStringLiteral("View")));
    QVERIFY(!parser.AddMenuItem(QStringLiteral("Main"), QStringLiteral("IDS_VIEW")));
    QVERIFY(!parser.AddMenuItem(QStringLiteral("Tray"), QStringLiteral("null")));
    QCOMPARE(treeText(parser),
             QStringLiteral("Main(I:IDS_OPEN=Open@null, P:IDS_VIEW=View[I:IDS_ZOOM=Zoom@View, "
                            "S@View, U:=@View, S@View], S@null, I:IDS_EXIT=Exit@null, U:=@null)"));
}

void tst_MenuParse::popupWithoutChildListTakesNoEntries()
{
    MENU::MenuParse parser;
    parser.LoadFile(kPlugin, writeMenuFile(document(kBaseMenus)));
    MENU::MenuXmlInfo *pView = parser.GetMenuInfoList()->first()->pMenuItemList->at(1);
    pView->releaseXMlInfo();
    QCOMPARE(pView->GetPopupMenuList(), nullptr);
    QVERIFY(!parser.AddMenuItem(QStringLiteral("Main"), QStringLiteral("View")));
    parser.DeleteMenuItem(QStringLiteral("Main"), QStringLiteral("View"),
                          QStringLiteral("IDS_ZOOM"));
    QCOMPARE(treeText(parser), QStringLiteral("Main(I:IDS_OPEN=Open@null, P:IDS_VIEW=View[<no "
                                              "list>], S@null, I:IDS_EXIT=Exit@null)"));
}

void tst_MenuParse::setPopupMenuListReplacesChildren()
{
    MENU::MenuXmlInfo popup;
    popup.SetMenuType(MENU::MENU_TYPE_POPUP);
    popup.GetPopupMenuList()->append(new MENU::MenuXmlInfo);
    auto *pList = new QList<MENU::MenuXmlInfo *>{new MENU::MenuXmlInfo, new MENU::MenuXmlInfo};
    popup.SetPopupMenuList(pList); // the old child is freed (the sanitizer build checks)
    QCOMPARE(popup.GetPopupMenuList(), pList);
    popup.SetPopupMenuList(pList); // the same list again is kept, not freed
    QCOMPARE(popup.GetPopupMenuList()->size(), 2);
}

void tst_MenuParse::releaseTwice()
{
    MENU::MenuParse parser;
    parser.LoadFile(kPlugin, writeMenuFile(document(kBaseMenus)));
    QVERIFY(parser.GetMenuInfoList());
    parser.release();
    QCOMPARE(parser.GetMenuInfoList(), nullptr);
    parser.release();
    QCOMPARE(parser.GetMenuInfoList(), nullptr);
    // Without a tree, reading stops at the first top-level menu and adds nothing.
    QVERIFY(!parser.LoadFile(kPlugin, writeMenuFile(document(kBaseMenus))));
    QCOMPARE(parser.GetMenuInfoList(), nullptr);
}

QTEST_GUILESS_MAIN(tst_MenuParse)
#include "tst_menuparse.moc"
