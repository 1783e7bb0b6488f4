#include "scene/gl/SceneLinePass.h"

#include "scene/LensModel.h"
#include "scene/gl/SceneFrame.h"
#include "scene/gl/SceneGlProgram.h"
#include "scene/gl/SceneShaderSources.h"

#include <QOpenGLShaderProgram>

#include <cmath>
#include <map>

namespace {

void appendLine(std::vector<float> &out, const QVector3D &a, const QVector3D &b, const QColor &color)
{
    const float c[4] = {float(color.redF()), float(color.greenF()), float(color.blueF()), float(color.alphaF())};
    for (const QVector3D &p : {a, b})
        out.insert(out.end(), {p.x(), p.y(), p.z(), 0.0f, 0.0f, c[0], c[1], c[2], c[3]});
}

} // namespace

SceneLinePass::SceneLinePass() = default;
SceneLinePass::~SceneLinePass() = default;

bool SceneLinePass::initialize()
{
    using namespace SceneShaderSources;
    m_program = buildSceneProgram(QStringLiteral("lines"), lineVertex(), lineGeometry(), lineFragment());
    return available();
}

void SceneLinePass::draw(SceneFrame &frame)
{
    QOpenGLExtraFunctions *f = frame.gl();
    const GLenum colorBuffer = GL_COLOR_ATTACHMENT0;
    f->glBindFramebuffer(GL_FRAMEBUFFER, frame.sceneFbo);
    f->glDrawBuffers(1, &colorBuffer);
    f->glViewport(0, 0, frame.size.width(), frame.size.height());
    f->glDisable(GL_POLYGON_OFFSET_FILL); // the lines' quads are triangles too
    if (m_program) {
        f->glEnable(GL_DEPTH_TEST);
        f->glDepthFunc(GL_LEQUAL);
        f->glDepthMask(GL_FALSE);
        f->glEnable(GL_BLEND);
        f->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        m_program->bind();
        drawWorldLines(frame);
        drawWireframes(frame);
        f->glDepthMask(GL_TRUE);
    }
    f->glEnable(GL_POLYGON_OFFSET_FILL);
    frame.endPass(frame.stats.linesMs);
}

void SceneLinePass::drawWorldLines(SceneFrame &frame)
{
    std::map<float, std::vector<float>> worldLines; // by line width
    if (frame.settings.gridVisible) {
        std::vector<float> &grid = worldLines[1.0f];
        const int half = 10;
        for (int i = -half; i <= half; ++i) {
            QColor c = i == 0 ? QColor(120, 120, 120, 150) : QColor(110, 110, 110, 80);
            appendLine(grid, QVector3D(float(i), 0, float(-half)), QVector3D(float(i), 0, float(half)),
                       i == 0 ? QColor(70, 110, 230, 190) : c);
            appendLine(grid, QVector3D(float(-half), 0, float(i)), QVector3D(float(half), 0, float(i)),
                       i == 0 ? QColor(220, 70, 70, 190) : c);
        }
    }
    for (int index : frame.lensObjects) {
        const GuideObject &object = frame.object(index);
        if (!(object.show_projector_frustum || frame.settings.showAllProjectorFrusta)
            || index == frame.settings.hiddenObjectIndex)
            continue;
        const QColor color = object.isCamera() ? vg::scene::cameraFrustumColor() : vg::scene::projectorFrustumColor();
        const std::vector<QVector3D> lines = frame.lenses[index].frustumLines();
        std::vector<float> &out = worldLines[1.5f];
        for (size_t i = 0; i + 1 < lines.size(); i += 2)
            appendLine(out, lines[i], lines[i + 1], color);
    }
    const QSize size = frame.size;
    for (auto &[width, vertices] : worldLines) {
        frame.common.setSceneConstants(frame.viewProjection,
                                       QVector4D(1, float(size.width()), float(size.height()), width));
        frame.common.drawGenerated(GL_LINES, vertices);
    }
}

// Each object's wire grid with a constant colour attribute.
void SceneLinePass::drawWireframes(SceneFrame &frame)
{
    QOpenGLExtraFunctions *f = frame.gl();
    for (const SceneFrameItem &item : frame.items) {
        const GuideObject &object = frame.object(item.index);
        if (!item.mesh->lineVao || item.mesh->lineVertexCount == 0)
            continue;
        const bool lineKind = isLineOnlyKind(object.guide_index);
        if (!lineKind && !object.show_wireframe
            && !(frame.settings.showObjPolygonLines && object.guide_index == KindObjMesh))
            continue;
        QColor color = lineKind ? sceneObjectBaseColor(object) : QColor(24, 26, 30, 170);
        if (object.hasLens())
            color = QColor(230, 235, 240, 200);
        // A DXF drawing is all lines: its own thickness, not the wire grid's.
        const float thickness =
            object.guide_index == KindDxfMesh ? object.dxf_line_thickness : object.wireframe_thickness;
        const float width = std::isfinite(thickness) ? std::clamp(thickness, 0.5f, 16.0f) : 1.0f;
        frame.common.setSceneConstants(frame.viewProjection * item.world,
                                       QVector4D(std::clamp(object.object_opacity, 0.0f, 1.0f),
                                                 float(frame.size.width()), float(frame.size.height()), width));
        f->glBindVertexArray(item.mesh->lineVao.id());
        f->glVertexAttrib4f(2, float(color.redF()), float(color.greenF()), float(color.blueF()), float(color.alphaF()));
        f->glDrawArrays(GL_LINES, 0, item.mesh->lineVertexCount);
        f->glBindVertexArray(0);
    }
}
