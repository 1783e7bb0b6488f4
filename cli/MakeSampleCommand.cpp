#include "cli/CliCommand.h"

#include "project/ProjectFile.h"
#include "scene/SceneModel.h"

namespace {

const CliCommand &makeSampleCommand();

// The bundled sample: a wall guide and a floor guide, a canvas tab laying both out, and
// a 3D view with a projection plane, a projector projecting the wall guide onto it and a
// person for scale: the program's central path, visible on first start.
ProjectDocument sampleProject()
{
    ProjectDocument doc;

    GuideSettings wall;
    wall.realWidth = 4000;
    wall.realHeight = 2500;
    wall.pixelWidth = 1920;
    wall.pixelHeight = 1200;
    wall.explain = QStringLiteral("Main wall");
    GuideSettings floor;
    floor.realWidth = 6000;
    floor.realHeight = 3375;
    floor.pixelWidth = 3840;
    floor.pixelHeight = 2160;
    floor.projectorCount = 2;
    floor.explain = QStringLiteral("Floor, two projectors");
    doc.guides = {wall, floor};
    doc.activeGuide = 0;

    CanvasTabSettings canvas;
    canvas.title = QStringLiteral("Layout");
    canvas.selected_guide_index = 0;
    CanvasObjectSettings wallImage;
    wallImage.guide_index = 0;
    wallImage.name = QStringLiteral("Main wall");
    wallImage.translate_x = -2.2;
    CanvasObjectSettings floorImage;
    floorImage.guide_index = 1;
    floorImage.name = QStringLiteral("Floor");
    floorImage.translate_x = 2.2;
    CanvasObjectSettings note;
    note.object_type = QStringLiteral("comment");
    note.name = QStringLiteral("Comment");
    note.comment_text = QStringLiteral("Check the seam between the two floor projectors.");
    note.translate_x = 2.2;
    note.translate_y = 0.8;
    canvas.objects = {wallImage, floorImage, note};
    doc.canvasTabs = {canvas};

    SceneModel scene;
    scene.addPlane(QString(), 4000, 2500);
    const int projector = scene.addProjector(QString());
    GuideObject *p = scene.mutableObject(projector);
    p->translate_y = 2.5f;
    p->translate_z = 4.0f;
    p->show_projector_frustum = true;
    // At throw ratio 1 from 4 m, with the lens axis on the image's top edge, the 1920 x 1200
    // image covers the 4 x 2.5 m wall exactly.
    p->projector_image_guide_index = 0;
    const int person = scene.addPerson(QString(), 1700);
    GuideObject *human = scene.mutableObject(person);
    human->translate_x = 1.2f;
    human->translate_z = 1.5f;

    Guide3DViewSettings view = Guide3DViewSettings::created();
    view.title = QStringLiteral("3D View");
    view.show_projector_frustum = true;
    view.target_y = 1.25;
    view.focus_distance = 9.0;
    view.objects = scene.objects();
    doc.activeView = view;
    doc.views = {view};

    const QString guide = QString::fromLatin1(kGuideTabRecord);
    doc.tabs = {{guide, 0}, {guide, 1}, {QString::fromLatin1(kCanvasTabRecord), 0}, {QString::fromLatin1(kThreeDViewTabRecord), 0}};
    doc.currentTab = 3; // opens on the 3D view, the wall guide projected

    return doc;
}

int runMakeSample(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args, {}, {});
    if (!parsed.ok())
        return cliUsageError(ctx, makeSampleCommand(), parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, makeSampleCommand(), QStringLiteral("Give the file to write."));
    QString error;
    if (!saveProjectDocument(parsed.positionals().first(), sampleProject(), &error)) {
        ctx.err << error << Qt::endl;
        return CliFailure;
    }
    return CliOk;
}

const CliCommand &makeSampleCommand()
{
    static const CliCommand command{
        QStringLiteral("make-sample"), QStringLiteral("make-sample <out.vgs>"),
        QStringLiteral("Writes the bundled sample project: two guides, a canvas tab and a 3D view."),
        runMakeSample};
    return command;
}

const CliRegistration registration(makeSampleCommand());

} // namespace
