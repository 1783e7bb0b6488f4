#include "exchange/MtlReader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace vg::exchange {
namespace {

// Material libraries are small text files; a larger one is not read.
constexpr qint64 kMaxLibraryBytes = 16 * 1024 * 1024;

// Number of arguments each texture option takes before the file name.
int optionArguments(const QString &option)
{
    if (option == QLatin1String("-o") || option == QLatin1String("-s") || option == QLatin1String("-t"))
        return 3; // up to three numbers; fewer are allowed and checked by the caller
    if (option == QLatin1String("-mm"))
        return 2;
    return 1; // -blendu -blendv -boost -cc -clamp -bm -texres -imfchan -type
}

bool isNumber(const QString &token)
{
    bool ok = false;
    token.toDouble(&ok);
    return ok;
}

QString mapFileName(const QString &arguments)
{
    const QStringList tokens = arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    int i = 0;
    while (i < tokens.size() && tokens[i].startsWith(QLatin1Char('-')) && !isNumber(tokens[i])) {
        const int count = optionArguments(tokens[i]);
        ++i;
        for (int k = 0; k < count && i < tokens.size() - 1; ++k) {
            if (k > 0 && !isNumber(tokens[i]))
                break;
            ++i;
        }
    }
    return tokens.mid(i).join(QLatin1Char(' ')).replace(QLatin1Char('\\'), QLatin1Char('/'));
}

QString existingFile(const QDir &folder, const QString &name)
{
    if (name.isEmpty())
        return {};
    const QFileInfo direct(folder, name);
    if (direct.isFile())
        return direct.absoluteFilePath();
    // Files moved from another machine keep absolute or deeper paths; try the bare name.
    const QFileInfo bare(folder, QFileInfo(name).fileName());
    return bare.isFile() ? bare.absoluteFilePath() : QString();
}

} // namespace

QHash<QString, QString> readMtlDiffuseMaps(const QByteArray &data)
{
    QHash<QString, QString> maps;
    QString current;
    for (const QByteArray &raw : data.split('\n')) {
        const QByteArray line = raw.trimmed();
        const qsizetype space = line.indexOf(' ') < 0 ? line.indexOf('\t') : line.indexOf(' ');
        if (space < 0)
            continue;
        const QByteArray keyword = line.first(space);
        const QString rest = QString::fromUtf8(line.sliced(space + 1)).simplified();
        if (keyword == "newmtl")
            current = rest;
        else if (keyword == "map_Kd" && !maps.contains(current))
            maps.insert(current, mapFileName(rest));
    }
    return maps;
}

QString diffuseTexturePath(const QString &folder, const QStringList &libraries, const QStringList &used)
{
    const QDir dir(folder);
    QHash<QString, QString> textures; // material -> existing absolute path
    QStringList order;
    for (const QString &library : libraries) {
        // A library name may hold spaces; else the line lists several libraries.
        QStringList names{library};
        if (existingFile(dir, library).isEmpty())
            names = library.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        for (const QString &name : names) {
            QFile file(existingFile(dir, QString(name).replace(QLatin1Char('\\'), QLatin1Char('/'))));
            if (file.fileName().isEmpty() || file.size() > kMaxLibraryBytes || !file.open(QIODevice::ReadOnly))
                continue;
            const QDir libraryFolder = QFileInfo(file.fileName()).absoluteDir();
            const QHash<QString, QString> maps = readMtlDiffuseMaps(file.readAll());
            for (auto it = maps.cbegin(); it != maps.cend(); ++it) {
                const QString path = existingFile(libraryFolder, it.value());
                if (!path.isEmpty() && !textures.contains(it.key())) {
                    textures.insert(it.key(), path);
                    order.append(it.key());
                }
            }
        }
    }
    for (const QString &material : used) {
        if (textures.contains(material))
            return textures.value(material);
    }
    return order.isEmpty() ? QString() : textures.value(order.first());
}

} // namespace vg::exchange
