#pragma once

#include <QImage>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>

class MainWindow;

// "Export Tab Views to PDF..." and "Export Tab Views to PPTX...": one page per open tab, made
// from the tab's data (guide image, canvas render, 3D view through the off-screen renderer), so
// no tab has to be on screen.
class TabViewDocuments : public QObject
{
    Q_OBJECT

public:
    explicit TabViewDocuments(MainWindow *window);

    // The save dialog; tests replace it (an empty path cancels).
    void setSaveDialog(std::function<QString(const QString &title, const QString &path, const QString &filter)> dialog)
    {
        m_saveDialog = std::move(dialog);
    }
    // Message boxes (title, text, warning); tests replace them.
    void setMessageSink(std::function<void(const QString &title, const QString &text, bool warning)> sink)
    {
        m_message = std::move(sink);
    }

    // The pages of the open tabs in tab order; false with an error text when one cannot be made.
    bool tabPages(QList<QImage> *pages, QString *error);
    // The whole command for "pdf" or "pptx"; true when a file was written.
    bool exportTabViews(const QString &format);

private:
    MainWindow *m_window;
    std::function<QString(const QString &, const QString &, const QString &)> m_saveDialog;
    std::function<void(const QString &, const QString &, bool)> m_message;
};
