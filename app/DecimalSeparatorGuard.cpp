#include "app/DecimalSeparatorGuard.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QKeyEvent>
#include <QLocale>
#include <QSpinBox>

namespace {

// The decimal field a widget belongs to: itself, or the one whose editor it is.
QDoubleSpinBox *decimalFieldOf(QObject *object)
{
    for (int depth = 0; object && depth < 2; ++depth, object = object->parent()) {
        if (auto *spin = qobject_cast<QDoubleSpinBox *>(object))
            return spin;
    }
    return nullptr;
}

QSpinBox *wholeFieldOf(QObject *object)
{
    for (int depth = 0; object && depth < 2; ++depth, object = object->parent()) {
        if (auto *spin = qobject_cast<QSpinBox *>(object))
            return spin;
    }
    return nullptr;
}

const char *const kDroppingFraction = "vantreoDroppingFraction";

} // namespace

DecimalSeparatorGuard::DecimalSeparatorGuard(QObject *parent) : QObject(parent) {}

void DecimalSeparatorGuard::install()
{
    // Grouping separators are how "1,5" turned into 15: number fields refuse them.
    QLocale locale;
    locale.setNumberOptions(locale.numberOptions() | QLocale::RejectGroupSeparator);
    QLocale::setDefault(locale);
    if (qApp && !qApp->findChild<DecimalSeparatorGuard *>(QString(), Qt::FindDirectChildrenOnly))
        qApp->installEventFilter(new DecimalSeparatorGuard(qApp));
}

bool DecimalSeparatorGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut) {
        if (auto *whole = qobject_cast<QSpinBox *>(watched))
            whole->setProperty(kDroppingFraction, false);
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    auto *key = static_cast<QKeyEvent *>(event);
    const QString text = key->text();
    const bool separator = text == QLatin1String(",") || text == QLatin1String(".");

    // A whole-number field has no fraction: "1,5" keeps the 1 and drops what follows the
    // separator, up to the next key that is not a digit.
    if (QSpinBox *whole = wholeFieldOf(watched)) {
        if (separator) {
            whole->setProperty(kDroppingFraction, true);
            return true;
        }
        const bool digit = text.size() == 1 && text.at(0).isDigit();
        if (digit && whole->property(kDroppingFraction).toBool())
            return true;
        whole->setProperty(kDroppingFraction, false);
        return false;
    }

    if (!separator)
        return false;
    QDoubleSpinBox *field = decimalFieldOf(watched);
    if (!field)
        return false;
    const QString point = field->locale().decimalPoint();
    if (text == point)
        return false;
    QKeyEvent converted(QEvent::KeyPress, point == QLatin1String(",") ? Qt::Key_Comma : Qt::Key_Period,
                        key->modifiers(), point, key->isAutoRepeat(), key->count());
    QCoreApplication::sendEvent(watched, &converted);
    return true;
}
