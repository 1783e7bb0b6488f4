#include "app/TabFactory.h"

#include "app/GuideRecords.h"
#include "canvas/ui/CanvasTab.h"
#include "guide/ui/GuideTab.h"
#include "app/MainWindow.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QCoreApplication>
#include <QVariant>
#include <QWidget>

QString tabKindOf(const QWidget *content)
{
    return content ? content->property(kTabKindProperty).toString() : QString();
}

QString tabKindLabel(const QString &kind)
{
    if (kind == QLatin1String(kGuideTabKind))
        return QCoreApplication::translate("MainWindow", "Guide");
    if (kind == QLatin1String(kCanvasTabKind))
        return QCoreApplication::translate("MainWindow", "Canvas");
    if (kind == QLatin1String(kThreeDViewTabKind))
        return QCoreApplication::translate("MainWindow", "3D View");
    return QString();
}

// ---- guide tabs ------------------------------------------------------------------

QWidget *createGuideTabContent(QWidget *parent)
{
    return new GuideTab(parent);
}

static QWidget *duplicateGuideTabContent(QWidget *content, QWidget *parent)
{
    auto *copy = new GuideTab(parent);
    if (auto *guide = qobject_cast<GuideTab *>(content))
        copy->setSettings(guide->settings());
    return copy;
}

// ---- canvas tabs -----------------------------------------------------------------

// Guide tabs by guide record (the saved guide list's order, which dragging tabs leaves
// alone), each with its "guideSourceId"; a canvas binds to them by that id.
static QList<CanvasGuideTabSource> canvasGuideSources(const QWidget *tab)
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

QWidget *createCanvasTabContent(QWidget *parent)
{
    auto *tab = new CanvasTab(parent);
    tab->setGuideSourceProvider([tab] { return canvasGuideSources(tab); });
    if (auto *window = qobject_cast<MainWindow *>(parent ? parent->window() : nullptr))
        QObject::connect(window, &MainWindow::tabLayoutChanged, tab, &CanvasTab::refreshGuideSources);
    return tab;
}

static QWidget *duplicateCanvasTabContent(QWidget *content, QWidget *parent)
{
    auto *copy = static_cast<CanvasTab *>(createCanvasTabContent(parent));
    if (auto *canvas = qobject_cast<CanvasTab *>(content))
        copy->setSettings(canvas->settings());
    return copy;
}

// ---- 3D view tabs ----------------------------------------------------------------

// The project's guides by record, which is how 3D objects name them, whatever the tab order.
static void collectGuideSources(const QWidget *tab, QStringList *names, QVector<QImage> *images)
{
    auto *window = qobject_cast<MainWindow *>(tab->window());
    if (!window)
        return;
    for (GuideTab *guide : guiderecords::guideTabsByRecord(window)) {
        names->append(window->displayedTabTitle(window->indexOfContentTab(guide)));
        images->append(guide->guideImage());
    }
}

QWidget *createThreeDViewTabContent(QWidget *parent)
{
    auto *tab = new ThreeDViewTab(parent);
    tab->setGuideSourceProvider([tab](QStringList *names, QVector<QImage> *images) {
        collectGuideSources(tab, names, images);
    });
    return tab;
}

static QWidget *duplicateThreeDViewTabContent(QWidget *content, QWidget *parent)
{
    auto *copy = static_cast<ThreeDViewTab *>(createThreeDViewTabContent(parent));
    if (auto *source = qobject_cast<ThreeDViewTab *>(content))
        copy->setViewSettings(source->viewSettings());
    return copy;
}

// ----------------------------------------------------------------------------------

QWidget *duplicateTabContent(QWidget *content, QWidget *parent)
{
    const QString kind = tabKindOf(content);
    QWidget *copy = nullptr;
    if (kind == QLatin1String(kGuideTabKind))
        copy = duplicateGuideTabContent(content, parent);
    else if (kind == QLatin1String(kCanvasTabKind))
        copy = duplicateCanvasTabContent(content, parent);
    else if (kind == QLatin1String(kThreeDViewTabKind))
        copy = duplicateThreeDViewTabContent(content, parent);
    if (copy)
        copy->setProperty(kTabKindProperty, kind);
    return copy;
}
