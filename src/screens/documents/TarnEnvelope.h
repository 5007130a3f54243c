#pragma once

#include "screens/documents/TarnEnvelopeSigner.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// A document out for signature. `status` is "draft" until it is sent, then
// "sent" until every signer has signed ("completed") or one declined
// ("declined"). `signers` are in signing order.
struct TarnEnvelope {
    QString id;
    QString document_id;
    QString title;
    QString message;
    QString status;
    QString sender_name;
    QString created_at;
    std::optional<QString> sent_at {};
    std::optional<QString> completed_at {};
    QList<TarnEnvelopeSigner> signers;

    static TarnEnvelope fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnEnvelope &, const TarnEnvelope &) = default;
};
