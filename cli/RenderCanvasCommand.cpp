#include "cli/CliCommand.h"

#include "canvas/CanvasGuideSources.h"
#include "canvas/CanvasNaming.h"
#include "project/ProjectFile.h"
#include "project/ResourceCollector.h"

#include <QFileInfo>

namespace {

const CliCommand &renderCanvasCommand();

int runRenderCanvas(const QStringList &args, CliContext &ctx)
{
    const CliCommand &command = renderCanvasCommand();
    CliArgs parsed(args, {QStringLiteral("--canvas"), QStringLiteral("-o")}, {});
    const int index = parsed.intValue(QStringLiteral("--canvas"), 0);
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, command, QStringLiteral("Give exactly one project file."));
    if (parsed.value(QStringLiteral("-o")).isEmpty())
        return cliUsageError(ctx, command, QStringLiteral("Give the output PNG with -o."));
    if (index < 0)
        return cliUsageError(ctx, command, QStringLiteral("--canvas takes a canvas number from 0."));

    const QString path = parsed.positionals().first();
    ProjectDocument doc;
    QString error;
    if (!cliLoadProject(ctx, path, &doc))
        return CliFailure;
    if (index >= doc.canvasTabs.size()) {
        ctx.err << "Canvas " << index << " does not exist; the project holds " << doc.canvasTabs.size()
                << " canvas tab(s), numbered from 0." << Qt::endl;
        return CliFailure;
    }
    // Pictures saved with paths relative to the project are found beside it, as on opening.
    vg::resources::resolveRelativePaths(&doc, QFileInfo(path).absolutePath());
    const CanvasTabSettings &canvas = doc.canvasTabs[index];
    const CanvasSources sources = renderCanvasSources(doc.guides, canvas);
    QString written;
    if (!exportCanvasPng(canvas, sources, parsed.value(QStringLiteral("-o")), &written, &error)) {
        ctx.err << "Export failed: " << error << Qt::endl;
        return CliFailure;
    }
    const QRect bounds = canvasContentBounds(canvas, sources);
    ctx.out << "Wrote " << written << " (" << bounds.width() << "x" << bounds.height() << " px)" << Qt::endl;
    return CliOk;
}

const CliCommand &renderCanvasCommand()
{
    static const CliCommand command{
        QStringLiteral("render-canvas"),
        QStringLiteral("render-canvas <project> [--canvas N] -o <out.png>"),
        QStringLiteral("Renders canvas tab N (default 0) of a project to PNG, as the canvas tab's export does."),
        runRenderCanvas};
    return command;
}

const CliRegistration registration(renderCanvasCommand());

} // namespace
