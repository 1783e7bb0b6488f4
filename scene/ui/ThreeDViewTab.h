#pragma once

#include "common/TranslatedTexts.h"
#include "scene/Guide3DViewSettings.h"
#include "scene/GuideArraySlices.h"

#include <QImage>
#include <QStringList>
#include <QVector>
#include <QWidget>

#include <functional>

class QAction;
class QActionGroup;
class QKeyEvent;
class QLabel;
class QListWidget;
class QMenu;
class QToolBar;
class SceneWidget;
class ScenePropertyPanel;

// The 3D view tab: the scene view, the Add menu, the object list and the property panel.
class ThreeDViewTab : public QWidget
{
    Q_OBJECT

public:
    // Everything the Add menu creates.
    enum AddKind {
        AddPlane,
        AddCirclePlane,
        AddCylinderWall,
        AddDome,
        AddSphere,
        AddHorseshoe,
        AddLShape,
        AddPerson,
        AddProjector,
        AddCamera,
        AddCurve,
        AddDistanceMeasure,
        AddComment,
        AddGuide,
        AddImage,
        AddObjMesh,     // asks for a file; nothing without asking
        AddDxfDrawing,
    };

    explicit ThreeDViewTab(QWidget *parent = nullptr);
    ~ThreeDViewTab() override;

    Guide3DViewSettings viewSettings() const;
    void setViewSettings(const Guide3DViewSettings &settings);

    bool canUndo() const;
    bool canRedo() const;

    SceneWidget *sceneWidget() const { return m_view; }
    ScenePropertyPanel *propertyPanel() const { return m_panel; }
    QListWidget *objectList() const { return m_list; }
    QMenu *addMenu() const { return m_addMenu; }
    QMenu *exportMenu() const { return m_exportMenu; }

    // Runs the export `identifier` of the exporter table on this scene: the selection (or
    // every visible object), the current projector or camera, the guides as shown. A
    // chooser replaces the file dialog. Returns the files written.
    QStringList exportScene(const QString &identifier,
                            const std::function<QString(const QString &, const QString &, const QString &)> &chooseFile = {});

    // The guide tabs' titles, images and projector arrays, in guide order (an object's
    // guide index).
    void setGuideSources(const QStringList &names, const QVector<QImage> &images,
                         const QVector<GuideArraySlices> &arrays = {});
    // The window hands the tab a way to collect them; the tab asks whenever it is shown
    // and when refreshGuideSources() is called.
    using GuideSourceProvider =
        std::function<void(QStringList *names, QVector<QImage> *images, QVector<GuideArraySlices> *arrays)>;
    void setGuideSourceProvider(GuideSourceProvider provider);
    void refreshGuideSources();

    // Runs the Add command of a kind; with `ask` the size dialog comes first (Cancel: -1).
    // Returns the index of the new object, or -1.
    int addObject(AddKind kind, bool ask = true);

    // Adds an OBJ mesh or DXF drawing read from `path` as a new object and selects it.
    // Returns its index, or -1 with the reader's message.
    int importMesh(const QString &path, QString *error);

public Q_SLOTS:
    // The window's Edit menu calls these on the current tab.
    bool undo();
    bool redo();

Q_SIGNALS:
    void sceneChanged();
    void undoStateChanged();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;
    // OBJ and DXF files dropped on the view; the view's keys from the rest of the tab.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildToolBar();
    void addExportButtons();
    void buildAddMenu();
    void buildExportMenu();
    void buildImportActions();
    int importMeshFromDialog(AddKind kind);
    int importMeshOrTell(const QString &path);
    void rebuildObjectList();
    void syncListSelection();
    void syncPanel();
    void syncViewActions();
    void showStatus(const QString &text, int timeoutMs);
    // OBJ and DXF files dropped on the view (ThreeDViewTabImport.cpp).
    bool filterViewDrops(QEvent *event);
    // The view's keys pressed elsewhere in the tab, or anywhere in the window while the
    // pointer is over the view (ThreeDViewTabKeys.cpp).
    bool filterViewKeys(QObject *watched, QEvent *event);
    bool routesKeyToView(QObject *receiver, const QKeyEvent *key) const;
    // A name no object bears yet: "<base> 1", "<base> 2", ...
    QString numberedName(const QString &base) const;
    // Puts a new object where the camera sees it (see SceneWidget::placeNewObject).
    int placed(int index);

    SceneWidget *m_view = nullptr;
    ScenePropertyPanel *m_panel = nullptr;
    QListWidget *m_list = nullptr;
    QToolBar *m_toolBar = nullptr;
    QMenu *m_addMenu = nullptr;
    QMenu *m_exportMenu = nullptr;
    QLabel *m_status = nullptr;
    QStringList m_guideNames;
    GuideSourceProvider m_provider;
    QList<qint64> m_guideImageKeys;
    class QTimer *m_guidePoll = nullptr;
    bool m_syncingList = false;

    QActionGroup *m_modeGroup = nullptr;
    QAction *m_modeActions[3] = {};
    QAction *m_localAction = nullptr;
    QAction *m_objectsAction = nullptr;
    QAction *m_gridAction = nullptr;
    QAction *m_snapAction = nullptr;
    QAction *m_frustumAction = nullptr;
    QAction *m_polygonAction = nullptr;
    QAction *m_helpAction = nullptr;
    TranslatedTexts m_texts;
};
