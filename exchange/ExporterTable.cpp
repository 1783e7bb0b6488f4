#include "exchange/ExporterTable.h"

#include "exchange/FbxExport.h"
#include "exchange/GuideMeshExport.h"
#include "exchange/MayaExport.h"
#include "exchange/ObjExport.h"
#include "exchange/UsdExport.h"
#include "exchange/ViewMeshExport.h"
#include "exchange/TabViewDocument.h"

#include <QCoreApplication>

#include <algorithm>

namespace vg::exchange {

QString ExporterEntry::displayDescription() const
{
    return QCoreApplication::translate("Exporters", description);
}

QString ExporterEntry::displayMenuText() const
{
    return QCoreApplication::translate("Exporters", menuText);
}

QString ExporterEntry::fileFilter() const
{
    return QStringLiteral("%1 (*.%2)").arg(displayDescription(), suffix);
}

const std::vector<ExporterEntry> &exporterTable()
{
    // One line per format; each format file describes its own entry.
    static const std::vector<ExporterEntry> table = {
        objExporterEntry(),
        viewMeshExporterEntry(),
        fbxExporterEntry(),
        usdExporterEntry(),
        mayaExporterEntry(),
        guideMeshExporterEntry(),
        pdfExporterEntry(),
        pptxExporterEntry(),
    };
    return table;
}

const ExporterEntry *findExporter(const QString &identifier)
{
    const auto &table = exporterTable();
    auto it = std::find_if(table.begin(), table.end(), [&](const ExporterEntry &e) { return e.identifier == identifier; });
    return it == table.end() ? nullptr : &*it;
}

std::vector<const ExporterEntry *> exportersFor(ExportSubject subject)
{
    std::vector<const ExporterEntry *> out;
    for (const ExporterEntry &e : exporterTable()) {
        if (e.subject == subject)
            out.push_back(&e);
    }
    return out;
}

bool optionBool(const QVariantMap &options, const QString &key, bool fallback)
{
    const QVariant v = options.value(key);
    if (!v.isValid())
        return fallback;
    if (v.typeId() == QMetaType::QString) {
        const QString s = v.toString().trimmed().toLower();
        if (s == QLatin1String("true") || s == QLatin1String("1"))
            return true;
        if (s == QLatin1String("false") || s == QLatin1String("0"))
            return false;
        return fallback;
    }
    return v.toBool();
}

int optionInt(const QVariantMap &options, const QString &key, int fallback, int minimum, int maximum)
{
    const QVariant v = options.value(key);
    if (!v.isValid())
        return std::clamp(fallback, minimum, maximum);
    bool ok = false;
    const double d = v.toDouble(&ok);
    if (!ok || !std::isfinite(d))
        return std::clamp(fallback, minimum, maximum);
    return int(std::clamp(d, double(minimum), double(maximum)));
}

} // namespace vg::exchange
