#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// The signed image proxy. A signed query names the image's URL, when it
// expires and an HMAC of both under the workspace's secret, so only URLs
// the service signed for a mail view are ever fetched, and only for a while.
// The images come from a folder that stands in for the remote hosts
// (":/mail-seed/remote/HOST/PATH"); nothing is fetched from the network.
namespace MailImages {

// How long a signed query stays good.
inline constexpr qint64 lifetimeSeconds = 60 * 60;

// "u=<URL in base64url>&e=<expiry, seconds since the epoch>&s=<HMAC in hex>".
[[nodiscard]] QString sign(const QByteArray &secret, const QString &url, qint64 expiresAtSeconds);
// The URL of a query that is signed with the secret and not expired.
[[nodiscard]] std::optional<QString> verify(
    const QByteArray &secret, const QString &u, const QString &e, const QString &s, qint64 nowSeconds);

struct Image {
    QByteArray data;
    QByteArray mime;
};
// The stand-in host's image for a URL; nothing when it has none.
[[nodiscard]] std::optional<Image> load(const QString &url);

} // namespace MailImages
