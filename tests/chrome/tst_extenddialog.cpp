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

// A mask bitmap whose set pixels form the given rectangle of a 300 x 200 image.
QString writeMask(const QString &name, const QRect &shape)
{
    QBitmap bitmap(300, 200);
    bitmap.fill(Qt::color0);
    QPainter painter(&bitmap);
    painter.fillRect(shape, Qt::color1);
    painter.end();
    const QString path = TestFiles::appDir() + QLatin1Char('/') + name;
    bitmap.save(path, "BMP");
    return path;
}

void paint(ExtendDialog &dialog)
{
    dialog.grab();
}

} // namespace

class tst_ExtendDialog : public QObject
{
    Q_OBJECT

private slots:
    // Without a main-frame service: custom chrome, title 29, border 3.
    void defaultsWithoutMainFrame_data()
    {
        QTest::addColumn<bool>("useMask");
        QTest::addColumn<QString>("frameName");
        QTest::newRow("cut corners") << false << QStringLiteral("Core_ExtendDialogFrame");
        QTest::newRow("mask bitmap") << true << QString();
    }
    void defaultsWithoutMainFrame()
    {
        QFETCH(bool, useMask);
        QFETCH(QString, frameName);
        ExtendDialog dialog(nullptr, Qt::WindowCloseButtonHint,
                            ExtendDialog::WIDGET_TYPE_RESIZE_MAIN, useMask);
        QVERIFY(dialog.IsCusTitle());
        QVERIFY(dialog.windowFlags() & Qt::FramelessWindowHint);
        QVERIFY(dialog.GetTileBar());
        auto *pContent = new QWidget;
        dialog.AddMainWidget(pContent);
        QCOMPARE(pContent->pos(), QPoint(3, 29));
        dialog.resize(300, 200);
        dialog.show();
        QCOMPARE(pContent->size(), QSize(294, 168));
        QCOMPARE(dialog.GetTileBar()->size(), QSize(297, 24));
        dialog.changeSize(QSize(100, 50)); // a content size: the border comes on top
        QCOMPARE(dialog.size(), QSize(106, 82));
        QCOMPARE(dialog.findChild<QFrame *>(QString(), Qt::FindDirectChildrenOnly)->objectName(),
                 frameName);
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
        QTest::newRow("beside the corner square") << QPoint(7, 0) << true;
        QTest::newRow("top right corner") << QPoint(299, 0) << false;
        QTest::newRow("left of top right square") << QPoint(292, 0) << true;
        QTest::newRow("bottom left corner") << QPoint(0, 199) << false;
        QTest::newRow("bottom right diagonal") << QPoint(298, 198) << false;
        QTest::newRow("middle") << QPoint(150, 100) << true;
    }
    void cornerMask()
    {
        QFETCH(QPoint, pixel);
        QFETCH(bool, inside);
        ExtendDialog dialog;
        dialog.resize(300, 200);
        paint(dialog);
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
        dialog.resize(300, 200);
        const QRect shape(10, 20, 100, 50);
        if (loadValidFirst)
            dialog.LoadMaskBitmap(writeMask(QStringLiteral("mask.bmp"), shape));
        paint(dialog);
        LogCapture log;
        dialog.LoadMaskBitmap(TestFiles::appDir() + QStringLiteral("/missing.bmp"));
        paint(dialog);
        QCOMPARE(dialog.mask(), loadValidFirst ? QRegion(shape) : QRegion());
        const QRegularExpression nullLine("^" + QRegularExpression::escape(kSource) +
                                          "LoadMaskBitmap : NULL_POINTER LINE \\d+$");
        QVERIFY(log.texts().indexOf(nullLine) >= 0);
        QCOMPARE(log.texts().filter("paintEvent : NULL_POINTER LINE").isEmpty(), loadValidFirst);
    }

    // Escape and Alt-closing while the close button is disabled.
    void keyboardGuard_data()
    {
        QTest::addColumn<bool>("closeEnabled");
        QTest::addColumn<bool>("escape"); // Escape, or a close request
        QTest::addColumn<bool>("altHeld");
        QTest::addColumn<bool>("staysOpen");
        QTest::addColumn<int>("closeSignals");
        QTest::newRow("escape, enabled") << true << true << false << false << 0;
        QTest::newRow("escape, disabled") << false << true << false << true << 0;
        QTest::newRow("alt close, enabled") << true << false << true << false << 1;
        QTest::newRow("alt close, disabled") << false << false << true << true << 0;
        QTest::newRow("own close, disabled") << false << false << false << false << 1;
    }
    void keyboardGuard()
    {
        QFETCH(bool, closeEnabled);
        QFETCH(bool, escape);
        QFETCH(bool, altHeld);
        QFETCH(bool, staysOpen);
        QFETCH(int, closeSignals);
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
        QCOMPARE(closed.count(), closeSignals);
        if (escape && !closeEnabled)
            QVERIFY(log.contains(kSource + "keyPressEvent : Escape key pressed"));
        if (altHeld && !closeEnabled)
            QVERIFY(log.contains(kSource + "closeEvent : close event ignored"));
        QVERIFY(!dialog.isVisible() || QWidget::keyboardGrabber() == &dialog || closeEnabled);
    }

    void staysOnTopKeepsFrameless()
    {
        ExtendDialog dialog;
        LogCapture log;
        dialog.setWindowFlags(Qt::WindowStaysOnTopHint | Qt::WindowMinimizeButtonHint);
        QVERIFY(dialog.windowFlags() & Qt::FramelessWindowHint);
        QVERIFY(dialog.windowFlags() & Qt::WindowStaysOnTopHint);
        QVERIFY(log.contains(kSource + "setWindowFlags : Qt::WindowStaysOnTopHint set"));
        QVERIFY(!dialog.GetTileBar()->findChild<QWidget *>("Core_ButtonMinimize")->isHidden());
    }
};

QTEST_MAIN(tst_ExtendDialog)
#include "tst_extenddialog.moc"
