#pragma once

#include "scene/GuideArraySlices.h"
#include "scene/GuideObject.h"
#include "scene/gl/SceneTextureSource.h"

#include <QColor>
#include <QImage>
#include <QSize>
#include <QString>
#include <QVector>

#include <memory>

class ViewCamera;

// What a frame shows beyond the scene objects themselves.
struct SceneRenderSettings {
    bool showObjects = true;               // the view's "show_objects"
    bool gridVisible = true;               // the view's "grid_visible"
    bool showAllProjectorFrusta = false;   // the view's "show_projector_frustum"
    bool showObjPolygonLines = false;      // the view's "show_obj_polygon_lines"
    bool projectionEnabled = true;         // simulate projection (light, shadows, composite)
    bool forceHeatmap = false;             // heat map for every projector, whatever its switch
    bool showLabels = true;                // dimensions, projector names and info texts
    bool showFps = false;
    double framesPerSecond = 0.0;          // shown as "FPS: %1"
    Qt::Corner fpsCorner = Qt::TopLeftCorner;
    QVector<int> selection;                // outlined objects
    int hiddenObjectIndex = -1;            // not drawn (the projector looked through)
    QColor backgroundColor = QColor(46, 49, 54);
    bool measurePasses = false;            // finish each pass and time it (slows the frame)
    // The guides' projector arrays, indexed like the guide images: a projector that names
    // a column and row shows only its slice of the guide.
    QVector<GuideArraySlices> guideArrays;
};

// Which parts of the pipeline compiled and were created; a missing part leaves its pass out.
struct SceneRendererCapabilities {
    bool geometry = false;
    bool texturedGeometry = false;
    bool nv12Geometry = false;
    bool lines = false;
    bool projection = false;       // accumulation and composite
    bool projectionNv12 = false;
    bool shadowMaps = false;
    bool footprintMetric = false;
    bool heatmap = false;
    bool outline = false;
    bool labels = false;
};

// Counters of the last frame, for tests and the benchmark.
struct SceneFrameStats {
    int surfacesDrawn = 0;
    int projectorsProjected = 0;
    int shadowMapsRendered = 0;
    int footprintMapsRendered = 0;
    int heatmapsDrawn = 0;
    int labelsDrawn = 0;
    int meshUploads = 0;
    int shadowMapsResident = 0; // depth maps kept between frames
    int footprintMapsResident = 0; // footprint maps kept between frames
    qint64 trianglesDrawn = 0;     // over every pass
    // Milliseconds per pass, filled when SceneRenderSettings::measurePasses is on.
    double geometryMs = 0, shadowMapMs = 0, accumulationMs = 0, compositeMs = 0, footprintMetricMs = 0,
           heatmapMs = 0, linesMs = 0, outlineMs = 0, labelsMs = 0;
};

// The 3D view's renderer: draws a list of scene objects through a camera into a framebuffer
// of the current OpenGL 3.3 context. It reads the objects it is given and keeps only GPU
// copies of their meshes and textures, refreshed when an object changes.
//
// All calls need the context that was current at initialize() to be current again.
class SceneRenderer
{
public:
    SceneRenderer();
    ~SceneRenderer(); // releases GL objects only when the context is current; else call shutdown() first
    SceneRenderer(const SceneRenderer &) = delete;
    SceneRenderer &operator=(const SceneRenderer &) = delete;

    // Compiles every pass and creates the fixed GL objects. A pass that fails is logged and
    // left out; false only when the context cannot draw the scene at all.
    bool initialize(QString *error = nullptr);
    void shutdown();
    bool isInitialized() const;
    const SceneRendererCapabilities &capabilities() const;

    // Guide images, indexed like the project's guide list (an object's texture_guide_index).
    void setGuideImages(const QVector<QImage> &images);
    // Live sources (movie, Spout, NDI) plug in here; unresolved objects use the built-in
    // rules: guide image, image file, placeholder.
    void setTextureSourceResolver(SceneTextureResolver resolver);
    // Forces the GPU copy of one object (or all) to be rebuilt at the next frame; changes
    // are also found by comparing each object with the copy last uploaded.
    void invalidateObject(int index);
    void invalidateAll();

    // Shadow and footprint maps are kept per projector and drawn again only when the
    // projector, its source or what lies in its frustum changes. Off: every frame draws them
    // all (the pictures are the same either way).
    void setCachingEnabled(bool on);
    // How many projectors keep a shadow map of their own (1024² depth, 4 MB each); the others
    // share one map drawn right before their light.
    void setResidentShadowMapLimit(int maps);
    // Likewise for the footprint maps (one float per projector pixel each).
    void setResidentFootprintMapLimit(int maps);
    // Draws skip the runs of a mesh's triangles outside what they can show (on by default;
    // the picture is the same either way).
    void setChunkCullingEnabled(bool on);
    // Shadow lookups take the answer of a map's depth range where its whole filter
    // neighbourhood agrees (on by default; the picture is the same either way).
    void setShadowRangeEnabled(bool on);

    // Draws the frame into `targetFramebuffer` (0: the default framebuffer) of `size` device
    // pixels, replacing its contents.
    void render(const QVector<GuideObject> &objects, const ViewCamera &camera, const SceneRenderSettings &settings,
                unsigned int targetFramebuffer, const QSize &size);

    const SceneFrameStats &lastFrameStats() const;

    // The footprint metric (mm per projector pixel, 0 where nothing is hit) of a projector
    // as drawn in the last frame, rows following v; empty when it was not computed.
    QVector<float> footprintMetricValues(int objectIndex, QSize *size) const;
    // The heat map range used for a projector in the last frame.
    bool heatmapRange(int objectIndex, double *minimum, double *maximum) const;

    // Shadow-map settings (texels, filter radius in texels, world-space bias in metres).
    static constexpr int kShadowMapSize = 1024;
    static constexpr float kShadowFilterRadius = 1.0f;
    static constexpr float kShadowWorldBias = 0.01f;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
