#include "scene/ui/ThreeDViewTab.h"

#include "exchange/ExporterTable.h"
#include "scene/ui/SceneExportDialogs.h"

#include "scene/SceneModel.h"
#include "exchange/MeshImport.h"
#include "scene/ui/SceneAddObjectDialog.h"
#include "scene/ui/ScenePropertyPanel.h"
#include "scene/ui/SceneWidget.h"
#include "video/VideoSourceRegistry.h"

#include <QAction>
#include <QApplication>
#include <QActionGroup>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QImageReader>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QDir>
#include <QSet>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

ThreeDViewTab::ThreeDViewTab(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("vantreoThreeDViewTab"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    m_view = new SceneWidget(this);
    m_panel = new ScenePropertyPanel(this);
    m_panel->setVideoStatusProvider([view = m_view](const GuideObject &object, bool projectorImage) {
        return view->videoSources()->statusText(object, projectorImage);
    });
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("vantreoSceneObjectList"));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("vantreoSceneStatus"));
    m_status->setContentsMargins(8, 3, 8, 3);

    buildAddMenu();
    buildToolBar();
    addExportButtons();
    layout->addWidget(m_toolBar);

    auto *side = new QSplitter(Qt::Vertical, this);
    auto *listBox = new QWidget(side);
    auto *listLayout = new QVBoxLayout(listBox);
    listLayout->setContentsMargins(4, 4, 4, 0);
    auto *objectsLabel = new QLabel(listBox);
    objectsLabel->setObjectName(QStringLiteral("vantreoSceneObjectsLabel"));
    m_texts.bind(objectsLabel, [] { return tr("Objects"); });
    listLayout->addWidget(objectsLabel);
    listLayout->addWidget(m_list);
    side->addWidget(listBox);
    side->addWidget(m_panel);
    side->setStretchFactor(0, 1);
    side->setStretchFactor(1, 3);
    side->setSizes({180, 620});

    auto *main = new QSplitter(Qt::Horizontal, this);
    main->addWidget(m_view);
    main->addWidget(side);
    main->setStretchFactor(0, 4);
    main->setStretchFactor(1, 1);
    main->setSizes({900, 340});
    layout->addWidget(main, 1);
    layout->addWidget(m_status);

    connect(m_view, &SceneWidget::sceneChanged, this, [this] {
        rebuildObjectList();
        syncPanel();
        Q_EMIT sceneChanged();
    });
    connect(m_view, &SceneWidget::selectionChanged, this, [this] {
        syncListSelection();
        syncPanel();
    });
    connect(m_view, &SceneWidget::viewStateChanged, this, [this] {
        syncViewActions();
        Q_EMIT sceneChanged();
    });
    connect(m_view, &SceneWidget::undoStateChanged, this, &ThreeDViewTab::undoStateChanged);
    connect(m_view, &SceneWidget::statusMessage, this, &ThreeDViewTab::showStatus);
    connect(m_panel, &ScenePropertyPanel::objectEdited, this,
            [this](int index, const GuideObject &edited) { m_view->applyObjectEdit(index, edited); });
    connect(m_list, &QListWidget::itemSelectionChanged, this, [this] {
        if (m_syncingList)
            return;
        QList<int> indices;
        for (QListWidgetItem *item : m_list->selectedItems())
            indices.append(m_list->row(item));
        // The current item stays the primary selection (the gizmo's object).
        const int current = m_list->currentRow();
        if (indices.contains(current)) {
            indices.removeAll(current);
            indices.append(current);
        }
        m_view->setSelection(indices);
    });

    m_guidePoll = new QTimer(this);
    m_guidePoll->setInterval(1000);
    connect(m_guidePoll, &QTimer::timeout, this, &ThreeDViewTab::refreshGuideSources);

    setViewSettings(Guide3DViewSettings::created());
    // The view's keys reach it from the object list and the rest of the tab as well.
    qApp->installEventFilter(this);
}

ThreeDViewTab::~ThreeDViewTab()
{
    qApp->removeEventFilter(this);
}

void ThreeDViewTab::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        m_texts.apply();
    QWidget::changeEvent(event);
}

void ThreeDViewTab::buildToolBar()
{
    m_toolBar = new QToolBar(this);
    m_toolBar->setObjectName(QStringLiteral("vantreoSceneToolBar"));
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextOnly);

    auto *addButton = new QToolButton(m_toolBar);
    m_texts.bind(addButton, [] { return tr("Add"); });
    addButton->setObjectName(QStringLiteral("vantreoSceneAddButton"));
    addButton->setMenu(m_addMenu);
    addButton->setPopupMode(QToolButton::InstantPopup);
    m_toolBar->addWidget(addButton);
    m_toolBar->addSeparator();

    m_modeGroup = new QActionGroup(this);
    static const char *const modeNames[3] = {QT_TR_NOOP("Move (W)"), QT_TR_NOOP("Rotate (E)"), QT_TR_NOOP("Scale (R)")};
    for (int i = 0; i < 3; ++i) {
        m_modeActions[i] = m_toolBar->addAction(QString());
        m_texts.bind(m_modeActions[i], [i] { return tr(modeNames[i]); });
        m_modeActions[i]->setCheckable(true);
        m_modeGroup->addAction(m_modeActions[i]);
        connect(m_modeActions[i], &QAction::triggered, this, [this, i] { m_view->setTransformMode(i); });
    }
    m_localAction = m_toolBar->addAction(QString());
    m_texts.bind(m_localAction, [] { return tr("Local Axes (X)"); });
    m_localAction->setCheckable(true);
    connect(m_localAction, &QAction::toggled, this, [this](bool on) { m_view->setTransformSpace(on ? 1 : 0); });
    m_snapAction = m_toolBar->addAction(QString());
    m_texts.bind(m_snapAction, [] { return tr("Snap"); });
    m_snapAction->setCheckable(true);
    connect(m_snapAction, &QAction::toggled, m_view, &SceneWidget::setSnapEnabled);
    m_toolBar->addSeparator();

    // Menu entries keep their texts in the current language (see changeEvent).
    auto entry = [this](QMenu *menu, const char *text) {
        QAction *action = menu->addAction(QString());
        m_texts.bind(action, [text] { return tr(text); });
        return action;
    };
    auto *viewMenu = new QMenu(this);
    m_texts.bind(viewMenu, "title", [] { return tr("View"); });
    connect(entry(viewMenu, QT_TR_NOOP("Perspective (P)")), &QAction::triggered, this,
            [this] { m_view->setViewMode(ViewCameraMode::Perspective); });
    connect(entry(viewMenu, QT_TR_NOOP("Front")), &QAction::triggered, this,
            [this] { m_view->setViewMode(ViewCameraMode::Front); });
    connect(entry(viewMenu, QT_TR_NOOP("Side")), &QAction::triggered, this,
            [this] { m_view->setViewMode(ViewCameraMode::Side); });
    connect(entry(viewMenu, QT_TR_NOOP("Projector View (V)")), &QAction::triggered, this, [this] {
        if (!m_view->lookThrough(m_view->currentIndex()))
            showStatus(tr("Select a projector or camera to look through."), 4000);
    });
    connect(entry(viewMenu, QT_TR_NOOP("Frame Selection (F)")), &QAction::triggered, m_view,
            &SceneWidget::frameSelection);
    viewMenu->addSeparator();
    connect(entry(viewMenu, QT_TR_NOOP("Save Camera View...")), &QAction::triggered, this, [this] {
        bool ok = false;
        const QString name = QInputDialog::getText(this, tr("Save Camera View"), tr("Name"), QLineEdit::Normal,
                                                   tr("View %1").arg(m_view->cameraViews().size() + 1), &ok);
        if (ok && !name.trimmed().isEmpty())
            m_view->saveCameraView(name.trimmed());
    });
    QMenu *cameraViews = viewMenu->addMenu(QString());
    m_texts.bind(cameraViews, "title", [] { return tr("Camera Views"); });
    connect(cameraViews, &QMenu::aboutToShow, this, [this, cameraViews] {
        cameraViews->clear();
        const QVector<GuideCameraView> &views = m_view->cameraViews();
        if (views.isEmpty())
            cameraViews->addAction(tr("No saved camera views"))->setEnabled(false);
        for (int i = 0; i < views.size(); ++i)
            cameraViews->addAction(views[i].name, this, [this, i] { m_view->restoreCameraView(i); });
        if (!views.isEmpty()) {
            QMenu *remove = cameraViews->addMenu(tr("Remove"));
            for (int i = 0; i < views.size(); ++i)
                remove->addAction(views[i].name, this, [this, i] { m_view->removeCameraView(i); });
        }
    });
    viewMenu->addSeparator();
    m_objectsAction = entry(viewMenu, QT_TR_NOOP("Show Objects"));
    m_objectsAction->setCheckable(true);
    connect(m_objectsAction, &QAction::toggled, m_view, &SceneWidget::setShowObjects);
    m_gridAction = entry(viewMenu, QT_TR_NOOP("Show Grid"));
    m_gridAction->setCheckable(true);
    connect(m_gridAction, &QAction::toggled, m_view, &SceneWidget::setGridVisible);
    m_frustumAction = entry(viewMenu, QT_TR_NOOP("Show All Projector Frusta"));
    m_frustumAction->setCheckable(true);
    connect(m_frustumAction, &QAction::toggled, m_view, &SceneWidget::setShowProjectorFrustum);
    m_polygonAction = entry(viewMenu, QT_TR_NOOP("Show OBJ Polygon Lines"));
    m_polygonAction->setCheckable(true);
    connect(m_polygonAction, &QAction::toggled, m_view, &SceneWidget::setShowPolygonLines);
    m_helpAction = entry(viewMenu, QT_TR_NOOP("Show Viewport Controls"));
    m_helpAction->setCheckable(true);
    connect(m_helpAction, &QAction::toggled, m_view, &SceneWidget::setHelpOverlayVisible);
    auto *viewButton = new QToolButton(m_toolBar);
    viewButton->setObjectName(QStringLiteral("vantreoSceneViewButton"));
    m_texts.bind(viewButton, [] { return tr("View"); });
    viewButton->setMenu(viewMenu);
    viewButton->setPopupMode(QToolButton::InstantPopup);
    m_toolBar->addWidget(viewButton);

    auto *editMenu = new QMenu(this);
    m_texts.bind(editMenu, "title", [] { return tr("Edit"); });
    connect(entry(editMenu, QT_TR_NOOP("Copy")), &QAction::triggered, m_view, &SceneWidget::copySelection);
    connect(entry(editMenu, QT_TR_NOOP("Paste")), &QAction::triggered, m_view, &SceneWidget::pasteFromClipboard);
    connect(entry(editMenu, QT_TR_NOOP("Duplicate")), &QAction::triggered, m_view, &SceneWidget::duplicateSelection);
    connect(entry(editMenu, QT_TR_NOOP("Delete")), &QAction::triggered, this, [this] { m_view->deleteSelection(true); });
    editMenu->addSeparator();
    QAction *calibrate = entry(editMenu, QT_TR_NOOP("Calibrate Projector..."));
    connect(calibrate, &QAction::triggered, this, [this] {
        QMetaObject::invokeMethod(window(), "calibrateSelectedProjector", Qt::DirectConnection);
    });
    calibrate->setObjectName(QStringLiteral("actionCalibrateProjector"));
    auto *editButton = new QToolButton(m_toolBar);
    m_texts.bind(editButton, [] { return tr("Edit"); });
    editButton->setMenu(editMenu);
    editButton->setPopupMode(QToolButton::InstantPopup);
    m_toolBar->addWidget(editButton);

    buildExportMenu();
    auto *exportButton = new QToolButton(m_toolBar);
    exportButton->setObjectName(QStringLiteral("vantreoSceneExportButton"));
    m_texts.bind(exportButton, [] { return tr("Export"); });
    exportButton->setMenu(m_exportMenu);
    exportButton->setPopupMode(QToolButton::InstantPopup);
    m_toolBar->addWidget(exportButton);
}

void ThreeDViewTab::buildExportMenu()
{
    m_exportMenu = new QMenu(this);
    m_texts.bind(m_exportMenu, "title", [] { return tr("Export"); });
    m_exportMenu->setObjectName(QStringLiteral("vantreoSceneExportMenu"));
    for (const vg::exchange::ExporterEntry *entry : vg::exchange::exportersFor(vg::exchange::ExportSubject::SceneView)) {
        QAction *action = m_exportMenu->addAction(QString());
        m_texts.bind(action, [entry] { return entry->displayMenuText(); });
        action->setObjectName(QStringLiteral("vantreoSceneExport_") + entry->identifier);
        const QString identifier = entry->identifier;
        connect(action, &QAction::triggered, this, [this, identifier] { exportScene(identifier); });
    }
}

QStringList ThreeDViewTab::exportScene(const QString &identifier,
                                       const std::function<QString(const QString &, const QString &, const QString &)> &chooseFile)
{
    const vg::exchange::ExporterEntry *entry = vg::exchange::findExporter(identifier);
    if (!entry)
        return {};
    WindowExportImages images(m_view->guideImages());
    vg::exchange::ExportRequest request;
    request.objects = m_view->model().objects();
    request.selection = m_view->selection();
    request.objectIndex = m_view->currentIndex();
    request.images = &images;
    // With a selection the OBJ holds the selection; without one, every visible object.
    request.options.insert(QStringLiteral("selectedOnly"), !request.selection.isEmpty());
    const QStringList written = runWindowExport(this, *entry, request, chooseFile);
    if (!written.isEmpty())
        showStatus(tr("Exported %1").arg(QDir::toNativeSeparators(written.first())), 6000);
    return written;
}

void ThreeDViewTab::buildAddMenu()
{
    m_addMenu = new QMenu(this);
    m_texts.bind(m_addMenu, "title", [] { return tr("Add"); });
    m_addMenu->setObjectName(QStringLiteral("vantreoSceneAddMenu"));
    const struct {
        AddKind kind;
        const char *text;
    } entries[] = {
        {AddPlane, QT_TR_NOOP("Plane")},
        {AddCirclePlane, QT_TR_NOOP("Circle Plane")},
        {AddCylinderWall, QT_TR_NOOP("Cylinder Wall")},
        {AddDome, QT_TR_NOOP("Dome")},
        {AddSphere, QT_TR_NOOP("Sphere")},
        {AddHorseshoe, QT_TR_NOOP("Horseshoe")},
        {AddLShape, QT_TR_NOOP("L Shape")},
        {AddPerson, QT_TR_NOOP("Person")},
        {AddProjector, QT_TR_NOOP("Projector")},
        {AddCamera, QT_TR_NOOP("Camera")},
        {AddCurve, QT_TR_NOOP("Curve")},
        {AddDistanceMeasure, QT_TR_NOOP("Distance Measure")},
        {AddComment, QT_TR_NOOP("Comment")},
        {AddGuide, QT_TR_NOOP("Guide")},
        {AddImage, QT_TR_NOOP("Image")},
    };
    for (const auto &entry : entries) {
        if (entry.kind == AddProjector || entry.kind == AddCurve || entry.kind == AddGuide)
            m_addMenu->addSeparator();
        QAction *action = m_addMenu->addAction(QString());
        m_texts.bind(action, [text = entry.text] { return tr(text); });
        action->setData(int(entry.kind));
        const AddKind kind = entry.kind;
        connect(action, &QAction::triggered, this, [this, kind] { addObject(kind, true); });
    }
    buildImportActions();
}

void ThreeDViewTab::showStatus(const QString &text, int timeoutMs)
{
    m_status->setText(text);
    if (auto *window = qobject_cast<QMainWindow *>(this->window())) {
        if (text.isEmpty())
            window->statusBar()->clearMessage();
        else
            window->statusBar()->showMessage(text, timeoutMs);
    }
    if (timeoutMs > 0 && !text.isEmpty()) {
        QTimer::singleShot(timeoutMs, m_status, [label = m_status, text] {
            if (label->text() == text)
                label->clear();
        });
    }
}

Guide3DViewSettings ThreeDViewTab::viewSettings() const
{
    return m_view->viewSettings();
}

void ThreeDViewTab::setViewSettings(const Guide3DViewSettings &settings)
{
    // Imported meshes are saved as their file path: read their geometry back.
    Guide3DViewSettings loaded = settings;
    QStringList problems;
    vg::exchange::loadImportedGeometry(loaded.objects, &problems);
    m_view->setViewSettings(loaded);
    if (!problems.isEmpty())
        showStatus(problems.join(QLatin1Char('\n')), 10000);
    rebuildObjectList();
    syncListSelection();
    syncPanel();
    syncViewActions();
}

bool ThreeDViewTab::undo() { return m_view->undo(); }
bool ThreeDViewTab::redo() { return m_view->redo(); }
bool ThreeDViewTab::canUndo() const { return m_view->canUndo(); }
bool ThreeDViewTab::canRedo() const { return m_view->canRedo(); }

void ThreeDViewTab::setGuideSources(const QStringList &names, const QVector<QImage> &images,
                                    const QVector<GuideArraySlices> &arrays)
{
    m_panel->setGuideArrays(arrays);
    m_view->setGuideArrays(arrays);
    QList<qint64> keys;
    for (const QImage &image : images)
        keys.append(image.cacheKey());
    if (names == m_guideNames && keys == m_guideImageKeys)
        return; // nothing new: keep the uploaded textures
    m_guideImageKeys = keys;
    m_guideNames = names;
    m_panel->setGuideNames(names);
    m_view->setGuideImages(images);
}

void ThreeDViewTab::setGuideSourceProvider(GuideSourceProvider provider)
{
    m_provider = std::move(provider);
    refreshGuideSources();
}

void ThreeDViewTab::refreshGuideSources()
{
    if (!m_provider)
        return;
    QStringList names;
    QVector<QImage> images;
    QVector<GuideArraySlices> arrays;
    m_provider(&names, &images, &arrays);
    setGuideSources(names, images, arrays);
}

void ThreeDViewTab::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    // Guides are edited in other tabs; pick up their latest images when we come back, and
    // keep looking while shown, since a guide renders in the background.
    refreshGuideSources();
    if (m_provider)
        m_guidePoll->start();
}

void ThreeDViewTab::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_guidePoll->stop();
}

void ThreeDViewTab::rebuildObjectList()
{
    const QVector<GuideObject> &objects = m_view->objects();
    m_syncingList = true;
    if (m_list->count() != objects.size()) {
        m_list->clear();
        for (const GuideObject &object : objects)
            m_list->addItem(object.name);
    }
    for (int i = 0; i < objects.size(); ++i) {
        QListWidgetItem *item = m_list->item(i);
        if (item->text() != objects[i].name)
            item->setText(objects[i].name);
        const QColor text = objects[i].visible ? palette().color(QPalette::Text)
                                               : palette().color(QPalette::Disabled, QPalette::Text);
        item->setForeground(text);
    }
    m_syncingList = false;
    syncListSelection();
}

void ThreeDViewTab::syncListSelection()
{
    m_syncingList = true;
    const QList<int> selection = m_view->selection();
    for (int i = 0; i < m_list->count(); ++i)
        m_list->item(i)->setSelected(selection.contains(i));
    const int current = m_view->currentIndex();
    if (current >= 0 && current < m_list->count()) {
        m_list->setCurrentRow(current, QItemSelectionModel::NoUpdate);
        m_list->scrollToItem(m_list->item(current));
    }
    m_syncingList = false;
}

void ThreeDViewTab::syncPanel()
{
    QList<QPair<int, QString>> guideObjects;
    const QVector<GuideObject> &objects = m_view->objects();
    // Each Guide object is offered as the guide it shows, so choosing it projects that guide.
    for (const GuideObject &object : objects) {
        if (object.guide_index == KindGuide && object.texture_guide_index >= 0)
            guideObjects.append({object.texture_guide_index, object.name});
    }
    m_panel->setGuideObjects(guideObjects);
    const int index = m_view->currentIndex();
    if (index >= 0 && index < m_view->objectCount())
        m_panel->setObject(index, &m_view->objects().at(index));
    else
        m_panel->setObject(-1, nullptr);
}

void ThreeDViewTab::syncViewActions()
{
    const QSignalBlocker b1(m_localAction), b2(m_snapAction), b3(m_objectsAction), b4(m_gridAction),
        b5(m_frustumAction), b6(m_polygonAction), b7(m_helpAction);
    m_modeActions[m_view->transformMode()]->setChecked(true);
    m_localAction->setChecked(m_view->transformSpace() == 1);
    m_snapAction->setChecked(m_view->snapEnabled());
    m_objectsAction->setChecked(m_view->showObjects());
    m_gridAction->setChecked(m_view->gridVisible());
    m_frustumAction->setChecked(m_view->showProjectorFrustum());
    m_polygonAction->setChecked(m_view->showPolygonLines());
    m_helpAction->setChecked(m_view->helpOverlayVisible());
}

int ThreeDViewTab::addObject(AddKind kind, bool ask)
{
    using Dialog = SceneAddObjectDialog;
    SceneModel &model = m_view->model();

    // New objects go beside what was selected before, or where the camera looks.
    const int besideIndex = m_view->currentIndex();

    // Asks with the kind's dialog (or takes the defaults); false on Cancel. A name left
    // empty becomes the kind's name with the next free number ("Projector 2").
    QString name;
    QVector<int> v;
    Dialog::Lens lens;
    auto run = [&](const QString &title, const QString &defaultName, const QVector<Dialog::Field> &fields,
                   Dialog *prepared = nullptr) {
        v.clear();
        for (const Dialog::Field &f : fields)
            v.append(f.value);
        const QString numbered = numberedName(defaultName);
        name = numbered;
        if (prepared)
            lens = prepared->lens();
        if (!ask)
            return true;
        std::unique_ptr<Dialog> own;
        Dialog *dialog = prepared;
        if (!dialog) {
            own = std::make_unique<Dialog>(title, numbered, fields, this);
            dialog = own.get();
        }
        if (dialog->exec() != QDialog::Accepted)
            return false;
        name = dialog->name().isEmpty() ? numbered : dialog->name();
        v = dialog->values();
        lens = dialog->lens();
        return true;
    };
    // Projectors and cameras ask for their lens as well.
    auto applyLens = [&](int created) {
        if (created < 0)
            return;
        GuideObject object = model.object(created);
        object.projector_resolution_width = lens.width;
        object.projector_resolution_height = lens.height;
        object.throw_rate = float(lens.throwRatio);
        object.lens_shift_x = float(lens.shiftX);
        object.lens_shift_y = float(lens.shiftY);
        m_view->setObjectWithoutUndo(created, object);
    };

    int index = -1;
    switch (kind) {
    case AddPlane:
        if (run(tr("Add Plane"), tr("Plane"), {Dialog::size(tr("Width"), 2000), Dialog::size(tr("Height"), 1000)}))
            index = model.addPlane(name, v[0], v[1]);
        break;
    case AddCirclePlane:
        if (run(tr("Add Circle Plane"), tr("Circle Plane"),
                {Dialog::size(tr("Width"), 2000), Dialog::size(tr("Height"), 2000),
                 Dialog::radius(tr("Hole radius"), 0)}))
            index = model.addCirclePlane(name, v[0], v[1], v[2]);
        break;
    case AddCylinderWall:
        if (run(tr("Add Cylinder Wall"), tr("Cylinder Wall"),
                {Dialog::size(tr("Arc length"), 4000), Dialog::size(tr("Height"), 2500),
                 Dialog::degrees(tr("Angle"), 90)}))
            index = model.addCylinderWall(name, v[0], v[1], v[2]);
        break;
    case AddDome:
        if (run(tr("Add Dome"), tr("Dome"),
                {Dialog::radius(tr("Radius"), 3000), Dialog::radius(tr("Height"), 3000),
                 Dialog::segments(tr("Segments around"), 48), Dialog::segments(tr("Segments up"), 16)}))
            index = model.addDome(name, v[0], v[1], v[2], v[3]);
        break;
    case AddSphere:
        if (run(tr("Add Sphere"), tr("Sphere"),
                {Dialog::size(tr("Radius"), 1000), Dialog::size(tr("Height"), 1000),
                 Dialog::segments(tr("Segments around"), 48), Dialog::segments(tr("Segments up"), 24)}))
            index = model.addSphere(name, v[0], v[1], v[2], v[3]);
        break;
    case AddHorseshoe:
        if (run(tr("Add Horseshoe"), tr("Horseshoe"),
                {Dialog::size(tr("Width"), 4000), Dialog::size(tr("Depth"), 3000), Dialog::size(tr("Height"), 2500),
                 Dialog::radius(tr("Bend radius"), 1000), Dialog::segments(tr("U lines"), 24),
                 Dialog::segments(tr("V lines"), 8), Dialog::segments(tr("Round lines"), 12)}))
            index = model.addHorseshoe(name, v[0], v[1], v[2], v[3], v[4], v[5], v[6]);
        break;
    case AddLShape:
        if (run(tr("Add L Shape"), tr("L Shape"),
                {Dialog::size(tr("Width"), 3000), Dialog::size(tr("Height"), 2500), Dialog::size(tr("Depth"), 3000),
                 Dialog::radius(tr("Corner radius"), 0)}))
            index = model.addLShape(name, v[0], v[1], v[2], v[3]);
        break;
    case AddPerson:
        // A person keeps its height in its name ("Person 170 cm").
        if (run(tr("Add Person"), QString(),
                {Dialog::size(tr("Height"), 1700), Dialog::Field{tr("Width (0 = from height)"), 0, 0, 100000,
                                                                 QStringLiteral("mm")}}))
            index = model.addPerson(name, v[0], v[1]);
        break;
    case AddProjector:
    case AddCamera: {
        const bool projector = kind == AddProjector;
        const GuideObject defaults = SceneModel::defaultObject(projector ? KindProjector : KindCamera);
        const QVector<Dialog::Field> fields = projector
            ? QVector<Dialog::Field>{Dialog::size(tr("Body width"), 300), Dialog::size(tr("Body height"), 150),
                                     Dialog::size(tr("Body depth"), 300)}
            : QVector<Dialog::Field>{Dialog::size(tr("Body width"), 150), Dialog::size(tr("Body height"), 100),
                                     Dialog::size(tr("Body depth"), 150)};
        const QString title = projector ? tr("Add Projector") : tr("Add Camera");
        const QString base = projector ? tr("Projector") : tr("Camera");
        Dialog dialog(title, numberedName(base), fields, this);
        dialog.addLensFields({defaults.projector_resolution_width, defaults.projector_resolution_height,
                              double(defaults.throw_rate), double(defaults.lens_shift_x),
                              double(defaults.lens_shift_y)});
        if (!run(title, base, fields, &dialog))
            break;
        index = projector ? model.addProjector(name, v[0], v[1], v[2], true) : model.addCamera(name, v[0], v[1], v[2]);
        applyLens(index);
        break;
    }
    case AddCurve:
        m_view->setFocus();
        m_view->beginCurveDrawing();
        return -1; // the curve appears with its first point
    case AddDistanceMeasure:
        if (run(tr("Add Distance Measure"), tr("Distance Measure"), {Dialog::size(tr("Length"), 1000)}))
            index = model.addDistanceMeasure(name, v[0]);
        break;
    case AddComment: {
        QString text = tr("Comment");
        if (ask) {
            bool ok = false;
            text = QInputDialog::getText(this, tr("Add Comment"), tr("Comment text"), QLineEdit::Normal, QString(), &ok);
            if (!ok)
                return -1;
        }
        index = model.addComment(numberedName(tr("Comment")), text);
        break;
    }
    case AddGuide: {
        QStringList guides = m_guideNames;
        if (guides.isEmpty())
            guides.append(tr("Guide 1"));
        int guideIndex = 0;
        Dialog dialog(tr("Add Guide"), numberedName(tr("Guide")),
                      {Dialog::size(tr("Width"), 4000), Dialog::size(tr("Height"), 2250)}, this);
        dialog.setChoice(tr("Guide tab"), guides, 0);
        if (!run(QString(), tr("Guide"), {Dialog::size(tr("Width"), 4000), Dialog::size(tr("Height"), 2250)}, &dialog))
            break;
        if (ask)
            guideIndex = std::max(0, dialog.choice());
        index = model.addGuide(name, guideIndex, v[0], v[1]);
        break;
    }
    case AddObjMesh:
    case AddDxfDrawing:
        if (!ask)
            return -1;
        return importMeshFromDialog(kind);
    case AddImage: {
        QString path;
        int heightMm = 1125;
        if (ask) {
            path = QFileDialog::getOpenFileName(this, tr("Add Image"), QString(),
                                                tr("Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp);;All files (*)"));
            if (path.isEmpty())
                return -1;
            const QSize size = QImageReader(path).size();
            if (size.isValid() && size.width() > 0)
                heightMm = std::max(1, int(std::lround(2000.0 * size.height() / size.width())));
        }
        if (run(tr("Add Image"), ask ? QFileInfo(path).completeBaseName() : tr("Image"),
                {Dialog::size(tr("Width"), 2000), Dialog::size(tr("Height"), heightMm)}))
            index = model.addImage(name, path, v[0], v[1]);
        break;
    }
    }
    if (index >= 0) {
        m_view->placeNewObject(index, besideIndex);
        m_view->setFocus();
    }
    return index;
}

QString ThreeDViewTab::numberedName(const QString &base) const
{
    if (base.isEmpty())
        return base;
    QSet<QString> taken;
    for (const GuideObject &object : m_view->objects())
        taken.insert(object.name);
    for (int n = 1;; ++n) {
        const QString candidate = QStringLiteral("%1 %2").arg(base).arg(n);
        if (!taken.contains(candidate))
            return candidate;
    }
}

void ThreeDViewTab::addExportButtons()
{
    // The window runs this export: it knows where the dialog's settings are kept.
    m_exportMenu->addSeparator();
    QAction *lut = m_exportMenu->addAction(QString());
    m_texts.bind(lut, [] { return tr("Export Projector/Camera UV LUT..."); });
    lut->setObjectName(QStringLiteral("actionExportProjectorCameraUvLut"));
    connect(lut, &QAction::triggered, this, [this] {
        QMetaObject::invokeMethod(window(), "runProjectorCameraUvLutExport", Qt::DirectConnection);
    });
}
