#include "guide/StyleDefaults.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {
void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}
} // namespace

TEST(StyleDefaults, FileLivesBesideTheProgram)
{
    EXPECT_TRUE(styleDefaultsFilePath().endsWith(QStringLiteral("/VantreoGuideStyle.vss")));
}

TEST(StyleDefaults, MissingFileKeepsDefaultsSilently)
{
    QTemporaryDir dir;
    GuideSettings s;
    QString error;
    EXPECT_TRUE(loadStyleDefaults(dir.filePath(QStringLiteral("VantreoGuideStyle.vss")), &s, &error));
    EXPECT_TRUE(error.isEmpty());
    EXPECT_EQ(s, GuideSettings());
}

TEST(StyleDefaults, SaveAndLoadCarryTheStyleOnly)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("VantreoGuideStyle.vss"));
    GuideSettings source;
    source.guidePattern = 0;
    source.numberTextFormat = 5;
    source.displayCircle = true;
    source.logoOpacity = 0.4;
    source.pixelWidth = 800; // not part of the style
    source.colors = {QColor(1, 2, 3)};
    QString error;
    ASSERT_TRUE(saveStyleDefaults(path, source, &error)) << error.toStdString();

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    EXPECT_EQ(root.value(QStringLiteral("file_type")).toString(), QStringLiteral("VantreoGuideStyle"));
    EXPECT_EQ(root.value(QStringLiteral("version")).toInt(), 1);
    EXPECT_FALSE(root.value(QStringLiteral("style")).toObject().contains(QStringLiteral("pixel_width")));

    GuideSettings target;
    ASSERT_TRUE(loadStyleDefaults(path, &target, &error));
    EXPECT_EQ(target.guidePattern, 0);
    EXPECT_EQ(target.numberTextFormat, 5);
    EXPECT_TRUE(target.displayCircle);
    EXPECT_DOUBLE_EQ(target.logoOpacity, 0.4);
    EXPECT_EQ(target.colors, source.colors);
    EXPECT_EQ(target.pixelWidth, 1920);
}

TEST(StyleDefaults, TopLevelKeysAreTheStyleWhenNoStyleObject)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("s.vss"));
    writeFile(path, R"({"file_type": "VantreoGuideStyle", "style": 3, "display_circle": true,
                        "number_text_format": 4, "logo_opacity": 7})");
    GuideSettings s;
    ASSERT_TRUE(loadStyleDefaults(path, &s));
    EXPECT_TRUE(s.displayCircle);
    // The completion of a guide read from a file follows.
    EXPECT_EQ(s.numberTextFormat, 0);
    EXPECT_DOUBLE_EQ(s.logoOpacity, 1.0);
}

TEST(StyleDefaults, BadFilesFailWithTheirTexts)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("s.vss"));
    GuideSettings s;
    QString error;
    writeFile(path, "{ not json");
    EXPECT_FALSE(loadStyleDefaults(path, &s, &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("Style default parse failed: "))) << error.toStdString();
    EXPECT_GT(error.size(), QStringLiteral("Style default parse failed: ").size());
    writeFile(path, "[1, 2]");
    EXPECT_FALSE(loadStyleDefaults(path, &s, &error));
    EXPECT_EQ(error, QStringLiteral("Style default root must be an object."));
    EXPECT_EQ(s, GuideSettings());

    error.clear();
    EXPECT_FALSE(saveStyleDefaults(dir.filePath(QStringLiteral("no/such/dir/s.vss")), s, &error));
    EXPECT_FALSE(error.isEmpty());
}
