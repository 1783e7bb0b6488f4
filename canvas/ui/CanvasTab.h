#pragma once

#include "canvas/CanvasGeometry.h"

#include <QHash>
#include <QImage>
#include <QList>
#include <QPointer>
#include <QSet>
#include <QVector>
#include <QWidget>

#include <functional>

class CanvasObjectPanel;
class CanvasWidget;
class GuideTab;
class QButtonGroup;
class QCheckBox;
struct TextSetting;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTimer;
class QToolButton;

// One guide tab a canvas can show: its "guideSourceId", its title and the tab.
struct CanvasGuideTabSource {
    int sourceId = -1;
    QString name;
    QPointer<GuideTab> tab;
};

// A canvas tab: the canvas surface, its guide sources, the object list and properties, the
// transform tools, exports and the clipboard. The tab keeps its own undo history of whole
// canvas states.
//
// Guide image objects are bound to guide tabs by their source id while the program runs; the
// saved `guide_index` is the guide's place in the list of sources the window gives (the
// project's guide list), refreshed whenever that list changes.
class CanvasTab : public QWidget
{
    Q_OBJECT

public:
    // What the tab asks the user; tests replace these.
    struct Dialogs {
        std::function<QString(const QString &title, const QString &path, const QString &filter)> saveFile;
        std::function<QString(const QString &title, const QString &folder, const QString &filter)> openFile;
        std::function<void(const QString &title, const QString &text)> warn;
        // The "Add Guide" dialog: indices of the chosen guide sources, empty when cancelled.
        std::function<QList<int>(const QList<CanvasGuideTabSource> &sources)> chooseGuides;
    };

    explicit CanvasTab(QWidget *parent = nullptr);
    ~CanvasTab() override;

    CanvasTabSettings settings() const;
    // Takes a loaded or copied canvas; clears the history.
    void setSettings(const CanvasTabSettings &settings);
    void setTitle(const QString &title);

    void setGuideSourceProvider(std::function<QList<CanvasGuideTabSource>()> provider);
    void setDialogs(const Dialogs &dialogs) { m_dialogs = dialogs; }
    CanvasWidget *canvasWidget() const { return m_canvas; }
    QList<CanvasGuideTabSource> guideSources() const { return m_sources; }

    // The canvas at full resolution (guides waited for), as exported.
    QImage renderCanvasImage(QString *error = nullptr);
    // The canvas's document page: the full canvas below its title band.
    QImage documentPageImage(const QString &tabTitle);

    // The commands; each reports in its own message box and returns whether it did its work.
    bool exportCanvasPng(const QString &path, QString *error);
    bool exportCanvasPngInteractive();
    bool exportSelectedGuidePngInteractive();
    bool addImageInteractive();
    bool addImageFile(const QString &path, const QPointF &canvasPoint, QString *error);
    bool addGuideInteractive();
    void addGuides(const QList<int> &sourceIndices);
    void addComment();
    void addTextBox();
    bool copyView();
    void copySelection();
    bool paste();
    void deleteSelection();
    void raiseSelection();
    void lowerSelection();

    bool canUndo() const { return !m_undo.isEmpty(); }
    bool canRedo() const { return !m_redo.isEmpty(); }

public Q_SLOTS:
    bool undo();
    bool redo();
    // Re-reads the guide tabs (their order, titles and images) from the provider.
    void refreshGuideSources();

Q_SIGNALS:
    void settingsChanged();
    void undoStateChanged();

protected:
    void changeEvent(QEvent *event) override;

private:
    void buildLayout();
    void pasteFromShortcut();
    QWidget *buildSidePanel();
    QWidget *buildToolBar();
    void ensurePictures();
    void retranslateUi();
    void connectCanvas();

    // History: a snapshot before each edit. Edits of one field in quick succession share one.
    void pushUndo(const QString &coalesceKey = QString());
    void applyState(const CanvasTabSettings &state);
    void edited();
    void editObjects(const QString &key, const std::function<void(CanvasObjectSettings &)> &edit);
    void editCanvas(const QString &key, const std::function<void(CanvasTabSettings &)> &edit);
    int addObject(CanvasObjectSettings object);
    void addObjects(const QVector<CanvasObjectSettings> &objects);
    QPointF viewCentre() const;

    void refreshSourceList();
    void refreshLayerList();
    void refreshPanels();
    void updateGuidePreview(int index);
    void watchGuideTab(GuideTab *tab);
    CanvasSources fullSources();
    void rememberDirectory(const TextSetting &folder, const QString &filePath);
    QString lastDirectory(const TextSetting &folder, const TextSetting &olderFolder) const;
    QString canvasName() const;

    CanvasWidget *m_canvas = nullptr;
    CanvasObjectPanel *m_objectPanel = nullptr;
    QLabel *m_status = nullptr;
    QLabel *m_sourceCaption = nullptr;
    QListWidget *m_sourceList = nullptr;
    QListWidget *m_layerList = nullptr;
    QButtonGroup *m_tools = nullptr;
    QList<QToolButton *> m_toolButtons;
    QList<QPair<QPushButton *, const char *>> m_buttons;
    QList<QPair<QLabel *, const char *>> m_headings;

    QString m_title;
    Dialogs m_dialogs;
    std::function<QList<CanvasGuideTabSource>()> m_provider;
    QList<CanvasGuideTabSource> m_sources;
    QHash<QString, CanvasImage> m_fullPictures;
    QSet<QString> m_unreadablePictures;
    QList<QPointer<GuideTab>> m_watched;
    QHash<int, quint64> m_previewGeneration; // source id -> latest preview request
    quint64 m_generation = 0;

    QVector<CanvasTabSettings> m_undo;
    QVector<CanvasTabSettings> m_redo;
    QString m_lastUndoKey;
    qint64 m_lastUndoTime = 0;
    bool m_updatingPanels = false;
    bool m_alive = true;
};
