#include "mail/TarnMailProxy.h"

using namespace Qt::StringLiterals;

namespace {

// Unreserved characters, percent escapes and the separators of a query:
// nothing that could end the query ("#"), leave the path or add a space.
bool isPlainQuery(const QString &query)
{
    if (query.isEmpty())
        return false;
    for (const QChar c : query) {
        const char16_t u = c.unicode();
        const bool plain = (u >= u'a' && u <= u'z') || (u >= u'A' && u <= u'Z') || (u >= u'0' && u <= u'9') || u == u'-'
            || u == u'.' || u == u'_' || u == u'~' || u == u'%' || u == u'=' || u == u'&';
        if (!plain)
            return false;
    }
    return true;
}

bool isProxyPrefix(const QString &path)
{
    return path.startsWith("/api/tarn-mail/"_L1) && path.endsWith(u'?') && path.count(u'?') == 1
        && !path.contains(".."_L1) && !path.contains(u'#') && !path.contains(u' ');
}

} // namespace

namespace TarnMailProxy {

QList<Path> proxyPaths(const QList<QString> &requested, const TarnMailSignedImages &signedImages)
{
    const QString prefix = signedImages.path.value_or(QString(defaultPath));
    if (!isProxyPrefix(prefix))
        return {};
    QList<Path> out;
    for (const QString &url : requested) {
        const auto token = signedImages.images.constFind(url);
        if (token == signedImages.images.constEnd() || !isPlainQuery(*token))
            continue;
        out.append({ url, prefix + *token });
    }
    return out;
}

} // namespace TarnMailProxy
