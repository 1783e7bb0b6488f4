#pragma once

#include "scene/GuideObject.h"

#include <QString>

// Which live source an object's texture (or a projector's image) comes from. A movie is
// the image file field holding a movie; NDI and Spout are named by their own fields and
// win over the file, as a live feed is what the user picked last on purpose.
struct ObjectVideoSource
{
    enum Kind { None, Movie, Ndi, Spout };
    Kind kind = None;
    QString name;          // movie path, NDI source or Spout sender
    bool hardware = false; // movies: hardware decoding requested

    // Objects sharing a key share one decoder or receiver.
    QString key() const;
    bool operator==(const ObjectVideoSource &other) const = default;
};

// True for the file name suffixes decoded as movies rather than read as images.
bool isMovieFilePath(const QString &path);
ObjectVideoSource objectVideoSource(const GuideObject &object, bool projectorImage);
