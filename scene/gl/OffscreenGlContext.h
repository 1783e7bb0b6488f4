#pragma once

#include <QString>

#include <memory>

class QOpenGLContext;
class QOffscreenSurface;

// An OpenGL 3.3 core context on an off-screen surface, for exports, the command-line tool,
// benchmarks and tests. Rendering goes into framebuffer objects, never the surface itself.
class OffscreenGlContext
{
public:
    OffscreenGlContext();
    ~OffscreenGlContext();
    OffscreenGlContext(const OffscreenGlContext &) = delete;
    OffscreenGlContext &operator=(const OffscreenGlContext &) = delete;

    // Creates the context and makes it current. Must run on the GUI thread.
    bool create(QString *error);
    bool makeCurrent();
    void doneCurrent();
    bool isValid() const;
    QOpenGLContext *context() const { return m_context.get(); }
    // "<renderer> | <version>", for logs and benchmark reports.
    QString rendererDescription() const;

private:
    std::unique_ptr<QOpenGLContext> m_context;
    std::unique_ptr<QOffscreenSurface> m_surface;
};

// True when the context offers what the scene renderer needs (GL 3.3 or newer, desktop GL).
bool glContextMeetsSceneRequirements(const QOpenGLContext *context, QString *error);

// The surface format every scene view asks for.
class QSurfaceFormat;
QSurfaceFormat sceneSurfaceFormat();
