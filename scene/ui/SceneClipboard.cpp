#include "scene/ui/SceneClipboard.h"

#include "project/SceneJson.h"
#include "scene/ui/SceneTexts.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>

namespace SceneClipboard {

namespace {
const char kFormatKey[] = "format";
const char kFormatValue[] = "vantreoguide-3d-object-copy";
const char kObjectsKey[] = "objects";
} // namespace

QString mimeType()
{
    return QStringLiteral("application/x-vantreoguide-3d-object-copy");
}

QByteArray encode(const QVector<GuideObject> &objects)
{
    QJsonArray array;
    for (const GuideObject &object : objects)
        array.append(guideObjectToJson(object));
    QJsonObject root;
    root.insert(QLatin1String(kFormatKey), QLatin1String(kFormatValue));
    root.insert(QLatin1String("version"), 1);
    root.insert(QLatin1String(kObjectsKey), array);
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}

bool decode(const QByteArray &payload, QVector<GuideObject> *objects)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(payload, &error);
    if (error.error != QJsonParseError::NoError)
        return false;
    QJsonArray array;
    if (document.isArray()) {
        array = document.array();
    } else if (document.isObject()) {
        const QJsonValue value = document.object().value(QLatin1String(kObjectsKey));
        if (!value.isArray())
            return false;
        array = value.toArray();
    } else {
        return false;
    }
    QVector<GuideObject> result;
    for (const QJsonValue &value : array) {
        if (value.isObject())
            result.append(guideObjectFromJson(value.toObject()));
    }
    if (objects)
        *objects = result;
    return true;
}

QMimeData *createMimeData(const QVector<GuideObject> &objects)
{
    auto *data = new QMimeData;
    data->setData(mimeType(), encode(objects));
    data->setText(SceneTexts::copyPlainText(int(objects.size())));
    return data;
}

bool hasObjects(const QMimeData *data)
{
    return data && data->hasFormat(mimeType());
}

bool readMimeData(const QMimeData *data, QVector<GuideObject> *objects)
{
    if (!hasObjects(data))
        return false;
    return decode(data->data(mimeType()), objects);
}

} // namespace SceneClipboard
