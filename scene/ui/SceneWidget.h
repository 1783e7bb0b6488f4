#pragma once

#include "scene/Guide3DViewSettings.h"
#include "scene/GuideArraySlices.h"
#include "scene/GuideObject.h"
#include "scene/SceneMesh.h"
#include "scene/SceneModel.h"
#include "scene/ScenePlacement.h"
#include "scene/ViewCamera.h"
#include "scene/gl/SceneFramePacer.h"
#include "scene/ui/SceneHeatmapLegend.h"
#include "scene/ui/SceneGizmo.h"

#include <QImage>
#include <QList>
#include <QOpenGLWidget>
#include <QPointer>
#include <QVector>

#include <functional>
#include <memory>
#include <vector>

class SceneRenderer;
class SceneViewSenders;
class VideoSourceRegistry;
class SceneOverlay;
class SceneTool;
class SceneNavigateTool;
class SceneSelectTool;
class SceneGizmoTool;
class SceneCurveTool;
enum class SceneCommand;
class QElapsedTimer;

// The 3D view: hosts the renderer, navigates the camera, picks objects and gizmo parts,
// edits the scene with the transform gizmo and the keyboard, and exchanges objects with
// the clipboard. Every edit first pushes an undo snapshot of the whole scene.
class SceneWidget : public QOpenGLWidget
{
    Q_OBJECT

public:
    explicit SceneWidget(QWidget *parent = nullptr);
    ~SceneWidget() override;

    // --- scene ---------------------------------------------------------------------------
    SceneModel &model() { return m_model; }
    const SceneModel &model() const { return m_model; }
    const QVector<GuideObject> &objects() const;
    int objectCount() const;

    // Replaces one object after a property edit (pushes an undo snapshot first).
    bool applyObjectEdit(int index, const GuideObject &edited);
    // Replaces one object without an undo step (continuous drags, tools that pushed their
    // own snapshot, tests that set a scene up).
    void setObjectWithoutUndo(int index, const GuideObject &object);
    // Runs `change` on each selected object under one undo snapshot.
    bool editSelection(const std::function<void(GuideObject &)> &change, bool lensOnly = false);

    bool undo();
    bool redo();
    bool canUndo() const;
    bool canRedo() const;

    // --- view state (saved with the project) -----------------------------------------------
    Guide3DViewSettings viewSettings() const;
    void setViewSettings(const Guide3DViewSettings &settings);

    bool showObjects() const { return m_showObjects; }
    bool gridVisible() const { return m_gridVisible; }
    bool snapEnabled() const { return m_snap; }
    bool showProjectorFrustum() const { return m_showProjectorFrustum; }
    bool showPolygonLines() const { return m_showPolygonLines; }
    int transformMode() const { return m_transformMode; }
    int transformSpace() const { return m_transformSpace; } // 0 world, 1 local
    void setShowObjects(bool on);
    void setGridVisible(bool on);
    void setSnapEnabled(bool on);
    void setShowProjectorFrustum(bool on);
    void setShowPolygonLines(bool on);
    void setTransformMode(int mode);
    void setTransformSpace(int space);

    ViewCamera &camera() { return m_camera; }
    const ViewCamera &camera() const { return m_camera; }
    void setViewMode(ViewCameraMode mode);
    // Looks through a projector or camera; false when `index` has no lens.
    bool lookThrough(int index);
    int projectorViewIndex() const { return m_projectorViewIndex; }
    QString viewName() const;
    void frameSelection();

    // Saved camera positions with copies of the scene's projectors.
    const QVector<GuideCameraView> &cameraViews() const { return m_cameraViews; }
    void saveCameraView(const QString &name);
    // Moves the camera there and puts the stored projectors back (matched by name) as one
    // undo step; false for an index out of range.
    bool restoreCameraView(int index);
    void removeCameraView(int index);

    // --- selection ---------------------------------------------------------------------------
    QList<int> selection() const { return m_model.selectedIndices(); }
    // The primary selected object (the gizmo's), or -1.
    int currentIndex() const { return m_model.selectedIndex(); }
    void setSelection(const QList<int> &indices);
    void selectOnly(int index);
    void clearSelection();

    // --- commands -----------------------------------------------------------------------------
    bool copySelection();
    int pasteFromClipboard();
    int duplicateSelection();
    // With `confirm` the user is asked first; returns the number of objects deleted.
    int deleteSelection(bool confirm = true);
    void beginCurveDrawing();
    void endCurveDrawing();
    bool isDrawingCurve() const;

    // Puts a newly created object where the camera sees it, beside object `besideIndex`
    // when that is another valid object; part of the creation's undo step.
    void placeNewObject(int index, int besideIndex);
    vg::scene::PlacementView placementView() const;

    // Objects of the calibration windows: deleting their projector closes them first.
    void registerCalibrationWindow(int objectIndex, QWidget *window);

    // Guide images in guide order; surfaces and projectors bound to a guide show it.
    void setGuideImages(const QVector<QImage> &images);
    const QVector<QImage> &guideImages() const { return m_guideImages; }
    // The guides' projector arrays, in guide order: projectors may show one slice each.
    void setGuideArrays(const QVector<GuideArraySlices> &arrays);
    const QVector<GuideArraySlices> &guideArrays() const { return m_guideArrays; }
    // The view's calibration and look-up-table settings (saved with the view).
    void setProjectorCalibrationSettings(const GuideProjectorCalibrationSettings &settings);

    // The heat-map key shown in the view: the selected projector's map, else the first
    // projector that shows one; not visible until a frame has measured its range.
    SceneHeatmapLegend heatmapLegend() const;

    bool helpOverlayVisible() const { return m_helpVisible; }
    void setHelpOverlayVisible(bool on);

    // --- picking (also used by tests to find where to click) -----------------------------
    GizmoViewport gizmoViewport() const;
    // The gizmo frame of the current selection; false when nothing is selected.
    bool gizmoFrame(GizmoFrame *frame) const;
    GizmoPart gizmoPartAt(const QPointF &pixel) const;
    GizmoPart hoveredGizmoPart() const { return m_hoverPart; }
    // Index of the nearest visible object under a pixel, or -1.
    int objectAt(const QPointF &pixel) const;
    // Where the centre of an object appears, for tests and tools.
    QPointF objectPixel(int index) const;

    // The last status text (also sent with statusMessage()).
    QString statusText() const { return m_statusText; }

    // While a project loads into the view nothing is drawn; the first frame follows the end.
    void setLoading(bool loading);
    bool isLoading() const;
    // Whether a repaint is waiting in the frame queue.
    bool frameQueued() const;
    // Frames drawn since the view was made.
    quint64 framesDrawn() const;

    // Movies, NDI and Spout sources of the objects, kept in step with the scene.
    VideoSourceRegistry *videoSources() const { return m_videoSources; }

    // True when the renderer started in this widget's GL context.
    bool rendererReady() const;
    QString rendererError() const { return m_rendererError; }

Q_SIGNALS:
    void sceneChanged();
    void selectionChanged();
    // Camera, view mode or display switches changed.
    void viewStateChanged();
    void statusMessage(const QString &text, int timeoutMs);
    void undoStateChanged();

protected:
    void initializeGL() override;
    void resizeGL(int w, int h) override;
    void paintGL() override;

    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void renderFrame();
    friend class SceneNavigateTool;
    friend class SceneSelectTool;
    friend class SceneGizmoTool;
    friend class SceneCurveTool;

    void requestRepaint();
    void setStatus(const QString &text, int timeoutMs = 4000);
    bool runCommand(SceneCommand command);
    void toggleSelectionFlag(bool GuideObject::*flag, bool lensOnly);
    void toggleSelectionFrustum();
    void cancelDrag();
    bool groundPoint(const QPointF &pixel, QVector3D *point) const;
    void onModelChanged();
    void updateLensView();
    void resetGlStateForPainter();
    friend class SceneOverlay;
    void paintOverlay(QPainter &painter);
    void paintGizmo(QPainter &painter);
    void paintHelp(QPainter &painter);
    void paintHeatmapLegend(QPainter &painter);
    int appendObjects(const QVector<GuideObject> &objects);

    SceneModel m_model;
    ViewCamera m_camera;
    std::unique_ptr<SceneRenderer> m_renderer;
    QString m_rendererError;
    bool m_glReady = false;
    SceneOverlay *m_overlay = nullptr;
    SceneFramePacer *m_framePacer = nullptr;
    VideoSourceRegistry *m_videoSources = nullptr;
    std::unique_ptr<SceneViewSenders> m_viewSenders;
    SceneFrameRate m_frameRate;

    // View switches.
    bool m_showObjects = true;
    bool m_gridVisible = true;
    bool m_snap = false;
    bool m_showProjectorFrustum = false;
    bool m_showPolygonLines = false;
    int m_transformMode = GizmoMove;
    int m_transformSpace = 0;
    int m_projectorViewIndex = -1;
    QVector<GuideCameraView> m_cameraViews;
    Guide3DViewSettings m_extraSettings; // what the view carries but does not edit itself

    QVector<GuideObject> m_seenObjects;   // what the last change notification saw
    QList<int> m_seenSelection;
    int m_seenCurrent = -1;
    mutable QVector<GuideObject> m_pickObjects; // the objects the pick meshes were built from
    mutable std::vector<SceneMesh> m_pickMeshes;
    QVector<QImage> m_guideImages;
    bool m_guideImagesDirty = false;
    QVector<GuideArraySlices> m_guideArrays;
    QList<QPair<int, QPointer<QWidget>>> m_calibrationWindows;

    // Interaction: the pointer tools, and the one holding the current drag.
    std::unique_ptr<SceneNavigateTool> m_navigateTool;
    std::unique_ptr<SceneGizmoTool> m_gizmoTool;
    std::unique_ptr<SceneSelectTool> m_selectTool;
    std::unique_ptr<SceneCurveTool> m_curveTool;
    SceneTool *m_dragTool = nullptr;
    Qt::MouseButton m_dragButton = Qt::NoButton;
    GizmoPart m_hoverPart = GizmoPart::None;
    bool m_helpVisible = true;
    QString m_statusText;
    bool m_repaintPending = false;
};
