#include "exchange/UvLutWriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

#include <charconv>
#include <cmath>

namespace vg::exchange {

namespace {

// Real numbers carry six decimals; what is not finite is null.
void appendReal(QByteArray &out, double value)
{
    if (!std::isfinite(value)) {
        out.append("null");
        return;
    }
    char buffer[64];
    const auto r = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 6);
    out.append(buffer, qsizetype(r.ptr - buffer));
}

QByteArray real(double value)
{
    QByteArray out;
    appendReal(out, value);
    return out;
}

QByteArray jsonString(const QString &text)
{
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

// Writes the manifest one line at a time with two-space indentation.
class ManifestLines
{
public:
    explicit ManifestLines(QSaveFile &file) : m_file(file) {}

    void open(const char *key, char bracket)
    {
        line(key ? QByteArray("\"") + key + "\": " + bracket : QByteArray(1, bracket));
        m_pending = false;
        ++m_depth;
    }
    void close(char bracket)
    {
        m_pending = false;
        --m_depth;
        line(QByteArray(1, bracket));
    }
    void member(const char *key, const QByteArray &value) { line(QByteArray("\"") + key + "\": " + value); }
    void member(const char *key, qint64 value) { member(key, QByteArray::number(value)); }
    void raw(const QByteArray &text) { line(text); }
    void finish() { m_ok = m_ok && m_file.write("\n") == 1; }
    bool ok() const { return m_ok; }

private:
    void line(const QByteArray &text)
    {
        QByteArray out;
        if (m_pending)
            out.append(",\n");
        else if (m_started)
            out.append('\n');
        out.append(QByteArray(2 * m_depth, ' '));
        out.append(text);
        m_ok = m_ok && m_file.write(out) == out.size();
        m_started = true;
        m_pending = !(text.endsWith('{') || text.endsWith('['));
    }

    QSaveFile &m_file;
    int m_depth = 0;
    bool m_pending = false;
    bool m_started = false;
    bool m_ok = true;
};

void writeObject(ManifestLines &out, const char *key, const UvLutObjectInfo &info, bool source)
{
    out.open(key, '{');
    out.member("object_index", info.objectIndex);
    out.member("object_name", jsonString(info.name));
    out.member("object_kind", info.camera ? "\"camera\"" : "\"projector\"");
    if (source)
        out.member("image_file_path", jsonString(info.imageFilePath));
    out.open("resolution", '{');
    out.member("width", info.resolutionWidth);
    out.member("height", info.resolutionHeight);
    out.close('}');
    if (source) {
        out.open("image_size", '{');
        out.member("width", info.imageWidth);
        out.member("height", info.imageHeight);
        out.close('}');
    }
    out.close('}');
}

QByteArray sampleRow(const UvLutTable &table, int y, double uScale)
{
    QByteArray row;
    row.reserve(table.width * 40 + 2);
    row.append('[');
    for (int x = 0; x < table.width; ++x) {
        const UvLutSample &s = table.at(x, y);
        if (x > 0)
            row.append(',');
        if (!s.valid()) {
            row.append("[null,null,");
            appendReal(row, s.coverage);
            row.append(",null]");
            continue;
        }
        row.append('[');
        appendReal(row, double(s.u) * uScale);
        row.append(',');
        appendReal(row, s.v);
        row.append(',');
        appendReal(row, s.coverage);
        row.append(',');
        appendReal(row, s.depth);
        row.append(']');
    }
    row.append(']');
    return row;
}

} // namespace

bool writeUvLutManifest(const UvLutResult &result, const QString &path, QString *error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = QCoreApplication::translate("UvLutExport", "Could not save LUT JSON file:") + QLatin1Char('\n')
                 + QDir::toNativeSeparators(path);
        return false;
    }
    const UvLutFileNames names = uvLutFileNames();
    const UvLutOptions &o = result.options;
    ManifestLines out(file);
    out.open(nullptr, '{');
    out.member("format", "\"VantreoGuideProjectorCameraUvLut\"");
    out.member("version", 1);
    out.open("lut_size", '{');
    out.member("width", result.table.width);
    out.member("height", result.table.height);
    out.close('}');
    writeObject(out, "output_view", result.output, false);
    writeObject(out, "source_camera", result.source, true);
    out.open("coordinate_conventions", '{');
    out.member("projector_pixels", "\"rows are top-to-bottom, columns are left-to-right\"");
    out.member("source_uv", "\"normalized camera projection coordinates, origin at bottom-left\"");
    out.member("preview_sampling", "\"source image row = 1 - source_v\"");
    out.close('}');
    out.open("generation", '{');
    out.member("sampling_method", jsonString(uvLutMethodKey(o.method)));
    out.member("uv_u_scale", real(o.uScale));
    out.member("uv_v_scale", "1.000000");
    out.member("edge_feather_px", real(o.featherPx));
    out.member("effective_edge_feather_px", real(result.effectiveFeatherPx));
    out.member("coverage_aa_method", o.aaSamples > 1 ? "\"msaa\"" : "\"none\"");
    out.member("coverage_aa_samples", o.aaSamples);
    out.close('}');
    out.open("stats", '{');
    out.member("projected_triangles", result.stats.projectedTriangles);
    out.member("surface_hit_samples", result.stats.surfaceHitSamples);
    out.member("valid_camera_uv_samples", result.stats.validCameraUvSamples);
    out.member("min_projector_depth", real(result.stats.minProjectorDepth));
    out.member("max_projector_depth", real(result.stats.maxProjectorDepth));
    out.close('}');
    out.open("artifacts", '{');
    out.member("preview_png", jsonString(names.preview));
    out.member("uv_png", jsonString(names.uv));
    out.member("mask_png", jsonString(names.mask));
    out.member("depth_png", jsonString(names.depth));
    out.member("binary_uvlut", jsonString(names.binary));
    out.member("uv_float_pfm", jsonString(names.uvFloat));
    out.member("depth_float_pfm", jsonString(names.depthFloat));
    out.close('}');
    out.open("samples", '[');
    for (int y = 0; y < result.table.height && out.ok(); ++y)
        out.raw(sampleRow(result.table, y, o.uScale));
    out.close(']');
    out.close('}');
    out.finish();
    if (!out.ok() || !file.commit()) {
        *error = QCoreApplication::translate("UvLutExport", "Could not save LUT JSON file:") + QLatin1Char('\n')
                 + QDir::toNativeSeparators(path);
        return false;
    }
    return true;
}

} // namespace vg::exchange
