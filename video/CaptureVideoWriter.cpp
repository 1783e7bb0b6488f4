#include "video/CaptureVideoWriter.h"

#include "video/CaptureFrame.h"

#include <QCoreApplication>

#include <algorithm>
#include <climits>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/error.h>
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

namespace {

constexpr int kFramesPerSecond = 30;
constexpr int kMaxSide = 16384;

QString tr(const char *text)
{
    return QCoreApplication::translate("CaptureVideoWriter", text);
}

QString ffmpegText(int code)
{
    char buffer[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(code, buffer, sizeof buffer);
    return QString::fromLocal8Bit(buffer);
}

bool fail(QString *error, const QString &step, int code = 0)
{
    if (error)
        *error = code < 0 ? QStringLiteral("%1: %2").arg(step, ffmpegText(code)) : step;
    return false;
}

} // namespace

CaptureVideoWriter::~CaptureVideoWriter()
{
    close();
}

bool CaptureVideoWriter::open(const QString &path, QSize frameSize, QString *error)
{
    close();
    // The encoder's per-run statistics are not for the program's log.
    if (av_log_get_level() == AV_LOG_INFO)
        av_log_set_level(AV_LOG_ERROR);
    if (frameSize.width() < 2 || frameSize.height() < 2 || frameSize.width() > kMaxSide
        || frameSize.height() > kMaxSide || frameSize != evenCaptureSize(frameSize))
        return fail(error, tr("Invalid capture frame size."));
    if (path.isEmpty())
        return fail(error, tr("Capture file path is empty."));
    m_size = frameSize;
    m_nextIndex = 0;
    const QByteArray file = path.toLocal8Bit();
    int code = avformat_alloc_output_context2(&m_format, nullptr, "mp4", file.constData());
    if (code < 0 || !m_format) {
        m_format = nullptr;
        return fail(error, tr("Capture file writer creation failed"), code);
    }
    if (!openEncoder(error)) {
        close();
        return false;
    }
    code = avio_open(&m_format->pb, file.constData(), AVIO_FLAG_WRITE);
    if (code < 0) {
        close();
        return fail(error, tr("Capture file writer creation failed"), code);
    }
    code = avformat_write_header(m_format, nullptr);
    if (code < 0) {
        close();
        return fail(error, tr("Capture writer start failed"), code);
    }
    m_headerWritten = true;
    return true;
}

bool CaptureVideoWriter::openEncoder(QString *error)
{
    const AVCodec *encoder = avcodec_find_encoder_by_name("libx264");
    if (!encoder)
        return fail(error, tr("Video encoder startup failed"));
    m_codec = avcodec_alloc_context3(encoder);
    if (!m_codec)
        return fail(error, tr("Capture writer attribute creation failed"), AVERROR(ENOMEM));
    const qint64 bitRate = captureBitRate(m_size.width(), m_size.height());
    m_codec->width = m_size.width();
    m_codec->height = m_size.height();
    m_codec->pix_fmt = AV_PIX_FMT_YUV420P;
    m_codec->time_base = AVRational{1, kFramesPerSecond};
    m_codec->framerate = AVRational{kFramesPerSecond, 1};
    m_codec->sample_aspect_ratio = AVRational{1, 1};
    m_codec->field_order = AV_FIELD_PROGRESSIVE;
    m_codec->bit_rate = bitRate;
    // Constant bit rate with a one-second buffer: the rate asked for is the rate written.
    m_codec->rc_max_rate = bitRate;
    m_codec->rc_min_rate = bitRate;
    m_codec->rc_buffer_size = int(std::min<qint64>(bitRate, INT_MAX));
    m_codec->gop_size = kFramesPerSecond * 2;
    m_codec->thread_count = 2;
    if (m_format->oformat->flags & AVFMT_GLOBALHEADER)
        m_codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    av_opt_set(m_codec->priv_data, "preset", "veryfast", 0);
    av_opt_set(m_codec->priv_data, "x264-params", "nal-hrd=cbr:force-cfr=1", 0);
    int code = avcodec_open2(m_codec, encoder, nullptr);
    if (code < 0)
        return fail(error, tr("Output media type creation failed"), code);
    m_stream = avformat_new_stream(m_format, nullptr);
    if (!m_stream)
        return fail(error, tr("Capture stream creation failed"), AVERROR(ENOMEM));
    m_stream->time_base = m_codec->time_base;
    m_stream->avg_frame_rate = m_codec->framerate;
    code = avcodec_parameters_from_context(m_stream->codecpar, m_codec);
    if (code < 0)
        return fail(error, tr("Capture stream creation failed"), code);
    m_scaler = sws_getContext(m_size.width(), m_size.height(), AV_PIX_FMT_BGRA, m_size.width(),
                              m_size.height(), AV_PIX_FMT_YUV420P, SWS_BILINEAR, nullptr, nullptr, nullptr);
    if (!m_scaler)
        return fail(error, tr("Input media type creation failed"));
    m_frame = av_frame_alloc();
    m_packet = av_packet_alloc();
    if (!m_frame || !m_packet)
        return fail(error, tr("Capture sample creation failed"), AVERROR(ENOMEM));
    m_frame->format = AV_PIX_FMT_YUV420P;
    m_frame->width = m_size.width();
    m_frame->height = m_size.height();
    code = av_frame_get_buffer(m_frame, 0);
    if (code < 0)
        return fail(error, tr("Capture frame buffer creation failed"), code);
    return true;
}

bool CaptureVideoWriter::writeFrame(const QImage &frame, QString *error)
{
    if (!isOpen() || !m_headerWritten)
        return fail(error, tr("Capture writer is not active."));
    if (frame.isNull())
        return fail(error, tr("Captured frame is empty."));
    if (frame.size() != m_size)
        return fail(error, tr("Invalid capture frame size."));
    // QImage's 32-bit RGB is B, G, R, X in memory on little-endian machines.
    const QImage rgb = frame.format() == QImage::Format_RGB32 || frame.format() == QImage::Format_ARGB32
        ? frame
        : frame.convertToFormat(QImage::Format_RGB32);
    int code = av_frame_make_writable(m_frame);
    if (code < 0)
        return fail(error, tr("Capture frame buffer lock failed"), code);
    const uint8_t *source[1] = {rgb.constBits()};
    const int sourceStride[1] = {int(rgb.bytesPerLine())};
    sws_scale(m_scaler, source, sourceStride, 0, m_size.height(), m_frame->data, m_frame->linesize);
    m_frame->pts = m_nextIndex;
    code = avcodec_send_frame(m_codec, m_frame);
    if (code < 0)
        return fail(error, tr("Capture frame write failed"), code);
    if (!drainPackets(error))
        return false;
    ++m_nextIndex;
    return true;
}

bool CaptureVideoWriter::drainPackets(QString *error)
{
    for (;;) {
        int code = avcodec_receive_packet(m_codec, m_packet);
        if (code == AVERROR(EAGAIN) || code == AVERROR_EOF)
            return true;
        if (code < 0)
            return fail(error, tr("Capture frame write failed"), code);
        av_packet_rescale_ts(m_packet, m_codec->time_base, m_stream->time_base);
        m_packet->stream_index = m_stream->index;
        code = av_interleaved_write_frame(m_format, m_packet);
        if (code < 0)
            return fail(error, tr("Capture frame write failed"), code);
    }
}

bool CaptureVideoWriter::finish(QString *error)
{
    if (!isOpen() || !m_headerWritten) {
        close();
        return fail(error, tr("Capture writer is not active."));
    }
    bool ok = true;
    QString reason;
    int code = avcodec_send_frame(m_codec, nullptr);
    if (code < 0)
        ok = fail(&reason, tr("Capture frame write failed"), code);
    if (ok)
        ok = drainPackets(&reason);
    code = av_write_trailer(m_format);
    if (ok && code < 0)
        ok = fail(&reason, tr("Capture frame write failed"), code);
    code = avio_closep(&m_format->pb);
    if (ok && code < 0)
        ok = fail(&reason, tr("Capture frame write failed"), code);
    close();
    if (!ok && error)
        *error = reason;
    return ok;
}

void CaptureVideoWriter::close()
{
    if (m_format && m_format->pb)
        avio_closep(&m_format->pb);
    avformat_free_context(m_format);
    m_format = nullptr;
    m_stream = nullptr;
    avcodec_free_context(&m_codec);
    av_frame_free(&m_frame);
    av_packet_free(&m_packet);
    sws_freeContext(m_scaler);
    m_scaler = nullptr;
    m_headerWritten = false;
}
