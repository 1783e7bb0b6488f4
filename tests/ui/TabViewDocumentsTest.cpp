#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"
#include "app/TabViewDocuments.h"
#include "canvas/ui/CanvasTab.h"
#include "guide/ui/GuideTab.h"

#include <QAction>
#include <QProcess>
#include <QStatusBar>
#include <QTemporaryDir>

#include <zip.h>

namespace {

class TabViewDocumentsTest : public ShellSettingsFixture
{
};

} // namespace

// A guide, a canvas with a custom title and a 3D view, none of them shown: the File menu
// writes a three-page PDF and a three-slide PPTX; a window without tabs says so.
TEST_F(TabViewDocumentsTest, FileMenuWritesOnePagePerTab)
{
    QTemporaryDir dir;
    MainWindow window;
    window.setProperty("skipStartupSample", true);
    auto *documents = window.findChild<TabViewDocuments *>();
    ASSERT_NE(documents, nullptr);
    QString nextPath;
    QStringList messages;
    documents->setSaveDialog([&](const QString &title, const QString &, const QString &filter) {
        messages << title + '|' + filter;
        return nextPath;
    });
    documents->setMessageSink([&](const QString &title, const QString &text, bool) { messages << title + '|' + text; });

    QAction *pdf = window.action(QStringLiteral("actionExportTabViewsToPdf"));
    QAction *pptx = window.action(QStringLiteral("actionExportTabViewsToPptx"));
    ASSERT_TRUE(pdf->isEnabled() && pptx->isEnabled());
    pdf->trigger();
    EXPECT_EQ(messages, QStringList{QStringLiteral("Export Tab Views|There are no tab views to export.")});
    messages.clear();

    auto *guide = qobject_cast<GuideTab *>(window.addGuideTab());
    GuideSettings small;
    small.pixelWidth = 320;
    small.pixelHeight = 200;
    small.realWidth = 3200;
    small.realHeight = 2000;
    guide->setSettings(small);
    auto *canvas = qobject_cast<CanvasTab *>(window.addCanvasTab());
    canvas->addGuides({0});
    CanvasTabSettings settings = canvas->settings();
    settings.document_custom_title_enabled = true;
    settings.document_custom_title = QStringLiteral("Front of house");
    canvas->setSettings(settings);
    window.add3DViewTab();

    nextPath = dir.filePath(QStringLiteral("views"));
    pdf->trigger();
    ASSERT_EQ(messages.size(), 2) << messages.join('\n').toStdString();
    EXPECT_EQ(messages[0], QStringLiteral("Export Tab Views to PDF|PDF Files (*.pdf)"));
    EXPECT_EQ(messages[1], QStringLiteral("Export complete|PDF saved successfully."));
    EXPECT_TRUE(window.statusBar()->currentMessage().startsWith(QStringLiteral("Tab views exported to PDF: ")));
    QProcess info;
    info.start(QStringLiteral("pdfinfo"), {dir.filePath(QStringLiteral("views.pdf"))});
    ASSERT_TRUE(info.waitForFinished(30000));
    EXPECT_TRUE(QString::fromUtf8(info.readAllStandardOutput()).contains(QRegularExpression(QStringLiteral("Pages:\\s+3\\n"))));

    messages.clear();
    pptx->trigger();
    ASSERT_EQ(messages.size(), 2) << messages.join('\n').toStdString();
    EXPECT_EQ(messages[0], QStringLiteral("Export Tab Views to PPTX|PowerPoint Files (*.pptx)"));
    EXPECT_EQ(messages[1], QStringLiteral("Export complete|PowerPoint saved successfully."));
    int code = 0;
    zip_t *zip = zip_open(QFile::encodeName(dir.filePath(QStringLiteral("views.pptx"))).constData(), ZIP_RDONLY, &code);
    ASSERT_NE(zip, nullptr);
    EXPECT_GE(zip_name_locate(zip, "ppt/slides/slide3.xml", 0), 0);
    EXPECT_LT(zip_name_locate(zip, "ppt/slides/slide4.xml", 0), 0);
    zip_discard(zip);

    // The pages: the 3D view's is a render, not an empty page.
    QList<QImage> pages;
    QString error;
    ASSERT_TRUE(documents->tabPages(&pages, &error)) << error.toStdString();
    ASSERT_EQ(pages.size(), 3);
    if (const QString shots = qEnvironmentVariable("VG_CANVAS_SCREENSHOT_DIR"); !shots.isEmpty())
        pages[2].save(shots + QStringLiteral("/document_3d_page.png"));
    int rendered = 0;
    for (int y = 200; y < 1200; y += 10)
        for (int x = 100; x < 1900; x += 10)
            rendered += pages[2].pixelColor(x, y) != QColor(0x20, 0x22, 0x26);
    EXPECT_GT(rendered, 10000);
}
