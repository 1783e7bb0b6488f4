// The streaming project reader held to the document reader it replaced: every file, from
// both writers, whole or cut short, must give the same records or the same error text.
#include "DocumentProjectLoader.h"
#include "ProjectTestSupport.h"

#include "common/SettingsContainer.h"
#include "project/SceneJson.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

// Loads `bytes` (container or bare JSON) through both readers and expects one outcome.
void expectSameAsDocumentReader(const QByteArray &bytes, const char *what)
{
    SCOPED_TRACE(what);
    ProjectDocument streamed;
    QString streamedError;
    const bool streamedOk = loadProjectDocumentData(bytes, &streamed, &streamedError);

    QByteArray json;
    QString containerError;
    if (!vg::decodeSettingsContainer(bytes, &json, &containerError)) {
        EXPECT_FALSE(streamedOk);
        EXPECT_EQ(streamedError.toStdString(), containerError.toStdString());
        return;
    }
    ProjectDocument reference;
    QString referenceError;
    const bool referenceOk = loadProjectThroughDocument(json, &reference, &referenceError);
    EXPECT_EQ(streamedOk, referenceOk);
    EXPECT_EQ(streamedError.toStdString(), referenceError.toStdString());
    if (streamedOk && referenceOk)
        EXPECT_TRUE(streamed == reference);
}

QByteArray printedByDocument(const QByteArray &json, QJsonDocument::JsonFormat format)
{
    return QJsonDocument::fromJson(json).toJson(format);
}

// A file written the way older versions wrote it: one "three_d_view", "composite_tabs",
// retired key names, numbers and flags as strings, and names with escapes.
const char *const kOlderFile = R"({
  "format": "VantreoGuide", "version": 4, "active_guide": "1", "current_tab": 2.0,
  "guides": [
    {"projector_col": "3", "projector_rows": 2, "ratio_enable": "true", "even_number": 1,
     "fontsize": "1.5", "workpath": "C:\\work\\\u00e9t\u00e9", "display_res": "1",
     "colors": ["#ff0000", "nonsense", 7, " #00FF00 ", "#80112233"], "col": 2.5, "row": "4",
     "explain": "line\nbreak \"quoted\" \ud83d\ude00 \u0000 end", "image_objects": [
       {"type": "mask", "mask_shape": " Circle ", "fill_color": "#80ff0000", "width": "12.5"}, 3]},
    {"real_width": 1e3, "real_height": -0, "pixel_width": 1920.0, "scale": "2e-1"},
    "not a guide"
  ],
  "three_d_view": {
    "title": "\uD55C\uAE00 view", "camera_view_mode": 2, "camera": {"focus_distance": "7"},
    "objects": [
      {"guide_index": 10, "name": "P\u00e9", "lens_shift": 25, "translate_x": "1.25",
       "visible": "0", "projector_calibration": {"image_width": 99999, "matches": [
         {"target_index": 1, "world_x": "0.5", "enabled": 0}, "x"]},
       "curve_points": [{"anchor_x": 1.5}], "vantreo_view_mesh_settings": {"warp": 99}},
      {"guide_index": 1, "lens_shift": 10, "lens_shift_y": -5}
    ],
    "projector_camera_view_object_index": 1
  },
  "composite_tabs": [{"title": "Old canvas", "transform_mode": 9,
                      "objects": [{"object_type": "comment", "comment_text": "\t", "opacity": "0.5"}]}],
  "tabs": [{"kind": " composite ", "index": 0}, {"kind": "guide", "index": "1"}, {"kind": "", "index": 0}, 5]
})";

GuideObject namedObject(int i)
{
    GuideObject object;
    object.name = QStringLiteral("Object \"%1\" \u00e9").arg(i);
    object.translate_x = 0.013f * float(i);
    object.annotation_text = QStringLiteral("note %1").arg(i);
    return object;
}

// Several megabytes of text, so that the reader gives pages back while it reads.
ProjectDocument largeProject()
{
    ProjectDocument doc;
    for (int g = 0; g < 40; ++g) {
        GuideSettings guide;
        guide.explain = QStringLiteral("Guide %1 \u00e9").arg(g);
        for (int i = 0; i < 2560; ++i)
            guide.colors.append(QColor(QRgb((0x9e3779b9u * unsigned(i + 1) + unsigned(g)) & 0xffffffu)));
        doc.guides.append(guide);
    }
    Guide3DViewSettings view = Guide3DViewSettings::created();
    view.title = QStringLiteral("Large view \u00e9");
    view.vantreo_view_mesh_server_ip = QStringLiteral("10.0.0.9");
    GuideCameraView cameraView;
    cameraView.name = QStringLiteral("Saved camera");
    view.camera_views.append(cameraView);
    for (int i = 0; i < 1500; ++i)
        view.objects.append(namedObject(i));
    view.projector_camera_view_object_index = 1400;
    doc.views.append(view);
    doc.activeView = view;
    return doc;
}

} // namespace

TEST(StreamingProjectLoad, EveryTestFileAndTheSampleGiveWhatTheDocumentReaderGives)
{
    const QDir dir(QStringLiteral(VG_TEST_DATA_DIR "/project/malformed"));
    QStringList paths;
    for (const QString &name : dir.entryList(QDir::Files, QDir::Name))
        paths.append(dir.filePath(name));
    paths.append(QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs"));
    for (const QString &path : paths) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        expectSameAsDocumentReader(file.readAll(), path.toUtf8().constData());
    }
}

TEST(StreamingProjectLoad, OlderFileWithSingleViewCompositeTabsAndStringNumbersReadsTheSame)
{
    expectSameAsDocumentReader(kOlderFile, "older file");
    expectSameAsDocumentReader(printedByDocument(kOlderFile, QJsonDocument::Compact), "older file, compact");
    ProjectDocument doc;
    QString error;
    ASSERT_TRUE(loadProjectDocumentData(kOlderFile, &doc, &error)) << error.toStdString();
    ASSERT_EQ(doc.guides.size(), 2);
    EXPECT_EQ(doc.guides[0].projectorCount, 3);
    EXPECT_EQ(doc.guides[0].workPath, QString::fromUtf8("C:\\work\\\xc3\xa9t\xc3\xa9"));
    EXPECT_EQ(doc.guides[0].colors.size(), 3);
    ASSERT_EQ(doc.views.size(), 1);
    EXPECT_EQ(doc.views[0].title, QString::fromUtf8("\xed\x95\x9c\xea\xb8\x80 view"));
    ASSERT_EQ(doc.views[0].objects.size(), 2);
    EXPECT_EQ(doc.views[0].objects[0].lens_shift_y, 25.0f);
    EXPECT_EQ(doc.views[0].objects[1].lens_shift_y, -5.0f);
    ASSERT_EQ(doc.canvasTabs.size(), 1);
    EXPECT_EQ(doc.canvasTabs[0].title, QStringLiteral("Old canvas"));
    EXPECT_EQ(doc.tabs, (QList<ProjectTabEntry>{{QStringLiteral("canvas"), 0}, {QStringLiteral("guide"), 1}}));
    EXPECT_EQ(doc.currentTab, 2);
}

// Readers go by key, so the new writer's order and QJsonDocument's sorted order read alike,
// and each reader reads the other writer's text to the same records.
TEST(StreamingProjectLoad, EachWritersTextReadsBackThroughEitherReader)
{
    const ProjectDocument rich = makeRichProject();
    const QByteArray text = projectDocumentToJson(rich);
    for (const auto &[bytes, what] : {std::pair{text, "new writer"},
                                      std::pair{printedByDocument(text, QJsonDocument::Indented), "document, indented"},
                                      std::pair{printedByDocument(text, QJsonDocument::Compact), "document, compact"},
                                      std::pair{vg::encodeSettingsContainer(text), "container"}}) {
        expectSameAsDocumentReader(bytes, what);
        ProjectDocument back;
        QString error;
        ASSERT_TRUE(loadProjectDocumentData(bytes, &back, &error)) << what << error.toStdString();
        EXPECT_TRUE(back == rich) << what;
    }
}

TEST(StreamingProjectLoad, RepeatedAndMistypedRootAndViewKeysResolveAsInTheDocumentReader)
{
    const QByteArray guide = "{\"col\": 3}";
    const QByteArray view = "{\"title\": \"single\", \"objects\": [{\"name\": \"a\"}]}";
    const QList<QByteArray> cases = {
        "{\"guides\": [{\"col\": 1}], \"guides\": [" + guide + ", " + guide + "]}",
        "{\"guides\": [" + guide + "], \"guides\": 5}",
        "{\"canvas_tabs\": 3, \"composite_tabs\": [{\"title\": \"c\"}]}",
        "{\"canvas_tabs\": [], \"composite_tabs\": [{\"title\": \"c\"}]}",
        "{\"three_d_views\": [], \"three_d_view\": " + view + "}",
        "{\"three_d_view\": " + view + ", \"three_d_views\": [1, \"x\"]}",
        "{\"three_d_view\": " + view + ", \"three_d_views\": [" + view + "], \"three_d_view\": 4}",
        "{\"three_d_views\": [{\"objects\": [{\"name\": \"a\"}], \"objects\": 3, \"title\": \"t\"}]}",
        "{\"three_d_views\": [{\"objects\": [{\"name\": \"a\"}, 2, {\"name\": \"b\"}], "
        "\"projector_camera_view_object_index\": 1}]}",
        "{\"guides\": [" + guide + "], \"tabs\": {\"kind\": \"guide\"}, \"active_guide\": 7}",
        "{\"guides\": [], \"three_d_views\": [], \"canvas_tabs\": []}",
    };
    for (const QByteArray &json : cases)
        expectSameAsDocumentReader(json, json.constData());
}

TEST(StreamingProjectLoad, TextCutShortAnywhereFailsWithTheDocumentReadersText)
{
    const QByteArray text = projectDocumentToJson(makeRichProject());
    const QByteArray compact = printedByDocument(text, QJsonDocument::Compact);
    for (const QByteArray &whole : {text, compact}) {
        for (int step = 1; step < 80; ++step) {
            const QByteArray cut = whole.left(whole.size() * step / 80);
            expectSameAsDocumentReader(cut, QByteArray::number(cut.size()).constData());
        }
    }
    // A container whose text was cut before it was packed fails the same way.
    expectSameAsDocumentReader(vg::encodeSettingsContainer(text.left(text.size() / 2)), "packed cut text");
}

TEST(StreamingProjectLoad, HostileNestingInsideARecordIsRefusedWithAText)
{
    for (const int depth : {1100, 100000}) {
        const QByteArray json = "{\"guides\": [{\"image_objects\": " + QByteArray(depth, '[') + QByteArray(depth, ']')
                                + "}]}";
        expectSameAsDocumentReader(json, QByteArray::number(depth).constData());
        ProjectDocument doc;
        QString error;
        EXPECT_FALSE(loadProjectDocumentData(json, &doc, &error));
        EXPECT_EQ(error, QStringLiteral("JSON parse failed: too deeply nested document"));
    }
}

// Loading from a file gives the memory of text already read back while reading; strings of
// a view read after its objects, and an older single view met before the large lists, must
// still read whole.
TEST(StreamingProjectLoad, FileLoadGivingBackReadTextKeepsEveryLaterString)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const ProjectDocument large = largeProject();
    const QByteArray text = projectDocumentToJson(large);
    ASSERT_GT(text.size(), 8 << 20);

    // Sorted keys put the view's title and server address after its objects.
    const QByteArray sorted = printedByDocument(text, QJsonDocument::Indented);
    // The single view first, then megabytes of guides, and an empty view list.
    QByteArray singleFirst = "{\"three_d_view\": "
        + QJsonDocument(viewSettingsToJson(large.views[0])).toJson(QJsonDocument::Compact) + ", \"guides\": [";
    for (int g = 0; g < large.guides.size(); ++g)
        singleFirst += (g ? ", " : "") + QJsonDocument(guideSettingsToJson(large.guides[g])).toJson();
    singleFirst += "], \"three_d_views\": []}";

    for (const auto &[bytes, what] : {std::pair{text, "new writer"}, std::pair{sorted, "sorted keys"},
                                      std::pair{singleFirst, "single view first"},
                                      std::pair{vg::encodeSettingsContainer(sorted), "container"}}) {
        SCOPED_TRACE(what);
        const QString path = dir.filePath(QStringLiteral("large.vgs"));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(bytes), bytes.size());
        file.close();
        ProjectDocument fromFile;
        QString error;
        ASSERT_TRUE(loadProjectDocument(path, &fromFile, &error)) << error.toStdString();
        EXPECT_TRUE(fromFile.guides == large.guides);
        ASSERT_EQ(fromFile.views.size(), 1);
        EXPECT_TRUE(fromFile.views[0] == large.views[0]);
        EXPECT_EQ(fromFile.views[0].title, large.views[0].title);
        EXPECT_EQ(fromFile.views[0].vantreo_view_mesh_server_ip, QStringLiteral("10.0.0.9"));
        EXPECT_EQ(fromFile.views[0].camera_views.value(0).name, QStringLiteral("Saved camera"));

        // Bytes the caller hands in are the caller's: they are read, never given back.
        const QByteArray own(bytes.constData(), bytes.size());
        ProjectDocument fromData;
        ASSERT_TRUE(loadProjectDocumentData(own, &fromData, &error)) << error.toStdString();
        EXPECT_TRUE(fromData == fromFile);
        EXPECT_TRUE(own == bytes);
    }

    // A fault found after megabytes were given back still reads as the document reader's.
    const QByteArray cut = sorted.left(sorted.size() * 9 / 10);
    QFile file(dir.filePath(QStringLiteral("cut.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(cut), cut.size());
    file.close();
    ProjectDocument doc;
    QString error;
    QString referenceError;
    EXPECT_FALSE(loadProjectDocument(file.fileName(), &doc, &error));
    EXPECT_FALSE(loadProjectThroughDocument(cut, &doc, &referenceError));
    EXPECT_EQ(error.toStdString(), referenceError.toStdString());
}
