#pragma once

#include "exchange/UvLut.h"
#include "project/ProjectFile.h"
#include "scene/GuideObject.h"
#include "scene/SceneModel.h"

#include <QImage>
#include <QPainter>
#include <QString>

#include <gtest/gtest.h>

// Scenes shared by the look-up-table tests of the core and of the GPU probe.

// A picture whose quadrants differ, so a mirrored or turned lookup shows.
inline QString writeAsymmetricImage(const QString &path, int width = 64, int height = 40)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(QColor(20, 20, 200));
    QPainter p(&image);
    p.fillRect(0, 0, width / 2, height / 2, QColor(230, 30, 30));     // top left red
    p.fillRect(width / 2, 0, width / 2, height / 2, QColor(30, 220, 30));   // top right green
    p.fillRect(0, height / 2, width / 2, height / 2, QColor(240, 240, 240)); // bottom left white
    p.end();
    image.save(path);
    return path;
}

inline GuideObject lutLens(int kind, const QVector3D &at, const QVector3D &rotation, int width, int height,
                           float throwRatio, float shiftX = 0.0f, float shiftY = 0.0f)
{
    GuideObject o = SceneModel::defaultObject(kind);
    o.name = kind == KindCamera ? QStringLiteral("Camera") : QStringLiteral("Projector");
    o.translate_x = at.x();
    o.translate_y = at.y();
    o.translate_z = at.z();
    o.rotate_x = rotation.x();
    o.rotate_y = rotation.y();
    o.rotate_z = rotation.z();
    o.scale_x = o.scale_y = o.scale_z = 0.1f;
    o.projector_resolution_width = width;
    o.projector_resolution_height = height;
    o.throw_rate = throwRatio;
    o.lens_shift_x = shiftX;
    o.lens_shift_y = shiftY;
    return o;
}

inline GuideObject lutWall(float halfWidth, float halfHeight, float z)
{
    GuideObject plane = SceneModel::defaultObject(KindPlane);
    plane.name = QStringLiteral("Wall");
    plane.scale_x = halfWidth;
    plane.scale_y = halfHeight;
    plane.plane_width = halfWidth * 2000.0f;
    plane.plane_height = halfHeight * 2000.0f;
    plane.translate_z = z;
    return plane;
}

// Wall 3 m in front of a projector (object 1) and a camera of the same lens (object 2).
// The wall is 2 m wide, the image 3 m wide there: the sides of the image see no surface.
inline QVector<GuideObject> lutWallScene(const QString &imagePath, int width = 96, int height = 60)
{
    QVector<GuideObject> objects;
    objects.append(lutWall(1.0f, 1.5f, -3.0f));
    objects.append(lutLens(KindProjector, {}, {}, width, height, 1.0f));
    GuideObject camera = lutLens(KindCamera, {}, {}, width, height, 1.0f);
    camera.projector_image_file_path = imagePath;
    objects.append(camera);
    return objects;
}

// The bundled sample's 3D view with a camera added beside its projector as the source.
// Returns the objects; output is `projector`, source is the last object.
inline QVector<GuideObject> lutSampleScene(const QString &imagePath, int *projector, int width, int height)
{
    ProjectDocument doc;
    QString error;
    EXPECT_TRUE(loadProjectDocument(QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs"), &doc, &error))
        << error.toStdString();
    QVector<GuideObject> objects = doc.views.isEmpty() ? doc.activeView.objects : doc.views.first().objects;
    *projector = -1;
    for (int i = 0; i < objects.size(); ++i)
        if (objects[i].isProjector() && *projector < 0)
            *projector = i;
    if (*projector < 0)
        return objects;
    GuideObject &output = objects[*projector];
    output.projector_resolution_width = width;
    output.projector_resolution_height = height;
    GuideObject camera = output;
    camera.guide_index = KindCamera;
    camera.name = QStringLiteral("Camera");
    camera.translate_x += 0.35f;
    camera.translate_y += 0.12f;
    camera.rotate_y += 4.0f;
    camera.rotate_z += 2.0f;
    camera.throw_rate = std::max(0.3f, output.throw_rate * 0.85f);
    camera.projector_resolution_width = 1600;
    camera.projector_resolution_height = 1000;
    camera.projector_image_file_path = imagePath;
    camera.projector_image_guide_index = -1;
    objects.append(camera);
    return objects;
}

// A dome of radius 3 m with two projectors inside looking up at it from either side.
// Output is object 1, source object 2.
inline QVector<GuideObject> lutDomeScene(const QString &imagePath, int width, int height)
{
    SceneModel model;
    model.addDome(QStringLiteral("Dome"), 3000, 3000, 48, 16);
    QVector<GuideObject> objects = model.objects();
    objects.append(lutLens(KindProjector, {-0.6f, 0.8f, 0.2f}, {55.0f, -20.0f, 0.0f}, width, height, 0.6f, 5.0f, 10.0f));
    GuideObject source = lutLens(KindProjector, {0.7f, 0.8f, -0.1f}, {60.0f, 25.0f, 8.0f}, 1920, 1080, 0.5f);
    source.projector_image_file_path = imagePath;
    objects.append(source);
    return objects;
}
