#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One recipient of an envelope. Signers sign in `order` (from 1): `status`
// is "waiting" until the ones before have signed, "sent" while it is their
// turn, then "signed" with the time they signed.
struct TarnEnvelopeSigner {
    qint64 order = 0;
    QString name;
    QString email;
    QString status;
    std::optional<QString> signed_at {};

    static TarnEnvelopeSigner fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnEnvelopeSigner &, const TarnEnvelopeSigner &) = default;
};
