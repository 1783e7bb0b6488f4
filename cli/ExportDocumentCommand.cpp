#include "cli/CliCommand.h"

#include "exchange/ExporterTable.h"
#include "exchange/MeshImport.h"
#include "project/ProjectFile.h"
#include "project/ResourceCollector.h"
#include "scene/gl/GlExportImageSource.h"

#include <QDir>
#include <QFileInfo>

namespace {

const CliCommand &exportDocumentCommand();

int runExportDocument(const QStringList &args, CliContext &ctx)
{
    const CliCommand &command = exportDocumentCommand();
    CliArgs parsed(args, {QStringLiteral("--format"), QStringLiteral("-o")}, {});
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, command, QStringLiteral("Give exactly one project file."));
    const QString format = parsed.value(QStringLiteral("--format")).toLower();
    if (format != QLatin1String("pdf") && format != QLatin1String("pptx"))
        return cliUsageError(ctx, command, QStringLiteral("--format takes pdf or pptx."));
    QString output = parsed.value(QStringLiteral("-o"));
    if (output.isEmpty())
        return cliUsageError(ctx, command, QStringLiteral("Give the output file with -o."));
    if (!output.endsWith(QLatin1Char('.') + format, Qt::CaseInsensitive))
        output += QLatin1Char('.') + format;

    const QString path = parsed.positionals().first();
    ProjectDocument project;
    QString error;
    if (!cliLoadProject(ctx, path, &project))
        return CliFailure;
    // Files named relative to the project are found beside it, as on opening.
    const QString folder = QFileInfo(path).absolutePath();
    vg::resources::resolveRelativePaths(&project, folder);
    QStringList problems;
    for (Guide3DViewSettings &view : project.views)
        vg::exchange::loadImportedGeometry(view.objects, &problems, folder);
    for (const QString &problem : problems)
        ctx.err << problem << Qt::endl;

    GlExportImageSource images(project.guides);
    vg::exchange::ExportRequest request;
    request.guides = project.guides;
    request.project = &project;
    request.images = &images;
    QStringList written;
    if (!vg::exchange::findExporter(format)->run(request, output, &written, &error)) {
        ctx.err << "Export failed: " << error << Qt::endl;
        return CliFailure;
    }
    for (const QString &file : written)
        ctx.out << QDir::toNativeSeparators(QFileInfo(file).absoluteFilePath()) << Qt::endl;
    return CliOk;
}

const CliCommand &exportDocumentCommand()
{
    static const CliCommand command{
        QStringLiteral("export-document"),
        QStringLiteral("export-document <project> --format pdf|pptx -o <file>"),
        QStringLiteral("Writes one page per tab (guides, canvases, 3D views) as a PDF or a PowerPoint file."),
        runExportDocument};
    return command;
}

const CliRegistration registration(exportDocumentCommand());

} // namespace
