#include "exchange/ExportImageSource.h"
#include "exchange/UvLutWriter.h"

#include "UvLutTestScenes.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <cstring>
#include <sys/resource.h>
#include <unistd.h>

using namespace vg::exchange;

namespace {

// An independent reader of the binary table: little-endian fields at fixed offsets.
quint32 u32At(const QByteArray &bytes, qsizetype offset)
{
    const auto *p = reinterpret_cast<const unsigned char *>(bytes.constData() + offset);
    return quint32(p[0]) | quint32(p[1]) << 8 | quint32(p[2]) << 16 | quint32(p[3]) << 24;
}

float floatAt(const QByteArray &bytes, qsizetype offset)
{
    const quint32 bits = u32At(bytes, offset);
    float f;
    std::memcpy(&f, &bits, 4);
    return f;
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class UvLutFiles : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_image = writeAsymmetricImage(m_dir.filePath(QStringLiteral("source.png")));
        m_out = m_dir.filePath(QStringLiteral("out"));
    }

    bool exportScene(UvLutOptions options, QStringList *progress = nullptr, QString *error = nullptr)
    {
        options.outputIndex = 1;
        options.sourceIndex = 2;
        options.method = UvLutMethod::CpuRaster;
        QString why;
        const bool ok = exportUvLut(lutWallScene(m_image), m_images, options, m_out,
                                    [progress](const QString &text) {
                                        if (progress)
                                            progress->append(text);
                                    },
                                    nullptr, &why);
        if (error)
            *error = why;
        return ok;
    }

    QString path(const QString &name) const { return QDir(m_out).filePath(name); }

    vg::exchange::ExportImageSource m_images;
    QTemporaryDir m_dir;
    QString m_image;
    QString m_out;
};

TEST_F(UvLutFiles, BinaryTableReadsBackByteByByte)
{
    UvLutOptions options;
    options.uScale = 2.5;
    ASSERT_TRUE(exportScene(options));
    const QByteArray bytes = readAll(path(QStringLiteral("projector_camera_uv_lut.uvlut")));
    ASSERT_EQ(bytes.size(), 40 + 16 * 96 * 60);
    EXPECT_EQ(bytes.left(8), QByteArray("VTGUVLUT"));
    EXPECT_EQ(u32At(bytes, 8), 2u);
    EXPECT_EQ(u32At(bytes, 12), 96u);
    EXPECT_EQ(u32At(bytes, 16), 60u);
    EXPECT_EQ(u32At(bytes, 20), 4u);
    EXPECT_EQ(u32At(bytes, 24), 96u);   // source resolution
    EXPECT_EQ(u32At(bytes, 28), 60u);
    EXPECT_EQ(u32At(bytes, 32), 64u);   // source image
    EXPECT_EQ(u32At(bytes, 36), 40u);
    const auto sample = [&](int x, int y) { return 40 + 16 * (qsizetype(y) * 96 + x); };
    // Top-left pixel sees no surface: NaN, NaN, 0, NaN with the quiet-NaN bits.
    EXPECT_EQ(u32At(bytes, sample(0, 0)), 0x7FC00000u);
    EXPECT_EQ(u32At(bytes, sample(0, 0) + 4), 0x7FC00000u);
    EXPECT_EQ(u32At(bytes, sample(0, 0) + 8), 0u);
    EXPECT_EQ(u32At(bytes, sample(0, 0) + 12), 0x7FC00000u);
    // Rows from the top: pixel (20, 3) holds u × 2.5, v from the bottom, coverage, depth.
    EXPECT_NEAR(floatAt(bytes, sample(20, 3)), 2.5 * 20.5 / 96.0, 1e-5);
    EXPECT_NEAR(floatAt(bytes, sample(20, 3) + 4), 1.0 - 3.5 / 60.0, 1e-6);
    EXPECT_EQ(floatAt(bytes, sample(20, 3) + 8), 1.0f);
    EXPECT_NEAR(floatAt(bytes, sample(20, 3) + 12), 3.0, 1e-5);
    // Without test data only the table is written.
    EXPECT_EQ(QDir(m_out).entryList(QDir::Files), QStringList{QStringLiteral("projector_camera_uv_lut.uvlut")});
}

TEST_F(UvLutFiles, UScaleZeroWritesZeroUAndKeepsNan)
{
    UvLutOptions options;
    options.uScale = 0.0;
    ASSERT_TRUE(exportScene(options));
    const QByteArray bytes = readAll(path(QStringLiteral("projector_camera_uv_lut.uvlut")));
    ASSERT_EQ(bytes.size(), 40 + 16 * 96 * 60);
    int valid = 0;
    for (int i = 0; i < 96 * 60; ++i) {
        const qsizetype at = 40 + 16 * qsizetype(i);
        if (floatAt(bytes, at + 8) > 0.0f) {
            ++valid;
            ASSERT_EQ(u32At(bytes, at), 0u);   // +0.0
        } else {
            ASSERT_EQ(u32At(bytes, at), 0x7FC00000u);
        }
    }
    EXPECT_EQ(valid, 64 * 60);
}

TEST_F(UvLutFiles, TestDataPackageHasManifestInKeyOrderImagesAndFloatMaps)
{
    UvLutOptions options;
    options.testData = true;
    options.uScale = 2.0;
    QStringList progress;
    ASSERT_TRUE(exportScene(options, &progress));
    EXPECT_EQ(progress, (QStringList{"Projecting scene surfaces with CPU raster...", "Resolving visible projector samples...",
                                     "Writing preview images...", "Writing binary LUT...", "Writing float LUT maps...",
                                     "Writing LUT JSON...", "LUT export complete."}));

    const QByteArray text = readAll(path(QStringLiteral("projector_camera_uv_lut.json")));
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(text, &parseError);
    ASSERT_EQ(parseError.error, QJsonParseError::NoError) << parseError.errorString().toStdString();
    // Key order: the top-level keys appear at two spaces of indentation in this order.
    const QStringList expectedTop{"format", "version", "lut_size", "output_view", "source_camera",
                                  "coordinate_conventions", "generation", "stats", "artifacts", "samples"};
    QStringList top;
    for (const QByteArray &line : text.split('\n'))
        if (line.startsWith("  \"") && !line.startsWith("   "))
            top.append(QString::fromUtf8(line.mid(3, line.indexOf('"', 3) - 3)));
    EXPECT_EQ(top, expectedTop);
    const qsizetype generation = text.indexOf("\"generation\"");
    QStringList order;
    for (const char *key : {"sampling_method", "uv_u_scale", "uv_v_scale", "edge_feather_px",
                            "effective_edge_feather_px", "coverage_aa_method", "coverage_aa_samples"})
        order.append(QString::number(text.indexOf(QByteArray("\"") + key + "\"", generation)));
    QStringList sorted = order;
    std::sort(sorted.begin(), sorted.end(), [](const QString &a, const QString &b) { return a.toInt() < b.toInt(); });
    EXPECT_EQ(order, sorted);
    EXPECT_TRUE(text.contains("\"uv_v_scale\": 1.000000"));

    const QJsonObject root = doc.object();
    EXPECT_EQ(root["format"].toString(), "VantreoGuideProjectorCameraUvLut");
    EXPECT_EQ(root["source_camera"]["object_kind"].toString(), "camera");
    EXPECT_EQ(root["source_camera"]["image_size"]["width"].toInt(), 64);
    EXPECT_EQ(root["stats"]["valid_camera_uv_samples"].toInt(), 64 * 60);
    EXPECT_EQ(root["generation"]["sampling_method"].toString(), "cpu_raster_legacy");
    const QJsonArray samples = root["samples"].toArray();
    ASSERT_EQ(samples.size(), 60);
    ASSERT_EQ(samples[0].toArray().size(), 96);
    EXPECT_EQ(samples[0][0].toArray(), (QJsonArray{QJsonValue::Null, QJsonValue::Null, 0.0, QJsonValue::Null}));
    const QJsonArray s = samples[3][20].toArray();
    EXPECT_NEAR(s[0].toDouble(), 2.0 * 20.5 / 96.0, 1e-6);
    EXPECT_NEAR(s[1].toDouble(), 1.0 - 3.5 / 60.0, 1e-6);

    // Images: the preview shows the source through the table. The camera shares the lens, so
    // the top-left of the valid area is the source's top-left quadrant (red), bottom-right blue.
    const QImage preview(path(QStringLiteral("projector_camera_uv_lut_preview.png")));
    ASSERT_EQ(preview.size(), QSize(96, 60));
    EXPECT_EQ(QColor(preview.pixel(20, 5)), QColor(230, 30, 30));
    EXPECT_EQ(QColor(preview.pixel(75, 55)), QColor(20, 20, 200));
    EXPECT_EQ(QColor(preview.pixel(20, 55)), QColor(240, 240, 240));
    EXPECT_EQ(QColor(preview.pixel(2, 30)), QColor(Qt::black));
    const QImage mask(path(QStringLiteral("projector_camera_uv_lut_mask.png")));
    EXPECT_EQ(qGray(mask.pixel(2, 30)), 0);
    EXPECT_EQ(qGray(mask.pixel(40, 30)), 255);
    for (const char *name : {"_uv.png", "_depth.png"})
        EXPECT_EQ(QImage(path(QStringLiteral("projector_camera_uv_lut") + name)).size(), QSize(96, 60)) << name;

    // Float maps read by numpy: header, shape, rows from the top, NaN where invalid.
    const QString script = QStringLiteral(R"(
import sys, numpy as np
def pfm(path):
    data = open(path, 'rb').read()
    parts = data.split(b'\n', 3)
    kind, (w, h), scale = parts[0], map(int, parts[1].split()), float(parts[2])
    ch = 3 if kind == b'PF' else 1
    a = np.frombuffer(parts[3], dtype='<f4')
    assert a.size == w * h * ch, (a.size, w, h, ch)
    return kind.decode(), scale, a.reshape(h, w, ch)
k1, s1, uv = pfm(sys.argv[1])
k2, s2, d = pfm(sys.argv[2])
print(k1, s1, uv.shape[0], uv.shape[1], k2, d.shape[2])
print('%.6f %.6f %.6f %.6f' % (uv[3, 20, 0], uv[3, 20, 1], uv[3, 20, 2], d[3, 20, 0]))
print(int(np.isnan(uv[0, 0, 0])), int(np.isnan(d[0, 0, 0])), float(uv[0, 0, 2]))
)");
    QProcess python;
    python.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral("-c"), script, path(QStringLiteral("projector_camera_uv_lut_uv_float.pfm")),
                  path(QStringLiteral("projector_camera_uv_lut_depth_float.pfm"))});
    ASSERT_TRUE(python.waitForFinished(60000));
    const QStringList lines = QString::fromUtf8(python.readAllStandardOutput()).split('\n');
    ASSERT_GE(lines.size(), 3) << python.readAllStandardError().toStdString();
    EXPECT_EQ(lines[0], "PF -1.0 60 96 Pf 1");
    const QStringList values = lines[1].split(' ');
    ASSERT_EQ(values.size(), 4);
    EXPECT_NEAR(values[0].toDouble(), 2.0 * 20.5 / 96.0, 1e-5);
    EXPECT_NEAR(values[1].toDouble(), 1.0 - 3.5 / 60.0, 1e-5);
    EXPECT_EQ(values[2].toDouble(), 1.0);
    EXPECT_NEAR(values[3].toDouble(), 3.0, 1e-5);
    EXPECT_EQ(lines[2], "1 1 0.0");
}

// A write that fails part-way (file size limit, as on a full disk) or cannot start (no file
// handles, as in a read-only folder) leaves the previous table whole and no temporary behind.
TEST_F(UvLutFiles, FailedWriteLeavesPreviousTableUnchanged)
{
    ASSERT_TRUE(exportScene({}));
    const QString table = path(QStringLiteral("projector_camera_uv_lut.uvlut"));
    QFile file(table);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(1000, 'P'));
    file.close();
    const QByteArray previous = readAll(table);

    UvLutOptions options{1, 2, UvLutMethod::CpuRaster, 3.0};
    UvLutResult result;
    QString error;
    ASSERT_TRUE(computeUvLut(lutWallScene(m_image), m_images, options, {}, &result, &error));
    struct Limit {
        int resource;
        rlim_t value;
        const char *message;
    };
    const Limit limits[] = {{RLIMIT_FSIZE, 20000, "Could not"},
                            {RLIMIT_NOFILE, 3, "Could not create temporary binary LUT file:"}};
    for (const Limit &limit : limits) {
        rlimit saved{};
        getrlimit(limit.resource, &saved);
        const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit reduced = saved;
        reduced.rlim_cur = limit.value;
        ASSERT_EQ(setrlimit(limit.resource, &reduced), 0);
        error.clear();
        const bool ok = writeUvLutPackage(result, m_out, {}, nullptr, &error);
        setrlimit(limit.resource, &saved);
        std::signal(SIGXFSZ, oldHandler);
        EXPECT_FALSE(ok) << limit.resource;
        EXPECT_TRUE(error.startsWith(QString::fromUtf8(limit.message))) << error.toStdString();
        EXPECT_EQ(readAll(table), previous);
        EXPECT_EQ(QDir(m_out).entryList({QStringLiteral("VantreoGuide_uvlut_*")}, QDir::Files), QStringList());
    }
    if (geteuid() != 0) {
        // Only without root does a folder's write permission hold.
        QFile::setPermissions(m_out, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        EXPECT_FALSE(writeUvLutPackage(result, m_out, {}, nullptr, &error));
        EXPECT_TRUE(error.startsWith("Could not create temporary binary LUT file:")) << error.toStdString();
        QFile::setPermissions(m_out, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        EXPECT_EQ(readAll(table), previous);
    }
    // A folder that cannot be made is reported by name.
    QFile blocker(m_dir.filePath(QStringLiteral("blocker")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    EXPECT_FALSE(writeUvLutPackage(result, m_dir.filePath(QStringLiteral("blocker/sub")), {}, nullptr, &error));
    EXPECT_TRUE(error.startsWith("Could not create export folder:")) << error.toStdString();
}

} // namespace
