#pragma once

#include <QByteArray>
#include <QString>

// Secrets of the service: session tokens, CSRF tokens, sign-in codes and the
// proof-key check. Tokens come from the operating system's random source and
// are stored only as their SHA-256.
namespace WorkspaceTokens {

// `bytes` random bytes as URL-safe Base64 without padding.
[[nodiscard]] QString random(int bytes = 32);

// Hex SHA-256 of the text's UTF-8 bytes: the form a token takes in storage.
[[nodiscard]] QString hash(const QString &token);

// The CSRF token of the session with this token: unguessable without it,
// and never stored in the clear.
[[nodiscard]] QString csrfOf(const QString &sessionToken);

// The S256 proof-key challenge of a verifier.
[[nodiscard]] QString challengeOf(const QString &verifier);

// A challenge as S256 produces it: 43 characters of URL-safe Base64.
[[nodiscard]] bool isChallenge(const QString &challenge);

// Comparison whose time does not depend on where the texts differ.
[[nodiscard]] bool equal(const QString &a, const QString &b);

} // namespace WorkspaceTokens
