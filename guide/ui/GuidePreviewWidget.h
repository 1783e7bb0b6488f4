#pragma once

#include <QFutureWatcher>
#include <QImage>
#include <QMetaType>
#include <QPointF>
#include <QPolygonF>
#include <QSizeF>
#include <QTransform>
#include <QVector>
#include <QWidget>

#include <functional>

// Where one guide layer sits, in guide pixels before flip and rotation.
struct GuideLayerFrame
{
    QPointF center;
    QSizeF size;
    double rotationDegrees = 0.0;
    bool visible = true;
};

// Shows the guide image at any zoom with pan. The image is produced off the UI thread;
// a result is shown only when it belongs to the latest request, older ones are dropped.
// A pyramid of halved copies keeps painting cheap when an 8K guide is zoomed out.
class GuidePreviewWidget : public QWidget
{
    Q_OBJECT
public:
    using RenderJob = std::function<QImage()>;

    explicit GuidePreviewWidget(QWidget *parent = nullptr);
    ~GuidePreviewWidget() override;

    // Queues a render; while one runs, only the newest queued job is kept.
    quint64 requestRender(RenderJob job);
    bool isRendering() const;
    // Blocks until no render is running or queued; for tests and exports.
    bool waitForIdle(int timeoutMs = 30000);

    QImage image() const { return m_image; }
    quint64 requestedGeneration() const { return m_requestedGeneration; }
    quint64 shownGeneration() const { return m_shownGeneration; }
    int droppedResults() const { return m_droppedResults; }

    double zoom() const { return m_zoom; }
    // Image pixel shown at the widget's centre.
    QPointF viewCenter() const { return m_viewCenter; }
    bool isFitMode() const { return m_fitMode; }
    void setZoom(double zoom, const QPointF &widgetAnchor);
    void setZoom(double zoom);
    void setView(double zoom, const QPointF &imageCenter);
    void fitToView();
    void zoomIn();
    void zoomOut();
    int pyramidLevels() const { return m_levels.size(); }

    // Maps guide pixels (before flip/rotation) to image pixels, for the layer handles.
    void setGuideTransform(const QTransform &transform);
    void setLayerFrames(const QVector<GuideLayerFrame> &frames);
    void setSelectedLayer(int index);
    int selectedLayer() const { return m_selectedLayer; }

    QPointF widgetToImage(const QPointF &p) const;
    QPointF imageToWidget(const QPointF &p) const;

Q_SIGNALS:
    void imageReady();
    void zoomChanged(double zoom);
    void layerClicked(int index);
    void layerFrameEdited(int index, const GuideLayerFrame &frame);
    void layerEditFinished(int index);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct RenderResult
    {
        quint64 generation = 0;
        QImage image;
        QVector<QImage> levels;
    };
    enum class DragMode { None, Pan, Move, Scale, Rotate };

    void startJob(quint64 generation, RenderJob job);
    void onJobFinished();
    static RenderResult runJob(quint64 generation, const RenderJob &job);
    static void buildLevels(RenderResult *result);
    double fitZoom() const;
    void clampView();
    QPolygonF layerPolygon(int index) const; // in widget coordinates
    QPointF layerHandle(int index, int which) const; // 0..3 corners, 4 rotation knob
    int hitLayer(const QPointF &widgetPos) const;
    int hitHandle(const QPointF &widgetPos) const;

    QFutureWatcher<RenderResult> m_watcher;
    quint64 m_requestedGeneration = 0;
    quint64 m_runningGeneration = 0;
    quint64 m_shownGeneration = 0;
    RenderJob m_pendingJob;
    quint64 m_pendingGeneration = 0;
    int m_droppedResults = 0;

    QImage m_image;
    QVector<QImage> m_levels;

    double m_zoom = 1.0;
    QPointF m_viewCenter;
    bool m_fitMode = true;

    QTransform m_guideTransform;
    QVector<GuideLayerFrame> m_frames;
    int m_selectedLayer = -1;

    DragMode m_dragMode = DragMode::None;
    QPointF m_dragStartWidget;
    QPointF m_dragStartCenter;
    GuideLayerFrame m_dragStartFrame;
    QPointF m_dragStartGuide;
};
Q_DECLARE_METATYPE(GuideLayerFrame)
