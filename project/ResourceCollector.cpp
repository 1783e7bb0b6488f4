#include "project/ResourceCollector.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <functional>

namespace vg::resources {
namespace {

// Calls visit(category, path) for every resource path field; the visitor may rewrite it.
void forEachPath(ProjectDocument *doc, const std::function<void(const QString &, QString &)> &visit)
{
    const QString logo = QCoreApplication::translate("ResourceCollector", "Guide logo");
    const QString layer = QCoreApplication::translate("ResourceCollector", "Guide image object");
    const QString canvas = QCoreApplication::translate("ResourceCollector", "Canvas image object");
    const QString texture = QCoreApplication::translate("ResourceCollector", "Object texture");
    const QString projection = QCoreApplication::translate("ResourceCollector", "Projection image");
    const QString mesh = QCoreApplication::translate("ResourceCollector", "Imported mesh");

    for (GuideSettings &guide : doc->guides) {
        visit(logo, guide.logoPath);
        for (GuideLayerObject &object : guide.imageObjects) {
            if (object.type != QLatin1String("mask"))
                visit(layer, object.filePath);
        }
    }
    for (CanvasTabSettings &tab : doc->canvasTabs) {
        for (CanvasObjectSettings &object : tab.objects) {
            if (object.isPicture())
                visit(canvas, object.image_file_path);
        }
    }
    auto visitObject = [&](GuideObject &object) {
        visit(texture, object.texture_file_path);
        visit(projection, object.projector_image_file_path);
        // OBJ and DXF objects keep their source file in obj_path and are re-read from it.
        if (object.guide_index == KindObjMesh || object.guide_index == KindDxfMesh)
            visit(mesh, object.obj_path);
    };
    auto visitView = [&](Guide3DViewSettings &view) {
        for (GuideObject &object : view.objects)
            visitObject(object);
        for (GuideCameraView &camera : view.camera_views) {
            for (GuideObject &object : camera.projector_objects)
                visitObject(object);
        }
    };
    visitView(doc->activeView);
    for (Guide3DViewSettings &view : doc->views)
        visitView(view);
}

QString freeName(const QDir &folder, const QString &fileName, const QSet<QString> &taken)
{
    if (!taken.contains(fileName.toLower()) && !folder.exists(fileName))
        return fileName;
    const QFileInfo info(fileName);
    const QString base = info.completeBaseName();
    const QString suffix = info.suffix();
    for (int counter = 1;; ++counter) {
        const QString candidate = suffix.isEmpty() ? QStringLiteral("%1_%2").arg(base).arg(counter)
                                                   : QStringLiteral("%1_%2.%3").arg(base).arg(counter).arg(suffix);
        if (!taken.contains(candidate.toLower()) && !folder.exists(candidate))
            return candidate;
    }
}

} // namespace

QList<ResourceReference> collectReferences(const ProjectDocument &doc)
{
    QList<ResourceReference> references;
    ProjectDocument copy = doc;
    forEachPath(&copy, [&](const QString &category, QString &path) {
        if (!path.trimmed().isEmpty())
            references.append({category, path});
    });
    return references;
}

bool copyFileReplacing(const QString &source, const QString &target, QString *error)
{
    const QFileInfo targetInfo(target);
    if (!QDir().mkpath(targetInfo.absolutePath())) {
        if (error)
            *error = QCoreApplication::translate("ResourceCollector", "Could not create folder:") + QLatin1Char('\n') + QDir::toNativeSeparators(targetInfo.absolutePath());
        return false;
    }
    if (targetInfo.exists() && !QFile::remove(target)) {
        if (error)
            *error = QCoreApplication::translate("ResourceCollector", "Could not replace file:") + QLatin1Char('\n') + QDir::toNativeSeparators(target);
        return false;
    }
    if (!QFile::copy(source, target)) {
        if (error)
            *error = QCoreApplication::translate("ResourceCollector", "Could not copy:") + QLatin1Char('\n') + QDir::toNativeSeparators(source);
        return false;
    }
    return true;
}

bool collectResources(ProjectDocument *doc, const QString &folder, const QString &relativeTo,
                      CollectReport *report, QString *error)
{
    CollectReport local;
    CollectReport &out = report ? *report : local;
    out = CollectReport();
    if (folder.trimmed().isEmpty()) {
        if (error)
            *error = QCoreApplication::translate("ResourceCollector", "Resource folder is empty.");
        return false;
    }
    const QString absoluteFolder = QFileInfo(folder).absoluteFilePath();
    out.folder = absoluteFolder;
    if (!QDir().mkpath(absoluteFolder)) {
        if (error)
            *error = QCoreApplication::translate("ResourceCollector", "Could not create resource folder:") + QLatin1Char('\n') + QDir::toNativeSeparators(absoluteFolder);
        return false;
    }
    const QDir target(absoluteFolder);
    const QDir base(relativeTo);

    // One copy per source file, however often the project refers to it.
    QHash<QString, QString> copies; // canonical source -> copy path
    QSet<QString> takenNames;
    QSet<QString> reportedMissing;
    QSet<QString> reportedFailed;

    forEachPath(doc, [&](const QString &, QString &path) {
        if (path.trimmed().isEmpty())
            return;
        ++out.referenceCount;
        const QFileInfo source(path);
        if (!source.isFile()) {
            if (!reportedMissing.contains(path)) {
                reportedMissing.insert(path);
                out.missing.append(QDir::toNativeSeparators(path));
            }
            return;
        }
        const QString key = source.canonicalFilePath();
        QString copy = copies.value(key);
        if (copy.isEmpty()) {
            if (QFileInfo(key).absolutePath() == QFileInfo(absoluteFolder).canonicalFilePath()) {
                copy = key; // already collected there
            } else {
                const QString name = freeName(target, source.fileName(), takenNames);
                QString copyError;
                if (!copyFileReplacing(key, target.filePath(name), &copyError)) {
                    if (!reportedFailed.contains(key)) {
                        reportedFailed.insert(key);
                        out.failed.append(QDir::toNativeSeparators(path));
                    }
                    return;
                }
                copy = target.filePath(name);
                out.copied.append(copy);
            }
            takenNames.insert(QFileInfo(copy).fileName().toLower());
            copies.insert(key, copy);
        }
        path = relativeTo.isEmpty() ? copy : base.relativeFilePath(copy);
    });
    return true;
}

QString reportText(const CollectReport &report)
{
    if (report.referenceCount == 0)
        return QCoreApplication::translate("ResourceCollector", "No external resource files were found.");
    QStringList lines;
    lines << QCoreApplication::translate("ResourceCollector", "Resource folder:") << QDir::toNativeSeparators(report.folder);
    if (!report.missing.isEmpty()) {
        lines << QString() << QCoreApplication::translate("ResourceCollector", "Missing files:");
        lines << report.missing;
    }
    if (!report.failed.isEmpty()) {
        lines << QString() << QCoreApplication::translate("ResourceCollector", "Failed files:");
        lines << report.failed;
    }
    return lines.join(QLatin1Char('\n'));
}

void resolveRelativePaths(ProjectDocument *doc, const QString &baseFolder)
{
    const QDir base(baseFolder);
    forEachPath(doc, [&](const QString &, QString &path) {
        if (path.trimmed().isEmpty() || QDir::isAbsolutePath(path) || path.startsWith(QLatin1Char(':')))
            return;
        const QString resolved = QDir::cleanPath(base.absoluteFilePath(path));
        if (QFileInfo::exists(resolved))
            path = resolved;
    });
}

} // namespace vg::resources
