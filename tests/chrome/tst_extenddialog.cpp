#include "ExtendDialog.h"
#include "LogCapture.h"

#include <QSignalSpy>
#include <QtTest>

class tst_ExtendDialog : public QObject
{
    Q_OBJECT

private slots:
    // Without a main-frame service: custom chrome, title 29, border 3.
    void defaultsWithoutMainFrame()
    {
        ExtendDialog dialog(nullptr, Qt::WindowCloseButtonHint,
                            ExtendDialog::WIDGET_TYPE_RESIZE_MAIN, false);
        QVERIFY(dialog.IsCusTitle() && (dialog.windowFlags() & Qt::FramelessWindowHint));
        auto *pContent = new QWidget;
        dialog.AddMainWidget(pContent);
        QCOMPARE(pContent->pos(), QPoint(3, 29));
        dialog.resize(300, 200);
        dialog.show();
        QCOMPARE(pContent->size(), QSize(294, 168));
        dialog.changeSize(QSize(100, 50)); // a content size: the border comes on top
        QCOMPARE(dialog.size(), QSize(106, 82));
    }

    void cornerMask_data()
    {
        QTest::addColumn<QPoint>("pixel");
        QTest::addColumn<bool>("inside");
        QTest::newRow("top left diagonal") << QPoint(1, 1) << false;
        QTest::newRow("inside the rounding") << QPoint(7, 7) << true;
        QTest::newRow("left of top right square") << QPoint(292, 0) << true;
        QTest::newRow("bottom right diagonal") << QPoint(298, 198) << false;
    }
    void cornerMask()
    {
        QFETCH(QPoint, pixel);
        ExtendDialog dialog;
        dialog.resize(300, 200);
        dialog.grab(); // paints, which sets the shape
        QTEST(dialog.mask().contains(pixel), "inside");
    }

    // Escape is swallowed while the close button is disabled, else it closes without a close
    // event.
    void escape_data()
    {
        QTest::addColumn<bool>("closeEnabled");
        QTest::newRow("enabled") << true;
        QTest::newRow("disabled") << false;
    }
    void escape()
    {
        QFETCH(bool, closeEnabled);
        ExtendDialog dialog(nullptr, Qt::WindowCloseButtonHint);
        QSignalSpy closed(&dialog, &ExtendDialog::dlgCloseEvent);
        dialog.EnableCloseButton(closeEnabled);
        dialog.show();
        LogCapture log;
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QCOMPARE(dialog.isVisible(), !closeEnabled);
        QCOMPARE(closed.count(), 0);
        QCOMPARE(log.contains("../../src/core/ExtendDialog/ExtendDialog, keyPressEvent : Escape "
                              "key pressed"),
                 !closeEnabled);
    }
};

QTEST_MAIN(tst_ExtendDialog)
#include "tst_extenddialog.moc"
