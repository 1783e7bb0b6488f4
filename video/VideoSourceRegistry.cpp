#include "video/VideoSourceRegistry.h"

#include "video/MovieTexture.h"
#include "video/MovieTextureSource.h"
#include "video/NdiReceiver.h"
#include "video/NdiRuntime.h"
#include "video/SpoutSupport.h"

#include <QCoreApplication>
#include <QSet>

VideoSourceRegistry::VideoSourceRegistry(QObject *parent)
    : QObject(parent)
{
    // Frames are checked at display rate; the view draws only when one is due.
    m_poll.setInterval(8);
    connect(&m_poll, &QTimer::timeout, this, &VideoSourceRegistry::poll);
}

VideoSourceRegistry::~VideoSourceRegistry()
{
    for (Entry &entry : m_entries) {
        if (entry.movie)
            entry.movie->stop();
        if (entry.ndi)
            entry.ndi->stop();
    }
}

VideoSourceRegistry::Entry *VideoSourceRegistry::ensure(const ObjectVideoSource &source)
{
    if (source.kind == ObjectVideoSource::None)
        return nullptr;
    const QString key = source.key();
    auto it = m_entries.find(key);
    if (it != m_entries.end())
        return &it.value();
    Entry entry;
    entry.source = source;
    switch (source.kind) {
    case ObjectVideoSource::Movie: {
        entry.movie = std::make_shared<MovieTexture>(source.name, source.hardware);
        QString error;
        if (!entry.movie->start(&error))
            qWarning("%s", qPrintable(error));
        entry.texture = std::make_shared<MovieTextureSource>(entry.movie);
        break;
    }
    case ObjectVideoSource::Ndi:
        entry.ndi = std::make_shared<NdiReceiver>(m_ndi ? *m_ndi : NdiRuntime::instance(), source.name);
        entry.ndi->start();
        entry.texture = entry.ndi;
        break;
    case ObjectVideoSource::Spout:
        entry.texture = std::make_shared<SpoutTextureSource>(source.name);
        break;
    case ObjectVideoSource::None:
        return nullptr;
    }
    it = m_entries.insert(key, std::move(entry));
    if (!m_poll.isActive())
        m_poll.start();
    return &it.value();
}

void VideoSourceRegistry::sync(const QVector<GuideObject> &objects)
{
    QSet<QString> wanted;
    for (const GuideObject &object : objects) {
        // A hidden object draws nothing: its decoder would only fill its queue.
        if (!object.visible)
            continue;
        for (bool projectorImage : {false, true}) {
            if (projectorImage && !object.isProjector())
                continue;
            const ObjectVideoSource source = objectVideoSource(object, projectorImage);
            if (source.kind == ObjectVideoSource::None)
                continue;
            wanted.insert(source.key());
            ensure(source);
        }
    }
    for (auto it = m_entries.begin(); it != m_entries.end();) {
        if (wanted.contains(it.key())) {
            ++it;
            continue;
        }
        // The renderer may still hold the texture source for a frame; the worker ends now.
        if (it->movie)
            it->movie->stop();
        if (it->ndi)
            it->ndi->stop();
        it = m_entries.erase(it);
    }
    if (m_entries.isEmpty())
        m_poll.stop();
}

std::shared_ptr<SceneTextureSource> VideoSourceRegistry::sourceFor(const GuideObject &object, bool projectorImage)
{
    const ObjectVideoSource source = objectVideoSource(object, projectorImage);
    Entry *entry = ensure(source);
    return entry ? entry->texture : nullptr;
}

SceneTextureResolver VideoSourceRegistry::resolver()
{
    return [this](const GuideObject &object, int, bool projectorImage) { return sourceFor(object, projectorImage); };
}

QString VideoSourceRegistry::statusText(const GuideObject &object, bool projectorImage) const
{
    const ObjectVideoSource source = objectVideoSource(object, projectorImage);
    const auto it = m_entries.constFind(source.key());
    switch (source.kind) {
    case ObjectVideoSource::None:
        return {};
    case ObjectVideoSource::Movie: {
        if (it == m_entries.cend() || !it->movie)
            return MovieTexture::stateText(MovieState::NoMovie);
        const MovieTexture &movie = *it->movie;
        QString text = MovieTexture::stateText(movie.state());
        const MovieDecodeMode mode = movie.decodeMode();
        if (mode != MovieDecodeMode::None)
            text += QStringLiteral(" · %1 (%2)").arg(MovieTexture::decodeModeText(mode)).arg(int(mode));
        if (movie.state() == MovieState::Failed && !movie.errorText().isEmpty())
            text += QLatin1Char('\n') + movie.errorText();
        return text;
    }
    case ObjectVideoSource::Ndi: {
        if (it == m_entries.cend() || !it->ndi)
            return {};
        const QString error = it->ndi->errorText();
        if (!error.isEmpty())
            return error;
        const QString url = it->ndi->connectedUrl();
        return url.isEmpty() ? QCoreApplication::translate("VideoSourceRegistry", "Looking for source...")
                             : QCoreApplication::translate("VideoSourceRegistry", "Connected: %1").arg(url);
    }
    case ObjectVideoSource::Spout:
        return spoutUnavailableText();
    }
    return {};
}

std::shared_ptr<MovieTexture> VideoSourceRegistry::movie(const ObjectVideoSource &source) const
{
    const auto it = m_entries.constFind(source.key());
    return it == m_entries.cend() ? nullptr : it->movie;
}

std::shared_ptr<NdiReceiver> VideoSourceRegistry::ndiReceiver(const QString &sourceName) const
{
    ObjectVideoSource source;
    source.kind = ObjectVideoSource::Ndi;
    source.name = sourceName;
    const auto it = m_entries.constFind(source.key());
    return it == m_entries.cend() ? nullptr : it->ndi;
}

void VideoSourceRegistry::poll()
{
    for (const Entry &entry : std::as_const(m_entries)) {
        if ((entry.movie && entry.movie->hasDueFrame()) || (entry.ndi && entry.ndi->hasNewFrame())) {
            Q_EMIT frameDue();
            return;
        }
    }
}
