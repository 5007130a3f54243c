#pragma once

#include "chat/ChatTimelineRow.h"
#include "shell/NativeKeyedListModel.h"

#include <QDateTime>
#include <QList>

#include <optional>

inline const QString &chatTimelineKey(const ChatTimelineRow &row)
{
    return row.message.id;
}

// The rows of a room's timeline or of a thread, oldest first, each with its
// layout and labels. Messages paged in front, a new message at the end or
// one edited message change only the rows they touch.
class NativeChatTimelineModel : public NativeKeyedListModel<ChatTimelineRow, &chatTimelineKey> {
    Q_OBJECT

public:
    explicit NativeChatTimelineModel(QObject *parent = nullptr);

    // `newFrom` is the seq of the first unread message; `now` decides
    // "Today" and "Yesterday".
    void setMessages(const QList<TarnMessage> &messages, std::optional<qint64> newFrom, const QDateTime &now);

    [[nodiscard]] static QList<ChatTimelineRow> rowsOf(
        const QList<TarnMessage> &messages, std::optional<qint64> newFrom, const QDateTime &now);
};
