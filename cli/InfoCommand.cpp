#include "cli/CliCommand.h"

#include "project/ProjectFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const CliCommand &infoCommand();

QJsonObject viewSummary(const Guide3DViewSettings &view)
{
    QJsonArray objects;
    for (const GuideObject &object : view.objects) {
        QJsonObject item;
        item.insert(QStringLiteral("name"), object.name);
        item.insert(QStringLiteral("kind"), object.guide_index);
        objects.append(item);
    }
    QJsonObject summary;
    summary.insert(QStringLiteral("title"), view.title);
    summary.insert(QStringLiteral("object_count"), int(view.objects.size()));
    summary.insert(QStringLiteral("objects"), objects);
    summary.insert(QStringLiteral("camera_view_count"), int(view.camera_views.size()));
    return summary;
}

int runInfo(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args, {}, {});
    if (!parsed.ok())
        return cliUsageError(ctx, infoCommand(), parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, infoCommand(), QStringLiteral("Give exactly one project file."));

    ProjectDocument doc;
    QString error;
    if (!loadProjectDocument(parsed.positionals().first(), &doc, &error)) {
        ctx.err << error << Qt::endl;
        return CliFailure;
    }

    QJsonArray guides;
    for (const GuideSettings &guide : doc.guides) {
        QJsonObject item;
        item.insert(QStringLiteral("real_width"), guide.realWidth);
        item.insert(QStringLiteral("real_height"), guide.realHeight);
        item.insert(QStringLiteral("pixel_width"), guide.pixelWidth);
        item.insert(QStringLiteral("pixel_height"), guide.pixelHeight);
        guides.append(item);
    }
    QJsonArray canvasTabs;
    for (const CanvasTabSettings &tab : doc.canvasTabs) {
        QJsonObject item;
        item.insert(QStringLiteral("title"), tab.title);
        item.insert(QStringLiteral("object_count"), int(tab.objects.size()));
        canvasTabs.append(item);
    }
    QJsonArray views;
    for (const Guide3DViewSettings &view : doc.views)
        views.append(viewSummary(view));
    QJsonArray tabs;
    for (const ProjectTabEntry &entry : doc.tabs) {
        QJsonObject item;
        item.insert(QStringLiteral("kind"), entry.kind);
        item.insert(QStringLiteral("index"), entry.index);
        tabs.append(item);
    }

    QJsonObject root;
    root.insert(QStringLiteral("guide_count"), int(doc.guides.size()));
    root.insert(QStringLiteral("active_guide"), doc.activeGuide);
    root.insert(QStringLiteral("guides"), guides);
    root.insert(QStringLiteral("canvas_tabs"), canvasTabs);
    root.insert(QStringLiteral("views"), views);
    root.insert(QStringLiteral("tabs"), tabs);
    root.insert(QStringLiteral("current_tab"), doc.currentTab);
    ctx.out << QJsonDocument(root).toJson(QJsonDocument::Indented);
    ctx.out.flush();
    return CliOk;
}

const CliCommand &infoCommand()
{
    static const CliCommand command{
        QStringLiteral("info"), QStringLiteral("info <project>"),
        QStringLiteral("Prints a JSON summary of a project: guides and sizes, canvas tabs, 3D views and their objects, tabs."),
        runInfo};
    return command;
}

const CliRegistration registration(infoCommand());

} // namespace
