#include "scene/gl/SceneTextureSource.h"

#include "scene/gl/SceneTextAtlas.h"

#include <QImageReader>

#include <atomic>

quint64 nextSceneTextureSerial()
{
    static std::atomic<quint64> serial{1};
    return serial.fetch_add(1);
}

namespace {

SceneTextureFrame frameFromImage(const QImage &image)
{
    SceneTextureFrame frame;
    if (image.isNull())
        return frame;
    frame.format = SceneTextureFrame::Rgba;
    frame.image = image;
    frame.width = image.width();
    frame.height = image.height();
    frame.serial = nextSceneTextureSerial();
    return frame;
}

} // namespace

ImageTextureSource::ImageTextureSource(const QImage &image)
    : m_frame(frameFromImage(image))
{
}

ImageFileTextureSource::ImageFileTextureSource(const QString &path)
    : m_path(path)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    // Large photographs are fine, but a broken header claiming gigapixels is not.
    QImageReader::setAllocationLimit(1024);
    m_frame = frameFromImage(reader.read());
}

PlaceholderTextureSource::PlaceholderTextureSource(int width, int height, double throwRatio)
    : m_frame(frameFromImage(projectorPlaceholderImage(width, height, throwRatio)))
{
}

Nv12TextureSource::Nv12TextureSource(int width, int height, const QByteArray &luma, const QByteArray &chroma)
{
    const qsizetype lumaBytes = qsizetype(width) * height;
    const qsizetype chromaBytes = qsizetype((width + 1) / 2) * ((height + 1) / 2) * 2;
    if (width <= 0 || height <= 0 || luma.size() < lumaBytes || chroma.size() < chromaBytes)
        return;
    m_frame.format = SceneTextureFrame::Nv12;
    m_frame.width = width;
    m_frame.height = height;
    m_frame.luma = luma;
    m_frame.chroma = chroma;
    m_frame.serial = nextSceneTextureSerial();
}
