#include "screens/company/TarnCompanyCalls.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnCompanyCalls {

QCoro::Task<TarnOK> renameMyAccount(TarnAPI &api, const TarnAccountRename &rename)
{
    return api.request<TarnOK>(TarnPath(u"/api/team/me"_s), TarnMethod::Patch, rename);
}

QCoro::Task<QList<TarnTeamMember>> peopleSearch(TarnAPI &api, const QString &query)
{
    return api.request<QList<TarnTeamMember>>(TarnPath(u"/api/team/people"_s).query("q"_L1, query));
}

QCoro::Task<TarnCreatedID> createTeamMember(TarnAPI &api, const TarnTeamMemberDraft &draft)
{
    return api.request<TarnCreatedID>(TarnPath(u"/api/team/people"_s), TarnMethod::Post, draft);
}

QCoro::Task<TarnOK> updateTeamAccess(TarnAPI &api, const QString &person, const TarnTeamAccess &access)
{
    return api.request<TarnOK>(
        TarnPath(u"/api/team/people"_s).id(person).segment("access"_L1), TarnMethod::Patch, access);
}

QCoro::Task<QList<TarnSop>> companySops(TarnAPI &api)
{
    return api.request<QList<TarnSop>>(TarnPath(u"/api/company/sops"_s));
}

QCoro::Task<QList<TarnThoughtPost>> thoughtBoard(TarnAPI &api)
{
    return api.request<QList<TarnThoughtPost>>(TarnPath(u"/api/company/thoughts"_s));
}

QCoro::Task<TarnOK> markPostRead(TarnAPI &api, const QString &post)
{
    return api.request<TarnOK>(TarnPath(u"/api/company/thoughts"_s).id(post).segment("read"_L1), TarnMethod::Post);
}

QCoro::Task<TarnThoughtPost> decidePost(TarnAPI &api, const QString &post, const TarnPostDecision &decision)
{
    return api.request<TarnThoughtPost>(
        TarnPath(u"/api/company/thoughts"_s).id(post).segment("decision"_L1), TarnMethod::Post, decision);
}

} // namespace TarnCompanyCalls
