#include "LDKStyle.h"
#include "TestFiles.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QtTest>

namespace {

// One colour per part of the skin images, and one for what is left unpainted.
const QRgb kColours[] = {qRgb(255, 0, 0),    qRgb(0, 255, 0),   qRgb(0, 0, 255),
                         qRgb(255, 255, 0),  qRgb(255, 0, 255), qRgb(0, 255, 255),
                         qRgb(128, 128, 128)};
const char kNames[] = "SGATBCU"; // sub-line, groove, add-line, top cap, body, bottom cap

// Bands of the given heights, coloured from firstColour on, 13 pixels wide.
void writeImage(const QString &path, const QList<int> &heights, int firstColour)
{
    int total = 0;
    for (int h : heights)
        total += h;
    QImage image(13, total, QImage::Format_RGB32);
    QPainter painter(&image);
    int y = 0;
    for (int i = 0; i < heights.size(); y += heights[i++])
        painter.fillRect(0, y, 13, heights[i], QColor(kColours[firstColour + i]));
    painter.end();
    QVERIFY(image.save(path));
}

// The parts seen at the points, by their letters.
QString render(QStyle *style, Qt::Orientation orientation, const QSize &size,
               const QList<QPoint> &points)
{
    QScrollBar bar(orientation);
    bar.setStyle(style);
    bar.setRange(0, 100);
    bar.setPageStep(100);
    bar.resize(size);
    QImage image(size, QImage::Format_RGB32);
    image.fill(kColours[6]);
    bar.render(&image);
    QString parts;
    for (const QPoint &p : points)
        parts += kNames[std::find(kColours, kColours + 7, image.pixel(p)) - kColours];
    return parts;
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
        const QString dir = TestFiles::appDir() + "/skin/default/images/";
        QVERIFY(QDir().mkpath(dir));
        writeImage(dir + "scrollbar_background.png", {13, 34, 13}, 0);
        writeImage(dir + "scrollbar_handle.png", {5, 90, 5}, 3);
    }

    // The slider spans 13..99 along the bar: caps at 13..17 and 94..98, the body between.
    void paintsFromSkinImages()
    {
        LDKStyle style;
        const QList<int> along{6, 194, 150, 15, 60, 96};
        QList<QPoint> vertical, horizontal;
        for (int a : along)
            vertical << QPoint(6, a), horizontal << QPoint(a, 6);
        QCOMPARE(render(&style, Qt::Vertical, {13, 200}, vertical), QString("SAGTBC"));
        QCOMPARE(render(&style, Qt::Horizontal, {200, 13}, horizontal), QString("SAGTBC"));
        // A vertical bar as wide as high is laid out as a horizontal one, the groove image rotated.
        QCOMPARE(render(&style, Qt::Vertical, {40, 40}, {{2, 6}, {6, 6}, {6, 20}}), QString("TBG"));
    }
};

QTEST_MAIN(tst_LDKStyle)
#include "tst_ldkstyle.moc"
