#include "project/ZipArchive.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <zip.h>

#include <functional>
#include <memory>

namespace vg::zip {
namespace {

void setError(QString *error, const QString &text)
{
    if (error)
        *error = text;
}

QString withPath(const QString &text, const QString &path)
{
    return QStringLiteral("%1\n%2").arg(text, QDir::toNativeSeparators(path));
}

struct ArchiveCloser {
    void operator()(zip_t *archive) const { zip_discard(archive); }
};
using ArchivePtr = std::unique_ptr<zip_t, ArchiveCloser>;

ArchivePtr openForReading(const QString &zipPath)
{
    int code = 0;
    return ArchivePtr(zip_open(QFile::encodeName(zipPath).constData(), ZIP_RDONLY, &code));
}

// Adds `file` under `entryName`; libzip reads the file only when the archive is closed.
bool addFile(zip_t *archive, const QString &file, const QString &entryName)
{
    zip_source_t *source = zip_source_file(archive, QFile::encodeName(file).constData(), 0, -1);
    if (!source)
        return false;
    const zip_int64_t index = zip_file_add(archive, entryName.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8 | ZIP_FL_OVERWRITE);
    if (index < 0) {
        zip_source_free(source);
        return false;
    }
    // Unix permissions travel in the external attributes, so a packaged program and its
    // launcher stay executable when the archive is unpacked.
    const QFile::Permissions permissions = QFileInfo(file).permissions();
    zip_uint32_t mode = 0100644;
    if (permissions & (QFile::ExeOwner | QFile::ExeUser))
        mode = 0100755;
    zip_file_set_external_attributes(archive, zip_uint64_t(index), 0, ZIP_OPSYS_UNIX, mode << 16);
    return true;
}

bool addTree(zip_t *archive, const QString &root, const QString &prefix)
{
    QDirIterator it(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories);
    QStringList paths;
    while (it.hasNext())
        paths.append(it.next());
    paths.sort(); // stable archive order, independent of the file system
    const QDir base(root);
    for (const QString &path : paths) {
        const QFileInfo info(path);
        const QString name = prefix + base.relativeFilePath(path);
        if (info.isDir() && !info.isSymLink()) {
            if (zip_dir_add(archive, (name + QLatin1Char('/')).toUtf8().constData(), ZIP_FL_ENC_UTF_8) < 0)
                return false;
        } else if (info.isFile()) {
            if (!addFile(archive, path, name))
                return false;
        }
    }
    return true;
}

bool writeArchive(const QString &zipPath, QString *error, const std::function<bool(zip_t *)> &fill)
{
    if (zipPath.trimmed().isEmpty()) {
        setError(error, QCoreApplication::translate("ZipArchive", "ZIP file path is empty."));
        return false;
    }
    const QFileInfo target(zipPath);
    if (target.exists() && (!target.isFile() || !target.isWritable())) {
        setError(error, withPath(QCoreApplication::translate("ZipArchive", "Could not replace ZIP file:"), zipPath));
        return false;
    }
    // Without ZIP_TRUNCATE on an existing archive, libzip would append to it; with it,
    // the old file stays whole until zip_close renames the finished one over it.
    int code = 0;
    zip_t *archive = zip_open(QFile::encodeName(zipPath).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    if (!archive) {
        setError(error, QCoreApplication::translate("ZipArchive", "ZIP compression failed."));
        return false;
    }
    if (!fill(archive)) {
        zip_discard(archive);
        setError(error, QCoreApplication::translate("ZipArchive", "ZIP compression failed."));
        return false;
    }
    if (zip_close(archive) < 0) {
        zip_discard(archive);
        setError(error, QCoreApplication::translate("ZipArchive", "ZIP compression failed."));
        return false;
    }
    if (!QFileInfo::exists(zipPath)) {
        setError(error, withPath(QCoreApplication::translate("ZipArchive", "ZIP file was not created:"), zipPath));
        return false;
    }
    return true;
}

QString cleanEntryName(const char *raw)
{
    QString name = QString::fromUtf8(raw);
    name.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return name;
}

} // namespace

bool isSafeEntryName(const QString &entryName)
{
    QString name = entryName;
    name.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (name.isEmpty() || name.startsWith(QLatin1Char('/')))
        return false;
    if (name.size() >= 2 && name.at(1) == QLatin1Char(':')) // a drive letter
        return false;
    const QStringList parts = name.split(QLatin1Char('/'));
    for (const QString &part : parts) {
        if (part == QLatin1String(".."))
            return false;
    }
    return true;
}

bool compressFolderContents(const QString &folder, const QString &zipPath, QString *error)
{
    const QFileInfo info(folder);
    if (!info.isDir()) {
        setError(error, withPath(QCoreApplication::translate("ZipArchive", "Package folder does not exist:"), folder));
        return false;
    }
    if (QDir(folder).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System)) {
        setError(error, QCoreApplication::translate("ZipArchive", "Package folder is empty."));
        return false;
    }
    return writeArchive(zipPath, error, [&](zip_t *archive) { return addTree(archive, folder, QString()); });
}

bool compressPath(const QString &path, const QString &zipPath, QString *error)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        setError(error, withPath(QCoreApplication::translate("ZipArchive", "Package folder does not exist:"), path));
        return false;
    }
    return writeArchive(zipPath, error, [&](zip_t *archive) {
        if (info.isFile())
            return addFile(archive, info.absoluteFilePath(), info.fileName());
        const QString prefix = info.fileName() + QLatin1Char('/');
        if (zip_dir_add(archive, prefix.toUtf8().constData(), ZIP_FL_ENC_UTF_8) < 0)
            return false;
        return addTree(archive, info.absoluteFilePath(), prefix);
    });
}

QStringList existingFilesFor(const QString &zipPath, const QString &destination, QString *error)
{
    QStringList existing;
    ArchivePtr archive = openForReading(zipPath);
    if (!archive) {
        setError(error, withPath(QCoreApplication::translate("ZipArchive", "Project bundle ZIP was not found:"), zipPath));
        return existing;
    }
    const QDir dest(destination);
    const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        const QString name = cleanEntryName(zip_get_name(archive.get(), zip_uint64_t(i), ZIP_FL_ENC_GUESS));
        if (name.endsWith(QLatin1Char('/')) || !isSafeEntryName(name))
            continue;
        if (QFileInfo(dest.filePath(name)).isFile())
            existing.append(dest.filePath(name));
    }
    return existing;
}

bool extractArchive(const QString &zipPath, const QString &destination, bool overwrite, QString *error)
{
    if (!QFileInfo(zipPath).isFile()) {
        setError(error, withPath(QCoreApplication::translate("ZipArchive", "Project bundle ZIP was not found:"), zipPath));
        return false;
    }
    if (destination.trimmed().isEmpty()) {
        setError(error, QCoreApplication::translate("ZipArchive", "Import folder is empty."));
        return false;
    }
    if (!QDir().mkpath(destination)) {
        setError(error, withPath(QCoreApplication::translate("ZipArchive", "Could not create import folder:"), destination));
        return false;
    }
    ArchivePtr archive = openForReading(zipPath);
    if (!archive) {
        setError(error, QCoreApplication::translate("ZipArchive", "ZIP extraction failed."));
        return false;
    }
    const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
    QStringList names;
    for (zip_int64_t i = 0; i < count; ++i) {
        const char *raw = zip_get_name(archive.get(), zip_uint64_t(i), ZIP_FL_ENC_GUESS);
        const QString name = raw ? cleanEntryName(raw) : QString();
        // Check every name before writing anything, so a refused archive leaves no trace.
        if (!isSafeEntryName(name)) {
            setError(error, QCoreApplication::translate("ZipArchive", "ZIP extraction failed.\nThe entry \"%1\" would be written outside the import folder.").arg(name));
            return false;
        }
        names.append(name);
    }
    const QDir dest(QFileInfo(destination).absoluteFilePath());
    for (zip_int64_t i = 0; i < count; ++i) {
        const QString &name = names.at(int(i));
        const QString target = dest.filePath(name);
        if (name.endsWith(QLatin1Char('/'))) {
            if (!QDir().mkpath(target)) {
                setError(error, withPath(QCoreApplication::translate("ZipArchive", "Could not create import folder:"), target));
                return false;
            }
            continue;
        }
        if (QFileInfo::exists(target) && !overwrite) {
            setError(error, QCoreApplication::translate("ZipArchive", "ZIP extraction failed.\nThe file already exists:\n%1").arg(QDir::toNativeSeparators(target)));
            return false;
        }
        if (!QDir().mkpath(QFileInfo(target).absolutePath())) {
            setError(error, withPath(QCoreApplication::translate("ZipArchive", "Could not create import folder:"), QFileInfo(target).absolutePath()));
            return false;
        }
        zip_file_t *entry = zip_fopen_index(archive.get(), zip_uint64_t(i), 0);
        if (!entry) {
            setError(error, QCoreApplication::translate("ZipArchive", "ZIP extraction failed."));
            return false;
        }
        QSaveFile out(target);
        bool ok = out.open(QIODevice::WriteOnly);
        char buffer[64 * 1024];
        while (ok) {
            const zip_int64_t n = zip_fread(entry, buffer, sizeof buffer);
            if (n < 0)
                ok = false;
            else if (n == 0)
                break;
            else
                ok = out.write(buffer, n) == n;
        }
        zip_fclose(entry);
        if (!ok || !out.commit()) {
            setError(error, QCoreApplication::translate("ZipArchive", "ZIP extraction failed."));
            return false;
        }
        zip_uint8_t system = 0;
        zip_uint32_t attributes = 0;
        if (zip_file_get_external_attributes(archive.get(), zip_uint64_t(i), 0, &system, &attributes) == 0
            && system == ZIP_OPSYS_UNIX && ((attributes >> 16) & 0100)) {
            QFile::setPermissions(target, QFile::permissions(target) | QFile::ExeOwner | QFile::ExeUser
                                              | QFile::ExeGroup | QFile::ExeOther);
        }
    }
    return true;
}

bool listProjectEntries(const QString &zipPath, QStringList *entries, QString *error)
{
    ArchivePtr archive = openForReading(zipPath);
    if (!archive) {
        setError(error, QCoreApplication::translate("ZipArchive", "ZIP inspection failed."));
        return false;
    }
    QStringList found;
    const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        const char *raw = zip_get_name(archive.get(), zip_uint64_t(i), ZIP_FL_ENC_GUESS);
        const QString name = raw ? cleanEntryName(raw) : QString();
        if (name.trimmed().isEmpty())
            continue;
        if (name.endsWith(QLatin1String(".vgs"), Qt::CaseInsensitive)
            || name.endsWith(QLatin1String(".json"), Qt::CaseInsensitive))
            found.append(name);
    }
    if (entries)
        *entries = found;
    return true;
}

} // namespace vg::zip
