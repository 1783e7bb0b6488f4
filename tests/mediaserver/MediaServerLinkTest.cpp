#include "exchange/ExportImageSource.h"
#include "exchange/UvLutWriter.h"
#include "net/mediaserver/MediaServerLink.h"
#include "net/mediaserver/UvLutUpdate.h"
#include "tools/mediaserver-standin/MediaServerStandIn.h"

#include "exchange/UvLutTestScenes.h"

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace vg::mediaserver;

namespace {

class MediaServerLink : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        QString error;
        ASSERT_TRUE(m_standIn.start(&error)) << error.toStdString();
    }

    UploadOptions uploadOptions() const
    {
        UploadOptions o;
        o.serverAddress = QStringLiteral("127.0.0.1");
        o.controlPort = const_cast<MediaServerStandInThread &>(m_standIn).server().controlPort();
        o.dataPort = const_cast<MediaServerStandInThread &>(m_standIn).server().dataPort();
        return o;
    }

    QString writeFile(const QString &name, const QByteArray &bytes)
    {
        const QString path = m_dir.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    // Waits (processing events) until the stand-in has recorded `count` datagrams.
    QList<QByteArray> datagrams(int count)
    {
        waitWhileProcessingEvents([&] { return m_standIn.server().datagrams().size() >= count; }, 3000);
        return m_standIn.server().datagrams();
    }

    vg::exchange::ExportImageSource m_images;
    QTemporaryDir m_dir;
    MediaServerStandInThread m_standIn;
};

TEST_F(MediaServerLink, CommandsAreCompactJsonInKeyOrderWithClampedWarpEditor)
{
    EXPECT_EQ(mediaServerCommandDatagram("uvlut_update", "10.0.0.5", 3),
              QByteArray(R"({"command":"uvlut_update","target_ip":"10.0.0.5","warpeditor_index":3})"));
    EXPECT_EQ(mediaServerCommandDatagram("viewmesh_update", "127.0.0.1", 0),
              QByteArray(R"({"command":"viewmesh_update","target_ip":"127.0.0.1","warpeditor_index":1})"));
    EXPECT_EQ(mediaServerCommandDatagram("uvlut", "127.0.0.1", 9, false),
              QByteArray(R"({"command":"uvlut","target_ip":"127.0.0.1","warpeditor_index":8,"enabled":false})"));
    EXPECT_EQ(mediaServerCommandDatagram("uvlut", "127.0.0.1", 2, true),
              QByteArray(R"({"command":"uvlut","target_ip":"127.0.0.1","warpeditor_index":2,"enabled":true})"));

    // A blank server address goes to 127.0.0.1, where the stand-in listens (and only there).
    const quint16 port = m_standIn.server().udpPort();
    QString error;
    const QByteArray datagram = mediaServerCommandDatagram("uvlut_update", "192.168.1.20", 9);
    ASSERT_TRUE(sendMediaServerCommand("   ", port, datagram, LinkCaller::MainWindow, &error)) << error.toStdString();
    ASSERT_TRUE(sendMediaServerCommand("", port, datagram, LinkCaller::MainWindow, &error)) << error.toStdString();
    const QList<QByteArray> received = datagrams(2);
    ASSERT_EQ(received.size(), 2);
    EXPECT_EQ(received[0], R"({"command":"uvlut_update","target_ip":"192.168.1.20","warpeditor_index":8})");

    EXPECT_FALSE(sendMediaServerCommand("10.0.0.300", port, datagram, LinkCaller::MainWindow, &error));
    EXPECT_EQ(error, "Invalid Vantreo Server IP: 10.0.0.300");
    EXPECT_FALSE(sendMediaServerCommand(" server ", port, datagram, LinkCaller::CalibrationDialog, &error));
    EXPECT_EQ(error, "Vantreo Server invalid IP: server");
}

TEST_F(MediaServerLink, HeaderOf65535BytesIsSentAnd65536IsRefused)
{
    // Empty files with long names until the header JSON is exactly 65535 bytes.
    QStringList names;
    QList<qint64> sizes;
    QByteArray header;
    QString error;
    const auto jsonSize = [&](const QStringList &n) {
        QByteArray h;
        fileTransferHeader(n, QList<qint64>(n.size(), 0), &h, nullptr);
        return h.size() - 2;
    };
    while (jsonSize(names + QStringList{QString(200, 'a')}) <= 65535 - 210)
        names.append(QStringLiteral("%1_").arg(names.size(), 4, 10, QLatin1Char('0')) + QString(195, 'n'));
    // Each further file costs its name + 7 bytes (quotes, comma, "0", comma); two fill the rest
    // with names short enough for the file system.
    const int remaining = 65535 - jsonSize(names) - 14;
    names.append(QString(remaining / 2, 'y'));
    names.append(QString(remaining - remaining / 2, 'z'));
    ASSERT_EQ(jsonSize(names), 65535);
    ASSERT_TRUE(fileTransferHeader(names, QList<qint64>(names.size(), 0), &header, &error));
    EXPECT_EQ(quint8(header[0]), 0xFF);
    EXPECT_EQ(quint8(header[1]), 0xFF);

    QStringList longer = names;
    longer.last().append('z');
    EXPECT_FALSE(fileTransferHeader(longer, QList<qint64>(longer.size(), 0), &header, &error));
    EXPECT_EQ(error, "File transfer header is too large.");

    QStringList paths;
    for (const QString &name : names)
        paths.append(writeFile(name, {}));
    QString reply;
    ASSERT_TRUE(uploadFilesToMediaServer(paths, uploadOptions(), &reply, &error)) << error.toStdString();
    EXPECT_EQ(m_standIn.server().lastHeader().size(), 65535);
    EXPECT_EQ(m_standIn.server().files().size(), names.size());

    QStringList longerPaths = paths;
    longerPaths.last() = writeFile(longer.last(), {});
    EXPECT_FALSE(uploadFilesToMediaServer(longerPaths, uploadOptions(), &reply, &error));
    EXPECT_EQ(error, "File transfer header is too large.");
}

TEST_F(MediaServerLink, FiftyMegabyteUploadArrivesByteIdentical)
{
    QByteArray payload(50 * 1000 * 1000, Qt::Uninitialized);
    QRandomGenerator random(1234);
    random.fillRange(reinterpret_cast<quint32 *>(payload.data()), payload.size() / 4);
    const QString big = writeFile("display_2.uvlut", payload);
    const QString small = writeFile("notes.txt", "hello");
    QString reply, error;
    ASSERT_TRUE(uploadFilesToMediaServer({big, small}, uploadOptions(), &reply, &error)) << error.toStdString();
    EXPECT_TRUE(reply.contains("\"allfinish\""));
    EXPECT_EQ(reply.count("\"finish\""), 2);
    const QList<MediaServerStandIn::ReceivedFile> files = m_standIn.server().files();
    ASSERT_EQ(files.size(), 2);
    EXPECT_EQ(files[0].name, "display_2.uvlut");
    EXPECT_EQ(files[0].size, payload.size());
    EXPECT_EQ(QCryptographicHash::hash(files[0].bytes, QCryptographicHash::Sha256),
              QCryptographicHash::hash(payload, QCryptographicHash::Sha256));
    EXPECT_EQ(files[1].bytes, "hello");
    EXPECT_EQ(m_standIn.server().controlRequests(),
              QList<QByteArray>{R"({"command":"service_upload","savepath":"uvlut"})"});
    EXPECT_EQ(m_standIn.server().lastHeader(),
              QByteArray(R"({"files":["display_2.uvlut","notes.txt"],"size":["50000000","5"]})"));
}

TEST_F(MediaServerLink, UnansweredOrUnconfirmedUploadsFailWithinTheWait)
{
    const QString file = writeFile("a.uvlut", "data");
    QString reply, error;

    m_standIn.server().setReply(MediaServerStandIn::Reply::Silent);
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(uploadFilesToMediaServer({file}, uploadOptions(), &reply, &error));
    EXPECT_EQ(error, "File upload finished, but MainService did not return an allfinish response.");
    EXPECT_GE(timer.elapsed(), kReplyWaitMs - 100);
    EXPECT_LT(timer.elapsed(), kReplyWaitMs + 10000);   // bounded, with room for a loaded machine

    m_standIn.server().setReply(MediaServerStandIn::Reply::FinishOnly);
    UploadOptions quick = uploadOptions();
    quick.replyWaitMs = 500;
    EXPECT_FALSE(uploadFilesToMediaServer({file}, quick, &reply, &error));
    EXPECT_TRUE(error.startsWith("MainService response did not confirm completion:\n{\"action\":\"finish\""))
        << error.toStdString();

    EXPECT_FALSE(uploadFilesToMediaServer({m_dir.filePath("missing.uvlut")}, quick, &reply, &error));
    EXPECT_EQ(error, "File does not exist:\n" + m_dir.filePath("missing.uvlut"));

    // Nobody listening: the socket's own error, promptly.
    UploadOptions closed = quick;
    closed.controlPort = 1;
    timer.restart();
    EXPECT_FALSE(uploadFilesToMediaServer({file}, closed, &reply, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_LT(timer.elapsed(), kConnectWaitMs + 1000);
}

TEST_F(MediaServerLink, UpdateLutUploadsTheTableAndAnnouncesIt)
{
    const QString image = writeAsymmetricImage(m_dir.filePath("source.png"));
    vg::exchange::UvLutOptions options{1, 2, vg::exchange::UvLutMethod::CpuRaster};
    vg::exchange::UvLutResult result;
    QString error;
    ASSERT_TRUE(vg::exchange::computeUvLut(lutWallScene(image), m_images, options, {}, &result, &error));

    UvLutServerTarget target;
    target.serverAddress = " ";
    target.playerAddress = "10.1.2.3";
    target.warpEditorIndex = 3;
    target.udpPort = m_standIn.server().udpPort();
    target.upload = uploadOptions();
    UvLutUpdateReport report;
    ASSERT_TRUE(updateUvLutOnServer(result, target, &report, &error)) << error.toStdString();
    EXPECT_EQ(report.message, "Uploaded display_3.uvlut to 127.0.0.1 and removed the temporary LUT file.");
    EXPECT_EQ(report.status, "Updated LUT display_3.uvlut to 127.0.0.1");

    const QString reference = m_dir.filePath("reference.uvlut");
    ASSERT_TRUE(vg::exchange::writeUvLutBinary(result, reference, &error));
    QFile file(reference);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QList<MediaServerStandIn::ReceivedFile> files = m_standIn.server().files();
    ASSERT_EQ(files.size(), 1);
    EXPECT_EQ(files[0].name, "display_3.uvlut");
    EXPECT_EQ(files[0].bytes, file.readAll());
    EXPECT_EQ(datagrams(1).value(0), R"({"command":"uvlut_update","target_ip":"10.1.2.3","warpeditor_index":3})");

    m_standIn.server().setReply(MediaServerStandIn::Reply::FinishOnly);
    target.upload.replyWaitMs = 300;
    EXPECT_FALSE(updateUvLutOnServer(result, target, &report, &error));
    EXPECT_TRUE(error.startsWith("Could not upload LUT to Vantreo Service.\nMainService response did not confirm"))
        << error.toStdString();
}

} // namespace
