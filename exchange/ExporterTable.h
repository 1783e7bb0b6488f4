#pragma once

#include "guide/GuideSettings.h"
#include "scene/GuideObject.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <QVector>

#include <functional>
#include <vector>

struct ProjectDocument;

namespace vg::exchange {

class ExportImageSource;

// Which tab kind offers an export: its menus list the entries of their subject.
enum class ExportSubject {
    SceneView,   // a 3D view's scene
    Guide,       // one guide tab
    Project,     // every tab of the project (documents)
};

// Everything an exporter may read. The window fills it from the current tab, the command
// line from a project file; each format reads only what it needs.
struct ExportRequest {
    QList<GuideSettings> guides;         // the project's guide tabs, for textures
    QVector<GuideObject> objects;        // the 3D view's scene
    QList<int> selection;                // selected scene indices
    int objectIndex = -1;                // the chosen projector or camera, -1 none
    int guideIndex = -1;                 // the guide tab of a guide export
    QString guideName;                   // its title ("" when it has none)
    const ProjectDocument *project = nullptr;   // the whole project, for documents
    // Format options under the names of the format's options record (for the view mesh
    // "flattenTo2D", "cropToProjector", "normalizeCoordinates", "frameMarginPixels").
    QVariantMap options;
    // Pictures and GPU work. Null means the core's own (guides and image files only).
    ExportImageSource *images = nullptr;
    // Progress texts for long exports; may be empty.
    std::function<void(const QString &)> progress;
};

// Writes the export to `path` (the main file; companions go beside it). On success the
// written files are listed in `written` (main file first); on failure `error` holds the
// user-visible text and files written before the failure stay.
using ExportFunction =
    std::function<bool(const ExportRequest &request, const QString &path, QStringList *written, QString *error)>;

// One row of the exporter table.
struct ExporterEntry {
    QString identifier;          // "obj": the command line's --format value
    QString suffix;              // "obj": file name suffix, without the dot
    const char *description;     // "Wavefront OBJ": file dialog filter name (context "Exporters")
    const char *menuText;        // "Export OBJ...": the menu entry (context "Exporters")
    ExportSubject subject;
    QString defaultBaseName;     // "3d_view"
    QString directoryKey;        // "paths/objExportDirectory": last folder of this dialog
    ExportFunction run;

    QString displayDescription() const;
    QString displayMenuText() const;
    // "Wavefront OBJ (*.obj)"
    QString fileFilter() const;
};

// The one table of export formats, used by the window's menus and the command line.
const std::vector<ExporterEntry> &exporterTable();
const ExporterEntry *findExporter(const QString &identifier);
std::vector<const ExporterEntry *> exportersFor(ExportSubject subject);

// Typed readers of ExportRequest::options: a missing or unusable value gives the fallback.
bool optionBool(const QVariantMap &options, const QString &key, bool fallback);
int optionInt(const QVariantMap &options, const QString &key, int fallback, int minimum, int maximum);

} // namespace vg::exchange
