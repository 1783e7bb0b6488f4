#pragma once

#include "canvas/CanvasTabSettings.h"

#include "common/JsonNodeTree.h"
#include "common/JsonTextWriter.h"

#include <QJsonObject>

// The JSON form of canvas tabs and their objects. Every tab key is always written; an
// object writes the comment or text-box keys only for its own type, and the reader
// reads every key whatever the type.

// The writers are the one serialisation; the QJsonObject forms are read back from their text.
void writeCanvasObject(vg::json::JsonTextWriter &w, const CanvasObjectSettings &object);
void writeCanvasTab(vg::json::JsonTextWriter &w, const CanvasTabSettings &tab);

QJsonObject canvasObjectToJson(const CanvasObjectSettings &object);
CanvasObjectSettings canvasObjectFromJson(const QJsonObject &json);

QJsonObject canvasTabToJson(const CanvasTabSettings &tab);
CanvasTabSettings canvasTabFromJson(const QJsonObject &json);
CanvasTabSettings canvasTabFromJson(const vg::json::JsonObjectRef &json);
