#include "ExtendDialog.h"
#include "LogCapture.h"
#include "TestFiles.h"
#include "TitleBar.h"

#include <QBitmap>
#include <QFrame>
#include <QPainter>
#include <QSignalSpy>
#include <QtTest>

namespace {

const QString kSource = QStringLiteral("../../src/core/ExtendDialog/ExtendDialog, ");

} // namespace

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
        QCOMPARE(dialog.GetTileBar()->size(), QSize(297, 24));
        dialog.changeSize(QSize(100, 50)); // a content size: the border comes on top
        QCOMPARE(dialog.size(), QSize(106, 82));
        QVERIFY(dialog.findChild<QFrame *>("Core_ExtendDialogFrame"));
        QVERIFY(!dialog.GetTileBar()->findChild<QWidget *>("Core_ButtonClose")->isHidden());
        QVERIFY(dialog.GetTileBar()->findChild<QWidget *>("Core_ButtonMinimize")->isHidden());
    }

    void cornerMask_data()
    {
        QTest::addColumn<QPoint>("pixel");
        QTest::addColumn<bool>("inside");
        QTest::newRow("top left corner") << QPoint(0, 0) << false;
        QTest::newRow("top left diagonal") << QPoint(1, 1) << false;
        QTest::newRow("inside the rounding") << QPoint(7, 7) << true;
        QTest::newRow("top right corner") << QPoint(299, 0) << false;
        QTest::newRow("left of top right square") << QPoint(292, 0) << true;
        QTest::newRow("bottom right diagonal") << QPoint(298, 198) << false;
    }
    void cornerMask()
    {
        QFETCH(QPoint, pixel);
        QFETCH(bool, inside);
        ExtendDialog dialog;
        dialog.resize(300, 200);
        dialog.grab(); // paints, which sets the shape
        QCOMPARE(dialog.mask().contains(pixel), inside);
    }

    // A bitmap that cannot be read leaves the previous shape; without any, no mask at all.
    void maskBitmap_data()
    {
        QTest::addColumn<bool>("loadValidFirst");
        QTest::newRow("valid, then missing") << true;
        QTest::newRow("missing only") << false;
    }
    void maskBitmap()
    {
        QFETCH(bool, loadValidFirst);
        ExtendDialog dialog(nullptr, {}, ExtendDialog::WIDGET_TYPE_NORMAL, true);
        QVERIFY(!dialog.findChild<QFrame *>("Core_ExtendDialogFrame"));
        dialog.resize(300, 200);
        const QRect shape(10, 20, 100, 50);
        QBitmap bitmap(300, 200);
        bitmap.fill(Qt::color0);
        QPainter(&bitmap).fillRect(shape, Qt::color1);
        const QString path = TestFiles::appDir() + "/mask.bmp";
        QVERIFY(bitmap.save(path, "BMP"));
        if (loadValidFirst)
            dialog.LoadMaskBitmap(path);
        dialog.grab();
        LogCapture log;
        dialog.LoadMaskBitmap(TestFiles::appDir() + "/missing.bmp");
        dialog.grab();
        QCOMPARE(dialog.mask(), loadValidFirst ? QRegion(shape) : QRegion());
        QVERIFY(log.texts().indexOf(QRegularExpression(
                    "^" + kSource + "LoadMaskBitmap : NULL_POINTER LINE \\d+$")) >= 0);
        QCOMPARE(log.texts().filter("paintEvent : NULL_POINTER LINE").isEmpty(), loadValidFirst);
    }

    // Escape and Alt-closing are refused while the close button is disabled; Escape rejects
    // without a close event, a close request emits dlgCloseEvent().
    void keyboardGuard_data()
    {
        QTest::addColumn<bool>("closeEnabled");
        QTest::addColumn<bool>("escape"); // Escape, or a close request
        QTest::addColumn<bool>("altHeld");
        QTest::newRow("escape, enabled") << true << true << false;
        QTest::newRow("escape, disabled") << false << true << false;
        QTest::newRow("alt close, enabled") << true << false << true;
        QTest::newRow("alt close, disabled") << false << false << true;
        QTest::newRow("own close, disabled") << false << false << false;
    }
    void keyboardGuard()
    {
        QFETCH(bool, closeEnabled);
        QFETCH(bool, escape);
        QFETCH(bool, altHeld);
        const bool staysOpen = !closeEnabled && (escape || altHeld);
        ExtendDialog dialog(nullptr, Qt::WindowCloseButtonHint);
        QSignalSpy closed(&dialog, &ExtendDialog::dlgCloseEvent);
        dialog.EnableCloseButton(closeEnabled);
        dialog.show();
        QCOMPARE(QWidget::keyboardGrabber() == &dialog, !closeEnabled);
        LogCapture log;
        if (altHeld)
            QTest::keyPress(&dialog, Qt::Key_Alt, Qt::AltModifier);
        if (escape)
            QTest::keyClick(&dialog, Qt::Key_Escape);
        else
            dialog.close();
        if (altHeld)
            QTest::keyRelease(&dialog, Qt::Key_Alt);
        QCOMPARE(dialog.isVisible(), staysOpen);
        QCOMPARE(closed.count(), int(!escape && !staysOpen));
        QCOMPARE(log.contains(kSource + "keyPressEvent : Escape key pressed"),
                 escape && !closeEnabled);
        QCOMPARE(log.contains(kSource + "closeEvent : close event ignored"),
                 altHeld && !closeEnabled);
    }
};

QTEST_MAIN(tst_ExtendDialog)
#include "tst_extenddialog.moc"
