#include "common/TranslatedTexts.h"

#include <QVariant>

void TranslatedTexts::bind(QObject *target, const char *property, std::function<QString()> text)
{
    if (!target || !text)
        return;
    target->setProperty(property, text());
    m_entries.push_back({QPointer<QObject>(target), QByteArray(property), std::move(text)});
}

void TranslatedTexts::apply() const
{
    for (const Entry &entry : m_entries) {
        if (entry.target)
            entry.target->setProperty(entry.property.constData(), entry.text());
    }
}
