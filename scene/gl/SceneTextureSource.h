#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include <functional>
#include <memory>

struct GuideObject;

// One picture of a projector or surface texture. Still sources hand over an image; video
// sources may hand over NV12 planes, which the NV12 shader variants convert on the GPU.
struct SceneTextureFrame {
    enum Format { None, Rgba, Nv12 };
    Format format = None;
    QImage image;        // Rgba: any QImage format, converted when uploaded
    QByteArray luma;     // Nv12: width × height bytes
    QByteArray chroma;   // Nv12: interleaved U, V at half width and half height
    int width = 0;
    int height = 0;
    quint64 serial = 0;  // changes whenever the picture changes; uploads are skipped otherwise

    bool isValid() const { return format != None && width > 0 && height > 0; }
};

// The one texture interface of the renderer: guide images, image files and placeholders
// now, movie, Spout and NDI sources through the same door.
class SceneTextureSource
{
public:
    virtual ~SceneTextureSource() = default;
    virtual SceneTextureFrame currentFrame() = 0;
};

// A fixed image, such as a guide tab's rendered guide.
class ImageTextureSource : public SceneTextureSource
{
public:
    explicit ImageTextureSource(const QImage &image);
    SceneTextureFrame currentFrame() override { return m_frame; }

private:
    SceneTextureFrame m_frame;
};

// An image file, read once; a file that cannot be read gives no frame.
class ImageFileTextureSource : public SceneTextureSource
{
public:
    explicit ImageFileTextureSource(const QString &path);
    SceneTextureFrame currentFrame() override { return m_frame; }
    QString path() const { return m_path; }
    bool isLoaded() const { return m_frame.isValid(); }

private:
    QString m_path;
    SceneTextureFrame m_frame;
};

// The projector placeholder ("%1 x %2px", "Throw Ratio %1").
class PlaceholderTextureSource : public SceneTextureSource
{
public:
    PlaceholderTextureSource(int width, int height, double throwRatio);
    SceneTextureFrame currentFrame() override { return m_frame; }

private:
    SceneTextureFrame m_frame;
};

// Frames built from NV12 planes, for video sources and tests of the NV12 path.
class Nv12TextureSource : public SceneTextureSource
{
public:
    Nv12TextureSource(int width, int height, const QByteArray &luma, const QByteArray &chroma);
    SceneTextureFrame currentFrame() override { return m_frame; }

private:
    SceneTextureFrame m_frame;
};

// Chooses the texture of an object: (object, its scene index, true for a projector image,
// false for a surface texture). Returning nullptr lets the renderer's own rules decide.
using SceneTextureResolver =
    std::function<std::shared_ptr<SceneTextureSource>(const GuideObject &, int objectIndex, bool projectorImage)>;

quint64 nextSceneTextureSerial();
