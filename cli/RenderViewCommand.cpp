#include "cli/CliCommand.h"

#include "exchange/MeshImport.h"
#include "project/ProjectFile.h"
#include "scene/gl/OffscreenSceneRender.h"
#include "scene/gl/PrivateGlDisplay.h"

#include <QFileInfo>
#include <QImageWriter>
#include <QRegularExpression>
#include <QSaveFile>

namespace {

const CliCommand &renderViewCommand();

bool parseSize(const QString &text, QSize *size)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,5})[xX](\\d{1,5})$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return false;
    *size = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    return size->width() >= 1 && size->height() >= 1 && size->width() <= 16384 && size->height() <= 16384;
}

int runRenderView(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args, {QStringLiteral("--view"), QStringLiteral("--camera"), QStringLiteral("--size"),
                          QStringLiteral("-o")},
                   {QStringLiteral("--heatmap"), QStringLiteral("--frustum")});
    const CliCommand &command = renderViewCommand();
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, command, QStringLiteral("Give exactly one project file."));
    const QString output = parsed.value(QStringLiteral("-o"));
    if (output.isEmpty())
        return cliUsageError(ctx, command, QStringLiteral("Give the output image with -o <out.png>."));

    SceneViewRenderOptions options;
    options.heatmap = parsed.has(QStringLiteral("--heatmap"));
    options.frustum = parsed.has(QStringLiteral("--frustum"));
    if (parsed.has(QStringLiteral("--size")) && !parseSize(parsed.value(QStringLiteral("--size")), &options.size))
        return cliUsageError(ctx, command, QStringLiteral("--size takes WxH, each 1 to 16384, for example 1280x720."));
    const int viewIndex = parsed.intValue(QStringLiteral("--view"), -1);
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());
    const QString cameraText = parsed.value(QStringLiteral("--camera"));
    if (cameraText.isEmpty()) {
        options.camera = SceneCameraChoice::SavedView;
    } else if (cameraText == QLatin1String("perspective")) {
        options.camera = SceneCameraChoice::Perspective;
    } else if (cameraText == QLatin1String("front")) {
        options.camera = SceneCameraChoice::Front;
    } else if (cameraText == QLatin1String("side")) {
        options.camera = SceneCameraChoice::Side;
    } else if (cameraText.startsWith(QLatin1String("object:"))) {
        bool ok = false;
        options.objectIndex = cameraText.mid(7).toInt(&ok);
        if (!ok || options.objectIndex < 0)
            return cliUsageError(ctx, command, QStringLiteral("--camera object:I takes an object index from 0."));
        options.camera = SceneCameraChoice::Object;
    } else {
        return cliUsageError(ctx, command,
                             QStringLiteral("--camera takes perspective, front, side or object:I, not \"%1\".").arg(cameraText));
    }

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
    vg::exchange::loadImportedGeometry(view.objects, &problems,
                                       QFileInfo(parsed.positionals().first()).absolutePath());
    for (const QString &problem : problems)
        ctx.err << problem << Qt::endl;
    if (options.camera == SceneCameraChoice::Object
        && (options.objectIndex >= view.objects.size() || !view.objects.at(options.objectIndex).hasLens())) {
        ctx.err << QStringLiteral("Object %1 is not a projector or camera of this view.").arg(options.objectIndex)
                << Qt::endl;
        return CliFailure;
    }

    qint64 serverPid = 0;
    if (!ensureGlDisplay(&error, &serverPid)) {
        ctx.err << "Render failed: " << error << Qt::endl;
        return CliFailure;
    }
    QImage image;
    if (!renderSceneViewImage(view, project.guides, options, &image, &error)) {
        stopPrivateGlDisplay(serverPid);
        ctx.err << "Render failed: " << error << Qt::endl;
        return CliFailure;
    }
    QSaveFile file(output);
    if (!file.open(QIODevice::WriteOnly)) {
        ctx.err << "Export failed: " << file.errorString() << Qt::endl;
        return CliFailure;
    }
    QImageWriter writer(&file, "png");
    if (!writer.write(image) || !file.commit()) {
        ctx.err << "Export failed: " << (writer.error() != QImageWriter::UnknownError ? writer.errorString() : file.errorString())
                << Qt::endl;
        return CliFailure;
    }
    ctx.out << QStringLiteral("%1 (%2x%3)").arg(QFileInfo(output).absoluteFilePath()).arg(image.width()).arg(image.height())
            << Qt::endl;
    return CliOk;
}

const CliCommand &renderViewCommand()
{
    static const CliCommand command{
        QStringLiteral("render-view"),
        QStringLiteral("render-view <project> [--view V] [--camera perspective|front|side|object:I] [--size WxH] "
                       "[--heatmap] [--frustum] -o <out.png>"),
        QStringLiteral("Renders a 3D view off screen (projection, shadows, heat map) and writes a PNG."),
        runRenderView};
    return command;
}

const CliRegistration registration(renderViewCommand());

} // namespace
