#include "app/SpinBoxWheelGuard.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QWheelEvent>

namespace {

const char *const kArmedProperty = "vantreoSpinBoxWheelArmed";

// The spin box a widget belongs to: itself, or the one whose editor it is.
QAbstractSpinBox *spinBoxOf(QObject *object)
{
    for (int depth = 0; object && depth < 2; ++depth, object = object->parent()) {
        if (auto *spin = qobject_cast<QAbstractSpinBox *>(object))
            return spin;
    }
    return nullptr;
}

} // namespace

SpinBoxWheelGuard::SpinBoxWheelGuard(QObject *parent) : QObject(parent) {}

void SpinBoxWheelGuard::install()
{
    if (qApp && !qApp->findChild<SpinBoxWheelGuard *>(QString(), Qt::FindDirectChildrenOnly))
        qApp->installEventFilter(new SpinBoxWheelGuard(qApp));
}

bool SpinBoxWheelGuard::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (QAbstractSpinBox *spin = spinBoxOf(watched))
            spin->setProperty(kArmedProperty, true);
        break;
    case QEvent::FocusOut:
        if (auto *spin = qobject_cast<QAbstractSpinBox *>(watched))
            spin->setProperty(kArmedProperty, false);
        break;
    case QEvent::Wheel: {
        QAbstractSpinBox *spin = spinBoxOf(watched);
        if (!spin || spin->property(kArmedProperty).toBool())
            break;
        // Handed to the surrounding widgets as if the spin box had ignored it, nearest
        // first, until one (a scroll area) takes it. A sent wheel event is not passed on
        // to parents by the application, so the walk is done here.
        auto *wheel = static_cast<QWheelEvent *>(event);
        for (QWidget *w = spin->parentWidget(); w; w = w->parentWidget()) {
            QWheelEvent copy(w->mapFromGlobal(wheel->globalPosition()), wheel->globalPosition(), wheel->pixelDelta(),
                             wheel->angleDelta(), wheel->buttons(), wheel->modifiers(), wheel->phase(),
                             wheel->inverted(), wheel->source(), wheel->pointingDevice());
            copy.setAccepted(false);
            QApplication::sendEvent(w, &copy);
            if (copy.isAccepted() || w->isWindow())
                break;
        }
        return true;
    }
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
