#include "MainWindowTestSupport.h"
#include "support/LoopbackHttpServer.h"
#include "support/NetTestSupport.h"

#include "app/MainWindow.h"
#include "app/UpdateController.h"
#include "app/UpdateDialog.h"
#include "project/ZipArchive.h"

#include <QAction>
#include <QCheckBox>
#include <QCryptographicHash>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QProgressDialog>
#include <QTextBrowser>

namespace {

class UpdateControllerTest : public ShellSettingsFixture
{
protected:
    void SetUp() override
    {
        ShellSettingsFixture::SetUp();
        ASSERT_TRUE(m_server.listen());
        ASSERT_TRUE(m_temp.isValid());
        clearClientEnvironment(m_env);
        m_env.set("VANTREOGUIDE_API_BASE_URL", m_server.baseUrl().toUtf8());
        m_server.route("/api/updates/history", LoopbackHttpServer::reply(200, "{}"));

        // A program folder with a stand-in executable, and a package of the next build.
        m_executable = QDir(m_temp.path()).filePath("app/VantreoGuide");
        QDir().mkpath(QFileInfo(m_executable).absolutePath());
        writeBytes(m_executable, "#!/bin/sh\nexit 0\n");
        const QString staging = QDir(m_temp.path()).filePath("staging");
        QDir().mkpath(staging + "/VantreoGuide-99");
        writeBytes(staging + "/VantreoGuide-99/VantreoGuide", "#!/bin/sh\necho 99\n");
        writeBytes(staging + "/VantreoGuide-99/library.txt", "99");
        const QString zip = QDir(m_temp.path()).filePath("pkg.zip");
        QString error;
        ASSERT_TRUE(vg::zip::compressFolderContents(staging, zip, &error)) << error.toStdString();
        QFile file(zip);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        m_package = file.readAll();
        m_server.route("/files/pkg.zip", LoopbackHttpServer::reply(200, m_package, "application/zip"));
    }

    void TearDown() override
    {
        // The download folder outlives the program on purpose (the script runs from it).
        if (!m_prepared.scriptPath.isEmpty())
            QDir(QFileInfo(m_prepared.scriptPath).absolutePath()).removeRecursively();
        ShellSettingsFixture::TearDown();
    }

    static void writeBytes(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    void offer(bool mandatory, int status = 200)
    {
        const QJsonObject update{
            {"updateAvailable", true},
            {"mandatory", mandatory},
            {"latestBuildNumber", 99},
            {"downloadUrl", "/files/pkg.zip"},
            {"sha256", QString::fromLatin1(QCryptographicHash::hash(m_package, QCryptographicHash::Sha256).toHex().toUpper())},
            {"updateType", "package"},
            {"latest", QJsonObject{{"fileName", "pkg.zip"}, {"sizeBytes", m_package.size()},
                                   {"releaseNotes", "Fixes the dome."}, {"channel", "stable"}}},
        };
        m_server.route("/api/clients/startup",
                       LoopbackHttpServer::reply(status, QJsonDocument(QJsonObject{{"update", update}}).toJson()));
    }

    // The window with its update controller wired to record instead of restarting.
    std::unique_ptr<MainWindow> makeWindow()
    {
        auto window = std::make_unique<MainWindow>();
        window->setProperty("skipStartupSample", true);
        m_controller = window->findChild<UpdateController *>();
        EXPECT_NE(m_controller, nullptr);
        m_controller->setExecutablePath(m_executable);
        m_controller->setUpdaterLauncher([this](const vg::net::PreparedUpdate &prepared, QString *) {
            m_prepared = prepared;
            return true;
        });
        m_controller->setExitHandler([this] { m_exited = true; });
        QObject::connect(m_controller->client(), &vg::net::StartupClient::statusChanged, m_controller,
                         [this](const QString &label, const QString &) { m_labels.append(label); });
        QObject::connect(m_controller, &UpdateController::logged, m_controller,
                         [this](const QString &line) { m_logs.append(line); });
        return window;
    }

    QStringList historyStatuses() const
    {
        QStringList statuses;
        for (const auto &request : m_server.requestsTo("/api/updates/history"))
            statuses.append(QJsonDocument::fromJson(request.body).object().value("status").toString());
        return statuses;
    }

    ScopedEnvironment m_env;
    LoopbackHttpServer m_server;
    QTemporaryDir m_temp;
    QString m_executable;
    QByteArray m_package;
    UpdateController *m_controller = nullptr;
    vg::net::PreparedUpdate m_prepared;
    bool m_exited = false;
    QStringList m_labels;
    QStringList m_logs;
};

TEST_F(UpdateControllerTest, AcceptedStartupOfferIsDownloadedVerifiedAndHandedToTheScript)
{
    offer(false);
    auto window = makeWindow();
    window->show();
    const auto question = answerNextMessageBox(QMessageBox::Yes);
    ASSERT_TRUE(waitUntil([&] { return m_exited; }, 20000)) << m_logs.join('\n').toStdString();

    EXPECT_EQ(question->title, "Update Available");
    EXPECT_EQ(question->text, "A new update is available.");
    EXPECT_TRUE(question->informativeText.contains("Fixes the dome."));
    EXPECT_TRUE(m_labels.contains("Startup API: Connecting"));
    EXPECT_TRUE(m_labels.contains("Startup API: Update Available"));
    EXPECT_EQ(window->startupApiStatusLabel()->text(), "Startup API: Applying Package");
    EXPECT_EQ(m_server.requestsTo("/api/clients/startup").size(), 1) << "the check reuses the start-up report";
    EXPECT_TRUE(m_prepared.package);
    EXPECT_EQ(m_prepared.mode, vg::net::PackageMode::Full);
    EXPECT_EQ(QFileInfo(m_prepared.packageRoot).fileName(), "VantreoGuide-99");
    EXPECT_TRUE(QFileInfo(m_prepared.scriptPath).isFile());
    ASSERT_TRUE(waitUntil([&] { return historyStatuses().contains("install_started"); }, 5000));
    EXPECT_TRUE(historyStatuses().contains("downloaded"));
}

TEST_F(UpdateControllerTest, DeclinedOfferIsLoggedAndReportedSkipped)
{
    offer(false);
    auto window = makeWindow();
    window->show();
    answerNextMessageBox(QMessageBox::No);
    ASSERT_TRUE(waitUntil([&] { return historyStatuses().contains("skipped"); }, 10000));
    EXPECT_FALSE(m_exited);
    EXPECT_TRUE(m_logs.contains(QStringLiteral("Update skipped. Current build: %1, server build: 99")
                                    .arg(m_controller->client()->buildInfo().buildNumber)))
        << m_logs.join('\n').toStdString();
    EXPECT_FALSE(historyStatuses().contains("download_started"));
}

TEST_F(UpdateControllerTest, MandatoryUpdateNeedsNoQuestionEvenWithChecksOff)
{
    QSettings().setValue("updates/autoUpdate", false);
    offer(true);
    auto window = makeWindow();
    window->show();
    // The download is quick: catch the progress dialog as it is shown.
    struct ShowWatcher : QObject
    {
        QString title;
        bool eventFilter(QObject *object, QEvent *event) override
        {
            if (event->type() == QEvent::Show) {
                if (auto *progress = qobject_cast<QProgressDialog *>(object))
                    title = progress->windowTitle();
            }
            return false;
        }
    } watcher;
    qApp->installEventFilter(&watcher);
    ASSERT_TRUE(waitUntil([&] { return m_exited; }, 20000)) << m_logs.join('\n').toStdString();
    EXPECT_TRUE(m_logs.contains("Mandatory update found. Downloading automatically..."));
    EXPECT_TRUE(m_logs.contains("Mandatory update downloaded."));
    qApp->removeEventFilter(&watcher);
    EXPECT_EQ(watcher.title, "Mandatory Update");
}

TEST_F(UpdateControllerTest, HelpUpdateDialogChecksOnDemand)
{
    QSettings().setValue("updates/autoUpdate", false);
    offer(false);
    auto window = makeWindow();
    window->show();
    ASSERT_TRUE(window->action("actionUpdate")->isEnabled());
    window->action("actionUpdate")->trigger();
    UpdateDialog *dialog = m_controller->dialog();
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(dialog->isVisible());
    EXPECT_FALSE(dialog->autoUpdateCheckBox()->isChecked());
    EXPECT_EQ(dialog->autoUpdateCheckBox()->toolTip(),
              "When enabled, startup update checks ask before downloading and applying available updates.");

    auto *details = dialog->findChild<QTextBrowser *>("vantreoUpdateDetails");
    auto button = [dialog](const QString &text) {
        for (QPushButton *b : dialog->findChildren<QPushButton *>()) {
            if (b->text() == text)
                return b;
        }
        return static_cast<QPushButton *>(nullptr);
    };
    ASSERT_NE(button("Check Now"), nullptr);
    ASSERT_NE(button("Download && Update"), nullptr);
    ASSERT_NE(button("Close"), nullptr);
    button("Check Now")->click();
    ASSERT_TRUE(waitUntil([&] { return details->toPlainText().contains("Status: Update available"); }, 10000))
        << details->toPlainText().toStdString();
    const QString text = details->toPlainText();
    EXPECT_TRUE(text.contains("Latest build: 99"));
    EXPECT_TRUE(text.contains("Update type: package"));
    EXPECT_TRUE(text.contains(QStringLiteral("Size: 0.0 MB (%1 bytes)").arg(m_package.size()))) << text.toStdString();
    EXPECT_TRUE(text.contains("Fixes the dome."));
    EXPECT_TRUE(button("Download && Update")->isEnabled());
    // For a person to look at: VG_UPDATE_SCREENSHOT_DIR=<dir> keeps the window and the dialog.
    const QString shots = qEnvironmentVariable("VG_UPDATE_SCREENSHOT_DIR");
    if (!shots.isEmpty()) {
        window->grab().save(QDir(shots).filePath("update-window.png"));
        dialog->grab().save(QDir(shots).filePath("update-dialog.png"));
    }

    dialog->autoUpdateCheckBox()->setChecked(true);
    EXPECT_TRUE(QSettings().value("updates/autoUpdate").toBool());

    offer(false, 401);
    button("Check Now")->click();
    ASSERT_TRUE(waitUntil([&] { return details->toPlainText().contains("Startup API: Unauthorized"); }, 10000));
    EXPECT_FALSE(button("Download && Update")->isEnabled()) << "a refused check offers nothing to download";
    EXPECT_EQ(window->startupApiStatusLabel()->text(), "Startup API: Unauthorized");
    EXPECT_FALSE(m_exited);
}

} // namespace
