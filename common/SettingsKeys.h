#pragma once

#include "common/GpuAdapter.h"

#include <QString>
#include <QStringList>

class QSettings;

// The program's settings, each declared once with its key and the value read when it is
// absent. The records are literal types so that tables built at start-up can name them.

struct TextSetting
{
    const char *name;
    const char *fallback = "";

    QString key() const { return QString::fromLatin1(name); }
    QString read() const;
    QString read(const QSettings &settings) const;
    void write(const QString &value) const;
    void remove() const;
};

struct FlagSetting
{
    const char *name;
    bool fallback = false;

    QString key() const { return QString::fromLatin1(name); }
    bool read() const;
    void write(bool value) const;
};

struct NumberSetting
{
    const char *name;
    double fallback = 0.0;

    QString key() const { return QString::fromLatin1(name); }
    // The fallback also stands for a stored value that is not a number.
    double read() const;
    double read(const QSettings &settings) const;
    void write(double value) const;
};

struct ListSetting
{
    const char *name;

    QString key() const { return QString::fromLatin1(name); }
    QStringList read() const;
    void write(const QStringList &value) const;
};

namespace Settings {

// ---- interface ------------------------------------------------------------------------------
inline constexpr NumberSetting uiScale{"ui/scale", 1.0};
inline constexpr TextSetting uiFont{"ui/font"};
inline constexpr TextSetting uiLanguage{"ui/language", "en"};
inline constexpr TextSetting graphicsAdapter{"graphics/adapterKey", kGpuAdapterAutoKey};
inline constexpr FlagSetting autoUpdate{"updates/autoUpdate", true};

// ---- projects ---------------------------------------------------------------------------
inline constexpr TextSetting projectFile{"paths/programSettingsFile"};
inline constexpr TextSetting projectDirectory{"paths/programSettingsDirectory"};
inline constexpr ListSetting recentProjects{"paths/recentProgramSettingsFiles"};
inline constexpr TextSetting sharePackageDirectory{"paths/sharePackageDirectory"};
inline constexpr TextSetting projectBundleImportDirectory{"paths/projectBundleImportDirectory"};

// ---- last folders of the file dialogs -------------------------------------------------------
inline constexpr TextSetting guideExportDirectory{"paths/guideExportDirectory"};
inline constexpr TextSetting guideLogoDirectory{"paths/guideLogoDirectory"};
inline constexpr TextSetting guideLayerImageDirectory{"paths/guideLayerImageDirectory"};
inline constexpr TextSetting canvasExportDirectory{"paths/canvasExportDirectory"};
inline constexpr TextSetting compositeExportDirectory{"paths/compositeExportDirectory"};
inline constexpr TextSetting canvasImageDirectory{"paths/canvasImageDirectory"};
inline constexpr TextSetting compositeImageDirectory{"paths/compositeImageDirectory"};
inline constexpr TextSetting captureDirectory{"paths/captureDirectory"};
inline constexpr TextSetting uvLutExportDirectory{"paths/uvLutExportDirectory"};
inline constexpr TextSetting calibrationMatrixDirectory{"paths/calibrationMatrixDirectory"};
inline constexpr TextSetting calibrationImageDirectory{"paths/calibrationImageDirectory"};
inline constexpr TextSetting objMeshImportDirectory{"paths/objMeshImportDirectory"};
inline constexpr TextSetting dxfDrawingImportDirectory{"paths/dxfDrawingImportDirectory"};
inline constexpr TextSetting objExportDirectory{"paths/objExportDirectory"};
inline constexpr TextSetting viewMeshExportDirectory{"paths/viewMeshExportDirectory"};
inline constexpr TextSetting guideMeshExportDirectory{"paths/guideMeshExportDirectory"};
inline constexpr TextSetting fbxExportDirectory{"paths/fbxExportDirectory"};
inline constexpr TextSetting usdExportDirectory{"paths/usdExportDirectory"};
inline constexpr TextSetting mayaExportDirectory{"paths/mayaExportDirectory"};
inline constexpr TextSetting tabViewExportDirectory{"paths/tabViewExportDirectory"};

} // namespace Settings
