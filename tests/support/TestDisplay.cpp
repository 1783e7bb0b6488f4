#include "support/TestDisplay.h"

#include <QByteArray>

#include <unistd.h>

TestDisplayHold::TestDisplayHold()
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (!platform.isEmpty() && !platform.startsWith("xcb"))
        return;
    const QByteArray display = qgetenv("DISPLAY");
    if (display.isEmpty())
        return;
    // Ten seconds: a reset takes milliseconds, a server that never answers is Qt's to report.
    for (int attempt = 0; attempt < 100; ++attempt) {
        xcb_connection_t *connection = xcb_connect(display.constData(), nullptr);
        if (!xcb_connection_has_error(connection)) {
            m_connection = connection;
            return;
        }
        xcb_disconnect(connection);
        ::usleep(100 * 1000);
    }
}

TestDisplayHold::~TestDisplayHold()
{
    if (m_connection)
        xcb_disconnect(m_connection);
}
