#pragma once

#include "guide/GuideSettings.h"

#include <QString>

// The style defaults file "VantreoGuideStyle.vss": plain JSON
// {"file_type": "VantreoGuideStyle", "version": 1, "style": {...guide style keys...}}.

// "VantreoGuideStyle.vss" in the application's own directory.
QString styleDefaultsFilePath();
// Where the file is read from: beside the executable, else the user's configuration
// folder, else the installed data folders; styleDefaultsFilePath() when none exists.
QString styleDefaultsReadPath();
// Where "Save As Default" writes: beside the executable when that folder is writable,
// otherwise the user's configuration folder.
QString styleDefaultsWritePath();

// Applies the file's style to settings, then the completion every guide read from a file
// gets. A missing file applies nothing and succeeds. On failure returns false with the
// error text ("Style default parse failed: %1", "Style default root must be an object.",
// or the file's own error).
bool loadStyleDefaults(GuideSettings *settings, QString *error = nullptr);
bool loadStyleDefaults(const QString &path, GuideSettings *settings, QString *error = nullptr);

// Writes the guide's style as indented JSON; false with the file's error on failure.
bool saveStyleDefaults(const GuideSettings &settings, QString *error = nullptr);
bool saveStyleDefaults(const QString &path, const GuideSettings &settings, QString *error = nullptr);

// What a new guide tab starts from: the built-in defaults with the style defaults
// applied; a file that cannot be loaded is logged ("Failed to load guide style
// defaults:") and the built-in defaults stay.
GuideSettings newGuideSettingsWithStyleDefaults();
