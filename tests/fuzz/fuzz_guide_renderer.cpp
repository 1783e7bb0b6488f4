// Any bytes as a guide JSON object, drawn on a small image. Whatever the settings say
// (cell counts near the integer limits, huge fonts, odd formats) the render must end
// quickly with an opaque image of the size the guide reports.
#include "guide/GuideRenderer.h"
#include "guide/GuideSettings.h"
#include "guide/ProjectorLayout.h"

#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Never destroyed: at exit the fuzzer runs static destructors after Qt's thread
    // storage is gone, and the application's font clean-up would then crash.
    static QGuiApplication *app = new QGuiApplication(*argc, *argv);
    Q_UNUSED(app);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const QJsonDocument doc = QJsonDocument::fromJson(input);
    if (!doc.isObject())
        return 0;
    GuideSettings s = guideSettingsFromJson(doc.object());
    applyGuideTabLoadStep(&s);
    // Small images keep each run short; every other field is left as the input has it.
    s.pixelWidth = 1 + int(unsigned(s.pixelWidth) % 160u);
    s.pixelHeight = 1 + int(unsigned(s.pixelHeight) % 120u);
    const QImage image = renderGuideImage(s, 1);
    if (image.isNull())
        __builtin_trap();
    if (image.size() != guideImageSize(s))
        __builtin_trap();
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(line[x]) != 255)
                __builtin_trap();
        }
    }
    return 0;
}
