#include "workspace/routes/MailImages.h"

#include "workspace/WorkspaceTokens.h"

#include <QFile>
#include <QMessageAuthenticationCode>
#include <QMimeDatabase>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

QString mac(const QByteArray &secret, const QString &url, qint64 expiresAtSeconds)
{
    const QByteArray message = url.toUtf8() + '\n' + QByteArray::number(expiresAtSeconds);
    return QString::fromLatin1(QMessageAuthenticationCode::hash(message, secret, QCryptographicHash::Sha256).toHex());
}

constexpr auto base64url = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

} // namespace

namespace MailImages {

QString sign(const QByteArray &secret, const QString &url, qint64 expiresAtSeconds)
{
    return u"u=%1&e=%2&s=%3"_s.arg(QString::fromLatin1(url.toUtf8().toBase64(base64url)))
        .arg(expiresAtSeconds)
        .arg(mac(secret, url, expiresAtSeconds));
}

std::optional<QString> verify(
    const QByteArray &secret, const QString &u, const QString &e, const QString &s, qint64 nowSeconds)
{
    const QByteArray::FromBase64Result decoded
        = QByteArray::fromBase64Encoding(u.toLatin1(), base64url | QByteArray::AbortOnBase64DecodingErrors);
    bool number = false;
    const qint64 expires = e.toLongLong(&number);
    if (!decoded || !number || expires <= nowSeconds)
        return std::nullopt;
    const QString url = QString::fromUtf8(decoded.decoded);
    if (!WorkspaceTokens::equal(mac(secret, url, expires), s))
        return std::nullopt;
    return url;
}

std::optional<Image> load(const QString &url)
{
    const QUrl parsed(url, QUrl::StrictMode);
    const QString path = parsed.path();
    if (!parsed.isValid() || (parsed.scheme() != "https"_L1 && parsed.scheme() != "http"_L1) || parsed.host().isEmpty()
        || path.contains(".."_L1) || path.contains("//"_L1) || !path.startsWith(u'/'))
        return std::nullopt;
    QFile file(u":/mail-seed/remote/"_s + parsed.host().toLower() + path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    static const QMimeDatabase mimes;
    const QByteArray data = file.readAll();
    return Image { data, mimes.mimeTypeForFileNameAndData(path, data).name().toLatin1() };
}

} // namespace MailImages
