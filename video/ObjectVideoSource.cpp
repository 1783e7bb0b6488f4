#include "video/ObjectVideoSource.h"

#include <QFileInfo>

namespace {

const char *const kMovieSuffixes[] = {"mp4", "m4v", "mov", "mkv", "avi", "webm", "wmv", "mpg", "mpeg", "ts", "mts", "mxf"};

} // namespace

QString ObjectVideoSource::key() const
{
    switch (kind) {
    case None: return {};
    case Movie: return QStringLiteral("movie|%1|%2").arg(hardware ? 1 : 0).arg(name);
    case Ndi: return QStringLiteral("ndi|") + name;
    case Spout: return QStringLiteral("spout|") + name;
    }
    return {};
}

bool isMovieFilePath(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    for (const char *movie : kMovieSuffixes) {
        if (suffix == QLatin1String(movie))
            return true;
    }
    return false;
}

ObjectVideoSource objectVideoSource(const GuideObject &object, bool projectorImage)
{
    ObjectVideoSource source;
    const QString &ndi = projectorImage ? object.projector_ndi_source : object.texture_ndi_source;
    const QString &spout = projectorImage ? object.projector_spout_sender : object.texture_spout_sender;
    const QString &file = projectorImage ? object.projector_image_file_path : object.texture_file_path;
    if (!projectorImage && !object.texture_visible)
        return source;
    if (!ndi.trimmed().isEmpty()) {
        source.kind = ObjectVideoSource::Ndi;
        source.name = ndi.trimmed();
    } else if (!spout.trimmed().isEmpty()) {
        source.kind = ObjectVideoSource::Spout;
        source.name = spout.trimmed();
    } else if (!file.isEmpty() && isMovieFilePath(file)) {
        source.kind = ObjectVideoSource::Movie;
        source.name = file;
        // One switch serves both uses of an object: its surface texture and its projected image.
        source.hardware = object.texture_movie_hwaccel;
    }
    return source;
}
