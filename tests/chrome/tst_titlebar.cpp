#include "LogCapture.h"
#include "TitleBar.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QtTest>

#include <memory>

namespace {

const QString kSource = QStringLiteral("../../src/core/TitleBar/TitleBar, ");
const QRect kNormal(200, 150, 300, 200);

QRect available()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

// A slot of the grid as built from the screen's available area.
QRect slotRect(int row, int column)
{
    return QRect(available().left() + 160 * column, available().bottom() - 30 * (row + 1), 160, 30);
}

// Frees every slot of the grid, which outlives the windows.
void clearGrid()
{
    for (int row = 0; row < TitleBar::iVerticalCnt; ++row)
        for (int column = 0; column < TitleBar::iHorizontalCnt; ++column)
            TitleBar::s_ppMatrixOccupy[row][column].nOccupy = 0;
}

// A frameless top-level window with its title bar across the top.
struct Window
{
    std::unique_ptr<QWidget> widget{new QWidget(nullptr, Qt::FramelessWindowHint)};
    TitleBar *bar = new TitleBar(widget.get(), 0);

    Window()
    {
        QRect barRect(0, 0, kNormal.width(), 24);
        bar->ShowWindow(barRect);
        widget->setGeometry(kNormal);
        widget->show();
    }
    void send(QEvent::Type type, const QPoint &global)
    {
        QMouseEvent event(type, bar->mapFromGlobal(global), global,
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(bar, &event);
    }
    // Presses at the bar's point (50, 10) and moves the cursor to the global target.
    void drag(const QPoint &target)
    {
        send(QEvent::MouseButtonPress, bar->mapToGlobal(QPoint(50, 10)));
        send(QEvent::MouseMove, target);
        send(QEvent::MouseButtonRelease, target);
    }
};

} // namespace

class tst_TitleBar : public QObject
{
    Q_OBJECT

private slots:
    void init() { clearGrid(); }

    void gridPlacement_data()
    {
        QTest::addColumn<int>("restoreIndex"); // restored before the last window goes to mini
        QTest::addColumn<int>("count");
        QTest::addColumn<QRect>("slot");
        QTest::newRow("first") << -1 << 1 << slotRect(0, 0);
        QTest::newRow("second") << -1 << 2 << slotRect(0, 1);
        QTest::newRow("first of the next row")
            << -1 << available().width() / 160 + 1 << slotRect(1, 0);
        QTest::newRow("restored slot taken again") << 1 << 4 << slotRect(0, 1);
    }
    void gridPlacement()
    {
        QFETCH(int, restoreIndex);
        QFETCH(int, count);
        QFETCH(QRect, slot);
        std::vector<std::unique_ptr<Window>> windows;
        for (int i = 0; i < count; ++i) {
            windows.emplace_back(new Window);
            if (i == count - 1 && restoreIndex >= 0)
                windows[restoreIndex]->bar->showMaxRestore();
            windows.back()->bar->showSmall();
        }
        QVERIFY(windows.back()->bar->IsMiniState());
        QCOMPARE(windows.back()->widget->geometry(), slot);
        if (restoreIndex >= 0)
            QCOMPARE(windows[restoreIndex]->widget->geometry(), kNormal);
    }

    // On "wayland" (tests/displays) a drag asks the compositor for an interactive move and
    // places nothing itself; elsewhere the window follows the cursor.
    void dragAsksCompositorOnWaylandOnly()
    {
        const bool wayland = QGuiApplication::platformName() == QLatin1String("wayland");
        Window window;
        QVERIFY(QTest::qWaitForWindowExposed(window.widget.get()));
        const QPoint start = window.widget->pos();
        LogCapture log;
        window.drag(window.bar->mapToGlobal(QPoint(90, 40)));
        const QStringList requested = log.texts().filter(QRegularExpression(
            "^" + kSource + "mouseMoveEvent : system move requested, started = [01]$"));
        QCOMPARE(requested.size(), wayland ? 1 : 0);
        QCOMPARE(window.widget->pos(), wayland ? start : start + QPoint(40, 30));
    }

    // Drags by the cursor's distance, or refuses within 3 px of the available area's edge;
    // a maximized window only when made moveable.
    void drag_data()
    {
        QTest::addColumn<bool>("maximized");
        QTest::addColumn<QPoint>("target"); // the cursor's global end point
        QTest::addColumn<bool>("moved");
        const QRect area = available();
        QTest::newRow("4 px from the left") << false << QPoint(area.left() + 3, 300) << true;
        QTest::newRow("3 px from the left") << false << QPoint(area.left() + 2, 300) << false;
        QTest::newRow("maximized") << true << QPoint(400, 300) << false;
    }
    void drag()
    {
        QFETCH(bool, maximized);
        QFETCH(QPoint, target);
        QFETCH(bool, moved);
        for (bool moveable : {false, true}) {
            Window window;
            if (maximized)
                window.bar->showMaxRestore();
            window.bar->SetMoveable(moveable);
            const QPoint before = window.widget->pos();
            LogCapture log;
            window.drag(target);
            const bool expectMove = moved || (maximized && moveable);
            QCOMPARE(window.widget->pos(), expectMove ? target - QPoint(50, 10) : before);
            const QRegularExpression refused("^\\d\\d:\\d\\d:\\d\\d:\\d{3}, " + kSource +
                                             "mouseMoveEvent : Move out of available area!!$");
            QCOMPARE(log.texts().indexOf(refused) >= 0, !moved && !maximized);
        }
    }

    // A double-click on the icon does nothing; on the title it maximizes.
    void doubleClick()
    {
        Window window;
        auto *pIcon = window.bar->findChild<QLabel *>("Core_LabelTitleIcon");
        pIcon->setFixedSize(16, 16);
        QCoreApplication::processEvents();
        window.send(QEvent::MouseButtonDblClick,
                    window.bar->mapToGlobal(pIcon->geometry().center()));
        QCOMPARE(window.widget->geometry(), kNormal);
        window.send(QEvent::MouseButtonDblClick, window.bar->mapToGlobal(QPoint(150, 10)));
        QCOMPARE(window.widget->geometry(), available());
    }
};

QTEST_MAIN(tst_TitleBar)
#include "tst_titlebar.moc"
