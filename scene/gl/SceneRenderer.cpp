#include "scene/gl/SceneRenderer.h"

#include "scene/LensModel.h"
#include "scene/SceneMesh.h"
#include "scene/Transform.h"
#include "scene/ViewCamera.h"
#include "scene/gl/SceneConstants.h"
#include "scene/gl/SceneGlProgram.h"
#include "scene/gl/SceneMeshSource.h"
#include "scene/gl/SceneShaderSources.h"
#include "scene/gl/SceneTextAtlas.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QHash>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLShaderProgram>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <map>

namespace {

using vg::scene::LensModel;

constexpr int kFloatsPerVertex = 9; // position 3, texcoord 2, colour 4
constexpr float kShadowNear = 0.025f;
// Without auto range the heat map spans a fixed 0 … 10 mm per pixel.
constexpr double kFixedHeatmapMinimum = 0.0;
constexpr double kFixedHeatmapMaximum = 10.0;

struct GpuMesh {
    GuideObject key; // the object as uploaded, pose cleared
    float rotation[3] = {0, 0, 0};
    std::shared_ptr<const SceneMesh> mesh;
    Eigen::AlignedBox3d localBounds;
    GLuint vao = 0, vbo = 0, ebo = 0;
    int indexCount = 0;
    GLuint lineVao = 0, lineVbo = 0;
    int lineVertexCount = 0;
    bool forceRebuild = false;
};

struct GpuTexture {
    GLuint textures[2] = {0, 0};
    bool nv12 = false;
    quint64 serial = 0;
    int width = 0;
    int height = 0;
};

struct TextureSlot {
    std::shared_ptr<SceneTextureSource> source;
    GpuTexture gpu;
    bool usedThisFrame = false;
};

struct ProjectorTargets {
    GLuint shadowFbo = 0, shadowDepth = 0;
    GLuint metricFbo = 0, metricTexture = 0, metricDepth = 0;
    QSize metricSize;
    bool metricValid = false;
    QVector<float> metricValues;
    double rangeMin = kFixedHeatmapMinimum;
    double rangeMax = kFixedHeatmapMaximum;
    // Footprint labels: surface points of a 3 × 3 grid over the image and their values.
    std::vector<std::pair<QVector3D, double>> labelSamples;
    bool usedThisFrame = false;
};

struct LabelRequest {
    QString key;
    std::function<DimensionTextAtlasEntry()> make;
    QPointF anchor;         // pixels, top-left origin
    Qt::Alignment alignment = Qt::AlignCenter;
    float depth = -1.0f;    // NDC depth of the anchor; labels behind surfaces are hidden
};

QMatrix4x4 toMatrix(const Eigen::Matrix4d &m)
{
    return vg::scene::toQMatrix(m);
}

QColor objectBaseColor(const GuideObject &object)
{
    if (object.hasLens())
        return object.projector_default_color.isValid() ? object.projector_default_color : QColor(47, 111, 181);
    return object.mesh_color.isValid() ? object.mesh_color : QColor(200, 200, 200);
}

bool isLineOnlyKind(int kind)
{
    return kind == KindCurve || kind == KindDistanceMeasure || kind == KindComment || kind == KindDxfMesh;
}

void appendLine(std::vector<float> &out, const QVector3D &a, const QVector3D &b, const QColor &color)
{
    const float c[4] = {float(color.redF()), float(color.greenF()), float(color.blueF()), float(color.alphaF())};
    for (const QVector3D &p : {a, b}) {
        out.insert(out.end(), {p.x(), p.y(), p.z(), 0.0f, 0.0f, c[0], c[1], c[2], c[3]});
    }
}

} // namespace

struct SceneRenderer::Private {
    QOpenGLExtraFunctions *f = nullptr;
    QOpenGLContext *context = nullptr;
    bool initialized = false;
    SceneRendererCapabilities caps;
    SceneFrameStats stats;

    std::unique_ptr<QOpenGLShaderProgram> colorProgram, texturedProgram, texturedOpaqueProgram, texturedNv12Program, lineProgram,
        depthProgram, maskProgram, projectionProgram, projectionNv12Program, compositeProgram, metricProgram,
        heatmapProgram, outlineProgram, labelProgram;

    GLuint sceneUbo = 0, projectionUbo = 0;
    GLuint emptyVao = 0;
    GLuint dynamicVao = 0, dynamicVbo = 0;

    // Frame targets at the view size.
    QSize targetSize;
    GLuint sceneFbo = 0, sceneColor = 0, sceneDepth = 0;
    GLuint accumFbo = 0, lightTexture = 0, coverageTexture = 0;
    GLuint silhouetteFbo = 0, silhouetteTexture = 0, silhouetteDepth = 0;
    GLuint visibleFbo = 0, visibleTexture = 0;
    bool projectionTargetsOk = false;
    bool outlineTargetsOk = false;

    std::map<int, GpuMesh> meshes;
    QHash<QString, TextureSlot> textures;
    std::map<int, ProjectorTargets> projectors;
    QVector<QImage> guideImages;
    quint64 guideImagesSerial = 1;
    SceneTextureResolver resolver;

    // The footprint maps depend on the whole scene; they are kept until it changes.
    QVector<GuideObject> metricObjects;
    bool metricObjectsValid = false;

    SceneTextAtlasPacker atlas{1024};
    GLuint atlasTexture = 0;
    quint64 atlasUploadedRevision = 0;

    bool loggedShadowSkip = false;
    bool loggedFootprintMissing = false;
    bool loggedMetricMissing = false;

    // ---- helpers -------------------------------------------------------------------
    void setSceneConstants(const QMatrix4x4 &mvp, const QVector4D &opacityData)
    {
        SceneConstants constants;
        constants.mvp = SceneGpuMatrix::fromMatrix(mvp);
        constants.opacityData = SceneGpuVector(opacityData.x(), opacityData.y(), opacityData.z(), opacityData.w());
        f->glBindBuffer(GL_UNIFORM_BUFFER, sceneUbo);
        f->glBufferSubData(GL_UNIFORM_BUFFER, 0, sizeof(constants), &constants);
        f->glBindBuffer(GL_UNIFORM_BUFFER, 0);
    }

    void setProjectionConstants(const ProjectionConstants &constants)
    {
        f->glBindBuffer(GL_UNIFORM_BUFFER, projectionUbo);
        f->glBufferSubData(GL_UNIFORM_BUFFER, 0, sizeof(constants), &constants);
        f->glBindBuffer(GL_UNIFORM_BUFFER, 0);
    }

    void configureVertexLayout()
    {
        const GLsizei stride = kFloatsPerVertex * sizeof(float);
        f->glEnableVertexAttribArray(0);
        f->glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<void *>(0));
        f->glEnableVertexAttribArray(1);
        f->glVertexAttribPointer(1, 2, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<void *>(3 * sizeof(float)));
        f->glEnableVertexAttribArray(2);
        f->glVertexAttribPointer(2, 4, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<void *>(5 * sizeof(float)));
    }

    GLuint makeTexture(GLenum internalFormat, GLenum format, GLenum type, const QSize &size, GLenum filter)
    {
        GLuint texture = 0;
        f->glGenTextures(1, &texture);
        f->glBindTexture(GL_TEXTURE_2D, texture);
        f->glTexImage2D(GL_TEXTURE_2D, 0, GLint(internalFormat), size.width(), size.height(), 0, format, type, nullptr);
        f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GLint(filter));
        f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GLint(filter));
        f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        f->glBindTexture(GL_TEXTURE_2D, 0);
        return texture;
    }

    void deleteTexture(GLuint &texture)
    {
        if (texture)
            f->glDeleteTextures(1, &texture);
        texture = 0;
    }

    void deleteFramebuffer(GLuint &fbo)
    {
        if (fbo)
            f->glDeleteFramebuffers(1, &fbo);
        fbo = 0;
    }

    bool framebufferComplete(GLuint fbo)
    {
        f->glBindFramebuffer(GL_FRAMEBUFFER, fbo);
        const bool ok = f->glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
        f->glBindFramebuffer(GL_FRAMEBUFFER, 0);
        return ok;
    }

    void releaseFrameTargets()
    {
        for (GLuint *fbo : {&sceneFbo, &accumFbo, &silhouetteFbo, &visibleFbo})
            deleteFramebuffer(*fbo);
        for (GLuint *texture : {&sceneColor, &sceneDepth, &lightTexture, &coverageTexture, &silhouetteTexture,
                                &silhouetteDepth, &visibleTexture})
            deleteTexture(*texture);
        targetSize = QSize();
    }

    bool ensureFrameTargets(const QSize &size)
    {
        if (size == targetSize && sceneFbo)
            return true;
        releaseFrameTargets();
        targetSize = size;
        sceneColor = makeTexture(GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, size, GL_NEAREST);
        sceneDepth = makeTexture(GL_DEPTH24_STENCIL8, GL_DEPTH_STENCIL, GL_UNSIGNED_INT_24_8, size, GL_NEAREST);
        f->glGenFramebuffers(1, &sceneFbo);
        f->glBindFramebuffer(GL_FRAMEBUFFER, sceneFbo);
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, sceneColor, 0);
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_TEXTURE_2D, sceneDepth, 0);
        if (!framebufferComplete(sceneFbo)) {
            qWarning("GL scene framebuffer is incomplete");
            return false;
        }

        // Light and coverage share the scene's depth, so only visible surfaces gather light.
        lightTexture = makeTexture(GL_RGBA16F, GL_RGBA, GL_FLOAT, size, GL_NEAREST);
        coverageTexture = makeTexture(GL_RGBA16F, GL_RGBA, GL_FLOAT, size, GL_NEAREST);
        f->glGenFramebuffers(1, &accumFbo);
        f->glBindFramebuffer(GL_FRAMEBUFFER, accumFbo);
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, lightTexture, 0);
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT1, GL_TEXTURE_2D, coverageTexture, 0);
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_TEXTURE_2D, sceneDepth, 0);
        const GLenum buffers[2] = {GL_COLOR_ATTACHMENT0, GL_COLOR_ATTACHMENT1};
        f->glDrawBuffers(2, buffers);
        projectionTargetsOk = framebufferComplete(accumFbo);
        if (!projectionTargetsOk)
            qWarning("GL projection light targets are unavailable");

        silhouetteTexture = makeTexture(GL_R8, GL_RED, GL_UNSIGNED_BYTE, size, GL_NEAREST);
        silhouetteDepth = makeTexture(GL_DEPTH24_STENCIL8, GL_DEPTH_STENCIL, GL_UNSIGNED_INT_24_8, size, GL_NEAREST);
        f->glGenFramebuffers(1, &silhouetteFbo);
        f->glBindFramebuffer(GL_FRAMEBUFFER, silhouetteFbo);
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, silhouetteTexture, 0);
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_TEXTURE_2D, silhouetteDepth, 0);
        visibleTexture = makeTexture(GL_R8, GL_RED, GL_UNSIGNED_BYTE, size, GL_NEAREST);
        f->glGenFramebuffers(1, &visibleFbo);
        f->glBindFramebuffer(GL_FRAMEBUFFER, visibleFbo);
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, visibleTexture, 0);
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_TEXTURE_2D, sceneDepth, 0);
        outlineTargetsOk = framebufferComplete(silhouetteFbo) && framebufferComplete(visibleFbo);
        f->glBindFramebuffer(GL_FRAMEBUFFER, 0);
        return true;
    }

    // ---- meshes --------------------------------------------------------------------
    static GuideObject meshKey(const GuideObject &object)
    {
        GuideObject key = object;
        key.translate_x = key.translate_y = key.translate_z = 0.0f;
        key.rotate_x = key.rotate_y = key.rotate_z = 0.0f;
        key.name.clear();
        key.visible = true;
        return key;
    }

    void releaseMesh(GpuMesh &mesh)
    {
        for (GLuint *buffer : {&mesh.vbo, &mesh.ebo, &mesh.lineVbo}) {
            if (*buffer)
                f->glDeleteBuffers(1, buffer);
            *buffer = 0;
        }
        for (GLuint *vao : {&mesh.vao, &mesh.lineVao}) {
            if (*vao)
                f->glDeleteVertexArrays(1, vao);
            *vao = 0;
        }
        mesh.indexCount = mesh.lineVertexCount = 0;
    }

    // Shading is lit once per upload from a fixed light, two-sided so that domes and walls
    // read the same from inside and out.
    std::vector<float> triangleVertices(const GuideObject &object, const SceneMesh &mesh)
    {
        const Eigen::Matrix3d rotation = vg::scene::objectRotation(object);
        const Eigen::Vector3d light = Eigen::Vector3d(0.35, 0.85, 0.45).normalized();
        const QColor base = objectBaseColor(object);
        std::vector<float> out;
        out.reserve(mesh.vertices.size() * kFloatsPerVertex);
        for (const SceneVertex &v : mesh.vertices) {
            const Eigen::Vector3d n = rotation * Eigen::Vector3d(v.nx, v.ny, v.nz);
            const double len = n.norm();
            const double lambert = len > 1e-9 ? std::abs(n.dot(light)) / len : 0.5;
            const float shade = float(0.42 + 0.58 * lambert);
            out.insert(out.end(), {v.px, v.py, v.pz, v.u, v.v, float(base.redF()) * shade, float(base.greenF()) * shade,
                                   float(base.blueF()) * shade, 1.0f});
        }
        return out;
    }

    GpuMesh *meshFor(const GuideObject &object, int index)
    {
        GpuMesh &mesh = meshes[index];
        const GuideObject key = meshKey(object);
        const bool rotated = mesh.rotation[0] != object.rotate_x || mesh.rotation[1] != object.rotate_y
            || mesh.rotation[2] != object.rotate_z;
        if (mesh.mesh && !mesh.forceRebuild && mesh.key == key && !rotated)
            return &mesh;
        const bool geometryChanged = !mesh.mesh || mesh.forceRebuild || !(mesh.key == key);
        if (geometryChanged) {
            releaseMesh(mesh);
            mesh.mesh = sceneMeshForObject(object);
            mesh.localBounds.setEmpty();
            for (const SceneVertex &v : mesh.mesh->vertices)
                mesh.localBounds.extend(Eigen::Vector3d(v.px, v.py, v.pz));
            mesh.key = key;
            mesh.forceRebuild = false;
            ++stats.meshUploads;
        }
        mesh.rotation[0] = object.rotate_x;
        mesh.rotation[1] = object.rotate_y;
        mesh.rotation[2] = object.rotate_z;
        const SceneMesh &cpu = *mesh.mesh;
        if (!cpu.indices.empty()) {
            const std::vector<float> vertices = triangleVertices(object, cpu);
            if (!mesh.vao) {
                f->glGenVertexArrays(1, &mesh.vao);
                f->glGenBuffers(1, &mesh.vbo);
                f->glGenBuffers(1, &mesh.ebo);
                f->glBindVertexArray(mesh.vao);
                f->glBindBuffer(GL_ARRAY_BUFFER, mesh.vbo);
                configureVertexLayout();
                f->glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mesh.ebo);
                f->glBufferData(GL_ELEMENT_ARRAY_BUFFER, GLsizeiptr(cpu.indices.size() * sizeof(std::uint32_t)),
                                cpu.indices.data(), GL_STATIC_DRAW);
                f->glBindVertexArray(0);
                mesh.indexCount = int(cpu.indices.size());
            }
            f->glBindBuffer(GL_ARRAY_BUFFER, mesh.vbo);
            f->glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(vertices.size() * sizeof(float)), vertices.data(), GL_STATIC_DRAW);
            f->glBindBuffer(GL_ARRAY_BUFFER, 0);
        }
        if (geometryChanged && !cpu.lines.empty()) {
            std::vector<float> lines;
            lines.reserve(cpu.lines.size() * kFloatsPerVertex);
            for (const QVector3D &p : cpu.lines)
                lines.insert(lines.end(), {p.x(), p.y(), p.z(), 0.0f, 0.0f, 1.0f, 1.0f, 1.0f, 1.0f});
            f->glGenVertexArrays(1, &mesh.lineVao);
            f->glGenBuffers(1, &mesh.lineVbo);
            f->glBindVertexArray(mesh.lineVao);
            f->glBindBuffer(GL_ARRAY_BUFFER, mesh.lineVbo);
            f->glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(lines.size() * sizeof(float)), lines.data(), GL_STATIC_DRAW);
            configureVertexLayout();
            // Wire colour comes from a constant attribute so one buffer serves any colour.
            f->glDisableVertexAttribArray(2);
            f->glBindVertexArray(0);
            f->glBindBuffer(GL_ARRAY_BUFFER, 0);
            mesh.lineVertexCount = int(cpu.lines.size());
        }
        return &mesh;
    }

    void drawTriangles(const GpuMesh &mesh)
    {
        if (!mesh.vao || mesh.indexCount == 0)
            return;
        f->glBindVertexArray(mesh.vao);
        f->glDrawElements(GL_TRIANGLES, mesh.indexCount, GL_UNSIGNED_INT, nullptr);
        f->glBindVertexArray(0);
    }

    // ---- textures ------------------------------------------------------------------
    void releaseGpuTexture(GpuTexture &texture)
    {
        deleteTexture(texture.textures[0]);
        deleteTexture(texture.textures[1]);
        texture = GpuTexture();
    }

    void uploadPlane(GLuint &texture, GLenum internalFormat, GLenum format, int width, int height, const void *data,
                     bool mipmaps)
    {
        if (!texture)
            f->glGenTextures(1, &texture);
        f->glBindTexture(GL_TEXTURE_2D, texture);
        f->glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        f->glTexImage2D(GL_TEXTURE_2D, 0, GLint(internalFormat), width, height, 0, format, GL_UNSIGNED_BYTE, data);
        f->glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, mipmaps ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR);
        f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        if (mipmaps)
            f->glGenerateMipmap(GL_TEXTURE_2D);
        f->glBindTexture(GL_TEXTURE_2D, 0);
    }

    // Uploads the source's current frame when it changed; null when it has no frame.
    const GpuTexture *textureFor(const QString &key, const std::function<std::shared_ptr<SceneTextureSource>()> &create)
    {
        TextureSlot &slot = textures[key];
        slot.usedThisFrame = true;
        if (!slot.source)
            slot.source = create();
        if (!slot.source)
            return nullptr;
        const SceneTextureFrame frame = slot.source->currentFrame();
        if (!frame.isValid())
            return nullptr;
        if (frame.serial == slot.gpu.serial && slot.gpu.textures[0])
            return &slot.gpu;
        const bool nv12 = frame.format == SceneTextureFrame::Nv12;
        if (nv12 != slot.gpu.nv12 || frame.width != slot.gpu.width || frame.height != slot.gpu.height)
            releaseGpuTexture(slot.gpu);
        if (nv12) {
            uploadPlane(slot.gpu.textures[0], GL_R8, GL_RED, frame.width, frame.height, frame.luma.constData(), false);
            uploadPlane(slot.gpu.textures[1], GL_RG8, GL_RG, (frame.width + 1) / 2, (frame.height + 1) / 2,
                        frame.chroma.constData(), false);
        } else {
            const QImage rgba = frame.image.convertToFormat(QImage::Format_RGBA8888);
            // Rows are uploaded top first, so texture coordinate v = 0 is the image's top row.
            uploadPlane(slot.gpu.textures[0], GL_RGBA8, GL_RGBA, rgba.width(), rgba.height(), rgba.constBits(), true);
        }
        slot.gpu.nv12 = nv12;
        slot.gpu.serial = frame.serial;
        slot.gpu.width = frame.width;
        slot.gpu.height = frame.height;
        return &slot.gpu;
    }

    const GpuTexture *guideTexture(int guideIndex)
    {
        if (guideIndex < 0 || guideIndex >= guideImages.size() || guideImages.at(guideIndex).isNull())
            return nullptr;
        const QString key = QStringLiteral("guide|%1|%2").arg(guideIndex).arg(guideImagesSerial);
        return textureFor(key, [this, guideIndex] {
            return std::make_shared<ImageTextureSource>(guideImages.at(guideIndex));
        });
    }

    const GpuTexture *fileTexture(const QString &path)
    {
        return textureFor(QStringLiteral("file|") + path, [path] { return std::make_shared<ImageFileTextureSource>(path); });
    }

    const GpuTexture *resolvedTexture(const GuideObject &object, int index, bool projector)
    {
        if (!resolver)
            return nullptr;
        const QString key = QStringLiteral("resolved|%1|%2").arg(index).arg(projector ? 1 : 0);
        TextureSlot &slot = textures[key];
        std::shared_ptr<SceneTextureSource> source = resolver(object, index, projector);
        if (!source) {
            slot.usedThisFrame = false;
            return nullptr;
        }
        if (slot.source != source) {
            releaseGpuTexture(slot.gpu);
            slot.source = source;
        }
        return textureFor(key, [source] { return source; });
    }

    const GpuTexture *projectorTexture(const QVector<GuideObject> &objects, int index)
    {
        const GuideObject &projector = objects.at(index);
        if (const GpuTexture *live = resolvedTexture(projector, index, true))
            return live;
        const int guideRef = projector.projector_image_guide_index;
        if (guideRef >= 0) {
            // The index names a guide object of the scene; its guide tab supplies the image.
            if (guideRef < objects.size() && objects.at(guideRef).guide_index == KindGuide) {
                if (const GpuTexture *t = guideTexture(objects.at(guideRef).texture_guide_index))
                    return t;
            } else if (const GpuTexture *t = guideTexture(guideRef)) {
                return t;
            }
        }
        if (!projector.projector_image_file_path.isEmpty()) {
            if (const GpuTexture *t = fileTexture(projector.projector_image_file_path))
                return t;
        }
        const int w = std::max(1, projector.projector_resolution_width);
        const int h = std::max(1, projector.projector_resolution_height);
        const double throwRatio = vg::scene::clampedThrowRatio(projector.throw_rate);
        return textureFor(QStringLiteral("placeholder|%1|%2|%3").arg(w).arg(h).arg(throwRatio),
                          [w, h, throwRatio] { return std::make_shared<PlaceholderTextureSource>(w, h, throwRatio); });
    }

    const GpuTexture *surfaceTexture(const GuideObject &object, int index)
    {
        if (!object.texture_visible)
            return nullptr;
        if (const GpuTexture *live = resolvedTexture(object, index, false))
            return live;
        if (object.texture_guide_index >= 0) {
            if (const GpuTexture *t = guideTexture(object.texture_guide_index))
                return t;
        }
        if (!object.texture_file_path.isEmpty())
            return fileTexture(object.texture_file_path);
        return nullptr;
    }

    void pruneTextures()
    {
        for (auto it = textures.begin(); it != textures.end();) {
            if (!it->usedThisFrame) {
                releaseGpuTexture(it->gpu);
                it = textures.erase(it);
            } else {
                it->usedThisFrame = false;
                ++it;
            }
        }
    }

    // ---- projector targets ---------------------------------------------------------
    void releaseProjector(ProjectorTargets &targets)
    {
        deleteFramebuffer(targets.shadowFbo);
        deleteTexture(targets.shadowDepth);
        deleteFramebuffer(targets.metricFbo);
        deleteTexture(targets.metricTexture);
        deleteTexture(targets.metricDepth);
        targets.metricValid = false;
    }

    bool ensureShadowMap(ProjectorTargets &targets)
    {
        if (targets.shadowFbo)
            return true;
        targets.shadowDepth = makeTexture(GL_DEPTH_COMPONENT32F, GL_DEPTH_COMPONENT, GL_FLOAT,
                                          QSize(kShadowMapSize, kShadowMapSize), GL_NEAREST);
        f->glGenFramebuffers(1, &targets.shadowFbo);
        f->glBindFramebuffer(GL_FRAMEBUFFER, targets.shadowFbo);
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_TEXTURE_2D, targets.shadowDepth, 0);
        f->glDrawBuffers(0, nullptr);
        f->glReadBuffer(GL_NONE);
        if (!framebufferComplete(targets.shadowFbo)) {
            qWarning("GL projector shadow map pipeline is unavailable");
            deleteFramebuffer(targets.shadowFbo);
            deleteTexture(targets.shadowDepth);
            return false;
        }
        return true;
    }

    bool ensureMetricTarget(ProjectorTargets &targets, const QSize &size)
    {
        if (targets.metricFbo && targets.metricSize == size)
            return true;
        deleteFramebuffer(targets.metricFbo);
        deleteTexture(targets.metricTexture);
        deleteTexture(targets.metricDepth);
        targets.metricSize = size;
        targets.metricValid = false;
        targets.metricTexture = makeTexture(GL_R32F, GL_RED, GL_FLOAT, size, GL_NEAREST);
        targets.metricDepth = makeTexture(GL_DEPTH_COMPONENT32F, GL_DEPTH_COMPONENT, GL_FLOAT, size, GL_NEAREST);
        f->glGenFramebuffers(1, &targets.metricFbo);
        f->glBindFramebuffer(GL_FRAMEBUFFER, targets.metricFbo);
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, targets.metricTexture, 0);
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_TEXTURE_2D, targets.metricDepth, 0);
        if (!framebufferComplete(targets.metricFbo)) {
            qWarning("GL projector footprint metric shader is unavailable");
            deleteFramebuffer(targets.metricFbo);
            return false;
        }
        return true;
    }

    void renderFrame(const QVector<GuideObject> &objects, const ViewCamera &camera, const SceneRenderSettings &settings,
                     GLuint targetFramebuffer, const QSize &size);
};

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
    using namespace SceneShaderSources;
    const QByteArray nv12 = "PROJECTOR_TEXTURE_NV12";

    d->colorProgram = buildSceneProgram(QStringLiteral("geometry"), colorVertex(), {}, colorFragment());
    d->texturedProgram = buildSceneProgram(QStringLiteral("textured geometry"), texturedVertex(), {},
                                           texturedFragment(), {"surfaceTexture"});
    d->texturedOpaqueProgram = buildSceneProgram(QStringLiteral("textured geometry, opacity as alpha"), texturedVertex(),
                                                 {}, withDefines(texturedFragment(), {"REPLACE_ALPHA"}),
                                                 {"surfaceTexture"});
    d->texturedNv12Program = buildSceneProgram(QStringLiteral("textured geometry NV12"), texturedVertex(), {},
                                               withDefines(texturedFragment(), {nv12}), {"surfaceLuma", "surfaceChroma"});
    d->labelProgram = buildSceneProgram(QStringLiteral("labels"), texturedVertex(), {}, texturedFragment(),
                                        {"surfaceTexture"});
    d->lineProgram = buildSceneProgram(QStringLiteral("lines"), lineVertex(), lineGeometry(), lineFragment());
    d->depthProgram = buildSceneProgram(QStringLiteral("shadow map"), depthOnlyVertex(), {}, maskFragment());
    d->maskProgram = d->depthProgram ? buildSceneProgram(QStringLiteral("selection mask"), depthOnlyVertex(), {},
                                                         maskFragment())
                                     : nullptr;
    d->projectionProgram = buildSceneProgram(QStringLiteral("projection"), projectionVertex(), {},
                                             projectionFragment(), {"projectorTexture", "shadowMap"});
    d->projectionNv12Program = buildSceneProgram(QStringLiteral("projection NV12"), projectionVertex(), {},
                                                 withDefines(projectionFragment(), {nv12}),
                                                 {"projectorLuma", "projectorChroma", "shadowMap"});
    d->compositeProgram = buildSceneProgram(QStringLiteral("projection composite"), fullScreenVertex(), {},
                                            compositeFragment(), {"lightTarget", "coverageTarget"});
    d->metricProgram = buildSceneProgram(QStringLiteral("footprint metric"), footprintMetricVertex(), {},
                                         footprintMetricFragment());
    if (!d->metricProgram)
        qWarning("GL projector footprint metric shader compile failed");
    d->heatmapProgram = buildSceneProgram(QStringLiteral("footprint heat map"), projectionVertex(), {},
                                          heatmapFragment(), {"metricTexture"});
    if (!d->heatmapProgram)
        qWarning("GL projector footprint shader compile failed");
    d->outlineProgram = buildSceneProgram(QStringLiteral("selection outline"), fullScreenVertex(), {},
                                          outlineFragment(), {"silhouetteMask", "visibleMask"});

    QOpenGLExtraFunctions *f = d->f;
    f->glGenBuffers(1, &d->sceneUbo);
    f->glBindBuffer(GL_UNIFORM_BUFFER, d->sceneUbo);
    f->glBufferData(GL_UNIFORM_BUFFER, sizeof(SceneConstants), nullptr, GL_DYNAMIC_DRAW);
    f->glGenBuffers(1, &d->projectionUbo);
    f->glBindBuffer(GL_UNIFORM_BUFFER, d->projectionUbo);
    f->glBufferData(GL_UNIFORM_BUFFER, sizeof(ProjectionConstants), nullptr, GL_DYNAMIC_DRAW);
    f->glBindBuffer(GL_UNIFORM_BUFFER, 0);
    f->glGenVertexArrays(1, &d->emptyVao);
    f->glGenVertexArrays(1, &d->dynamicVao);
    f->glGenBuffers(1, &d->dynamicVbo);
    f->glBindVertexArray(d->dynamicVao);
    f->glBindBuffer(GL_ARRAY_BUFFER, d->dynamicVbo);
    d->configureVertexLayout();
    f->glBindVertexArray(0);
    f->glBindBuffer(GL_ARRAY_BUFFER, 0);

    SceneRendererCapabilities &caps = d->caps;
    caps = SceneRendererCapabilities();
    caps.geometry = bool(d->colorProgram);
    caps.texturedGeometry = bool(d->texturedProgram);
    caps.nv12Geometry = bool(d->texturedNv12Program);
    caps.lines = bool(d->lineProgram);
    caps.shadowMaps = bool(d->depthProgram);
    if (!caps.shadowMaps)
        qWarning("GL projector shadow map pipeline is unavailable");
    caps.projection = d->projectionProgram && d->compositeProgram;
    caps.projectionNv12 = d->projectionNv12Program && d->compositeProgram;
    caps.footprintMetric = bool(d->metricProgram);
    caps.heatmap = bool(d->heatmapProgram);
    caps.outline = d->outlineProgram && d->maskProgram;
    caps.labels = bool(d->labelProgram);
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
    QOpenGLExtraFunctions *f = d->f;
    for (auto &[index, mesh] : d->meshes)
        d->releaseMesh(mesh);
    d->meshes.clear();
    for (TextureSlot &slot : d->textures)
        d->releaseGpuTexture(slot.gpu);
    d->textures.clear();
    for (auto &[index, targets] : d->projectors)
        d->releaseProjector(targets);
    d->projectors.clear();
    d->releaseFrameTargets();
    d->deleteTexture(d->atlasTexture);
    d->atlasUploadedRevision = 0;
    for (GLuint *buffer : {&d->sceneUbo, &d->projectionUbo, &d->dynamicVbo}) {
        if (*buffer)
            f->glDeleteBuffers(1, buffer);
        *buffer = 0;
    }
    for (GLuint *vao : {&d->emptyVao, &d->dynamicVao}) {
        if (*vao)
            f->glDeleteVertexArrays(1, vao);
        *vao = 0;
    }
    d->colorProgram.reset();
    d->texturedProgram.reset();
    d->texturedOpaqueProgram.reset();
    d->texturedNv12Program.reset();
    d->labelProgram.reset();
    d->lineProgram.reset();
    d->depthProgram.reset();
    d->maskProgram.reset();
    d->projectionProgram.reset();
    d->projectionNv12Program.reset();
    d->compositeProgram.reset();
    d->metricProgram.reset();
    d->heatmapProgram.reset();
    d->outlineProgram.reset();
    d->metricObjectsValid = false;
    d->initialized = false;
}

void SceneRenderer::setGuideImages(const QVector<QImage> &images)
{
    d->guideImages = images;
    ++d->guideImagesSerial;
}

void SceneRenderer::setTextureSourceResolver(SceneTextureResolver resolver)
{
    d->resolver = std::move(resolver);
}

void SceneRenderer::invalidateObject(int index)
{
    auto it = d->meshes.find(index);
    if (it != d->meshes.end())
        it->second.forceRebuild = true;
    d->metricObjectsValid = false;
}

void SceneRenderer::invalidateAll()
{
    for (auto &[index, mesh] : d->meshes)
        mesh.forceRebuild = true;
    d->metricObjectsValid = false;
}

QVector<float> SceneRenderer::footprintMetricValues(int objectIndex, QSize *size) const
{
    auto it = d->projectors.find(objectIndex);
    if (it == d->projectors.end() || !it->second.metricValid)
        return {};
    if (size)
        *size = it->second.metricSize;
    return it->second.metricValues;
}

bool SceneRenderer::heatmapRange(int objectIndex, double *minimum, double *maximum) const
{
    auto it = d->projectors.find(objectIndex);
    if (it == d->projectors.end() || !it->second.metricValid)
        return false;
    if (minimum)
        *minimum = it->second.rangeMin;
    if (maximum)
        *maximum = it->second.rangeMax;
    return true;
}

void SceneRenderer::render(const QVector<GuideObject> &objects, const ViewCamera &camera,
                           const SceneRenderSettings &settings, unsigned int targetFramebuffer, const QSize &size)
{
    if (!d->initialized || size.isEmpty())
        return;
    d->renderFrame(objects, camera, settings, targetFramebuffer, size);
}

// ---- the frame -----------------------------------------------------------------------

void SceneRenderer::Private::renderFrame(const QVector<GuideObject> &objects, const ViewCamera &camera,
                                         const SceneRenderSettings &settings, GLuint targetFramebuffer,
                                         const QSize &size)
{
    stats = SceneFrameStats();
    if (!ensureFrameTargets(size))
        return;
    const QMatrix4x4 viewProjection = camera.viewProjection(size);
    const int count = int(objects.size());

    // Which objects take part, and their GPU copies.
    struct Item {
        int index;
        GpuMesh *mesh;
        QMatrix4x4 world;
        bool surface;       // receives projection, casts shadows, shaded
        bool body;          // a projector or camera body
    };
    std::vector<Item> items;
    std::vector<int> lensObjects;
    QSet<int> seen;
    for (int i = 0; i < count; ++i) {
        const GuideObject &object = objects.at(i);
        seen.insert(i);
        if (!object.visible)
            continue;
        if (object.hasLens())
            lensObjects.push_back(i);
        // The projector looked through still projects; only its body is left out.
        if (i == settings.hiddenObjectIndex)
            continue;
        if (!settings.showObjects && !object.hasLens())
            continue;
        GpuMesh *mesh = meshFor(object, i);
        if (!mesh)
            continue;
        Item item{i, mesh, vg::scene::objectWorldMatrix(object), false, object.hasLens()};
        item.surface = !object.hasLens() && !isLineOnlyKind(object.guide_index) && mesh->indexCount > 0
            && object.show_shading;
        items.push_back(item);
    }
    // Objects that went away free their GPU copies.
    for (auto it = meshes.begin(); it != meshes.end();) {
        if (!seen.contains(it->first)) {
            releaseMesh(it->second);
            it = meshes.erase(it);
        } else {
            ++it;
        }
    }

    f->glBindBufferBase(GL_UNIFORM_BUFFER, SceneConstantsBinding, sceneUbo);
    f->glBindBufferBase(GL_UNIFORM_BUFFER, ProjectionConstantsBinding, projectionUbo);
    f->glViewport(0, 0, size.width(), size.height());
    f->glBindFramebuffer(GL_FRAMEBUFFER, sceneFbo);
    const GLenum colorBuffer = GL_COLOR_ATTACHMENT0;
    f->glDrawBuffers(1, &colorBuffer);
    const QColor bg = settings.backgroundColor;
    f->glClearColor(float(bg.redF()), float(bg.greenF()), float(bg.blueF()), 1.0f);
    f->glClearDepthf(1.0f);
    f->glDepthMask(GL_TRUE);
    f->glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    f->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    f->glDisable(GL_CULL_FACE);
    f->glDisable(GL_SCISSOR_TEST);
    f->glDisable(GL_STENCIL_TEST);
    // Surfaces are pushed back a little so that grid and wire lines on them stay whole;
    // every triangle pass uses the same offset, so their depths still match exactly.
    f->glEnable(GL_POLYGON_OFFSET_FILL);
    f->glPolygonOffset(1.0f, 1.0f);

    QElapsedTimer passClock;
    // Finishes the GPU work so far and books it to one pass, when asked to measure.
    auto endPass = [&](double &bucket) {
        if (!settings.measurePasses)
            return;
        f->glFinish();
        bucket += passClock.nsecsElapsed() / 1.0e6;
        passClock.restart();
    };
    if (settings.measurePasses) {
        f->glFinish();
        passClock.start();
    }

    // 1. Geometry: opaque first, then see-through surfaces without depth writes.
    f->glEnable(GL_DEPTH_TEST);
    f->glDepthFunc(GL_LEQUAL);
    f->glEnable(GL_BLEND);
    f->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    for (int passIndex = 0; passIndex < 2; ++passIndex) {
        const bool transparentPass = passIndex == 1;
        f->glDepthMask(transparentPass ? GL_FALSE : GL_TRUE);
        for (const Item &item : items) {
            const GuideObject &object = objects.at(item.index);
            if (item.mesh->indexCount == 0 || (!item.surface && !item.body))
                continue;
            const float opacity = std::clamp(object.object_opacity, 0.0f, 1.0f);
            if ((opacity < 0.999f) != transparentPass)
                continue;
            const GpuTexture *texture = item.surface ? surfaceTexture(object, item.index) : nullptr;
            QOpenGLShaderProgram *program = colorProgram.get();
            // Guide panels show the guide as an opaque picture whatever its alpha.
            if (texture)
                program = texture->nv12 ? texturedNv12Program.get()
                          : object.guide_index == KindGuide && texturedOpaqueProgram ? texturedOpaqueProgram.get()
                                                                                      : texturedProgram.get();
            if (!program)
                program = colorProgram.get();
            if (!program)
                continue;
            program->bind();
            if (texture && program != colorProgram.get()) {
                f->glActiveTexture(GL_TEXTURE0);
                f->glBindTexture(GL_TEXTURE_2D, texture->textures[0]);
                if (texture->nv12) {
                    f->glActiveTexture(GL_TEXTURE1);
                    f->glBindTexture(GL_TEXTURE_2D, texture->textures[1]);
                    f->glActiveTexture(GL_TEXTURE0);
                }
            }
            setSceneConstants(viewProjection * item.world, QVector4D(opacity, 0, 0, 0));
            drawTriangles(*item.mesh);
            if (item.surface)
                ++stats.surfacesDrawn;
        }
    }
    f->glDepthMask(GL_TRUE);

    endPass(stats.geometryMs);

    // 3–5. Projection: shadow maps, light accumulation, composite.
    std::vector<int> projecting;
    for (int index : lensObjects) {
        const GuideObject &object = objects.at(index);
        if (object.isProjector() && object.projection_visible && object.projection_opacity > 0.0f)
            projecting.push_back(index);
    }
    QHash<int, LensModel> lenses;
    for (int index : lensObjects)
        lenses.insert(index, LensModel::forObject(objects, index));

    auto projectionConstantsFor = [&](int projectorIndex, const QMatrix4x4 &mvp, const QMatrix4x4 &world,
                                      const QMatrix4x4 &shadowMvp, bool shadowsOn) {
        const GuideObject &p = objects.at(projectorIndex);
        const LensModel &lens = lenses[projectorIndex];
        const QMatrix4x4 projectorWorld = vg::scene::objectWorldMatrix(p);
        ProjectionConstants c;
        c.mvp = SceneGpuMatrix::fromMatrix(mvp);
        c.targetWorld = SceneGpuMatrix::fromMatrix(world);
        c.shadowMvp = SceneGpuMatrix::fromMatrix(shadowMvp);
        c.projectorInverseWorld = SceneGpuMatrix::fromMatrix(projectorWorld.inverted());
        c.projectorWorld = SceneGpuMatrix::fromMatrix(projectorWorld);
        c.projectorData0 = SceneGpuVector(0, 0, 0, float(vg::scene::clampedThrowRatio(p.throw_rate)));
        c.projectorData1 = SceneGpuVector(0, float(vg::scene::lensAspect(p.projector_resolution_width,
                                                                         p.projector_resolution_height)),
                                          float(vg::scene::lensShiftFraction(p.lens_shift_x)),
                                          float(vg::scene::lensShiftFraction(p.lens_shift_y)));
        // The lens point is the object's origin, so its offset in the projector frame is zero.
        c.projectorData2 = SceneGpuVector(float(lens.throwDistance()), 0, 0.0f, 0.0f);
        c.projectorData3 = SceneGpuVector(0.0f, std::clamp(p.projection_opacity, 0.0f, 1.0f), p.projector_flip_h ? 1 : 0,
                                          p.projector_flip_v ? 1 : 0);
        c.projectorData4 = SceneGpuVector(p.projector_rotate_180 ? 1 : 0, float(std::max(1, p.projector_resolution_width)),
                                          float(std::max(1, p.projector_resolution_height)), 0);
        c.shadowData = SceneGpuVector(kShadowWorldBias, shadowsOn ? 1.0f : 0.0f, float(kShadowMapSize),
                                      kShadowFilterRadius);
        const bool heat = p.projector_pixel_footprint_heatmap_visible || settings.forceHeatmap;
        c.footprintData = SceneGpuVector(heat ? 1 : 0, p.projector_pixel_footprint_grid_visible ? 1 : 0,
                                         float(std::max(1, p.projector_pixel_footprint_sample_step_pixels)),
                                         float(std::clamp(p.projector_pixel_footprint_metric, 0, 3)));
        ProjectorTargets &targets = projectors[projectorIndex];
        c.footprintRangeData = SceneGpuVector(float(targets.rangeMin), float(targets.rangeMax),
                                              std::clamp(p.projector_pixel_footprint_heatmap_opacity, 0.0f, 1.0f), 0);
        return c;
    };
    auto shadowMatrixFor = [&](int projectorIndex) {
        const LensModel &lens = lenses[projectorIndex];
        const double farPlane = std::max(double(kShadowNear) + 0.001, lens.throwDistance());
        return toMatrix(lens.projectionMatrix(kShadowNear, farPlane)) * toMatrix(lens.viewMatrix());
    };

    // The part of the view a projector can light: its frustum cut down to the box around all
    // target surfaces and to the space in front of the eye, projected to the screen. Passes
    // of that projector are scissored to it (false: nothing of it is in view).
    Eigen::AlignedBox3d targetBounds;
    for (const Item &item : items) {
        if (!item.surface)
            continue;
        const Eigen::AlignedBox3d &local = item.mesh->localBounds;
        if (local.isEmpty())
            continue;
        for (int corner = 0; corner < 8; ++corner) {
            const QVector3D c = item.world.map(vg::scene::toQVector(local.corner(Eigen::AlignedBox3d::CornerType(corner))));
            targetBounds.extend(vg::scene::toEigen(c));
        }
    }
    auto frustumScissor = [&](int projectorIndex, QRect *rect) {
        if (targetBounds.isEmpty())
            return false;
        const LensModel &lens = lenses[projectorIndex];
        const Eigen::Vector3d apex = lens.pose().position;
        const std::array<Eigen::Vector3d, 4> far = lens.farCorners();
        // The frustum as faces: four sides and the far cap.
        std::vector<std::vector<Eigen::Vector4d>> faces;
        auto h = [](const Eigen::Vector3d &p) { return Eigen::Vector4d(p.x(), p.y(), p.z(), 1.0); };
        for (int i = 0; i < 4; ++i)
            faces.push_back({h(apex), h(far[i]), h(far[(i + 1) % 4])});
        faces.push_back({h(far[0]), h(far[1]), h(far[2]), h(far[3])});
        // Keeps the part where dot(plane, point) >= 0 and closes the cut with a cap face.
        auto clip = [&](const Eigen::Vector4d &plane) {
            std::vector<std::vector<Eigen::Vector4d>> kept;
            std::vector<Eigen::Vector4d> cut;
            for (const auto &face : faces) {
                std::vector<Eigen::Vector4d> out;
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
        };
        const Eigen::Vector3d lo = targetBounds.min(), hi = targetBounds.max();
        for (int axis = 0; axis < 3; ++axis) {
            Eigen::Vector4d lower = Eigen::Vector4d::Zero(), upper = Eigen::Vector4d::Zero();
            lower[axis] = 1.0;
            lower[3] = -lo[axis] + 0.01;
            upper[axis] = -1.0;
            upper[3] = hi[axis] + 0.01;
            clip(lower);
            clip(upper);
        }
        // In front of the eye: w > 0 in the camera's clip space.
        const Eigen::Vector4d wRow(viewProjection(3, 0), viewProjection(3, 1), viewProjection(3, 2),
                                   viewProjection(3, 3) - 0.0001);
        clip(wRow);
        double x0 = 1e30, y0 = 1e30, x1 = -1e30, y1 = -1e30;
        for (const auto &face : faces) {
            for (const Eigen::Vector4d &p : face) {
                const QVector4D c = viewProjection * QVector4D(float(p.x()), float(p.y()), float(p.z()), 1.0f);
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
    };
    auto scissorTo = [&](const QRect &rect) {
        f->glEnable(GL_SCISSOR_TEST);
        f->glScissor(rect.x(), rect.y(), rect.width(), rect.height());
    };

    // Marks in the stencil the pixels whose visible surface lies inside the projector's frustum
    // (a closed volume counted with depth-fail, robust when the eye is inside it), so the
    // projector's passes shade only those. The frustum shader test still decides exactly.
    auto markFrustumStencil = [&](int projectorIndex) {
        if (!depthProgram)
            return false;
        const LensModel &lens = lenses[projectorIndex];
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
        setSceneConstants(viewProjection, QVector4D(1, 0, 0, 0));
        f->glBindVertexArray(dynamicVao);
        f->glBindBuffer(GL_ARRAY_BUFFER, dynamicVbo);
        f->glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(triangles.size() * sizeof(float)), triangles.data(), GL_STREAM_DRAW);
        f->glDrawArrays(GL_TRIANGLES, 0, GLsizei(triangles.size() / kFloatsPerVertex));
        f->glBindVertexArray(0);
        f->glDisable(GL_DEPTH_CLAMP);
        f->glEnable(GL_POLYGON_OFFSET_FILL);
        f->glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
        f->glDepthFunc(GL_LEQUAL);
        f->glStencilFunc(GL_NOTEQUAL, 0, 0xFF);
        f->glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
        f->glStencilMask(0x00);
        return true;
    };
    auto endStencil = [&] {
        f->glStencilMask(0xFF);
        f->glDisable(GL_STENCIL_TEST);
    };

    const bool wantProjection = settings.projectionEnabled && !projecting.empty();
    bool projectionReady = wantProjection && caps.projection && projectionTargetsOk;
    if (wantProjection && !caps.shadowMaps) {
        if (!loggedShadowSkip)
            qWarning("Skipping projector projection because GL shadow map projection is unavailable");
        loggedShadowSkip = true;
        projectionReady = false;
    }
    if (projectionReady) {
        // Shadow maps: every surface and every other body is a caster.
        std::map<int, QMatrix4x4> shadowMatrices;
        bool shadowsOk = true;
        for (int p : projecting) {
            ProjectorTargets &targets = projectors[p];
            if (!ensureShadowMap(targets)) {
                shadowsOk = false;
                break;
            }
            const QMatrix4x4 shadowMvp = shadowMatrixFor(p);
            shadowMatrices[p] = shadowMvp;
            f->glBindFramebuffer(GL_FRAMEBUFFER, targets.shadowFbo);
            f->glViewport(0, 0, kShadowMapSize, kShadowMapSize);
            f->glDisable(GL_BLEND);
            f->glEnable(GL_DEPTH_TEST);
            f->glDepthFunc(GL_LESS);
            f->glDepthMask(GL_TRUE);
            f->glClear(GL_DEPTH_BUFFER_BIT);
            depthProgram->bind();
            for (const Item &item : items) {
                if (item.index == p || item.mesh->indexCount == 0 || (!item.surface && !item.body))
                    continue;
                setSceneConstants(shadowMvp * item.world, QVector4D(1, 0, 0, 0));
                drawTriangles(*item.mesh);
            }
            ++stats.shadowMapsRendered;
        }
        if (!shadowsOk) {
            if (!loggedShadowSkip)
                qWarning("Skipping projector projection because GL shadow map projection is unavailable");
            loggedShadowSkip = true;
        } else {
            endPass(stats.shadowMapMs);
            // Light and coverage add up over projectors.
            f->glBindFramebuffer(GL_FRAMEBUFFER, accumFbo);
            const GLenum buffers[2] = {GL_COLOR_ATTACHMENT0, GL_COLOR_ATTACHMENT1};
            f->glDrawBuffers(2, buffers);
            f->glViewport(0, 0, size.width(), size.height());
            const float zero[4] = {0, 0, 0, 0};
            f->glClearBufferfv(GL_COLOR, 0, zero);
            f->glClearBufferfv(GL_COLOR, 1, zero);
            f->glEnable(GL_DEPTH_TEST);
            f->glDepthFunc(GL_LEQUAL);
            f->glDepthMask(GL_FALSE);
            f->glEnable(GL_BLEND);
            f->glBlendFunc(GL_ONE, GL_ONE);
            for (int p : projecting) {
                const GpuTexture *texture = projectorTexture(objects, p);
                QRect scissor;
                if (!texture || !frustumScissor(p, &scissor))
                    continue;
                QOpenGLShaderProgram *program = texture->nv12 ? projectionNv12Program.get() : projectionProgram.get();
                if (!program)
                    continue;
                scissorTo(scissor);
                markFrustumStencil(p);
                program->bind();
                f->glActiveTexture(GL_TEXTURE0);
                f->glBindTexture(GL_TEXTURE_2D, texture->textures[0]);
                int shadowUnit = 1;
                if (texture->nv12) {
                    f->glActiveTexture(GL_TEXTURE1);
                    f->glBindTexture(GL_TEXTURE_2D, texture->textures[1]);
                    shadowUnit = 2;
                }
                f->glActiveTexture(GL_TEXTURE0 + shadowUnit);
                f->glBindTexture(GL_TEXTURE_2D, projectors[p].shadowDepth);
                f->glActiveTexture(GL_TEXTURE0);
                for (const Item &item : items) {
                    if (!item.surface)
                        continue;
                    setProjectionConstants(projectionConstantsFor(p, viewProjection * item.world, item.world,
                                                                  shadowMatrices[p], true));
                    drawTriangles(*item.mesh);
                }
                ++stats.projectorsProjected;
            }
            endStencil();
            f->glDisable(GL_SCISSOR_TEST);
            f->glDepthMask(GL_TRUE);

            endPass(stats.accumulationMs);
            // Composite over the shaded scene.
            f->glBindFramebuffer(GL_FRAMEBUFFER, sceneFbo);
            f->glDrawBuffers(1, &colorBuffer);
            f->glDisable(GL_DEPTH_TEST);
            f->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
            compositeProgram->bind();
            f->glActiveTexture(GL_TEXTURE0);
            f->glBindTexture(GL_TEXTURE_2D, lightTexture);
            f->glActiveTexture(GL_TEXTURE1);
            f->glBindTexture(GL_TEXTURE_2D, coverageTexture);
            f->glActiveTexture(GL_TEXTURE0);
            f->glBindVertexArray(emptyVao);
            f->glDrawArrays(GL_TRIANGLES, 0, 3);
            f->glBindVertexArray(0);
        }
    }

    endPass(stats.compositeMs);

    // 6–7. Footprint metric maps and the heat map.
    // Metric maps serve the heat map and the footprint labels.
    std::vector<int> heated;
    for (int p : lensObjects) {
        const GuideObject &object = objects.at(p);
        if (object.isProjector()
            && (object.projector_pixel_footprint_heatmap_visible || settings.forceHeatmap
                || (object.projector_pixel_footprint_labels_visible && settings.showLabels)))
            heated.push_back(p);
    }
    if (!heated.empty()) {
        if (!caps.footprintMetric || !metricProgram) {
            if (!loggedMetricMissing)
                qWarning("GL projector footprint metric shader is unavailable");
            loggedMetricMissing = true;
        } else if (!caps.heatmap || !heatmapProgram) {
            if (!loggedFootprintMissing)
                qWarning("GL projector footprint shader is unavailable");
            loggedFootprintMissing = true;
        } else {
            const bool sceneSame = metricObjectsValid && metricObjects == objects;
            for (int p : heated) {
                const GuideObject &object = objects.at(p);
                ProjectorTargets &targets = projectors[p];
                QSize resolution(std::clamp(object.projector_resolution_width, 1, 16384),
                                 std::clamp(object.projector_resolution_height, 1, 16384));
                // Beyond 16 megapixels the map is kept at a coarser grid of the same image;
                // the values stay millimetres per projector pixel.
                const double pixels = double(resolution.width()) * resolution.height();
                if (pixels > 16777216.0) {
                    const double k = std::sqrt(16777216.0 / pixels);
                    resolution = QSize(std::max(1, int(resolution.width() * k)), std::max(1, int(resolution.height() * k)));
                }
                if (sceneSame && targets.metricValid && targets.metricSize == resolution)
                    continue;
                if (!ensureMetricTarget(targets, resolution))
                    continue;
                f->glBindFramebuffer(GL_FRAMEBUFFER, targets.metricFbo);
                f->glDrawBuffers(1, &colorBuffer);
                f->glViewport(0, 0, resolution.width(), resolution.height());
                f->glDisable(GL_BLEND);
                f->glEnable(GL_DEPTH_TEST);
                f->glDepthFunc(GL_LESS);
                f->glDepthMask(GL_TRUE);
                const float zero[4] = {0, 0, 0, 0};
                f->glClearBufferfv(GL_COLOR, 0, zero);
                f->glClear(GL_DEPTH_BUFFER_BIT);
                metricProgram->bind();
                for (const Item &item : items) {
                    if (!item.surface)
                        continue;
                    setProjectionConstants(projectionConstantsFor(p, QMatrix4x4(), item.world, QMatrix4x4(), false));
                    drawTriangles(*item.mesh);
                }
                // The range comes from what the projector actually hits.
                targets.metricValues.resize(qsizetype(resolution.width()) * resolution.height());
                f->glReadPixels(0, 0, resolution.width(), resolution.height(), GL_RED, GL_FLOAT,
                                targets.metricValues.data());
                if (object.projector_pixel_footprint_heatmap_auto_range) {
                    double lo = std::numeric_limits<double>::max();
                    double hi = 0.0;
                    for (float value : std::as_const(targets.metricValues)) {
                        if (value > 0.0001f) {
                            lo = std::min(lo, double(value));
                            hi = std::max(hi, double(value));
                        }
                    }
                    if (hi <= 0.0) {
                        lo = kFixedHeatmapMinimum;
                        hi = kFixedHeatmapMaximum;
                    }
                    targets.rangeMin = lo;
                    targets.rangeMax = hi;
                } else {
                    targets.rangeMin = kFixedHeatmapMinimum;
                    targets.rangeMax = kFixedHeatmapMaximum;
                }
                // Label points: the surface depth under nine image positions.
                targets.labelSamples.clear();
                const LensModel &lens = lenses[p];
                for (double v : {1.0 / 6.0, 0.5, 5.0 / 6.0}) {
                    for (double u : {1.0 / 6.0, 0.5, 5.0 / 6.0}) {
                        const int px = std::clamp(int(u * resolution.width()), 0, resolution.width() - 1);
                        const int py = std::clamp(int(v * resolution.height()), 0, resolution.height() - 1);
                        const float value = targets.metricValues[py * resolution.width() + px];
                        if (value <= 0.0001f)
                            continue;
                        float depth01 = 1.0f;
                        f->glReadPixels(px, py, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth01);
                        const vg::scene::LensRay ray = lens.ray((px + 0.5) / resolution.width(),
                                                                (py + 0.5) / resolution.height());
                        const Eigen::Vector3d at = ray.origin + (ray.farPoint - ray.origin) * double(depth01);
                        targets.labelSamples.emplace_back(vg::scene::toQVector(at), double(value));
                    }
                }
                targets.metricValid = true;
                ++stats.footprintMapsRendered;
            }
            metricObjects = objects;
            metricObjectsValid = true;

            f->glBindFramebuffer(GL_FRAMEBUFFER, sceneFbo);
            f->glDrawBuffers(1, &colorBuffer);
            f->glViewport(0, 0, size.width(), size.height());
            f->glEnable(GL_DEPTH_TEST);
            f->glDepthFunc(GL_LEQUAL);
            f->glDepthMask(GL_FALSE);
            f->glEnable(GL_BLEND);
            f->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
            endPass(stats.footprintMetricMs);
            heatmapProgram->bind();
            for (int p : heated) {
                ProjectorTargets &targets = projectors[p];
                const GuideObject &object = objects.at(p);
                QRect scissor;
                if (!(object.projector_pixel_footprint_heatmap_visible || settings.forceHeatmap) || !targets.metricValid
                    || !frustumScissor(p, &scissor))
                    continue;
                scissorTo(scissor);
                markFrustumStencil(p);
                heatmapProgram->bind();
                f->glActiveTexture(GL_TEXTURE0);
                f->glBindTexture(GL_TEXTURE_2D, targets.metricTexture);
                for (const Item &item : items) {
                    if (!item.surface)
                        continue;
                    setProjectionConstants(projectionConstantsFor(p, viewProjection * item.world, item.world,
                                                                  QMatrix4x4(), false));
                    drawTriangles(*item.mesh);
                }
                ++stats.heatmapsDrawn;
            }
            endStencil();
            f->glDisable(GL_SCISSOR_TEST);
            f->glDepthMask(GL_TRUE);
        }
    }
    for (auto &[index, targets] : projectors)
        targets.usedThisFrame = false;
    for (int p : projecting)
        projectors[p].usedThisFrame = true;
    for (int p : heated)
        projectors[p].usedThisFrame = true;
    for (auto it = projectors.begin(); it != projectors.end();) {
        if (!it->second.usedThisFrame) {
            releaseProjector(it->second);
            it = projectors.erase(it);
        } else {
            ++it;
        }
    }

    endPass(stats.heatmapMs);

    // 2. Lines: grid, wire frames, frusta, measures and curves, over the lit surfaces.
    f->glBindFramebuffer(GL_FRAMEBUFFER, sceneFbo);
    f->glDrawBuffers(1, &colorBuffer);
    f->glViewport(0, 0, size.width(), size.height());
    f->glDisable(GL_POLYGON_OFFSET_FILL); // the lines' quads are triangles too
    if (caps.lines) {
        f->glEnable(GL_DEPTH_TEST);
        f->glDepthFunc(GL_LEQUAL);
        f->glDepthMask(GL_FALSE);
        f->glEnable(GL_BLEND);
        f->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        lineProgram->bind();
        std::map<float, std::vector<float>> worldLines; // by line width
        if (settings.gridVisible) {
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
        for (int index : lensObjects) {
            const GuideObject &object = objects.at(index);
            if (!(object.show_projector_frustum || settings.showAllProjectorFrusta) || index == settings.hiddenObjectIndex)
                continue;
            const QColor color = object.isCamera() ? vg::scene::cameraFrustumColor() : vg::scene::projectorFrustumColor();
            const std::vector<QVector3D> lines = lenses[index].frustumLines();
            std::vector<float> &out = worldLines[1.5f];
            for (size_t i = 0; i + 1 < lines.size(); i += 2)
                appendLine(out, lines[i], lines[i + 1], color);
        }
        if (!worldLines.empty()) {
            setSceneConstants(viewProjection, QVector4D(1, float(size.width()), float(size.height()), 1));
            for (auto &[width, vertices] : worldLines) {
                setSceneConstants(viewProjection, QVector4D(1, float(size.width()), float(size.height()), width));
                f->glBindVertexArray(dynamicVao);
                f->glBindBuffer(GL_ARRAY_BUFFER, dynamicVbo);
                f->glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(vertices.size() * sizeof(float)), vertices.data(),
                                GL_STREAM_DRAW);
                f->glDrawArrays(GL_LINES, 0, GLsizei(vertices.size() / kFloatsPerVertex));
            }
            f->glBindVertexArray(0);
        }
        // Each object's wire grid with a constant colour attribute.
        for (const Item &item : items) {
            const GuideObject &object = objects.at(item.index);
            if (!item.mesh->lineVao || item.mesh->lineVertexCount == 0)
                continue;
            const bool lineKind = isLineOnlyKind(object.guide_index);
            if (!lineKind && !object.show_wireframe && !(settings.showObjPolygonLines && object.guide_index == KindObjMesh))
                continue;
            QColor color = lineKind ? objectBaseColor(object) : QColor(24, 26, 30, 170);
            if (object.hasLens())
                color = QColor(230, 235, 240, 200);
            const float width = std::clamp(object.wireframe_thickness, 0.5f, 16.0f);
            setSceneConstants(viewProjection * item.world,
                              QVector4D(std::clamp(object.object_opacity, 0.0f, 1.0f), float(size.width()),
                                        float(size.height()), width));
            f->glBindVertexArray(item.mesh->lineVao);
            f->glVertexAttrib4f(2, float(color.redF()), float(color.greenF()), float(color.blueF()),
                                float(color.alphaF()));
            f->glDrawArrays(GL_LINES, 0, item.mesh->lineVertexCount);
            f->glBindVertexArray(0);
        }
        f->glDepthMask(GL_TRUE);
    }

    f->glEnable(GL_POLYGON_OFFSET_FILL);

    endPass(stats.linesMs);

    // 8. Selection outline over the object's silhouette and its visible part.
    QVector<int> selected;
    for (int s : settings.selection)
        if (s >= 0 && s < count)
            selected.push_back(s);
    if (!selected.isEmpty() && caps.outline && outlineTargetsOk) {
        f->glDisable(GL_BLEND);
        maskProgram->bind();
        for (int maskIndex = 0; maskIndex < 2; ++maskIndex) {
            const bool visibleOnly = maskIndex == 1;
            f->glBindFramebuffer(GL_FRAMEBUFFER, visibleOnly ? visibleFbo : silhouetteFbo);
            f->glDrawBuffers(1, &colorBuffer);
            const float zero[4] = {0, 0, 0, 0};
            f->glClearBufferfv(GL_COLOR, 0, zero);
            if (visibleOnly) {
                f->glEnable(GL_DEPTH_TEST);
                f->glDepthFunc(GL_LEQUAL);
                f->glDepthMask(GL_FALSE);
            } else {
                f->glDisable(GL_DEPTH_TEST);
            }
            for (const Item &item : items) {
                if (!selected.contains(item.index) || item.mesh->indexCount == 0)
                    continue;
                setSceneConstants(viewProjection * item.world, QVector4D(1, 0, 0, 0));
                drawTriangles(*item.mesh);
            }
        }
        f->glDepthMask(GL_TRUE);
        f->glBindFramebuffer(GL_FRAMEBUFFER, sceneFbo);
        f->glDrawBuffers(1, &colorBuffer);
        f->glDisable(GL_DEPTH_TEST);
        f->glEnable(GL_BLEND);
        f->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        outlineProgram->bind();
        f->glActiveTexture(GL_TEXTURE0);
        f->glBindTexture(GL_TEXTURE_2D, silhouetteTexture);
        f->glActiveTexture(GL_TEXTURE1);
        f->glBindTexture(GL_TEXTURE_2D, visibleTexture);
        f->glActiveTexture(GL_TEXTURE0);
        f->glBindVertexArray(emptyVao);
        f->glDrawArrays(GL_TRIANGLES, 0, 3);
        f->glBindVertexArray(0);
    }

    endPass(stats.outlineMs);

    // 9. Labels.
    if (caps.labels && (settings.showLabels || settings.showFps)) {
        std::vector<LabelRequest> requests;
        float anchorDepth = -1.0f;
        const QVector3D eye = camera.eyePosition();
        // depthPull moves the depth test point towards the eye, so a label is not hidden by
        // the body it names.
        auto anchorOf = [&](const QVector3D &world, QPointF *pixel, float depthPull = 0.0f) {
            const QVector4D clip = viewProjection * QVector4D(world, 1.0f);
            if (clip.w() <= 0.0001f)
                return false;
            const QVector3D ndc = clip.toVector3DAffine();
            if (ndc.z() < -1.0f || ndc.z() > 1.0f)
                return false;
            *pixel = QPointF((ndc.x() * 0.5 + 0.5) * size.width(), (0.5 - ndc.y() * 0.5) * size.height());
            anchorDepth = ndc.z();
            if (depthPull > 0.0f) {
                const QVector3D towardsEye = camera.isOrthographic() ? -camera.forward() : (eye - world).normalized();
                const QVector4D pulled = viewProjection * QVector4D(world + towardsEye * depthPull, 1.0f);
                if (pulled.w() > 0.0001f)
                    anchorDepth = std::max(-1.0f, pulled.z() / pulled.w());
            }
            return true;
        };
        // Each request made right after anchorOf() takes that anchor's depth.
        auto pushLabel = [&](LabelRequest request) {
            request.depth = anchorDepth;
            requests.push_back(std::move(request));
        };
        if (settings.showLabels) {
            for (const Item &item : items) {
                const GuideObject &object = objects.at(item.index);
                const QMatrix4x4 &world = item.world;
                QPointF pixel;
                if (object.hasLens()) {
                    const double lift = std::max(0.1, double(object.scale_y)) + 0.08;
                    // Anchored at the body's middle (the body lies behind the lens point) and tested a body
                    // length nearer the eye.
                    const float bodyZ = std::max(0.05f, object.scale_z);
                    const float pull = 4.0f * std::max({object.scale_x, object.scale_y, object.scale_z, 0.05f});
                    if (object.projector_name_visible
                        && anchorOf(world.map(QVector3D(0, float(lift), bodyZ)), &pixel, pull)) {
                        const QString name = object.name;
                        pushLabel({QStringLiteral("projector-name|%1").arg(name),
                                            [name] { return projectorNameAtlasEntry(name); }, pixel, Qt::AlignCenter});
                    }
                    if (object.projector_info_text_visible
                        && anchorOf(world.map(QVector3D(0, float(-lift), bodyZ)), &pixel, pull)) {
                        const int w = std::max(1, object.projector_resolution_width);
                        const int h = std::max(1, object.projector_resolution_height);
                        pushLabel({QStringLiteral("projector-camera-resolution|%1|%2").arg(w).arg(h),
                                            [w, h] { return renderProjectorCameraResolutionFrame(w, h); }, pixel,
                                            Qt::AlignCenter});
                        const QString info = vg::scene::projectorThrowRatioText(object.throw_rate);
                        pushLabel({QStringLiteral("projector-dimension-green|%1").arg(info),
                                            [info] { return projectorDimensionTextAtlasEntry(info); },
                                            pixel + QPointF(0, 22), Qt::AlignCenter});
                    }
                    continue;
                }
                if (object.guide_index == KindComment) {
                    const QVector3D at(object.annotation_label_offset_x, object.annotation_label_offset_y,
                                       object.annotation_label_offset_z);
                    if (anchorOf(world.map(at), &pixel)) {
                        const QString text = object.annotation_text;
                        const double fs = object.annotation_label_font_scale;
                        const double sx = object.annotation_label_scale_x * object.annotation_label_scale;
                        const double sy = object.annotation_label_scale_y * object.annotation_label_scale;
                        pushLabel({QStringLiteral("annotation|%1|%2|%3|%4")
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
                    if (anchorOf(world.map(local), &at))
                        pushLabel({QStringLiteral("dimension|%1|%2").arg(text).arg(14),
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
                    addDimension(dimensionLabelText(QLatin1Char('H'), hy * 2000.0), QVector3D(hx, 0, 0));
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
        if (settings.showLabels) {
            for (int p : heated) {
                const GuideObject &object = objects.at(p);
                auto it = projectors.find(p);
                if (!object.projector_pixel_footprint_labels_visible || it == projectors.end() || !it->second.metricValid)
                    continue;
                for (const auto &[point, value] : it->second.labelSamples) {
                    QPointF at;
                    if (!anchorOf(point, &at, 0.05f))
                        continue;
                    const QString text = vg::scene::footprintLabel(value, object.projector_pixel_footprint_metric);
                    pushLabel({QStringLiteral("dimension|%1|%2").arg(text).arg(13),
                               [text] { return dimensionTextAtlasEntry(text, 13); }, at, Qt::AlignCenter});
                }
            }
        }
        if (settings.showFps) {
            const double fps = settings.framesPerSecond;
            requests.push_back({viewportFpsAtlasEntry(fps, 14).key, [fps] { return viewportFpsAtlasEntry(fps, 14); },
                                QPointF(8, 8), Qt::AlignLeft | Qt::AlignTop});
        }
        // Place every label; a full atlas restarts, so a second round finds them all again.
        for (int round = 0; round < 2; ++round) {
            const quint64 before = atlas.revision();
            bool restarted = false;
            for (const LabelRequest &request : requests) {
                const quint64 r = atlas.revision();
                atlas.ensure(request.key, request.make);
                if (atlas.revision() > r + 1)
                    restarted = true;
            }
            Q_UNUSED(before);
            if (!restarted)
                break;
        }
        if (!requests.empty()) {
            if (!atlasTexture || atlasUploadedRevision != atlas.revision()) {
                uploadPlane(atlasTexture, GL_RGBA8, GL_RGBA, atlas.size(), atlas.size(), atlas.image().constBits(), false);
                atlasUploadedRevision = atlas.revision();
            }
            std::vector<float> quads;
            const float inv = 1.0f / float(atlas.size());
            for (const LabelRequest &request : requests) {
                const DimensionTextAtlasEntry *entry = atlas.find(request.key);
                if (!entry)
                    continue;
                const QSizeF s = entry->atlasRect.size();
                QPointF topLeft = request.anchor;
                if (request.alignment & Qt::AlignHCenter || request.alignment == Qt::AlignCenter)
                    topLeft.rx() -= s.width() / 2.0;
                if (request.alignment & Qt::AlignVCenter || request.alignment == Qt::AlignCenter)
                    topLeft.ry() -= s.height() / 2.0;
                const float x0 = float(std::round(topLeft.x())), y0 = float(std::round(topLeft.y()));
                const float x1 = x0 + float(s.width()), y1 = y0 + float(s.height());
                const QRect r = entry->atlasRect;
                const float u0 = r.left() * inv, v0 = r.top() * inv;
                const float u1 = (r.left() + r.width()) * inv, v1 = (r.top() + r.height()) * inv;
                const float corners[6][4] = {{x0, y0, u0, v0}, {x1, y0, u1, v0}, {x1, y1, u1, v1},
                                             {x0, y0, u0, v0}, {x1, y1, u1, v1}, {x0, y1, u0, v1}};
                for (const auto &c : corners)
                    quads.insert(quads.end(), {c[0], c[1], -request.depth, c[2], c[3], 1, 1, 1, 1});
                ++stats.labelsDrawn;
            }
            QMatrix4x4 pixels;
            pixels.ortho(0.0f, float(size.width()), float(size.height()), 0.0f, -1.0f, 1.0f);
            // Labels sit at their anchor's depth: a label behind a surface is hidden by it.
            f->glEnable(GL_DEPTH_TEST);
            f->glDepthFunc(GL_LEQUAL);
            f->glDepthMask(GL_FALSE);
            f->glDisable(GL_POLYGON_OFFSET_FILL);
            f->glEnable(GL_BLEND);
            f->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
            labelProgram->bind();
            setSceneConstants(pixels, QVector4D(1, 0, 0, 0));
            f->glActiveTexture(GL_TEXTURE0);
            f->glBindTexture(GL_TEXTURE_2D, atlasTexture);
            f->glBindVertexArray(dynamicVao);
            f->glBindBuffer(GL_ARRAY_BUFFER, dynamicVbo);
            f->glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(quads.size() * sizeof(float)), quads.data(), GL_STREAM_DRAW);
            f->glDrawArrays(GL_TRIANGLES, 0, GLsizei(quads.size() / kFloatsPerVertex));
            f->glBindVertexArray(0);
        }
    }

    endPass(stats.labelsMs);

    // Present: copy into the caller's framebuffer.
    f->glDepthMask(GL_TRUE);
    f->glDisable(GL_POLYGON_OFFSET_FILL);
    f->glDisable(GL_BLEND);
    f->glDisable(GL_DEPTH_TEST);
    f->glBindFramebuffer(GL_READ_FRAMEBUFFER, sceneFbo);
    f->glReadBuffer(GL_COLOR_ATTACHMENT0);
    f->glBindFramebuffer(GL_DRAW_FRAMEBUFFER, targetFramebuffer);
    f->glBlitFramebuffer(0, 0, size.width(), size.height(), 0, 0, size.width(), size.height(), GL_COLOR_BUFFER_BIT,
                         GL_NEAREST);
    f->glBindFramebuffer(GL_FRAMEBUFFER, targetFramebuffer);
    f->glUseProgram(0);
    pruneTextures();
}
