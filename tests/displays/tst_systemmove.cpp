#include "LogCapture.h"
#include "TitleBar.h"

#include <QGuiApplication>
#include <QtTest>

// A title-bar drag on the platform the test runs on: on "wayland" the window asks the compositor
// for an interactive move and places nothing itself; elsewhere it moves by the drag distance.
class tst_SystemMove : public QObject
{
    Q_OBJECT

private slots:
    void dragAsksCompositorOnWaylandOnly()
    {
        const bool wayland = QGuiApplication::platformName() == QLatin1String("wayland");
        QWidget window(nullptr, Qt::FramelessWindowHint);
        auto *pBar = new TitleBar(&window, 0);
        QRect barRect(0, 0, 300, 24);
        pBar->ShowWindow(barRect);
        window.setGeometry(100, 100, 300, 200);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(!window.grab().isNull()); // it renders
        const QPoint start = window.pos();
        LogCapture log;
        const QPoint press(150, 10);
        QMouseEvent down(QEvent::MouseButtonPress, press, pBar->mapToGlobal(press), Qt::LeftButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(pBar, &down);
        const QPoint moved = press + QPoint(40, 30);
        QMouseEvent move(QEvent::MouseMove, moved, pBar->mapToGlobal(moved), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(pBar, &move);
        const QStringList requested =
            log.texts().filter(QRegularExpression("^../../src/core/TitleBar/TitleBar, "
                                                  "mouseMoveEvent : system move requested, "
                                                  "started = [01]$"));
        QCOMPARE(requested.size(), wayland ? 1 : 0);
        if (!wayland)
            QCOMPARE(window.pos(), start + QPoint(40, 30));
    }
};

QTEST_MAIN(tst_SystemMove)
#include "tst_systemmove.moc"
