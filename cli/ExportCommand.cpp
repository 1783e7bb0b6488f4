#include "cli/CliCommand.h"

#include "exchange/ExporterTable.h"
#include "exchange/MeshImport.h"
#include "project/ProjectFile.h"
#include "scene/gl/GlExportImageSource.h"

#include <QDir>
#include <QFileInfo>

namespace {

const CliCommand &exportCommand();

QStringList sceneFormats()
{
    QStringList ids;
    for (const vg::exchange::ExporterEntry *e : vg::exchange::exportersFor(vg::exchange::ExportSubject::SceneView))
        ids.append(e->identifier);
    return ids;
}

// "I,J,K" as scene indices; false on anything that is not a list of whole numbers.
bool parseIndexList(const QString &text, QList<int> *indices)
{
    const QStringList parts = text.split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (parts.isEmpty() || parts.size() > 100000)
        return false;
    for (const QString &part : parts) {
        bool ok = false;
        const int value = part.trimmed().toInt(&ok);
        if (!ok || value < 0)
            return false;
        indices->append(value);
    }
    return true;
}

int runExport(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args,
                   {QStringLiteral("--view"), QStringLiteral("--format"), QStringLiteral("--objects"),
                    QStringLiteral("--projector"), QStringLiteral("--margin"), QStringLiteral("-o")},
                   {QStringLiteral("--flatten"), QStringLiteral("--crop"), QStringLiteral("--normalize")});
    const CliCommand &command = exportCommand();
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, command, QStringLiteral("Give exactly one project file."));
    const QString output = parsed.value(QStringLiteral("-o"));
    if (output.isEmpty())
        return cliUsageError(ctx, command, QStringLiteral("Give the output file with -o <path>."));
    const QString format = parsed.value(QStringLiteral("--format"));
    const vg::exchange::ExporterEntry *entry = vg::exchange::findExporter(format);
    if (!entry || entry->subject != vg::exchange::ExportSubject::SceneView)
        return cliUsageError(ctx, command,
                             QStringLiteral("--format takes one of %1.").arg(sceneFormats().join(QStringLiteral(", "))));
    const int viewIndex = parsed.intValue(QStringLiteral("--view"), -1);
    const int projector = parsed.intValue(QStringLiteral("--projector"), -1);
    const int margin = parsed.intValue(QStringLiteral("--margin"), 0);
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());
    if (margin < 0 || margin > 100000)
        return cliUsageError(ctx, command, QStringLiteral("--margin takes 0 to 100000 pixels."));
    QList<int> selection;
    if (parsed.has(QStringLiteral("--objects")) && !parseIndexList(parsed.value(QStringLiteral("--objects")), &selection))
        return cliUsageError(ctx, command, QStringLiteral("--objects takes object indices from 0, such as 0,2,3."));

    ProjectDocument project;
    QString error;
    if (!cliLoadProject(ctx, parsed.positionals().first(), &project))
        return CliFailure;
    const Guide3DViewSettings *found = cliProjectView(ctx, project, viewIndex, true);
    if (!found)
        return CliFailure;
    Guide3DViewSettings view = *found;
    // Imported OBJ and DXF objects are saved as their file path; read their geometry.
    QStringList problems;
    vg::exchange::loadImportedGeometry(view.objects, &problems, QFileInfo(parsed.positionals().first()).absolutePath());
    for (const QString &problem : problems)
        ctx.err << problem << Qt::endl;
    for (int index : selection) {
        if (index >= view.objects.size()) {
            ctx.err << QStringLiteral("The 3D view has %1 object(s); there is no object %2.")
                           .arg(view.objects.size())
                           .arg(index)
                    << Qt::endl;
            return CliFailure;
        }
    }

    GlExportImageSource images(project.guides);
    vg::exchange::ExportRequest request;
    request.guides = project.guides;
    request.objects = view.objects;
    request.selection = selection;
    request.objectIndex = projector;
    request.project = &project;
    request.images = &images;
    request.options.insert(QStringLiteral("selectedOnly"), !selection.isEmpty());
    request.options.insert(QStringLiteral("flattenTo2D"), parsed.has(QStringLiteral("--flatten")));
    request.options.insert(QStringLiteral("cropToProjector"), parsed.has(QStringLiteral("--crop")));
    request.options.insert(QStringLiteral("normalizeCoordinates"), parsed.has(QStringLiteral("--normalize")));
    request.options.insert(QStringLiteral("frameMarginPixels"), margin);
    request.progress = [&ctx](const QString &text) { ctx.err << text << Qt::endl; };

    QStringList written;
    if (!entry->run(request, output, &written, &error)) {
        ctx.err << "Export failed: " << error << Qt::endl;
        return CliFailure;
    }
    for (const QString &file : written)
        ctx.out << QDir::toNativeSeparators(QFileInfo(file).absoluteFilePath()) << Qt::endl;
    return CliOk;
}

const CliCommand &exportCommand()
{
    static const CliCommand command{
        QStringLiteral("export"),
        QStringLiteral("export <project> [--view V] --format obj|view-mesh|fbx|usd|maya [--objects I,J] "
                       "[--projector I] [--flatten] [--crop] [--normalize] [--margin PX] -o <path>"),
        QStringLiteral("Exports a 3D view's scene as OBJ/MTL, a projector view mesh, FBX, USDA or Maya ASCII; "
                       "prints the files written."),
        runExport};
    return command;
}

const CliRegistration registration(exportCommand());

} // namespace
