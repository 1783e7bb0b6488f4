#include "cli/CliCommand.h"

#include "guide/GuideRenderer.h"
#include "guide/ProjectorLayout.h"

#include <QJsonDocument>
#include <QJsonObject>

bool loadGuideForCli(const QString &path, int index, GuideSettings *settings, QString *error);

namespace {

const CliCommand &guideInfoCommand();

int runGuideInfo(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args, {QStringLiteral("--guide")}, {});
    const int index = parsed.intValue(QStringLiteral("--guide"), -1);
    if (!parsed.ok())
        return cliUsageError(ctx, guideInfoCommand(), parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, guideInfoCommand(), QStringLiteral("Give exactly one project or guide file."));
    if (parsed.has(QStringLiteral("--guide")) && index < 0)
        return cliUsageError(ctx, guideInfoCommand(), QStringLiteral("--guide takes a guide number from 0."));

    GuideSettings s;
    QString error;
    if (!loadGuideForCli(parsed.positionals().first(), index, &s, &error)) {
        ctx.err << "Load failed: " << error << Qt::endl;
        return CliFailure;
    }
    const QSize image = guideImageSize(s);
    const int columns = guideGridColumns(s);
    const int rows = guideGridRows(s);
    const ProjectorArrayLayout layout = computeProjectorArray(s);
    QJsonObject o;
    o.insert(QStringLiteral("pixel_width"), s.pixelWidth);
    o.insert(QStringLiteral("pixel_height"), s.pixelHeight);
    o.insert(QStringLiteral("image_width"), image.width());
    o.insert(QStringLiteral("image_height"), image.height());
    o.insert(QStringLiteral("columns"), columns);
    o.insert(QStringLiteral("rows"), rows);
    o.insert(QStringLiteral("cell_width"), double(s.pixelWidth) / columns);
    o.insert(QStringLiteral("cell_height"), double(s.pixelHeight) / rows);
    o.insert(QStringLiteral("square"), guideCellsAreSquare(s));
    // The distance the array is laid out for: derived from the throw ratio under Auto Layout.
    o.insert(QStringLiteral("projector_throw_distance"), layout.throwDistanceMm);
    o.insert(QStringLiteral("effective_width"), layout.effectiveResolution.width());
    o.insert(QStringLiteral("effective_height"), layout.effectiveResolution.height());
    ctx.out << QJsonDocument(o).toJson(QJsonDocument::Indented);
    return CliOk;
}

const CliCommand &guideInfoCommand()
{
    static const CliCommand command{
        QStringLiteral("guide-info"), QStringLiteral("guide-info <project> [--guide N]"),
        QStringLiteral("Prints a guide's effective size, grid, throw distance and effective resolution as JSON."),
        runGuideInfo};
    return command;
}

const CliRegistration registration(guideInfoCommand());

} // namespace
