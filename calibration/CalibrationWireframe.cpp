#include "calibration/CalibrationWireframe.h"

#include "scene/MeshBuilders.h"
#include "scene/SceneMesh.h"
#include "scene/Transform.h"

#include <QHash>

#include <cmath>
#include <tuple>

namespace {

// Positions closer than a tenth of a millimetre are one vertex.
constexpr double kMergeGrid = 1e-4;

struct VertexKey {
    qint64 x, y, z;
    bool operator==(const VertexKey &) const = default;
};
size_t qHash(const VertexKey &k, size_t seed = 0)
{
    return qHashMulti(seed, k.x, k.y, k.z);
}

class VertexMerger
{
public:
    explicit VertexMerger(const Eigen::Isometry3d &toWorld, CalibrationWireframe &out) : m_toWorld(toWorld), m_out(out) {}

    int add(const QVector3D &local)
    {
        const VertexKey key{qint64(std::llround(local.x() / kMergeGrid)), qint64(std::llround(local.y() / kMergeGrid)),
                            qint64(std::llround(local.z() / kMergeGrid))};
        const auto found = m_index.constFind(key);
        if (found != m_index.constEnd())
            return found.value();
        if (int(m_out.vertices.size()) >= kCalibrationWireframeMaxVertices)
            return -1;
        const int index = int(m_out.vertices.size());
        m_out.vertices.push_back(m_toWorld * Eigen::Vector3d(local.x(), local.y(), local.z()));
        m_index.insert(key, index);
        return index;
    }

private:
    Eigen::Isometry3d m_toWorld;
    CalibrationWireframe &m_out;
    QHash<VertexKey, int> m_index;
};

} // namespace

bool isCalibrationTargetCandidate(const GuideObject &object)
{
    switch (object.guide_index) {
    case KindProjector:
    case KindCamera:
    case KindDistanceMeasure:
    case KindComment:
        return false;
    default:
        return object.visible;
    }
}

CalibrationWireframe buildCalibrationWireframe(const GuideObject &target)
{
    CalibrationWireframe wire;
    if (!isCalibrationTargetCandidate(target))
        return wire;
    const SceneMesh mesh = vg::scene::buildObjectMesh(target);
    const Eigen::Isometry3d toWorld = vg::scene::objectToWorld(target);
    VertexMerger merger(toWorld, wire);
    auto addEdge = [&](const QVector3D &a, const QVector3D &b) {
        const int ia = merger.add(a);
        const int ib = merger.add(b);
        if (ia >= 0 && ib >= 0 && ia != ib)
            wire.edges.emplace_back(ia, ib);
    };
    if (!mesh.lines.empty()) {
        for (size_t i = 0; i + 1 < mesh.lines.size(); i += 2)
            addEdge(mesh.lines[i], mesh.lines[i + 1]);
    } else {
        for (size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
            const QVector3D a = mesh.vertices[mesh.indices[i]].position();
            const QVector3D b = mesh.vertices[mesh.indices[i + 1]].position();
            const QVector3D c = mesh.vertices[mesh.indices[i + 2]].position();
            addEdge(a, b);
            addEdge(b, c);
            addEdge(c, a);
        }
    }
    wire.triangles.reserve(mesh.indices.size());
    for (std::uint32_t index : mesh.indices) {
        if (index >= mesh.vertices.size())
            break;
        const SceneVertex &v = mesh.vertices[index];
        wire.triangles.push_back(toWorld * Eigen::Vector3d(v.px, v.py, v.pz));
    }
    return wire;
}
