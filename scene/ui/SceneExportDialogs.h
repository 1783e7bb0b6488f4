#pragma once

#include "exchange/ExportImageSource.h"
#include "exchange/ExporterTable.h"
#include "exchange/ViewMeshExport.h"
#include "scene/gl/GlExportImageSource.h"

#include <QDialog>
#include <QImage>
#include <QVector>

#include <functional>

class QCheckBox;
class QSpinBox;
class QWidget;

// The four options of the projector view mesh, read from and written back to the program
// settings ("export/viewMesh/...").
class ViewMeshOptionsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ViewMeshOptionsDialog(QWidget *parent = nullptr);

    vg::exchange::ViewMeshOptions options() const;
    void setOptions(const vg::exchange::ViewMeshOptions &options);

    static vg::exchange::ViewMeshOptions storedOptions();
    static void storeOptions(const vg::exchange::ViewMeshOptions &options);

private:
    QCheckBox *m_flatten = nullptr;
    QCheckBox *m_crop = nullptr;
    QCheckBox *m_normalize = nullptr;
    QSpinBox *m_margin = nullptr;
};

// The window's pictures for exports: guide images as the guide tabs show them (no second
// render), everything else as the GL layer draws it.
class WindowExportImages : public GlExportImageSource
{
public:
    explicit WindowExportImages(QVector<QImage> guideImages);
    QImage guideImage(int guideTabIndex) override;

private:
    QVector<QImage> m_guideImages;
};

// Runs one export of the table from the window: asks for the file (the dialog's last folder
// is remembered under the entry's "paths/..." key), writes it, and shows a failure in a box
// titled "Export failed". `chooseFile` replaces the file dialog (tests); it returns "" on
// cancel. Returns the written files, empty when cancelled or failed.
using ExportFileChooser = std::function<QString(const QString &title, const QString &suggestedPath, const QString &filter)>;
QStringList runWindowExport(QWidget *parent, const vg::exchange::ExporterEntry &entry, vg::exchange::ExportRequest request,
                            const ExportFileChooser &chooseFile = {});
