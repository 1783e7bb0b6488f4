#include "net/UpdateApplier.h"

#include "net/BuildInfo.h"
#include "net/UpdateScripts.h"
#include "project/ZipArchive.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>

namespace vg::net {
namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("UpdateApplier", text);
}

void setError(QString *error, const QString &text)
{
    if (error)
        *error = text;
}

QString plainBuild(const QString &build)
{
    QString text;
    for (const QChar c : build) {
        if (c.isDigit() || (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
            || (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) || c == QLatin1Char('.'))
            text += c;
    }
    return text.isEmpty() ? QStringLiteral("0") : text.left(32);
}

QStringList filesBelow(const QString &folder)
{
    QStringList files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext())
        files.append(it.next());
    files.sort();
    return files;
}

bool writeScript(const QString &path, const QString &text, QString *error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit()) {
        setError(error, tr("Could not write update file: %1").arg(QDir::toNativeSeparators(path)));
        return false;
    }
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return true;
}

bool prepareExtraction(const ApplyRequest &request, const QString &build, PreparedUpdate *prepared,
                       ScriptValues *values, QString *error)
{
    if (!request.downloadedFile.endsWith(QLatin1String(".zip"), Qt::CaseInsensitive)) {
        setError(error, tr("Package updates must be ZIP files."));
        return false;
    }
    const QDir folder(request.updateFolder);
    values->extractionFolder = folder.filePath(QStringLiteral("package-%1").arg(build));
    values->backupFolder = folder.filePath(QStringLiteral("backup-%1").arg(build));
    QDir(values->extractionFolder).removeRecursively();
    if (!QDir().mkpath(values->extractionFolder)) {
        setError(error, tr("Could not create a temporary directory for the update."));
        return false;
    }
    if (!zip::extractArchive(request.downloadedFile, values->extractionFolder, true, error)) {
        QDir(values->extractionFolder).removeRecursively();
        return false;
    }
    const QString exeName = QFileInfo(request.executablePath).fileName();
    if (!choosePackageRoot(values->extractionFolder, exeName, &prepared->packageRoot, &prepared->mode, error)) {
        QDir(values->extractionFolder).removeRecursively();
        return false;
    }
    values->packageRoot = prepared->packageRoot;
    if (prepared->mode == PackageMode::SingleExecutable)
        values->sourceFile = filesBelow(values->extractionFolder).value(0);
    return true;
}

} // namespace

QString shellQuote(const QString &value)
{
    QString quoted = value;
    quoted.replace(QLatin1Char('\''), QStringLiteral("'\\''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

bool isKeptApplicationEntry(const QString &name)
{
    return name == QLatin1String("VantreoGuideSettings.json") || name == QLatin1String("backup")
           || name == QLatin1String("source") || name.endsWith(QLatin1String(".vgs"));
}

bool choosePackageRoot(const QString &extractionFolder, const QString &executableName, QString *root,
                       PackageMode *mode, QString *error)
{
    const QStringList files = filesBelow(extractionFolder);
    if (files.size() == 1) {
        const QFileInfo only(files.first());
        if (only.fileName() == executableName || only.isExecutable()) {
            *root = only.absolutePath();
            *mode = PackageMode::SingleExecutable;
            return true;
        }
    }
    const QDir extraction(extractionFolder);
    const QStringList subfolders = extraction.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
    const QStringList topFiles = extraction.entryList(QDir::Files | QDir::Hidden | QDir::System);
    const auto holdsProgram = [&](const QString &folder) {
        return QFileInfo(QDir(folder).filePath(executableName)).isFile();
    };
    QString chosen;
    if (holdsProgram(extractionFolder)) {
        chosen = extractionFolder;
    } else if (subfolders.size() == 1 && holdsProgram(extraction.filePath(subfolders.first()))) {
        chosen = extraction.filePath(subfolders.first());
    } else {
        for (const QString &file : files) {
            if (QFileInfo(file).fileName() == executableName) {
                chosen = QFileInfo(file).absolutePath();
                break;
            }
        }
        if (chosen.isEmpty())
            chosen = subfolders.size() == 1 && topFiles.isEmpty() ? extraction.filePath(subfolders.first())
                                                                  : extractionFolder;
    }
    if (QDir(chosen).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System)) {
        setError(error, tr("Package is empty."));
        return false;
    }
    *root = QDir::cleanPath(chosen);
    *mode = holdsProgram(chosen) ? PackageMode::Full : PackageMode::Patch;
    return true;
}

bool prepareUpdate(const ApplyRequest &request, PreparedUpdate *prepared, QString *error)
{
    if (!QFileInfo(request.downloadedFile).isFile()) {
        setError(error, tr("Downloaded update file is missing."));
        return false;
    }
    const QFileInfo executable(request.executablePath);
    if (request.executablePath.isEmpty() || !executable.isFile()) {
        setError(error, tr("Current executable path could not be found."));
        return false;
    }
    if (request.kind == UpdateKind::Installer) {
        setError(error, tr("Installer updates are not supported on this system."));
        return false;
    }
    const QString build = plainBuild(request.buildNumber);
    const QString stamp = request.stamp.isEmpty()
                              ? QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddHHmmss"))
                              : plainBuild(request.stamp);
    const QDir folder(request.updateFolder);
    const bool package = request.kind == UpdateKind::Package;

    ScriptValues values;
    values.processId = request.processId;
    values.executable = executable.absoluteFilePath();
    values.applicationFolder = executable.absolutePath();
    values.buildNumber = build;
    values.sourceFile = QFileInfo(request.downloadedFile).absoluteFilePath();
    PreparedUpdate result;
    result.package = package;
    if (package && !prepareExtraction(request, build, &result, &values, error))
        return false;

    const QString baseName = package ? QStringLiteral("apply-package-update-%1-%2") : QStringLiteral("apply-update-%1-%2");
    result.scriptPath = folder.filePath(baseName.arg(build, stamp) + scriptExtension());
    result.logPath = folder.filePath(package ? QStringLiteral("apply-package-update.log")
                                             : QStringLiteral("apply-update.log"));
    values.scriptPath = result.scriptPath;
    values.logPath = result.logPath;
    const QString text = package ? packageUpdateScript(values, result.mode) : executableUpdateScript(values);
    if (!writeScript(result.scriptPath, text, error))
        return false;
    *prepared = result;
    return true;
}

bool launchUpdater(const PreparedUpdate &prepared, QString *error)
{
    const auto [program, arguments] = scriptLauncher(prepared.scriptPath);
    if (!QProcess::startDetached(program, arguments, QFileInfo(prepared.scriptPath).absolutePath())) {
        setError(error, prepared.package ? tr("Package updater process could not be started.")
                                         : tr("Updater process could not be started."));
        return false;
    }
    return true;
}

} // namespace vg::net
