#include "cli/CliCommand.h"

#include "exchange/MeshImport.h"
#include "project/ProjectFile.h"
#include "scene/SceneModel.h"

#include <QFileInfo>

namespace {

const CliCommand &importCommand();

QStringList namesOf(const QVector<GuideObject> &objects)
{
    QStringList names;
    for (const GuideObject &o : objects)
        names.append(o.name);
    return names;
}

int runImport(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args, {QStringLiteral("--view"), QStringLiteral("-o")}, {});
    const CliCommand &command = importCommand();
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());
    if (parsed.positionals().size() != 2)
        return cliUsageError(ctx, command, QStringLiteral("Give the project and one OBJ or DXF file."));
    const QString output = parsed.value(QStringLiteral("-o"));
    if (output.isEmpty())
        return cliUsageError(ctx, command, QStringLiteral("Give the output project with -o <out.vgs>."));
    const int viewIndex = parsed.intValue(QStringLiteral("--view"), 0);
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());

    ProjectDocument project;
    QString error;
    if (!cliLoadProject(ctx, parsed.positionals().at(0), &project))
        return CliFailure;
    const Guide3DViewSettings *found = cliProjectView(ctx, project, viewIndex);
    if (!found)
        return CliFailure;
    Guide3DViewSettings changed = *found;
    Guide3DViewSettings *view = &changed;

    GuideObject object;
    if (!vg::exchange::importMeshFile(parsed.positionals().at(1), &object, &error)) {
        ctx.err << "Import failed: " << error << Qt::endl;
        return CliFailure;
    }
    object.name = SceneModel::copyName(object.name, namesOf(view->objects));
    view->objects.append(object);
    setProjectView(&project, viewIndex, changed);

    if (!saveProjectDocument(output, project, &error)) {
        ctx.err << "Save failed: " << error << Qt::endl;
        return CliFailure;
    }
    ctx.out << QStringLiteral("Object %1 \"%2\": %3 x %4 x %5 mm")
                   .arg(view->objects.size() - 1)
                   .arg(object.name)
                   .arg(double(object.scale_x) * 2000.0, 0, 'f', 1)
                   .arg(double(object.scale_y) * 2000.0, 0, 'f', 1)
                   .arg(double(object.scale_z) * 2000.0, 0, 'f', 1)
            << Qt::endl;
    return CliOk;
}

const CliCommand &importCommand()
{
    static const CliCommand command{
        QStringLiteral("import"), QStringLiteral("import <project> [--view V] <file.obj|file.dxf> -o <out.vgs>"),
        QStringLiteral("Adds an OBJ mesh or a DXF drawing to a 3D view (index from 0) and saves the project."),
        runImport};
    return command;
}

const CliRegistration registration(importCommand());

} // namespace
