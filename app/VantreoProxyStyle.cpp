#include "app/VantreoProxyStyle.h"

#include <QStyleFactory>

VantreoProxyStyle::VantreoProxyStyle()
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
{
}

QPalette VantreoProxyStyle::standardPalette() const
{
    const QColor window(45, 47, 52);
    const QColor base(32, 34, 38);
    const QColor text(226, 228, 232);
    const QColor disabledText(120, 124, 130);
    // Hints and placeholders stay readable: at least 4.5:1 against the window and the fields.
    const QColor hintText(156, 160, 166);
    const QColor highlight(38, 150, 110);

    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(40, 42, 47));
    palette.setColor(QPalette::ToolTipBase, QColor(24, 26, 29));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, hintText);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, QColor(56, 59, 65));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, QColor(255, 90, 90));
    palette.setColor(QPalette::Light, QColor(72, 75, 82));
    palette.setColor(QPalette::Midlight, QColor(62, 65, 71));
    palette.setColor(QPalette::Mid, QColor(38, 40, 44));
    palette.setColor(QPalette::Dark, QColor(24, 25, 28));
    palette.setColor(QPalette::Shadow, QColor(10, 10, 12));
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(90, 200, 160));
    palette.setColor(QPalette::LinkVisited, QColor(70, 160, 130));
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, disabledText);
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(70, 74, 80));
    return palette;
}

void VantreoProxyStyle::polish(QPalette &palette)
{
    palette = standardPalette();
}

int VantreoProxyStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    switch (metric) {
    case PM_MenuHMargin:
        return 4;
    case PM_MenuVMargin:
        return 4;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int VantreoProxyStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                 QStyleHintReturn *returnData) const
{
    switch (hint) {
    case SH_ToolTip_WakeUpDelay:
        return 500;
    case SH_ToolTip_FallAsleepDelay:
        return 1500;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}
