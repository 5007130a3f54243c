#pragma once

#include "chat/TarnAttachment.h"
#include "chat/TarnReaction.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// One chat message as the service sends it. A deleted message keeps its
// record (and its place in the room) with `deleted_at` set.
struct TarnMessage {
    QString id;
    QString user_id;
    QString author;
    QString body;
    QString created_at;
    // Strictly increasing within the room: the paging cursor and read mark.
    qint64 seq = 0;
    std::optional<QString> deleted_at {};
    qint64 reply_count = 0;
    QList<TarnAttachment> attachments {};
    std::optional<QString> parent_id {};
    // Sent back with edits and deletions, so a change made elsewhere first wins.
    std::optional<qint64> version {};
    std::optional<QList<TarnReaction>> reactions {};
    std::optional<bool> saved {};

    static TarnMessage fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnMessage &, const TarnMessage &) = default;
};
