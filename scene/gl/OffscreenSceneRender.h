#pragma once

#include "guide/GuideSettings.h"
#include "scene/Guide3DViewSettings.h"
#include "scene/ViewCamera.h"
#include "scene/gl/OffscreenGlContext.h"
#include "scene/gl/SceneRenderer.h"

#include <QImage>
#include <QList>
#include <QSize>
#include <QString>

#include <memory>

// How an off-screen render looks at the scene.
enum class SceneCameraChoice {
    SavedView,   // the view's own camera (its mode, orbit angles, distance, target)
    Perspective, // the saved orbit seen in perspective
    Front,
    Side,
    Object,      // through projector or camera `objectIndex`
};

struct SceneViewRenderOptions {
    QSize size = QSize(1280, 720);
    SceneCameraChoice camera = SceneCameraChoice::SavedView;
    int objectIndex = -1;          // for SceneCameraChoice::Object
    bool heatmap = false;          // heat map for every projector
    bool frustum = false;          // frusta of every projector and camera
    bool projection = true;
    bool labels = true;
    QVector<int> selection;
};

// The camera a saved view describes; mode 3 looks through the view's projector when it
// has a lens, else falls back to perspective.
ViewCamera viewCameraFromSettings(const Guide3DViewSettings &view);
// Looks through projector or camera `index` of the scene; false when it has no lens.
bool setCameraToObjectView(ViewCamera &camera, const QVector<GuideObject> &objects, int index);

// Renders scenes into images through an off-screen context of its own. The context is made
// current by every call and left current afterwards.
class OffscreenSceneRenderer
{
public:
    OffscreenSceneRenderer();
    ~OffscreenSceneRenderer();

    bool initialize(QString *error);
    SceneRenderer &renderer() { return m_renderer; }
    OffscreenGlContext &context() { return m_context; }

    // One frame read back as ARGB32 (top row first); a null image on failure.
    QImage render(const QVector<GuideObject> &objects, const ViewCamera &camera, const SceneRenderSettings &settings,
                  const QSize &size);

private:
    bool ensureTarget(const QSize &size);

    OffscreenGlContext m_context;
    SceneRenderer m_renderer;
    unsigned int m_fbo = 0, m_color = 0;
    QSize m_size;
};

// A guide's projector array as the renderer takes it (SceneRenderSettings::guideArrays).
GuideArraySlices guideArraySlicesOf(const GuideSettings &guide);

// The command-line and export path: a saved 3D view plus the project's guides to an image.
// Guides are rendered with the guide renderer and indexed like the project's guide list.
bool renderSceneViewImage(const Guide3DViewSettings &view, const QList<GuideSettings> &guides,
                          const SceneViewRenderOptions &options, QImage *image, QString *error);
