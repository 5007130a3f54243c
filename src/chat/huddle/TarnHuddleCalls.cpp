#include "chat/huddle/TarnHuddleCalls.h"

#include "chat/huddle/TarnHuddleJoin.h"
#include "chat/huddle/TarnHuddleLeave.h"
#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace {

TarnPath huddlePath(const QString &room, QLatin1StringView action)
{
    return TarnPath(u"/api/rooms"_s).id(room).segment("huddle"_L1).segment(action);
}

} // namespace

namespace TarnHuddleCalls {

QCoro::Task<TarnHuddleJoined> joinHuddle(TarnAPI &api, const QString &room, const QList<QString> &invite)
{
    return api.request<TarnHuddleJoined>(huddlePath(room, "join"_L1), TarnMethod::Post, TarnHuddleJoin { invite });
}

QCoro::Task<TarnOK> leaveHuddle(TarnAPI &api, const QString &room, const QString &sid)
{
    return api.request<TarnOK>(huddlePath(room, "leave"_L1), TarnMethod::Post, TarnHuddleLeave { sid });
}

QCoro::Task<> setHuddleState(TarnAPI &api, const QString &room, const TarnHuddleMarks &marks)
{
    return api.request<void>(huddlePath(room, "state"_L1), TarnMethod::Post, marks);
}

QCoro::Task<TarnHuddlePolled> poll(TarnAPI &api, const QString &room, const TarnHuddlePoll &poll)
{
    return api.request<TarnHuddlePolled>(huddlePath(room, "poll"_L1), TarnMethod::Post, poll);
}

QCoro::Task<> signal(TarnAPI &api, const QString &room, const TarnHuddleSignalSend &signal)
{
    return api.request<void>(huddlePath(room, "signal"_L1), TarnMethod::Post, signal);
}

QCoro::Task<TarnHuddleList> huddles(TarnAPI &api)
{
    return api.request<TarnHuddleList>(TarnPath(u"/api/huddles"_s));
}

} // namespace TarnHuddleCalls
