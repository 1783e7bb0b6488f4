#include "canvas/CanvasNaming.h"

#include "canvas/CanvasPainter.h"
#include "guide/PngWriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("CanvasTab", text);
}

QString sizeName(const QString &stem, QSize size)
{
    return QStringLiteral("%1_%2x%3.png").arg(stem).arg(size.width()).arg(size.height());
}

} // namespace

QString canvasDefaultObjectName(CanvasObjectKind kind)
{
    switch (kind) {
    case CanvasObjectKind::GuideImage:
        return tr("Guide Image");
    case CanvasObjectKind::Picture:
        return tr("Image");
    case CanvasObjectKind::Comment:
        return tr("Comment");
    case CanvasObjectKind::TextBox:
        return tr("Text Box");
    }
    return QString();
}

QString canvasCopyName(const QString &source, const QStringList &taken)
{
    const QString first = tr("%1 Copy").arg(source);
    if (!taken.contains(first))
        return first;
    for (int n = 2;; ++n) {
        const QString candidate = tr("%1 Copy %2").arg(source).arg(n);
        if (!taken.contains(candidate))
            return candidate;
    }
}

QString canvasObjectCopyText(int count)
{
    return QStringLiteral("VantreoGuide Canvas object copy (%1 object%2)")
        .arg(count)
        .arg(count == 1 ? QString() : QStringLiteral("s"));
}

QString canvasGuideSourceCaption(int count)
{
    // Translations without the plural suffix leave out %2.
    QString text = tr("%1 guide source%2").arg(count);
    return text.contains(QLatin1String("%2")) ? text.arg(count == 1 ? QString() : QStringLiteral("s")) : text;
}

QString withPngSuffix(const QString &path)
{
    return path.endsWith(QLatin1String(".png"), Qt::CaseInsensitive) ? path : path + QStringLiteral(".png");
}

QString canvasExportFileName(QSize size)
{
    return sizeName(QStringLiteral("canvas_export"), size);
}

QString canvasViewFileName(QSize size)
{
    return sizeName(QStringLiteral("canvas_view"), size);
}

QString canvasSafeFileName(const QString &name)
{
    static const QRegularExpression unsafe(QStringLiteral("[\\\\/:*?\"<>|\\x00-\\x1f]"));
    QString safe = name;
    safe.replace(unsafe, QStringLiteral("_"));
    safe = safe.trimmed();
    while (safe.endsWith(QLatin1Char('.')))
        safe.chop(1);
    return safe.isEmpty() ? QStringLiteral("selected_guide") : safe;
}

QString selectedGuideExportFileName(const QString &guideName, QSize own, QSize placed)
{
    return QStringLiteral("%1(%2x%3)_resized(%4x%5).png")
        .arg(canvasSafeFileName(guideName))
        .arg(own.width())
        .arg(own.height())
        .arg(placed.width())
        .arg(placed.height());
}

QString pastedCanvasImageFolder()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (!data.isEmpty())
        return QDir(data).filePath(QStringLiteral("PastedCanvasImages"));
    return QDir(QDir::tempPath()).filePath(QStringLiteral("VantreoGuide/PastedCanvasImages"));
}

QString pastedCanvasImageFileName(const QString &canvasName, const QDateTime &utc)
{
    QString name = canvasName;
    name.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9_-]+")), QStringLiteral("_"));
    if (name.isEmpty())
        name = QStringLiteral("canvas");
    return QStringLiteral("clipboard_canvas_%1_%2.png")
        .arg(name, utc.toUTC().toString(QStringLiteral("yyyyMMdd_hhmmss_zzz")));
}

bool savePastedCanvasImage(const QImage &image, const QString &folder, const QString &canvasName, QString *path,
                           QString *error)
{
    if (!QDir().mkpath(folder)) {
        if (error)
            *error = tr("Could not create a folder for pasted images.");
        return false;
    }
    const QString file = QDir(folder).filePath(pastedCanvasImageFileName(canvasName, QDateTime::currentDateTimeUtc()));
    QString writeError;
    if (image.isNull() || !writeGuidePng(image, file, &writeError)) {
        if (error)
            *error = tr("Could not save the clipboard image as PNG.");
        return false;
    }
    if (path)
        *path = file;
    return true;
}

bool exportCanvasPng(const CanvasTabSettings &canvas, const CanvasSources &sources, const QString &path,
                     QString *writtenPath, QString *error)
{
    if (canvasContentBounds(canvas, sources).isEmpty()) {
        if (error)
            *error = tr("No canvas objects to export.");
        return false;
    }
    const QString target = withPngSuffix(path);
    const QImage image = renderCanvasImage(canvas, sources, error);
    if (image.isNull())
        return false;
    QString writeError;
    if (!writeGuidePng(image, target, &writeError)) {
        if (error)
            *error = tr("PNG file could not be saved.");
        return false;
    }
    if (writtenPath)
        *writtenPath = target;
    return true;
}
