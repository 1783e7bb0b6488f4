#pragma once

#include "canvas/CanvasEdit.h"
#include "canvas/CanvasGeometry.h"

#include <QPointF>
#include <QVector>
#include <QWidget>

// The drawing surface of a canvas tab: shows the canvas through its zoom and pan, selects
// objects and applies the transform tools with the mouse and keys. It holds the canvas being
// edited; the tab around it keeps the history and the panels.
//
// View: `view_zoom` is screen pixels per thousand canvas pixels; `view_pan_x/y` is where the
// canvas origin stands, in screen pixels from the widget's centre.
class CanvasWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CanvasWidget(QWidget *parent = nullptr);

    const CanvasTabSettings &canvas() const { return m_canvas; }
    // Replaces the canvas (the selection is kept where its indices still exist).
    void setCanvas(const CanvasTabSettings &canvas);
    const CanvasSources &sources() const { return m_sources; }
    void setSources(const CanvasSources &sources);
    // The tab title drawn above the content when `title_visible` is on.
    void setTitle(const QString &title);

    QVector<int> selection() const { return m_selection; }
    void setSelection(const QVector<int> &selection);
    int primarySelection() const { return m_selection.isEmpty() ? -1 : m_selection.last(); }

    CanvasTool tool() const { return m_tool; }
    void setTool(CanvasTool tool);

    double zoom() const; // screen pixels per canvas pixel
    QPointF canvasToScreen(const QPointF &canvasPoint) const;
    QPointF screenToCanvas(const QPointF &screenPoint) const;
    // Zoom and pan so that the content fills the widget with a margin.
    void fitView();
    void zoomAt(const QPointF &screenPoint, double factor);

    // The status line: "Scale X %1 Y %2  Position X %3 Y %4" of the selected object, or empty.
    QString statusText() const;
    // The view as drawn, without selection marks.
    QImage renderView();

Q_SIGNALS:
    // Before an edit changes the canvas (once per drag or key press), so the tab can keep history.
    void aboutToEdit();
    // After an edit, and after every step of a drag.
    void canvasEdited();
    void selectionChanged();
    void viewChanged();
    void toolChanged(CanvasTool tool);
    void statusChanged(const QString &text);
    // Files dropped onto the canvas at a canvas point.
    void filesDropped(const QStringList &paths, const QPointF &canvasPoint);
    void deleteRequested();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    enum class Drag { None, Objects, Pan };

    void paintCanvas(QPainter &painter, bool withMarks);
    void paintGrid(QPainter &painter, const QRectF &visibleCanvas);
    void paintBoundsInfo(QPainter &painter, const QRect &bounds);
    void paintSelection(QPainter &painter);
    void nudge(double dx, double dy);
    void announceStatus();

    CanvasTabSettings m_canvas;
    CanvasSources m_sources;
    QString m_title;
    QVector<int> m_selection;
    CanvasTool m_tool = CanvasTool::Translate;

    Drag m_drag = Drag::None;
    CanvasHandle m_handle = CanvasHandle::None;
    QPointF m_pressCanvas;
    QPointF m_pressScreen;
    QPointF m_panStart;
    QVector<CanvasObjectSettings> m_dragStart; // selected objects as the drag began
    bool m_dragEdited = false;
};
