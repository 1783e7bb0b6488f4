#pragma once

#include <QCoreApplication>
#include <QRect>
#include <QString>

class QPainter;

// The key to a projector's pixel-footprint heat map: which projector, the metric and the
// range its colours span (low values green, through yellow, to red at the top).
struct SceneHeatmapLegend {
    bool visible = false;
    QString projectorName;
    int metric = 0;
    double minimum = 0.0;
    double maximum = 0.0;
};

class SceneHeatmapLegendPainter
{
    Q_DECLARE_TR_FUNCTIONS(SceneHeatmapLegendPainter)

public:
    // "Pixel footprint: Projector 1"
    static QString title(const SceneHeatmapLegend &legend);
    // The labels at the two ends of the bar, with the metric's unit ("2.50 mm/px").
    static QString minimumText(const SceneHeatmapLegend &legend);
    static QString maximumText(const SceneHeatmapLegend &legend);
    // Where the legend box goes in a view: its bottom-right corner.
    static QRect boxRect(const QRect &view);
    // The colour bar inside the box (left: minimum, right: maximum).
    static QRect barRect(const QRect &box);
    static void paint(QPainter &painter, const QRect &view, const SceneHeatmapLegend &legend);
};
