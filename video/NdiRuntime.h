#pragma once

#include "video/NdiTypes.h"

#include <QMutex>
#include <QString>
#include <QStringList>

class QLibrary;

// The NDI runtime, bound at run time. Loading is tried once per binding; its outcome (the
// entry points, or the failure text) is kept and the library is never unloaded.
class NdiRuntime
{
public:
    // The process's binding over defaultCandidates().
    static NdiRuntime &instance();
    // Library names in the order tried: each runtime directory named by NDI_RUNTIME_DIR_V6 or
    // NDI_RUNTIME_DIR_V5 first, then the plain names for the loader's own search.
    static QStringList defaultCandidates();

    explicit NdiRuntime(const QStringList &candidates);
    ~NdiRuntime();
    NdiRuntime(const NdiRuntime &) = delete;
    NdiRuntime &operator=(const NdiRuntime &) = delete;

    // Loads on first use. False with the receiving or sending side's failure text.
    bool receiverReady(QString *error);
    bool senderReady(QString *error);

    // How often the library was looked for (0 or 1 whatever the number of uses).
    int loadAttempts() const;
    QString loadedFrom() const;

    struct Functions
    {
        NdiInitializeFn initialize = nullptr;
        NdiFindCreateV2Fn findCreate = nullptr;
        NdiFindDestroyFn findDestroy = nullptr;
        NdiFindWaitForSourcesFn findWaitForSources = nullptr;
        NdiFindGetCurrentSourcesFn findGetCurrentSources = nullptr;
        NdiRecvCreateV3Fn recvCreate = nullptr;
        NdiRecvConnectFn recvConnect = nullptr;
        NdiRecvDestroyFn recvDestroy = nullptr;
        NdiRecvCaptureV2Fn recvCapture = nullptr;
        NdiRecvFreeVideoV2Fn recvFreeVideo = nullptr;
        NdiSendCreateFn sendCreate = nullptr;
        NdiSendDestroyFn sendDestroy = nullptr;
        NdiSendVideoV2Fn sendVideo = nullptr;
        NdiSendVideoV2Fn sendVideoAsync = nullptr;
    };
    // Valid once receiverReady() or senderReady() returned true.
    const Functions &functions() const { return m_functions; }

private:
    void load();

    QStringList m_candidates;
    mutable QMutex m_mutex;
    QLibrary *m_library = nullptr;
    Functions m_functions;
    bool m_attempted = false;
    int m_attempts = 0;
    bool m_loaded = false;
    bool m_receivingComplete = false;
    bool m_sendingComplete = false;
    bool m_initialized = false;
    QString m_loaderError;
    QString m_loadedFrom;
};
