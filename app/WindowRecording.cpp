#include "app/WindowRecording.h"

#include "app/MainWindow.h"
#include "common/SettingsKeys.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QOpenGLWidget>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>
#include <QTabWidget>

namespace {


} // namespace

WindowRecording::WindowRecording(MainWindow *window)
    : QObject(window)
    , m_window(window)
{
    m_question = [this] {
        QMessageBox box(QMessageBox::Question, tr("Record Window"), tr("Record only the GPU preview?"),
                        QMessageBox::NoButton, m_window);
        box.setInformativeText(tr("Choose GPU Preview Only to capture the active preview area, or Program Window "
                                  "to capture the full application window."));
        QPushButton *preview = box.addButton(tr("GPU Preview Only"), QMessageBox::AcceptRole);
        box.addButton(tr("Program Window"), QMessageBox::RejectRole);
        box.exec();
        return box.clickedButton() == preview;
    };
    m_saveDialog = [this](const QString &title, const QString &path) {
        return QFileDialog::getSaveFileName(m_window, title, path, tr("MP4 Video (*.mp4)"));
    };
    m_message = [this](const QString &title, const QString &text, bool warning) {
        if (warning)
            QMessageBox::warning(m_window, title, text);
        else
            QMessageBox::information(m_window, title, text);
    };
    m_action = window->findChild<QAction *>(QStringLiteral("actionRecordWindow"));
    if (m_action) {
        m_action->setEnabled(true);
        connect(m_action, &QAction::triggered, this, &WindowRecording::toggle);
    }
    connect(&m_recorder, &WindowCaptureRecorder::captureFailed, this,
            [this](const QString &message) { stopRecording(message); });
}

void WindowRecording::toggle()
{
    if (m_recorder.isRecording())
        stopRecording(QString());
    else
        startRecording();
}

QWidget *WindowRecording::previewTarget() const
{
    QWidget *tab = m_window->tabWidget() ? m_window->tabWidget()->currentWidget() : nullptr;
    if (!tab)
        return nullptr;
    auto *view = tab->findChild<QOpenGLWidget *>();
    return view ? static_cast<QWidget *>(view) : tab;
}

void WindowRecording::startRecording()
{
    const bool previewOnly = m_question();
    QSettings settings;
    const QString folder = settings.value(Settings::captureDirectory.key(), QDir::homePath()).toString();
    const QString name = previewOnly ? QStringLiteral("VantreoGuidePreviewCapture.mp4")
                                     : QStringLiteral("VantreoGuideCapture.mp4");
    QString path = m_saveDialog(previewOnly ? tr("Capture GPU preview") : tr("Capture program window"),
                                QDir(folder).filePath(name));
    if (path.isEmpty())
        return;
    if (!path.endsWith(QLatin1String(".mp4"), Qt::CaseInsensitive))
        path += QLatin1String(".mp4");
    settings.setValue(Settings::captureDirectory.key(), QFileInfo(path).absolutePath());
    QWidget *target = previewOnly ? previewTarget() : static_cast<QWidget *>(m_window);
    m_recorder.setPaintedCursor(previewOnly);
    QString error;
    if (!m_recorder.start(target, path, &error)) {
        m_message(tr("Capture failed"), tr("Could not start capture:\n%1").arg(error), true);
        return;
    }
    m_path = path;
    m_window->statusBar()->showMessage(tr("Capturing %1 at 30 fps: %2")
                                           .arg(previewOnly ? tr("GPU preview") : tr("program window"), path));
}

void WindowRecording::stopRecording(const QString &failure)
{
    // A failure from the recorder already reads "Capture stopped: ...".
    QString status = failure;
    bool saved = failure.isEmpty();
    if (m_recorder.isRecording()) {
        QString stopError;
        saved = m_recorder.stop(&stopError) && saved;
        if (status.isEmpty() && !stopError.isEmpty())
            status = tr("Capture stopped: %1").arg(stopError);
    }
    m_window->statusBar()->showMessage(status.isEmpty() ? tr("Capture stopped.") : status);
    if (saved)
        m_message(tr("Capture Complete"), tr("Capture saved:") + QLatin1Char('\n') + m_path, false);
}
