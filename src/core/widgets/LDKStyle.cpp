#include "LDKStyle.h"

#include "WindowsBaseStyle.h"

#include <QPainter>
#include <QPixmap>
#include <QStyleOptionComplex>
#include <QTransform>
#include <QVector>

namespace {

const int kImageWidth = 13; // both skin images, vertical as stored
const int kButtonSize = 13;
const int kCapSize = 5;
const int kHandleBody = 90;      // rows 5 to 94 of the handle image
const int kHandleBottomCap = 95; // first row of the bottom cap
const int kSliderMinimum = 15;

// Every style instance loads its own images and they stay for the life of the process, even
// after the application replaced the style on a skin change; they are kept on record here.
QVector<QPixmap *> &skinImages()
{
    static QVector<QPixmap *> *images = new QVector<QPixmap *>;
    return *images;
}

QPixmap *loadSkinImage(const QString &path)
{
    QPixmap *image = new QPixmap(path);
    skinImages().append(image);
    return image;
}

struct ScrollBarRects
{
    QRect groove, slider, addLine, subLine, addPage, subPage;
};

ScrollBarRects scrollBarRects(const QStyle *style, const QStyleOptionComplex *option)
{
    ScrollBarRects rects;
    const auto rect = [&](QStyle::SubControl control) {
        return style->subControlRect(QStyle::CC_ScrollBar, option, control, nullptr);
    };
    rects.groove = rect(QStyle::SC_ScrollBarGroove);
    rects.slider = rect(QStyle::SC_ScrollBarSlider);
    rects.addLine = rect(QStyle::SC_ScrollBarAddLine);
    rects.subLine = rect(QStyle::SC_ScrollBarSubLine);
    rects.addPage = rect(QStyle::SC_ScrollBarAddPage);
    rects.subPage = rect(QStyle::SC_ScrollBarSubPage);
    return rects;
}

} // namespace

LDKStyle::LDKStyle()
    : QProxyStyle(createWindowsBaseStyle())
    // Relative to the current directory, as the skins have always been installed.
    , background(loadSkinImage(QStringLiteral("./skin/default/images/scrollbar_background.png")))
    , handle(loadSkinImage(QStringLiteral("./skin/default/images/scrollbar_handle.png")))
{}

LDKStyle::~LDKStyle() = default;

int LDKStyle::pixelMetric(QStyle::PixelMetric metric, const QStyleOption *option,
                          const QWidget *widget) const
{
    if (metric == PM_ScrollBarExtent)
        return kImageWidth;
    if (metric == PM_ScrollBarSliderMin)
        return kSliderMinimum;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

int LDKStyle::styleHint(QStyle::StyleHint hint, const QStyleOption *option, const QWidget *widget,
                        QStyleHintReturn *returnData) const
{
    if (isEtchDisabledTextHint(hint))
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

void LDKStyle::drawComplexControl(QStyle::ComplexControl control, const QStyleOptionComplex *option,
                                  QPainter *painter, const QWidget *widget) const
{
    if (control == CC_ScrollBar) {
        drawLDKScrollBar(option, painter);
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void LDKStyle::drawLDKScrollBar(const QStyleOptionComplex *option, QPainter *painter) const
{
    painter->save();
    painter->setClipRect(option->rect, Qt::IntersectClip);
    const QRect &r = option->rect;
    // A square bar counts as horizontal.
    if (r.right() - r.left() < r.bottom() - r.top())
        drawVerticalScrollBar(option, painter);
    else
        drawHorizontalScrollBar(option, painter);
    painter->restore();
}

void LDKStyle::drawVerticalScrollBar(const QStyleOptionComplex *option, QPainter *painter) const
{
    const ScrollBarRects rects = scrollBarRects(this, option);
    const int height = background->height();
    painter->drawPixmap(rects.addLine, *background,
                        QRect(0, height - kButtonSize, kImageWidth, kButtonSize));
    // The sub-line button's place in the widget doubles as its place in the image.
    painter->drawPixmap(rects.subLine, *background, rects.subLine);
    painter->drawPixmap(rects.groove, *background,
                        QRect(0, kButtonSize, kImageWidth, height - 2 * kButtonSize));
    if (!handle)
        return;
    // The slider always starts at the widget's left edge.
    const QRect &slider = rects.slider;
    painter->drawPixmap(QRect(0, slider.top(), kImageWidth, kCapSize), *handle,
                        QRect(0, 0, kImageWidth, kCapSize));
    painter->drawPixmap(
        QRect(0, slider.top() + kCapSize, kImageWidth, slider.bottom() - 9 - slider.top()), *handle,
        QRect(0, kCapSize, kImageWidth, kHandleBody));
    painter->drawPixmap(QRect(0, slider.bottom() - kCapSize, kImageWidth, kCapSize), *handle,
                        QRect(0, kHandleBottomCap, kImageWidth, kCapSize));
}

void LDKStyle::drawHorizontalScrollBar(const QStyleOptionComplex *option, QPainter *painter) const
{
    const ScrollBarRects rects = scrollBarRects(this, option);
    const QTransform turn = QTransform().rotate(-90);
    const QPixmap rotatedBackground = background->transformed(turn, Qt::FastTransformation);
    const int width = rotatedBackground.width();
    painter->drawPixmap(rects.addLine, rotatedBackground,
                        QRect(width - kButtonSize, 0, kButtonSize, kImageWidth));
    painter->drawPixmap(rects.subLine, rotatedBackground, rects.subLine);
    painter->drawPixmap(rects.groove, rotatedBackground,
                        QRect(kButtonSize, 0, width - 2 * kButtonSize, kImageWidth));
    if (!handle)
        return;
    const QPixmap rotatedHandle = handle->transformed(turn, Qt::FastTransformation);
    // The slider always starts at the widget's top edge.
    const QRect &slider = rects.slider;
    painter->drawPixmap(QRect(slider.left(), 0, kCapSize, kImageWidth), rotatedHandle,
                        QRect(0, 0, kCapSize, kImageWidth));
    painter->drawPixmap(
        QRect(slider.left() + kCapSize, 0, slider.right() - 9 - slider.left(), kImageWidth),
        rotatedHandle, QRect(kCapSize, 0, kHandleBody, kImageWidth));
    painter->drawPixmap(QRect(slider.right() - kCapSize, 0, kCapSize, kImageWidth), rotatedHandle,
                        QRect(kHandleBottomCap, 0, kCapSize, kImageWidth));
}
