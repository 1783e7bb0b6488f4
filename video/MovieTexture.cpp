#include "video/MovieTexture.h"

#include "video/MovieDecoder.h"

#include "scene/gl/SceneTimingLog.h"

#include <QCoreApplication>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace {

using Clock = std::chrono::steady_clock;

struct QueuedFrame
{
    MovieFrame frame;
    Clock::time_point due;
};

} // namespace

struct MovieTexture::Shared
{
    mutable std::mutex mutex;
    std::condition_variable wake;
    std::atomic_bool stop{false};
    std::deque<QueuedFrame> queue;
    MovieState state = MovieState::NoMovie;
    MovieDecodeMode mode = MovieDecodeMode::None;
    QString error;
    QSize size;
};

namespace {

// Frames are due at clock start + their time in the movie; each wrap adds the length of the
// pass before it, so the loop plays on without a gap or a jump back in time.
void runWorker(std::shared_ptr<MovieTexture::Shared> shared, QString path, bool hardware)
{
    MovieDecoder decoder(shared->stop);
    QString error;
    const bool opened = decoder.open(path, hardware, &error);
    {
        std::lock_guard lock(shared->mutex);
        shared->mode = decoder.mode();
        shared->state = opened ? MovieState::Cueing : MovieState::Failed;
        shared->error = error;
    }
    shared->wake.notify_all();
    if (!opened)
        return;
    Clock::time_point clockStart;
    double loopOffset = 0.0, lastTime = 0.0, lastStep = 1.0 / 30.0;
    int loop = 0;
    MovieFrame frame;
    while (!shared->stop.load()) {
        if (!decoder.next(&frame, &error)) {
            std::lock_guard lock(shared->mutex);
            if (!error.isEmpty()) {
                shared->state = MovieState::Failed;
                shared->error = error;
            }
            shared->wake.notify_all();
            return;
        }
        SceneTimingLog &timing = SceneTimingLog::instance();
        const qint64 sample100ns = qint64(frame.time * 1e7);
        if (timing.isEnabled())
            timing.event("read_sample", quint64(frame.sequence), sample100ns, 0.0,
                         QStringLiteral("flags=%1 hasSample=%2").arg(frame.loop != loop ? 1 : 0).arg(1));
        if (frame.sequence == 0)
            clockStart = Clock::now();
        if (frame.loop != loop) {
            loopOffset += lastTime + lastStep;
            loop = frame.loop;
        } else if (frame.sequence > 0 && frame.time > lastTime) {
            lastStep = frame.time - lastTime;
        }
        lastTime = frame.time;
        const auto due = clockStart + std::chrono::duration_cast<Clock::duration>(
                                          std::chrono::duration<double>(loopOffset + frame.time));
        std::unique_lock lock(shared->mutex);
        while (!shared->stop.load() && shared->queue.size() >= size_t(MovieTexture::kQueueLimit))
            shared->wake.wait_for(lock, std::chrono::milliseconds(1));
        shared->size = frame.size;
        if (timing.isEnabled())
            timing.event(frame.isNv12() ? "publish_gpu" : "publish_cpu", quint64(frame.sequence), sample100ns,
                         double(shared->queue.size() + 1));
        shared->queue.push_back(QueuedFrame{std::move(frame), due});
        shared->state = MovieState::Ready;
        shared->wake.notify_all();
    }
}

} // namespace

MovieTexture::MovieTexture(const QString &path, bool hardwareRequested)
    : m_path(path)
    , m_hardwareRequested(hardwareRequested)
    , m_shared(std::make_shared<Shared>())
{
}

MovieTexture::~MovieTexture()
{
    stop();
}

bool MovieTexture::start(QString *error)
{
    stop();
    m_shared = std::make_shared<Shared>();
    if (m_path.isEmpty())
        return true;
    m_shared->state = MovieState::Opening;
    try {
        m_thread = std::thread(runWorker, m_shared, m_path, m_hardwareRequested);
    } catch (const std::system_error &failure) {
        m_shared->state = MovieState::Failed;
        m_shared->error = QCoreApplication::translate("MovieTexture", "Movie texture worker start failed:")
            + QLatin1Char(' ') + QString::fromLocal8Bit(failure.what());
        *error = m_shared->error;
        return false;
    }
    return true;
}

void MovieTexture::stop()
{
    m_shared->stop.store(true);
    m_shared->wake.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

MovieState MovieTexture::state() const
{
    std::lock_guard lock(m_shared->mutex);
    return m_shared->state;
}

MovieDecodeMode MovieTexture::decodeMode() const
{
    std::lock_guard lock(m_shared->mutex);
    return m_shared->mode;
}

QString MovieTexture::errorText() const
{
    std::lock_guard lock(m_shared->mutex);
    return m_shared->error;
}

QSize MovieTexture::frameSize() const
{
    std::lock_guard lock(m_shared->mutex);
    return m_shared->size;
}

int MovieTexture::queuedFrames() const
{
    std::lock_guard lock(m_shared->mutex);
    return int(m_shared->queue.size());
}

bool MovieTexture::hasDueFrame() const
{
    std::lock_guard lock(m_shared->mutex);
    return !m_shared->queue.empty() && m_shared->queue.front().due <= Clock::now();
}

std::optional<MovieFrame> MovieTexture::takeNewestFrame()
{
    std::lock_guard lock(m_shared->mutex);
    const auto now = Clock::now();
    std::optional<MovieFrame> newest;
    while (!m_shared->queue.empty() && m_shared->queue.front().due <= now) {
        newest = std::move(m_shared->queue.front().frame);
        m_shared->queue.pop_front();
    }
    if (newest)
        m_shared->wake.notify_all();
    return newest;
}

std::optional<MovieFrame> MovieTexture::takeNextFrame(int timeoutMs)
{
    std::unique_lock lock(m_shared->mutex);
    const bool any = m_shared->wake.wait_for(lock, std::chrono::milliseconds(timeoutMs), [&] {
        return !m_shared->queue.empty() || m_shared->state == MovieState::Failed;
    });
    if (!any || m_shared->queue.empty())
        return std::nullopt;
    MovieFrame frame = std::move(m_shared->queue.front().frame);
    m_shared->queue.pop_front();
    m_shared->wake.notify_all();
    return frame;
}

QString MovieTexture::stateText(MovieState state)
{
    switch (state) {
    case MovieState::NoMovie: return QCoreApplication::translate("MovieTexture", "No Movie");
    case MovieState::Opening: return QCoreApplication::translate("MovieTexture", "Opening...");
    case MovieState::Cueing: return QCoreApplication::translate("MovieTexture", "Cueing...");
    case MovieState::Ready: return QCoreApplication::translate("MovieTexture", "Ready");
    case MovieState::Failed: return QCoreApplication::translate("MovieTexture", "Failed");
    }
    return {};
}

QString MovieTexture::decodeModeText(MovieDecodeMode mode)
{
    switch (mode) {
    case MovieDecodeMode::None: return {};
    case MovieDecodeMode::Gpu: return QCoreApplication::translate("MovieTexture", "GPU Decoding");
    case MovieDecodeMode::Cpu: return QCoreApplication::translate("MovieTexture", "CPU Decoding");
    case MovieDecodeMode::CpuFallback: return QCoreApplication::translate("MovieTexture", "CPU Decoding (GPU fallback)");
    }
    return {};
}

QString MovieTexture::placeholderTitle()
{
    return QCoreApplication::translate("MovieTexture", "NO MOVIE");
}

QString MovieTexture::placeholderDetail()
{
    return QCoreApplication::translate("MovieTexture", "Unsupported movie or codec");
}
