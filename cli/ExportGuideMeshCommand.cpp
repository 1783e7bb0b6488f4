#include "cli/CliCommand.h"

#include "exchange/ExporterTable.h"
#include "project/ProjectFile.h"
#include "scene/gl/GlExportImageSource.h"

#include <QDir>
#include <QFileInfo>

namespace {

const CliCommand &exportGuideMeshCommand();

int runExportGuideMesh(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args, {QStringLiteral("--guide"), QStringLiteral("-o")}, {});
    const CliCommand &command = exportGuideMeshCommand();
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, command, QStringLiteral("Give exactly one project file."));
    const QString base = parsed.value(QStringLiteral("-o"));
    if (base.isEmpty())
        return cliUsageError(ctx, command, QStringLiteral("Give the output base name with -o <base>."));
    const int guideIndex = parsed.intValue(QStringLiteral("--guide"), 0);
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());

    ProjectDocument project;
    QString error;
    if (!cliLoadProject(ctx, parsed.positionals().first(), &project))
        return CliFailure;
    if (guideIndex < 0 || guideIndex >= project.guides.size()) {
        ctx.err << QStringLiteral("The project has %1 guide(s); there is no guide %2.")
                       .arg(project.guides.size())
                       .arg(guideIndex)
                << Qt::endl;
        return CliFailure;
    }
    const GuideSettings &guide = project.guides.at(guideIndex);
    GlExportImageSource images(project.guides);
    vg::exchange::ExportRequest request;
    request.guides = project.guides;
    request.guideIndex = guideIndex;
    // The guide's own title names the mesh when it has one.
    request.guideName = guide.documentCustomTitleEnabled ? guide.documentCustomTitle : QString();
    request.project = &project;
    request.images = &images;
    QStringList written;
    if (!vg::exchange::findExporter(QStringLiteral("guide-mesh"))->run(request, base, &written, &error)) {
        ctx.err << "Export failed: " << error << Qt::endl;
        return CliFailure;
    }
    for (const QString &file : written)
        ctx.out << QDir::toNativeSeparators(QFileInfo(file).absoluteFilePath()) << Qt::endl;
    return CliOk;
}

const CliCommand &exportGuideMeshCommand()
{
    static const CliCommand command{
        QStringLiteral("export-guide-mesh"),
        QStringLiteral("export-guide-mesh <project> [--guide N] -o <base>"),
        QStringLiteral("Writes a guide as a textured mesh: <base>.obj, .mtl, _maya_surface.mel and the guide PNG."),
        runExportGuideMesh};
    return command;
}

const CliRegistration registration(exportGuideMeshCommand());

} // namespace
