#pragma once

#include "canvas/CanvasTabSettings.h"

#include <QJsonObject>

// The JSON form of canvas tabs and their objects. Every tab key is always written; an
// object writes the comment or text-box keys only for its own type, and the reader
// reads every key whatever the type.

QJsonObject canvasObjectToJson(const CanvasObjectSettings &object);
CanvasObjectSettings canvasObjectFromJson(const QJsonObject &json);

QJsonObject canvasTabToJson(const CanvasTabSettings &tab);
CanvasTabSettings canvasTabFromJson(const QJsonObject &json);
