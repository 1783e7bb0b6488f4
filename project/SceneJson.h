#pragma once

#include "scene/Guide3DViewSettings.h"
#include "scene/GuideObject.h"
#include "scene/GuideProjectorCalibrationSettings.h"
#include "scene/MediaServerSettings.h"

#include "common/JsonNodeTree.h"
#include "common/JsonTextWriter.h"

#include <QJsonObject>

// The JSON form of a 3D view and of its scene objects. Writers always write every key;
// readers start from the defaults, keep them for missing or unreadable keys and clamp
// after reading, so no view or object ever fails a load.

// The writers are the one serialisation; the QJsonObject forms are read back from their text.
void writeGuideObject(vg::json::JsonTextWriter &w, const GuideObject &object);
void writeViewSettings(vg::json::JsonTextWriter &w, const Guide3DViewSettings &view);

QJsonObject guideObjectToJson(const GuideObject &object);
GuideObject guideObjectFromJson(const QJsonObject &json);
GuideObject guideObjectFromJson(const vg::json::JsonObjectRef &json);

QJsonObject viewSettingsToJson(const Guide3DViewSettings &view);
// The result always has `present` set.
Guide3DViewSettings viewSettingsFromJson(const QJsonObject &json);
// A view whose "objects" were streamed apart from its other keys (in `json`).
Guide3DViewSettings viewSettingsFromJson(const vg::json::JsonObjectRef &json, QVector<GuideObject> objects);

QJsonObject cameraViewToJson(const GuideCameraView &cameraView);
GuideCameraView cameraViewFromJson(const QJsonObject &json);

QJsonObject projectorCalibrationSettingsToJson(const GuideProjectorCalibrationSettings &settings);
// Reads over `base` (the defaults unless given) and clamps.
GuideProjectorCalibrationSettings projectorCalibrationSettingsFromJson(
    const QJsonObject &json, const GuideProjectorCalibrationSettings &base = {});
void clampProjectorCalibrationSettings(GuideProjectorCalibrationSettings *settings);

QJsonObject mediaServerSettingsToJson(const MediaServerSettings &settings);
MediaServerSettings mediaServerSettingsFromJson(const QJsonObject &json, const MediaServerSettings &base = {});
