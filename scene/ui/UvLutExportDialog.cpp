#include "scene/ui/UvLutExportDialog.h"

#include "exchange/UvLutWriter.h"
#include "net/mediaserver/UvLutUpdate.h"
#include "scene/gl/GlExportImageSource.h"
#include "common/SettingsKeys.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QVBoxLayout>

using namespace vg::exchange;

namespace {


// Guide pictures as the view already shows them, so nothing is rendered twice.
class ViewImageSource : public GlExportImageSource
{
public:
    explicit ViewImageSource(QVector<QImage> guideImages) : m_images(std::move(guideImages)) {}
    QImage guideImage(int index) override { return m_images.value(index); }

private:
    QVector<QImage> m_images;
};

} // namespace

UvLutExportDialog::UvLutExportDialog(const QVector<GuideObject> &objects, const QVector<QImage> &guideImages,
                                     const GuideProjectorCalibrationSettings &settings, int preferredOutput,
                                     QWidget *parent)
    : QDialog(parent), m_objects(objects), m_guideImages(guideImages), m_settings(settings)
{
    setWindowTitle(tr("Export Projector/Camera UV LUT"));
    setObjectName(QStringLiteral("vantreoUvLutExportDialog"));
    auto *form = new QFormLayout;

    m_output = new QComboBox(this);
    m_source = new QComboBox(this);
    for (int i = 0; i < m_objects.size(); ++i) {
        if (!m_objects[i].hasLens())
            continue;
        const QString label = QStringLiteral("%1: %2").arg(i).arg(m_objects[i].name);
        m_output->addItem(label, i);
        m_source->addItem(label, i);
    }
    const int preferred = m_output->findData(preferredOutput);
    if (preferred >= 0)
        m_output->setCurrentIndex(preferred);
    // The source defaults to the first other lens that has a picture.
    for (int k = 0; k < m_source->count(); ++k) {
        const GuideObject &o = m_objects[m_source->itemData(k).toInt()];
        const bool hasImage = o.projector_image_guide_index >= 0 || !o.projector_image_file_path.isEmpty();
        if (m_source->itemData(k) != m_output->currentData() && hasImage) {
            m_source->setCurrentIndex(k);
            break;
        }
    }
    m_output->setObjectName(QStringLiteral("uvLutOutputView"));
    m_source->setObjectName(QStringLiteral("uvLutSource"));
    form->addRow(tr("Output View"), m_output);
    form->addRow(tr("Source UV Texture"), m_source);
    auto *resolution = new QLabel(tr("LUT output uses the projector resolution."), this);
    form->addRow(QString(), resolution);

    m_method = new QComboBox(this);
    m_method->setObjectName(QStringLiteral("uvLutMethod"));
    m_method->addItem(uvLutMethodLabel(UvLutMethod::GpuProbe), int(UvLutMethod::GpuProbe));
    m_method->addItem(uvLutMethodLabel(UvLutMethod::CpuRaster), int(UvLutMethod::CpuRaster));
    form->addRow(tr("Method"), m_method);

    m_scale = new QDoubleSpinBox(this);
    m_scale->setObjectName(QStringLiteral("uvLutScale"));
    m_scale->setRange(0.0, 10.0);
    m_scale->setDecimals(3);
    m_scale->setSingleStep(0.1);
    m_scale->setValue(clampedUvLutScale(settings.uv_lut_scale));
    form->addRow(tr("U Scale"), m_scale);

    m_feather = new QDoubleSpinBox(this);
    m_feather->setObjectName(QStringLiteral("uvLutFeather"));
    m_feather->setRange(0.0, 8.0);
    m_feather->setDecimals(1);
    m_feather->setValue(clampedUvLutFeather(settings.uv_lut_edge_feather_px));
    form->addRow(tr("Edge Feather (px)"), m_feather);

    m_aa = new QComboBox(this);
    m_aa->setObjectName(QStringLiteral("uvLutAaSamples"));
    for (int samples : {1, 2, 4})
        m_aa->addItem(QString::number(samples), samples);
    m_aa->setCurrentIndex(std::max(0, m_aa->findData(clampedUvLutAaSamples(settings.uv_lut_aa_samples))));
    form->addRow(tr("AA Samples"), m_aa);

    m_testData = new QCheckBox(
        tr("Export JSON, preview image, diagnostic images, and float maps for checking the LUT."), this);
    m_testData->setObjectName(QStringLiteral("uvLutTestData"));
    form->addRow(QString(), m_testData);

    m_folder = new QLineEdit(this);
    m_folder->setObjectName(QStringLiteral("uvLutFolder"));
    m_folder->setText(QSettings().value(Settings::uvLutExportDirectory.key(), QDir::homePath()).toString());
    auto *browse = new QPushButton(tr("Browse..."), this);
    connect(browse, &QPushButton::clicked, this, &UvLutExportDialog::chooseFolder);
    auto *folderRow = new QHBoxLayout;
    folderRow->addWidget(m_folder, 1);
    folderRow->addWidget(browse);
    form->addRow(tr("Folder"), folderRow);

    auto *server = new QGroupBox(tr("Vantreo Server"), this);
    auto *serverForm = new QFormLayout(server);
    m_serverIp = new QLineEdit(settings.vantreo_server_ip, server);
    m_serverIp->setObjectName(QStringLiteral("uvLutServerIp"));
    m_playerIp = new QLineEdit(settings.vantreo_player_ip, server);
    m_playerIp->setObjectName(QStringLiteral("uvLutPlayerIp"));
    m_port = new QSpinBox(server);
    m_port->setObjectName(QStringLiteral("uvLutServerPort"));
    m_port->setRange(1, 65535);
    m_port->setValue(std::clamp(settings.vantreo_server_port, 1, 65535));
    m_warp = new QSpinBox(server);
    m_warp->setObjectName(QStringLiteral("uvLutWarpEditor"));
    m_warp->setRange(1, 8);
    m_warp->setValue(std::clamp(settings.vantreo_warpeditor_number, 1, 8));
    serverForm->addRow(tr("Server IP"), m_serverIp);
    serverForm->addRow(tr("Player IP"), m_playerIp);
    serverForm->addRow(tr("UDP Port"), m_port);
    serverForm->addRow(tr("Warp Editor"), m_warp);

    m_progress = new QLabel(this);
    m_progress->setObjectName(QStringLiteral("uvLutProgress"));
    m_progress->setWordWrap(true);

    auto *buttons = new QDialogButtonBox(this);
    m_export = buttons->addButton(tr("Export"), QDialogButtonBox::AcceptRole);
    m_export->setObjectName(QStringLiteral("uvLutExport"));
    m_update = buttons->addButton(tr("Update LUT"), QDialogButtonBox::ActionRole);
    m_update->setObjectName(QStringLiteral("uvLutUpdate"));
    buttons->addButton(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_export, &QPushButton::clicked, this, [this] { exportLut(); });
    connect(m_update, &QPushButton::clicked, this, [this] { updateLut(); });
    connect(m_method, &QComboBox::currentIndexChanged, this, &UvLutExportDialog::syncMethod);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(server);
    layout->addWidget(m_progress);
    layout->addWidget(buttons);
    syncMethod();
}

GuideProjectorCalibrationSettings UvLutExportDialog::settings() const
{
    GuideProjectorCalibrationSettings s = m_settings;
    s.uv_lut_scale = m_scale->value();
    s.uv_lut_edge_feather_px = m_feather->value();
    s.uv_lut_aa_samples = m_aa->currentData().toInt();
    s.vantreo_server_ip = m_serverIp->text().trimmed();
    s.vantreo_player_ip = m_playerIp->text().trimmed();
    s.vantreo_server_port = m_port->value();
    s.vantreo_warpeditor_number = m_warp->value();
    return s;
}

UvLutOptions UvLutExportDialog::options() const
{
    UvLutOptions o;
    o.outputIndex = m_output->currentData().isValid() ? m_output->currentData().toInt() : -1;
    o.sourceIndex = m_source->currentData().isValid() ? m_source->currentData().toInt() : -1;
    o.method = UvLutMethod(m_method->currentData().toInt());
    o.uScale = m_scale->value();
    o.featherPx = m_feather->value();
    o.aaSamples = o.method == UvLutMethod::GpuProbe ? m_aa->currentData().toInt() : 1;
    o.testData = m_testData->isChecked();
    return o;
}

QString UvLutExportDialog::folder() const
{
    return m_folder->text().trimmed();
}

void UvLutExportDialog::setFolder(const QString &folder)
{
    m_folder->setText(folder);
}

void UvLutExportDialog::setUploadPorts(quint16 control, quint16 data)
{
    m_controlPort = control;
    m_dataPort = data;
}

QString UvLutExportDialog::progressText() const
{
    return m_progress->text();
}

void UvLutExportDialog::setProgress(const QString &text)
{
    m_progress->setText(text);
    // The export runs on this thread; let the line repaint between steps.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void UvLutExportDialog::syncMethod()
{
    m_aa->setEnabled(UvLutMethod(m_method->currentData().toInt()) == UvLutMethod::GpuProbe);
}

void UvLutExportDialog::chooseFolder()
{
    const QString chosen = QFileDialog::getExistingDirectory(this, tr("Export Projector/Camera UV LUT"), folder());
    if (!chosen.isEmpty())
        m_folder->setText(chosen);
}

void UvLutExportDialog::fail(const QString &title, const QString &text, QString *error)
{
    setProgress(text);
    if (error)
        *error = text;
    else
        QMessageBox::warning(this, title, text);
}

bool UvLutExportDialog::compute(UvLutResult *result, QString *error)
{
    ViewImageSource images(m_guideImages);
    return computeUvLut(m_objects, images, options(), [this](const QString &text) { setProgress(text); }, result,
                        error);
}

bool UvLutExportDialog::exportLut(QString *error)
{
    const QString title = tr("Export failed");
    m_export->setEnabled(false);
    UvLutResult result;
    QString why;
    bool ok = compute(&result, &why);
    if (ok) {
        ok = writeUvLutPackage(result, folder(), [this](const QString &text) { setProgress(text); }, nullptr, &why);
        if (ok)
            Settings::uvLutExportDirectory.write(folder());
    }
    m_export->setEnabled(true);
    if (!ok)
        fail(title, why, error);
    return ok;
}

bool UvLutExportDialog::updateLut(QString *error)
{
    const QString title = tr("Update LUT failed");
    m_update->setEnabled(false);
    UvLutResult result;
    QString why;
    bool ok = compute(&result, &why);
    vg::mediaserver::UvLutUpdateReport report;
    if (ok) {
        const GuideProjectorCalibrationSettings s = settings();
        vg::mediaserver::UvLutServerTarget target;
        target.serverAddress = s.vantreo_server_ip;
        target.playerAddress = vg::mediaserver::effectiveServerAddress(s.vantreo_player_ip);
        target.udpPort = quint16(s.vantreo_server_port);
        target.warpEditorIndex = s.vantreo_warpeditor_number;
        target.upload.controlPort = m_controlPort;
        target.upload.dataPort = m_dataPort;
        ok = vg::mediaserver::updateUvLutOnServer(result, target, &report, &why);
    }
    m_update->setEnabled(true);
    if (!ok) {
        fail(title, why, error);
        return false;
    }
    setProgress(report.message + QLatin1Char('\n') + report.status);
    return true;
}
