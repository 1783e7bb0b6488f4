// Any bytes: the decoder must return, never crash, and never allocate what a forged
// length prefix claims.
#include "common/SettingsContainer.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    QByteArray json;
    QString error;
    const bool ok = vg::decodeSettingsContainer(input, &json, &error);
    if (ok == !error.isEmpty())
        __builtin_trap();
    // A successful decode re-encodes to a container that decodes to the same text.
    if (ok && input.startsWith(vg::settingsContainerMagic())) {
        QByteArray again;
        if (!vg::decodeSettingsContainer(vg::encodeSettingsContainer(json), &again, &error) || again != json)
            __builtin_trap();
    }
    return 0;
}
