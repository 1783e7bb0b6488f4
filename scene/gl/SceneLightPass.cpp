#include "scene/gl/SceneLightPass.h"

#include "scene/gl/SceneFrame.h"
#include "scene/gl/SceneGlProgram.h"
#include "scene/gl/SceneShaderSources.h"
#include "scene/gl/SceneShadowPass.h"

#include <QOpenGLShaderProgram>

SceneLightPass::SceneLightPass() = default;
SceneLightPass::~SceneLightPass() = default;

bool SceneLightPass::initialize()
{
    using namespace SceneShaderSources;
    m_projection = buildSceneProgram(QStringLiteral("projection"), projectionVertex(), {}, projectionFragment(),
                                     {"projectorTexture", "shadowMap", "shadowRange"});
    m_projectionNv12 = buildSceneProgram(QStringLiteral("projection NV12"), projectionVertex(), {},
                                         withDefines(projectionFragment(), {"PROJECTOR_TEXTURE_NV12"}),
                                         {"projectorLuma", "projectorChroma", "shadowMap", "shadowRange"});
    return available();
}

void SceneLightPass::releaseTargets()
{
    m_fbo.reset();
    m_light.reset();
    m_coverage.reset();
    m_targetsOk = false;
}

bool SceneLightPass::resize(QOpenGLExtraFunctions *f, const QSize &size, GLuint sceneDepth)
{
    releaseTargets();
    m_light = makeGlTexture(f, GL_RGBA16F, GL_RGBA, GL_FLOAT, size, GL_NEAREST);
    // Only the first channel of coverage is read back; one channel blends at a quarter of the cost.
    m_coverage = makeGlTexture(f, GL_R16F, GL_RED, GL_FLOAT, size, GL_NEAREST);
    m_fbo = GlFramebuffer::create(f);
    f->glBindFramebuffer(GL_FRAMEBUFFER, m_fbo.id());
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, m_light.id(), 0);
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT1, GL_TEXTURE_2D, m_coverage.id(), 0);
    // Sharing the scene's depth, only visible surfaces gather light.
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_TEXTURE_2D, sceneDepth, 0);
    const GLenum buffers[2] = {GL_COLOR_ATTACHMENT0, GL_COLOR_ATTACHMENT1};
    f->glDrawBuffers(2, buffers);
    m_targetsOk = glFramebufferComplete(f, m_fbo.id());
    if (!m_targetsOk)
        qWarning("GL projection light targets are unavailable");
    return m_targetsOk;
}

void SceneLightPass::beginAccumulation(SceneFrame &frame, bool clear)
{
    QOpenGLExtraFunctions *f = frame.gl();
    f->glBindFramebuffer(GL_FRAMEBUFFER, m_fbo.id());
    const GLenum buffers[2] = {GL_COLOR_ATTACHMENT0, GL_COLOR_ATTACHMENT1};
    f->glDrawBuffers(2, buffers);
    f->glViewport(0, 0, frame.size.width(), frame.size.height());
    if (clear) {
        const float zero[4] = {0, 0, 0, 0};
        f->glClearBufferfv(GL_COLOR, 0, zero);
        f->glClearBufferfv(GL_COLOR, 1, zero);
    }
    f->glEnable(GL_DEPTH_TEST);
    f->glDepthFunc(GL_LEQUAL);
    f->glDepthMask(GL_FALSE);
    f->glEnable(GL_BLEND);
    f->glBlendFunc(GL_ONE, GL_ONE);
}

void SceneLightPass::draw(SceneFrame &frame, SceneShadowPass &shadows)
{
    QOpenGLExtraFunctions *f = frame.gl();
    SceneGlCommon &common = frame.common;
    // Light and coverage add up over projectors.
    beginAccumulation(frame, true);
    m_litArea = QRect();
    for (int p : frame.projecting) {
        const GpuTexture *texture = common.textures.projectorTexture(frame.objects, p);
        QRect scissor;
        if (!texture || !projectorScissor(frame, p, &scissor))
            continue;
        QOpenGLShaderProgram *program = texture->nv12 ? m_projectionNv12.get() : m_projection.get();
        if (!program)
            continue;
        bool drewShared = false;
        const GLuint shadowDepth = shadows.depthTexture(frame, p, &drewShared);
        if (drewShared)
            beginAccumulation(frame, false);
        scissorTo(f, scissor);
        m_litArea |= scissor;
        markFrustumStencil(frame, p);
        program->bind();
        f->glActiveTexture(GL_TEXTURE0);
        f->glBindTexture(GL_TEXTURE_2D, texture->plane(0));
        int shadowUnit = 1;
        if (texture->nv12) {
            f->glActiveTexture(GL_TEXTURE1);
            f->glBindTexture(GL_TEXTURE_2D, texture->plane(1));
            shadowUnit = 2;
        }
        f->glActiveTexture(GL_TEXTURE0 + shadowUnit);
        f->glBindTexture(GL_TEXTURE_2D, shadowDepth);
        f->glActiveTexture(GL_TEXTURE0 + shadowUnit + 1);
        f->glBindTexture(GL_TEXTURE_2D, shadows.rangeTexture(p));
        f->glActiveTexture(GL_TEXTURE0);
        const QMatrix4x4 shadowMvp = shadows.shadowMatrix(p);
        const QMatrix4x4 lensClip = lensClipMatrix(frame.lenses[p]);
        for (const SceneFrameItem &item : frame.items) {
            if (!item.surface)
                continue;
            const QMatrix4x4 mvp = frame.viewProjection * item.world;
            const QMatrix4x4 lensMvp = lensClip * item.world;
            common.setProjectionConstants(projectionConstantsFor(frame, p, mvp, item.world, shadowMvp, true, 0.0, 0.0));
            common.drawTriangles(*item.mesh, {&mvp, &lensMvp});
        }
        ++frame.stats.projectorsProjected;
    }
    endFrustumStencil(f);
    f->glDisable(GL_SCISSOR_TEST);
    f->glDepthMask(GL_TRUE);
}

// ---- composite ---------------------------------------------------------------------------

SceneCompositePass::SceneCompositePass() = default;
SceneCompositePass::~SceneCompositePass() = default;

bool SceneCompositePass::initialize()
{
    using namespace SceneShaderSources;
    m_program = buildSceneProgram(QStringLiteral("projection composite"), fullScreenVertex(), {}, compositeFragment(),
                                  {"lightTarget", "coverageTarget"});
    return available();
}

void SceneCompositePass::draw(SceneFrame &frame, const SceneLightPass &light)
{
    QOpenGLExtraFunctions *f = frame.gl();
    f->glBindFramebuffer(GL_FRAMEBUFFER, frame.sceneFbo);
    const GLenum colorBuffer = GL_COLOR_ATTACHMENT0;
    f->glDrawBuffers(1, &colorBuffer);
    f->glDisable(GL_DEPTH_TEST);
    f->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    // Outside every projector's rectangle nothing was lit: those pixels are left alone.
    if (light.litArea().isEmpty())
        return;
    scissorTo(f, light.litArea());
    m_program->bind();
    f->glActiveTexture(GL_TEXTURE0);
    f->glBindTexture(GL_TEXTURE_2D, light.lightTexture());
    f->glActiveTexture(GL_TEXTURE1);
    f->glBindTexture(GL_TEXTURE_2D, light.coverageTexture());
    f->glActiveTexture(GL_TEXTURE0);
    frame.common.drawFullScreenTriangle();
    f->glDisable(GL_SCISSOR_TEST);
}
