#include "video/MovieTextureSource.h"

#include "scene/gl/SceneTimingLog.h"
#include "video/VideoPlaceholder.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstring>

MovieTextureSource::MovieTextureSource(std::shared_ptr<MovieTexture> movie)
    : m_movie(std::move(movie))
{
}

bool MovieTextureSource::nv12Frame(const MovieFrame &frame, SceneTextureFrame *out)
{
    const int width = frame.size.width();
    const int height = frame.size.height();
    const int stride = frame.stride;
    if (width <= 0 || height <= 0 || stride < width)
        return false;
    const int chromaRows = (height + 1) / 2;
    const int chromaBytes = (width + 1) / 2 * 2;
    const int sourceChromaRows = height / 2;
    const qsizetype needed = qsizetype(stride) * height + qsizetype(stride) * sourceChromaRows;
    if (frame.nv12.size() < needed)
        return false;
    const char *data = frame.nv12.constData();
    QByteArray luma(qsizetype(width) * height, Qt::Uninitialized);
    for (int y = 0; y < height; ++y)
        std::memcpy(luma.data() + qsizetype(y) * width, data + qsizetype(y) * stride, size_t(width));
    // An odd last row or column has no chroma of its own in the decoder's buffer: repeat
    // the one before it.
    QByteArray chroma(qsizetype(chromaBytes) * chromaRows, char(128));
    const char *chromaPlane = data + qsizetype(stride) * height;
    const int copyBytes = std::min(chromaBytes, stride) & ~1;
    for (int y = 0; y < chromaRows && sourceChromaRows > 0 && copyBytes > 0; ++y) {
        const int sourceRow = std::min(y, std::max(0, sourceChromaRows - 1));
        char *row = chroma.data() + qsizetype(y) * chromaBytes;
        std::memcpy(row, chromaPlane + qsizetype(sourceRow) * stride, size_t(copyBytes));
        for (int x = copyBytes; x < chromaBytes; x += 2) {
            row[x] = row[copyBytes - 2];
            row[x + 1] = row[copyBytes - 1];
        }
    }
    out->format = SceneTextureFrame::Nv12;
    out->image = QImage();
    out->luma = std::move(luma);
    out->chroma = std::move(chroma);
    out->width = width;
    out->height = height;
    out->serial = nextSceneTextureSerial();
    return true;
}

SceneTextureFrame MovieTextureSource::currentFrame()
{
    if (!m_movie)
        return {};
    if (std::optional<MovieFrame> frame = m_movie->takeNewestFrame()) {
        SceneTextureFrame next;
        bool ok = false;
        if (frame->isNv12()) {
            ok = nv12Frame(*frame, &next);
        } else if (!frame->image.isNull()) {
            next.format = SceneTextureFrame::Rgba;
            next.image = std::move(frame->image);
            next.width = next.image.width();
            next.height = next.image.height();
            next.serial = nextSceneTextureSerial();
            ok = true;
        }
        SceneTimingLog &timing = SceneTimingLog::instance();
        if (timing.isEnabled())
            timing.event(frame->isNv12() ? "receive_gpu" : "receive_cpu", quint64(frame->sequence),
                         qint64(frame->time * 1e7), ok ? 1.0 : 0.0);
        if (ok) {
            m_last = std::move(next);
            ++m_received;
        } else {
            qWarning("%s %s", qPrintable(QCoreApplication::translate("MovieTexture", "Could not upload movie texture frame:")),
                     qPrintable(m_movie->path()));
        }
    }
    if (m_movie->state() == MovieState::Failed) {
        if (!m_placeholder.isValid()) {
            const QImage image = videoPlaceholderImage(MovieTexture::placeholderTitle(), MovieTexture::placeholderDetail());
            m_placeholder.format = SceneTextureFrame::Rgba;
            m_placeholder.image = image;
            m_placeholder.width = image.width();
            m_placeholder.height = image.height();
            m_placeholder.serial = nextSceneTextureSerial();
        }
        return m_placeholder;
    }
    return m_last;
}
