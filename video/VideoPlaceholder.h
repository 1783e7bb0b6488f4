#pragma once

#include <QImage>
#include <QString>

// The stand-in picture of a live source that has nothing to show: a title ("NO MOVIE",
// "NO NDI", "NO SPOUT") over a hint, on a dark field with a marked top-left corner so a
// mirrored mapping is visible at a glance.
QImage videoPlaceholderImage(const QString &title, const QString &detail);

QString ndiPlaceholderTitle();
QString ndiPlaceholderDetail();
QString spoutPlaceholderTitle();
QString spoutPlaceholderDetail();
