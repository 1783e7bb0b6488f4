#pragma once

#include "scene/GuideObject.h"

#include <QString>
#include <QVector>

class QMimeData;

// 3D objects on the system clipboard: the objects' scene-file form under our own MIME
// type, so a copy travels between views and between running instances of the program.
namespace SceneClipboard {

QString mimeType(); // "application/x-vantreoguide-3d-object-copy"

QByteArray encode(const QVector<GuideObject> &objects);
// False when the payload is not a copy of ours; never fails on single bad fields.
bool decode(const QByteArray &payload, QVector<GuideObject> *objects);

// Mime data with the payload and the plain-text form; the caller owns it.
QMimeData *createMimeData(const QVector<GuideObject> &objects);
bool hasObjects(const QMimeData *data);
bool readMimeData(const QMimeData *data, QVector<GuideObject> *objects);

} // namespace SceneClipboard
