#include "scene/gl/OffscreenSceneRender.h"

#include "guide/GuideRenderer.h"
#include "guide/ProjectorLayout.h"
#include "scene/LensModel.h"
#include "scene/Transform.h"

#include <QOpenGLContext>
#include <QSet>
#include <QOpenGLExtraFunctions>

ViewCamera viewCameraFromSettings(const Guide3DViewSettings &view)
{
    ViewCamera camera;
    camera.setRotation(view.view_rotation_x, view.view_rotation_y);
    camera.setFocusDistance(view.focus_distance);
    camera.setTarget(QVector3D(float(view.target_x), float(view.target_y), float(view.target_z)));
    const int mode = std::clamp(view.view_mode, 0, 3);
    if (mode == int(ViewCameraMode::ProjectorView)) {
        if (!setCameraToObjectView(camera, view.objects, view.projector_camera_view_object_index))
            camera.setMode(ViewCameraMode::Perspective);
    } else {
        camera.setMode(ViewCameraMode(mode));
    }
    return camera;
}

bool setCameraToObjectView(ViewCamera &camera, const QVector<GuideObject> &objects, int index)
{
    if (index < 0 || index >= objects.size() || !objects.at(index).hasLens())
        return false;
    const vg::scene::LensModel lens = vg::scene::LensModel::forObject(objects, index);
    ViewCameraLens viewLens;
    viewLens.lensToWorld = vg::scene::objectWorldMatrix(objects.at(index));
    viewLens.throwRatio = vg::scene::clampedThrowRatio(lens.intrinsics().throwRatio);
    viewLens.lensShiftX = vg::scene::lensShiftFraction(lens.intrinsics().lensShiftX);
    viewLens.lensShiftY = vg::scene::lensShiftFraction(lens.intrinsics().lensShiftY);
    viewLens.aspect = vg::scene::lensAspect(lens.intrinsics().width, lens.intrinsics().height);
    viewLens.farDistance = lens.throwDistance();
    camera.setProjectorView(viewLens);
    return true;
}

OffscreenSceneRenderer::OffscreenSceneRenderer() = default;

OffscreenSceneRenderer::~OffscreenSceneRenderer()
{
    if (m_context.makeCurrent()) {
        QOpenGLExtraFunctions *f = m_context.context()->extraFunctions();
        if (m_fbo)
            f->glDeleteFramebuffers(1, &m_fbo);
        if (m_color)
            f->glDeleteRenderbuffers(1, &m_color);
        m_renderer.shutdown();
        m_context.doneCurrent();
    }
}

bool OffscreenSceneRenderer::initialize(QString *error)
{
    if (!m_context.isValid() && !m_context.create(error))
        return false;
    if (!m_context.makeCurrent()) {
        if (error)
            *error = QStringLiteral("The OpenGL context could not be made current.");
        return false;
    }
    return m_renderer.isInitialized() || m_renderer.initialize(error);
}

bool OffscreenSceneRenderer::ensureTarget(const QSize &size)
{
    QOpenGLExtraFunctions *f = m_context.context()->extraFunctions();
    if (m_fbo && m_size == size)
        return true;
    if (m_fbo)
        f->glDeleteFramebuffers(1, &m_fbo);
    if (m_color)
        f->glDeleteRenderbuffers(1, &m_color);
    f->glGenRenderbuffers(1, &m_color);
    f->glBindRenderbuffer(GL_RENDERBUFFER, m_color);
    f->glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, size.width(), size.height());
    f->glGenFramebuffers(1, &m_fbo);
    f->glBindFramebuffer(GL_FRAMEBUFFER, m_fbo);
    f->glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, m_color);
    const bool ok = f->glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    f->glBindFramebuffer(GL_FRAMEBUFFER, 0);
    m_size = size;
    return ok;
}

QImage OffscreenSceneRenderer::render(const QVector<GuideObject> &objects, const ViewCamera &camera,
                                      const SceneRenderSettings &settings, const QSize &size)
{
    if (size.isEmpty() || !m_context.makeCurrent() || !m_renderer.isInitialized() || !ensureTarget(size))
        return {};
    m_renderer.render(objects, camera, settings, m_fbo, size);
    QOpenGLExtraFunctions *f = m_context.context()->extraFunctions();
    QImage image(size, QImage::Format_RGBA8888);
    f->glBindFramebuffer(GL_FRAMEBUFFER, m_fbo);
    f->glPixelStorei(GL_PACK_ALIGNMENT, 4);
    f->glReadPixels(0, 0, size.width(), size.height(), GL_RGBA, GL_UNSIGNED_BYTE, image.bits());
    f->glBindFramebuffer(GL_FRAMEBUFFER, 0);
    // GL rows start at the bottom.
    return image.mirrored(false, true).convertToFormat(QImage::Format_ARGB32);
}

GuideArraySlices guideArraySlicesOf(const GuideSettings &guide)
{
    const ProjectorArrayLayout layout = computeProjectorArray(guide);
    return {layout.countX, layout.countY, projectorImageFractions(guide)};
}

bool renderSceneViewImage(const Guide3DViewSettings &view, const QList<GuideSettings> &guides,
                          const SceneViewRenderOptions &options, QImage *image, QString *error)
{
    if (options.size.width() < 1 || options.size.height() < 1 || options.size.width() > 16384
        || options.size.height() > 16384) {
        if (error)
            *error = QStringLiteral("The image size must be between 1 and 16384 pixels each way.");
        return false;
    }
    ViewCamera camera = viewCameraFromSettings(view);
    SceneRenderSettings settings;
    settings.showObjects = view.show_objects;
    settings.gridVisible = view.grid_visible;
    settings.showAllProjectorFrusta = view.show_projector_frustum || options.frustum;
    settings.showObjPolygonLines = view.show_obj_polygon_lines;
    settings.forceHeatmap = options.heatmap;
    settings.projectionEnabled = options.projection;
    settings.showLabels = options.labels;
    settings.selection = options.selection;
    switch (options.camera) {
    case SceneCameraChoice::SavedView:
        if (camera.mode() == ViewCameraMode::ProjectorView)
            settings.hiddenObjectIndex = view.projector_camera_view_object_index;
        break;
    case SceneCameraChoice::Perspective:
        camera.setMode(ViewCameraMode::Perspective);
        break;
    case SceneCameraChoice::Front:
        camera.setMode(ViewCameraMode::Front);
        break;
    case SceneCameraChoice::Side:
        camera.setMode(ViewCameraMode::Side);
        break;
    case SceneCameraChoice::Object:
        if (!setCameraToObjectView(camera, view.objects, options.objectIndex)) {
            if (error)
                *error = QStringLiteral("Object %1 is not a projector or camera of this view.").arg(options.objectIndex);
            return false;
        }
        settings.hiddenObjectIndex = options.objectIndex;
        break;
    }

    OffscreenSceneRenderer renderer;
    if (!renderer.initialize(error))
        return false;
    // Only the guides the scene shows are drawn.
    QSet<int> used;
    for (const GuideObject &object : view.objects) {
        used.insert(object.texture_guide_index);
        used.insert(object.projector_image_guide_index);
    }
    QVector<QImage> guideImages(guides.size());
    for (int i = 0; i < guides.size(); ++i)
        if (used.contains(i))
            guideImages[i] = renderGuideImage(guides.at(i));
    renderer.renderer().setGuideImages(guideImages);
    for (const GuideSettings &guide : guides)
        settings.guideArrays.append(guideArraySlicesOf(guide));
    QImage result = renderer.render(view.objects, camera, settings, options.size);
    if (result.isNull()) {
        if (error)
            *error = QStringLiteral("The 3D view could not be rendered.");
        return false;
    }
    if (image)
        *image = result;
    return true;
}
