#include "VideoTestSupport.h"
#include "scene_gl/SceneGlTestSupport.h"
#include "NdiStandinClient.h"

#include "scene/ui/SceneViewSenders.h"
#include "video/NdiReceiver.h"
#include "video/NdiRuntime.h"
#include "video/NdiSender.h"
#include "video/SpoutSupport.h"
#include "video/VideoPlaceholder.h"
#include "video/VideoSourceRegistry.h"

#include <QLibrary>
#include <QOpenGLContext>
#include <QMutex>
#include <QStringList>

#include <vector>

namespace {

const QSize kView(640, 480);

// Collects warnings while alive.
class LogCapture
{
public:
    LogCapture()
    {
        s_lines.clear();
        m_previous = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &text) {
            QMutexLocker locker(&s_mutex);
            s_lines.append(text);
        });
    }
    ~LogCapture() { qInstallMessageHandler(m_previous); }
    QStringList lines() const
    {
        QMutexLocker locker(&s_mutex);
        return s_lines;
    }

private:
    QtMessageHandler m_previous;
    static inline QMutex s_mutex;
    static inline QStringList s_lines;
};

QVector<GuideObject> planeScene()
{
    GuideObject plane = makePlane(1.0f, 0.75f);
    return {plane};
}

QRgb pixelAt(const QImage &image, double wx, double wy)
{
    QPointF p;
    frontCamera(1.0).worldToPixel(QVector3D(float(wx), float(wy), 0), kView, &p);
    return image.pixel(int(p.x()), int(p.y()));
}

bool showsQuadrants(const QImage &image)
{
    return hueOf(pixelAt(image, -0.5, 0.4)) == Hue::Red && hueOf(pixelAt(image, 0.5, 0.4)) == Hue::Blue
        && hueOf(pixelAt(image, 0, -0.4)) == Hue::Green;
}

QImage renderWithPicture(OffscreenSceneRenderer &r, const QVector<GuideObject> &objects, const QImage &picture)
{
    auto source = std::make_shared<ImageTextureSource>(picture);
    r.renderer().setTextureSourceResolver(
        [source](const GuideObject &, int, bool projector) -> std::shared_ptr<SceneTextureSource> {
            return projector ? nullptr : source;
        });
    QImage image = r.render(objects, frontCamera(1.0), plainSettings(), kView);
    r.renderer().setTextureSourceResolver({});
    return image;
}

} // namespace

TEST(NdiRuntimeBinding, MissingRuntimeIsReportedOnceAndTheSameTextAfter)
{
    NdiRuntime runtime({QStringLiteral("/nonexistent/libndi.so.6"), QStringLiteral("/nonexistent/libndi.so.5")});
    QString first, second, sender;
    EXPECT_FALSE(runtime.receiverReady(&first));
    EXPECT_TRUE(first.startsWith(QStringLiteral("NDI receiver support is unavailable: "))) << first.toStdString();
    EXPECT_GT(first.size(), QStringLiteral("NDI receiver support is unavailable: ").size()) << "the loader's text";
    EXPECT_FALSE(runtime.receiverReady(&second));
    EXPECT_EQ(first, second);
    EXPECT_FALSE(runtime.senderReady(&sender));
    EXPECT_EQ(sender.mid(QStringLiteral("NDI sender support is unavailable:").size()),
              first.mid(QStringLiteral("NDI receiver support is unavailable:").size()));
    EXPECT_EQ(runtime.loadAttempts(), 1) << "later uses must not look for the library again";

    // A receiver over the missing runtime shows the placeholder and keeps the text.
    NdiReceiver receiver(runtime, QStringLiteral("Stage"));
    receiver.start();
    ASSERT_TRUE(waitUntil([&] { return !receiver.errorText().isEmpty(); }));
    EXPECT_EQ(receiver.errorText(), first);
    const SceneTextureFrame frame = receiver.currentFrame();
    ASSERT_TRUE(frame.isValid());
    EXPECT_EQ(frame.image, videoPlaceholderImage(ndiPlaceholderTitle(), ndiPlaceholderDetail()));
    EXPECT_EQ(runtime.loadAttempts(), 1);
}

TEST(NdiRuntimeBinding, MissingEntryPointsGiveTheirSidesMessages)
{
    NdiRuntime noCapture({QString::fromUtf8(VG_NDI_STANDIN_NO_CAPTURE)});
    QString error;
    EXPECT_FALSE(noCapture.receiverReady(&error));
    EXPECT_EQ(error, QStringLiteral("Required NDI entry points were not found."));
    EXPECT_TRUE(noCapture.senderReady(&error)) << error.toStdString();

    NdiRuntime noSend({QString::fromUtf8(VG_NDI_STANDIN_NO_SEND)});
    EXPECT_FALSE(noSend.senderReady(&error));
    EXPECT_EQ(error, QStringLiteral("Required NDI sender entry points were not found."));
    EXPECT_TRUE(noSend.receiverReady(&error)) << error.toStdString();
    NdiSender sender(noSend, NdiSender::viewSenderName(true, {}));
    EXPECT_FALSE(sender.open(&error));
    EXPECT_FALSE(sender.send(quadrantPicture(8, 8)));

    NdiRuntime initFails({QString::fromUtf8(VG_NDI_STANDIN_INIT_FAILS)});
    EXPECT_FALSE(initFails.receiverReady(&error));
    EXPECT_EQ(error, QStringLiteral("NDI runtime initialization failed."));
}

TEST(NdiRuntimeBinding, RuntimeDirectoryVariableIsTriedBeforeTheLoaderSearch)
{
    qputenv("NDI_RUNTIME_DIR_V6", VG_NDI_STANDIN_DIR);
    const QStringList candidates = NdiRuntime::defaultCandidates();
    qunsetenv("NDI_RUNTIME_DIR_V6");
    ASSERT_GE(candidates.size(), 3);
    EXPECT_EQ(candidates.at(0), QStringLiteral(VG_NDI_STANDIN_DIR "/libndi.so.6"));
    EXPECT_EQ(candidates.mid(candidates.size() - 2), QStringList({"libndi.so.6", "libndi.so.5"}));
    NdiRuntime runtime(candidates);
    QString error;
    EXPECT_TRUE(runtime.receiverReady(&error)) << error.toStdString();
    EXPECT_EQ(runtime.loadedFrom(), candidates.at(0));
}

TEST(NdiReceive, FramesFromTheNamedSourceReachTheRendererUnflipped)
{
    Standin standin(VG_NDI_STANDIN);
    ASSERT_TRUE(standin.ok()) << standin.library.errorString().toStdString();
    standin.sources({"Other (Media 2)", "Stage (Media 1)"}, {"10.0.0.2:5961", "10.0.0.1:5961"});
    standin.push(quadrantPicture(96, 72));
    NdiRuntime runtime({QString::fromUtf8(VG_NDI_STANDIN)});
    VideoSourceRegistry sources;
    sources.setNdiRuntime(&runtime);
    OffscreenSceneRenderer &r = sharedRenderer();
    r.renderer().setTextureSourceResolver(sources.resolver());
    QVector<GuideObject> objects = planeScene();
    objects[0].texture_ndi_source = QStringLiteral("Stage (Media 1)");
    sources.sync(objects);
    QImage image;
    EXPECT_TRUE(waitUntil([&] {
        image = r.render(objects, frontCamera(1.0), plainSettings(), kView);
        return showsQuadrants(image);
    }));
    EXPECT_TRUE(showsQuadrants(image));
    EXPECT_EQ(standin.text("create_source"), "Stage (Media 1)");
    EXPECT_EQ(standin.text("connect_url"), "10.0.0.1:5961");
    std::shared_ptr<NdiReceiver> receiver = sources.ndiReceiver(QStringLiteral("Stage (Media 1)"));
    ASSERT_TRUE(receiver);
    EXPECT_EQ(receiver->connectedUrl(), QStringLiteral("10.0.0.1:5961"));
    EXPECT_EQ(standin.callCount("outstanding"), 0) << "every captured frame is freed";

    // The source moves to another address: the receiver follows it.
    standin.sources({"Stage (Media 1)"}, {"10.0.0.7:5962"});
    EXPECT_TRUE(waitUntil([&] { return receiver->connectedUrl() == QStringLiteral("10.0.0.7:5962"); }));
    EXPECT_EQ(standin.text("connect_url"), "10.0.0.7:5962");
    EXPECT_EQ(standin.callCount("NDIlib_recv_create_v3"), 1) << "a reconnect keeps the receiver";

    objects.clear();
    sources.sync(objects);
    EXPECT_EQ(standin.callCount("NDIlib_recv_destroy"), 1);
    EXPECT_EQ(standin.callCount("NDIlib_find_destroy"), 1);
    r.renderer().setTextureSourceResolver({});
}

TEST(NdiReceive, UnknownSourceShowsTheNoNdiPlaceholder)
{
    Standin standin(VG_NDI_STANDIN);
    standin.sources({"Stage (Media 1)"}, {"10.0.0.1:5961"});
    NdiRuntime runtime({QString::fromUtf8(VG_NDI_STANDIN)});
    VideoSourceRegistry sources;
    sources.setNdiRuntime(&runtime);
    OffscreenSceneRenderer &r = sharedRenderer();
    r.renderer().setTextureSourceResolver(sources.resolver());
    QVector<GuideObject> objects = planeScene();
    objects[0].texture_ndi_source = QStringLiteral("Missing (Media 9)");
    sources.sync(objects);
    const QImage shown = r.render(objects, frontCamera(1.0), plainSettings(), kView);
    r.renderer().setTextureSourceResolver({});
    const QImage expected = renderWithPicture(r, objects, videoPlaceholderImage(ndiPlaceholderTitle(), ndiPlaceholderDetail()));
    EXPECT_EQ(differingPixels(shown, expected, 3), 0);
    EXPECT_EQ(hueOf(pixelAt(shown, -0.98, 0.73)), Hue::Red) << "the placeholder's marked corner is top-left";
    EXPECT_EQ(standin.callCount("NDIlib_recv_create_v3"), 0);
}

TEST(SpoutSource, ShowsNoSpoutAndSaysSpoutIsUnavailable)
{
    LogCapture log;
    VideoSourceRegistry sources;
    OffscreenSceneRenderer &r = sharedRenderer();
    r.renderer().setTextureSourceResolver(sources.resolver());
    QVector<GuideObject> objects = planeScene();
    objects[0].texture_spout_sender = QStringLiteral("Media Server Out");
    sources.sync(objects);
    const QImage shown = r.render(objects, frontCamera(1.0), plainSettings(), kView);
    r.renderer().setTextureSourceResolver({});
    const QImage expected =
        renderWithPicture(r, objects, videoPlaceholderImage(spoutPlaceholderTitle(), spoutPlaceholderDetail()));
    EXPECT_EQ(differingPixels(shown, expected, 3), 0);
    EXPECT_FALSE(spoutAvailable());
    EXPECT_TRUE(log.lines().join('\n').contains(QStringLiteral("Spout is not available on this system")));
    EXPECT_EQ(sources.statusText(objects[0], false), spoutUnavailableText());
}

TEST(NdiSend, ProjectorViewReachesTheStandinUnderItsName)
{
    Standin standin(VG_NDI_STANDIN);
    ASSERT_TRUE(standin.ok());
    NdiRuntime runtime({QString::fromUtf8(VG_NDI_STANDIN)});
    OffscreenSceneRenderer &r = sharedRenderer();
    auto still = std::make_shared<ImageTextureSource>(quadrantPicture(128, 96));
    r.renderer().setTextureSourceResolver(
        [still](const GuideObject &o, int, bool projector) -> std::shared_ptr<SceneTextureSource> {
            return !projector && !o.hasLens() ? still : nullptr;
        });
    // A projector 3 m in front of a wall filling its view, projecting nothing over the wall.
    GuideObject wall = makePlane(3.0f, 2.25f);
    GuideObject projector = makeProjector({0, 0, 3.0f}, 0.0f);
    projector.projection_visible = false;
    projector.projector_resolution_width = 1600;
    projector.projector_resolution_height = 1200;
    projector.projector_view_output_mode = 2;
    const QVector<GuideObject> objects{wall, projector};

    SceneViewSenders senders;
    senders.setNdiRuntime(&runtime);
    senders.setMaximumSide(320);
    r.context().makeCurrent();
    senders.publish(r.renderer(), r.context().context()->extraFunctions(), objects);
    EXPECT_EQ(standin.text("sender_name"), "VantreoGuide Projector View");
    EXPECT_EQ(standin.callCount("NDIlib_send_send_video_v2"), 1);
    const QImage sent = standin.sent();
    ASSERT_EQ(sent.size(), QSize(320, 240));
    EXPECT_EQ(hueOf(sent.pixel(80, 60)), Hue::Red) << "the view is sent upright and unmirrored";
    EXPECT_EQ(hueOf(sent.pixel(240, 60)), Hue::Blue);
    EXPECT_EQ(hueOf(sent.pixel(160, 200)), Hue::Green);

    // Output switched off: the sender closes.
    QVector<GuideObject> off = objects;
    off[1].projector_view_output_mode = 0;
    senders.publish(r.renderer(), r.context().context()->extraFunctions(), off);
    EXPECT_EQ(senders.openSenderCount(), 0);
    EXPECT_EQ(standin.callCount("NDIlib_send_destroy"), 1);
    r.renderer().setTextureSourceResolver({});
}
