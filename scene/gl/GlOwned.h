#pragma once

#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QPointer>
#include <QSize>

#include <utility>

// One GL object name that frees itself. Move-only. The name is deleted only while the
// context that made it is current; a context that is gone took its objects with it, and a
// different current context must not be handed a name it does not own.
template <typename Kind>
class GlOwned
{
public:
    GlOwned() = default;
    ~GlOwned() { reset(); }
    GlOwned(const GlOwned &) = delete;
    GlOwned &operator=(const GlOwned &) = delete;
    GlOwned(GlOwned &&other) noexcept
        : m_f(other.m_f)
        , m_context(std::move(other.m_context))
        , m_name(std::exchange(other.m_name, 0))
    {
    }
    GlOwned &operator=(GlOwned &&other) noexcept
    {
        if (this != &other) {
            reset();
            m_f = other.m_f;
            m_context = std::move(other.m_context);
            m_name = std::exchange(other.m_name, 0);
        }
        return *this;
    }

    // A fresh name in the current context.
    static GlOwned create(QOpenGLExtraFunctions *f)
    {
        GlOwned owned;
        owned.m_f = f;
        owned.m_context = QOpenGLContext::currentContext();
        Kind::make(f, &owned.m_name);
        return owned;
    }

    GLuint id() const { return m_name; }
    explicit operator bool() const { return m_name != 0; }

    void reset()
    {
        if (m_name && m_f && m_context && QOpenGLContext::currentContext() == m_context)
            Kind::free(m_f, m_name);
        m_name = 0;
    }

private:
    QOpenGLExtraFunctions *m_f = nullptr;
    QPointer<QOpenGLContext> m_context;
    GLuint m_name = 0;
};

struct GlTextureKind {
    static void make(QOpenGLExtraFunctions *f, GLuint *name) { f->glGenTextures(1, name); }
    static void free(QOpenGLExtraFunctions *f, GLuint name) { f->glDeleteTextures(1, &name); }
};
struct GlBufferKind {
    static void make(QOpenGLExtraFunctions *f, GLuint *name) { f->glGenBuffers(1, name); }
    static void free(QOpenGLExtraFunctions *f, GLuint name) { f->glDeleteBuffers(1, &name); }
};
struct GlFramebufferKind {
    static void make(QOpenGLExtraFunctions *f, GLuint *name) { f->glGenFramebuffers(1, name); }
    static void free(QOpenGLExtraFunctions *f, GLuint name) { f->glDeleteFramebuffers(1, &name); }
};
struct GlVertexArrayKind {
    static void make(QOpenGLExtraFunctions *f, GLuint *name) { f->glGenVertexArrays(1, name); }
    static void free(QOpenGLExtraFunctions *f, GLuint name) { f->glDeleteVertexArrays(1, &name); }
};

using GlTexture = GlOwned<GlTextureKind>;
using GlBuffer = GlOwned<GlBufferKind>;
using GlFramebuffer = GlOwned<GlFramebufferKind>;
using GlVertexArray = GlOwned<GlVertexArrayKind>;

// An empty 2D texture, clamped at the edges.
GlTexture makeGlTexture(QOpenGLExtraFunctions *f, GLenum internalFormat, GLenum format, GLenum type, const QSize &size,
                        GLenum filter);
// Whether the framebuffer can be drawn to; leaves framebuffer 0 bound.
bool glFramebufferComplete(QOpenGLExtraFunctions *f, GLuint fbo);
// Uploads 8-bit rows (top row first) into `texture`, making it when empty; linear filtering,
// mipmaps on request.
void uploadGlPlane(QOpenGLExtraFunctions *f, GlTexture &texture, GLenum internalFormat, GLenum format, int width,
                   int height, const void *data, bool mipmaps);
