#include "chat/NativeChatRoomModel.h"

#include "chat/TarnInitials.h"

using Row = ChatRoomRow;

NativeChatRoomModel::NativeChatRoomModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "roomId", [](const Row &r) { return r.room.id; } },
            { "name", [](const Row &r) { return r.room.name; } },
            { "initials", [](const Row &r) { return TarnInitials::letters(r.room.name); } },
            { "kind", [](const Row &r) { return r.room.kind; } },
            { "unread", [](const Row &r) { return r.room.unread; } },
            { "preview", [](const Row &r) { return r.preview; } },
            { "previewAuthor", [](const Row &r) { return r.previewAuthor; } },
        },
        parent)
{
}
