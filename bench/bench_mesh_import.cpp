// Importing an OBJ of one million triangles, beside Assimp reading the same file in the
// same run. The file is a 708 x 707 grid of quads with texture coordinates and normals
// ("v/vt/vn"), as scanners and modelling tools write rooms.
#include "exchange/MeshImport.h"
#include "exchange/ObjReader.h"

#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>

#include <cmath>
#include <cstdio>

namespace {

constexpr int kColumns = 708;
constexpr int kRows = 707; // 2 x 708 x 707 = 1 001 112 triangles

const QString &objPath()
{
    static QTemporaryDir dir;
    static const QString path = [] {
        const QString file = dir.filePath(QStringLiteral("room-1m.obj"));
        std::FILE *out = std::fopen(file.toLocal8Bit().constData(), "wb");
        std::fprintf(out, "# %d x %d quads\n", kColumns, kRows);
        for (int r = 0; r <= kRows; ++r) {
            for (int c = 0; c <= kColumns; ++c) {
                const double x = 10.0 * c / kColumns, z = 10.0 * r / kRows;
                std::fprintf(out, "v %.6f %.6f %.6f\n", x, 0.2 * std::sin(x) * std::cos(z), z);
            }
        }
        for (int r = 0; r <= kRows; ++r)
            for (int c = 0; c <= kColumns; ++c)
                std::fprintf(out, "vt %.6f %.6f\n", double(c) / kColumns, double(r) / kRows);
        std::fprintf(out, "vn 0 1 0\n");
        const int stride = kColumns + 1;
        for (int r = 0; r < kRows; ++r) {
            for (int c = 0; c < kColumns; ++c) {
                const int a = r * stride + c + 1, b = a + 1, d = a + stride, e = d + 1;
                std::fprintf(out, "f %d/%d/1 %d/%d/1 %d/%d/1\nf %d/%d/1 %d/%d/1 %d/%d/1\n", a, a, d, d, e, e, a, a, e, e,
                             b, b);
            }
        }
        std::fclose(out);
        return file;
    }();
    return path;
}

void BM_ObjReader(benchmark::State &state)
{
    const QString path = objPath();
    for (auto _ : state) {
        vg::exchange::ObjMesh obj;
        QString error;
        if (!vg::exchange::readObjFile(path, &obj, &error))
            state.SkipWithError(error.toUtf8().constData());
        benchmark::DoNotOptimize(obj.mesh.indices.data());
        state.counters["triangles"] = double(obj.mesh.triangleCount());
    }
}

// The whole import as the window runs it: reading plus centring into a scene object.
void BM_ImportMeshFile(benchmark::State &state)
{
    const QString path = objPath();
    for (auto _ : state) {
        GuideObject object;
        QString error;
        if (!vg::exchange::importMeshFile(path, &object, &error))
            state.SkipWithError(error.toUtf8().constData());
        benchmark::DoNotOptimize(object.imported_mesh.get());
    }
}

// Assimp's reader with the post-processing that gives what ours returns: triangles with
// shared vertices (range 1), and with triangulation only (range 0).
void BM_AssimpReadFile(benchmark::State &state)
{
    const std::string path = objPath().toStdString();
    const unsigned flags = state.range(0) ? aiProcess_Triangulate | aiProcess_JoinIdenticalVertices : aiProcess_Triangulate;
    for (auto _ : state) {
        Assimp::Importer importer;
        const aiScene *scene = importer.ReadFile(path, flags);
        if (!scene || scene->mNumMeshes == 0)
            state.SkipWithError(importer.GetErrorString());
        else
            state.counters["triangles"] = double(scene->mMeshes[0]->mNumFaces);
        benchmark::DoNotOptimize(scene);
    }
}

} // namespace

BENCHMARK(BM_ObjReader)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_ImportMeshFile)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_AssimpReadFile)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK_MAIN();
