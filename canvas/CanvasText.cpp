#include "canvas/CanvasText.h"

#include "canvas/CanvasGeometry.h"
#include "guide/GuideRenderer.h"

#include <QFontMetricsF>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

// Text sizes are bounded so a hostile scale cannot ask for a gigantic glyph cache.
double boundedPx(double px)
{
    return std::isfinite(px) ? std::clamp(px, 1.0, 2000.0) : 10.0;
}

} // namespace

QFont canvasLabelFont(double pixelSize)
{
    return guideTextFont(boundedPx(pixelSize));
}

QFont canvasTextBoxFont(const CanvasObjectSettings &object)
{
    const double px = boundedPx(object.text_box_font_scale * kTextBoxFontPxPerScale);
    if (object.text_box_bold)
        return guideTextFont(px);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(std::max(1, int(std::lround(px))));
    font.setWeight(QFont::Normal);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QFont canvasCommentFont(const CanvasObjectSettings &object)
{
    return guideTextFont(boundedPx(kCommentFontPx * object.comment_font_scale));
}

double canvasCommentPadding(const CanvasObjectSettings &object)
{
    return boundedPx(kCommentFontPx * object.comment_font_scale) * 0.35;
}

QSizeF canvasTextBlockSize(const QString &text, const QFont &font)
{
    const QFontMetricsF fm(font);
    const QStringList lines = text.split(QLatin1Char('\n'));
    double width = 0;
    for (const QString &line : lines)
        width = std::max(width, fm.horizontalAdvance(line));
    return QSizeF(std::max(width, fm.height() * 0.5), fm.height() * std::max<qsizetype>(1, lines.size()));
}
