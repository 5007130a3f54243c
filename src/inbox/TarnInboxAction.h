#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

// One thread action: `action` is the path segment after the thread
// ("/api/inbox/ID/assign"), the other fields are the JSON keys of its body,
// each sent only when set. Built by the named constructors below, one per
// action the workspace knows.
struct TarnInboxAction {
    QString action;
    std::optional<QString> owner_id {};
    std::optional<QString> until {};
    std::optional<QString> body {};
    std::optional<QString> nonce {};
    std::optional<QList<QString>> mentions {};
    std::optional<QString> entry_id {};

    [[nodiscard]] static TarnInboxAction assign(const QString &ownerID);
    [[nodiscard]] static TarnInboxAction clear();
    // `until` is an ISO-8601 time with its offset.
    [[nodiscard]] static TarnInboxAction snooze(const QString &until);
    [[nodiscard]] static TarnInboxAction done();
    [[nodiscard]] static TarnInboxAction reopen();
    // The nonce is made once per reply and kept for its retries, so the
    // service stores a resent reply only once.
    [[nodiscard]] static TarnInboxAction reply(
        const QString &text, const QString &nonce, const QList<QString> &mentions);
    [[nodiscard]] static TarnInboxAction discard(const QString &entryID);

    [[nodiscard]] QJsonObject toJSON() const;

    friend bool operator==(const TarnInboxAction &, const TarnInboxAction &) = default;
};
