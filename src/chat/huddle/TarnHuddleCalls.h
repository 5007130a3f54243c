#pragma once

#include "chat/huddle/TarnHuddleJoined.h"
#include "chat/huddle/TarnHuddleList.h"
#include "chat/huddle/TarnHuddleMarks.h"
#include "chat/huddle/TarnHuddlePoll.h"
#include "chat/huddle/TarnHuddlePolled.h"
#include "chat/huddle/TarnHuddleSignalSend.h"
#include "service/TarnOK.h"

#include <QCoroTask>
#include <QList>
#include <QString>

class TarnAPI;

// The huddle endpoints under "/api/rooms/{room}/huddle" and "/api/huddles".
// The room id is escaped by TarnPath.
namespace TarnHuddleCalls {

// Starts the room's huddle or joins the one running, ringing `invite`.
QCoro::Task<TarnHuddleJoined> joinHuddle(TarnAPI &api, const QString &room, const QList<QString> &invite);
QCoro::Task<TarnOK> leaveHuddle(TarnAPI &api, const QString &room, const QString &sid);
// Only success matters: the new state reaches every client through its poll.
QCoro::Task<> setHuddleState(TarnAPI &api, const QString &room, const TarnHuddleMarks &marks);
// Answered as soon as something is newer than `after` or `version`, else after `wait` seconds.
QCoro::Task<TarnHuddlePolled> poll(TarnAPI &api, const QString &room, const TarnHuddlePoll &poll);
QCoro::Task<> signal(TarnAPI &api, const QString &room, const TarnHuddleSignalSend &signal);
QCoro::Task<TarnHuddleList> huddles(TarnAPI &api);

} // namespace TarnHuddleCalls
