#pragma once

#include "scene/LensModel.h"
#include "scene/gl/GlOwned.h"
#include "scene/gl/SceneConstants.h"
#include "scene/gl/SceneGpuCache.h"
#include "scene/gl/SceneRenderer.h"

#include <QElapsedTimer>
#include <QHash>
#include <QMatrix4x4>
#include <QRect>

#include <memory>
#include <vector>

class QOpenGLShaderProgram;
class ViewCamera;

// What a draw can show, as clip matrices from the mesh's local space: the camera's whole
// clip volume and, for a lens, the pyramid from its apex to its far plane (light reaches
// right up to the lens, so no near plane).
struct SceneDrawVolume {
    const QMatrix4x4 *camera = nullptr;
    const QMatrix4x4 *lens = nullptr;
};

// What every pass shares: the uniform buffers, the vertex arrays for generated geometry and
// full-screen triangles, the depth-only program, and the mesh and texture caches.
class SceneGlCommon
{
public:
    explicit SceneGlCommon(QOpenGLExtraFunctions *f);
    ~SceneGlCommon();
    QOpenGLExtraFunctions *gl() const { return m_f; }

    void setSceneConstants(const QMatrix4x4 &mvp, const QVector4D &opacityData);
    void setProjectionConstants(const ProjectionConstants &constants);
    void bindUniformBuffers();
    // Streams position-texcoord-colour vertices and draws them.
    void drawGenerated(GLenum mode, const std::vector<float> &vertices);
    void drawFullScreenTriangle();
    void drawTriangles(const GpuMesh &mesh);
    // Only the runs of triangles that may meet every volume given; the others cannot reach
    // a pixel of the draw, so the picture is the same as drawing all.
    void drawTriangles(const GpuMesh &mesh, const SceneDrawVolume &volume);

    bool cullChunks = true;
    bool shadowRange = true; // shadow lookups ask the depth range first
    qint64 trianglesDrawn = 0; // since the frame began

    QOpenGLShaderProgram *depthProgram() const { return m_depthProgram.get(); }

    SceneMeshCache meshes;
    SceneTextureCache textures;

private:
    QOpenGLExtraFunctions *m_f;
    GlBuffer m_sceneUbo, m_projectionUbo;
    GlVertexArray m_emptyVao, m_dynamicVao;
    GlBuffer m_dynamicVbo;
    std::unique_ptr<QOpenGLShaderProgram> m_depthProgram;
};

// One object as a frame draws it.
struct SceneFrameItem {
    int index;
    GpuMesh *mesh;
    QMatrix4x4 world;
    bool surface; // receives projection, casts shadows, shaded
    bool body;    // a projector or camera body
};

// Everything a pass reads about the frame being drawn.
struct SceneFrame {
    const QVector<GuideObject> &objects;
    const ViewCamera &camera;
    const SceneRenderSettings &settings;
    QSize size;
    QMatrix4x4 viewProjection;
    SceneFrameStats &stats;
    SceneGlCommon &common;
    GLuint sceneFbo = 0; // colour and depth of the view, presented at the end

    std::vector<SceneFrameItem> items;
    std::vector<int> lensObjects;    // visible projectors and cameras
    std::vector<int> projecting;     // projectors casting light
    std::vector<int> heated;         // projectors whose footprint map is needed
    QHash<int, vg::scene::LensModel> lenses;
    Eigen::AlignedBox3d targetBounds; // around every surface that can receive light

    // Finishes the GPU work so far and books it to one pass, when the settings ask to measure.
    void endPass(double &bucket);
    void startClock();

    QOpenGLExtraFunctions *gl() const { return common.gl(); }
    const GuideObject &object(int index) const { return objects.at(index); }

    QElapsedTimer passClock;
};

// The lens model's image mapping for the shaders (see ProjectionConstants::lensData).
SceneGpuVector lensImageCoefficients(const vg::scene::LensModel &lens);

// The uniform block of projector `p` drawing onto one object.
ProjectionConstants projectionConstantsFor(const SceneFrame &frame, int p, const QMatrix4x4 &mvp,
                                           const QMatrix4x4 &world, const QMatrix4x4 &shadowMvp, bool shadowsOn,
                                           double rangeMin, double rangeMax);

// World to the lens's clip space (near 0.025, far at the throw distance): the volume a
// projector lights, as the shadow map sees it.
QMatrix4x4 lensClipMatrix(const vg::scene::LensModel &lens);
// False only when the whole box lies outside one plane of the clip volume of `clip`
// (without `nearPlane`, the near plane is not one of them).
bool boxMayMeetClipVolume(const Eigen::AlignedBox3d &local, const QMatrix4x4 &clip, bool nearPlane = true);

// The screen rectangle a projector can light: its frustum cut down to the box around all
// target surfaces and to the space in front of the eye (false: nothing of it is in view).
bool projectorScissor(const SceneFrame &frame, int p, QRect *rect);
void scissorTo(QOpenGLExtraFunctions *f, const QRect &rect);

// Marks in the stencil the pixels whose visible surface lies inside the projector's frustum
// (a closed volume counted with depth-fail, robust when the eye is inside it), so the
// projector's passes shade only those; the frustum test in the shaders still decides exactly.
bool markFrustumStencil(SceneFrame &frame, int p);
void endFrustumStencil(QOpenGLExtraFunctions *f);
