#include "ToolBarLogic.h"

#include "LogCapture.h"
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

// The path of a toolbar file with these contents; without a count the items are the contents.
QString toolbarFile(const QByteArray &count, const QByteArray &items, const QByteArray &after = "")
{
    const QByteArray contents = count.isNull() ? items
                                               : "<root><ToolBar count=\"" + count + "\">" + items +
                                                     "</ToolBar>" + after + "</root>";
    const QString path =
        TestFiles::appDir() + QStringLiteral("/toolbars/%1.xml").arg(qHash(contents));
    return TestFiles::writeFile(path, contents) ? path : QString();
}

// Reads a toolbar file: "read [1,5S] grouped | GetXmlData: Enter / ...": the result, the ids
// read (S for the search item, "?" after an item with a wrong field), the group-in-group flag and
// the log lines of the toolbar code.
QString readText(const QString &path, bool group)
{
    QList<ToolItem> list{ToolItem()}; // a stale entry that reading must remove
    LogCapture log;
    const bool result = ToolBarLogic::GetXmlData(path, list, group, QStringLiteral("x"));
    QStringList ids;
    for (const ToolItem &item : qAsConst(list)) {
        const QString n = QString::number(item.id);
        const bool fieldsRight = item.resource.endsWith(n) && item.enabled == n + "_on.png" &&
                                 item.disabled == n + "_off.png" && !item.button;
        ids << n + (item.search ? "S" : "") + (fieldsRight ? "" : "?");
    }
    return QStringLiteral("%1 [%2]%3 | %4")
        .arg(result ? "read" : "failed", ids.join(','), group ? " grouped" : "",
             log.unstamped().filter(kSource).join(" / ").remove(kSource + ": "));
}

// The colours at the left and right edge of a pixmap, written as in the names of the icons in
// appdir/plugins/TBWidgets ("RB": red left, blue right).
QString edges(const QPixmap &pixmap)
{
    const QImage image = pixmap.toImage();
    QString text;
    for (int x : {0, image.width() - 1})
        text += "RBGY?"[std::find(kColours, kColours + 4,
                                  image.pixel(x, image.height() / 2) | 0xff000000u) -
                        kColours];
    return text;
}

QString edges(const QToolButton *pButton, QIcon::Mode mode = QIcon::Active)
{
    return edges(pButton->icon().pixmap(pButton->iconSize(), mode, QIcon::Off));
}

// A toolbar of two buttons, 7 and the search button 9, with some or all search out-arguments.
struct Bar
{
    explicit Bar(bool withSearch, bool withIcon = true)
        : built(ToolBarLogic::CreateToolBar(
              kPlugin, &widget, items, &group, withSearch ? &layout : nullptr,
              withSearch ? &edit : nullptr, withSearch && withIcon ? &icon : nullptr))
    {}
    ~Bar()
    {
        if (layout && !layout->parent())
            delete layout; // hidden: the caller owns it
        delete edit;
        delete icon;
    }
    QWidget widget;
    QList<ToolItem> items{{7, "IDS_TB_NEW", "RB.png", "GG.png", false, nullptr},
                          {9, "IDS_TB_SEARCH", "YR.png", "GR.png", true, nullptr}};
    QButtonGroup *group = nullptr;
    QHBoxLayout *layout = nullptr;
    SearchLineEdit *edit = nullptr;
    QLabel *icon = nullptr;
    bool built;
};
} // namespace

class tst_ToolBar : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestFiles::useFreshSettings(); }

    void items_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("group");
        QTest::addColumn<QString>("expected");

        const QByteArray three = item(1) + item(2) + item(3);
        const QByteArray group1 = "<GroupInGroup enable=\"1\"/>";
        const QString enter = " | GetXmlData: Enter";
        const QString exit = " / GetXmlData: Exit";
        const QString ok = enter + exit;
        const QString zero = exit + ": Item Count is ZERO!";
        QTest::newRow("count smaller than items")
            << toolbarFile("2", three, group1) << false << "read [1,2] grouped" + ok;
        // Running out of items ends without the exit line and without reading the group flag.
        QTest::newRow("count larger than items")
            << toolbarFile("5", three, group1) << false << "failed [1,2,3]" + enter;
        QTest::newRow("count zero")
            << toolbarFile("0", three) << false << "failed []" + enter + zero;
        QTest::newRow("no ToolBar element")
            << toolbarFile({}, "<root>" + three + "</root>") << true
            << "failed [] grouped" + enter +
                   " / getToolBarCoount: Exit: XML File Content is Wrong!" + zero;
        QTest::newRow("no file") << QString() << true
                                 << "failed [] grouped" + enter + exit + ": XML File is not opened";
        QTest::newRow("upper-case SEARCH marks the search item")
            << toolbarFile("5", item(4) + item(5, {}, "IDS_TB_SEARCH") +
                                    item(6, {}, "IDS_TB_search") + item(7, {}, "MYSEARCHBOX") +
                                    item(8, {}, "IDS_TB_Search"))
            << false << "read [4,5S,6,7S,8]" + ok;
        // Without a container a named plugin is never loaded; its item still uses up a place.
        QTest::newRow("item of a plugin without container")
            << toolbarFile("4", item(1) + item(2, "Helper") + item(3, "") + item(4) + item(5))
            << false
            << "read [1,3,4]" + enter +
                   " / getPlugin: Enter / getPlugin: Plugin container is null " + exit;
    }
    void items()
    {
        QFETCH(QString, path);
        QFETCH(bool, group);
        QFETCH(QString, expected);
        QCOMPARE(readText(path, group), expected);
    }
    void buttonsBuiltSwitchedAndDestroyed()
    {
        Bar bar(false);
        QVERIFY(bar.built);
        QStringList buttons;
        for (const ToolItem &item : qAsConst(bar.items))
            buttons << QString::number(bar.group->id(item.button)) + ' ' + item.button->toolTip() +
                           ' ' + edges(item.button) + ' ' + item.button->objectName();
        QCOMPARE(buttons, (QStringList{"7 New message RB ToolBar", "9 Search YR ToolBar"}));

        QToolButton *pButton = bar.items.at(0).button;
        ToolBarLogic::EnableDisableItem(kPlugin, bar.items, 8, false); // unknown id
        ToolBarLogic::EnableDisableItem(kPlugin, bar.items, 7, false);
        QVERIFY(!pButton->isEnabled() && bar.items.at(1).button->isEnabled());
        QCOMPARE(edges(pButton, QIcon::Disabled), QStringLiteral("GG"));
        QVERIFY(pButton->icon().availableSizes(QIcon::Active).isEmpty());
        ToolBarLogic::EnableDisableItem(kPlugin, bar.items, 7, true);
        QVERIFY(pButton->isEnabled() && pButton->icon().availableSizes(QIcon::Disabled).isEmpty());
        QCOMPARE(edges(pButton), QStringLiteral("RB"));

        ToolBarLogic::DestroyToolButtonGroup(bar.items, &bar.group);
        QVERIFY(!bar.group && !bar.items.at(0).button && !bar.items.at(1).button);
        QVERIFY(bar.widget.findChildren<QObject *>().size() == 2); // the two layouts are left
    }
    void searchBox()
    {
        Bar partial(true, false); // two of the three out-arguments: no search box
        QVERIFY(partial.built && partial.widget.layout() && !partial.layout && !partial.edit);
        Bar bar(true);
        QVERIFY(bar.built && bar.edit->size() == QSize(300, 19) && bar.edit->maxLength() == 48);
        QLayout *pMain = bar.widget.layout();
        bar.widget.show();
        QCOMPARE(pMain->count(), 1);

        bar.edit->setText(QStringLiteral("old"));
        for (int i = 0; i < 2; ++i) // showing twice keeps one search row
            ToolBarLogic::ShowHideSearchBox(&bar.widget, bar.layout, bar.edit, true);
        QCOMPARE(pMain->count(), 2);
        QVERIFY(bar.edit->isEnabled() && bar.edit->text().isEmpty());
        QTRY_VERIFY(bar.edit->isVisible() && bar.icon->isVisible());

        // Hiding takes the row out: the toolbar shrinks to its buttons and the edit, left alive
        // below them, is out of sight and disabled.
        ToolBarLogic::ShowHideSearchBox(&bar.widget, bar.layout, bar.edit, false);
        pMain->activate();
        QCOMPARE(pMain->count(), 1);
        QVERIFY(!bar.edit->isEnabled() && !bar.edit->isHidden() && !bar.layout->parent() &&
                bar.widget.height() == 48);
        QVERIFY(!bar.widget.rect().intersects(bar.edit->geometry()));
    }
    // Up and Down move by one character; Ctrl+N and Ctrl+F are signalled.
    void searchKeys()
    {
        SearchLineEdit edit;
        edit.setText(QStringLiteral("abcd"));
        edit.setCursorPosition(2);
        QSignalSpy spyN(&edit, &SearchLineEdit::controlN), spyF(&edit, &SearchLineEdit::controlF);
        for (const char *keys : {"Up", "Up", "Down", "Ctrl+N", "Ctrl+G", "Ctrl+F", "Ctrl+F"})
            QTest::keySequence(&edit, QKeySequence(QString::fromLatin1(keys)));
        QVERIFY(edit.cursorPosition() == 1 && spyN.count() == 1 && spyF.count() == 2);
    }
};

QTEST_MAIN(tst_ToolBar)
#include "tst_toolbar.moc"
