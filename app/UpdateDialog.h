#pragma once

#include "net/StartupClient.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;
class QTextBrowser;

// Help › Update: what this build is, what the server offers, and the buttons to check again
// and to download and apply the offer.
class UpdateDialog : public QDialog
{
    Q_OBJECT

public:
    explicit UpdateDialog(QWidget *parent = nullptr);

    void setCurrentBuild(const QString &build);
    // Shows a check's answer; "Download && Update" is enabled only for a usable offer.
    void showResult(const vg::net::StartupClient::Result &result);
    void setBusy(bool busy, const QString &text = QString());

    QCheckBox *autoUpdateCheckBox() const { return m_autoUpdate; }

Q_SIGNALS:
    void checkRequested();
    void downloadRequested();

private:
    QLabel *m_header = nullptr;
    QLabel *m_currentBuild = nullptr;
    QLabel *m_serverBuild = nullptr;
    QLabel *m_updateType = nullptr;
    QCheckBox *m_autoUpdate = nullptr;
    QTextBrowser *m_details = nullptr;
    QPushButton *m_checkNow = nullptr;
    QPushButton *m_download = nullptr;
    QString m_currentBuildText;
    bool m_offerReady = false;
};
