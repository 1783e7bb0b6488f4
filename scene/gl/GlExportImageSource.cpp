#include "scene/gl/GlExportImageSource.h"

#include "scene/gl/OffscreenSceneRender.h"
#include "scene/gl/SceneTextAtlas.h"

GlExportImageSource::GlExportImageSource(QList<GuideSettings> guides)
    : ExportImageSource(std::move(guides))
{
}

QImage GlExportImageSource::projectorPlaceholder(int width, int height, double throwRatio)
{
    return projectorPlaceholderImage(width, height, throwRatio);
}

bool GlExportImageSource::renderSceneView(const Guide3DViewSettings &view, const vg::exchange::ExportViewRender &request,
                                          QImage *image, QString *error)
{
    SceneViewRenderOptions options;
    options.size = request.size;
    options.frustum = request.frustum;
    options.heatmap = request.heatmap;
    if (request.objectIndex >= 0) {
        options.camera = SceneCameraChoice::Object;
        options.objectIndex = request.objectIndex;
    }
    return renderSceneViewImage(view, guides(), options, image, error);
}

vg::exchange::UvLutGpuProbe *GlExportImageSource::uvLutProbe()
{
    if (!m_uvLutProbe)
        m_uvLutProbe = std::make_unique<UvLutGlProbe>();
    return m_uvLutProbe.get();
}
