#include "MenuParse.h"
#include "MenuTreeText.h"
#include "ToolBarLogic.h"

#include "NexoSim.h"
#include "TestFiles.h"

#include <QtTest>

// The main frame's shipped menu and toolbar files, copied into this test's application
// directory by the build.
namespace {
const QString kPlugin = QStringLiteral("XFramePlugin");
const QString kNoOperator = QStringLiteral("<sdk fails>");

const char kMainMenu[] =
    "MainMenu(P:IDS_MENUBAR_FILE=File[I:IDS_MENU_SEARCH=Search@File, S@File, "
    "I:IDS_MENU_EXIT=Exit@File], P:IDS_MENUBAR_VIEW=View[I:IDS_MENU_TOOLBAR=Toolbar@View, S@View, "
    "I:IDS_MENU_LEFT_TO_RIGHT=Left to right@View, I:IDS_MENU_RIGHT_TO_LEFT=Right to left@View], "
    "P:IDS_MENUBAR_HELP=Help[I:IDS_MENU_ABOUT=About@Help]";
const char kOperatorMenu[] =
    ", P:IDS_MENUBAR_OPERATOR=Nordtel[I:IDS_MENU_OPERATOR_PORTAL=Customer portal@Nordtel]";
const char kTray[] = "; Tray(I:IDS_MENU_SHOW=Show@null, I:IDS_MENU_SEARCH=Search@null, S@null, "
                     "I:IDS_MENU_EXIT=Exit@null)";
const char kOperatorTray[] = "; Tray(I:IDS_MENU_SHOW=Show@null, S@null, I:IDS_MENU_EXIT=Exit@null)";
} // namespace

class tst_ShippedMenus : public QObject
{
    Q_OBJECT

private slots:
    void menuFile_data();
    void menuFile();
    void toolBarFile();
};

void tst_ShippedMenus::menuFile_data()
{
    QTest::addColumn<QString>("op");
    QTest::addColumn<QString>("expected");
    const QString plain = QString(kMainMenu) + ")" + kTray;
    const QString customized = QString(kMainMenu) + kOperatorMenu + ")" + kOperatorTray;
    QTest::newRow("nordtel") << "nordtel" << customized;
    // Devices without a customization name must not pick up the operator block.
    QTest::newRow("no name from the device") << kNoOperator << plain;
    QTest::newRow("empty name") << "" << plain;
    QTest::newRow("other operator") << "common" << plain;
    QTest::newRow("names are case-sensitive") << "Nordtel" << plain;
}

void tst_ShippedMenus::menuFile()
{
    QFETCH(QString, op);
    QFETCH(QString, expected);
    NexoSim_Reset();
    if (op != kNoOperator)
        NexoSim_SetCustomizeName(op.toLocal8Bit().constData());
    MENU::MenuParse parser(kPlugin, QStringLiteral("MainMenu.xml"));
    QCOMPARE(MenuTreeText::treeText(parser), expected);
}

void tst_ShippedMenus::toolBarFile()
{
    // No container here: the buttons of the device-manager and call plugins are left out.
    QList<ToolItem> items;
    bool groupInGroup = true;
    QVERIFY(ToolBarLogic::GetXmlData(TestFiles::appDir() +
                                         QStringLiteral("/plugins/XFramePlugin/ToolBar.xml"),
                                     items, groupInGroup, QString()));
    QCOMPARE(items.size(), 2);
    QCOMPARE(items.at(0).id, 3);
    QCOMPARE(items.at(1).id, 4);
    QVERIFY(!items.at(0).search && items.at(1).search);
    QVERIFY(!groupInGroup);
    for (const ToolItem &item : qAsConst(items)) {
        for (const QString &icon : {item.enabled, item.disabled})
            QVERIFY2(QFile::exists(
                         QStringLiteral(LINKDECK_SOURCE_DIR "/plugins/XFramePlugin/files/") + icon),
                     qPrintable(icon));
    }
}

QTEST_GUILESS_MAIN(tst_ShippedMenus)
#include "tst_shippedmenus.moc"
