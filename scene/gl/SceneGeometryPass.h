#pragma once

#include <memory>

class QOpenGLShaderProgram;
struct SceneFrame;

// Shaded and textured surfaces and the bodies of projectors and cameras: opaque first, then
// see-through surfaces without depth writes.
class SceneGeometryPass
{
public:
    SceneGeometryPass();
    ~SceneGeometryPass();
    // False when not even the flat-colour program compiled.
    bool initialize();
    bool texturedAvailable() const { return bool(m_textured); }
    bool nv12Available() const { return bool(m_texturedNv12); }

    // Clears the scene target and draws into it.
    void draw(SceneFrame &frame);

private:
    std::unique_ptr<QOpenGLShaderProgram> m_color, m_textured, m_texturedOpaque, m_texturedNv12;
};
