#include "calibration/CalibrationMatchList.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

// Bounds the undo history so a long session cannot grow it without end.
constexpr int kMaxUndo = 500;

} // namespace

QString CalibrationMatchRow::label() const
{
    return QStringLiteral("%1  #%2").arg(targetName).arg(vertexIndex + 1);
}

int CalibrationMatchList::findVertex(int targetIndex, int vertexIndex) const
{
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].targetIndex == targetIndex && m_rows[i].vertexIndex == vertexIndex)
            return i;
    }
    return -1;
}

int CalibrationMatchList::appendRow(const CalibrationMatchRow &row)
{
    m_rows.append(row);
    return int(m_rows.size()) - 1;
}

void CalibrationMatchList::setUsed(int index, bool used)
{
    if (isValidRow(index))
        m_rows[index].used = used;
}

void CalibrationMatchList::retarget(int fromIndex, int toIndex)
{
    auto move = [fromIndex, toIndex](CalibrationMatchRow &row) {
        if (row.targetIndex == fromIndex)
            row.targetIndex = toIndex;
    };
    for (CalibrationMatchRow &row : m_rows)
        move(row);
    for (Edit &edit : m_undo)
        for (auto &entry : edit.removed)
            move(entry.second);
    for (Edit &edit : m_redo)
        for (auto &entry : edit.removed)
            move(entry.second);
}

void CalibrationMatchList::setImage(int index, const std::optional<QPointF> &image, bool record)
{
    if (!isValidRow(index))
        return;
    const std::optional<QPointF> before = m_rows[index].image;
    m_rows[index].image = image;
    if (record)
        recordMove(index, before);
}

void CalibrationMatchList::recordMove(int index, const std::optional<QPointF> &before)
{
    if (!isValidRow(index) || before == m_rows[index].image)
        return;
    Edit edit;
    edit.row = index;
    edit.before = before;
    edit.after = m_rows[index].image;
    push(edit);
}

int CalibrationMatchList::deleteRows(QList<int> indices)
{
    std::sort(indices.begin(), indices.end());
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    Edit edit;
    edit.deletion = true;
    for (int index : std::as_const(indices)) {
        if (isValidRow(index))
            edit.removed.append({index, m_rows[index]});
    }
    if (edit.removed.isEmpty())
        return 0;
    apply(edit, true);
    push(edit);
    return int(edit.removed.size());
}

void CalibrationMatchList::clear()
{
    m_rows.clear();
    m_undo.clear();
    m_redo.clear();
}

void CalibrationMatchList::replaceRows(const QVector<CalibrationMatchRow> &rows)
{
    m_rows = rows;
    m_undo.clear();
    m_redo.clear();
}

void CalibrationMatchList::push(Edit edit)
{
    m_undo.append(std::move(edit));
    if (m_undo.size() > kMaxUndo)
        m_undo.removeFirst();
    m_redo.clear();
}

void CalibrationMatchList::apply(const Edit &edit, bool forward)
{
    if (!edit.deletion) {
        if (isValidRow(edit.row))
            m_rows[edit.row].image = forward ? edit.after : edit.before;
        return;
    }
    if (forward) {
        for (auto it = edit.removed.crbegin(); it != edit.removed.crend(); ++it)
            m_rows.removeAt(it->first);
    } else {
        // Ascending positions: each row goes back where it was once the earlier ones are in.
        for (const auto &entry : edit.removed)
            m_rows.insert(std::min(entry.first, int(m_rows.size())), entry.second);
    }
}

QString CalibrationMatchList::undo()
{
    if (m_undo.isEmpty())
        return QCoreApplication::translate("CalibrationMatchList", "No calibration point edit to undo.");
    const Edit edit = m_undo.takeLast();
    apply(edit, false);
    m_redo.append(edit);
    if (!edit.deletion)
        return QCoreApplication::translate("CalibrationMatchList", "Calibration point move undone.");
    if (edit.removed.size() == 1)
        return QCoreApplication::translate("CalibrationMatchList", "Calibration point deletion undone.");
    return QCoreApplication::translate("CalibrationMatchList", "%1 calibration point deletions undone.")
        .arg(edit.removed.size());
}

QString CalibrationMatchList::redo()
{
    if (m_redo.isEmpty())
        return QCoreApplication::translate("CalibrationMatchList", "No calibration point edit to redo.");
    const Edit edit = m_redo.takeLast();
    apply(edit, true);
    m_undo.append(edit);
    if (!edit.deletion)
        return QCoreApplication::translate("CalibrationMatchList", "Calibration point move redone.");
    if (edit.removed.size() == 1)
        return QCoreApplication::translate("CalibrationMatchList", "Calibration point deletion redone.");
    return QCoreApplication::translate("CalibrationMatchList", "%1 calibration point deletions redone.")
        .arg(edit.removed.size());
}

QString CalibrationMatchList::deletedText(int count)
{
    if (count == 1)
        return QCoreApplication::translate("CalibrationMatchList", "Matched point deleted.");
    return QCoreApplication::translate("CalibrationMatchList", "%1 matched points deleted.").arg(count);
}

QString CalibrationMatchList::clearedText()
{
    return QCoreApplication::translate("CalibrationMatchList", "Matched points cleared.");
}

GuideProjectorCalibration CalibrationMatchList::toRecord(int imageWidth, int imageHeight) const
{
    GuideProjectorCalibration record;
    record.image_width = std::clamp(imageWidth, 0, 16384);
    record.image_height = std::clamp(imageHeight, 0, 16384);
    for (const CalibrationMatchRow &row : m_rows) {
        if (!row.image)
            continue;
        GuideProjectorCalibrationMatch m;
        m.target_index = row.targetIndex;
        m.target_name = row.targetName;
        m.vertex_label = row.label();
        m.world_x = row.x;
        m.world_y = row.y;
        m.world_z = row.z;
        m.image_x = row.image->x();
        m.image_y = row.image->y();
        m.enabled = row.used;
        record.matches.append(m);
    }
    return record;
}

QVector<CalibrationMatchRow> CalibrationMatchList::rowsFromRecord(const GuideProjectorCalibration &record)
{
    static const QRegularExpression vertexNumber(QStringLiteral("#(\\d{1,9})\\s*$"));
    QVector<CalibrationMatchRow> rows;
    for (const GuideProjectorCalibrationMatch &m : record.matches) {
        if (!std::isfinite(m.world_x) || !std::isfinite(m.world_y) || !std::isfinite(m.world_z)
            || !std::isfinite(m.image_x) || !std::isfinite(m.image_y))
            continue;
        CalibrationMatchRow row;
        row.used = m.enabled;
        row.targetIndex = m.target_index;
        row.targetName = m.target_name;
        const QRegularExpressionMatch number = vertexNumber.match(m.vertex_label);
        row.vertexIndex = number.hasMatch() ? number.captured(1).toInt() - 1 : -1;
        row.x = m.world_x;
        row.y = m.world_y;
        row.z = m.world_z;
        row.image = QPointF(m.image_x, m.image_y);
        rows.append(row);
    }
    return rows;
}
