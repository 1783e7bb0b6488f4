#pragma once

#include <QByteArray>
#include <QString>

// The compressed wrapper every project file (and other binary settings) is written in.
// Layout: 8 bytes of magic (0x89 "VTGUIDE"), 4 bytes 0D 0A 1A 0A, a little-endian
// uint32 version (always 1), then the payload: a big-endian uint32 length of the
// uncompressed data followed by one zlib stream of it.
namespace vg {

inline constexpr int kSettingsContainerHeaderSize = 16;
inline constexpr quint32 kSettingsContainerVersion = 1;
// Larger payloads are refused before anything is allocated for them.
inline constexpr qint64 kSettingsContainerMaxPayload = qint64(1) << 30;

// The 12 magic bytes that open a container.
QByteArray settingsContainerMagic();

// The compression level of saved containers: chosen on the large bench project as the
// fastest level whose file stays within 10 % of the smallest (see docs/performance.md).
inline constexpr int kSettingsContainerLevel = 6;

// Wraps the JSON text, compressed at `level` (1 to 12; every level reads the same way).
QByteArray encodeSettingsContainer(const QByteArray &json, int level = kSettingsContainerLevel);

// Unwraps a container. Data that does not start with the magic is returned unchanged
// (a bare JSON file). On failure returns false and sets error (either may be null).
bool decodeSettingsContainer(const QByteArray &data, QByteArray *json, QString *error);

} // namespace vg
