#include "net/ClientInfo.h"

#include <QJsonObject>
#include <QSysInfo>

namespace vg::net {

QJsonObject clientInfoBody(const BuildInfo &build, const QString &applicationDir)
{
    const QJsonObject metadata{
        {QStringLiteral("osName"), QSysInfo::prettyProductName()},
        {QStringLiteral("kernel"), QSysInfo::kernelVersion()},
        {QStringLiteral("qtVersion"), QString::fromLatin1(qVersion())},
    };
    return QJsonObject{
        {QStringLiteral("product"), QStringLiteral("VantreoGuide")},
        {QStringLiteral("platform"), platformName()},
        {QStringLiteral("arch"), architectureName()},
        {QStringLiteral("channel"), QStringLiteral("stable")},
        {QStringLiteral("version"), build.version},
        {QStringLiteral("buildNumber"), build.buildNumber},
        {QStringLiteral("executableBuildNumber"), build.buildNumber},
        {QStringLiteral("effectiveBuildNumber"), effectiveBuildNumber(applicationDir, build.buildNumber)},
        {QStringLiteral("buildTimeUtc"), build.buildTimeUtc},
        {QStringLiteral("gitCommit"), build.gitCommit},
        {QStringLiteral("gitDirty"), build.gitDirty},
        {QStringLiteral("computerName"), QSysInfo::machineHostName()},
        {QStringLiteral("cpuArch"), QSysInfo::currentCpuArchitecture()},
        {QStringLiteral("buildAbi"), QSysInfo::buildAbi()},
        {QStringLiteral("metadata"), metadata},
    };
}

} // namespace vg::net
