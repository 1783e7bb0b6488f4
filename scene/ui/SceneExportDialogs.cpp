#include "scene/ui/SceneExportDialogs.h"

#include "scene/GuideObject.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QMessageBox>
#include <QSettings>
#include <QSpinBox>
#include <QVBoxLayout>

using vg::exchange::ViewMeshOptions;

ViewMeshOptionsDialog::ViewMeshOptionsDialog(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("vantreoViewMeshOptionsDialog"));
    setWindowTitle(tr("Projector View Mesh Options"));
    m_flatten = new QCheckBox(tr("Flatten to 2D (Z = 0)"));
    m_flatten->setObjectName(QStringLiteral("vantreoViewMeshFlatten"));
    m_crop = new QCheckBox(tr("Crop to projector frame"));
    m_crop->setObjectName(QStringLiteral("vantreoViewMeshCrop"));
    m_normalize = new QCheckBox(tr("Normalize coordinates (X = -aspect..aspect, Y = -1..1)"));
    m_normalize->setObjectName(QStringLiteral("vantreoViewMeshNormalize"));
    m_margin = new QSpinBox;
    m_margin->setObjectName(QStringLiteral("vantreoViewMeshMargin"));
    m_margin->setRange(0, ViewMeshOptions::kMaxMarginPixels);
    m_margin->setSuffix(tr(" px"));
    auto *form = new QFormLayout;
    form->addRow(tr("Frame margin"), m_margin);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_flatten);
    layout->addWidget(m_crop);
    layout->addWidget(m_normalize);
    layout->addLayout(form);
    layout->addWidget(buttons);
    setOptions(storedOptions());
}

ViewMeshOptions ViewMeshOptionsDialog::options() const
{
    return {m_flatten->isChecked(), m_crop->isChecked(), m_normalize->isChecked(), m_margin->value()};
}

void ViewMeshOptionsDialog::setOptions(const ViewMeshOptions &o)
{
    m_flatten->setChecked(o.flattenTo2D);
    m_crop->setChecked(o.cropToProjector);
    m_normalize->setChecked(o.normalizeCoordinates);
    m_margin->setValue(o.frameMarginPixels);
}

ViewMeshOptions ViewMeshOptionsDialog::storedOptions()
{
    QSettings settings;
    QVariantMap stored;
    for (const char *name : {"flattenTo2D", "cropToProjector", "normalizeCoordinates", "frameMarginPixels"}) {
        const QVariant value = settings.value(ViewMeshOptions::settingsKey(name));
        if (value.isValid())
            stored.insert(QLatin1String(name), value);
    }
    return ViewMeshOptions::fromVariantMap(stored);
}

void ViewMeshOptionsDialog::storeOptions(const ViewMeshOptions &options)
{
    QSettings settings;
    const QVariantMap values = options.toVariantMap();
    for (auto it = values.begin(); it != values.end(); ++it)
        settings.setValue(ViewMeshOptions::settingsKey(it.key().toLatin1().constData()), it.value());
}

WindowExportImages::WindowExportImages(QVector<QImage> guideImages)
    : m_guideImages(std::move(guideImages))
{
}

QImage WindowExportImages::guideImage(int guideTabIndex)
{
    if (guideTabIndex < 0 || guideTabIndex >= m_guideImages.size())
        return {};
    return m_guideImages.at(guideTabIndex);
}

namespace {

// Exports that work through one projector or camera say so before any dialog.
bool needsLens(const QString &identifier)
{
    return identifier == QLatin1String("view-mesh") || identifier == QLatin1String("maya");
}

bool hasChosenLens(const vg::exchange::ExportRequest &request)
{
    QList<int> chosen = request.selection;
    if (request.objectIndex >= 0)
        chosen.prepend(request.objectIndex);
    for (int i : chosen) {
        if (i >= 0 && i < request.objects.size() && request.objects.at(i).hasLens())
            return true;
    }
    return false;
}

QString exportFailedTitle()
{
    return QCoreApplication::translate("SceneExport", "Export failed");
}

} // namespace

QStringList runWindowExport(QWidget *parent, const vg::exchange::ExporterEntry &entry, vg::exchange::ExportRequest request,
                            const ExportFileChooser &chooseFile)
{
    if (needsLens(entry.identifier) && !hasChosenLens(request)) {
        QMessageBox::warning(parent, exportFailedTitle(),
                             QCoreApplication::translate("ViewMeshExport", "Select a projector or camera object first."));
        return {};
    }
    if (entry.identifier == QLatin1String("view-mesh")) {
        ViewMeshOptionsDialog dialog(parent);
        if (dialog.exec() != QDialog::Accepted)
            return {};
        ViewMeshOptionsDialog::storeOptions(dialog.options());
        request.options.insert(dialog.options().toVariantMap());
    }
    QString title = entry.displayMenuText();
    while (title.endsWith(QLatin1Char('.')))
        title.chop(1);
    QSettings settings;
    const QString folder = settings.value(entry.directoryKey).toString();
    const QString suggested = QDir(folder).filePath(entry.defaultBaseName + QLatin1Char('.') + entry.suffix);
    QString path = chooseFile ? chooseFile(title, suggested, entry.fileFilter())
                              : QFileDialog::getSaveFileName(parent, title, suggested, entry.fileFilter());
    if (path.isEmpty())
        return {};
    if (!path.endsWith(QLatin1Char('.') + entry.suffix, Qt::CaseInsensitive))
        path += QLatin1Char('.') + entry.suffix;
    settings.setValue(entry.directoryKey, QFileInfo(path).absolutePath());

    QStringList written;
    QString error;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool ok = entry.run(request, path, &written, &error);
    QApplication::restoreOverrideCursor();
    if (!ok) {
        QMessageBox::warning(parent, exportFailedTitle(), error);
        return {};
    }
    return written;
}
