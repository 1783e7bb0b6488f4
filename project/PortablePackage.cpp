#include "project/PortablePackage.h"

#include "project/ResourceCollector.h"
#include "project/ZipArchive.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>

namespace vg::package {
namespace {

QString withPath(const QString &text, const QString &path)
{
    return text + QLatin1Char('\n') + QDir::toNativeSeparators(path);
}

// Libraries every Linux desktop provides in a version matched to its kernel and GPU;
// shipping ours would break there.
bool isSystemLibrary(const QString &fileName)
{
    static const QStringList prefixes = {
        QStringLiteral("linux-vdso"), QStringLiteral("ld-linux"), QStringLiteral("libc.so"),
        QStringLiteral("libm.so"), QStringLiteral("libdl.so"), QStringLiteral("libpthread.so"),
        QStringLiteral("librt.so"), QStringLiteral("libresolv.so"), QStringLiteral("libutil.so"),
        QStringLiteral("libGL.so"), QStringLiteral("libGLX"), QStringLiteral("libEGL"),
        QStringLiteral("libGLdispatch"), QStringLiteral("libOpenGL"), QStringLiteral("libdrm"),
        QStringLiteral("libgbm"), QStringLiteral("libxcb.so"), QStringLiteral("libX11.so"),
        QStringLiteral("libxcb-"), QStringLiteral("libfontconfig"), QStringLiteral("libfreetype"),
        QStringLiteral("libwayland-"), QStringLiteral("libvulkan"),
    };
    for (const QString &prefix : prefixes) {
        if (fileName.startsWith(prefix))
            return true;
    }
    return false;
}

bool copyTree(const QString &source, const QString &target, QString *error)
{
    const QFileInfo info(source);
    if (info.isFile())
        return resources::copyFileReplacing(source, target, error);
    if (!QDir().mkpath(target)) {
        if (error)
            *error = withPath(QCoreApplication::translate("PortablePackage", "Could not create folder:"), target);
        return false;
    }
    QDirIterator it(source, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    const QDir base(source);
    while (it.hasNext()) {
        const QString file = it.next();
        if (!resources::copyFileReplacing(file, QDir(target).filePath(base.relativeFilePath(file)), error))
            return false;
    }
    return true;
}

QString launcherScript(const QString &executableName)
{
    return QStringLiteral("#!/bin/sh\n"
                          "# Runs the packaged program with its own libraries and plugins.\n"
                          "here=\"$(cd \"$(dirname \"$0\")\" && pwd)\"\n"
                          "export LD_LIBRARY_PATH=\"$here/lib${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}\"\n"
                          "export QT_PLUGIN_PATH=\"$here\"\n"
                          "cd \"$here\"\n"
                          "exec \"$here/%1\" \"$@\"\n")
        .arg(executableName);
}

} // namespace

QStringList applicationEntries()
{
    return {QStringLiteral("conf"),          QStringLiteral("ffmpeg.exe"),   QStringLiteral("ffprobe.exe"),
            QStringLiteral("generic"),       QStringLiteral("iconengines"),  QStringLiteral("imageformats"),
            QStringLiteral("networkinformation"), QStringLiteral("platforms"), QStringLiteral("styles"),
            QStringLiteral("translations")};
}

QStringList pluginFolders()
{
    return {QStringLiteral("platforms"),    QStringLiteral("imageformats"), QStringLiteral("iconengines"),
            QStringLiteral("styles"),       QStringLiteral("generic"),      QStringLiteral("networkinformation"),
            QStringLiteral("xcbglintegrations"), QStringLiteral("platforminputcontexts"),
            QStringLiteral("platformthemes"), QStringLiteral("tls"),         QStringLiteral("wayland-shell-integration"),
            QStringLiteral("wayland-graphics-integration-client"), QStringLiteral("wayland-decoration-client")};
}

QStringList bundledLibrariesFor(const QStringList &binaries, QString *error)
{
    QStringList libraries;
    QSet<QString> seen;
    static const QRegularExpression line(QStringLiteral(R"(^\s*(\S+)\s+=>\s+(/\S+)\s+\(0x[0-9a-fA-F]+\)\s*$)"));
    for (const QString &binary : binaries) {
        QProcess ldd;
        ldd.start(QStringLiteral("ldd"), {binary});
        if (!ldd.waitForStarted(30000) || !ldd.waitForFinished(30000)) {
            if (error)
                *error = QCoreApplication::translate("PortablePackage", "Could not list the libraries of:") + QLatin1Char('\n') + binary;
            return {};
        }
        // ldd fails for files that are not dynamic executables (scripts, static files): skip them.
        if (ldd.exitStatus() != QProcess::NormalExit || ldd.exitCode() != 0)
            continue;
        const QStringList lines = QString::fromLocal8Bit(ldd.readAllStandardOutput()).split(QLatin1Char('\n'));
        for (const QString &text : lines) {
            const QRegularExpressionMatch match = line.match(text);
            if (!match.hasMatch())
                continue;
            const QString name = match.captured(1);
            const QString path = match.captured(2);
            if (isSystemLibrary(name) || seen.contains(name))
                continue;
            seen.insert(name);
            libraries.append(path);
        }
    }
    return libraries;
}

QString packageFolderName(const QDateTime &now)
{
    return QStringLiteral("VantreoGuide_%1").arg(now.toString(QStringLiteral("yyyyMMdd_HHmmss")));
}

bool createPortablePackage(const PackageRequest &request, QString *resourceReport, QString *error)
{
    const QFileInfo appFolder(request.applicationFolder);
    if (request.applicationFolder.isEmpty() || !appFolder.isDir() || !QFileInfo(request.applicationFile).isFile()) {
        if (error)
            *error = QCoreApplication::translate("PortablePackage", "Application folder was not found.");
        return false;
    }
    const QString packageFolder = QFileInfo(request.zipPath).absoluteDir().filePath(packageFolderName(request.now));
    if (QFileInfo::exists(packageFolder) && !QDir(packageFolder).removeRecursively()) {
        if (error)
            *error = withPath(QCoreApplication::translate("PortablePackage", "Could not remove existing package folder:"), packageFolder);
        return false;
    }
    if (!QDir().mkpath(packageFolder)) {
        if (error)
            *error = withPath(QCoreApplication::translate("PortablePackage", "Could not create package folder:"), packageFolder);
        return false;
    }
    const QDir package(packageFolder);
    // Whatever fails below, the half-built folder is ours to remove.
    auto fail = [&](const QString &text) {
        QDir(packageFolder).removeRecursively();
        if (error)
            *error = text;
        return false;
    };

    QString copyError;
    const QString executableName = QFileInfo(request.applicationFile).fileName();
    const QString packagedExecutable = package.filePath(executableName);
    if (!resources::copyFileReplacing(request.applicationFile, packagedExecutable, &copyError))
        return fail(copyError);
    QFile::setPermissions(packagedExecutable, QFile::permissions(request.applicationFile));

    // Entries that sit beside the program; plugin folders from Qt when they are not there.
    const QDir app(request.applicationFolder);
    for (const QString &entry : applicationEntries()) {
        if (app.exists(entry) && !copyTree(app.filePath(entry), package.filePath(entry), &copyError))
            return fail(copyError);
    }
    QStringList binaries{request.applicationFile};
    for (const QString &plugin : pluginFolders()) {
        QString source = app.filePath(plugin);
        if (!QFileInfo(source).isDir() && !request.qtPluginFolder.isEmpty())
            source = QDir(request.qtPluginFolder).filePath(plugin);
        if (!QFileInfo(source).isDir())
            continue;
        if (!QFileInfo(package.filePath(plugin)).isDir() && !copyTree(source, package.filePath(plugin), &copyError))
            return fail(copyError);
        QDirIterator it(package.filePath(plugin), {QStringLiteral("*.so")}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            binaries.append(it.next());
    }
    if (!app.exists(QStringLiteral("translations")) && !request.qtTranslationFolder.isEmpty()) {
        const QDir qtTranslations(request.qtTranslationFolder);
        for (const QString &file : qtTranslations.entryList({QStringLiteral("qt*_ko.qm"), QStringLiteral("qt*_en.qm")}, QDir::Files)) {
            if (!resources::copyFileReplacing(qtTranslations.filePath(file),
                                              package.filePath(QStringLiteral("translations/") + file), &copyError))
                return fail(copyError);
        }
    }

    QString libraryError;
    const QStringList libraries = bundledLibrariesFor(binaries, &libraryError);
    if (!libraryError.isEmpty())
        return fail(libraryError);
    for (const QString &library : libraries) {
        const QString target = package.filePath(QStringLiteral("lib/") + QFileInfo(library).fileName());
        if (!resources::copyFileReplacing(QFileInfo(library).canonicalFilePath(), target, &copyError))
            return fail(copyError);
    }

    const QString launcherPath = package.filePath(QFileInfo(request.applicationFile).completeBaseName() + QStringLiteral(".sh"));
    {
        QFile launcher(launcherPath);
        if (!launcher.open(QIODevice::WriteOnly | QIODevice::Truncate)
            || launcher.write(launcherScript(executableName).toUtf8()) < 0) {
            return fail(withPath(QCoreApplication::translate("PortablePackage", "Could not create folder:"), launcherPath));
        }
        launcher.close();
        launcher.setPermissions(launcher.permissions() | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther);
    }

    ProjectDocument project = request.project;
    resources::CollectReport report;
    QString collectError;
    if (!resources::collectResources(&project, package.filePath(QStringLiteral("source")), packageFolder, &report, &collectError))
        return fail(QCoreApplication::translate("PortablePackage", "Could not copy external resource files:") + QLatin1Char('\n') + collectError);
    if (resourceReport)
        *resourceReport = resources::reportText(report);

    QString saveError;
    if (!saveProjectDocument(package.filePath(QStringLiteral("sample.vgs")), project, &saveError))
        return fail(QCoreApplication::translate("PortablePackage", "Could not save sample.vgs:") + QLatin1Char('\n') + saveError);

    QString zipError;
    if (!zip::compressPath(packageFolder, request.zipPath, &zipError))
        return fail(zipError);
    if (!QDir(packageFolder).removeRecursively()) {
        if (error)
            *error = withPath(QCoreApplication::translate("PortablePackage", "Could not remove generated package folder:"), packageFolder);
        return false;
    }
    return true;
}

} // namespace vg::package
