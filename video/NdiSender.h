#pragma once

#include <QImage>
#include <QString>

class NdiRuntime;

// Publishes rendered views on the network under one name.
class NdiSender
{
public:
    NdiSender(NdiRuntime &runtime, const QString &name);
    ~NdiSender();
    NdiSender(const NdiSender &) = delete;
    NdiSender &operator=(const NdiSender &) = delete;

    // Creates the sender; false with the failure text (logged once per sender).
    bool open(QString *error);
    bool isOpen() const { return m_instance != nullptr; }
    QString name() const { return m_name; }
    // Sends one frame, converted to BGRA; false when the sender is not open or the image empty.
    bool send(const QImage &image);
    qint64 framesSent() const { return m_sent; }

    // "VantreoGuide %1 View" with "Projector" or "Camera", unless the user named the output.
    static QString viewSenderName(bool projector, const QString &userName);

private:
    NdiRuntime &m_runtime;
    QString m_name;
    void *m_instance = nullptr;
    bool m_failed = false;
    qint64 m_sent = 0;
};
