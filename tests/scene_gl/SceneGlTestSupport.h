#pragma once

#include "scene/GuideObject.h"
#include "scene/SceneMesh.h"
#include "scene/ViewCamera.h"
#include "scene/gl/OffscreenSceneRender.h"
#include "scene/gl/SceneTextureSource.h"

#include <QImage>
#include <QVector3D>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

// One off-screen renderer shared by the suite (contexts are slow to make on software GL),
// torn down by a test environment while the application object still exists.
class SceneGlEnvironment : public ::testing::Environment
{
public:
    static std::unique_ptr<OffscreenSceneRenderer> &renderer()
    {
        static std::unique_ptr<OffscreenSceneRenderer> instance;
        return instance;
    }
    void TearDown() override { renderer().reset(); }
};

inline OffscreenSceneRenderer &sharedRenderer()
{
    std::unique_ptr<OffscreenSceneRenderer> &renderer = SceneGlEnvironment::renderer();
    if (!renderer) {
        ::testing::AddGlobalTestEnvironment(new SceneGlEnvironment);
        renderer = std::make_unique<OffscreenSceneRenderer>();
        QString error;
        if (!renderer->initialize(&error))
            ADD_FAILURE() << "no GL 3.3 context: " << error.toStdString();
    }
    renderer->initialize(nullptr);
    renderer->renderer().setTextureSourceResolver({});
    renderer->renderer().setGuideImages({});
    renderer->renderer().setCachingEnabled(true);
    renderer->renderer().setResidentShadowMapLimit(8);
    renderer->renderer().setResidentFootprintMapLimit(8);
    renderer->renderer().setChunkCullingEnabled(true);
    renderer->renderer().setShadowRangeEnabled(true);
    return *renderer;
}

inline GuideObject makePlane(float halfWidth, float halfHeight, const QVector3D &at = {})
{
    GuideObject plane;
    plane.guide_index = KindPlane;
    plane.name = QStringLiteral("Plane");
    plane.scale_x = halfWidth;
    plane.scale_y = halfHeight;
    plane.scale_z = 0.001f;
    plane.plane_width = halfWidth * 2000.0f;
    plane.plane_height = halfHeight * 2000.0f;
    plane.plane_u_lines = 0;
    plane.plane_v_lines = 0;
    plane.translate_x = at.x();
    plane.translate_y = at.y();
    plane.translate_z = at.z();
    plane.show_wireframe = false;
    plane.mesh_color = QColor(128, 128, 128);
    return plane;
}

// A projector at `at` looking along -Z, 1920 x 1200, throw ratio 1.
inline GuideObject makeProjector(const QVector3D &at, float shiftY = 50.0f)
{
    GuideObject projector;
    projector.guide_index = KindProjector;
    projector.name = QStringLiteral("Projector");
    projector.translate_x = at.x();
    projector.translate_y = at.y();
    projector.translate_z = at.z();
    projector.scale_x = projector.scale_y = projector.scale_z = 0.1f;
    projector.lens_shift_y = shiftY;
    projector.show_wireframe = false;
    projector.projector_name_visible = false;
    projector.projector_info_text_visible = false;
    return projector;
}

// A closed box as imported geometry, so the test owns its exact shape.
inline std::shared_ptr<const SceneMesh> boxMesh(float hx, float hy, float hz)
{
    auto mesh = std::make_shared<SceneMesh>();
    auto quad = [&](QVector3D a, QVector3D b, QVector3D c, QVector3D d, QVector3D n) {
        const auto base = std::uint32_t(mesh->vertices.size());
        for (const QVector3D &p : {a, b, c, d}) {
            SceneVertex v;
            v.px = p.x(); v.py = p.y(); v.pz = p.z();
            v.nx = n.x(); v.ny = n.y(); v.nz = n.z();
            mesh->vertices.push_back(v);
        }
        mesh->indices.insert(mesh->indices.end(), {base, base + 1, base + 2, base, base + 2, base + 3});
    };
    quad({-hx, -hy, hz}, {hx, -hy, hz}, {hx, hy, hz}, {-hx, hy, hz}, {0, 0, 1});
    quad({hx, -hy, -hz}, {-hx, -hy, -hz}, {-hx, hy, -hz}, {hx, hy, -hz}, {0, 0, -1});
    quad({hx, -hy, hz}, {hx, -hy, -hz}, {hx, hy, -hz}, {hx, hy, hz}, {1, 0, 0});
    quad({-hx, -hy, -hz}, {-hx, -hy, hz}, {-hx, hy, hz}, {-hx, hy, -hz}, {-1, 0, 0});
    quad({-hx, hy, hz}, {hx, hy, hz}, {hx, hy, -hz}, {-hx, hy, -hz}, {0, 1, 0});
    quad({-hx, -hy, -hz}, {hx, -hy, -hz}, {hx, -hy, hz}, {-hx, -hy, hz}, {0, -1, 0});
    mesh->closed = true;
    return mesh;
}

inline GuideObject makeBox(float hx, float hy, float hz, const QVector3D &at)
{
    GuideObject box;
    box.guide_index = KindObjMesh;
    box.name = QStringLiteral("Box");
    box.imported_mesh = boxMesh(hx, hy, hz);
    box.translate_x = at.x();
    box.translate_y = at.y();
    box.translate_z = at.z();
    box.show_wireframe = false;
    box.mesh_color = QColor(90, 140, 200);
    return box;
}

// A front view looking along -Z at the origin, showing `halfHeight` metres above and below.
inline ViewCamera frontCamera(double halfHeight)
{
    ViewCamera camera;
    camera.setMode(ViewCameraMode::Front);
    camera.setTarget(QVector3D(0, 0, 0));
    camera.setFocusDistance(halfHeight / std::tan(ViewCamera::kVerticalFieldOfViewDegrees * M_PI / 360.0));
    return camera;
}

inline SceneRenderSettings plainSettings()
{
    SceneRenderSettings settings;
    settings.gridVisible = false;
    settings.showLabels = false;
    settings.backgroundColor = QColor(0, 0, 0);
    return settings;
}

inline SceneTextureResolver solidProjectorImage(const QImage &image)
{
    auto source = std::make_shared<ImageTextureSource>(image);
    return [source](const GuideObject &object, int, bool projector) -> std::shared_ptr<SceneTextureSource> {
        return projector && object.isProjector() ? source : nullptr;
    };
}

inline QImage solidImage(const QColor &color, int w = 64, int h = 40)
{
    QImage image(w, h, QImage::Format_RGBA8888);
    image.fill(color);
    return image;
}

inline double luminance(QRgb c)
{
    return 0.299 * qRed(c) + 0.587 * qGreen(c) + 0.114 * qBlue(c);
}
