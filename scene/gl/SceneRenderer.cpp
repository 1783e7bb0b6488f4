#include "scene/gl/SceneRenderer.h"

#include "scene/Transform.h"
#include "scene/ViewCamera.h"
#include "scene/gl/SceneFootprintPass.h"
#include "scene/gl/SceneFrame.h"
#include "scene/gl/SceneGeometryPass.h"
#include "scene/gl/SceneLabelPass.h"
#include "scene/gl/SceneLightPass.h"
#include "scene/gl/SceneLinePass.h"
#include "scene/gl/SceneOutlinePass.h"
#include "scene/gl/SceneShadowPass.h"

#include <QDebug>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>

#include <set>

struct SceneRenderer::Private {
    QOpenGLExtraFunctions *f = nullptr;
    QOpenGLContext *context = nullptr;
    bool initialized = false;
    SceneRendererCapabilities caps;
    SceneFrameStats stats;
    std::unique_ptr<SceneGlCommon> common;
    QVector<QImage> guideImages;
    SceneTextureResolver resolver;

    // The view's colour and depth; the light and outline passes share the depth.
    QSize targetSize;
    GlFramebuffer sceneFbo;
    GlTexture sceneColor, sceneDepth;

    // The passes in frame order, each with its programs and GL targets; made by
    // initialize() and dropped by shutdown().
    struct Passes {
        SceneGeometryPass geometry;
        SceneShadowPass shadows;
        SceneLightPass light;
        SceneCompositePass composite;
        SceneFootprintPass footprint;
        SceneLinePass lines;
        SceneOutlinePass outline;
        SceneLabelPass labels;
    };
    std::unique_ptr<Passes> passes;

    bool loggedShadowSkip = false;
    bool caching = true;
    int residentShadowMaps = 8;
    int residentFootprintMaps = 8;
    bool chunkCulling = true;
    bool shadowRange = true;

    bool ensureFrameTargets(const QSize &size);
    void releaseFrameTargets();
    void collectItems(SceneFrame &frame);
    bool projectionReady(const SceneFrame &frame);
    void drawProjection(SceneFrame &frame);
    void releaseUnusedProjectorMaps(const SceneFrame &frame);
    void present(const SceneFrame &frame, GLuint targetFramebuffer);
    void renderFrame(const QVector<GuideObject> &objects, const ViewCamera &camera, const SceneRenderSettings &settings,
                     GLuint targetFramebuffer, const QSize &size);
};

void SceneRenderer::Private::releaseFrameTargets()
{
    sceneFbo.reset();
    sceneColor.reset();
    sceneDepth.reset();
    passes->light.releaseTargets();
    passes->outline.releaseTargets();
    targetSize = QSize();
}

bool SceneRenderer::Private::ensureFrameTargets(const QSize &size)
{
    if (size == targetSize && sceneFbo)
        return true;
    releaseFrameTargets();
    targetSize = size;
    sceneColor = makeGlTexture(f, GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, size, GL_NEAREST);
    sceneDepth = makeGlTexture(f, GL_DEPTH24_STENCIL8, GL_DEPTH_STENCIL, GL_UNSIGNED_INT_24_8, size, GL_NEAREST);
    sceneFbo = GlFramebuffer::create(f);
    f->glBindFramebuffer(GL_FRAMEBUFFER, sceneFbo.id());
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, sceneColor.id(), 0);
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_TEXTURE_2D, sceneDepth.id(), 0);
    if (!glFramebufferComplete(f, sceneFbo.id())) {
        qWarning("GL scene framebuffer is incomplete");
        return false;
    }
    passes->light.resize(f, size, sceneDepth.id());
    passes->outline.resize(f, size, sceneDepth.id());
    return true;
}

// ---- public ------------------------------------------------------------------------

SceneRenderer::SceneRenderer()
    : d(std::make_unique<Private>())
{
}

SceneRenderer::~SceneRenderer()
{
    if (d->initialized && d->context && QOpenGLContext::currentContext() == d->context)
        shutdown();
}

bool SceneRenderer::isInitialized() const
{
    return d->initialized;
}

const SceneRendererCapabilities &SceneRenderer::capabilities() const
{
    return d->caps;
}

const SceneFrameStats &SceneRenderer::lastFrameStats() const
{
    return d->stats;
}

bool SceneRenderer::initialize(QString *error)
{
    QOpenGLContext *context = QOpenGLContext::currentContext();
    if (!context) {
        if (error)
            *error = QStringLiteral("No current OpenGL context.");
        return false;
    }
    if (context->isOpenGLES() || context->format().version() < qMakePair(3, 3)) {
        if (error)
            *error = QStringLiteral("The 3D view needs OpenGL 3.3.");
        return false;
    }
    if (d->initialized)
        shutdown();
    d->context = context;
    d->f = context->extraFunctions();
    d->f->initializeOpenGLFunctions();
    d->common = std::make_unique<SceneGlCommon>(d->f);
    d->passes = std::make_unique<Private::Passes>();
    d->common->textures.setGuideImages(d->guideImages);
    d->common->textures.setResolver(d->resolver);

    SceneRendererCapabilities &caps = d->caps;
    caps = SceneRendererCapabilities();
    caps.geometry = d->passes->geometry.initialize();
    caps.texturedGeometry = d->passes->geometry.texturedAvailable();
    caps.nv12Geometry = d->passes->geometry.nv12Available();
    caps.labels = d->passes->labels.initialize();
    caps.lines = d->passes->lines.initialize();
    caps.shadowMaps = d->common->depthProgram() != nullptr && d->passes->shadows.initialize();
    if (!caps.shadowMaps)
        qWarning("GL projector shadow map pipeline is unavailable");
    const bool lightOk = d->passes->light.initialize();
    const bool compositeOk = d->passes->composite.initialize();
    caps.projection = lightOk && compositeOk;
    caps.projectionNv12 = d->passes->light.nv12Available() && compositeOk;
    d->passes->footprint.initialize();
    caps.footprintMetric = d->passes->footprint.metricAvailable();
    caps.heatmap = d->passes->footprint.heatmapAvailable();
    caps.outline = d->passes->outline.initialize() && caps.shadowMaps;
    d->initialized = true;
    if (!caps.geometry) {
        if (error)
            *error = QStringLiteral("The 3D view's shaders could not be compiled.");
        return false;
    }
    return true;
}

void SceneRenderer::shutdown()
{
    if (!d->initialized)
        return;
    d->releaseFrameTargets();
    d->passes.reset();
    d->common.reset();
    d->initialized = false;
}

void SceneRenderer::setGuideImages(const QVector<QImage> &images)
{
    d->guideImages = images;
    if (d->common)
        d->common->textures.setGuideImages(images);
}

void SceneRenderer::setTextureSourceResolver(SceneTextureResolver resolver)
{
    d->resolver = std::move(resolver);
    if (d->common)
        d->common->textures.setResolver(d->resolver);
}

void SceneRenderer::setCachingEnabled(bool on)
{
    d->caching = on;
}

void SceneRenderer::setResidentShadowMapLimit(int maps)
{
    d->residentShadowMaps = std::max(0, maps);
}

void SceneRenderer::setResidentFootprintMapLimit(int maps)
{
    d->residentFootprintMaps = std::max(0, maps);
}

void SceneRenderer::setChunkCullingEnabled(bool on)
{
    d->chunkCulling = on;
}

void SceneRenderer::setShadowRangeEnabled(bool on)
{
    d->shadowRange = on;
}

void SceneRenderer::invalidateObject(int index)
{
    if (!d->initialized)
        return;
    d->common->meshes.invalidate(index);
    d->passes->footprint.invalidate();
}

void SceneRenderer::invalidateAll()
{
    if (!d->initialized)
        return;
    d->common->meshes.invalidateAll();
    d->passes->footprint.invalidate();
}

QVector<float> SceneRenderer::footprintMetricValues(int objectIndex, QSize *size) const
{
    return d->initialized ? d->passes->footprint.values(objectIndex, size) : QVector<float>();
}

bool SceneRenderer::heatmapRange(int objectIndex, double *minimum, double *maximum) const
{
    return d->initialized && d->passes->footprint.range(objectIndex, minimum, maximum);
}

void SceneRenderer::render(const QVector<GuideObject> &objects, const ViewCamera &camera,
                           const SceneRenderSettings &settings, unsigned int targetFramebuffer, const QSize &size)
{
    if (!d->initialized || size.isEmpty())
        return;
    d->renderFrame(objects, camera, settings, targetFramebuffer, size);
}

// ---- the frame -----------------------------------------------------------------------

// Which objects take part, their GPU copies, the lenses, and which projectors project or
// need a footprint map.
void SceneRenderer::Private::collectItems(SceneFrame &frame)
{
    const QVector<GuideObject> &objects = frame.objects;
    const SceneRenderSettings &settings = frame.settings;
    const int count = int(objects.size());
    for (int i = 0; i < count; ++i) {
        const GuideObject &object = objects.at(i);
        if (!object.visible)
            continue;
        if (object.hasLens())
            frame.lensObjects.push_back(i);
        // The projector looked through still projects; only its body is left out.
        if (i == settings.hiddenObjectIndex)
            continue;
        if (!settings.showObjects && !object.hasLens())
            continue;
        GpuMesh *mesh = common->meshes.meshFor(object, i, &stats.meshUploads);
        SceneFrameItem item{i, mesh, vg::scene::objectWorldMatrix(object), false, object.hasLens()};
        // An extruded curve is a band like any wall: shaded and lit; a flat one stays a line.
        const bool band = object.guide_index == KindCurve;
        item.surface = !object.hasLens() && (band || !isLineOnlyKind(object.guide_index)) && mesh->indexCount > 0
            && object.show_shading;
        frame.items.push_back(item);
    }
    // Objects that went away free their GPU copies.
    common->meshes.keepOnly(count);

    for (int index : frame.lensObjects) {
        const GuideObject &object = objects.at(index);
        frame.lenses.insert(index, vg::scene::LensModel::forObject(objects, index));
        if (!object.isProjector())
            continue;
        if (object.projection_visible && object.projection_opacity > 0.0f)
            frame.projecting.push_back(index);
        if (object.projector_pixel_footprint_heatmap_visible || settings.forceHeatmap
            || (object.projector_pixel_footprint_labels_visible && settings.showLabels))
            frame.heated.push_back(index);
    }
    for (const SceneFrameItem &item : frame.items) {
        const Eigen::AlignedBox3d &local = item.mesh->localBounds;
        if (!item.surface || local.isEmpty())
            continue;
        for (int corner = 0; corner < 8; ++corner) {
            const QVector3D c =
                item.world.map(vg::scene::toQVector(local.corner(Eigen::AlignedBox3d::CornerType(corner))));
            frame.targetBounds.extend(vg::scene::toEigen(c));
        }
    }
}

bool SceneRenderer::Private::projectionReady(const SceneFrame &frame)
{
    const bool wanted = frame.settings.projectionEnabled && !frame.projecting.empty();
    if (!wanted || !caps.projection || !passes->light.targetsReady())
        return false;
    if (!caps.shadowMaps) {
        if (!loggedShadowSkip)
            qWarning("Skipping projector projection because GL shadow map projection is unavailable");
        loggedShadowSkip = true;
        return false;
    }
    return true;
}

// Shadow maps, then light and coverage summed over projectors, then laid over the scene.
void SceneRenderer::Private::drawProjection(SceneFrame &frame)
{
    if (!passes->shadows.update(frame)) {
        if (!loggedShadowSkip)
            qWarning("Skipping projector projection because GL shadow map projection is unavailable");
        loggedShadowSkip = true;
        return;
    }
    frame.endPass(stats.shadowMapMs);
    passes->light.draw(frame, passes->shadows);
    frame.endPass(stats.accumulationMs);
    passes->composite.draw(frame, passes->light);
}

void SceneRenderer::Private::releaseUnusedProjectorMaps(const SceneFrame &frame)
{
    std::set<int> used(frame.projecting.begin(), frame.projecting.end());
    used.insert(frame.heated.begin(), frame.heated.end());
    passes->shadows.keepOnly(used);
    passes->footprint.keepOnly(used);
}

// Copies the finished view into the caller's framebuffer.
void SceneRenderer::Private::present(const SceneFrame &frame, GLuint targetFramebuffer)
{
    const QSize size = frame.size;
    f->glDepthMask(GL_TRUE);
    f->glDisable(GL_POLYGON_OFFSET_FILL);
    f->glDisable(GL_BLEND);
    f->glDisable(GL_DEPTH_TEST);
    f->glBindFramebuffer(GL_READ_FRAMEBUFFER, sceneFbo.id());
    f->glReadBuffer(GL_COLOR_ATTACHMENT0);
    f->glBindFramebuffer(GL_DRAW_FRAMEBUFFER, targetFramebuffer);
    f->glBlitFramebuffer(0, 0, size.width(), size.height(), 0, 0, size.width(), size.height(), GL_COLOR_BUFFER_BIT,
                         GL_NEAREST);
    f->glBindFramebuffer(GL_FRAMEBUFFER, targetFramebuffer);
    f->glUseProgram(0);
}

void SceneRenderer::Private::renderFrame(const QVector<GuideObject> &objects, const ViewCamera &camera,
                                         const SceneRenderSettings &settings, GLuint targetFramebuffer,
                                         const QSize &size)
{
    stats = SceneFrameStats();
    if (!ensureFrameTargets(size))
        return;
    SceneFrame frame{objects, camera, settings, size, camera.viewProjection(size), stats, *common, sceneFbo.id()};
    collectItems(frame);
    common->bindUniformBuffers();
    common->cullChunks = chunkCulling;
    common->shadowRange = shadowRange;
    common->trianglesDrawn = 0;

    Passes &pass = *passes;
    pass.shadows.setCaching(caching);
    pass.shadows.setResidentLimit(residentShadowMaps);
    pass.footprint.setCaching(caching);
    pass.footprint.setResidentLimit(residentFootprintMaps);
    pass.geometry.draw(frame);
    if (projectionReady(frame))
        drawProjection(frame);
    frame.endPass(stats.compositeMs);
    // Further light sources (movie, NDI, calibration patterns) reach the light pass as
    // projector textures through the texture resolver; a pass that adds its own light or
    // overlay over the lit scene belongs here, before the footprint and the lines.
    pass.footprint.draw(frame);
    releaseUnusedProjectorMaps(frame);
    frame.endPass(stats.heatmapMs);
    pass.lines.draw(frame);
    pass.outline.draw(frame);
    pass.labels.draw(frame, pass.footprint);

    stats.shadowMapsResident = pass.shadows.residentCount();
    stats.footprintMapsResident = pass.footprint.residentCount();
    stats.trianglesDrawn = common->trianglesDrawn;
    present(frame, targetFramebuffer);
    common->textures.prune();
}
