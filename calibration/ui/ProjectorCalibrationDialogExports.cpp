#include "calibration/ui/ProjectorCalibrationDialog.h"

#include "calibration/CalibrationMatrixFile.h"
#include "calibration/ui/ProjectorCalibrationPointView.h"
#include "common/SettingsKeys.h"
#include "exchange/UvLutWriter.h"
#include "net/mediaserver/UvLutUpdate.h"
#include "scene/gl/GlExportImageSource.h"
#include "scene/ui/SceneWidget.h"
#include "video/NdiRuntime.h"
#include "video/NdiSender.h"
#include "video/SpoutSupport.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QImageReader>
#include <QLabel>
#include <QMessageBox>
#include <QSettings>

#include <algorithm>
#include <cmath>

namespace {

// Guide pictures as the 3D view already has them, so nothing is rendered twice.
class SceneGuideImages : public GlExportImageSource
{
public:
    explicit SceneGuideImages(QVector<QImage> guideImages) : m_images(std::move(guideImages)) {}
    QImage guideImage(int index) override { return m_images.value(index); }

private:
    QVector<QImage> m_images;
};

bool failWith(QString *error, const QString &text)
{
    if (error)
        *error = text;
    return false;
}

} // namespace

void ProjectorCalibrationDialog::setUploadPorts(quint16 control, quint16 data)
{
    m_controlPort = control;
    m_dataPort = data;
}

// ---- matrix --------------------------------------------------------------------------------

bool ProjectorCalibrationDialog::exportMatrixTo(const QString &path, QString *error)
{
    const GuideObject *projector = projectorObject();
    if (!projector) {
        const QString text = tr("Select a projector before exporting matrix.");
        setStatus(text);
        return failWith(error, text);
    }
    const CalibrationMatrices matrices =
        m_haveFit ? calibrationMatricesOf(m_projectorAtFit, m_result) : calibrationMatricesOf(*projector);
    QString why;
    if (!writeCalibrationMatrixFile(path, matrices, &why)) {
        setStatus(why);
        if (!error)
            QMessageBox::warning(this, tr("Export failed"), why);
        return failWith(error, why);
    }
    if (m_haveFit)
        setStatus(tr("Matrix exported from calibration points: %1 (RMS %2 px)").arg(path).arg(m_result.rmsError, 0, 'f', 2));
    else
        setStatus(tr("Matrix exported from projector transform: %1").arg(path));
    return true;
}

void ProjectorCalibrationDialog::chooseMatrixFile()
{
    if (!projectorObject()) {
        setStatus(tr("Select a projector before exporting matrix."));
        return;
    }
    QSettings store;
    const QString folder = store.value(Settings::calibrationMatrixDirectory.key(), QDir::homePath()).toString();
    const QString path = QFileDialog::getSaveFileName(this, tr("Export Matrix"),
                                                      QDir(folder).filePath(QStringLiteral("matrix.txt")),
                                                      tr("Text Files (*.txt);;All Files (*.*)"));
    if (path.isEmpty())
        return;
    store.setValue(Settings::calibrationMatrixDirectory.key(), QFileInfo(path).absolutePath());
    exportMatrixTo(path);
}

// ---- reference image -----------------------------------------------------------------------

bool ProjectorCalibrationDialog::loadReferenceImage(const QString &path)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    if (image.isNull()) {
        setStatus(tr("Could not load the reference image."));
        return false;
    }
    m_referenceImage = image;
    refreshViews();
    setStatus(tr("Reference image loaded. Select a point row and click the matching image position."));
    return true;
}

void ProjectorCalibrationDialog::chooseReferenceImage()
{
    QSettings store;
    const QString folder = store.value(Settings::calibrationImageDirectory.key(), QDir::homePath()).toString();
    const QString path = QFileDialog::getOpenFileName(this, tr("Load Reference Image"), folder,
                                                      tr("Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff);;All Files (*.*)"));
    if (path.isEmpty())
        return;
    store.setValue(Settings::calibrationImageDirectory.key(), QFileInfo(path).absolutePath());
    if (!loadReferenceImage(path))
        QMessageBox::warning(this, tr("Load failed"), tr("Could not load the reference image."));
}

// ---- clear ---------------------------------------------------------------------------------

void ProjectorCalibrationDialog::confirmAndClear()
{
    if (QMessageBox::question(this, tr("Clear Calibration Points"), tr("Clear all calibration point matches?"))
        == QMessageBox::Yes)
        clearMatches(false);
}

// ---- UV LUT and the media server -----------------------------------------------------------

namespace {

// The picture the LUT maps onto the calibrated projector: a camera's or another
// projector's image, cameras first; -1 when no lens object carries one.
int lutSourceFor(const QVector<GuideObject> &objects, int output)
{
    auto hasImage = [](const GuideObject &o) {
        return o.projector_image_guide_index >= 0 || !o.projector_image_file_path.isEmpty()
               || !o.projector_spout_sender.isEmpty() || !o.projector_ndi_source.isEmpty();
    };
    for (bool cameras : {true, false}) {
        for (int i = 0; i < objects.size(); ++i) {
            const GuideObject &o = objects.at(i);
            if (i != output && (cameras ? o.isCamera() : o.isProjector()) && hasImage(o))
                return i;
        }
    }
    return -1;
}

} // namespace

bool ProjectorCalibrationDialog::lutOptions(const QVector<GuideObject> &objects, const QString &cameraRefusal,
                                            vg::exchange::UvLutOptions *options)
{
    const GuideObject *projector = projectorObject();
    if (!projector) {
        setStatus(tr("Add or select a projector object first."));
        return false;
    }
    if (projector->isCamera()) {
        setStatus(cameraRefusal);
        return false;
    }
    options->outputIndex = m_projectorIndex;
    options->sourceIndex = lutSourceFor(objects, m_projectorIndex);
    options->uScale = m_settings.uv_lut_scale;
    options->featherPx = m_settings.uv_lut_edge_feather_px;
    options->aaSamples = m_settings.uv_lut_aa_samples;
    if (options->sourceIndex < 0) {
        setStatus(tr("Add a camera (or another projector) with an image to map the UV LUT from."));
        return false;
    }
    return true;
}

std::function<void(const QString &)> ProjectorCalibrationDialog::lutProgress()
{
    return [this](const QString &text) {
        setStatus(text);
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    };
}

bool ProjectorCalibrationDialog::exportLutTo(const QString &folder, QString *error)
{
    const QVector<GuideObject> objects = m_scene->objects();
    vg::exchange::UvLutOptions options;
    if (!lutOptions(objects, tr("Camera UV LUT export is unavailable."), &options))
        return failWith(error, statusText());
    SceneGuideImages images(m_scene->guideImages());
    const auto progress = lutProgress();
    vg::exchange::UvLutResult result;
    QString why;
    const bool ok = vg::exchange::computeUvLut(objects, images, options, progress, &result, &why)
                    && vg::exchange::writeUvLutPackage(result, folder, progress, nullptr, &why);
    if (!ok) {
        setStatus(why);
        if (!error)
            QMessageBox::warning(this, tr("Export failed"), why);
        return failWith(error, why);
    }
    QSettings().setValue(Settings::uvLutExportDirectory.key(), folder);
    return true;
}

void ProjectorCalibrationDialog::chooseLutFolder()
{
    const QString start = QSettings().value(Settings::uvLutExportDirectory.key(), QDir::homePath()).toString();
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Export LUT"), start);
    if (!folder.isEmpty())
        exportLutTo(folder);
}

bool ProjectorCalibrationDialog::updateLut(QString *error)
{
    const GuideObject *projector = projectorObject();
    if (projector && !projector->isCamera() && !m_settings.vantreo_server_enabled) {
        setStatus(tr("Vantreo Server link is disabled."));
        return failWith(error, statusText());
    }
    const QVector<GuideObject> objects = m_scene->objects();
    vg::exchange::UvLutOptions options;
    if (!lutOptions(objects, tr("Camera UV LUT update is unavailable."), &options))
        return failWith(error, statusText());
    SceneGuideImages images(m_scene->guideImages());
    const auto progress = lutProgress();
    vg::exchange::UvLutResult result;
    QString why;
    bool ok = vg::exchange::computeUvLut(objects, images, options, progress, &result, &why);
    vg::mediaserver::UvLutUpdateReport report;
    if (ok) {
        vg::mediaserver::UvLutServerTarget target;
        target.serverAddress = m_settings.vantreo_server_ip;
        target.playerAddress = vg::mediaserver::effectiveServerAddress(m_settings.vantreo_player_ip);
        target.udpPort = quint16(m_settings.vantreo_server_port);
        target.warpEditorIndex = m_settings.vantreo_warpeditor_number;
        target.upload.controlPort = m_controlPort;
        target.upload.dataPort = m_dataPort;
        ok = vg::mediaserver::updateUvLutOnServer(result, target, &report, &why);
    }
    if (!ok) {
        setStatus(why);
        if (!error)
            QMessageBox::warning(this, tr("Update LUT failed"), why);
        return failWith(error, why);
    }
    setStatus(report.message + QLatin1Char('\n') + report.status);
    return true;
}

// ---- live output ---------------------------------------------------------------------------

namespace {

constexpr int kOutputMaxSide = 1920;

} // namespace

void ProjectorCalibrationDialog::setNdiRuntime(NdiRuntime *runtime)
{
    m_ndiRuntime = runtime;
    m_ndiSender.reset();
    applyOutputMode();
}

QString ProjectorCalibrationDialog::outputName() const
{
    if (!m_settings.output_name.isEmpty())
        return m_settings.output_name;
    const GuideObject *projector = projectorObject();
    if (!projector)
        return QStringLiteral("VantreoGuide Calibration Projector View");
    if (projector->isProjector())
        return QStringLiteral("VantreoGuide Projector #%1 Calibration View").arg(m_projectorIndex + 1);
    return QStringLiteral("VantreoGuide %1 #%2 Calibration View").arg(QStringLiteral("Camera")).arg(m_projectorIndex + 1);
}

bool ProjectorCalibrationDialog::outputOpen() const
{
    return m_ndiSender && m_ndiSender->isOpen();
}

void ProjectorCalibrationDialog::applyOutputMode()
{
    const QString name = outputName();
    if (m_settings.output_mode != 2 || (m_ndiSender && m_ndiSender->name() != name))
        m_ndiSender.reset();
    if (m_settings.output_mode == 1) {
        setStatus(tr("Spout output \"%1\" is unavailable: %2").arg(name, spoutUnavailableText()));
        return;
    }
    if (m_settings.output_mode != 2)
        return;
    if (!m_ndiSender) {
        NdiRuntime &runtime = m_ndiRuntime ? *m_ndiRuntime : NdiRuntime::instance();
        m_ndiSender = std::make_unique<NdiSender>(runtime, name);
    }
    QString error;
    if (!m_ndiSender->open(&error)) {
        m_ndiSender.reset();
        setStatus(tr("NDI output \"%1\" could not start: %2").arg(name, error));
        return;
    }
    setStatus(tr("NDI output \"%1\" is on.").arg(name));
    publishOutput();
}

void ProjectorCalibrationDialog::publishOutput()
{
    const GuideObject *projector = projectorObject();
    if (!outputOpen() || !projector)
        return;
    const int w = std::max(1, projector->projector_resolution_width);
    const int h = std::max(1, projector->projector_resolution_height);
    const double scale = std::min(1.0, double(kOutputMaxSide) / std::max(w, h));
    const QSize size(std::max(1, int(std::lround(w * scale))), std::max(1, int(std::lround(h * scale))));
    m_ndiSender->send(m_projectorView->renderOutput(size));
}
