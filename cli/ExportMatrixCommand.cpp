#include "cli/CliCommand.h"

#include "calibration/CalibrationMatrixFile.h"
#include "calibration/CalibrationPointsCsv.h"
#include "calibration/ProjectorCalibration.h"
#include "project/ProjectFile.h"

namespace {

const CliCommand &exportMatrixCommand();

int runExportMatrix(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args, {QStringLiteral("--view"), QStringLiteral("--projector"), QStringLiteral("--points"),
                          QStringLiteral("-o")},
                   {});
    const int viewIndex = parsed.intValue(QStringLiteral("--view"), -1);
    const int projectorIndex = parsed.intValue(QStringLiteral("--projector"), -1);
    if (!parsed.ok())
        return cliUsageError(ctx, exportMatrixCommand(), parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, exportMatrixCommand(), QStringLiteral("Give exactly one project file."));
    if (!parsed.has(QStringLiteral("--view")) || !parsed.has(QStringLiteral("--projector"))
        || !parsed.has(QStringLiteral("-o")))
        return cliUsageError(ctx, exportMatrixCommand(), QStringLiteral("--view, --projector and -o are required."));

    QString error;
    QVector<GuideMatchedPoint> points;
    const bool fromPoints = parsed.has(QStringLiteral("--points"));
    if (fromPoints && !readCalibrationPointsCsv(parsed.value(QStringLiteral("--points")), &points, &error)) {
        ctx.err << error << Qt::endl;
        return CliFailure;
    }

    ProjectDocument project;
    if (!cliLoadProject(ctx, parsed.positionals().first(), &project))
        return CliFailure;
    const Guide3DViewSettings *found = cliProjectView(ctx, project, viewIndex);
    if (!found)
        return CliFailure;
    const Guide3DViewSettings &view = *found;
    if (projectorIndex < 0 || projectorIndex >= view.objects.size()) {
        ctx.err << "Select a projector before exporting matrix." << Qt::endl;
        return CliFailure;
    }
    const GuideObject &projector = view.objects.at(projectorIndex);
    if (!projector.isProjector()) {
        ctx.err << "Projector Calibration can only be applied to projector objects." << Qt::endl;
        return CliFailure;
    }

    CalibrationMatrices matrices = calibrationMatricesOf(projector);
    ProjectorCalibrationResult fit;
    if (fromPoints) {
        ProjectorCalibrationRequest request;
        request.projectorIndex = projectorIndex;
        request.full = true;
        if (!solveProjectorCalibration(projector, points, request, &fit, &error)) {
            ctx.err << error << Qt::endl;
            return CliFailure;
        }
        matrices = calibrationMatricesOf(projector, fit);
    }
    const QString out = parsed.value(QStringLiteral("-o"));
    if (!writeCalibrationMatrixFile(out, matrices, &error)) {
        ctx.err << error << Qt::endl;
        return CliFailure;
    }
    if (fromPoints)
        ctx.out << QStringLiteral("Matrix exported from calibration points: %1 (RMS %2 px)")
                       .arg(out)
                       .arg(fit.rmsError, 0, 'f', 2)
                << Qt::endl;
    else
        ctx.out << QStringLiteral("Matrix exported from projector transform: %1").arg(out) << Qt::endl;
    return CliOk;
}

const CliCommand &exportMatrixCommand()
{
    static const CliCommand command{
        QStringLiteral("export-matrix"),
        QStringLiteral("export-matrix <project> --view V --projector I [--points <file.csv>] -o <matrix.txt>"),
        QStringLiteral("Writes the projection and model matrices of a projector, fitted to matched points "
                       "(CSV x,y,z,u,v) when given, else from its transform."),
        runExportMatrix};
    return command;
}

const CliRegistration registration(exportMatrixCommand());

} // namespace
