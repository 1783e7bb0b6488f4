#pragma once

#include "video/ui/WindowCaptureRecorder.h"

#include <QObject>
#include <QString>

#include <functional>

class MainWindow;
class QAction;
class QWidget;

// "Record Window..." in the File menu: asks for the GPU preview or the whole window, a file,
// then records until the entry is chosen again.
class WindowRecording : public QObject
{
    Q_OBJECT

public:
    explicit WindowRecording(MainWindow *window);

    // Dialogs, replaced by tests: the question answers true for the preview only; an empty
    // path cancels.
    void setPreviewQuestion(std::function<bool()> question) { m_question = std::move(question); }
    void setSaveDialog(std::function<QString(const QString &title, const QString &path)> dialog)
    {
        m_saveDialog = std::move(dialog);
    }
    void setMessageSink(std::function<void(const QString &title, const QString &text, bool warning)> sink)
    {
        m_message = std::move(sink);
    }

    WindowCaptureRecorder *recorder() { return &m_recorder; }
    void toggle();

private:
    void startRecording();
    void stopRecording(const QString &failure);
    QWidget *previewTarget() const;

    MainWindow *m_window;
    QAction *m_action = nullptr;
    WindowCaptureRecorder m_recorder;
    QString m_path;
    std::function<bool()> m_question;
    std::function<QString(const QString &, const QString &)> m_saveDialog;
    std::function<void(const QString &, const QString &, bool)> m_message;
};
