#include "calibration/CalibrationMatchList.h"

#include <gtest/gtest.h>

namespace {

CalibrationMatchRow makeRow(int vertex, double x)
{
    CalibrationMatchRow row;
    row.targetIndex = 2;
    row.targetName = QStringLiteral("Wall");
    row.vertexIndex = vertex;
    row.x = x;
    row.y = 1.5;
    row.z = -0.25;
    return row;
}

} // namespace

TEST(CalibrationMatchList, LabelHasTwoSpacesAndCountsFromOne)
{
    EXPECT_EQ(makeRow(0, 0).label(), QStringLiteral("Wall  #1"));
    EXPECT_EQ(makeRow(41, 0).label(), QStringLiteral("Wall  #42"));
}

TEST(CalibrationMatchList, MovesUndoAndRedoWithTheirTextsAndANewEditClearsRedo)
{
    CalibrationMatchList list;
    EXPECT_EQ(list.undo(), QStringLiteral("No calibration point edit to undo."));
    EXPECT_EQ(list.redo(), QStringLiteral("No calibration point edit to redo."));
    const int row = list.appendRow(makeRow(3, 1.0));
    list.setImage(row, QPointF(10, 20), true);
    list.setImage(row, QPointF(15, 25), true);
    EXPECT_EQ(list.undo(), QStringLiteral("Calibration point move undone."));
    EXPECT_EQ(*list.row(row).image, QPointF(10, 20));
    EXPECT_EQ(list.undo(), QStringLiteral("Calibration point move undone."));
    EXPECT_FALSE(list.row(row).image.has_value());
    EXPECT_EQ(list.redo(), QStringLiteral("Calibration point move redone."));
    EXPECT_EQ(*list.row(row).image, QPointF(10, 20));
    list.setImage(row, QPointF(99, 98), true);
    EXPECT_FALSE(list.canRedo());

    // A drag shown as it goes is one move from where it started.
    list.setImage(row, QPointF(100, 100), false);
    list.setImage(row, QPointF(110, 105), false);
    list.recordMove(row, QPointF(99, 98));
    EXPECT_EQ(list.undo(), QStringLiteral("Calibration point move undone."));
    EXPECT_EQ(*list.row(row).image, QPointF(99, 98));
    // A move back to the same place records nothing.
    list.recordMove(row, QPointF(99, 98));
    EXPECT_EQ(list.undo(), QStringLiteral("Calibration point move undone."));
    EXPECT_EQ(*list.row(row).image, QPointF(10, 20));
}

TEST(CalibrationMatchList, DeletionOfScatteredRowsComesBackInPlace)
{
    CalibrationMatchList list;
    for (int i = 0; i < 6; ++i)
        list.appendRow(makeRow(i, i));
    const QVector<CalibrationMatchRow> all = list.rows();
    EXPECT_EQ(list.deleteRows({4, 1, 4, 9}), 2);
    ASSERT_EQ(list.count(), 4);
    EXPECT_EQ(list.row(1).vertexIndex, 2);
    EXPECT_EQ(list.row(3).vertexIndex, 5);
    EXPECT_EQ(CalibrationMatchList::deletedText(2), QStringLiteral("2 matched points deleted."));
    EXPECT_EQ(CalibrationMatchList::deletedText(1), QStringLiteral("Matched point deleted."));
    EXPECT_EQ(list.undo(), QStringLiteral("2 calibration point deletions undone."));
    EXPECT_EQ(list.rows(), all);
    EXPECT_EQ(list.redo(), QStringLiteral("2 calibration point deletions redone."));
    EXPECT_EQ(list.count(), 4);
    EXPECT_EQ(list.undo(), QStringLiteral("2 calibration point deletions undone."));

    EXPECT_EQ(list.deleteRows({5}), 1);
    EXPECT_EQ(list.undo(), QStringLiteral("Calibration point deletion undone."));
    EXPECT_EQ(list.redo(), QStringLiteral("Calibration point deletion redone."));
    EXPECT_EQ(list.deleteRows({}), 0);
    list.clear();
    EXPECT_EQ(list.count(), 0);
    EXPECT_FALSE(list.canUndo());
}

TEST(CalibrationMatchList, RecordKeepsMatchedRowsAndReadsThemBack)
{
    CalibrationMatchList list;
    list.appendRow(makeRow(7, 0.5));
    const int unset = list.appendRow(makeRow(8, 0.75));
    const int second = list.appendRow(makeRow(11, -2.0));
    list.setImage(0, QPointF(1919.5, 0.25), false);
    list.setImage(second, QPointF(-3.5, 640.125), false);
    list.setUsed(second, false);
    const GuideProjectorCalibration record = list.toRecord(1920, 99999);
    EXPECT_EQ(record.image_width, 1920);
    EXPECT_EQ(record.image_height, 16384);
    ASSERT_EQ(record.matches.size(), 2);   // the row without a position is not a match yet
    EXPECT_EQ(record.matches[0].vertex_label, QStringLiteral("Wall  #8"));
    EXPECT_EQ(record.matches[1].enabled, false);
    EXPECT_EQ(record.matches[1].image_y, 640.125);

    const QVector<CalibrationMatchRow> back = CalibrationMatchList::rowsFromRecord(record);
    ASSERT_EQ(back.size(), 2);
    EXPECT_EQ(back[0], list.row(0));
    EXPECT_EQ(back[1], list.row(second));
    EXPECT_NE(back[1], list.row(unset));

    GuideProjectorCalibration hostile = record;
    hostile.matches[0].vertex_label = QStringLiteral("no number");
    hostile.matches[1].world_x = std::numeric_limits<double>::quiet_NaN();
    const QVector<CalibrationMatchRow> kept = CalibrationMatchList::rowsFromRecord(hostile);
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(kept[0].vertexIndex, -1);
}
