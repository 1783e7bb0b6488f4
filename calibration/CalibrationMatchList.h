#pragma once

#include "scene/GuideObject.h"

#include <QList>
#include <QPointF>
#include <QString>
#include <QVector>

#include <optional>

// One matched-point row of the calibration window: a wireframe vertex of the target object
// and, once the user has clicked it, where the real projector shows it.
struct CalibrationMatchRow {
    bool used = true;                  // "Use this point for calibration"
    int targetIndex = -1;              // scene index of the target object
    QString targetName;
    int vertexIndex = -1;              // index in the target's original wireframe, -1 unknown
    double x = 0.0, y = 0.0, z = 0.0;  // the vertex in world coordinates (metres)
    std::optional<QPointF> image;      // projector pixel, origin top-left; unset until clicked

    // "%1  #%2": the object name and the vertex number (counted from 1).
    QString label() const;
    bool operator==(const CalibrationMatchRow &) const = default;
};

// The rows with their undo and redo stacks. Only moves of an image position and deletions
// are undoable; a new edit clears the redo stack.
class CalibrationMatchList
{
public:
    const QVector<CalibrationMatchRow> &rows() const { return m_rows; }
    int count() const { return int(m_rows.size()); }
    const CalibrationMatchRow &row(int index) const { return m_rows.at(index); }
    bool isValidRow(int index) const { return index >= 0 && index < m_rows.size(); }

    // The row of a target vertex, or -1.
    int findVertex(int targetIndex, int vertexIndex) const;
    int appendRow(const CalibrationMatchRow &row);
    void setUsed(int index, bool used);
    // The target object moved in the scene's list (an earlier object was deleted).
    void retarget(int fromIndex, int toIndex);

    // Sets a row's image position; with `record` the change is one undoable move.
    void setImage(int index, const std::optional<QPointF> &image, bool record);
    // Records a move that has already been shown (a drag): `before` is where it started.
    void recordMove(int index, const std::optional<QPointF> &before);

    // Removes the rows as one undoable deletion; returns how many were removed.
    int deleteRows(QList<int> indices);
    // Removes every row and forgets the undo and redo stacks.
    void clear();
    void replaceRows(const QVector<CalibrationMatchRow> &rows);

    bool canUndo() const { return !m_undo.isEmpty(); }
    bool canRedo() const { return !m_redo.isEmpty(); }
    // Each returns the status text of what it did (or that there was nothing to do).
    QString undo();
    QString redo();

    // The status text of a deletion of `count` rows.
    static QString deletedText(int count);
    static QString clearedText();

    // The stored form: rows with an image position (a row without one is not a match yet).
    GuideProjectorCalibration toRecord(int imageWidth, int imageHeight) const;
    static QVector<CalibrationMatchRow> rowsFromRecord(const GuideProjectorCalibration &record);

private:
    struct Edit {
        bool deletion = false;
        // move
        int row = -1;
        std::optional<QPointF> before, after;
        // deletion: the rows with their positions in the list, in ascending order
        QList<QPair<int, CalibrationMatchRow>> removed;
    };
    void push(Edit edit);
    void apply(const Edit &edit, bool forward);

    QVector<CalibrationMatchRow> m_rows;
    QVector<Edit> m_undo;
    QVector<Edit> m_redo;
};
