#include "app/UpdateDialog.h"
#include "common/SettingsKeys.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSettings>
#include <QTextBrowser>
#include <QVBoxLayout>

UpdateDialog::UpdateDialog(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("vantreoUpdateDialog"));
    setWindowTitle(tr("Update"));
    resize(560, 460);

    m_header = new QLabel(tr("VantreoGuide update"), this);
    QFont headerFont = m_header->font();
    headerFont.setBold(true);
    headerFont.setPointSizeF(headerFont.pointSizeF() * 1.25);
    m_header->setFont(headerFont);

    m_currentBuild = new QLabel(this);
    m_serverBuild = new QLabel(QStringLiteral("-"), this);
    m_updateType = new QLabel(QStringLiteral("-"), this);
    auto *rows = new QFormLayout;
    rows->addRow(tr("Current Build"), m_currentBuild);
    rows->addRow(tr("Server Build"), m_serverBuild);
    rows->addRow(tr("Update Type"), m_updateType);

    m_autoUpdate = new QCheckBox(tr("Check updates on startup"), this);
    m_autoUpdate->setObjectName(QStringLiteral("vantreoAutoUpdateCheckBox"));
    m_autoUpdate->setToolTip(
        tr("When enabled, startup update checks ask before downloading and applying available updates."));
    m_autoUpdate->setChecked(Settings::autoUpdate.read());
    connect(m_autoUpdate, &QCheckBox::toggled, this,
            [](bool on) { Settings::autoUpdate.write(on); });

    m_details = new QTextBrowser(this);
    m_details->setObjectName(QStringLiteral("vantreoUpdateDetails"));
    m_details->setOpenExternalLinks(false);

    m_checkNow = new QPushButton(tr("Check Now"), this);
    m_download = new QPushButton(tr("Download && Update"), this);
    m_download->setEnabled(false);
    auto *close = new QPushButton(tr("Close"), this);
    connect(m_checkNow, &QPushButton::clicked, this, &UpdateDialog::checkRequested);
    connect(m_download, &QPushButton::clicked, this, &UpdateDialog::downloadRequested);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_checkNow);
    buttons->addWidget(m_download);
    buttons->addStretch();
    buttons->addWidget(close);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_header);
    layout->addLayout(rows);
    layout->addWidget(m_autoUpdate);
    layout->addWidget(m_details, 1);
    layout->addLayout(buttons);
}

void UpdateDialog::setCurrentBuild(const QString &build)
{
    m_currentBuildText = build;
    m_currentBuild->setText(build);
}

void UpdateDialog::showResult(const vg::net::StartupClient::Result &result)
{
    using Outcome = vg::net::StartupClient::Outcome;
    const vg::net::UpdateInfo &update = result.update;
    const bool answered = result.outcome == Outcome::Connected || result.outcome == Outcome::UpdateAvailable
                          || result.outcome == Outcome::UpdateMissingFile || result.outcome == Outcome::InvalidUpdateUrl;
    m_offerReady = result.outcome == Outcome::UpdateAvailable;
    m_serverBuild->setText(update.latestBuildNumber.isEmpty() ? QStringLiteral("-") : update.latestBuildNumber);
    m_updateType->setText(update.updateType.isEmpty() ? QStringLiteral("-") : update.updateType);

    QStringList lines;
    if (!answered) {
        lines << result.label << result.message << result.detail;
    } else {
        lines << (update.updateAvailable ? tr("Status: Update available") : tr("Status: No update available"));
        const QString current = update.currentBuildNumber.isEmpty() ? m_currentBuildText : update.currentBuildNumber;
        lines << tr("Current build: %1").arg(current);
        lines << tr("Latest build: %1").arg(update.latestBuildNumber.isEmpty() ? QStringLiteral("-")
                                                                               : update.latestBuildNumber);
        if (!update.latest.channel.isEmpty())
            lines << tr("Channel: %1").arg(update.latest.channel);
        const QString reason = update.reason.isEmpty() ? vg::net::statusWordText(update.status) : update.reason;
        if (!reason.isEmpty())
            lines << tr("Reason: %1").arg(reason);
        if (!update.updateType.isEmpty())
            lines << tr("Update type: %1").arg(update.updateType);
        if (!update.latest.fileName.isEmpty())
            lines << tr("File: %1").arg(update.latest.fileName);
        if (update.latest.sizeBytes >= 0)
            lines << tr("Size: %1").arg(tr("%1 MB (%2 bytes)")
                                            .arg(QLocale::c().toString(update.latest.sizeBytes / 1048576.0, 'f', 1))
                                            .arg(update.latest.sizeBytes));
        if (!update.latest.publishedAt.isEmpty())
            lines << tr("Published: %1").arg(update.latest.publishedAt);
        if (result.outcome == Outcome::UpdateMissingFile || result.outcome == Outcome::InvalidUpdateUrl)
            lines << result.label << result.detail;
        lines << tr("Release notes:")
              << (update.latest.releaseNotes.trimmed().isEmpty() ? tr("No release notes.") : update.latest.releaseNotes);
    }
    lines.removeAll(QString());
    m_details->setPlainText(lines.join(QLatin1Char('\n')));
    m_download->setEnabled(m_offerReady);
}

void UpdateDialog::setBusy(bool busy, const QString &text)
{
    m_checkNow->setEnabled(!busy);
    m_download->setEnabled(!busy && m_offerReady);
    if (busy && !text.isEmpty())
        m_details->setPlainText(text);
}
