#pragma once

#include "mail/TarnMailSignedImages.h"

#include <QList>
#include <QString>

// Remote images of a mail are never fetched from their host: the service
// signs each URL, and the image is fetched through its proxy.
namespace TarnMailProxy {

// The proxy path when the service names none.
inline constexpr QLatin1StringView defaultPath = QLatin1StringView("/api/tarn-mail/img?");

struct Path {
    QString url; // as requested
    QString path; // relative to the service, to hand to mailProxyImage

    friend bool operator==(const Path &, const Path &) = default;
};

// For each requested URL with a signed token, in the requested order, the
// path that fetches it. URLs without a token are skipped, and so is a token
// that is not a plain query (it could not stay on the proxy's path), and
// every token when the service's path prefix is not one of its own.
[[nodiscard]] QList<Path> proxyPaths(const QList<QString> &requested, const TarnMailSignedImages &signedImages);

} // namespace TarnMailProxy
