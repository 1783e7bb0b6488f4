#include "scene/gl/SceneFootprintPass.h"

#include "scene/SceneRaycast.h"
#include "scene/Transform.h"
#include "scene/gl/SceneFrame.h"
#include "scene/gl/SceneGlProgram.h"
#include "scene/gl/SceneShaderSources.h"

#include <QOpenGLShaderProgram>

#include <cmath>
#include <limits>

namespace {

// Without auto range the heat map spans a fixed 0 … 10 mm per pixel.
constexpr double kFixedHeatmapMinimum = 0.0;
constexpr double kFixedHeatmapMaximum = 10.0;
// Beyond 16 megapixels the map is kept at a coarser grid of the same image; the values stay
// millimetres per projector pixel.
constexpr double kMaxMapPixels = 16777216.0;

QSize mapResolution(const GuideObject &object)
{
    QSize resolution(std::clamp(object.projector_resolution_width, 1, 16384),
                     std::clamp(object.projector_resolution_height, 1, 16384));
    const double pixels = double(resolution.width()) * resolution.height();
    if (pixels > kMaxMapPixels) {
        const double k = std::sqrt(kMaxMapPixels / pixels);
        resolution = QSize(std::max(1, int(resolution.width() * k)), std::max(1, int(resolution.height() * k)));
    }
    return resolution;
}

} // namespace

SceneFootprintPass::SceneFootprintPass() = default;
SceneFootprintPass::~SceneFootprintPass() = default;

bool SceneFootprintPass::initialize()
{
    using namespace SceneShaderSources;
    m_metric = buildSceneProgram(QStringLiteral("footprint metric"), footprintMetricVertex(), {},
                                 footprintMetricFragment());
    if (!m_metric)
        qWarning("GL projector footprint metric shader compile failed");
    m_heatmap = buildSceneProgram(QStringLiteral("footprint heat map"), projectionVertex(), {}, heatmapFragment(),
                                  {"metricTexture"});
    if (!m_heatmap)
        qWarning("GL projector footprint shader compile failed");
    return m_metric && m_heatmap;
}

void SceneFootprintPass::clear()
{
    m_results.clear();
    m_targets.clear();
    m_shared = FootprintTarget();
}

void SceneFootprintPass::invalidate()
{
    for (auto &[index, result] : m_results)
        result.valid = false;
    m_shared.holds = -1;
}

SceneFootprintPass::Source SceneFootprintPass::sourceOf(const SceneFrame &frame, int p) const
{
    Source source;
    source.projector = frame.object(p);
    source.lens = lensClipMatrix(frame.lenses[p]);
    for (const SceneFrameItem &item : frame.items) {
        if (item.surface && boxMayMeetClipVolume(item.mesh->localBounds, source.lens * item.world))
            source.surfaces.push_back({item.index, item.mesh->revision, item.world});
    }
    return source;
}

void SceneFootprintPass::keepOnly(const std::set<int> &projectors)
{
    std::erase_if(m_results, [&](const auto &entry) { return !projectors.count(entry.first); });
    std::erase_if(m_targets, [&](const auto &entry) { return !projectors.count(entry.first); });
}

bool SceneFootprintPass::ensureTarget(QOpenGLExtraFunctions *f, FootprintTarget &target, const QSize &size)
{
    if (target.fbo && target.size == size)
        return true;
    target.fbo.reset();
    target.texture.reset();
    target.depth.reset();
    target.values.clear();
    target.size = size;
    target.holds = -1;
    target.texture = makeGlTexture(f, GL_R32F, GL_RED, GL_FLOAT, size, GL_NEAREST);
    target.depth = makeGlTexture(f, GL_DEPTH_COMPONENT32F, GL_DEPTH_COMPONENT, GL_FLOAT, size, GL_NEAREST);
    target.fbo = GlFramebuffer::create(f);
    f->glBindFramebuffer(GL_FRAMEBUFFER, target.fbo.id());
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, target.texture.id(), 0);
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_TEXTURE_2D, target.depth.id(), 0);
    if (!glFramebufferComplete(f, target.fbo.id())) {
        qWarning("GL projector footprint metric shader is unavailable");
        target.fbo.reset();
        return false;
    }
    return true;
}

void SceneFootprintPass::draw(SceneFrame &frame)
{
    if (frame.heated.empty())
        return;
    if (!m_metric) {
        if (!m_loggedMetricMissing)
            qWarning("GL projector footprint metric shader is unavailable");
        m_loggedMetricMissing = true;
        return;
    }
    if (!m_heatmap) {
        if (!m_loggedHeatmapMissing)
            qWarning("GL projector footprint shader is unavailable");
        m_loggedHeatmapMissing = true;
        return;
    }
    int rank = 0;
    for (int p : frame.heated) {
        const bool resident = rank++ < m_residentLimit;
        if (!resident)
            m_targets.erase(p);
        if (update(frame, p, resident))
            ++frame.stats.footprintMapsRendered;
    }
    frame.endPass(frame.stats.footprintMetricMs);
    beginHeatmaps(frame);
    drawHeatmaps(frame);
}

// Brings a projector's range and label points (and, when resident, its kept map) up to
// date; true when a map was drawn.
bool SceneFootprintPass::update(SceneFrame &frame, int p, bool resident)
{
    FootprintResult &result = m_results[p];
    const QSize resolution = mapResolution(frame.object(p));
    Source source = sourceOf(frame, p);
    const bool current = m_caching && result.valid && result.size == resolution && result.source == source;
    FootprintTarget &target = resident ? m_targets[p] : m_shared;
    if (current && (!resident || target.holds == p))
        return false;
    if (!ensureTarget(frame.gl(), target, resolution))
        return false;
    result.size = resolution;
    result.source = std::move(source);
    drawMap(frame, p, target, result);
    QVector<float> scratch;
    readBack(frame, p, result, resident ? target.values : scratch);
    result.valid = true;
    return true;
}

// The map of a projector without one of its own, drawn into the shared target unless that
// still holds it.
bool SceneFootprintPass::drawShared(SceneFrame &frame, int p)
{
    const FootprintResult &result = m_results[p];
    if (m_shared.holds == p && m_shared.size == result.size)
        return true;
    if (!ensureTarget(frame.gl(), m_shared, result.size))
        return false;
    drawMap(frame, p, m_shared, result);
    ++frame.stats.footprintMapsRendered;
    beginHeatmaps(frame);
    return true;
}

void SceneFootprintPass::drawMap(SceneFrame &frame, int p, FootprintTarget &target, const FootprintResult &result)
{
    QOpenGLExtraFunctions *f = frame.gl();
    const GLenum colorBuffer = GL_COLOR_ATTACHMENT0;
    f->glBindFramebuffer(GL_FRAMEBUFFER, target.fbo.id());
    f->glDrawBuffers(1, &colorBuffer);
    f->glViewport(0, 0, target.size.width(), target.size.height());
    // A shared map is drawn between heat maps, which scissor and stencil the scene.
    f->glDisable(GL_SCISSOR_TEST);
    f->glDisable(GL_STENCIL_TEST);
    f->glDisable(GL_BLEND);
    f->glEnable(GL_DEPTH_TEST);
    f->glDepthFunc(GL_LESS);
    f->glDepthMask(GL_TRUE);
    const float zero[4] = {0, 0, 0, 0};
    f->glClearBufferfv(GL_COLOR, 0, zero);
    f->glClear(GL_DEPTH_BUFFER_BIT);
    m_metric->bind();
    size_t next = 0;
    for (const SceneFrameItem &item : frame.items) {
        if (next >= result.source.surfaces.size())
            break;
        if (item.index != result.source.surfaces[next].index)
            continue;
        ++next;
        frame.common.setProjectionConstants(projectionConstantsFor(frame, p, QMatrix4x4(), item.world, QMatrix4x4(),
                                                                   false, result.rangeMin, result.rangeMax));
        const QMatrix4x4 lensMvp = result.source.lens * item.world;
        frame.common.drawTriangles(*item.mesh, {nullptr, &lensMvp});
    }
    target.holds = p;
}

// The range comes from what the projector actually hits; the label points from the surface
// depth under nine image positions.
void SceneFootprintPass::readBack(SceneFrame &frame, int p, FootprintResult &result, QVector<float> &values)
{
    QOpenGLExtraFunctions *f = frame.gl();
    const GuideObject &object = frame.object(p);
    const QSize resolution = result.size;
    values.resize(qsizetype(resolution.width()) * resolution.height());
    f->glReadPixels(0, 0, resolution.width(), resolution.height(), GL_RED, GL_FLOAT, values.data());
    result.rangeMin = kFixedHeatmapMinimum;
    result.rangeMax = kFixedHeatmapMaximum;
    if (object.projector_pixel_footprint_heatmap_auto_range) {
        double lo = std::numeric_limits<double>::max();
        double hi = 0.0;
        for (float value : std::as_const(values)) {
            if (value > 0.0001f) {
                lo = std::min(lo, double(value));
                hi = std::max(hi, double(value));
            }
        }
        if (hi > 0.0) {
            result.rangeMin = lo;
            result.rangeMax = hi;
        }
    }
    result.labelSamples.clear();
    // The points are found by casting the lens rays into the surfaces on the CPU: the map's
    // depth is interpolated across each triangle in the projector's image, which is not the
    // true depth on a surface at a slant.
    const vg::scene::LensModel &lens = frame.lenses[p];
    for (double v : {1.0 / 6.0, 0.5, 5.0 / 6.0}) {
        for (double u : {1.0 / 6.0, 0.5, 5.0 / 6.0}) {
            const int px = std::clamp(int(u * resolution.width()), 0, resolution.width() - 1);
            const int py = std::clamp(int(v * resolution.height()), 0, resolution.height() - 1);
            const float value = values[py * resolution.width() + px];
            if (value <= 0.0001f)
                continue;
            const vg::scene::LensRay ray = lens.ray((px + 0.5) / resolution.width(), (py + 0.5) / resolution.height());
            Eigen::Vector3d point;
            if (surfacePoint(frame, result.source, ray, &point))
                result.labelSamples.emplace_back(vg::scene::toQVector(point), double(value));
        }
    }
}

// The nearest surface of the map's sources along a lens ray, up to the far rectangle.
bool SceneFootprintPass::surfacePoint(const SceneFrame &frame, const Source &source, const vg::scene::LensRay &ray,
                                      Eigen::Vector3d *point) const
{
    vg::scene::SceneRayHit nearest;
    const double reach = (ray.farPoint - ray.origin).norm();
    for (const Surface &surface : source.surfaces) {
        for (const SceneFrameItem &item : frame.items) {
            if (item.index != surface.index || !item.mesh->mesh)
                continue;
            const Eigen::Matrix4d toWorld = vg::scene::objectToWorld(frame.object(item.index)).matrix();
            const vg::scene::SceneRayHit hit =
                vg::scene::raycastMesh(*item.mesh->mesh, toWorld, ray.origin, ray.direction, 1e-6, reach * 1.0001);
            if (hit.hit && (!nearest.hit || hit.distance < nearest.distance))
                nearest = hit;
        }
    }
    if (!nearest.hit)
        return false;
    *point = nearest.point;
    return true;
}

void SceneFootprintPass::beginHeatmaps(SceneFrame &frame)
{
    QOpenGLExtraFunctions *f = frame.gl();
    const GLenum colorBuffer = GL_COLOR_ATTACHMENT0;
    f->glBindFramebuffer(GL_FRAMEBUFFER, frame.sceneFbo);
    f->glDrawBuffers(1, &colorBuffer);
    f->glViewport(0, 0, frame.size.width(), frame.size.height());
    f->glEnable(GL_DEPTH_TEST);
    f->glDepthFunc(GL_LEQUAL);
    f->glDepthMask(GL_FALSE);
    f->glEnable(GL_BLEND);
    f->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
}

void SceneFootprintPass::drawHeatmaps(SceneFrame &frame)
{
    QOpenGLExtraFunctions *f = frame.gl();
    for (int p : frame.heated) {
        const FootprintResult &result = m_results[p];
        const GuideObject &object = frame.object(p);
        QRect scissor;
        if (!(object.projector_pixel_footprint_heatmap_visible || frame.settings.forceHeatmap) || !result.valid
            || !projectorScissor(frame, p, &scissor))
            continue;
        const auto kept = m_targets.find(p);
        GLuint texture = 0;
        if (kept != m_targets.end())
            texture = kept->second.texture.id();
        else if (drawShared(frame, p))
            texture = m_shared.texture.id();
        if (!texture)
            continue;
        scissorTo(f, scissor);
        markFrustumStencil(frame, p);
        m_heatmap->bind();
        f->glActiveTexture(GL_TEXTURE0);
        f->glBindTexture(GL_TEXTURE_2D, texture);
        for (const SceneFrameItem &item : frame.items) {
            if (!item.surface)
                continue;
            const QMatrix4x4 mvp = frame.viewProjection * item.world;
            const QMatrix4x4 lensMvp = result.source.lens * item.world;
            frame.common.setProjectionConstants(
                projectionConstantsFor(frame, p, mvp, item.world, QMatrix4x4(), false, result.rangeMin, result.rangeMax));
            frame.common.drawTriangles(*item.mesh, {&mvp, &lensMvp});
        }
        ++frame.stats.heatmapsDrawn;
    }
    endFrustumStencil(f);
    f->glDisable(GL_SCISSOR_TEST);
    f->glDepthMask(GL_TRUE);
}

QVector<float> SceneFootprintPass::values(int projector, QSize *size) const
{
    const auto result = m_results.find(projector);
    const auto target = m_targets.find(projector);
    if (result == m_results.end() || !result->second.valid || target == m_targets.end())
        return {};
    if (size)
        *size = result->second.size;
    return target->second.values;
}

bool SceneFootprintPass::range(int projector, double *minimum, double *maximum) const
{
    auto it = m_results.find(projector);
    if (it == m_results.end() || !it->second.valid)
        return false;
    if (minimum)
        *minimum = it->second.rangeMin;
    if (maximum)
        *maximum = it->second.rangeMax;
    return true;
}

std::vector<std::pair<QVector3D, double>> SceneFootprintPass::labelSamples(int projector) const
{
    auto it = m_results.find(projector);
    if (it == m_results.end() || !it->second.valid)
        return {};
    return it->second.labelSamples;
}
