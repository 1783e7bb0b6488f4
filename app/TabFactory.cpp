#include "app/TabFactory.h"

#include "app/TabInfoPanel.h"
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

QWidget *createCanvasTabContent(QWidget *parent)
{
    return new CanvasTabPanel(parent);
}

static QWidget *duplicateCanvasTabContent(QWidget *content, QWidget *parent)
{
    auto *copy = new CanvasTabPanel(parent);
    if (auto *panel = qobject_cast<CanvasTabPanel *>(content))
        copy->setSettings(panel->settings());
    return copy;
}

// ---- 3D view tabs ----------------------------------------------------------------

// Guide tabs in display order are the project's guides; 3D objects refer to them by that index.
static void collectGuideSources(const QWidget *tab, QStringList *names, QVector<QImage> *images)
{
    auto *window = qobject_cast<MainWindow *>(tab->window());
    if (!window)
        return;
    const QList<QWidget *> tabs = window->contentTabs();
    for (int i = 0; i < tabs.size(); ++i) {
        if (auto *guide = qobject_cast<GuideTab *>(tabs[i])) {
            names->append(window->displayedTabTitle(i));
            images->append(guide->guideImage());
        }
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
