#include "exchange/DxfReader.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <new>
#include <string_view>

namespace vg::exchange {
namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("MeshImport", text);
}

// A drawing of more segments than this is refused rather than allowed to exhaust memory.
constexpr size_t kMaxSegments = 4'000'000;

struct Vec {
    double x = 0.0, y = 0.0, z = 0.0;
};

std::string_view trimmed(std::string_view s)
{
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t'))
        s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r'))
        s.remove_suffix(1);
    return s;
}

double toDouble(std::string_view s)
{
    if (!s.empty() && s.front() == '+')
        s.remove_prefix(1);
    double value = std::nan("");
    const auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), value);
    return ec == std::errc() && end == s.data() + s.size() ? value : std::nan("");
}

bool toInt(std::string_view s, long long *value)
{
    if (!s.empty() && s.front() == '+')
        s.remove_prefix(1);
    const auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), *value);
    return ec == std::errc() && end == s.data() + s.size();
}

// Reads the file as (group code, value) pairs; any of LF, CRLF or CR ends a line.
class PairReader
{
public:
    PairReader(const char *begin, const char *end) : m_p(begin), m_end(end) {}

    bool next(int *code, std::string_view *value)
    {
        std::string_view codeLine;
        if (!line(&codeLine) || !line(value))
            return false;
        long long parsed = 0;
        if (!toInt(trimmed(codeLine), &parsed) || parsed < -32768 || parsed > 32767)
            return false; // the pairs are out of step from here on
        *code = int(parsed);
        *value = trimmed(*value);
        return true;
    }

private:
    bool line(std::string_view *out)
    {
        if (m_p >= m_end)
            return false;
        const char *start = m_p;
        while (m_p < m_end && *m_p != '\n' && *m_p != '\r')
            ++m_p;
        *out = std::string_view(start, size_t(m_p - start));
        if (m_p < m_end && *m_p == '\r')
            ++m_p;
        if (m_p < m_end && *m_p == '\n')
            ++m_p;
        return true;
    }

    const char *m_p;
    const char *m_end;
};

// The entity being read: the groups the supported kinds use.
struct Entity {
    std::string_view type;
    Vec p10, p11;
    Vec extrusion{0.0, 0.0, 1.0};
    double radius = 0.0, startAngle = 0.0, endAngle = 360.0, elevation = 0.0;
    long long flags = 0;
    std::vector<Vec> vertices; // LWPOLYLINE

    void reset(std::string_view kind)
    {
        type = kind;
        p10 = p11 = Vec();
        extrusion = Vec{0.0, 0.0, 1.0};
        radius = elevation = startAngle = 0.0;
        endAngle = 360.0;
        flags = 0;
        vertices.clear();
    }
};

// Object coordinate system of a planar entity: the arbitrary axis algorithm of the format.
struct Ocs {
    Vec ax{1, 0, 0}, ay{0, 1, 0}, az{0, 0, 1};

    explicit Ocs(Vec n)
    {
        const double len = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
        if (!(len > 1e-12) || !std::isfinite(len))
            return;
        az = {n.x / len, n.y / len, n.z / len};
        const Vec w = (std::abs(az.x) < 1.0 / 64.0 && std::abs(az.y) < 1.0 / 64.0) ? Vec{0, 1, 0} : Vec{0, 0, 1};
        ax = cross(w, az);
        const double lx = std::sqrt(ax.x * ax.x + ax.y * ax.y + ax.z * ax.z);
        ax = {ax.x / lx, ax.y / lx, ax.z / lx};
        ay = cross(az, ax);
    }

    static Vec cross(const Vec &a, const Vec &b)
    {
        return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
    }

    Vec toWorld(const Vec &p) const
    {
        return {p.x * ax.x + p.y * ay.x + p.z * az.x, p.x * ax.y + p.y * ay.y + p.z * az.y,
                p.x * ax.z + p.y * ay.z + p.z * az.z};
    }
};

class DxfParser
{
public:
    explicit DxfParser(DxfDrawing *drawing) : m_out(drawing) {}

    void parse(const char *begin, const char *end)
    {
        PairReader reader(begin, end);
        int code = 0;
        std::string_view value;
        bool expectSectionName = false;
        while (!m_tooLarge && reader.next(&code, &value)) {
            if (code == 0) {
                finishEntity();
                expectSectionName = value == "SECTION";
                if (value == "ENDSEC") {
                    finishPolyline();
                    m_section = Section::None;
                }
                startEntity(value);
                continue;
            }
            if (expectSectionName && code == 2) {
                expectSectionName = false;
                m_section = sectionOf(value);
                m_sawSection = true;
                continue;
            }
            if (m_section == Section::Header)
                headerGroup(code, value);
            else if (m_readingEntity)
                entityGroup(code, value);
        }
        finishEntity();
        finishPolyline();
    }

    bool tooLarge() const { return m_tooLarge; }

private:
    enum class Section { None, Header, Entities, Other };

    static Section sectionOf(std::string_view name)
    {
        if (name == "HEADER")
            return Section::Header;
        if (name == "ENTITIES")
            return Section::Entities;
        return Section::Other;
    }

    void headerGroup(int code, std::string_view value)
    {
        if (code == 9) {
            m_variable = value;
            return;
        }
        long long units = 0;
        if (m_variable == "$INSUNITS" && code == 70 && toInt(value, &units)) {
            m_out->insUnits = int(std::clamp<long long>(units, -1, 1000));
            const double factor = dxfMillimetresPerUnit(m_out->insUnits);
            m_out->unitKnown = factor > 0.0;
            m_out->millimetresPerUnit = factor > 0.0 ? factor : 1.0;
        }
    }

    // Entities count in the ENTITIES section, or anywhere in a file with no sections at
    // all; those of BLOCKS are only drawn where inserted, which is not read.
    void startEntity(std::string_view type)
    {
        const bool structural = type == "SECTION" || type == "ENDSEC" || type == "EOF";
        m_readingEntity = !structural && (m_section == Section::Entities || (!m_sawSection && m_section == Section::None));
        if (m_readingEntity)
            m_entity.reset(type);
    }

    void entityGroup(int code, std::string_view value)
    {
        Entity &e = m_entity;
        const bool lw = e.type == "LWPOLYLINE";
        switch (code) {
        case 10:
            if (lw)
                e.vertices.push_back({toDouble(value), 0.0, 0.0});
            else
                e.p10.x = toDouble(value);
            break;
        case 20:
            if (lw) {
                if (!e.vertices.empty())
                    e.vertices.back().y = toDouble(value);
            } else {
                e.p10.y = toDouble(value);
            }
            break;
        case 30: e.p10.z = toDouble(value); break;
        case 11: e.p11.x = toDouble(value); break;
        case 21: e.p11.y = toDouble(value); break;
        case 31: e.p11.z = toDouble(value); break;
        case 38: e.elevation = toDouble(value); break;
        case 40: e.radius = toDouble(value); break;
        case 50: e.startAngle = toDouble(value); break;
        case 51: e.endAngle = toDouble(value); break;
        case 70: toInt(value, &e.flags); break;
        case 210: e.extrusion.x = toDouble(value); break;
        case 220: e.extrusion.y = toDouble(value); break;
        case 230: e.extrusion.z = toDouble(value); break;
        default: break;
        }
    }

    void finishEntity()
    {
        if (!m_readingEntity)
            return;
        m_readingEntity = false;
        const Entity &e = m_entity;
        if (e.type == "VERTEX") {
            if (m_inPolyline && !(e.flags & 128)) // 128 alone: a face record of a polyface mesh
                m_polyline.push_back(m_polylineIs3d ? e.p10 : m_polylineOcs.toWorld({e.p10.x, e.p10.y, m_polylineElevation}));
            return;
        }
        if (e.type == "SEQEND") {
            finishPolyline();
            return;
        }
        finishPolyline(); // a polyline without SEQEND ends at the next entity
        if (e.type == "LINE") {
            segment(e.p10, e.p11);
        } else if (e.type == "LWPOLYLINE") {
            const Ocs ocs(e.extrusion);
            std::vector<Vec> points;
            points.reserve(e.vertices.size());
            for (const Vec &v : e.vertices)
                points.push_back(ocs.toWorld({v.x, v.y, e.elevation}));
            polyline(points, e.flags & 1);
        } else if (e.type == "CIRCLE") {
            arc(e, 0.0, 360.0);
        } else if (e.type == "ARC") {
            arc(e, e.startAngle, e.endAngle);
        } else if (e.type == "POLYLINE") {
            m_inPolyline = true;
            m_polylineClosed = e.flags & 1;
            m_polylineIs3d = e.flags & 8;
            m_polylineIsMesh = e.flags & (16 | 64);
            m_polylineOcs = Ocs(e.extrusion);
            m_polylineElevation = e.p10.z;
            m_polyline.clear();
            return;
        } else {
            ++m_out->skippedEntities;
            return;
        }
        ++m_out->entityCount;
    }

    void finishPolyline()
    {
        if (!m_inPolyline)
            return;
        m_inPolyline = false;
        if (m_polylineIsMesh) {
            // Polygon and polyface meshes are surfaces, not line drawings.
            ++m_out->skippedEntities;
        } else {
            polyline(m_polyline, m_polylineClosed);
            ++m_out->entityCount;
        }
        m_polyline.clear();
    }

    void arc(const Entity &e, double startDegrees, double endDegrees)
    {
        if (!std::isfinite(startDegrees) || !std::isfinite(endDegrees) || !(e.radius > 0.0) || !std::isfinite(e.radius))
            return;
        double sweep = std::fmod(endDegrees - startDegrees, 360.0);
        if (sweep <= 1e-9)
            sweep += 360.0; // an arc whose end equals its start is the whole circle
        const int steps = std::max(1, int(std::ceil(kDxfCircleSegments * sweep / 360.0 - 1e-9)));
        const Ocs ocs(e.extrusion);
        std::vector<Vec> points;
        points.reserve(size_t(steps) + 1);
        for (int i = 0; i <= steps; ++i) {
            const double a = (startDegrees + sweep * i / steps) * M_PI / 180.0;
            points.push_back(ocs.toWorld({e.p10.x + e.radius * std::cos(a), e.p10.y + e.radius * std::sin(a), e.p10.z}));
        }
        polyline(points, false);
    }

    void polyline(const std::vector<Vec> &points, bool closed)
    {
        for (size_t i = 0; i + 1 < points.size(); ++i)
            segment(points[i], points[i + 1]);
        if (closed && points.size() > 2)
            segment(points.back(), points.front());
    }

    void segment(const Vec &a, const Vec &b)
    {
        const double f = m_out->millimetresPerUnit;
        const DxfPoint pa{a.x * f, a.y * f, a.z * f};
        const DxfPoint pb{b.x * f, b.y * f, b.z * f};
        // Beyond this the float geometry of the scene can no longer hold the drawing.
        constexpr double kLimit = 1e30;
        for (double c : {pa.x, pa.y, pa.z, pb.x, pb.y, pb.z}) {
            if (!std::isfinite(c) || std::abs(c) > kLimit)
                return;
        }
        if (pa.x == pb.x && pa.y == pb.y && pa.z == pb.z)
            return;
        if (m_out->segments.size() / 2 >= kMaxSegments) {
            m_tooLarge = true;
            return;
        }
        m_out->segments.push_back(pa);
        m_out->segments.push_back(pb);
    }

    DxfDrawing *m_out;
    Section m_section = Section::None;
    bool m_sawSection = false;
    std::string_view m_variable;
    bool m_readingEntity = false;
    Entity m_entity;
    bool m_inPolyline = false;
    bool m_polylineClosed = false;
    bool m_polylineIs3d = false;
    bool m_polylineIsMesh = false;
    Ocs m_polylineOcs{Vec{0, 0, 1}};
    double m_polylineElevation = 0.0;
    std::vector<Vec> m_polyline;
    bool m_tooLarge = false;
};

} // namespace

double dxfMillimetresPerUnit(int code)
{
    static constexpr double kTable[] = {
        0.0,                  // 0 unitless
        25.4,                 // 1 inches
        304.8,                // 2 feet
        1609344.0,            // 3 miles
        1.0,                  // 4 millimetres
        10.0,                 // 5 centimetres
        1000.0,               // 6 metres
        1000000.0,            // 7 kilometres
        0.0000254,            // 8 microinches
        0.0254,               // 9 mils
        914.4,                // 10 yards
        0.0000001,            // 11 angstroms
        0.000001,             // 12 nanometres
        0.001,                // 13 microns
        100.0,                // 14 decimetres
        10000.0,              // 15 decametres
        100000.0,             // 16 hectometres
        1e12,                 // 17 gigametres
        149597870700000.0,    // 18 astronomical units
        9.4607304725808e18,   // 19 light years
        3.08567758149137e19,  // 20 parsecs
        304.8006096012192,    // 21 US survey feet
        25.4000508001016,     // 22 US survey inches
        914.4018288036576,    // 23 US survey yards
        1609347.2186944373,   // 24 US survey miles
    };
    if (code < 0 || code >= int(std::size(kTable)))
        return 0.0;
    return kTable[code];
}

bool readDxfData(const QByteArray &data, DxfDrawing *drawing, QString *error)
{
    DxfDrawing result;
    if (data.startsWith("AutoCAD Binary DXF")) {
        if (error)
            *error = tr("DXF file is in the binary form; save it as ASCII DXF and import it again.");
        return false;
    }
    try {
        DxfParser parser(&result);
        parser.parse(data.constData(), data.constData() + data.size());
        if (parser.tooLarge()) {
            if (error)
                *error = tr("DXF drawing has more than %1 line segments and is too large to import.").arg(kMaxSegments);
            return false;
        }
    } catch (const std::bad_alloc &) {
        if (error)
            *error = tr("Not enough memory to read the DXF file.");
        return false;
    }
    if (result.entityCount == 0) {
        if (error)
            *error = tr("DXF has no supported LINE, POLYLINE, LWPOLYLINE, CIRCLE, or ARC entities.");
        return false;
    }
    if (result.segments.empty()) {
        if (error)
            *error = tr("DXF produced no renderable line geometry.");
        return false;
    }
    *drawing = std::move(result);
    return true;
}

bool readDxfFile(const QString &path, DxfDrawing *drawing, QString *error)
{
    if (!QFileInfo(path).isFile()) {
        if (error)
            *error = tr("DXF file does not exist.");
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = tr("Could not read %1: %2").arg(path, file.errorString());
        return false;
    }
    // Mapped, not copied: drawings from the field run to hundreds of megabytes.
    const qint64 size = file.size();
    if (size == 0)
        return readDxfData(QByteArray(), drawing, error);
    const uchar *mapped = file.map(0, size);
    if (!mapped) {
        if (error)
            *error = tr("Could not read %1: %2").arg(path, file.errorString());
        return false;
    }
    const bool ok = readDxfData(QByteArray::fromRawData(reinterpret_cast<const char *>(mapped), qsizetype(size)),
                                drawing, error);
    file.unmap(const_cast<uchar *>(mapped));
    return ok;
}

} // namespace vg::exchange
