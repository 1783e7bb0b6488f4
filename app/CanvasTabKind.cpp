#include "app/TabKind.h"

#include "app/GuideRecords.h"
#include "app/MainWindow.h"
#include "canvas/ui/CanvasTab.h"
#include "guide/ui/GuideTab.h"
#include "project/ProjectFile.h"

#include <QCoreApplication>

namespace {

CanvasTab *asCanvas(QWidget *content)
{
    return qobject_cast<CanvasTab *>(content);
}

// Guide tabs by record (the saved guide list's order, which dragging tabs leaves alone),
// each with its "guideSourceId"; a canvas binds to them by that id.
QList<CanvasGuideTabSource> canvasGuideSources(const QWidget *tab)
{
    QList<CanvasGuideTabSource> sources;
    auto *window = qobject_cast<MainWindow *>(tab->window());
    if (!window)
        return sources;
    for (GuideTab *guide : guiderecords::guideTabsByRecord(window)) {
        sources.append({guide->property("guideSourceId").toInt(),
                        window->displayedTabTitle(window->indexOfContentTab(guide)), guide});
    }
    return sources;
}

class CanvasTabKind final : public TabKind
{
public:
    QString id() const override { return QString::fromLatin1(kCanvasTabRecord); }
    QString label() const override { return QCoreApplication::translate("MainWindow", "Canvas"); }

    QString newTitle(MainWindow &window) const override
    {
        return QCoreApplication::translate("MainWindow", "Canvas %1").arg(window.takeTabNumber(QStringLiteral("canvasTitle")));
    }

    QWidget *create(MainWindow &window, QWidget *parent) const override
    {
        auto *tab = new CanvasTab(parent);
        tab->setGuideSourceProvider([tab] { return canvasGuideSources(tab); });
        QObject::connect(&window, &MainWindow::tabLayoutChanged, tab, &CanvasTab::refreshGuideSources);
        return tab;
    }

    QWidget *duplicate(MainWindow &window, QWidget *content, QWidget *parent) const override
    {
        QWidget *copy = create(window, parent);
        if (CanvasTab *source = asCanvas(content))
            asCanvas(copy)->setSettings(source->settings());
        return copy;
    }

    void watch(QWidget *content, QObject *receiver, const std::function<void()> &changed) const override
    {
        if (CanvasTab *canvas = asCanvas(content))
            QObject::connect(canvas, &CanvasTab::settingsChanged, receiver, changed);
    }

    int recordCount(const ProjectDocument &doc) const override { return int(doc.canvasTabs.size()); }

    int write(const QWidget *content, const QString &title, ProjectDocument *doc) const override
    {
        CanvasTabSettings settings = asCanvas(const_cast<QWidget *>(content))->settings();
        settings.title = title;
        doc->canvasTabs.append(settings);
        return int(doc->canvasTabs.size()) - 1;
    }

    QString recordTitle(const ProjectDocument &doc, int index) const override
    {
        return doc.canvasTabs.value(index).title;
    }

    void read(QWidget *content, const ProjectDocument &doc, int index) const override
    {
        if (CanvasTab *canvas = asCanvas(content); canvas && index >= 0 && index < doc.canvasTabs.size())
            canvas->setSettings(doc.canvasTabs[index]);
    }

    QString progressText(bool merge, int number, int count) const override
    {
        const QString text = merge ? QCoreApplication::translate("ProjectLifecycle", "Merging Canvas tab %1 of %2...")
                                   : QCoreApplication::translate("ProjectLifecycle", "Loading Canvas tab %1 of %2...");
        return text.arg(number).arg(count);
    }

    bool hasUndo(const QWidget *content) const override { return qobject_cast<const CanvasTab *>(content) != nullptr; }
    void undo(QWidget *content) const override
    {
        if (CanvasTab *canvas = asCanvas(content))
            canvas->undo();
    }
    void redo(QWidget *content) const override
    {
        if (CanvasTab *canvas = asCanvas(content))
            canvas->redo();
    }

    bool pageImage(QWidget *content, const TabPageContext &context, QImage *page, QString *) const override
    {
        CanvasTab *canvas = asCanvas(content);
        if (!canvas)
            return false;
        *page = canvas->documentPageImage(context.title);
        return true;
    }
};

} // namespace

const TabKind &canvasTabKind()
{
    static const CanvasTabKind kind;
    return kind;
}
