#include "exchange/ViewMeshExport.h"

#include "exchange/ExportImageSource.h"
#include "exchange/ExportScene.h"
#include "exchange/ExportText.h"
#include "exchange/ObjExport.h"
#include "common/SettingsKeys.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cmath>

namespace vg::exchange {

namespace {

using Vec3 = Eigen::Vector3d;

// A polygon corner in the lens frame with the source texture coordinate.
struct Corner {
    Vec3 q;
    double u = 0.0, v = 0.0;
};
using Polygon = std::vector<Corner>;

// An inward-facing plane through the lens point (the frame sides) or at a depth (near).
struct ClipPlane {
    Vec3 normal;
    double offset = 0.0;   // keeps points with normal·q + offset >= 0
    double distance(const Vec3 &q) const { return normal.dot(q) + offset; }
};

Polygon clip(const Polygon &in, const ClipPlane &plane)
{
    Polygon out;
    const size_t n = in.size();
    for (size_t i = 0; i < n; ++i) {
        const Corner &a = in[i];
        const Corner &b = in[(i + 1) % n];
        const double da = plane.distance(a.q), db = plane.distance(b.q);
        if (da >= 0.0)
            out.push_back(a);
        if ((da >= 0.0) != (db >= 0.0)) {
            const double t = da / (da - db);
            out.push_back({a.q + t * (b.q - a.q), a.u + t * (b.u - a.u), a.v + t * (b.v - a.v)});
        }
    }
    return out;
}

// The four sides of the frame grown by the margin, from the lens model's own far points:
// image corners (u, v) = (-mu, -mv) .. (1 + mu, 1 + mv).
std::array<ClipPlane, 4> framePlanes(const vg::scene::LensModel &lens, double marginU, double marginV)
{
    const double d = lens.throwDistance();
    const auto &k = lens.intrinsics();
    const Vec3 c[4] = {vg::scene::lensFarPoint(k, -marginU, -marginV, d), vg::scene::lensFarPoint(k, 1 + marginU, -marginV, d),
                       vg::scene::lensFarPoint(k, 1 + marginU, 1 + marginV, d),
                       vg::scene::lensFarPoint(k, -marginU, 1 + marginV, d)};
    const Vec3 centre = (c[0] + c[1] + c[2] + c[3]) / 4.0;
    std::array<ClipPlane, 4> planes;
    for (int i = 0; i < 4; ++i) {
        Vec3 n = c[i].cross(c[(i + 1) % 4]);
        if (n.dot(centre) < 0.0)
            n = -n;
        planes[i] = {n.normalized(), 0.0};
    }
    return planes;
}

// A projected polygon corner: frame pixel position (after flips), depth and texture.
struct ScreenCorner {
    double px = 0.0, py = 0.0, depth = 0.0;
    double u = 0.0, v = 0.0;
};

class DepthBuffer
{
public:
    DepthBuffer(double left, double top, double width, double height)
        : m_left(left), m_top(top)
    {
        const double longest = std::max(width, height);
        m_scale = std::min(1.0, 2048.0 / std::max(1.0, longest));
        m_w = std::max(1, int(std::ceil(width * m_scale)));
        m_h = std::max(1, int(std::ceil(height * m_scale)));
        m_inverseDepth.assign(size_t(m_w) * size_t(m_h), 0.0f);
    }

    // Calls f(x, y, inverse depth) for every buffer cell centre inside the triangle.
    template<typename F>
    void raster(const ScreenCorner &a, const ScreenCorner &b, const ScreenCorner &c, F f) const
    {
        const double ax = (a.px - m_left) * m_scale, ay = (a.py - m_top) * m_scale;
        const double bx = (b.px - m_left) * m_scale, by = (b.py - m_top) * m_scale;
        const double cx = (c.px - m_left) * m_scale, cy = (c.py - m_top) * m_scale;
        const double area = (bx - ax) * (cy - ay) - (by - ay) * (cx - ax);
        if (!(std::abs(area) > 1e-12))
            return;
        const int x0 = std::max(0, int(std::floor(std::min({ax, bx, cx}))));
        const int x1 = std::min(m_w - 1, int(std::ceil(std::max({ax, bx, cx}))));
        const int y0 = std::max(0, int(std::floor(std::min({ay, by, cy}))));
        const int y1 = std::min(m_h - 1, int(std::ceil(std::max({ay, by, cy}))));
        const double ia = 1.0 / a.depth, ib = 1.0 / b.depth, ic = 1.0 / c.depth;
        for (int y = y0; y <= y1; ++y) {
            const double sy = y + 0.5;
            for (int x = x0; x <= x1; ++x) {
                const double sx = x + 0.5;
                const double w0 = ((bx - sx) * (cy - sy) - (by - sy) * (cx - sx)) / area;
                const double w1 = ((cx - sx) * (ay - sy) - (cy - sy) * (ax - sx)) / area;
                const double w2 = 1.0 - w0 - w1;
                if (w0 < 0.0 || w1 < 0.0 || w2 < 0.0)
                    continue;
                f(x, y, w0 * ia + w1 * ib + w2 * ic);
            }
        }
    }

    void draw(const ScreenCorner &a, const ScreenCorner &b, const ScreenCorner &c)
    {
        raster(a, b, c, [&](int x, int y, double inv) {
            float &cell = m_inverseDepth[size_t(y) * size_t(m_w) + size_t(x)];
            cell = std::max(cell, float(inv));
        });
    }

    // Whether any part of the triangle is the nearest surface there; a triangle that covers
    // no cell centre is tested at the cell of its centroid.
    bool visible(const ScreenCorner &a, const ScreenCorner &b, const ScreenCorner &c) const
    {
        bool any = false, covered = false;
        raster(a, b, c, [&](int x, int y, double inv) {
            covered = true;
            any = any || passes(x, y, inv);
        });
        if (covered)
            return any;
        const double px = (a.px + b.px + c.px) / 3.0, py = (a.py + b.py + c.py) / 3.0;
        const int x = std::clamp(int((px - m_left) * m_scale), 0, m_w - 1);
        const int y = std::clamp(int((py - m_top) * m_scale), 0, m_h - 1);
        return passes(x, y, 3.0 / (a.depth + b.depth + c.depth));
    }

private:
    bool passes(int x, int y, double inv) const
    {
        const double nearest = m_inverseDepth[size_t(y) * size_t(m_w) + size_t(x)];
        // Depths within 0.2 % (or 0.1 mm) count as the same surface.
        return 1.0 / inv <= (nearest > 0.0 ? 1.0 / nearest : 1e30) * 1.002 + 0.0001;
    }

    double m_left, m_top, m_scale = 1.0;
    int m_w = 1, m_h = 1;
    std::vector<float> m_inverseDepth;
};

struct SourceFaces {
    const ExportSurface *surface = nullptr;
    std::vector<std::vector<ScreenCorner>> polygons;   // the written shape of each face
    std::vector<std::vector<ScreenCorner>> tests;      // the part inside the frame, for the depth test
};

QString onOff(bool on)
{
    return on ? QStringLiteral("On") : QStringLiteral("Off");
}

} // namespace

QString ViewMeshOptions::settingsKey(const char *name)
{
    return QStringLiteral("export/viewMesh/") + QLatin1String(name);
}

ViewMeshOptions ViewMeshOptions::fromVariantMap(const QVariantMap &options)
{
    ViewMeshOptions o;
    o.flattenTo2D = optionBool(options, QStringLiteral("flattenTo2D"), o.flattenTo2D);
    o.cropToProjector = optionBool(options, QStringLiteral("cropToProjector"), o.cropToProjector);
    o.normalizeCoordinates = optionBool(options, QStringLiteral("normalizeCoordinates"), o.normalizeCoordinates);
    o.frameMarginPixels = optionInt(options, QStringLiteral("frameMarginPixels"), o.frameMarginPixels, 0, kMaxMarginPixels);
    return o;
}

QVariantMap ViewMeshOptions::toVariantMap() const
{
    return {{QStringLiteral("flattenTo2D"), flattenTo2D},
            {QStringLiteral("cropToProjector"), cropToProjector},
            {QStringLiteral("normalizeCoordinates"), normalizeCoordinates},
            {QStringLiteral("frameMarginPixels"), frameMarginPixels}};
}

bool writeViewMesh(const QVector<GuideObject> &objects, int lensIndex, const ViewMeshOptions &options,
                   ExportImageSource &images, const QString &path, QStringList *written, QString *error)
{
    auto fail = [&](const QString &message) {
        if (error)
            *error = message;
        return false;
    };
    if (lensIndex < 0)
        return fail(QCoreApplication::translate("ViewMeshExport", "Select a projector or camera object first."));
    if (lensIndex >= objects.size())
        return fail(QCoreApplication::translate("ViewMeshExport", "Selected projector is no longer available."));
    if (!objects.at(lensIndex).hasLens())
        return fail(QCoreApplication::translate("ViewMeshExport", "Selected object is not a projector or camera."));

    const vg::scene::LensModel lens = vg::scene::LensModel::forObject(objects, lensIndex);
    const int width = lens.width(), height = lens.height();
    const int margin = std::clamp(options.frameMarginPixels, 0, ViewMeshOptions::kMaxMarginPixels);
    const auto frame = framePlanes(lens, double(margin) / width, double(margin) / height);
    const ClipPlane nearPlane{Vec3(0.0, 0.0, -1.0), -0.001};   // depth >= 1 mm
    const Eigen::Matrix3d toLens = lens.pose().rotation.transpose();
    const Vec3 lensPoint = lens.pose().position;

    auto project = [&](const Corner &c) {
        const vg::scene::LensProjection p =
            vg::scene::projectLensFramePoint(lens.intrinsics(), c.q, std::numeric_limits<double>::infinity());
        return ScreenCorner{p.px, p.py, p.depth, c.u, c.v};
    };

    const QVector<ExportSurface> surfaces = collectSurfaces(objects, allIndices(objects), &images);
    DepthBuffer depth(-margin, -margin, width + 2.0 * margin, height + 2.0 * margin);
    std::vector<SourceFaces> sources;
    for (const ExportSurface &s : surfaces) {
        SourceFaces faces;
        faces.surface = &s;
        std::vector<Vec3> q;
        q.reserve(s.mesh.vertices.size());
        for (const SceneVertex &v : s.mesh.vertices)
            q.push_back(toLens * (worldPosition(s, v) - lensPoint));
        for (size_t i = 0; i + 2 < s.mesh.indices.size(); i += 3) {
            Polygon poly;
            for (int k = 0; k < 3; ++k) {
                const std::uint32_t index = s.mesh.indices[i + k];
                poly.push_back({q[index], s.mesh.vertices[index].u, s.mesh.vertices[index].v});
            }
            poly = clip(poly, nearPlane);
            Polygon inside = poly;
            for (const ClipPlane &plane : frame) {
                if (inside.size() < 3)
                    break;
                inside = clip(inside, plane);
            }
            if (inside.size() < 3)
                continue;
            std::vector<ScreenCorner> test, shape;
            for (const Corner &c : inside)
                test.push_back(project(c));
            for (const Corner &c : options.cropToProjector ? inside : poly)
                shape.push_back(project(c));
            for (size_t k = 1; k + 1 < test.size(); ++k)
                depth.draw(test[0], test[k], test[k + 1]);
            faces.tests.push_back(std::move(test));
            faces.polygons.push_back(std::move(shape));
        }
        sources.push_back(std::move(faces));
    }

    const double aspect = vg::scene::lensAspect(width, height);
    auto outX = [&](const ScreenCorner &c) { return options.normalizeCoordinates ? (2.0 * c.px / width - 1.0) * aspect : c.px; };
    auto outY = [&](const ScreenCorner &c) { return options.normalizeCoordinates ? 1.0 - 2.0 * c.py / height : height - c.py; };

    const QFileInfo info(path);
    const QString folder = info.absolutePath();
    const QString mtlName = info.completeBaseName() + QStringLiteral(".mtl");
    const QString mtlPath = QDir(folder).filePath(mtlName);
    if (!ensureFolder(folder))
        return fail(pathMessage(QCoreApplication::translate("ViewMeshExport", "Could not save OBJ file:"), path));

    struct Material {
        QString name, textureFile;
        QColor diffuse;
        QImage image;
    };
    std::vector<Material> materials;
    ExportTextFile obj;
    if (!obj.open(path))
        return fail(pathMessage(QCoreApplication::translate("ViewMeshExport", "Could not save OBJ file:"), path));
    obj.line(std::string_view("# Vantreo Guide Projector View Mesh OBJ"));
    obj.line(QStringLiteral("# Mode: %1, Clip: %2, Normalize: %3, Frame Margin: %4 px")
                 .arg(options.flattenTo2D ? QStringLiteral("2D") : QStringLiteral("3D"), onOff(options.cropToProjector),
                      onOff(options.normalizeCoordinates))
                 .arg(margin));
    obj.line(options.normalizeCoordinates ? std::string_view("# Coordinates are normalized: X = -aspect..aspect, Y = -1..1.")
                                          : std::string_view("# Coordinates are projector-resolution pixels."));
    obj.line(options.flattenTo2D ? std::string_view("# Z values are flattened to 0.")
                                 : std::string_view("# Z values are projector depth from the lens."));
    obj.line(std::string_view("# Hidden back surfaces are skipped with projector-space depth filtering."));
    obj.line(std::string_view("# UV coordinates preserve each source object's texture mapping."));
    obj.line(QStringLiteral("mtllib ") + mtlName);

    long long written3 = 0;
    long long nextVertex = 1;
    for (const SourceFaces &faces : sources) {
        const ExportSurface &s = *faces.surface;
        std::vector<size_t> keep;
        for (size_t i = 0; i < faces.tests.size(); ++i) {
            const auto &t = faces.tests[i];
            bool seen = false;
            for (size_t k = 1; k + 1 < t.size() && !seen; ++k)
                seen = depth.visible(t[0], t[k], t[k + 1]);
            if (seen)
                keep.push_back(i);
        }
        if (keep.empty())
            continue;
        const ObjNames names = objNames(s.identifier, s.index);
        Material m;
        if (!s.texture.isNull()) {
            m = {names.material, QStringLiteral("viewmesh_") + names.group + QStringLiteral(".png"), Qt::white, s.texture};
        } else {
            m = {names.flatMaterial, QString(), s.color, QImage()};
        }
        obj.line(QStringLiteral("o ") + s.name);
        obj.line(QStringLiteral("g ") + names.group);
        for (size_t i : keep) {
            for (const ScreenCorner &c : faces.polygons[i]) {
                obj.write(std::string_view("v "));
                obj.fixed(outX(c));
                obj.put(' ');
                obj.fixed(outY(c));
                obj.put(' ');
                obj.fixed(options.flattenTo2D ? 0.0 : c.depth);
                obj.put('\n');
            }
            for (const ScreenCorner &c : faces.polygons[i]) {
                obj.write(std::string_view("vt "));
                obj.fixed(c.u);
                obj.put(' ');
                obj.fixed(1.0 - c.v);
                obj.put('\n');
            }
        }
        obj.line(QStringLiteral("usemtl ") + m.name);
        obj.line(std::string_view("s off"));
        for (size_t i : keep) {
            const auto &poly = faces.polygons[i];
            for (size_t k = 1; k + 1 < poly.size(); ++k) {
                const ScreenCorner &a = poly[0], &b = poly[k], &c = poly[k + 1];
                const double area = (outX(b) - outX(a)) * (outY(c) - outY(a)) - (outY(b) - outY(a)) * (outX(c) - outX(a));
                if (std::abs(area) < 1e-12)
                    continue;
                // Every face is wound counter-clockwise seen from +Z, the side the view mesh faces.
                const long long ia = nextVertex, ib = nextVertex + static_cast<long long>(k), ic = ib + 1;
                const std::array<long long, 3> face = area > 0 ? std::array<long long, 3>{ia, ib, ic}
                                                               : std::array<long long, 3>{ia, ic, ib};
                obj.write(std::string_view("f"));
                for (long long index : face) {
                    obj.put(' ');
                    obj.integer(index);
                    obj.put('/');
                    obj.integer(index);
                }
                obj.put('\n');
                ++written3;
            }
            nextVertex += static_cast<long long>(poly.size());
        }
        materials.push_back(m);
    }
    if (written3 == 0) {
        obj.commit();   // replaced below by the message; the partial file is not kept
        QFile::remove(path);
        return fail(QCoreApplication::translate("ViewMeshExport", "No mesh faces are visible inside the selected projector view."));
    }
    if (!obj.commit())
        return fail(pathMessage(QCoreApplication::translate("ViewMeshExport", "Could not save OBJ file:"), path));
    if (written)
        written->append(path);

    ExportTextFile mtl;
    if (!mtl.open(mtlPath))
        return fail(pathMessage(QCoreApplication::translate("ViewMeshExport", "Could not save MTL file:"), mtlPath));
    mtl.line(std::string_view("# Vantreo Guide Projector View Mesh MTL"));
    for (const Material &m : materials)
        writeMtlBlock(mtl, m.name, m.diffuse, m.textureFile, true);
    if (!mtl.commit())
        return fail(pathMessage(QCoreApplication::translate("ViewMeshExport", "Could not save MTL file:"), mtlPath));
    if (written)
        written->append(mtlPath);
    for (const Material &m : materials) {
        if (m.textureFile.isEmpty())
            continue;
        const QString texturePath = QDir(folder).filePath(m.textureFile);
        if (!writeTexturePng(m.image, texturePath, error))
            return false;
        if (written)
            written->append(texturePath);
    }
    return true;
}

ExporterEntry viewMeshExporterEntry()
{
    return {QStringLiteral("view-mesh"),
            QStringLiteral("obj"),
            QT_TRANSLATE_NOOP("Exporters", "Wavefront OBJ"),
            QT_TRANSLATE_NOOP("Exporters", "Export Projector View Mesh..."),
            ExportSubject::SceneView,
            QStringLiteral("projector_view_mesh"),
            Settings::viewMeshExportDirectory.key(),
            [](const ExportRequest &request, const QString &path, QStringList *written, QString *error) {
                ExportImageSource fallback(request.guides);
                int lens = request.objectIndex;
                if (lens < 0 && !request.selection.isEmpty())
                    lens = request.selection.first();
                return writeViewMesh(request.objects, lens, ViewMeshOptions::fromVariantMap(request.options),
                                     request.images ? *request.images : fallback, path, written, error);
            }};
}

} // namespace vg::exchange
