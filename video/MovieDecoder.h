#pragma once

#include "video/MovieTexture.h"

#include <QString>

#include <atomic>
#include <functional>

struct AVBufferRef;
struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVPacket;
struct SwsContext;

// The FFmpeg side of a movie texture: opens the file, decodes the first video stream, wraps
// round at the end and turns every picture into a MovieFrame. Used by the worker thread only.
class MovieDecoder
{
public:
    explicit MovieDecoder(const std::atomic_bool &stopRequested);
    ~MovieDecoder();
    MovieDecoder(const MovieDecoder &) = delete;
    MovieDecoder &operator=(const MovieDecoder &) = delete;

    bool open(const QString &path, bool hardwareRequested, QString *error);
    MovieDecodeMode mode() const { return m_mode; }

    // Decodes the next picture, starting over at the end of the file. False with an error
    // text on failure, false with an empty text when a stop was requested.
    bool next(MovieFrame *frame, QString *error);

private:
    bool openHardware();
    bool receive(MovieFrame *frame, bool *got, QString *error);
    bool rewind(QString *error);
    bool convert(AVFrame *decoded, MovieFrame *frame, QString *error);

    const std::atomic_bool &m_stop;
    AVFormatContext *m_format = nullptr;
    AVCodecContext *m_codec = nullptr;
    AVBufferRef *m_hwDevice = nullptr;
    AVPacket *m_packet = nullptr;
    AVFrame *m_decoded = nullptr;
    AVFrame *m_transfer = nullptr;
    SwsContext *m_scaler = nullptr;
    int m_stream = -1;
    int m_hwFormat = -1;
    MovieDecodeMode m_mode = MovieDecodeMode::None;
    bool m_draining = false;
    int m_loop = 0;
    qint64 m_sequence = 0;
    int m_framesThisLoop = 0;
};

QString movieFfmpegError(int code);
