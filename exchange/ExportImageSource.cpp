#include "exchange/ExportImageSource.h"

#include "guide/GuideRenderer.h"
#include "scene/GuideObject.h"
#include "scene/LensModel.h"

#include <QCoreApplication>
#include <QImageReader>

#include <algorithm>

namespace vg::exchange {

namespace {

constexpr int kMaxImageSide = 16384;

} // namespace

ExportImageSource::ExportImageSource(QList<GuideSettings> guides)
    : m_guides(std::move(guides))
{
}

QImage ExportImageSource::guideImage(int guideTabIndex)
{
    if (guideTabIndex < 0 || guideTabIndex >= m_guides.size())
        return {};
    auto it = m_guideImages.constFind(guideTabIndex);
    if (it != m_guideImages.constEnd())
        return it.value();
    const QImage image = renderGuideImage(m_guides.at(guideTabIndex));
    m_guideImages.insert(guideTabIndex, image);
    return image;
}

QImage ExportImageSource::imageFile(const QString &path)
{
    if (path.isEmpty())
        return {};
    auto it = m_files.constFind(path);
    if (it != m_files.constEnd())
        return it.value();
    QImageReader reader(path);
    reader.setAutoTransform(true);
    QImage image;
    const QSize size = reader.size();
    if (!size.isValid() || (size.width() <= kMaxImageSide && size.height() <= kMaxImageSide))
        image = reader.read();
    if (!image.isNull() && (image.width() > kMaxImageSide || image.height() > kMaxImageSide))
        image = QImage();
    m_files.insert(path, image);
    return image;
}

QImage ExportImageSource::projectorPlaceholder(int, int, double)
{
    return {};
}

bool ExportImageSource::renderSceneView(const Guide3DViewSettings &, const ExportViewRender &, QImage *image,
                                        QString *error)
{
    if (image)
        *image = QImage();
    if (error)
        *error = QCoreApplication::translate("ExportImageSource", "GPU rendering is not available for this export.");
    return false;
}

QImage ExportImageSource::surfaceTexture(const GuideObject &object)
{
    if (!object.texture_visible)
        return {};
    if (object.texture_guide_index >= 0) {
        const QImage guide = guideImage(object.texture_guide_index);
        if (!guide.isNull())
            return guide;
    }
    return imageFile(object.texture_file_path);
}

QImage ExportImageSource::projectorImage(const QVector<GuideObject> &objects, int index)
{
    if (index < 0 || index >= objects.size())
        return {};
    const QImage image = projectorSourceImage(objects, index);
    if (!image.isNull())
        return image;
    const GuideObject &projector = objects.at(index);
    return projectorPlaceholder(std::max(1, projector.projector_resolution_width),
                                std::max(1, projector.projector_resolution_height),
                                vg::scene::clampedThrowRatio(projector.throw_rate));
}

QImage ExportImageSource::projectorSourceImage(const QVector<GuideObject> &objects, int index)
{
    if (index < 0 || index >= objects.size())
        return {};
    const GuideObject &projector = objects.at(index);
    const int guideRef = projector.projector_image_guide_index;
    if (guideRef >= 0) {
        // The reference names a guide object of the scene, whose guide tab has the image.
        QImage image;
        if (guideRef < objects.size() && objects.at(guideRef).guide_index == KindGuide)
            image = guideImage(objects.at(guideRef).texture_guide_index);
        else
            image = guideImage(guideRef);
        if (!image.isNull())
            return image;
    }
    return imageFile(projector.projector_image_file_path);
}

} // namespace vg::exchange
