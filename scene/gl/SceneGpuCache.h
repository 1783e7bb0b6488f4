#pragma once

#include "scene/GuideObject.h"
#include "scene/SceneMesh.h"
#include "scene/gl/GlOwned.h"
#include "scene/gl/SceneTextureSource.h"

#include <QImage>
#include <QVector>

#include <Eigen/Geometry>

#include <functional>
#include <map>
#include <memory>
#include <unordered_map>

// Position 3, texture coordinate 2, colour 4: the one vertex layout of every scene draw.
constexpr int kSceneFloatsPerVertex = 9;
void configureSceneVertexLayout(QOpenGLExtraFunctions *f);

// A projector or camera body keeps its own colour; other objects their mesh colour.
QColor sceneObjectBaseColor(const GuideObject &object);
// Kinds drawn as lines only: no shading, no projection onto them.
bool isLineOnlyKind(int kind);

// A run of a mesh's triangles, grouped by place, and the bounds of their vertices, so that
// a draw can skip the runs outside what it can show (a 100k-triangle dome is drawn once per
// projector, each of which lights a part of it).
struct GpuMeshChunk {
    int firstIndex = 0;
    int indexCount = 0;
    Eigen::AlignedBox3d bounds;
};

// The GPU copy of one object's mesh: shaded triangles and its wire lines.
struct GpuMesh {
    GuideObject key; // the object as uploaded, pose cleared
    float rotation[3] = {0, 0, 0};
    std::shared_ptr<const SceneMesh> mesh;
    Eigen::AlignedBox3d localBounds;
    GlVertexArray vao;
    GlBuffer vbo, ebo;
    int indexCount = 0;
    // The same triangles ordered by place (a second index buffer), split into runs; blended
    // draws keep the mesh's own order.
    GlVertexArray groupedVao;
    GlBuffer groupedEbo;
    std::vector<GpuMeshChunk> chunks;
    GlVertexArray lineVao;
    GlBuffer lineVbo;
    int lineVertexCount = 0;
    bool forceRebuild = false;
    quint64 revision = 0; // changes whenever the shape is rebuilt

    void release();
};

// Meshes by object index, rebuilt when an object's shape changes (the pose alone only
// re-lights the vertices' shading).
class SceneMeshCache
{
public:
    explicit SceneMeshCache(QOpenGLExtraFunctions *f)
        : m_f(f)
    {
    }
    // The object's mesh, uploaded when new or changed; counts uploads into `uploads`.
    GpuMesh *meshFor(const GuideObject &object, int index, int *uploads);
    void drawTriangles(const GpuMesh &mesh) const;
    // Draws `count` indices from `first` of the mesh's grouped order.
    void drawRange(const GpuMesh &mesh, int first, int count) const;
    // Frees the meshes of objects that went away.
    void keepOnly(int objectCount);
    void invalidate(int index);
    void invalidateAll();
    void clear() { m_meshes.clear(); }

private:
    QOpenGLExtraFunctions *m_f;
    std::map<int, GpuMesh> m_meshes;
    quint64 m_revisions = 0;
};

// The texture planes of one source frame: RGBA, or NV12 luma and chroma.
struct GpuTexture {
    GlTexture textures[2];
    bool nv12 = false;
    quint64 serial = 0;
    int width = 0;
    int height = 0;

    GLuint plane(int i) const { return textures[i].id(); }
};

// Texture sources and their uploaded frames, found again by key; what no draw asked for in
// a frame is freed at its end.
class SceneTextureCache
{
public:
    explicit SceneTextureCache(QOpenGLExtraFunctions *f)
        : m_f(f)
    {
    }

    void setGuideImages(const QVector<QImage> &images);
    void setResolver(SceneTextureResolver resolver) { m_resolver = std::move(resolver); }

    // What a projector casts: a live source, its guide, its image file, or a placeholder.
    const GpuTexture *projectorTexture(const QVector<GuideObject> &objects, int index);
    // What a surface shows; null when it shows its shading only.
    const GpuTexture *surfaceTexture(const GuideObject &object, int index);
    // Frees what was not used since the last call.
    void prune();
    void clear() { m_slots.clear(); }

private:
    struct Slot {
        std::shared_ptr<SceneTextureSource> source;
        GpuTexture gpu;
        bool usedThisFrame = false;
    };
    const GpuTexture *textureFor(const QString &key, const std::function<std::shared_ptr<SceneTextureSource>()> &create);
    const GpuTexture *guideTexture(int guideIndex);
    const GpuTexture *fileTexture(const QString &path);
    const GpuTexture *resolvedTexture(const GuideObject &object, int index, bool projector);

    QOpenGLExtraFunctions *m_f;
    std::unordered_map<QString, Slot> m_slots;
    QVector<QImage> m_guideImages;
    quint64 m_guideImagesSerial = 1;
    SceneTextureResolver m_resolver;
};
