#include "exchange/MayaExport.h"

#include "exchange/ExportImageSource.h"
#include "exchange/ExportScene.h"
#include "exchange/ExportText.h"
#include "exchange/FilmBack.h"
#include "exchange/ObjExport.h"
#include "common/SettingsKeys.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace vg::exchange {

namespace {

constexpr double kCentimetresPerMetre = 100.0;

void writeDouble3(ExportTextFile &f, const char *attribute, const Eigen::Vector3d &v)
{
    f.write(QStringLiteral("\tsetAttr \"%1\" -type \"double3\" ").arg(QLatin1String(attribute)));
    f.number(v.x());
    f.put(' ');
    f.number(v.y());
    f.put(' ');
    f.number(v.z());
    f.line(std::string_view(" ;"));
}

void writeAttribute(ExportTextFile &f, const char *attribute, double value)
{
    f.write(QStringLiteral("\tsetAttr \"%1\" ").arg(QLatin1String(attribute)));
    f.number(value);
    f.line(std::string_view(";"));
}

void writePoint(ExportTextFile &f, const Eigen::Vector3d &metres)
{
    const Eigen::Vector3d cm = metres * kCentimetresPerMetre;
    f.write(std::string_view(" -p "));
    f.fixed(cm.x());
    f.put(' ');
    f.fixed(cm.y());
    f.put(' ');
    f.fixed(cm.z());
}

void writeImportBlock(ExportTextFile &f, const QString &objPath)
{
    QString path = QDir::fromNativeSeparators(objPath);
    path.replace(QLatin1Char('\\'), QStringLiteral("\\\\")).replace(QLatin1Char('"'), QStringLiteral("\\\""));
    f.line(std::string_view("string $vantreoGuideSceneNodes[] = `file -import -returnNewNodes -type \"OBJ\" "
                            "-ignoreVersion -mergeNamespacesOnClash false -namespace \"VantreoGuideScene\" "
                            "-options \"mo=1\""));
    f.line(QStringLiteral("    \"%1\"`;").arg(path));
    f.line(std::string_view("string $vantreoGuideSceneRoots[] = {};"));
    f.line(std::string_view("for ($vantreoGuideNode in $vantreoGuideSceneNodes) {"));
    f.line(std::string_view("    if (`nodeType $vantreoGuideNode` != \"transform\") continue;"));
    f.line(std::string_view("    string $vantreoGuideParents[] = `listRelatives -parent -fullPath $vantreoGuideNode`;"));
    f.line(std::string_view("    if (size($vantreoGuideParents) > 0 && stringArrayContains($vantreoGuideParents[0], "
                            "`ls -long $vantreoGuideSceneNodes`)) continue;"));
    f.line(std::string_view("    $vantreoGuideSceneRoots[size($vantreoGuideSceneRoots)] = $vantreoGuideNode;"));
    f.line(std::string_view("}"));
    f.line(std::string_view("if (size($vantreoGuideSceneRoots) > 0) {"));
    f.line(std::string_view("    string $vantreoGuideGroup = `createNode transform -name \"VantreoGuide_Scene_cm\"`;"));
    f.line(std::string_view("    setAttr ($vantreoGuideGroup + \".translate\") -type \"double3\" 0 0 0;"));
    f.line(std::string_view("    setAttr ($vantreoGuideGroup + \".rotatePivot\") -type \"double3\" 0 0 0;"));
    f.line(std::string_view("    setAttr ($vantreoGuideGroup + \".scalePivot\") -type \"double3\" 0 0 0;"));
    f.line(std::string_view("    for ($vantreoGuideRoot in $vantreoGuideSceneRoots)"));
    f.line(std::string_view("        parent -absolute $vantreoGuideRoot $vantreoGuideGroup;"));
    f.line(std::string_view("    setAttr ($vantreoGuideGroup + \".scale\") -type \"double3\" 100 100 100;"));
    f.line(std::string_view("}"));
}

void writeCamera(ExportTextFile &f, const ExportLens &l, const QString &base)
{
    const FilmBack film = filmBackOf(l.lens);
    const QString transform = base + QStringLiteral("_Camera");
    f.line(QStringLiteral("createNode transform -n \"%1\";").arg(transform));
    writeDouble3(f, ".t", film.position * kCentimetresPerMetre);
    writeDouble3(f, ".r", film.rotationDegrees());
    f.line(QStringLiteral("createNode camera -n \"%1Shape\" -p \"%1\";").arg(transform));
    writeAttribute(f, ".hfa", film.apertureWidthInches());
    writeAttribute(f, ".vfa", film.apertureHeightInches());
    writeAttribute(f, ".fl", film.focalLengthMm);
    writeAttribute(f, ".hfo", film.offsetXInches());
    writeAttribute(f, ".vfo", film.offsetYInches());
    f.line(std::string_view("\tsetAttr \".ncp\" 1.000000;"));
    writeAttribute(f, ".fcp", film.farClip * kCentimetresPerMetre);
    f.line(std::string_view("\tsetAttr \".displayFilmGate\" yes;"));
    f.line(std::string_view("\tsetAttr \".displayResolution\" yes;"));

    // The frustum as the view draws it: four edges from the lens to the far corners of the
    // image (flips included) and the far rectangle.
    const auto corners = l.lens.farCorners();
    const Eigen::Vector3d lens = l.lens.pose().position;
    const QString group = base + QStringLiteral("_Frustum");
    f.line(QStringLiteral("createNode transform -n \"%1\";").arg(group));
    const char *lensEdges[4] = {"Lens_TopLeft", "Lens_TopRight", "Lens_BottomRight", "Lens_BottomLeft"};
    const char *farEdges[4] = {"Top", "Right", "Bottom", "Left"};
    auto curve = [&](const char *edge, const Eigen::Vector3d &a, const Eigen::Vector3d &b) {
        const QString name = QStringLiteral("%1_%2").arg(base, QLatin1String(edge));
        f.write(QStringLiteral("curve -d 1 -n \"%1\"").arg(name));
        writePoint(f, a);
        writePoint(f, b);
        f.line(std::string_view(" -k 0 -k 1;"));
        f.line(QStringLiteral("parent \"%1\" \"%2\";").arg(name, group));
    };
    for (int i = 0; i < 4; ++i)
        curve(lensEdges[i], lens, corners[i]);
    for (int i = 0; i < 4; ++i)
        curve(farEdges[i], corners[i], corners[(i + 1) % 4]);
}

} // namespace

QString mayaIdentifier(const QString &name)
{
    const QString id = asciiIdentifier(name);
    if (id.isEmpty())
        return id;
    return id.front().isDigit() ? QLatin1Char('_') + id : id;
}

bool writeMayaScene(const QVector<GuideObject> &objects, const QList<int> &lensIndices, ExportImageSource &images,
                    const QString &path, QStringList *written, QString *error)
{
    auto fail = [&](const QString &message) {
        if (error)
            *error = message;
        return false;
    };
    // The chosen lenses are exported even when hidden: the user picked them.
    const QVector<ExportLens> lenses = collectLenses(objects, lensIndices, true);
    if (lenses.isEmpty())
        return fail(QCoreApplication::translate("MayaExport", "Select a projector or camera object first."));

    const QFileInfo info(path);
    const QString folder = info.absolutePath();
    if (!ensureFolder(folder))
        return fail(pathMessage(QCoreApplication::translate("MayaExport", "Could not create export folder:"), folder));
    const QString objPath = QDir(folder).filePath(info.completeBaseName() + QStringLiteral("_scene.obj"));
    QStringList objFiles;
    QString objError;
    // The cameras and their curves stand for the lenses; the companion carries surfaces only.
    ObjSceneOptions objOptions;
    objOptions.includeFrustums = false;
    if (!writeSceneObj(objects, {}, objOptions, images, objPath, &objFiles, &objError))
        return fail(pathMessage(QCoreApplication::translate("MayaExport", "Could not export companion OBJ scene:"), objPath) + QLatin1Char('\n') + objError);

    ExportTextFile f;
    if (!f.open(path))
        return fail(pathMessage(QCoreApplication::translate("MayaExport", "Could not save projector scene file:"), path));
    f.line(std::string_view("//Maya ASCII projector scene exported by VantreoGuide"));
    f.line(std::string_view("//VantreoGuide world units are meters. Maya scene units are centimeters."));
    f.line(std::string_view("requires maya \"2024\";"));
    f.line(std::string_view("currentUnit -linear \"cm\" -angle \"degree\" -time \"film\";"));
    writeImportBlock(f, objPath);
    QSet<QString> used;
    for (const ExportLens &l : lenses) {
        QString base = mayaIdentifier(l.name);
        if (base.isEmpty() || l.identifier.isEmpty())
            base = l.camera ? QStringLiteral("Camera") : QStringLiteral("Projector");
        if (used.contains(base))
            base += QStringLiteral("_%1").arg(l.index);
        used.insert(base);
        writeCamera(f, l, base);
    }
    if (!f.commit())
        return fail(pathMessage(QCoreApplication::translate("MayaExport", "Could not save projector scene file:"), path));
    if (written) {
        written->append(path);
        written->append(objFiles);
    }
    return true;
}

ExporterEntry mayaExporterEntry()
{
    return {QStringLiteral("maya"),
            QStringLiteral("ma"),
            QT_TRANSLATE_NOOP("Exporters", "Maya ASCII"),
            QT_TRANSLATE_NOOP("Exporters", "Export Maya Projector Scene..."),
            ExportSubject::SceneView,
            QStringLiteral("projector_scene"),
            Settings::mayaExportDirectory.key(),
            [](const ExportRequest &request, const QString &path, QStringList *written, QString *error) {
                ExportImageSource fallback(request.guides);
                QList<int> lenses = request.selection;
                if (request.objectIndex >= 0)
                    lenses.prepend(request.objectIndex);
                return writeMayaScene(request.objects, lenses, request.images ? *request.images : fallback, path,
                                      written, error);
            }};
}

} // namespace vg::exchange
