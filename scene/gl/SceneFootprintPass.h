#pragma once

#include "scene/GuideObject.h"
#include "scene/LensModel.h"
#include "scene/gl/GlOwned.h"

#include <QMatrix4x4>
#include <QVector3D>
#include <QVector>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

class QOpenGLShaderProgram;
struct SceneFrame;

// Pixel footprint: a map per projector of millimetres per projector pixel (drawn in the
// projector's own image), then the heat map of it laid over the surfaces in view. A map is
// as large as the projector's image, so at most `residentLimit` are kept; projectors beyond
// keep only their range and label points and draw their map into one shared target right
// before their heat map, so memory does not grow with their number.
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

    // The map of a projector as drawn last, rows following v; empty when not computed or
    // not kept.
    QVector<float> values(int projector, QSize *size) const;
    bool range(int projector, double *minimum, double *maximum) const;
    // Surface points of a 3 × 3 grid over the projector's image and their values.
    std::vector<std::pair<QVector3D, double>> labelSamples(int projector) const;

    // A forced change redraws every map.
    void invalidate();
    void setCaching(bool on) { m_caching = on; }
    void setResidentLimit(int maps) { m_residentLimit = std::max(0, maps); }
    int residentCount() const { return int(m_targets.size()); }
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
    // What every heated projector keeps, small whatever its resolution.
    struct FootprintResult {
        QSize size;
        bool valid = false;
        double rangeMin = 0.0, rangeMax = 0.0;
        std::vector<std::pair<QVector3D, double>> labelSamples;
        Source source;
    };
    // The GL map itself and its values, kept for the first projectors only.
    struct FootprintTarget {
        GlFramebuffer fbo;
        GlTexture texture, depth;
        QSize size;
        QVector<float> values;
        int holds = -1; // the projector whose map it holds now
    };
    bool ensureTarget(QOpenGLExtraFunctions *f, FootprintTarget &target, const QSize &size);
    Source sourceOf(const SceneFrame &frame, int p) const;
    bool update(SceneFrame &frame, int p, bool resident);
    bool drawShared(SceneFrame &frame, int p);
    void drawMap(SceneFrame &frame, int p, FootprintTarget &target, const FootprintResult &result);
    void readBack(SceneFrame &frame, int p, FootprintResult &result, QVector<float> &values);
    bool surfacePoint(const SceneFrame &frame, const Source &source, const vg::scene::LensRay &ray,
                      Eigen::Vector3d *point) const;
    void beginHeatmaps(SceneFrame &frame);
    void drawHeatmaps(SceneFrame &frame);

    std::unique_ptr<QOpenGLShaderProgram> m_metric, m_heatmap;
    std::map<int, FootprintResult> m_results;
    std::map<int, FootprintTarget> m_targets;
    FootprintTarget m_shared;
    int m_residentLimit = 8;
    bool m_caching = true;
    bool m_loggedMetricMissing = false;
    bool m_loggedHeatmapMissing = false;
};
