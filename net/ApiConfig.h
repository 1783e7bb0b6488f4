#pragma once

#include "net/BuildInfo.h"

#include <QNetworkRequest>
#include <QString>
#include <QUrl>

namespace vg::net {

// Request limits shared by every call to the API and every download.
inline constexpr int kApiTimeoutMs = 15000;
inline constexpr int kDownloadStallTimeoutMs = 30000;
inline constexpr int kMaxRedirects = 5;
// The longest the command line waits for one answer.
inline constexpr int kApiTimeoutMsForCli = kApiTimeoutMs + 5000;

// The built-in server, used when neither the settings nor the environment name one.
QString defaultApiBaseUrl();

// The configured URL when set, else "VANTREOGUIDE_API_BASE_URL", else
// "VANTREOGUIDE_UPDATE_URL", else the default; always ending in "/".
QString resolveApiBaseUrl(const QString &configured = QString());

// "VANTREOGUIDE_CLIENT_API_KEY", else "CLIENT_API_KEY", trimmed; empty when neither is set.
QString clientToken();

// "User-Agent" of this build.
QByteArray userAgent(const BuildInfo &build);

// A JSON request to `url` with the client's headers; "X-Client-Token" only when the token
// is not empty. Redirects stay on the same or a safer scheme and are limited in number.
QNetworkRequest makeApiRequest(const QUrl &url, const BuildInfo &build, const QString &token,
                               int timeoutMs = kApiTimeoutMs);

// `relative` ("api/clients/startup") below the base URL.
QUrl apiEndpoint(const QString &baseUrl, const QString &relative);

} // namespace vg::net
