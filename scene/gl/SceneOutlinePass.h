#pragma once

#include "scene/gl/GlOwned.h"

#include <memory>

class QOpenGLShaderProgram;
struct SceneFrame;

// The selection outline: the selected objects' silhouette and their visible part as two
// masks, then one full-screen draw that rims the silhouette and shades the hidden part.
class SceneOutlinePass
{
public:
    SceneOutlinePass();
    ~SceneOutlinePass();
    bool initialize();
    bool available() const { return m_mask && m_outline; }

    bool resize(QOpenGLExtraFunctions *f, const QSize &size, GLuint sceneDepth);
    void releaseTargets();

    void draw(SceneFrame &frame);

private:
    std::unique_ptr<QOpenGLShaderProgram> m_mask, m_outline;
    GlFramebuffer m_silhouetteFbo, m_visibleFbo;
    GlTexture m_silhouette, m_silhouetteDepth, m_visible;
    bool m_targetsOk = false;
};
