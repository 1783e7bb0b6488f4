#include "scene/gl/SceneFramePacer.h"
#include "scene/gl/SceneTimingLog.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(SceneTimingLog, EnvironmentValueChoosesTheFile)
{
    EXPECT_TRUE(SceneTimingLog::pathForEnvironmentValue(QByteArray()).isEmpty());
    EXPECT_EQ(SceneTimingLog::pathForEnvironmentValue("1"), QStringLiteral("VantreoGuide_movie_timing.log"));
    EXPECT_EQ(SceneTimingLog::pathForEnvironmentValue("TrUe"), QStringLiteral("VantreoGuide_movie_timing.log"));
    EXPECT_EQ(SceneTimingLog::pathForEnvironmentValue("/tmp/x.log"), QStringLiteral("/tmp/x.log"));
    EXPECT_EQ(SceneTimingLog::pathForEnvironmentValue("yes"), QStringLiteral("yes"));
}

TEST(SceneFramePacer, OnePendingFrameAndTheTimingEvents)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("timing.log"));
    SceneTimingLog &log = SceneTimingLog::instance();
    ASSERT_TRUE(log.open(path));

    SceneFramePacer pacer;
    int frames = 0;
    QObject::connect(&pacer, &SceneFramePacer::frameDue, [&] {
        ++frames;
        pacer.beginFrame();
        pacer.afterUpdate();
        pacer.afterPresent();
        pacer.endFrame();
    });
    EXPECT_TRUE(pacer.requestFrame());
    EXPECT_FALSE(pacer.requestFrame()); // dropped: one is pending
    EXPECT_FALSE(pacer.requestFrame());
    QCoreApplication::processEvents();
    EXPECT_EQ(frames, 1);
    EXPECT_FALSE(pacer.isPending());

    pacer.setLoading(true);
    EXPECT_FALSE(pacer.requestFrame());
    pacer.setLoading(false);
    EXPECT_TRUE(pacer.requestFrame());
    pacer.setHidden(true); // hiding clears the pending frame
    EXPECT_FALSE(pacer.isPending());
    EXPECT_FALSE(pacer.requestFrame());
    QCoreApplication::processEvents();
    EXPECT_EQ(frames, 1);
    log.close();

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    ASSERT_GE(lines.size(), 8);
    EXPECT_EQ(lines[0], QByteArray("time_us\tevent\tthread\tserial\tsample_100ns\tvalue\tdetail"));
    QList<QByteArray> events;
    for (int i = 1; i < lines.size(); ++i) {
        if (lines[i].isEmpty())
            continue;
        const QList<QByteArray> fields = lines[i].split('\t');
        ASSERT_EQ(fields.size(), 7) << lines[i].constData();
        events.append(fields[1]);
    }
    const QList<QByteArray> expected{"render_queue", "render_queue_skip", "render_queue_skip", "render_begin",
                                     "render_after_update", "present_end", "render_end", "render_queue"};
    EXPECT_EQ(events, expected);
}
