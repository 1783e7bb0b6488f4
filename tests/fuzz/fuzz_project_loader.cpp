// Any bytes as a project file, both as they are and wrapped in a container (so that the
// JSON reader is reached through the decompressing path too). A load that succeeds must
// write, read back and write again to the same text.
#include "common/SettingsContainer.h"
#include "project/ProjectFile.h"

#include <cstddef>
#include <cstdint>

namespace {

void check(const QByteArray &input)
{
    ProjectDocument doc;
    QString error;
    if (!loadProjectDocumentData(input, &doc, &error)) {
        if (error.isEmpty())
            __builtin_trap();
        return;
    }
    const QByteArray first = projectDocumentToJson(doc);
    ProjectDocument back;
    if (!loadProjectDocumentData(first, &back, &error))
        __builtin_trap();
    if (projectDocumentToJson(back) != first)
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    check(input);
    if (!input.startsWith(vg::settingsContainerMagic()))
        check(vg::encodeSettingsContainer(input));
    return 0;
}
