// Exporting a scene of one million triangles to OBJ and to FBX, beside Assimp's exporters
// writing the same mesh (read back from our OBJ once, outside the timing) in the same run.
// The scene is two planes of 512 x 512 cells each: 2 x 2 x 512 x 512 = 1 048 576 triangles.
#include "exchange/ExportImageSource.h"
#include "exchange/FbxExport.h"
#include "exchange/ObjExport.h"
#include "scene/GuideObject.h"

#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <benchmark/benchmark.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

QVector<GuideObject> millionTriangles()
{
    QVector<GuideObject> scene;
    for (int i = 0; i < 2; ++i) {
        GuideObject o;
        o.guide_index = KindPlane;
        o.name = QStringLiteral("Wall %1").arg(i);
        o.scale_x = 5.0f;
        o.scale_y = 2.5f;
        o.plane_u_lines = 512;
        o.plane_v_lines = 512;
        o.translate_z = -3.0f * i;
        o.rotate_y = 30.0f * i;
        scene.append(o);
    }
    return scene;
}

// VG_BENCH_KEEP_FILES=1 keeps the written files, to time `assimp export` on the same mesh.
QTemporaryDir &folder()
{
    static QTemporaryDir dir = [] {
        QTemporaryDir d(QDir::temp().filePath(QStringLiteral("vg-scene-export-XXXXXX")));
        d.setAutoRemove(qEnvironmentVariableIsEmpty("VG_BENCH_KEEP_FILES"));
        return d;
    }();
    return dir;
}

void reportFile(benchmark::State &state, const QString &path)
{
    state.counters["MB"] = double(QFileInfo(path).size()) / 1e6;
    state.counters["triangles"] = 1048576;
}

void BM_ExportObj(benchmark::State &state)
{
    const QVector<GuideObject> scene = millionTriangles();
    vg::exchange::ExportImageSource images;
    const QString path = folder().filePath(QStringLiteral("vantreo.obj"));
    for (auto _ : state) {
        QString error;
        if (!vg::exchange::writeSceneObj(scene, {}, {}, images, path, nullptr, &error))
            state.SkipWithError(error.toUtf8().constData());
    }
    reportFile(state, path);
}

void BM_ExportFbx(benchmark::State &state)
{
    const QVector<GuideObject> scene = millionTriangles();
    vg::exchange::ExportImageSource images;
    const QString path = folder().filePath(QStringLiteral("vantreo.fbx"));
    for (auto _ : state) {
        QString error;
        if (!vg::exchange::writeSceneFbx(scene, images, path, QDateTime::currentDateTime(), nullptr, &error))
            state.SkipWithError(error.toUtf8().constData());
    }
    reportFile(state, path);
}

// The same mesh as Assimp holds it after reading our OBJ.
const aiScene *assimpScene()
{
    static Assimp::Importer importer;
    static const aiScene *scene = [] {
        const QString path = folder().filePath(QStringLiteral("source.obj"));
        vg::exchange::ExportImageSource images;
        QString error;
        vg::exchange::writeSceneObj(millionTriangles(), {}, {}, images, path, nullptr, &error);
        return importer.ReadFile(path.toStdString(), 0);
    }();
    return scene;
}

void assimpExport(benchmark::State &state, const char *format, const char *file)
{
    const aiScene *scene = assimpScene();
    if (!scene) {
        state.SkipWithError("Assimp could not read the source mesh");
        return;
    }
    Assimp::Exporter exporter;
    const std::string path = folder().filePath(QString::fromLatin1(file)).toStdString();
    for (auto _ : state) {
        if (exporter.Export(scene, format, path) != aiReturn_SUCCESS)
            state.SkipWithError(exporter.GetErrorString());
    }
    reportFile(state, QString::fromStdString(path));
}

void BM_AssimpExportObj(benchmark::State &state) { assimpExport(state, "obj", "assimp.obj"); }
void BM_AssimpExportFbxAscii(benchmark::State &state) { assimpExport(state, "fbxa", "assimp.fbx"); }

} // namespace

BENCHMARK(BM_ExportObj)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ExportFbx)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_AssimpExportObj)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_AssimpExportFbxAscii)->Unit(benchmark::kMillisecond)->Iterations(3);

BENCHMARK_MAIN();
