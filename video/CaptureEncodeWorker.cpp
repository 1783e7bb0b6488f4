#include "video/CaptureEncodeWorker.h"

#include <QCoreApplication>

#include <chrono>

struct CaptureEncodeWorker::Shared
{
    std::mutex mutex;
    std::condition_variable wake;
    std::condition_variable done;
    std::deque<QImage> queue;
    CaptureVideoWriter writer;
    QString error;
    qint64 written = 0;
    bool stopping = false;
    bool finished = false;
    bool finishOk = false;
};

CaptureEncodeWorker::CaptureEncodeWorker() = default;

CaptureEncodeWorker::~CaptureEncodeWorker()
{
    if (m_thread.joinable()) {
        QString ignored;
        finish(30000, &ignored);
    }
}

bool CaptureEncodeWorker::start(const QString &path, QSize frameSize, QString *error)
{
    auto shared = std::make_shared<Shared>();
    if (!shared->writer.open(path, frameSize, error))
        return false;
    m_shared = shared;
    m_thread = std::thread(&CaptureEncodeWorker::run, shared);
    return true;
}

bool CaptureEncodeWorker::submit(const QImage &frame)
{
    if (!m_shared)
        return false;
    {
        std::lock_guard lock(m_shared->mutex);
        if (m_shared->stopping || !m_shared->error.isEmpty() || m_shared->queue.size() >= kQueueLimit)
            return false;
        m_shared->queue.push_back(frame);
    }
    m_shared->wake.notify_one();
    return true;
}

QString CaptureEncodeWorker::error() const
{
    if (!m_shared)
        return {};
    std::lock_guard lock(m_shared->mutex);
    return m_shared->error;
}

qint64 CaptureEncodeWorker::framesWritten() const
{
    if (!m_shared)
        return 0;
    std::lock_guard lock(m_shared->mutex);
    return m_shared->written;
}

bool CaptureEncodeWorker::finish(int timeoutMs, QString *error)
{
    if (!m_shared || !m_thread.joinable()) {
        if (error)
            *error = QCoreApplication::translate("CaptureVideoWriter", "Capture writer is not active.");
        return false;
    }
    std::unique_lock lock(m_shared->mutex);
    m_shared->stopping = true;
    m_shared->wake.notify_one();
    const bool ended = m_shared->done.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                                               [&] { return m_shared->finished; });
    const bool ok = ended && m_shared->finishOk;
    if (error)
        *error = ended ? m_shared->error
                       : QCoreApplication::translate("CaptureVideoWriter", "The video encoder did not finish in time.");
    lock.unlock();
    // A worker that overran keeps its own share of the state and ends on its own.
    if (ended)
        m_thread.join();
    else
        m_thread.detach();
    return ok;
}

void CaptureEncodeWorker::run(std::shared_ptr<Shared> shared)
{
    std::unique_lock lock(shared->mutex);
    for (;;) {
        shared->wake.wait(lock, [&] { return shared->stopping || !shared->queue.empty(); });
        if (shared->queue.empty())
            break;
        const QImage frame = std::move(shared->queue.front());
        shared->queue.pop_front();
        lock.unlock();
        QString error;
        const bool ok = shared->writer.writeFrame(frame, &error);
        lock.lock();
        if (ok) {
            shared->written = shared->writer.framesWritten();
        } else if (shared->error.isEmpty()) {
            shared->error = error;
            shared->queue.clear();
        }
    }
    lock.unlock();
    QString error;
    const bool ok = shared->writer.finish(&error);
    lock.lock();
    if (!ok && shared->error.isEmpty())
        shared->error = error;
    shared->finishOk = shared->error.isEmpty();
    shared->finished = true;
    shared->done.notify_all();
}
