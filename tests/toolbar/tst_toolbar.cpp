#include "ToolBarLogic.h"

#include "CommonUtils.h"
#include "IPluginContainer.h"
#include "LogCapture.h"
#include "Startup.h"
#include "TestFiles.h"

#include <QApplication>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QLabel>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

#include <memory>

namespace {
const QString kPlugin = QStringLiteral("TBWidgets");
const QString kSource = QStringLiteral("../../src/core/ToolBar/ToolBarLogic.cpp");
const QString kLetters = QStringLiteral("RBGY");
const QRgb kColours[] = {qRgb(255, 0, 0), qRgb(0, 0, 255), qRgb(0, 255, 0), qRgb(255, 255, 0)};

// Every attribute of item N ends in N, so that fields taken from the wrong attribute show.
QByteArray item(int id, const QByteArray &pluginName = QByteArray(),
                const QByteArray &resource = "IDS_TB_")
{
    const QByteArray n = QByteArray::number(id);
    return "<item id=\"" + n + "\" resource=\"" + resource + n + "\" enabled=\"" + n +
           "_on.png\" disabled=\"" + n + "_off.png\"" +
           (pluginName.isNull() ? QByteArray() : " pluginname=\"" + pluginName + "\"") + "/>\n";
}

// The path of a toolbar file with these contents; a null contents names a missing file.
QString toolbarFile(const QByteArray &count, const QByteArray &items, const QByteArray &after = "")
{
    const QByteArray contents = count.isNull() ? items
                                               : "<root><ToolBar count=\"" + count + "\">" + items +
                                                     "</ToolBar>" + after + "</root>";
    const QString path =
        TestFiles::appDir() +
        QStringLiteral("/toolbars/tb_%1.xml").arg(contents.isNull() ? 0 : qHash(contents));
    if (!contents.isNull() && !TestFiles::writeFile(path, contents))
        qFatal("cannot write the toolbar file");
    return path;
}

// "1,5S": the ids read, S for the search item, "?" after an item with a wrong field.
QString idsText(const QList<ToolItem> &items)
{
    QStringList parts;
    for (const ToolItem &item : items) {
        const QString n = QString::number(item.id);
        const bool fieldsRight = item.resource.endsWith(n) && item.enabled == n + "_on.png" &&
                                 item.disabled == n + "_off.png" && !item.button;
        parts << n + (item.search ? "S" : "") + (fieldsRight ? "" : "?");
    }
    return parts.join(',');
}

QString line(const char *function, const char *text)
{
    return kSource + ": " + function + ": " + text;
}

// An icon named by the colours of its halves ("RB": red left, blue right), so that mirroring
// shows in the pixels.
bool writeIcon(const QString &name)
{
    QImage image(24, 16, QImage::Format_RGB32);
    image.fill(kColours[kLetters.indexOf(name.at(1))]);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width() / 2; ++x)
            image.setPixel(x, y, kColours[kLetters.indexOf(name.at(0))]);
    const QString dir = TestFiles::appDir() + "/plugins/" + kPlugin;
    return QDir().mkpath(dir) && image.save(dir + '/' + name + ".png", "PNG");
}

// The colours at the left and right edge of a pixmap, written as in the icon names.
QString edges(const QPixmap &pixmap)
{
    const QImage image = pixmap.toImage();
    QString text;
    for (int x : {0, image.width() - 1}) {
        const QRgb pixel = image.isNull() ? 0 : image.pixel(x, image.height() / 2) | 0xff000000u;
        const auto it = std::find(std::begin(kColours), std::end(kColours), pixel);
        text += it == std::end(kColours) ? QChar('?') : kLetters.at(int(it - kColours));
    }
    return text;
}

QString edges(const QToolButton *pButton, QIcon::Mode mode = QIcon::Active)
{
    return edges(pButton->icon().pixmap(pButton->iconSize(), mode, QIcon::Off));
}
} // namespace

// Test functions run in declaration order: items() reads without a plugin container, the last,
// callSetting(), starts one with the test plugins named in config/.
class tst_ToolBar : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase() { m_startup.reset(); }

    void items_data();
    void items();
    void buttonsBuiltSwitchedAndDestroyed();
    void mirroredIconsInRightToLeftLayout();
    void searchBox();
    void objectName();
    void searchKeys_data();
    void searchKeys();
    void callSetting_data();
    void callSetting();

private:
    bool build(bool withSearch);

    std::unique_ptr<Startup> m_startup;
    std::unique_ptr<QWidget> m_toolBar;
    QList<ToolItem> m_items;
    QButtonGroup *m_group = nullptr;
    QHBoxLayout *m_searchLayout = nullptr;
    SearchLineEdit *m_searchEdit = nullptr;
    QLabel *m_searchIcon = nullptr;
};

void tst_ToolBar::initTestCase()
{
    TestFiles::useFreshSettings();
    for (const char *name : {"RB", "GG", "YR", "GR"})
        QVERIFY(writeIcon(QString::fromLatin1(name)));
    QVERIFY(TestFiles::writeAppFile("/plugins/" + kPlugin + '/' + kPlugin + "_en-us.lang",
                                    "<lang><item name=\"IDS_TB_NEW\">New message</item>"
                                    "<item name=\"IDS_TB_SEARCH\">Search</item></lang>"));
}

void tst_ToolBar::init()
{
    m_toolBar = std::make_unique<QWidget>();
    m_items = {ToolItem{7, "IDS_TB_NEW", "RB.png", "GG.png", false, nullptr},
               ToolItem{9, "IDS_TB_SEARCH", "YR.png", "GR.png", true, nullptr}};
    m_group = nullptr;
    m_searchLayout = nullptr;
}

void tst_ToolBar::cleanup()
{
    QApplication::setLayoutDirection(Qt::LeftToRight);
    // While hidden, the search box belongs to the caller.
    if (m_searchLayout && !m_searchLayout->parent()) {
        delete m_searchLayout;
        if (!m_searchEdit->parent())
            delete m_searchEdit;
        if (!m_searchIcon->parent())
            delete m_searchIcon;
    }
    m_toolBar.reset();
}

bool tst_ToolBar::build(bool withSearch)
{
    return ToolBarLogic::CreateToolBar(
        kPlugin, m_toolBar.get(), m_items, &m_group, withSearch ? &m_searchLayout : nullptr,
        withSearch ? &m_searchEdit : nullptr, withSearch ? &m_searchIcon : nullptr);
}

void tst_ToolBar::items_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("groupBefore");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QString>("ids");
    QTest::addColumn<bool>("groupAfter");
    QTest::addColumn<QStringList>("log");

    const QByteArray three = item(1) + item(2) + item(3);
    const QByteArray group1 = "<GroupInGroup enable=\"1\"/>";
    const QString enter = line("GetXmlData", "Enter");
    const QString zero = line("GetXmlData", "Exit: Item Count is ZERO!");
    const QStringList ok{enter, line("GetXmlData", "Exit")};
    QTest::newRow("count equals items")
        << toolbarFile("3", three, group1) << false << true << "1,2,3" << true << ok;
    QTest::newRow("count smaller than items")
        << toolbarFile("2", three, group1) << false << true << "1,2" << true << ok;
    // Running out of items ends without the exit line and without reading the group flag.
    QTest::newRow("count larger than items") << toolbarFile("5", three, group1) << false << false
                                             << "1,2,3" << false << QStringList{enter};
    QTest::newRow("count zero") << toolbarFile("0", three, group1) << false << false << "" << false
                                << QStringList{enter, zero};
    QTest::newRow("negative count")
        << toolbarFile("-1", three, group1) << false << true << "" << true << ok;
    QTest::newRow("no ToolBar element")
        << toolbarFile({}, "<root>" + three + "</root>") << true << false << "" << true
        << QStringList{enter, line("getToolBarCoount", "Exit: XML File Content is Wrong!"), zero};
    QTest::newRow("missing file") << toolbarFile({}, {}) << true << false << "" << true
                                  << QStringList{
                                         enter, line("GetXmlData", "Exit: XML File is not opened")};
    QTest::newRow("items before ToolBar not read")
        << toolbarFile({}, "<r>" + item(9) + "<ToolBar count=\"2\">" + three + "</ToolBar></r>")
        << false << true << "1,2" << false << ok;
    QTest::newRow("group enable 0") << toolbarFile("3", three, "<GroupInGroup enable=\"0\"/>")
                                    << true << true << "1,2,3" << false << ok;
    QTest::newRow("no group element keeps the flag")
        << toolbarFile("3", three) << true << true << "1,2,3" << true << ok;
    QTest::newRow("XML error among the items")
        << toolbarFile("3", item(1) + "<broken a=>" + item(2) + item(3)) << false << false << "1"
        << false << QStringList{enter};
    QTest::newRow("upper-case SEARCH marks the search item")
        << toolbarFile("5", item(4) + item(5, {}, "IDS_TB_SEARCH") + item(6, {}, "IDS_TB_search") +
                                item(7, {}, "MYSEARCHBOX") + item(8, {}, "IDS_TB_Search"))
        << false << true << "4,5S,6,7S,8" << false << ok;
    // Without a container a named plugin is never loaded; its item still uses up a place.
    QTest::newRow("item of a plugin without container")
        << toolbarFile("4", item(1) + item(2, "Helper") + item(3, "") + item(4) + item(5)) << false
        << true << "1,3,4" << false
        << QStringList{enter, line("getPlugin", "Enter"),
                       line("getPlugin", "Plugin container is null "), ok.last()};
}

void tst_ToolBar::items()
{
    QFETCH(QString, path);
    QFETCH(bool, groupBefore);
    QFETCH(bool, result);
    QFETCH(QString, ids);
    QFETCH(bool, groupAfter);
    QFETCH(QStringList, log);

    QList<ToolItem> list{ToolItem()}; // a stale entry that reading must remove
    bool group = groupBefore;
    LogCapture capture;
    QCOMPARE(ToolBarLogic::GetXmlData(path, list, group, QStringLiteral("x")), result);
    QCOMPARE(idsText(list) + (group ? " group" : ""), ids + (groupAfter ? " group" : ""));
    QCOMPARE(capture.unstamped().filter(kSource), log);
}

void tst_ToolBar::buttonsBuiltSwitchedAndDestroyed()
{
    QVERIFY(build(false));
    QStringList buttons;
    for (const ToolItem &item : qAsConst(m_items))
        buttons << QStringLiteral("%1 %2 %3 %4x%5 %6 %7")
                       .arg(m_group->id(item.button))
                       .arg(item.button->objectName(), item.button->toolTip())
                       .arg(item.button->width())
                       .arg(item.button->height())
                       .arg(item.button->autoRaise() ? "raised" : "flat", edges(item.button));
    QCOMPARE(buttons, (QStringList{"7 ToolBar New message 50x48 raised RB",
                                   "9 ToolBar Search 50x48 raised YR"}));
    // Neighbouring buttons overlap by 6 pixels; the toolbar takes the row's size.
    m_toolBar->show();
    m_toolBar->layout()->activate();
    QCOMPARE(m_items.at(1).button->x() - m_items.at(0).button->x(), 44);
    QCOMPARE(m_toolBar->height(), 48);

    QToolButton *pButton = m_items.at(0).button;
    ToolBarLogic::EnableDisableItem(kPlugin, m_items, 8, false); // unknown id
    ToolBarLogic::EnableDisableItem(kPlugin, m_items, 7, false);
    QVERIFY(!pButton->isEnabled() && m_items.at(1).button->isEnabled());
    QCOMPARE(edges(pButton, QIcon::Disabled), QStringLiteral("GG"));
    QVERIFY(pButton->icon().availableSizes(QIcon::Active).isEmpty());
    ToolBarLogic::EnableDisableItem(kPlugin, m_items, 7, true);
    QVERIFY(pButton->isEnabled() && pButton->icon().availableSizes(QIcon::Disabled).isEmpty());
    QCOMPARE(edges(pButton), QStringLiteral("RB"));

    ToolBarLogic::DestroyToolButtonGroup(m_items, &m_group);
    QVERIFY(!m_group && !m_items.at(0).button && !m_items.at(1).button);
    QVERIFY(m_toolBar->findChildren<QToolButton *>().isEmpty());
    QVERIFY(m_toolBar->findChildren<QButtonGroup *>().isEmpty());
}

void tst_ToolBar::mirroredIconsInRightToLeftLayout()
{
    QApplication::setLayoutDirection(Qt::RightToLeft);
    QVERIFY(build(true));
    QCOMPARE(edges(m_items.at(0).button) + edges(m_items.at(1).button), QStringLiteral("BRRY"));
    ToolBarLogic::EnableDisableItem(kPlugin, m_items, 9, false);
    QCOMPARE(edges(m_items.at(1).button, QIcon::Disabled), QStringLiteral("RG"));

    // A direction change shows enabled icons again, on disabled buttons too.
    ToolBarLogic::ChangeToolBarIconDirection(kPlugin, m_items, false, &m_searchIcon);
    QCOMPARE(edges(m_items.at(0).button) + edges(m_items.at(1).button), QStringLiteral("RBYR"));
    QVERIFY(!m_items.at(1).button->isEnabled());
    QCOMPARE(edges(m_searchIcon->pixmap(Qt::ReturnByValue)), QStringLiteral("YR"));
    ToolBarLogic::ChangeToolBarIconDirection(kPlugin, m_items, true, &m_searchIcon);
    QCOMPARE(edges(m_searchIcon->pixmap(Qt::ReturnByValue)), QStringLiteral("RY"));
}

void tst_ToolBar::searchBox()
{
    // Two of the three out-arguments: no search box, the toolbar is still installed.
    QWidget plain;
    SearchLineEdit untouched;
    SearchLineEdit *pEdit = &untouched;
    QHBoxLayout *pLayout = nullptr;
    QVERIFY(
        ToolBarLogic::CreateToolBar(kPlugin, &plain, m_items, &m_group, &pLayout, &pEdit, nullptr));
    QVERIFY(pEdit == &untouched && !pLayout && plain.layout());

    // All three: created with the search item's icon, but shown only when asked for.
    QVERIFY(build(true));
    QCOMPARE(m_searchLayout->itemAt(0)->widget(), m_searchIcon);
    QCOMPARE(m_searchLayout->itemAt(1)->widget(), m_searchEdit);
    QVERIFY(m_searchLayout->itemAt(2)->spacerItem());
    QCOMPARE(m_searchEdit->size(), QSize(300, 19));
    QCOMPARE(m_searchEdit->maxLength(), 48);
    QCOMPARE(edges(m_searchIcon->pixmap(Qt::ReturnByValue)), QStringLiteral("YR"));
    QLayout *pMain = m_toolBar->layout();
    m_toolBar->show();
    pMain->activate();
    QCOMPARE(pMain->count(), 1);
    const int plainHeight = m_toolBar->height();

    m_searchEdit->setText(QStringLiteral("old"));
    for (int i = 0; i < 2; ++i) // showing twice keeps one search row
        ToolBarLogic::ShowHideSearchBox(m_toolBar.get(), m_searchLayout, m_searchEdit, true);
    pMain->activate();
    QCOMPARE(pMain->count(), 2);
    QVERIFY(m_searchEdit->isEnabled() && m_searchEdit->isVisible() && m_searchIcon->isVisible());
    QVERIFY(m_searchEdit->text().isEmpty() && m_toolBar->height() > plainHeight);

    ToolBarLogic::ShowHideSearchBox(m_toolBar.get(), m_searchLayout, m_searchEdit, false);
    pMain->activate();
    QCOMPARE(pMain->count(), 1);
    QVERIFY(!m_searchEdit->isEnabled() && !m_searchEdit->isVisible());
    QVERIFY(!m_searchLayout->parent() && m_toolBar->height() == plainHeight);
}

void tst_ToolBar::objectName()
{
    LogCapture log;
    QCOMPARE(ToolBarLogic::GetObjectName(QStringLiteral("XFramePlugin")),
             QStringLiteral("ToolBar_XFramePlugin"));
    QVERIFY(LogCapture::hasStamp(log.texts().value(0)) &&
            LogCapture::hasStamp(log.texts().value(1)));
    QCOMPARE(log.unstamped(),
             (QStringList{kSource + ": GetObjectName Enter: plugin name:XFramePlugin",
                          kSource + ": GetObjectName Exit: objectname:ToolBar_XFramePlugin"}));
}

void tst_ToolBar::searchKeys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("shown"); // the text with "|" at the cursor, "/", the selection
    QTest::addColumn<QString>("emitted");

    QTest::newRow("up moves left") << int(Qt::Key_Up) << 0 << "a|bcd/"
                                   << "";
    QTest::newRow("down moves right") << int(Qt::Key_Down) << 0 << "abc|d/"
                                      << "";
    QTest::newRow("shift+up selects left") << int(Qt::Key_Up) << int(Qt::ShiftModifier) << "a|bcd/b"
                                           << "";
    QTest::newRow("ctrl+n") << int(Qt::Key_N) << int(Qt::ControlModifier) << "ab|cd/"
                            << "N";
    QTest::newRow("ctrl+shift+n") << int(Qt::Key_N) << int(Qt::ControlModifier | Qt::ShiftModifier)
                                  << "ab|cd/"
                                  << "N";
    QTest::newRow("ctrl+f") << int(Qt::Key_F) << int(Qt::ControlModifier) << "ab|cd/"
                            << "F";
    QTest::newRow("n is typed") << int(Qt::Key_N) << 0 << "abn|cd/"
                                << "";
    QTest::newRow("ctrl+g") << int(Qt::Key_G) << int(Qt::ControlModifier) << "ab|cd/"
                            << "";
}

void tst_ToolBar::searchKeys()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, shown);
    QFETCH(QString, emitted);
    SearchLineEdit edit;
    edit.setText(QStringLiteral("abcd"));
    edit.setCursorPosition(2);
    QSignalSpy spyN(&edit, &SearchLineEdit::controlN);
    QSignalSpy spyF(&edit, &SearchLineEdit::controlF);
    LogCapture log;
    QTest::keyClick(&edit, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(edit.text().insert(edit.cursorPosition(), '|') + '/' + edit.selectedText(), shown);
    QCOMPARE(QString(spyN.count(), 'N') + QString(spyF.count(), 'F'), emitted);
    // Each signal comes with its time-stamped line.
    QStringList expected;
    for (const QChar letter : emitted)
        expected << kSource + ": keyPressEvent Cntrl " + letter + " pressed in the Search Edit Box";
    QCOMPARE(log.unstamped().filter("Cntrl"), expected);
    const QStringList lines = log.texts().filter("Cntrl");
    QVERIFY(std::all_of(lines.begin(), lines.end(), LogCapture::hasStamp));
}

void tst_ToolBar::callSetting_data()
{
    QTest::addColumn<QString>("callVoice");
    QTest::addColumn<QString>("ids");
    QTest::newRow("0") << "0"
                       << "1,2,5";
    QTest::newRow("empty") << ""
                           << "1,2,5";
    QTest::newRow("1") << "1"
                       << "1,2,3,5";
    QTest::newRow("10") << "10"
                        << "1,2,3,5";
    QTest::newRow("01") << "01"
                        << "1,2,5";
}

void tst_ToolBar::callSetting()
{
    QFETCH(QString, callVoice);
    QFETCH(QString, ids);
    if (!m_startup) {
        m_startup = std::make_unique<Startup>(true);
        QVERIFY(Startup::GetPluginContainer());
        Startup::GetPluginContainer()->LoadAllStaticOrActivePlugin();
    }
    CommonUtils::SetSettings(QStringLiteral("callui"), QStringLiteral("callvoice"), callVoice);

    // The item of the plugin that is not loaded uses up a counted place: item 6 is never read.
    const QString path =
        toolbarFile("5", item(1) + item(2, "HelperPlugin") + item(3, "CallUIPlugin") +
                             item(4, "IdlePlugin") + item(5) + item(6));
    LogCapture log;
    QList<ToolItem> list;
    bool group = false;
    QVERIFY(ToolBarLogic::GetXmlData(path, list, group, QString()));
    QCOMPARE(idsText(list), ids);
    QCOMPARE(log.count(line("getPlugin", "plugin is not loaded ")), 1);
    QVERIFY(!Startup::GetPluginContainer()->IsPluginLoaded("7B0C1A2E-0003-4C11-9A00-000000000003"));
}

QTEST_MAIN(tst_ToolBar)
#include "tst_toolbar.moc"
