#include "scene/ui/SceneWidget.h"

#include "exchange/MeshImport.h"

#include "scene/LensModel.h"
#include "scene/MeshBuilders.h"
#include "scene/SceneRaycast.h"
#include "scene/ShapeGeometry.h"
#include "scene/Transform.h"
#include "scene/gl/SceneFramePacer.h"
#include "scene/gl/OffscreenGlContext.h"
#include "scene/gl/OffscreenSceneRender.h"
#include "scene/gl/SceneRenderer.h"
#include "scene/ui/SceneClipboard.h"
#include "scene/ui/SceneKeyMap.h"
#include "scene/ui/SceneTools.h"
#include "scene/ui/SceneTexts.h"
#include "scene/ui/SceneViewSenders.h"
#include "video/VideoSourceRegistry.h"

#include <QApplication>
#include <QClipboard>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

using namespace vg::scene;

namespace {

const QColor kAxisColors[3] = {QColor(235, 64, 52), QColor(90, 200, 60), QColor(50, 120, 240)};
const QColor kHoverColor(255, 220, 40);

} // namespace

// Gizmo, help and view name are drawn by the toolkit on a transparent child above the GL
// picture, so they never depend on the renderer's GL state.
class SceneOverlay : public QWidget
{
public:
    explicit SceneOverlay(SceneWidget *view)
        : QWidget(view)
        , m_view(view)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        setAttribute(Qt::WA_TranslucentBackground);
        setFocusPolicy(Qt::NoFocus);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        m_view->paintOverlay(painter);
    }

private:
    SceneWidget *m_view;
};

SceneWidget::SceneWidget(QWidget *parent)
    : QOpenGLWidget(parent)
{
    setObjectName(QStringLiteral("vantreoViewport"));
    setFormat(sceneSurfaceFormat());
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(200, 150);
    m_model.setChangedCallback([this] { onModelChanged(); });
    m_overlay = new SceneOverlay(this);
    m_overlay->resize(size());
    m_overlay->show();
    // Bursts of edits and camera moves queue one frame, drawn when the event loop is free.
    m_framePacer = new SceneFramePacer(this);
    connect(m_framePacer, &SceneFramePacer::frameDue, this, [this] { update(); });
    m_videoSources = new VideoSourceRegistry(this);
    connect(m_videoSources, &VideoSourceRegistry::frameDue, m_framePacer, &SceneFramePacer::requestFrame);
    m_navigateTool = std::make_unique<SceneNavigateTool>(*this);
    m_gizmoTool = std::make_unique<SceneGizmoTool>(*this);
    m_selectTool = std::make_unique<SceneSelectTool>(*this, *m_gizmoTool);
    m_curveTool = std::make_unique<SceneCurveTool>(*this);
}

SceneWidget::~SceneWidget()
{
    // GL resources belong to this widget's context.
    if (m_renderer && context()) {
        makeCurrent();
        m_viewSenders.reset();
        m_renderer.reset();
        doneCurrent();
    }
    m_viewSenders.reset();
    // Decoders and receivers end with the view, not with the QObject clean-up after it.
    delete m_videoSources;
    m_videoSources = nullptr;
}

// ---------------------------------------------------------------------------------------------
// Scene access and edits

const QVector<GuideObject> &SceneWidget::objects() const
{
    return m_model.objects();
}

int SceneWidget::objectCount() const
{
    return int(m_model.objects().size());
}

void SceneWidget::requestRepaint()
{
    m_framePacer->requestFrame();
    if (m_overlay)
        m_overlay->update();
}

void SceneWidget::setStatus(const QString &text, int timeoutMs)
{
    m_statusText = text;
    Q_EMIT statusMessage(text, timeoutMs);
    requestRepaint();
}

void SceneWidget::onModelChanged()
{
    // The model reports objects and selection alike; tell them apart so a selection change
    // does not count as an edit of the project.
    const bool objectsChanged = !(m_seenObjects == m_model.objects());
    // Compared element by element: Qt's own list comparison hands a null pointer to memcmp
    // when one side is empty with no storage and the other empty with some.
    const bool selectionChanged = !std::ranges::equal(m_seenSelection, m_model.selectedIndices())
        || m_seenCurrent != m_model.selectedIndex();
    m_seenObjects = m_model.objects();
    m_seenSelection = m_model.selectedIndices();
    m_seenCurrent = m_model.selectedIndex();
    if (objectsChanged) {
        updateLensView();
        m_videoSources->sync(m_model.objects());
    }
    requestRepaint();
    if (objectsChanged)
        Q_EMIT sceneChanged();
    if (selectionChanged)
        Q_EMIT this->selectionChanged();
    Q_EMIT undoStateChanged();
}

bool SceneWidget::applyObjectEdit(int index, const GuideObject &edited)
{
    return m_model.replaceObject(index, edited);
}

void SceneWidget::setObjectWithoutUndo(int index, const GuideObject &object)
{
    GuideObject *target = m_model.mutableObject(index);
    if (!target || *target == object)
        return;
    *target = object;
    m_model.notifyChanged();
}

bool SceneWidget::editSelection(const std::function<void(GuideObject &)> &change, bool lensOnly)
{
    const QList<int> selected = selection();
    QVector<GuideObject> edited = objects();
    bool any = false;
    for (int index : selected) {
        GuideObject &object = edited[index];
        if (lensOnly && !object.hasLens())
            continue;
        const GuideObject before = object;
        change(object);
        any = any || object != before;
    }
    if (!any)
        return false;
    m_model.pushUndoSnapshot();
    for (int index : selected)
        *m_model.mutableObject(index) = edited.at(index);
    m_model.notifyChanged();
    return true;
}

bool SceneWidget::undo()
{
    cancelDrag();
    return m_model.undo();
}

bool SceneWidget::redo()
{
    cancelDrag();
    return m_model.redo();
}

bool SceneWidget::canUndo() const { return m_model.canUndo(); }
bool SceneWidget::canRedo() const { return m_model.canRedo(); }

int SceneWidget::appendObjects(const QVector<GuideObject> &incoming)
{
    // One undo step for the whole paste; the pasted objects become the selection.
    return int(m_model.addObjects(incoming, true).size());
}

// ---------------------------------------------------------------------------------------------
// View state

Guide3DViewSettings SceneWidget::viewSettings() const
{
    Guide3DViewSettings s = m_extraSettings;
    s.present = true;
    s.show_objects = m_showObjects;
    s.grid_visible = m_gridVisible;
    s.snap = m_snap;
    s.show_projector_frustum = m_showProjectorFrustum;
    s.show_obj_polygon_lines = m_showPolygonLines;
    s.transform_mode = m_transformMode;
    s.transform_space = m_transformSpace;
    s.view_mode = int(m_camera.mode());
    s.view_rotation_x = m_camera.rotationX();
    s.view_rotation_y = m_camera.rotationY();
    s.focus_distance = m_camera.focusDistance();
    s.target_x = m_camera.target().x();
    s.target_y = m_camera.target().y();
    s.target_z = m_camera.target().z();
    s.camera_views = m_cameraViews;
    s.objects = objects();
    // The lens last looked through is kept while the view is elsewhere, so that going
    // back to projector view after a load finds it again.
    const int lens = m_projectorViewIndex >= 0 ? m_projectorViewIndex : m_extraSettings.projector_camera_view_object_index;
    s.projector_camera_view_object_index = (lens >= 0 && lens < objectCount()) ? lens : -1;
    return s;
}

void SceneWidget::setViewSettings(const Guide3DViewSettings &settings)
{
    cancelDrag();
    endCurveDrawing();
    m_extraSettings = settings;
    m_extraSettings.objects.clear();
    m_extraSettings.camera_views.clear();
    m_showObjects = settings.show_objects;
    m_gridVisible = settings.grid_visible;
    m_snap = settings.snap;
    m_showProjectorFrustum = settings.show_projector_frustum;
    m_showPolygonLines = settings.show_obj_polygon_lines;
    m_transformMode = std::clamp(settings.transform_mode, 0, 2);
    m_transformSpace = std::clamp(settings.transform_space, 0, 1);
    m_cameraViews = settings.camera_views;
    m_model.loadObjects(settings.objects);
    m_seenObjects = m_model.objects();

    m_camera.setRotation(settings.view_rotation_x, settings.view_rotation_y);
    m_camera.setFocusDistance(settings.focus_distance);
    m_camera.setTarget(QVector3D(float(settings.target_x), float(settings.target_y), float(settings.target_z)));
    const int mode = std::clamp(settings.view_mode, 0, 3);
    m_projectorViewIndex = -1;
    if (mode == int(ViewCameraMode::ProjectorView)) {
        if (!lookThrough(settings.projector_camera_view_object_index))
            m_camera.setMode(ViewCameraMode::Perspective);
    } else {
        m_camera.setMode(ViewCameraMode(mode));
    }
    Q_EMIT sceneChanged();
    Q_EMIT selectionChanged();
    Q_EMIT viewStateChanged();
    Q_EMIT undoStateChanged();
    requestRepaint();
}

#define VG_VIEW_SETTER(name, member)                                                                 \
    void SceneWidget::name(bool on)                                                                  \
    {                                                                                                \
        if (member == on)                                                                            \
            return;                                                                                  \
        member = on;                                                                                 \
        Q_EMIT viewStateChanged();                                                                   \
        requestRepaint();                                                                            \
    }
VG_VIEW_SETTER(setShowObjects, m_showObjects)
VG_VIEW_SETTER(setGridVisible, m_gridVisible)
VG_VIEW_SETTER(setSnapEnabled, m_snap)
VG_VIEW_SETTER(setShowProjectorFrustum, m_showProjectorFrustum)
VG_VIEW_SETTER(setShowPolygonLines, m_showPolygonLines)
#undef VG_VIEW_SETTER

void SceneWidget::setTransformMode(int mode)
{
    mode = std::clamp(mode, 0, 2);
    if (mode == m_transformMode)
        return;
    cancelDrag();
    m_transformMode = mode;
    Q_EMIT viewStateChanged();
    requestRepaint();
}

void SceneWidget::setTransformSpace(int space)
{
    space = std::clamp(space, 0, 1);
    if (space == m_transformSpace)
        return;
    cancelDrag();
    m_transformSpace = space;
    Q_EMIT viewStateChanged();
    requestRepaint();
}

void SceneWidget::setViewMode(ViewCameraMode mode)
{
    if (mode == ViewCameraMode::ProjectorView) {
        lookThrough(currentIndex());
        return;
    }
    m_projectorViewIndex = -1;
    m_camera.setMode(mode);
    Q_EMIT viewStateChanged();
    requestRepaint();
}

bool SceneWidget::lookThrough(int index)
{
    if (index < 0 || index >= objectCount() || !objects().at(index).hasLens())
        return false;
    m_projectorViewIndex = index;
    m_extraSettings.projector_camera_view_object_index = index;
    updateLensView();
    Q_EMIT viewStateChanged();
    requestRepaint();
    return true;
}

void SceneWidget::updateLensView()
{
    if (m_projectorViewIndex < 0)
        return;
    if (m_projectorViewIndex >= objectCount() || !objects().at(m_projectorViewIndex).hasLens()) {
        m_projectorViewIndex = -1;
        if (m_camera.mode() == ViewCameraMode::ProjectorView)
            m_camera.setMode(ViewCameraMode::Perspective);
        return;
    }
    // The same lens-to-view set-up as off-screen renders: one place takes it from the lens model.
    setCameraToObjectView(m_camera, objects(), m_projectorViewIndex);
}

QString SceneWidget::viewName() const
{
    switch (m_camera.mode()) {
    case ViewCameraMode::Front: return SceneTexts::frontViewName();
    case ViewCameraMode::Side: return SceneTexts::sideViewName();
    case ViewCameraMode::ProjectorView:
        if (m_projectorViewIndex >= 0 && m_projectorViewIndex < objectCount())
            return SceneTexts::objectViewName(objects().at(m_projectorViewIndex).name);
        break;
    case ViewCameraMode::Perspective: break;
    }
    return SceneTexts::perspectiveViewName();
}

void SceneWidget::frameSelection()
{
    QList<int> indices = selection();
    if (indices.isEmpty()) {
        for (int i = 0; i < objectCount(); ++i)
            indices.append(i);
    }
    if (indices.isEmpty()) {
        m_camera.frame(QVector3D(0, 0, 0), 1.0);
    } else {
        // A bounding sphere of the objects' bounding spheres.
        QVector3D low(1e30f, 1e30f, 1e30f), high(-1e30f, -1e30f, -1e30f);
        for (int index : std::as_const(indices)) {
            const GuideObject &object = objects().at(index);
            const QVector3D centre = sceneObjectPosition(object);
            const float r = float(std::max(0.05, boundingRadius(object)));
            low = QVector3D(std::min(low.x(), centre.x() - r), std::min(low.y(), centre.y() - r),
                            std::min(low.z(), centre.z() - r));
            high = QVector3D(std::max(high.x(), centre.x() + r), std::max(high.y(), centre.y() + r),
                             std::max(high.z(), centre.z() + r));
        }
        const QVector3D centre = (low + high) * 0.5f;
        m_camera.frame(centre, std::max(0.05, double((high - low).length() * 0.5f)));
    }
    if (m_camera.mode() == ViewCameraMode::ProjectorView)
        m_projectorViewIndex = -1;
    Q_EMIT viewStateChanged();
    requestRepaint();
}

void SceneWidget::saveCameraView(const QString &name)
{
    GuideCameraView view;
    view.name = name;
    view.view_mode = m_camera.mode() == ViewCameraMode::ProjectorView ? 0 : int(m_camera.mode());
    view.view_rotation_x = m_camera.rotationX();
    view.view_rotation_y = m_camera.rotationY();
    view.focus_distance = m_camera.focusDistance();
    view.target_x = m_camera.target().x();
    view.target_y = m_camera.target().y();
    view.target_z = m_camera.target().z();
    for (const GuideObject &object : objects())
        if (object.isProjector())
            view.projector_objects.append(object);
    m_cameraViews.append(view);
    Q_EMIT viewStateChanged();
}

bool SceneWidget::restoreCameraView(int index)
{
    if (index < 0 || index >= m_cameraViews.size())
        return false;
    const GuideCameraView &view = m_cameraViews.at(index);
    m_projectorViewIndex = -1;
    m_camera.setMode(ViewCameraMode(std::clamp(view.view_mode, 0, 2)));
    m_camera.setRotation(view.view_rotation_x, view.view_rotation_y);
    m_camera.setFocusDistance(view.focus_distance);
    m_camera.setTarget(QVector3D(float(view.target_x), float(view.target_y), float(view.target_z)));

    QVector<GuideObject> next = objects();
    bool changed = false;
    for (const GuideObject &stored : view.projector_objects) {
        for (GuideObject &object : next) {
            if (object.isProjector() && object.name == stored.name && object != stored) {
                object = stored;
                changed = true;
                break;
            }
        }
    }
    if (changed) {
        m_model.pushUndoSnapshot();
        for (int i = 0; i < next.size(); ++i)
            *m_model.mutableObject(i) = next.at(i);
        m_model.notifyChanged();
    }
    Q_EMIT viewStateChanged();
    requestRepaint();
    return true;
}

void SceneWidget::removeCameraView(int index)
{
    if (index < 0 || index >= m_cameraViews.size())
        return;
    m_cameraViews.removeAt(index);
    Q_EMIT viewStateChanged();
}

// ---------------------------------------------------------------------------------------------
// Selection

void SceneWidget::setSelection(const QList<int> &indices)
{
    QList<int> kept;
    for (int index : indices) {
        if (index >= 0 && index < objectCount() && !kept.contains(index))
            kept.append(index);
    }
    if (std::ranges::equal(kept, selection()) && (kept.isEmpty() || kept.last() == currentIndex()))
        return;
    m_model.setSelection(kept, kept.isEmpty() ? -1 : kept.last());
}

void SceneWidget::selectOnly(int index)
{
    setSelection(index >= 0 ? QList<int>{index} : QList<int>{});
}

void SceneWidget::clearSelection()
{
    setSelection({});
}

// ---------------------------------------------------------------------------------------------
// Commands

bool SceneWidget::copySelection()
{
    const QList<int> selected = selection();
    if (selected.isEmpty()) {
        setStatus(SceneTexts::selectToCopyMessage());
        return false;
    }
    QVector<GuideObject> copied;
    for (int index : selected)
        copied.append(objects().at(index));
    if (copied.isEmpty()) {
        setStatus(SceneTexts::nothingCopiedMessage());
        return false;
    }
    QApplication::clipboard()->setMimeData(SceneClipboard::createMimeData(copied));
    setStatus(SceneTexts::copiedMessage(int(copied.size())));
    return true;
}

int SceneWidget::pasteFromClipboard()
{
    QVector<GuideObject> incoming;
    if (!SceneClipboard::readMimeData(QApplication::clipboard()->mimeData(), &incoming) || incoming.isEmpty()) {
        setStatus(SceneTexts::nothingCopiedMessage());
        return 0;
    }
    // Guide bindings name the project's guides, the same from every view: they paste as
    // they are. Imported meshes travel as their file path.
    vg::exchange::loadImportedGeometry(incoming);
    // Pasting over the originals would hide the copies: they move aside until they stand free.
    vg::scene::offsetPastedObjects(incoming, objects(), placementView());
    const int pasted = appendObjects(incoming);
    setStatus(SceneTexts::pastedMessage(pasted));
    return pasted;
}

int SceneWidget::duplicateSelection()
{
    cancelDrag();
    return int(m_model.duplicateObjects(selection()).size());
}

void SceneWidget::registerCalibrationWindow(int objectIndex, QWidget *window)
{
    m_calibrationWindows.append({objectIndex, QPointer<QWidget>(window)});
}

int SceneWidget::deleteSelection(bool confirm)
{
    cancelDrag();
    if (selection().isEmpty())
        return 0;
    QList<int> doomed = selection();
    std::sort(doomed.begin(), doomed.end());
    QStringList names;
    for (int index : std::as_const(doomed))
        names.append(objects().at(index).name);
    if (confirm) {
        const auto answer = QMessageBox::question(this, SceneTexts::deleteTitle(),
                                                  SceneTexts::deleteQuestion(names),
                                                  QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
        if (answer != QMessageBox::Yes)
            return 0;
    }

    // Calibration windows of deleted projectors close first.
    QStringList closingProjectors;
    QList<QPointer<QWidget>> closing;
    for (const auto &entry : std::as_const(m_calibrationWindows)) {
        if (entry.second && entry.second->isVisible() && doomed.contains(entry.first)) {
            closingProjectors.append(objects().at(entry.first).name);
            closing.append(entry.second);
        }
    }
    if (!closing.isEmpty()) {
        QMessageBox::information(this, SceneTexts::deleteTitle(),
                                 SceneTexts::calibrationClosingNotice(closingProjectors));
        for (const auto &window : std::as_const(closing)) {
            if (window)
                window->close();
        }
    }

    // The window registry and the looked-through index shift with the removal.
    const int viewIndex = m_projectorViewIndex;
    m_projectorViewIndex = -1;

    // Keep the window registry in step with the shifted indices.
    QList<QPair<int, QPointer<QWidget>>> kept;
    for (const auto &entry : std::as_const(m_calibrationWindows)) {
        if (!entry.second || doomed.contains(entry.first))
            continue;
        const int shift = int(std::count_if(doomed.begin(), doomed.end(), [&](int d) { return d < entry.first; }));
        kept.append({entry.first - shift, entry.second});
    }
    m_calibrationWindows = kept;
    if (viewIndex >= 0) {
        if (doomed.contains(viewIndex)) {
            m_camera.setMode(ViewCameraMode::Perspective);
        } else {
            m_projectorViewIndex = viewIndex - int(std::count_if(doomed.begin(), doomed.end(),
                                                                 [&](int d) { return d < viewIndex; }));
        }
    }
    const int removed = m_model.removeObjects(doomed);
    m_model.clearSelection();
    Q_EMIT viewStateChanged();
    return removed;
}

void SceneWidget::beginCurveDrawing()
{
    cancelDrag();
    m_curveTool->begin();
}

void SceneWidget::endCurveDrawing()
{
    m_curveTool->end();
}

bool SceneWidget::isDrawingCurve() const
{
    return m_curveTool->isDrawing();
}

bool SceneWidget::groundPoint(const QPointF &pixel, QVector3D *point) const
{
    const ViewCameraRay ray = m_camera.rayThroughPixel(pixel, size());
    if (std::abs(ray.direction.y()) < 1e-6f)
        return false;
    const float t = -ray.origin.y() / ray.direction.y();
    if (t <= 0.0f)
        return false;
    *point = ray.origin + ray.direction * t;
    point->setY(0.0f);
    return true;
}

void SceneWidget::setGuideImages(const QVector<QImage> &images)
{
    m_guideImages = images;
    m_guideImagesDirty = true;
    requestRepaint();
}

void SceneWidget::setGuideArrays(const QVector<GuideArraySlices> &arrays)
{
    if (arrays == m_guideArrays)
        return;
    m_guideArrays = arrays;
    requestRepaint();
}

void SceneWidget::setLoading(bool loading)
{
    if (m_framePacer->isLoading() == loading)
        return;
    m_framePacer->setLoading(loading);
    if (!loading)
        requestRepaint();
}

bool SceneWidget::isLoading() const
{
    return m_framePacer->isLoading();
}

quint64 SceneWidget::framesDrawn() const
{
    return m_framePacer->frameSerial();
}

bool SceneWidget::frameQueued() const
{
    return m_framePacer->isPending();
}

void SceneWidget::setHelpOverlayVisible(bool on)
{
    if (m_helpVisible == on)
        return;
    m_helpVisible = on;
    requestRepaint();
}

// ---------------------------------------------------------------------------------------------
// Keys

bool SceneWidget::event(QEvent *event)
{
    // Keep Tab, Delete and the letter keys for the view instead of focus moves and menus.
    if (event->type() == QEvent::ShortcutOverride) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (sceneKeyTakesShortcut(key->key(), key->modifiers())) {
            event->accept();
            return true;
        }
    }
    return QOpenGLWidget::event(event);
}

void SceneWidget::keyPressEvent(QKeyEvent *event)
{
    if (runCommand(sceneCommandForKey(event->key(), event->modifiers())))
        event->accept();
    else
        QOpenGLWidget::keyPressEvent(event);
}

void SceneWidget::toggleSelectionFlag(bool GuideObject::*flag, bool lensOnly)
{
    // If any targeted object has the switch off, all get it on; otherwise all get it off.
    m_model.toggleFlag(selection(), flag, lensOnly);
}

void SceneWidget::toggleSelectionFrustum()
{
    if (!m_showProjectorFrustum) {
        toggleSelectionFlag(&GuideObject::show_projector_frustum, true);
        return;
    }
    // With every frustum shown view-wide the per-object switch would change nothing on
    // screen. The key then hides the selected frusta: the view-wide option goes off and
    // every other lens keeps its frustum through its own switch (one undo step).
    const QList<int> selected = selection();
    m_model.pushUndoSnapshot();
    for (int i = 0; i < objectCount(); ++i) {
        GuideObject *object = m_model.mutableObject(i);
        if (object && object->hasLens())
            object->show_projector_frustum = !selected.contains(i);
    }
    setShowProjectorFrustum(false);
    m_model.notifyChanged();
}

bool SceneWidget::runCommand(SceneCommand command)
{
    switch (command) {
    case SceneCommand::None: return false;
    case SceneCommand::Cancel:
        cancelDrag();
        endCurveDrawing();
        m_hoverPart = GizmoPart::None;
        clearSelection();
        requestRepaint();
        return true;
    case SceneCommand::Undo: undo(); return true; // consumed even when there is nothing to undo
    case SceneCommand::Redo: redo(); return true;
    case SceneCommand::Duplicate: duplicateSelection(); return true;
    case SceneCommand::Copy: copySelection(); return true;
    case SceneCommand::Paste: pasteFromClipboard(); return true;
    case SceneCommand::Delete: deleteSelection(true); return true;
    case SceneCommand::MoveMode: setTransformMode(GizmoMove); return true;
    case SceneCommand::RotateMode: setTransformMode(GizmoRotate); return true;
    case SceneCommand::ScaleMode: setTransformMode(GizmoScale); return true;
    case SceneCommand::ToggleVisible: toggleSelectionFlag(&GuideObject::visible, false); return true;
    case SceneCommand::ToggleDimensions: toggleSelectionFlag(&GuideObject::show_dimensions, false); return true;
    case SceneCommand::ToggleFootprintGrid:
        toggleSelectionFlag(&GuideObject::projector_pixel_footprint_grid_visible, true);
        return true;
    case SceneCommand::ToggleFrustum: {
        bool anyLens = false;
        for (int index : selection())
            anyLens = anyLens || objects().at(index).hasLens();
        if (anyLens)
            toggleSelectionFrustum();
        else
            setShowProjectorFrustum(!m_showProjectorFrustum);
        return true;
    }
    case SceneCommand::ToggleTransformSpace: setTransformSpace(m_transformSpace == 0 ? 1 : 0); return true;
    case SceneCommand::Perspective: setViewMode(ViewCameraMode::Perspective); return true;
    case SceneCommand::LookThrough:
        if (!lookThrough(currentIndex()))
            setStatus(tr("Select a projector or camera to look through."));
        return true;
    case SceneCommand::FrameSelection: frameSelection(); return true;
    case SceneCommand::ToggleHelp: setHelpOverlayVisible(!m_helpVisible); return true;
    }
    return false;
}

// ---------------------------------------------------------------------------------------------
// Mouse

GizmoViewport SceneWidget::gizmoViewport() const
{
    GizmoViewport viewport;
    viewport.size = size();
    viewport.view = m_camera.viewMatrix();
    viewport.projection = m_camera.projectionMatrix(double(std::max(1, width())) / std::max(1, height()));
    return viewport;
}

bool SceneWidget::gizmoFrame(GizmoFrame *frame) const
{
    const int index = currentIndex();
    if (index < 0 || index >= objectCount() || isDrawingCurve())
        return false;
    if (m_camera.mode() == ViewCameraMode::ProjectorView && index == m_projectorViewIndex)
        return false; // the gizmo of the object we look through would sit on the eye
    const GuideObject &object = objects().at(index);
    *frame = SceneGizmo::frame(gizmoViewport(), sceneObjectPosition(object), sceneObjectRotation(object),
                               m_transformSpace == 1, m_transformMode);
    return true;
}

GizmoPart SceneWidget::gizmoPartAt(const QPointF &pixel) const
{
    GizmoFrame frame;
    if (!gizmoFrame(&frame))
        return GizmoPart::None;
    return SceneGizmo::pick(gizmoViewport(), frame, m_transformMode, pixel);
}

int SceneWidget::objectAt(const QPointF &pixel) const
{
    if (!(m_pickObjects == objects())) {
        m_pickObjects = objects();
        m_pickMeshes = buildSceneMeshes(m_pickObjects);
    }
    const ViewCameraRay ray = m_camera.rayThroughPixel(pixel, size());
    SceneRaycastOptions options;
    options.visibleOnly = true;
    options.skipLensObjects = false;
    if (m_camera.mode() == ViewCameraMode::ProjectorView)
        options.skipIndex = m_projectorViewIndex;
    const SceneRayHit hit = raycastScene(m_pickObjects, m_pickMeshes, toEigen(ray.origin),
                                         toEigen(ray.direction).normalized(), options);
    return hit.hit ? hit.objectIndex : -1;
}

QPointF SceneWidget::objectPixel(int index) const
{
    if (index < 0 || index >= objectCount())
        return {};
    QPointF pixel;
    m_camera.worldToPixel(sceneObjectPosition(objects().at(index)), size(), &pixel);
    return pixel;
}

void SceneWidget::cancelDrag()
{
    // A gizmo drag ends where the pointer left it; its snapshot stays for undo.
    if (m_dragTool)
        m_dragTool->cancel();
    m_dragTool = nullptr;
    m_dragButton = Qt::NoButton;
}

void SceneWidget::mousePressEvent(QMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    m_dragButton = event->button();
    m_dragTool = nullptr;
    // Navigation (with Alt) comes before everything, then curve drawing, then picking.
    for (SceneTool *tool : {static_cast<SceneTool *>(m_navigateTool.get()), static_cast<SceneTool *>(m_curveTool.get()),
                            static_cast<SceneTool *>(m_selectTool.get())}) {
        const SceneTool::Press press = tool->press(event);
        if (press == SceneTool::Press::NotMine)
            continue;
        if (press == SceneTool::Press::Dragging)
            m_dragTool = tool;
        event->accept();
        return;
    }
    QOpenGLWidget::mousePressEvent(event);
}

void SceneWidget::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF pos = event->position();
    if (m_dragTool) {
        m_dragTool = m_dragTool->move(pos);
        return;
    }
    const GizmoPart hover = gizmoPartAt(pos);
    if (hover != m_hoverPart) {
        m_hoverPart = hover;
        requestRepaint();
    }
}

void SceneWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != m_dragButton) {
        QOpenGLWidget::mouseReleaseEvent(event);
        return;
    }
    SceneTool *tool = m_dragTool;
    cancelDrag();
    if (tool)
        tool->release(event);
    event->accept();
}

void SceneWidget::wheelEvent(QWheelEvent *event)
{
    m_navigateTool->wheel(event);
}

void SceneWidget::leaveEvent(QEvent *event)
{
    if (m_hoverPart != GizmoPart::None) {
        m_hoverPart = GizmoPart::None;
        requestRepaint();
    }
    QOpenGLWidget::leaveEvent(event);
}

void SceneWidget::focusOutEvent(QFocusEvent *event)
{
    QOpenGLWidget::focusOutEvent(event);
}

// ---------------------------------------------------------------------------------------------
// Drawing

bool SceneWidget::rendererReady() const
{
    return m_renderer != nullptr;
}

void SceneWidget::initializeGL()
{
    m_glReady = true;
    QString error;
    if (!glContextMeetsSceneRequirements(context(), &error)) {
        m_rendererError = error;
        qWarning("%s", qPrintable(error));
        return;
    }
    auto renderer = std::make_unique<SceneRenderer>();
    if (!renderer->initialize(&error)) {
        m_rendererError = error;
        qWarning("%s", qPrintable(error));
        return;
    }
    renderer->setTextureSourceResolver(m_videoSources->resolver());
    m_renderer = std::move(renderer);
    m_viewSenders = std::make_unique<SceneViewSenders>();
}

void SceneWidget::resizeGL(int, int)
{
    if (m_overlay)
        m_overlay->resize(size());
}

void SceneWidget::showEvent(QShowEvent *event)
{
    QOpenGLWidget::showEvent(event);
    m_framePacer->setHidden(false);
    m_framePacer->requestFrame();
}

void SceneWidget::hideEvent(QHideEvent *event)
{
    m_framePacer->setHidden(true);
    QOpenGLWidget::hideEvent(event);
}

void SceneWidget::paintGL()
{
    // The toolkit also paints on its own (expose, resize); each frame clears the pending mark.
    m_framePacer->beginFrame();
    m_frameRate.frameStarted();
    renderFrame();
    m_framePacer->afterPresent();
    m_framePacer->endFrame();
}

void SceneWidget::renderFrame()
{
    if (!m_renderer) {
        QOpenGLFunctions *f = context()->functions();
        f->glClearColor(0.16f, 0.16f, 0.17f, 1.0f);
        f->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        return;
    }
    if (m_guideImagesDirty) {
        m_renderer->setGuideImages(m_guideImages);
        m_guideImagesDirty = false;
    }
    SceneRenderSettings settings;
    settings.showObjects = m_showObjects;
    settings.gridVisible = m_gridVisible;
    settings.showAllProjectorFrusta = m_showProjectorFrustum;
    settings.showObjPolygonLines = m_showPolygonLines;
    settings.guideArrays = m_guideArrays;
    for (int index : selection())
        settings.selection.append(index);
    settings.hiddenObjectIndex = m_camera.mode() == ViewCameraMode::ProjectorView ? m_projectorViewIndex : -1;
    settings.showFps = true;
    settings.framesPerSecond = m_frameRate.framesPerSecond();
    settings.fpsCorner = Qt::BottomLeftCorner; // the top corners carry the help and the view's name
    const qreal dpr = devicePixelRatioF();
    m_renderer->render(objects(), m_camera, settings, defaultFramebufferObject(),
                       QSize(int(width() * dpr), int(height() * dpr)));
    if (m_viewSenders)
        m_viewSenders->publish(*m_renderer, context()->extraFunctions(), objects());
    m_framePacer->afterUpdate();
    resetGlStateForPainter();
}

// Leaves the context in its default state for the widget's own composition.
void SceneWidget::resetGlStateForPainter()
{
    QOpenGLExtraFunctions *f = context()->extraFunctions();
    f->glBindFramebuffer(GL_FRAMEBUFFER, defaultFramebufferObject());
    f->glBindVertexArray(0);
    f->glUseProgram(0);
    f->glBindBuffer(GL_ARRAY_BUFFER, 0);
    f->glBindBuffer(GL_UNIFORM_BUFFER, 0);
    f->glActiveTexture(GL_TEXTURE0);
    f->glBindTexture(GL_TEXTURE_2D, 0);
    f->glDisable(GL_DEPTH_TEST);
    f->glDisable(GL_BLEND);
    f->glDisable(GL_CULL_FACE);
    f->glDisable(GL_SCISSOR_TEST);
    f->glDisable(GL_STENCIL_TEST);
    f->glDisable(GL_POLYGON_OFFSET_FILL);
    f->glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    f->glDepthMask(GL_TRUE);
    f->glBlendEquation(GL_FUNC_ADD);
    f->glBlendFunc(GL_ONE, GL_ZERO);
    f->glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    f->glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    f->glPixelStorei(GL_PACK_ALIGNMENT, 4);
    f->glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    const qreal dpr = devicePixelRatioF();
    f->glViewport(0, 0, int(width() * dpr), int(height() * dpr));
}

void SceneWidget::paintOverlay(QPainter &painter)
{
    if (!m_renderer && m_glReady) {
        painter.setPen(QColor(230, 230, 230));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap,
                         m_rendererError.isEmpty() ? tr("The 3D view could not start.") : m_rendererError);
    }
    paintGizmo(painter);
    if (m_helpVisible)
        paintHelp(painter);
    SceneHeatmapLegendPainter::paint(painter, rect(), heatmapLegend());

    // View name in the top-right corner.
    QFont font = painter.font();
    font.setBold(true);
    painter.setFont(font);
    const QString name = viewName();
    const QRect nameRect = painter.fontMetrics().boundingRect(name).adjusted(-8, -4, 8, 4);
    QRect placed(QPoint(width() - nameRect.width() - 10, 10), nameRect.size());
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 140));
    painter.drawRoundedRect(placed, 4, 4);
    painter.setPen(QColor(240, 240, 240));
    painter.drawText(placed, Qt::AlignCenter, name);

    if (isDrawingCurve()) {
        const QString status = SceneTexts::curveDrawingStatus();
        QRect r = painter.fontMetrics().boundingRect(status).adjusted(-10, -5, 10, 5);
        r.moveCenter(QPoint(width() / 2, height() - r.height()));
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 0, 0, 170));
        painter.drawRoundedRect(r, 4, 4);
        painter.setPen(QColor(255, 230, 120));
        painter.drawText(r, Qt::AlignCenter, status);
    }
}

void SceneWidget::paintGizmo(QPainter &painter)
{
    GizmoFrame frame;
    if (!gizmoFrame(&frame))
        return;
    const GizmoViewport viewport = gizmoViewport();
    bool inFront = false;
    viewport.projectToPixel(frame.origin, &inFront);
    if (!inFront)
        return;
    const GizmoPart active = m_dragTool && m_dragTool == m_gizmoTool.get() ? m_gizmoTool->part() : m_hoverPart;
    auto penFor = [&](GizmoPart part, const QColor &base, qreal width) {
        return QPen(part == active ? kHoverColor : base, part == active ? width + 1.5 : width, Qt::SolidLine,
                    Qt::RoundCap, Qt::RoundJoin);
    };
    if (m_transformMode == GizmoRotate) {
        const QVector<QPointF> ring = SceneGizmo::partOutline(viewport, frame, m_transformMode, GizmoPart::Ring);
        painter.setPen(penFor(GizmoPart::Ring, QColor(220, 220, 220), 2.0));
        painter.setBrush(Qt::NoBrush);
        painter.drawPolyline(ring.constData(), int(ring.size()));
    }
    for (int i = 0; i < 3; ++i) {
        const GizmoPart part = GizmoPart(int(GizmoPart::XAxis) + i);
        const QVector<QPointF> line = SceneGizmo::partOutline(viewport, frame, m_transformMode, part);
        if (line.size() < 2)
            continue;
        painter.setPen(penFor(part, kAxisColors[i], 3.0));
        painter.setBrush(Qt::NoBrush);
        painter.drawPolyline(line.constData(), int(line.size()));
        if (m_transformMode == GizmoMove) {
            // Arrow head.
            const QPointF tip = line.last();
            const QPointF dir = tip - line.first();
            const double len = std::hypot(dir.x(), dir.y());
            if (len > 1.0) {
                const QPointF u = dir / len;
                const QPointF n(-u.y(), u.x());
                const QPointF head[3] = {tip + u * 10.0, tip + n * 5.0, tip - n * 5.0};
                painter.setBrush(part == active ? kHoverColor : kAxisColors[i]);
                painter.setPen(Qt::NoPen);
                painter.drawPolygon(head, 3);
            }
        } else if (m_transformMode == GizmoScale) {
            painter.setBrush(part == active ? kHoverColor : kAxisColors[i]);
            painter.setPen(Qt::NoPen);
            painter.drawRect(QRectF(line.last() - QPointF(5, 5), QSizeF(10, 10)));
        }
    }
    if (m_transformMode != GizmoRotate) {
        const QVector<QPointF> square = SceneGizmo::partOutline(viewport, frame, m_transformMode, GizmoPart::Screen);
        painter.setPen(penFor(GizmoPart::Screen, QColor(235, 235, 235), 2.0));
        painter.setBrush(QColor(255, 255, 255, 40));
        painter.drawPolygon(square.constData(), int(square.size()));
    }
}

SceneHeatmapLegend SceneWidget::heatmapLegend() const
{
    SceneHeatmapLegend legend;
    if (!m_renderer)
        return legend;
    const QVector<GuideObject> &all = objects();
    auto shows = [&all](int i) {
        return i >= 0 && i < all.size() && all[i].isProjector() && all[i].visible
            && all[i].projector_pixel_footprint_heatmap_visible;
    };
    int index = shows(currentIndex()) ? currentIndex() : -1;
    for (int i = 0; index < 0 && i < all.size(); ++i)
        index = shows(i) ? i : -1;
    if (index < 0 || !m_renderer->heatmapRange(index, &legend.minimum, &legend.maximum))
        return legend;
    legend.visible = true;
    legend.projectorName = all[index].name;
    legend.metric = all[index].projector_pixel_footprint_metric;
    return legend;
}

void SceneWidget::placeNewObject(int index, int besideIndex)
{
    if (!m_model.isValidIndex(index))
        return;
    QVector<GuideObject> others = objects();
    const GuideObject created = others.takeAt(index);
    const int beside = besideIndex == index ? -1 : (besideIndex > index ? besideIndex - 1 : besideIndex);
    const GuideObject placed = vg::scene::placedNewObject(created, others, beside, placementView());
    if (placed != created)
        setObjectWithoutUndo(index, placed);
}

vg::scene::PlacementView SceneWidget::placementView() const
{
    vg::scene::PlacementView view;
    const QVector3D eye = m_camera.eyePosition();
    const QVector3D target = m_camera.target();
    view.eye = Eigen::Vector3d(eye.x(), eye.y(), eye.z());
    view.target = Eigen::Vector3d(target.x(), target.y(), target.z());
    return view;
}

void SceneWidget::paintHelp(QPainter &painter)
{
    const QStringList lines = SceneTexts::helpLines();
    QFont font = painter.font();
    font.setBold(true);
    const QFontMetrics titleMetrics(font);
    QFont plain = font;
    plain.setBold(false);
    const QFontMetrics lineMetrics(plain);
    int w = titleMetrics.horizontalAdvance(SceneTexts::helpTitle());
    for (const QString &line : lines)
        w = std::max(w, lineMetrics.horizontalAdvance(line));
    const int lineHeight = lineMetrics.height();
    const QRect box(10, 10, w + 20, (int(lines.size()) + 1) * lineHeight + 18);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 150));
    painter.drawRoundedRect(box, 6, 6);
    painter.setPen(QColor(255, 255, 255));
    painter.setFont(font);
    int y = box.top() + 8 + titleMetrics.ascent();
    painter.drawText(box.left() + 10, y, SceneTexts::helpTitle());
    painter.setFont(plain);
    painter.setPen(QColor(220, 220, 220));
    y += 4;
    for (const QString &line : lines) {
        y += lineHeight;
        painter.drawText(box.left() + 10, y, line);
    }
}

void SceneWidget::resizeEvent(QResizeEvent *event)
{
    QOpenGLWidget::resizeEvent(event);
    if (m_overlay)
        m_overlay->resize(size());
}

void SceneWidget::setProjectorCalibrationSettings(const GuideProjectorCalibrationSettings &settings)
{
    if (m_extraSettings.projector_calibration_settings == settings)
        return;
    m_extraSettings.projector_calibration_settings = settings;
    emit viewStateChanged();
}
