#include "guide/ui/LayerListWidget.h"
#include "common/SettingsKeys.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

QDoubleSpinBox *makeDoubleSpin(double min, double max, int decimals, const QString &suffix = {})
{
    auto *spin = new QDoubleSpinBox;
    spin->setRange(min, max);
    spin->setDecimals(decimals);
    spin->setSuffix(suffix);
    spin->setKeyboardTracking(false);
    spin->setAccelerated(true);
    return spin;
}

QToolButton *makeToolButton(const QString &text, const QString &toolTip)
{
    auto *button = new QToolButton;
    button->setText(text);
    button->setToolTip(toolTip);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setAutoRaise(false);
    return button;
}

void setButtonColor(QPushButton *button, const QColor &color)
{
    button->setText(color.name(QColor::HexArgb));
    const QColor text = color.lightnessF() > 0.55 ? QColor(Qt::black) : QColor(Qt::white);
    button->setStyleSheet(QStringLiteral("QPushButton { background-color: %1; color: %2; }")
                              .arg(QColor(color.red(), color.green(), color.blue()).name(), text.name()));
}

} // namespace

LayerListWidget::LayerListWidget(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("vantreoLayerList"));
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    m_retranslateTimer = new QTimer(this);
    m_retranslateTimer->setSingleShot(true);
    m_retranslateTimer->setInterval(0);
    connect(m_retranslateTimer, &QTimer::timeout, this, [this] {
        // Rebuilt in the new language; the layers themselves are unchanged.
        delete m_body;
        buildUi();
        rebuildList();
    });
    buildUi();
    rebuildList();
}

void LayerListWidget::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange && m_retranslateTimer)
        m_retranslateTimer->start();
    QWidget::changeEvent(event);
}

void LayerListWidget::buildUi()
{
    m_body = new QWidget;
    auto *layout = new QVBoxLayout(m_body);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    static_cast<QVBoxLayout *>(this->layout())->addWidget(m_body);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(3);
    m_addImage = makeToolButton(tr("Image..."), tr("Add an image layer"));
    m_addMask = makeToolButton(tr("Mask"), tr("Add a mask layer"));
    m_addMask->setPopupMode(QToolButton::InstantPopup);
    auto *maskMenu = new QMenu(m_addMask);
    maskMenu->addAction(tr("Rectangle Mask"), this, [this] { addMaskLayer(QStringLiteral("rectangle")); });
    maskMenu->addAction(tr("Circle Mask"), this, [this] { addMaskLayer(QStringLiteral("circle")); });
    m_addMask->setMenu(maskMenu);
    m_up = makeToolButton(tr("Up"), tr("Move the layer up"));
    m_down = makeToolButton(tr("Down"), tr("Move the layer down"));
    m_remove = makeToolButton(tr("Remove"), tr("Remove the layer"));
    buttons->addWidget(m_addImage);
    buttons->addWidget(m_addMask);
    buttons->addStretch(1);
    buttons->addWidget(m_up);
    buttons->addWidget(m_down);
    buttons->addWidget(m_remove);
    layout->addLayout(buttons);

    m_list = new QListWidget;
    m_list->setObjectName(QStringLiteral("vantreoLayerListView"));
    m_list->setMinimumHeight(90);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    layout->addWidget(m_list, 1);

    m_properties = new QWidget;
    auto *form = new QFormLayout(m_properties);
    form->setContentsMargins(0, 2, 0, 0);
    form->setVerticalSpacing(3);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    m_name = new QLineEdit;
    form->addRow(tr("Name"), m_name);
    auto *opacityRow = new QHBoxLayout;
    m_opacity = new QSlider(Qt::Horizontal);
    m_opacity->setRange(0, 100);
    m_opacityLabel = new QLabel;
    m_opacityLabel->setMinimumWidth(36);
    opacityRow->addWidget(m_opacity, 1);
    opacityRow->addWidget(m_opacityLabel);
    form->addRow(tr("Opacity"), opacityRow);
    auto *position = new QHBoxLayout;
    m_centerX = makeDoubleSpin(-100000, 100000, 1);
    m_centerY = makeDoubleSpin(-100000, 100000, 1);
    m_centerX->setToolTip(tr("Centre X in guide pixels"));
    m_centerY->setToolTip(tr("Centre Y in guide pixels"));
    position->addWidget(m_centerX);
    position->addWidget(m_centerY);
    form->addRow(tr("Position"), position);
    auto *size = new QHBoxLayout;
    m_width = makeDoubleSpin(1, 100000, 1);
    m_height = makeDoubleSpin(1, 100000, 1);
    m_width->setToolTip(tr("Width in guide pixels"));
    m_height->setToolTip(tr("Height in guide pixels"));
    size->addWidget(m_width);
    size->addWidget(m_height);
    form->addRow(tr("Size"), size);
    auto *rotationRow = new QHBoxLayout;
    m_rotation = makeDoubleSpin(-180, 180, 1, QStringLiteral("°"));
    m_rotation->setWrapping(true);
    m_resetSize = new QPushButton(tr("100%"));
    m_resetSize->setToolTip(tr("Restore the layer's original size"));
    rotationRow->addWidget(m_rotation, 1);
    rotationRow->addWidget(m_resetSize);
    form->addRow(tr("Rotation"), rotationRow);

    m_imageBox = new QWidget;
    auto *cropGrid = new QGridLayout(m_imageBox);
    cropGrid->setContentsMargins(0, 0, 0, 0);
    cropGrid->setSpacing(3);
    m_cropLeft = makeDoubleSpin(0, 100, 1, QStringLiteral(" %"));
    m_cropTop = makeDoubleSpin(0, 100, 1, QStringLiteral(" %"));
    m_cropRight = makeDoubleSpin(0, 100, 1, QStringLiteral(" %"));
    m_cropBottom = makeDoubleSpin(0, 100, 1, QStringLiteral(" %"));
    m_cropLeft->setToolTip(tr("Crop from the left, percent of the image"));
    m_cropTop->setToolTip(tr("Crop from the top, percent of the image"));
    m_cropRight->setToolTip(tr("Crop from the right, percent of the image"));
    m_cropBottom->setToolTip(tr("Crop from the bottom, percent of the image"));
    cropGrid->addWidget(new QLabel(tr("L")), 0, 0);
    cropGrid->addWidget(m_cropLeft, 0, 1);
    cropGrid->addWidget(new QLabel(tr("T")), 0, 2);
    cropGrid->addWidget(m_cropTop, 0, 3);
    cropGrid->addWidget(new QLabel(tr("R")), 1, 0);
    cropGrid->addWidget(m_cropRight, 1, 1);
    cropGrid->addWidget(new QLabel(tr("B")), 1, 2);
    cropGrid->addWidget(m_cropBottom, 1, 3);
    form->addRow(tr("Crop"), m_imageBox);

    m_maskBox = new QWidget;
    auto *maskForm = new QFormLayout(m_maskBox);
    maskForm->setContentsMargins(0, 0, 0, 0);
    maskForm->setVerticalSpacing(3);
    m_maskShape = new QComboBox;
    m_maskShape->addItem(tr("Rectangle"), QStringLiteral("rectangle"));
    m_maskShape->addItem(tr("Circle"), QStringLiteral("circle"));
    maskForm->addRow(tr("Shape"), m_maskShape);
    m_fillColor = new QPushButton;
    maskForm->addRow(tr("Color"), m_fillColor);
    m_cornerRadius = makeDoubleSpin(0, 100000, 1, tr(" px"));
    maskForm->addRow(tr("Corner Radius"), m_cornerRadius);
    m_maskInverse = new QCheckBox(tr("Inverse (mask outside)"));
    maskForm->addRow(m_maskInverse);
    m_maskWireframe = new QCheckBox(tr("Wireframe"));
    maskForm->addRow(m_maskWireframe);
    auto *lines = new QHBoxLayout;
    m_uLines = new QSpinBox;
    m_uLines->setRange(0, 1000);
    m_uLines->setKeyboardTracking(false);
    m_vLines = new QSpinBox;
    m_vLines->setRange(0, 1000);
    m_vLines->setKeyboardTracking(false);
    lines->addWidget(m_uLines);
    lines->addWidget(m_vLines);
    maskForm->addRow(tr("U / V Lines"), lines);
    m_thickness = makeDoubleSpin(0.1, 1000, 1, tr(" px"));
    maskForm->addRow(tr("Line Width"), m_thickness);
    form->addRow(m_maskBox);
    layout->addWidget(m_properties);
    m_hint = new QLabel(tr("Add an image or a mask, then drag it in the preview: the corners scale it, the round handle turns it."));
    m_hint->setWordWrap(true);
    m_hint->setObjectName(QStringLiteral("vantreoLayerHint"));
    // The placeholder colour is the palette's readable hint colour.
    m_hint->setForegroundRole(QPalette::PlaceholderText);
    layout->addWidget(m_hint);

    connect(m_addImage, &QToolButton::clicked, this, &LayerListWidget::chooseImage);
    connect(m_remove, &QToolButton::clicked, this, &LayerListWidget::removeCurrentLayer);
    connect(m_up, &QToolButton::clicked, this, [this] { moveCurrentLayer(1); });
    connect(m_down, &QToolButton::clicked, this, [this] { moveCurrentLayer(-1); });
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (m_updating)
            return;
        m_current = row >= 0 ? layerForRow(row) : -1;
        showCurrentProperties();
        Q_EMIT currentLayerChanged(m_current);
    });
    connect(m_list, &QListWidget::itemChanged, this, [this](QListWidgetItem *item) {
        if (m_updating)
            return;
        const int index = layerForRow(m_list->row(item));
        setLayerVisible(index, item->checkState() == Qt::Checked);
    });
    connect(m_fillColor, &QPushButton::clicked, this, &LayerListWidget::chooseFillColor);
    connect(m_resetSize, &QPushButton::clicked, this, [this] {
        if (m_current < 0)
            return;
        GuideLayerObject &layer = m_layers[m_current];
        if (layer.baseWidth > 0 && layer.baseHeight > 0) {
            layer.width = layer.baseWidth;
            layer.height = layer.baseHeight;
            showCurrentProperties();
            commit();
        }
    });
    connect(m_opacity, &QSlider::valueChanged, this, [this](int value) {
        m_opacityLabel->setText(QStringLiteral("%1%").arg(value));
        onPropertyEdited();
    });
    connect(m_name, &QLineEdit::editingFinished, this, &LayerListWidget::onPropertyEdited);
    for (QDoubleSpinBox *spin : {m_centerX, m_centerY, m_width, m_height, m_rotation, m_cropLeft, m_cropTop,
                                 m_cropRight, m_cropBottom, m_cornerRadius, m_thickness})
        connect(spin, &QDoubleSpinBox::valueChanged, this, &LayerListWidget::onPropertyEdited);
    for (QSpinBox *spin : {m_uLines, m_vLines})
        connect(spin, &QSpinBox::valueChanged, this, &LayerListWidget::onPropertyEdited);
    for (QCheckBox *box : {m_maskInverse, m_maskWireframe})
        connect(box, &QCheckBox::toggled, this, &LayerListWidget::onPropertyEdited);
    connect(m_maskShape, &QComboBox::currentIndexChanged, this, &LayerListWidget::onPropertyEdited);
}

QString LayerListWidget::displayName(const GuideLayerObject &layer) const
{
    if (!layer.name.trimmed().isEmpty())
        return layer.name;
    if (layer.isMask())
        return layer.isCircle() ? tr("Circle Mask") : tr("Rectangle Mask");
    const QString file = QFileInfo(layer.filePath).fileName();
    return file.isEmpty() ? tr("Image") : file;
}

void LayerListWidget::setLayers(const QVector<GuideLayerObject> &layers)
{
    m_layers = layers;
    if (m_current >= m_layers.size())
        m_current = m_layers.isEmpty() ? -1 : int(m_layers.size()) - 1;
    rebuildList();
}

void LayerListWidget::rebuildList()
{
    m_updating = true;
    m_list->clear();
    for (int row = 0; row < m_layers.size(); ++row) {
        const GuideLayerObject &layer = m_layers.at(layerForRow(row));
        auto *item = new QListWidgetItem(displayName(layer));
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(layer.visible ? Qt::Checked : Qt::Unchecked);
        item->setToolTip(layer.isMask() ? tr("Mask layer") : layer.filePath);
        m_list->addItem(item);
    }
    if (m_current >= 0)
        m_list->setCurrentRow(rowForLayer(m_current));
    m_updating = false;
    showCurrentProperties();
}

void LayerListWidget::setCurrentLayer(int index)
{
    if (index < -1 || index >= m_layers.size())
        index = -1;
    if (index == m_current)
        return;
    m_current = index;
    m_updating = true;
    m_list->setCurrentRow(index >= 0 ? rowForLayer(index) : -1);
    m_updating = false;
    showCurrentProperties();
    Q_EMIT currentLayerChanged(m_current);
}

void LayerListWidget::showCurrentProperties()
{
    const bool has = m_current >= 0 && m_current < m_layers.size();
    m_properties->setVisible(has);
    m_hint->setVisible(!has);
    m_remove->setEnabled(has);
    m_up->setEnabled(has && m_current < m_layers.size() - 1);
    m_down->setEnabled(has && m_current > 0);
    const GuideLayerObject layer = has ? m_layers.at(m_current) : GuideLayerObject{};
    const bool wasUpdating = m_updating;
    m_updating = true;
    m_name->setText(layer.name);
    m_opacity->setValue(qRound(std::clamp(layer.opacity, 0.0, 1.0) * 100.0));
    m_opacityLabel->setText(QStringLiteral("%1%").arg(m_opacity->value()));
    m_centerX->setValue(layer.centerX);
    m_centerY->setValue(layer.centerY);
    m_width->setValue(layer.width);
    m_height->setValue(layer.height);
    double rotation = std::fmod(layer.rotationDegrees, 360.0);
    if (rotation > 180.0)
        rotation -= 360.0;
    if (rotation < -180.0)
        rotation += 360.0;
    m_rotation->setValue(rotation);
    m_cropLeft->setValue(layer.cropLeft * 100.0);
    m_cropTop->setValue(layer.cropTop * 100.0);
    m_cropRight->setValue(layer.cropRight * 100.0);
    m_cropBottom->setValue(layer.cropBottom * 100.0);
    m_maskShape->setCurrentIndex(layer.isCircle() ? 1 : 0);
    setButtonColor(m_fillColor, layer.fillColor);
    m_cornerRadius->setValue(layer.cornerRadius);
    m_cornerRadius->setEnabled(!layer.isCircle());
    m_maskInverse->setChecked(layer.maskInverse);
    m_maskWireframe->setChecked(layer.maskWireframe);
    m_uLines->setValue(layer.maskULines);
    m_vLines->setValue(layer.maskVLines);
    m_thickness->setValue(layer.maskWireframeThickness);
    m_imageBox->setVisible(has && !layer.isMask());
    m_maskBox->setVisible(has && layer.isMask());
    // The form row label of the crop box follows its field.
    if (auto *form = qobject_cast<QFormLayout *>(m_properties->layout())) {
        if (QWidget *label = form->labelForField(m_imageBox))
            label->setVisible(has && !layer.isMask());
    }
    m_updating = wasUpdating;
}

void LayerListWidget::onPropertyEdited()
{
    if (m_updating || m_current < 0 || m_current >= m_layers.size())
        return;
    GuideLayerObject &layer = m_layers[m_current];
    layer.name = m_name->text();
    layer.opacity = m_opacity->value() / 100.0;
    layer.centerX = m_centerX->value();
    layer.centerY = m_centerY->value();
    layer.width = m_width->value();
    layer.height = m_height->value();
    layer.rotationDegrees = m_rotation->value();
    if (layer.isMask()) {
        layer.maskShape = m_maskShape->currentData().toString();
        layer.cornerRadius = m_cornerRadius->value();
        layer.maskInverse = m_maskInverse->isChecked();
        layer.maskWireframe = m_maskWireframe->isChecked();
        layer.maskULines = m_uLines->value();
        layer.maskVLines = m_vLines->value();
        layer.maskWireframeThickness = m_thickness->value();
        m_cornerRadius->setEnabled(!layer.isCircle());
    } else {
        layer.cropLeft = m_cropLeft->value() / 100.0;
        layer.cropTop = m_cropTop->value() / 100.0;
        layer.cropRight = m_cropRight->value() / 100.0;
        layer.cropBottom = m_cropBottom->value() / 100.0;
    }
    if (QListWidgetItem *item = m_list->item(rowForLayer(m_current))) {
        m_updating = true;
        item->setText(displayName(layer));
        m_updating = false;
    }
    commit();
}

void LayerListWidget::commit()
{
    Q_EMIT layersChanged();
}

bool LayerListWidget::addImageLayer(const QString &path, QString *error)
{
    QImageReader reader(path);
    const QSize imageSize = reader.size();
    if (!reader.canRead() || !imageSize.isValid() || imageSize.isEmpty()) {
        if (error)
            *error = tr("Could not read the image \"%1\": %2").arg(QDir::toNativeSeparators(path), reader.errorString());
        return false;
    }
    GuideLayerObject layer;
    layer.type = QStringLiteral("image");
    layer.filePath = path;
    layer.name = QFileInfo(path).completeBaseName();
    layer.baseWidth = imageSize.width();
    layer.baseHeight = imageSize.height();
    // A large image starts at half the guide so that it is visible and easy to grab.
    const double fit = std::min({1.0, 0.5 * m_guideSize.width() / imageSize.width(),
                                 0.5 * m_guideSize.height() / imageSize.height()});
    layer.width = imageSize.width() * fit;
    layer.height = imageSize.height() * fit;
    layer.centerX = m_guideSize.width() / 2.0;
    layer.centerY = m_guideSize.height() / 2.0;
    layer.opacity = 1.0;
    m_layers.append(layer);
    m_current = int(m_layers.size()) - 1;
    rebuildList();
    commit();
    Q_EMIT currentLayerChanged(m_current);
    return true;
}

void LayerListWidget::addMaskLayer(const QString &shape)
{
    GuideLayerObject layer;
    layer.type = QStringLiteral("mask");
    layer.maskShape = shape == QLatin1String("circle") ? QStringLiteral("circle") : QStringLiteral("rectangle");
    const double edge = std::max(4.0, std::min(m_guideSize.width(), m_guideSize.height()) / 3.0);
    layer.baseWidth = layer.width = edge;
    layer.baseHeight = layer.height = edge;
    layer.centerX = m_guideSize.width() / 2.0;
    layer.centerY = m_guideSize.height() / 2.0;
    layer.opacity = 1.0;
    layer.fillColor = QColor(0, 0, 0, 255);
    layer.maskULines = 8;
    layer.maskVLines = 8;
    layer.maskWireframeThickness = 2.0;
    m_layers.append(layer);
    m_current = int(m_layers.size()) - 1;
    rebuildList();
    commit();
    Q_EMIT currentLayerChanged(m_current);
}

void LayerListWidget::removeCurrentLayer()
{
    if (m_current < 0 || m_current >= m_layers.size())
        return;
    m_layers.removeAt(m_current);
    m_current = std::min<int>(m_current, int(m_layers.size()) - 1);
    rebuildList();
    commit();
    Q_EMIT currentLayerChanged(m_current);
}

void LayerListWidget::moveCurrentLayer(int steps)
{
    if (m_current < 0 || m_current >= m_layers.size())
        return;
    const int target = std::clamp(m_current + steps, 0, int(m_layers.size()) - 1);
    if (target == m_current)
        return;
    m_layers.move(m_current, target);
    m_current = target;
    rebuildList();
    commit();
    Q_EMIT currentLayerChanged(m_current);
}

void LayerListWidget::setLayerVisible(int index, bool visible)
{
    if (index < 0 || index >= m_layers.size() || m_layers.at(index).visible == visible)
        return;
    m_layers[index].visible = visible;
    if (QListWidgetItem *item = m_list->item(rowForLayer(index))) {
        m_updating = true;
        item->setCheckState(visible ? Qt::Checked : Qt::Unchecked);
        m_updating = false;
    }
    commit();
}

void LayerListWidget::setLayerOpacity(int index, double opacity)
{
    if (index < 0 || index >= m_layers.size())
        return;
    m_layers[index].opacity = std::clamp(opacity, 0.0, 1.0);
    if (index == m_current)
        showCurrentProperties();
    commit();
}

void LayerListWidget::setLayerGeometry(int index, double centerX, double centerY, double width, double height, double rotation)
{
    if (index < 0 || index >= m_layers.size())
        return;
    GuideLayerObject &layer = m_layers[index];
    layer.centerX = centerX;
    layer.centerY = centerY;
    layer.width = width;
    layer.height = height;
    layer.rotationDegrees = rotation;
    if (index == m_current)
        showCurrentProperties();
    commit();
}

void LayerListWidget::chooseImage()
{
    QSettings settings;
    const QString dir = Settings::guideLayerImageDirectory.read();
    const QString path = QFileDialog::getOpenFileName(this, tr("Add Image Layer"), dir,
                                                      tr("Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp);;All Files (*)"));
    if (path.isEmpty())
        return;
    Settings::guideLayerImageDirectory.write(QFileInfo(path).absolutePath());
    QString error;
    if (!addImageLayer(path, &error))
        QMessageBox::warning(this, tr("Add Image Layer"), error);
}

void LayerListWidget::chooseFillColor()
{
    if (m_current < 0 || m_current >= m_layers.size())
        return;
    const QColor color = QColorDialog::getColor(m_layers.at(m_current).fillColor, this, tr("Mask Color"),
                                                QColorDialog::ShowAlphaChannel);
    if (!color.isValid())
        return;
    m_layers[m_current].fillColor = color;
    setButtonColor(m_fillColor, color);
    commit();
}
