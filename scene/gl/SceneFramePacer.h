#pragma once

#include <QElapsedTimer>
#include <QObject>

// The view's repaint queue of one: a request while a frame is pending is dropped, and the
// frame is drawn from a zero-interval single-shot timer so that bursts of changes cost one
// frame. Timing events go to the movie timing log when it is on.
class SceneFramePacer : public QObject
{
    Q_OBJECT
public:
    explicit SceneFramePacer(QObject *parent = nullptr);

    // While loading nothing is queued.
    void setLoading(bool loading) { m_loading = loading; }
    bool isLoading() const { return m_loading; }
    // A hidden view clears its pending mark and queues nothing.
    void setHidden(bool hidden);
    bool isHidden() const { return m_hidden; }
    bool isPending() const { return m_pending; }

    // Returns true when a frame was queued by this call.
    bool requestFrame();

    // Frame bracket for the view that draws: render_begin, render_after_update, present_end,
    // render_end. beginFrame() also clears the pending mark.
    void beginFrame();
    void afterUpdate();
    void afterPresent();
    void endFrame();
    quint64 frameSerial() const { return m_serial; }

Q_SIGNALS:
    // Emitted from the event loop when the queued frame is due.
    void frameDue();

private:
    bool m_loading = false;
    bool m_hidden = false;
    bool m_pending = false;
    quint64 m_serial = 0;
};

// The rate frames are drawn at, for "FPS: %1": the interval between frame starts, smoothed
// over the last several frames. A pause is counted as at most one second, so the rate after
// idling reads low rather than stale.
class SceneFrameRate
{
public:
    void frameStarted();
    // The same with the time given, in milliseconds of any steady clock.
    void frameStartedAt(double milliseconds);
    double framesPerSecond() const;

private:
    QElapsedTimer m_clock;
    double m_lastMs = -1.0;
    double m_intervalMs = 0.0;
};
