#include "guide/ui/GuideTab.h"
#include "guide/ui/GuidePreviewWidget.h"
#include "guide/ui/LayerListWidget.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTranslator>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include <cstdio>

// Writes a screenshot of a 4K guide tab with the projector array and its exported PNG into
// the folder named by VG_GUIDE_SCREENSHOT_DIR, for looking at; skipped when it is unset.
TEST(GuideTabScreenshot, FourKGuideWithProjectorInfo)
{
    const QString out = qEnvironmentVariable("VG_GUIDE_SCREENSHOT_DIR");
    if (out.isEmpty())
        GTEST_SKIP() << "VG_GUIDE_SCREENSHOT_DIR not set";
    QDir().mkpath(out);
    GuideTab tab(nullptr, QDir(out).filePath(QStringLiteral("no-style.vss")));
    tab.setProperty("fallbackTabTitle", QStringLiteral("Guide 1"));
    tab.resize(1480, 880);
    tab.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&tab));
    GuideSettings s = tab.settings();
    s.realWidth = 7200;
    s.realHeight = 4050;
    s.pixelWidth = 3840;
    s.pixelHeight = 2160;
    s.rows = 18;
    s.projectorCount = 2;
    s.projectorCountY = 1;
    s.projectorWidth = 1920;
    s.projectorHeight = 1200;
    s.projectorThrowRatio = 1.2;
    s.displayProjectorInfo = true;
    s.displayCircle = true;
    s.explain = QStringLiteral("Main hall, north wall");
    tab.setSettings(s);
    ASSERT_TRUE(tab.waitForGuideImage());
    QTest::qWait(100);
    EXPECT_TRUE(tab.grab().save(QDir(out).filePath(QStringLiteral("guide-tab-4k.png"))));
    QString error;
    EXPECT_TRUE(tab.exportPng(QDir(out).filePath(tab.suggestedFileName()), &error)) << error.toStdString();

    tab.layerList()->addMaskLayer(QStringLiteral("circle"));
    ASSERT_TRUE(tab.waitForGuideImage());
    QTest::qWait(50);
    if (auto *scroll = tab.findChild<QScrollArea *>(QStringLiteral("vantreoGuideControls")))
        scroll->verticalScrollBar()->setValue(scroll->verticalScrollBar()->maximum());
    QTest::qWait(50);
    EXPECT_TRUE(tab.grab().save(QDir(out).filePath(QStringLiteral("guide-tab-4k-projector.png"))));

    tab.preview()->setView(1.0, QPointF(1920, 1080));
    QTest::qWait(50);
    EXPECT_TRUE(tab.grab().save(QDir(out).filePath(QStringLiteral("guide-tab-4k-100.png"))));

    // How long one repaint of the preview takes on an 8K guide, zoomed out and at 100 %.
    s.realWidth = 7680;
    s.realHeight = 4320;
    s.pixelWidth = 7680;
    s.pixelHeight = 4320;
    tab.setSettings(s);
    ASSERT_TRUE(tab.waitForGuideImage());
    for (double zoom : {0.0, 0.3, 1.0, 4.0}) {
        if (zoom == 0.0)
            tab.preview()->fitToView();
        else
            tab.preview()->setView(zoom, QPointF(3000, 2000));
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 20; ++i)
            tab.preview()->repaint();
        std::printf("8K preview repaint at zoom %.3f: %.2f ms\n", tab.preview()->zoom(), timer.nsecsElapsed() / 20.0e6);
    }

    QTranslator korean;
    if (korean.load(QStringLiteral(":/i18n/VantreoGuide_ko.qm"))) {
        QCoreApplication::installTranslator(&korean);
        QTest::qWait(50);
        tab.preview()->fitToView();
        QTest::qWait(50);
        EXPECT_TRUE(tab.grab().save(QDir(out).filePath(QStringLiteral("guide-tab-8k-ko.png"))));
        QCoreApplication::removeTranslator(&korean);
    }
}
