#include "scene/gl/SceneFramePacer.h"

#include "scene/gl/SceneTimingLog.h"

#include <QTimer>

#include <algorithm>

SceneFramePacer::SceneFramePacer(QObject *parent)
    : QObject(parent)
{
}

void SceneFramePacer::setHidden(bool hidden)
{
    m_hidden = hidden;
    if (hidden)
        m_pending = false;
}

bool SceneFramePacer::requestFrame()
{
    if (m_loading)
        return false;
    if (m_hidden) {
        m_pending = false;
        return false;
    }
    SceneTimingLog &log = SceneTimingLog::instance();
    if (m_pending) {
        log.event("render_queue_skip", m_serial);
        return false;
    }
    m_pending = true;
    log.event("render_queue", m_serial);
    QTimer::singleShot(0, this, [this] {
        if (!m_pending)
            return; // hidden in the meantime
        Q_EMIT frameDue();
    });
    return true;
}

void SceneFramePacer::beginFrame()
{
    m_pending = false;
    ++m_serial;
    SceneTimingLog::instance().event("render_begin", m_serial);
}

void SceneFramePacer::afterUpdate()
{
    SceneTimingLog::instance().event("render_after_update", m_serial);
}

void SceneFramePacer::afterPresent()
{
    SceneTimingLog::instance().event("present_end", m_serial);
}

void SceneFramePacer::endFrame()
{
    SceneTimingLog::instance().event("render_end", m_serial);
}

void SceneFrameRate::frameStarted()
{
    if (!m_clock.isValid())
        m_clock.start();
    frameStartedAt(m_clock.nsecsElapsed() / 1.0e6);
}

void SceneFrameRate::frameStartedAt(double milliseconds)
{
    constexpr double kLongestMs = 1000.0;
    constexpr double kSmoothing = 0.2; // weight of the newest interval
    if (m_lastMs >= 0.0) {
        const double interval = std::clamp(milliseconds - m_lastMs, 0.0, kLongestMs);
        m_intervalMs = m_intervalMs > 0.0 ? m_intervalMs + kSmoothing * (interval - m_intervalMs) : interval;
    }
    m_lastMs = milliseconds;
}

double SceneFrameRate::framesPerSecond() const
{
    return m_intervalMs > 0.0 ? 1000.0 / m_intervalMs : 0.0;
}
