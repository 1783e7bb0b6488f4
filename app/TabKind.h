#pragma once

#include <QImage>
#include <QList>
#include <QString>

#include <functional>

class MainWindow;
class QObject;
class QWidget;
struct ProjectDocument;

// What a page of a tab-view document is rendered with: the guides of the project by record,
// which a 3D view page projects.
struct TabPageContext
{
    QString title;               // the tab's shown title
    QList<QWidget *> guideTabs;  // guide tabs by record
};

// One kind of content tab (guide, canvas, 3D view): everything the window, the project
// lifecycle, the documents and the capture runs do with a tab of that kind. A kind is one
// class in its own file, listed once in TabKindRegistry.
class TabKind
{
public:
    virtual ~TabKind() = default;

    // The name project files and scenario steps use ("guide", "canvas", "3dView").
    virtual QString id() const = 0;
    // The name a user reads: "Guide", "Canvas", "3D View".
    virtual QString label() const = 0;
    // The title a new tab of this kind gets when none is given.
    virtual QString newTitle(MainWindow &window) const = 0;

    virtual QWidget *create(MainWindow &window, QWidget *parent) const = 0;
    // "Copy" on a tab: a new content widget holding a copy of the content's settings.
    virtual QWidget *duplicate(MainWindow &window, QWidget *content, QWidget *parent) const = 0;
    // Calls `changed` whenever the content's saved state may have changed.
    virtual void watch(QWidget *content, QObject *receiver, const std::function<void()> &changed) const = 0;

    // ---- the project document --------------------------------------------------------
    // How many records of this kind the document holds.
    virtual int recordCount(const ProjectDocument &doc) const = 0;
    // Writes the content as a record (the shown title is the tab's) and returns its index.
    // Kinds whose records the document already lists (guides) return the existing index.
    virtual int write(const QWidget *content, const QString &title, ProjectDocument *doc) const = 0;
    // The title a record asks for when its tab is created (empty: the kind's new title).
    virtual QString recordTitle(const ProjectDocument &doc, int index) const = 0;
    virtual void read(QWidget *content, const ProjectDocument &doc, int index) const = 0;
    // "Loading guide tab %1 of %2..." and its merge wording.
    virtual QString progressText(bool merge, int number, int count) const = 0;
    // While a project loads into the window a tab holds back work that the load will redo.
    virtual void setLoading(QWidget *content, bool loading) const;

    // ---- editing ---------------------------------------------------------------------
    virtual bool hasUndo(const QWidget *content) const = 0;
    virtual void undo(QWidget *content) const = 0;
    virtual void redo(QWidget *content) const = 0;

    // ---- documents and exports -------------------------------------------------------
    // The page of a PDF or PPTX document; false with an error text when it cannot be made.
    virtual bool pageImage(QWidget *content, const TabPageContext &context, QImage *page, QString *error) const = 0;
};

// Each kind's one instance (defined in its own file).
const TabKind &guideTabKind();
const TabKind &canvasTabKind();
const TabKind &threeDViewTabKind();

// The kinds in the order the Add Tab menu and a project's unnamed records list them.
namespace TabKindRegistry {

QList<const TabKind *> kinds();
const TabKind *find(const QString &id);
// The kind of a content widget; nullptr for a widget that is not a tab's content.
const TabKind *kindOf(const QWidget *content);
// Marks a content widget as a tab of the kind (the window does it as it adds the tab).
void mark(QWidget *content, const TabKind &kind);

} // namespace TabKindRegistry
