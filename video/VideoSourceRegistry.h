#pragma once

#include "scene/GuideObject.h"
#include "scene/gl/SceneTextureSource.h"
#include "video/ObjectVideoSource.h"

#include <QHash>
#include <QObject>
#include <QTimer>
#include <QVector>

#include <memory>

class MovieTexture;
class MovieTextureSource;
class NdiReceiver;
class NdiRuntime;

// The live sources of one 3D view: one decoder per movie file and mode, one receiver per
// NDI source, shared by every object using them. sync() follows the scene: a source no
// object uses any more is stopped there and then, so deleting an object or changing its
// source ends its worker at once.
class VideoSourceRegistry : public QObject
{
    Q_OBJECT

public:
    explicit VideoSourceRegistry(QObject *parent = nullptr);
    ~VideoSourceRegistry() override;

    // The NDI binding used for new receivers (the process's by default).
    void setNdiRuntime(NdiRuntime *runtime) { m_ndi = runtime; }

    // Starts what the objects need and stops what they no longer use.
    void sync(const QVector<GuideObject> &objects);
    // The renderer's resolver: the live source of an object, or null for the built-in rules.
    SceneTextureResolver resolver();
    std::shared_ptr<SceneTextureSource> sourceFor(const GuideObject &object, bool projectorImage);

    // For the property panel: the state and decode mode of an object's movie, or of its NDI
    // source; empty when it has none.
    QString statusText(const GuideObject &object, bool projectorImage) const;

    std::shared_ptr<MovieTexture> movie(const ObjectVideoSource &source) const;
    std::shared_ptr<NdiReceiver> ndiReceiver(const QString &sourceName) const;
    int activeSourceCount() const { return int(m_entries.size()); }

Q_SIGNALS:
    // A movie has a frame due or a receiver a new frame: the view should draw.
    void frameDue();

private:
    struct Entry
    {
        ObjectVideoSource source;
        std::shared_ptr<MovieTexture> movie;
        std::shared_ptr<NdiReceiver> ndi;
        std::shared_ptr<SceneTextureSource> texture;
    };
    Entry *ensure(const ObjectVideoSource &source);
    void poll();

    QHash<QString, Entry> m_entries;
    NdiRuntime *m_ndi = nullptr;
    QTimer m_poll;
};
