#include "project/ZipArchive.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <zip.h>

#include <QHash>
#include <QStorageInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <memory>

namespace vg::zip {
namespace {

constexpr qint64 kMaxExtractEntries = 1000000;

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
        // Whatever the entry would replace, looked at without following a link: a link named
        // like an entry (even a dangling one) is replaced too, so it is asked about.
        const QFileInfo present(dest.filePath(name));
        if (present.isSymLink() || present.exists())
            existing.append(dest.filePath(name));
    }
    return existing;
}

namespace {

QString extractionFailed(const QString &detail = QString())
{
    const QString head = QCoreApplication::translate("ZipArchive", "ZIP extraction failed.");
    return detail.isEmpty() ? head : head + QLatin1Char('\n') + detail;
}

bool isSymlinkEntry(zip_t *archive, zip_uint64_t index)
{
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    if (zip_file_get_external_attributes(archive, index, 0, &system, &attributes) != 0)
        return false;
    return system == ZIP_OPSYS_UNIX && ((attributes >> 16) & 0170000) == 0120000;
}

// One entry as planned before anything is written.
struct PlannedEntry {
    zip_uint64_t index = 0;
    QStringList parts; // path below the destination, no empty, "." or ".." part
    bool folder = false;
    qint64 size = 0;
    bool executable = false;
};

// Checks every entry and the total size; fills `plan` or says why the archive is refused.
bool planExtraction(zip_t *archive, qint64 available, qint64 maxBytes, QList<PlannedEntry> *plan, QString *error)
{
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    if (count < 0 || count > kMaxExtractEntries) {
        setError(error, extractionFailed(QCoreApplication::translate("ZipArchive", "The archive holds too many entries.")));
        return false;
    }
    qint64 total = 0;
    for (zip_int64_t i = 0; i < count; ++i) {
        const char *raw = zip_get_name(archive, zip_uint64_t(i), ZIP_FL_ENC_GUESS);
        const QString name = raw ? cleanEntryName(raw) : QString();
        PlannedEntry entry;
        entry.index = zip_uint64_t(i);
        entry.folder = name.endsWith(QLatin1Char('/'));
        const QString trimmed = entry.folder ? name.chopped(1) : name;
        entry.parts = trimmed.split(QLatin1Char('/'));
        bool valid = isSafeEntryName(name) && !trimmed.isEmpty();
        for (const QString &part : std::as_const(entry.parts))
            valid = valid && !part.isEmpty() && part != QLatin1String(".") && !part.contains(QChar(0));
        if (!valid) {
            setError(error, extractionFailed(QCoreApplication::translate("ZipArchive", "The entry \"%1\" is not a valid file name inside the import folder.").arg(name)));
            return false;
        }
        if (isSymlinkEntry(archive, entry.index)) {
            setError(error, extractionFailed(QCoreApplication::translate("ZipArchive", "The entry \"%1\" is a symbolic link; links are not imported.").arg(name)));
            return false;
        }
        zip_stat_t stat;
        zip_stat_init(&stat);
        if (zip_stat_index(archive, entry.index, 0, &stat) != 0 || !(stat.valid & ZIP_STAT_SIZE)) {
            setError(error, extractionFailed());
            return false;
        }
        entry.size = qint64(std::min<zip_uint64_t>(stat.size, zip_uint64_t(maxBytes) + 1));
        total += entry.folder ? 0 : entry.size;
        if (total > maxBytes || total > available) {
            setError(error, extractionFailed(QCoreApplication::translate("ZipArchive", "The archive unpacks to more than the import folder's disk has free or than an import may hold (%1 MB).").arg(maxBytes >> 20)));
            return false;
        }
        zip_uint8_t system = 0;
        zip_uint32_t attributes = 0;
        entry.executable = zip_file_get_external_attributes(archive, entry.index, 0, &system, &attributes) == 0
                           && system == ZIP_OPSYS_UNIX && ((attributes >> 16) & 0100);
        plan->append(entry);
    }
    return true;
}

// Writes below one folder opened without following links. Every parent is opened as a
// folder with O_NOFOLLOW, so a link planted inside the import folder (or one created by an
// earlier entry) is never followed out of it. Remembers what it created, so that a failed
// import can take it away again.
class Extractor
{
public:
    explicit Extractor(int root) : m_root(root) {}
    ~Extractor()
    {
        for (int fd : std::as_const(m_open))
            ::close(fd);
    }

    // The folder fd of parts[0..depth), created where missing; -1 on failure.
    int folder(const QStringList &parts, int depth)
    {
        int fd = m_root;
        QString key;
        for (int i = 0; i < depth; ++i) {
            key += QLatin1Char('/') + parts.at(i);
            const auto known = m_folders.constFind(key);
            if (known != m_folders.constEnd()) {
                fd = *known;
                continue;
            }
            const QByteArray name = QFile::encodeName(parts.at(i));
            if (::mkdirat(fd, name.constData(), 0755) == 0)
                m_createdFolders.append(key);
            else if (errno != EEXIST)
                return -1;
            const int next = ::openat(fd, name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
            if (next < 0)
                return -1;
            m_open.append(next);
            m_folders.insert(key, next);
            fd = next;
        }
        return fd;
    }

    bool exists(const PlannedEntry &entry)
    {
        const int parent = existingFolder(entry.parts);
        if (parent < 0)
            return false;
        struct stat info {};
        const bool found = ::fstatat(parent, QFile::encodeName(entry.parts.last()).constData(), &info, AT_SYMLINK_NOFOLLOW) == 0;
        if (parent != m_root)
            ::close(parent);
        return found && !S_ISDIR(info.st_mode);
    }

    // Streams the entry into a new temporary file beside its target and renames it over
    // the target, which replaces a link rather than writing through it.
    bool writeFile(zip_t *archive, const PlannedEntry &entry, qint64 *written, const std::function<bool(qint64)> &onBytes)
    {
        const int parent = folder(entry.parts, int(entry.parts.size()) - 1);
        if (parent < 0)
            return false;
        const QByteArray name = QFile::encodeName(entry.parts.last());
        QByteArray temp;
        int out = -1;
        for (int attempt = 0; attempt < 100 && out < 0; ++attempt) {
            temp = name + ".import-" + QByteArray::number(qulonglong(::getpid())) + "-" + QByteArray::number(attempt);
            out = ::openat(parent, temp.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                           entry.executable ? 0755 : 0644);
            if (out < 0 && errno != EEXIST)
                return false;
        }
        if (out < 0)
            return false;
        zip_file_t *in = zip_fopen_index(archive, entry.index, 0);
        bool ok = in != nullptr;
        qint64 copied = 0;
        static thread_local char buffer[64 * 1024];
        while (ok) {
            const zip_int64_t n = zip_fread(in, buffer, sizeof buffer);
            if (n < 0) {
                ok = false;
            } else if (n == 0) {
                break;
            } else {
                // An entry that inflates past its declared size is a lie, and a bomb.
                copied += n;
                ok = copied <= entry.size && writeAll(out, buffer, size_t(n)) && onBytes(n);
            }
        }
        if (in)
            zip_fclose(in);
        ok = ::close(out) == 0 && ok;
        if (ok && ::renameat(parent, temp.constData(), parent, name.constData()) == 0) {
            m_createdFiles.append({parent, name});
            *written += copied;
            return true;
        }
        ::unlinkat(parent, temp.constData(), 0);
        return false;
    }

    // Removes what this import wrote: files first, then the folders it made, deepest first.
    void undo()
    {
        for (const auto &file : std::as_const(m_createdFiles))
            ::unlinkat(file.first, file.second.constData(), 0);
        for (auto it = m_createdFolders.crbegin(); it != m_createdFolders.crend(); ++it) {
            QStringList parts = it->mid(1).split(QLatin1Char('/'));
            const QByteArray last = QFile::encodeName(parts.takeLast());
            const int parent = parts.isEmpty() ? m_root : m_folders.value(QLatin1Char('/') + parts.join(QLatin1Char('/')), -1);
            if (parent >= 0)
                ::unlinkat(parent, last.constData(), AT_REMOVEDIR);
        }
    }

private:
    static bool writeAll(int fd, const char *data, size_t size)
    {
        while (size > 0) {
            const ssize_t n = ::write(fd, data, size);
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0)
                return false;
            data += n;
            size -= size_t(n);
        }
        return true;
    }

    // The parent folder of an entry if it exists (opened without following links), else -1.
    int existingFolder(const QStringList &parts)
    {
        int fd = m_root;
        for (int i = 0; i + 1 < parts.size(); ++i) {
            const int next = ::openat(fd, QFile::encodeName(parts.at(i)).constData(),
                                      O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
            if (fd != m_root)
                ::close(fd);
            if (next < 0)
                return -1;
            fd = next;
        }
        return fd;
    }

    int m_root;
    QHash<QString, int> m_folders;
    QList<int> m_open;
    QStringList m_createdFolders;
    QList<QPair<int, QByteArray>> m_createdFiles;
};

} // namespace

bool extractArchive(const QString &zipPath, const QString &destination, bool overwrite, QString *error,
                    const ExtractProgress &progress, qint64 maxBytes)
{
    if (!QFileInfo(zipPath).isFile()) {
        setError(error, withPath(QCoreApplication::translate("ZipArchive", "Project bundle ZIP was not found:"), zipPath));
        return false;
    }
    if (destination.trimmed().isEmpty()) {
        setError(error, QCoreApplication::translate("ZipArchive", "Import folder is empty."));
        return false;
    }
    ArchivePtr archive = openForReading(zipPath);
    if (!archive) {
        setError(error, extractionFailed());
        return false;
    }
    const QString absolute = QFileInfo(destination).absoluteFilePath();
    const bool destinationExisted = QFileInfo::exists(absolute);
    if (!QDir().mkpath(absolute)) {
        setError(error, withPath(QCoreApplication::translate("ZipArchive", "Could not create import folder:"), destination));
        return false;
    }
    auto removeMadeDestination = [&] {
        if (!destinationExisted)
            QDir().rmdir(absolute);
    };
    const QStorageInfo storage(absolute);
    const qint64 available = storage.isValid() && storage.bytesAvailable() >= 0 ? storage.bytesAvailable() : kMaxExtractBytes;
    QList<PlannedEntry> plan;
    if (!planExtraction(archive.get(), available, maxBytes, &plan, error)) {
        removeMadeDestination();
        return false;
    }
    // The chosen folder may itself be reached through a link; only links inside it are
    // never followed.
    const QString canonical = QFileInfo(absolute).canonicalFilePath();
    const int root = ::open(QFile::encodeName(canonical).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (root < 0) {
        setError(error, withPath(QCoreApplication::translate("ZipArchive", "Could not create import folder:"), destination));
        removeMadeDestination();
        return false;
    }
    qint64 total = 0;
    for (const PlannedEntry &entry : std::as_const(plan))
        total += entry.size;
    bool ok = true;
    {
        Extractor extractor(root);
        if (!overwrite) {
            for (const PlannedEntry &entry : std::as_const(plan)) {
                if (!entry.folder && extractor.exists(entry)) {
                    setError(error, extractionFailed(QCoreApplication::translate("ZipArchive", "The file already exists:\n%1").arg(QDir::toNativeSeparators(QDir(absolute).filePath(entry.parts.join(QLatin1Char('/')))))));
                    ok = false;
                    break;
                }
            }
        }
        qint64 done = 0;
        bool cancelled = false;
        auto report = [&](qint64 bytes) {
            done += bytes;
            if (progress && !progress(done, total))
                cancelled = true;
            return !cancelled;
        };
        for (int i = 0; ok && i < plan.size(); ++i) {
            const PlannedEntry &entry = plan.at(i);
            qint64 written = 0;
            if (entry.folder)
                ok = extractor.folder(entry.parts, int(entry.parts.size())) >= 0;
            else
                ok = extractor.writeFile(archive.get(), entry, &written, report);
            if (ok && !report(0))
                ok = false;
            if (!ok)
                setError(error, cancelled ? QCoreApplication::translate("ZipArchive", "ZIP extraction was cancelled.")
                                          : extractionFailed(QCoreApplication::translate("ZipArchive", "Could not write \"%1\".").arg(entry.parts.join(QLatin1Char('/')))));
        }
        if (!ok)
            extractor.undo();
    }
    ::close(root);
    if (!ok)
        removeMadeDestination();
    return ok;
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

bool writeMemoryArchive(const QString &zipPath, const QList<MemoryEntry> &entries, const QDateTime &localTime,
                        MemoryArchiveFailure *failure, QString *failedEntry)
{
    auto fail = [&](MemoryArchiveFailure why, const QString &entry = QString()) {
        if (failure)
            *failure = why;
        if (failedEntry)
            *failedEntry = entry;
        return false;
    };
    if (failure)
        *failure = MemoryArchiveFailure::None;
    int code = 0;
    zip_t *archive = zipPath.trimmed().isEmpty()
                         ? nullptr
                         : zip_open(QFile::encodeName(zipPath).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    if (!archive)
        return fail(MemoryArchiveFailure::Open);
    // DOS time: seconds halved, years from 1980.
    const QDate d = localTime.date();
    const QTime t = localTime.time();
    const zip_uint16_t dosTime = zip_uint16_t((t.hour() << 11) | (t.minute() << 5) | (t.second() / 2));
    const zip_uint16_t dosDate = zip_uint16_t((std::max(0, d.year() - 1980) << 9) | (d.month() << 5) | d.day());
    for (const MemoryEntry &entry : entries) {
        // The data outlives zip_close: the caller's list holds it.
        zip_source_t *source = zip_source_buffer(archive, entry.data.constData(), zip_uint64_t(entry.data.size()), 0);
        const zip_int64_t index =
            source ? zip_file_add(archive, entry.name.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8 | ZIP_FL_OVERWRITE) : -1;
        if (index < 0) {
            if (source)
                zip_source_free(source);
            zip_discard(archive);
            return fail(MemoryArchiveFailure::Entry, entry.name);
        }
        if (zip_file_set_dostime(archive, zip_uint64_t(index), dosTime, dosDate, 0) < 0
            || zip_set_file_compression(archive, zip_uint64_t(index), ZIP_CM_DEFLATE, 6) < 0) {
            zip_discard(archive);
            return fail(MemoryArchiveFailure::Entry, entry.name);
        }
    }
    if (zip_close(archive) < 0) {
        zip_discard(archive);
        return fail(MemoryArchiveFailure::Finalize);
    }
    return true;
}

} // namespace vg::zip
