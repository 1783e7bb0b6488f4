#include "scene/gl/SceneFrame.h"

#include "scene/Transform.h"
#include "scene/ViewCamera.h"
#include "scene/gl/SceneGlProgram.h"
#include "scene/gl/SceneShaderSources.h"

#include <QOpenGLShaderProgram>

#include <algorithm>
#include <cmath>

using vg::scene::LensModel;

SceneGlCommon::SceneGlCommon(QOpenGLExtraFunctions *f)
    : meshes(f)
    , textures(f)
    , m_f(f)
{
    m_sceneUbo = GlBuffer::create(f);
    f->glBindBuffer(GL_UNIFORM_BUFFER, m_sceneUbo.id());
    f->glBufferData(GL_UNIFORM_BUFFER, sizeof(SceneConstants), nullptr, GL_DYNAMIC_DRAW);
    m_projectionUbo = GlBuffer::create(f);
    f->glBindBuffer(GL_UNIFORM_BUFFER, m_projectionUbo.id());
    f->glBufferData(GL_UNIFORM_BUFFER, sizeof(ProjectionConstants), nullptr, GL_DYNAMIC_DRAW);
    f->glBindBuffer(GL_UNIFORM_BUFFER, 0);
    m_emptyVao = GlVertexArray::create(f);
    m_dynamicVao = GlVertexArray::create(f);
    m_dynamicVbo = GlBuffer::create(f);
    f->glBindVertexArray(m_dynamicVao.id());
    f->glBindBuffer(GL_ARRAY_BUFFER, m_dynamicVbo.id());
    configureSceneVertexLayout(f);
    f->glBindVertexArray(0);
    f->glBindBuffer(GL_ARRAY_BUFFER, 0);
    using namespace SceneShaderSources;
    m_depthProgram = buildSceneProgram(QStringLiteral("shadow map"), depthOnlyVertex(), {}, maskFragment());
}

SceneGlCommon::~SceneGlCommon() = default;

void SceneGlCommon::setSceneConstants(const QMatrix4x4 &mvp, const QVector4D &opacityData)
{
    SceneConstants constants;
    constants.mvp = SceneGpuMatrix::fromMatrix(mvp);
    constants.opacityData = SceneGpuVector(opacityData.x(), opacityData.y(), opacityData.z(), opacityData.w());
    m_f->glBindBuffer(GL_UNIFORM_BUFFER, m_sceneUbo.id());
    m_f->glBufferSubData(GL_UNIFORM_BUFFER, 0, sizeof(constants), &constants);
    m_f->glBindBuffer(GL_UNIFORM_BUFFER, 0);
}

void SceneGlCommon::setProjectionConstants(const ProjectionConstants &constants)
{
    m_f->glBindBuffer(GL_UNIFORM_BUFFER, m_projectionUbo.id());
    m_f->glBufferSubData(GL_UNIFORM_BUFFER, 0, sizeof(constants), &constants);
    m_f->glBindBuffer(GL_UNIFORM_BUFFER, 0);
}

void SceneGlCommon::bindUniformBuffers()
{
    m_f->glBindBufferBase(GL_UNIFORM_BUFFER, SceneConstantsBinding, m_sceneUbo.id());
    m_f->glBindBufferBase(GL_UNIFORM_BUFFER, ProjectionConstantsBinding, m_projectionUbo.id());
}

void SceneGlCommon::drawGenerated(GLenum mode, const std::vector<float> &vertices)
{
    m_f->glBindVertexArray(m_dynamicVao.id());
    m_f->glBindBuffer(GL_ARRAY_BUFFER, m_dynamicVbo.id());
    m_f->glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(vertices.size() * sizeof(float)), vertices.data(), GL_STREAM_DRAW);
    m_f->glDrawArrays(mode, 0, GLsizei(vertices.size() / kSceneFloatsPerVertex));
    m_f->glBindVertexArray(0);
}

void SceneGlCommon::drawTriangles(const GpuMesh &mesh)
{
    if (!mesh.vao)
        return;
    meshes.drawTriangles(mesh);
    trianglesDrawn += mesh.indexCount / 3;
}

void SceneGlCommon::drawTriangles(const GpuMesh &mesh, const SceneDrawVolume &volume)
{
    if (!mesh.vao)
        return;
    if (!cullChunks || mesh.chunks.size() < 2) {
        drawTriangles(mesh);
        return;
    }
    auto mayShow = [&](const GpuMeshChunk &chunk) {
        return (!volume.camera || boxMayMeetClipVolume(chunk.bounds, *volume.camera))
            && (!volume.lens || boxMayMeetClipVolume(chunk.bounds, *volume.lens, false));
    };
    // Neighbouring runs that both show are drawn as one.
    int first = -1, count = 0;
    for (const GpuMeshChunk &chunk : mesh.chunks) {
        if (mayShow(chunk)) {
            if (first < 0)
                first = chunk.firstIndex;
            count += chunk.indexCount;
            continue;
        }
        meshes.drawRange(mesh, first, count);
        trianglesDrawn += count / 3;
        first = -1;
        count = 0;
    }
    meshes.drawRange(mesh, first, count);
    trianglesDrawn += count / 3;
}

void SceneGlCommon::drawFullScreenTriangle()
{
    m_f->glBindVertexArray(m_emptyVao.id());
    m_f->glDrawArrays(GL_TRIANGLES, 0, 3);
    m_f->glBindVertexArray(0);
}

// ---- frame ---------------------------------------------------------------------------------

void SceneFrame::startClock()
{
    if (!settings.measurePasses)
        return;
    gl()->glFinish();
    passClock.start();
}

void SceneFrame::endPass(double &bucket)
{
    if (!settings.measurePasses)
        return;
    gl()->glFinish();
    bucket += passClock.nsecsElapsed() / 1.0e6;
    passClock.restart();
}

ProjectionConstants projectionConstantsFor(const SceneFrame &frame, int p, const QMatrix4x4 &mvp,
                                           const QMatrix4x4 &world, const QMatrix4x4 &shadowMvp, bool shadowsOn,
                                           double rangeMin, double rangeMax)
{
    const GuideObject &o = frame.object(p);
    const LensModel &lens = frame.lenses[p];
    const QMatrix4x4 projectorWorld = vg::scene::objectWorldMatrix(o);
    ProjectionConstants c;
    c.mvp = SceneGpuMatrix::fromMatrix(mvp);
    c.targetWorld = SceneGpuMatrix::fromMatrix(world);
    c.shadowMvp = SceneGpuMatrix::fromMatrix(shadowMvp);
    c.projectorInverseWorld = SceneGpuMatrix::fromMatrix(projectorWorld.inverted());
    c.projectorWorld = SceneGpuMatrix::fromMatrix(projectorWorld);
    c.projectorData0 = SceneGpuVector(0, 0, 0, float(vg::scene::clampedThrowRatio(o.throw_rate)));
    c.projectorData1 = SceneGpuVector(
        0, float(vg::scene::lensAspect(o.projector_resolution_width, o.projector_resolution_height)),
        float(vg::scene::lensShiftFraction(o.lens_shift_x)), float(vg::scene::lensShiftFraction(o.lens_shift_y)));
    // The lens point is the object's origin, so its offset in the projector frame is zero.
    c.projectorData2 = SceneGpuVector(float(lens.throwDistance()), 0, 0.0f, 0.0f);
    c.projectorData3 = SceneGpuVector(0.0f, std::clamp(o.projection_opacity, 0.0f, 1.0f), o.projector_flip_h ? 1 : 0,
                                      o.projector_flip_v ? 1 : 0);
    c.projectorData4 = SceneGpuVector(o.projector_rotate_180 ? 1 : 0, float(std::max(1, o.projector_resolution_width)),
                                      float(std::max(1, o.projector_resolution_height)), 0);
    // y: 0 no shadows, 1 the filter alone, 2 the filter after the depth range's answer.
    c.shadowData = SceneGpuVector(SceneRenderer::kShadowWorldBias, shadowsOn ? (frame.common.shadowRange ? 2.0f : 1.0f) : 0.0f,
                                  float(SceneRenderer::kShadowMapSize), SceneRenderer::kShadowFilterRadius);
    const bool heat = o.projector_pixel_footprint_heatmap_visible || frame.settings.forceHeatmap;
    c.footprintData = SceneGpuVector(heat ? 1 : 0, o.projector_pixel_footprint_grid_visible ? 1 : 0,
                                     float(std::max(1, o.projector_pixel_footprint_sample_step_pixels)),
                                     float(std::clamp(o.projector_pixel_footprint_metric, 0, 3)));
    c.footprintRangeData = SceneGpuVector(float(rangeMin), float(rangeMax),
                                          std::clamp(o.projector_pixel_footprint_heatmap_opacity, 0.0f, 1.0f), 0);
    c.lensData = lensImageCoefficients(lens);
    const QRectF slice = projectorImageSlice(o, frame.settings.guideArrays);
    c.sliceData = SceneGpuVector(float(slice.x()), float(slice.y()), float(slice.width()), float(slice.height()));
    return c;
}

// The pinhole form of the CPU lens model as (u, v) of a lens-frame point (x right, y up,
// depth d): u = kx·x/d + cu, v = ky·y/d + cv, with the model's own flip rule folded in.
SceneGpuVector lensImageCoefficients(const LensModel &lens)
{
    const vg::scene::LensIntrinsics &intrinsics = lens.intrinsics();
    const double f = vg::scene::lensFocalLengthPixels(intrinsics);
    const Eigen::Vector2d principal = vg::scene::lensPrincipalPointPixels(intrinsics);
    const double w = lens.width(), h = lens.height();
    double kx = f / w, cu = principal.x() / w, ky = -f / h, cv = principal.y() / h;
    double u = 0.0, v = 0.0;
    vg::scene::applyLensFlips(intrinsics, u, v);
    if (u > 0.5) {
        kx = -kx;
        cu = 1.0 - cu;
    }
    if (v > 0.5) {
        ky = -ky;
        cv = 1.0 - cv;
    }
    return SceneGpuVector(float(kx), float(cu), float(ky), float(cv));
}

// ---- projector regions ------------------------------------------------------------------

QMatrix4x4 lensClipMatrix(const vg::scene::LensModel &lens)
{
    constexpr double kNear = 0.025;
    const double farPlane = std::max(kNear + 0.001, lens.throwDistance());
    return vg::scene::toQMatrix(lens.projectionMatrix(kNear, farPlane)) * vg::scene::toQMatrix(lens.viewMatrix());
}

bool boxMayMeetClipVolume(const Eigen::AlignedBox3d &local, const QMatrix4x4 &clip, bool nearPlane)
{
    if (local.isEmpty())
        return false;
    int outside[6] = {0, 0, 0, 0, 0, 0};
    for (int corner = 0; corner < 8; ++corner) {
        const QVector3D p = vg::scene::toQVector(local.corner(Eigen::AlignedBox3d::CornerType(corner)));
        const QVector4D c = clip * QVector4D(p, 1.0f);
        outside[0] += c.x() < -c.w();
        outside[1] += c.x() > c.w();
        outside[2] += c.y() < -c.w();
        outside[3] += c.y() > c.w();
        outside[4] += nearPlane && c.z() < -c.w();
        outside[5] += c.z() > c.w();
    }
    return std::none_of(std::begin(outside), std::end(outside), [](int n) { return n == 8; });
}

namespace {

using Face = std::vector<Eigen::Vector4d>;

// Keeps the part of a closed polyhedron where dot(plane, point) >= 0 and closes the cut.
void clipFaces(std::vector<Face> &faces, const Eigen::Vector4d &plane)
{
    std::vector<Face> kept;
    Face cut;
    for (const Face &face : faces) {
        Face out;
        for (size_t i = 0; i < face.size(); ++i) {
            const Eigen::Vector4d &a = face[i], &b = face[(i + 1) % face.size()];
            const double da = plane.dot(a), db = plane.dot(b);
            if (da >= 0)
                out.push_back(a);
            if ((da >= 0) != (db >= 0)) {
                const Eigen::Vector4d x = a + (b - a) * (da / (da - db));
                out.push_back(x);
                cut.push_back(x);
            }
        }
        if (out.size() >= 3)
            kept.push_back(out);
    }
    if (cut.size() >= 3)
        kept.push_back(cut); // only its points matter for the bounds
    faces = kept;
}

} // namespace

bool projectorScissor(const SceneFrame &frame, int p, QRect *rect)
{
    if (frame.targetBounds.isEmpty())
        return false;
    const QMatrix4x4 &viewProjection = frame.viewProjection;
    const QSize size = frame.size;
    const LensModel &lens = frame.lenses[p];
    const Eigen::Vector3d apex = lens.pose().position;
    const std::array<Eigen::Vector3d, 4> far = lens.farCorners();
    // The frustum as faces: four sides and the far cap.
    std::vector<Face> faces;
    auto h = [](const Eigen::Vector3d &v) { return Eigen::Vector4d(v.x(), v.y(), v.z(), 1.0); };
    for (int i = 0; i < 4; ++i)
        faces.push_back({h(apex), h(far[i]), h(far[(i + 1) % 4])});
    faces.push_back({h(far[0]), h(far[1]), h(far[2]), h(far[3])});
    const Eigen::Vector3d lo = frame.targetBounds.min(), hi = frame.targetBounds.max();
    for (int axis = 0; axis < 3; ++axis) {
        Eigen::Vector4d lower = Eigen::Vector4d::Zero(), upper = Eigen::Vector4d::Zero();
        lower[axis] = 1.0;
        lower[3] = -lo[axis] + 0.01;
        upper[axis] = -1.0;
        upper[3] = hi[axis] + 0.01;
        clipFaces(faces, lower);
        clipFaces(faces, upper);
    }
    // In front of the eye: w > 0 in the camera's clip space.
    const Eigen::Vector4d wRow(viewProjection(3, 0), viewProjection(3, 1), viewProjection(3, 2),
                               viewProjection(3, 3) - 0.0001);
    clipFaces(faces, wRow);
    double x0 = 1e30, y0 = 1e30, x1 = -1e30, y1 = -1e30;
    for (const Face &face : faces) {
        for (const Eigen::Vector4d &v : face) {
            const QVector4D c = viewProjection * QVector4D(float(v.x()), float(v.y()), float(v.z()), 1.0f);
            const double w = std::max(1e-6, double(c.w()));
            const double x = (c.x() / w * 0.5 + 0.5) * size.width();
            const double y = (c.y() / w * 0.5 + 0.5) * size.height(); // GL rows, bottom up
            x0 = std::min(x0, x);
            y0 = std::min(y0, y);
            x1 = std::max(x1, x);
            y1 = std::max(y1, y);
        }
    }
    if (x0 > x1)
        return false;
    x0 = std::clamp(x0, -1.0, size.width() + 1.0);
    x1 = std::clamp(x1, -1.0, size.width() + 1.0);
    y0 = std::clamp(y0, -1.0, size.height() + 1.0);
    y1 = std::clamp(y1, -1.0, size.height() + 1.0);
    const QRect bounds(QPoint(int(std::floor(x0)) - 2, int(std::floor(y0)) - 2),
                       QPoint(int(std::ceil(x1)) + 2, int(std::ceil(y1)) + 2));
    *rect = bounds.intersected(QRect(QPoint(0, 0), size));
    return !rect->isEmpty();
}

void scissorTo(QOpenGLExtraFunctions *f, const QRect &rect)
{
    f->glEnable(GL_SCISSOR_TEST);
    f->glScissor(rect.x(), rect.y(), rect.width(), rect.height());
}

bool markFrustumStencil(SceneFrame &frame, int p)
{
    QOpenGLShaderProgram *depthProgram = frame.common.depthProgram();
    if (!depthProgram)
        return false;
    QOpenGLExtraFunctions *f = frame.gl();
    const LensModel &lens = frame.lenses[p];
    const Eigen::Vector3d apex = lens.pose().position;
    const std::array<Eigen::Vector3d, 4> far = lens.farCorners();
    const Eigen::Vector3d centre = (apex + far[0] + far[1] + far[2] + far[3]) / 5.0;
    std::vector<float> triangles;
    auto addTriangle = [&](Eigen::Vector3d a, Eigen::Vector3d b, Eigen::Vector3d c) {
        // Counter-clockwise seen from outside.
        if ((b - a).cross(c - a).dot(a - centre) < 0)
            std::swap(b, c);
        for (const Eigen::Vector3d &v : {a, b, c})
            triangles.insert(triangles.end(), {float(v.x()), float(v.y()), float(v.z()), 0, 0, 1, 1, 1, 1});
    };
    for (int i = 0; i < 4; ++i)
        addTriangle(apex, far[i], far[(i + 1) % 4]);
    addTriangle(far[0], far[1], far[2]);
    addTriangle(far[0], far[2], far[3]);
    f->glEnable(GL_STENCIL_TEST);
    f->glStencilMask(0xFF);
    f->glClear(GL_STENCIL_BUFFER_BIT);
    f->glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    f->glDepthMask(GL_FALSE);
    f->glEnable(GL_DEPTH_TEST);
    f->glDepthFunc(GL_LESS);
    f->glEnable(GL_DEPTH_CLAMP);
    f->glDisable(GL_POLYGON_OFFSET_FILL);
    f->glStencilFunc(GL_ALWAYS, 0, 0xFF);
    f->glStencilOpSeparate(GL_BACK, GL_KEEP, GL_INCR_WRAP, GL_KEEP);
    f->glStencilOpSeparate(GL_FRONT, GL_KEEP, GL_DECR_WRAP, GL_KEEP);
    depthProgram->bind();
    frame.common.setSceneConstants(frame.viewProjection, QVector4D(1, 0, 0, 0));
    frame.common.drawGenerated(GL_TRIANGLES, triangles);
    f->glDisable(GL_DEPTH_CLAMP);
    f->glEnable(GL_POLYGON_OFFSET_FILL);
    f->glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    f->glDepthFunc(GL_LEQUAL);
    f->glStencilFunc(GL_NOTEQUAL, 0, 0xFF);
    f->glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
    f->glStencilMask(0x00);
    return true;
}

void endFrustumStencil(QOpenGLExtraFunctions *f)
{
    f->glStencilMask(0xFF);
    f->glDisable(GL_STENCIL_TEST);
}
