#pragma once

#include "guide/GuideSettings.h"
#include "scene/Guide3DViewSettings.h"

#include <QHash>
#include <QImage>
#include <QList>
#include <QSize>
#include <QString>

struct GuideObject;

namespace vg::exchange {

class UvLutGpuProbe;

// How a GPU render of a 3D view looks at the scene.
struct ExportViewRender {
    QSize size = QSize(1280, 720);
    int objectIndex = -1;   // look through this projector or camera; -1: the view's saved camera
    bool frustum = false;
    bool heatmap = false;
};

// The pictures an export needs and cannot draw itself. The exchange core links no GL: work
// on the GPU (3D view pages, look-up-table probes) and the renderer's own pictures come
// through this interface, which the GL layer implements (scene/gl/GlExportImageSource).
// The base class alone serves guides and image files and reports the GPU work as
// unavailable, which is what a caller without a GL context gets.
class ExportImageSource
{
public:
    explicit ExportImageSource(QList<GuideSettings> guides = {});
    virtual ~ExportImageSource() = default;

    // The rendered image of guide tab `guideTabIndex`; null when there is no such guide.
    // Rendered once per source with the guide renderer.
    virtual QImage guideImage(int guideTabIndex);
    // An image file as the renderer would show it; null when it cannot be read. Pictures
    // larger than 16384 pixels on a side are refused rather than allocated.
    virtual QImage imageFile(const QString &path);
    // The picture a projector without a source casts. Null here; the GL layer draws it.
    virtual QImage projectorPlaceholder(int width, int height, double throwRatio);

    // A 3D view rendered on the GPU, as the window shows it.
    virtual bool renderSceneView(const Guide3DViewSettings &view, const ExportViewRender &request, QImage *image,
                                 QString *error);

    // The UV look-up table's GPU probe; null when there is no GPU here.
    virtual UvLutGpuProbe *uvLutProbe() { return nullptr; }

    // The texture of a surface: its guide, else its image file; null when untextured.
    QImage surfaceTexture(const GuideObject &object);
    // The picture projector `index` casts: its guide, its image file, else the placeholder.
    QImage projectorImage(const QVector<GuideObject> &objects, int index);
    // The same without the placeholder: null when the projector has no readable picture.
    QImage projectorSourceImage(const QVector<GuideObject> &objects, int index);

    const QList<GuideSettings> &guides() const { return m_guides; }

private:
    QList<GuideSettings> m_guides;
    QHash<int, QImage> m_guideImages;
    QHash<QString, QImage> m_files;
};

} // namespace vg::exchange
