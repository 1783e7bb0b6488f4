#include "video/SpoutSupport.h"

#include "video/VideoPlaceholder.h"

#include <QCoreApplication>
#include <QMutex>
#include <QMutexLocker>
#include <QSet>

bool spoutAvailable()
{
    return false;
}

QString spoutUnavailableText()
{
    return QCoreApplication::translate("SpoutSupport", "Spout is not available on this system.");
}

SpoutTextureSource::SpoutTextureSource(const QString &senderName)
    : m_sender(senderName)
{
    qWarning("%s (%s)", qPrintable(spoutUnavailableText()), qPrintable(senderName));
    const QImage image = videoPlaceholderImage(spoutPlaceholderTitle(), spoutPlaceholderDetail());
    m_placeholder.format = SceneTextureFrame::Rgba;
    m_placeholder.image = image;
    m_placeholder.width = image.width();
    m_placeholder.height = image.height();
    m_placeholder.serial = nextSceneTextureSerial();
}

bool openSpoutViewSender(const QString &senderName)
{
    static QMutex mutex;
    static QSet<QString> reported;
    QMutexLocker locker(&mutex);
    if (!reported.contains(senderName)) {
        reported.insert(senderName);
        qWarning("%s %s", qPrintable(QCoreApplication::translate("SpoutSupport", "Failed to open Spout sender for projector view output.")),
                 qPrintable(spoutUnavailableText()));
    }
    return false;
}
