#include "VideoTestSupport.h"
#include "scene_gl/SceneGlTestSupport.h"

#include "scene/gl/SceneTimingLog.h"
#include "video/MovieTextureSource.h"
#include "video/VideoPlaceholder.h"
#include "video/VideoSourceRegistry.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

const QSize kView(640, 480);

class MovieSurfaceRender : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        s_dir = new QTemporaryDir;
        s_clipOk = makeQuadrantClip(path("quadrants.mp4"));
        QFile corrupt(path("corrupt.mp4"));
        if (corrupt.open(QIODevice::WriteOnly)) {
            QByteArray noise(8192, '\0');
            for (int i = 0; i < noise.size(); ++i)
                noise[i] = char((i * 7919 + 13) & 0xff);
            corrupt.write(noise);
        }
    }
    static void TearDownTestSuite()
    {
        delete s_dir;
        s_dir = nullptr;
    }
    static QString path(const char *name) { return s_dir->filePath(QString::fromLatin1(name)); }

    // A 4:3 plane filling the middle of a front view.
    static QVector<GuideObject> sceneWithTexture(const QString &file)
    {
        GuideObject plane = makePlane(1.0f, 0.75f);
        plane.texture_file_path = file;
        return {plane};
    }
    static QRgb pixelAt(const QImage &image, double wx, double wy)
    {
        QPointF p;
        frontCamera(1.0).worldToPixel(QVector3D(float(wx), float(wy), 0), kView, &p);
        return image.pixel(int(p.x()), int(p.y()));
    }
    static bool showsQuadrants(const QImage &image)
    {
        return hueOf(pixelAt(image, -0.5, 0.4)) == Hue::Red && hueOf(pixelAt(image, 0.5, 0.4)) == Hue::Blue
            && hueOf(pixelAt(image, -0.5, -0.4)) == Hue::Green && hueOf(pixelAt(image, 0.5, -0.4)) == Hue::Green;
    }
    // Renders until `done` holds for the picture or ten seconds pass; returns the last frame.
    static QImage renderUntil(OffscreenSceneRenderer &r, const QVector<GuideObject> &objects,
                              const std::function<bool(const QImage &)> &done)
    {
        QImage image;
        waitUntil([&] {
            image = r.render(objects, frontCamera(1.0), plainSettings(), kView);
            return done(image);
        });
        return image;
    }

    static inline QTemporaryDir *s_dir = nullptr;
    static inline bool s_clipOk = false;
};

} // namespace

TEST_F(MovieSurfaceRender, MovieFrameOnASurfaceKeepsItsCornersWhereTheClipHasThem)
{
    ASSERT_TRUE(s_clipOk) << "the ffmpeg tool could not make the clip";
    OffscreenSceneRenderer &r = sharedRenderer();
    VideoSourceRegistry sources;
    r.renderer().setTextureSourceResolver(sources.resolver());
    const QVector<GuideObject> objects = sceneWithTexture(path("quadrants.mp4"));
    sources.sync(objects);
    const QImage image = renderUntil(r, objects, showsQuadrants);
    EXPECT_TRUE(showsQuadrants(image)) << "red must stay top-left, blue top-right, green below";

    // The same picture as a still image lands the same way: the movie path adds no flip.
    auto still = std::make_shared<ImageTextureSource>(quadrantPicture(128, 96));
    r.renderer().setTextureSourceResolver(
        [still](const GuideObject &, int, bool projector) -> std::shared_ptr<SceneTextureSource> {
            return projector ? nullptr : still;
        });
    const QImage reference = r.render(objects, frontCamera(1.0), plainSettings(), kView);
    EXPECT_TRUE(showsQuadrants(reference));
    r.renderer().setTextureSourceResolver({});
}

TEST_F(MovieSurfaceRender, FramesKeepArrivingWhileTheMovieLoops)
{
    ASSERT_TRUE(s_clipOk);
    OffscreenSceneRenderer &r = sharedRenderer();
    VideoSourceRegistry sources;
    r.renderer().setTextureSourceResolver(sources.resolver());
    const QVector<GuideObject> objects = sceneWithTexture(path("quadrants.mp4"));
    sources.sync(objects);
    auto source = std::dynamic_pointer_cast<MovieTextureSource>(sources.sourceFor(objects[0], false));
    ASSERT_TRUE(source);
    // 30 frames at 30/s: more than 40 frames means the loop wrapped round and went on.
    EXPECT_TRUE(waitUntil([&] {
        r.render(objects, frontCamera(1.0), plainSettings(), kView);
        return source->framesReceived() > 40;
    }, 20000)) << "frames received: " << source->framesReceived();
    EXPECT_EQ(source->movie()->state(), MovieState::Ready);
    r.renderer().setTextureSourceResolver({});
}

TEST_F(MovieSurfaceRender, CorruptFileFailsAndShowsTheNoMoviePlaceholder)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    VideoSourceRegistry sources;
    r.renderer().setTextureSourceResolver(sources.resolver());
    const QVector<GuideObject> objects = sceneWithTexture(path("corrupt.mp4"));
    sources.sync(objects);
    ObjectVideoSource key = objectVideoSource(objects[0], false);
    ASSERT_EQ(key.kind, ObjectVideoSource::Movie);
    std::shared_ptr<MovieTexture> movie = sources.movie(key);
    ASSERT_TRUE(movie);
    ASSERT_TRUE(waitUntil([&] { return movie->state() == MovieState::Failed; }));
    const QImage shown = r.render(objects, frontCamera(1.0), plainSettings(), kView);

    auto placeholder = std::make_shared<ImageTextureSource>(
        videoPlaceholderImage(MovieTexture::placeholderTitle(), MovieTexture::placeholderDetail()));
    r.renderer().setTextureSourceResolver(
        [placeholder](const GuideObject &, int, bool projector) -> std::shared_ptr<SceneTextureSource> {
            return projector ? nullptr : placeholder;
        });
    const QImage expected = r.render(objects, frontCamera(1.0), plainSettings(), kView);
    EXPECT_EQ(differingPixels(shown, expected, 3), 0);
    // The placeholder's marked corner is top-left, its field dark.
    EXPECT_EQ(hueOf(pixelAt(shown, -0.98, 0.73)), Hue::Red);
    EXPECT_LT(qGreen(pixelAt(shown, 0.9, -0.6)), 60);
    EXPECT_TRUE(sources.statusText(objects[0], false).startsWith(MovieTexture::stateText(MovieState::Failed)));
    r.renderer().setTextureSourceResolver({});
}

TEST_F(MovieSurfaceRender, Nv12FrameWithOddWidthConvertsOnTheGpuWithoutFlip)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    ASSERT_TRUE(r.renderer().capabilities().nv12Geometry);
    // The hardware path's buffer: luma rows then interleaved chroma rows, `stride` bytes apart;
    // with an odd width the last chroma sample has no V byte of its own.
    const int w = 33, h = 24, stride = 33;
    const QImage picture = quadrantPicture(w, h);
    MovieFrame frame;
    frame.size = QSize(w, h);
    frame.stride = stride;
    frame.nv12 = QByteArray(stride * h + stride * (h / 2), char(0));
    auto limited = [](double v) { return char(std::lround(16.0 + v * 219.0)); };
    auto chroma = [](double v) { return char(std::lround(128.0 + v * 224.0)); };
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const QColor c = picture.pixelColor(x, y);
            const double luma = 0.2126 * c.redF() + 0.7152 * c.greenF() + 0.0722 * c.blueF();
            frame.nv12[y * stride + x] = limited(luma);
            if (x % 2 == 0 && y % 2 == 0) {
                const double cb = (c.blueF() - luma) / 1.8556, cr = (c.redF() - luma) / 1.5748;
                frame.nv12[stride * h + (y / 2) * stride + x] = chroma(cb);
                if (x + 1 < stride)
                    frame.nv12[stride * h + (y / 2) * stride + x + 1] = chroma(cr);
            }
        }
    }
    SceneTextureFrame packed;
    ASSERT_TRUE(MovieTextureSource::nv12Frame(frame, &packed));
    EXPECT_EQ(packed.luma.size(), w * h);
    EXPECT_EQ(packed.chroma.size(), ((w + 1) / 2) * 2 * (h / 2));
    const int chromaRow = (w + 1) / 2 * 2;
    for (int y : {0, h / 2 - 1}) {
        EXPECT_EQ(packed.chroma[y * chromaRow + chromaRow - 2], packed.chroma[y * chromaRow + chromaRow - 4]);
        EXPECT_EQ(packed.chroma[y * chromaRow + chromaRow - 1], packed.chroma[y * chromaRow + chromaRow - 3]);
    }
    auto source = std::make_shared<Nv12TextureSource>(w, h, packed.luma, packed.chroma);
    r.renderer().setTextureSourceResolver(
        [source](const GuideObject &, int, bool projector) -> std::shared_ptr<SceneTextureSource> {
            return projector ? nullptr : source;
        });
    const QImage image = r.render(sceneWithTexture(QString()), frontCamera(1.0), plainSettings(), kView);
    EXPECT_TRUE(showsQuadrants(image));
    r.renderer().setTextureSourceResolver({});
}

TEST_F(MovieSurfaceRender, NoMovieNoDecoderAndAShortNv12BufferIsRefused)
{
    VideoSourceRegistry sources;
    GuideObject plane = makePlane(1.0f, 1.0f);
    plane.texture_file_path = QStringLiteral("/no/such/picture.png");
    sources.sync({plane});
    EXPECT_EQ(sources.activeSourceCount(), 0) << "an image file is not decoded as a movie";
    EXPECT_TRUE(sources.statusText(plane, false).isEmpty());

    MovieFrame frame;
    frame.size = QSize(16, 16);
    frame.stride = 16;
    frame.nv12 = QByteArray(16 * 16, char(0)); // the chroma plane is missing
    SceneTextureFrame out;
    EXPECT_FALSE(MovieTextureSource::nv12Frame(frame, &out));
}

TEST_F(MovieSurfaceRender, RemovingOrChangingTheSourceEndsTheWorkerAtOnce)
{
    ASSERT_TRUE(s_clipOk);
    VideoSourceRegistry sources;
    QVector<GuideObject> objects = sceneWithTexture(path("quadrants.mp4"));
    objects.append(objects[0]); // two surfaces, one decoder
    sources.sync(objects);
    EXPECT_EQ(sources.activeSourceCount(), 1);
    std::shared_ptr<MovieTexture> movie = sources.movie(objectVideoSource(objects[0], false));
    ASSERT_TRUE(movie && movie->workerRunning());
    ASSERT_TRUE(waitUntil([&] { return movie->state() == MovieState::Ready; }));

    // Hardware decoding asked for: another decoder, the old one ends.
    objects[0].texture_movie_hwaccel = objects[1].texture_movie_hwaccel = true;
    QElapsedTimer timer;
    timer.start();
    sources.sync(objects);
    const qint64 switchMs = timer.elapsed();
    EXPECT_FALSE(movie->workerRunning());
    std::shared_ptr<MovieTexture> hardware = sources.movie(objectVideoSource(objects[0], false));
    ASSERT_TRUE(hardware && hardware->workerRunning());

    objects.clear();
    timer.restart();
    sources.sync(objects);
    const qint64 deleteMs = timer.elapsed();
    EXPECT_FALSE(hardware->workerRunning());
    EXPECT_EQ(sources.activeSourceCount(), 0);
    RecordProperty("switch_stop_ms", int(switchMs));
    RecordProperty("delete_stop_ms", int(deleteMs));
}

TEST_F(MovieSurfaceRender, ProjectorCastsItsMovieUnflipped)
{
    ASSERT_TRUE(s_clipOk);
    OffscreenSceneRenderer &r = sharedRenderer();
    VideoSourceRegistry sources;
    r.renderer().setTextureSourceResolver(sources.resolver());
    GuideObject projector = makeProjector({0, 0, 3.0f}, 0.0f);
    projector.projector_image_file_path = path("quadrants.mp4");
    const QVector<GuideObject> objects{makePlane(3.0f, 3.0f), projector};
    sources.sync(objects);
    SceneRenderSettings settings = plainSettings();
    settings.hiddenObjectIndex = 1;
    const ViewCamera camera = frontCamera(1.5);
    auto at = [&](const QImage &image, double wx, double wy) {
        QPointF p;
        camera.worldToPixel(QVector3D(float(wx), float(wy), 0), kView, &p);
        return hueOf(image.pixel(int(p.x()), int(p.y())));
    };
    // 3 m away at throw ratio 1 the picture is 3 m wide and 1.875 m high.
    QImage image;
    const bool cast = waitUntil([&] {
        image = r.render(objects, camera, settings, kView);
        return at(image, -0.75, 0.45) == Hue::Red && at(image, 0.75, 0.45) == Hue::Blue
            && at(image, 0.0, -0.45) == Hue::Green;
    });
    EXPECT_TRUE(cast) << "red top-left, blue top-right, green below, as the clip has them";
    r.renderer().setTextureSourceResolver({});
}

TEST_F(MovieSurfaceRender, TimingLogRecordsDecodePublishAndReceive)
{
    ASSERT_TRUE(s_clipOk);
    SceneTimingLog &log = SceneTimingLog::instance();
    const QString logPath = path("timing.log");
    ASSERT_TRUE(log.open(logPath));
    {
        OffscreenSceneRenderer &r = sharedRenderer();
        VideoSourceRegistry sources;
        r.renderer().setTextureSourceResolver(sources.resolver());
        const QVector<GuideObject> objects = sceneWithTexture(path("quadrants.mp4"));
        sources.sync(objects);
        auto source = std::dynamic_pointer_cast<MovieTextureSource>(sources.sourceFor(objects[0], false));
        ASSERT_TRUE(source);
        EXPECT_TRUE(waitUntil([&] {
            r.render(objects, frontCamera(1.0), plainSettings(), kView);
            return source->framesReceived() >= 3;
        }));
        r.renderer().setTextureSourceResolver({});
    }
    log.close();
    QFile file(logPath);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_EQ(lines.first(), QByteArray(SceneTimingLog::kHeader));
    auto count = [&](const char *event) {
        int n = 0;
        for (const QByteArray &line : lines) {
            const QList<QByteArray> fields = line.split('\t');
            n += fields.size() == 7 && fields.at(1) == event;
        }
        return n;
    };
    EXPECT_GE(count("read_sample"), 3);
    EXPECT_GE(count("publish_cpu"), 3);
    EXPECT_GE(count("receive_cpu"), 3);
    bool detail = false;
    for (const QByteArray &line : lines)
        detail = detail || (line.contains("\tread_sample\t") && line.endsWith("hasSample=1") && line.contains("flags="));
    EXPECT_TRUE(detail);
}
