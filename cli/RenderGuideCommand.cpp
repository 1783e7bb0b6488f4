#include "cli/CliCommand.h"

#include "common/AtomicFileWrite.h"
#include "common/SettingsContainer.h"
#include "guide/GuideRenderer.h"
#include "guide/GuidePngExport.h"
#include "guide/ProjectorLayout.h"

#include "project/ProjectFile.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

bool isProjectRoot(const QJsonObject &root)
{
    for (const char *key : {"guides", "three_d_view", "three_d_views", "canvas_tabs", "composite_tabs", "tabs"}) {
        if (root.contains(QLatin1String(key)))
            return true;
    }
    return false;
}

} // namespace

// Loads guide `index` (-1: the active guide) from a project file or from a bare JSON
// object that is one guide, then applies what the guide tab applies when it takes
// settings. Shared with guide-info.
bool loadGuideForCli(const QString &path, int index, GuideSettings *settings, QString *error)
{
    QByteArray bytes;
    if (!readProjectBytes(path, &bytes, error))
        return false;
    QByteArray json;
    if (!vg::decodeSettingsContainer(bytes, &json, error))
        return false;
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *error = QStringLiteral("JSON parse failed: %1").arg(parseError.errorString());
        return false;
    }
    if (!doc.isObject()) {
        *error = QStringLiteral("JSON root must be an object.");
        return false;
    }
    const QJsonObject root = doc.object();

    QList<GuideSettings> guides;
    int active = 0;
    if (isProjectRoot(root)) {
        // The decoded text is read as a bare project: the file is read and decoded once.
        ProjectDocument project;
        if (!loadProjectDocumentData(json, &project, error))
            return false;
        guides = project.guides;
        active = project.activeGuide;
    } else {
        guides.append(guideSettingsFromJson(root));
    }
    if (guides.isEmpty()) {
        *error = QStringLiteral("The file holds no guide.");
        return false;
    }
    const int chosen = index < 0 ? active : index;
    if (chosen >= guides.size()) {
        *error = QStringLiteral("Guide %1 does not exist; the file holds %2 guide(s), numbered from 0.")
                     .arg(chosen)
                     .arg(guides.size());
        return false;
    }
    *settings = guides.at(chosen);
    applyGuideTabLoadStep(settings);
    return true;
}

namespace {

const CliCommand &renderGuideCommand();

int runRenderGuide(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args, {QStringLiteral("--guide"), QStringLiteral("-o")}, {});
    const int index = parsed.intValue(QStringLiteral("--guide"), -1);
    if (!parsed.ok())
        return cliUsageError(ctx, renderGuideCommand(), parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, renderGuideCommand(), QStringLiteral("Give exactly one project or guide file."));
    if (!parsed.has(QStringLiteral("-o")))
        return cliUsageError(ctx, renderGuideCommand(), QStringLiteral("Give the output PNG with -o."));
    if (parsed.has(QStringLiteral("--guide")) && index < 0)
        return cliUsageError(ctx, renderGuideCommand(), QStringLiteral("--guide takes a guide number from 0."));

    GuideSettings settings;
    QString error;
    if (!loadGuideForCli(parsed.positionals().first(), index, &settings, &error)) {
        ctx.err << "Load failed: " << error << Qt::endl;
        return CliFailure;
    }
    const QString out = parsed.value(QStringLiteral("-o"));
    const QSize size = renderedGuideSize(settings);
    const QByteArray png = encodeGuidePng(settings);
    if (png.isEmpty()) {
        ctx.err << "Render failed: there is not enough memory to render and encode the guide image of "
                << size.width() << "x" << size.height() << " px." << Qt::endl;
        return CliFailure;
    }
    if (!vg::writeFileReplacing(out, png, &error)) {
        ctx.err << "Export failed: " << error << Qt::endl;
        return CliFailure;
    }
    ctx.out << "Wrote " << out << " (" << size.width() << "x" << size.height() << " px)" << Qt::endl;
    return CliOk;
}

const CliCommand &renderGuideCommand()
{
    static const CliCommand command{
        QStringLiteral("render-guide"),
        QStringLiteral("render-guide <project-or-guide.json> [--guide N] -o <out.png>"),
        QStringLiteral("Renders guide N (default: the active guide) of a project, or a bare guide JSON object, to PNG."),
        runRenderGuide};
    return command;
}

const CliRegistration registration(renderGuideCommand());

} // namespace
