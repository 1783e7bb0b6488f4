#include "common/SettingsContainer.h"

#include <libdeflate.h>

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <memory>

namespace vg {

namespace {

// Deflate cannot expand a stream by more than this factor (258-byte matches coded in
// two bits at best); a claimed size beyond it cannot be genuine and is refused before
// any allocation, which is what keeps a forged length prefix from costing memory.
constexpr qint64 kMaxDeflateRatio = 1032;

QString decompressError()
{
    return QStringLiteral("Binary settings payload could not be decompressed.");
}

struct DecompressorDeleter {
    void operator()(libdeflate_decompressor *d) const { libdeflate_free_decompressor(d); }
};

// The length-prefixed zlib form of qCompress, read strictly: the stream must
// decompress to exactly the announced size. Bytes after the stream are ignored, as
// the Qt reader does.
QByteArray uncompressPayload(const char *data, qint64 size)
{
    if (size <= 4)
        return {};
    const quint32 expected = qFromBigEndian<quint32>(reinterpret_cast<const uchar *>(data));
    const qint64 streamSize = size - 4;
    if (expected == 0 || qint64(expected) > kSettingsContainerMaxPayload
        || qint64(expected) > streamSize * kMaxDeflateRatio + kMaxDeflateRatio)
        return {};

    std::unique_ptr<libdeflate_decompressor, DecompressorDeleter> decompressor(libdeflate_alloc_decompressor());
    if (!decompressor)
        return {};
    QByteArray out(qsizetype(expected), Qt::Uninitialized);
    size_t consumed = 0;
    // A null actual-output pointer makes libdeflate insist on exactly `expected` bytes.
    const libdeflate_result result = libdeflate_zlib_decompress_ex(
        decompressor.get(), data + 4, size_t(streamSize), out.data(), size_t(expected), &consumed, nullptr);
    if (result != LIBDEFLATE_SUCCESS)
        return {};
    return out;
}

struct CompressorDeleter {
    void operator()(libdeflate_compressor *c) const { libdeflate_free_compressor(c); }
};

} // namespace

QByteArray settingsContainerMagic()
{
    static const char bytes[12] = {char(0x89), 'V', 'T', 'G', 'U', 'I', 'D', 'E', 0x0D, 0x0A, 0x1A, 0x0A};
    return QByteArray(bytes, 12);
}

QByteArray encodeSettingsContainer(const QByteArray &json, int level)
{
    // Header, length prefix and the zlib stream go straight into one buffer: the stream is
    // the same length-prefixed form qCompress writes, made by libdeflate, which is several
    // times faster at equal size.
    level = std::clamp(level, 1, 12);
    constexpr qsizetype prefix = kSettingsContainerHeaderSize + 4;
    std::unique_ptr<libdeflate_compressor, CompressorDeleter> compressor(libdeflate_alloc_compressor(level));
    const size_t bound = compressor ? libdeflate_zlib_compress_bound(compressor.get(), size_t(json.size())) : 0;
    QByteArray out;
    size_t written = 0;
    if (compressor) {
        out = QByteArray(prefix + qsizetype(bound), Qt::Uninitialized);
        written = libdeflate_zlib_compress(compressor.get(), json.constData(), size_t(json.size()),
                                           out.data() + prefix, bound);
    }
    if (written == 0) {
        out = QByteArray(prefix, Qt::Uninitialized) + qCompress(json, std::min(level, 9)).mid(4);
        written = size_t(out.size() - prefix);
    }
    out.truncate(prefix + qsizetype(written));
    out.squeeze();
    const QByteArray magic = settingsContainerMagic();
    std::memcpy(out.data(), magic.constData(), size_t(magic.size()));
    qToLittleEndian<quint32>(kSettingsContainerVersion, reinterpret_cast<uchar *>(out.data()) + magic.size());
    qToBigEndian<quint32>(quint32(json.size()), reinterpret_cast<uchar *>(out.data()) + kSettingsContainerHeaderSize);
    return out;
}

bool decodeSettingsContainer(const QByteArray &data, QByteArray *json, QString *error)
{
    const QByteArray magic = settingsContainerMagic();
    if (data.size() < magic.size() || !data.startsWith(magic)) {
        if (json)
            *json = data;
        return true;
    }
    if (data.size() < kSettingsContainerHeaderSize) {
        if (error)
            *error = QStringLiteral("Binary settings file is truncated.");
        return false;
    }
    const quint32 version = qFromLittleEndian<quint32>(reinterpret_cast<const uchar *>(data.constData() + 12));
    if (version != kSettingsContainerVersion) {
        if (error)
            *error = QStringLiteral("Unsupported binary settings version: %1").arg(version);
        return false;
    }
    QByteArray text = uncompressPayload(data.constData() + kSettingsContainerHeaderSize,
                                        data.size() - kSettingsContainerHeaderSize);
    if (text.isEmpty()) {
        if (error)
            *error = decompressError();
        return false;
    }
    if (json)
        *json = std::move(text);
    return true;
}

} // namespace vg
