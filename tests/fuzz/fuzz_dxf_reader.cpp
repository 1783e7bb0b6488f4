// Any bytes as a DXF drawing: the reader must return, never crash or hang, and what it
// returns must be usable geometry.
#include "exchange/DxfReader.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    vg::exchange::DxfDrawing drawing;
    QString error;
    const bool ok = vg::exchange::readDxfData(input, &drawing, &error);
    if (ok == !error.isEmpty())
        __builtin_trap();
    if (!ok)
        return 0;
    if (drawing.segments.empty() || drawing.segments.size() % 2 != 0 || drawing.entityCount <= 0)
        __builtin_trap();
    for (size_t i = 0; i < drawing.segments.size(); i += 2) {
        const auto &a = drawing.segments[i];
        const auto &b = drawing.segments[i + 1];
        for (double c : {a.x, a.y, a.z, b.x, b.y, b.z}) {
            if (!std::isfinite(c))
                __builtin_trap();
        }
        if (a.x == b.x && a.y == b.y && a.z == b.z)
            __builtin_trap();
    }
    return 0;
}
