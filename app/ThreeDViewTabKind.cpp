#include "app/TabKind.h"

#include "app/GuideRecords.h"
#include "app/MainWindow.h"
#include "canvas/CanvasPainter.h"
#include "exchange/ExportImageSource.h"
#include "guide/ui/GuideTab.h"
#include "project/ProjectFile.h"
#include "scene/gl/GlExportImageSource.h"
#include "scene/gl/OffscreenSceneRender.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QCoreApplication>

namespace {

ThreeDViewTab *asView(QWidget *content)
{
    return qobject_cast<ThreeDViewTab *>(content);
}

// The project's guides by record, which is how 3D objects name them, whatever the tab order.
void collectGuideSources(const QWidget *tab, QStringList *names, QVector<QImage> *images,
                         QVector<GuideArraySlices> *arrays)
{
    auto *window = qobject_cast<MainWindow *>(tab->window());
    if (!window)
        return;
    for (GuideTab *guide : guiderecords::guideTabsByRecord(window)) {
        names->append(window->displayedTabTitle(window->indexOfContentTab(guide)));
        images->append(guide->guideImage());
        arrays->append(guideArraySlicesOf(guide->settings()));
    }
}

class ThreeDViewTabKind final : public TabKind
{
public:
    QString id() const override { return QString::fromLatin1(kThreeDViewTabRecord); }
    QString label() const override { return QCoreApplication::translate("MainWindow", "3D View"); }

    // The first view is "3D View", later ones are numbered by how many there are.
    QString newTitle(MainWindow &window) const override
    {
        int views = 0;
        for (QWidget *tab : window.contentTabs())
            views += asView(tab) ? 1 : 0;
        return views == 0 ? QCoreApplication::translate("MainWindow", "3D View")
                          : QCoreApplication::translate("MainWindow", "3D View %1").arg(views + 1);
    }

    QWidget *create(MainWindow &, QWidget *parent) const override
    {
        auto *tab = new ThreeDViewTab(parent);
        tab->setGuideSourceProvider(
            [tab](QStringList *names, QVector<QImage> *images, QVector<GuideArraySlices> *arrays) {
                collectGuideSources(tab, names, images, arrays);
            });
        return tab;
    }

    QWidget *duplicate(MainWindow &window, QWidget *content, QWidget *parent) const override
    {
        QWidget *copy = create(window, parent);
        if (ThreeDViewTab *source = asView(content))
            asView(copy)->setViewSettings(source->viewSettings());
        return copy;
    }

    void watch(QWidget *content, QObject *receiver, const std::function<void()> &changed) const override
    {
        if (ThreeDViewTab *view = asView(content))
            QObject::connect(view, &ThreeDViewTab::sceneChanged, receiver, changed);
    }

    int recordCount(const ProjectDocument &doc) const override { return int(doc.views.size()); }

    int write(const QWidget *content, const QString &title, ProjectDocument *doc) const override
    {
        Guide3DViewSettings settings = asView(const_cast<QWidget *>(content))->viewSettings();
        settings.present = true;
        settings.title = title;
        doc->views.append(settings);
        return int(doc->views.size()) - 1;
    }

    QString recordTitle(const ProjectDocument &doc, int index) const override { return doc.views.value(index).title; }

    void read(QWidget *content, const ProjectDocument &doc, int index) const override
    {
        if (ThreeDViewTab *view = asView(content); view && index >= 0 && index < doc.views.size())
            view->setViewSettings(doc.views[index]);
    }

    QString progressText(bool merge, int number, int count) const override
    {
        const QString text = merge ? QCoreApplication::translate("ProjectLifecycle", "Merging 3D View %1 of %2...")
                                   : QCoreApplication::translate("ProjectLifecycle", "Restoring 3D View %1 of %2...");
        return text.arg(number).arg(count);
    }

    // No frame is drawn of a scene that is still being filled in.
    void setLoading(QWidget *content, bool loading) const override
    {
        if (ThreeDViewTab *view = asView(content))
            view->sceneWidget()->setLoading(loading);
    }

    bool hasUndo(const QWidget *content) const override { return qobject_cast<const ThreeDViewTab *>(content) != nullptr; }
    void undo(QWidget *content) const override
    {
        if (ThreeDViewTab *view = asView(content))
            view->undo();
    }
    void redo(QWidget *content) const override
    {
        if (ThreeDViewTab *view = asView(content))
            view->redo();
    }

    // The scene as the view's camera sees it, rendered off-screen at full HD.
    bool pageImage(QWidget *content, const TabPageContext &context, QImage *page, QString *error) const override
    {
        ThreeDViewTab *view = asView(content);
        if (!view)
            return false;
        QList<GuideSettings> guides;
        for (QWidget *tab : context.guideTabs) {
            if (auto *guide = qobject_cast<GuideTab *>(tab))
                guides.append(guide->settings());
        }
        GlExportImageSource images(guides);
        vg::exchange::ExportViewRender request;
        request.size = QSize(1920, 1080);
        QImage image;
        if (!images.renderSceneView(view->viewSettings(), request, &image, error))
            return false;
        DocumentTitleBand band;
        band.text = QCoreApplication::translate("TabViewDocuments", "3D Simulation");
        *page = composeDocumentPage(image, band);
        return true;
    }
};

} // namespace

const TabKind &threeDViewTabKind()
{
    static const ThreeDViewTabKind kind;
    return kind;
}
