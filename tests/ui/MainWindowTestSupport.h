#pragma once

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QThreadPool>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

// Keeps the program settings of a test in a temporary folder, never the user's.
class ShellSettingsFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_settingsDir.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_settingsDir.path());
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settingsDir.path());
        QSettings().clear();
        m_applicationFont = QApplication::font();
    }

    // The window scales the application font; other suites in this program expect it back.
    void TearDown() override
    {
        QSettings().clear();
        QApplication::setFont(m_applicationFont);
        // Guide tabs render in thread pools; no render may outlive the application object.
        for (QThreadPool *pool : QCoreApplication::instance()->findChildren<QThreadPool *>())
            pool->waitForDone();
        QThreadPool::globalInstance()->waitForDone();
    }

    QTemporaryDir m_settingsDir;
    QFont m_applicationFont;
};

// Runs action on the next modal dialog that opens (a message box or dialog the code
// under test executes), polling for up to five seconds.
inline void onNextModal(std::function<void(QWidget *)> action)
{
    auto *timer = new QTimer;
    auto elapsed = std::make_shared<QElapsedTimer>();
    elapsed->start();
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, [timer, elapsed, action] {
        QWidget *modal = QApplication::activeModalWidget();
        if (modal && modal->isVisible()) {
            timer->stop();
            timer->deleteLater();
            action(modal);
        } else if (elapsed->elapsed() > 5000) {
            timer->stop();
            timer->deleteLater();
        }
    });
    timer->start();
}

// Clicks a standard button of the next message box and records its texts.
struct MessageBoxAnswer
{
    QString title;
    QString text;
    QString informativeText;
    QStringList buttons;
    QString defaultButton;
};

inline std::shared_ptr<MessageBoxAnswer> answerNextMessageBox(std::function<QAbstractButton *(QMessageBox *)> choose)
{
    auto seen = std::make_shared<MessageBoxAnswer>();
    onNextModal([seen, choose](QWidget *modal) {
        auto *box = qobject_cast<QMessageBox *>(modal);
        if (!box) {
            if (auto *dialog = qobject_cast<QDialog *>(modal))
                dialog->reject();
            return;
        }
        seen->title = box->windowTitle();
        seen->text = box->text();
        seen->informativeText = box->informativeText();
        for (QAbstractButton *button : box->buttons())
            seen->buttons << button->text().remove(QLatin1Char('&'));
        if (box->defaultButton())
            seen->defaultButton = box->defaultButton()->text().remove(QLatin1Char('&'));
        choose(box)->click();
    });
    return seen;
}

inline std::shared_ptr<MessageBoxAnswer> answerNextMessageBox(QMessageBox::StandardButton button)
{
    return answerNextMessageBox([button](QMessageBox *box) { return box->button(button); });
}

inline std::shared_ptr<MessageBoxAnswer> answerNextMessageBox(const QString &buttonText)
{
    return answerNextMessageBox([buttonText](QMessageBox *box) -> QAbstractButton * {
        for (QAbstractButton *button : box->buttons()) {
            if (button->text().remove(QLatin1Char('&')) == buttonText)
                return button;
        }
        return box->buttons().value(0);
    });
}
