#pragma once

#include "chat/ChatRowLayout.h"
#include "chat/TarnMessage.h"

#include <QString>

// One row of a timeline or thread as drawn: the message, what stands above
// it and its labels.
struct ChatTimelineRow {
    TarnMessage message;
    ChatRowLayout layout;
    QString dayLabel;
    QString timeLabel;

    friend bool operator==(const ChatTimelineRow &, const ChatTimelineRow &) = default;
};
