#include "auth/NativeProofKey.h"

#include <QByteArray>
#include <QCryptographicHash>

#include <array>

#ifdef Q_OS_LINUX
#include <sys/random.h>
#else
#include <QRandomGenerator>
#endif

namespace {

constexpr auto urlSafe = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

bool secureRandom(std::array<char, 48> &bytes)
{
#ifdef Q_OS_LINUX
    // getrandom blocks only until the kernel's pool is first seeded and
    // reports a failure instead of ever answering weak bytes.
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t n = getrandom(bytes.data() + filled, bytes.size() - filled, 0);
        if (n <= 0)
            return false;
        filled += static_cast<std::size_t>(n);
    }
    return true;
#else
    QRandomGenerator::system()->generate(bytes.begin(), bytes.end());
    return true;
#endif
}

} // namespace

std::optional<NativeProofKey> NativeProofKey::make()
{
    std::array<char, 48> bytes {};
    if (!secureRandom(bytes))
        return std::nullopt;
    const QString verifier = QString::fromLatin1(QByteArray(bytes.data(), bytes.size()).toBase64(urlSafe));
    bytes.fill(0);
    return NativeProofKey { verifier, challengeFor(verifier) };
}

QString NativeProofKey::challengeFor(const QString &verifier)
{
    const QByteArray digest = QCryptographicHash::hash(verifier.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toBase64(urlSafe));
}
