#include "scene/gl/SceneTimingLog.h"

#include <QMutexLocker>
#include <QThread>

SceneTimingLog &SceneTimingLog::instance()
{
    static SceneTimingLog *log = [] {
        auto *created = new SceneTimingLog;
        const QString path = pathForEnvironmentValue(qgetenv(kEnvironmentVariable));
        if (!path.isEmpty())
            created->open(path);
        return created;
    }();
    return *log;
}

QString SceneTimingLog::pathForEnvironmentValue(const QByteArray &value)
{
    if (value.isEmpty())
        return {};
    const QString text = QString::fromLocal8Bit(value);
    if (text == QLatin1String("1") || text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
        return QString::fromLatin1(kDefaultFileName);
    return text;
}

bool SceneTimingLog::open(const QString &path)
{
    QMutexLocker locker(&m_mutex);
    if (m_file.isOpen())
        m_file.close();
    m_enabled = false;
    m_path = path;
    if (path.isEmpty())
        return false;
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        return false;
    m_file.write(kHeader);
    m_file.write("\n");
    m_file.flush();
    m_clock.start();
    m_enabled = true;
    return true;
}

void SceneTimingLog::close()
{
    QMutexLocker locker(&m_mutex);
    m_enabled = false;
    if (m_file.isOpen())
        m_file.close();
}

void SceneTimingLog::event(const char *name, quint64 serial, qint64 sample100ns, double value, const QString &detail)
{
    if (!m_enabled)
        return;
    QMutexLocker locker(&m_mutex);
    if (!m_enabled)
        return;
    QString cleanDetail = detail;
    cleanDetail.replace(QLatin1Char('\t'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    const QByteArray line = QByteArray::number(m_clock.nsecsElapsed() / 1000) + '\t' + name + '\t'
        + QByteArray::number(quintptr(QThread::currentThreadId())) + '\t' + QByteArray::number(serial) + '\t'
        + QByteArray::number(sample100ns) + '\t' + QByteArray::number(value, 'g', 10) + '\t'
        + cleanDetail.toUtf8() + '\n';
    m_file.write(line);
    m_file.flush();
}
