#pragma once

#include "project/ProjectFile.h"

#include <QString>
#include <QStringList>

// Gathers the files a project refers to (logos, layer images, canvas pictures, textures,
// projector images, imported OBJ and DXF files) into one folder so the project can move to another machine.
namespace vg::resources {

// One referenced file with the category the report names it by.
struct ResourceReference {
    QString category; // "Guide logo", "Guide image object", "Canvas image object", "Object texture", "Projection image",
                      // "Imported mesh"
    QString path;
};

struct CollectReport {
    QString folder;
    QStringList copied;  // copies made, one per distinct source file
    QStringList missing; // referenced files that do not exist
    QStringList failed;  // files that could not be copied, with the reason
    int referenceCount = 0;
};

// Every non-empty external file path of the project, in a fixed order.
QList<ResourceReference> collectReferences(const ProjectDocument &doc);

// Copies every existing referenced file into `folder` (created when missing). A name that
// is taken gets "%1_%2.%3". The project's paths are rewritten to the copies: relative to
// `relativeTo` when given (the folder the project file will live in), else absolute.
// False with an error when the folder cannot be used; a file that cannot be copied is
// listed in the report instead.
bool collectResources(ProjectDocument *doc, const QString &folder, const QString &relativeTo,
                      CollectReport *report, QString *error);

// The user-facing report: the folder, then missing and failed files one a line, or
// "No external resource files were found." when the project refers to none.
QString reportText(const CollectReport &report);

// Turns relative resource paths (as written by collectResources) into absolute ones below
// `baseFolder`, the folder of the project file that was read.
void resolveRelativePaths(ProjectDocument *doc, const QString &baseFolder);

// Copies a file, replacing the target; false with "Could not create folder:",
// "Could not replace file:" or "Could not copy:" and the path.
bool copyFileReplacing(const QString &source, const QString &target, QString *error);

} // namespace vg::resources
