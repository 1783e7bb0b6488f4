#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

// The title shown on a content tab. Double-clicking it turns it into an editor in
// place: Enter or leaving the field keeps the new title, Escape restores the old one.
// An empty title shows the tab's fallback title.
class TabTitleWidget : public QWidget
{
    Q_OBJECT

public:
    explicit TabTitleWidget(const QString &title, const QString &fallbackTitle, QWidget *parent = nullptr);

    QString title() const { return m_title; }
    QString fallbackTitle() const { return m_fallbackTitle; }
    // The title, or the fallback when the title is empty.
    QString displayedTitle() const;

    void setTitle(const QString &title);
    void setFallbackTitle(const QString &fallbackTitle);

    bool isEditing() const;
    void startEditing();
    void finishEditing(bool keep);

Q_SIGNALS:
    // Emitted when the user changed the title by editing it.
    void titleEdited(const QString &title);

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void refresh();

    QString m_title;
    QString m_fallbackTitle;
    QLabel *m_label = nullptr;
    QLineEdit *m_editor = nullptr;
};
