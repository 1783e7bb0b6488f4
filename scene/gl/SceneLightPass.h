#pragma once

#include "scene/gl/GlOwned.h"

#include <QRect>

#include <memory>

class QOpenGLShaderProgram;
class SceneShadowPass;
struct SceneFrame;

// Projection light and coverage: each projector adds its picture, shadowed, onto the visible
// surfaces inside its frustum, into two view-sized float targets that share the scene's depth.
class SceneLightPass
{
public:
    SceneLightPass();
    ~SceneLightPass();
    bool initialize();
    bool available() const { return bool(m_projection); }
    bool nv12Available() const { return bool(m_projectionNv12); }

    // (Re)makes the targets for a new view size; false when they cannot be drawn to.
    bool resize(QOpenGLExtraFunctions *f, const QSize &size, GLuint sceneDepth);
    bool targetsReady() const { return m_targetsOk; }
    void releaseTargets();

    void draw(SceneFrame &frame, SceneShadowPass &shadows);

    GLuint lightTexture() const { return m_light.id(); }
    GLuint coverageTexture() const { return m_coverage.id(); }
    // The screen rectangles (GL rows) the last draw could light, joined.
    QRect litArea() const { return m_litArea; }

private:
    void beginAccumulation(SceneFrame &frame, bool clear);

    std::unique_ptr<QOpenGLShaderProgram> m_projection, m_projectionNv12;
    GlFramebuffer m_fbo;
    GlTexture m_light, m_coverage;
    bool m_targetsOk = false;
    QRect m_litArea;
};

// The light and coverage laid over the shaded scene.
class SceneCompositePass
{
public:
    SceneCompositePass();
    ~SceneCompositePass();
    bool initialize();
    bool available() const { return bool(m_program); }
    void draw(SceneFrame &frame, const SceneLightPass &light);

private:
    std::unique_ptr<QOpenGLShaderProgram> m_program;
};
