#include "canvas/CanvasGuideSources.h"

#include "guide/GuideRenderer.h"
#include "guide/ProjectorLayout.h"

CanvasSources renderCanvasSources(const QList<GuideSettings> &guides, const CanvasTabSettings &canvas)
{
    CanvasSources sources;
    sources.guides.resize(guides.size());
    for (const CanvasObjectSettings &object : canvas.objects) {
        if (canvasObjectKind(object) != CanvasObjectKind::GuideImage || object.guide_index >= guides.size())
            continue;
        CanvasGuideSource &source = sources.guides[object.guide_index];
        if (!source.image.image.isNull())
            continue;
        GuideSettings settings = guides[object.guide_index];
        applyGuideTabLoadStep(&settings);
        source.image.image = renderGuideImage(settings);
        source.image.pixelSize = source.image.image.size();
        source.realSizeMm = QSizeF(settings.realWidth, settings.realHeight);
    }
    loadCanvasPictures(canvas, &sources);
    return sources;
}
