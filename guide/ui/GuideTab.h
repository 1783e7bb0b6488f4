#pragma once

#include "guide/GuideSettings.h"

#include <QImage>
#include <QStringList>
#include <QVector>
#include <QWidget>

#include <functional>

class GuidePreviewWidget;
class LayerListWidget;
class QCheckBox;
class QGroupBox;
class QScrollArea;
class QVBoxLayout;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QSlider;
class QSpinBox;
class QTimer;
class QToolButton;
struct GuideLayerFrame;

// One guide: its settings, the controls that edit them, the preview and the layers.
// The tab owns its GuideSettings; every edit re-renders the guide off the UI thread.
class GuideTab : public QWidget
{
    Q_OBJECT
public:
    // A new tab starts from the style defaults in styleFilePath; when empty, from the
    // program's style file (and "Save As Default" writes where the program may write).
    explicit GuideTab(QWidget *parent = nullptr, const QString &styleFilePath = QString());
    ~GuideTab() override;

    GuideSettings settings() const { return m_settings; }
    // Takes settings as a loaded guide: one-shot auto placement, the pixel coupling and
    // the enumeration folding are applied before they are shown.
    void setSettings(const GuideSettings &settings);
    // The latest finished render (may lag the settings while a render runs).
    QImage guideImage() const;
    // Waits until the image matches the current settings; for exports and tests.
    bool waitForGuideImage(int timeoutMs = 60000);

    // Renders at full size and writes a PNG with the fast writer.
    bool exportPng(const QString &path, QString *error) const;
    // The guide as a textured mesh with its Maya helper (base.obj, .mtl, _maya_surface.mel
    // and the picture), named after the tab's title. Returns the files written.
    QStringList exportGuideMesh(const QString &base, QString *error) const;
    // Asks for the base name (or takes it from chooseBase, for tests) and exports; a failure
    // shows in a box titled "Export failed".
    QStringList exportGuideMeshInteractive(const std::function<QString(const QString &suggested)> &chooseBase = {});
    // A file name that describes the guide, e.g. "Guide 1_3840x2160.png".
    QString suggestedFileName() const;
    // "<title>_<width>x<height>.png" with characters that files cannot carry replaced.
    static QString exportFileName(const QString &title, const GuideSettings &settings);
    QString styleFilePath() const { return m_styleFilePath; }

    GuidePreviewWidget *preview() const { return m_preview; }
    LayerListWidget *layerList() const { return m_layers; }

    // Undo history of the settings: every edit is one step; loading settings starts anew.
    static constexpr int kMaxUndoSteps = 100;
    bool canUndo() const { return !m_undo.isEmpty(); }
    bool canRedo() const { return !m_redo.isEmpty(); }

public Q_SLOTS:
    // The window's Edit menu calls these on the current tab.
    bool undo();
    bool redo();
    void exportPngInteractive();
    void saveStyleAsDefault();
    void applyProjectorLayout();
    void randomizeColors();

Q_SIGNALS:
    void settingsChanged();
    void guideImageChanged();
    void undoStateChanged();

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class Edit { None, RealSize, PixelWidth, PixelHeight, Grid, Projector, Other };

    QWidget *buildControlPanel();
    QWidget *buildPreviewPanel();
    QWidget *buildPreviewBar();
    void connectControls();
    void connectViews();
    void retranslateUi();
    void showSettingsInControls();
    void takeSettingsFromControls(Edit edit);
    void applyDerivedValues(Edit edit);
    void refreshNotices();
    void scheduleRender();
    void startRender();
    void updateLayerFrames();
    void onLayerFrameEdited(int index, const GuideLayerFrame &frame);
    void chooseLogo();
    void chooseTitleColor();
    void recordUndoStep();
    void restoreSettings(const GuideSettings &settings);

    GuideSettings m_settings;
    QString m_styleFilePath;
    QVector<GuideSettings> m_undo;
    QVector<GuideSettings> m_redo;
    GuideSettings m_committed; // the settings as of the last recorded step
    bool m_restoring = false;
    bool m_updatingControls = false;
    QTimer *m_renderTimer = nullptr;
    QTimer *m_textTimer = nullptr;
    QTimer *m_retranslateTimer = nullptr;
    QScrollArea *m_scroll = nullptr;
    QVBoxLayout *m_previewColumn = nullptr;
    QGroupBox *m_layerGroup = nullptr;

    GuidePreviewWidget *m_preview = nullptr;
    LayerListWidget *m_layers = nullptr;
    QLabel *m_zoomLabel = nullptr;

    // Size
    QSpinBox *m_realWidth = nullptr;
    QSpinBox *m_realHeight = nullptr;
    QSpinBox *m_pixelWidth = nullptr;
    QSpinBox *m_pixelHeight = nullptr;
    QCheckBox *m_fixedRatio = nullptr;
    QCheckBox *m_multipleOf4 = nullptr;
    QLabel *m_sizeNotice = nullptr;
    // Grid
    QSpinBox *m_rows = nullptr;
    QSpinBox *m_columns = nullptr;
    QCheckBox *m_autoColumns = nullptr;
    QCheckBox *m_realSquare = nullptr;
    QSpinBox *m_realSquareWidth = nullptr;
    QLabel *m_gridInfo = nullptr;
    // Style
    QComboBox *m_colorStyle = nullptr;
    QComboBox *m_numberFormat = nullptr;
    QPushButton *m_randomizeColor = nullptr;
    QPushButton *m_resetColor = nullptr;
    QCheckBox *m_inverseX = nullptr;
    QCheckBox *m_inverseY = nullptr;
    // Display switches
    QCheckBox *m_displayNumber = nullptr;
    QCheckBox *m_displayCellBoundary = nullptr;
    QCheckBox *m_displayInnerline = nullptr;
    QCheckBox *m_displayCenterline = nullptr;
    QCheckBox *m_displayCrossline = nullptr;
    QCheckBox *m_displayCircle = nullptr;
    QCheckBox *m_displayOutline = nullptr;
    QCheckBox *m_displayResolution = nullptr;
    QCheckBox *m_displayReal = nullptr;
    QCheckBox *m_showWidthDimension = nullptr;
    QCheckBox *m_showHeightDimension = nullptr;
    QCheckBox *m_displayExplain = nullptr;
    QCheckBox *m_displaySquareStatus = nullptr;
    QCheckBox *m_displayFinalResolution = nullptr;
    // Texts
    QPlainTextEdit *m_explain = nullptr;
    QDoubleSpinBox *m_fontScale = nullptr;
    // Logo
    QCheckBox *m_displayLogo = nullptr;
    QLineEdit *m_logoPath = nullptr;
    QToolButton *m_logoBrowse = nullptr;
    QToolButton *m_logoReset = nullptr;
    QSlider *m_logoOpacity = nullptr;
    QLabel *m_logoOpacityLabel = nullptr;
    // Flip and rotate
    QCheckBox *m_flipH = nullptr;
    QCheckBox *m_rotate = nullptr;
    // Document title
    QCheckBox *m_documentTitleVisible = nullptr;
    QCheckBox *m_documentCustomTitleEnabled = nullptr;
    QLineEdit *m_documentCustomTitle = nullptr;
    QPushButton *m_documentTitleColor = nullptr;
    // Projector layout
    QCheckBox *m_displayProjectorInfo = nullptr;
    QSpinBox *m_projectorCount = nullptr;
    QSpinBox *m_projectorCountY = nullptr;
    QSpinBox *m_projectorWidth = nullptr;
    QSpinBox *m_projectorHeight = nullptr;
    QDoubleSpinBox *m_throwRatio = nullptr;
    QDoubleSpinBox *m_throwDistance = nullptr;
    QDoubleSpinBox *m_overlap = nullptr;
    QComboBox *m_layoutBasis = nullptr;
    QCheckBox *m_autoLayout = nullptr;
    QCheckBox *m_realPixel = nullptr;
    QCheckBox *m_floor = nullptr;
    QCheckBox *m_vertical = nullptr;
    QLabel *m_projectorInfo = nullptr;
    QLabel *m_projectorNotice = nullptr;
    QPushButton *m_applyProjectorLayout = nullptr;
    // Actions
    QPushButton *m_exportPng = nullptr;
    QPushButton *m_exportMesh = nullptr;
    QPushButton *m_saveAsDefault = nullptr;
};
