#pragma once

#include <QFont>
#include <QString>

class QSettings;

// Program-wide UI preferences that the window and the start-up sequence share.

inline constexpr double kMinUiScale = 0.7;
inline constexpr double kMaxUiScale = 1.8;

// Rounds to two decimals, then clamps to [0.7, 1.8]; a value that is not a number is 1.0.
double normalizeUiScale(double scale);

// Reads "ui/scale" (default 1.0) through normalizeUiScale.
double storedUiScale(const QSettings &settings);

// Trimmed, lower-cased, "-" as "_"; anything starting with "ko" is "ko", everything else "en".
QString normalizeLanguageCode(const QString &code);

// "VantreoGuide_%1.qm" for a normalised code.
QString translationFileName(const QString &code);

// Loads the translation for the code (resources first, then "translations/" beside the
// program) and installs it in place of the one loaded before. On failure the previous
// translation is removed, so the UI falls back to English, and error names the file.
bool installUiTranslation(const QString &code, QString *error = nullptr);

// The code of the translation installed last ("en" before any).
QString installedUiLanguage();

// The bundled UI font at the system font's size plus one; the font file is registered
// with the font database once per process.
QFont defaultUiFont();

// The font stored under "ui/font", or the default UI font when it is absent, empty or
// cannot be parsed.
QFont storedUiFont(const QSettings &settings);

// The base font with its size multiplied by scale: point sizes at least 1.0, pixel
// sizes rounded and at least 1.
QFont scaledUiFont(const QFont &base, double scale);

// The build id shown on the start page and in Help > Version, "UNKNOWN" without one.
QString buildIdText();
