#pragma once

#include "chat/TarnRoom.h"

#include <QString>

// One entry of the room list as drawn: the room and its newest message.
struct ChatRoomRow {
    TarnRoom room;
    QString preview;
    QString previewAuthor;

    friend bool operator==(const ChatRoomRow &, const ChatRoomRow &) = default;
};
