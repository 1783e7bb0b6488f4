#include "guide/StyleDefaults.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QStandardPaths>
#include <QtDebug>

namespace {
const QString kFileName = QStringLiteral("VantreoGuideStyle.vss");

QString userConfigPath()
{
    const QString dir = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    return dir.isEmpty() ? QString() : QDir(dir).filePath(kFileName);
}
} // namespace

QString styleDefaultsFilePath()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(kFileName);
}

QString styleDefaultsReadPath()
{
    QStringList candidates{styleDefaultsFilePath(), userConfigPath()};
    for (const QString &dir : QStandardPaths::standardLocations(QStandardPaths::AppDataLocation))
        candidates << QDir(dir).filePath(kFileName);
    for (const QString &path : candidates) {
        if (!path.isEmpty() && QFileInfo::exists(path))
            return path;
    }
    return styleDefaultsFilePath();
}

QString styleDefaultsWritePath()
{
    const QFileInfo dir(QCoreApplication::applicationDirPath());
    if (dir.isDir() && dir.isWritable())
        return styleDefaultsFilePath();
    const QString config = userConfigPath();
    if (config.isEmpty())
        return styleDefaultsFilePath();
    QDir().mkpath(QFileInfo(config).absolutePath());
    return config;
}

bool loadStyleDefaults(const QString &path, GuideSettings *settings, QString *error)
{
    if (!QFileInfo::exists(path))
        return true;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        if (error)
            *error = QStringLiteral("Style default parse failed: %1").arg(parseError.errorString());
        return false;
    }
    if (!doc.isObject()) {
        if (error)
            *error = QStringLiteral("Style default root must be an object.");
        return false;
    }
    const QJsonObject root = doc.object();
    const QJsonValue style = root.value(QStringLiteral("style"));
    applyGuideStyleJson(style.isObject() ? style.toObject() : root, settings);
    completeGuideSettings(settings);
    return true;
}

bool loadStyleDefaults(GuideSettings *settings, QString *error)
{
    return loadStyleDefaults(styleDefaultsReadPath(), settings, error);
}

bool saveStyleDefaults(const QString &path, const GuideSettings &settings, QString *error)
{
    QJsonObject root;
    root.insert(QStringLiteral("file_type"), QStringLiteral("VantreoGuideStyle"));
    root.insert(QStringLiteral("version"), 1);
    root.insert(QStringLiteral("style"), guideStyleToJson(settings));
    const QByteArray bytes = QJsonDocument(root).toJson(QJsonDocument::Indented);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    if (file.write(bytes) != bytes.size() || !file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

bool saveStyleDefaults(const GuideSettings &settings, QString *error)
{
    return saveStyleDefaults(styleDefaultsWritePath(), settings, error);
}

GuideSettings newGuideSettingsWithStyleDefaults()
{
    GuideSettings settings;
    GuideSettings styled = settings;
    QString error;
    if (!loadStyleDefaults(&styled, &error)) {
        qWarning().noquote() << "Failed to load guide style defaults:" << error;
        return settings;
    }
    return styled;
}
