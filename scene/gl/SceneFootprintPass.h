#pragma once

#include "scene/GuideObject.h"
#include "scene/LensModel.h"
#include "scene/gl/GlOwned.h"

#include <QMatrix4x4>
#include <QVector3D>
#include <QVector>

#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

class QOpenGLShaderProgram;
struct SceneFrame;

// Pixel footprint: a map per projector of millimetres per projector pixel (drawn in the
// projector's own image), then the heat map of it laid over the surfaces in view.
class SceneFootprintPass
{
public:
    SceneFootprintPass();
    ~SceneFootprintPass();
    bool initialize();
    bool metricAvailable() const { return bool(m_metric); }
    bool heatmapAvailable() const { return bool(m_heatmap); }

    // Draws the maps that are out of date, then the heat maps (into the scene target).
    void draw(SceneFrame &frame);

    // The map of a projector as drawn last, rows following v; empty when not computed.
    QVector<float> values(int projector, QSize *size) const;
    bool range(int projector, double *minimum, double *maximum) const;
    // Surface points of a 3 × 3 grid over the projector's image and their values.
    std::vector<std::pair<QVector3D, double>> labelSamples(int projector) const;

    // A forced change redraws every map.
    void invalidate();
    void setCaching(bool on) { m_caching = on; }
    void keepOnly(const std::set<int> &projectors);
    void clear();

private:
    // What a map was drawn from: the projector, its lens, and the surfaces in its frustum.
    struct Surface {
        int index;
        quint64 meshRevision;
        QMatrix4x4 world;
        bool operator==(const Surface &) const = default;
    };
    struct Source {
        GuideObject projector;
        QMatrix4x4 lens;
        std::vector<Surface> surfaces;
        bool operator==(const Source &) const = default;
    };
    struct FootprintMap {
        GlFramebuffer fbo;
        GlTexture texture, depth;
        QSize size;
        bool valid = false;
        QVector<float> values;
        double rangeMin = 0.0, rangeMax = 0.0;
        std::vector<std::pair<QVector3D, double>> labelSamples;
        Source source;
    };
    bool ensureTarget(QOpenGLExtraFunctions *f, FootprintMap &map, const QSize &size);
    Source sourceOf(const SceneFrame &frame, int p) const;
    void drawMap(SceneFrame &frame, int p, FootprintMap &map, const QSize &resolution);
    void readBack(SceneFrame &frame, int p, FootprintMap &map, const QSize &resolution);
    bool surfacePoint(const SceneFrame &frame, const Source &source, const vg::scene::LensRay &ray,
                      Eigen::Vector3d *point) const;
    void drawHeatmaps(SceneFrame &frame);

    std::unique_ptr<QOpenGLShaderProgram> m_metric, m_heatmap;
    std::map<int, FootprintMap> m_maps;
    bool m_caching = true;
    bool m_loggedMetricMissing = false;
    bool m_loggedHeatmapMissing = false;
};
