#include "net/mediaserver/UvLutUpdate.h"

#include "exchange/UvLutWriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace vg::mediaserver {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("UvLutExport", text);
}

} // namespace

QString uvLutUpdateFileName(int warpEditorIndex)
{
    return QStringLiteral("display_%1.uvlut").arg(clampedWarpEditorIndex(warpEditorIndex));
}

bool updateUvLutOnServer(const vg::exchange::UvLutResult &result, const UvLutServerTarget &target,
                         UvLutUpdateReport *report, QString *error)
{
    QTemporaryDir folder;
    if (!folder.isValid()) {
        *error = tr("Could not create a temporary LUT folder.");
        return false;
    }
    const QString name = uvLutUpdateFileName(target.warpEditorIndex);
    const QString path = folder.filePath(name);
    QString cause;
    if (!vg::exchange::writeUvLutBinary(result, path, &cause)) {
        *error = tr("Could not save camera UV LUT package.") + QLatin1Char('\n') + cause;
        return false;
    }
    UploadOptions upload = target.upload;
    upload.serverAddress = effectiveServerAddress(target.serverAddress);
    UvLutUpdateReport out;
    if (!uploadFilesToMediaServer({path}, upload, &out.reply, &cause)) {
        *error = tr("Could not upload LUT to Vantreo Service.") + QLatin1Char('\n') + cause;
        return false;
    }
    const bool removed = QFile::remove(path);
    out.message = (removed ? tr("Uploaded %1 to %2 and removed the temporary LUT file.")
                           : tr("Uploaded %1 to %2, but the temporary LUT file could not be removed."))
                      .arg(name, upload.serverAddress);
    const QByteArray datagram = mediaServerCommandDatagram(QStringLiteral("uvlut_update"), target.playerAddress,
                                                           target.warpEditorIndex);
    if (!sendMediaServerCommand(upload.serverAddress, target.udpPort, datagram, LinkCaller::MainWindow, &cause)) {
        *error = cause;
        return false;
    }
    out.status = tr("Updated LUT %1 to %2").arg(name, upload.serverAddress);
    if (report)
        *report = out;
    return true;
}

} // namespace vg::mediaserver
