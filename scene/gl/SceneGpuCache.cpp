#include "scene/gl/SceneGpuCache.h"

#include "scene/LensModel.h"
#include "scene/Transform.h"
#include "scene/gl/SceneMeshSource.h"

#include <QColor>

#include <cmath>

QColor sceneObjectBaseColor(const GuideObject &object)
{
    if (object.hasLens())
        return object.projector_default_color.isValid() ? object.projector_default_color : QColor(47, 111, 181);
    return object.mesh_color.isValid() ? object.mesh_color : QColor(200, 200, 200);
}

bool isLineOnlyKind(int kind)
{
    return kind == KindCurve || kind == KindDistanceMeasure || kind == KindComment || kind == KindDxfMesh;
}

namespace {

GuideObject meshKey(const GuideObject &object)
{
    GuideObject key = object;
    key.translate_x = key.translate_y = key.translate_z = 0.0f;
    key.rotate_x = key.rotate_y = key.rotate_z = 0.0f;
    key.name.clear();
    key.visible = true;
    return key;
}

// Shading is lit once per upload from a fixed light, two-sided so that domes and walls
// read the same from inside and out.
std::vector<float> triangleVertices(const GuideObject &object, const SceneMesh &mesh)
{
    const Eigen::Matrix3d rotation = vg::scene::objectRotation(object);
    const Eigen::Vector3d light = Eigen::Vector3d(0.35, 0.85, 0.45).normalized();
    const QColor base = sceneObjectBaseColor(object);
    std::vector<float> out;
    out.reserve(mesh.vertices.size() * kSceneFloatsPerVertex);
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

} // namespace

void configureSceneVertexLayout(QOpenGLExtraFunctions *f)
{
    const GLsizei stride = kSceneFloatsPerVertex * sizeof(float);
    f->glEnableVertexAttribArray(0);
    f->glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<void *>(0));
    f->glEnableVertexAttribArray(1);
    f->glVertexAttribPointer(1, 2, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<void *>(3 * sizeof(float)));
    f->glEnableVertexAttribArray(2);
    f->glVertexAttribPointer(2, 4, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<void *>(5 * sizeof(float)));
}

// ---- meshes ------------------------------------------------------------------------------

void GpuMesh::release()
{
    vao.reset();
    vbo.reset();
    ebo.reset();
    lineVao.reset();
    lineVbo.reset();
    groupedVao.reset();
    groupedEbo.reset();
    indexCount = lineVertexCount = 0;
    chunks.clear();
}

namespace {

// Small enough that a projector lighting a quarter of a dome skips most of it, large enough
// that the runs cost few draw calls.
constexpr size_t kChunkTriangles = 1024;

// Interleaves the low ten bits of x, y and z: triangles near each other in space get near
// keys, so runs of the sorted order are compact.
quint32 mortonKey(quint32 x, quint32 y, quint32 z)
{
    auto spread = [](quint32 v) {
        v &= 0x3ff;
        v = (v | (v << 16)) & 0x030000ff;
        v = (v | (v << 8)) & 0x0300f00f;
        v = (v | (v << 4)) & 0x030c30c3;
        v = (v | (v << 2)) & 0x09249249;
        return v;
    };
    return spread(x) | (spread(y) << 1) | (spread(z) << 2);
}

// The mesh's triangles ordered by place and cut into runs with their bounds. The sort is
// stable, so triangles at the same place (a two-sided face) keep their order.
std::vector<std::uint32_t> groupedIndices(const SceneMesh &mesh, std::vector<GpuMeshChunk> *chunks)
{
    const size_t triangleCount = mesh.indices.size() / 3;
    Eigen::AlignedBox3d bounds;
    for (const SceneVertex &v : mesh.vertices)
        bounds.extend(Eigen::Vector3d(v.px, v.py, v.pz));
    const Eigen::Vector3d extent =
        bounds.isEmpty() ? Eigen::Vector3d(Eigen::Vector3d::Ones()) : Eigen::Vector3d(bounds.sizes().cwiseMax(1e-9));
    auto vertex = [&](size_t index) {
        const std::uint32_t v = mesh.indices[index];
        if (v >= mesh.vertices.size())
            return Eigen::Vector3d(bounds.isEmpty() ? Eigen::Vector3d::Zero() : bounds.min());
        return Eigen::Vector3d(mesh.vertices[v].px, mesh.vertices[v].py, mesh.vertices[v].pz);
    };
    std::vector<std::pair<quint32, quint32>> order(triangleCount);
    for (size_t t = 0; t < triangleCount; ++t) {
        const Eigen::Vector3d centre = (vertex(3 * t) + vertex(3 * t + 1) + vertex(3 * t + 2)) / 3.0;
        const Eigen::Vector3d cell = ((centre - bounds.min()).cwiseQuotient(extent) * 1023.0).cwiseMax(0.0).cwiseMin(1023.0);
        order[t] = {mortonKey(quint32(cell.x()), quint32(cell.y()), quint32(cell.z())), quint32(t)};
    }
    std::stable_sort(order.begin(), order.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<std::uint32_t> indices;
    indices.reserve(triangleCount * 3);
    for (const auto &[key, t] : order) {
        for (int corner = 0; corner < 3; ++corner)
            indices.push_back(mesh.indices[3 * t + corner]);
    }
    chunks->clear();
    for (size_t first = 0; first < triangleCount; first += kChunkTriangles) {
        GpuMeshChunk chunk;
        chunk.firstIndex = int(3 * first);
        chunk.indexCount = int(3 * std::min<size_t>(kChunkTriangles, triangleCount - first));
        for (int i = chunk.firstIndex; i < chunk.firstIndex + chunk.indexCount; ++i)
            chunk.bounds.extend(vertex(size_t(3 * order[size_t(i / 3)].second + i % 3)));
        // Widened so that rounding in the single-precision clip test never drops a
        // triangle that touches the volume.
        const Eigen::Vector3d margin = Eigen::Vector3d::Constant(1e-4 * chunk.bounds.diagonal().norm() + 1e-6);
        chunk.bounds.min() -= margin;
        chunk.bounds.max() += margin;
        chunks->push_back(chunk);
    }
    return indices;
}

} // namespace

GpuMesh *SceneMeshCache::meshFor(const GuideObject &object, int index, int *uploads)
{
    QOpenGLExtraFunctions *f = m_f;
    GpuMesh &mesh = m_meshes[index];
    const GuideObject key = meshKey(object);
    const bool rotated = mesh.rotation[0] != object.rotate_x || mesh.rotation[1] != object.rotate_y
        || mesh.rotation[2] != object.rotate_z;
    if (mesh.mesh && !mesh.forceRebuild && mesh.key == key && !rotated)
        return &mesh;
    const bool geometryChanged = !mesh.mesh || mesh.forceRebuild || !(mesh.key == key);
    if (geometryChanged) {
        mesh.release();
        mesh.mesh = sceneMeshForObject(object);
        mesh.localBounds.setEmpty();
        for (const SceneVertex &v : mesh.mesh->vertices)
            mesh.localBounds.extend(Eigen::Vector3d(v.px, v.py, v.pz));
        mesh.key = key;
        mesh.forceRebuild = false;
        mesh.revision = ++m_revisions;
        ++*uploads;
    }
    mesh.rotation[0] = object.rotate_x;
    mesh.rotation[1] = object.rotate_y;
    mesh.rotation[2] = object.rotate_z;
    const SceneMesh &cpu = *mesh.mesh;
    if (!cpu.indices.empty()) {
        const std::vector<float> vertices = triangleVertices(object, cpu);
        if (!mesh.vao) {
            mesh.vao = GlVertexArray::create(f);
            mesh.vbo = GlBuffer::create(f);
            mesh.ebo = GlBuffer::create(f);
            f->glBindVertexArray(mesh.vao.id());
            f->glBindBuffer(GL_ARRAY_BUFFER, mesh.vbo.id());
            configureSceneVertexLayout(f);
            f->glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mesh.ebo.id());
            f->glBufferData(GL_ELEMENT_ARRAY_BUFFER, GLsizeiptr(cpu.indices.size() * sizeof(std::uint32_t)),
                            cpu.indices.data(), GL_STATIC_DRAW);
            f->glBindVertexArray(0);
            mesh.indexCount = int(cpu.indices.size());
            if (cpu.indices.size() / 3 > 2 * kChunkTriangles) {
                const std::vector<std::uint32_t> grouped = groupedIndices(cpu, &mesh.chunks);
                mesh.groupedVao = GlVertexArray::create(f);
                mesh.groupedEbo = GlBuffer::create(f);
                f->glBindVertexArray(mesh.groupedVao.id());
                f->glBindBuffer(GL_ARRAY_BUFFER, mesh.vbo.id());
                configureSceneVertexLayout(f);
                f->glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mesh.groupedEbo.id());
                f->glBufferData(GL_ELEMENT_ARRAY_BUFFER, GLsizeiptr(grouped.size() * sizeof(std::uint32_t)),
                                grouped.data(), GL_STATIC_DRAW);
                f->glBindVertexArray(0);
            }
        }
        f->glBindBuffer(GL_ARRAY_BUFFER, mesh.vbo.id());
        f->glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(vertices.size() * sizeof(float)), vertices.data(), GL_STATIC_DRAW);
        f->glBindBuffer(GL_ARRAY_BUFFER, 0);
    }
    if (geometryChanged && !cpu.lines.empty()) {
        std::vector<float> lines;
        lines.reserve(cpu.lines.size() * kSceneFloatsPerVertex);
        for (const QVector3D &p : cpu.lines)
            lines.insert(lines.end(), {p.x(), p.y(), p.z(), 0.0f, 0.0f, 1.0f, 1.0f, 1.0f, 1.0f});
        mesh.lineVao = GlVertexArray::create(f);
        mesh.lineVbo = GlBuffer::create(f);
        f->glBindVertexArray(mesh.lineVao.id());
        f->glBindBuffer(GL_ARRAY_BUFFER, mesh.lineVbo.id());
        f->glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(lines.size() * sizeof(float)), lines.data(), GL_STATIC_DRAW);
        configureSceneVertexLayout(f);
        // Wire colour comes from a constant attribute so one buffer serves any colour.
        f->glDisableVertexAttribArray(2);
        f->glBindVertexArray(0);
        f->glBindBuffer(GL_ARRAY_BUFFER, 0);
        mesh.lineVertexCount = int(cpu.lines.size());
    }
    return &mesh;
}

void SceneMeshCache::drawTriangles(const GpuMesh &mesh) const
{
    if (!mesh.vao || mesh.indexCount == 0)
        return;
    m_f->glBindVertexArray(mesh.vao.id());
    m_f->glDrawElements(GL_TRIANGLES, mesh.indexCount, GL_UNSIGNED_INT, nullptr);
    m_f->glBindVertexArray(0);
}

void SceneMeshCache::drawRange(const GpuMesh &mesh, int first, int count) const
{
    if (!mesh.groupedVao || count <= 0)
        return;
    m_f->glBindVertexArray(mesh.groupedVao.id());
    m_f->glDrawElements(GL_TRIANGLES, count, GL_UNSIGNED_INT,
                        reinterpret_cast<const void *>(std::uintptr_t(first) * sizeof(std::uint32_t)));
    m_f->glBindVertexArray(0);
}

void SceneMeshCache::keepOnly(int objectCount)
{
    m_meshes.erase(m_meshes.lower_bound(objectCount), m_meshes.end());
}

void SceneMeshCache::invalidate(int index)
{
    auto it = m_meshes.find(index);
    if (it != m_meshes.end())
        it->second.forceRebuild = true;
}

void SceneMeshCache::invalidateAll()
{
    for (auto &[index, mesh] : m_meshes)
        mesh.forceRebuild = true;
}

// ---- textures ----------------------------------------------------------------------------

void SceneTextureCache::setGuideImages(const QVector<QImage> &images)
{
    m_guideImages = images;
    ++m_guideImagesSerial;
}

const GpuTexture *SceneTextureCache::textureFor(const QString &key,
                                                const std::function<std::shared_ptr<SceneTextureSource>()> &create)
{
    Slot &slot = m_slots[key];
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
        slot.gpu = GpuTexture();
    if (nv12) {
        uploadGlPlane(m_f, slot.gpu.textures[0], GL_R8, GL_RED, frame.width, frame.height, frame.luma.constData(), false);
        uploadGlPlane(m_f, slot.gpu.textures[1], GL_RG8, GL_RG, (frame.width + 1) / 2, (frame.height + 1) / 2,
                      frame.chroma.constData(), false);
    } else {
        const QImage rgba = frame.image.convertToFormat(QImage::Format_RGBA8888);
        // Rows are uploaded top first, so texture coordinate v = 0 is the image's top row.
        uploadGlPlane(m_f, slot.gpu.textures[0], GL_RGBA8, GL_RGBA, rgba.width(), rgba.height(), rgba.constBits(), true);
    }
    slot.gpu.nv12 = nv12;
    slot.gpu.serial = frame.serial;
    slot.gpu.width = frame.width;
    slot.gpu.height = frame.height;
    return &slot.gpu;
}

const GpuTexture *SceneTextureCache::guideTexture(int guideIndex)
{
    if (guideIndex < 0 || guideIndex >= m_guideImages.size() || m_guideImages.at(guideIndex).isNull())
        return nullptr;
    const QString key = QStringLiteral("guide|%1|%2").arg(guideIndex).arg(m_guideImagesSerial);
    return textureFor(key, [this, guideIndex] {
        return std::make_shared<ImageTextureSource>(m_guideImages.at(guideIndex));
    });
}

const GpuTexture *SceneTextureCache::fileTexture(const QString &path)
{
    return textureFor(QStringLiteral("file|") + path, [path] { return std::make_shared<ImageFileTextureSource>(path); });
}

const GpuTexture *SceneTextureCache::resolvedTexture(const GuideObject &object, int index, bool projector)
{
    if (!m_resolver)
        return nullptr;
    const QString key = QStringLiteral("resolved|%1|%2").arg(index).arg(projector ? 1 : 0);
    Slot &slot = m_slots[key];
    std::shared_ptr<SceneTextureSource> source = m_resolver(object, index, projector);
    if (!source) {
        slot.usedThisFrame = false;
        return nullptr;
    }
    if (slot.source != source) {
        slot.gpu = GpuTexture();
        slot.source = source;
    }
    return textureFor(key, [source] { return source; });
}

const GpuTexture *SceneTextureCache::projectorTexture(const QVector<GuideObject> &objects, int index)
{
    const GuideObject &projector = objects.at(index);
    if (const GpuTexture *live = resolvedTexture(projector, index, true))
        return live;
    const int guideRef = projector.projector_image_guide_index;
    // The index names a guide of the project, like a surface's texture_guide_index.
    if (guideRef >= 0) {
        if (const GpuTexture *t = guideTexture(guideRef))
            return t;
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

const GpuTexture *SceneTextureCache::surfaceTexture(const GuideObject &object, int index)
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

void SceneTextureCache::prune()
{
    for (auto it = m_slots.begin(); it != m_slots.end();) {
        if (!it->second.usedThisFrame) {
            it = m_slots.erase(it);
        } else {
            it->second.usedThisFrame = false;
            ++it;
        }
    }
}
