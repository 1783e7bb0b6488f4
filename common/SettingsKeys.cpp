#include "common/SettingsKeys.h"

#include <QSettings>
#include <QVariant>

QString TextSetting::read() const
{
    return read(QSettings());
}

QString TextSetting::read(const QSettings &settings) const
{
    return settings.value(key(), QString::fromUtf8(fallback)).toString();
}

void TextSetting::write(const QString &value) const
{
    QSettings().setValue(key(), value);
}

void TextSetting::remove() const
{
    QSettings().remove(key());
}

bool FlagSetting::read() const
{
    return QSettings().value(key(), fallback).toBool();
}

void FlagSetting::write(bool value) const
{
    QSettings().setValue(key(), value);
}

double NumberSetting::read() const
{
    return read(QSettings());
}

double NumberSetting::read(const QSettings &settings) const
{
    bool ok = false;
    const double value = settings.value(key(), fallback).toDouble(&ok);
    return ok ? value : fallback;
}

void NumberSetting::write(double value) const
{
    QSettings().setValue(key(), value);
}

QStringList ListSetting::read() const
{
    return QSettings().value(key()).toStringList();
}

void ListSetting::write(const QStringList &value) const
{
    QSettings().setValue(key(), value);
}
