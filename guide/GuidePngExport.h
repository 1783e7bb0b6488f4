#pragma once

#include "guide/GuideSettings.h"

#include <QByteArray>

// The guide as PNG bytes, the same pixels as encodePng(renderGuideImage(settings)). An
// unrotated guide is painted and deflated band by band on `threads` threads (<= 0: the
// machine's cores), so the whole image is never held: less memory, and the rows go to the
// encoder while they are still in the cache. Empty when memory runs out.
QByteArray encodeGuidePng(const GuideSettings &settings, int threads = 0);
