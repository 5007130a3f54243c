#include "service/TarnRedirectPolicy.h"

#include "service/Config.h"

#include <QNetworkReply>

std::optional<QUrl> TarnRedirectPolicy::follow(const QNetworkReply &reply) const
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status != 301 && status != 302 && status != 303 && status != 307 && status != 308)
        return std::nullopt;
    // The raw header: the typed one drops relative targets such as "/login".
    const QUrl location(QString::fromUtf8(reply.rawHeader("Location")), QUrl::StrictMode);
    if (!location.isValid())
        return std::nullopt;
    const QUrl target = reply.url().resolved(location);
    if (!m_config.isServiceURL(target))
        return std::nullopt;
    return target;
}
