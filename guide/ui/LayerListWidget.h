#pragma once

#include "guide/GuideSettings.h"

#include <QSize>
#include <QVector>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QSlider;
class QSpinBox;
class QTimer;
class QToolButton;
class QWidget;

// The guide's layers ("image_objects"): image and mask layers in drawing order. The list
// shows the topmost layer first; the properties below edit the selected one.
class LayerListWidget : public QWidget
{
    Q_OBJECT
public:
    explicit LayerListWidget(QWidget *parent = nullptr);

    QVector<GuideLayerObject> layers() const { return m_layers; }
    void setLayers(const QVector<GuideLayerObject> &layers);
    // Guide size in pixels, where new layers are placed.
    void setGuideSize(const QSize &size) { m_guideSize = size; }

    int currentLayer() const { return m_current; }
    void setCurrentLayer(int index);

    // Returns false with a user-visible reason when the image cannot be read.
    bool addImageLayer(const QString &path, QString *error = nullptr);
    void addMaskLayer(const QString &shape);
    void removeCurrentLayer();
    // Moves the current layer one step up (towards the top) or down the drawing order.
    void moveCurrentLayer(int steps);
    void setLayerVisible(int index, bool visible);
    void setLayerOpacity(int index, double opacity);
    // Geometry edited elsewhere (the preview's handles).
    void setLayerGeometry(int index, double centerX, double centerY, double width, double height, double rotation);

Q_SIGNALS:
    void layersChanged();
    void currentLayerChanged(int index);

protected:
    void changeEvent(QEvent *event) override;

private:
    void buildUi();
    void rebuildList();
    void showCurrentProperties();
    void commit();
    void onPropertyEdited();
    int rowForLayer(int index) const { return m_layers.size() - 1 - index; }
    int layerForRow(int row) const { return m_layers.size() - 1 - row; }
    QString displayName(const GuideLayerObject &layer) const;
    void chooseImage();
    void chooseFillColor();

    QVector<GuideLayerObject> m_layers;
    QSize m_guideSize {1920, 1200};
    int m_current = -1;
    bool m_updating = false;

    QTimer *m_retranslateTimer = nullptr;
    QWidget *m_body = nullptr;
    QListWidget *m_list = nullptr;
    QToolButton *m_addImage = nullptr;
    QToolButton *m_addMask = nullptr;
    QToolButton *m_remove = nullptr;
    QToolButton *m_up = nullptr;
    QToolButton *m_down = nullptr;

    QWidget *m_properties = nullptr;
    QLabel *m_hint = nullptr;
    QLineEdit *m_name = nullptr;
    QSlider *m_opacity = nullptr;
    QLabel *m_opacityLabel = nullptr;
    QDoubleSpinBox *m_centerX = nullptr;
    QDoubleSpinBox *m_centerY = nullptr;
    QDoubleSpinBox *m_width = nullptr;
    QDoubleSpinBox *m_height = nullptr;
    QDoubleSpinBox *m_rotation = nullptr;
    QPushButton *m_resetSize = nullptr;

    QWidget *m_imageBox = nullptr;
    QDoubleSpinBox *m_cropLeft = nullptr;
    QDoubleSpinBox *m_cropTop = nullptr;
    QDoubleSpinBox *m_cropRight = nullptr;
    QDoubleSpinBox *m_cropBottom = nullptr;

    QWidget *m_maskBox = nullptr;
    QComboBox *m_maskShape = nullptr;
    QPushButton *m_fillColor = nullptr;
    QDoubleSpinBox *m_cornerRadius = nullptr;
    QCheckBox *m_maskInverse = nullptr;
    QCheckBox *m_maskWireframe = nullptr;
    QSpinBox *m_uLines = nullptr;
    QSpinBox *m_vLines = nullptr;
    QDoubleSpinBox *m_thickness = nullptr;
};
