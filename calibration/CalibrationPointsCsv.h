#pragma once

#include "scene/GuideObject.h"

#include <QString>
#include <QVector>

// Matched points as text: one match a line, "x,y,z,u,v" (scene metres, projector pixels).
// Blank lines are skipped and the first line that holds anything may be a header.
constexpr int kCalibrationCsvMaxPoints = 100000;

// Splits "a,b,c" into exactly `count` numbers; false for any other count or a non-number.
bool parseCommaSeparatedNumbers(const QString &text, int count, QVector<double> *values);

bool readCalibrationPointsCsv(const QString &path, QVector<GuideMatchedPoint> *points, QString *error);
