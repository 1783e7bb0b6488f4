#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <vector>

// Texts of long-lived widgets and actions that follow the UI language: each is set from a
// function that calls tr() again whenever apply() runs, so a language switch needs no
// rebuild and no restart. Targets are guarded; one deleted meanwhile is skipped.
class TranslatedTexts
{
public:
    // Sets `property` ("text", "title", "toolTip", ...) of target from text() now and on apply().
    void bind(QObject *target, const char *property, std::function<QString()> text);
    void bind(QObject *target, std::function<QString()> text) { bind(target, "text", std::move(text)); }
    void apply() const;
    int size() const { return int(m_entries.size()); }

private:
    struct Entry {
        QPointer<QObject> target;
        QByteArray property;
        std::function<QString()> text;
    };
    std::vector<Entry> m_entries;
};
