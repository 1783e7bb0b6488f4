#pragma once

#include "calibration/CalibrationDiagnostics.h"
#include "calibration/CalibrationMatchList.h"
#include "calibration/CalibrationWireframe.h"
#include "calibration/ProjectorCalibration.h"
#include "scene/GuideObject.h"
#include "scene/GuideProjectorCalibrationSettings.h"

#include <QDialog>
#include <QImage>
#include <QPointer>

#include <functional>
#include <optional>
#include <memory>

namespace vg::exchange {
struct UvLutOptions;
}

class NdiRuntime;
class NdiSender;
class SceneWidget;
class OffscreenSceneRenderer;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QTableWidget;

// The window in which wireframe vertices of a target object are paired with the pixels
// where the real projector shows them, the projector is fitted to them, and the result is
// checked and exported. Modeless; the matched points live in the projector's record so a
// saved project reopens with them, and every settings change goes back through the
// callback at once.
class ProjectorCalibrationDialog : public QDialog
{
    Q_OBJECT

public:
    class PointView;
    using SettingsCallback = std::function<void(const GuideProjectorCalibrationSettings &)>;

    ProjectorCalibrationDialog(SceneWidget *scene, const GuideProjectorCalibrationSettings &settings,
                               QWidget *parent, int projectorIndex, SettingsCallback settingsChanged = {});
    ~ProjectorCalibrationDialog() override;

    int projectorIndex() const { return m_projectorIndex; }
    int targetIndex() const { return m_targetIndex; }
    void setProjectorIndex(int index);
    void setTargetIndex(int index);

    GuideProjectorCalibrationSettings settings() const { return m_settings; }
    const CalibrationMatchList &matches() const { return m_matches; }
    const CalibrationWireframe &wireframe() const { return m_wireframe; }
    // The projector as the projector view shows it: the last fit, or the scene's record.
    GuideObject previewProjector() const;
    const ProjectorCalibrationResult &lastResult() const { return m_result; }
    const CalibrationDiagnostics &lastDiagnostics() const { return m_diagnostics; }

    QString statusText() const;
    QString resultText() const;
    QString diagnosticsText() const;
    PointView *wireframeView() const { return m_wireframeView; }
    PointView *projectorView() const { return m_projectorView; }
    QTableWidget *table() const { return m_table; }
    int selectedRow() const { return m_selectedRow; }
    void selectRow(int row);

    // The commands of the buttons; the ones with a file take it here (the buttons ask).
    bool calibrate(bool automatic = false);
    int fillFromProjection();
    int deleteSelectedRows();
    // With `ask` the user confirms first; false when nothing was cleared.
    bool clearMatches(bool ask = true);
    void undo();
    void redo();
    void restoreProjector();
    bool exportMatrixTo(const QString &path, QString *error = nullptr);
    bool loadReferenceImage(const QString &path);
    bool exportLutTo(const QString &folder, QString *error = nullptr);
    bool updateLut(QString *error = nullptr);
    void setUploadPorts(quint16 control, quint16 data);
    // The NDI binding the live output uses (the process's own unless a test gives one).
    void setNdiRuntime(NdiRuntime *runtime);
    // The name the live output is published under, and whether an NDI sender is open.
    QString outputName() const;
    bool outputOpen() const;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    // Construction (ProjectorCalibrationDialogControls.cpp).
    void buildControls();
    QWidget *buildSettingsPanel();
    QGroupBox *buildServerGroup();
    QGroupBox *buildOutputGroup();
    void connectSettings();
    void updateSettings(const std::function<void(GuideProjectorCalibrationSettings &)> &change,
                        const QString &status = {});
    void syncServerToggle();

    // Scene and rows.
    void fillObjectChoosers();
    void sceneChanged();
    // Where an object the window follows is now: same index and name, else its name
    // elsewhere (objects before it were deleted), else the same index renamed; -1 gone.
    int followObject(int index, const QString &name, bool lens) const;
    void rebuildWireframe();
    void loadRowsFromRecord();
    void storeRowsInRecord();
    void refreshTable();
    void refreshViews();
    void refreshGuidance();
    void renderWireframeBackground();
    void renderProjectorBackground();
    // Each view renders through its own renderer: their object lists differ, and the
    // renderer keeps per-index GPU state between frames.
    OffscreenSceneRenderer *rendererFor(std::unique_ptr<OffscreenSceneRenderer> &slot);
    void edited(bool allowAutoCalibration = true);

    // View callbacks.
    void vertexPicked(int vertex);
    void projectorPointClicked(const QPointF &pixel);
    void pointMoved(int row, const QPointF &pixel, bool final);
    void rowChosen(int row);

    // The LUT of the calibrated projector: false with the reason in the status line.
    bool lutOptions(const QVector<GuideObject> &objects, const QString &cameraRefusal,
                    vg::exchange::UvLutOptions *options);
    std::function<void(const QString &)> lutProgress();

    void setStatus(const QString &text);
    void showDiagnostics();
    bool worstWorthMarking() const;
    QString targetLabel() const;
    const GuideObject *projectorObject() const;
    QVector<int> calibrationRows() const;

    // Buttons that open file dialogs.
    void chooseMatrixFile();
    void chooseReferenceImage();
    void chooseLutFolder();
    void confirmAndClear();
    void applyOutputMode();
    void publishOutput();

    QPointer<SceneWidget> m_scene;
    GuideProjectorCalibrationSettings m_settings;
    SettingsCallback m_settingsChanged;
    int m_projectorIndex = -1;
    int m_targetIndex = -1;
    QString m_projectorName;              // followed across deletions of earlier objects
    QString m_targetName;
    GuideObject m_projectorAtOpen;
    bool m_haveProjectorAtOpen = false;
    GuideObject m_projectorAtFit;         // the record the last fit started from
    int m_dragRow = -1;                   // the marker being dragged and where it started
    std::optional<QPointF> m_dragStart;

    CalibrationMatchList m_matches;
    CalibrationWireframe m_wireframe;
    int m_selectedRow = -1;
    ProjectorCalibrationResult m_result;
    CalibrationDiagnostics m_diagnostics;
    QVector<int> m_resultRows;            // table row of each point of the last fit
    bool m_haveFit = false;
    bool m_writingRecord = false;
    QImage m_referenceImage;
    std::unique_ptr<OffscreenSceneRenderer> m_projectorRenderer;
    std::unique_ptr<OffscreenSceneRenderer> m_wireframeRenderer;
    bool m_rendererFailed = false;
    bool m_sendLutAfterCalibration = false;
    NdiRuntime *m_ndiRuntime = nullptr;
    std::unique_ptr<NdiSender> m_ndiSender;
    quint16 m_controlPort = 17601;
    quint16 m_dataPort = 17602;

    // Widgets.
    QComboBox *m_projectorChooser = nullptr;
    QComboBox *m_targetChooser = nullptr;
    QLineEdit *m_nameEdit = nullptr;
    QCheckBox *m_projectorUpdate = nullptr;
    QCheckBox *m_adjustThrowRatio = nullptr;
    QCheckBox *m_adjustLensShift = nullptr;
    QCheckBox *m_wireWire = nullptr, *m_wireShade = nullptr, *m_wireVertex = nullptr;
    QCheckBox *m_projWire = nullptr, *m_projShade = nullptr, *m_projVertex = nullptr;
    QSpinBox *m_vertexSize = nullptr;
    QSpinBox *m_markerSize = nullptr;
    QLabel *m_outputSize = nullptr;
    QDoubleSpinBox *m_lutScale = nullptr;
    QSpinBox *m_lutAaSamples = nullptr;
    QDoubleSpinBox *m_lutFeather = nullptr;
    QComboBox *m_outputMode = nullptr;
    QLineEdit *m_outputName = nullptr;
    QCheckBox *m_serverEnabled = nullptr;
    QLineEdit *m_serverIp = nullptr;
    QSpinBox *m_serverPort = nullptr;
    QLineEdit *m_playerIp = nullptr;
    QSpinBox *m_warp = nullptr;
    QPushButton *m_sendLutToggle = nullptr;
    QPushButton *m_updateLutButton = nullptr;
    PointView *m_wireframeView = nullptr;
    PointView *m_projectorView = nullptr;
    QTableWidget *m_table = nullptr;
    QLabel *m_status = nullptr;
    QLabel *m_resultLine = nullptr;
    QLabel *m_diagnosticsLine = nullptr;
    bool m_refreshingTable = false;
    bool m_refreshingChoosers = false;
};
