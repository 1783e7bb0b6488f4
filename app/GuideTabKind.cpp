#include "app/TabKind.h"

#include "app/GuideRecords.h"
#include "app/MainWindow.h"
#include "canvas/CanvasPainter.h"
#include "guide/ui/GuideTab.h"
#include "project/ProjectFile.h"

#include <QCoreApplication>

namespace {

GuideTab *asGuide(QWidget *content)
{
    return qobject_cast<GuideTab *>(content);
}

// Guides are the one kind whose records the document lists apart from the tabs: a guide
// tab stands for its record, which surfaces, projectors and canvases name.
class GuideTabKind final : public TabKind
{
public:
    QString id() const override { return QString::fromLatin1(kGuideTabRecord); }
    QString label() const override { return QCoreApplication::translate("MainWindow", "Guide"); }

    QString newTitle(MainWindow &window) const override
    {
        return QCoreApplication::translate("MainWindow", "Guide %1").arg(window.takeTabNumber(QStringLiteral("guideTitle")));
    }

    QWidget *create(MainWindow &window, QWidget *parent) const override
    {
        auto *tab = new GuideTab(parent);
        // Canvases bind to a guide tab by this id, which no reordering or record change moves.
        tab->setProperty("guideSourceId", window.takeTabNumber(QStringLiteral("guideSourceId")));
        return tab;
    }

    QWidget *duplicate(MainWindow &window, QWidget *content, QWidget *parent) const override
    {
        QWidget *copy = create(window, parent);
        if (GuideTab *source = asGuide(content))
            asGuide(copy)->setSettings(source->settings());
        return copy;
    }

    void watch(QWidget *content, QObject *receiver, const std::function<void()> &changed) const override
    {
        if (GuideTab *guide = asGuide(content))
            QObject::connect(guide, &GuideTab::settingsChanged, receiver, changed);
    }

    int recordCount(const ProjectDocument &doc) const override { return int(doc.guides.size()); }

    int write(const QWidget *content, const QString &, ProjectDocument *) const override
    {
        // The lifecycle writes the guide list by record before the tabs.
        auto *window = qobject_cast<MainWindow *>(content->window());
        return window ? int(guiderecords::guideTabsByRecord(window).indexOf(asGuide(const_cast<QWidget *>(content)))) : -1;
    }

    QString recordTitle(const ProjectDocument &, int) const override { return QString(); }

    void read(QWidget *content, const ProjectDocument &doc, int index) const override
    {
        if (GuideTab *guide = asGuide(content); guide && index >= 0 && index < doc.guides.size())
            guide->setSettings(doc.guides[index]);
    }

    QString progressText(bool merge, int number, int count) const override
    {
        const QString text = merge ? QCoreApplication::translate("ProjectLifecycle", "Merging guide tab %1 of %2...")
                                   : QCoreApplication::translate("ProjectLifecycle", "Loading guide tab %1 of %2...");
        return text.arg(number).arg(count);
    }

    bool hasUndo(const QWidget *content) const override { return qobject_cast<const GuideTab *>(content) != nullptr; }
    void undo(QWidget *content) const override
    {
        if (GuideTab *guide = asGuide(content))
            guide->undo();
    }
    void redo(QWidget *content) const override
    {
        if (GuideTab *guide = asGuide(content))
            guide->redo();
    }

    bool pageImage(QWidget *content, const TabPageContext &context, QImage *page, QString *) const override
    {
        GuideTab *guide = asGuide(content);
        if (!guide)
            return false;
        guide->waitForGuideImage();
        const GuideSettings s = guide->settings();
        DocumentTitleBand band;
        band.visible = s.documentTitleVisible;
        band.text = s.documentCustomTitleEnabled ? s.documentCustomTitle : context.title;
        band.background = s.documentTitleBackgroundColor;
        *page = composeDocumentPage(guide->guideImage(), band);
        return true;
    }
};

} // namespace

const TabKind &guideTabKind()
{
    static const GuideTabKind kind;
    return kind;
}
