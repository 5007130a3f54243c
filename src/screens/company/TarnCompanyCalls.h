#pragma once

#include "screens/company/TarnCompanyRequests.h"
#include "screens/company/TarnSop.h"
#include "screens/company/TarnTeamMember.h"
#include "screens/company/TarnThoughtPost.h"
#include "service/TarnCreatedID.h"
#include "service/TarnOK.h"

#include <QCoroTask>
#include <QList>
#include <QString>

class TarnAPI;

// The company screen's endpoints: the account, the team, the handbook and
// the thought board.
namespace TarnCompanyCalls {

QCoro::Task<TarnOK> renameMyAccount(TarnAPI &api, const TarnAccountRename &rename);
// Everyone whose name, address or role holds `query`; an empty one finds all.
QCoro::Task<QList<TarnTeamMember>> peopleSearch(TarnAPI &api, const QString &query);
QCoro::Task<TarnCreatedID> createTeamMember(TarnAPI &api, const TarnTeamMemberDraft &draft);
QCoro::Task<TarnOK> updateTeamAccess(TarnAPI &api, const QString &person, const TarnTeamAccess &access);
QCoro::Task<QList<TarnSop>> companySops(TarnAPI &api);
QCoro::Task<QList<TarnThoughtPost>> thoughtBoard(TarnAPI &api);
QCoro::Task<TarnOK> markPostRead(TarnAPI &api, const QString &post);
// Answers the post as it now is; a stale `version` is refused.
QCoro::Task<TarnThoughtPost> decidePost(TarnAPI &api, const QString &post, const TarnPostDecision &decision);

} // namespace TarnCompanyCalls
