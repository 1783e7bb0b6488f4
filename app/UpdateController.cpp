#include "app/UpdateController.h"

#include "app/MainWindow.h"
#include "app/UpdateDialog.h"
#include "net/UpdateDownloader.h"
#include "net/UpdateHistory.h"
#include "common/SettingsKeys.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDebug>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QProgressDialog>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>

using vg::net::StartupClient;

namespace {

constexpr int kStatusMessageTimeout = 8000;

bool autoUpdateEnabled()
{
    return Settings::autoUpdate.read();
}

} // namespace

UpdateController::UpdateController(MainWindow *window)
    : QObject(window)
    , m_window(window)
    , m_client(new StartupClient(this))
    , m_executablePath(QCoreApplication::applicationFilePath())
    , m_launcher(vg::net::launchUpdater)
    , m_exit([] { QCoreApplication::exit(0); })
{
    m_client->setApplicationDir(QCoreApplication::applicationDirPath());
    m_history = new vg::net::UpdateHistoryReporter(m_client->network(), this);
    m_downloader = new vg::net::UpdateDownloader(m_client->network(), m_history, this);

    connect(m_client, &StartupClient::statusChanged, this, &UpdateController::setStatus);
    connect(m_client, &StartupClient::logLine, this, &UpdateController::log);
    connect(m_client, &StartupClient::finished, this, &UpdateController::onCheckFinished);
    connect(m_history, &vg::net::UpdateHistoryReporter::logLine, this, &UpdateController::log);
    connect(m_downloader, &vg::net::UpdateDownloader::logLine, this, &UpdateController::log);
    connect(m_downloader, &vg::net::UpdateDownloader::finished, this, &UpdateController::onDownloadFinished);
    connect(m_downloader, &vg::net::UpdateDownloader::progress, this, [this](qint64 received, qint64 total) {
        if (m_progress && total > 0) {
            const int percent = int(qBound<qint64>(0, received * 100 / total, qint64(100)));
            m_progress->setValue(percent);
            m_progress->setLabelText(tr("Downloading update... %1%").arg(percent));
        }
    });

    connect(window, &MainWindow::startupClientReportRequested, this,
            [this] { m_client->send(StartupClient::Origin::Report); });
    connect(window, &MainWindow::updateCheckRequested, this,
            [this] { m_client->send(StartupClient::Origin::Automatic); });
    if (QAction *update = window->action(QStringLiteral("actionUpdate"))) {
        update->setEnabled(true);
        connect(update, &QAction::triggered, this, &UpdateController::showUpdateDialog);
    }
}

UpdateController::~UpdateController() = default;

void UpdateController::setStatus(const QString &label, const QString &detail)
{
    if (QLabel *status = m_window->startupApiStatusLabel()) {
        status->setText(label);
        status->setToolTip(detail.isEmpty() ? label : detail);
    }
}

void UpdateController::log(const QString &line)
{
    qInfo().noquote() << line;
    Q_EMIT logged(line);
}

void UpdateController::showUpdateDialog()
{
    if (!m_dialog) {
        m_dialog = new UpdateDialog(m_window);
        m_dialog->setAttribute(Qt::WA_DeleteOnClose);
        m_dialog->setCurrentBuild(m_client->buildInfo().buildNumber);
        connect(m_dialog, &UpdateDialog::checkRequested, this, [this] {
            m_dialog->setBusy(true, tr("Connecting to update server..."));
            m_client->send(StartupClient::Origin::Manual);
        });
        connect(m_dialog, &UpdateDialog::downloadRequested, this, [this] { downloadAndApply(m_offer.update.mandatory); });
        if (m_client->hasResult())
            m_dialog->showResult(m_client->lastResult());
    }
    m_dialog->show();
    m_dialog->raise();
    m_dialog->activateWindow();
}

void UpdateController::onCheckFinished(const StartupClient::Result &result)
{
    using Outcome = StartupClient::Outcome;
    if (result.outcome == Outcome::UpdateAvailable) {
        m_offer = result;
        m_hasOffer = true;
    }
    if (result.origin == StartupClient::Origin::Manual) {
        if (m_dialog) {
            m_dialog->setBusy(false);
            m_dialog->showResult(result);
        }
        if (!result.message.isEmpty() && result.outcome != Outcome::Offline)
            m_window->statusBar()->showMessage(result.message, kStatusMessageTimeout);
        return;
    }
    if (result.outcome == Outcome::UpdateMissingFile) {
        m_window->statusBar()->showMessage(result.detail, kStatusMessageTimeout);
        return;
    }
    if (result.outcome != Outcome::UpdateAvailable || m_downloader->isRunning())
        return;
    if (result.update.mandatory) {
        log(QStringLiteral("Mandatory update found. Downloading automatically..."));
        m_window->statusBar()->showMessage(tr("Mandatory update found. Downloading automatically..."),
                                           kStatusMessageTimeout);
        downloadAndApply(true);
        return;
    }
    if (!autoUpdateEnabled()) {
        log(QStringLiteral("Update is available, but automatic update is disabled."));
        return;
    }
    if (result.origin == StartupClient::Origin::Automatic)
        askAndMaybeDownload(result);
}

void UpdateController::askAndMaybeDownload(const StartupClient::Result &result)
{
    const QString notes = result.update.latest.releaseNotes.trimmed();
    QMessageBox question(QMessageBox::Question, tr("Update Available"), tr("A new update is available."),
                         QMessageBox::Yes | QMessageBox::No, m_window);
    question.setObjectName(QStringLiteral("vantreoUpdateQuestion"));
    question.setInformativeText(tr("Latest build: %1").arg(result.update.latestBuildNumber) + QStringLiteral("\n\n")
                                + (notes.isEmpty() ? tr("No release notes.") : notes));
    if (question.exec() == QMessageBox::Yes) {
        downloadAndApply(false);
        return;
    }
    const QString current = m_client->buildInfo().buildNumber;
    log(QStringLiteral("Update skipped. Current build: %1, server build: %2").arg(current, result.update.latestBuildNumber));
    m_window->statusBar()->showMessage(
        tr("Update skipped. Current build: %1, server build: %2").arg(current, result.update.latestBuildNumber),
        kStatusMessageTimeout);
    reportSkipped(QStringLiteral("declined"));
}

void UpdateController::downloadAndApply(bool mandatory)
{
    if (!m_hasOffer || m_downloader->isRunning())
        return;
    m_mandatory = mandatory;
    m_progress = new QProgressDialog(tr("Downloading update... %1%").arg(0), tr("Cancel"), 0, 100, m_window);
    m_progress->setObjectName(QStringLiteral("vantreoUpdateProgress"));
    m_progress->setWindowTitle(mandatory ? tr("Mandatory Update") : tr("Update"));
    m_progress->setAttribute(Qt::WA_DeleteOnClose);
    m_progress->setAutoClose(false);
    m_progress->setAutoReset(false);
    m_progress->setMinimumDuration(0);
    connect(m_progress, &QProgressDialog::canceled, m_downloader, &vg::net::UpdateDownloader::cancel);
    m_progress->show();
    if (m_dialog)
        m_dialog->setBusy(true);

    vg::net::UpdateDownloader::Request request;
    request.update = m_offer.update;
    request.update.mandatory = mandatory;
    request.url = m_offer.downloadUrl;
    request.fromBuildNumber = m_client->buildInfo().buildNumber;
    m_history->setBaseUrl(m_client->baseUrl());
    m_downloader->start(request);
}

void UpdateController::onDownloadFinished(bool ok, const QString &file, const QString &folder, const QString &message)
{
    if (m_progress) {
        m_progress->disconnect(this);
        m_progress->disconnect(m_downloader);
        m_progress->close();
    }
    if (m_dialog)
        m_dialog->setBusy(false);
    m_window->statusBar()->showMessage(message, kStatusMessageTimeout);
    if (!ok) {
        if (!m_downloader->wasCanceled())
            setStatus(tr("Startup API: Update Failed"), message);
        return;
    }
    apply(file, folder);
}

void UpdateController::apply(const QString &file, const QString &folder)
{
    vg::net::UpdateHistoryRecord record;
    record.fromBuildNumber = m_client->buildInfo().buildNumber;
    record.toBuildNumber = m_offer.update.latestBuildNumber;
    record.downloadUrl = m_offer.downloadUrl.toString();

    if (!m_window->confirmUnsavedChanges(MainWindow::UnsavedChangesPrompt::Closing)) {
        log(QStringLiteral("Update apply canceled."));
        m_window->statusBar()->showMessage(tr("Update apply canceled."), kStatusMessageTimeout);
        reportSkipped(QStringLiteral("Update apply canceled."));
        return;
    }
    vg::net::ApplyRequest request;
    request.downloadedFile = file;
    request.updateFolder = folder;
    request.executablePath = m_executablePath;
    request.buildNumber = m_offer.update.latestBuildNumber;
    request.processId = QCoreApplication::applicationPid();
    request.kind = m_offer.update.kind();
    vg::net::PreparedUpdate prepared;
    QString error;
    if (!vg::net::prepareUpdate(request, &prepared, &error) || !m_launcher(prepared, &error)) {
        log(error);
        setStatus(tr("Startup API: Update Failed"), error);
        QMessageBox::warning(m_window, tr("Update"), error);
        record.status = QStringLiteral("install_failed");
        record.errorMessage = error;
        m_history->report(record);
        return;
    }
    record.status = QStringLiteral("install_started");
    m_history->report(record);
    setStatus(prepared.package ? tr("Startup API: Applying Package") : tr("Startup API: Applying Update"),
              tr("Applying update. The application will restart automatically."));
    log(QStringLiteral("Applying update. The application will restart automatically."));
    m_window->statusBar()->showMessage(tr("Applying update. The application will restart automatically."));
    // The user already chose what happens to unsaved work; the window must not ask again.
    m_window->setUnsavedChanges(false);
    m_window->setProgramSettingsChanged(false);
    // A moment for the history report to leave; the script waits for this process anyway.
    QTimer::singleShot(500, this, [this] { m_exit(); });
}

void UpdateController::reportSkipped(const QString &why)
{
    vg::net::UpdateHistoryRecord record;
    record.status = QStringLiteral("skipped");
    record.fromBuildNumber = m_client->buildInfo().buildNumber;
    record.toBuildNumber = m_offer.update.latestBuildNumber;
    record.downloadUrl = m_offer.downloadUrl.toString();
    record.errorMessage = why;
    m_history->setBaseUrl(m_client->baseUrl());
    m_history->report(record);
}
