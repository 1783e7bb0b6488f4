#pragma once

#include "scene/GuideObject.h"
#include "scene/ui/SceneGizmo.h"

#include <QList>
#include <QPointF>
#include <QQuaternion>
#include <QVector3D>
#include <QVector>

class QMouseEvent;
class QWheelEvent;
class SceneWidget;

// An object's pose as the gizmo works with it.
QQuaternion sceneObjectRotation(const GuideObject &object);
QVector3D sceneObjectPosition(const GuideObject &object);

// One way the pointer works in the 3D view. The view offers each press to its tools in
// turn; the tool that takes it holds the drag until the button is released.
class SceneTool
{
public:
    enum class Press {
        NotMine,  // the next tool may take it
        Consumed, // taken, with no drag to follow
        Dragging, // taken; moves and the release come here
    };
    explicit SceneTool(SceneWidget &view)
        : m_view(view)
    {
    }
    virtual ~SceneTool() = default;
    virtual Press press(QMouseEvent *event) = 0;
    // Returns the tool that holds the drag afterwards (null: the drag is over).
    virtual SceneTool *move(const QPointF &pos) = 0;
    virtual void release(QMouseEvent *) {}
    virtual void cancel() {}

protected:
    SceneWidget &m_view;
};

// Alt + left, middle, right button: orbit, pan, dolly; the wheel zooms.
class SceneNavigateTool : public SceneTool
{
public:
    using SceneTool::SceneTool;
    Press press(QMouseEvent *event) override;
    SceneTool *move(const QPointF &pos) override;
    void wheel(QWheelEvent *event);

private:
    enum class Mode { Orbit, Pan, Dolly };
    Mode m_mode = Mode::Orbit;
    QPointF m_lastPos;
};

// Moves, turns or scales the selection by a gizmo part, under one undo snapshot.
class SceneGizmoTool : public SceneTool
{
public:
    using SceneTool::SceneTool;
    Press press(QMouseEvent *) override { return Press::NotMine; } // entered from a select drag
    // False when nothing is selected to drag.
    bool begin(GizmoPart part, const QPointF &pressPos);
    SceneTool *move(const QPointF &pos) override;
    void release(QMouseEvent *event) override;
    void cancel() override;
    GizmoPart part() const { return m_part; }

private:
    QVector3D translation(const QPointF &pixel) const;

    GizmoPart m_part = GizmoPart::None;
    GizmoFrame m_frame;
    GizmoViewport m_viewport;
    QPointF m_pressPos, m_lastPos;
    QList<int> m_indices;                // the objects being dragged
    QVector<GuideObject> m_startObjects; // and how they were when the drag began
    float m_angle = 0.0f;
};

// A left click picks (Shift or Ctrl adds or removes); a drag that starts on a gizmo part
// hands over to the gizmo tool.
class SceneSelectTool : public SceneTool
{
public:
    SceneSelectTool(SceneWidget &view, SceneGizmoTool &gizmo)
        : SceneTool(view)
        , m_gizmo(gizmo)
    {
    }
    Press press(QMouseEvent *event) override;
    SceneTool *move(const QPointF &pos) override;
    void release(QMouseEvent *event) override;

private:
    SceneGizmoTool &m_gizmo;
    GizmoPart m_part = GizmoPart::None;
    QPointF m_pressPos;
    Qt::KeyboardModifiers m_modifiers;
};

// While a curve is drawn: left clicks add points on the ground, a right click ends it.
class SceneCurveTool : public SceneTool
{
public:
    using SceneTool::SceneTool;
    Press press(QMouseEvent *event) override;
    SceneTool *move(const QPointF &) override { return nullptr; }
    void begin();
    void end();
    bool isDrawing() const { return m_curveIndex >= 0; }

private:
    void addPoint(const QPointF &pixel);

    int m_curveIndex = -1;
};
