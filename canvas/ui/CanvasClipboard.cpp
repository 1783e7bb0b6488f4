#include "canvas/ui/CanvasClipboard.h"

#include "canvas/CanvasNaming.h"

#include <QImage>
#include <QMimeData>
#include <QMutex>
#include <QUrl>
#include <QUuid>

namespace {

struct Payload {
    QMutex mutex;
    QByteArray token;
    QVector<CanvasObjectSettings> objects;
};

Payload &payload()
{
    static Payload p;
    return p;
}

} // namespace

namespace CanvasClipboard {

QString mimeType()
{
    return QStringLiteral("application/x-vantreoguide-canvas-object-copy");
}

QMimeData *createMimeData(const QVector<CanvasObjectSettings> &objects)
{
    Payload &p = payload();
    QMutexLocker lock(&p.mutex);
    p.objects = objects;
    p.token = "VantreoGuide canvas objects " + QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
    auto *data = new QMimeData;
    data->setData(mimeType(), p.token);
    data->setText(canvasObjectCopyText(int(objects.size())));
    return data;
}

bool readMimeData(const QMimeData *data, QVector<CanvasObjectSettings> *objects)
{
    if (!data || !data->hasFormat(mimeType()))
        return false;
    Payload &p = payload();
    QMutexLocker lock(&p.mutex);
    if (p.token.isEmpty() || data->data(mimeType()) != p.token)
        return false;
    *objects = p.objects;
    return true;
}

} // namespace CanvasClipboard

QMimeData *createFileCopyMimeData(const QString &path, const QImage &image)
{
    auto *data = new QMimeData;
    const QUrl url = QUrl::fromLocalFile(path);
    data->setImageData(image);
    data->setUrls({url});
    data->setData(QStringLiteral("x-special/gnome-copied-files"), "copy\n" + url.toEncoded());
    // DROPEFFECT_COPY as a little-endian 32-bit value.
    data->setData(QStringLiteral("application/x-qt-windows-mime;value=\"Preferred DropEffect\""),
                  QByteArray("\x01\x00\x00\x00", 4));
    return data;
}
