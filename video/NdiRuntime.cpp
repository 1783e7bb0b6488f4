#include "video/NdiRuntime.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>
#include <QMutexLocker>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("NdiRuntime", text);
}

#ifdef Q_OS_WIN
const char *const kLibraryNames[] = {"Processing.NDI.Lib.x64"};
#else
const char *const kLibraryNames[] = {"libndi.so.6", "libndi.so.5"};
const char *const kRuntimeDirVariables[] = {"NDI_RUNTIME_DIR_V6", "NDI_RUNTIME_DIR_V5"};
#endif

template<typename Fn>
bool resolve(QLibrary &library, const char *name, Fn *out)
{
    *out = reinterpret_cast<Fn>(library.resolve(name));
    return *out != nullptr;
}

} // namespace

NdiRuntime &NdiRuntime::instance()
{
    // Never destroyed: the runtime stays loaded for the life of the process.
    static NdiRuntime *runtime = new NdiRuntime(defaultCandidates());
    return *runtime;
}

QStringList NdiRuntime::defaultCandidates()
{
    QStringList candidates;
#ifndef Q_OS_WIN
    for (int i = 0; i < int(std::size(kLibraryNames)); ++i) {
        const QString dir = qEnvironmentVariable(kRuntimeDirVariables[i]);
        if (!dir.isEmpty())
            candidates.append(QDir(dir).filePath(QString::fromLatin1(kLibraryNames[i])));
    }
#endif
    for (const char *name : kLibraryNames)
        candidates.append(QString::fromLatin1(name));
    return candidates;
}

NdiRuntime::NdiRuntime(const QStringList &candidates)
    : m_candidates(candidates)
{
}

NdiRuntime::~NdiRuntime()
{
    // The library object goes, the mapping stays (PreventUnloadHint, no unload()).
    delete m_library;
}

void NdiRuntime::load()
{
    if (m_attempted)
        return;
    m_attempted = true;
    ++m_attempts;
    for (const QString &candidate : std::as_const(m_candidates)) {
        auto *library = new QLibrary(candidate);
        library->setLoadHints(QLibrary::PreventUnloadHint);
        if (library->load()) {
            m_library = library;
            m_loadedFrom = candidate;
            break;
        }
        m_loaderError = library->errorString();
        delete library;
    }
    if (!m_library) {
        if (m_candidates.isEmpty())
            m_loaderError = tr("no runtime library name");
        return;
    }
    m_loaded = true;
    Functions &f = m_functions;
    QLibrary &lib = *m_library;
    bool receiving = resolve(lib, "NDIlib_initialize", &f.initialize);
    receiving = resolve(lib, "NDIlib_find_create_v2", &f.findCreate) && receiving;
    receiving = resolve(lib, "NDIlib_find_destroy", &f.findDestroy) && receiving;
    receiving = resolve(lib, "NDIlib_find_wait_for_sources", &f.findWaitForSources) && receiving;
    receiving = resolve(lib, "NDIlib_find_get_current_sources", &f.findGetCurrentSources) && receiving;
    receiving = resolve(lib, "NDIlib_recv_create_v3", &f.recvCreate) && receiving;
    receiving = resolve(lib, "NDIlib_recv_connect", &f.recvConnect) && receiving;
    receiving = resolve(lib, "NDIlib_recv_destroy", &f.recvDestroy) && receiving;
    receiving = resolve(lib, "NDIlib_recv_capture_v2", &f.recvCapture) && receiving;
    receiving = resolve(lib, "NDIlib_recv_free_video_v2", &f.recvFreeVideo) && receiving;
    bool sending = resolve(lib, "NDIlib_send_create", &f.sendCreate);
    sending = resolve(lib, "NDIlib_send_destroy", &f.sendDestroy) && sending;
    sending = resolve(lib, "NDIlib_send_send_video_v2", &f.sendVideo) && sending;
    sending = resolve(lib, "NDIlib_send_send_video_async_v2", &f.sendVideoAsync) && sending;
    m_receivingComplete = receiving;
    m_sendingComplete = sending && f.initialize;
    if (f.initialize)
        m_initialized = f.initialize();
}

bool NdiRuntime::receiverReady(QString *error)
{
    QMutexLocker locker(&m_mutex);
    load();
    QString text;
    if (!m_loaded)
        text = tr("NDI receiver support is unavailable:") + QLatin1Char(' ') + m_loaderError;
    else if (!m_receivingComplete)
        text = tr("Required NDI entry points were not found.");
    else if (!m_initialized)
        text = tr("NDI runtime initialization failed.");
    if (error)
        *error = text;
    return text.isEmpty();
}

bool NdiRuntime::senderReady(QString *error)
{
    QMutexLocker locker(&m_mutex);
    load();
    QString text;
    if (!m_loaded)
        text = tr("NDI sender support is unavailable:") + QLatin1Char(' ') + m_loaderError;
    else if (!m_sendingComplete)
        text = tr("Required NDI sender entry points were not found.");
    else if (!m_initialized)
        text = tr("NDI runtime initialization failed.");
    if (error)
        *error = text;
    return text.isEmpty();
}

int NdiRuntime::loadAttempts() const
{
    QMutexLocker locker(&m_mutex);
    return m_attempts;
}

QString NdiRuntime::loadedFrom() const
{
    QMutexLocker locker(&m_mutex);
    return m_loadedFrom;
}
