#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QHash>

#include <functional>

// Processes events until `done` holds or the time runs out.
inline bool waitUntil(const std::function<bool()> &done, int timeoutMs = 10000)
{
    QDeadlineTimer deadline(timeoutMs);
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

// Sets or clears environment variables for one test and puts them back afterwards.
class ScopedEnvironment
{
public:
    void set(const char *name, const QByteArray &value)
    {
        remember(name);
        qputenv(name, value);
    }
    void unset(const char *name)
    {
        remember(name);
        qunsetenv(name);
    }
    ~ScopedEnvironment()
    {
        for (auto it = m_saved.cbegin(); it != m_saved.cend(); ++it) {
            if (it.value().first)
                qputenv(it.key().constData(), it.value().second);
            else
                qunsetenv(it.key().constData());
        }
    }

private:
    void remember(const char *name)
    {
        if (!m_saved.contains(name))
            m_saved.insert(name, {qEnvironmentVariableIsSet(name), qgetenv(name)});
    }
    QHash<QByteArray, std::pair<bool, QByteArray>> m_saved;
};

// Every variable the client reads, cleared, so the machine's own settings never leak in.
inline void clearClientEnvironment(ScopedEnvironment &env)
{
    for (const char *name : {"VANTREOGUIDE_API_BASE_URL", "VANTREOGUIDE_UPDATE_URL", "VANTREOGUIDE_CLIENT_API_KEY",
                             "CLIENT_API_KEY"})
        env.unset(name);
}
