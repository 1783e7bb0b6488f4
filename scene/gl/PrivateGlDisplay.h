#pragma once

#include <QString>
#include <QtGlobal>

// Without a display the off-screen platform has no way to make an OpenGL context on this
// system (the GL integration of the off-screen platform needs an X server; EGL surfaceless
// is not offered by the toolkit's platforms). When no display is set, this starts a private
// virtual X server (Xvfb) and points DISPLAY at it before the first context is made; the
// server ends by itself when this process closes its last connection.
//
// Returns true when a display is available afterwards (already set, or started). Must run
// before the first OpenGL context is created.
// startedServerPid receives the server's process id when one was started (else 0).
bool ensureGlDisplay(QString *error, qint64 *startedServerPid = nullptr);
// Ends a server started above whose display was never used (nothing connected to it).
void stopPrivateGlDisplay(qint64 pid);
