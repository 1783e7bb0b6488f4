#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>
#include <QMutex>
#include <QString>

// The movie timing log: tab-separated events of frame pacing and video sources, switched on
// by the environment variable VANTREOGUIDE_MOVIE_TIMING_LOG.
class SceneTimingLog
{
public:
    static constexpr const char *kEnvironmentVariable = "VANTREOGUIDE_MOVIE_TIMING_LOG";
    static constexpr const char *kDefaultFileName = "VantreoGuide_movie_timing.log";
    static constexpr const char *kHeader = "time_us\tevent\tthread\tserial\tsample_100ns\tvalue\tdetail";

    // The process-wide log, configured from the environment on first use.
    static SceneTimingLog &instance();

    // Empty: off. "1" or "true" in any letter case: the default file name. Anything else:
    // that path.
    static QString pathForEnvironmentValue(const QByteArray &value);

    // Opens (truncating) the given file and writes the header; an empty path switches off.
    bool open(const QString &path);
    void close();
    bool isEnabled() const { return m_enabled; }
    QString path() const { return m_path; }

    void event(const char *name, quint64 serial = 0, qint64 sample100ns = 0, double value = 0.0,
               const QString &detail = QString());

private:
    SceneTimingLog() = default;

    bool m_enabled = false;
    QString m_path;
    QFile m_file;
    QElapsedTimer m_clock;
    QMutex m_mutex;
};
