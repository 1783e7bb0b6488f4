#include "calibration/ui/ProjectorCalibrationDialog.h"

#include "calibration/ui/ProjectorCalibrationPointView.h"
#include "scene/LensModel.h"
#include "scene/gl/OffscreenSceneRender.h"
#include "scene/ui/SceneWidget.h"
#include "video/NdiSender.h"

#include <QCheckBox>
#include <QComboBox>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTableWidget>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int kMinimumPoints = 6;
constexpr int kMaxRenderSide = 1280;

enum Column {
    ColumnUse = 0,
    ColumnVertex,
    ColumnX,
    ColumnY,
    ColumnZ,
    ColumnImageX,
    ColumnImageY,
    ColumnResidual,
};

bool samePose(const GuideObject &a, const GuideObject &b)
{
    return a.translate_x == b.translate_x && a.translate_y == b.translate_y && a.translate_z == b.translate_z
           && a.rotate_x == b.rotate_x && a.rotate_y == b.rotate_y && a.rotate_z == b.rotate_z
           && a.throw_rate == b.throw_rate && a.lens_shift_x == b.lens_shift_x && a.lens_shift_y == b.lens_shift_y
           && a.projector_resolution_width == b.projector_resolution_width
           && a.projector_resolution_height == b.projector_resolution_height
           && a.projector_flip_h == b.projector_flip_h && a.projector_flip_v == b.projector_flip_v
           && a.projector_rotate_180 == b.projector_rotate_180;
}

} // namespace

ProjectorCalibrationDialog::ProjectorCalibrationDialog(SceneWidget *scene,
                                                       const GuideProjectorCalibrationSettings &settings,
                                                       QWidget *parent, int projectorIndex,
                                                       SettingsCallback settingsChanged)
    : QDialog(parent), m_scene(scene), m_settings(settings), m_settingsChanged(std::move(settingsChanged))
{
    buildControls();

    m_wireframeView->rowChosen = [this](int row) { rowChosen(row); };
    m_wireframeView->vertexPicked = [this](int vertex) { vertexPicked(vertex); };
    m_wireframeView->refreshRequested = [this] { renderWireframeBackground(); };
    m_projectorView->rowChosen = [this](int row) { rowChosen(row); };
    m_projectorView->pointClicked = [this](const QPointF &pixel) { projectorPointClicked(pixel); };
    m_projectorView->pointMoved = [this](int row, const QPointF &pixel, bool final) { pointMoved(row, pixel, final); };
    m_projectorView->refreshRequested = [this] { renderProjectorBackground(); };

    connect(m_table, &QTableWidget::currentCellChanged, this, [this](int row) {
        if (!m_refreshingTable && row >= 0)
            rowChosen(row);
    });
    connect(m_table, &QTableWidget::itemChanged, this, [this](QTableWidgetItem *item) {
        if (m_refreshingTable || item->column() != ColumnUse)
            return;
        m_matches.setUsed(item->row(), item->checkState() == Qt::Checked);
        edited();
    });
    connect(m_projectorChooser, &QComboBox::currentIndexChanged, this, [this] {
        if (!m_refreshingChoosers)
            setProjectorIndex(m_projectorChooser->currentData().toInt());
    });
    connect(m_targetChooser, &QComboBox::currentIndexChanged, this, [this] {
        if (!m_refreshingChoosers)
            setTargetIndex(m_targetChooser->currentData().toInt());
    });
    connect(m_nameEdit, &QLineEdit::editingFinished, this, [this] {
        const GuideObject *projector = projectorObject();
        const QString name = m_nameEdit->text().trimmed();
        if (!projector || name.isEmpty() || name == projector->name)
            return;
        GuideObject renamed = *projector;
        renamed.name = name;
        m_scene->applyObjectEdit(m_projectorIndex, renamed);
    });

    if (m_scene) {
        connect(m_scene, &SceneWidget::sceneChanged, this, &ProjectorCalibrationDialog::sceneChanged);
        // A project load replaces the 3D view: its calibration windows go with it.
        connect(m_scene, &QObject::destroyed, this, &QWidget::close);
    }

    // Without a usable index the first projector of the scene is taken.
    if (m_scene && (projectorIndex < 0 || projectorIndex >= m_scene->objectCount()
                    || !m_scene->objects().at(projectorIndex).hasLens())) {
        projectorIndex = -1;
        for (int i = 0; i < m_scene->objectCount() && projectorIndex < 0; ++i) {
            if (m_scene->objects().at(i).isProjector())
                projectorIndex = i;
        }
    }
    setProjectorIndex(projectorIndex);
    applyOutputMode();
}

ProjectorCalibrationDialog::~ProjectorCalibrationDialog() = default;

// ---- scene and rows ------------------------------------------------------------------------

const GuideObject *ProjectorCalibrationDialog::projectorObject() const
{
    if (!m_scene || m_projectorIndex < 0 || m_projectorIndex >= m_scene->objectCount())
        return nullptr;
    const GuideObject &object = m_scene->objects().at(m_projectorIndex);
    return object.hasLens() ? &object : nullptr;
}

GuideObject ProjectorCalibrationDialog::previewProjector() const
{
    const GuideObject *projector = projectorObject();
    if (!projector)
        return GuideObject();
    GuideObject preview = *projector;
    // A fit that was not written to the scene is shown until the projector itself changes.
    if (m_haveFit && samePose(*projector, m_projectorAtFit))
        applyProjectorCalibration(preview, m_result);
    return preview;
}

void ProjectorCalibrationDialog::setProjectorIndex(int index)
{
    if (m_scene && m_projectorIndex >= 0 && m_projectorIndex != index)
        storeRowsInRecord();
    m_projectorIndex = index;
    m_haveFit = false;
    m_result = ProjectorCalibrationResult();
    m_diagnostics = CalibrationDiagnostics();
    m_resultLine->clear();
    m_diagnosticsLine->clear();
    const GuideObject *projector = projectorObject();
    m_haveProjectorAtOpen = projector != nullptr;
    m_projectorName = projector ? projector->name : QString();
    if (projector) {
        m_projectorAtOpen = *projector;
        m_scene->registerCalibrationWindow(index, this);
    }
    loadRowsFromRecord();
    fillObjectChoosers();
    int target = -1;
    for (const CalibrationMatchRow &row : m_matches.rows()) {
        if (m_scene && row.targetIndex >= 0 && row.targetIndex < m_scene->objectCount()
            && isCalibrationTargetCandidate(m_scene->objects().at(row.targetIndex))) {
            target = row.targetIndex;
            break;
        }
    }
    if (target < 0 && m_targetChooser->count() > 0)
        target = m_targetChooser->itemData(0).toInt();
    m_targetIndex = -2;   // forces the rebuild
    setTargetIndex(target);
    renderProjectorBackground();
}

void ProjectorCalibrationDialog::setTargetIndex(int index)
{
    if (index == m_targetIndex)
        return;
    m_targetIndex = index;
    m_targetName = m_scene && index >= 0 && index < m_scene->objectCount() ? m_scene->objects().at(index).name : QString();
    {
        const QSignalBlocker block(m_targetChooser);
        m_targetChooser->setCurrentIndex(m_targetChooser->findData(index));
    }
    rebuildWireframe();
    m_wireframeView->frameWireframe();
    refreshTable();
    refreshViews();
    refreshGuidance();
}

void ProjectorCalibrationDialog::fillObjectChoosers()
{
    m_refreshingChoosers = true;
    m_projectorChooser->clear();
    m_targetChooser->clear();
    if (m_scene) {
        const QVector<GuideObject> &objects = m_scene->objects();
        for (int i = 0; i < objects.size(); ++i) {
            const GuideObject &o = objects.at(i);
            if (o.hasLens())
                m_projectorChooser->addItem(QStringLiteral("%1: %2").arg(i + 1).arg(o.name), i);
            else if (isCalibrationTargetCandidate(o))
                m_targetChooser->addItem(QStringLiteral("%1: %2").arg(i + 1).arg(o.name), i);
        }
    }
    m_projectorChooser->setCurrentIndex(m_projectorChooser->findData(m_projectorIndex));
    m_targetChooser->setCurrentIndex(m_targetChooser->findData(m_targetIndex));
    const GuideObject *projector = projectorObject();
    if (!m_nameEdit->hasFocus())
        m_nameEdit->setText(projector ? projector->name : QString());
    m_outputSize->setText(projector ? tr("%1 px").arg(QStringLiteral("%1 x %2")
                                                          .arg(projector->projector_resolution_width)
                                                          .arg(projector->projector_resolution_height))
                                    : QString());
    m_refreshingChoosers = false;
}

void ProjectorCalibrationDialog::rebuildWireframe()
{
    m_wireframe = CalibrationWireframe();
    if (m_scene && m_targetIndex >= 0 && m_targetIndex < m_scene->objectCount())
        m_wireframe = buildCalibrationWireframe(m_scene->objects().at(m_targetIndex));
    m_wireframeView->setWireframe(&m_wireframe);
    m_projectorView->setWireframe(&m_wireframe);
}

void ProjectorCalibrationDialog::loadRowsFromRecord()
{
    const GuideObject *projector = projectorObject();
    m_matches.replaceRows(projector ? CalibrationMatchList::rowsFromRecord(projector->projector_calibration)
                                    : QVector<CalibrationMatchRow>());
    m_selectedRow = -1;
}

void ProjectorCalibrationDialog::storeRowsInRecord()
{
    const GuideObject *projector = projectorObject();
    if (!projector)
        return;
    GuideObject record = *projector;
    record.projector_calibration =
        m_matches.toRecord(projector->projector_resolution_width, projector->projector_resolution_height);
    record.projector_calibration_settings = m_settings;
    record.projector_calibration_output_mode = m_settings.output_mode;
    record.projector_calibration_output_name = m_settings.output_name;
    if (record == *projector)
        return;
    m_writingRecord = true;
    m_scene->setObjectWithoutUndo(m_projectorIndex, record);
    m_writingRecord = false;
}

void ProjectorCalibrationDialog::sceneChanged()
{
    if (m_writingRecord)
        return;
    const int projector = followObject(m_projectorIndex, m_projectorName, true);
    if (projector != m_projectorIndex) {
        m_projectorIndex = projector;
        if (projector >= 0)
            m_scene->registerCalibrationWindow(projector, this);
        else
            m_haveFit = false;
    }
    if (const GuideObject *p = projectorObject())
        m_projectorName = p->name;
    const int target = followObject(m_targetIndex, m_targetName, false);
    if (target != m_targetIndex && target >= 0)
        m_matches.retarget(m_targetIndex, target);
    m_targetIndex = target;
    if (m_scene && target >= 0)
        m_targetName = m_scene->objects().at(target).name;
    fillObjectChoosers();
    rebuildWireframe();
    refreshViews();
    refreshGuidance();
    renderProjectorBackground();
    renderWireframeBackground();
}

int ProjectorCalibrationDialog::followObject(int index, const QString &name, bool lens) const
{
    if (!m_scene || index < 0)
        return -1;
    const QVector<GuideObject> &objects = m_scene->objects();
    auto qualifies = [lens](const GuideObject &o) { return lens ? o.hasLens() : isCalibrationTargetCandidate(o); };
    if (index < objects.size() && objects.at(index).name == name && qualifies(objects.at(index)))
        return index;
    for (int i = 0; i < objects.size(); ++i) {
        if (objects.at(i).name == name && qualifies(objects.at(i)))
            return i;
    }
    return index < objects.size() && qualifies(objects.at(index)) ? index : -1;
}

QString ProjectorCalibrationDialog::targetLabel() const
{
    return m_matches.isValidRow(m_selectedRow) ? m_matches.row(m_selectedRow).label() : QString();
}

QVector<int> ProjectorCalibrationDialog::calibrationRows() const
{
    QVector<int> rows;
    for (int i = 0; i < m_matches.count(); ++i) {
        const CalibrationMatchRow &row = m_matches.row(i);
        if (row.used && row.image)
            rows.append(i);
    }
    return rows;
}

void ProjectorCalibrationDialog::selectRow(int row)
{
    m_selectedRow = m_matches.isValidRow(row) ? row : -1;
    m_refreshingTable = true;
    if (m_selectedRow >= 0)
        m_table->selectRow(m_selectedRow);
    else
        m_table->clearSelection();
    m_refreshingTable = false;
    refreshViews();
}

void ProjectorCalibrationDialog::rowChosen(int row)
{
    if (!m_matches.isValidRow(row))
        return;
    selectRow(row);
    if (!m_matches.row(row).image)
        setStatus(tr("Click the matching real projected/camera point for %1.").arg(targetLabel()));
}

void ProjectorCalibrationDialog::vertexPicked(int vertex)
{
    if (vertex < 0 || vertex >= int(m_wireframe.vertices.size()) || !m_scene)
        return;
    int row = m_matches.findVertex(m_targetIndex, vertex);
    if (row < 0) {
        CalibrationMatchRow added;
        added.targetIndex = m_targetIndex;
        added.targetName = m_scene->objects().at(m_targetIndex).name;
        added.vertexIndex = vertex;
        const Eigen::Vector3d &p = m_wireframe.vertices[size_t(vertex)];
        added.x = p.x();
        added.y = p.y();
        added.z = p.z();
        row = m_matches.appendRow(added);
        refreshTable();
    }
    selectRow(row);
    setStatus(tr("Now click the matching real projected/camera point for %1.").arg(targetLabel()));
}

void ProjectorCalibrationDialog::projectorPointClicked(const QPointF &pixel)
{
    if (!m_matches.isValidRow(m_selectedRow)) {
        refreshGuidance();
        return;
    }
    m_matches.setImage(m_selectedRow, pixel, true);
    setStatus(tr("Click wireframe vertices, then click matching real points. Need 6 or more. Current: %1")
                  .arg(calibrationRows().size()));
    edited();
}

void ProjectorCalibrationDialog::pointMoved(int row, const QPointF &pixel, bool final)
{
    if (!m_matches.isValidRow(row))
        return;
    if (!final) {
        if (m_dragRow != row) {
            m_dragRow = row;
            m_dragStart = m_matches.row(row).image;
        }
        m_matches.setImage(row, pixel, false);
        refreshViews();
        return;
    }
    if (m_dragRow == row) {
        m_matches.setImage(row, pixel, false);
        m_matches.recordMove(row, m_dragStart);
    } else {
        m_matches.setImage(row, pixel, true);
    }
    m_dragRow = -1;
    m_dragStart.reset();
    edited();
}

void ProjectorCalibrationDialog::edited(bool allowAutoCalibration)
{
    if (!m_matches.isValidRow(m_selectedRow))
        m_selectedRow = -1;
    storeRowsInRecord();
    refreshTable();
    refreshViews();
    if (allowAutoCalibration && calibrationRows().size() >= kMinimumPoints)
        calibrate(true);
}

int ProjectorCalibrationDialog::fillFromProjection()
{
    const GuideObject *projector = projectorObject();
    if (!projector) {
        setStatus(tr("Add or select a projector object first."));
        return 0;
    }
    const vg::scene::LensModel lens(vg::scene::lensIntrinsicsOf(previewProjector()),
                                    vg::scene::lensPoseOf(previewProjector()),
                                    std::numeric_limits<double>::infinity());
    int filled = 0;
    for (int i = 0; i < m_matches.count(); ++i) {
        const CalibrationMatchRow &row = m_matches.row(i);
        const vg::scene::LensProjection p = lens.project({row.x, row.y, row.z});
        if (!(p.depth > 1e-4))
            continue;
        m_matches.setImage(i, QPointF(p.px, p.py), false);
        ++filled;
    }
    setStatus(tr("Filled %1 matched rows from the current wireframe projection.").arg(filled));
    edited(false);
    return filled;
}

int ProjectorCalibrationDialog::deleteSelectedRows()
{
    QList<int> rows;
    for (const QModelIndex &index : m_table->selectionModel()->selectedRows())
        rows.append(index.row());
    if (rows.isEmpty() && m_selectedRow >= 0)
        rows.append(m_selectedRow);
    const int removed = m_matches.deleteRows(rows);
    if (removed == 0)
        return 0;
    m_selectedRow = -1;
    edited();
    // The fit that follows has its own line; the status keeps what the edit did.
    setStatus(CalibrationMatchList::deletedText(removed));
    return removed;
}

bool ProjectorCalibrationDialog::clearMatches(bool ask)
{
    if (ask) {
        confirmAndClear();
        return m_matches.count() == 0;
    }
    m_matches.clear();
    m_selectedRow = -1;
    m_haveFit = false;
    m_resultLine->clear();
    m_diagnosticsLine->clear();
    setStatus(CalibrationMatchList::clearedText());
    edited(false);
    return true;
}

void ProjectorCalibrationDialog::undo()
{
    const QString text = m_matches.undo();
    edited();
    setStatus(text);
}

void ProjectorCalibrationDialog::redo()
{
    const QString text = m_matches.redo();
    edited();
    setStatus(text);
}

void ProjectorCalibrationDialog::restoreProjector()
{
    const GuideObject *projector = projectorObject();
    if (!projector || !m_haveProjectorAtOpen)
        return;
    GuideObject restored = m_projectorAtOpen;
    // The matches made since stay; only the lens and pose go back.
    restored.projector_calibration = projector->projector_calibration;
    restored.projector_calibration_settings = projector->projector_calibration_settings;
    restored.name = projector->name;
    m_haveFit = false;
    m_scene->applyObjectEdit(m_projectorIndex, restored);
    setStatus(tr("Projector restored to its pose and lens from when this window opened."));
}

void ProjectorCalibrationDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Undo)) {
        undo();
        return;
    }
    if (event->matches(QKeySequence::Redo)) {
        redo();
        return;
    }
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
        deleteSelectedRows();
        return;
    }
    // Escape would close the window and lose the session's rows without asking.
    if (event->key() == Qt::Key_Escape)
        return;
    QDialog::keyPressEvent(event);
}

// ---- calibration ---------------------------------------------------------------------------

bool ProjectorCalibrationDialog::calibrate(bool automatic)
{
    const GuideObject *projector = projectorObject();
    if (!projector) {
        setStatus(tr("Add or select a projector object first."));
        return false;
    }
    const QVector<int> rows = calibrationRows();
    QVector<GuideMatchedPoint> points;
    for (int index : rows) {
        const CalibrationMatchRow &row = m_matches.row(index);
        points.append(GuideMatchedPoint{float(row.x), float(row.y), float(row.z), float(row.image->x()),
                                        float(row.image->y())});
    }
    ProjectorCalibrationRequest request;
    request.projectorIndex = m_projectorIndex;
    request.imageSize = QSize(projector->projector_resolution_width, projector->projector_resolution_height);
    request.full = true;
    request.adjust_throw_ratio = m_settings.adjust_throw_ratio;
    request.adjust_lens_shift = m_settings.adjust_lens_shift;
    request.apply = m_settings.projector_update;
    if (m_haveFit)
        request.startPose = m_result.pose;

    ProjectorCalibrationResult result;
    QString message;
    if (!solveProjectorCalibration(*projector, points, request, &result, &message)) {
        setStatus(automatic ? tr("Auto calibration failed: %1").arg(message) : message);
        return false;
    }
    m_result = result;
    m_resultRows = rows;
    m_haveFit = true;
    m_projectorAtFit = *projector;
    m_diagnostics = diagnoseCalibration(*projector, points, request, result);

    const QString prefix = automatic ? tr("Auto ") : QString();
    const QString adjusted = tr("adjusted");
    const QString fixed = tr("fixed");
    const double fov = 2.0 * std::atan(1.0 / (2.0 * std::max(result.throwRatio, 0.0001))) * 180.0 / M_PI;
    const QString lensShift = QStringLiteral("%1%, %2% %3")
                                  .arg(result.lensShiftX, 0, 'f', 2)
                                  .arg(result.lensShiftY, 0, 'f', 2)
                                  .arg(result.lensShiftAdjusted ? adjusted : fixed);
    const QString summary =
        tr("%1Calibration applied. RMS error: %2 px, iterations: %3, Throw Ratio: %4 (%5), H-FOV: %6 deg, Lens Shift: %7")
            .arg(prefix)
            .arg(result.rmsError, 0, 'f', 2)
            .arg(result.iterations)
            .arg(result.throwRatio, 0, 'f', 3)
            .arg(result.throwRatioAdjusted ? adjusted : fixed)
            .arg(fov, 0, 'f', 2)
            .arg(lensShift);
    m_resultLine->setText(summary);

    QString applyError;
    if (m_settings.projector_update) {
        int original = 0;
        for (int index : rows) {
            const CalibrationMatchRow &row = m_matches.row(index);
            if (row.targetIndex == m_targetIndex && row.vertexIndex >= 0
                && row.vertexIndex < int(m_wireframe.vertices.size()))
                ++original;
        }
        if (original < kMinimumPoints) {
            applyError = tr("3D View projector update needs 6 or more original wireframe points.");
        } else {
            GuideObject fitted = *projector;
            applyProjectorCalibration(fitted, result);
            m_writingRecord = true;
            const bool changed = m_scene->applyObjectEdit(m_projectorIndex, fitted);
            m_writingRecord = false;
            if (!changed && (!projectorObject() || fitted != *projectorObject()))
                applyError = tr("The projector is no longer in the 3D View.");
        }
    }
    if (!applyError.isEmpty()) {
        setStatus(automatic ? tr("Auto calibration preview updated, but 3D View projector update failed: %1").arg(applyError)
                            : tr("Calibration preview updated, but 3D View projector update failed: %1").arg(applyError));
    } else {
        setStatus(summary);
    }
    showDiagnostics();
    refreshTable();
    refreshViews();
    renderProjectorBackground();
    if (!automatic && m_sendLutAfterCalibration && m_settings.vantreo_server_enabled)
        updateLut();
    return true;
}

void ProjectorCalibrationDialog::showDiagnostics()
{
    QStringList lines;
    if (m_haveFit && m_diagnostics.mismatchedPoint >= 0 && m_diagnostics.mismatchedPoint < m_resultRows.size())
        lines << calibrationMismatchText(m_resultRows.at(m_diagnostics.mismatchedPoint) + 1, m_diagnostics.rms,
                                         m_diagnostics.rmsWithoutMismatched);
    if (m_haveFit)
        lines << calibrationWarnings(m_diagnostics);
    m_diagnosticsLine->setText(lines.join(QLatin1Char('\n')));
}

// ---- presentation --------------------------------------------------------------------------

QString ProjectorCalibrationDialog::statusText() const
{
    return m_status->text();
}

QString ProjectorCalibrationDialog::resultText() const
{
    return m_resultLine->text();
}

QString ProjectorCalibrationDialog::diagnosticsText() const
{
    return m_diagnosticsLine->text();
}

void ProjectorCalibrationDialog::setStatus(const QString &text)
{
    m_status->setText(text);
    // The fit's line stays in view once the status moves on, but is not shown twice.
    m_resultLine->setVisible(!m_resultLine->text().isEmpty() && m_resultLine->text() != text);
}

void ProjectorCalibrationDialog::refreshGuidance()
{
    if (!projectorObject()) {
        setStatus(tr("Add or select a projector object first."));
        return;
    }
    if (m_wireframe.isEmpty()) {
        setStatus(tr("Add a target object with visible wireframe vertices first."));
        return;
    }
    const vg::scene::LensModel lens(vg::scene::lensIntrinsicsOf(previewProjector()),
                                    vg::scene::lensPoseOf(previewProjector()), std::numeric_limits<double>::infinity());
    const bool anyVisible = std::any_of(m_wireframe.vertices.begin(), m_wireframe.vertices.end(),
                                        [&lens](const Eigen::Vector3d &v) { return lens.project(v).inside; });
    if (!anyVisible) {
        setStatus(tr("No projected wireframe vertices are visible for this target."));
        return;
    }
    if (m_matches.isValidRow(m_selectedRow) && !m_matches.row(m_selectedRow).image) {
        setStatus(tr("Click the matching real projected/camera point for %1.").arg(targetLabel()));
        return;
    }
    setStatus(tr("Click wireframe vertices, then click matching real points. Need 6 or more. Current: %1")
                  .arg(calibrationRows().size()));
}

bool ProjectorCalibrationDialog::worstWorthMarking() const
{
    // Below a hundredth of a pixel every row shows 0.00: none stands out.
    return m_diagnostics.worstPoint >= 0 && m_diagnostics.worstResidual >= 0.005;
}

void ProjectorCalibrationDialog::refreshTable()
{
    m_refreshingTable = true;
    m_table->setRowCount(m_matches.count());
    QVector<double> residual(m_matches.count(), std::numeric_limits<double>::quiet_NaN());
    int worstRow = -1, mismatchedRow = -1;
    if (m_haveFit) {
        for (const ProjectorCalibrationResidual &r : m_result.residuals) {
            if (r.pointIndex >= 0 && r.pointIndex < m_resultRows.size()) {
                const int row = m_resultRows.at(r.pointIndex);
                if (row < residual.size())
                    residual[row] = r.distance;
            }
        }
        if (worstWorthMarking() && m_diagnostics.worstPoint < m_resultRows.size())
            worstRow = m_resultRows.at(m_diagnostics.worstPoint);
        if (m_diagnostics.mismatchedPoint >= 0 && m_diagnostics.mismatchedPoint < m_resultRows.size())
            mismatchedRow = m_resultRows.at(m_diagnostics.mismatchedPoint);
    }
    auto cell = [this](int row, int column, const QString &text) {
        auto *item = new QTableWidgetItem(text);
        item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        m_table->setItem(row, column, item);
        return item;
    };
    for (int i = 0; i < m_matches.count(); ++i) {
        const CalibrationMatchRow &row = m_matches.row(i);
        auto *use = cell(i, ColumnUse, QString());
        use->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        use->setCheckState(row.used ? Qt::Checked : Qt::Unchecked);
        cell(i, ColumnVertex, row.label());
        cell(i, ColumnX, QString::number(row.x, 'f', 4));
        cell(i, ColumnY, QString::number(row.y, 'f', 4));
        cell(i, ColumnZ, QString::number(row.z, 'f', 4));
        cell(i, ColumnImageX, row.image ? QString::number(row.image->x(), 'f', 2) : QString());
        cell(i, ColumnImageY, row.image ? QString::number(row.image->y(), 'f', 2) : QString());
        auto *res = cell(i, ColumnResidual, std::isfinite(residual[i]) ? QString::number(residual[i], 'f', 2) : QString());
        // The finding is in the text as well, so a selected row still shows it.
        if (i == mismatchedRow) {
            res->setText(tr("%1  mismatched").arg(res->text()));
            res->setBackground(QColor(200, 40, 50));
            res->setToolTip(calibrationMismatchText(i + 1, m_diagnostics.rms, m_diagnostics.rmsWithoutMismatched));
        } else if (i == worstRow) {
            res->setText(tr("%1  worst").arg(res->text()));
            res->setBackground(QColor(210, 130, 30));
            res->setToolTip(tr("Largest residual of this fit."));
        }
    }
    if (m_selectedRow >= 0)
        m_table->selectRow(m_selectedRow);
    m_refreshingTable = false;
}

void ProjectorCalibrationDialog::refreshViews()
{
    const GuideObject preview = previewProjector();
    if (projectorObject())
        m_projectorView->setLens(vg::scene::LensModel(vg::scene::lensIntrinsicsOf(preview), vg::scene::lensPoseOf(preview),
                                                      std::numeric_limits<double>::infinity()));
    int worstRow = -1, mismatchedRow = -1;
    if (m_haveFit && worstWorthMarking() && m_diagnostics.worstPoint < m_resultRows.size())
        worstRow = m_resultRows.at(m_diagnostics.worstPoint);
    if (m_haveFit && m_diagnostics.mismatchedPoint >= 0 && m_diagnostics.mismatchedPoint < m_resultRows.size())
        mismatchedRow = m_resultRows.at(m_diagnostics.mismatchedPoint);
    QVector<PointView::Marker> markers;
    for (int i = 0; i < m_matches.count(); ++i) {
        const CalibrationMatchRow &row = m_matches.row(i);
        PointView::Marker m;
        m.row = i;
        m.world = Eigen::Vector3d(row.x, row.y, row.z);
        m.pixel = row.image;
        m.selected = i == m_selectedRow;
        m.used = row.used;
        m.worst = i == worstRow;
        m.mismatched = i == mismatchedRow;
        markers.append(m);
    }
    m_wireframeView->setMarkers(markers);
    m_projectorView->setMarkers(markers);
    m_wireframeView->setDisplay({m_settings.wireframe_show_wireframe, m_settings.wireframe_show_shading,
                                 m_settings.wireframe_show_candidate_vertex, m_settings.vertex_size,
                                 m_settings.circle_size});
    m_projectorView->setDisplay({m_settings.projector_show_wireframe, m_settings.projector_show_shading,
                                 m_settings.projector_show_vertex, m_settings.vertex_size, m_settings.circle_size});
    m_projectorView->setReferenceImage(m_referenceImage);
    publishOutput();

    if (m_wireframe.isEmpty()) {
        m_wireframeView->setHint(tr("No target wireframe."));
        m_projectorView->setHint(tr("No target wireframe."));
    } else {
        m_wireframeView->setHint(tr("Wheel: Zoom   Alt + Left: Orbit   Alt + Middle: Pan   Alt + Right: Dolly"));
        m_projectorView->setHint(m_matches.isValidRow(m_selectedRow) && !m_matches.row(m_selectedRow).image
                                     ? tr("Click the real projected/camera point for the selected vertex.")
                                     : tr("Drag matched points or use arrow keys.  Wheel: Zoom   Alt + Middle: Pan   "
                                          "Alt + Right: Dolly"));
    }
}

OffscreenSceneRenderer *ProjectorCalibrationDialog::rendererFor(std::unique_ptr<OffscreenSceneRenderer> &slot)
{
    if (slot)
        return slot.get();
    if (m_rendererFailed)
        return nullptr;
    auto renderer = std::make_unique<OffscreenSceneRenderer>();
    QString error;
    if (!renderer->initialize(&error)) {
        // Without GL the views still work: wires, vertices and markers are drawn by hand.
        m_rendererFailed = true;
        return nullptr;
    }
    slot = std::move(renderer);
    return slot.get();
}

void ProjectorCalibrationDialog::renderProjectorBackground()
{
    const GuideObject *projector = projectorObject();
    OffscreenSceneRenderer *renderer = projector && m_scene ? rendererFor(m_projectorRenderer) : nullptr;
    if (!renderer) {
        m_projectorView->setBackground(QImage());
        return;
    }
    QVector<GuideObject> objects = m_scene->objects();
    objects[m_projectorIndex] = previewProjector();
    ViewCamera camera;
    if (!setCameraToObjectView(camera, objects, m_projectorIndex))
        return;
    const int w = std::max(1, projector->projector_resolution_width);
    const int h = std::max(1, projector->projector_resolution_height);
    const double scale = std::min(1.0, double(kMaxRenderSide) / std::max(w, h));
    const QSize size(std::max(1, int(std::lround(w * scale))), std::max(1, int(std::lround(h * scale))));
    SceneRenderSettings settings;
    settings.gridVisible = false;
    settings.showLabels = false;
    settings.hiddenObjectIndex = m_projectorIndex;
    renderer->renderer().setGuideImages(m_scene->guideImages());
    QImage image = renderer->render(objects, camera, settings, size);
    if (!image.isNull()) {
        // The lens view is the image before the flips; the real projector shows it mirrored.
        const vg::scene::LensFrameConstants frame =
            vg::scene::lensFrameConstants(vg::scene::lensIntrinsicsOf(objects[m_projectorIndex]));
        image = image.mirrored(frame.flipU, frame.flipV);
    }
    m_projectorView->setBackground(image);
    publishOutput();
}

void ProjectorCalibrationDialog::renderWireframeBackground()
{
    OffscreenSceneRenderer *renderer = nullptr;
    if (m_scene && m_targetIndex >= 0 && m_targetIndex < m_scene->objectCount() && m_wireframeView->width() >= 2
        && m_wireframeView->height() >= 2)
        renderer = rendererFor(m_wireframeRenderer);
    if (!renderer) {
        m_wireframeView->setBackground(QImage());
        return;
    }
    GuideObject target = m_scene->objects().at(m_targetIndex);
    // The view draws its own wires and vertices over the shaded target.
    target.show_wireframe = false;
    target.show_shading = true;
    target.show_dimensions = false;
    SceneRenderSettings settings;
    settings.gridVisible = false;
    settings.showLabels = false;
    settings.projectionEnabled = false;
    renderer->renderer().setGuideImages(m_scene->guideImages());
    m_wireframeView->setBackground(renderer->render({target}, m_wireframeView->camera(), settings,
                                                    m_wireframeView->size()));
}
