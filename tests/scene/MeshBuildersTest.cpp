#include "scene/GuideObject.h"
#include "scene/LensModel.h"
#include "scene/MeshBuilders.h"
#include "scene/SceneModel.h"
#include "scene/SceneRaycast.h"
#include "scene/Transform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <random>

using namespace vg::scene;

namespace {

// Every mesh must be usable as is: finite data, indices in range, no zero-area triangles,
// unit normals, and line pairs.
void expectWellFormed(const SceneMesh &mesh, const std::string &what)
{
    ASSERT_EQ(mesh.indices.size() % 3, 0u) << what;
    ASSERT_EQ(mesh.lines.size() % 2, 0u) << what;
    for (const SceneVertex &v : mesh.vertices) {
        ASSERT_TRUE(std::isfinite(v.px) && std::isfinite(v.py) && std::isfinite(v.pz)) << what;
        ASSERT_TRUE(std::isfinite(v.u) && std::isfinite(v.v)) << what;
        const float n = std::sqrt(v.nx * v.nx + v.ny * v.ny + v.nz * v.nz);
        ASSERT_NEAR(n, 1.0f, 1e-3f) << what;
    }
    for (size_t i = 0; i < mesh.indices.size(); i += 3) {
        for (int k = 0; k < 3; ++k)
            ASSERT_LT(mesh.indices[i + k], mesh.vertices.size()) << what;
        const SceneVertex &a = mesh.vertices[mesh.indices[i]];
        const SceneVertex &b = mesh.vertices[mesh.indices[i + 1]];
        const SceneVertex &c = mesh.vertices[mesh.indices[i + 2]];
        const Eigen::Vector3d ab(b.px - a.px, b.py - a.py, b.pz - a.pz);
        const Eigen::Vector3d ac(c.px - a.px, c.py - a.py, c.pz - a.pz);
        ASSERT_GT(ab.cross(ac).norm(), 0.0) << what << " triangle " << i / 3;
    }
    for (const QVector3D &p : mesh.lines)
        ASSERT_TRUE(std::isfinite(p.x()) && std::isfinite(p.y()) && std::isfinite(p.z())) << what;
    ASSERT_FALSE(mesh.isEmpty()) << what;
}

// The clamped range of the creation arguments, edges first, then random values.
std::vector<int> sizeSamples(std::mt19937 &rng, int lo, int hi)
{
    std::vector<int> values{lo, lo + 1, 1000, hi};
    std::uniform_int_distribution<int> d(lo, hi);
    for (int i = 0; i < 3; ++i)
        values.push_back(d(rng));
    return values;
}

std::vector<int> segmentSamples(std::mt19937 &rng)
{
    std::vector<int> values{0, 1, 2, 512};
    std::uniform_int_distribution<int> d(0, 512);
    values.push_back(d(rng));
    return values;
}

} // namespace

TEST(MeshBuilders, PlanesOverTheClampedRange)
{
    std::mt19937 rng(1);
    for (int w : sizeSamples(rng, 1, 100000)) {
        for (int h : {1, 2500, 100000}) {
            for (int radius : {0, 1, 400, 100000}) {
                for (int seg : segmentSamples(rng)) {
                    SceneModel scene;
                    GuideObject o = scene.object(scene.addPlane(QString(), w, h));
                    o.plane_corner_radius = float(radius);
                    o.plane_u_lines = seg;
                    o.plane_v_lines = 512 - seg;
                    o.plane_round_lines = seg;
                    const SceneMesh m = buildObjectMesh(o);
                    const std::string what = "plane " + std::to_string(w) + "x" + std::to_string(h) + " r"
                        + std::to_string(radius) + " s" + std::to_string(seg);
                    expectWellFormed(m, what);
                    const int nu = std::max(1, seg), nv = std::max(1, 512 - seg);
                    const int expected = nu + 1 + nv + 1 + (radius > 0 ? 4 : 0);
                    // A radius of half the size leaves no straight border to draw.
                    if (radius / 1000.0f < std::min(o.scale_x, o.scale_y) * 0.999f)
                        ASSERT_EQ(m.gridLineCount, expected) << what;
                    EXPECT_FALSE(m.closed);
                    // The outline stays inside the half extents.
                    for (const SceneVertex &v : m.vertices)
                        ASSERT_LE(std::abs(v.px), o.scale_x * 1.0001f) << what;
                }
            }
        }
    }
}

TEST(MeshBuilders, CirclePlanesBothModes)
{
    for (int mode : {0, 1}) {
        for (float hole : {0.0f, 1.0f, 250.0f, 100000.0f}) {
            for (float angle : {-5.0f, 1.0f, 90.0f, 359.0f, 360.0f, 720.0f}) {
                for (int seg : {0, 1, 3, 512}) {
                    GuideObject o = SceneModel::defaultObject(KindCirclePlane);
                    o.scale_x = 1.0f;
                    o.scale_y = 0.5f;
                    o.circle_plane_mode = mode;
                    o.circle_plane_hole_radius = hole;
                    o.circle_plane_angle = angle;
                    o.plane_u_lines = seg;
                    o.plane_v_lines = seg;
                    o.circle_plane_polar_v_flipped = seg == 3;
                    const SceneMesh m = buildObjectMesh(o);
                    expectWellFormed(m, "circle plane");
                    for (const SceneVertex &v : m.vertices)
                        ASSERT_NEAR(v.nz, 1.0f, 1e-6f);
                }
            }
        }
    }
    // Polar mapping: u across the sector, v from the rim (0) to the hole (1), flipped on request.
    GuideObject o = SceneModel::defaultObject(KindCirclePlane);
    o.circle_plane_mode = 1;
    o.scale_x = o.scale_y = 1.0f;
    const SceneMesh m = buildObjectMesh(o);
    for (const SceneVertex &v : m.vertices) {
        const float r = std::hypot(v.px, v.py);
        ASSERT_NEAR(v.v, 1.0f - r, 1e-4f);
    }
    o.circle_plane_polar_v_flipped = true;
    for (const SceneVertex &v : buildObjectMesh(o).vertices)
        ASSERT_NEAR(v.v, std::hypot(v.px, v.py), 1e-4f);
}

TEST(MeshBuilders, CylinderWalls)
{
    std::mt19937 rng(2);
    for (int width : sizeSamples(rng, 1, 100000)) {
        for (double angle : {0.0, 1.0, 45.0, 180.0, 359.5, 360.0}) {
            for (int flags = 0; flags < 8; ++flags) {
                for (int seg : {0, 1, 7, 512}) {
                    SceneModel scene;
                    GuideObject o = scene.object(scene.addCylinderWall(QString(), width, 2000, angle));
                    o.wall_cylinder_wall = flags & 1;
                    o.wall_cylinder_top = flags & 2;
                    o.wall_cylinder_floor = flags & 4;
                    o.wall_cylinder_u_lines = seg;
                    o.wall_cylinder_v_lines = std::max(1, seg);
                    const SceneMesh m = buildObjectMesh(o);
                    if (flags == 0) {
                        EXPECT_TRUE(m.isEmpty());
                        continue;
                    }
                    expectWellFormed(m, "cylinder");
                    if (flags == 1) {
                        const bool full = angle >= 360.0;
                        const int u = std::max(1, seg);
                        ASSERT_EQ(m.gridLineCount, (full ? u : u + 1) + std::max(1, seg) + 1);
                    }
                    if (flags == 7 && angle >= 360.0)
                        ASSERT_TRUE(m.closed) << width;
                }
            }
        }
    }
}

TEST(MeshBuilders, DomesAndSpheres)
{
    std::mt19937 rng(3);
    std::uniform_real_distribution<float> deg(-30.0f, 400.0f);
    for (int r : {0, 1, 999, 100000}) {
        for (int seg : {0, 1, 3, 512}) {
            SceneModel scene;
            const GuideObject dome = scene.object(scene.addDome(QString(), r, r, seg, seg));
            const SceneMesh dm = buildObjectMesh(dome);
            expectWellFormed(dm, "dome");
            for (const SceneVertex &v : dm.vertices)
                ASSERT_GE(v.py, -1e-6f);                      // the base sits at y = 0
            const GuideObject sphere = scene.object(scene.addSphere(QString(), r, r, seg, seg));
            const SceneMesh sm = buildObjectMesh(sphere);
            expectWellFormed(sm, "sphere");
            ASSERT_TRUE(sm.closed) << r << " " << seg;
            // u lines: one per meridian of the full circle; v lines: the rings between the poles.
            const int u = std::max(1, seg), v = std::max(1, seg);
            ASSERT_EQ(sm.gridLineCount, u + (v - 1)) << seg;
        }
    }
    for (int i = 0; i < 200; ++i) {
        GuideObject o = SceneModel::defaultObject(KindCurvedSurface);
        o.scale_x = 2.0f;
        o.scale_y = 1.0f;
        o.scale_z = 0.5f;
        o.sphere_u_start = deg(rng);
        o.sphere_u_end = deg(rng);
        o.sphere_v_start = deg(rng) / 2.0f;
        o.sphere_v_end = deg(rng) / 2.0f;
        o.horseshoe_u_lines = i % 13;
        o.horseshoe_v_lines = i % 7;
        o.flip_normals = i % 2;
        o.uv_rotation = float(i % 5);
        if (curvedShapeOf(o) == CurvedShape::Horseshoe)
            continue;
        expectWellFormed(buildObjectMesh(o), "sphere range");
    }
}

TEST(MeshBuilders, Horseshoes)
{
    for (int w : {1, 500, 4000, 100000}) {
        for (int h : {1, 3000, 100000}) {
            for (int bend : {0, 300, 100000}) {
                for (int flags = 1; flags < 4; ++flags) {
                    SceneModel scene;
                    GuideObject o = scene.object(scene.addHorseshoe(QString(), w, 2000, h, bend, flags * 3, 0, 512));
                    o.horseshoe_wall = flags & 1;
                    o.horseshoe_floor = flags & 2;
                    o.horseshoe_rotation_x = float(flags * 30);
                    const SceneMesh m = buildObjectMesh(o);
                    expectWellFormed(m, "horseshoe");
                }
            }
        }
    }
    // Unrotated, the walls and floor face into the U, and the shape fits its half extents.
    SceneModel scene;
    const GuideObject o = scene.object(scene.addHorseshoe(QString(), 4000, 2000, 3000, 1000, 8, 4, 6));
    const SceneMesh m = buildObjectMesh(o);
    for (const SceneVertex &v : m.vertices) {
        ASSERT_LE(std::abs(v.px), 2.0001f);
        ASSERT_LE(std::abs(v.pz), 1.5001f);
        if (std::abs(v.ny) < 0.5f) {
            ASSERT_GT(Eigen::Vector2d(v.nx, v.nz).dot(Eigen::Vector2d(-v.px, -v.pz)), 0.0);
        }
    }
    // u lines over the straight runs, round lines inside each bend, v lines along.
    EXPECT_EQ(m.gridLineCount, (8 + 1) + 2 * (6 - 1) + (4 + 1) + 1);
}

TEST(MeshBuilders, LShapesAndBoxes)
{
    for (int radius : {0, 1, 200, 100000}) {
        for (int flags = 1; flags < 8; ++flags) {
            for (int seg : {0, 1, 512}) {
                SceneModel scene;
                GuideObject o = scene.object(scene.addLShape(QString(), 3000, 2500, 2000, radius));
                o.box_wall = flags & 1;
                o.box_top = flags & 2;
                o.box_floor = flags & 4;
                o.box_u_lines = seg;
                o.box_v_lines = seg;
                o.box_round_lines = seg;
                expectWellFormed(buildObjectMesh(o), "L shape");
            }
        }
    }
    // Every face of the profile looks into the shape, and stays inside its half extents.
    for (int radius : {0, 600}) {
        SceneModel shapes;
        GuideObject c = shapes.object(shapes.addLShape(QString(), 3000, 2500, 2000, radius));
        c.box_top = true;
        const SceneMesh m = buildObjectMesh(c);
        for (const SceneVertex &v : m.vertices) {
            ASSERT_GT(-(v.nx * v.px + v.ny * v.py + v.nz * v.pz), 0.0f) << radius;
            ASSERT_LE(std::abs(v.py), 1.2501f);
            ASSERT_LE(std::abs(v.pz), 1.0001f);
        }
    }

    SceneModel scene;
    GuideObject l = scene.object(scene.addLShape(QString(), 3000, 2500, 2000, 0));
    l.box_u_lines = 4;
    l.box_v_lines = 3;
    // Wall and floor share one profile: 5 outlines across x, 3 + 1 stations on each flat run
    // with the shared corner counted once.
    EXPECT_EQ(buildObjectMesh(l).gridLineCount, 5 + (4 + 3));

    for (double radius : {0.0, 0.01, 0.2, 5.0}) {
        const SceneMesh box = buildRoundedBoxMesh({0.5, 0.25, 1.0}, radius, 3);
        expectWellFormed(box, "box");
        EXPECT_TRUE(box.closed) << radius;
        if (radius < 0.25)   // a full rounding of the thinnest side leaves no straight edge along it
            EXPECT_EQ(box.gridLineCount, 12);
    }
}

TEST(MeshBuilders, PeopleBodiesMeasuresCommentsCurves)
{
    for (int h : {1, 4, 1700, 100000}) {
        SceneModel scene;
        const GuideObject person = scene.object(scene.addPerson(QString(), h, 0));
        const SceneMesh m = buildObjectMesh(person);
        expectWellFormed(m, "person");
        EXPECT_TRUE(m.closed);
        for (const SceneVertex &v : m.vertices) {
            ASSERT_LE(std::abs(v.py), person.scale_y * 1.0001f);
            ASSERT_LE(std::abs(v.px), person.scale_x * 1.0001f);
        }
    }
    for (int size : {1, 300, 100000}) {
        SceneModel scene;
        const SceneMesh p = buildObjectMesh(scene.object(scene.addProjector(QString(), size, size, size)));
        expectWellFormed(p, "projector");
        EXPECT_TRUE(p.closed);
        for (const SceneVertex &v : p.vertices)
            ASSERT_GE(v.pz, -1e-6f);   // the body lies behind the lens
        expectWellFormed(buildObjectMesh(scene.object(scene.addCamera(QString(), size, size, size))), "camera");
        expectWellFormed(buildObjectMesh(scene.object(scene.addDistanceMeasure(QString(), size))), "measure");
    }
    SceneModel scene;
    GuideObject comment = scene.object(scene.addComment(QString(), QStringLiteral("Note")));
    for (float s : {-1.0f, 0.0f, 1.0f, 1e6f}) {
        comment.annotation_circle_scale = s;
        expectWellFormed(buildObjectMesh(comment), "comment");
    }

    // Curves: open and closed, degenerate inputs give an empty mesh rather than bad data.
    GuideCurvePoint a{0, 0, 0, 0, 0.5, 0}, b{2, 0, 1.5, 0, 2, 0.5}, c{2, 2, 2, 1.5, 2, 2};
    for (bool closed : {false, true}) {
        for (int extrude : {0, 1, 1000, 100000}) {
            const GuideObject curve = scene.object(scene.addCurve(QString(), {a, b, c}, closed, extrude));
            const SceneMesh m = buildObjectMesh(curve);
            expectWellFormed(m, "curve");
            if (extrude > 0)
                EXPECT_GT(m.triangleCount(), 0);
            for (const SceneVertex &v : m.vertices)
                ASSERT_GE(v.py, -1e-6f);
        }
    }
    EXPECT_TRUE(buildObjectMesh(scene.object(scene.addCurve(QString(), {}, false))).isEmpty());
    const GuideCurvePoint still{1, 1, 1, 1, 1, 1};
    EXPECT_TRUE(buildObjectMesh(scene.object(scene.addCurve(QString(), {still, still, still}, true))).isEmpty());
    GuideCurvePoint bad{NAN, 0, INFINITY, 0, 0, 0};
    expectWellFormed(buildObjectMesh(scene.object(scene.addCurve(QString(), {a, bad, c}, false))), "bad curve");
}

TEST(MeshBuilders, UvRotationAndFlippedNormals)
{
    SceneModel scene;
    GuideObject o = scene.object(scene.addPlane(QString(), 2000, 1000));
    const SceneMesh plain = buildObjectMesh(o);
    o.uv_rotation = 1.0f;
    const SceneMesh turned = buildObjectMesh(o);
    o.uv_rotation = 4.0f;
    EXPECT_EQ(buildObjectMesh(o).vertices, plain.vertices);
    ASSERT_EQ(turned.vertices.size(), plain.vertices.size());
    for (size_t i = 0; i < plain.vertices.size(); ++i) {
        EXPECT_FLOAT_EQ(turned.vertices[i].u, 1.0f - plain.vertices[i].v);
        EXPECT_FLOAT_EQ(turned.vertices[i].v, plain.vertices[i].u);
    }
    // Top-left corner of the plane maps to texture (0, 0).
    EXPECT_FLOAT_EQ(plain.vertices[0].u, 0.0f);
    EXPECT_FLOAT_EQ(plain.vertices[0].v, 0.0f);
    EXPECT_LT(plain.vertices[0].px, 0.0f);
    EXPECT_GT(plain.vertices[0].py, 0.0f);

    o.uv_rotation = 0.0f;
    o.flip_normals = true;
    const SceneMesh flipped = buildObjectMesh(o);
    EXPECT_FLOAT_EQ(flipped.vertices[0].nz, -1.0f);
    EXPECT_EQ(flipped.indices[1], plain.indices[2]);
    // Winding agrees with the normals both ways.
    for (const SceneMesh *m : {&plain, &flipped}) {
        const SceneVertex &a = m->vertices[m->indices[0]];
        const SceneVertex &b = m->vertices[m->indices[1]];
        const SceneVertex &c = m->vertices[m->indices[2]];
        const Eigen::Vector3d n = Eigen::Vector3d(b.px - a.px, b.py - a.py, b.pz - a.pz)
                                      .cross(Eigen::Vector3d(c.px - a.px, c.py - a.py, c.pz - a.pz));
        EXPECT_GT(n.z() * a.nz, 0.0);
    }
}

TEST(MeshBuilders, ImportedMeshesFollowTheirScale)
{
    auto unit = std::make_shared<SceneMesh>();
    unit->vertices = {{-1, -1, 0, 0, 0, 1, 0, 1}, {1, -1, 0, 0, 0, 1, 1, 1}, {1, 1, 0, 0, 0, 1, 1, 0}};
    unit->indices = {0, 1, 2, 0, 2, 7};   // the second triangle refers past the end
    unit->lines = {QVector3D(-1, 0, 0), QVector3D(1, 0, 0)};
    SceneModel scene;
    GuideObject o = scene.object(scene.addImportedMesh(QString(), KindDxfMesh, unit, QString(), 2.0f, 0.5f, 0.0f));
    EXPECT_EQ(o.name, QStringLiteral("Mesh"));
    SceneMesh m = buildObjectMesh(o);
    expectWellFormed(m, "imported");
    EXPECT_EQ(m.triangleCount(), 1);
    EXPECT_FLOAT_EQ(m.vertices[1].px, 2.0f);
    EXPECT_FLOAT_EQ(m.vertices[1].py, -0.5f);
    o.dxf_extrude = 500.0f;
    m = buildObjectMesh(o);
    EXPECT_EQ(m.triangleCount(), 3);
}

TEST(SceneRaycast, NearestSurfaceAlongARay)
{
    SceneModel scene;
    const int near = scene.addPlane(QStringLiteral("Near"), 2000, 2000);
    const int far = scene.addPlane(QStringLiteral("Far"), 4000, 4000);
    const int proj = scene.addProjector(QString());
    GuideObject n = scene.object(near);
    n.translate_y = 0.0f;
    n.translate_z = -3.0f;
    scene.replaceObject(near, n);
    GuideObject f = scene.object(far);
    f.translate_y = 0.0f;
    f.translate_z = -6.0f;
    f.rotate_y = 30.0f;
    scene.replaceObject(far, f);
    (void)proj;
    const auto meshes = buildSceneMeshes(scene.objects());

    SceneRayHit hit = raycastScene(scene.objects(), meshes, {0, 0, 0}, {0, 0, -1});
    ASSERT_TRUE(hit.hit);
    EXPECT_EQ(hit.objectIndex, near);
    EXPECT_NEAR(hit.distance, 3.0, 1e-6);
    EXPECT_NEAR(hit.normal.z(), 1.0, 1e-6);

    // Past the small plane's edge the turned far plane is hit.
    hit = raycastScene(scene.objects(), meshes, {1.5, 0, 0}, {0, 0, -1});
    ASSERT_TRUE(hit.hit);
    EXPECT_EQ(hit.objectIndex, far);
    const Eigen::Vector3d local = worldToLocal(scene.object(far), hit.point);
    EXPECT_NEAR(local.z(), 0.0, 1e-5);

    GuideObject hidden = scene.object(near);
    hidden.visible = false;
    scene.replaceObject(near, hidden);
    hit = raycastScene(scene.objects(), meshes, {0, 0, 0}, {0, 0, -1});
    EXPECT_EQ(hit.objectIndex, far);
    EXPECT_FALSE(raycastScene(scene.objects(), meshes, {0, 0, 0}, {0, 0, 1}).hit);
}

// Records straight from a damaged file: any kind with hostile numbers still gives finite,
// indexable output (possibly empty), and the lens model stays finite.
TEST(MeshBuilders, HostileRecordsNeverLeakNonFiniteData)
{
    std::mt19937 rng(99);
    const float specials[] = {0.0f, -0.0f, -1.0f, 1e-30f, 1e30f, -1e30f, NAN, INFINITY, -INFINITY, 0.5f, 3.0f};
    std::uniform_int_distribution<int> pick(0, int(std::size(specials)) - 1);
    std::uniform_int_distribution<int> anyInt(-1000, 100000);
    auto f = [&] { return specials[pick(rng)]; };
    for (int trial = 0; trial < 300; ++trial) {
        GuideObject o;
        o.guide_index = trial % 16;
        o.scale_x = f(), o.scale_y = f(), o.scale_z = f();
        o.uv_rotation = f();
        o.flip_normals = trial % 3 == 0;
        o.plane_corner_radius = f(), o.plane_u_lines = anyInt(rng), o.plane_v_lines = anyInt(rng);
        o.plane_round_lines = anyInt(rng);
        o.circle_plane_angle = f(), o.circle_plane_hole_radius = f(), o.circle_plane_mode = trial % 2;
        o.wall_cylinder_angle = f(), o.wall_cylinder_u_lines = anyInt(rng), o.wall_cylinder_v_lines = anyInt(rng);
        o.wall_cylinder_top = o.wall_cylinder_floor = true;
        o.sphere_u_start = f(), o.sphere_u_end = f(), o.sphere_v_start = f(), o.sphere_v_end = f();
        o.horseshoe_u_lines = anyInt(rng), o.horseshoe_v_lines = anyInt(rng), o.horseshoe_round_u_lines = anyInt(rng);
        o.horseshoe_wall = o.horseshoe_floor = true;
        o.horseshoe_rotation_x = f();
        o.box_corner_radius = f(), o.box_u_lines = anyInt(rng), o.box_round_lines = anyInt(rng);
        o.box_top = true;
        o.curve_extrude = f();
        o.curve_points = {{f(), f(), f(), f(), f(), f()}, {1, 2, 1, 2, 1, 2}, {f(), 0, 0, f(), 0, 0}};
        o.curve_closed = trial % 2;
        o.distance_end_x = f();
        o.annotation_circle_scale = f();
        o.annotation_label_offset_x = f();
        const SceneMesh m = buildObjectMesh(o);
        for (const SceneVertex &v : m.vertices)
            ASSERT_TRUE(std::isfinite(v.px) && std::isfinite(v.py) && std::isfinite(v.pz) && std::isfinite(v.nx)
                        && std::isfinite(v.u) && std::isfinite(v.v))
                << "kind " << o.guide_index;
        for (std::uint32_t i : m.indices)
            ASSERT_LT(i, m.vertices.size());
        for (const QVector3D &p : m.lines)
            ASSERT_TRUE(std::isfinite(p.x()) && std::isfinite(p.y()) && std::isfinite(p.z()));

        o.throw_rate = f(), o.lens_shift_x = f(), o.lens_shift_y = f();
        o.translate_z = f(), o.rotate_y = f();
        o.projector_resolution_width = anyInt(rng), o.projector_resolution_height = anyInt(rng);
        const QVector<GuideObject> scene{o, o};
        const double d = throwDistanceFor(scene, 0);
        ASSERT_TRUE(d >= 8.0 && d <= 500.0) << d;
    }
}
