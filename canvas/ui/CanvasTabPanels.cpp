// The canvas tab's panels: guide sources, object list, tools and command buttons.
#include "canvas/ui/CanvasTab.h"

#include "canvas/CanvasNaming.h"
#include "canvas/ui/CanvasObjectPanel.h"
#include "canvas/ui/CanvasWidget.h"
#include "guide/ui/GuideTab.h"
#include "common/SettingsKeys.h"

#include <QButtonGroup>
#include <QEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr QSize kSourceIcon(64, 40);

const char *const kToolTexts[] = {QT_TRANSLATE_NOOP("CanvasTab", "Translate"), QT_TRANSLATE_NOOP("CanvasTab", "Rotate"),
                                  QT_TRANSLATE_NOOP("CanvasTab", "Scale"), QT_TRANSLATE_NOOP("CanvasTab", "Resize (T)"),
                                  QT_TRANSLATE_NOOP("CanvasTab", "Crop (C)")};

} // namespace

void CanvasTab::buildLayout()
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    auto *scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setWidget(buildSidePanel());
    scroll->setMinimumWidth(300);
    scroll->setMaximumWidth(380);
    layout->addWidget(scroll);

    auto *centre = new QVBoxLayout;
    centre->addWidget(buildToolBar());
    centre->addWidget(m_canvas, 1);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("vantreoCanvasStatus"));
    m_status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    centre->addWidget(m_status);
    layout->addLayout(centre, 1);

    auto shortcut = [this](QKeySequence::StandardKey key, void (CanvasTab::*slot)()) {
        for (QWidget *target : {static_cast<QWidget *>(m_canvas), static_cast<QWidget *>(m_layerList)}) {
            auto *s = new QShortcut(key, target, nullptr, nullptr, Qt::WidgetShortcut);
            connect(s, &QShortcut::activated, this, slot);
        }
    };
    shortcut(QKeySequence::Copy, &CanvasTab::copySelection);
    shortcut(QKeySequence::Paste, &CanvasTab::pasteFromShortcut);
}

void CanvasTab::pasteFromShortcut()
{
    paste();
}

QWidget *CanvasTab::buildSidePanel()
{
    auto *panel = new QWidget;
    auto *layout = new QVBoxLayout(panel);
    auto heading = [&](const char *text) {
        auto *label = new QLabel(panel);
        label->setStyleSheet(QStringLiteral("font-weight: bold;"));
        m_headings.append({label, text});
        layout->addWidget(label);
    };
    auto button = [&](const char *text, auto slot) {
        auto *b = new QPushButton(panel);
        m_buttons.append({b, text});
        connect(b, &QPushButton::clicked, this, [this, slot] { (this->*slot)(); });
        return b;
    };
    auto grid = [&](QList<QPushButton *> buttons) {
        auto *g = new QGridLayout;
        for (int i = 0; i < buttons.size(); ++i)
            g->addWidget(buttons[i], i / 2, i % 2);
        layout->addLayout(g);
    };

    heading(QT_TR_NOOP("Guide sources"));
    m_sourceCaption = new QLabel(panel);
    m_sourceCaption->setObjectName(QStringLiteral("vantreoCanvasGuideSourceCaption"));
    layout->addWidget(m_sourceCaption);
    m_sourceList = new QListWidget(panel);
    m_sourceList->setObjectName(QStringLiteral("vantreoCanvasGuideSources"));
    m_sourceList->setIconSize(kSourceIcon);
    m_sourceList->setMaximumHeight(170);
    layout->addWidget(m_sourceList);
    connect(m_sourceList, &QListWidget::currentRowChanged, this, [this](int row) {
        if (!m_updatingPanels && row >= 0 && row < m_sources.size() && m_canvas->canvas().selected_guide_index != row)
            editCanvas(QStringLiteral("selected_guide_index"), [row](CanvasTabSettings &c) { c.selected_guide_index = row; });
    });
    connect(m_sourceList, &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem *item) { addGuides({m_sourceList->row(item)}); });

    grid({button(QT_TR_NOOP("Add Guide"), &CanvasTab::addGuideInteractive),
          button(QT_TR_NOOP("Add Image"), &CanvasTab::addImageInteractive),
          button(QT_TR_NOOP("Add Comment"), &CanvasTab::addComment),
          button(QT_TR_NOOP("Add Text Box"), &CanvasTab::addTextBox)});

    heading(QT_TR_NOOP("Objects"));
    m_layerList = new QListWidget(panel);
    m_layerList->setObjectName(QStringLiteral("vantreoCanvasObjectList"));
    m_layerList->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_layerList->setMaximumHeight(200);
    layout->addWidget(m_layerList);
    connect(m_layerList, &QListWidget::itemSelectionChanged, this, [this] {
        if (m_updatingPanels)
            return;
        const int n = int(m_canvas->canvas().objects.size());
        QVector<int> selection;
        for (QListWidgetItem *item : m_layerList->selectedItems())
            selection.append(n - 1 - m_layerList->row(item));
        if (QListWidgetItem *current = m_layerList->currentItem(); current && current->isSelected()) {
            const int primary = n - 1 - m_layerList->row(current);
            selection.removeAll(primary);
            selection.append(primary);
        }
        m_canvas->setSelection(selection);
    });
    connect(m_layerList, &QListWidget::itemChanged, this, [this](QListWidgetItem *item) {
        if (m_updatingPanels)
            return;
        const int index = int(m_canvas->canvas().objects.size()) - 1 - m_layerList->row(item);
        const bool visible = item->checkState() == Qt::Checked;
        if (index < 0 || m_canvas->canvas().objects[index].visible == visible)
            return;
        pushUndo();
        CanvasTabSettings canvas = m_canvas->canvas();
        canvas.objects[index].visible = visible;
        m_canvas->setCanvas(canvas);
        edited();
    });
    grid({button(QT_TR_NOOP("Raise"), &CanvasTab::raiseSelection), button(QT_TR_NOOP("Lower"), &CanvasTab::lowerSelection),
          button(QT_TR_NOOP("Copy"), &CanvasTab::copySelection), button(QT_TR_NOOP("Paste"), &CanvasTab::pasteFromShortcut),
          button(QT_TR_NOOP("Delete"), &CanvasTab::deleteSelection)});

    layout->addWidget(m_objectPanel);

    heading(QT_TR_NOOP("Export"));
    auto *exportPng = button(QT_TR_NOOP("Export Canvas PNG..."), &CanvasTab::exportCanvasPngInteractive);
    auto *exportGuide = button(QT_TR_NOOP("Export Selected Guide PNG..."), &CanvasTab::exportSelectedGuidePngInteractive);
    auto *copyView = button(QT_TR_NOOP("Copy View"), &CanvasTab::copyView);
    auto *fit = new QPushButton(panel);
    m_buttons.append({fit, QT_TR_NOOP("Fit View")});
    connect(fit, &QPushButton::clicked, m_canvas, &CanvasWidget::fitView);
    for (QPushButton *b : {exportPng, exportGuide, copyView, fit})
        layout->addWidget(b);
    layout->addStretch(1);
    return panel;
}

QWidget *CanvasTab::buildToolBar()
{
    auto *bar = new QWidget(this);
    auto *layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    m_tools = new QButtonGroup(this);
    m_tools->setExclusive(true);
    for (int i = 0; i < 5; ++i) {
        auto *b = new QToolButton(bar);
        b->setCheckable(true);
        b->setObjectName(QStringLiteral("vantreoCanvasTool%1").arg(i));
        m_tools->addButton(b, i);
        m_toolButtons.append(b);
        layout->addWidget(b);
    }
    layout->addStretch(1);
    connect(m_tools, &QButtonGroup::idClicked, this, [this](int id) {
        const bool savedTool = id != int(CanvasTool::Crop);
        if (savedTool && m_canvas->canvas().transform_mode != id) {
            editCanvas(QStringLiteral("transform_mode"), [id](CanvasTabSettings &c) { c.transform_mode = id; });
        }
        m_canvas->setTool(CanvasTool(id));
        m_canvas->setFocus();
    });
    return bar;
}

void CanvasTab::connectCanvas()
{
    connect(m_canvas, &CanvasWidget::aboutToEdit, this, [this] { pushUndo(); });
    connect(m_canvas, &CanvasWidget::canvasEdited, this, [this] { edited(); });
    connect(m_canvas, &CanvasWidget::selectionChanged, this, [this] { refreshPanels(); });
    connect(m_canvas, &CanvasWidget::statusChanged, this, [this](const QString &text) { m_status->setText(text); });
    connect(m_canvas, &CanvasWidget::toolChanged, this, [this](CanvasTool tool) {
        if (QAbstractButton *b = m_tools->button(int(tool)))
            b->setChecked(true);
        // T changes the saved tool like a click on its button.
        if (tool != CanvasTool::Crop)
            Q_EMIT settingsChanged();
    });
    connect(m_canvas, &CanvasWidget::deleteRequested, this, &CanvasTab::deleteSelection);
    connect(m_canvas, &CanvasWidget::filesDropped, this, [this](const QStringList &paths, const QPointF &at) {
        QPointF point = at;
        for (const QString &path : paths) {
            QString error;
            if (!addImageFile(path, point, &error)) {
                m_dialogs.warn(tr("Add Image failed"), tr("Selected image file could not be read."));
                return;
            }
            rememberDirectory(Settings::canvasImageDirectory, path);
            point += QPointF(40, 40) / m_canvas->zoom();
        }
    });
}

void CanvasTab::ensurePictures()
{
    bool added = false;
    CanvasSources sources = m_canvas->sources();
    for (const CanvasObjectSettings &object : m_canvas->canvas().objects) {
        const QString &path = object.image_file_path;
        if (canvasObjectKind(object) != CanvasObjectKind::Picture || path.isEmpty() || m_fullPictures.contains(path)
            || m_unreadablePictures.contains(path))
            continue;
        CanvasImage picture;
        if (!loadCanvasPicture(path, &picture)) {
            m_unreadablePictures.insert(path);
            continue;
        }
        m_fullPictures.insert(path, picture);
        sources.pictures.insert(path, canvasPreviewImage(picture.image, 2048));
        added = true;
    }
    if (added)
        m_canvas->setSources(sources);
}

void CanvasTab::refreshSourceList()
{
    m_updatingPanels = true;
    m_sourceList->clear();
    for (int i = 0; i < m_sources.size(); ++i) {
        auto *item = new QListWidgetItem(m_sourceList);
        item->setSizeHint(QSize(0, kSourceIcon.height() + 8));
        const CanvasImage image = i < m_canvas->sources().guides.size() ? m_canvas->sources().guides[i].image : CanvasImage();
        auto *holder = new QWidget;
        holder->setProperty("vantreoCanvasGuideSourceId", m_sources[i].sourceId);
        auto *h = new QHBoxLayout(holder);
        h->setContentsMargins(4, 2, 4, 2);
        auto *icon = new QLabel(holder);
        icon->setFixedSize(kSourceIcon);
        icon->setAlignment(Qt::AlignCenter);
        if (image.image.isNull())
            icon->setText(tr("No preview"));
        else
            icon->setPixmap(QPixmap::fromImage(image.image.scaled(kSourceIcon, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
        h->addWidget(icon);
        h->addWidget(new QLabel(m_sources[i].name, holder), 1);
        item->setData(Qt::UserRole, m_sources[i].sourceId);
        m_sourceList->setItemWidget(item, holder);
    }
    m_sourceList->setCurrentRow(m_canvas->canvas().selected_guide_index);
    m_sourceCaption->setText(m_sources.isEmpty() ? tr("No guide tabs available") : canvasGuideSourceCaption(int(m_sources.size())));
    m_updatingPanels = false;
}

void CanvasTab::refreshLayerList()
{
    m_updatingPanels = true;
    const CanvasTabSettings &canvas = m_canvas->canvas();
    const int n = int(canvas.objects.size());
    while (m_layerList->count() > n)
        delete m_layerList->takeItem(m_layerList->count() - 1);
    while (m_layerList->count() < n)
        new QListWidgetItem(m_layerList);
    const QVector<int> selection = m_canvas->selection();
    for (int row = 0; row < n; ++row) {
        const CanvasObjectSettings &object = canvas.objects[n - 1 - row];
        QListWidgetItem *item = m_layerList->item(row);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setText(object.name.isEmpty() ? canvasDefaultObjectName(canvasObjectKind(object)) : object.name);
        item->setCheckState(object.visible ? Qt::Checked : Qt::Unchecked);
        item->setSelected(selection.contains(n - 1 - row));
    }
    if (!selection.isEmpty())
        m_layerList->setCurrentRow(n - 1 - selection.last(), QItemSelectionModel::NoUpdate);
    m_updatingPanels = false;
}

void CanvasTab::refreshPanels()
{
    refreshLayerList();
    const int primary = m_canvas->primarySelection();
    const CanvasTabSettings &canvas = m_canvas->canvas();
    m_objectPanel->showValues(primary >= 0 ? &canvas.objects[primary] : nullptr, canvas);
    if (QAbstractButton *b = m_tools->button(int(m_canvas->tool())))
        b->setChecked(true);
    if (m_sourceList->currentRow() != canvas.selected_guide_index) {
        m_updatingPanels = true;
        m_sourceList->setCurrentRow(canvas.selected_guide_index);
        m_updatingPanels = false;
    }
}

void CanvasTab::retranslateUi()
{
    for (int i = 0; i < m_toolButtons.size(); ++i)
        m_toolButtons[i]->setText(tr(kToolTexts[i]));
    for (const auto &[b, text] : m_buttons)
        b->setText(tr(text));
    for (const auto &[label, text] : m_headings)
        label->setText(tr(text));
    refreshSourceList();
}

void CanvasTab::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslateUi();
    QWidget::changeEvent(event);
}
