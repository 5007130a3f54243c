#include "chat/huddle/NativeHuddleParticipants.h"

NativeHuddleParticipants::NativeHuddleParticipants(QObject *parent)
    : NativeKeyedListModel(
        {
            { "name", [](const TarnHuddleParticipant &p) { return QVariant(p.name); } },
            { "userID", [](const TarnHuddleParticipant &p) { return QVariant(p.user_id); } },
            { "conn", [](const TarnHuddleParticipant &p) { return QVariant(p.conn); } },
            { "muted", [](const TarnHuddleParticipant &p) { return QVariant(p.muted); } },
            { "video", [](const TarnHuddleParticipant &p) { return QVariant(p.video); } },
            { "screen", [](const TarnHuddleParticipant &p) { return QVariant(p.screen); } },
        },
        parent)
{
}
