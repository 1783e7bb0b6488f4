#pragma once

#include <QMatrix4x4>
#include <QPointF>
#include <QSize>
#include <QVector3D>

// The navigation camera of the 3D view. It orbits a target point; front and side views
// look along the scene axes with a parallel projection whose extent follows the orbit
// distance, so switching between modes keeps the framing. The projector view looks
// through a lens frame with the lens model's off-centre frustum.
//
// Mode codes are the ones saved in a view's camera ("view_mode").
enum class ViewCameraMode { Perspective = 0, Front = 1, Side = 2, ProjectorView = 3 };

// The lens a projector view looks through, in world space.
struct ViewCameraLens {
    QMatrix4x4 lensToWorld;       // lens frame: looks along -Z, +X right, +Y up
    double throwRatio = 1.0;      // clamped to 0.1 … 10 where used
    double lensShiftX = 0.0;      // fraction -1 … 1 of the image width
    double lensShiftY = 0.0;      // fraction -1 … 1 of the image height
    double aspect = 1.6;          // resolution width ÷ height
    double farDistance = 100.0;   // throw distance
};

struct ViewCameraRay {
    QVector3D origin;
    QVector3D direction; // unit length
};

class ViewCamera
{
public:
    static constexpr double kVerticalFieldOfViewDegrees = 45.0;
    static constexpr double kNearPlane = 0.02;

    ViewCameraMode mode() const { return m_mode; }
    void setMode(ViewCameraMode mode);

    // Orbit angles in radians: rotationX lifts the eye above the target, rotationY turns it
    // about the vertical axis (0 looks along -Z).
    double rotationX() const { return m_rotationX; }
    double rotationY() const { return m_rotationY; }
    double focusDistance() const { return m_focusDistance; }
    QVector3D target() const { return m_target; }
    void setRotation(double rotationX, double rotationY);
    void setFocusDistance(double distance);
    void setTarget(const QVector3D &target);

    const ViewCameraLens &lens() const { return m_lens; }
    void setLens(const ViewCameraLens &lens) { m_lens = lens; }
    // Looks through the given lens; the orbit state is kept for returning to perspective.
    void setProjectorView(const ViewCameraLens &lens);

    // Mouse-driven operations, in viewport pixels. Orbit, pan and dolly in a front, side or
    // projector view first turn the camera into a perspective camera seen from the same
    // place, so the picture does not jump.
    void orbit(double deltaXPixels, double deltaYPixels);
    void pan(double deltaXPixels, double deltaYPixels, const QSize &viewport);
    void dolly(double deltaPixels);
    void zoom(double wheelSteps); // positive steps move closer
    // Centres the target on a bounding sphere and backs off until it fills the view.
    void frame(const QVector3D &centre, double radius);

    QVector3D eyePosition() const;
    QVector3D forward() const;
    QMatrix4x4 viewMatrix() const;
    QMatrix4x4 projectionMatrix(double aspect) const;
    QMatrix4x4 viewProjection(const QSize &viewport) const;
    double farPlane() const;

    // The ray under a viewport pixel (origin top-left), for picking.
    ViewCameraRay rayThroughPixel(const QPointF &pixel, const QSize &viewport) const;
    // Where a world point lands in the viewport (origin top-left); false when behind.
    bool worldToPixel(const QVector3D &world, const QSize &viewport, QPointF *pixel) const;

    bool isOrthographic() const { return m_mode == ViewCameraMode::Front || m_mode == ViewCameraMode::Side; }

private:
    void becomePerspective();
    QVector3D orbitDirection() const; // from target towards the eye

    ViewCameraMode m_mode = ViewCameraMode::Perspective;
    double m_rotationX = 0.6;
    double m_rotationY = 0.0;
    double m_focusDistance = 4.0;
    QVector3D m_target;
    ViewCameraLens m_lens;
};
