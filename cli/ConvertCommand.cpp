#include "cli/CliCommand.h"

#include "project/ProjectFile.h"

#include "common/AtomicFileWrite.h"

namespace {

const CliCommand &convertCommand();

int runConvert(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args, {}, {});
    if (!parsed.ok())
        return cliUsageError(ctx, convertCommand(), parsed.error());
    if (parsed.positionals().size() != 2)
        return cliUsageError(ctx, convertCommand(), QStringLiteral("Give the project to read and the file to write."));
    const QString in = parsed.positionals().at(0);
    const QString out = parsed.positionals().at(1);

    QList<GuideSettings> guides;
    int activeGuide = 0;
    QString error;
    Guide3DViewSettings activeView;
    QList<Guide3DViewSettings> views;
    QList<CanvasTabSettings> canvasTabs;
    QList<ProjectTabEntry> tabs;
    int currentTab = -1;
    if (!loadProjectFile(in, &guides, &activeGuide, &error, &activeView, &views, &canvasTabs, &tabs, &currentTab)) {
        ctx.err << error << Qt::endl;
        return CliFailure;
    }

    bool ok = false;
    if (out.endsWith(QLatin1String(".json"), Qt::CaseInsensitive)) {
        const QByteArray json = projectToJson(guides, activeGuide, &activeView, &views, &canvasTabs, &tabs, currentTab);
        ok = vg::writeFileReplacing(out, json, &error);
    } else {
        ok = saveProjectFile(out, guides, activeGuide, &error, &activeView, &views, &canvasTabs, &tabs, currentTab);
    }
    if (!ok) {
        ctx.err << error << Qt::endl;
        return CliFailure;
    }
    return CliOk;
}

const CliCommand &convertCommand()
{
    static const CliCommand command{
        QStringLiteral("convert"), QStringLiteral("convert <in> <out>"),
        QStringLiteral("Reads a project (.vgs or bare JSON) and writes it as .vgs, or as indented JSON when <out> ends in .json."),
        runConvert};
    return command;
}

const CliRegistration registration(convertCommand());

} // namespace
