#include "exchange/ObjReader.h"

#include "exchange/MtlReader.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <new>
#include <string_view>

namespace vg::exchange {
namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("MeshImport", text);
}

constexpr std::uint32_t kNone = 0xffffffffu;
// Bounds that keep a hostile file from exhausting memory: far beyond any venue model.
constexpr size_t kMaxVertices = 60'000'000;
constexpr size_t kMaxTriangles = 60'000'000;
// Coordinates beyond this (metres) are not a venue; the position is treated as invalid.
constexpr double kMaxCoordinate = 1e9;
// Polygons up to this many corners are cut into ears; larger ones are fanned so that a
// hostile million-corner face cannot take quadratic time.
constexpr int kMaxEarClipCorners = 64;
constexpr size_t kMaxLoggedFaces = 100;
constexpr size_t kMaxMaterialsUsed = 256;

using Vec3 = std::array<double, 3>;

Vec3 sub(const Vec3 &a, const Vec3 &b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
Vec3 cross(const Vec3 &a, const Vec3 &b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

class Cursor
{
public:
    Cursor(const char *p, const char *end) : m_p(p), m_end(end) {}

    bool atEnd() const { return m_p >= m_end; }
    bool atLineEnd() const { return m_p >= m_end || *m_p == '\n' || *m_p == '\r'; }
    char peek() const { return m_p < m_end ? *m_p : '\0'; }
    void advance() { ++m_p; }

    void skipBlanks()
    {
        while (m_p < m_end && (*m_p == ' ' || *m_p == '\t'))
            ++m_p;
    }

    // Moves past the end of the current line; returns false at the end of the data.
    void nextLine()
    {
        while (m_p < m_end && *m_p != '\n')
            ++m_p;
        if (m_p < m_end)
            ++m_p;
    }

    std::string_view word()
    {
        skipBlanks();
        const char *start = m_p;
        while (m_p < m_end && *m_p != ' ' && *m_p != '\t' && *m_p != '\n' && *m_p != '\r')
            ++m_p;
        return {start, size_t(m_p - start)};
    }

    std::string_view restOfLine()
    {
        skipBlanks();
        const char *start = m_p;
        while (m_p < m_end && *m_p != '\n' && *m_p != '\r')
            ++m_p;
        std::string_view s(start, size_t(m_p - start));
        while (!s.empty() && (s.back() == ' ' || s.back() == '\t'))
            s.remove_suffix(1);
        return s;
    }

    bool number(double *value)
    {
        skipBlanks();
        const char *start = m_p;
        if (m_p < m_end && *m_p == '+')
            ++start, ++m_p;
        const auto [end, ec] = std::from_chars(start, m_end, *value);
        if (ec != std::errc() || end == start)
            return false;
        m_p = end;
        return true;
    }

    // An integer index; false when there is none or it does not fit.
    bool index(long long *value)
    {
        const auto [end, ec] = std::from_chars(m_p, m_end, *value);
        if (ec != std::errc() || end == m_p)
            return false;
        m_p = end;
        return true;
    }

private:
    const char *m_p;
    const char *m_end;
};

struct Corner {
    std::uint32_t v = kNone, vt = kNone, vn = kNone;
};

class ObjParser
{
public:
    explicit ObjParser(ObjMesh *out) : m_out(out), m_mesh(out->mesh) {}

    void parse(const char *begin, const char *end)
    {
        Cursor c(begin, end);
        int lineNumber = 0;
        while (!c.atEnd() && !m_tooLarge) {
            ++lineNumber;
            c.skipBlanks();
            const std::string_view keyword = c.word();
            if (keyword == "v")
                position(c);
            else if (keyword == "vt")
                texCoord(c);
            else if (keyword == "vn")
                normal(c);
            else if (keyword == "f")
                face(c, lineNumber);
            else if (keyword == "mtllib")
                library(c.restOfLine());
            else if (keyword == "usemtl")
                useMaterial(c.restOfLine());
            c.nextLine();
        }
        finishNormals();
    }

    bool tooLarge() const { return m_tooLarge; }
    const QStringList &libraries() const { return m_libraries; }
    const QStringList &materialsUsed() const { return m_materialsUsed; }

private:
    void position(Cursor &c)
    {
        double x = 0, y = 0, z = 0;
        const bool ok = c.number(&x) && c.number(&y) && c.number(&z);
        auto valid = [](double v) { return std::isfinite(v) && std::abs(v) <= kMaxCoordinate; };
        if (ok && valid(x) && valid(y) && valid(z))
            m_positions.push_back({float(x), float(y), float(z)});
        else
            m_positions.push_back({NAN, NAN, NAN}); // keeps the numbering; faces on it are skipped
        m_tooLarge = m_tooLarge || m_positions.size() > kMaxVertices;
    }

    void texCoord(Cursor &c)
    {
        // A coordinate that is no number or would overflow a float maps to 0.
        double u = 0, v = 0;
        if (!c.number(&u) || !(std::abs(u) <= kMaxCoordinate))
            u = 0;
        if (!c.number(&v) || !(std::abs(v) <= kMaxCoordinate))
            v = 0;
        m_texCoords.push_back({float(u), float(v)});
        m_tooLarge = m_tooLarge || m_texCoords.size() > kMaxVertices;
    }

    void normal(Cursor &c)
    {
        double x = 0, y = 0, z = 0;
        const bool ok = c.number(&x) && c.number(&y) && c.number(&z);
        const double len = std::sqrt(x * x + y * y + z * z);
        if (ok && std::isfinite(len) && len > 1e-20)
            m_normals.push_back({float(x / len), float(y / len), float(z / len)});
        else
            m_normals.push_back({NAN, NAN, NAN}); // the corner's normal is computed instead
        m_tooLarge = m_tooLarge || m_normals.size() > kMaxVertices;
    }

    // Resolves a 1-based or negative (relative) index against the `count` items read so far.
    static std::uint32_t resolve(long long index, size_t count)
    {
        if (index > 0 && std::uint64_t(index) <= count)
            return std::uint32_t(index - 1);
        if (index < 0 && std::uint64_t(-(index + 1)) < count)
            return std::uint32_t(std::int64_t(count) + index);
        return kNone;
    }

    bool corner(Cursor &c, Corner *out)
    {
        long long v = 0;
        if (!c.index(&v) || (out->v = resolve(v, m_positions.size())) == kNone)
            return false;
        if (std::isnan(m_positions[out->v][0]))
            return false;
        if (c.peek() != '/')
            return true;
        c.advance();
        long long vt = 0;
        if (c.peek() != '/') {
            if (!c.index(&vt) || (out->vt = resolve(vt, m_texCoords.size())) == kNone)
                return false;
        }
        if (c.peek() != '/')
            return true;
        c.advance();
        if (c.atLineEnd() || c.peek() == ' ' || c.peek() == '\t')
            return true; // "v/vt/" as some writers leave it
        long long vn = 0;
        if (!c.index(&vn) || (out->vn = resolve(vn, m_normals.size())) == kNone)
            return false;
        return true;
    }

    void face(Cursor &c, int lineNumber)
    {
        m_corners.clear();
        bool ok = true;
        for (;;) {
            c.skipBlanks();
            if (c.atLineEnd())
                break;
            Corner k;
            if (!corner(c, &k)) {
                ok = false;
                break;
            }
            if (!c.atLineEnd() && c.peek() != ' ' && c.peek() != '\t') {
                ok = false; // junk glued to an index
                break;
            }
            m_corners.push_back(k);
        }
        if (!ok || m_corners.size() < 3) {
            skipFace(lineNumber);
            return;
        }
        m_faceVertices.clear();
        for (const Corner &k : m_corners)
            m_faceVertices.push_back(vertexFor(k));
        triangulate();
    }

    void skipFace(int lineNumber)
    {
        qWarning().noquote() << QStringLiteral("Skipping invalid OBJ face at line %1").arg(lineNumber);
        ++m_out->skippedFaces;
        if (m_out->skippedFaceLines.size() < kMaxLoggedFaces)
            m_out->skippedFaceLines.push_back(lineNumber);
    }

    // One scene vertex per distinct (position, texture coordinate, normal) triple; the
    // vertices sharing a position are chained, and chains are short.
    std::uint32_t vertexFor(const Corner &k)
    {
        if (m_firstAtPosition.size() < m_positions.size())
            m_firstAtPosition.resize(m_positions.size(), kNone);
        for (std::uint32_t i = m_firstAtPosition[k.v]; i != kNone; i = m_nextAtPosition[i]) {
            if (m_cornerOf[i].vt == k.vt && m_cornerOf[i].vn == k.vn)
                return i;
        }
        SceneVertex sv;
        const auto &p = m_positions[k.v];
        sv.px = p[0], sv.py = p[1], sv.pz = p[2];
        if (k.vt != kNone) {
            sv.u = m_texCoords[k.vt][0];
            sv.v = 1.0f - m_texCoords[k.vt][1];
            m_out->hasTexCoords = true;
        }
        bool hasNormal = false;
        if (k.vn != kNone && !std::isnan(m_normals[k.vn][0])) {
            sv.nx = m_normals[k.vn][0], sv.ny = m_normals[k.vn][1], sv.nz = m_normals[k.vn][2];
            hasNormal = true;
        } else {
            sv.nx = sv.ny = sv.nz = 0.0f;
        }
        const auto index = std::uint32_t(m_mesh.vertices.size());
        m_mesh.vertices.push_back(sv);
        m_cornerOf.push_back(k);
        m_hasNormal.push_back(hasNormal);
        m_nextAtPosition.push_back(m_firstAtPosition[k.v]);
        m_firstAtPosition[k.v] = index;
        m_tooLarge = m_tooLarge || m_mesh.vertices.size() > kMaxVertices;
        return index;
    }

    Vec3 pos(std::uint32_t vertex) const
    {
        const SceneVertex &v = m_mesh.vertices[vertex];
        return {v.px, v.py, v.pz};
    }

    void triangle(std::uint32_t a, std::uint32_t b, std::uint32_t c)
    {
        m_mesh.indices.insert(m_mesh.indices.end(), {a, b, c});
        m_tooLarge = m_tooLarge || m_mesh.indices.size() / 3 > kMaxTriangles;
        // Area-weighted face normal for the corners that have none of their own.
        const Vec3 n = cross(sub(pos(b), pos(a)), sub(pos(c), pos(a)));
        for (std::uint32_t i : {a, b, c}) {
            if (!m_hasNormal[i]) {
                SceneVertex &v = m_mesh.vertices[i];
                v.nx += float(n[0]), v.ny += float(n[1]), v.nz += float(n[2]);
            }
        }
    }

    void triangulate()
    {
        const auto &f = m_faceVertices;
        const int n = int(f.size());
        if (n == 3 || n > kMaxEarClipCorners || !earClip()) {
            for (int i = 1; i + 1 < n; ++i)
                triangle(f[0], f[i], f[i + 1]);
        }
    }

    // Ear clipping in the polygon's best-fitting plane, so that concave n-gons (an L-shaped
    // floor, say) are not covered by a fan. False when the polygon is degenerate.
    bool earClip()
    {
        const auto &f = m_faceVertices;
        const int n = int(f.size());
        Vec3 normal{0, 0, 0}; // Newell's method
        for (int i = 0; i < n; ++i) {
            const Vec3 a = pos(f[i]), b = pos(f[(i + 1) % n]);
            normal[0] += (a[1] - b[1]) * (a[2] + b[2]);
            normal[1] += (a[2] - b[2]) * (a[0] + b[0]);
            normal[2] += (a[0] - b[0]) * (a[1] + b[1]);
        }
        const int axis = std::abs(normal[0]) > std::abs(normal[1])
                             ? (std::abs(normal[0]) > std::abs(normal[2]) ? 0 : 2)
                             : (std::abs(normal[1]) > std::abs(normal[2]) ? 1 : 2);
        if (!(std::abs(normal[axis]) > 0.0))
            return false;
        const int ua = (axis + 1) % 3, va = (axis + 2) % 3;
        const double sign = normal[axis] > 0 ? 1.0 : -1.0;
        m_flat.clear();
        for (int i = 0; i < n; ++i) {
            const Vec3 p = pos(f[i]);
            m_flat.push_back({p[ua], p[va] * sign});
        }
        m_remaining.clear();
        for (int i = 0; i < n; ++i)
            m_remaining.push_back(i);
        auto area = [&](int a, int b, int c) {
            return (m_flat[b][0] - m_flat[a][0]) * (m_flat[c][1] - m_flat[a][1])
                 - (m_flat[c][0] - m_flat[a][0]) * (m_flat[b][1] - m_flat[a][1]);
        };
        auto inside = [&](int p, int a, int b, int c) {
            return area(a, b, p) >= 0 && area(b, c, p) >= 0 && area(c, a, p) >= 0;
        };
        const size_t firstIndex = m_mesh.indices.size();
        int guard = n * n;
        while (m_remaining.size() > 3 && guard-- > 0) {
            const int m = int(m_remaining.size());
            bool clipped = false;
            for (int i = 0; i < m && !clipped; ++i) {
                const int a = m_remaining[(i + m - 1) % m], b = m_remaining[i], c = m_remaining[(i + 1) % m];
                if (area(a, b, c) <= 0)
                    continue;
                bool ear = true;
                for (int j = 0; j < m && ear; ++j) {
                    const int p = m_remaining[j];
                    if (p != a && p != b && p != c && inside(p, a, b, c))
                        ear = false;
                }
                if (ear) {
                    triangle(f[a], f[b], f[c]);
                    m_remaining.erase(m_remaining.begin() + i);
                    clipped = true;
                }
            }
            if (!clipped)
                break;
        }
        if (m_remaining.size() != 3) {
            undoTriangles(firstIndex);
            return false;
        }
        triangle(f[m_remaining[0]], f[m_remaining[1]], f[m_remaining[2]]);
        return true;
    }

    void undoTriangles(size_t firstIndex)
    {
        for (size_t i = firstIndex; i + 2 < m_mesh.indices.size(); i += 3) {
            const std::uint32_t a = m_mesh.indices[i], b = m_mesh.indices[i + 1], c = m_mesh.indices[i + 2];
            const Vec3 n = cross(sub(pos(b), pos(a)), sub(pos(c), pos(a)));
            for (std::uint32_t k : {a, b, c}) {
                if (!m_hasNormal[k]) {
                    SceneVertex &v = m_mesh.vertices[k];
                    v.nx -= float(n[0]), v.ny -= float(n[1]), v.nz -= float(n[2]);
                }
            }
        }
        m_mesh.indices.resize(firstIndex);
    }

    void library(std::string_view name)
    {
        if (!name.empty() && m_libraries.size() < qsizetype(kMaxMaterialsUsed))
            m_libraries.append(QString::fromUtf8(name.data(), qsizetype(name.size())));
    }

    void useMaterial(std::string_view name)
    {
        if (name.empty() || name == m_lastMaterial || m_materialsUsed.size() >= qsizetype(kMaxMaterialsUsed))
            return;
        m_lastMaterial = name;
        const QString material = QString::fromUtf8(name.data(), qsizetype(name.size()));
        if (!m_materialsUsed.contains(material))
            m_materialsUsed.append(material);
    }

    void finishNormals()
    {
        for (size_t i = 0; i < m_mesh.vertices.size(); ++i) {
            if (m_hasNormal[i])
                continue;
            SceneVertex &v = m_mesh.vertices[i];
            const double len = std::sqrt(double(v.nx) * v.nx + double(v.ny) * v.ny + double(v.nz) * v.nz);
            if (len > 1e-30 && std::isfinite(len))
                v.nx = float(v.nx / len), v.ny = float(v.ny / len), v.nz = float(v.nz / len);
            else
                v.nx = 0.0f, v.ny = 1.0f, v.nz = 0.0f;
        }
    }

    ObjMesh *m_out;
    SceneMesh &m_mesh;
    std::vector<std::array<float, 3>> m_positions;
    std::vector<std::array<float, 2>> m_texCoords;
    std::vector<std::array<float, 3>> m_normals;
    std::vector<std::uint32_t> m_firstAtPosition;
    std::vector<std::uint32_t> m_nextAtPosition;
    std::vector<Corner> m_cornerOf;
    std::vector<bool> m_hasNormal;
    std::vector<Corner> m_corners;                  // reused for every face
    std::vector<std::uint32_t> m_faceVertices;      // reused for every face
    std::vector<std::array<double, 2>> m_flat;      // reused by earClip()
    std::vector<int> m_remaining;                   // reused by earClip()
    QStringList m_libraries;
    QStringList m_materialsUsed;
    std::string_view m_lastMaterial;
    bool m_tooLarge = false;
};

} // namespace

bool readObjData(const QByteArray &data, const QString &folder, ObjMesh *out, QString *error)
{
    ObjMesh result;
    try {
        ObjParser parser(&result);
        parser.parse(data.constData(), data.constData() + data.size());
        if (parser.tooLarge()) {
            if (error)
                *error = tr("OBJ has more than %1 vertices or triangles and is too large to import.").arg(kMaxTriangles);
            return false;
        }
        if (result.mesh.indices.empty()) {
            if (error)
                *error = tr("OBJ has no valid vertices/faces.");
            return false;
        }
        // Vertices no face uses stay; the importer's bounds come from the faces.
        result.texturePath = diffuseTexturePath(folder, parser.libraries(), parser.materialsUsed());
    } catch (const std::bad_alloc &) {
        if (error)
            *error = tr("Not enough memory to read the OBJ file.");
        return false;
    }
    *out = std::move(result);
    return true;
}

bool readObjFile(const QString &path, ObjMesh *out, QString *error)
{
    const QFileInfo info(path);
    if (!info.isFile()) {
        if (error)
            *error = tr("OBJ file does not exist.");
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = tr("Could not read %1: %2").arg(path, file.errorString());
        return false;
    }
    // Mapped, not copied, and parsed in place: one pass, no allocation per line.
    const qint64 size = file.size();
    if (size == 0)
        return readObjData(QByteArray(), info.absolutePath(), out, error);
    const uchar *mapped = file.map(0, size);
    if (!mapped) {
        if (error)
            *error = tr("Could not read %1: %2").arg(path, file.errorString());
        return false;
    }
    const bool ok = readObjData(QByteArray::fromRawData(reinterpret_cast<const char *>(mapped), qsizetype(size)),
                                info.absolutePath(), out, error);
    file.unmap(const_cast<uchar *>(mapped));
    return ok;
}

} // namespace vg::exchange
