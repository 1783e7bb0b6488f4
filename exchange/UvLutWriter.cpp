#include "exchange/UvLutWriter.h"

#include "exchange/ParallelRows.h"
#include "guide/PngWriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>
#include <QTemporaryFile>
#include <QtEndian>

#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>

namespace vg::exchange {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("UvLutExport", text);
}

// "<failure text>\n<path>", the shape every file failure of the export takes.
QString fileFailure(const char *text, const QString &path)
{
    return tr(text) + QLatin1Char('\n') + QDir::toNativeSeparators(path);
}

float nanFloat()
{
    float f;
    const quint32 bits = kUvLutNanBits;
    std::memcpy(&f, &bits, sizeof f);
    return f;
}

void putFloat(char *out, float value)
{
    qToLittleEndian(value, out);
}

// The four floats a sample stores: u × scale, v, coverage, depth; NaN where it is invalid.
void sampleFloats(const UvLutSample &s, double uScale, float out[4])
{
    if (s.valid() && std::isfinite(s.u)) {
        out[0] = float(double(s.u) * uScale);
        out[1] = s.v;
        out[3] = s.depth;
    } else {
        out[0] = out[1] = out[3] = nanFloat();
    }
    out[2] = s.coverage;
}

// Writes all bytes or fails.
bool writeAll(QIODevice &device, const char *data, qint64 size)
{
    return device.write(data, size) == size;
}

QByteArray pfmHeader(const char *kind, int width, int height)
{
    return QStringLiteral("%1\n%2 %3\n-1.0\n").arg(QLatin1String(kind)).arg(width).arg(height).toLatin1();
}

} // namespace

UvLutFileNames uvLutFileNames()
{
    const QString base = QLatin1String(kUvLutBaseName);
    return {base + QLatin1String(".uvlut"),           base + QLatin1String(".json"),
            base + QLatin1String("_preview.png"),     base + QLatin1String("_uv.png"),
            base + QLatin1String("_mask.png"),        base + QLatin1String("_depth.png"),
            base + QLatin1String("_uv_float.pfm"),    base + QLatin1String("_depth_float.pfm")};
}

QByteArray uvLutBinaryHeader(const UvLutResult &result)
{
    QByteArray header(40, '\0');
    std::memcpy(header.data(), "VTGUVLUT", 8);
    const quint32 fields[8] = {2u,
                               quint32(result.table.width),
                               quint32(result.table.height),
                               4u,
                               quint32(std::max(1, result.source.resolutionWidth)),
                               quint32(std::max(1, result.source.resolutionHeight)),
                               quint32(std::max(0, result.source.imageWidth)),
                               quint32(std::max(0, result.source.imageHeight))};
    for (int i = 0; i < 8; ++i)
        qToLittleEndian(fields[i], header.data() + 8 + 4 * i);
    return header;
}

bool writeUvLutBinary(const UvLutResult &result, const QString &path, QString *error)
{
    const QFileInfo target(path);
    QTemporaryFile temp(target.absolutePath() + QLatin1String("/VantreoGuide_uvlut_XXXXXX.uvlut"));
    if (!temp.open()) {
        *error = fileFailure("Could not create temporary binary LUT file:", temp.fileTemplate());
        return false;
    }
    const QByteArray header = uvLutBinaryHeader(result);
    if (!writeAll(temp, header.constData(), header.size())) {
        *error = fileFailure("Could not write binary LUT header:", temp.fileName());
        return false;
    }
    const UvLutTable &table = result.table;
    QByteArray row(16 * qsizetype(table.width), '\0');
    for (int y = 0; y < table.height; ++y) {
        char *out = row.data();
        for (int x = 0; x < table.width; ++x, out += 16) {
            float f[4];
            sampleFloats(table.at(x, y), result.options.uScale, f);
            for (int k = 0; k < 4; ++k)
                putFloat(out + 4 * k, f[k]);
        }
        if (!writeAll(temp, row.constData(), row.size())) {
            *error = fileFailure("Could not write binary LUT samples:", temp.fileName());
            return false;
        }
    }
    if (!temp.flush()) {
        *error = fileFailure("Could not flush binary LUT samples:", temp.fileName());
        return false;
    }
    temp.close();
    if (temp.error() != QFileDevice::NoError) {
        *error = fileFailure("Could not flush binary LUT samples:", temp.fileName());
        return false;
    }
    // rename() replaces the target in one step; a copy is the fallback across devices.
    const std::filesystem::path from = QFile::encodeName(temp.fileName()).toStdString();
    const std::filesystem::path to = QFile::encodeName(target.absoluteFilePath()).toStdString();
    std::error_code ec;
    std::filesystem::rename(from, to, ec);
    if (!ec) {
        temp.setAutoRemove(false);
        return true;
    }
    const bool existed = target.exists();
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, ec);
    if (ec) {
        *error = fileFailure(existed ? "Could not replace existing binary LUT file:" : "Could not copy completed binary LUT file:",
                             path);
        return false;
    }
    return true;
}

bool writeUvLutFloatMaps(const UvLutResult &result, const QString &uvPath, const QString &depthPath, QString *error)
{
    const UvLutTable &table = result.table;
    for (int channels : {3, 1}) {
        const QString &path = channels == 3 ? uvPath : depthPath;
        const char *failure = channels == 3 ? "Could not save float UV map" : "Could not save float depth map";
        QSaveFile file(path);
        bool ok = file.open(QIODevice::WriteOnly);
        const QByteArray header = pfmHeader(channels == 3 ? "PF" : "Pf", table.width, table.height);
        ok = ok && writeAll(file, header.constData(), header.size());
        QByteArray row(4 * channels * qsizetype(table.width), '\0');
        for (int y = 0; ok && y < table.height; ++y) {
            char *out = row.data();
            for (int x = 0; x < table.width; ++x) {
                float f[4];
                sampleFloats(table.at(x, y), result.options.uScale, f);
                if (channels == 3) {
                    for (int k = 0; k < 3; ++k, out += 4)
                        putFloat(out, f[k]);
                } else {
                    putFloat(out, f[3]);
                    out += 4;
                }
            }
            ok = writeAll(file, row.constData(), row.size());
        }
        if (!ok || !file.commit()) {
            *error = fileFailure(failure, path);
            return false;
        }
    }
    return true;
}

QImage uvLutPreviewImage(const UvLutResult &result)
{
    const UvLutTable &table = result.table;
    QImage image(table.width, table.height, QImage::Format_RGB32);
    image.fill(Qt::black);
    const QImage source = result.sourceImage.convertToFormat(QImage::Format_RGB32);
    if (source.isNull())
        return image;
    const int sw = source.width(), sh = source.height();
    parallelForChunks(table.height, 32, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            QRgb *line = reinterpret_cast<QRgb *>(image.scanLine(y));
            for (int x = 0; x < table.width; ++x) {
                const UvLutSample &s = table.at(x, y);
                if (!s.valid())
                    continue;
                // Bilinear at the source point; the source image row is 1 − v.
                const double fx = std::clamp(double(s.u) * sw - 0.5, 0.0, double(sw - 1));
                const double fy = std::clamp((1.0 - double(s.v)) * sh - 0.5, 0.0, double(sh - 1));
                const int x0 = int(fx), y0 = int(fy);
                const int x1 = std::min(x0 + 1, sw - 1), y1 = std::min(y0 + 1, sh - 1);
                const double tx = fx - x0, ty = fy - y0;
                const QRgb *r0 = reinterpret_cast<const QRgb *>(source.constScanLine(y0));
                const QRgb *r1 = reinterpret_cast<const QRgb *>(source.constScanLine(y1));
                double c[3];
                for (int k = 0; k < 3; ++k) {
                    const auto ch = [k](QRgb p) { return k == 0 ? qRed(p) : k == 1 ? qGreen(p) : qBlue(p); };
                    const double top = ch(r0[x0]) * (1 - tx) + ch(r0[x1]) * tx;
                    const double bottom = ch(r1[x0]) * (1 - tx) + ch(r1[x1]) * tx;
                    c[k] = (top * (1 - ty) + bottom * ty) * s.coverage;
                }
                line[x] = qRgb(int(c[0] + 0.5), int(c[1] + 0.5), int(c[2] + 0.5));
            }
        }
    });
    return image;
}

namespace {

int to8(double value)
{
    return std::clamp(int(std::lround(value * 255.0)), 0, 255);
}

template<typename Pixel>
QImage mapSamples(const UvLutTable &table, Pixel pixel)
{
    QImage image(table.width, table.height, QImage::Format_RGB32);
    parallelForChunks(table.height, 64, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            QRgb *line = reinterpret_cast<QRgb *>(image.scanLine(y));
            for (int x = 0; x < table.width; ++x)
                line[x] = pixel(table.at(x, y));
        }
    });
    return image;
}

} // namespace

QImage uvLutUvImage(const UvLutResult &result)
{
    // Red is u, green is v; blue marks valid samples so that u = v = 0 still shows.
    return mapSamples(result.table, [](const UvLutSample &s) {
        return s.valid() ? qRgb(to8(s.u), to8(s.v), 64) : qRgb(0, 0, 0);
    });
}

QImage uvLutMaskImage(const UvLutResult &result)
{
    return mapSamples(result.table, [](const UvLutSample &s) {
        const int g = to8(s.coverage);
        return qRgb(g, g, g);
    });
}

QImage uvLutDepthImage(const UvLutResult &result)
{
    // Near is bright, far is dark grey; black is no sample.
    const double lo = result.stats.minProjectorDepth;
    const double span = std::max(1e-9, result.stats.maxProjectorDepth - lo);
    return mapSamples(result.table, [lo, span](const UvLutSample &s) {
        if (!s.valid())
            return qRgb(0, 0, 0);
        const int g = 32 + int(std::lround(223.0 * (1.0 - std::clamp((s.depth - lo) / span, 0.0, 1.0))));
        return qRgb(g, g, g);
    });
}

bool writeUvLutPackage(const UvLutResult &result, const QString &folder, const UvLutProgress &progress,
                       QStringList *written, QString *error)
{
    QString scratch;
    QString &err = error ? *error : scratch;
    const auto report = [&](const char *text) {
        if (progress)
            progress(tr(text));
    };
    const QDir dir(folder);
    if (!QDir().mkpath(folder) || !QFileInfo(folder).isDir()) {
        err = fileFailure("Could not create export folder:", folder);
        return false;
    }
    const UvLutFileNames names = uvLutFileNames();
    const auto done = [&](const QString &path) {
        if (written)
            written->append(path);
    };
    if (result.options.testData) {
        report("Writing preview images...");
        const struct {
            QImage image;
            QString name;
            const char *failure;
        } images[] = {{uvLutPreviewImage(result), names.preview, "Could not save LUT preview image:"},
                      {uvLutUvImage(result), names.uv, "Could not save UV diagnostic image:"},
                      {uvLutMaskImage(result), names.mask, "Could not save LUT mask image:"},
                      {uvLutDepthImage(result), names.depth, "Could not save LUT depth image:"}};
        for (const auto &entry : images) {
            QString pngError;
            if (!writeGuidePng(entry.image, dir.filePath(entry.name), &pngError)) {
                err = fileFailure(entry.failure, dir.filePath(entry.name));
                return false;
            }
            done(dir.filePath(entry.name));
        }
    }
    report("Writing binary LUT...");
    if (!writeUvLutBinary(result, dir.filePath(names.binary), &err))
        return false;
    done(dir.filePath(names.binary));
    if (result.options.testData) {
        report("Writing float LUT maps...");
        if (!writeUvLutFloatMaps(result, dir.filePath(names.uvFloat), dir.filePath(names.depthFloat), &err))
            return false;
        done(dir.filePath(names.uvFloat));
        done(dir.filePath(names.depthFloat));
        report("Writing LUT JSON...");
        if (!writeUvLutManifest(result, dir.filePath(names.manifest), &err))
            return false;
        done(dir.filePath(names.manifest));
    }
    report("LUT export complete.");
    return true;
}

bool exportUvLut(const QVector<GuideObject> &objects, ExportImageSource &images, const UvLutOptions &options,
                 const QString &folder, const UvLutProgress &progress, UvLutResult *result, QString *error)
{
    UvLutResult computed;
    if (!computeUvLut(objects, images, options, progress, &computed, error))
        return false;
    const bool ok = writeUvLutPackage(computed, folder, progress, nullptr, error);
    if (result)
        *result = std::move(computed);
    return ok;
}

} // namespace vg::exchange
