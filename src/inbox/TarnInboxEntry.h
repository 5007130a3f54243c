#pragma once

#include "inbox/TarnInboxAttachment.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// One message or event of a thread. `status` is an outbound message's
// delivery state ("queued", "sent", "delivered"); `can_discard` marks an
// unsent draft.
struct TarnInboxEntry {
    QString id;
    QString direction;
    QString body;
    std::optional<QString> author_name {};
    std::optional<QString> message_id {};
    std::optional<QString> provider_key {};
    std::optional<QString> status {};
    QString created_at;
    QList<QString> mentions {};
    QList<TarnInboxAttachment> attachments {};
    bool can_discard = false;

    static TarnInboxEntry fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnInboxEntry &, const TarnInboxEntry &) = default;
};
