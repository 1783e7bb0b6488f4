#pragma once

#include "scene/gl/GlOwned.h"

#include <QMatrix4x4>

#include <map>
#include <memory>
#include <set>
#include <vector>

class QOpenGLShaderProgram;
struct SceneFrame;

// One depth map per projecting projector, seen from its lens: every surface and every other
// body in its frustum casts a shadow. A map is drawn again only when the projector or a
// caster in its frustum changed. At most `residentLimit` maps are kept; projectors beyond
// share one map drawn right before their light, so memory does not grow with their number.
class SceneShadowPass
{
public:
    SceneShadowPass();
    ~SceneShadowPass();
    // False when the programs of the depth range could not be built.
    bool initialize();

    // Draws the kept maps that are out of date; false when a map could not be made (the
    // frame then goes without projection).
    bool update(SceneFrame &frame);
    // The depth map of a projecting projector, drawn now into the shared map when it is not
    // kept; `drewShared` tells the caller that the GL state was changed.
    GLuint depthTexture(SceneFrame &frame, int projector, bool *drewShared);
    // The least and greatest depth over squares of the map, a level per square size; of the
    // map depthTexture() gave last for this projector.
    GLuint rangeTexture(int projector) const;
    QMatrix4x4 shadowMatrix(int projector) const;

    void setResidentLimit(int maps) { m_residentLimit = std::max(0, maps); }
    void setCaching(bool on) { m_caching = on; }
    int residentCount() const { return int(m_maps.size()); }

    void keepOnly(const std::set<int> &projectors);
    void clear();

private:
    // What a map was drawn from: the lens and every caster inside its frustum.
    struct Caster {
        int index;
        quint64 meshRevision;
        QMatrix4x4 world;
        bool operator==(const Caster &) const = default;
    };
    struct ShadowMap {
        GlFramebuffer fbo;
        GlTexture depth;
        GlTexture range;
        std::vector<GlFramebuffer> rangeLevels;
        QMatrix4x4 matrix;
        std::vector<Caster> casters;
        bool valid = false;
    };
    bool ensureMap(QOpenGLExtraFunctions *f, ShadowMap &map);
    std::vector<Caster> castersOf(const SceneFrame &frame, int projector) const;
    void drawMap(SceneFrame &frame, int projector, ShadowMap &map, const std::vector<Caster> &casters);
    bool ensureRange(QOpenGLExtraFunctions *f, ShadowMap &map);
    void buildRange(SceneFrame &frame, ShadowMap &map);

    std::unique_ptr<QOpenGLShaderProgram> m_rangeFromDepth, m_rangeFromRange;

    std::map<int, ShadowMap> m_maps;
    ShadowMap m_shared;
    int m_residentLimit = 8;
    bool m_caching = true;
};
