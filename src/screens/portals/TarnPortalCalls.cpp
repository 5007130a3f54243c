#include "screens/portals/TarnPortalCalls.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnPortalCalls {

namespace {

TarnPath portal(const QString &client)
{
    return TarnPath(u"/api/portals"_s).id(client);
}

} // namespace

QCoro::Task<TarnPortalDashboard> portalDashboard(TarnAPI &api)
{
    return api.request<TarnPortalDashboard>(TarnPath(u"/api/portals"_s));
}

QCoro::Task<TarnOK> acknowledgePortalAlert(TarnAPI &api, const QString &client, const QString &alert)
{
    return api.request<TarnOK>(
        portal(client).segment("alerts"_L1).id(alert).segment("acknowledge"_L1), TarnMethod::Post);
}

QCoro::Task<TarnPortalAccountDetail> portalAccountDetail(TarnAPI &api, const QString &client)
{
    return api.request<TarnPortalAccountDetail>(portal(client));
}

QCoro::Task<TarnPortalAccount> updatePortalAccount(
    TarnAPI &api, const QString &client, const TarnPortalAccountUpdate &update)
{
    return api.request<TarnPortalAccount>(portal(client), TarnMethod::Patch, update);
}

QCoro::Task<TarnClientProfile> clientProfile(TarnAPI &api, const QString &client)
{
    return api.request<TarnClientProfile>(portal(client).segment("profile"_L1));
}

QCoro::Task<QList<TarnPerformanceMonth>> clientPerformance(TarnAPI &api, const QString &client)
{
    return api.request<QList<TarnPerformanceMonth>>(portal(client).segment("performance"_L1));
}

QCoro::Task<QList<TarnPerformanceMonth>> syncClientPerformance(TarnAPI &api, const QString &client)
{
    return api.request<QList<TarnPerformanceMonth>>(
        portal(client).segment("performance"_L1).segment("sync"_L1), TarnMethod::Post);
}

QCoro::Task<TarnPortalAccount> refreshPortal(TarnAPI &api, const QString &client)
{
    return api.request<TarnPortalAccount>(portal(client).segment("refresh"_L1), TarnMethod::Post);
}

QCoro::Task<TarnCreatedID> invitePortalPerson(TarnAPI &api, const QString &client, const TarnPortalInvite &invite)
{
    return api.request<TarnCreatedID>(portal(client).segment("people"_L1), TarnMethod::Post, invite);
}

QCoro::Task<TarnOK> removePortalPerson(TarnAPI &api, const QString &client, const QString &person)
{
    return api.request<TarnOK>(portal(client).segment("people"_L1).id(person), TarnMethod::Delete);
}

QCoro::Task<TarnPortalLink> portalPersonLink(TarnAPI &api, const QString &client, const QString &person)
{
    return api.request<TarnPortalLink>(
        portal(client).segment("people"_L1).id(person).segment("link"_L1), TarnMethod::Post);
}

QCoro::Task<TarnPortalKey> issuePortalLeadKey(TarnAPI &api, const QString &client)
{
    return api.request<TarnPortalKey>(portal(client).segment("lead-key"_L1), TarnMethod::Post);
}

QCoro::Task<TarnPortalKey> issuePortalPiloKey(TarnAPI &api, const QString &client)
{
    return api.request<TarnPortalKey>(portal(client).segment("pilo-key"_L1), TarnMethod::Post);
}

QCoro::Task<TarnOK> revokePortalPiloKey(TarnAPI &api, const QString &client)
{
    return api.request<TarnOK>(portal(client).segment("pilo-key"_L1), TarnMethod::Delete);
}

QCoro::Task<TarnCreatedID> createPortalReport(TarnAPI &api, const QString &client, const TarnPortalReportDraft &draft)
{
    return api.request<TarnCreatedID>(portal(client).segment("reports"_L1), TarnMethod::Post, draft);
}

QCoro::Task<TarnPortalReport> portalReport(TarnAPI &api, const QString &client, const QString &report)
{
    return api.request<TarnPortalReport>(portal(client).segment("reports"_L1).id(report));
}

QCoro::Task<TarnPortalReport> setPortalReportPublished(
    TarnAPI &api, const QString &client, const QString &report, const TarnPortalReportPublishing &publishing)
{
    return api.request<TarnPortalReport>(
        portal(client).segment("reports"_L1).id(report), TarnMethod::Patch, publishing);
}

QCoro::Task<TarnOK> deletePortalReport(TarnAPI &api, const QString &client, const QString &report)
{
    return api.request<TarnOK>(portal(client).segment("reports"_L1).id(report), TarnMethod::Delete);
}

QCoro::Task<TarnOK> deletePortalWork(TarnAPI &api, const QString &client, const QString &work)
{
    return api.request<TarnOK>(portal(client).segment("work"_L1).id(work), TarnMethod::Delete);
}

} // namespace TarnPortalCalls
