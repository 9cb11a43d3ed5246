#include "ExtendDialog.h"
#include "LogCapture.h"
#include "Ticker.h"
#include "TitleBar.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QToolButton>
#include <QtTest>

#include <memory>

namespace {

const char kRefused[] = "../../src/core/TitleBar/TitleBar, mouseMoveEvent : Move out of available "
                        "area!!";

QRect available()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

// The slot of the grid built from the screen's available area.
QRect slotRect(int row, int column)
{
    const QRect area = available();
    return QRect(area.left() + 160 * column, area.bottom() - 30 * (row + 1), 160, 30);
}

void clearGrid()
{
    for (int row = 0; row < TitleBar::iVerticalCnt; ++row)
        for (int column = 0; column < TitleBar::iHorizontalCnt; ++column)
            TitleBar::s_ppMatrixOccupy[row][column].nOccupy = 0;
}

int occupied(int row, int column)
{
    return TitleBar::s_ppMatrixOccupy[row][column].nOccupy;
}

// A frameless top-level window with its title bar across the top.
struct Window
{
    std::unique_ptr<QWidget> widget{new QWidget(nullptr, Qt::FramelessWindowHint)};
    TitleBar *bar = new TitleBar(widget.get(), 0);

    explicit Window(const QRect &geometry = QRect(200, 150, 300, 200))
    {
        QRect barRect(0, 0, geometry.width(), 24);
        bar->ShowWindow(barRect);
        widget->setGeometry(geometry);
        widget->show();
    }
    void send(QEvent::Type type, const QPoint &global, Qt::MouseButton button = Qt::LeftButton)
    {
        QMouseEvent event(type, bar->mapFromGlobal(global), global, button,
                          type == QEvent::MouseMove ? Qt::LeftButton : button, Qt::NoModifier);
        QCoreApplication::sendEvent(bar, &event);
    }
    // Presses at the bar's point (50, 10) and moves the cursor by delta.
    void drag(const QPoint &delta)
    {
        const QPoint start = bar->mapToGlobal(QPoint(50, 10));
        send(QEvent::MouseButtonPress, start);
        send(QEvent::MouseMove, start + delta);
        send(QEvent::MouseButtonRelease, start + delta);
    }
};

} // namespace

class tst_TitleBar : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        if (TitleBar::s_ppMatrixOccupy)
            clearGrid();
    }

    void gridPlacement_data()
    {
        QTest::addColumn<int>("restoreIndex"); // a window restored before the last one goes
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("column");
        QTest::newRow("first") << -1 << 1 << 0 << 0;
        QTest::newRow("second") << -1 << 2 << 0 << 1;
        QTest::newRow("first of the next row") << -1 << available().width() / 160 + 1 << 1 << 0;
        QTest::newRow("restored slot taken again") << 1 << 4 << 0 << 1;
    }
    void gridPlacement()
    {
        QFETCH(int, restoreIndex);
        QFETCH(int, count);
        QFETCH(int, row);
        QFETCH(int, column);
        std::vector<std::unique_ptr<Window>> windows;
        for (int i = 0; i < count; ++i) {
            windows.emplace_back(new Window);
            if (i == count - 1 && restoreIndex >= 0)
                windows[restoreIndex]->bar->showMaxRestore();
            windows.back()->bar->showSmall();
        }
        QCOMPARE(TitleBar::iVerticalCnt, available().height() / 30);
        QCOMPARE(TitleBar::iHorizontalCnt, available().width() / 160);
        QVERIFY(windows.back()->bar->IsMiniState());
        QCOMPARE(windows.back()->widget->geometry(), slotRect(row, column));
        QCOMPARE(occupied(row, column), 1);
        if (restoreIndex >= 0)
            QCOMPARE(windows[restoreIndex]->widget->geometry(), QRect(200, 150, 300, 200));
    }

    // A mini window dragged by 100 px claims both slots it partly covers; dragged on, it
    // releases the first again, which the next mini window then takes.
    void dragInMiniModeMovesClaims()
    {
        Window window;
        window.bar->showSmall();
        window.drag(QPoint(100, 0));
        QCOMPARE(window.widget->geometry(), slotRect(0, 0).translated(100, 0));
        QCOMPARE(occupied(0, 0), 1);
        QCOMPARE(occupied(0, 1), 1);
        window.drag(QPoint(100, 0));
        QCOMPARE(occupied(0, 0), 0);
        QCOMPARE(occupied(0, 1), 1);
        QCOMPARE(occupied(0, 2), 1);
        Window next;
        next.bar->showSmall();
        QCOMPARE(next.widget->geometry(), slotRect(0, 0));
    }

    void releasingUnclaimedGoesNegative()
    {
        Window window;
        window.bar->showSmall();
        window.bar->showMaxRestore();
        QRect unclaimed = slotRect(0, 3);
        window.bar->setOccupyState(true, unclaimed);
        QCOMPARE(occupied(0, 3), -1);
        QCOMPARE(occupied(0, 2), 0);
        // Only 0 is free: the negative cell is skipped.
        for (int column = 0; column < 3; ++column) {
            QRect claim = slotRect(0, column);
            window.bar->setOccupyState(false, claim);
        }
        Window next;
        next.bar->showSmall();
        QCOMPARE(next.widget->geometry(), slotRect(0, 4));
    }

    void everySlotTakenLeavesWindow()
    {
        Window window;
        window.bar->showSmall(); // builds the grid
        window.bar->showMaxRestore();
        for (int row = 0; row < TitleBar::iVerticalCnt; ++row)
            for (int column = 0; column < TitleBar::iHorizontalCnt; ++column)
                TitleBar::s_ppMatrixOccupy[row][column].nOccupy = 1;
        LogCapture log;
        window.bar->showSmall();
        QVERIFY(!window.bar->IsMiniState());
        QCOMPARE(window.widget->geometry(), QRect(200, 150, 300, 200));
        QVERIFY(!window.bar->findChild<QToolButton *>("Core_ButtonMinimize")->isHidden());
        QVERIFY(log.contains(
            "../../src/core/TitleBar/TitleBar, moveToMiniPos : no free mini-mode slot"));
        window.bar->showMaxRestore(); // maximizes, never releases cells
        QCOMPARE(occupied(0, 0), 1);
    }

    // Drags by the cursor's distance, or refuses within 3 px of the available area's edge.
    void drag_data()
    {
        QTest::addColumn<QPoint>("target"); // the cursor's global end point
        QTest::addColumn<bool>("moved");
        const QRect area = available();
        QTest::newRow("inside") << QPoint(400, 300) << true;
        QTest::newRow("4 px from the left") << QPoint(area.left() + 3, 300) << true;
        QTest::newRow("3 px from the left") << QPoint(area.left() + 2, 300) << false;
        QTest::newRow("3 px from the bottom") << QPoint(400, area.bottom() - 2) << false;
        QTest::newRow("4 px from the bottom") << QPoint(400, area.bottom() - 3) << true;
        QTest::newRow("outside on top") << QPoint(400, area.top() - 20) << false;
    }
    void drag()
    {
        QFETCH(QPoint, target);
        QFETCH(bool, moved);
        Window window;
        const QPoint start = window.bar->mapToGlobal(QPoint(50, 10));
        LogCapture log;
        window.drag(target - start);
        const QPoint expected = moved ? target - QPoint(50, 10) : QPoint(200, 150);
        QCOMPARE(window.widget->pos(), expected);
        const QRegularExpression stamped(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d:\\d{3}, ") +
                                         QRegularExpression::escape(kRefused) + "$");
        QCOMPARE(log.texts().indexOf(stamped) >= 0, !moved);
    }

    void maximizedDragNeedsMoveable_data()
    {
        QTest::addColumn<bool>("moveable");
        QTest::newRow("fixed") << false;
        QTest::newRow("moveable") << true;
    }
    void maximizedDragNeedsMoveable()
    {
        QFETCH(bool, moveable);
        Window window;
        window.bar->showMaxRestore();
        QVERIFY(window.bar->IsMaximized());
        QCOMPARE(window.widget->geometry(), available());
        window.bar->SetMoveable(moveable);
        window.drag(QPoint(30, 40));
        QCOMPARE(window.widget->pos(),
                 available().topLeft() + (moveable ? QPoint(30, 40) : QPoint()));
        window.bar->showMaxRestore();
        QVERIFY(!window.bar->IsMaximized());
        QCOMPARE(window.widget->geometry(), QRect(200, 150, 300, 200));
    }

    void doubleClick_data()
    {
        QTest::addColumn<bool>("onIcon");
        QTest::addColumn<bool>("maximized");
        QTest::newRow("on the title") << false << true;
        QTest::newRow("on the icon") << true << false;
    }
    void doubleClick()
    {
        QFETCH(bool, onIcon);
        QFETCH(bool, maximized);
        Window window;
        window.bar->findChild<QLabel *>("Core_LabelTitleIcon")->setFixedSize(16, 16);
        window.widget->resize(301, 200); // let the layout place the icon
        QCoreApplication::processEvents();
        const QLabel *pIcon = window.bar->findChild<QLabel *>("Core_LabelTitleIcon");
        const QPoint local = onIcon ? pIcon->geometry().center() : QPoint(150, 10);
        window.send(QEvent::MouseButtonDblClick, window.bar->mapToGlobal(local));
        QCOMPARE(window.bar->IsMaximized(), maximized);
    }

    // Visible non-modal frames go and come back; modal, hidden and other windows stay as they are.
    void hideAndRestorePopups()
    {
        Window main;
        ExtendDialog shown, modal, hidden;
        QWidget plain;
        shown.setObjectName("shownDialog");
        modal.setModal(true);
        for (QWidget *pWidget :
             {static_cast<QWidget *>(&shown), static_cast<QWidget *>(&modal), &plain})
            pWidget->show();
        LogCapture log;
        main.bar->HideAllPopupWindow();
        QVERIFY(shown.isHidden() && !modal.isHidden() && !plain.isHidden() && hidden.isHidden());
        QVERIFY(!main.widget->isHidden());
        QCOMPARE(log.texts().filter("HideAllPopupWindow"),
                 QStringList("../../src/core/TitleBar/TitleBar, HideAllPopupWindow :hide widget "
                             "shownDialog during hide main"));
        main.bar->RestoreAllPopupWindow();
        QVERIFY(!shown.isHidden() && hidden.isHidden());
    }

    // The ticker keeps the text with ten trailing blanks even where it is not laid out.
    void cbsText()
    {
        Window window;
        window.bar->TitleBarShowCBS(QStringLiteral("Storm warning"));
        auto *pTicker = window.bar->findChild<Ticker *>("Core_CBSLabel");
        QVERIFY(pTicker);
        QVERIFY(pTicker->isHidden());
        QCOMPARE(pTicker->text(), QStringLiteral("Storm warning          "));
        window.bar->SetWindowTitle(QStringLiteral("Calls"));
        QCOMPARE(window.bar->GetTitleLabel()->text(), QStringLiteral(" Calls"));
    }
};

QTEST_MAIN(tst_TitleBar)
#include "tst_titlebar.moc"
