#include "app/TabTitleWidget.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>

TabTitleWidget::TabTitleWidget(const QString &title, const QString &fallbackTitle, QWidget *parent)
    : QWidget(parent)
    , m_title(title)
    , m_fallbackTitle(fallbackTitle)
{
    setObjectName(QStringLiteral("vantreoTabTitle"));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(2, 0, 2, 0);
    layout->setSpacing(0);
    m_label = new QLabel(this);
    // Presses fall through to the tab bar so selecting and dragging tabs keep working.
    m_label->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_editor = new QLineEdit(this);
    m_editor->hide();
    m_editor->installEventFilter(this);
    layout->addWidget(m_label);
    layout->addWidget(m_editor);
    connect(m_editor, &QLineEdit::editingFinished, this, [this] {
        if (isEditing())
            finishEditing(true);
    });
    refresh();
}

QString TabTitleWidget::displayedTitle() const
{
    return m_title.isEmpty() ? m_fallbackTitle : m_title;
}

void TabTitleWidget::setTitle(const QString &title)
{
    m_title = title;
    refresh();
}

void TabTitleWidget::setFallbackTitle(const QString &fallbackTitle)
{
    m_fallbackTitle = fallbackTitle;
    refresh();
}

bool TabTitleWidget::isEditing() const
{
    return !m_editor->isHidden();
}

void TabTitleWidget::startEditing()
{
    if (isEditing())
        return;
    m_editor->setText(m_title);
    m_editor->setMinimumWidth(std::max(m_label->sizeHint().width() + 24, 100));
    m_label->hide();
    m_editor->show();
    m_editor->selectAll();
    m_editor->setFocus(Qt::MouseFocusReason);
}

void TabTitleWidget::finishEditing(bool keep)
{
    if (!isEditing())
        return;
    const QString edited = m_editor->text().trimmed();
    m_editor->hide();
    m_label->show();
    if (keep && edited != m_title) {
        m_title = edited;
        refresh();
        Q_EMIT titleEdited(m_title);
    } else {
        refresh();
    }
}

void TabTitleWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        startEditing();
        event->accept();
        return;
    }
    QWidget::mouseDoubleClickEvent(event);
}

bool TabTitleWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_editor && event->type() == QEvent::KeyPress) {
        if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
            finishEditing(false);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TabTitleWidget::refresh()
{
    m_label->setText(displayedTitle());
    m_label->setToolTip(displayedTitle());
    adjustSize();
    // The tab bar sizes its tabs from the buttons' size hints.
    updateGeometry();
}
