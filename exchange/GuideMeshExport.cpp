#include "exchange/GuideMeshExport.h"

#include "exchange/ExportImageSource.h"
#include "exchange/ExportScene.h"
#include "exchange/ExportText.h"
#include "exchange/MayaExport.h"
#include "common/SettingsKeys.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace vg::exchange {

namespace {

QString melString(const QString &text)
{
    QString out = text;
    out.replace(QLatin1Char('\\'), QStringLiteral("\\\\")).replace(QLatin1Char('"'), QStringLiteral("\\\""));
    return out;
}

QString melScript(const GuideMeshNames &n, const QString &texturePath)
{
    QStringList l;
    l << QStringLiteral("// Vantreo Guide Maya surface shader helper.")
      << QStringLiteral("// Import the OBJ first, then run this MEL to show the guide texture without scene lighting.")
      << QStringLiteral("global proc %1()").arg(n.procedure) << QStringLiteral("{")
      << QStringLiteral("    string $texturePath = \"%1\";").arg(melString(QDir::fromNativeSeparators(texturePath)))
      << QStringLiteral("    string $objectName = \"%1\";").arg(n.object)
      << QStringLiteral("    string $shaderName = \"%1\";").arg(n.shader)
      << QStringLiteral("    string $sgName = \"%1\";").arg(n.shadingGroup)
      << QStringLiteral("    string $fileName = \"%1\";").arg(n.fileNode)
      << QStringLiteral("    if (!`objExists $shaderName`)")
      << QStringLiteral("        $shaderName = `shadingNode -asShader surfaceShader -name $shaderName`;")
      << QStringLiteral("    if (!`objExists $sgName`)")
      << QStringLiteral("        $sgName = `sets -renderable true -noSurfaceShader true -empty -name $sgName`;")
      << QStringLiteral("    if (!`objExists $fileName`)")
      << QStringLiteral("        $fileName = `shadingNode -asTexture file -name $fileName`;")
      << QStringLiteral("    setAttr -type \"string\" ($fileName + \".fileTextureName\") $texturePath;")
      << QStringLiteral("    if (`attributeQuery -node $fileName -exists \"colorSpace\"`)")
      << QStringLiteral("        setAttr -type \"string\" ($fileName + \".colorSpace\") \"sRGB\";")
      << QStringLiteral("    connectAttr -force ($fileName + \".outColor\") ($shaderName + \".outColor\");")
      << QStringLiteral("    connectAttr -force ($shaderName + \".outColor\") ($sgName + \".surfaceShader\");")
      << QStringLiteral("    string $targets[] = `ls -tr $objectName`;")
      << QStringLiteral("    if (size($targets) == 0)")
      << QStringLiteral("        $targets = `ls -tr (\"*:\" + $objectName)`;")
      << QStringLiteral("    if (size($targets) == 0)")
      << QStringLiteral("        $targets = `ls -sl -tr`;")
      << QStringLiteral("    if (size($targets) == 0) {")
      << QStringLiteral("        warning \"Select the imported Vantreo guide mesh and run this script again.\";")
      << QStringLiteral("        return;") << QStringLiteral("    }") << QStringLiteral("    select -r $targets;")
      << QStringLiteral("    sets -e -forceElement $sgName $targets;") << QStringLiteral("}")
      << QStringLiteral("%1();").arg(n.procedure);
    return l.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

} // namespace

GuideMeshNames guideMeshNames(const QString &guideName)
{
    const QString name = mayaIdentifier(guideName);
    GuideMeshNames n;
    if (name.isEmpty()) {
        n.object = QStringLiteral("VantreoGuide_Object");
        n.material = QStringLiteral("VantreoGuide_Material");
        n.procedure = QStringLiteral("VantreoApplySurfaceShader");
        n.shader = QStringLiteral("VantreoGuide_SurfaceShader");
        n.shadingGroup = QStringLiteral("VantreoGuide_SurfaceShaderSG");
        n.fileNode = QStringLiteral("VantreoGuide_Texture");
    } else {
        n.object = QStringLiteral("VantreoGuide_") + name;
        n.material = QStringLiteral("VantreoGuideMaterial_") + name;
        n.procedure = QStringLiteral("VantreoApplySurfaceShader_") + name;
        n.shader = n.object + QStringLiteral("_SurfaceShader");
        n.shadingGroup = n.object + QStringLiteral("_SurfaceShaderSG");
        n.fileNode = n.object + QStringLiteral("_Texture");
    }
    return n;
}

bool writeGuideMesh(const GuideSettings &guide, const QImage &picture, const QString &guideName, const QString &basePath,
                    QStringList *written, QString *error)
{
    auto fail = [&](const QString &message) {
        if (error)
            *error = message;
        return false;
    };
    QString base = basePath;
    if (base.endsWith(QStringLiteral(".obj"), Qt::CaseInsensitive))
        base.chop(4);
    const QFileInfo info(base);
    const QString folder = info.absolutePath();
    const QString stem = info.fileName();
    const GuideMeshNames names = guideMeshNames(guideName);
    const QString objPath = base + QStringLiteral(".obj");
    const QString mtlPath = base + QStringLiteral(".mtl");
    const QString melPath = base + QStringLiteral("_maya_surface.mel");
    const QString textureName = stem + QLatin1Char('_') + names.object + QStringLiteral(".png");
    const QString texturePath = QDir(folder).filePath(textureName);
    if (!ensureFolder(folder))
        return fail(pathMessage(QCoreApplication::translate("GuideMeshExport", "Could not save OBJ file:"), objPath));

    // Real size in metres; a rotated guide is drawn rotated, so its sides swap.
    double w = std::max(1, guide.realWidth) / 1000.0;
    double h = std::max(1, guide.realHeight) / 1000.0;
    if (guide.rotate)
        std::swap(w, h);
    const int cols = std::clamp(guide.rotate ? guide.rows : guide.columns, 1, 512);
    const int rows = std::clamp(guide.rotate ? guide.columns : guide.rows, 1, 512);

    ExportTextFile obj;
    if (!obj.open(objPath))
        return fail(pathMessage(QCoreApplication::translate("GuideMeshExport", "Could not save OBJ file:"), objPath));
    obj.line(QStringLiteral("mtllib ") + stem + QStringLiteral(".mtl"));
    obj.line(QStringLiteral("o ") + names.object);
    obj.line(QStringLiteral("g ") + names.object);
    for (int j = 0; j <= rows; ++j) {
        for (int i = 0; i <= cols; ++i) {
            obj.write(std::string_view("v "));
            obj.fixed(-w / 2.0 + w * i / cols);
            obj.put(' ');
            obj.fixed(h / 2.0 - h * j / rows);
            obj.line(std::string_view(" 0.000000"));
        }
    }
    for (int j = 0; j <= rows; ++j) {
        for (int i = 0; i <= cols; ++i) {
            obj.write(std::string_view("vt "));
            obj.fixed(double(i) / cols);
            obj.put(' ');
            obj.fixed(1.0 - double(j) / rows);
            obj.put('\n');
        }
    }
    obj.line(std::string_view("vn 0.000000 0.000000 1.000000"));
    obj.line(QStringLiteral("usemtl ") + names.material);
    auto at = [&](int i, int j) { return static_cast<long long>(j) * (cols + 1) + i + 1; };
    auto corner = [&](long long index, bool last) {
        obj.integer(index);
        obj.put('/');
        obj.integer(index);
        obj.write(last ? std::string_view("/1\n") : std::string_view("/1 "));
    };
    for (int j = 0; j < rows; ++j) {
        for (int i = 0; i < cols; ++i) {
            // Counter-clockwise seen from +Z: rows run downwards.
            obj.write(std::string_view("f "));
            corner(at(i, j), false);
            corner(at(i, j + 1), false);
            corner(at(i + 1, j + 1), true);
            obj.write(std::string_view("f "));
            corner(at(i, j), false);
            corner(at(i + 1, j + 1), false);
            corner(at(i + 1, j), true);
        }
    }
    if (!obj.commit())
        return fail(pathMessage(QCoreApplication::translate("GuideMeshExport", "Could not save OBJ file:"), objPath));
    if (written)
        written->append(objPath);

    ExportTextFile mtl;
    if (!mtl.open(mtlPath))
        return fail(pathMessage(QCoreApplication::translate("GuideMeshExport", "Could not save MTL file:"), mtlPath));
    mtl.line(QStringLiteral("newmtl ") + names.material);
    for (const char *l : {"illum 0", "Ka 1.00 1.00 1.00", "Kd 1.00 1.00 1.00", "Ks 0.00 0.00 0.00", "Ke 1.00 1.00 1.00",
                          "Ns 0.00", "d 1.00", "Tf 1.00 1.00 1.00", "Ni 1.00"})
        mtl.line(std::string_view(l));
    mtl.line(QStringLiteral("map_Kd ") + textureName);
    mtl.line(QStringLiteral("map_Ke ") + textureName);
    if (!mtl.commit())
        return fail(pathMessage(QCoreApplication::translate("GuideMeshExport", "Could not save MTL file:"), mtlPath));
    if (written)
        written->append(mtlPath);

    ExportTextFile mel;
    if (!mel.open(melPath))
        return fail(pathMessage(QCoreApplication::translate("GuideMeshExport", "Could not save MEL file:"), melPath));
    mel.write(melScript(names, texturePath));
    if (!mel.commit())
        return fail(pathMessage(QCoreApplication::translate("GuideMeshExport", "Could not save MEL file:"), melPath));
    if (written)
        written->append(melPath);

    if (!writeTexturePng(picture, texturePath, error))
        return false;
    if (written)
        written->append(texturePath);
    return true;
}

ExporterEntry guideMeshExporterEntry()
{
    return {QStringLiteral("guide-mesh"),
            QStringLiteral("obj"),
            QT_TRANSLATE_NOOP("Exporters", "Wavefront OBJ"),
            QT_TRANSLATE_NOOP("Exporters", "Export Guide Mesh (OBJ + MEL)..."),
            ExportSubject::Guide,
            QStringLiteral("vantreo_guide"),
            Settings::guideMeshExportDirectory.key(),
            [](const ExportRequest &request, const QString &path, QStringList *written, QString *error) {
                if (request.guideIndex < 0 || request.guideIndex >= request.guides.size()) {
                    if (error)
                        *error = QCoreApplication::translate("GuideMeshExport", "The project has no such guide.");
                    return false;
                }
                ExportImageSource fallback(request.guides);
                ExportImageSource &images = request.images ? *request.images : fallback;
                return writeGuideMesh(request.guides.at(request.guideIndex), images.guideImage(request.guideIndex),
                                      request.guideName, path, written, error);
            }};
}

} // namespace vg::exchange
