#ifndef LINKDECK_LDKSTYLE_H
#define LINKDECK_LDKSTYLE_H

#include "CoreGlobal.h"

#include <QProxyStyle>

class QPixmap;

// The application style: the Windows style, with scroll bars painted entirely from two skin
// images (buttons and groove in one, the slider in the other) and metrics that fit them.
class CORE_EXPORT LDKStyle : public QProxyStyle
{
    Q_OBJECT

public:
    LDKStyle();
    ~LDKStyle() override;

    int pixelMetric(QStyle::PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    int styleHint(QStyle::StyleHint hint, const QStyleOption *option = nullptr,
                  const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;
    void drawComplexControl(QStyle::ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget = nullptr) const override;
    void drawLDKScrollBar(const QStyleOptionComplex *option, QPainter *painter) const;

private:
    void drawVerticalScrollBar(const QStyleOptionComplex *option, QPainter *painter) const;
    void drawHorizontalScrollBar(const QStyleOptionComplex *option, QPainter *painter) const;

    QPixmap *background; // arrow buttons and groove, vertical as stored
    QPixmap *handle;     // the slider, vertical as stored
};

// A Windows style for single widgets: only disabled text is drawn without etching.
class CORE_EXPORT WinClassic : public QProxyStyle
{
    Q_OBJECT

public:
    WinClassic();

    int styleHint(QStyle::StyleHint hint, const QStyleOption *option = nullptr,
                  const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;
};

#endif // LINKDECK_LDKSTYLE_H
