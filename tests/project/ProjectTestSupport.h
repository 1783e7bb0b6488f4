#pragma once

#include "project/ProjectFile.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

// A project that touches every record: two guides with colours and layers, two views
// with every object kind, camera views and matches, and two canvas tabs of every type.
ProjectDocument makeRichProject();

inline QJsonObject parseObject(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object();
}

inline QByteArray compactJson(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}
