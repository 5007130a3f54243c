#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One recipient of an envelope. Signers sign in `order` (from 1): `status`
// is "waiting" until the ones before have signed, "sent" while it is their
// turn (with `sign_url`, their one-use signing link, for the sender to hand
// on), "expired" when that link expired unused, then "signed" or "declined"
// with the time, the reason of a decline and the address it came from.
struct TarnEnvelopeSigner {
    qint64 order = 0;
    QString name;
    QString email;
    QString status;
    std::optional<QString> signed_at {};
    std::optional<QString> declined_at {};
    std::optional<QString> decline_reason {};
    std::optional<QString> answered_from {};
    std::optional<QString> sign_url {};
    std::optional<QString> link_expires_at {};

    static TarnEnvelopeSigner fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnEnvelopeSigner &, const TarnEnvelopeSigner &) = default;
};
