#include "net/ApiConfig.h"

#include <QtGlobal>

namespace vg::net {
namespace {

QString withTrailingSlash(QString url)
{
    url = url.trimmed();
    if (!url.endsWith(QLatin1Char('/')))
        url += QLatin1Char('/');
    return url;
}

QString environment(const char *name)
{
    return qEnvironmentVariable(name).trimmed();
}

} // namespace

QString defaultApiBaseUrl()
{
    return withTrailingSlash(builtInApiBaseUrl());
}

QString resolveApiBaseUrl(const QString &configured)
{
    for (const QString &candidate : {configured.trimmed(), environment("VANTREOGUIDE_API_BASE_URL"),
                                     environment("VANTREOGUIDE_UPDATE_URL")}) {
        if (!candidate.isEmpty())
            return withTrailingSlash(candidate);
    }
    return defaultApiBaseUrl();
}

QString clientToken()
{
    const QString primary = environment("VANTREOGUIDE_CLIENT_API_KEY");
    return primary.isEmpty() ? environment("CLIENT_API_KEY") : primary;
}

QByteArray userAgent(const BuildInfo &build)
{
    return QStringLiteral("VantreoGuide/%1 build/%2").arg(build.version, build.buildNumber).toUtf8();
}

QNetworkRequest makeApiRequest(const QUrl &url, const BuildInfo &build, const QString &token, int timeoutMs)
{
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::UserAgentHeader, userAgent(build));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/json"));
    if (!token.trimmed().isEmpty())
        request.setRawHeader(QByteArrayLiteral("X-Client-Token"), token.trimmed().toUtf8());
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(kMaxRedirects);
    request.setTransferTimeout(timeoutMs);
    return request;
}

QUrl apiEndpoint(const QString &baseUrl, const QString &relative)
{
    return QUrl(withTrailingSlash(baseUrl)).resolved(QUrl(relative));
}

} // namespace vg::net
