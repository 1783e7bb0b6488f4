#include "guide/GuidePngExport.h"

#include "guide/GuideRenderer.h"
#include "guide/PngWriter.h"

#include <exception>

QByteArray encodeGuidePng(const GuideSettings &settings, int threads)
{
    if (GuideBandPainter::paintsInBands(settings)) {
        try {
            const GuideBandPainter painter(settings);
            PngBandSource source;
            source.size = renderedGuideSize(settings);
            source.bands = painter.bands();
            source.paint = [&painter](int index, QImage &rows) { painter.paintBand(index, rows); };
            bool translucent = false;
            QByteArray png = encodeOpaquePngInBands(source, threads, &translucent);
            // Guides are opaque; should one not be, its alpha is kept by the whole-image path.
            if (!png.isEmpty() || !translucent)
                return png;
        } catch (const std::exception &) {
            return {};
        }
    }
    const QImage image = renderGuideImage(settings, threads);
    return image.isNull() ? QByteArray() : encodePng(image, threads);
}
