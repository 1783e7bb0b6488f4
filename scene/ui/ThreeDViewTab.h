#pragma once

#include "scene/Guide3DViewSettings.h"

#include <QImage>
#include <QStringList>
#include <QVector>
#include <QWidget>

#include <functional>

class QAction;
class QActionGroup;
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

    // The guide tabs' titles and images, in guide order (an object's guide index).
    void setGuideSources(const QStringList &names, const QVector<QImage> &images);
    // The window hands the tab a way to collect them; the tab asks whenever it is shown
    // and when refreshGuideSources() is called.
    using GuideSourceProvider = std::function<void(QStringList *names, QVector<QImage> *images)>;
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
    // OBJ and DXF files dropped on the view.
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
};
