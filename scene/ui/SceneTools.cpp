#include "scene/ui/SceneTools.h"

#include "scene/Transform.h"
#include "scene/ui/SceneTexts.h"
#include "scene/ui/SceneWidget.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

using namespace vg::scene;

namespace {

Eigen::Matrix3d toEigenRotation(const QQuaternion &q)
{
    const QMatrix3x3 m = q.toRotationMatrix();
    Eigen::Matrix3d r;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            r(row, column) = m(row, column);
    return r;
}

void setObjectPosition(GuideObject &object, const QVector3D &p)
{
    object.translate_x = p.x();
    object.translate_y = p.y();
    object.translate_z = p.z();
}

} // namespace

QQuaternion sceneObjectRotation(const GuideObject &object)
{
    const Eigen::Matrix3d r = objectRotation(object);
    QMatrix3x3 m;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            m(row, column) = float(r(row, column));
    return QQuaternion::fromRotationMatrix(m);
}

QVector3D sceneObjectPosition(const GuideObject &object)
{
    return {object.translate_x, object.translate_y, object.translate_z};
}

// ---- navigate ------------------------------------------------------------------------------

SceneTool::Press SceneNavigateTool::press(QMouseEvent *event)
{
    if (!(event->modifiers() & Qt::AltModifier))
        return Press::NotMine;
    m_lastPos = event->position();
    switch (event->button()) {
    case Qt::LeftButton: m_mode = Mode::Orbit; return Press::Dragging;
    case Qt::MiddleButton: m_mode = Mode::Pan; return Press::Dragging;
    case Qt::RightButton: m_mode = Mode::Dolly; return Press::Dragging;
    default: return Press::Consumed;
    }
}

SceneTool *SceneNavigateTool::move(const QPointF &pos)
{
    const QPointF d = pos - m_lastPos;
    ViewCamera &camera = m_view.m_camera;
    switch (m_mode) {
    case Mode::Orbit: camera.orbit(d.x(), d.y()); break;
    case Mode::Pan: camera.pan(d.x(), d.y(), m_view.size()); break;
    case Mode::Dolly: camera.dolly(d.y() - d.x()); break;
    }
    if (camera.mode() != ViewCameraMode::ProjectorView)
        m_view.m_projectorViewIndex = -1;
    m_lastPos = pos;
    Q_EMIT m_view.viewStateChanged();
    m_view.requestRepaint();
    return this;
}

void SceneNavigateTool::wheel(QWheelEvent *event)
{
    const double steps = event->angleDelta().y() / 120.0;
    if (steps != 0.0) {
        m_view.m_camera.zoom(steps);
        if (m_view.m_camera.mode() != ViewCameraMode::ProjectorView)
            m_view.m_projectorViewIndex = -1;
        Q_EMIT m_view.viewStateChanged();
        m_view.requestRepaint();
    }
    event->accept();
}

// ---- select ------------------------------------------------------------------------------

SceneTool::Press SceneSelectTool::press(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return Press::NotMine;
    m_pressPos = event->position();
    m_modifiers = event->modifiers();
    m_part = m_view.gizmoPartAt(m_pressPos);
    return Press::Dragging;
}

SceneTool *SceneSelectTool::move(const QPointF &pos)
{
    if ((pos - m_pressPos).manhattanLength() < QApplication::startDragDistance())
        return this;
    // A drag on empty space is not a click.
    if (m_part == GizmoPart::None || !m_gizmo.begin(m_part, m_pressPos))
        return nullptr;
    return m_gizmo.move(pos);
}

void SceneSelectTool::release(QMouseEvent *event)
{
    const int hit = m_view.objectAt(event->position());
    if (m_modifiers & (Qt::ShiftModifier | Qt::ControlModifier)) {
        if (hit < 0)
            return;
        QList<int> next = m_view.selection();
        if (next.contains(hit))
            next.removeAll(hit);
        else
            next.append(hit);
        m_view.setSelection(next);
        return;
    }
    m_view.selectOnly(hit);
}

// ---- gizmo -------------------------------------------------------------------------------

bool SceneGizmoTool::begin(GizmoPart part, const QPointF &pressPos)
{
    GizmoFrame frame;
    if (!m_view.gizmoFrame(&frame))
        return false;
    m_part = part;
    m_frame = frame;
    m_viewport = m_view.gizmoViewport();
    m_pressPos = m_lastPos = pressPos;
    m_indices = m_view.selection();
    m_startObjects.clear();
    for (int index : std::as_const(m_indices))
        m_startObjects.append(m_view.objects().at(index));
    m_angle = 0.0f;
    m_view.m_model.pushUndoSnapshot();
    return true;
}

void SceneGizmoTool::cancel()
{
    m_part = GizmoPart::None;
    m_startObjects.clear();
}

void SceneGizmoTool::release(QMouseEvent *)
{
    Q_EMIT m_view.undoStateChanged();
}

QVector3D SceneGizmoTool::translation(const QPointF &pixel) const
{
    const bool snap = m_view.m_snap;
    const int primary = std::max(0, int(m_indices.indexOf(m_view.currentIndex())));
    const QVector3D start = sceneObjectPosition(m_startObjects.at(primary));
    if (m_part == GizmoPart::Screen) {
        const QVector3D delta = SceneGizmo::screenTranslation(m_viewport, m_frame.origin, m_pressPos, pixel);
        return snap ? SceneGizmo::snapped(start + delta, SceneGizmo::kMoveSnapMetres) - start : delta;
    }
    const QVector3D delta = SceneGizmo::axisTranslation(m_viewport, m_frame, m_part, m_pressPos, pixel);
    if (!snap)
        return delta;
    const QVector3D axis = m_frame.axis(m_part);
    const float distance = QVector3D::dotProduct(delta, axis);
    if (m_view.m_transformSpace == 0) {
        // World axes: the coordinate itself lands on the grid.
        const float from = start[int(m_part) - int(GizmoPart::XAxis)];
        return axis * (SceneGizmo::snapped(from + distance, SceneGizmo::kMoveSnapMetres) - from);
    }
    return axis * SceneGizmo::snapped(distance, SceneGizmo::kMoveSnapMetres);
}

SceneTool *SceneGizmoTool::move(const QPointF &pixel)
{
    if (m_startObjects.size() != m_indices.size())
        return this;
    const int mode = m_view.m_transformMode;
    const bool snap = m_view.m_snap;
    QVector3D delta;
    float angle = 0.0f;
    float factor = 1.0f;
    QVector3D rotationAxis;
    switch (mode) {
    case GizmoMove:
        delta = translation(pixel);
        break;
    case GizmoRotate:
        m_angle += SceneGizmo::rotationDegrees(m_viewport, m_frame, m_part, m_lastPos, pixel);
        angle = snap ? SceneGizmo::snapped(m_angle, SceneGizmo::kRotateSnapDegrees) : m_angle;
        rotationAxis = SceneGizmo::rotationAxis(m_viewport, m_frame, m_part);
        break;
    case GizmoScale:
        factor = SceneGizmo::scaleFactor(m_viewport, m_frame, m_part, m_pressPos, pixel);
        if (snap)
            factor = std::max(SceneGizmo::kScaleSnapFactor, SceneGizmo::snapped(factor, SceneGizmo::kScaleSnapFactor));
        break;
    default:
        break;
    }

    for (int i = 0; i < m_indices.size(); ++i) {
        GuideObject object = m_startObjects.at(i);
        switch (mode) {
        case GizmoMove:
            setObjectPosition(object, sceneObjectPosition(object) + delta);
            break;
        case GizmoRotate: {
            const QQuaternion turn = QQuaternion::fromAxisAndAngle(rotationAxis, angle);
            const QQuaternion rotated = turn * sceneObjectRotation(object);
            setObjectPose(object, objectTranslation(object), toEigenRotation(rotated.normalized()));
            break;
        }
        case GizmoScale: {
            float *fields[3] = {&object.scale_x, &object.scale_y, &object.scale_z};
            const auto clampScale = [](float v) { return std::clamp(v, 0.0005f, 50.0f); };
            if (m_part == GizmoPart::Screen) {
                for (float *f : fields)
                    *f = clampScale(*f * factor);
            } else {
                const int axis = int(m_part) - int(GizmoPart::XAxis);
                *fields[axis] = clampScale(*fields[axis] * factor);
            }
            break;
        }
        default:
            break;
        }
        if (GuideObject *target = m_view.m_model.mutableObject(m_indices.at(i)))
            *target = object;
    }
    m_lastPos = pixel;
    m_view.m_model.notifyChanged();
    return this;
}

// ---- curve -------------------------------------------------------------------------------

SceneTool::Press SceneCurveTool::press(QMouseEvent *event)
{
    if (!isDrawing())
        return Press::NotMine;
    if (event->button() == Qt::RightButton)
        end();
    else if (event->button() == Qt::LeftButton)
        addPoint(event->position());
    return Press::Consumed;
}

void SceneCurveTool::begin()
{
    m_curveIndex = m_view.objectCount(); // the curve is created with its first point
    m_view.setStatus(SceneTexts::curveDrawingStatus(), 0);
    m_view.setCursor(Qt::CrossCursor);
}

void SceneCurveTool::end()
{
    if (m_curveIndex < 0)
        return;
    m_curveIndex = -1;
    m_view.unsetCursor();
    m_view.setStatus(QString(), 0);
}

void SceneCurveTool::addPoint(const QPointF &pixel)
{
    QVector3D hit;
    if (!m_view.groundPoint(pixel, &hit))
        return;
    if (m_view.m_snap)
        hit = QVector3D(SceneGizmo::snapped(hit.x(), SceneGizmo::kMoveSnapMetres), 0.0f,
                        SceneGizmo::snapped(hit.z(), SceneGizmo::kMoveSnapMetres));
    GuideCurvePoint point;
    point.anchor_x = hit.x();
    point.anchor_z = hit.z();
    point.in_handle_x = point.out_handle_x = hit.x();
    point.in_handle_z = point.out_handle_z = hit.z();

    const QVector<GuideObject> &objects = m_view.objects();
    if (m_curveIndex >= objects.size() || m_curveIndex < 0 || objects.at(m_curveIndex).guide_index != KindCurve) {
        m_curveIndex = m_view.m_model.addCurve(QString(), {point}, false);
        return;
    }
    GuideObject curve = objects.at(m_curveIndex);
    curve.curve_points.append(point);
    m_view.applyObjectEdit(m_curveIndex, curve);
}
