#include "guide/ui/GuideTab.h"

#include "exchange/ExporterTable.h"
#include "exchange/GuideMeshExport.h"

#include "guide/GuideRenderer.h"
#include "guide/PngWriter.h"
#include "guide/ProjectorLayout.h"
#include "guide/StyleDefaults.h"
#include "guide/ui/GuidePreviewWidget.h"
#include "guide/ui/LayerListWidget.h"
#include "common/SettingsKeys.h"

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDebug>
#include <QDir>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QSplitter>
#include <QStandardPaths>
#include <QTimer>
#include <QToolButton>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kMaxPixels = 32768;
constexpr int kMaxMillimetres = 10000000;

QSpinBox *makeSpin(int min, int max, const QString &suffix = {})
{
    auto *spin = new QSpinBox;
    spin->setRange(min, max);
    spin->setSuffix(suffix);
    // Values are taken on Enter, focus loss or the arrows, never mid-typing.
    spin->setKeyboardTracking(false);
    spin->setAccelerated(true);
    spin->setMinimumWidth(70);
    return spin;
}

QDoubleSpinBox *makeDoubleSpin(double min, double max, int decimals, double step, const QString &suffix = {})
{
    auto *spin = new QDoubleSpinBox;
    spin->setRange(min, max);
    spin->setDecimals(decimals);
    spin->setSingleStep(step);
    spin->setSuffix(suffix);
    spin->setKeyboardTracking(false);
    spin->setAccelerated(true);
    spin->setMinimumWidth(70);
    return spin;
}

QCheckBox *makeCheck(const QString &text, const char *objectName)
{
    auto *box = new QCheckBox(text);
    box->setObjectName(QString::fromLatin1(objectName));
    return box;
}

QWidget *pair(QWidget *a, QWidget *b, const QString &separator = QStringLiteral("×"))
{
    auto *w = new QWidget;
    auto *l = new QHBoxLayout(w);
    l->setContentsMargins(0, 0, 0, 0);
    l->setSpacing(4);
    l->addWidget(a, 1);
    auto *sep = new QLabel(separator);
    sep->setAlignment(Qt::AlignCenter);
    l->addWidget(sep);
    l->addWidget(b, 1);
    return w;
}

QGroupBox *makeGroup(const QString &title, const char *objectName)
{
    auto *group = new QGroupBox(title);
    group->setObjectName(QString::fromLatin1(objectName));
    return group;
}

QFormLayout *makeForm(QWidget *parent)
{
    auto *form = new QFormLayout(parent);
    form->setContentsMargins(8, 6, 8, 8);
    form->setHorizontalSpacing(8);
    form->setVerticalSpacing(4);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return form;
}

QLabel *makeNotice(const char *objectName)
{
    auto *label = new QLabel;
    label->setObjectName(QString::fromLatin1(objectName));
    label->setWordWrap(true);
    label->setStyleSheet(QStringLiteral("QLabel { color: #f0b840; }"));
    label->setVisible(false);
    return label;
}

void setColorButton(QPushButton *button, const QColor &color)
{
    button->setText(color.name());
    const QColor text = color.lightnessF() > 0.55 ? QColor(Qt::black) : QColor(Qt::white);
    button->setStyleSheet(QStringLiteral("QPushButton { background-color: %1; color: %2; }").arg(color.name(), text.name()));
}

} // namespace

GuideTab::GuideTab(QWidget *parent, const QString &styleFilePath)
    : QWidget(parent)
    , m_styleFilePath(styleFilePath)
{
    setObjectName(QStringLiteral("vantreoGuideTab"));
    m_renderTimer = new QTimer(this);
    m_renderTimer->setSingleShot(true);
    m_renderTimer->setInterval(0);
    connect(m_renderTimer, &QTimer::timeout, this, &GuideTab::startRender);
    m_textTimer = new QTimer(this);
    m_textTimer->setSingleShot(true);
    m_textTimer->setInterval(350);
    connect(m_textTimer, &QTimer::timeout, this, [this] { takeSettingsFromControls(Edit::Other); });
    m_retranslateTimer = new QTimer(this);
    m_retranslateTimer->setSingleShot(true);
    m_retranslateTimer->setInterval(0);
    connect(m_retranslateTimer, &QTimer::timeout, this, &GuideTab::retranslateUi);

    auto *splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setObjectName(QStringLiteral("vantreoGuideSplitter"));
    splitter->setChildrenCollapsible(false);

    m_scroll = new QScrollArea;
    m_scroll->setObjectName(QStringLiteral("vantreoGuideControls"));
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidget(buildControlPanel());
    m_scroll->setMinimumWidth(330);
    splitter->addWidget(m_scroll);
    splitter->addWidget(buildPreviewPanel());

    m_layerGroup = makeGroup(tr("Layers"), "vantreoGuideLayersGroup");
    auto *layerLayout = new QVBoxLayout(m_layerGroup);
    layerLayout->setContentsMargins(6, 6, 6, 6);
    m_layers = new LayerListWidget;
    layerLayout->addWidget(m_layers);
    m_layerGroup->setMinimumWidth(250);
    splitter->addWidget(m_layerGroup);
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    splitter->setStretchFactor(2, 0);
    splitter->setSizes({350, 860, 290});

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);

    connectControls();
    connectViews();
    connect(this, &GuideTab::settingsChanged, this, &GuideTab::recordUndoStep);

    GuideSettings initial;
    QString error;
    const QString readPath = m_styleFilePath.isEmpty() ? styleDefaultsReadPath() : m_styleFilePath;
    if (!loadStyleDefaults(readPath, &initial, &error))
        qWarning().noquote() << "Failed to load guide style defaults:" << error;
    setSettings(initial);
}

GuideTab::~GuideTab() = default;

QWidget *GuideTab::buildControlPanel()
{
    auto *panel = new QWidget;
    auto *column = new QVBoxLayout(panel);
    column->setContentsMargins(6, 6, 6, 6);
    column->setSpacing(6);

    // Size
    auto *size = makeGroup(tr("Size"), "vantreoGuideSizeGroup");
    auto *sizeForm = makeForm(size);
    m_realWidth = makeSpin(1, kMaxMillimetres, tr(" mm"));
    m_realHeight = makeSpin(1, kMaxMillimetres, tr(" mm"));
    m_realWidth->setObjectName(QStringLiteral("vantreoGuideRealWidth"));
    m_realHeight->setObjectName(QStringLiteral("vantreoGuideRealHeight"));
    sizeForm->addRow(tr("Real Size"), pair(m_realWidth, m_realHeight));
    m_pixelWidth = makeSpin(4, kMaxPixels, tr(" px"));
    m_pixelHeight = makeSpin(4, kMaxPixels, tr(" px"));
    m_pixelWidth->setObjectName(QStringLiteral("vantreoGuidePixelWidth"));
    m_pixelHeight->setObjectName(QStringLiteral("vantreoGuidePixelHeight"));
    m_pixelWidth->installEventFilter(this);
    m_pixelHeight->installEventFilter(this);
    sizeForm->addRow(tr("Pixel Size"), pair(m_pixelWidth, m_pixelHeight));
    m_fixedRatio = makeCheck(tr("Fixed Ratio"), "vantreoGuideFixedRatio");
    m_fixedRatio->setToolTip(tr("Keep the pixel size in the aspect ratio of the real size"));
    m_multipleOf4 = makeCheck(tr("Multiple of 4"), "vantreoGuideMultipleOf4");
    m_multipleOf4->setToolTip(tr("Keep the pixel width and height multiples of 4"));
    auto *sizeChecks = new QHBoxLayout;
    sizeChecks->addWidget(m_fixedRatio);
    sizeChecks->addWidget(m_multipleOf4);
    sizeChecks->addStretch(1);
    sizeForm->addRow(sizeChecks);
    m_sizeNotice = makeNotice("vantreoGuideSizeNotice");
    sizeForm->addRow(m_sizeNotice);
    column->addWidget(size);

    // Grid
    auto *grid = makeGroup(tr("Grid"), "vantreoGuideGridGroup");
    auto *gridForm = makeForm(grid);
    m_rows = makeSpin(1, 4096);
    m_columns = makeSpin(1, 4096);
    m_rows->setObjectName(QStringLiteral("vantreoGuideRows"));
    m_columns->setObjectName(QStringLiteral("vantreoGuideColumns"));
    gridForm->addRow(tr("Rows × Columns"), pair(m_rows, m_columns));
    m_autoColumns = makeCheck(tr("Auto Columns"), "vantreoGuideAutoColumns");
    m_autoColumns->setToolTip(tr("Columns follow from the rows and the aspect ratio"));
    m_realSquare = makeCheck(tr("Real Square"), "vantreoGuideRealSquare");
    m_realSquare->setToolTip(tr("Square cells of a fixed pixel size decide rows and columns"));
    auto *gridChecks = new QHBoxLayout;
    gridChecks->addWidget(m_autoColumns);
    gridChecks->addWidget(m_realSquare);
    gridChecks->addStretch(1);
    gridForm->addRow(gridChecks);
    m_realSquareWidth = makeSpin(1, kMaxPixels, tr(" px"));
    m_realSquareWidth->setObjectName(QStringLiteral("vantreoGuideRealSquareWidth"));
    gridForm->addRow(tr("Square Size"), m_realSquareWidth);
    m_gridInfo = new QLabel;
    m_gridInfo->setObjectName(QStringLiteral("vantreoGuideGridInfo"));
    m_gridInfo->setForegroundRole(QPalette::PlaceholderText); // the palette's readable hint colour
    gridForm->addRow(m_gridInfo);
    column->addWidget(grid);

    // Colour and numbering
    auto *style = makeGroup(tr("Color and Numbers"), "vantreoGuideStyleGroup");
    auto *styleForm = makeForm(style);
    m_colorStyle = new QComboBox;
    m_colorStyle->setObjectName(QStringLiteral("vantreoGuideColorStyle"));
    m_colorStyle->addItem(tr("Default"), GuidePatternDefault);
    m_colorStyle->addItem(tr("Vantreo"), GuidePatternVantreo);
    styleForm->addRow(tr("Color Style"), m_colorStyle);
    m_numberFormat = new QComboBox;
    m_numberFormat->setObjectName(QStringLiteral("vantreoGuideNumberFormat"));
    m_numberFormat->addItem(tr("Row-Col"), GuideNumberRowCol);
    m_numberFormat->addItem(tr("Col-Row"), GuideNumberColRow);
    m_numberFormat->addItem(tr("Korean Cell Name"), GuideNumberKorean);
    m_numberFormat->addItem(tr("English Cell Name"), GuideNumberEnglish);
    styleForm->addRow(tr("Number Format"), m_numberFormat);
    m_randomizeColor = new QPushButton(tr("Randomize Color"));
    m_randomizeColor->setObjectName(QStringLiteral("vantreoGuideRandomizeColor"));
    m_resetColor = new QPushButton(tr("Reset Color"));
    m_resetColor->setObjectName(QStringLiteral("vantreoGuideResetColor"));
    m_resetColor->setToolTip(tr("Return every cell to the colour style"));
    auto *colorButtons = new QHBoxLayout;
    colorButtons->addWidget(m_randomizeColor);
    colorButtons->addWidget(m_resetColor);
    styleForm->addRow(colorButtons);
    m_inverseX = makeCheck(tr("Invert X"), "vantreoGuideInverseX");
    m_inverseY = makeCheck(tr("Invert Y"), "vantreoGuideInverseY");
    auto *inverse = new QHBoxLayout;
    inverse->addWidget(m_inverseX);
    inverse->addWidget(m_inverseY);
    inverse->addStretch(1);
    styleForm->addRow(inverse);
    column->addWidget(style);

    // Display switches, two per row
    auto *display = makeGroup(tr("Display"), "vantreoGuideDisplayGroup");
    auto *displayGrid = new QGridLayout(display);
    displayGrid->setContentsMargins(8, 6, 8, 8);
    displayGrid->setHorizontalSpacing(8);
    displayGrid->setVerticalSpacing(3);
    m_displayNumber = makeCheck(tr("Cell Numbers"), "vantreoGuideDisplayNumber");
    m_displayCellBoundary = makeCheck(tr("Cell Boundaries"), "vantreoGuideDisplayCellBoundary");
    m_displayInnerline = makeCheck(tr("Inner Lines"), "vantreoGuideDisplayInnerline");
    m_displayCenterline = makeCheck(tr("Center Lines"), "vantreoGuideDisplayCenterline");
    m_displayCrossline = makeCheck(tr("Cross Lines"), "vantreoGuideDisplayCrossline");
    m_displayCircle = makeCheck(tr("Circles"), "vantreoGuideDisplayCircle");
    m_displayOutline = makeCheck(tr("Outline"), "vantreoGuideDisplayOutline");
    m_displayResolution = makeCheck(tr("Resolution"), "vantreoGuideDisplayResolution");
    m_displayReal = makeCheck(tr("Real Size"), "vantreoGuideDisplayReal");
    m_displaySquareStatus = makeCheck(tr("Square Status"), "vantreoGuideDisplaySquareStatus");
    m_showWidthDimension = makeCheck(tr("Width Dimension"), "vantreoGuideShowWidthDimension");
    m_showHeightDimension = makeCheck(tr("Height Dimension"), "vantreoGuideShowHeightDimension");
    m_displayExplain = makeCheck(tr("Description"), "vantreoGuideDisplayExplain");
    m_displayFinalResolution = makeCheck(tr("Final Resolution Info"), "vantreoGuideDisplayFinalResolution");
    const QList<QCheckBox *> switches = {m_displayNumber, m_displayCellBoundary, m_displayInnerline, m_displayCenterline,
                                         m_displayCrossline, m_displayCircle, m_displayOutline, m_displayResolution,
                                         m_displayReal, m_displaySquareStatus, m_showWidthDimension,
                                         m_showHeightDimension, m_displayExplain, m_displayFinalResolution};
    for (int i = 0; i < switches.size(); ++i)
        displayGrid->addWidget(switches.at(i), i / 2, i % 2);
    column->addWidget(display);

    // Texts
    auto *texts = makeGroup(tr("Text"), "vantreoGuideTextGroup");
    auto *textForm = makeForm(texts);
    m_explain = new QPlainTextEdit;
    m_explain->setObjectName(QStringLiteral("vantreoGuideExplain"));
    m_explain->setPlaceholderText(tr("Description shown on the guide"));
    m_explain->setTabChangesFocus(true);
    m_explain->setFixedHeight(m_explain->fontMetrics().lineSpacing() * 3 + 14);
    textForm->addRow(tr("Description"), m_explain);
    m_fontScale = makeDoubleSpin(0.1, 10.0, 2, 0.05);
    m_fontScale->setObjectName(QStringLiteral("vantreoGuideFontScale"));
    textForm->addRow(tr("Font Scale"), m_fontScale);
    column->addWidget(texts);

    // Logo
    auto *logo = makeGroup(tr("Logo"), "vantreoGuideLogoGroup");
    auto *logoForm = makeForm(logo);
    m_displayLogo = makeCheck(tr("Show Logo"), "vantreoGuideDisplayLogo");
    logoForm->addRow(m_displayLogo);
    m_logoPath = new QLineEdit;
    m_logoPath->setObjectName(QStringLiteral("vantreoGuideLogoPath"));
    m_logoPath->setPlaceholderText(tr("Built-in logo"));
    m_logoBrowse = new QToolButton;
    m_logoBrowse->setText(tr("..."));
    m_logoBrowse->setToolTip(tr("Choose a logo image"));
    m_logoReset = new QToolButton;
    m_logoReset->setText(tr("Reset"));
    m_logoReset->setToolTip(tr("Use the built-in logo"));
    auto *logoRow = new QHBoxLayout;
    logoRow->setSpacing(3);
    logoRow->addWidget(m_logoPath, 1);
    logoRow->addWidget(m_logoBrowse);
    logoRow->addWidget(m_logoReset);
    logoForm->addRow(tr("Image"), logoRow);
    m_logoOpacity = new QSlider(Qt::Horizontal);
    m_logoOpacity->setObjectName(QStringLiteral("vantreoGuideLogoOpacity"));
    m_logoOpacity->setRange(0, 100);
    m_logoOpacityLabel = new QLabel;
    m_logoOpacityLabel->setMinimumWidth(38);
    auto *opacityRow = new QHBoxLayout;
    opacityRow->addWidget(m_logoOpacity, 1);
    opacityRow->addWidget(m_logoOpacityLabel);
    logoForm->addRow(tr("Opacity"), opacityRow);
    column->addWidget(logo);

    // Flip and rotate
    auto *orientation = makeGroup(tr("Orientation"), "vantreoGuideOrientationGroup");
    auto *orientationRow = new QHBoxLayout(orientation);
    orientationRow->setContentsMargins(8, 6, 8, 8);
    m_flipH = makeCheck(tr("Flip Horizontal"), "vantreoGuideFlipH");
    m_rotate = makeCheck(tr("Rotate 90°"), "vantreoGuideRotate");
    orientationRow->addWidget(m_flipH);
    orientationRow->addWidget(m_rotate);
    orientationRow->addStretch(1);
    column->addWidget(orientation);

    // Document title (PPT/PDF documents of the tab views)
    auto *document = makeGroup(tr("Document Title"), "vantreoGuideDocumentGroup");
    auto *documentForm = makeForm(document);
    m_documentTitleVisible = makeCheck(tr("Show Title"), "vantreoGuideDocumentTitleVisible");
    m_documentCustomTitleEnabled = makeCheck(tr("Custom Title"), "vantreoGuideDocumentCustomTitleEnabled");
    auto *documentChecks = new QHBoxLayout;
    documentChecks->addWidget(m_documentTitleVisible);
    documentChecks->addWidget(m_documentCustomTitleEnabled);
    documentChecks->addStretch(1);
    documentForm->addRow(documentChecks);
    m_documentCustomTitle = new QLineEdit;
    m_documentCustomTitle->setObjectName(QStringLiteral("vantreoGuideDocumentCustomTitle"));
    m_documentCustomTitle->setPlaceholderText(tr("Tab title"));
    documentForm->addRow(tr("Title"), m_documentCustomTitle);
    m_documentTitleColor = new QPushButton;
    m_documentTitleColor->setObjectName(QStringLiteral("vantreoGuideDocumentTitleColor"));
    documentForm->addRow(tr("Background"), m_documentTitleColor);
    column->addWidget(document);

    // Projector layout
    auto *projector = makeGroup(tr("Projector Layout"), "vantreoGuideProjectorGroup");
    auto *projectorForm = makeForm(projector);
    m_displayProjectorInfo = makeCheck(tr("Display Projector Info"), "vantreoGuideDisplayProjectorInfo");
    projectorForm->addRow(m_displayProjectorInfo);
    m_projectorCount = makeSpin(1, 64);
    m_projectorCountY = makeSpin(1, 64);
    m_projectorCount->setObjectName(QStringLiteral("vantreoGuideProjectorCount"));
    m_projectorCountY->setObjectName(QStringLiteral("vantreoGuideProjectorCountY"));
    m_projectorCount->setToolTip(tr("Projectors across"));
    m_projectorCountY->setToolTip(tr("Projectors down"));
    projectorForm->addRow(tr("Array"), pair(m_projectorCount, m_projectorCountY));
    m_projectorWidth = makeSpin(4, kMaxPixels);
    m_projectorHeight = makeSpin(4, kMaxPixels);
    m_projectorWidth->setObjectName(QStringLiteral("vantreoGuideProjectorWidth"));
    m_projectorHeight->setObjectName(QStringLiteral("vantreoGuideProjectorHeight"));
    auto *resolution = pair(m_projectorWidth, m_projectorHeight);
    resolution->setToolTip(tr("Projector Resolution"));
    projectorForm->addRow(tr("Resolution (px)"), resolution);
    m_throwRatio = makeDoubleSpin(0.0, 100.0, 3, 0.01);
    m_throwRatio->setObjectName(QStringLiteral("vantreoGuideThrowRatio"));
    projectorForm->addRow(tr("Throw Ratio"), m_throwRatio);
    m_throwDistance = makeDoubleSpin(1.0, 1.0e7, 0, 10.0, tr(" mm"));
    m_throwDistance->setObjectName(QStringLiteral("vantreoGuideThrowDistance"));
    projectorForm->addRow(tr("Throw Distance"), m_throwDistance);
    m_overlap = makeDoubleSpin(0.0, 95.0, 1, 1.0, QStringLiteral(" %"));
    m_overlap->setObjectName(QStringLiteral("vantreoGuideMinimumOverlap"));
    projectorForm->addRow(tr("Minimum Overlap"), m_overlap);
    m_layoutBasis = new QComboBox;
    m_layoutBasis->setObjectName(QStringLiteral("vantreoGuideLayoutBasis"));
    m_layoutBasis->addItem(tr("Throw Ratio"), false);
    m_layoutBasis->addItem(tr("Throw Distance"), true);
    projectorForm->addRow(tr("Layout Basis"), m_layoutBasis);
    m_autoLayout = makeCheck(tr("Auto Layout"), "vantreoGuideAutoLayout");
    m_realPixel = makeCheck(tr("Calculate Effective Resolution"), "vantreoGuideRealPixel");
    m_floor = makeCheck(tr("Floor Projection"), "vantreoGuideFloor");
    m_vertical = makeCheck(tr("Vertical Projection"), "vantreoGuideVertical");
    auto *projectorChecks = new QGridLayout;
    projectorChecks->setHorizontalSpacing(8);
    projectorChecks->setVerticalSpacing(3);
    projectorChecks->addWidget(m_autoLayout, 0, 0);
    projectorChecks->addWidget(m_floor, 0, 1);
    projectorChecks->addWidget(m_vertical, 1, 1);
    projectorChecks->addWidget(m_realPixel, 2, 0, 1, 2);
    projectorForm->addRow(projectorChecks);
    m_projectorInfo = new QLabel;
    m_projectorInfo->setObjectName(QStringLiteral("vantreoGuideProjectorInfo"));
    m_projectorInfo->setWordWrap(true);
    m_projectorInfo->setTextInteractionFlags(Qt::TextSelectableByMouse);
    projectorForm->addRow(m_projectorInfo);
    m_projectorNotice = makeNotice("vantreoGuideProjectorNotice");
    projectorForm->addRow(m_projectorNotice);
    m_applyProjectorLayout = new QPushButton(tr("Apply Projector Layout"));
    m_applyProjectorLayout->setObjectName(QStringLiteral("vantreoGuideApplyProjectorLayout"));
    projectorForm->addRow(m_applyProjectorLayout);
    column->addWidget(projector);

    column->addStretch(1);
    return panel;
}

QWidget *GuideTab::buildPreviewPanel()
{
    auto *panel = new QWidget;
    m_previewColumn = new QVBoxLayout(panel);
    m_previewColumn->setContentsMargins(0, 0, 0, 0);
    m_previewColumn->setSpacing(0);
    m_preview = new GuidePreviewWidget;
    m_previewColumn->addWidget(m_preview, 1);
    m_previewColumn->insertWidget(0, buildPreviewBar());
    connect(m_preview, &GuidePreviewWidget::zoomChanged, this, [this](double zoom) {
        m_zoomLabel->setText(QStringLiteral("%1%").arg(QString::number(zoom * 100.0, 'f', zoom < 1.0 ? 1 : 0)));
    });
    return panel;
}

QWidget *GuideTab::buildPreviewBar()
{
    auto *bar = new QWidget;
    bar->setObjectName(QStringLiteral("vantreoGuidePreviewBar"));
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(6, 4, 6, 4);
    row->setSpacing(4);
    auto addTool = [&](const QString &text, const QString &tip) {
        auto *button = new QToolButton;
        button->setText(text);
        button->setToolTip(tip);
        row->addWidget(button);
        return button;
    };
    QToolButton *fit = addTool(tr("Fit"), tr("Fit the guide into the view (double-click, F)"));
    QToolButton *actual = addTool(tr("100%"), tr("One guide pixel per screen pixel (1)"));
    QToolButton *zoomOut = addTool(QStringLiteral("−"), tr("Zoom out (-)"));
    QToolButton *zoomIn = addTool(QStringLiteral("+"), tr("Zoom in (+)"));
    m_zoomLabel = new QLabel;
    m_zoomLabel->setObjectName(QStringLiteral("vantreoGuideZoomLabel"));
    m_zoomLabel->setMinimumWidth(60);
    const double zoom = m_preview->zoom();
    m_zoomLabel->setText(QStringLiteral("%1%").arg(QString::number(zoom * 100.0, 'f', zoom < 1.0 ? 1 : 0)));
    row->addWidget(m_zoomLabel);
    row->addStretch(1);
    m_saveAsDefault = new QPushButton(tr("Save As Default"));
    m_saveAsDefault->setObjectName(QStringLiteral("vantreoGuideSaveAsDefault"));
    m_saveAsDefault->setToolTip(tr("Use this guide's style for new guides"));
    m_exportPng = new QPushButton(tr("Export PNG"));
    m_exportPng->setObjectName(QStringLiteral("vantreoGuideExportPng"));
    m_exportMesh = new QPushButton(QCoreApplication::translate("Exporters", "Export Guide Mesh (OBJ + MEL)..."));
    m_exportMesh->setObjectName(QStringLiteral("vantreoGuideExportMesh"));
    row->addWidget(m_saveAsDefault);
    row->addWidget(m_exportPng);
    row->addWidget(m_exportMesh);

    connect(fit, &QToolButton::clicked, m_preview, &GuidePreviewWidget::fitToView);
    connect(actual, &QToolButton::clicked, m_preview, [this] { m_preview->setZoom(1.0); });
    connect(zoomOut, &QToolButton::clicked, m_preview, &GuidePreviewWidget::zoomOut);
    connect(zoomIn, &QToolButton::clicked, m_preview, &GuidePreviewWidget::zoomIn);
    connect(m_exportPng, &QPushButton::clicked, this, &GuideTab::exportPngInteractive);
    connect(m_exportMesh, &QPushButton::clicked, this, [this] { exportGuideMeshInteractive(); });
    connect(m_saveAsDefault, &QPushButton::clicked, this, &GuideTab::saveStyleAsDefault);
    return bar;
}

bool GuideTab::eventFilter(QObject *watched, QEvent *event)
{
    // A computed pixel size refuses edits and says why, right where the user tried.
    if ((watched == m_pixelWidth || watched == m_pixelHeight) && m_settings.projectorRealPixel
        && (event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress
            || event->type() == QEvent::Wheel)) {
        auto *spin = static_cast<QWidget *>(watched);
        QToolTip::showText(spin->mapToGlobal(QPoint(0, spin->height())), m_sizeNotice->text(), spin);
    }
    return QWidget::eventFilter(watched, event);
}

void GuideTab::changeEvent(QEvent *event)
{
    // Installing a translation sends this once per translator; rebuild once.
    if (event->type() == QEvent::LanguageChange && m_retranslateTimer)
        m_retranslateTimer->start();
    QWidget::changeEvent(event);
}

void GuideTab::retranslateUi()
{
    // The panels are rebuilt in the new language and shown with the same settings.
    const int scrollPosition = m_scroll->verticalScrollBar()->value();
    m_scroll->setWidget(buildControlPanel()); // deletes the old panel
    connectControls();
    showSettingsInControls();
    refreshNotices();
    m_scroll->verticalScrollBar()->setValue(scrollPosition);

    QLayoutItem *oldBar = m_previewColumn->takeAt(0);
    delete oldBar->widget();
    delete oldBar;
    m_previewColumn->insertWidget(0, buildPreviewBar());
    m_layerGroup->setTitle(tr("Layers"));
}

void GuideTab::connectControls()
{
    auto on = [this](auto *widget, auto signal, Edit edit) {
        connect(widget, signal, this, [this, edit] { takeSettingsFromControls(edit); });
    };
    on(m_realWidth, &QSpinBox::valueChanged, Edit::RealSize);
    on(m_realHeight, &QSpinBox::valueChanged, Edit::RealSize);
    on(m_pixelWidth, &QSpinBox::valueChanged, Edit::PixelWidth);
    on(m_pixelHeight, &QSpinBox::valueChanged, Edit::PixelHeight);
    on(m_fixedRatio, &QCheckBox::toggled, Edit::RealSize);
    on(m_multipleOf4, &QCheckBox::toggled, Edit::Other);
    for (QSpinBox *spin : {m_rows, m_columns, m_realSquareWidth})
        on(spin, &QSpinBox::valueChanged, Edit::Grid);
    for (QCheckBox *box : {m_autoColumns, m_realSquare})
        on(box, &QCheckBox::toggled, Edit::Grid);
    for (QComboBox *combo : {m_colorStyle, m_numberFormat})
        on(combo, &QComboBox::currentIndexChanged, Edit::Other);
    for (QCheckBox *box : {m_inverseX, m_inverseY, m_displayNumber, m_displayCellBoundary, m_displayInnerline,
                           m_displayCenterline, m_displayCrossline, m_displayCircle, m_displayOutline,
                           m_displayResolution, m_displayReal, m_displaySquareStatus, m_showWidthDimension,
                           m_showHeightDimension, m_displayExplain, m_displayFinalResolution, m_displayLogo,
                           m_flipH, m_documentTitleVisible, m_documentCustomTitleEnabled})
        on(box, &QCheckBox::toggled, Edit::Other);
    on(m_rotate, &QCheckBox::toggled, Edit::Projector);
    on(m_fontScale, &QDoubleSpinBox::valueChanged, Edit::Other);
    on(m_logoPath, &QLineEdit::editingFinished, Edit::Other);
    on(m_documentCustomTitle, &QLineEdit::editingFinished, Edit::Other);
    connect(m_logoOpacity, &QSlider::valueChanged, this, [this](int value) {
        m_logoOpacityLabel->setText(QStringLiteral("%1%").arg(value));
        takeSettingsFromControls(Edit::Other);
    });
    connect(m_explain, &QPlainTextEdit::textChanged, this, [this] {
        if (!m_updatingControls)
            m_textTimer->start();
    });
    for (QSpinBox *spin : {m_projectorCount, m_projectorCountY, m_projectorWidth, m_projectorHeight})
        on(spin, &QSpinBox::valueChanged, Edit::Projector);
    for (QDoubleSpinBox *spin : {m_throwRatio, m_throwDistance, m_overlap})
        on(spin, &QDoubleSpinBox::valueChanged, Edit::Projector);
    on(m_layoutBasis, &QComboBox::currentIndexChanged, Edit::Projector);
    for (QCheckBox *box : {m_displayProjectorInfo, m_autoLayout, m_realPixel, m_floor, m_vertical})
        on(box, &QCheckBox::toggled, Edit::Projector);

    connect(m_randomizeColor, &QPushButton::clicked, this, &GuideTab::randomizeColors);
    connect(m_resetColor, &QPushButton::clicked, this, [this] {
        m_settings.colors.clear();
        takeSettingsFromControls(Edit::Other);
    });
    connect(m_logoBrowse, &QToolButton::clicked, this, &GuideTab::chooseLogo);
    connect(m_logoReset, &QToolButton::clicked, this, [this] {
        m_logoPath->clear();
        takeSettingsFromControls(Edit::Other);
    });
    connect(m_documentTitleColor, &QPushButton::clicked, this, &GuideTab::chooseTitleColor);
    connect(m_applyProjectorLayout, &QPushButton::clicked, this, &GuideTab::applyProjectorLayout);
}

void GuideTab::connectViews()
{
    connect(m_preview, &GuidePreviewWidget::imageReady, this, &GuideTab::guideImageChanged);
    connect(m_preview, &GuidePreviewWidget::layerClicked, m_layers, &LayerListWidget::setCurrentLayer);
    connect(m_preview, &GuidePreviewWidget::layerFrameEdited, this, &GuideTab::onLayerFrameEdited);
    connect(m_layers, &LayerListWidget::currentLayerChanged, m_preview, &GuidePreviewWidget::setSelectedLayer);
    connect(m_layers, &LayerListWidget::layersChanged, this, [this] {
        m_settings.imageObjects = m_layers->layers();
        updateLayerFrames();
        scheduleRender();
        Q_EMIT settingsChanged();
    });
}

void GuideTab::setSettings(const GuideSettings &settings)
{
    m_settings = settings;
    applyGuideTabLoadStep(&m_settings);
    m_settings.guidePattern = clampGuidePattern(m_settings.guidePattern);
    m_settings.numberTextFormat = clampGuideNumberFormat(m_settings.numberTextFormat);
    m_settings.projectorAutoLayoutOverlap = std::clamp(m_settings.projectorAutoLayoutOverlap, 0.0, 0.95);
    m_settings.logoOpacity = std::clamp(m_settings.logoOpacity, 0.0, 1.0);
    resizeGuideColors(&m_settings);
    showSettingsInControls();
    refreshNotices();
    updateLayerFrames();
    scheduleRender();
    Q_EMIT settingsChanged();
    // Loaded settings are where the history starts.
    m_undo.clear();
    m_redo.clear();
    m_committed = m_settings;
    Q_EMIT undoStateChanged();
}

void GuideTab::recordUndoStep()
{
    if (m_restoring || m_settings == m_committed)
        return;
    m_undo.append(m_committed);
    if (m_undo.size() > kMaxUndoSteps)
        m_undo.removeFirst();
    m_redo.clear();
    m_committed = m_settings;
    Q_EMIT undoStateChanged();
}

bool GuideTab::undo()
{
    if (m_undo.isEmpty())
        return false;
    m_redo.append(m_settings);
    restoreSettings(m_undo.takeLast());
    return true;
}

bool GuideTab::redo()
{
    if (m_redo.isEmpty())
        return false;
    m_undo.append(m_settings);
    restoreSettings(m_redo.takeLast());
    return true;
}

void GuideTab::restoreSettings(const GuideSettings &settings)
{
    // Shown as they were, without the load step: they already passed it once.
    m_restoring = true;
    m_textTimer->stop();
    m_settings = settings;
    showSettingsInControls();
    refreshNotices();
    updateLayerFrames();
    scheduleRender();
    Q_EMIT settingsChanged();
    m_committed = m_settings;
    m_restoring = false;
    Q_EMIT undoStateChanged();
}

void GuideTab::showSettingsInControls()
{
    m_updatingControls = true;
    const GuideSettings &s = m_settings;
    m_realWidth->setValue(s.realWidth);
    m_realHeight->setValue(s.realHeight);
    m_pixelWidth->setValue(s.pixelWidth);
    m_pixelHeight->setValue(s.pixelHeight);
    m_pixelWidth->setSingleStep(s.evenMultipleOf4 ? 4 : 1);
    m_pixelHeight->setSingleStep(s.evenMultipleOf4 ? 4 : 1);
    m_fixedRatio->setChecked(s.fixedRatio);
    m_multipleOf4->setChecked(s.evenMultipleOf4);
    m_rows->setValue(std::max(1, s.rows));
    m_columns->setValue(std::max(1, s.columns));
    m_autoColumns->setChecked(s.autoColumns);
    m_realSquare->setChecked(s.realSquare);
    m_realSquareWidth->setValue(std::max(1, s.realSquareWidth));
    m_rows->setEnabled(!s.realSquare);
    m_columns->setEnabled(!s.realSquare && !s.autoColumns);
    m_autoColumns->setEnabled(!s.realSquare);
    m_realSquareWidth->setEnabled(s.realSquare);
    m_colorStyle->setCurrentIndex(std::max(0, m_colorStyle->findData(clampGuidePattern(s.guidePattern))));
    m_numberFormat->setCurrentIndex(std::max(0, m_numberFormat->findData(clampGuideNumberFormat(s.numberTextFormat))));
    m_inverseX->setChecked(s.inverseX);
    m_inverseY->setChecked(s.inverseY);
    m_displayNumber->setChecked(s.displayNumber);
    m_displayCellBoundary->setChecked(s.displayCellBoundary);
    m_displayInnerline->setChecked(s.displayInnerline);
    m_displayCenterline->setChecked(s.displayCenterline);
    m_displayCrossline->setChecked(s.displayCrossline);
    m_displayCircle->setChecked(s.displayCircle);
    m_displayOutline->setChecked(s.displayOutline);
    m_displayResolution->setChecked(s.displayResolution);
    m_displayReal->setChecked(s.displayReal);
    m_displaySquareStatus->setChecked(s.displaySquareStatus);
    m_showWidthDimension->setChecked(s.showWidthDimension);
    m_showHeightDimension->setChecked(s.showHeightDimension);
    m_displayExplain->setChecked(s.displayExplain);
    m_displayFinalResolution->setChecked(s.displayFinalResolutionInfo);
    if (m_explain->toPlainText() != s.explain)
        m_explain->setPlainText(s.explain);
    m_fontScale->setValue(s.fontScale);
    m_displayLogo->setChecked(s.displayLogo);
    m_logoPath->setText(s.logoPath);
    m_logoOpacity->setValue(qRound(std::clamp(s.logoOpacity, 0.0, 1.0) * 100.0));
    m_logoOpacityLabel->setText(QStringLiteral("%1%").arg(m_logoOpacity->value()));
    m_flipH->setChecked(s.flipH);
    m_rotate->setChecked(s.rotate);
    m_documentTitleVisible->setChecked(s.documentTitleVisible);
    m_documentCustomTitleEnabled->setChecked(s.documentCustomTitleEnabled);
    m_documentCustomTitle->setText(s.documentCustomTitle);
    m_documentCustomTitle->setEnabled(s.documentCustomTitleEnabled);
    setColorButton(m_documentTitleColor, s.documentTitleBackgroundColor);
    m_displayProjectorInfo->setChecked(s.displayProjectorInfo);
    m_projectorCount->setValue(std::max(1, s.projectorCount));
    m_projectorCountY->setValue(std::max(1, s.projectorCountY));
    m_projectorWidth->setValue(s.projectorWidth);
    m_projectorHeight->setValue(s.projectorHeight);
    m_throwRatio->setValue(s.projectorThrowRatio);
    m_throwDistance->setValue(s.projectorThrowDistance);
    m_overlap->setValue(std::clamp(s.projectorAutoLayoutOverlap, 0.0, 0.95) * 100.0);
    m_layoutBasis->setCurrentIndex(s.projectorAutoLayoutUseThrowDistance ? 1 : 0);
    if (s.projectorAutoLayoutEnabled) {
        // The controls the auto layout decides show what it decides.
        const ProjectorArrayLayout layout = computeProjectorArray(s);
        if (s.projectorAutoLayoutUseThrowDistance) {
            m_projectorCount->setValue(layout.countX);
            m_projectorCountY->setValue(layout.countY);
        } else {
            m_throwDistance->setValue(layout.throwDistanceMm);
        }
    }
    m_autoLayout->setChecked(s.projectorAutoLayoutEnabled);
    m_realPixel->setChecked(s.projectorRealPixel);
    m_floor->setChecked(s.projectorFloor);
    m_vertical->setChecked(s.projectorVerticalProjection);
    // The computed pixel size refuses edits while the array decides it.
    m_pixelWidth->setReadOnly(s.projectorRealPixel);
    m_pixelHeight->setReadOnly(s.projectorRealPixel);
    m_pixelWidth->setButtonSymbols(s.projectorRealPixel ? QAbstractSpinBox::NoButtons : QAbstractSpinBox::UpDownArrows);
    m_pixelHeight->setButtonSymbols(s.projectorRealPixel ? QAbstractSpinBox::NoButtons : QAbstractSpinBox::UpDownArrows);
    m_layers->setGuideSize(QSize(s.pixelWidth, s.pixelHeight));
    if (m_layers->layers() != s.imageObjects)
        m_layers->setLayers(s.imageObjects);
    m_updatingControls = false;
}

void GuideTab::takeSettingsFromControls(Edit edit)
{
    if (m_updatingControls)
        return;
    m_textTimer->stop();
    GuideSettings &s = m_settings;
    s.realWidth = m_realWidth->value();
    s.realHeight = m_realHeight->value();
    if (!s.projectorRealPixel) {
        s.pixelWidth = m_pixelWidth->value();
        s.pixelHeight = m_pixelHeight->value();
    }
    s.fixedRatio = m_fixedRatio->isChecked();
    s.evenMultipleOf4 = m_multipleOf4->isChecked();
    s.rows = m_rows->value();
    s.columns = m_columns->value();
    s.autoColumns = m_autoColumns->isChecked();
    s.realSquare = m_realSquare->isChecked();
    s.realSquareWidth = m_realSquareWidth->value();
    s.guidePattern = clampGuidePattern(m_colorStyle->currentData().toInt());
    s.numberTextFormat = clampGuideNumberFormat(m_numberFormat->currentData().toInt());
    s.inverseX = m_inverseX->isChecked();
    s.inverseY = m_inverseY->isChecked();
    s.displayNumber = m_displayNumber->isChecked();
    s.displayCellBoundary = m_displayCellBoundary->isChecked();
    s.displayInnerline = m_displayInnerline->isChecked();
    s.displayCenterline = m_displayCenterline->isChecked();
    s.displayCrossline = m_displayCrossline->isChecked();
    s.displayCircle = m_displayCircle->isChecked();
    s.displayOutline = m_displayOutline->isChecked();
    s.displayResolution = m_displayResolution->isChecked();
    s.displayReal = m_displayReal->isChecked();
    s.displaySquareStatus = m_displaySquareStatus->isChecked();
    s.showWidthDimension = m_showWidthDimension->isChecked();
    s.showHeightDimension = m_showHeightDimension->isChecked();
    s.displayExplain = m_displayExplain->isChecked();
    s.displayFinalResolutionInfo = m_displayFinalResolution->isChecked();
    s.explain = m_explain->toPlainText();
    s.fontScale = m_fontScale->value();
    s.displayLogo = m_displayLogo->isChecked();
    s.logoPath = m_logoPath->text().trimmed();
    s.logoOpacity = std::clamp(m_logoOpacity->value() / 100.0, 0.0, 1.0);
    s.flipH = m_flipH->isChecked();
    s.rotate = m_rotate->isChecked();
    s.documentTitleVisible = m_documentTitleVisible->isChecked();
    s.documentCustomTitleEnabled = m_documentCustomTitleEnabled->isChecked();
    s.documentCustomTitle = m_documentCustomTitle->text();
    s.displayProjectorInfo = m_displayProjectorInfo->isChecked();
    s.projectorCount = m_projectorCount->value();
    s.projectorCountY = m_projectorCountY->value();
    s.projectorWidth = m_projectorWidth->value();
    s.projectorHeight = m_projectorHeight->value();
    s.projectorThrowRatio = m_throwRatio->value();
    s.projectorThrowDistance = m_throwDistance->value();
    s.projectorAutoLayoutOverlap = clampProjectorOverlap(m_overlap->value() / 100.0);
    s.projectorAutoLayoutUseThrowDistance = m_layoutBasis->currentData().toBool();
    s.projectorAutoLayoutEnabled = m_autoLayout->isChecked();
    s.projectorRealPixel = m_realPixel->isChecked();
    s.projectorFloor = m_floor->isChecked();
    s.projectorVerticalProjection = m_vertical->isChecked();
    s.imageObjects = m_layers->layers();
    // The layout scale belongs to loaded projects only; edits always start from 1.
    s.projectorScale = 1.0;

    applyDerivedValues(edit);
    showSettingsInControls();
    refreshNotices();
    updateLayerFrames();
    scheduleRender();
    Q_EMIT settingsChanged();
}

void GuideTab::applyDerivedValues(Edit edit)
{
    GuideSettings &s = m_settings;
    if (edit == Edit::Projector && s.projectorAutoLayoutEnabled) {
        // What the auto layout decides is shown in the controls it decides.
        const ProjectorArrayLayout layout = computeProjectorArray(s);
        s.projectorCount = layout.countX;
        s.projectorCountY = layout.countY;
        s.projectorThrowDistance = layout.throwDistanceMm;
    }
    if (s.projectorRealPixel) {
        const QSize size = effectiveGuidePixelSize(s);
        s.pixelWidth = size.width();
        s.pixelHeight = size.height();
    } else {
        auto snap = [&s](double value) {
            const int v = int(std::clamp(value, 4.0, double(kMaxPixels)));
            return s.evenMultipleOf4 ? guidePixelGridRule(v) : v;
        };
        if (s.fixedRatio) {
            const double ratio = s.realHeight > 0 ? double(s.realWidth) / s.realHeight : 1.0;
            if (edit == Edit::PixelWidth) {
                s.pixelWidth = snap(s.pixelWidth);
                s.pixelHeight = snap(std::round(s.pixelWidth / std::max(ratio, 1e-9)));
            } else {
                s.pixelHeight = snap(s.pixelHeight);
                s.pixelWidth = snap(std::round(s.pixelHeight * ratio));
            }
        } else {
            s.pixelWidth = snap(s.pixelWidth);
            s.pixelHeight = snap(s.pixelHeight);
        }
    }
    if (s.autoColumns && !s.realSquare)
        s.columns = autoColumnCount(s);
    resizeGuideColors(&s);
}

void GuideTab::refreshNotices()
{
    const GuideSettings &s = m_settings;
    const QString sizeNotice = tr("Guide Image size is calculated automatically. Turn off Calculate Effective Resolution to edit W/H.");
    m_sizeNotice->setText(sizeNotice);
    m_sizeNotice->setVisible(s.projectorRealPixel);
    m_pixelWidth->setToolTip(s.projectorRealPixel ? sizeNotice : QString());
    m_pixelHeight->setToolTip(s.projectorRealPixel ? sizeNotice : QString());

    const int columns = guideGridColumns(s);
    const int rows = guideGridRows(s);
    const double cellWidth = double(s.pixelWidth) / columns;
    const double cellHeight = double(s.pixelHeight) / rows;
    m_gridInfo->setText(tr("%1 × %2 cells of %3 × %4 px")
                            .arg(columns)
                            .arg(rows)
                            .arg(QString::number(s.realSquare ? s.realSquareWidth : cellWidth, 'f', s.realSquare ? 0 : 1),
                                 QString::number(s.realSquare ? s.realSquareWidth : cellHeight, 'f', s.realSquare ? 0 : 1)));

    const bool autoLayout = s.projectorAutoLayoutEnabled;
    m_layoutBasis->setEnabled(autoLayout);
    // Under the auto layout the value it computes is shown, not edited.
    m_throwDistance->setEnabled(!(autoLayout && !s.projectorAutoLayoutUseThrowDistance));
    m_projectorCount->setEnabled(!(autoLayout && s.projectorAutoLayoutUseThrowDistance));
    m_projectorCountY->setEnabled(!(autoLayout && s.projectorAutoLayoutUseThrowDistance));

    const ProjectorArrayLayout layout = computeProjectorArray(s);
    const QSize effective = layout.effectiveResolution;
    QStringList lines;
    lines << tr("%1 × %2 projectors, overlap %3 % × %4 %")
                 .arg(layout.countX)
                 .arg(layout.countY)
                 .arg(QString::number(layout.overlapX * 100.0, 'f', 1), QString::number(layout.overlapY * 100.0, 'f', 1));
    lines << tr("Throw distance %1 mm at throw ratio %2")
                 .arg(QString::number(layout.throwDistanceMm, 'f', 0), QString::number(layout.throwRatio, 'f', 3));
    lines << tr("Image per projector %1 × %2 mm")
                 .arg(QString::number(layout.imageWidthMm, 'f', 0), QString::number(layout.imageHeightMm, 'f', 0));
    lines << tr("Effective resolution %1 × %2 px").arg(effective.width()).arg(effective.height());
    m_projectorInfo->setText(lines.join(QLatin1Char('\n')));

    if (projectorResolutionDiffers(s)) {
        m_projectorNotice->setText(tr("Projector resolution differs from the guide: %1 px per projector vertically, %2 px in the guide.")
                                       .arg(projectorVerticalPixels(s))
                                       .arg(s.pixelHeight));
        m_projectorNotice->setVisible(true);
    } else {
        m_projectorNotice->setVisible(false);
    }
}

void GuideTab::scheduleRender()
{
    m_renderTimer->start();
}

void GuideTab::startRender()
{
    const GuideSettings snapshot = m_settings;
    m_preview->requestRender([snapshot] { return renderGuideImage(snapshot); });
}

QImage GuideTab::guideImage() const
{
    return m_preview->image();
}

bool GuideTab::waitForGuideImage(int timeoutMs)
{
    if (m_renderTimer->isActive()) {
        m_renderTimer->stop();
        startRender();
    }
    return m_preview->waitForIdle(timeoutMs);
}

static QTransform guideLayerTransform(const GuideSettings &s)
{
    // Layers are placed in guide pixels; the finished image is mirrored, then turned.
    QTransform t;
    if (s.rotate)
        t = QTransform(0, 1, -1, 0, s.pixelHeight, 0); // quarter turn clockwise: (x, y) -> (H - y, x)
    if (s.flipH)
        t = QTransform(-1, 0, 0, 1, s.pixelWidth, 0) * t;
    return t;
}

void GuideTab::updateLayerFrames()
{
    QVector<GuideLayerFrame> frames;
    frames.reserve(m_settings.imageObjects.size());
    for (const GuideLayerObject &layer : m_settings.imageObjects) {
        GuideLayerFrame frame;
        frame.center = QPointF(layer.centerX, layer.centerY);
        frame.size = QSizeF(layer.width, layer.height);
        frame.rotationDegrees = layer.rotationDegrees;
        frame.visible = layer.visible;
        frames.append(frame);
    }
    m_preview->setGuideTransform(guideLayerTransform(m_settings));
    m_preview->setLayerFrames(frames);
    m_preview->setSelectedLayer(m_layers->currentLayer());
}

void GuideTab::onLayerFrameEdited(int index, const GuideLayerFrame &frame)
{
    // The list emits layersChanged, which stores the layers and re-renders.
    m_layers->setLayerGeometry(index, frame.center.x(), frame.center.y(), frame.size.width(), frame.size.height(),
                               frame.rotationDegrees);
}

void GuideTab::randomizeColors()
{
    randomizeGuideColors(&m_settings);
    takeSettingsFromControls(Edit::Other);
}

void GuideTab::applyProjectorLayout()
{
    takeSettingsFromControls(Edit::Other);
    ::applyProjectorLayout(&m_settings);
    m_settings.projectorScale = 1.0;
    applyDerivedValues(Edit::Other);
    showSettingsInControls();
    refreshNotices();
    updateLayerFrames();
    scheduleRender();
    Q_EMIT settingsChanged();
}

QString GuideTab::suggestedFileName() const
{
    return exportFileName(property("fallbackTabTitle").toString(), m_settings);
}

QString GuideTab::exportFileName(const QString &title, const GuideSettings &settings)
{
    QString name = title.trimmed();
    if (name.isEmpty())
        name = tr("Guide");
    static const QString forbidden = QStringLiteral("\\/:*?\"<>|");
    for (QChar &c : name) {
        if (forbidden.contains(c) || c.unicode() < 32)
            c = QLatin1Char('_');
    }
    const QSize size = guideImageSize(settings);
    return QStringLiteral("%1_%2x%3.png").arg(name).arg(size.width()).arg(size.height());
}

bool GuideTab::exportPng(const QString &path, QString *error) const
{
    QImage image;
    if (!m_preview->isRendering() && m_preview->shownGeneration() == m_preview->requestedGeneration()
        && !m_renderTimer->isActive())
        image = m_preview->image();
    if (image.isNull() || image.size() != guideImageSize(m_settings))
        image = renderGuideImage(m_settings);
    if (image.isNull()) {
        if (error)
            *error = tr("The guide image could not be created (%1 x %2 px).").arg(m_settings.pixelWidth).arg(m_settings.pixelHeight);
        return false;
    }
    return writeGuidePng(image, path, error);
}

void GuideTab::exportPngInteractive()
{
    QSettings settings;
    QString dir = Settings::guideExportDirectory.read();
    if (dir.isEmpty() || !QFileInfo(dir).isDir())
        dir = QFileInfo(m_settings.workPath).isDir() ? m_settings.workPath
                                                     : QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    QString path = QFileDialog::getSaveFileName(this, tr("Export PNG"), QDir(dir).filePath(suggestedFileName()),
                                                tr("PNG Image (*.png)"));
    if (path.isEmpty())
        return;
    if (!path.endsWith(QLatin1String(".png"), Qt::CaseInsensitive))
        path += QLatin1String(".png");
    Settings::guideExportDirectory.write(QFileInfo(path).absolutePath());
    QString error;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool ok = exportPng(path, &error);
    QApplication::restoreOverrideCursor();
    if (!ok) {
        QMessageBox::warning(this, tr("Export failed"), error);
        return;
    }
    m_zoomLabel->setToolTip(tr("Exported %1").arg(QDir::toNativeSeparators(path)));
}

QStringList GuideTab::exportGuideMesh(const QString &base, QString *error) const
{
    // Drawn again at full size: the preview's image may lag the settings.
    QStringList written;
    if (!vg::exchange::writeGuideMesh(m_settings, renderGuideImage(m_settings), property("fallbackTabTitle").toString(),
                                      base, &written, error))
        return {};
    return written;
}

QStringList GuideTab::exportGuideMeshInteractive(const std::function<QString(const QString &)> &chooseBase)
{
    const vg::exchange::ExporterEntry *entry = vg::exchange::findExporter(QStringLiteral("guide-mesh"));
    QSettings settings;
    const QString dir = settings.value(entry->directoryKey).toString();
    QString title = entry->displayMenuText();
    while (title.endsWith(QLatin1Char('.')))
        title.chop(1);
    const QString suggested = QDir(dir).filePath(entry->defaultBaseName + QStringLiteral(".obj"));
    const QString path = chooseBase ? chooseBase(suggested)
                                    : QFileDialog::getSaveFileName(this, title, suggested, entry->fileFilter());
    if (path.isEmpty())
        return {};
    settings.setValue(entry->directoryKey, QFileInfo(path).absolutePath());
    QString error;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const QStringList written = exportGuideMesh(path, &error);
    QApplication::restoreOverrideCursor();
    if (written.isEmpty()) {
        QMessageBox::warning(this, tr("Export failed"), error);
        return {};
    }
    m_zoomLabel->setToolTip(tr("Exported %1").arg(QDir::toNativeSeparators(written.first())));
    return written;
}

void GuideTab::saveStyleAsDefault()
{
    QString error;
    const QString path = m_styleFilePath.isEmpty() ? styleDefaultsWritePath() : m_styleFilePath;
    if (saveStyleDefaults(path, m_settings, &error)) {
        QMessageBox::information(this, tr("Save Style Default"),
                                 tr("Saved style default:") + QLatin1Char(' ') + QDir::toNativeSeparators(path));
    } else {
        QMessageBox::warning(this, tr("Save Style Default"), tr("Failed to save style default:") + QLatin1Char(' ') + error);
    }
}

void GuideTab::chooseLogo()
{
    QSettings settings;
    QString dir = Settings::guideLogoDirectory.read();
    if (!m_settings.logoPath.isEmpty())
        dir = QFileInfo(m_settings.logoPath).absolutePath();
    const QString path = QFileDialog::getOpenFileName(this, tr("Choose Logo"), dir,
                                                      tr("Images (*.png *.jpg *.jpeg *.bmp *.svg *.webp);;All Files (*)"));
    if (path.isEmpty())
        return;
    Settings::guideLogoDirectory.write(QFileInfo(path).absolutePath());
    m_logoPath->setText(path);
    takeSettingsFromControls(Edit::Other);
}

void GuideTab::chooseTitleColor()
{
    const QColor color = QColorDialog::getColor(m_settings.documentTitleBackgroundColor, this, tr("Title Background"));
    if (!color.isValid())
        return;
    m_settings.documentTitleBackgroundColor = QColor(color.red(), color.green(), color.blue());
    takeSettingsFromControls(Edit::Other);
}
