#include "project/ProjectFile.h"

#include "common/SettingsContainer.h"
#include "project/CanvasJson.h"
#include "ProjectTestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>

namespace {

struct Loaded {
    bool ok = false;
    QString error;
    ProjectDocument doc;
};

Loaded loadData(const QByteArray &data)
{
    Loaded l;
    l.ok = loadProjectData(data, &l.doc.guides, &l.doc.activeGuide, &l.error, &l.doc.activeView, &l.doc.views,
                           &l.doc.canvasTabs, &l.doc.tabs, &l.doc.currentTab);
    return l;
}

int versionOf(const QByteArray &json)
{
    return parseObject(json).value(QStringLiteral("version")).toInt();
}

QList<GuideSettings> oneGuide()
{
    return {GuideSettings()};
}

CanvasTabSettings readCanvas(const char *json)
{
    return canvasTabFromJson(QJsonDocument::fromJson(json).object());
}

} // namespace

TEST(ProjectFile, JsonRoundTripIsByteIdentical)
{
    const ProjectDocument doc = makeRichProject();
    const QByteArray first = projectDocumentToJson(doc);
    const Loaded loaded = loadData(first);
    ASSERT_TRUE(loaded.ok) << loaded.error.toStdString();
    EXPECT_EQ(projectDocumentToJson(loaded.doc), first);
    EXPECT_EQ(loaded.doc.guides[0], doc.guides[0]);
    EXPECT_EQ(loaded.doc.guides[1], doc.guides[1]);
    EXPECT_EQ(loaded.doc.views, doc.views);
    EXPECT_EQ(loaded.doc.canvasTabs, doc.canvasTabs);
    EXPECT_EQ(loaded.doc.tabs, doc.tabs);
    EXPECT_EQ(loaded.doc.activeView, doc.activeView);
    EXPECT_EQ(loaded.doc, doc);
    EXPECT_TRUE(loaded.doc.activeView.present);
}

TEST(ProjectFile, FileRoundTripThroughTheContainer)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("p.vgs"));
    const ProjectDocument doc = makeRichProject();
    QString error;
    ASSERT_TRUE(saveProjectDocument(path, doc, &error)) << error.toStdString();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.startsWith(vg::settingsContainerMagic()));
    QByteArray json;
    ASSERT_TRUE(vg::decodeSettingsContainer(bytes, &json, &error));
    EXPECT_EQ(json, projectDocumentToJson(doc));

    ProjectDocument back;
    ASSERT_TRUE(loadProjectDocument(path, &back, &error)) << error.toStdString();
    EXPECT_EQ(back, doc);
}

TEST(ProjectFile, VersionFollowsContent)
{
    const QList<GuideSettings> guides = oneGuide();
    const QByteArray plain = projectToJson(guides, 0);
    EXPECT_EQ(versionOf(plain), 2);
    EXPECT_EQ(parseObject(plain).keys(), (QStringList{"active_guide", "format", "guides", "version"}));
    EXPECT_EQ(parseObject(plain).value(QStringLiteral("format")).toString(), QStringLiteral("VantreoGuide"));

    const Guide3DViewSettings view = Guide3DViewSettings::created();
    const Guide3DViewSettings absent;
    const QList<Guide3DViewSettings> views{view};
    const QList<Guide3DViewSettings> absentViews{absent};
    const QList<CanvasTabSettings> canvas{CanvasTabSettings()};
    const QList<ProjectTabEntry> tabs{{QStringLiteral("guide"), 0}};

    EXPECT_EQ(versionOf(projectToJson(guides, 0, &view)), 3);
    EXPECT_EQ(versionOf(projectToJson(guides, 0, &absent)), 2);
    EXPECT_EQ(versionOf(projectToJson(guides, 0, nullptr, &absentViews)), 2);
    EXPECT_FALSE(parseObject(projectToJson(guides, 0, nullptr, &absentViews)).contains(QStringLiteral("three_d_views")));
    EXPECT_EQ(versionOf(projectToJson(guides, 0, nullptr, nullptr, &canvas)), 4);
    EXPECT_EQ(versionOf(projectToJson(guides, 0, &view, nullptr, &canvas)), 4);
    EXPECT_EQ(versionOf(projectToJson(guides, 0, nullptr, &views, &canvas)), 5);
    EXPECT_EQ(versionOf(projectToJson(guides, 0, nullptr, &views)), 5);
    EXPECT_EQ(versionOf(projectToJson(guides, 0, nullptr, nullptr, nullptr, &tabs)), 6);
    EXPECT_EQ(versionOf(projectToJson(guides, 0, nullptr, nullptr, nullptr, nullptr, 0)), 7);
    EXPECT_EQ(versionOf(projectToJson(guides, 0, &view, &views, &canvas, &tabs, 3)), 7);
    EXPECT_EQ(versionOf(projectToJson({}, 0, nullptr, nullptr, nullptr, nullptr, 1)), 7);
}

TEST(ProjectFile, SingleViewIsTheActiveOrTheFirstListed)
{
    Guide3DViewSettings active = Guide3DViewSettings::created();
    active.title = QStringLiteral("active");
    Guide3DViewSettings listed = Guide3DViewSettings::created();
    listed.title = QStringLiteral("listed");
    const QList<Guide3DViewSettings> views{listed, Guide3DViewSettings()};
    const Guide3DViewSettings absent;
    auto singleTitle = [](const QByteArray &json) {
        return parseObject(json).value(QStringLiteral("three_d_view")).toObject().value(QStringLiteral("title")).toString();
    };
    EXPECT_EQ(singleTitle(projectToJson(oneGuide(), 0, &active, &views)), QStringLiteral("active"));
    EXPECT_EQ(singleTitle(projectToJson(oneGuide(), 0, &absent, &views)), QStringLiteral("listed"));
    EXPECT_EQ(singleTitle(projectToJson(oneGuide(), 0, nullptr, &views)), QStringLiteral("listed"));
    // Views without the presence flag are left out of the list.
    EXPECT_EQ(parseObject(projectToJson(oneGuide(), 0, nullptr, &views)).value(QStringLiteral("three_d_views")).toArray().size(), 1);
}

TEST(ProjectFile, ActiveGuideIsClampedOnBothSides)
{
    const QList<GuideSettings> three{GuideSettings(), GuideSettings(), GuideSettings()};
    EXPECT_EQ(parseObject(projectToJson(three, 9)).value(QStringLiteral("active_guide")).toInt(), 2);
    EXPECT_EQ(parseObject(projectToJson({}, 4)).value(QStringLiteral("active_guide")).toInt(), 0);

    const QByteArray base = R"({"guides": [{}, {}, {}], "active_guide": %1})";
    auto activeFor = [&](const char *value) {
        return loadData(QString::fromLatin1(base).arg(QLatin1String(value)).toUtf8()).doc.activeGuide;
    };
    EXPECT_EQ(activeFor("7"), 2);
    EXPECT_EQ(activeFor("-4"), 0);
    EXPECT_EQ(activeFor("\"1\""), 1);
    EXPECT_EQ(activeFor("1.5"), 0);
    int active = 5;
    EXPECT_TRUE(loadProjectData(R"({"active_guide": 3, "canvas_tabs": [{}]})", nullptr, &active));
    EXPECT_EQ(active, 0);
}

TEST(ProjectFile, TabEntriesWrittenAndRead)
{
    const QList<ProjectTabEntry> tabs{{QStringLiteral(" guide "), 0}, {QStringLiteral("  "), 1},
                                      {QStringLiteral("canvas"), -1}, {QStringLiteral("canvas"), 2}};
    const QJsonArray written = parseObject(projectToJson(oneGuide(), 0, nullptr, nullptr, nullptr, &tabs))
                                   .value(QStringLiteral("tabs")).toArray();
    ASSERT_EQ(written.size(), 2);
    EXPECT_EQ(written[0].toObject().value(QStringLiteral("kind")).toString(), QStringLiteral(" guide "));
    EXPECT_EQ(written[1].toObject().value(QStringLiteral("index")).toInt(), 2);
    // Only skipped entries: no "tabs" key and no version bump.
    const QList<ProjectTabEntry> none{{QString(), 0}};
    const QByteArray noneJson = projectToJson(oneGuide(), 0, nullptr, nullptr, nullptr, &none);
    EXPECT_EQ(versionOf(noneJson), 2);
    EXPECT_FALSE(parseObject(noneJson).contains(QStringLiteral("tabs")));

    const Loaded l = loadData(R"({"guides": [{}], "tabs": [{"kind": " Composite ", "index": 0},
        {"kind": "guide", "index": "1"}, {"kind": "guide"}, {"kind": "", "index": 2}, {"kind": 3, "index": 1},
        7, {"kind": " GUIDE\t", "index": 4}]})");
    ASSERT_TRUE(l.ok);
    EXPECT_EQ(l.doc.tabs, (QList<ProjectTabEntry>{{QStringLiteral("canvas"), 0}, {QStringLiteral("guide"), 1},
                                                  {QStringLiteral("GUIDE"), 4}}));
}

TEST(ProjectFile, TabListIsKeptWhenTheFileHasNone)
{
    QList<ProjectTabEntry> tabs{{QStringLiteral("guide"), 3}};
    int current = 9;
    ASSERT_TRUE(loadProjectData(R"({"guides": [{}]})", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                &tabs, &current));
    EXPECT_EQ(tabs.size(), 1);
    EXPECT_EQ(current, -1);
    ASSERT_TRUE(loadProjectData(R"({"guides": [{}], "tabs": []})", nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr, &tabs, &current));
    EXPECT_TRUE(tabs.isEmpty());
}

TEST(ProjectFile, VersionAndFormatAreNotChecked)
{
    for (const char *json : {R"({"format": "Other", "version": 99, "guides": [{}]})",
                             R"({"version": "x", "guides": [{}]})", R"({"format": 1, "guides": [{}]})",
                             R"({"guides": [{}]})"}) {
        const Loaded l = loadData(json);
        EXPECT_TRUE(l.ok) << json;
        EXPECT_EQ(l.doc.guides.size(), 1);
    }
}

TEST(ProjectFile, ViewArrayWinsOverSingleView)
{
    const Loaded both = loadData(R"({"three_d_views": [{"title": "a"}, 4, {"title": "b"}],
                                     "three_d_view": {"title": "single"}})");
    ASSERT_TRUE(both.ok);
    ASSERT_EQ(both.doc.views.size(), 2);
    EXPECT_EQ(both.doc.views[1].title, QStringLiteral("b"));
    EXPECT_EQ(both.doc.activeView.title, QStringLiteral("a"));

    const Loaded fallback = loadData(R"({"three_d_views": [1, 2], "three_d_view": {"title": "single"}})");
    ASSERT_TRUE(fallback.ok);
    ASSERT_EQ(fallback.doc.views.size(), 1);
    EXPECT_EQ(fallback.doc.activeView.title, QStringLiteral("single"));
    EXPECT_TRUE(fallback.doc.activeView.present);

    const Loaded none = loadData(R"({"guides": [{}], "three_d_view": [1]})");
    ASSERT_TRUE(none.ok);
    EXPECT_TRUE(none.doc.views.isEmpty());
    EXPECT_EQ(none.doc.activeView, Guide3DViewSettings());
    EXPECT_FALSE(none.doc.activeView.present);
}

TEST(ProjectFile, OlderCanvasKey)
{
    const Loaded older = loadData(R"({"composite_tabs": [{"title": "c"}, "x"]})");
    ASSERT_TRUE(older.ok);
    ASSERT_EQ(older.doc.canvasTabs.size(), 1);
    EXPECT_EQ(older.doc.canvasTabs[0].title, QStringLiteral("c"));
    // The current key wins whenever it is an array, even an empty one.
    const Loaded both = loadData(R"({"guides": [{}], "canvas_tabs": [], "composite_tabs": [{}]})");
    EXPECT_TRUE(both.doc.canvasTabs.isEmpty());
    const Loaded wrong = loadData(R"({"canvas_tabs": {}, "composite_tabs": [{}]})");
    EXPECT_EQ(wrong.doc.canvasTabs.size(), 1);
}

TEST(ProjectFile, GuidesSkipNonObjects)
{
    const Loaded l = loadData(R"({"guides": [1, {"real_width": 5000}, null, "x", {}], "active_guide": 1})");
    ASSERT_TRUE(l.ok);
    ASSERT_EQ(l.doc.guides.size(), 2);
    EXPECT_EQ(l.doc.activeGuide, 1);
    EXPECT_FALSE(loadData(R"({"guides": {"a": {}}})").ok);
}

TEST(ProjectFile, LoadFailures)
{
    const QString noTabs = QStringLiteral("JSON contains no guide, canvas, or 3D view tabs.");
    EXPECT_EQ(loadData("{}").error, noTabs);
    EXPECT_EQ(loadData(R"({"guides": [], "three_d_views": [], "canvas_tabs": [1], "tabs": [{"kind": "guide", "index": 0}]})").error, noTabs);
    EXPECT_EQ(loadData("[1, 2]").error, QStringLiteral("JSON root must be an object."));
    EXPECT_EQ(loadData("[]").error, QStringLiteral("JSON root must be an object."));
    const Loaded broken = loadData("{\"guides\": [");
    EXPECT_FALSE(broken.ok);
    EXPECT_TRUE(broken.error.startsWith(QStringLiteral("JSON parse failed: "))) << broken.error.toStdString();
    EXPECT_GT(broken.error.size(), QStringLiteral("JSON parse failed: ").size());
    // Short inputs that cannot be a container are taken as JSON text.
    EXPECT_TRUE(loadData("01234567890").error.startsWith(QStringLiteral("JSON parse failed: ")));
    EXPECT_TRUE(loadData("0123456789ab").error.startsWith(QStringLiteral("JSON parse failed: ")));
    EXPECT_TRUE(loadData(QByteArray()).error.startsWith(QStringLiteral("JSON parse failed: ")));

    // The container's own texts stand.
    const QByteArray magic = vg::settingsContainerMagic();
    EXPECT_EQ(loadData(magic).error, QStringLiteral("Binary settings file is truncated."));
    EXPECT_EQ(loadData(magic + QByteArray("\x02\0\0\0", 4) + qCompress("{}")).error,
              QStringLiteral("Unsupported binary settings version: 2"));
    EXPECT_EQ(loadData(magic + QByteArray("\x01\0\0\0", 4)).error,
              QStringLiteral("Binary settings payload could not be decompressed."));
}

TEST(ProjectFile, NoTabsStillReplacesOutputs)
{
    QList<GuideSettings> guides = oneGuide();
    QList<CanvasTabSettings> canvas{CanvasTabSettings()};
    int active = 3;
    QString error;
    EXPECT_FALSE(loadProjectData(R"({"x": 1})", &guides, &active, &error, nullptr, nullptr, &canvas));
    EXPECT_TRUE(guides.isEmpty());
    EXPECT_TRUE(canvas.isEmpty());
    EXPECT_EQ(active, 0);
    // A parse failure leaves them alone.
    guides = oneGuide();
    EXPECT_FALSE(loadProjectData("{", &guides, &active, &error));
    EXPECT_EQ(guides.size(), 1);
}

TEST(ProjectFile, BareJsonFileLoads)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bare.json"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(projectDocumentToJson(makeRichProject()));
    file.close();
    ProjectDocument doc;
    QString error;
    ASSERT_TRUE(loadProjectDocument(path, &doc, &error)) << error.toStdString();
    EXPECT_EQ(doc, makeRichProject());
}

TEST(ProjectFile, MissingFileReportsTheFileError)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("missing.vgs"));
    QFile probe(path);
    probe.open(QIODevice::ReadOnly);
    QList<GuideSettings> guides;
    int active = 0;
    QString error;
    EXPECT_FALSE(loadProjectFile(path, &guides, &active, &error));
    EXPECT_EQ(error, probe.errorString());
    EXPECT_FALSE(error.isEmpty());
    // Every output may be absent.
    EXPECT_FALSE(loadProjectFile(path, nullptr, nullptr));
}

TEST(ProjectFile, AllOutputsOptional)
{
    const QByteArray json = projectDocumentToJson(makeRichProject());
    EXPECT_TRUE(loadProjectData(json, nullptr, nullptr));
    Guide3DViewSettings view;
    EXPECT_TRUE(loadProjectData(json, nullptr, nullptr, nullptr, &view));
    EXPECT_EQ(view.title, QStringLiteral("Stage"));
}

TEST(CanvasJson, TolerantReading)
{
    EXPECT_TRUE(readCanvas(R"({"grid_visible": "TRUE"})").grid_visible);
    EXPECT_FALSE(readCanvas(R"({"grid_visible": "yes"})").grid_visible);
    EXPECT_TRUE(readCanvas(R"({"grid_visible": 2})").grid_visible);
    EXPECT_FALSE(readCanvas(R"({"grid_visible": 0.5})").grid_visible);
    EXPECT_TRUE(readCanvas(R"({"grid_visible": " 1 "})").grid_visible);
    EXPECT_DOUBLE_EQ(readCanvas(R"({"view_zoom": "1.5"})").view_zoom, 1.5);
    EXPECT_DOUBLE_EQ(readCanvas(R"({"view_zoom": "abc"})").view_zoom, 180.0);
    EXPECT_DOUBLE_EQ(readCanvas(R"({"view_zoom": "1.5x"})").view_zoom, 180.0);
    EXPECT_EQ(readCanvas(R"({"selected_guide_index": 2.5})").selected_guide_index, -1);
    EXPECT_EQ(readCanvas(R"({"selected_guide_index": 3e10})").selected_guide_index, -1);
    EXPECT_EQ(readCanvas(R"({"selected_guide_index": "2"})").selected_guide_index, 2);
    EXPECT_EQ(readCanvas(R"({"title": 4, "document_custom_title": []})").title, QString());
    EXPECT_EQ(readCanvas(R"({"transform_mode": 9})").transform_mode, 3);
    EXPECT_EQ(readCanvas(R"({"transform_mode": -9})").transform_mode, 0);
    EXPECT_EQ(readCanvas(R"({"background_color": "nope"})").background_color, QColor(45, 45, 45));
    EXPECT_EQ(readCanvas(R"({"background_color": "#0a0B0c"})").background_color, QColor(10, 11, 12));
    EXPECT_EQ(readCanvas(R"({"document_title_background_color": "blue"})").document_title_background_color,
              QColor(0, 0, 255));
    EXPECT_EQ(readCanvas(R"({"objects": [1, {"name": "a"}, []]})").objects.size(), 1);
    EXPECT_TRUE(readCanvas(R"({"objects": "a"})").objects.isEmpty());
    EXPECT_EQ(readCanvas("{}"), CanvasTabSettings());
}

TEST(CanvasJson, TabKeysAndClampOnWriting)
{
    CanvasTabSettings tab;
    tab.transform_mode = 7;
    tab.background_color = QColor(0xAA, 0xBB, 0xCC, 0x10);
    const QJsonObject json = canvasTabToJson(tab);
    EXPECT_EQ(json.size(), 18);
    EXPECT_EQ(json.value(QStringLiteral("transform_mode")).toInt(), 3);
    EXPECT_EQ(json.value(QStringLiteral("background_color")).toString(), QStringLiteral("#aabbcc"));
    EXPECT_EQ(json.value(QStringLiteral("document_title_background_color")).toString(), QStringLiteral("#5b5b5b"));
    EXPECT_TRUE(json.value(QStringLiteral("objects")).isArray());
}

TEST(CanvasJson, ObjectKeysDependOnType)
{
    CanvasObjectSettings comment;
    comment.object_type = QStringLiteral("Comment");
    comment.comment_text = QStringLiteral("note");
    comment.comment_font_scale = 2.0;
    comment.text_box_text = QStringLiteral("not written");
    const QJsonObject json = canvasObjectToJson(comment);
    EXPECT_TRUE(json.contains(QStringLiteral("comment_text")));
    EXPECT_FALSE(json.contains(QStringLiteral("text_box_text")));
    EXPECT_FALSE(json.contains(QStringLiteral("text_box_color")));
    EXPECT_EQ(json.size(), 1 + 16 + 5);
    const CanvasObjectSettings back = canvasObjectFromJson(json);
    EXPECT_TRUE(back.isComment());
    EXPECT_EQ(back.comment_text, QStringLiteral("note"));
    EXPECT_DOUBLE_EQ(back.comment_font_scale, 2.0);
    EXPECT_EQ(back.text_box_text, QString());
    EXPECT_DOUBLE_EQ(back.text_box_font_scale, 5.0);

    CanvasObjectSettings text;
    text.object_type = QStringLiteral("TEXT_BOX");
    const QJsonObject textJson = canvasObjectToJson(text);
    EXPECT_EQ(textJson.value(QStringLiteral("text_box_color")).toString(), QStringLiteral("#ffffff"));
    EXPECT_FALSE(textJson.contains(QStringLiteral("comment_text")));
    EXPECT_EQ(textJson.size(), 1 + 16 + 7);

    CanvasObjectSettings image;
    const QJsonObject imageJson = canvasObjectToJson(image);
    EXPECT_FALSE(imageJson.contains(QStringLiteral("object_type")));
    EXPECT_EQ(imageJson.size(), 16);
    EXPECT_TRUE(image.isPicture());
    image.guide_index = 0;
    EXPECT_TRUE(image.isGuideImage());

    // Every key is read whatever the type.
    const CanvasObjectSettings mixed = canvasObjectFromJson(QJsonDocument::fromJson(
        R"({"text_box_text": "t", "comment_text": "c", "text_box_color": "bad", "text_box_alignment": "2"})").object());
    EXPECT_EQ(mixed.text_box_text, QStringLiteral("t"));
    EXPECT_EQ(mixed.comment_text, QStringLiteral("c"));
    EXPECT_EQ(mixed.text_box_color, QColor(255, 255, 255));
    EXPECT_EQ(mixed.text_box_alignment, 2);
}

TEST(ProjectFile, GuidesGoThroughTheGuideReaderWithOlderKeys)
{
    const Loaded l = loadData(R"({"guides": [{"projector_rows": 3}, {"projector_row": "2"}, {"real_width": "abc"}]})");
    ASSERT_TRUE(l.ok);
    ASSERT_EQ(l.doc.guides.size(), 3);
    EXPECT_EQ(l.doc.guides[0].projectorCountY, 3);
    EXPECT_EQ(l.doc.guides[1].projectorCountY, 2);
    EXPECT_EQ(l.doc.guides[2].realWidth, GuideSettings().realWidth);
    // Written guides are exactly the guide writer's objects.
    const QJsonArray written = parseObject(projectDocumentToJson(l.doc)).value(QStringLiteral("guides")).toArray();
    ASSERT_EQ(written.size(), 3);
    EXPECT_EQ(written[0].toObject(), guideSettingsToJson(l.doc.guides[0]));
}

TEST(ProjectFile, FilesOfEveryVersionLoad)
{
    const ProjectDocument rich = makeRichProject();
    const QList<GuideSettings> &guides = rich.guides;
    const Guide3DViewSettings &view = rich.activeView;
    struct Case {
        int version;
        QByteArray json;
        int views, canvasTabs, tabs, currentTab;
    };
    const QList<Case> cases = {
        {2, projectToJson(guides, 1), 0, 0, 0, -1},
        {3, projectToJson(guides, 1, &view), 1, 0, 0, -1},
        {4, projectToJson(guides, 1, &view, nullptr, &rich.canvasTabs), 1, 2, 0, -1},
        {5, projectToJson(guides, 1, nullptr, &rich.views, &rich.canvasTabs), 2, 2, 0, -1},
        {6, projectToJson(guides, 1, nullptr, &rich.views, nullptr, &rich.tabs), 2, 0, 4, -1},
        {7, projectDocumentToJson(rich), 2, 2, 4, 2},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.version);
        EXPECT_EQ(versionOf(c.json), c.version);
        const Loaded l = loadData(c.json);
        ASSERT_TRUE(l.ok) << l.error.toStdString();
        EXPECT_EQ(l.doc.guides, guides);
        EXPECT_EQ(l.doc.activeGuide, 1);
        EXPECT_EQ(l.doc.views.size(), c.views);
        EXPECT_EQ(l.doc.activeView.present, c.views > 0);
        if (c.views > 0) {
            EXPECT_EQ(l.doc.activeView, view);
        }
        EXPECT_EQ(l.doc.canvasTabs.size(), c.canvasTabs);
        EXPECT_EQ(l.doc.tabs.size(), c.tabs);
        EXPECT_EQ(l.doc.currentTab, c.currentTab);
        // Each reads back to the text it came from.
        EXPECT_EQ(projectToJson(l.doc.guides, l.doc.activeGuide, c.views == 1 ? &l.doc.activeView : nullptr,
                                c.views == 2 ? &l.doc.views : nullptr, c.canvasTabs ? &l.doc.canvasTabs : nullptr,
                                c.tabs ? &l.doc.tabs : nullptr, l.doc.currentTab),
                  c.json);
    }
}

TEST(ProjectFile, EndlessDeviceDoesNotHang)
{
    if (!QFile::exists(QStringLiteral("/dev/zero")))
        GTEST_SKIP() << "no /dev/zero here";
    QString error;
    QList<GuideSettings> guides;
    int active = 0;
    EXPECT_FALSE(loadProjectFile(QStringLiteral("/dev/zero"), &guides, &active, &error));
    EXPECT_EQ(error, QStringLiteral("The file is too large to be a project."));
}
