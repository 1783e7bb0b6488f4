#include "cli/CliCommand.h"

#include "project/ProjectFile.h"
#include "scene/LensModel.h"
#include "scene/MeshBuilders.h"
#include "scene/SceneRaycast.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

const CliCommand &lensCommand();

// "X,Y,Z" with three finite numbers.
bool parsePoint(const QString &text, Eigen::Vector3d *point)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 3)
        return false;
    for (int i = 0; i < 3; ++i) {
        bool ok = false;
        const double v = parts.at(i).trimmed().toDouble(&ok);
        if (!ok || !std::isfinite(v))
            return false;
        (*point)[i] = v;
    }
    return true;
}

bool readPointsFile(const QString &path, std::vector<Eigen::Vector3d> *points, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        *error = QStringLiteral("Could not read %1: %2").arg(path, file.errorString());
        return false;
    }
    int lineNumber = 0;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        ++lineNumber;
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        Eigen::Vector3d p;
        if (!parsePoint(line, &p)) {
            *error = QStringLiteral("%1 line %2: expected x,y,z, got \"%3\".").arg(path).arg(lineNumber).arg(line);
            return false;
        }
        points->push_back(p);
    }
    return true;
}

QJsonArray vectorJson(const Eigen::Vector3d &v)
{
    return QJsonArray{v.x(), v.y(), v.z()};
}

int runLens(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args, {QStringLiteral("--view"), QStringLiteral("--object"), QStringLiteral("--point"),
                          QStringLiteral("--points")},
                   {});
    const int viewIndex = parsed.intValue(QStringLiteral("--view"), -1);
    const int objectIndex = parsed.intValue(QStringLiteral("--object"), -1);
    if (!parsed.ok())
        return cliUsageError(ctx, lensCommand(), parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, lensCommand(), QStringLiteral("Give exactly one project file."));
    if (!parsed.has(QStringLiteral("--view")) || !parsed.has(QStringLiteral("--object")))
        return cliUsageError(ctx, lensCommand(), QStringLiteral("--view and --object are required."));
    const bool onePoint = parsed.has(QStringLiteral("--point"));
    const bool pointFile = parsed.has(QStringLiteral("--points"));
    if (onePoint == pointFile)
        return cliUsageError(ctx, lensCommand(), QStringLiteral("Give either --point X,Y,Z or --points <file.csv>."));

    std::vector<Eigen::Vector3d> points;
    if (onePoint) {
        Eigen::Vector3d p;
        const QString text = parsed.value(QStringLiteral("--point"));
        if (!parsePoint(text, &p)) {
            ctx.err << QStringLiteral("Malformed point \"%1\": expected X,Y,Z with three numbers.").arg(text)
                    << Qt::endl;
            return CliFailure;
        }
        points.push_back(p);
    } else {
        QString error;
        if (!readPointsFile(parsed.value(QStringLiteral("--points")), &points, &error)) {
            ctx.err << error << Qt::endl;
            return CliFailure;
        }
    }

    ProjectDocument project;
    if (!cliLoadProject(ctx, parsed.positionals().first(), &project))
        return CliFailure;
    const Guide3DViewSettings *view = cliProjectView(ctx, project, viewIndex);
    if (!view)
        return CliFailure;
    const QVector<GuideObject> &objects = view->objects;
    if (objectIndex < 0 || objectIndex >= objects.size()) {
        ctx.err << QStringLiteral("The view has %1 object(s); there is no object %2.").arg(objects.size()).arg(objectIndex)
                << Qt::endl;
        return CliFailure;
    }
    if (!objects.at(objectIndex).hasLens()) {
        ctx.err << QStringLiteral("Object %1 (\"%2\") is not a projector or camera.")
                       .arg(objectIndex)
                       .arg(objects.at(objectIndex).name)
                << Qt::endl;
        return CliFailure;
    }

    using namespace vg::scene;
    const LensModel lens = LensModel::forObject(objects, objectIndex);
    const int metric = std::clamp(objects.at(objectIndex).projector_pixel_footprint_metric, 0, 3);
    const std::vector<SceneMesh> meshes = buildSceneMeshes(objects);
    SceneRaycastOptions options;
    options.skipIndex = objectIndex;

    QJsonArray results;
    for (const Eigen::Vector3d &p : points) {
        const LensProjection proj = lens.project(p);
        QJsonObject entry;
        entry.insert(QStringLiteral("u"), proj.u);
        entry.insert(QStringLiteral("v"), proj.v);
        entry.insert(QStringLiteral("px"), proj.px);
        entry.insert(QStringLiteral("py"), proj.py);
        entry.insert(QStringLiteral("inside"), proj.inside);
        entry.insert(QStringLiteral("depth"), proj.depth);
        QJsonValue footprint = QJsonValue::Null;
        const Eigen::Vector3d direction = p - lens.pose().position;
        if (direction.norm() > 1e-12) {
            options.maxDistance = std::numeric_limits<double>::infinity();
            const SceneRayHit hit = raycastScene(objects, meshes, lens.pose().position, direction, options);
            if (hit.hit) {
                const PixelFootprint fp = lens.footprintAt(hit.point, hit.normal);
                if (fp.valid)
                    footprint = footprintMetricValue(fp.mmPerPixelU, fp.mmPerPixelV, metric);
            }
        }
        entry.insert(QStringLiteral("footprint_mm_per_px"), footprint);
        results.append(entry);
    }
    QJsonObject root;
    root.insert(QStringLiteral("lens_point"), vectorJson(lens.pose().position));
    root.insert(QStringLiteral("throw_distance"), lens.throwDistance());
    root.insert(QStringLiteral("points"), results);
    ctx.out << QJsonDocument(root).toJson(QJsonDocument::Indented);
    return CliOk;
}

const CliCommand &lensCommand()
{
    static const CliCommand command{
        QStringLiteral("lens"),
        QStringLiteral("lens <project> --view V --object I (--point X,Y,Z | --points <file.csv>)"),
        QStringLiteral("Projects world points through a projector or camera: pixel, depth and pixel footprint as JSON."),
        runLens};
    return command;
}

const CliRegistration registration(lensCommand());

} // namespace
