#include "net/BuildInfo.h"

#include <QFile>
#include <QDir>
#include <QSysInfo>

namespace vg::net {

BuildInfo currentBuildInfo()
{
    BuildInfo info;
    info.version = QStringLiteral(VG_VERSION);
#ifdef VG_BUILD_NUMBER
    info.buildNumber = QStringLiteral(VG_BUILD_NUMBER);
#else
    info.buildNumber = QStringLiteral("0");
#endif
#ifdef VG_GIT_COMMIT
    info.gitCommit = QStringLiteral(VG_GIT_COMMIT);
    info.gitDirty = VG_GIT_DIRTY != 0;
#endif
    info.buildTimeUtc = QStringLiteral(VG_BUILD_TIME_UTC);
    return info;
}

QString builtInApiBaseUrl()
{
    return QStringLiteral(VG_UPDATE_API_URL);
}

QString platformName()
{
#if defined(Q_OS_WIN)
    return QStringLiteral("windows");
#elif defined(Q_OS_MACOS)
    return QStringLiteral("macos");
#else
    return QStringLiteral("linux");
#endif
}

QString architectureName()
{
    const QString arch = QSysInfo::buildCpuArchitecture();
    if (arch == QLatin1String("x86_64"))
        return QStringLiteral("x64");
    if (arch == QLatin1String("i386"))
        return QStringLiteral("x86");
    return arch; // "arm64", "arm", ... already read well in a file name
}

QString updateFileName(const QString &buildNumber, const QString &extension)
{
    QString name = QStringLiteral("VantreoGuide-%1-%2-%3").arg(buildNumber, platformName(), architectureName());
    if (!extension.isEmpty())
        name += QLatin1Char('.') + extension;
    return name;
}

QString effectiveBuildNumber(const QString &applicationDir, const QString &fallback)
{
    QFile file(QDir(applicationDir).filePath(QString::fromLatin1(kAppliedBuildMarker)));
    if (!file.open(QIODevice::ReadOnly))
        return fallback;
    const QByteArray text = file.read(64).trimmed();
    if (text.isEmpty() || text.size() > 18)
        return fallback;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return fallback;
    }
    return QString::fromLatin1(text);
}

} // namespace vg::net
