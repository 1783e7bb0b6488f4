// Saving and loading a large project in both forms: the .vgs container and bare JSON.
// 100 guides with 64 x 40 colour lists, 3 views of 1000 objects, 20 canvas tabs of 50.
// The load is measured beside Python's json.load of the same text (time, and peak memory
// growth of a fresh process), and beside the QJsonDocument reader it replaced.
#include "common/SettingsContainer.h"
#include "project/ProjectFile.h"
#include "tests/project/DocumentProjectLoader.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QSaveFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstring>

namespace {

ProjectDocument largeProject()
{
    ProjectDocument doc;
    for (int g = 0; g < 100; ++g) {
        GuideSettings guide;
        guide.columns = 64;
        guide.rows = 40;
        guide.autoColumns = false;
        guide.explain = QStringLiteral("Guide %1").arg(g);
        guide.colors.reserve(64 * 40);
        for (int i = 0; i < 64 * 40; ++i)
            guide.colors.append(QColor(QRgb((0x9e3779b9u * unsigned(i + 1) + unsigned(g) * 7919u) & 0xffffffu)));
        doc.guides.append(guide);
    }
    for (int v = 0; v < 3; ++v) {
        Guide3DViewSettings view = Guide3DViewSettings::created();
        view.title = QStringLiteral("View %1").arg(v);
        for (int i = 0; i < 1000; ++i) {
            GuideObject object;
            object.guide_index = i % 11;
            object.name = QStringLiteral("Object %1").arg(i);
            object.translate_x = 0.013f * float(i);
            object.translate_z = -0.007f * float(i);
            object.rotate_y = float(i % 360);
            object.scale_x = 0.5f + 0.001f * float(i);
            if (object.guide_index == KindProjector) {
                object.lens_shift_y = 50.0f;
                object.projector_calibration.image_width = 1920;
                object.projector_calibration.image_height = 1200;
                for (int m = 0; m < 8; ++m) {
                    GuideProjectorCalibrationMatch match;
                    match.target_index = m;
                    match.world_x = 0.1 * m;
                    match.image_x = 100.0 * m;
                    object.projector_calibration.matches.append(match);
                }
            }
            view.objects.append(object);
        }
        doc.views.append(view);
    }
    doc.activeView = doc.views.first();
    for (int c = 0; c < 20; ++c) {
        CanvasTabSettings tab;
        tab.title = QStringLiteral("Canvas %1").arg(c);
        for (int i = 0; i < 50; ++i) {
            CanvasObjectSettings object;
            object.object_type = i % 3 == 0 ? QStringLiteral("comment") : i % 3 == 1 ? QStringLiteral("text_box") : QString();
            object.guide_index = i % 100;
            object.name = QStringLiteral("Item %1").arg(i);
            object.translate_x = 0.1 * i;
            tab.objects.append(object);
        }
        doc.canvasTabs.append(tab);
    }
    for (int g = 0; g < 100; ++g)
        doc.tabs.append({QStringLiteral("guide"), g});
    for (int c = 0; c < 20; ++c)
        doc.tabs.append({QStringLiteral("canvas"), c});
    doc.currentTab = 0;
    return doc;
}

const ProjectDocument &project()
{
    static const ProjectDocument doc = largeProject();
    return doc;
}

QTemporaryDir &scratch()
{
    static QTemporaryDir dir;
    return dir;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

void BM_ProjectToJson(benchmark::State &state)
{
    qint64 size = 0;
    for (auto _ : state) {
        const QByteArray json = projectDocumentToJson(project());
        size = json.size();
        benchmark::DoNotOptimize(json.constData());
    }
    state.counters["json_bytes"] = double(size);
}
BENCHMARK(BM_ProjectToJson)->Unit(benchmark::kMillisecond);

void BM_SaveContainer(benchmark::State &state)
{
    const QString path = scratch().filePath(QStringLiteral("large.vgs"));
    for (auto _ : state) {
        QString error;
        if (!saveProjectDocument(path, project(), &error))
            state.SkipWithError(error.toUtf8().constData());
    }
    state.counters["file_bytes"] = double(QFile(path).size());
}
BENCHMARK(BM_SaveContainer)->Unit(benchmark::kMillisecond);

// The save as it was before the level was chosen: the same steps at level 9, as an anchor
// measured in the same run.
void BM_SaveContainerLevel9(benchmark::State &state)
{
    const QString path = scratch().filePath(QStringLiteral("large9.vgs"));
    for (auto _ : state) {
        if (!writeFile(path, vg::encodeSettingsContainer(projectDocumentToJson(project()), 9)))
            state.SkipWithError("write failed");
    }
    state.counters["file_bytes"] = double(QFile(path).size());
}
BENCHMARK(BM_SaveContainerLevel9)->Unit(benchmark::kMillisecond);

void BM_SaveBareJson(benchmark::State &state)
{
    const QString path = scratch().filePath(QStringLiteral("large.json"));
    for (auto _ : state) {
        if (!writeFile(path, projectDocumentToJson(project())))
            state.SkipWithError("write failed");
    }
    state.counters["file_bytes"] = double(QFile(path).size());
}
BENCHMARK(BM_SaveBareJson)->Unit(benchmark::kMillisecond);

void BM_LoadContainer(benchmark::State &state)
{
    const QString path = scratch().filePath(QStringLiteral("load.vgs"));
    QString error;
    saveProjectDocument(path, project(), &error);
    for (auto _ : state) {
        ProjectDocument doc;
        if (!loadProjectDocument(path, &doc, &error))
            state.SkipWithError(error.toUtf8().constData());
        benchmark::DoNotOptimize(doc.guides.size());
    }
}
BENCHMARK(BM_LoadContainer)->Unit(benchmark::kMillisecond);

void BM_LoadBareJson(benchmark::State &state)
{
    const QString path = scratch().filePath(QStringLiteral("load.json"));
    writeFile(path, projectDocumentToJson(project()));
    for (auto _ : state) {
        ProjectDocument doc;
        QString error;
        if (!loadProjectDocument(path, &doc, &error))
            state.SkipWithError(error.toUtf8().constData());
        benchmark::DoNotOptimize(doc.guides.size());
    }
}
BENCHMARK(BM_LoadBareJson)->Unit(benchmark::kMillisecond);

// The reader the streaming one replaced: the whole text as a QJsonDocument, then the
// records from its objects. The anchor of the load figures.
void BM_LoadBareJsonDocument(benchmark::State &state)
{
    const QString path = scratch().filePath(QStringLiteral("load.json"));
    writeFile(path, projectDocumentToJson(project()));
    for (auto _ : state) {
        ProjectDocument doc;
        QString error;
        QByteArray bytes;
        if (!readProjectBytes(path, &bytes, &error) || !loadProjectThroughDocument(bytes, &doc, &error))
            state.SkipWithError(error.toUtf8().constData());
        benchmark::DoNotOptimize(doc.guides.size());
    }
}
BENCHMARK(BM_LoadBareJsonDocument)->Unit(benchmark::kMillisecond);

// Printing the same project with QJsonDocument, then the container and the write: what the
// old save spent after it had built the document (so a lower bound of the old save).
void BM_SaveContainerDocumentPrint(benchmark::State &state)
{
    const QJsonObject root = QJsonDocument::fromJson(projectDocumentToJson(project())).object();
    const QString path = scratch().filePath(QStringLiteral("document.vgs"));
    for (auto _ : state) {
        if (!writeFile(path, vg::encodeSettingsContainer(QJsonDocument(root).toJson(QJsonDocument::Indented))))
            state.SkipWithError("write failed");
    }
    state.counters["file_bytes"] = double(QFile(path).size());
}
BENCHMARK(BM_SaveContainerDocumentPrint)->Unit(benchmark::kMillisecond);

const char *const kPythonLoad = R"(
import json, statistics, sys, time
def status(key):
    for line in open('/proc/self/status'):
        if line.startswith(key):
            return int(line.split()[1]) * 1024
path, runs = sys.argv[1], int(sys.argv[2])
before = status('VmRSS:')
times = []
for i in range(runs):
    start = time.perf_counter()
    with open(path, 'rb') as f:
        data = json.load(f)
    times.append(time.perf_counter() - start)
    if i == 0:
        peak = status('VmHWM:') - before
    del data
print(statistics.median(times), peak)
)";

// Python's json.load of the same file, in a fresh interpreter: the median time of a few
// loads as this benchmark's time, and the peak memory growth of the first load.
void BM_PythonJsonLoad(benchmark::State &state)
{
    const QString path = scratch().filePath(QStringLiteral("load.json"));
    writeFile(path, projectDocumentToJson(project()));
    double peak = 0;
    for (auto _ : state) {
        QProcess python;
        python.start(QStringLiteral("/usr/bin/python3"),
                     {QStringLiteral("-c"), QString::fromLatin1(kPythonLoad), path, QStringLiteral("5")});
        if (!python.waitForFinished(300000) || python.exitCode() != 0) {
            state.SkipWithError("python3 failed");
            return;
        }
        const QList<QByteArray> fields = python.readAllStandardOutput().trimmed().split(' ');
        if (fields.size() != 2) {
            state.SkipWithError("unexpected python3 output");
            return;
        }
        state.SetIterationTime(fields[0].toDouble());
        peak = fields[1].toDouble();
    }
    state.counters["peak_growth_bytes"] = peak;
    state.counters["peak_per_json_byte"] = peak / double(QFile(path).size());
}
BENCHMARK(BM_PythonJsonLoad)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

qint64 procStatus(const char *key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(qsizetype(std::strlen(key))).trimmed().split(' ').first().toLongLong() * 1024;
    }
    return -1;
}

// The child side of BM_LoadPeakMemory: one load in a fresh process, printing the growth
// of the peak resident size over the size before the load.
int measureLoadPeak(const QString &path, bool throughDocument)
{
    const qint64 before = procStatus("VmRSS:");
    ProjectDocument doc;
    QString error;
    QByteArray bytes;
    const bool ok = throughDocument
        ? readProjectBytes(path, &bytes, &error) && loadProjectThroughDocument(bytes, &doc, &error)
        : loadProjectDocument(path, &doc, &error);
    if (!ok)
        return 1;
    std::printf("%lld\n", static_cast<long long>(procStatus("VmHWM:") - before));
    return 0;
}

// Peak memory growth of one load in a fresh process: 0 the .json file, 1 the .vgs file,
// 2 the .json file through the QJsonDocument reader (the anchor).
void BM_LoadPeakMemory(benchmark::State &state)
{
    const QString json = scratch().filePath(QStringLiteral("load.json"));
    writeFile(json, projectDocumentToJson(project()));
    const QString container = scratch().filePath(QStringLiteral("load.vgs"));
    QString error;
    saveProjectDocument(container, project(), &error);
    const QString path = state.range(0) == 1 ? container : json;
    double peak = 0;
    for (auto _ : state) {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(),
                    {state.range(0) == 2 ? QStringLiteral("--load-peak-document") : QStringLiteral("--load-peak"), path});
        if (!child.waitForFinished(300000) || child.exitCode() != 0) {
            state.SkipWithError("load in a child process failed");
            return;
        }
        peak = child.readAllStandardOutput().trimmed().toDouble();
    }
    state.counters["peak_growth_bytes"] = peak;
    state.counters["peak_per_json_byte"] = peak / double(QFile(json).size());
}
BENCHMARK(BM_LoadPeakMemory)->DenseRange(0, 2)->Iterations(1)->Unit(benchmark::kMillisecond);

void BM_ContainerEncode(benchmark::State &state)
{
    const QByteArray json = projectDocumentToJson(project());
    for (auto _ : state)
        benchmark::DoNotOptimize(vg::encodeSettingsContainer(json).size());
    state.SetBytesProcessed(state.iterations() * json.size());
}
BENCHMARK(BM_ContainerEncode)->Unit(benchmark::kMillisecond);

// Every level on the same text, to choose the saving level: time and file size.
void BM_ContainerEncodeLevel(benchmark::State &state)
{
    static const QByteArray json = projectDocumentToJson(project());
    qint64 size = 0;
    for (auto _ : state) {
        const QByteArray container = vg::encodeSettingsContainer(json, int(state.range(0)));
        size = container.size();
        benchmark::DoNotOptimize(container.constData());
    }
    state.counters["file_bytes"] = double(size);
}
BENCHMARK(BM_ContainerEncodeLevel)->DenseRange(1, 12)->Unit(benchmark::kMillisecond);

void BM_ContainerDecode(benchmark::State &state)
{
    const QByteArray container = vg::encodeSettingsContainer(projectDocumentToJson(project()));
    for (auto _ : state) {
        QByteArray json;
        vg::decodeSettingsContainer(container, &json, nullptr);
        benchmark::DoNotOptimize(json.size());
    }
}
BENCHMARK(BM_ContainerDecode)->Unit(benchmark::kMillisecond);

// A length prefix claiming 4 GiB in front of a tiny stream: refused without allocating.
void BM_ContainerForgedLength(benchmark::State &state)
{
    QByteArray forged = vg::encodeSettingsContainer("{\"guides\": [{}]}");
    forged[16] = forged[17] = forged[18] = forged[19] = char(0xff);
    for (auto _ : state) {
        QString error;
        benchmark::DoNotOptimize(vg::decodeSettingsContainer(forged, nullptr, &error));
    }
}
BENCHMARK(BM_ContainerForgedLength)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc == 3 && (std::strcmp(argv[1], "--load-peak") == 0 || std::strcmp(argv[1], "--load-peak-document") == 0))
        return measureLoadPeak(QString::fromLocal8Bit(argv[2]), std::strcmp(argv[1], "--load-peak-document") == 0);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
