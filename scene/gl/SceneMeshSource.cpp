#include "scene/gl/SceneMeshSource.h"

#include "scene/GuideObject.h"

namespace {

// Interim box and panel shapes until the scene's builders are wired in.
void addQuad(SceneMesh &mesh, QVector3D a, QVector3D b, QVector3D c, QVector3D d, QVector3D n)
{
    const auto base = std::uint32_t(mesh.vertices.size());
    const QVector3D corners[4] = {a, b, c, d};
    const float uv[4][2] = {{0, 1}, {1, 1}, {1, 0}, {0, 0}};
    for (int i = 0; i < 4; ++i) {
        SceneVertex v;
        v.px = corners[i].x(); v.py = corners[i].y(); v.pz = corners[i].z();
        v.nx = n.x(); v.ny = n.y(); v.nz = n.z();
        v.u = uv[i][0]; v.v = uv[i][1];
        mesh.vertices.push_back(v);
    }
    mesh.indices.insert(mesh.indices.end(), {base, base + 1, base + 2, base, base + 2, base + 3});
}

} // namespace

std::shared_ptr<const SceneMesh> sceneMeshForObject(const GuideObject &object)
{
    if (object.imported_mesh)
        return object.imported_mesh;
    auto mesh = std::make_shared<SceneMesh>();
    const float x = object.scale_x, y = object.scale_y, z = object.scale_z;
    if (object.guide_index == KindPlane || object.guide_index == KindGuide || object.guide_index == KindImage) {
        addQuad(*mesh, {-x, -y, 0}, {x, -y, 0}, {x, y, 0}, {-x, y, 0}, {0, 0, 1});
        mesh->lines = {{-x, -y, 0}, {x, -y, 0}, {x, -y, 0}, {x, y, 0}, {x, y, 0}, {-x, y, 0}, {-x, y, 0}, {-x, -y, 0}};
        return mesh;
    }
    addQuad(*mesh, {-x, -y, z}, {x, -y, z}, {x, y, z}, {-x, y, z}, {0, 0, 1});
    addQuad(*mesh, {x, -y, -z}, {-x, -y, -z}, {-x, y, -z}, {x, y, -z}, {0, 0, -1});
    addQuad(*mesh, {x, -y, z}, {x, -y, -z}, {x, y, -z}, {x, y, z}, {1, 0, 0});
    addQuad(*mesh, {-x, -y, -z}, {-x, -y, z}, {-x, y, z}, {-x, y, -z}, {-1, 0, 0});
    addQuad(*mesh, {-x, y, z}, {x, y, z}, {x, y, -z}, {-x, y, -z}, {0, 1, 0});
    addQuad(*mesh, {-x, -y, -z}, {x, -y, -z}, {x, -y, z}, {-x, -y, z}, {0, -1, 0});
    return mesh;
}
