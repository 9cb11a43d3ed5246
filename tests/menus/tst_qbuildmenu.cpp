#include "QBuildMenu.h"

#include "CommonUtils.h"
#include "LogCapture.h"
#include "NexoSim.h"
#include "TestFiles.h"

#include <QAction>
#include <QMenu>
#include <QWidget>
#include <QtTest>

#include <memory>

namespace {
const QString kPlugin = QStringLiteral("BuildTest");
const QString kSource = QStringLiteral("../../src/core/PopupMenu/MenuParse.cpp");

QString writeMenuFile(const QByteArray &body)
{
    const QByteArray contents = "<?xml version=\"1.0\"?><nexodoc>" + body + "</nexodoc>";
    const QString fileName = QStringLiteral("menu_%1.xml").arg(qHash(contents));
    if (!TestFiles::writeAppFile(
            QStringLiteral("/plugins/") + kPlugin + QLatin1Char('/') + fileName, contents))
        qFatal("cannot write the menu file");
    return fileName;
}

// The menu as shown: texts, "|" for separators, sub-menus in brackets.
QString shownText(const QMenu *pMenu)
{
    QStringList parts;
    const QList<QAction *> actions = pMenu->actions();
    for (const QAction *pAction : actions) {
        if (pAction->isSeparator())
            parts << QStringLiteral("|");
        else if (pAction->menu())
            parts << pAction->text() + QLatin1Char('[') + shownText(pAction->menu()) +
                         QLatin1Char(']');
        else
            parts << pAction->text();
    }
    return parts.join(QLatin1Char(' '));
}

QString recordsText(const QList<MENU::QActionInfo> &records)
{
    QStringList parts;
    for (const MENU::QActionInfo &info : records)
        parts << info.textId + QLatin1Char('@') + info.popupParent + QLatin1Char('=') +
                     info.action->text();
    return parts.join(QLatin1Char(' '));
}

MENU::MenuXmlInfo *entry(int type, const QString &id, const QString &name, const QString &parent)
{
    auto *pEntry = new MENU::MenuXmlInfo;
    pEntry->SetMenuType(type);
    pEntry->SetMenuTextID(id);
    pEntry->SetMenuName(name);
    pEntry->SetPopupParent(parent);
    return pEntry;
}

// Search, then items and separators written as "I<n>" and "S".
QByteArray searchMenu(const QByteArray &entries)
{
    QByteArray body = R"(<menu parent="null" name="Main">)";
    for (const QByteArray &token : entries.split(' ')) {
        if (token == "S")
            body += R"(<item type="SEPERATOR"/>)";
        else if (token == "Search")
            body += R"(<item type="ITEM" id="IDS_MENU_SEARCH">Search</item>)";
        else
            body += "<item type=\"ITEM\" id=\"IDS_" + token + "\">" + token + "</item>";
    }
    return body + "</menu>";
}
} // namespace

class tst_QBuildMenu : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        NexoSim_Reset();
        CommonUtils::SetSMSSeperatorConfigValue(true);
    }
    void cleanup() { CommonUtils::SetSMSSeperatorConfigValue(true); }

    void searchSeparator_data();
    void searchSeparator();
    void recordsInMenuOrder();
    void nestedPopupNotShown();
    void popupWithoutChildListEndsMenu();
    void noMenuToFillStillCreatesActions();
    void emptyBuilderBuildsNothing();
    void unknownOrInvalidRequestsGiveNull_data();
    void unknownOrInvalidRequestsGiveNull();
    void everyCallBuildsANewMenu();
    void operatorCustomizationShown();
};

void tst_QBuildMenu::searchSeparator_data()
{
    QTest::addColumn<QByteArray>("entries");
    QTest::addColumn<bool>("sms");
    QTest::addColumn<QString>("shown");

    QTest::newRow("switch on") << QByteArray("A Search S B S C") << true << "A Search | B | C";
    QTest::newRow("switch off") << QByteArray("A Search S B S C") << false << "A Search B | C";
    QTest::newRow("switch off, items between")
        << QByteArray("Search A B S C") << false << "Search A B C";
    QTest::newRow("switch off, separator before search")
        << QByteArray("S A Search S B") << false << "| A Search B";
    QTest::newRow("switch off, two searches")
        << QByteArray("Search S A Search S B S") << false << "Search A Search B |";
    QTest::newRow("switch off, no search") << QByteArray("A S B") << false << "A | B";
}

void tst_QBuildMenu::searchSeparator()
{
    QFETCH(QByteArray, entries);
    QFETCH(bool, sms);
    QFETCH(QString, shown);
    CommonUtils::SetSMSSeperatorConfigValue(sms);
    MENU::QBuildMenu builder(kPlugin, writeMenuFile(searchMenu(entries)));
    QWidget parent;
    QList<MENU::QActionInfo> records;
    QMenu *pMenu = builder.CreateMenuBar(QStringLiteral("Main"), &parent, &records);
    QVERIFY(pMenu);
    QCOMPARE(pMenu->parent(), &parent);
    QCOMPARE(shownText(pMenu), shown);
}

void tst_QBuildMenu::recordsInMenuOrder()
{
    MENU::QBuildMenu builder(kPlugin, writeMenuFile(R"(
        <menu parent="null" name="Main">
          <item type="ITEM" id="IDS_OPEN">Open</item>
          <item type="POPUP" id="IDS_VIEW">View</item>
          <item type="SEPERATOR"/>
          <item type="POPUP" id="IDS_EDIT">Edit</item>
          <item type="ITEM" id="IDS_EXIT">Exit</item>
        </menu>
        <menu parent="View"><item type="ITEM" id="IDS_ZOOM">Zoom</item><item type="SEPERATOR"/>
          <item type="ITEM" id="IDS_FULL">Full</item></menu>
        <menu parent="Edit"><item type="ITEM" id="IDS_ZOOM">Zoom</item></menu>)"));
    QWidget parent;
    QList<MENU::QActionInfo> records;
    QMenu *pMenu = builder.CreateMenuBar(QStringLiteral("Main"), &parent, &records);
    QVERIFY(pMenu);
    QCOMPARE(shownText(pMenu), QStringLiteral("Open View[Zoom | Full] | Edit[Zoom] Exit"));
    QCOMPARE(
        recordsText(records),
        QStringLiteral("IDS_OPEN@null=Open IDS_VIEW@=View IDS_ZOOM@View=Zoom "
                       "IDS_FULL@View=Full IDS_EDIT@=Edit IDS_ZOOM@Edit=Zoom IDS_EXIT@null=Exit"));
    // The records hold the very actions shown, all owned by the parent widget.
    QCOMPARE(records.at(0).action, pMenu->actions().at(0));
    QCOMPARE(records.at(2).action, pMenu->actions().at(1)->menu()->actions().at(0));
    for (const MENU::QActionInfo &info : qAsConst(records))
        QCOMPARE(info.action->parent(), &parent);
}

void tst_QBuildMenu::nestedPopupNotShown()
{
    MENU::STMENUINFO menuInfo(QStringLiteral("Main"));
    MENU::MenuXmlInfo *pOuter = entry(MENU::MENU_TYPE_POPUP, "IDS_OUTER", "Outer", QString());
    MENU::MenuXmlInfo *pInner = entry(MENU::MENU_TYPE_POPUP, "IDS_INNER", "Inner", "Outer");
    pInner->GetPopupMenuList()->append(entry(MENU::MENU_TYPE_ITEM, "IDS_DEEP", "Deep", "Inner"));
    pOuter->GetPopupMenuList()->append(entry(MENU::MENU_TYPE_ITEM, "IDS_A", "A", "Outer"));
    pOuter->GetPopupMenuList()->append(pInner);
    pOuter->GetPopupMenuList()->append(entry(MENU::MENU_TYPE_SEPARATOR, "", "", "Outer"));
    pOuter->GetPopupMenuList()->append(entry(MENU::MENU_TYPE_ITEM, "IDS_B", "B", "Outer"));
    menuInfo.pMenuItemList->append(pOuter);

    MENU::QBuildMenu builder{QString(), QString()};
    QWidget parent;
    QMenu menu;
    QList<MENU::QActionInfo> records;
    QVERIFY(builder.AddMenuItem(&menuInfo, &menu, &parent, &records));
    QCOMPARE(shownText(&menu), QStringLiteral("Outer[A | B]"));
    QCOMPARE(recordsText(records), QStringLiteral("IDS_OUTER@=Outer IDS_A@Outer=A IDS_B@Outer=B"));
}

void tst_QBuildMenu::popupWithoutChildListEndsMenu()
{
    MENU::STMENUINFO menuInfo(QStringLiteral("Main"));
    menuInfo.pMenuItemList->append(entry(MENU::MENU_TYPE_ITEM, "IDS_A", "A", "null"));
    MENU::MenuXmlInfo *pPopup = entry(MENU::MENU_TYPE_POPUP, "IDS_P", "P", QString());
    pPopup->releaseXMlInfo();
    menuInfo.pMenuItemList->append(pPopup);
    menuInfo.pMenuItemList->append(entry(MENU::MENU_TYPE_ITEM, "IDS_B", "B", "null"));

    MENU::QBuildMenu builder{QString(), QString()};
    QWidget parent;
    QMenu menu;
    QList<MENU::QActionInfo> records;
    QVERIFY(!builder.AddMenuItem(&menuInfo, &menu, &parent, &records));
    QCOMPARE(shownText(&menu), QStringLiteral("A P"));
    QCOMPARE(recordsText(records), QStringLiteral("IDS_A@null=A IDS_P@=P"));
}

void tst_QBuildMenu::noMenuToFillStillCreatesActions()
{
    MENU::STMENUINFO menuInfo(QStringLiteral("Main"));
    menuInfo.pMenuItemList->append(entry(MENU::MENU_TYPE_ITEM, "IDS_A", "A", "null"));
    menuInfo.pMenuItemList->append(nullptr);
    menuInfo.pMenuItemList->append(entry(MENU::MENU_TYPE_SEPARATOR, "", "", "null"));
    MENU::QBuildMenu builder{QString(), QString()};
    QWidget parent;
    QList<MENU::QActionInfo> records;
    QVERIFY(builder.AddMenuItem(&menuInfo, nullptr, &parent, &records));
    QVERIFY(records.isEmpty());
    QCOMPARE(parent.findChildren<QAction *>().size(), 2);
}

void tst_QBuildMenu::emptyBuilderBuildsNothing()
{
    MENU::QBuildMenu builder{QString(), QString()};
    QWidget parent;
    QList<MENU::QActionInfo> records;
    for (const QString &name : {QStringLiteral("Main"), QStringLiteral("null"), QString()})
        QCOMPARE(builder.CreateMenuBar(name, &parent, &records), nullptr);
    QVERIFY(records.isEmpty());
    QVERIFY(parent.children().isEmpty());
}

void tst_QBuildMenu::unknownOrInvalidRequestsGiveNull_data()
{
    QTest::addColumn<QString>("menuName");
    QTest::addColumn<bool>("withParent");
    QTest::newRow("unknown menu") << "Tray" << true;
    QTest::newRow("menu names are case-sensitive") << "main" << true;
    QTest::newRow("empty name") << "" << true;
    QTest::newRow("no parent") << "Main" << false;
}

void tst_QBuildMenu::unknownOrInvalidRequestsGiveNull()
{
    QFETCH(QString, menuName);
    QFETCH(bool, withParent);
    MENU::QBuildMenu builder(kPlugin, writeMenuFile(searchMenu("A S B")));
    QWidget parent;
    QList<MENU::QActionInfo> records;
    LogCapture log;
    QCOMPARE(builder.CreateMenuBar(menuName, withParent ? &parent : nullptr, &records), nullptr);
    QVERIFY(records.isEmpty());
    QVERIFY(log.contains(kSource + QStringLiteral(": CreateMenuBar:CreateMenuBar ")));
}

void tst_QBuildMenu::everyCallBuildsANewMenu()
{
    QWidget parent;
    QList<MENU::QActionInfo> records;
    QMenu *pFirst = nullptr;
    QMenu *pSecond = nullptr;
    {
        MENU::QBuildMenu builder(kPlugin, writeMenuFile(searchMenu("A S B")));
        pFirst = builder.CreateMenuBar(QStringLiteral("Main"), &parent, &records);
        pSecond = builder.CreateMenuBar(QStringLiteral("Main"), &parent, &records);
    }
    // The menus outlive the builder and its tree.
    QVERIFY(pFirst && pSecond && pFirst != pSecond);
    QCOMPARE(shownText(pSecond), QStringLiteral("A | B"));
    QCOMPARE(recordsText(records),
             QStringLiteral("IDS_A@null=A IDS_B@null=B IDS_A@null=A IDS_B@null=B"));
}

void tst_QBuildMenu::operatorCustomizationShown()
{
    NexoSim_SetCustomizeName("Acme");
    MENU::QBuildMenu builder(kPlugin, writeMenuFile(searchMenu("A S B") + R"(
        <customize><operator name="Acme"><menu parent="null" name="Main">
          <item type="ITEM" action="rem" id="IDS_A"/><item type="ITEM" action="add" id="IDS_C">C</item>
        </menu></operator></customize>)"));
    QWidget parent;
    QList<MENU::QActionInfo> records;
    QMenu *pMenu = builder.CreateMenuBar(QStringLiteral("Main"), &parent, &records);
    QVERIFY(pMenu);
    QCOMPARE(shownText(pMenu), QStringLiteral("| B C"));
}

QTEST_MAIN(tst_QBuildMenu)
#include "tst_qbuildmenu.moc"
