#pragma once

#include <QString>

namespace vg::net {

// What this build is, as the startup client reports it.
struct BuildInfo
{
    QString version;       // "1.0.0"
    QString buildNumber;   // commits in the history the build was made from
    QString gitCommit;     // 12 hexadecimal digits, empty when unknown
    bool gitDirty = false; // built with uncommitted changes
    QString buildTimeUtc;  // "yyyy-MM-dd HH:mm:ss"
};

BuildInfo currentBuildInfo();

// The API server this build reports to unless told otherwise.
QString builtInApiBaseUrl();

// "linux", "windows" or "macos".
QString platformName();
// The architecture the program was compiled for, in package naming: "x64", "arm64", "x86".
QString architectureName();
// "VantreoGuide-<build>-<platform>-<arch>" and the extension when there is one.
QString updateFileName(const QString &buildNumber, const QString &extension);

// The name of the file beside the executable that records the build a package installed.
inline constexpr const char *kAppliedBuildMarker = "VantreoGuideUpdateBuild.txt";

// The applied-build marker in `applicationDir`, else `fallback`. Only a short run of
// digits counts; anything else in the file is ignored.
QString effectiveBuildNumber(const QString &applicationDir, const QString &fallback);

} // namespace vg::net
