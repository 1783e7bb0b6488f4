#include "scene/gl/SceneOutlinePass.h"

#include "scene/gl/SceneFrame.h"
#include "scene/gl/SceneGlProgram.h"
#include "scene/gl/SceneShaderSources.h"

#include <QOpenGLShaderProgram>

SceneOutlinePass::SceneOutlinePass() = default;
SceneOutlinePass::~SceneOutlinePass() = default;

bool SceneOutlinePass::initialize()
{
    using namespace SceneShaderSources;
    m_mask = buildSceneProgram(QStringLiteral("selection mask"), depthOnlyVertex(), {}, maskFragment());
    m_outline = buildSceneProgram(QStringLiteral("selection outline"), fullScreenVertex(), {}, outlineFragment(),
                                  {"silhouetteMask", "visibleMask"});
    return available();
}

void SceneOutlinePass::releaseTargets()
{
    m_silhouetteFbo.reset();
    m_visibleFbo.reset();
    m_silhouette.reset();
    m_silhouetteDepth.reset();
    m_visible.reset();
    m_targetsOk = false;
}

bool SceneOutlinePass::resize(QOpenGLExtraFunctions *f, const QSize &size, GLuint sceneDepth)
{
    releaseTargets();
    m_silhouette = makeGlTexture(f, GL_R8, GL_RED, GL_UNSIGNED_BYTE, size, GL_NEAREST);
    m_silhouetteDepth = makeGlTexture(f, GL_DEPTH24_STENCIL8, GL_DEPTH_STENCIL, GL_UNSIGNED_INT_24_8, size, GL_NEAREST);
    m_silhouetteFbo = GlFramebuffer::create(f);
    f->glBindFramebuffer(GL_FRAMEBUFFER, m_silhouetteFbo.id());
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, m_silhouette.id(), 0);
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_TEXTURE_2D, m_silhouetteDepth.id(), 0);
    m_visible = makeGlTexture(f, GL_R8, GL_RED, GL_UNSIGNED_BYTE, size, GL_NEAREST);
    m_visibleFbo = GlFramebuffer::create(f);
    f->glBindFramebuffer(GL_FRAMEBUFFER, m_visibleFbo.id());
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, m_visible.id(), 0);
    // The visible part is tested against the scene's own depth.
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_TEXTURE_2D, sceneDepth, 0);
    m_targetsOk = glFramebufferComplete(f, m_silhouetteFbo.id()) && glFramebufferComplete(f, m_visibleFbo.id());
    f->glBindFramebuffer(GL_FRAMEBUFFER, 0);
    return m_targetsOk;
}

void SceneOutlinePass::draw(SceneFrame &frame)
{
    QVector<int> selected;
    for (int s : frame.settings.selection)
        if (s >= 0 && s < frame.objects.size())
            selected.push_back(s);
    if (selected.isEmpty() || !available() || !m_targetsOk) {
        frame.endPass(frame.stats.outlineMs);
        return;
    }
    QOpenGLExtraFunctions *f = frame.gl();
    const GLenum colorBuffer = GL_COLOR_ATTACHMENT0;
    f->glDisable(GL_BLEND);
    m_mask->bind();
    for (int maskIndex = 0; maskIndex < 2; ++maskIndex) {
        const bool visibleOnly = maskIndex == 1;
        f->glBindFramebuffer(GL_FRAMEBUFFER, visibleOnly ? m_visibleFbo.id() : m_silhouetteFbo.id());
        f->glDrawBuffers(1, &colorBuffer);
        const float zero[4] = {0, 0, 0, 0};
        f->glClearBufferfv(GL_COLOR, 0, zero);
        if (visibleOnly) {
            f->glEnable(GL_DEPTH_TEST);
            f->glDepthFunc(GL_LEQUAL);
            f->glDepthMask(GL_FALSE);
        } else {
            f->glDisable(GL_DEPTH_TEST);
        }
        for (const SceneFrameItem &item : frame.items) {
            if (!selected.contains(item.index) || item.mesh->indexCount == 0)
                continue;
            const QMatrix4x4 mvp = frame.viewProjection * item.world;
            frame.common.setSceneConstants(mvp, QVector4D(1, 0, 0, 0));
            frame.common.drawTriangles(*item.mesh, {&mvp, nullptr});
        }
    }
    f->glDepthMask(GL_TRUE);
    f->glBindFramebuffer(GL_FRAMEBUFFER, frame.sceneFbo);
    f->glDrawBuffers(1, &colorBuffer);
    f->glDisable(GL_DEPTH_TEST);
    f->glEnable(GL_BLEND);
    f->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    m_outline->bind();
    f->glActiveTexture(GL_TEXTURE0);
    f->glBindTexture(GL_TEXTURE_2D, m_silhouette.id());
    f->glActiveTexture(GL_TEXTURE1);
    f->glBindTexture(GL_TEXTURE_2D, m_visible.id());
    f->glActiveTexture(GL_TEXTURE0);
    frame.common.drawFullScreenTriangle();
    frame.endPass(frame.stats.outlineMs);
}
