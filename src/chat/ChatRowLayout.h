#pragma once

#include "chat/TarnMessage.h"

#include <QList>

#include <optional>

// What stands above a timeline row and whether the row starts a group: a
// message joins the group above only when it is by the same author as a
// message that is not deleted, on the same day, less than five minutes
// later, and not the first unread one.
struct ChatRowLayout {
    // A day divider stands above the row.
    bool day = false;
    // The "New messages" divider stands above the row.
    bool new_ = false;
    // The row shows avatar, author and time.
    bool header = false;

    // Row `index` of a room's messages (oldest first); `newFrom` is the seq
    // of the first unread message.
    [[nodiscard]] static ChatRowLayout compute(
        const QList<TarnMessage> &messages, qsizetype index, std::optional<qint64> newFrom);
    // Every row at once, each time read once.
    [[nodiscard]] static QList<ChatRowLayout> computeAll(
        const QList<TarnMessage> &messages, std::optional<qint64> newFrom);

    friend bool operator==(const ChatRowLayout &, const ChatRowLayout &) = default;
};
