#pragma once

#include "exchange/ExportImageSource.h"
#include "scene/gl/UvLutGlProbe.h"

#include <memory>

// The GL layer's side of the exporters' picture interface: the projector placeholder as the
// renderer draws it, and 3D views rendered off screen.
class GlExportImageSource : public vg::exchange::ExportImageSource
{
public:
    explicit GlExportImageSource(QList<GuideSettings> guides = {});

    QImage projectorPlaceholder(int width, int height, double throwRatio) override;
    bool renderSceneView(const Guide3DViewSettings &view, const vg::exchange::ExportViewRender &request, QImage *image,
                         QString *error) override;
    vg::exchange::UvLutGpuProbe *uvLutProbe() override;

private:
    std::unique_ptr<UvLutGlProbe> m_uvLutProbe;
};
