#pragma once

#include "net/BuildInfo.h"

#include <QJsonObject>

namespace vg::net {

// The body of "api/clients/startup". Reads the applied-build marker beside the executable
// and the host's name, so it is built off the user-interface thread.
QJsonObject clientInfoBody(const BuildInfo &build, const QString &applicationDir);

} // namespace vg::net
