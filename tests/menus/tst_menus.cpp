#include "MenuParse.h"
#include "QBuildMenu.h"

#include "LogCapture.h"
#include "NexoSim.h"
#include "TestFiles.h"

#include <QAction>
#include <QMenu>
#include <QtTest>

namespace {
const QString kPlugin = QStringLiteral("MenuTest");
const QString kSource = QStringLiteral("../../src/core/PopupMenu/MenuParse.cpp");

// Menu files written briefly: "[null:Main]" opens a "menu" element (parent, name), "[/]" closes
// it, "ITEM:OPEN=Open" is an "item" with id "IDS_OPEN", "SEP" a separator; "add/" or "rem/" in
// front gives the action. Anything else is copied as it is.
QByteArray doc(QString body)
{
    const std::pair<const char *, const char *> rules[] = {
        {R"(\[/\])", "</menu>"},
        {R"(\[(\w+):?(\w*)\])", R"(<menu parent="\1" name="\2">)"},
        {R"((?:(add|rem)/)?(ITEM|POPUP):(\w+)=(\w*))",
         R"(<item type="\2" action="\1" id="IDS_\3">\4</item>)"},
        {R"((?:(add|rem)/)?\bSEP\b)", R"(<item type="SEPERATOR" action="\1"/>)"}};
    for (const auto &rule : rules)
        body.replace(QRegularExpression(rule.first), rule.second);
    return "<?xml version=\"1.0\"?>\n<nexodoc>" + body.toUtf8() + "</nexodoc>\n";
}

const char kBase[] = "[null:Main] ITEM:OPEN=Open POPUP:VIEW=View SEP ITEM:EXIT=Exit [/] "
                     "[View] ITEM:ZOOM=Zoom SEP [/]";
const QString kBaseTree = "Main(I:IDS_OPEN=Open@null, P:IDS_VIEW=View[I:IDS_ZOOM=Zoom@View, "
                          "S@View], S@null, I:IDS_EXIT=Exit@null)";
const char kAcme[] = "<operator name=\"Acme\">[null:Main] add/ITEM:HELP=Help rem/ITEM:OPEN= "
                     "add/POPUP:TOOLS=Tools [/] [View:Main] add/ITEM:FULL=Full rem/ITEM:ZOOM= "
                     "rem/SEP [/]</operator>";
const QString kAcmeTree = "Main(P:IDS_VIEW=View[S@View, I:IDS_FULL=Full@View, S@View], S@null, "
                          "I:IDS_EXIT=Exit@null, I:IDS_HELP=Help@null, P:IDS_TOOLS=Tools[])";

// The base menus followed by a customize section.
QByteArray customized(const QString &blocks)
{
    return doc(kBase + ("<customize>" + blocks + "</customize>"));
}

QString writeMenuFile(const QByteArray &contents)
{
    const QString name = QStringLiteral("menu_%1.xml").arg(qHash(contents));
    return TestFiles::writeAppFile("/plugins/" + kPlugin + '/' + name, contents) ? name : QString();
}

// A tree on one line: I item, P popup (children in brackets), S separator, U type unset.
QString entriesText(const QList<MENU::MenuXmlInfo *> *pList)
{
    QStringList parts;
    for (const MENU::MenuXmlInfo *pEntry : *pList) {
        QString name, parent;
        pEntry->GetMenuName(name);
        pEntry->GetPopupParent(parent);
        const QString text = pEntry->GetMenuTextID() + '=' + name;
        const int type = pEntry->GetMenuType();
        if (type == MENU::MENU_TYPE_POPUP)
            parts << "P:" + text + '[' + entriesText(pEntry->GetPopupMenuList()) + ']';
        else if (type == MENU::MENU_TYPE_SEPARATOR)
            parts << "S@" + parent;
        else
            parts << QChar(type == MENU::MENU_TYPE_ITEM ? 'I' : 'U') + (':' + text + '@' + parent);
    }
    return parts.join(", ");
}

QString treeText(const MENU::MenuParse &parser)
{
    QStringList parts;
    if (const QList<MENU::STMENUINFO *> *pMenus = parser.GetMenuInfoList())
        for (const MENU::STMENUINFO *pMenu : *pMenus)
            parts << pMenu->strMenuName + '(' + entriesText(pMenu->pMenuItemList) + ')';
    return parts.join("; ");
}

// A built menu as shown: texts, "|" for separators, sub-menus in brackets.
QString shownText(const QMenu *pMenu)
{
    QStringList parts;
    for (const QAction *pAction : pMenu->actions())
        parts << (pAction->isSeparator() ? "|"
                  : pAction->menu()      ? pAction->text() + '[' + shownText(pAction->menu()) + ']'
                                         : pAction->text());
    return parts.join(' ');
}

} // namespace

class tst_Menus : public QObject
{
    Q_OBJECT

private slots:
    void init() { NexoSim_Reset(); }
    void tree_data()
    {
        QTest::addColumn<QString>("op");
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QString>("expected");

        // A completely read file reports false; only a document without "nexodoc" reads true.
        QTest::newRow("popup collects a later menu element") << "" << doc(kBase) << kBaseTree;
        QTest::newRow("entries outside menu elements dropped")
            << "" << doc("ITEM:E=E POPUP:P=P SEP [null:Main] ITEM:A=A [/] ITEM:B=B SEP")
            << "Main(I:IDS_A=A@null)";
        QTest::newRow("unknown popup parents dropped; popups found by text, not id")
            << "" << doc("[null:Main] POPUP:P=Pop [/] [Nope] ITEM:X=X SEP [/] [IDS_P] ITEM:Y=Y [/]")
            << "Main(P:IDS_P=Pop[])";
        QTest::newRow("types and names are case-sensitive")
            << ""
            << doc(R"([null:Main] <item type="item" id="IDS_1">1</item><item type="SEPARATOR"/>
                <item type="separator"/><item type="popup" id="IDS_3">3</item>
                <Item type="ITEM" id="IDS_4">4</Item> ITEM:OK=Ok [/]
                <Menu parent="null" name="Upper">ITEM:U=U</Menu>)")
            << "Main(I:IDS_OK=Ok@null)";
        QTest::newRow("reading stops at an XML error")
            << "" << doc("[null:Main] ITEM:A=A <broken a=> [/] [null:Late] ITEM:B=B [/]")
            << "Main(I:IDS_A=A@null)";
        QTest::newRow("no nexodoc root")
            << "" << doc("[null:Main] ITEM:A=A [/]").replace("nexodoc", "other") << " read true";

        const QByteArray acme = customized(kAcme);
        QTest::newRow("operator block applied") << "Acme" << acme << kAcmeTree;
        QTest::newRow("no operator from the device") << QString() << acme << kAcmeTree;

        QTest::newRow("rem of unknown ids and other actions change nothing")
            << "Acme"
            << customized("<operator name=\"Acme\">[null:Main] rem/ITEM:NONE= rem/POPUP:NONE= "
                          "ITEM:X=X <item type=\"ITEM\" action=\"Add\" id=\"IDS_Y\">Y</item> [/] "
                          "[View:Main] rem/ITEM:NONE= [/] [Nope:Main] rem/ITEM:ZOOM= [/] "
                          "[null:Nope] rem/ITEM:OPEN= [/]</operator>")
            << kBaseTree;
        QTest::newRow("rem of a popup takes its entries along")
            << "Acme"
            << customized("<operator name=\"Acme\">[null:Main] rem/POPUP:VIEW= [/]</operator>")
            << "Main(I:IDS_OPEN=Open@null, S@null, I:IDS_EXIT=Exit@null)";
    }
    void tree()
    {
        QFETCH(QString, op);
        QFETCH(QByteArray, contents);
        QFETCH(QString, expected);
        MENU::MenuParse parser;
        NexoSim_SetCustomizeName("stale"); // a failing device must clear the name read before
        parser.GetOperator();
        NexoSim_SetCustomizeName(op.isNull() ? nullptr : op.toLocal8Bit().constData());
        parser.GetOperator();
        const bool result = parser.LoadFile(kPlugin, writeMenuFile(contents));
        QCOMPARE(treeText(parser) + (result ? " read true" : ""), expected);
        parser.release();
        parser.release();
        QCOMPARE(parser.GetMenuInfoList(), nullptr);
    }
    void logLines()
    {
        LogCapture log;
        MENU::MenuParse absent(kPlugin, QStringLiteral("absent.xml"));
        QVERIFY(log.contains(QStringLiteral("File %1/plugins/MenuTest/absent.xml does not exist")
                                 .arg(TestFiles::appDir())));
        QCOMPARE(treeText(absent), QString());

        log.clear();
        NexoSim_SetCustomizeName("Acme");
        MENU::MenuParse parser(kPlugin, writeMenuFile(doc(QString("[P] POPUP:P=P [/]") + kBase +
                                                          "<customize>" + kAcme + "</customize>")));
        QVERIFY(log.containsInOrder({kSource + ": ReadInfo:open file ",
                                     kSource + ": AddMenuPopup:AddMenuPopup ",
                                     kSource + ": CustomizeItemParse:ReadMenuItem "}));
    }
    void builtMenus()
    {
        QWidget parent;
        QList<MENU::QActionInfo> records;
        MENU::QBuildMenu empty{QString(), QString()};
        for (const char *name : {"Main", "null", ""})
            QCOMPARE(empty.CreateMenuBar(name, &parent, &records), nullptr);
        QMenu *pMenu = nullptr;
        {
            MENU::QBuildMenu builder(kPlugin, writeMenuFile(doc(kBase)));
            for (const char *name : {"Tray", "main", ""})
                QCOMPARE(builder.CreateMenuBar(name, &parent, &records), nullptr);
            QVERIFY(records.isEmpty() && parent.children().isEmpty());
            pMenu = builder.CreateMenuBar(QStringLiteral("Main"), &parent, &records);
        }
        // The menu and its actions outlive the builder and its tree.
        QVERIFY(pMenu);
        QString shown = shownText(pMenu) + " /";
        for (const MENU::QActionInfo &info : qAsConst(records)) {
            shown += ' ' + info.textId + '@' + info.popupParent + '=' + info.action->text();
            QCOMPARE(info.action->parent(), &parent);
        }
        QCOMPARE(shown, "Open View[Zoom |] | Exit / IDS_OPEN@null=Open IDS_VIEW@=View "
                        "IDS_ZOOM@View=Zoom IDS_EXIT@null=Exit");
        QCOMPARE(records.at(2).action, pMenu->actions().at(1)->menu()->actions().at(0));
    }
};

QTEST_MAIN(tst_Menus)
#include "tst_menus.moc"
