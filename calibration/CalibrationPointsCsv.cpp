#include "calibration/CalibrationPointsCsv.h"

#include <QFile>
#include <QStringList>

#include <algorithm>

namespace {

// A header names its columns: some field of it is not a number.
bool looksLikeHeader(const QString &line)
{
    const QStringList parts = line.split(QLatin1Char(','));
    return std::any_of(parts.begin(), parts.end(), [](const QString &part) {
        bool ok = false;
        part.trimmed().toDouble(&ok);
        return !ok;
    });
}

} // namespace

bool parseCommaSeparatedNumbers(const QString &text, int count, QVector<double> *values)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != count)
        return false;
    values->clear();
    for (const QString &part : parts) {
        bool ok = false;
        const double v = part.trimmed().toDouble(&ok);
        if (!ok)
            return false;
        values->append(v);
    }
    return true;
}

bool readCalibrationPointsCsv(const QString &path, QVector<GuideMatchedPoint> *points, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        *error = QStringLiteral("Could not read %1: %2").arg(path, file.errorString());
        return false;
    }
    int lineNumber = 0;
    bool seenContent = false;
    while (!file.atEnd()) {
        // A line longer than any five numbers can be is not a match.
        const QByteArray bytes = file.readLine(4096);
        const QString line = QString::fromUtf8(bytes).trimmed();
        ++lineNumber;
        if (line.isEmpty())
            continue;
        const bool first = !seenContent;
        seenContent = true;
        QVector<double> v;
        if (!parseCommaSeparatedNumbers(line, 5, &v)) {
            if (first && looksLikeHeader(line))
                continue;
            *error = QStringLiteral("%1 line %2: expected x,y,z,u,v, got \"%3\".").arg(path).arg(lineNumber).arg(line.left(80));
            return false;
        }
        if (points->size() >= kCalibrationCsvMaxPoints) {
            *error = QStringLiteral("%1 holds more than %2 matched points.").arg(path).arg(kCalibrationCsvMaxPoints);
            return false;
        }
        points->append(GuideMatchedPoint{float(v[0]), float(v[1]), float(v[2]), float(v[3]), float(v[4])});
    }
    return true;
}
