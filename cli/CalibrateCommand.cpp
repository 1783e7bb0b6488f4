#include "cli/CliCommand.h"

#include "calibration/CalibrationDiagnostics.h"
#include "calibration/CalibrationPointsCsv.h"
#include "calibration/ProjectorCalibration.h"
#include "project/ProjectFile.h"

#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

const CliCommand &calibrateCommand();

// Numbers as JSON writes them: shortest text that reads back the same; null when not finite.
QString jsonNumber(double value)
{
    if (!std::isfinite(value))
        return QStringLiteral("null");
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString jsonTriple(const std::array<double, 3> &v)
{
    return QStringLiteral("[%1, %2, %3]").arg(jsonNumber(v[0]), jsonNumber(v[1]), jsonNumber(v[2]));
}

QString resultJson(const ProjectorCalibrationResult &r)
{
    QString residuals;
    for (int i = 0; i < r.residuals.size(); ++i) {
        if (i > 0)
            residuals += QStringLiteral(", ");
        residuals += QStringLiteral("[%1, %2]").arg(jsonNumber(r.residuals[i].du), jsonNumber(r.residuals[i].dv));
    }
    QString text;
    text += QStringLiteral("{\n");
    text += QStringLiteral("    \"rms\": %1,\n").arg(jsonNumber(r.rmsError));
    text += QStringLiteral("    \"iterations\": %1,\n").arg(r.iterations);
    text += QStringLiteral("    \"points\": %1,\n").arg(r.pointCount);
    text += QStringLiteral("    \"throw_ratio\": %1,\n").arg(jsonNumber(r.throwRatio));
    text += QStringLiteral("    \"lens_shift_x\": %1,\n").arg(jsonNumber(r.lensShiftX));
    text += QStringLiteral("    \"lens_shift_y\": %1,\n").arg(jsonNumber(r.lensShiftY));
    text += QStringLiteral("    \"h_fov_deg\": %1,\n").arg(jsonNumber(r.horizontalFovDegrees));
    text += QStringLiteral("    \"translate\": %1,\n").arg(jsonTriple(r.pose.translate));
    text += QStringLiteral("    \"rotate\": %1,\n").arg(jsonTriple(r.pose.rotate));
    text += QStringLiteral("    \"residuals\": [%1]\n").arg(residuals);
    text += QStringLiteral("}\n");
    return text;
}

// The fit for a person: each point's residual, the worst one, the leave-one-out finding
// and the warnings about the points' spread.
QString resultReport(const GuideObject &projector, const QVector<GuideMatchedPoint> &points,
                     const ProjectorCalibrationRequest &request, const ProjectorCalibrationResult &r)
{
    const CalibrationDiagnostics d = diagnoseCalibration(projector, points, request, r);
    QString text;
    text += QStringLiteral("RMS error: %1 px over %2 points, iterations: %3\n")
                .arg(r.rmsError, 0, 'f', 3).arg(r.pointCount).arg(r.iterations);
    text += QStringLiteral("point        u          v        du       dv   residual_px\n");
    for (const ProjectorCalibrationResidual &residual : r.residuals) {
        const GuideMatchedPoint &p = points.at(residual.pointIndex);
        text += QStringLiteral("%1 %2 %3 %4 %5 %6%7\n")
                    .arg(residual.pointIndex + 1, 5)
                    .arg(double(p.u), 10, 'f', 2)
                    .arg(double(p.v), 10, 'f', 2)
                    .arg(residual.du, 8, 'f', 3)
                    .arg(residual.dv, 8, 'f', 3)
                    .arg(residual.distance, 13, 'f', 3)
                    .arg(residual.pointIndex == d.worstPoint ? QStringLiteral("  (worst)") : QString());
    }
    if (d.mismatchedPoint >= 0)
        text += calibrationMismatchText(d.mismatchedPoint + 1, d.rms, d.rmsWithoutMismatched) + QLatin1Char('\n');
    else
        text += QStringLiteral("Leave-one-out: no single point lowers the RMS by more than half.\n");
    for (const QString &warning : calibrationWarnings(d))
        text += warning + QLatin1Char('\n');
    return text;
}

int runCalibrate(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args,
                   {QStringLiteral("--view"), QStringLiteral("--projector"), QStringLiteral("--points"),
                    QStringLiteral("--image-size"), QStringLiteral("--start"), QStringLiteral("-o")},
                   {QStringLiteral("--quick"), QStringLiteral("--no-throw-ratio"), QStringLiteral("--no-lens-shift"),
                    QStringLiteral("--apply"), QStringLiteral("--report")});
    const int viewIndex = parsed.intValue(QStringLiteral("--view"), -1);
    const int projectorIndex = parsed.intValue(QStringLiteral("--projector"), -1);
    if (!parsed.ok())
        return cliUsageError(ctx, calibrateCommand(), parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, calibrateCommand(), QStringLiteral("Give exactly one project file."));
    if (!parsed.has(QStringLiteral("--view")) || !parsed.has(QStringLiteral("--projector"))
        || !parsed.has(QStringLiteral("--points")))
        return cliUsageError(ctx, calibrateCommand(), QStringLiteral("--view, --projector and --points are required."));
    const bool apply = parsed.has(QStringLiteral("--apply"));
    if (apply != parsed.has(QStringLiteral("-o")))
        return cliUsageError(ctx, calibrateCommand(), QStringLiteral("--apply and -o <out.vgs> go together."));

    ProjectorCalibrationRequest request;
    request.projectorIndex = projectorIndex;
    request.quick = parsed.has(QStringLiteral("--quick"));
    request.full = !request.quick;
    request.apply = apply;
    request.adjust_throw_ratio = !parsed.has(QStringLiteral("--no-throw-ratio"));
    request.adjust_lens_shift = !parsed.has(QStringLiteral("--no-lens-shift"));
    if (parsed.has(QStringLiteral("--image-size"))) {
        static const QRegularExpression sizePattern(QStringLiteral("^\\s*(\\d{1,6})\\s*[xX]\\s*(\\d{1,6})\\s*$"));
        const QRegularExpressionMatch m = sizePattern.match(parsed.value(QStringLiteral("--image-size")));
        if (!m.hasMatch() || m.captured(1).toInt() < 1 || m.captured(2).toInt() < 1)
            return cliUsageError(ctx, calibrateCommand(),
                                 QStringLiteral("--image-size takes WxH with two whole numbers of at least 1."));
        request.imageSize = QSize(m.captured(1).toInt(), m.captured(2).toInt());
    }
    if (parsed.has(QStringLiteral("--start"))) {
        QVector<double> v;
        if (!parseCommaSeparatedNumbers(parsed.value(QStringLiteral("--start")), 6, &v)
            || !std::all_of(v.begin(), v.end(), [](double x) { return std::isfinite(x); }))
            return cliUsageError(ctx, calibrateCommand(),
                                 QStringLiteral("--start takes X,Y,Z,RX,RY,RZ with six numbers."));
        request.startPose = ProjectorCalibrationPose{{v[0], v[1], v[2]}, {v[3], v[4], v[5]}};
    }

    QVector<GuideMatchedPoint> points;
    QString error;
    if (!readCalibrationPointsCsv(parsed.value(QStringLiteral("--points")), &points, &error)) {
        ctx.err << error << Qt::endl;
        return CliFailure;
    }

    ProjectDocument project;
    if (!cliLoadProject(ctx, parsed.positionals().first(), &project))
        return CliFailure;
    const Guide3DViewSettings *found = cliProjectView(ctx, project, viewIndex);
    if (!found)
        return CliFailure;
    Guide3DViewSettings view = *found;

    // The record as it was before a fit that --apply may write into it.
    const GuideObject original = projectorIndex >= 0 && projectorIndex < view.objects.size()
                                     ? view.objects.at(projectorIndex)
                                     : GuideObject();
    ProjectorCalibrationResult result;
    QString message;
    if (!calibrateProjector(view, points, request, &result, &message)) {
        ctx.err << message << Qt::endl;
        return CliFailure;
    }
    if (parsed.has(QStringLiteral("--report")))
        ctx.out << resultReport(original, points, request, result);
    else
        ctx.out << resultJson(result);

    if (apply) {
        setProjectView(&project, viewIndex, view);
        const QString outPath = parsed.value(QStringLiteral("-o"));
        if (!saveProjectDocument(outPath, project, &error)) {
            ctx.err << "Save failed: " << error << Qt::endl;
            return CliFailure;
        }
    }
    return CliOk;
}

const CliCommand &calibrateCommand()
{
    static const CliCommand command{
        QStringLiteral("calibrate"),
        QStringLiteral("calibrate <project> --view V --projector I --points <file.csv> [--image-size WxH] [--quick] "
                       "[--no-throw-ratio] [--no-lens-shift] [--start X,Y,Z,RX,RY,RZ] [--apply -o <out.vgs>] [--report]"),
        QStringLiteral("Fits a projector to matched points (CSV x,y,z,u,v) and prints the fit as JSON; "
                       "--apply writes the fitted projector into a copy of the project; --report prints each point's residual "
                       "and the leave-one-out check instead."),
        runCalibrate};
    return command;
}

const CliRegistration registration(calibrateCommand());

} // namespace
