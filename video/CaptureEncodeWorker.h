#pragma once

#include "video/CaptureVideoWriter.h"

#include <QImage>
#include <QString>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

// Encodes captured frames on its own thread so a slow encode never holds up the interface.
// Frames wait in a short queue; when it is full the newest grab is left out, and since time
// stamps count written frames the video stays smooth rather than stalling the window.
class CaptureEncodeWorker
{
public:
    static constexpr int kQueueLimit = 8;

    CaptureEncodeWorker();
    ~CaptureEncodeWorker();

    // Opens the file on the caller's thread so that start-up errors reach the caller directly.
    bool start(const QString &path, QSize frameSize, QString *error);
    // False when the frame was left out because the queue is full or the worker has stopped.
    bool submit(const QImage &frame);
    // The first write error, empty while all is well.
    QString error() const;
    // Writes what is queued, flushes and closes the file; waits at most `timeoutMs`.
    bool finish(int timeoutMs, QString *error);
    qint64 framesWritten() const;

private:
    struct Shared;
    static void run(std::shared_ptr<Shared> shared);

    std::shared_ptr<Shared> m_shared;
    std::thread m_thread;
};
