#pragma once

#include "exchange/UvLut.h"
#include "scene/GuideObject.h"
#include "scene/GuideProjectorCalibrationSettings.h"

#include <QDialog>
#include <QImage>
#include <QVector>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

// "Export Projector/Camera UV LUT...": output view, source, method, U scale, feather, AA
// samples and test data; the export into a folder, and "Update LUT" to the media server.
// The options and the server settings are the view's calibration settings.
class UvLutExportDialog : public QDialog
{
    Q_OBJECT

public:
    UvLutExportDialog(const QVector<GuideObject> &objects, const QVector<QImage> &guideImages,
                      const GuideProjectorCalibrationSettings &settings, int preferredOutput, QWidget *parent = nullptr);

    GuideProjectorCalibrationSettings settings() const;
    vg::exchange::UvLutOptions options() const;
    QString folder() const;
    void setFolder(const QString &folder);
    // The progress line: the last progress or result text.
    QString progressText() const;

    // The file service's ports (tests run a stand-in on free ones).
    void setUploadPorts(quint16 control, quint16 data);

    // Both show their failure in a message box unless `error` is given.
    bool exportLut(QString *error = nullptr);
    bool updateLut(QString *error = nullptr);

private:
    bool compute(vg::exchange::UvLutResult *result, QString *error);
    void setProgress(const QString &text);
    void syncMethod();
    void chooseFolder();
    void fail(const QString &title, const QString &text, QString *error);

    QVector<GuideObject> m_objects;
    QVector<QImage> m_guideImages;
    GuideProjectorCalibrationSettings m_settings;
    QComboBox *m_output = nullptr;
    QComboBox *m_source = nullptr;
    QComboBox *m_method = nullptr;
    QDoubleSpinBox *m_scale = nullptr;
    QDoubleSpinBox *m_feather = nullptr;
    QComboBox *m_aa = nullptr;
    QCheckBox *m_testData = nullptr;
    QLineEdit *m_folder = nullptr;
    QLineEdit *m_serverIp = nullptr;
    QLineEdit *m_playerIp = nullptr;
    QSpinBox *m_port = nullptr;
    QSpinBox *m_warp = nullptr;
    QLabel *m_progress = nullptr;
    QPushButton *m_export = nullptr;
    QPushButton *m_update = nullptr;
    quint16 m_controlPort = 17601;
    quint16 m_dataPort = 17602;
};
