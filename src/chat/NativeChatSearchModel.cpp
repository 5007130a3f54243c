#include "chat/NativeChatSearchModel.h"

#include "chat/MessagesTime.h"

using Hit = TarnMessageSearchHit;

NativeChatSearchModel::NativeChatSearchModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "messageId", [](const Hit &h) { return h.id; } },
            { "roomId", [](const Hit &h) { return h.room_id; } },
            { "parentId", [](const Hit &h) { return h.parent_id.value_or(QString()); } },
            { "body", [](const Hit &h) { return h.body; } },
            { "author", [](const Hit &h) { return h.author; } },
            { "roomName", [](const Hit &h) { return h.room_name; } },
            { "dayLabel",
                [](const Hit &h) {
                    const std::optional<QDateTime> date = MessagesTime::date(h.created_at);
                    return date ? MessagesTime::dayLabel(*date, QDateTime::currentDateTime()) : QString();
                } },
        },
        parent)
{
}
