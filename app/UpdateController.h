#pragma once

#include "app/UpdateDialog.h"
#include "net/StartupClient.h"
#include "net/UpdateApplier.h"

#include <QObject>
#include <QPointer>
#include <QProgressDialog>

#include <functional>

class MainWindow;

namespace vg::net {
class UpdateDownloader;
class UpdateHistoryReporter;
} // namespace vg::net

// The startup client in the main window: the "Startup API: " label, the start-up report and
// check, the "Update Available" question, Help › Update, the download with its progress
// dialog, and handing over to the update script when the program exits.
class UpdateController : public QObject
{
    Q_OBJECT

public:
    explicit UpdateController(MainWindow *window);
    ~UpdateController() override;

    vg::net::StartupClient *client() const { return m_client; }
    UpdateDialog *dialog() const { return m_dialog; }
    void showUpdateDialog();
    // Downloads the last offer and applies it.
    void downloadAndApply(bool mandatory);

    // Tests replace how the script is started and how the program ends.
    void setUpdaterLauncher(std::function<bool(const vg::net::PreparedUpdate &, QString *)> launcher)
    {
        m_launcher = std::move(launcher);
    }
    void setExitHandler(std::function<void()> exitHandler) { m_exit = std::move(exitHandler); }
    void setExecutablePath(const QString &path) { m_executablePath = path; }

Q_SIGNALS:
    // Every line the startup client logs, in order.
    void logged(const QString &line);

private:
    void onCheckFinished(const vg::net::StartupClient::Result &result);
    void askAndMaybeDownload(const vg::net::StartupClient::Result &result);
    void onDownloadFinished(bool ok, const QString &file, const QString &folder, const QString &message);
    void apply(const QString &file, const QString &folder);
    void reportSkipped(const QString &why);
    void setStatus(const QString &label, const QString &detail);
    void log(const QString &line);

    MainWindow *m_window;
    vg::net::StartupClient *m_client;
    vg::net::UpdateHistoryReporter *m_history;
    vg::net::UpdateDownloader *m_downloader;
    QPointer<UpdateDialog> m_dialog;
    QPointer<QProgressDialog> m_progress;
    vg::net::StartupClient::Result m_offer;
    bool m_hasOffer = false;
    bool m_mandatory = false;
    QString m_executablePath;
    std::function<bool(const vg::net::PreparedUpdate &, QString *)> m_launcher;
    std::function<void()> m_exit;
};
