#pragma once

#include "exchange/ExportImageSource.h"
#include "scene/GuideObject.h"
#include "scene/LensModel.h"
#include "scene/MeshBuilders.h"
#include "scene/Transform.h"

#include <QFile>
#include <QImage>
#include <QString>
#include <QVector>

#include <array>

namespace exporttest {

// A picture whose quadrants differ, so that a mirrored or turned texture is told apart:
// red top-left, green top-right, blue bottom-left, white bottom-right.
inline QImage quadrantImage(int w = 64, int h = 32)
{
    QImage image(w, h, QImage::Format_RGB32);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const bool right = x >= w / 2, bottom = y >= h / 2;
            image.setPixel(x, y, !bottom ? (right ? qRgb(0, 255, 0) : qRgb(255, 0, 0)) : (right ? qRgb(255, 255, 255) : qRgb(0, 0, 255)));
        }
    return image;
}

// The placeholder the GL layer would draw, without GL.
class TestImages : public vg::exchange::ExportImageSource
{
public:
    using ExportImageSource::ExportImageSource;
    QImage projectorPlaceholder(int, int, double) override { return quadrantImage(32, 20); }
};

inline GuideObject plane(const QString &name, float w, float h)
{
    GuideObject o;
    o.guide_index = KindPlane;
    o.name = name;
    o.scale_x = w / 2.0f;
    o.scale_y = h / 2.0f;
    o.plane_width = w * 1000.0f;
    o.plane_height = h * 1000.0f;
    o.plane_u_lines = 3;
    o.plane_v_lines = 2;
    return o;
}

inline GuideObject projector(const QString &name)
{
    GuideObject o;
    o.guide_index = KindProjector;
    o.name = name;
    o.scale_x = o.scale_y = o.scale_z = 0.15f;
    o.lens_shift_y = 50.0f;
    return o;
}

// A wall turned and moved away from the origin, an image panel with a picture, a person,
// a hidden plane, a comment and a projector looking at the wall.
inline QVector<GuideObject> sampleScene(const QString &imagePath)
{
    GuideObject wall = plane(QStringLiteral("Wall"), 4.0f, 2.5f);
    wall.translate_x = 1.0f;
    wall.translate_y = 1.25f;
    wall.translate_z = -3.0f;
    wall.rotate_y = 20.0f;
    wall.rotate_x = 5.0f;
    GuideObject image = plane(QStringLiteral("Poster"), 2.0f, 1.0f);
    image.guide_index = KindImage;
    image.texture_file_path = imagePath;
    image.translate_x = -2.0f;
    image.translate_z = -1.0f;
    image.rotate_z = 10.0f;
    GuideObject person;
    person.guide_index = KindPerson;
    person.name = QStringLiteral("Person 170 cm");
    person.scale_x = 0.25f;
    person.scale_y = 0.85f;
    person.scale_z = 0.15f;
    person.translate_x = 0.5f;
    GuideObject hidden = plane(QStringLiteral("Hidden"), 1.0f, 1.0f);
    hidden.visible = false;
    GuideObject comment;
    comment.guide_index = KindComment;
    comment.name = QStringLiteral("Note");
    GuideObject p = projector(QStringLiteral("Beamer"));
    p.translate_x = 0.8f;
    p.translate_y = 1.5f;
    p.translate_z = 2.0f;
    p.rotate_y = 15.0f;
    p.projector_flip_h = true;
    return {wall, image, person, hidden, comment, p};
}

// World positions of an object's triangles, three per triangle, in mesh order.
inline std::vector<Eigen::Vector3d> worldTriangles(const GuideObject &o)
{
    const SceneMesh mesh = vg::scene::buildObjectMesh(o);
    const Eigen::Isometry3d toWorld = vg::scene::objectToWorld(o);
    std::vector<Eigen::Vector3d> out;
    for (std::uint32_t i : mesh.indices) {
        const SceneVertex &v = mesh.vertices[i];
        out.push_back(toWorld * Eigen::Vector3d(v.px, v.py, v.pz));
    }
    return out;
}

inline QString readText(const QString &path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(f.readAll());
}

// The four image corner rays of a lens object: (u, v) = (0,0), (1,0), (1,1), (0,1).
inline std::array<Eigen::Vector3d, 4> lensCornerDirections(const QVector<GuideObject> &scene, int index)
{
    const vg::scene::LensModel lens = vg::scene::LensModel::forObject(scene, index);
    const auto c = lens.farCorners();
    std::array<Eigen::Vector3d, 4> d;
    for (int i = 0; i < 4; ++i)
        d[i] = (c[i] - lens.pose().position).normalized();
    return d;
}

} // namespace exporttest
