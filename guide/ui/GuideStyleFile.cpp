#include "guide/ui/GuideStyleFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace guidestyle {

QString defaultFilePath()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("VantreoGuideStyle.vss"));
}

bool load(const QString &path, GuideSettings *settings, QString *error)
{
    QFile file(path);
    if (!file.exists())
        return true;
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        if (error)
            *error = QStringLiteral("Style default parse failed: %1").arg(parseError.errorString());
        return false;
    }
    if (!document.isObject()) {
        if (error)
            *error = QStringLiteral("Style default root must be an object.");
        return false;
    }
    const QJsonObject root = document.object();
    const QJsonValue style = root.value(QStringLiteral("style"));
    applyGuideStyleJson(style.isObject() ? style.toObject() : root, settings);
    completeGuideSettings(settings);
    return true;
}

bool save(const QString &path, const GuideSettings &settings, QString *error)
{
    QJsonObject root;
    root.insert(QStringLiteral("file_type"), QStringLiteral("VantreoGuideStyle"));
    root.insert(QStringLiteral("version"), 1);
    root.insert(QStringLiteral("style"), guideStyleToJson(settings));
    const QByteArray bytes = QJsonDocument(root).toJson(QJsonDocument::Indented);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size() || !file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

} // namespace guidestyle
