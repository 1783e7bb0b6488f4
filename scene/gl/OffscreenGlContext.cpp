#include "scene/gl/OffscreenGlContext.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QSurfaceFormat>

QSurfaceFormat sceneSurfaceFormat()
{
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(24);
    format.setStencilBufferSize(8);
    return format;
}

bool glContextMeetsSceneRequirements(const QOpenGLContext *context, QString *error)
{
    if (!context || !context->isValid()) {
        if (error)
            *error = QStringLiteral("No OpenGL context could be created.");
        return false;
    }
    if (context->isOpenGLES()) {
        if (error)
            *error = QStringLiteral("The 3D view needs desktop OpenGL 3.3; only OpenGL ES is available.");
        return false;
    }
    const QSurfaceFormat format = context->format();
    if (format.version() < qMakePair(3, 3)) {
        if (error)
            *error = QStringLiteral("The 3D view needs OpenGL 3.3; this system offers %1.%2.")
                         .arg(format.majorVersion())
                         .arg(format.minorVersion());
        return false;
    }
    return true;
}

OffscreenGlContext::OffscreenGlContext() = default;

OffscreenGlContext::~OffscreenGlContext()
{
    if (m_context && QOpenGLContext::currentContext() == m_context.get())
        m_context->doneCurrent();
    m_context.reset();
    m_surface.reset();
}

bool OffscreenGlContext::create(QString *error)
{
    m_context = std::make_unique<QOpenGLContext>();
    m_context->setFormat(sceneSurfaceFormat());
    if (!m_context->create()) {
        m_context.reset();
        if (error)
            *error = QStringLiteral("No OpenGL 3.3 context could be created (no display or no GL driver).");
        return false;
    }
    m_surface = std::make_unique<QOffscreenSurface>();
    m_surface->setFormat(m_context->format());
    m_surface->create();
    if (!m_surface->isValid()) {
        m_context.reset();
        m_surface.reset();
        if (error)
            *error = QStringLiteral("No off-screen OpenGL surface could be created.");
        return false;
    }
    if (!m_context->makeCurrent(m_surface.get())) {
        if (error)
            *error = QStringLiteral("The OpenGL context could not be made current.");
        m_context.reset();
        m_surface.reset();
        return false;
    }
    if (!glContextMeetsSceneRequirements(m_context.get(), error)) {
        m_context->doneCurrent();
        m_context.reset();
        m_surface.reset();
        return false;
    }
    return true;
}

bool OffscreenGlContext::makeCurrent()
{
    return m_context && m_surface && m_context->makeCurrent(m_surface.get());
}

void OffscreenGlContext::doneCurrent()
{
    if (m_context)
        m_context->doneCurrent();
}

bool OffscreenGlContext::isValid() const
{
    return m_context && m_context->isValid() && m_surface && m_surface->isValid();
}

QString OffscreenGlContext::rendererDescription() const
{
    if (!m_context || QOpenGLContext::currentContext() != m_context.get())
        return {};
    QOpenGLFunctions *f = m_context->functions();
    return QStringLiteral("%1 | %2")
        .arg(QString::fromLatin1(reinterpret_cast<const char *>(f->glGetString(GL_RENDERER))),
             QString::fromLatin1(reinterpret_cast<const char *>(f->glGetString(GL_VERSION))));
}
