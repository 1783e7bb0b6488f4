#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class GuideTab;
class MainWindow;
class QWidget;

// One guide to write: the tab and the title its file is named after.
struct GuideExportEntry
{
    QString title;
    const GuideTab *tab = nullptr;
};

// Writes each guide as "<title>_<width>x<height>.png" into directory (names made unique).
// Stops at the first failure; returns false with its text. written lists the files made.
bool exportGuidesToDirectory(const QList<GuideExportEntry> &guides, const QString &directory,
                             QStringList *written, QString *error, QWidget *progressParent = nullptr);

// Every guide tab of the window, in tab order, with its displayed title.
QList<GuideExportEntry> guideExportEntries(const MainWindow *window);

// "Export All Guides...": asks for a folder (remembered under "paths/guideExportDirectory")
// and writes every guide tab's PNG there.
void exportAllGuides(MainWindow *window);

// Connects the File menu's "actionExportAllGuides" to exportAllGuides.
void connectExportAllGuides(MainWindow *window);
