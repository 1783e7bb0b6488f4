#include "app/GuideExportAll.h"
#include "app/MainWindow.h"
#include "guide/ui/GuideTab.h"

#include <QAction>
#include <QDir>
#include <QImageReader>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

TEST(GuideExportAll, WritesEveryGuideTabOfTheWindowAsPng)
{
    auto window = std::make_unique<MainWindow>();
    window->setProperty("skipStartupSample", true);
    QAction *action = window->action(QStringLiteral("actionExportAllGuides"));
    ASSERT_NE(action, nullptr);
    EXPECT_TRUE(action->isEnabled());

    auto *first = qobject_cast<GuideTab *>(window->addGuideTab(QStringLiteral("Wall")));
    window->addCanvasTab();
    auto *second = qobject_cast<GuideTab *>(window->addGuideTab(QStringLiteral("Wall")));
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    GuideSettings small = second->settings();
    small.pixelWidth = 640;
    small.pixelHeight = 400;
    second->setSettings(small);

    const QList<GuideExportEntry> entries = guideExportEntries(window.get());
    ASSERT_EQ(entries.size(), 2);

    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QStringList written;
    QString error;
    ASSERT_TRUE(exportGuidesToDirectory(entries, dir.path(), &written, &error)) << error.toStdString();
    ASSERT_EQ(written.size(), 2);
    // Same titles do not overwrite each other.
    QStringList names = QDir(dir.path()).entryList(QDir::Files, QDir::Name);
    EXPECT_EQ(names.size(), 2);
    for (const QString &path : written) {
        QImageReader reader(path);
        const QImage image = reader.read();
        ASSERT_FALSE(image.isNull()) << path.toStdString();
        const GuideTab *tab = path.contains(QStringLiteral("640x400")) ? second : first;
        EXPECT_EQ(image.size(), QSize(tab->settings().pixelWidth, tab->settings().pixelHeight));
    }
    EXPECT_TRUE(names.contains(QStringLiteral("Wall_640x400.png")) || names.contains(QStringLiteral("Wall_640x400 (2).png")));

    EXPECT_FALSE(exportGuidesToDirectory(entries, dir.filePath(QStringLiteral("missing")), nullptr, &error));
    EXPECT_TRUE(error.contains(QStringLiteral("missing")));
}
