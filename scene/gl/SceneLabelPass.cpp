#include "scene/gl/SceneLabelPass.h"

#include "scene/LensModel.h"
#include "scene/ShapeGeometry.h"
#include "scene/Transform.h"
#include "scene/ViewCamera.h"
#include "scene/gl/SceneFootprintPass.h"
#include "scene/gl/SceneFrame.h"
#include "scene/gl/SceneGlProgram.h"
#include "scene/gl/SceneShaderSources.h"

#include <QOpenGLShaderProgram>

#include <cmath>

namespace {

// The height label sits on the object's side: the right edge of flat shapes, the end of the
// arc of a cylinder wall.
QVector3D heightLabelPoint(const GuideObject &object)
{
    if (object.guide_index == KindCylinderWall) {
        const double halfAngle = vg::scene::cylinderWallAngleDegrees(object) * M_PI / 360.0;
        return vg::scene::toQVector(
            vg::scene::cylinderWallPoint(vg::scene::cylinderWallRadius(object), halfAngle, 0.0));
    }
    return QVector3D(object.scale_x, 0, 0);
}

// Projects world points to label anchors in pixels (top-left origin); false behind the eye
// or beyond the far plane.
bool anchorOf(const SceneFrame &frame, const QVector3D &world, QPointF *pixel)
{
    const QVector4D clip = frame.viewProjection * QVector4D(world, 1.0f);
    if (clip.w() <= 0.0001f)
        return false;
    const QVector3D ndc = clip.toVector3DAffine();
    if (ndc.z() < -1.0f || ndc.z() > 1.0f)
        return false;
    *pixel = QPointF((ndc.x() * 0.5 + 0.5) * frame.size.width(), (0.5 - ndc.y() * 0.5) * frame.size.height());
    return true;
}

} // namespace

SceneLabelPass::SceneLabelPass() = default;
SceneLabelPass::~SceneLabelPass() = default;

bool SceneLabelPass::initialize()
{
    using namespace SceneShaderSources;
    m_program = buildSceneProgram(QStringLiteral("labels"), texturedVertex(), {}, texturedFragment(),
                                  {"surfaceTexture"});
    return available();
}

void SceneLabelPass::releaseAtlas()
{
    m_atlasTexture.reset();
    m_uploadedRevision = 0;
}

void SceneLabelPass::draw(SceneFrame &frame, const SceneFootprintPass &footprint)
{
    const SceneRenderSettings &settings = frame.settings;
    if (m_program && (settings.showLabels || settings.showFps)) {
        std::vector<Request> requests;
        if (settings.showLabels) {
            collectObjectLabels(frame, requests);
            collectFootprintLabels(frame, footprint, requests);
        }
        if (settings.showFps) {
            const double fps = settings.framesPerSecond;
            const bool bottom = settings.fpsCorner == Qt::BottomLeftCorner || settings.fpsCorner == Qt::BottomRightCorner;
            const bool right = settings.fpsCorner == Qt::TopRightCorner || settings.fpsCorner == Qt::BottomRightCorner;
            const QPointF corner(right ? frame.size.width() - 8 : 8, bottom ? frame.size.height() - 8 : 8);
            requests.push_back({viewportFpsAtlasEntry(fps, 14).key, [fps] { return viewportFpsAtlasEntry(fps, 14); },
                                corner, Qt::Alignment(right ? Qt::AlignRight : Qt::AlignLeft)
                                            | (bottom ? Qt::AlignBottom : Qt::AlignTop)});
        }
        placeInAtlas(requests);
        if (!requests.empty())
            drawQuads(frame, requests);
    }
    frame.endPass(frame.stats.labelsMs);
}

void SceneLabelPass::collectObjectLabels(const SceneFrame &frame, std::vector<Request> &requests)
{
    for (const SceneFrameItem &item : frame.items) {
        const GuideObject &object = frame.object(item.index);
        const QMatrix4x4 &world = item.world;
        QPointF pixel;
        if (object.hasLens()) {
            const double lift = std::max(0.1, double(object.scale_y)) + 0.08;
            // Anchored above and below the body's middle (the body lies behind the lens point).
            const float bodyZ = std::max(0.05f, object.scale_z);
            if (object.projector_name_visible && anchorOf(frame, world.map(QVector3D(0, float(lift), bodyZ)), &pixel)) {
                const QString name = object.name;
                requests.push_back({QStringLiteral("projector-name|%1").arg(name),
                                        [name] { return projectorNameAtlasEntry(name); }, pixel, Qt::AlignCenter});
            }
            if (object.projector_info_text_visible
                && anchorOf(frame, world.map(QVector3D(0, float(-lift), bodyZ)), &pixel)) {
                const int w = std::max(1, object.projector_resolution_width);
                const int h = std::max(1, object.projector_resolution_height);
                requests.push_back({QStringLiteral("projector-camera-resolution|%1|%2").arg(w).arg(h),
                                        [w, h] { return renderProjectorCameraResolutionFrame(w, h); }, pixel,
                                        Qt::AlignCenter});
                const QString info = vg::scene::projectorThrowRatioText(object.throw_rate);
                requests.push_back({QStringLiteral("projector-dimension-green|%1").arg(info),
                                        [info] { return projectorDimensionTextAtlasEntry(info); },
                                        pixel + QPointF(0, 22), Qt::AlignCenter});
            }
            continue;
        }
        if (object.guide_index == KindComment) {
            const QVector3D at(object.annotation_label_offset_x, object.annotation_label_offset_y,
                               object.annotation_label_offset_z);
            if (anchorOf(frame, world.map(at), &pixel)) {
                const QString text = object.annotation_text;
                const double fs = object.annotation_label_font_scale;
                const double sx = object.annotation_label_scale_x * object.annotation_label_scale;
                const double sy = object.annotation_label_scale_y * object.annotation_label_scale;
                requests.push_back({QStringLiteral("annotation|%1|%2|%3|%4")
                                            .arg(text, QString::number(fs, 'f', 3), QString::number(sx, 'f', 3),
                                                 QString::number(sy, 'f', 3)),
                                        [text, fs, sx, sy] { return annotationCommentAtlasEntry(text, fs, sx, sy); },
                                        pixel, Qt::AlignCenter});
            }
            continue;
        }
        if (!object.show_dimensions)
            continue;
        auto addDimension = [&](const QString &text, const QVector3D &local) {
            QPointF at;
            if (anchorOf(frame, world.map(local), &at))
                requests.push_back({QStringLiteral("dimension|%1|%2").arg(text).arg(14),
                                        [text] { return dimensionTextAtlasEntry(text, 14); }, at, Qt::AlignCenter});
        };
        const float hx = object.scale_x, hy = object.scale_y, hz = object.scale_z;
        if (object.guide_index == KindDistanceMeasure) {
            const QVector3D a(object.distance_start_x, object.distance_start_y, object.distance_start_z);
            const QVector3D b(object.distance_end_x, object.distance_end_y, object.distance_end_z);
            if (object.show_distance_dimension)
                addDimension(namedDimensionLabelText(object.name, (b - a).length() * 1000.0), (a + b) * 0.5f);
            continue;
        }
        if (object.show_width_dimension)
            addDimension(dimensionLabelText(QLatin1Char('W'), hx * 2000.0), QVector3D(0, -hy, 0));
        if (object.show_height_dimension)
            addDimension(dimensionLabelText(QLatin1Char('H'), hy * 2000.0), heightLabelPoint(object));
        if (object.show_depth_dimension && (object.guide_index == KindLShape))
            addDimension(dimensionLabelText(QLatin1Char('D'), hz * 2000.0), QVector3D(hx, -hy, 0));
        if (object.guide_index == KindCylinderWall) {
            const double radius = object.wall_cylinder_radius;
            if (object.show_radius_dimension)
                addDimension(dimensionLabelText(QLatin1Char('R'), radius), QVector3D(0, hy, 0));
            if (object.show_circumference_dimension)
                addDimension(dimensionLabelText(QLatin1Char('C'), hx * 2000.0), QVector3D(0, hy * 0.6f, 0));
        }
    }
}

void SceneLabelPass::collectFootprintLabels(const SceneFrame &frame, const SceneFootprintPass &footprint,
                                            std::vector<Request> &requests)
{
    for (int p : frame.heated) {
        const GuideObject &object = frame.object(p);
        if (!object.projector_pixel_footprint_labels_visible)
            continue;
        for (const auto &[point, value] : footprint.labelSamples(p)) {
            QPointF at;
            if (!anchorOf(frame, point, &at))
                continue;
            const QString text = vg::scene::footprintLabel(value, object.projector_pixel_footprint_metric);
            requests.push_back({QStringLiteral("dimension|%1|%2").arg(text).arg(13),
                                    [text] { return dimensionTextAtlasEntry(text, 13); }, at, Qt::AlignCenter});
        }
    }
}

// A full atlas restarts, so a second round finds every label again.
void SceneLabelPass::placeInAtlas(const std::vector<Request> &requests)
{
    for (int round = 0; round < 2; ++round) {
        bool restarted = false;
        for (const Request &request : requests) {
            const quint64 r = m_atlas.revision();
            m_atlas.ensure(request.key, request.make);
            if (m_atlas.revision() > r + 1)
                restarted = true;
        }
        if (!restarted)
            break;
    }
}

void SceneLabelPass::drawQuads(SceneFrame &frame, const std::vector<Request> &requests)
{
    QOpenGLExtraFunctions *f = frame.gl();
    if (!m_atlasTexture || m_uploadedRevision != m_atlas.revision()) {
        uploadGlPlane(f, m_atlasTexture, GL_RGBA8, GL_RGBA, m_atlas.size(), m_atlas.size(), m_atlas.image().constBits(),
                      false);
        m_uploadedRevision = m_atlas.revision();
    }
    std::vector<float> quads;
    const float inv = 1.0f / float(m_atlas.size());
    for (const Request &request : requests) {
        const DimensionTextAtlasEntry *entry = m_atlas.find(request.key);
        if (!entry)
            continue;
        const QSizeF s = entry->atlasRect.size();
        QPointF topLeft = request.anchor;
        if (request.alignment & Qt::AlignHCenter || request.alignment == Qt::AlignCenter)
            topLeft.rx() -= s.width() / 2.0;
        if (request.alignment & Qt::AlignVCenter || request.alignment == Qt::AlignCenter)
            topLeft.ry() -= s.height() / 2.0;
        if (request.alignment & Qt::AlignRight)
            topLeft.rx() -= s.width();
        if (request.alignment & Qt::AlignBottom)
            topLeft.ry() -= s.height();
        const float x0 = float(std::round(topLeft.x())), y0 = float(std::round(topLeft.y()));
        const float x1 = x0 + float(s.width()), y1 = y0 + float(s.height());
        const QRect r = entry->atlasRect;
        const float u0 = r.left() * inv, v0 = r.top() * inv;
        const float u1 = (r.left() + r.width()) * inv, v1 = (r.top() + r.height()) * inv;
        const float corners[6][4] = {{x0, y0, u0, v0}, {x1, y0, u1, v0}, {x1, y1, u1, v1},
                                     {x0, y0, u0, v0}, {x1, y1, u1, v1}, {x0, y1, u0, v1}};
        for (const auto &c : corners)
            quads.insert(quads.end(), {c[0], c[1], 0.0f, c[2], c[3], 1, 1, 1, 1});
        ++frame.stats.labelsDrawn;
    }
    QMatrix4x4 pixels;
    pixels.ortho(0.0f, float(frame.size.width()), float(frame.size.height()), 0.0f, -1.0f, 1.0f);
    // Labels are drawn over the scene: a label names a point of a surface, so the surface
    // itself (turned away, or curved towards the eye) must never cut it.
    f->glDisable(GL_DEPTH_TEST);
    f->glDepthMask(GL_FALSE);
    f->glDisable(GL_POLYGON_OFFSET_FILL);
    f->glEnable(GL_BLEND);
    f->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    m_program->bind();
    frame.common.setSceneConstants(pixels, QVector4D(1, 0, 0, 0));
    f->glActiveTexture(GL_TEXTURE0);
    f->glBindTexture(GL_TEXTURE_2D, m_atlasTexture.id());
    frame.common.drawGenerated(GL_TRIANGLES, quads);
}
