#pragma once

#include "chat/huddle/TarnHuddleParticipant.h"
#include "shell/NativeKeyedListModel.h"

// The people in the running huddle, one row per connection, so a person on
// two devices shows twice and a mute mark follows its own connection.
class NativeHuddleParticipants : public NativeKeyedListModel<TarnHuddleParticipant, &TarnHuddleParticipant::conn> {
    Q_OBJECT

public:
    explicit NativeHuddleParticipants(QObject *parent = nullptr);
};
