#include "app/TabViewDocuments.h"

#include "app/MainWindow.h"
#include "app/GuideRecords.h"
#include "app/TabKind.h"
#include "canvas/CanvasPainter.h"
#include "canvas/ui/CanvasTab.h"
#include "exchange/ExporterTable.h"
#include "exchange/TabViewDocument.h"
#include "guide/ui/GuideTab.h"
#include "scene/gl/GlExportImageSource.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QSettings>
#include <QStandardPaths>
#include <QStatusBar>
#include <QVBoxLayout>

namespace {

// "Creating document..." over the window while pages are made.
class DocumentOverlay
{
public:
    explicit DocumentOverlay(QWidget *window)
        : m_overlay(new QWidget(window))
    {
        m_overlay->setObjectName(QStringLiteral("vantreoDocumentOverlay"));
        m_overlay->setAttribute(Qt::WA_StyledBackground);
        m_overlay->setStyleSheet(QStringLiteral("background: #202226;"));
        auto *layout = new QVBoxLayout(m_overlay);
        auto *label = new QLabel(TabViewDocuments::tr("Creating document..."), m_overlay);
        label->setAlignment(Qt::AlignCenter);
        label->setStyleSheet(QStringLiteral("color: white; font-size: 18px; font-weight: bold;"));
        layout->addWidget(label);
        m_overlay->setGeometry(window->rect());
        m_overlay->show();
        m_overlay->raise();
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    ~DocumentOverlay() { delete m_overlay; }

private:
    QWidget *m_overlay;
};

} // namespace

TabViewDocuments::TabViewDocuments(MainWindow *window)
    : QObject(window)
    , m_window(window)
{
    setObjectName(QStringLiteral("vantreoTabViewDocuments"));
    m_saveDialog = [window](const QString &title, const QString &path, const QString &filter) {
        return QFileDialog::getSaveFileName(window, title, path, filter);
    };
    m_message = [window](const QString &title, const QString &text, bool warning) {
        if (warning)
            QMessageBox::warning(window, title, text);
        else
            QMessageBox::information(window, title, text);
    };
    for (const auto &[name, format] : {std::pair{"actionExportTabViewsToPdf", "pdf"}, std::pair{"actionExportTabViewsToPptx", "pptx"}}) {
        if (QAction *action = window->action(QString::fromLatin1(name))) {
            action->setEnabled(true);
            const QString id = QString::fromLatin1(format);
            connect(action, &QAction::triggered, this, [this, id] { exportTabViews(id); });
        }
    }
}

bool TabViewDocuments::tabPages(QList<QImage> *pages, QString *error)
{
    const QList<QWidget *> tabs = m_window->contentTabs();
    for (int i = 0; i < tabs.size(); ++i) {
        QString title = m_window->displayedTabTitle(i);
        if (title.isEmpty())
            title = tr("Tab %1").arg(i + 1);
        const TabKind *kind = TabKindRegistry::kindOf(tabs[i]);
        if (!kind)
            continue;
        TabPageContext context;
        context.title = title;
        for (GuideTab *guide : guiderecords::guideTabsByRecord(m_window))
            context.guideTabs.append(guide);
        QImage page;
        if (!kind->pageImage(tabs[i], context, &page, error))
            return false;
        if (page.isNull()) {
            *error = QCoreApplication::translate("TabViewDocument", "Could not encode slide image %1.").arg(i + 1);
            return false;
        }
        pages->append(page);
    }
    return true;
}

bool TabViewDocuments::exportTabViews(const QString &format)
{
    const bool pdf = format == QLatin1String("pdf");
    const vg::exchange::ExporterEntry *entry = vg::exchange::findExporter(format);
    if (!entry)
        return false;
    if (m_window->contentTabCount() == 0) {
        m_message(tr("Export Tab Views"), tr("There are no tab views to export."), false);
        return false;
    }
    QSettings settings;
    QString folder = settings.value(entry->directoryKey).toString();
    if (folder.isEmpty() || !QDir(folder).exists())
        folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QString path = m_saveDialog(pdf ? tr("Export Tab Views to PDF") : tr("Export Tab Views to PPTX"),
                                QDir(folder).filePath(entry->defaultBaseName + QLatin1Char('.') + entry->suffix),
                                pdf ? tr("PDF Files (*.pdf)") : tr("PowerPoint Files (*.pptx)"));
    if (path.isEmpty())
        return false;
    if (!path.endsWith(QLatin1Char('.') + entry->suffix, Qt::CaseInsensitive))
        path += QLatin1Char('.') + entry->suffix;

    QList<QImage> pages;
    QString error;
    bool ok = false;
    {
        DocumentOverlay overlay(m_window);
        ok = tabPages(&pages, &error)
             && (pdf ? vg::exchange::writeTabViewPdf(path, pages, &error) : vg::exchange::writeTabViewPptx(path, pages, &error));
    }
    if (!ok) {
        m_message(tr("Export failed"), (pdf ? tr("PDF export failed.") : tr("PPTX export failed.")) + QLatin1Char('\n') + error,
                  true);
        return false;
    }
    settings.setValue(entry->directoryKey, QFileInfo(path).absolutePath());
    const QString shown = QDir::toNativeSeparators(path);
    m_window->statusBar()->showMessage(pdf ? tr("Tab views exported to PDF: %1").arg(shown)
                                           : tr("Tab views exported to PPTX: %1").arg(shown));
    m_message(tr("Export complete"), pdf ? tr("PDF saved successfully.") : tr("PowerPoint saved successfully."), false);
    return true;
}
