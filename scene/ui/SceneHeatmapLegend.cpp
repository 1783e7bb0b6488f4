#include "scene/ui/SceneHeatmapLegend.h"

#include "scene/LensModel.h"

#include <QFontMetrics>
#include <QLinearGradient>
#include <QPainter>

namespace {

constexpr int kBoxWidth = 260;
constexpr int kBoxHeight = 64;
constexpr int kMargin = 10;

QColor heatColour(double t)
{
    const vg::scene::HeatColor c = vg::scene::heatmapColor(0.5 + t, 0.5, 1.5, 1.0);
    return QColor::fromRgbF(c.r, c.g, c.b);
}

} // namespace

QString SceneHeatmapLegendPainter::title(const SceneHeatmapLegend &legend)
{
    return tr("Pixel footprint: %1").arg(legend.projectorName);
}

QString SceneHeatmapLegendPainter::minimumText(const SceneHeatmapLegend &legend)
{
    return vg::scene::footprintLabel(legend.minimum, legend.metric);
}

QString SceneHeatmapLegendPainter::maximumText(const SceneHeatmapLegend &legend)
{
    return vg::scene::footprintLabel(legend.maximum, legend.metric);
}

QRect SceneHeatmapLegendPainter::boxRect(const QRect &view)
{
    // Bottom right: the frame rate sits bottom left, help and view name at the top.
    return QRect(view.right() - kMargin - kBoxWidth + 1, view.bottom() - kMargin - kBoxHeight + 1, kBoxWidth,
                 kBoxHeight);
}

QRect SceneHeatmapLegendPainter::barRect(const QRect &box)
{
    return QRect(box.left() + 10, box.top() + 24, box.width() - 20, 14);
}

void SceneHeatmapLegendPainter::paint(QPainter &painter, const QRect &view, const SceneHeatmapLegend &legend)
{
    if (!legend.visible)
        return;
    const QRect box = boxRect(view);
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 170));
    painter.drawRoundedRect(box, 5, 5);

    const QRect bar = barRect(box);
    QLinearGradient gradient(bar.topLeft(), bar.topRight());
    for (double t : {0.0, 0.25, 0.5, 0.75, 1.0})
        gradient.setColorAt(t, heatColour(t));
    painter.fillRect(bar, gradient);

    QFont font = painter.font();
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(QColor(240, 240, 240));
    const QFontMetrics metrics(font);
    painter.drawText(QRect(box.left() + 10, box.top() + 4, box.width() - 20, 18), Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(title(legend), Qt::ElideRight, box.width() - 20));
    const QRect labels(bar.left(), bar.bottom() + 2, bar.width(), box.bottom() - bar.bottom() - 4);
    painter.drawText(labels, Qt::AlignLeft | Qt::AlignVCenter, minimumText(legend));
    painter.drawText(labels, Qt::AlignRight | Qt::AlignVCenter, maximumText(legend));
    painter.restore();
}
