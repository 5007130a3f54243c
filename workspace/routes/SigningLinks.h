#pragma once

#include <QMap>
#include <QSqlDatabase>
#include <QString>

#include <optional>

// The envelopes' signing links and the signers' answers, over
// `documents_links` and `documents_answers`.
//
// A link's token is the HMAC of the link's id under the workspace's signing
// key (`documents_secrets`): the sender's record can show the link again,
// while the links table holds only the token's SHA-256, by which a presented
// token is found. An envelope has at most one live link, the one of the
// signer whose turn it is; making another supersedes it.
class SigningLinks {
public:
    static constexpr qint64 lifeMs = 7LL * 24 * 3600 * 1000;

    enum class State { Unknown, Open, Used, Superseded, Expired };
    struct Found {
        State state = State::Unknown;
        QString envelopeId;
        int position = 0;
    };
    struct Link {
        QString token;
        qint64 expiresAtMs = 0;
        [[nodiscard]] bool expired(qint64 nowMs) const { return expiresAtMs <= nowMs; }
    };
    // `outcome` is "signed" or "declined".
    struct Answer {
        QString outcome;
        qint64 atMs = 0;
        QString typedName;
        QString address;
        QString reason;
    };

    // Makes the tables and the key when missing.
    explicit SigningLinks(QSqlDatabase db);

    [[nodiscard]] Found find(const QString &token) const;
    // The signer's live link, expired or not.
    [[nodiscard]] std::optional<Link> live(const QString &envelopeId, int position) const;
    [[nodiscard]] bool hasLink(const QString &envelopeId, int position) const;
    // A new link for the signer; the envelope's live link is superseded.
    void issue(const QString &envelopeId, int position, qint64 nowMs);
    [[nodiscard]] QMap<int, Answer> answers(const QString &envelopeId) const;
    // Spends the link and keeps the answer; false when the link was spent
    // meanwhile (a second post of the same form).
    [[nodiscard]] bool spend(const QString &token, const QString &envelopeId, int position, const Answer &answer);
    // Keeps an answer given before there were links (the demo's history).
    void keep(const QString &envelopeId, int position, const Answer &answer);
    // Moves the envelope's live link past its expiry (test faults only).
    [[nodiscard]] bool expire(const QString &envelopeId);

private:
    [[nodiscard]] QString tokenOf(const QString &linkId) const;

    QSqlDatabase m_db;
    QByteArray m_key;
};
