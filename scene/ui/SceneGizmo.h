#pragma once

#include <QMatrix4x4>
#include <QPointF>
#include <QQuaternion>
#include <QSize>
#include <QString>
#include <QVector3D>
#include <QVector>

// The transform gizmo of the 3D view, free of widgets and GL so that picking and
// the drag arithmetic can be tested on their own. All positions are in metres,
// all pixel coordinates are widget pixels with the origin at the top left.

enum class GizmoPart { None, XAxis, YAxis, ZAxis, Screen, Ring };

// "xaxis", "yaxis", "zaxis", "screen", "ring" (empty for None).
QString gizmoPartName(GizmoPart part);
GizmoPart gizmoPartFromName(const QString &name);

// Transform modes as the view stores them.
enum GizmoMode { GizmoMove = 0, GizmoRotate = 1, GizmoScale = 2 };

struct GizmoRay
{
    QVector3D origin;
    QVector3D direction; // unit length
};

// What the gizmo needs to know about the camera.
struct GizmoViewport
{
    QMatrix4x4 view;
    QMatrix4x4 projection;
    QSize size;

    QMatrix4x4 viewProjection() const { return projection * view; }
    // World position of the eye (orthographic views: a point far behind the screen).
    QVector3D eye() const;
    // Unit vector the camera looks along.
    QVector3D forward() const;
    bool isOrthographic() const;

    GizmoRay rayThroughPixel(const QPointF &pixel) const;
    // Pixel of a world point; *inFront is false when it lies behind the camera.
    QPointF projectToPixel(const QVector3D &world, bool *inFront = nullptr) const;
    // World length that appears `pixels` long at the depth of `at`.
    float worldSizeForPixels(const QVector3D &at, float pixels) const;
};

struct GizmoFrame
{
    QVector3D origin;
    QVector3D axes[3] = {QVector3D(1, 0, 0), QVector3D(0, 1, 0), QVector3D(0, 0, 1)};
    float length = 1.0f; // world length of an axis handle

    QVector3D axis(GizmoPart part) const;
};

class SceneGizmo
{
public:
    static constexpr float kHandlePixels = 90.0f;
    static constexpr float kPickTolerancePixels = 8.0f;
    static constexpr float kScreenHandlePixels = 9.0f;
    static constexpr float kRingPixels = 112.0f;
    static constexpr int kCircleSegments = 64;

    // Snapping steps used while "snap" is on.
    static constexpr float kMoveSnapMetres = 0.1f;
    static constexpr float kRotateSnapDegrees = 15.0f;
    static constexpr float kScaleSnapFactor = 0.1f;

    // The frame of the gizmo for an object at `origin` with rotation `rotation`;
    // world axes unless `localAxes`. Scale handles always follow the object's own axes.
    static GizmoFrame frame(const GizmoViewport &viewport, const QVector3D &origin,
                            const QQuaternion &rotation, bool localAxes, int mode);

    static GizmoPart pick(const GizmoViewport &viewport, const GizmoFrame &frame, int mode,
                          const QPointF &pixel);

    // Screen polylines of a part (for drawing); closed loops repeat their first point.
    static QVector<QPointF> partOutline(const GizmoViewport &viewport, const GizmoFrame &frame,
                                        int mode, GizmoPart part);

    // Translation along one axis that keeps the grabbed point of the axis under the cursor.
    static QVector3D axisTranslation(const GizmoViewport &viewport, const GizmoFrame &frame,
                                     GizmoPart axisPart, const QPointF &start, const QPointF &now);
    // Translation in the plane through the origin facing the camera.
    static QVector3D screenTranslation(const GizmoViewport &viewport, const QVector3D &origin,
                                       const QPointF &start, const QPointF &now);
    // Signed rotation in degrees about the axis of `part` (the view axis for Ring),
    // right-handed about that axis, from the cursor's turn around the projected origin.
    static float rotationDegrees(const GizmoViewport &viewport, const GizmoFrame &frame,
                                 GizmoPart part, const QPointF &start, const QPointF &now);
    // World axis the rotation of `part` turns about.
    static QVector3D rotationAxis(const GizmoViewport &viewport, const GizmoFrame &frame,
                                  GizmoPart part);
    // Scale factor along an axis handle (>= 0.01), or uniform for Screen.
    static float scaleFactor(const GizmoViewport &viewport, const GizmoFrame &frame,
                             GizmoPart part, const QPointF &start, const QPointF &now);

    static float snapped(float value, float step);
    static QVector3D snapped(const QVector3D &value, float step);
};

// Distance from `p` to the segment a–b in pixels.
double pixelDistanceToSegment(const QPointF &p, const QPointF &a, const QPointF &b);
