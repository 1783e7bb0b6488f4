#include "video/MovieDecoder.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cstring>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/hwcontext.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

namespace {

constexpr int kMaxSide = 16384;

QString tr(const char *text)
{
    return QCoreApplication::translate("MovieTexture", text);
}

bool fail(QString *error, const char *step, const QString &detail)
{
    *error = tr(step) + QLatin1Char(' ') + detail;
    return false;
}

int interruptCallback(void *opaque)
{
    return static_cast<const std::atomic_bool *>(opaque)->load() ? 1 : 0;
}

} // namespace

QString movieFfmpegError(int code)
{
    char buffer[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(code, buffer, sizeof buffer);
    return QString::fromLocal8Bit(buffer);
}

MovieDecoder::MovieDecoder(const std::atomic_bool &stopRequested)
    : m_stop(stopRequested)
{
}

MovieDecoder::~MovieDecoder()
{
    sws_freeContext(m_scaler);
    av_frame_free(&m_transfer);
    av_frame_free(&m_decoded);
    av_packet_free(&m_packet);
    avcodec_free_context(&m_codec);
    av_buffer_unref(&m_hwDevice);
    avformat_close_input(&m_format);
}

bool MovieDecoder::open(const QString &path, bool hardwareRequested, QString *error)
{
    if (!QFileInfo(path).isFile())
        return fail(error, "Movie texture file is not available:", path);
    m_format = avformat_alloc_context();
    if (!m_format)
        return fail(error, "Movie texture reader attribute creation failed:", movieFfmpegError(AVERROR(ENOMEM)));
    m_format->interrupt_callback.callback = interruptCallback;
    m_format->interrupt_callback.opaque = const_cast<std::atomic_bool *>(&m_stop);
    int code = avformat_open_input(&m_format, path.toLocal8Bit().constData(), nullptr, nullptr);
    if (code < 0)
        return fail(error, "Movie texture source reader creation failed:", movieFfmpegError(code));
    code = avformat_find_stream_info(m_format, nullptr);
    if (code < 0)
        return fail(error, "Movie texture source reader creation failed:", movieFfmpegError(code));
    const AVCodec *decoder = nullptr;
    m_stream = av_find_best_stream(m_format, AVMEDIA_TYPE_VIDEO, -1, -1, &decoder, 0);
    if (m_stream < 0 || !decoder)
        return fail(error, "Movie texture video stream selection failed:",
                    movieFfmpegError(m_stream < 0 ? m_stream : AVERROR_DECODER_NOT_FOUND));
    for (unsigned i = 0; i < m_format->nb_streams; ++i)
        m_format->streams[i]->discard = int(i) == m_stream ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    m_codec = avcodec_alloc_context3(decoder);
    if (!m_codec)
        return fail(error, "Movie texture media type creation failed:", movieFfmpegError(AVERROR(ENOMEM)));
    code = avcodec_parameters_to_context(m_codec, m_format->streams[m_stream]->codecpar);
    if (code < 0)
        return fail(error, "Movie texture media type creation failed:", movieFfmpegError(code));
    m_codec->thread_count = 2;
    m_mode = MovieDecodeMode::Cpu;
    if (hardwareRequested)
        m_mode = openHardware() ? MovieDecodeMode::Gpu : MovieDecodeMode::CpuFallback;
    code = avcodec_open2(m_codec, decoder, nullptr);
    if (code < 0)
        return fail(error, "Movie texture media type creation failed:", movieFfmpegError(code));
    m_packet = av_packet_alloc();
    m_decoded = av_frame_alloc();
    m_transfer = av_frame_alloc();
    if (!m_packet || !m_decoded || !m_transfer)
        return fail(error, "Movie texture media type creation failed:", movieFfmpegError(AVERROR(ENOMEM)));
    return true;
}

// Tries the machine's hardware decoders in turn; the first device that opens serves NV12.
bool MovieDecoder::openHardware()
{
    static const AVHWDeviceType kTypes[] = {AV_HWDEVICE_TYPE_VAAPI, AV_HWDEVICE_TYPE_CUDA, AV_HWDEVICE_TYPE_VDPAU};
    for (AVHWDeviceType type : kTypes) {
        for (int i = 0;; ++i) {
            const AVCodecHWConfig *config = avcodec_get_hw_config(m_codec->codec, i);
            if (!config)
                break;
            if (!(config->methods & AV_CODEC_HW_CONFIG_METHOD_HW_DEVICE_CTX) || config->device_type != type)
                continue;
            if (av_hwdevice_ctx_create(&m_hwDevice, type, nullptr, nullptr, 0) < 0)
                break;
            m_codec->hw_device_ctx = av_buffer_ref(m_hwDevice);
            m_hwFormat = config->pix_fmt;
            return true;
        }
    }
    return false;
}

bool MovieDecoder::next(MovieFrame *frame, QString *error)
{
    error->clear();
    while (!m_stop.load()) {
        bool got = false;
        if (!receive(frame, &got, error))
            return false;
        if (got)
            return true;
        if (m_draining) {
            if (!rewind(error))
                return false;
            continue;
        }
        const int code = av_read_frame(m_format, m_packet);
        if (code == AVERROR_EOF || (code < 0 && avio_feof(m_format->pb))) {
            // Flush the pictures the decoder still holds, then wrap round.
            avcodec_send_packet(m_codec, nullptr);
            m_draining = true;
            continue;
        }
        if (code < 0)
            return m_stop.load() ? false : fail(error, "Movie texture sample read failed:", movieFfmpegError(code));
        if (m_packet->stream_index == m_stream) {
            const int sent = avcodec_send_packet(m_codec, m_packet);
            if (sent < 0 && sent != AVERROR(EAGAIN) && sent != AVERROR_INVALIDDATA) {
                av_packet_unref(m_packet);
                return fail(error, "Movie texture sample read failed:", movieFfmpegError(sent));
            }
        }
        av_packet_unref(m_packet);
    }
    return false;
}

bool MovieDecoder::receive(MovieFrame *frame, bool *got, QString *error)
{
    const int code = avcodec_receive_frame(m_codec, m_decoded);
    if (code == AVERROR(EAGAIN) || code == AVERROR_EOF)
        return true;
    if (code < 0)
        return fail(error, "Movie texture sample read failed:", movieFfmpegError(code));
    const bool ok = convert(m_decoded, frame, error);
    av_frame_unref(m_decoded);
    *got = ok;
    return ok;
}

bool MovieDecoder::rewind(QString *error)
{
    // A file that decoded nothing in a whole pass would spin for ever.
    if (m_framesThisLoop == 0)
        return fail(error, "Movie texture sample read failed:", movieFfmpegError(AVERROR_INVALIDDATA));
    const int code = av_seek_frame(m_format, m_stream, m_format->streams[m_stream]->start_time == AV_NOPTS_VALUE
                                                           ? 0 : m_format->streams[m_stream]->start_time,
                                   AVSEEK_FLAG_BACKWARD);
    // Streams without an index (raw elementary streams) go back to their first byte instead.
    if (code < 0 && avformat_seek_file(m_format, -1, 0, 0, 0, AVSEEK_FLAG_BYTE) < 0)
        return fail(error, "Movie texture seek failed:", movieFfmpegError(code));
    avcodec_flush_buffers(m_codec);
    m_draining = false;
    m_framesThisLoop = 0;
    ++m_loop;
    return true;
}

bool MovieDecoder::convert(AVFrame *decoded, MovieFrame *frame, QString *error)
{
    if (decoded->width <= 0 || decoded->height <= 0 || decoded->width > kMaxSide || decoded->height > kMaxSide)
        return fail(error, "Movie texture frame size query failed:",
                    QStringLiteral("%1x%2").arg(decoded->width).arg(decoded->height));
    const AVStream *stream = m_format->streams[m_stream];
    const qint64 pts = decoded->best_effort_timestamp == AV_NOPTS_VALUE ? 0 : decoded->best_effort_timestamp;
    const qint64 start = stream->start_time == AV_NOPTS_VALUE ? 0 : stream->start_time;
    *frame = MovieFrame();
    frame->size = QSize(decoded->width, decoded->height);
    frame->time = double(pts - start) * av_q2d(stream->time_base);
    frame->sequence = m_sequence++;
    frame->loop = m_loop;
    ++m_framesThisLoop;
    if (m_hwFormat >= 0 && decoded->format == m_hwFormat) {
        av_frame_unref(m_transfer);
        const int code = av_hwframe_transfer_data(m_transfer, decoded, 0);
        if (code < 0)
            return fail(error, "Movie texture DXGI resource query failed:", movieFfmpegError(code));
        if (m_transfer->format != AV_PIX_FMT_NV12)
            return fail(error, "Movie texture GPU sample format is not directly supported:",
                        QString::fromLatin1(av_get_pix_fmt_name(AVPixelFormat(m_transfer->format))));
        const int width = m_transfer->width, height = m_transfer->height;
        frame->stride = width;
        frame->nv12.resize(qsizetype(width) * height * 3 / 2);
        auto *out = reinterpret_cast<uint8_t *>(frame->nv12.data());
        for (int y = 0; y < height; ++y)
            memcpy(out + qsizetype(y) * width, m_transfer->data[0] + qsizetype(y) * m_transfer->linesize[0], width);
        for (int y = 0; y < height / 2; ++y)
            memcpy(out + qsizetype(width) * height + qsizetype(y) * width,
                   m_transfer->data[1] + qsizetype(y) * m_transfer->linesize[1], width);
        return true;
    }
    m_scaler = sws_getCachedContext(m_scaler, decoded->width, decoded->height, AVPixelFormat(decoded->format),
                                    decoded->width, decoded->height, AV_PIX_FMT_BGRA, SWS_BILINEAR, nullptr,
                                    nullptr, nullptr);
    if (!m_scaler)
        return fail(error, "Movie texture RGB32 output setup failed:",
                    QString::fromLatin1(av_get_pix_fmt_name(AVPixelFormat(decoded->format))));
    QImage image(frame->size, QImage::Format_RGB32);
    if (image.isNull())
        return fail(error, "Could not copy movie texture frame:", movieFfmpegError(AVERROR(ENOMEM)));
    uint8_t *planes[1] = {image.bits()};
    const int strides[1] = {int(image.bytesPerLine())};
    sws_scale(m_scaler, decoded->data, decoded->linesize, 0, decoded->height, planes, strides);
    frame->image = std::move(image);
    return true;
}
