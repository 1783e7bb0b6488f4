#include "net/UpdateResponse.h"

#include "common/JsonValueReaders.h"

#include <QJsonDocument>
#include <QJsonParseError>
#include <QUrl>

#include <initializer_list>

namespace vg::net {
namespace {

// Build numbers and versions arrive as numbers or strings.
QString scalarText(const QJsonValue &value)
{
    if (value.isString())
        return value.toString().trimmed();
    if (value.isDouble()) {
        const double number = value.toDouble();
        if (number == double(qint64(number)))
            return QString::number(qint64(number));
        return QString::number(number);
    }
    return {};
}

// The first key of `keys` that holds a usable value.
QString firstText(const QJsonObject &object, std::initializer_list<const char *> keys)
{
    for (const char *key : keys) {
        const QString text = scalarText(object.value(QLatin1String(key)));
        if (!text.isEmpty())
            return text;
    }
    return {};
}

qint64 readSize(const QJsonValue &value)
{
    if (value.isDouble() && value.toDouble() >= 0 && value.toDouble() < 9.0e15)
        return qint64(value.toDouble());
    bool ok = false;
    const qint64 size = value.toString().trimmed().toLongLong(&ok);
    return ok && size >= 0 ? size : -1;
}

} // namespace

UpdateKind UpdateInfo::kind() const
{
    const QString type = updateType.trimmed().toLower();
    if (type == QLatin1String("folder") || type == QLatin1String("full") || type == QLatin1String("package"))
        return UpdateKind::Package;
    if (type == QLatin1String("installer"))
        return UpdateKind::Installer;
    if (type == QLatin1String("self"))
        return UpdateKind::Executable;
    const QString name = latest.fileName.isEmpty() ? QUrl(downloadUrl).fileName() : latest.fileName;
    return name.endsWith(QLatin1String(".zip"), Qt::CaseInsensitive) ? UpdateKind::Package : UpdateKind::Executable;
}

bool parseStartupResponse(const QByteArray &body, UpdateInfo *info, QString *error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(body, &parseError);
    if (parseError.error != QJsonParseError::NoError || !document.isObject()) {
        if (error)
            *error = parseError.error != QJsonParseError::NoError ? parseError.errorString()
                                                                   : QStringLiteral("not a JSON object");
        return false;
    }
    const QJsonObject root = document.object();
    const QJsonObject update = root.value(QLatin1String("update")).toObject();
    UpdateInfo parsed;
    parsed.updateAvailable = json::readBool(update, QStringLiteral("updateAvailable"), false);
    parsed.mandatory = json::readBool(update, QStringLiteral("mandatory"), false);
    parsed.status = firstText(update, {"status"});
    if (parsed.status.isEmpty())
        parsed.status = firstText(root, {"status"});
    parsed.reason = firstText(update, {"reason"});
    parsed.latestBuildNumber = firstText(update, {"latestBuildNumber", "serverBuildNumber", "serverBuild",
                                                  "latestVersion", "buildNumber", "version", "build"});
    parsed.currentBuildNumber = firstText(update, {"currentBuildNumber", "currentBuild", "clientBuildNumber",
                                                   "clientBuild"});
    parsed.downloadUrl = firstText(update, {"downloadUrl", "fileUrl", "installerUrl"});
    parsed.installerArgs = firstText(update, {"installerArgs", "installArgs", "arguments"});
    parsed.sha256 = firstText(update, {"sha256", "checksumSha256", "fileSha256"});
    parsed.updateType = firstText(update, {"updateType", "packageType", "installerType", "type"});
    const QJsonObject latest = update.value(QLatin1String("latest")).toObject();
    parsed.latest.fileName = firstText(latest, {"fileName"});
    parsed.latest.sizeBytes = readSize(latest.value(QLatin1String("sizeBytes")));
    parsed.latest.publishedAt = firstText(latest, {"publishedAt"});
    parsed.latest.releaseNotes = latest.value(QLatin1String("releaseNotes")).toString();
    parsed.latest.channel = firstText(latest, {"channel"});
    *info = parsed;
    return true;
}

QJsonObject toJson(const UpdateInfo &info)
{
    return QJsonObject{
        {QStringLiteral("updateAvailable"), info.updateAvailable},
        {QStringLiteral("mandatory"), info.mandatory},
        {QStringLiteral("status"), info.status},
        {QStringLiteral("reason"), info.reason},
        {QStringLiteral("latestBuildNumber"), info.latestBuildNumber},
        {QStringLiteral("currentBuildNumber"), info.currentBuildNumber},
        {QStringLiteral("downloadUrl"), info.downloadUrl},
        {QStringLiteral("installerArgs"), info.installerArgs},
        {QStringLiteral("sha256"), info.sha256},
        {QStringLiteral("updateType"), info.updateType},
        {QStringLiteral("latest"),
         QJsonObject{{QStringLiteral("fileName"), info.latest.fileName},
                     {QStringLiteral("sizeBytes"), info.latest.sizeBytes},
                     {QStringLiteral("publishedAt"), info.latest.publishedAt},
                     {QStringLiteral("releaseNotes"), info.latest.releaseNotes},
                     {QStringLiteral("channel"), info.latest.channel}}},
    };
}

QString statusWordText(const QString &status)
{
    if (status == QLatin1String("up_to_date"))
        return QStringLiteral("Up to date");
    if (status == QLatin1String("update_available"))
        return QStringLiteral("Update available");
    if (status == QLatin1String("no_update_published"))
        return QStringLiteral("No update published");
    return status;
}

} // namespace vg::net
