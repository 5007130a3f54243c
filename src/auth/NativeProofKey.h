#pragma once

#include <QString>

#include <optional>

// The proof key of a code exchange: a secret verifier that only this app
// holds, and its SHA-256 challenge that travels through the browser. Whoever
// catches the code on its way back cannot trade it without the verifier.
struct NativeProofKey {
    QString verifier; // 48 secure random bytes, URL-safe Base64 without padding (64 characters)
    QString challenge; // SHA-256 of the verifier's bytes, encoded the same way (43 characters)

    // Nothing when the system's secure random source fails.
    [[nodiscard]] static std::optional<NativeProofKey> make();
    [[nodiscard]] static QString challengeFor(const QString &verifier);
};
