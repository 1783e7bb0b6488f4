#include "app/UiPreferences.h"
#include "common/SettingsKeys.h"

#include <QCoreApplication>
#include <QDir>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QSettings>
#include <QTranslator>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

std::unique_ptr<QTranslator> &installedTranslator()
{
    static std::unique_ptr<QTranslator> translator;
    return translator;
}

// Qt's own texts (standard dialog buttons, context menus of text fields).
std::unique_ptr<QTranslator> &installedQtTranslator()
{
    static std::unique_ptr<QTranslator> translator;
    return translator;
}

void installQtTranslation(const QString &language)
{
    std::unique_ptr<QTranslator> &current = installedQtTranslator();
    if (current) {
        QCoreApplication::removeTranslator(current.get());
        current.reset();
    }
    if (language == QLatin1String("en"))
        return; // Qt's texts are English already
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(QStringLiteral("qtbase_%1").arg(language),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        return; // Qt's own buttons then stay in English; the program's texts are still translated
    QCoreApplication::installTranslator(translator.get());
    current = std::move(translator);
}

QString &installedCode()
{
    static QString code = QStringLiteral("en");
    return code;
}

} // namespace

double normalizeUiScale(double scale)
{
    if (!std::isfinite(scale))
        return 1.0;
    const double rounded = std::round(scale * 100.0) / 100.0;
    return std::clamp(rounded, kMinUiScale, kMaxUiScale);
}

double storedUiScale(const QSettings &settings)
{
    return normalizeUiScale(Settings::uiScale.read(settings));
}

QString normalizeLanguageCode(const QString &code)
{
    const QString normalized = code.trimmed().toLower().replace(QLatin1Char('-'), QLatin1Char('_'));
    return normalized.startsWith(QLatin1String("ko")) ? QStringLiteral("ko") : QStringLiteral("en");
}

QString translationFileName(const QString &code)
{
    return QStringLiteral("VantreoGuide_%1.qm").arg(normalizeLanguageCode(code));
}

bool installUiTranslation(const QString &code, QString *error)
{
    const QString language = normalizeLanguageCode(code);
    const QString fileName = translationFileName(language);
    auto translator = std::make_unique<QTranslator>();
    bool loaded = translator->load(QStringLiteral(":/i18n/%1").arg(fileName));
    if (!loaded) {
        const QString besideProgram =
            QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("translations/%1").arg(fileName));
        loaded = translator->load(besideProgram);
    }

    std::unique_ptr<QTranslator> &current = installedTranslator();
    if (current) {
        QCoreApplication::removeTranslator(current.get());
        current.reset();
    }
    installQtTranslation(loaded ? language : QStringLiteral("en"));
    if (!loaded) {
        installedCode() = QStringLiteral("en");
        if (error)
            *error = fileName;
        return false;
    }
    QCoreApplication::installTranslator(translator.get());
    current = std::move(translator);
    installedCode() = language;
    return true;
}

QString installedUiLanguage()
{
    return installedCode();
}

QFont defaultUiFont()
{
    static QString family;
    static bool registered = false;
    if (!registered) {
        registered = true;
        const int id = QFontDatabase::addApplicationFont(QStringLiteral(":/assets/NanumGothicExtraBold.ttf"));
        const QStringList families = id >= 0 ? QFontDatabase::applicationFontFamilies(id) : QStringList();
        if (!families.isEmpty())
            family = families.first();
    }
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    const double pointSize = font.pointSizeF();
    const int pixelSize = font.pixelSize();
    if (!family.isEmpty()) {
        font.setFamily(family);
        // The family is shared with other weights a system may have installed.
        font.setWeight(QFont::ExtraBold);
        font.setStyleName(QString());
    }
    if (pointSize > 0)
        font.setPointSizeF(pointSize + 1.0);
    else if (pixelSize > 0)
        font.setPixelSize(pixelSize + 1);
    else
        font.setPointSizeF(10.0);
    return font;
}

QFont storedUiFont(const QSettings &settings)
{
    const QString description = Settings::uiFont.read(settings).trimmed();
    if (!description.isEmpty()) {
        QFont font;
        if (font.fromString(description))
            return font;
    }
    return defaultUiFont();
}

QFont scaledUiFont(const QFont &base, double scale)
{
    QFont font = base;
    if (base.pointSizeF() > 0)
        font.setPointSizeF(std::max(1.0, base.pointSizeF() * scale));
    else if (base.pixelSize() > 0)
        font.setPixelSize(std::max(1, int(std::lround(base.pixelSize() * scale))));
    return font;
}

QString buildIdText()
{
#ifdef VG_BUILD_ID
    const QString id = QStringLiteral(VG_BUILD_ID);
    return id.isEmpty() ? QStringLiteral("UNKNOWN") : id;
#else
    return QStringLiteral("UNKNOWN");
#endif
}
