#pragma once

#include "guide/GuideSettings.h"

#include <QString>

// The style defaults file as the guide tab uses it (load over a guide, save a guide's
// style). Errors come back in their user-visible wording.
namespace guidestyle {

QString defaultFilePath();
// A missing file applies nothing and succeeds.
bool load(const QString &path, GuideSettings *settings, QString *error);
bool save(const QString &path, const GuideSettings &settings, QString *error);

} // namespace guidestyle
