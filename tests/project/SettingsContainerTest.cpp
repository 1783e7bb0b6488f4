#include "common/SettingsContainer.h"

#include <gtest/gtest.h>

#include <QList>
#include <QtEndian>

using namespace vg;

namespace {

QByteArray header(quint32 version)
{
    QByteArray out = settingsContainerMagic();
    uchar bytes[4];
    qToLittleEndian<quint32>(version, bytes);
    out.append(reinterpret_cast<const char *>(bytes), 4);
    return out;
}

QByteArray bigEndian(quint32 value)
{
    uchar bytes[4];
    qToBigEndian<quint32>(value, bytes);
    return QByteArray(reinterpret_cast<const char *>(bytes), 4);
}

struct Decoded {
    bool ok = false;
    QByteArray json;
    QString error;
};

Decoded decode(const QByteArray &data)
{
    Decoded d;
    d.ok = decodeSettingsContainer(data, &d.json, &d.error);
    return d;
}

} // namespace

TEST(SettingsContainer, WritesTheExactHeaderBytes)
{
    const QByteArray out = encodeSettingsContainer("{\"a\": 1}");
    const uchar head[16] = {0x89, 'V', 'T', 'G', 'U', 'I', 'D', 'E', 0x0D, 0x0A, 0x1A, 0x0A, 1, 0, 0, 0};
    ASSERT_GE(out.size(), 16 + 4);
    EXPECT_EQ(out.left(16), QByteArray(reinterpret_cast<const char *>(head), 16));
    // The payload is the length-prefixed zlib form, readable by the stock reader.
    EXPECT_EQ(qUncompress(out.mid(16)), QByteArray("{\"a\": 1}"));
    EXPECT_EQ(out.mid(16, 4), bigEndian(8));
}

TEST(SettingsContainer, RoundTripIsByteForByte)
{
    QByteArray json;
    for (int i = 0; i < 5000; ++i)
        json += QByteArray::number(i * 7919 % 1000) + "\xc3\xa9 ,\n";
    const Decoded d = decode(encodeSettingsContainer(json));
    ASSERT_TRUE(d.ok) << d.error.toStdString();
    EXPECT_EQ(d.json, json);
}

TEST(SettingsContainer, ReadsPayloadsOfTheStockWriter)
{
    const QByteArray json = "{\"guides\": []}";
    const Decoded d = decode(header(1) + qCompress(json, 1));
    ASSERT_TRUE(d.ok);
    EXPECT_EQ(d.json, json);
}

TEST(SettingsContainer, DataWithoutMagicPassesThrough)
{
    for (const QByteArray &data : {QByteArray(), QByteArray("{\"x\":1}"), QByteArray("01234567890"),
                                   QByteArray("0123456789ab"), settingsContainerMagic().left(11),
                                   QByteArray("\x89VTGUIDE\r\n\x1a\x0b....", 16)}) {
        const Decoded d = decode(data);
        EXPECT_TRUE(d.ok);
        EXPECT_EQ(d.json, data);
        EXPECT_TRUE(d.error.isEmpty());
    }
}

TEST(SettingsContainer, ShortContainersAreTruncated)
{
    for (int extra = 0; extra < 4; ++extra) {
        const Decoded d = decode(settingsContainerMagic() + QByteArray(extra, '\x01'));
        EXPECT_FALSE(d.ok);
        EXPECT_EQ(d.error, QStringLiteral("Binary settings file is truncated."));
    }
}

TEST(SettingsContainer, OtherVersionsAreRefused)
{
    const QByteArray payload = qCompress("{}", 9);
    for (quint32 version : {0u, 2u, 0xffffffffu}) {
        const Decoded d = decode(header(version) + payload);
        EXPECT_FALSE(d.ok);
        EXPECT_EQ(d.error, QStringLiteral("Unsupported binary settings version: %1").arg(version));
    }
    EXPECT_EQ(decode(header(2)).error, QStringLiteral("Unsupported binary settings version: 2"));
}

TEST(SettingsContainer, BadPayloadsFailToDecompress)
{
    const QString text = QStringLiteral("Binary settings payload could not be decompressed.");
    const QByteArray good = qCompress("{\"guides\": [1, 2, 3]}", 9);
    QByteArray corrupt = good;
    corrupt[10] = char(corrupt[10] ^ 0x55);
    QByteArray shortLength = good;
    shortLength.replace(0, 4, bigEndian(5));
    QByteArray longLength = good;
    longLength.replace(0, 4, bigEndian(30));
    const QList<QByteArray> payloads = {
        QByteArray(),                  // magic and version only
        QByteArray("\0\0\0", 3),
        bigEndian(0) + qCompress(QByteArray()).mid(4), // an empty document
        corrupt,
        good.left(good.size() - 3),    // stream cut short
        shortLength,
        longLength,
        bigEndian(12) + QByteArray("not a zlib stream"),
    };
    for (const QByteArray &payload : payloads) {
        const Decoded d = decode(header(1) + payload);
        EXPECT_FALSE(d.ok) << payload.toHex().toStdString();
        EXPECT_EQ(d.error, text);
    }
}

TEST(SettingsContainer, ForgedHugeLengthFailsWithoutAllocating)
{
    // Claims 4 GiB and 1 GiB + 1 of output from a stream of a few bytes; the decoder
    // must refuse these at once instead of reserving the memory.
    const QByteArray stream = qCompress("{}", 9).mid(4);
    for (quint32 claimed : {0xffffffffu, 0x40000001u, 0x10000000u}) {
        const Decoded d = decode(header(1) + bigEndian(claimed) + stream);
        EXPECT_FALSE(d.ok);
        EXPECT_EQ(d.error, QStringLiteral("Binary settings payload could not be decompressed."));
    }
}

TEST(SettingsContainer, HighlyCompressibleDataStillDecodes)
{
    // Close to the best ratio deflate reaches; the size guard must not refuse it.
    const QByteArray json(8 * 1024 * 1024, ' ');
    const Decoded d = decode(encodeSettingsContainer(json));
    ASSERT_TRUE(d.ok);
    EXPECT_EQ(d.json.size(), json.size());
}

TEST(SettingsContainer, TrailingBytesAfterTheStreamAreIgnored)
{
    const Decoded d = decode(encodeSettingsContainer("{}") + "garbage");
    ASSERT_TRUE(d.ok);
    EXPECT_EQ(d.json, QByteArray("{}"));
}
