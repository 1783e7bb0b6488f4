#pragma once

#include <QProxyStyle>

// The program's look over "Fusion": a dark palette that suits judging projected
// images, slightly roomier menus and tool tips that do not linger.
class VantreoProxyStyle : public QProxyStyle
{
    Q_OBJECT

public:
    VantreoProxyStyle();

    QPalette standardPalette() const override;
    void polish(QPalette &palette) override;
    using QProxyStyle::polish;
    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;
};
