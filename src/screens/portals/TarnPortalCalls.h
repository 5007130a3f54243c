#pragma once

#include "screens/portals/TarnClientProfile.h"
#include "screens/portals/TarnPerformanceMonth.h"
#include "screens/portals/TarnPortalAccountDetail.h"
#include "screens/portals/TarnPortalDashboard.h"
#include "screens/portals/TarnPortalKey.h"
#include "screens/portals/TarnPortalLink.h"
#include "screens/portals/TarnPortalRequests.h"
#include "service/TarnCreatedID.h"
#include "service/TarnOK.h"

#include <QCoroTask>
#include <QList>
#include <QString>

class TarnAPI;

// The client portals' endpoints. A portal belongs to a customer and is
// addressed by the customer's id.
namespace TarnPortalCalls {

QCoro::Task<TarnPortalDashboard> portalDashboard(TarnAPI &api);
QCoro::Task<TarnOK> acknowledgePortalAlert(TarnAPI &api, const QString &client, const QString &alert);

QCoro::Task<TarnPortalAccountDetail> portalAccountDetail(TarnAPI &api, const QString &client);
// Answers the account as it now is; a stale `version` is refused.
QCoro::Task<TarnPortalAccount> updatePortalAccount(
    TarnAPI &api, const QString &client, const TarnPortalAccountUpdate &update);
QCoro::Task<TarnClientProfile> clientProfile(TarnAPI &api, const QString &client);
// Oldest month first.
QCoro::Task<QList<TarnPerformanceMonth>> clientPerformance(TarnAPI &api, const QString &client);
QCoro::Task<QList<TarnPerformanceMonth>> syncClientPerformance(TarnAPI &api, const QString &client);
QCoro::Task<TarnPortalAccount> refreshPortal(TarnAPI &api, const QString &client);

QCoro::Task<TarnCreatedID> invitePortalPerson(TarnAPI &api, const QString &client, const TarnPortalInvite &invite);
QCoro::Task<TarnOK> removePortalPerson(TarnAPI &api, const QString &client, const QString &person);
QCoro::Task<TarnPortalLink> portalPersonLink(TarnAPI &api, const QString &client, const QString &person);

// Issuing a key replaces the one before it at once.
QCoro::Task<TarnPortalKey> issuePortalLeadKey(TarnAPI &api, const QString &client);
QCoro::Task<TarnPortalKey> issuePortalPiloKey(TarnAPI &api, const QString &client);
QCoro::Task<TarnOK> revokePortalPiloKey(TarnAPI &api, const QString &client);

QCoro::Task<TarnCreatedID> createPortalReport(TarnAPI &api, const QString &client, const TarnPortalReportDraft &draft);
QCoro::Task<TarnPortalReport> portalReport(TarnAPI &api, const QString &client, const QString &report);
QCoro::Task<TarnPortalReport> setPortalReportPublished(
    TarnAPI &api, const QString &client, const QString &report, const TarnPortalReportPublishing &publishing);
QCoro::Task<TarnOK> deletePortalReport(TarnAPI &api, const QString &client, const QString &report);

QCoro::Task<TarnOK> deletePortalWork(TarnAPI &api, const QString &client, const QString &work);

} // namespace TarnPortalCalls
