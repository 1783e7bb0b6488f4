#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"
#include "canvas/CanvasNaming.h"
#include "canvas/CanvasPainter.h"
#include "canvas/ui/CanvasClipboard.h"
#include "canvas/ui/CanvasTab.h"
#include "canvas/ui/CanvasWidget.h"
#include "guide/ui/GuideTab.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTest>
#include <QUrl>

namespace {

// Small guides render fast; distinct row counts and a flip make their images different.
GuideSettings smallGuide(int rows, bool flip)
{
    GuideSettings s;
    s.pixelWidth = 320;
    s.pixelHeight = 200;
    s.realWidth = 3200;
    s.realHeight = 2000;
    s.rows = rows;
    s.flipH = flip;
    return s;
}

// Waits until a condition holds, processing events; false after the time-out.
bool waitFor(const std::function<bool()> &condition, int timeoutMs = 20000)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > timeoutMs)
            return false;
        QTest::qWait(10);
    }
    return true;
}

struct Recorded {
    QStringList warnings;
    QStringList savePrompts; // title|proposed path|filter
    QString nextSavePath;
    QString nextOpenPath;
};

class CanvasTabTest : public ShellSettingsFixture
{
protected:
    void SetUp() override
    {
        ShellSettingsFixture::SetUp();
        QStandardPaths::setTestModeEnabled(true);
        m_window = std::make_unique<MainWindow>();
        m_window->setProperty("skipStartupSample", true);
        m_window->resize(1400, 900);
    }

    void TearDown() override
    {
        m_window.reset();
        QStandardPaths::setTestModeEnabled(false);
        ShellSettingsFixture::TearDown();
    }

    GuideTab *addGuide(int rows, bool flip)
    {
        auto *guide = qobject_cast<GuideTab *>(m_window->addGuideTab());
        guide->setSettings(smallGuide(rows, flip));
        EXPECT_TRUE(guide->waitForGuideImage());
        return guide;
    }

    CanvasTab *addCanvas()
    {
        auto *canvas = qobject_cast<CanvasTab *>(m_window->addCanvasTab());
        CanvasTab::Dialogs dialogs;
        dialogs.warn = [this](const QString &title, const QString &text) { m_recorded.warnings << title + '|' + text; };
        dialogs.saveFile = [this](const QString &title, const QString &path, const QString &filter) {
            m_recorded.savePrompts << title + '|' + path + '|' + filter;
            return m_recorded.nextSavePath;
        };
        dialogs.openFile = [this](const QString &, const QString &, const QString &) { return m_recorded.nextOpenPath; };
        dialogs.chooseGuides = [](const QList<CanvasGuideTabSource> &sources) {
            QList<int> all;
            for (int i = 0; i < sources.size(); ++i)
                all << i;
            return all;
        };
        canvas->setDialogs(dialogs);
        return canvas;
    }

    std::unique_ptr<MainWindow> m_window;
    Recorded m_recorded;
    QTemporaryDir m_dir;
};

bool guidePreviewsReady(CanvasTab *canvas, int count)
{
    const CanvasSources &sources = canvas->canvasWidget()->sources();
    if (sources.guides.size() < count)
        return false;
    for (int i = 0; i < count; ++i) {
        if (!sources.guides[i].image.isValid())
            return false;
    }
    return true;
}

} // namespace

TEST_F(CanvasTabTest, GuidesStayBoundToTheirTabsWhenTabsMoveAndExportMatchesTheCore)
{
    GuideTab *first = addGuide(4, false);
    GuideTab *second = addGuide(9, true);
    CanvasTab *canvas = addCanvas();
    ASSERT_TRUE(canvas->addGuideInteractive());
    ASSERT_EQ(canvas->settings().objects.size(), 2);
    EXPECT_EQ(canvas->settings().objects[0].guide_index, 0);
    EXPECT_EQ(canvas->settings().objects[1].guide_index, 1);
    EXPECT_EQ(canvas->settings().objects[0].name, QStringLiteral("Guide 1"));
    ASSERT_TRUE(waitFor([&] { return guidePreviewsReady(canvas, 2); }));

    // Caption and the source rows carry the guide tabs' ids.
    auto *caption = canvas->findChild<QLabel *>(QStringLiteral("vantreoCanvasGuideSourceCaption"));
    ASSERT_NE(caption, nullptr);
    EXPECT_EQ(caption->text(), QStringLiteral("2 guide sources"));
    QList<int> ids;
    for (QWidget *w : canvas->findChildren<QWidget *>()) {
        if (w->property("vantreoCanvasGuideSourceId").isValid())
            ids << w->property("vantreoCanvasGuideSourceId").toInt();
    }
    EXPECT_EQ(ids, (QList<int>{first->property("guideSourceId").toInt(), second->property("guideSourceId").toInt()}));

    // The second guide tab moves in front of the first: the objects stay on their guides,
    // whose places in the project's guide list a tab move does not change.
    m_window->tabWidget()->tabBar()->moveTab(1, 0);
    const CanvasTabSettings moved = canvas->settings();
    EXPECT_EQ(moved.objects[0].guide_index, 0);
    EXPECT_EQ(moved.objects[1].guide_index, 1);
    EXPECT_EQ(canvas->guideSources().value(0).tab, first);

    // The window's export is the core's picture of the full-size guide images.
    m_recorded.nextSavePath = m_dir.filePath(QStringLiteral("sheet"));
    ASSERT_TRUE(canvas->exportCanvasPngInteractive());
    const QImage written(m_dir.filePath(QStringLiteral("sheet.png")));
    CanvasSources full;
    full.guides.append({QString(), CanvasImage{first->guideImage().size(), first->guideImage()}, QSizeF()});
    full.guides.append({QString(), CanvasImage{second->guideImage().size(), second->guideImage()}, QSizeF()});
    const QImage expected = renderCanvasImage(moved, full);
    ASSERT_FALSE(expected.isNull());
    EXPECT_EQ(written.convertToFormat(QImage::Format_RGB32), expected.convertToFormat(QImage::Format_RGB32));
    ASSERT_EQ(m_recorded.savePrompts.size(), 1);
    EXPECT_TRUE(m_recorded.savePrompts[0].startsWith(QStringLiteral("Export Canvas PNG|")));
    EXPECT_TRUE(m_recorded.savePrompts[0].contains(canvasExportFileName(written.size())));
    EXPECT_TRUE(m_recorded.savePrompts[0].endsWith(QStringLiteral("|PNG Images (*.png)")));
    EXPECT_EQ(QSettings().value(QStringLiteral("paths/canvasExportDirectory")).toString(), m_dir.path());

    // A changed guide reaches the canvas without any action on it.
    GuideSettings wider = smallGuide(4, false);
    wider.pixelWidth = 480;
    wider.realWidth = 4800;
    first->setSettings(wider);
    ASSERT_TRUE(first->waitForGuideImage());
    EXPECT_TRUE(waitFor([&] { return canvas->canvasWidget()->sources().guides.value(0).image.pixelSize.width() == 480; }));
}

TEST_F(CanvasTabTest, EditsUndoAndRedoThroughTheEditMenu)
{
    CanvasTab *canvas = addCanvas();
    canvas->addComment();
    canvas->addTextBox();
    ASSERT_EQ(canvas->settings().objects.size(), 2);
    EXPECT_EQ(canvas->settings().objects[0].name, QStringLiteral("Comment"));
    EXPECT_EQ(canvas->settings().objects[1].object_type, QStringLiteral("text_box"));
    canvas->canvasWidget()->setSelection({0});
    canvas->raiseSelection();
    EXPECT_EQ(canvas->settings().objects[1].name, QStringLiteral("Comment"));
    canvas->deleteSelection();
    ASSERT_EQ(canvas->settings().objects.size(), 1);

    QAction *undo = m_window->action(QStringLiteral("actionUndo"));
    QAction *redo = m_window->action(QStringLiteral("actionRedo"));
    ASSERT_TRUE(undo && undo->isEnabled());
    undo->trigger(); // the delete
    ASSERT_EQ(canvas->settings().objects.size(), 2);
    EXPECT_EQ(canvas->settings().objects[1].name, QStringLiteral("Comment"));
    undo->trigger(); // the raise
    EXPECT_EQ(canvas->settings().objects[0].name, QStringLiteral("Comment"));
    redo->trigger();
    redo->trigger();
    EXPECT_EQ(canvas->settings().objects.size(), 1);
    EXPECT_FALSE(canvas->redo());

    // Dragging moves by the pointer's distance over the zoom; one drag is one history step.
    CanvasWidget *widget = canvas->canvasWidget();
    m_window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
    widget->setSelection({0});
    const CanvasObjectSettings before = canvas->settings().objects[0];
    const QPoint start = widget->canvasToScreen(QPointF(before.translate_x, before.translate_y)).toPoint();
    QTest::mousePress(widget, Qt::LeftButton, Qt::NoModifier, start);
    QMouseEvent move(QEvent::MouseMove, QPointF(start + QPoint(50, -20)), widget->mapToGlobal(QPointF(start + QPoint(50, -20))),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &move);
    QTest::mouseRelease(widget, Qt::LeftButton, Qt::NoModifier, start + QPoint(50, -20));
    const CanvasObjectSettings after = canvas->settings().objects[0];
    EXPECT_NEAR(after.translate_x - before.translate_x, 50 / widget->zoom(), 1e-6);
    EXPECT_NEAR(after.translate_y - before.translate_y, -20 / widget->zoom(), 1e-6);
    auto *status = canvas->findChild<QLabel *>(QStringLiteral("vantreoCanvasStatus"));
    EXPECT_EQ(status->text(), canvasTransformStatus(after));

    // Keys: arrows nudge by 1 (10 with Shift), T picks Resize and is saved, C toggles crop.
    QTest::keyClick(widget, Qt::Key_Right);
    QTest::keyClick(widget, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_DOUBLE_EQ(canvas->settings().objects[0].translate_x, after.translate_x + 1);
    EXPECT_DOUBLE_EQ(canvas->settings().objects[0].translate_y, after.translate_y + 10);
    QTest::keyClick(widget, Qt::Key_T);
    EXPECT_EQ(canvas->settings().transform_mode, 3);
    QTest::keyClick(widget, Qt::Key_C);
    EXPECT_EQ(widget->tool(), CanvasTool::Crop);
    EXPECT_EQ(canvas->settings().transform_mode, 3);
    canvas->undo();
    canvas->undo();
    canvas->undo(); // drag undone
    EXPECT_DOUBLE_EQ(canvas->settings().objects[0].translate_x, before.translate_x);
}

TEST_F(CanvasTabTest, CopyPasteNamesCountsAndClipboardImages)
{
    CanvasTab *canvas = addCanvas();
    canvas->addComment();
    canvas->addTextBox();
    CanvasWidget *widget = canvas->canvasWidget();

    widget->setSelection({0});
    canvas->copySelection();
    const QMimeData *data = QApplication::clipboard()->mimeData();
    ASSERT_TRUE(data->hasFormat(CanvasClipboard::mimeType()));
    EXPECT_EQ(data->text(), QStringLiteral("VantreoGuide Canvas object copy (1 object)"));
    ASSERT_TRUE(canvas->paste());
    ASSERT_TRUE(canvas->paste());
    QStringList names;
    for (const CanvasObjectSettings &o : canvas->settings().objects)
        names << o.name;
    EXPECT_EQ(names, (QStringList{QStringLiteral("Comment"), QStringLiteral("Text Box"), QStringLiteral("Comment Copy"),
                                  QStringLiteral("Comment Copy 2")}));
    widget->setSelection({0, 1});
    canvas->copySelection();
    EXPECT_EQ(QApplication::clipboard()->mimeData()->text(), QStringLiteral("VantreoGuide Canvas object copy (2 objects)"));

    // Text of our type that names no payload of this process pastes nothing.
    auto *foreign = new QMimeData;
    foreign->setData(CanvasClipboard::mimeType(), "something else");
    QApplication::clipboard()->setMimeData(foreign);
    EXPECT_FALSE(canvas->paste());

    // A clipboard image is saved into the pasted-images folder and placed as a picture.
    QImage image(64, 32, QImage::Format_RGB32);
    image.fill(QColor(10, 180, 90));
    QApplication::clipboard()->setImage(image);
    ASSERT_TRUE(canvas->paste());
    const CanvasObjectSettings picture = canvas->settings().objects.last();
    EXPECT_EQ(canvasObjectKind(picture), CanvasObjectKind::Picture);
    EXPECT_EQ(QFileInfo(picture.image_file_path).absolutePath(), QFileInfo(pastedCanvasImageFolder()).absoluteFilePath());
    EXPECT_TRUE(QFileInfo(picture.image_file_path).fileName().startsWith(QStringLiteral("clipboard_canvas_Canvas_1_")));
    EXPECT_EQ(QImage(picture.image_file_path).pixelColor(5, 5), QColor(10, 180, 90));
    QFile::remove(picture.image_file_path);

    // Copy view: a PNG file plus the entries file managers paste as a file.
    m_window->show();
    ASSERT_TRUE(canvas->copyView());
    const QMimeData *view = QApplication::clipboard()->mimeData();
    ASSERT_EQ(view->urls().size(), 1);
    const QString file = view->urls().first().toLocalFile();
    EXPECT_TRUE(QFileInfo(file).fileName().startsWith(QStringLiteral("canvas_view_")));
    EXPECT_FALSE(QImage(file).isNull());
    EXPECT_TRUE(view->hasFormat(QStringLiteral("text/uri-list")));
    EXPECT_EQ(view->data(QStringLiteral("x-special/gnome-copied-files")), "copy\n" + QUrl::fromLocalFile(file).toEncoded());
    EXPECT_EQ(view->data(QStringLiteral("application/x-qt-windows-mime;value=\"Preferred DropEffect\"")),
              QByteArray("\x01\x00\x00\x00", 4));
}

TEST_F(CanvasTabTest, CommandsReportTheirFailuresAndLeaveTheCanvasAlone)
{
    CanvasTab *canvas = addCanvas();
    EXPECT_FALSE(canvas->exportCanvasPngInteractive());
    EXPECT_FALSE(canvas->exportSelectedGuidePngInteractive());
    EXPECT_FALSE(canvas->addGuideInteractive());
    const QString notAnImage = m_dir.filePath(QStringLiteral("notes.png"));
    QFile file(notAnImage);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not a picture");
    file.close();
    m_recorded.nextOpenPath = notAnImage;
    EXPECT_FALSE(canvas->addImageInteractive());
    EXPECT_EQ(m_recorded.warnings,
              (QStringList{QStringLiteral("Export failed|No canvas objects to export."),
                           QStringLiteral("Export failed|No selected guide to export."),
                           QStringLiteral("Add Guide|No guide tab is available."),
                           QStringLiteral("Add Image failed|Selected image file could not be read.")}));
    EXPECT_TRUE(canvas->settings().objects.isEmpty());
    EXPECT_FALSE(canvas->canUndo());
    auto *caption = canvas->findChild<QLabel *>(QStringLiteral("vantreoCanvasGuideSourceCaption"));
    EXPECT_EQ(caption->text(), QStringLiteral("No guide tabs available"));

    // The older key names the image folder when the new one is absent.
    QSettings().setValue(QStringLiteral("paths/compositeExportDirectory"), m_dir.path());
    QImage photo(40, 20, QImage::Format_RGB32);
    photo.fill(Qt::white);
    const QString photoPath = m_dir.filePath(QStringLiteral("photo.png"));
    ASSERT_TRUE(photo.save(photoPath));
    m_recorded.nextOpenPath = photoPath;
    ASSERT_TRUE(canvas->addImageInteractive());
    EXPECT_EQ(QSettings().value(QStringLiteral("paths/canvasImageDirectory")).toString(), m_dir.path());
    m_recorded.nextSavePath.clear(); // cancelled
    EXPECT_FALSE(canvas->exportCanvasPngInteractive());
    ASSERT_EQ(m_recorded.savePrompts.size(), 1);
    EXPECT_TRUE(m_recorded.savePrompts[0].contains(QDir(m_dir.path()).filePath(QStringLiteral("canvas_export_40x20.png"))));
}

TEST_F(CanvasTabTest, SelectedGuideExportsAtItsPlacedSizeWithTheStatedName)
{
    GuideTab *guide = addGuide(5, false);
    CanvasTab *canvas = addCanvas();
    canvas->addGuides({0});
    CanvasWidget *widget = canvas->canvasWidget();
    widget->setSelection({0});
    CanvasTabSettings settings = canvas->settings();
    settings.objects[0].scale_x = 0.5;
    settings.objects[0].crop_right = 0.5; // the left half, at half size: 80 x 200
    canvas->setSettings(settings);
    widget->setSelection({0});
    m_recorded.nextSavePath = m_dir.filePath(QStringLiteral("half.png"));
    ASSERT_TRUE(canvas->exportSelectedGuidePngInteractive());
    ASSERT_EQ(m_recorded.savePrompts.size(), 1);
    EXPECT_TRUE(m_recorded.savePrompts[0].startsWith(QStringLiteral("Export Selected Guide PNG|")));
    EXPECT_TRUE(m_recorded.savePrompts[0].contains(QStringLiteral("Guide 1(320x200)_resized(80x200).png")));
    const QImage written(m_dir.filePath(QStringLiteral("half.png")));
    ASSERT_EQ(written.size(), QSize(80, 200));
    // Its left edge is the guide's left edge, not its right one.
    const QImage source = guide->guideImage();
    const QColor a = written.pixelColor(0, 100), b = source.pixelColor(0, 100);
    EXPECT_NEAR(a.red(), b.red(), 40);
    EXPECT_NEAR(a.green(), b.green(), 40);
}

namespace {

QPushButton *buttonNamed(QWidget *root, const QString &text)
{
    for (QPushButton *b : root->findChildren<QPushButton *>()) {
        if (b->text() == text)
            return b;
    }
    return nullptr;
}

void drag(QWidget *widget, QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::mousePress(widget, Qt::LeftButton, modifiers, from);
    for (int step = 1; step <= 4; ++step) {
        const QPointF at = from + (to - from) * (step / 4.0);
        QMouseEvent move(QEvent::MouseMove, at, widget->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, modifiers);
        QApplication::sendEvent(widget, &move);
    }
    QTest::mouseRelease(widget, Qt::LeftButton, modifiers, to);
}

} // namespace

// The way a planner works: two guide tabs and a photo onto one sheet with the buttons, then a
// move, a resize and a crop with the mouse, then the export. VG_CANVAS_SCREENSHOT_DIR keeps
// the window picture and the export for a look.
TEST_F(CanvasTabTest, SheetFromTwoGuidesAndAPhotoBuiltWithTheMouse)
{
    addGuide(6, false);
    addGuide(12, true);
    CanvasTab *canvas = addCanvas();
    m_window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
    QImage photo(600, 400, QImage::Format_RGB32);
    photo.fill(QColor(40, 90, 160));
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 300; ++x)
            photo.setPixel(x, y, qRgb(230, 200, 40)); // a yellow top-left quarter
    const QString photoPath = m_dir.filePath(QStringLiteral("venue.png"));
    ASSERT_TRUE(photo.save(photoPath));

    QTest::mouseClick(buttonNamed(canvas, QStringLiteral("Add Guide")), Qt::LeftButton);
    m_recorded.nextOpenPath = photoPath;
    QTest::mouseClick(buttonNamed(canvas, QStringLiteral("Add Image")), Qt::LeftButton);
    QTest::mouseClick(buttonNamed(canvas, QStringLiteral("Add Comment")), Qt::LeftButton);
    ASSERT_EQ(canvas->settings().objects.size(), 4);
    ASSERT_TRUE(waitFor([&] { return guidePreviewsReady(canvas, 2); }));
    CanvasWidget *widget = canvas->canvasWidget();
    widget->fitView();

    // Move the photo below the guides with the mouse.
    auto object = [&](int i) { return canvas->settings().objects[i]; };
    // (Grabbed off its centre: the new comment sits on the centre, above it.)
    const QPolygonF photoOutline = canvasObjectOutline(object(2), widget->sources());
    const QPoint grab = widget->canvasToScreen(photoOutline[0] * 0.8 + photoOutline[2] * 0.2).toPoint();
    drag(widget, grab, grab + QPoint(0, int(400 * widget->zoom())));
    EXPECT_NEAR(object(2).translate_y, object(0).translate_y + 400, 2.0);

    // Resize tool: the photo's right edge outwards; its left edge stays.
    widget->setSelection({2});
    QTest::keyClick(widget, Qt::Key_T);
    const double leftBefore = canvasObjectOutline(object(2), widget->sources()).boundingRect().left();
    const QPoint right = widget->canvasToScreen(canvasHandlePositions(object(2), widget->sources())[3]).toPoint();
    drag(widget, right, right + QPoint(60, 0));
    EXPECT_NEAR(canvasObjectOutline(object(2), widget->sources()).boundingRect().left(), leftBefore, 1.0);
    EXPECT_GT(object(2).scale_x, 1.05);

    // Crop tool: the photo's bottom edge upwards by half.
    QTest::keyClick(widget, Qt::Key_C);
    const QPointF top = widget->canvasToScreen(canvasHandlePositions(object(2), widget->sources())[1]);
    const QPointF bottom = widget->canvasToScreen(canvasHandlePositions(object(2), widget->sources())[5]);
    drag(widget, bottom.toPoint(), ((top + bottom) / 2).toPoint());
    EXPECT_NEAR(object(2).crop_bottom, 0.5, 0.03);

    // Export: the photo's kept half is the yellow-and-blue top; no pixel of it went missing.
    m_recorded.nextSavePath = m_dir.filePath(QStringLiteral("crew_sheet.png"));
    QTest::mouseClick(buttonNamed(canvas, QStringLiteral("Export Canvas PNG...")), Qt::LeftButton);
    const QImage sheet(m_dir.filePath(QStringLiteral("crew_sheet.png")));
    ASSERT_FALSE(sheet.isNull()) << m_recorded.warnings.join(QLatin1Char('\n')).toStdString();
    const QRect bounds = canvasContentBounds(canvas->settings(), widget->sources());
    const QPolygonF outline = canvasObjectOutline(object(2), widget->sources());
    const QPointF photoTopLeft = outline[0] - QPointF(bounds.topLeft()) + QPointF(5, 5);
    const QPointF photoTopRight = outline[1] - QPointF(bounds.topLeft()) + QPointF(-5, 5);
    EXPECT_EQ(sheet.pixelColor(photoTopLeft.toPoint()), QColor(230, 200, 40));
    EXPECT_EQ(sheet.pixelColor(photoTopRight.toPoint()), QColor(40, 90, 160));

    if (const QString dir = qEnvironmentVariable("VG_CANVAS_SCREENSHOT_DIR"); !dir.isEmpty()) {
        QDir().mkpath(dir);
        QTest::qWait(100); // let the panels lay out as the window shows them
        m_window->grab().save(QDir(dir).filePath(QStringLiteral("canvas_window.png")));
        sheet.save(QDir(dir).filePath(QStringLiteral("canvas_export.png")));
    }
}
