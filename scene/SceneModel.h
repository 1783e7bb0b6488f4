#pragma once

#include "scene/GuideObject.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>

// The objects of one 3D view, in creation order, with the selection and the undo and
// redo stacks of whole-scene snapshots. Objects are addressed by their index.
//
// Every editing step calls pushUndoSnapshot() before it changes anything; the creation,
// removal, duplication and toggle operations here do that themselves.
class SceneModel
{
public:
    static constexpr int kMaxUndoSnapshots = 80;

    struct Snapshot {
        int selectedIndex = -1;
        QVector<GuideObject> objects;
        bool operator==(const Snapshot &) const = default;
    };

    SceneModel() = default;

    // --- objects
    const QVector<GuideObject> &objects() const { return m_objects; }
    int count() const { return int(m_objects.size()); }
    bool isValidIndex(int index) const { return index >= 0 && index < m_objects.size(); }
    const GuideObject &object(int index) const { return m_objects.at(index); }
    // For edits in place; call pushUndoSnapshot() first and notifyChanged() after.
    GuideObject *mutableObject(int index);
    // Replaces an object as one undoable step (no step when nothing differs).
    bool replaceObject(int index, const GuideObject &object);

    // Replaces the whole scene as loaded from a file: no undo step; both stacks are cleared.
    void loadObjects(const QVector<GuideObject> &objects, int selectedIndex = -1);

    // --- selection: one primary index plus the set of selected indices
    int selectedIndex() const { return m_selected; }
    QList<int> selectedIndices() const { return m_selection; }
    void setSelectedIndex(int index);
    void setSelection(const QList<int> &indices, int primary = -1);
    void clearSelection() { setSelectedIndex(-1); }

    // --- creation (sizes in whole millimetres; an empty name takes the kind's default).
    // Each pushes an undo snapshot, appends, selects the new object and returns its index.
    int addPlane(const QString &name, int widthMm, int heightMm);
    int addCirclePlane(const QString &name, int widthMm, int heightMm, int holeRadiusMm = 0);
    int addCylinderWall(const QString &name, int arcLengthMm, int heightMm, double angleDegrees);
    int addDome(const QString &name, int radiusMm, int heightMm, int uSegments, int vSegments);
    int addSphere(const QString &name, int radiusMm, int heightMm, int uSegments, int vSegments);
    int addHorseshoe(const QString &name, int widthMm, int depthMm, int heightMm, int bendRadiusMm,
                     int uLines, int vLines, int roundULines);
    int addLShape(const QString &name, int widthMm, int heightMm, int depthMm, int cornerRadiusMm = 0);
    // widthMm below 1 derives the width from the height.
    int addPerson(const QString &name, int heightMm, int widthMm = 0);
    // Anchors and Bézier handles in metres on the object's y = 0 plane.
    int addCurve(const QString &name, const QVector<GuideCurvePoint> &points, bool closed, int extrudeMm = 1000);
    int addDistanceMeasure(const QString &name, int lengthMm);
    int addComment(const QString &name, const QString &text);
    int addProjector(const QString &name, int bodyWidthMm = 300, int bodyHeightMm = 150, int bodyDepthMm = 300,
                     bool verticalShift = true);
    int addCamera(const QString &name, int bodyWidthMm = 150, int bodyHeightMm = 100, int bodyDepthMm = 150);
    int addGuide(const QString &name, int guideTabIndex, int widthMm, int heightMm);
    int addImage(const QString &name, const QString &filePath, int widthMm, int heightMm);
    // kind is KindObjMesh or KindDxfMesh; halfExtents are the object's size values.
    int addImportedMesh(const QString &name, int kind, std::shared_ptr<const SceneMesh> mesh,
                        const QString &path, float halfX, float halfY, float halfZ);
    // Appends a ready record (paste, import); with uniqueName the copy-name rule applies.
    int addObject(const GuideObject &object, bool uniqueName = true);
    // Appends several as one undo step (a paste); they become the selection.
    QList<int> addObjects(const QVector<GuideObject> &objects, bool uniqueName = true);

    // --- removal and duplication (each one undo step)
    // Removes the objects and fixes every stored index: selection, projector-to-guide
    // bindings and calibration match targets. Returns the number removed.
    int removeObjects(QList<int> indices);
    // Appends copies under copy names; the copies become the selection. Returns their indices.
    QList<int> duplicateObjects(const QList<int> &indices);

    // The display-switch rule of the view keys: if any of the objects has the switch off,
    // all get it on; otherwise all get it off. lensOnly limits it to projectors and cameras.
    // Returns false (and records nothing) when no object qualified.
    bool toggleFlag(const QList<int> &indices, bool GuideObject::*flag, bool lensOnly = false);

    // --- undo and redo of whole-scene snapshots
    Snapshot snapshot() const;
    void pushUndoSnapshot();
    bool undo();
    bool redo();
    bool canUndo() const { return !m_undo.isEmpty(); }
    bool canRedo() const { return !m_redo.isEmpty(); }
    int undoDepth() const { return int(m_undo.size()); }
    int redoDepth() const { return int(m_redo.size()); }
    void clearUndoHistory();
    // While a holder loads a scene piece by piece, nothing is recorded.
    void setUndoSuppressed(bool suppressed) { m_suppressed = suppressed; }
    bool isUndoSuppressed() const { return m_suppressed; }

    // Called after every change of objects or selection (the view repaints, marks the
    // project changed and rebuilds projection state).
    void setChangedCallback(std::function<void()> callback) { m_changed = std::move(callback); }
    void notifyChanged();
    // Counts every change notified; a holder compares it to tell whether the scene changed.
    quint64 revision() const { return m_revision; }

    // --- naming and creation rules, usable without a scene
    static QString defaultName(int kind, const GuideObject &object);
    static QString copyName(const QString &sourceName, const QStringList &existingNames);
    static int clampSizeMm(int mm);        // 1..100000
    static int clampRadiusMm(int mm);      // 0..100000
    static int clampSegments(int count);   // 0..512
    static int roundHalfAwayFromZero(double value);
    // The default record of a kind with its shape defaults, before sizes are applied.
    static GuideObject defaultObject(int kind);
    // Index bookkeeping after the object at `removed` is gone: -1 when it pointed there.
    static int indexAfterRemoval(int index, int removed);
    // Cylinder wall: sets the angle (clamped to 1..360); with the arc-length lock the arc
    // length stays and the radius follows, otherwise the radius stays and the width follows.
    static void setCylinderWallAngle(GuideObject &object, double angleDegrees);

private:
    int appendCreated(GuideObject object);
    void restore(const Snapshot &snapshot);
    bool stepHistory(QVector<Snapshot> &from, QVector<Snapshot> &to);
    QStringList names() const;

    QVector<GuideObject> m_objects;
    int m_selected = -1;
    QList<int> m_selection;
    QVector<Snapshot> m_undo;
    QVector<Snapshot> m_redo;
    bool m_restoring = false;
    bool m_suppressed = false;
    std::function<void()> m_changed;
    quint64 m_revision = 0;
};
