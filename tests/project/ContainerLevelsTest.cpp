#include "common/SettingsContainer.h"

#include <QtEndian>

#include <gtest/gtest.h>

namespace {

// Text with long repeats and noise, so every level compresses it differently.
QByteArray sampleJson()
{
    QByteArray json = "{\"guides\": [";
    for (int i = 0; i < 4000; ++i)
        json += "{\"name\": \"Guide " + QByteArray::number(i) + "\", \"color\": \"#" +
                QByteArray::number((i * 2654435761u) & 0xffffff, 16).rightJustified(6, '0') + "\"},\n";
    json += "{}]}";
    return json;
}

// Whatever level a container is written at, the reader of older builds (the stock length-
// prefixed zlib reader) and ours read back the same text, and the header stays the same.
TEST(SettingsContainerLevels, EveryLevelReadsBackWithBothReaders)
{
    const QByteArray json = sampleJson();
    qsizetype previousLevelNineSize = 0;
    for (int level : {1, 4, 6, 9, 12, 0, 99}) {
        const QByteArray container = vg::encodeSettingsContainer(json, level);
        ASSERT_TRUE(container.startsWith(vg::settingsContainerMagic())) << level;
        EXPECT_EQ(qFromLittleEndian<quint32>(container.constData() + 12), vg::kSettingsContainerVersion);
        EXPECT_EQ(qFromBigEndian<quint32>(container.constData() + 16), quint32(json.size())) << level;
        EXPECT_LT(container.size(), json.size() / 3) << level;

        QByteArray ours;
        QString error;
        ASSERT_TRUE(vg::decodeSettingsContainer(container, &ours, &error)) << level << error.toStdString();
        EXPECT_EQ(ours, json) << level;
        EXPECT_EQ(qUncompress(container.mid(vg::kSettingsContainerHeaderSize)), json) << level;
        if (level == 9)
            previousLevelNineSize = container.size();
    }
    // The saving level is chosen to stay close to level 9's size.
    const qsizetype saved = vg::encodeSettingsContainer(json).size();
    EXPECT_LE(double(saved), 1.10 * double(previousLevelNineSize));
}

} // namespace
