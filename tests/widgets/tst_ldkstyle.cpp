#include "LDKStyle.h"
#include "TestFiles.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QStyleFactory>
#include <QtTest>

namespace {

const QColor kSubLine(255, 0, 0);
const QColor kGroove(0, 255, 0);
const QColor kAddLine(0, 0, 255);
const QColor kTopCap(255, 255, 0);
const QColor kBody(255, 0, 255);
const QColor kBottomCap(0, 255, 255);
const QColor kUnpainted(128, 128, 128);

// Skin images with one colour per part: the background's top square, groove and bottom square,
// the handle's top cap, body and bottom cap.
void writeSkinImages(const QString &dir)
{
    QDir().mkpath(dir);
    QImage background(13, 60, QImage::Format_RGB32);
    QPainter painter(&background);
    painter.fillRect(0, 0, 13, 13, kSubLine);
    painter.fillRect(0, 13, 13, 34, kGroove);
    painter.fillRect(0, 47, 13, 13, kAddLine);
    painter.end();
    QVERIFY(background.save(dir + "/scrollbar_background.png"));

    QImage handle(13, 100, QImage::Format_RGB32);
    painter.begin(&handle);
    painter.fillRect(0, 0, 13, 5, kTopCap);
    painter.fillRect(0, 5, 13, 90, kBody);
    painter.fillRect(0, 95, 13, 5, kBottomCap);
    painter.end();
    QVERIFY(handle.save(dir + "/scrollbar_handle.png"));
}

QImage renderScrollBar(QStyle *style, Qt::Orientation orientation, const QSize &size)
{
    QScrollBar bar(orientation);
    bar.setStyle(style);
    bar.setRange(0, 100);
    bar.setPageStep(100);
    bar.setValue(0);
    bar.resize(size);
    QImage image(size, QImage::Format_RGB32);
    image.fill(kUnpainted);
    bar.render(&image);
    return image;
}

} // namespace

class tst_LDKStyle : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The style finds its images relative to the current directory.
        QVERIFY(QDir::setCurrent(TestFiles::appDir()));
        writeSkinImages(TestFiles::appDir() + "/skin/default/images");
    }

    void metricsAndHints()
    {
        LDKStyle style;
        QScopedPointer<QStyle> windows(QStyleFactory::create("Windows"));
        QCOMPARE(style.pixelMetric(QStyle::PM_ScrollBarExtent), 13);
        QCOMPARE(style.pixelMetric(QStyle::PM_ScrollBarSliderMin), 15);
        QCOMPARE(style.pixelMetric(QStyle::PM_ButtonMargin),
                 windows->pixelMetric(QStyle::PM_ButtonMargin));
        QCOMPARE(style.styleHint(QStyle::SH_EtchDisabledText), 0);
        QCOMPARE(style.styleHint(QStyle::SH_ScrollBar_MiddleClickAbsolutePosition),
                 windows->styleHint(QStyle::SH_ScrollBar_MiddleClickAbsolutePosition));

        WinClassic classic;
        QCOMPARE(classic.styleHint(QStyle::SH_EtchDisabledText), 0);
        QVERIFY(windows->styleHint(QStyle::SH_EtchDisabledText) != 0);
        QCOMPARE(classic.pixelMetric(QStyle::PM_ScrollBarExtent),
                 windows->pixelMetric(QStyle::PM_ScrollBarExtent));
    }

    void paintsFromSkinImages_data()
    {
        QTest::addColumn<int>("orientation");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QPoint>("subLine");
        QTest::addColumn<QPoint>("addLine");
        QTest::addColumn<QPoint>("groove");
        QTest::addColumn<QPoint>("firstCap");
        QTest::addColumn<QPoint>("body");
        QTest::addColumn<QPoint>("lastCap");
        // Slider spans 13..99 along the bar: caps at 13..17 and 94..98, body from 18.
        QTest::newRow("vertical") << int(Qt::Vertical) << QSize(13, 200) << QPoint(6, 6)
                                  << QPoint(6, 194) << QPoint(6, 150) << QPoint(6, 15)
                                  << QPoint(6, 60) << QPoint(6, 96);
        QTest::newRow("horizontal")
            << int(Qt::Horizontal) << QSize(200, 13) << QPoint(6, 6) << QPoint(194, 6)
            << QPoint(150, 6) << QPoint(15, 6) << QPoint(60, 6) << QPoint(96, 6);
    }
    void paintsFromSkinImages()
    {
        QFETCH(int, orientation);
        QFETCH(QSize, size);
        LDKStyle style;
        const QImage image = renderScrollBar(&style, Qt::Orientation(orientation), size);
        QFETCH(QPoint, subLine);
        QFETCH(QPoint, addLine);
        QFETCH(QPoint, groove);
        QFETCH(QPoint, firstCap);
        QFETCH(QPoint, body);
        QFETCH(QPoint, lastCap);
        QCOMPARE(image.pixelColor(subLine), kSubLine);
        QCOMPARE(image.pixelColor(addLine), kAddLine);
        QCOMPARE(image.pixelColor(groove), kGroove);
        QCOMPARE(image.pixelColor(firstCap), kTopCap);
        QCOMPARE(image.pixelColor(body), kBody);
        QCOMPARE(image.pixelColor(lastCap), kBottomCap);
    }

    void squareBarIsDrawnHorizontally()
    {
        LDKStyle style;
        // A vertical bar as wide as high: the slider is laid along the top edge as in a
        // horizontal bar, and the band below it (the groove) shows the rotated groove image.
        const QImage image = renderScrollBar(&style, Qt::Vertical, QSize(40, 40));
        QCOMPARE(image.pixelColor(2, 6), kTopCap);
        QCOMPARE(image.pixelColor(6, 6), kBody);
        QCOMPARE(image.pixelColor(6, 20), kGroove);
    }

    void missingImagesPaintNothing()
    {
        QTemporaryDir empty;
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(empty.path()));
        LDKStyle style;
        QVERIFY(QDir::setCurrent(previous));
        const QImage image = renderScrollBar(&style, Qt::Vertical, QSize(13, 200));
        for (int y = 0; y < image.height(); y += 7)
            QCOMPARE(image.pixelColor(6, y), kUnpainted);
    }
};

QTEST_MAIN(tst_LDKStyle)
#include "tst_ldkstyle.moc"
