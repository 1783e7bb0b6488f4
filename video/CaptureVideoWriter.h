#pragma once

#include <QImage>
#include <QSize>
#include <QString>

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVPacket;
struct AVStream;
struct SwsContext;

// H.264 (libx264) in an MP4 file at 30/1 from 32-bit RGB frames of one fixed even size.
// Frame time stamps come from the frame index, so a slow grab never stretches the video.
// Not thread-safe: one thread opens, writes and finishes.
class CaptureVideoWriter
{
public:
    CaptureVideoWriter() = default;
    ~CaptureVideoWriter();
    CaptureVideoWriter(const CaptureVideoWriter &) = delete;
    CaptureVideoWriter &operator=(const CaptureVideoWriter &) = delete;

    bool open(const QString &path, QSize frameSize, QString *error);
    // `frame` must have the size given to open(); the index of the next frame grows only
    // when the write succeeds.
    bool writeFrame(const QImage &frame, QString *error);
    // Flushes the encoder and writes the file's index; the writer is closed either way.
    bool finish(QString *error);

    bool isOpen() const { return m_format != nullptr; }
    qint64 framesWritten() const { return m_nextIndex; }
    QSize frameSize() const { return m_size; }

private:
    bool openEncoder(QString *error);
    bool drainPackets(QString *error);
    void close();

    QSize m_size;
    qint64 m_nextIndex = 0;
    AVFormatContext *m_format = nullptr;
    AVCodecContext *m_codec = nullptr;
    AVStream *m_stream = nullptr;
    AVFrame *m_frame = nullptr;
    AVPacket *m_packet = nullptr;
    SwsContext *m_scaler = nullptr;
    bool m_headerWritten = false;
};
