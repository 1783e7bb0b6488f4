#include "scene/gl/SceneGeometryPass.h"

#include "scene/gl/SceneFrame.h"
#include "scene/gl/SceneGlProgram.h"
#include "scene/gl/SceneShaderSources.h"

#include <QOpenGLShaderProgram>

#include <algorithm>

SceneGeometryPass::SceneGeometryPass() = default;
SceneGeometryPass::~SceneGeometryPass() = default;

bool SceneGeometryPass::initialize()
{
    using namespace SceneShaderSources;
    m_color = buildSceneProgram(QStringLiteral("geometry"), colorVertex(), {}, colorFragment());
    m_textured = buildSceneProgram(QStringLiteral("textured geometry"), texturedVertex(), {}, texturedFragment(),
                                   {"surfaceTexture"});
    m_texturedOpaque = buildSceneProgram(QStringLiteral("textured geometry, opacity as alpha"), texturedVertex(), {},
                                         withDefines(texturedFragment(), {"REPLACE_ALPHA"}), {"surfaceTexture"});
    m_texturedNv12 = buildSceneProgram(QStringLiteral("textured geometry NV12"), texturedVertex(), {},
                                       withDefines(texturedFragment(), {"PROJECTOR_TEXTURE_NV12"}),
                                       {"surfaceLuma", "surfaceChroma"});
    return bool(m_color);
}

void SceneGeometryPass::draw(SceneFrame &frame)
{
    QOpenGLExtraFunctions *f = frame.gl();
    SceneGlCommon &common = frame.common;
    f->glViewport(0, 0, frame.size.width(), frame.size.height());
    f->glBindFramebuffer(GL_FRAMEBUFFER, frame.sceneFbo);
    const GLenum colorBuffer = GL_COLOR_ATTACHMENT0;
    f->glDrawBuffers(1, &colorBuffer);
    const QColor bg = frame.settings.backgroundColor;
    f->glClearColor(float(bg.redF()), float(bg.greenF()), float(bg.blueF()), 1.0f);
    f->glClearDepthf(1.0f);
    f->glDepthMask(GL_TRUE);
    f->glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    f->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    f->glDisable(GL_CULL_FACE);
    f->glDisable(GL_SCISSOR_TEST);
    f->glDisable(GL_STENCIL_TEST);
    // Surfaces are pushed back a little so that grid and wire lines on them stay whole;
    // every triangle pass uses the same offset, so their depths still match exactly.
    f->glEnable(GL_POLYGON_OFFSET_FILL);
    f->glPolygonOffset(1.0f, 1.0f);
    frame.startClock();

    f->glEnable(GL_DEPTH_TEST);
    f->glDepthFunc(GL_LEQUAL);
    f->glEnable(GL_BLEND);
    f->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    for (int passIndex = 0; passIndex < 2; ++passIndex) {
        const bool transparentPass = passIndex == 1;
        f->glDepthMask(transparentPass ? GL_FALSE : GL_TRUE);
        for (const SceneFrameItem &item : frame.items) {
            const GuideObject &object = frame.object(item.index);
            if (item.mesh->indexCount == 0 || (!item.surface && !item.body))
                continue;
            const float opacity = std::clamp(object.object_opacity, 0.0f, 1.0f);
            if ((opacity < 0.999f) != transparentPass)
                continue;
            const GpuTexture *texture = item.surface ? common.textures.surfaceTexture(object, item.index) : nullptr;
            QOpenGLShaderProgram *program = m_color.get();
            // Guide panels show the guide as an opaque picture whatever its alpha.
            if (texture)
                program = texture->nv12 ? m_texturedNv12.get()
                          : object.guide_index == KindGuide && m_texturedOpaque ? m_texturedOpaque.get()
                                                                                 : m_textured.get();
            if (!program)
                program = m_color.get();
            if (!program)
                continue;
            program->bind();
            if (texture && program != m_color.get()) {
                f->glActiveTexture(GL_TEXTURE0);
                f->glBindTexture(GL_TEXTURE_2D, texture->plane(0));
                if (texture->nv12) {
                    f->glActiveTexture(GL_TEXTURE1);
                    f->glBindTexture(GL_TEXTURE_2D, texture->plane(1));
                    f->glActiveTexture(GL_TEXTURE0);
                }
            }
            const QMatrix4x4 mvp = frame.viewProjection * item.world;
            common.setSceneConstants(mvp, QVector4D(opacity, 0, 0, 0));
            // Where a texel may be partly transparent, what shows through depends on the
            // order of the mesh's own triangles, so those draws keep it.
            if (program == m_color.get() && !transparentPass)
                common.drawTriangles(*item.mesh, {&mvp, nullptr});
            else
                common.drawTriangles(*item.mesh);
            if (item.surface)
                ++frame.stats.surfacesDrawn;
        }
    }
    f->glDepthMask(GL_TRUE);
    frame.endPass(frame.stats.geometryMs);
}
