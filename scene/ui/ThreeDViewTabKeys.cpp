// The 3D view's keys from outside the view: the object list's type-to-find, tool buttons
// and the window's tab bar never keep P, V, W, F ... from the view.
#include "scene/ui/ThreeDViewTab.h"

#include "scene/ui/SceneKeyMap.h"
#include "scene/ui/SceneWidget.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QCursor>
#include <QKeyEvent>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace {

// Widgets that take typed text keep every key, as a user typing a name expects.
bool takesText(const QWidget *widget)
{
    for (const QWidget *w = widget; w; w = w->parentWidget()) {
        if (qobject_cast<const QLineEdit *>(w) || qobject_cast<const QAbstractSpinBox *>(w)
            || qobject_cast<const QTextEdit *>(w) || qobject_cast<const QPlainTextEdit *>(w)
            || qobject_cast<const QKeySequenceEdit *>(w))
            return true;
        if (auto *combo = qobject_cast<const QComboBox *>(w); combo && combo->isEditable())
            return true;
        if (w->isWindow())
            break;
    }
    return false;
}

} // namespace

bool ThreeDViewTab::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::KeyPress || type == QEvent::ShortcutOverride)
        return filterViewKeys(watched, event);
    if (watched == m_view && filterViewDrops(event))
        return true;
    return QWidget::eventFilter(watched, event);
}

bool ThreeDViewTab::routesKeyToView(QObject *receiver, const QKeyEvent *key) const
{
    auto *widget = qobject_cast<QWidget *>(receiver);
    if (!widget || !isVisible() || widget == m_view || m_view->isAncestorOf(widget))
        return false; // the view handles its own keys
    if (widget->window() != window() || takesText(widget))
        return false; // dialogs, menus and text entry keep their keys
    if (sceneCommandForKey(key->key(), key->modifiers()) == SceneCommand::None)
        return false;
    if (isAncestorOf(widget))
        return true;
    return m_view->rect().contains(m_view->mapFromGlobal(QCursor::pos()));
}

bool ThreeDViewTab::filterViewKeys(QObject *watched, QEvent *event)
{
    auto *key = static_cast<QKeyEvent *>(event);
    if (!routesKeyToView(watched, key))
        return false;
    if (event->type() == QEvent::ShortcutOverride) {
        // Keys the view takes before the window's shortcuts arrive here as key presses.
        if (sceneKeyTakesShortcut(key->key(), key->modifiers())) {
            event->accept();
            return true;
        }
        return false;
    }
    QKeyEvent forwarded(QEvent::KeyPress, key->key(), key->modifiers(), key->text(), key->isAutoRepeat(),
                        key->count());
    QCoreApplication::sendEvent(m_view, &forwarded);
    return forwarded.isAccepted();
}
