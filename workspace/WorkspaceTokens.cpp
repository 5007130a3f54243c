#include "workspace/WorkspaceTokens.h"

#include <QCryptographicHash>
#include <QList>
#include <QMessageAuthenticationCode>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace {

constexpr auto base64url = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

} // namespace

namespace WorkspaceTokens {

QString random(int bytes)
{
    QList<quint32> words((bytes + 3) / 4);
    QRandomGenerator::system()->fillRange(words.data(), words.size());
    const QByteArray raw(reinterpret_cast<const char *>(words.constData()), bytes);
    return QString::fromLatin1(raw.toBase64(base64url));
}

QString hash(const QString &token)
{
    return QString::fromLatin1(QCryptographicHash::hash(token.toUtf8(), QCryptographicHash::Sha256).toHex());
}

QString csrfOf(const QString &sessionToken)
{
    const QByteArray mac = QMessageAuthenticationCode::hash("csrf", sessionToken.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(mac.left(24).toBase64(base64url));
}

QString challengeOf(const QString &verifier)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(verifier.toUtf8(), QCryptographicHash::Sha256).toBase64(base64url));
}

bool isChallenge(const QString &challenge)
{
    if (challenge.size() != 43)
        return false;
    for (const QChar c : challenge) {
        const bool allowed = (c >= 'A'_L1 && c <= 'Z'_L1) || (c >= 'a'_L1 && c <= 'z'_L1)
            || (c >= '0'_L1 && c <= '9'_L1) || c == '-'_L1 || c == '_'_L1;
        if (!allowed)
            return false;
    }
    return true;
}

bool equal(const QString &a, const QString &b)
{
    const QByteArray x = a.toUtf8();
    const QByteArray y = b.toUtf8();
    if (x.size() != y.size())
        return false;
    unsigned char diff = 0;
    for (qsizetype i = 0; i < x.size(); ++i)
        diff |= static_cast<unsigned char>(x.at(i) ^ y.at(i));
    return diff == 0;
}

} // namespace WorkspaceTokens
