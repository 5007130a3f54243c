#pragma once

#include "chat/ChatRoomRow.h"
#include "shell/NativeKeyedListModel.h"

inline const QString &chatRoomKey(const ChatRoomRow &row)
{
    return row.room.id;
}

// The room list: channels and direct messages in the service's order, with
// unread counts and a preview of each room's newest message.
class NativeChatRoomModel : public NativeKeyedListModel<ChatRoomRow, &chatRoomKey> {
    Q_OBJECT

public:
    explicit NativeChatRoomModel(QObject *parent = nullptr);
};
