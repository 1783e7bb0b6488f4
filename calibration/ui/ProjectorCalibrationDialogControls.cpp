#include "calibration/ui/ProjectorCalibrationDialog.h"

#include "calibration/ui/ProjectorCalibrationPointView.h"
#include "project/SceneJson.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

QCheckBox *toggle(const QString &text, const QString &toolTip, const char *objectName, bool on, QWidget *parent)
{
    auto *box = new QCheckBox(text, parent);
    box->setToolTip(toolTip);
    box->setObjectName(QLatin1String(objectName));
    box->setChecked(on);
    return box;
}

QGroupBox *groupWith(const QString &title, const QList<QWidget *> &widgets, QWidget *parent)
{
    auto *group = new QGroupBox(title, parent);
    auto *layout = new QHBoxLayout(group);
    layout->setContentsMargins(6, 4, 6, 4);
    for (QWidget *w : widgets)
        layout->addWidget(w);
    return group;
}

QPushButton *button(const QString &text, const char *objectName, QWidget *parent, const QString &toolTip = {})
{
    auto *b = new QPushButton(text, parent);
    b->setObjectName(QLatin1String(objectName));
    b->setToolTip(toolTip);
    b->setAutoDefault(false);
    return b;
}

} // namespace

void ProjectorCalibrationDialog::buildControls()
{
    setWindowTitle(tr("Projector Calibration"));
    setObjectName(QStringLiteral("vantreoProjectorCalibrationDialog"));
    setModal(false);
    resize(1400, 900);

    m_projectorChooser = new QComboBox(this);
    m_projectorChooser->setObjectName(QStringLiteral("calibrationProjector"));
    m_targetChooser = new QComboBox(this);
    m_targetChooser->setObjectName(QStringLiteral("calibrationTarget"));
    m_nameEdit = new QLineEdit(this);
    m_nameEdit->setObjectName(QStringLiteral("calibrationName"));
    auto *pickers = new QHBoxLayout;
    pickers->addWidget(new QLabel(tr("Projector"), this));
    pickers->addWidget(m_projectorChooser, 1);
    pickers->addWidget(new QLabel(tr("Target Object"), this));
    pickers->addWidget(m_targetChooser, 1);
    pickers->addWidget(new QLabel(tr("Name"), this));
    pickers->addWidget(m_nameEdit, 1);

    m_wireframeView = new PointView(PointView::Kind::Wireframe, this);
    m_projectorView = new PointView(PointView::Kind::Projector, this);
    auto *wireBox = new QGroupBox(tr("Wireframe View"), this);
    (new QVBoxLayout(wireBox))->addWidget(m_wireframeView);
    auto *projBox = new QGroupBox(tr("Projector View"), this);
    (new QVBoxLayout(projBox))->addWidget(m_projectorView);
    auto *views = new QSplitter(Qt::Horizontal, this);
    views->addWidget(wireBox);
    views->addWidget(projBox);
    views->setStretchFactor(0, 1);
    views->setStretchFactor(1, 1);

    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("calibrationStatus"));
    m_status->setWordWrap(true);
    m_resultLine = new QLabel(this);
    m_resultLine->setObjectName(QStringLiteral("calibrationResult"));
    m_resultLine->setWordWrap(true);
    m_resultLine->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_diagnosticsLine = new QLabel(this);
    m_diagnosticsLine->setObjectName(QStringLiteral("calibrationDiagnostics"));
    m_diagnosticsLine->setWordWrap(true);
    m_diagnosticsLine->setStyleSheet(QStringLiteral("color: #e0a040;"));

    m_table = new QTableWidget(0, 8, this);
    m_table->setObjectName(QStringLiteral("calibrationPointTable"));
    m_table->setHorizontalHeaderLabels({tr("Use this point for calibration"), tr("Wireframe vertex"), tr("Wireframe X"),
                                        tr("Wireframe Y"), tr("Wireframe Z"), tr("Image X"), tr("Image Y"),
                                        tr("Residual (px)")});
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->verticalHeader()->setDefaultSectionSize(22);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setStretchLastSection(true);

    auto *loadImage = button(tr("Load Image"), "calibrationLoadImage", this,
                             tr("Load a captured/reference image as the projector view background."));
    auto *fill = button(tr("Fill From Projection"), "calibrationFill", this,
                        tr("Fill matched point positions from the current projector projection."));
    auto *exportMatrix = button(tr("Export Matrix"), "calibrationExportMatrix", this);
    auto *exportLut = button(tr("Export LUT"), "calibrationExportLut", this);
    auto *clear = button(tr("Clear"), "calibrationClear", this);
    auto *calibrateButton = button(tr("Calibrate Projector"), "calibrationCalibrate", this);
    auto *restore = button(tr("Restore"), "calibrationRestore", this,
                           tr("Put the projector back as it was when this window opened."));
    auto *buttons = new QHBoxLayout;
    for (QPushButton *b : {loadImage, fill, exportMatrix, exportLut, clear})
        buttons->addWidget(b);
    buttons->addStretch(1);
    buttons->addWidget(restore);
    buttons->addWidget(calibrateButton);
    calibrateButton->setDefault(false);

    connect(loadImage, &QPushButton::clicked, this, &ProjectorCalibrationDialog::chooseReferenceImage);
    connect(fill, &QPushButton::clicked, this, [this] { fillFromProjection(); });
    connect(exportMatrix, &QPushButton::clicked, this, &ProjectorCalibrationDialog::chooseMatrixFile);
    connect(exportLut, &QPushButton::clicked, this, &ProjectorCalibrationDialog::chooseLutFolder);
    connect(clear, &QPushButton::clicked, this, &ProjectorCalibrationDialog::confirmAndClear);
    connect(calibrateButton, &QPushButton::clicked, this, [this] { calibrate(false); });
    connect(restore, &QPushButton::clicked, this, &ProjectorCalibrationDialog::restoreProjector);

    auto *lower = new QWidget(this);
    auto *lowerLayout = new QVBoxLayout(lower);
    lowerLayout->setContentsMargins(0, 0, 0, 0);
    lowerLayout->addWidget(m_status);
    lowerLayout->addWidget(m_resultLine);
    lowerLayout->addWidget(m_diagnosticsLine);
    lowerLayout->addWidget(m_table, 1);
    auto *split = new QSplitter(Qt::Vertical, this);
    split->addWidget(views);
    split->addWidget(lower);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 2);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(pickers);
    layout->addWidget(buildSettingsPanel());
    layout->addWidget(split, 1);
    layout->addLayout(buttons);
    connectSettings();
}

QWidget *ProjectorCalibrationDialog::buildSettingsPanel()
{
    const GuideProjectorCalibrationSettings &s = m_settings;
    auto *panel = new QWidget(this);
    auto *grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);

    m_projectorUpdate = toggle(tr("3D View Projector Update"),
                               tr("Apply the solved calibration transform to the projector object in the 3D View."),
                               "calibrationProjectorUpdate", s.projector_update, panel);
    m_adjustThrowRatio = toggle(tr("Adjust Throw Ratio"),
                                tr("Allow calibration to solve Throw Ratio. Leave off to keep the current projector "
                                   "throw ratio fixed."),
                                "calibrationAdjustThrowRatio", s.adjust_throw_ratio, panel);
    m_adjustLensShift = toggle(tr("Adjust Lens Shift"),
                               tr("Allow calibration to solve Lens Shift X/Y. Leave off to keep the current projector "
                                  "lens shift fixed."),
                               "calibrationAdjustLensShift", s.adjust_lens_shift, panel);
    m_wireWire = toggle(tr("Wire"), tr("Show Wireframe"), "calibrationWireframeWire", s.wireframe_show_wireframe, panel);
    m_wireShade = toggle(tr("Shade"), tr("Show Shading"), "calibrationWireframeShade", s.wireframe_show_shading, panel);
    m_wireVertex = toggle(tr("Vertex"), tr("Show Candidate Vertices"), "calibrationWireframeVertex",
                          s.wireframe_show_candidate_vertex, panel);
    m_projWire = toggle(tr("Wire"), tr("Show Wireframe"), "calibrationProjectorWire", s.projector_show_wireframe, panel);
    m_projShade = toggle(tr("Shade"), tr("Show Shading"), "calibrationProjectorShade", s.projector_show_shading, panel);
    m_projVertex = toggle(tr("Vertex"), tr("Show Vertex"), "calibrationProjectorVertex", s.projector_show_vertex, panel);

    grid->addWidget(groupWith(tr("3D Update"), {m_projectorUpdate}, panel), 0, 0);
    grid->addWidget(groupWith(tr("Throw Ratio"), {m_adjustThrowRatio}, panel), 0, 1);
    grid->addWidget(groupWith(tr("Lens Shift"), {m_adjustLensShift}, panel), 0, 2);
    grid->addWidget(groupWith(tr("Wireframe View"), {m_wireWire, m_wireShade, m_wireVertex}, panel), 0, 3);
    grid->addWidget(groupWith(tr("Projector View"), {m_projWire, m_projShade, m_projVertex}, panel), 0, 4);

    m_vertexSize = new QSpinBox(panel);
    m_vertexSize->setObjectName(QStringLiteral("calibrationVertexSize"));
    m_vertexSize->setRange(1, 64);
    m_vertexSize->setValue(s.vertex_size);
    m_markerSize = new QSpinBox(panel);
    m_markerSize->setObjectName(QStringLiteral("calibrationMarkerSize"));
    m_markerSize->setRange(1, 64);
    m_markerSize->setValue(s.circle_size);
    m_outputSize = new QLabel(panel);
    m_outputSize->setObjectName(QStringLiteral("calibrationOutputSize"));
    auto *sizes = new QGroupBox(panel);
    auto *sizesForm = new QFormLayout(sizes);
    sizesForm->setContentsMargins(6, 4, 6, 4);
    sizesForm->addRow(tr("Vertex Size (px)"), m_vertexSize);
    sizesForm->addRow(tr("Marker Size (px)"), m_markerSize);
    sizesForm->addRow(tr("Output Size (px)"), m_outputSize);
    grid->addWidget(sizes, 1, 0);

    m_lutScale = new QDoubleSpinBox(panel);
    m_lutScale->setObjectName(QStringLiteral("calibrationLutScale"));
    m_lutScale->setRange(0.0, 10.0);
    m_lutScale->setDecimals(3);
    m_lutScale->setSingleStep(0.1);
    m_lutScale->setValue(s.uv_lut_scale);
    m_lutScale->setToolTip(tr("Multiply only the output U coordinate by this value when exporting or updating LUT files."));
    m_lutAaSamples = new QSpinBox(panel);
    m_lutAaSamples->setObjectName(QStringLiteral("calibrationLutAaSamples"));
    m_lutAaSamples->setRange(1, 4);
    m_lutAaSamples->setValue(s.uv_lut_aa_samples);
    m_lutAaSamples->setToolTip(
        tr("Use a D3D11 MSAA render target and resolve per-sample valid coverage for UV LUT edges."));
    m_lutFeather = new QDoubleSpinBox(panel);
    m_lutFeather->setObjectName(QStringLiteral("calibrationLutFeather"));
    m_lutFeather->setRange(0.0, 8.0);
    m_lutFeather->setDecimals(2);
    m_lutFeather->setSingleStep(0.5);
    m_lutFeather->setValue(s.uv_lut_edge_feather_px);
    m_lutFeather->setToolTip(
        tr("Write soft valid-mask coverage near UV LUT edges. 0 keeps the legacy 0/1 valid mask."));
    auto *lut = new QGroupBox(panel);
    auto *lutForm = new QFormLayout(lut);
    lutForm->setContentsMargins(6, 4, 6, 4);
    lutForm->addRow(tr("UV LUT U Scale (0-10)"), m_lutScale);
    lutForm->addRow(tr("UV LUT AA Samples"), m_lutAaSamples);
    lutForm->addRow(tr("UV LUT Edge Feather (px)"), m_lutFeather);
    grid->addWidget(lut, 1, 1);

    grid->addWidget(buildOutputGroup(), 1, 2);
    grid->addWidget(buildServerGroup(), 1, 3, 1, 2);
    return panel;
}

QGroupBox *ProjectorCalibrationDialog::buildOutputGroup()
{
    auto *group = new QGroupBox(tr("Output"), this);
    auto *form = new QFormLayout(group);
    form->setContentsMargins(6, 4, 6, 4);
    m_outputMode = new QComboBox(group);
    m_outputMode->setObjectName(QStringLiteral("calibrationOutputMode"));
    m_outputMode->addItem(tr("Auto"), 0);
    m_outputMode->addItem(tr("Spout"), 1);
    m_outputMode->addItem(tr("NDI"), 2);
    m_outputMode->setCurrentIndex(m_settings.output_mode);
    m_outputName = new QLineEdit(m_settings.output_name, group);
    m_outputName->setObjectName(QStringLiteral("calibrationOutputName"));
    m_outputName->setToolTip(tr("Optional Spout/NDI output name."));
    m_outputName->setPlaceholderText(tr("Auto: VantreoGuide Calibration Projector View"));
    form->addRow(m_outputMode);
    form->addRow(m_outputName);
    return group;
}

QGroupBox *ProjectorCalibrationDialog::buildServerGroup()
{
    const GuideProjectorCalibrationSettings &s = m_settings;
    auto *group = new QGroupBox(tr("Vantreo Server UDP"), this);
    auto *grid = new QGridLayout(group);
    grid->setContentsMargins(6, 4, 6, 4);
    m_serverEnabled = toggle(tr("Enable Link"), {}, "calibrationServerEnabled", s.vantreo_server_enabled, group);
    m_serverIp = new QLineEdit(s.vantreo_server_ip, group);
    m_serverIp->setObjectName(QStringLiteral("calibrationServerIp"));
    m_serverPort = new QSpinBox(group);
    m_serverPort->setObjectName(QStringLiteral("calibrationServerPort"));
    m_serverPort->setRange(1, 65535);
    m_serverPort->setValue(s.vantreo_server_port);
    m_playerIp = new QLineEdit(s.vantreo_player_ip, group);
    m_playerIp->setObjectName(QStringLiteral("calibrationPlayerIp"));
    m_warp = new QSpinBox(group);
    m_warp->setObjectName(QStringLiteral("calibrationWarp"));
    m_warp->setRange(1, 8);
    m_warp->setValue(s.vantreo_warpeditor_number);
    m_sendLutToggle = button(QString(), "calibrationSendLutToggle", group,
                             tr("Send the UV LUT to the server after each Calibrate Projector."));
    m_sendLutToggle->setCheckable(true);
    m_updateLutButton = button(tr("Update LUT"), "calibrationUpdateLut", group);
    grid->addWidget(m_serverEnabled, 0, 0);
    grid->addWidget(new QLabel(tr("UDP Server"), group), 0, 1);
    grid->addWidget(m_serverIp, 0, 2);
    grid->addWidget(new QLabel(tr("Port"), group), 0, 3);
    grid->addWidget(m_serverPort, 0, 4);
    grid->addWidget(new QLabel(tr("Player"), group), 1, 1);
    grid->addWidget(m_playerIp, 1, 2);
    grid->addWidget(new QLabel(tr("Warp"), group), 1, 3);
    grid->addWidget(m_warp, 1, 4);
    grid->addWidget(m_sendLutToggle, 2, 0, 1, 3);
    grid->addWidget(m_updateLutButton, 2, 3, 1, 2);
    syncServerToggle();
    return group;
}

void ProjectorCalibrationDialog::syncServerToggle()
{
    m_sendLutToggle->setChecked(m_sendLutAfterCalibration);
    m_sendLutToggle->setText(m_sendLutAfterCalibration ? tr("Send UV LUT Enabled") : tr("Send UV LUT Disabled"));
}

void ProjectorCalibrationDialog::connectSettings()
{
    using S = GuideProjectorCalibrationSettings;
    auto bindBool = [this](QCheckBox *box, bool S::*member, std::function<QString(bool)> status) {
        connect(box, &QCheckBox::toggled, this, [this, member, status](bool on) {
            updateSettings([member, on](S &s) { s.*member = on; }, status ? status(on) : QString());
        });
    };
    bindBool(m_projectorUpdate, &S::projector_update, [this](bool on) {
        return on ? tr("3D View projector update is on.")
                  : tr("3D View projector update is off. Calibration preview will update without changing the "
                       "projector object.");
    });
    bindBool(m_adjustThrowRatio, &S::adjust_throw_ratio, [this](bool on) {
        return on ? tr("Throw Ratio will be adjusted by calibration.")
                  : tr("Throw Ratio is fixed to the current projector value.");
    });
    bindBool(m_adjustLensShift, &S::adjust_lens_shift, [this](bool on) {
        return on ? tr("Lens Shift X/Y will be adjusted by calibration.")
                  : tr("Lens Shift X/Y is fixed to the current projector values.");
    });
    bindBool(m_wireWire, &S::wireframe_show_wireframe, {});
    bindBool(m_wireShade, &S::wireframe_show_shading, {});
    bindBool(m_wireVertex, &S::wireframe_show_candidate_vertex, {});
    bindBool(m_projWire, &S::projector_show_wireframe, {});
    bindBool(m_projShade, &S::projector_show_shading, {});
    bindBool(m_projVertex, &S::projector_show_vertex, {});
    bindBool(m_serverEnabled, &S::vantreo_server_enabled, {});

    connect(m_vertexSize, &QSpinBox::valueChanged, this,
            [this](int v) { updateSettings([v](S &s) { s.vertex_size = v; }); });
    connect(m_markerSize, &QSpinBox::valueChanged, this,
            [this](int v) { updateSettings([v](S &s) { s.circle_size = v; }); });
    connect(m_lutScale, &QDoubleSpinBox::valueChanged, this,
            [this](double v) { updateSettings([v](S &s) { s.uv_lut_scale = v; }); });
    connect(m_lutAaSamples, &QSpinBox::valueChanged, this,
            [this](int v) { updateSettings([v](S &s) { s.uv_lut_aa_samples = v; }); });
    connect(m_lutFeather, &QDoubleSpinBox::valueChanged, this,
            [this](double v) { updateSettings([v](S &s) { s.uv_lut_edge_feather_px = v; }); });
    connect(m_serverPort, &QSpinBox::valueChanged, this,
            [this](int v) { updateSettings([v](S &s) { s.vantreo_server_port = v; }); });
    connect(m_warp, &QSpinBox::valueChanged, this,
            [this](int v) { updateSettings([v](S &s) { s.vantreo_warpeditor_number = v; }); });
    connect(m_serverIp, &QLineEdit::editingFinished, this, [this] {
        const QString ip = m_serverIp->text().trimmed();
        updateSettings([ip](S &s) { s.vantreo_server_ip = ip; });
    });
    connect(m_playerIp, &QLineEdit::editingFinished, this, [this] {
        const QString ip = m_playerIp->text().trimmed();
        updateSettings([ip](S &s) { s.vantreo_player_ip = ip; });
    });
    connect(m_outputMode, &QComboBox::currentIndexChanged, this, [this](int index) {
        const int mode = m_outputMode->itemData(index).toInt();
        updateSettings([mode](S &s) { s.output_mode = mode; });
        applyOutputMode();
    });
    connect(m_outputName, &QLineEdit::editingFinished, this, [this] {
        const QString name = m_outputName->text().trimmed();
        updateSettings([name](S &s) { s.output_name = name; });
        applyOutputMode();
    });
    connect(m_sendLutToggle, &QPushButton::toggled, this, [this](bool on) {
        m_sendLutAfterCalibration = on;
        syncServerToggle();
    });
    connect(m_updateLutButton, &QPushButton::clicked, this, [this] { updateLut(); });
}

void ProjectorCalibrationDialog::updateSettings(const std::function<void(GuideProjectorCalibrationSettings &)> &change,
                                                const QString &status)
{
    GuideProjectorCalibrationSettings next = m_settings;
    change(next);
    clampProjectorCalibrationSettings(&next);
    if (!status.isEmpty())
        setStatus(status);
    if (next == m_settings)
        return;
    m_settings = next;
    if (m_settingsChanged)
        m_settingsChanged(m_settings);
    storeRowsInRecord();
    refreshViews();
}
