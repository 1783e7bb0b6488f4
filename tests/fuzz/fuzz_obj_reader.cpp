// Any bytes as an OBJ file: the reader must return, never crash or hang, and a mesh it
// returns must index only its own vertices, all finite, with unit normals.
#include "exchange/ObjReader.h"

#include <QtGlobal>

#include <cmath>
#include <cstddef>
#include <cstdint>

// The skipped-face log lines would drown the fuzzer's own output and slow it down.
extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    vg::exchange::ObjMesh obj;
    QString error;
    // A folder that does not exist: material libraries named by the input are not found.
    const bool ok = vg::exchange::readObjData(input, QStringLiteral("/nonexistent-fuzz-folder"), &obj, &error);
    if (ok == !error.isEmpty())
        __builtin_trap();
    if (!ok)
        return 0;
    const SceneMesh &mesh = obj.mesh;
    if (mesh.indices.empty() || mesh.indices.size() % 3 != 0)
        __builtin_trap();
    for (std::uint32_t index : mesh.indices) {
        if (index >= mesh.vertices.size())
            __builtin_trap();
    }
    for (const SceneVertex &v : mesh.vertices) {
        for (float c : {v.px, v.py, v.pz, v.u, v.v}) {
            if (!std::isfinite(c))
                __builtin_trap();
        }
        const float len = std::sqrt(v.nx * v.nx + v.ny * v.ny + v.nz * v.nz);
        if (!(std::abs(len - 1.0f) < 1e-3f))
            __builtin_trap();
    }
    return 0;
}
