#include "canvas/ui/CanvasTab.h"

#include "canvas/CanvasNaming.h"
#include "canvas/CanvasPainter.h"
#include "canvas/ui/CanvasAddGuideDialog.h"
#include "canvas/ui/CanvasClipboard.h"
#include "canvas/ui/CanvasObjectPanel.h"
#include "canvas/ui/CanvasWidget.h"
#include "guide/PngWriter.h"
#include "guide/ui/GuideTab.h"
#include "common/SettingsKeys.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFutureWatcher>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QStandardPaths>
#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>

namespace {

constexpr int kMaxUndo = 200;
constexpr int kCoalesceMs = 1000;
constexpr int kPreviewSide = 2048;
constexpr double kPasteOffset = 40.0;

} // namespace

CanvasTab::CanvasTab(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("vantreoCanvasTab"));
    m_dialogs.saveFile = [this](const QString &title, const QString &path, const QString &filter) {
        return QFileDialog::getSaveFileName(this, title, path, filter);
    };
    m_dialogs.openFile = [this](const QString &title, const QString &folder, const QString &filter) {
        return QFileDialog::getOpenFileName(this, title, folder, filter);
    };
    m_dialogs.warn = [this](const QString &title, const QString &text) { QMessageBox::warning(this, title, text); };
    m_dialogs.chooseGuides = [this](const QList<CanvasGuideTabSource> &sources) {
        CanvasAddGuideDialog dialog(sources, this);
        return dialog.exec() == QDialog::Accepted ? dialog.chosen() : QList<int>();
    };

    m_canvas = new CanvasWidget(this);
    m_objectPanel = new CanvasObjectPanel(
        [this](const QString &key, const std::function<void(CanvasObjectSettings &)> &edit) { editObjects(key, edit); },
        [this](const QString &key, const std::function<void(CanvasTabSettings &)> &edit) { editCanvas(key, edit); }, this);
    buildLayout();
    connectCanvas();
    retranslateUi();
    refreshPanels();
}

CanvasTab::~CanvasTab()
{
    m_alive = false;
}

// ---- settings and history ------------------------------------------------------------------

CanvasTabSettings CanvasTab::settings() const
{
    // The guide order may have changed since the last notice; indices are saved as they are now.
    const_cast<CanvasTab *>(this)->refreshGuideSources();
    CanvasTabSettings out = m_canvas->canvas();
    out.title = m_title;
    return out;
}

void CanvasTab::setSettings(const CanvasTabSettings &settings)
{
    m_undo.clear();
    m_redo.clear();
    m_title = settings.title;
    m_canvas->setTitle(m_title);
    // Indices are the file's guide order until the guide tabs are known.
    m_sources.clear();
    m_canvas->setCanvas(settings);
    ensurePictures();
    refreshGuideSources();
    refreshPanels();
    Q_EMIT undoStateChanged();
    Q_EMIT settingsChanged();
}

void CanvasTab::setTitle(const QString &title)
{
    m_title = title;
    m_canvas->setTitle(title);
}

void CanvasTab::pushUndo(const QString &coalesceKey)
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (!coalesceKey.isEmpty() && coalesceKey == m_lastUndoKey && now - m_lastUndoTime < kCoalesceMs) {
        m_lastUndoTime = now;
        return;
    }
    m_lastUndoKey = coalesceKey;
    m_lastUndoTime = now;
    m_undo.append(m_canvas->canvas());
    if (m_undo.size() > kMaxUndo)
        m_undo.removeFirst();
    m_redo.clear();
    Q_EMIT undoStateChanged();
}

void CanvasTab::applyState(const CanvasTabSettings &state)
{
    CanvasTabSettings next = state;
    // The view is not part of the history.
    next.view_zoom = m_canvas->canvas().view_zoom;
    next.view_pan_x = m_canvas->canvas().view_pan_x;
    next.view_pan_y = m_canvas->canvas().view_pan_y;
    m_canvas->setCanvas(next);
    m_lastUndoKey.clear();
    edited();
    Q_EMIT undoStateChanged();
}

bool CanvasTab::undo()
{
    if (m_undo.isEmpty())
        return false;
    m_redo.append(m_canvas->canvas());
    applyState(m_undo.takeLast());
    return true;
}

bool CanvasTab::redo()
{
    if (m_redo.isEmpty())
        return false;
    m_undo.append(m_canvas->canvas());
    applyState(m_redo.takeLast());
    return true;
}

void CanvasTab::edited()
{
    ensurePictures();
    refreshPanels();
    Q_EMIT settingsChanged();
}

void CanvasTab::editObjects(const QString &key, const std::function<void(CanvasObjectSettings &)> &edit)
{
    const QVector<int> selection = m_canvas->selection();
    if (selection.isEmpty())
        return;
    pushUndo(key);
    CanvasTabSettings canvas = m_canvas->canvas();
    // A property edit applies to the object shown: the primary selection.
    edit(canvas.objects[selection.last()]);
    m_canvas->setCanvas(canvas);
    edited();
}

void CanvasTab::editCanvas(const QString &key, const std::function<void(CanvasTabSettings &)> &edit)
{
    pushUndo(key);
    CanvasTabSettings canvas = m_canvas->canvas();
    edit(canvas);
    m_canvas->setCanvas(canvas);
    edited();
}

QPointF CanvasTab::viewCentre() const
{
    return m_canvas->screenToCanvas(QPointF(m_canvas->width() / 2.0, m_canvas->height() / 2.0));
}

int CanvasTab::addObject(CanvasObjectSettings object)
{
    addObjects({object});
    return int(m_canvas->canvas().objects.size()) - 1;
}

void CanvasTab::addObjects(const QVector<CanvasObjectSettings> &objects)
{
    if (objects.isEmpty())
        return;
    pushUndo();
    CanvasTabSettings canvas = m_canvas->canvas();
    const bool wasEmpty = canvasContentBounds(canvas, m_canvas->sources()).isEmpty();
    QVector<int> added;
    for (const CanvasObjectSettings &object : objects) {
        canvas.objects.append(object);
        added.append(int(canvas.objects.size()) - 1);
    }
    m_canvas->setCanvas(canvas);
    m_canvas->setSelection(added);
    if (wasEmpty)
        m_canvas->fitView();
    edited();
}

// ---- guide sources --------------------------------------------------------------------------

void CanvasTab::setGuideSourceProvider(std::function<QList<CanvasGuideTabSource>()> provider)
{
    m_provider = std::move(provider);
    refreshGuideSources();
}

void CanvasTab::refreshGuideSources()
{
    if (!m_provider)
        return;
    const QList<CanvasGuideTabSource> next = m_provider();
    QVector<int> oldIds;
    for (const CanvasGuideTabSource &s : m_sources)
        oldIds.append(s.sourceId);
    QVector<int> newIds;
    for (const CanvasGuideTabSource &s : next)
        newIds.append(s.sourceId);
    const bool orderChanged = oldIds != newIds;

    if (orderChanged && !oldIds.isEmpty()) {
        // Keep every guide object on its guide tab: old index -> source id -> new index. A guide
        // whose tab is gone shows as missing (past the end of the list).
        auto remap = [&](int index) {
            if (index < 0 || index >= oldIds.size())
                return index;
            const int moved = newIds.indexOf(oldIds[index]);
            return moved >= 0 ? moved : int(std::max(newIds.size(), oldIds.size())) + index;
        };
        auto remapCanvas = [&](CanvasTabSettings &canvas) {
            canvas.selected_guide_index = canvas.selected_guide_index >= 0 ? std::max(-1, int(newIds.indexOf(
                                                                                 oldIds.value(canvas.selected_guide_index, -2))))
                                                                         : -1;
            for (CanvasObjectSettings &object : canvas.objects) {
                if (canvasObjectKind(object) == CanvasObjectKind::GuideImage)
                    object.guide_index = remap(object.guide_index);
            }
        };
        CanvasTabSettings canvas = m_canvas->canvas();
        remapCanvas(canvas);
        for (CanvasTabSettings &state : m_undo)
            remapCanvas(state);
        for (CanvasTabSettings &state : m_redo)
            remapCanvas(state);
        m_canvas->setCanvas(canvas);
    }
    const bool namesChanged = [&] {
        if (next.size() != m_sources.size())
            return true;
        for (int i = 0; i < next.size(); ++i) {
            if (next[i].name != m_sources[i].name)
                return true;
        }
        return false;
    }();
    m_sources = next;
    if (!orderChanged && !namesChanged)
        return;

    CanvasSources sources = m_canvas->sources();
    QVector<CanvasGuideSource> guides(m_sources.size());
    for (int i = 0; i < m_sources.size(); ++i) {
        guides[i].name = m_sources[i].name;
        const int oldIndex = oldIds.indexOf(m_sources[i].sourceId);
        if (oldIndex >= 0 && oldIndex < sources.guides.size())
            guides[i].image = sources.guides[oldIndex].image;
        if (GuideTab *tab = m_sources[i].tab) {
            const GuideSettings g = tab->settings();
            guides[i].realSizeMm = QSizeF(g.realWidth, g.realHeight);
        }
    }
    sources.guides = guides;
    m_canvas->setSources(sources);
    for (int i = 0; i < m_sources.size(); ++i) {
        watchGuideTab(m_sources[i].tab);
        if (oldIds.indexOf(m_sources[i].sourceId) < 0)
            updateGuidePreview(i);
    }
    refreshSourceList();
    refreshPanels();
}

void CanvasTab::watchGuideTab(GuideTab *tab)
{
    if (!tab)
        return;
    for (const QPointer<GuideTab> &watched : m_watched) {
        if (watched == tab)
            return;
    }
    m_watched.append(tab);
    connect(tab, &GuideTab::guideImageChanged, this, [this, tab] {
        for (int i = 0; i < m_sources.size(); ++i) {
            if (m_sources[i].tab == tab)
                updateGuidePreview(i);
        }
    });
    connect(tab, &GuideTab::settingsChanged, this, [this, tab] {
        for (int i = 0; i < m_sources.size(); ++i) {
            if (m_sources[i].tab == tab) {
                CanvasSources sources = m_canvas->sources();
                const GuideSettings g = tab->settings();
                if (i < sources.guides.size())
                    sources.guides[i].realSizeMm = QSizeF(g.realWidth, g.realHeight);
                m_canvas->setSources(sources);
            }
        }
    });
}

// A changed guide is scaled down for the view off the interface thread; only the newest
// request for a source is taken.
void CanvasTab::updateGuidePreview(int index)
{
    if (index < 0 || index >= m_sources.size() || !m_sources[index].tab)
        return;
    const QImage full = m_sources[index].tab->guideImage();
    const int sourceId = m_sources[index].sourceId;
    const quint64 generation = ++m_generation;
    m_previewGeneration[sourceId] = generation;
    auto *watcher = new QFutureWatcher<CanvasImage>(this);
    connect(watcher, &QFutureWatcher<CanvasImage>::finished, this, [this, watcher, sourceId, generation] {
        watcher->deleteLater();
        if (!m_alive || m_previewGeneration.value(sourceId) != generation)
            return;
        const CanvasImage preview = watcher->result();
        for (int i = 0; i < m_sources.size(); ++i) {
            if (m_sources[i].sourceId != sourceId)
                continue;
            CanvasSources sources = m_canvas->sources();
            if (i < sources.guides.size()) {
                sources.guides[i].image = preview;
                m_canvas->setSources(sources);
            }
        }
        refreshSourceList();
        refreshPanels();
    });
    watcher->setFuture(QtConcurrent::run([full] { return canvasPreviewImage(full, kPreviewSide); }));
}

CanvasSources CanvasTab::fullSources()
{
    refreshGuideSources();
    CanvasSources sources = m_canvas->sources();
    const CanvasTabSettings &canvas = m_canvas->canvas();
    for (int i = 0; i < m_sources.size() && i < sources.guides.size(); ++i) {
        GuideTab *tab = m_sources[i].tab;
        const bool used = std::any_of(canvas.objects.begin(), canvas.objects.end(), [i](const CanvasObjectSettings &o) {
            return canvasObjectKind(o) == CanvasObjectKind::GuideImage && o.guide_index == i;
        });
        if (!tab || !used)
            continue;
        tab->waitForGuideImage();
        const QImage full = tab->guideImage();
        sources.guides[i].image = CanvasImage{full.size(), full};
    }
    for (auto it = m_fullPictures.constBegin(); it != m_fullPictures.constEnd(); ++it)
        sources.pictures.insert(it.key(), it.value());
    return sources;
}

// ---- commands -----------------------------------------------------------------------------

QString CanvasTab::canvasName() const
{
    return m_title.isEmpty() ? property("fallbackTabTitle").toString() : m_title;
}

void CanvasTab::rememberDirectory(const TextSetting &folderSetting, const QString &filePath)
{
    folderSetting.write(QFileInfo(filePath).absolutePath());
}

QString CanvasTab::lastDirectory(const TextSetting &folderSetting, const TextSetting &olderFolder) const
{
    QString folder = folderSetting.read();
    if (folder.isEmpty())
        folder = olderFolder.read();
    if (folder.isEmpty() || !QFileInfo(folder).isDir())
        folder = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return folder;
}

QImage CanvasTab::renderCanvasImage(QString *error)
{
    return ::renderCanvasImage(m_canvas->canvas(), fullSources(), error);
}

QImage CanvasTab::documentPageImage(const QString &tabTitle)
{
    const CanvasTabSettings canvas = m_canvas->canvas();
    return composeDocumentPage(renderCanvasImage(), canvasDocumentTitle(canvas, tabTitle));
}

bool CanvasTab::exportCanvasPng(const QString &path, QString *error)
{
    QString written;
    if (!::exportCanvasPng(m_canvas->canvas(), fullSources(), path, &written, error))
        return false;
    rememberDirectory(Settings::canvasExportDirectory, written);
    return true;
}

bool CanvasTab::exportCanvasPngInteractive()
{
    const QRect bounds = canvasContentBounds(m_canvas->canvas(), m_canvas->sources());
    if (bounds.isEmpty()) {
        m_dialogs.warn(tr("Export failed"), tr("No canvas objects to export."));
        return false;
    }
    const QString folder = lastDirectory(Settings::canvasExportDirectory, Settings::compositeExportDirectory);
    const QString path = m_dialogs.saveFile(tr("Export Canvas PNG"), QDir(folder).filePath(canvasExportFileName(bounds.size())),
                                            tr("PNG Images (*.png)"));
    if (path.isEmpty())
        return false;
    QString error;
    if (!exportCanvasPng(path, &error)) {
        m_dialogs.warn(tr("Export failed"), error);
        return false;
    }
    m_status->setText(tr("Exported %1").arg(QDir::toNativeSeparators(withPngSuffix(path))));
    return true;
}

bool CanvasTab::exportSelectedGuidePngInteractive()
{
    const int index = m_canvas->primarySelection();
    const CanvasTabSettings &canvas = m_canvas->canvas();
    if (index < 0 || canvasObjectKind(canvas.objects[index]) != CanvasObjectKind::GuideImage) {
        m_dialogs.warn(tr("Export failed"), tr("No selected guide to export."));
        return false;
    }
    const CanvasObjectSettings object = canvas.objects[index];
    const CanvasSources sources = fullSources();
    const CanvasImage *image = sources.imageFor(object);
    if (!image) {
        m_dialogs.warn(tr("Export failed"), tr("Selected guide image is not available."));
        return false;
    }
    const QSize placed = canvasObjectPlacedSize(object, sources).expandedTo(QSize(1, 1));
    const QString name = object.guide_index < m_sources.size() ? m_sources[object.guide_index].name : QString();
    const QString folder = lastDirectory(Settings::canvasExportDirectory, Settings::compositeExportDirectory);
    const QString path =
        m_dialogs.saveFile(tr("Export Selected Guide PNG"),
                           QDir(folder).filePath(selectedGuideExportFileName(name, image->pixelSize, placed)),
                           tr("PNG Images (*.png)"));
    if (path.isEmpty())
        return false;
    // The guide as it stands on the canvas: its crop, at its placed size, not turned.
    const CanvasCrop crop = normalizedCrop(object);
    const QSize px = image->image.size();
    const QRect part = QRectF(QPointF(crop.left * px.width(), crop.top * px.height()),
                              QPointF(crop.right * px.width(), crop.bottom * px.height()))
                           .toAlignedRect()
                           .intersected(image->image.rect());
    const QImage out = image->image.copy(part).scaled(placed, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QString error;
    const QString target = withPngSuffix(path);
    if (out.isNull() || !writeGuidePng(out, target, &error)) {
        m_dialogs.warn(tr("Export failed"), tr("Selected guide PNG file could not be saved."));
        return false;
    }
    rememberDirectory(Settings::canvasExportDirectory, target);
    return true;
}

bool CanvasTab::addImageFile(const QString &path, const QPointF &canvasPoint, QString *error)
{
    CanvasImage picture;
    if (!loadCanvasPicture(path, &picture, error))
        return false;
    m_fullPictures.insert(path, picture);
    CanvasSources sources = m_canvas->sources();
    sources.pictures.insert(path, canvasPreviewImage(picture.image, kPreviewSide));
    m_canvas->setSources(sources);
    CanvasObjectSettings object;
    object.image_file_path = path;
    object.name = canvasDefaultObjectName(CanvasObjectKind::Picture);
    object.translate_x = canvasPoint.x();
    object.translate_y = canvasPoint.y();
    addObject(object);
    return true;
}

bool CanvasTab::addImageInteractive()
{
    const QString folder = lastDirectory(Settings::canvasImageDirectory, Settings::compositeImageDirectory);
    const QString path = m_dialogs.openFile(tr("Add Image"), folder,
                                            tr("Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp);;All Files (*.*)"));
    if (path.isEmpty())
        return false;
    QString error;
    if (!addImageFile(path, viewCentre(), &error)) {
        m_dialogs.warn(tr("Add Image failed"), tr("Selected image file could not be read."));
        return false;
    }
    rememberDirectory(Settings::canvasImageDirectory, path);
    return true;
}

bool CanvasTab::addGuideInteractive()
{
    refreshGuideSources();
    if (m_sources.isEmpty()) {
        m_dialogs.warn(tr("Add Guide"), tr("No guide tab is available."));
        return false;
    }
    const QList<int> chosen = m_dialogs.chooseGuides(m_sources);
    if (chosen.isEmpty())
        return false;
    addGuides(chosen);
    return true;
}

void CanvasTab::addGuides(const QList<int> &sourceIndices)
{
    refreshGuideSources();
    // Side by side from the view's centre, left to right, with a small gap.
    QVector<CanvasObjectSettings> objects;
    double x = viewCentre().x();
    const double y = viewCentre().y();
    const CanvasSources &sources = m_canvas->sources();
    for (int index : sourceIndices) {
        if (index < 0 || index >= m_sources.size())
            continue;
        CanvasObjectSettings object;
        object.guide_index = index;
        object.name = m_sources[index].name.isEmpty() ? canvasDefaultObjectName(CanvasObjectKind::GuideImage)
                                                      : m_sources[index].name;
        const double width = canvasObjectShape(object, sources).frame.width();
        object.translate_x = x + width / 2;
        object.translate_y = y;
        x += width * 1.05;
        objects.append(object);
    }
    addObjects(objects);
}

void CanvasTab::addComment()
{
    CanvasObjectSettings object;
    object.object_type = QStringLiteral("comment");
    object.name = canvasDefaultObjectName(CanvasObjectKind::Comment);
    object.comment_text = tr("Comment");
    // Marks stay readable at the current zoom: about 30 screen pixels across.
    object.comment_circle_scale = std::clamp(0.3 / m_canvas->zoom(), 0.1, 50.0);
    object.comment_font_scale = object.comment_circle_scale;
    const QPointF c = viewCentre();
    object.translate_x = c.x();
    object.translate_y = c.y();
    addObject(object);
}

void CanvasTab::addTextBox()
{
    CanvasObjectSettings object;
    object.object_type = QStringLiteral("text_box");
    object.name = canvasDefaultObjectName(CanvasObjectKind::TextBox);
    object.text_box_text = tr("Text");
    object.text_box_font_scale = std::clamp(2.5 / m_canvas->zoom(), 0.5, 200.0);
    const QPointF c = viewCentre();
    object.translate_x = c.x();
    object.translate_y = c.y();
    addObject(object);
}

bool CanvasTab::copyView()
{
    const QImage image = m_canvas->renderView();
    const QString folder = QDir(QStandardPaths::writableLocation(QStandardPaths::TempLocation))
                               .filePath(QStringLiteral("VantreoGuide"));
    const QString path = QDir(folder).filePath(canvasViewFileName(image.size()));
    QString error;
    if (image.isNull() || !QDir().mkpath(folder) || !writeGuidePng(image, path, &error)) {
        m_dialogs.warn(tr("Copy failed"), tr("Canvas view PNG file could not be saved."));
        return false;
    }
    QApplication::clipboard()->setMimeData(createFileCopyMimeData(path, image));
    m_status->setText(tr("Canvas view copied: %1").arg(QDir::toNativeSeparators(path)));
    return true;
}

void CanvasTab::copySelection()
{
    QVector<int> selection = m_canvas->selection();
    if (selection.isEmpty())
        return;
    std::sort(selection.begin(), selection.end());
    QVector<CanvasObjectSettings> objects;
    for (int i : selection)
        objects.append(m_canvas->canvas().objects[i]);
    QApplication::clipboard()->setMimeData(CanvasClipboard::createMimeData(objects));
    m_status->setText(canvasObjectCopyText(int(objects.size())));
}

bool CanvasTab::paste()
{
    const QMimeData *data = QApplication::clipboard()->mimeData();
    QVector<CanvasObjectSettings> objects;
    if (CanvasClipboard::readMimeData(data, &objects)) {
        QStringList taken;
        for (const CanvasObjectSettings &o : m_canvas->canvas().objects)
            taken << o.name;
        for (CanvasObjectSettings &o : objects) {
            const QString base = o.name.isEmpty() ? canvasDefaultObjectName(canvasObjectKind(o)) : o.name;
            o.name = canvasCopyName(base, taken);
            taken << o.name;
            o.translate_x += kPasteOffset;
            o.translate_y += kPasteOffset;
        }
        addObjects(objects);
        return true;
    }
    if (data && data->hasImage()) {
        const QImage image = qvariant_cast<QImage>(data->imageData());
        QString path, error;
        if (!savePastedCanvasImage(image, pastedCanvasImageFolder(), canvasName(), &path, &error)
            || !addImageFile(path, viewCentre(), &error)) {
            m_dialogs.warn(tr("Paste failed"), error);
            return false;
        }
        return true;
    }
    return false;
}

void CanvasTab::deleteSelection()
{
    QVector<int> selection = m_canvas->selection();
    if (selection.isEmpty())
        return;
    pushUndo();
    std::sort(selection.begin(), selection.end(), std::greater<int>());
    CanvasTabSettings canvas = m_canvas->canvas();
    for (int i : selection)
        canvas.objects.removeAt(i);
    m_canvas->setSelection({});
    m_canvas->setCanvas(canvas);
    edited();
}

void CanvasTab::raiseSelection()
{
    if (m_canvas->selection().isEmpty())
        return;
    pushUndo();
    CanvasTabSettings canvas = m_canvas->canvas();
    const QVector<int> selection = moveCanvasObjects(&canvas, m_canvas->selection(), +1);
    m_canvas->setCanvas(canvas);
    m_canvas->setSelection(selection);
    edited();
}

void CanvasTab::lowerSelection()
{
    if (m_canvas->selection().isEmpty())
        return;
    pushUndo();
    CanvasTabSettings canvas = m_canvas->canvas();
    const QVector<int> selection = moveCanvasObjects(&canvas, m_canvas->selection(), -1);
    m_canvas->setCanvas(canvas);
    m_canvas->setSelection(selection);
    edited();
}
