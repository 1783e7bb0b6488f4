#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

#include <memory>
#include <optional>
#include <thread>

enum class MovieState { NoMovie, Opening, Cueing, Ready, Failed };

// The numbers are the ones shown beside the mode in the property panel.
enum class MovieDecodeMode { None = 0, Gpu = 1, Cpu = 2, CpuFallback = 3 };

// One decoded picture. The CPU path fills `image` (32-bit BGRA); the hardware path fills
// `nv12` (the luma plane then the interleaved chroma plane, rows `stride` bytes apart).
struct MovieFrame
{
    QImage image;
    QByteArray nv12;
    int stride = 0;
    QSize size;
    double time = 0.0;   // presentation time in the file, seconds
    qint64 sequence = 0; // frames decoded since the movie started, across loops
    int loop = 0;        // how often the movie has wrapped round
    bool isNv12() const { return !nv12.isEmpty(); }
};

// A movie file decoded on a worker thread of its own, looping, with the decoded frames
// released against a presentation clock that starts with the first frame.
class MovieTexture
{
public:
    static constexpr int kQueueLimit = 16;

    MovieTexture(const QString &path, bool hardwareRequested);
    ~MovieTexture();
    MovieTexture(const MovieTexture &) = delete;
    MovieTexture &operator=(const MovieTexture &) = delete;

    bool start(QString *error);
    // Asks the worker to stop and waits for it; it returns within a frame's decode.
    void stop();

    QString path() const { return m_path; }
    // True from start() until stop() has joined the worker.
    bool workerRunning() const { return m_thread.joinable(); }
    MovieState state() const;
    MovieDecodeMode decodeMode() const;
    QString errorText() const;
    QSize frameSize() const;
    int queuedFrames() const;

    // Whether takeNewestFrame() would hand a frame over now; the view polls this to know
    // when a repaint is worth drawing.
    bool hasDueFrame() const;
    // The newest frame whose time has come; older due frames are dropped with it.
    std::optional<MovieFrame> takeNewestFrame();
    // The oldest queued frame regardless of the clock, for readers that want every frame.
    std::optional<MovieFrame> takeNextFrame(int timeoutMs);

    static QString stateText(MovieState state);
    static QString decodeModeText(MovieDecodeMode mode);
    // The surface's stand-in while a movie cannot be shown.
    static QString placeholderTitle();
    static QString placeholderDetail();

    struct Shared;

private:
    QString m_path;
    bool m_hardwareRequested = false;
    std::shared_ptr<Shared> m_shared;
    std::thread m_thread;
};
