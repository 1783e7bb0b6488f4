#include "app/GuideExportAll.h"

#include "app/MainWindow.h"
#include "guide/ui/GuideTab.h"
#include "common/SettingsKeys.h"

#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QProgressDialog>
#include <QSet>
#include <QSettings>
#include <QStatusBar>

namespace {

QString uniqueFileName(const QString &name, QSet<QString> *taken)
{
    const QFileInfo info(name);
    QString candidate = name;
    for (int n = 2; taken->contains(candidate.toLower()); ++n)
        candidate = QStringLiteral("%1 (%2).%3").arg(info.completeBaseName()).arg(n).arg(info.suffix());
    taken->insert(candidate.toLower());
    return candidate;
}

} // namespace

bool exportGuidesToDirectory(const QList<GuideExportEntry> &guides, const QString &directory, QStringList *written,
                             QString *error, QWidget *progressParent)
{
    const QDir dir(directory);
    if (directory.isEmpty() || !dir.exists()) {
        if (error)
            *error = QCoreApplication::translate("GuideExportAll", "The folder \"%1\" does not exist.").arg(QDir::toNativeSeparators(directory));
        return false;
    }
    QProgressDialog *progress = nullptr;
    if (progressParent && guides.size() > 1) {
        progress = new QProgressDialog(QCoreApplication::translate("GuideExportAll", "Exporting guides..."), QCoreApplication::translate("GuideExportAll", "Cancel"), 0, int(guides.size()), progressParent);
        progress->setWindowTitle(QCoreApplication::translate("GuideExportAll", "Export All Guides"));
        progress->setWindowModality(Qt::WindowModal);
        progress->setMinimumDuration(300);
    }
    QSet<QString> taken;
    bool ok = true;
    for (int i = 0; i < guides.size(); ++i) {
        if (progress) {
            progress->setValue(i);
            if (progress->wasCanceled())
                break;
        }
        const GuideExportEntry &entry = guides.at(i);
        if (!entry.tab)
            continue;
        const QString path = dir.filePath(uniqueFileName(GuideTab::exportFileName(entry.title, entry.tab->settings()), &taken));
        QString reason;
        if (!entry.tab->exportPng(path, &reason)) {
            if (error)
                *error = QCoreApplication::translate("GuideExportAll", "Could not export \"%1\": %2").arg(entry.title, reason);
            ok = false;
            break;
        }
        if (written)
            written->append(path);
    }
    if (progress) {
        progress->setValue(int(guides.size()));
        delete progress;
    }
    return ok;
}

QList<GuideExportEntry> guideExportEntries(const MainWindow *window)
{
    QList<GuideExportEntry> entries;
    if (!window)
        return entries;
    for (int i = 0; i < window->contentTabCount(); ++i) {
        if (const auto *tab = qobject_cast<const GuideTab *>(window->contentTab(i)))
            entries.append({window->displayedTabTitle(i), tab});
    }
    return entries;
}

void exportAllGuides(MainWindow *window)
{
    const QList<GuideExportEntry> guides = guideExportEntries(window);
    if (guides.isEmpty()) {
        QMessageBox::information(window, QCoreApplication::translate("GuideExportAll", "Export All Guides"), QCoreApplication::translate("GuideExportAll", "There are no guide tabs to export."));
        return;
    }
    QSettings settings;
    const QString last = Settings::guideExportDirectory.read();
    const QString directory = QFileDialog::getExistingDirectory(window, QCoreApplication::translate("GuideExportAll", "Export All Guides"), last);
    if (directory.isEmpty())
        return;
    Settings::guideExportDirectory.write(directory);

    QStringList written;
    QString error;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool ok = exportGuidesToDirectory(guides, directory, &written, &error, window);
    QApplication::restoreOverrideCursor();
    if (!ok) {
        QMessageBox::warning(window, QCoreApplication::translate("GuideExportAll", "Export failed"), error);
        return;
    }
    window->statusBar()->showMessage(
        QCoreApplication::translate("GuideExportAll", "Exported %1 guide images to %2").arg(written.size()).arg(QDir::toNativeSeparators(directory)), 8000);
}

void connectExportAllGuides(MainWindow *window)
{
    if (!window)
        return;
    QAction *action = window->action(QStringLiteral("actionExportAllGuides"));
    if (!action)
        return;
    action->setEnabled(true);
    if (action->property("vantreoExportAllGuidesConnected").toBool())
        return;
    action->setProperty("vantreoExportAllGuidesConnected", true);
    QObject::connect(action, &QAction::triggered, window, [window] { exportAllGuides(window); });
}
