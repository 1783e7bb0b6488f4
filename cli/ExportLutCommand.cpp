#include "cli/CliCommand.h"

#include "exchange/UvLutWriter.h"
#include "project/ProjectFile.h"
#include "scene/gl/PrivateGlDisplay.h"
#include "scene/gl/GlExportImageSource.h"

#include <QDir>
#include <QFileInfo>

namespace {

using namespace vg::exchange;

const CliCommand &exportLutCommand();

bool readReal(CliArgs &parsed, const QString &option, double low, double high, double *value)
{
    if (!parsed.has(option))
        return true;
    bool ok = false;
    const double v = parsed.value(option).toDouble(&ok);
    if (!ok || !(v >= low && v <= high))
        return false;
    *value = v;
    return true;
}

int runExportLut(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args,
                   {QStringLiteral("--view"), QStringLiteral("--output"), QStringLiteral("--source"),
                    QStringLiteral("--method"), QStringLiteral("--scale"), QStringLiteral("--feather"),
                    QStringLiteral("--aa"), QStringLiteral("-o")},
                   {QStringLiteral("--test-data")});
    const CliCommand &command = exportLutCommand();
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, command, QStringLiteral("Give exactly one project file."));
    const QString folder = parsed.value(QStringLiteral("-o"));
    if (folder.isEmpty())
        return cliUsageError(ctx, command, QStringLiteral("Give the output folder with -o <folder>."));
    if (!parsed.has(QStringLiteral("--output")) || !parsed.has(QStringLiteral("--source")))
        return cliUsageError(ctx, command, QStringLiteral("Give the output view with --output I and the source with --source J."));

    UvLutOptions options;
    const int viewIndex = parsed.intValue(QStringLiteral("--view"), 0);
    options.outputIndex = parsed.intValue(QStringLiteral("--output"), -1);
    options.sourceIndex = parsed.intValue(QStringLiteral("--source"), -1);
    options.aaSamples = parsed.intValue(QStringLiteral("--aa"), 1);
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());
    const QString method = parsed.value(QStringLiteral("--method"), QStringLiteral("gpu"));
    if (method != QLatin1String("gpu") && method != QLatin1String("cpu"))
        return cliUsageError(ctx, command, QStringLiteral("--method takes gpu or cpu, not \"%1\".").arg(method));
    options.method = method == QLatin1String("gpu") ? UvLutMethod::GpuProbe : UvLutMethod::CpuRaster;
    if (!readReal(parsed, QStringLiteral("--scale"), 0.0, 10.0, &options.uScale))
        return cliUsageError(ctx, command, QStringLiteral("--scale takes a number from 0 to 10."));
    if (!readReal(parsed, QStringLiteral("--feather"), 0.0, 8.0, &options.featherPx))
        return cliUsageError(ctx, command, QStringLiteral("--feather takes a number of pixels from 0 to 8."));
    if (options.aaSamples != 1 && options.aaSamples != 2 && options.aaSamples != 4)
        return cliUsageError(ctx, command, QStringLiteral("--aa takes 1, 2 or 4."));
    options.testData = parsed.has(QStringLiteral("--test-data"));

    ProjectDocument project;
    QString error;
    if (!cliLoadProject(ctx, parsed.positionals().first(), &project))
        return CliFailure;
    const Guide3DViewSettings *found = cliProjectView(ctx, project, viewIndex);
    if (!found)
        return CliFailure;
    const Guide3DViewSettings &view = *found;

    qint64 serverPid = 0;
    std::unique_ptr<ExportImageSource> images;
    if (options.method == UvLutMethod::GpuProbe) {
        if (!ensureGlDisplay(&error, &serverPid)) {
            ctx.err << "Export failed: " << error << Qt::endl;
            return CliFailure;
        }
        images = std::make_unique<GlExportImageSource>(project.guides);
    } else {
        images = std::make_unique<ExportImageSource>(project.guides);
    }
    UvLutResult result;
    const auto progress = [&ctx](const QString &text) { ctx.err << text << Qt::endl; };
    const bool ok = exportUvLut(view.objects, *images, options, folder, progress, &result, &error);
    images.reset();
    if (!ok) {
        stopPrivateGlDisplay(serverPid);
        ctx.err << "Export failed: " << error << Qt::endl;
        return CliFailure;
    }
    ctx.out << QStringLiteral("%1 (%2x%3, %4 valid samples of %5, %6)")
                   .arg(QDir(QFileInfo(folder).absoluteFilePath()).filePath(uvLutFileNames().binary))
                   .arg(result.table.width)
                   .arg(result.table.height)
                   .arg(result.stats.validCameraUvSamples)
                   .arg(qint64(result.table.width) * result.table.height)
                   .arg(uvLutMethodKey(options.method))
            << Qt::endl;
    return CliOk;
}

const CliCommand &exportLutCommand()
{
    static const CliCommand command{
        QStringLiteral("export-lut"),
        QStringLiteral("export-lut <project> [--view V] --output I --source J [--method gpu|cpu] [--scale S] "
                       "[--feather PX] [--aa N] [--test-data] -o <folder>"),
        QStringLiteral("Exports the projector/camera UV look-up table of output object I seen from source J."),
        runExportLut};
    return command;
}

const CliRegistration registration(exportLutCommand());

} // namespace
