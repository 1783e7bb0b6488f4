#include "scene/SceneModel.h"

#include "scene/SceneMesh.h"

#include <QSet>

#include <algorithm>
#include <cmath>

namespace {

float halfExtent(int mm, float floor = 0.0f)
{
    return std::max(float(mm) / 2000.0f, floor);
}

} // namespace

// ---------------------------------------------------------------- rules

int SceneModel::clampSizeMm(int mm)
{
    return std::clamp(mm, 1, 100000);
}

int SceneModel::clampRadiusMm(int mm)
{
    return std::clamp(mm, 0, 100000);
}

int SceneModel::clampSegments(int count)
{
    return std::clamp(count, 0, 512);
}

int SceneModel::roundHalfAwayFromZero(double value)
{
    return int(std::round(value));   // std::round rounds halves away from zero
}

int SceneModel::indexAfterRemoval(int index, int removed)
{
    if (index == removed)
        return -1;
    return index > removed ? index - 1 : index;
}

QString SceneModel::defaultName(int kind, const GuideObject &o)
{
    switch (kind) {
    case KindPlane: return QStringLiteral("Plane");
    case KindCirclePlane: return QStringLiteral("Circle Plane");
    case KindCylinderWall: return QStringLiteral("Cylinder Wall");
    case KindProjector: return QStringLiteral("Projector");
    case KindCamera: return QStringLiteral("Camera");
    case KindPerson: {
        const int cm = std::max(1, roundHalfAwayFromZero(o.people_height / 10.0));
        return QStringLiteral("Person %1 cm").arg(cm);
    }
    case KindCurvedSurface:
        switch (curvedShapeOf(o)) {
        case CurvedShape::Dome: return QStringLiteral("Dome");
        case CurvedShape::Sphere: return QStringLiteral("Sphere");
        case CurvedShape::Horseshoe: return QStringLiteral("Horseshoe");
        }
        break;
    case KindLShape: return QStringLiteral("L Shape");
    case KindCurve: return QStringLiteral("Curve");
    case KindDistanceMeasure: return QStringLiteral("Distance Measure");
    case KindComment: return QStringLiteral("Comment");
    case KindGuide: return QStringLiteral("Guide");
    case KindImage: return QStringLiteral("Image");
    case KindObjMesh:
    case KindDxfMesh: return QStringLiteral("Mesh");
    default: break;
    }
    return QStringLiteral("Object");
}

QString SceneModel::copyName(const QString &sourceName, const QStringList &existingNames)
{
    const QString base = sourceName.isEmpty() ? QStringLiteral("Object") : sourceName;
    const QSet<QString> taken(existingNames.begin(), existingNames.end());
    if (!taken.contains(base))
        return base;
    const QString copy = QStringLiteral("%1 Copy").arg(base);
    if (!taken.contains(copy))
        return copy;
    for (int n = 2;; ++n) {
        const QString numbered = QStringLiteral("%1 Copy %2").arg(base).arg(n);
        if (!taken.contains(numbered))
            return numbered;
    }
}

GuideObject SceneModel::defaultObject(int kind)
{
    GuideObject o;
    o.guide_index = kind;
    switch (kind) {
    case KindProjector:
        o.throw_rate = 1.0f;
        o.projection_opacity = 1.0f;
        o.lens_shift_x = 0.0f;
        o.lens_shift_y = 50.0f;
        o.projector_resolution_width = 1920;
        o.projector_resolution_height = 1200;
        o.show_projector_frustum = true;
        o.mesh_color = QColor(0x3c, 0x3c, 0x40);
        break;
    case KindCamera:
        o.lens_shift_y = 0.0f;
        o.show_projector_frustum = true;
        o.projection_visible = false;
        o.mesh_color = QColor(0x30, 0x50, 0x70);
        break;
    case KindCurvedSurface:
        o.horseshoe_u_lines = 48;
        o.horseshoe_v_lines = 24;
        break;
    case KindDistanceMeasure:
    case KindComment:
        o.show_dimensions = kind == KindDistanceMeasure;
        o.mesh_color = QColor(0xff, 0xc8, 0x28);
        break;
    case KindPerson:
        o.mesh_color = QColor(0x8c, 0x9c, 0xb4);
        break;
    default:
        break;
    }
    return o;
}

void SceneModel::setCylinderWallAngle(GuideObject &o, double angleDegrees)
{
    const double angle = std::clamp(std::isfinite(angleDegrees) ? angleDegrees : 90.0, 1.0, 360.0);
    const double radians = angle * M_PI / 180.0;
    o.wall_cylinder_angle = float(angle);
    if (o.wall_cylinder_arc_length_lock) {
        const double arc = 2.0 * o.scale_x;
        o.wall_cylinder_radius = float(std::max(0.05, arc / radians) * 1000.0);
    } else {
        const double radius = std::max(0.05, o.wall_cylinder_radius / 1000.0);
        o.scale_x = float(std::max(0.05, radius * radians / 2.0));
        o.wall_cylinder_radius = float(radius * 1000.0);
    }
}

// ---------------------------------------------------------------- objects and selection

GuideObject *SceneModel::mutableObject(int index)
{
    return isValidIndex(index) ? &m_objects[index] : nullptr;
}

bool SceneModel::replaceObject(int index, const GuideObject &object)
{
    if (!isValidIndex(index) || m_objects[index] == object)
        return false;
    pushUndoSnapshot();
    m_objects[index] = object;
    notifyChanged();
    return true;
}

void SceneModel::loadObjects(const QVector<GuideObject> &objects, int selectedIndex)
{
    m_objects = objects;
    m_undo.clear();
    m_redo.clear();
    m_selected = -1;
    m_selection.clear();
    setSelectedIndex(selectedIndex);
}

void SceneModel::setSelectedIndex(int index)
{
    m_selected = isValidIndex(index) ? index : -1;
    m_selection.clear();
    if (m_selected >= 0)
        m_selection.append(m_selected);
    notifyChanged();
}

void SceneModel::setSelection(const QList<int> &indices, int primary)
{
    m_selection.clear();
    for (int i : indices)
        if (isValidIndex(i) && !m_selection.contains(i))
            m_selection.append(i);
    if (isValidIndex(primary) && !m_selection.contains(primary))
        m_selection.append(primary);
    m_selected = isValidIndex(primary) ? primary : (m_selection.isEmpty() ? -1 : m_selection.last());
    notifyChanged();
}

QStringList SceneModel::names() const
{
    QStringList list;
    list.reserve(m_objects.size());
    for (const GuideObject &o : m_objects)
        list.append(o.name);
    return list;
}

void SceneModel::notifyChanged()
{
    ++m_revision;
    if (m_changed)
        m_changed();
}

int SceneModel::appendCreated(GuideObject object)
{
    pushUndoSnapshot();
    if (object.name.isEmpty())
        object.name = defaultName(object.guide_index, object);
    m_objects.append(std::move(object));
    m_selected = int(m_objects.size()) - 1;
    m_selection = {m_selected};
    notifyChanged();
    return m_selected;
}

// ---------------------------------------------------------------- creation

int SceneModel::addPlane(const QString &name, int widthMm, int heightMm)
{
    GuideObject o = defaultObject(KindPlane);
    o.name = name;
    o.plane_width = float(clampSizeMm(widthMm));
    o.plane_height = float(clampSizeMm(heightMm));
    o.scale_x = halfExtent(clampSizeMm(widthMm));
    o.scale_y = halfExtent(clampSizeMm(heightMm));
    o.scale_z = 0.01f;
    o.translate_y = o.scale_y;   // standing on the floor
    return appendCreated(std::move(o));
}

int SceneModel::addCirclePlane(const QString &name, int widthMm, int heightMm, int holeRadiusMm)
{
    GuideObject o = defaultObject(KindCirclePlane);
    o.name = name;
    o.plane_width = float(clampSizeMm(widthMm));
    o.plane_height = float(clampSizeMm(heightMm));
    o.scale_x = halfExtent(clampSizeMm(widthMm));
    o.scale_y = halfExtent(clampSizeMm(heightMm));
    o.scale_z = 0.01f;
    o.circle_plane_hole_radius = float(clampRadiusMm(holeRadiusMm));
    o.translate_y = o.scale_y;
    return appendCreated(std::move(o));
}

int SceneModel::addCylinderWall(const QString &name, int arcLengthMm, int heightMm, double angleDegrees)
{
    GuideObject o = defaultObject(KindCylinderWall);
    o.name = name;
    const int width = clampSizeMm(arcLengthMm);
    const int height = clampSizeMm(heightMm);
    o.scale_x = halfExtent(width, 0.05f);
    o.scale_y = halfExtent(height, 0.05f);
    o.wall_cylinder_height = float(height);
    o.wall_cylinder_u_lines = 72;
    o.wall_cylinder_arc_length_lock = true;
    const double angle = std::clamp(std::isfinite(angleDegrees) ? angleDegrees : 90.0, 1.0, 360.0);
    o.wall_cylinder_angle = float(angle);
    const double radius = std::max(0.05, (width / 1000.0) / (angle * M_PI / 180.0));
    o.wall_cylinder_radius = float(radius * 1000.0);
    o.scale_z = float(std::max(0.05, std::min(radius, double(o.scale_x))));
    o.translate_y = o.scale_y;
    return appendCreated(std::move(o));
}

int SceneModel::addDome(const QString &name, int radiusMm, int heightMm, int uSegments, int vSegments)
{
    GuideObject o = defaultObject(KindCurvedSurface);
    o.name = name;
    o.scale_x = o.scale_z = float(clampRadiusMm(radiusMm) / 1000.0);
    o.scale_y = float(clampRadiusMm(heightMm) / 1000.0);
    o.sphere_u_start = 0.0f;
    o.sphere_u_end = 360.0f;
    o.sphere_v_start = 0.0f;
    o.sphere_v_end = 90.0f;
    o.horseshoe_u_lines = clampSegments(uSegments);
    o.horseshoe_v_lines = clampSegments(vSegments);
    return appendCreated(std::move(o));
}

int SceneModel::addSphere(const QString &name, int radiusMm, int heightMm, int uSegments, int vSegments)
{
    GuideObject o = defaultObject(KindCurvedSurface);
    o.name = name;
    o.scale_x = o.scale_z = float(clampSizeMm(radiusMm) / 1000.0);
    o.scale_y = float(clampSizeMm(heightMm) / 1000.0);
    o.sphere_u_start = 0.0f;
    o.sphere_u_end = 360.0f;
    o.sphere_v_start = 0.0f;
    o.sphere_v_end = 180.0f;
    o.horseshoe_u_lines = clampSegments(uSegments);
    o.horseshoe_v_lines = clampSegments(vSegments);
    o.translate_y = o.scale_y;
    return appendCreated(std::move(o));
}

int SceneModel::addHorseshoe(const QString &name, int widthMm, int depthMm, int heightMm, int bendRadiusMm,
                             int uLines, int vLines, int roundULines)
{
    GuideObject o = defaultObject(KindCurvedSurface);
    o.name = name;
    const int width = clampSizeMm(widthMm);
    const int depth = clampSizeMm(depthMm);
    const int height = clampSizeMm(heightMm);
    o.scale_x = halfExtent(width);
    o.scale_y = halfExtent(depth);
    o.scale_z = halfExtent(height);
    // The limit uses the 1 m floors on purpose, not the raw sizes.
    const double widthM = width / 1000.0;
    const double heightM = height / 1000.0;
    const double limit = std::min(std::max(heightM, 1.0), 0.45 * std::max(widthM, 1.0));
    const double bend = std::clamp(bendRadiusMm / 1000.0, 0.0, limit);
    o.box_corner_radius = float(bend * 1000.0);
    // An empty sphere range marks the family member as a horseshoe.
    o.sphere_u_start = o.sphere_u_end = 0.0f;
    o.sphere_v_start = o.sphere_v_end = 0.0f;
    o.horseshoe_wall = true;
    o.horseshoe_floor = true;
    o.horseshoe_u_lines = clampSegments(uLines);
    o.horseshoe_v_lines = clampSegments(vLines);
    o.horseshoe_round_u_lines = clampSegments(roundULines);
    o.translate_y = o.scale_y;
    return appendCreated(std::move(o));
}

int SceneModel::addLShape(const QString &name, int widthMm, int heightMm, int depthMm, int cornerRadiusMm)
{
    GuideObject o = defaultObject(KindLShape);
    o.name = name;
    o.box_width = float(clampSizeMm(widthMm));
    o.box_height = float(clampSizeMm(heightMm));
    o.box_depth = float(clampSizeMm(depthMm));
    o.box_corner_radius = float(clampRadiusMm(cornerRadiusMm));
    o.scale_x = halfExtent(clampSizeMm(widthMm));
    o.scale_y = halfExtent(clampSizeMm(heightMm));
    o.scale_z = halfExtent(clampSizeMm(depthMm));
    o.box_wall = true;
    o.box_floor = true;
    o.box_top = false;
    o.translate_y = o.scale_y;
    return appendCreated(std::move(o));
}

int SceneModel::addPerson(const QString &name, int heightMm, int widthMm)
{
    GuideObject o = defaultObject(KindPerson);
    const int height = clampSizeMm(heightMm);
    const int width = widthMm < 1 ? std::max(1, roundHalfAwayFromZero(height * 500.0 / 1700.0))
                                  : std::min(widthMm, 100000);
    o.people_height = float(height);
    o.scale_x = std::max(width / 2000.0f, 0.05f);
    o.scale_y = std::max(height / 2000.0f, 0.05f);
    o.scale_z = std::max(width / 4000.0f, 0.05f);
    o.translate_y = o.scale_y;
    o.name = name.isEmpty() ? defaultName(KindPerson, o) : name;
    return appendCreated(std::move(o));
}

int SceneModel::addCurve(const QString &name, const QVector<GuideCurvePoint> &points, bool closed, int extrudeMm)
{
    GuideObject o = defaultObject(KindCurve);
    o.name = name;
    o.curve_points = points;
    o.curve_closed = closed;
    o.curve_extrude = float(clampRadiusMm(extrudeMm));
    double maxX = 0.05, maxZ = 0.05;
    for (const GuideCurvePoint &p : points) {
        for (double x : {p.anchor_x, p.in_handle_x, p.out_handle_x})
            if (std::isfinite(x))
                maxX = std::max(maxX, std::abs(x));
        for (double z : {p.anchor_z, p.in_handle_z, p.out_handle_z})
            if (std::isfinite(z))
                maxZ = std::max(maxZ, std::abs(z));
    }
    o.scale_x = float(maxX);
    o.scale_z = float(maxZ);
    o.scale_y = std::max(0.05f, o.curve_extrude / 2000.0f);
    return appendCreated(std::move(o));
}

int SceneModel::addDistanceMeasure(const QString &name, int lengthMm)
{
    GuideObject o = defaultObject(KindDistanceMeasure);
    o.name = name;
    const float half = clampSizeMm(lengthMm) / 2000.0f;
    o.distance_start_x = -half;
    o.distance_end_x = half;
    o.distance_start_y = o.distance_end_y = 0.0f;
    o.distance_start_z = o.distance_end_z = 0.0f;
    o.scale_x = std::max(half, 0.001f);
    o.scale_y = o.scale_z = 0.05f;
    return appendCreated(std::move(o));
}

int SceneModel::addComment(const QString &name, const QString &text)
{
    GuideObject o = defaultObject(KindComment);
    o.name = name;
    o.annotation_text = text;
    o.scale_x = o.scale_y = o.scale_z = 0.05f;
    return appendCreated(std::move(o));
}

int SceneModel::addProjector(const QString &name, int bodyWidthMm, int bodyHeightMm, int bodyDepthMm,
                             bool verticalShift)
{
    GuideObject o = defaultObject(KindProjector);
    o.name = name;
    o.lens_shift_y = verticalShift ? 50.0f : 0.0f;
    o.scale_x = halfExtent(clampSizeMm(bodyWidthMm), 0.05f);
    o.scale_y = halfExtent(clampSizeMm(bodyHeightMm), 0.05f);
    o.scale_z = halfExtent(clampSizeMm(bodyDepthMm), 0.05f);
    return appendCreated(std::move(o));
}

int SceneModel::addCamera(const QString &name, int bodyWidthMm, int bodyHeightMm, int bodyDepthMm)
{
    GuideObject o = defaultObject(KindCamera);
    o.name = name;
    o.scale_x = halfExtent(clampSizeMm(bodyWidthMm), 0.05f);
    o.scale_y = halfExtent(clampSizeMm(bodyHeightMm), 0.05f);
    o.scale_z = halfExtent(clampSizeMm(bodyDepthMm), 0.05f);
    return appendCreated(std::move(o));
}

int SceneModel::addGuide(const QString &name, int guideTabIndex, int widthMm, int heightMm)
{
    GuideObject o = defaultObject(KindGuide);
    o.name = name;
    o.texture_guide_index = std::max(-1, guideTabIndex);
    o.plane_width = float(clampSizeMm(widthMm));
    o.plane_height = float(clampSizeMm(heightMm));
    o.scale_x = halfExtent(clampSizeMm(widthMm));
    o.scale_y = halfExtent(clampSizeMm(heightMm));
    o.scale_z = 0.01f;
    o.translate_y = o.scale_y;
    return appendCreated(std::move(o));
}

int SceneModel::addImage(const QString &name, const QString &filePath, int widthMm, int heightMm)
{
    GuideObject o = defaultObject(KindImage);
    o.name = name;
    o.texture_file_path = filePath;
    o.plane_width = float(clampSizeMm(widthMm));
    o.plane_height = float(clampSizeMm(heightMm));
    o.scale_x = halfExtent(clampSizeMm(widthMm));
    o.scale_y = halfExtent(clampSizeMm(heightMm));
    o.scale_z = 0.01f;
    o.translate_y = o.scale_y;
    return appendCreated(std::move(o));
}

int SceneModel::addImportedMesh(const QString &name, int kind, std::shared_ptr<const SceneMesh> mesh,
                                const QString &path, float halfX, float halfY, float halfZ)
{
    GuideObject o = defaultObject(kind == KindDxfMesh ? KindDxfMesh : KindObjMesh);
    o.name = name;
    o.imported_mesh = std::move(mesh);
    o.obj_path = path; // OBJ and DXF objects alike are re-read from their file
    auto safe = [](float v) { return std::isfinite(v) ? std::max(v, 0.001f) : 0.001f; };
    o.scale_x = safe(halfX);
    o.scale_y = safe(halfY);
    o.scale_z = safe(halfZ);
    return appendCreated(std::move(o));
}

int SceneModel::addObject(const GuideObject &object, bool uniqueName)
{
    GuideObject o = object;
    if (uniqueName)
        o.name = copyName(o.name, names());
    return appendCreated(std::move(o));
}

QList<int> SceneModel::addObjects(const QVector<GuideObject> &objects, bool uniqueName)
{
    if (objects.isEmpty())
        return {};
    pushUndoSnapshot();
    QList<int> created;
    for (GuideObject o : objects) {
        if (uniqueName)
            o.name = copyName(o.name, names());
        m_objects.append(std::move(o));
        created.append(int(m_objects.size()) - 1);
    }
    m_selection = created;
    m_selected = created.last();
    notifyChanged();
    return created;
}

// ---------------------------------------------------------------- removal and duplication

int SceneModel::removeObjects(QList<int> indices)
{
    indices.erase(std::remove_if(indices.begin(), indices.end(), [this](int i) { return !isValidIndex(i); }),
                  indices.end());
    std::sort(indices.begin(), indices.end());
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    if (indices.isEmpty())
        return 0;
    pushUndoSnapshot();
    // From the back, so every earlier index stays valid while later ones are fixed up.
    for (auto it = indices.rbegin(); it != indices.rend(); ++it) {
        const int removed = *it;
        m_objects.removeAt(removed);
        for (GuideObject &o : m_objects) {
            for (GuideProjectorCalibrationMatch &m : o.projector_calibration.matches)
                m.target_index = indexAfterRemoval(m.target_index, removed);
        }
        m_selected = indexAfterRemoval(m_selected, removed);
        QList<int> kept;
        for (int s : std::as_const(m_selection)) {
            const int n = indexAfterRemoval(s, removed);
            if (n >= 0)
                kept.append(n);
        }
        m_selection = kept;
    }
    notifyChanged();
    return int(indices.size());
}

QList<int> SceneModel::duplicateObjects(const QList<int> &indices)
{
    QList<int> sources;
    for (int i : indices)
        if (isValidIndex(i) && !sources.contains(i))
            sources.append(i);
    if (sources.isEmpty())
        return {};
    pushUndoSnapshot();
    QList<int> created;
    for (int i : std::as_const(sources)) {
        GuideObject copy = m_objects[i];
        copy.name = copyName(copy.name, names());
        m_objects.append(std::move(copy));
        created.append(int(m_objects.size()) - 1);
    }
    m_selection = created;
    m_selected = created.last();
    notifyChanged();
    return created;
}

bool SceneModel::toggleFlag(const QList<int> &indices, bool GuideObject::*flag, bool lensOnly)
{
    QList<int> targets;
    for (int i : indices)
        if (isValidIndex(i) && (!lensOnly || m_objects[i].hasLens()) && !targets.contains(i))
            targets.append(i);
    if (targets.isEmpty())
        return false;
    bool anyOff = false;
    for (int i : std::as_const(targets))
        anyOff = anyOff || !(m_objects[i].*flag);
    pushUndoSnapshot();
    for (int i : std::as_const(targets))
        m_objects[i].*flag = anyOff;
    notifyChanged();
    return true;
}

// ---------------------------------------------------------------- undo and redo

SceneModel::Snapshot SceneModel::snapshot() const
{
    return {isValidIndex(m_selected) ? m_selected : -1, m_objects};
}

void SceneModel::pushUndoSnapshot()
{
    if (m_restoring || m_suppressed)
        return;
    Snapshot s = snapshot();
    if (!m_undo.isEmpty() && m_undo.last() == s)
        return;
    m_undo.append(std::move(s));
    while (m_undo.size() > kMaxUndoSnapshots)
        m_undo.removeFirst();
    m_redo.clear();
}

void SceneModel::restore(const Snapshot &s)
{
    m_restoring = true;
    m_objects = s.objects;
    m_selected = isValidIndex(s.selectedIndex) ? s.selectedIndex : -1;
    m_selection.clear();
    if (m_selected >= 0)
        m_selection.append(m_selected);
    notifyChanged();
    m_restoring = false;
}

bool SceneModel::undo()
{
    return stepHistory(m_undo, m_redo);
}

bool SceneModel::redo()
{
    return stepHistory(m_redo, m_undo);
}

// Undo and redo are the same move between the two stacks: snapshots equal to the scene
// as it is would be a step that changes nothing, so they are skipped.
bool SceneModel::stepHistory(QVector<Snapshot> &from, QVector<Snapshot> &to)
{
    const Snapshot current = snapshot();
    while (!from.isEmpty() && from.last() == current)
        from.removeLast();
    if (from.isEmpty())
        return false;
    const Snapshot target = from.takeLast();
    to.append(current);
    while (to.size() > kMaxUndoSnapshots)
        to.removeFirst();
    restore(target);
    return true;
}

void SceneModel::clearUndoHistory()
{
    m_undo.clear();
    m_redo.clear();
}
