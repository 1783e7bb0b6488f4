#include "app/TabKind.h"

#include <QVariant>
#include <QWidget>

namespace {

// The dynamic property on every content widget naming its kind.
constexpr const char *kTabKindProperty = "vantreoTabKind";

} // namespace

void TabKind::setLoading(QWidget *, bool) const {}

namespace TabKindRegistry {

QList<const TabKind *> kinds()
{
    static const QList<const TabKind *> all = {&guideTabKind(), &canvasTabKind(), &threeDViewTabKind()};
    return all;
}

const TabKind *find(const QString &id)
{
    const QString wanted = id.trimmed();
    for (const TabKind *kind : kinds()) {
        if (kind->id() == wanted)
            return kind;
    }
    return nullptr;
}

const TabKind *kindOf(const QWidget *content)
{
    return content ? find(content->property(kTabKindProperty).toString()) : nullptr;
}

void mark(QWidget *content, const TabKind &kind)
{
    content->setProperty(kTabKindProperty, kind.id());
}

} // namespace TabKindRegistry
