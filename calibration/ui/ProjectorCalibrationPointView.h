#pragma once

#include "calibration/CalibrationWireframe.h"
#include "calibration/ui/ProjectorCalibrationDialog.h"
#include "scene/LensModel.h"
#include "scene/ViewCamera.h"

#include <QImage>
#include <QTransform>
#include <QWidget>

#include <functional>
#include <optional>

// One half of the calibration window. The wireframe view shows the target from an orbiting
// camera with its pickable vertices; the projector view shows the projector's picture
// (projector pixels, after its flips) with the reference image behind it. Both draw the
// matched rows as numbered markers and report to the window through callbacks.
class ProjectorCalibrationDialog::PointView : public QWidget
{
public:
    enum class Kind { Wireframe, Projector };

    struct Marker {
        int row = -1;
        Eigen::Vector3d world = Eigen::Vector3d::Zero();   // wireframe view
        std::optional<QPointF> pixel;                      // projector view: image position
        bool selected = false;
        bool used = true;
        bool worst = false;
        bool mismatched = false;
    };

    struct Display {
        bool wire = true;
        bool shade = true;
        bool vertex = true;
        int vertexSize = 6;
        int markerSize = 10;
    };

    PointView(Kind kind, QWidget *parent = nullptr);

    Kind kind() const { return m_kind; }

    // Callbacks to the window.
    std::function<void(int row)> rowChosen;
    std::function<void(const QPointF &pixel)> pointClicked;
    std::function<void(int vertex)> vertexPicked;
    std::function<void(int row, const QPointF &pixel, bool final)> pointMoved;
    std::function<void()> refreshRequested;

    void setWireframe(const CalibrationWireframe *wireframe);
    void setMarkers(const QVector<Marker> &markers);
    void setDisplay(const Display &display);
    // The rendered picture: for the projector view it covers the image exactly.
    void setBackground(const QImage &image);
    void setReferenceImage(const QImage &image);
    void setHint(const QString &hint);
    QString hint() const { return m_hint; }

    // Projector view: the lens the vertices are projected through and its image size.
    void setLens(const vg::scene::LensModel &lens);
    QSize imageSize() const;
    QPointF contentToWidget(const QPointF &pixel) const;
    // The projector view as the real projector would show it: the rendered picture, wires,
    // vertices and markers at `size` (the image's aspect), without the reference image.
    QImage renderOutput(const QSize &size);
    QPointF widgetToContent(const QPointF &widgetPoint) const;
    double zoom() const { return m_zoom; }

    // Wireframe view: the orbit camera.
    ViewCamera &camera() { return m_camera; }
    const ViewCamera &camera() const { return m_camera; }
    void frameWireframe();

    // Where a wireframe vertex is drawn in this view; nullopt when it is not visible.
    std::optional<QPointF> vertexWidgetPosition(int vertex) const;
    // The vertex nearest to a widget point within the pick radius, or -1.
    int vertexAt(const QPointF &widgetPoint) const;
    // The row whose marker lies under a widget point, or -1.
    int markerAt(const QPointF &widgetPoint) const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    std::optional<QPointF> projectToWidget(const Eigen::Vector3d &world) const;
    std::optional<QPointF> markerWidgetPosition(const Marker &marker) const;
    double fitScale() const;
    void paintProjectorImage(QPainter &painter);
    void paintWires(QPainter &painter);
    void paintMarkers(QPainter &painter);
    void paintHint(QPainter &painter);
    void requestRefresh();

    Kind m_kind;
    const CalibrationWireframe *m_wireframe = nullptr;
    QVector<Marker> m_markers;
    Display m_display;
    QImage m_background;
    QImage m_reference;
    QString m_hint;
    vg::scene::LensModel m_lens;
    bool m_haveLens = false;
    ViewCamera m_camera;

    // While renderOutput() paints: image pixels per projector pixel instead of the view's.
    std::optional<QTransform> m_outputMap;
    // Projector view zoom and pan (widget pixels).
    double m_zoom = 1.0;
    QPointF m_pan;

    enum class Drag { None, Orbit, Pan, Dolly, Marker };
    Drag m_drag = Drag::None;
    QPointF m_lastMouse;
    int m_dragRow = -1;
    bool m_dragMoved = false;
};
