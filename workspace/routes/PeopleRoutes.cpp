#include "workspace/routes/PeopleRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/PeopleHRStore.h"
#include "workspace/routes/PeoplePayrollStore.h"
#include "workspace/routes/PeopleSeed.h"
#include "workspace/routes/PeopleStore.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace PeopleRoutes {

void add(WorkspaceServer &server)
{
    const auto people = std::make_shared<PeopleStore>(server.store());
    // Also a data folder made before there was a time clock gets the demo's shifts.
    if (!people->hasEntries())
        PeopleSeed::plant(*people);
    const auto hr = std::make_shared<PeopleHRStore>(server.store());
    if (!hr->hasRecords())
        PeopleSeed::plantHR(*hr);
    const auto payroll = std::make_shared<PeoplePayrollStore>(server.store());
    if (!payroll->hasRates())
        PeopleSeed::plantPayroll(*payroll);

    WorkspaceRouter &router = server.router();
    using Access = WorkspaceRouter::Access;
    router.add("GET", u"/api/people/hr"_s, Access::Session,
        [hr](const WorkspaceRequest &request) { return hr->records(request.session().personId); });
    router.add("PATCH", u"/api/people/hr/:id"_s, Access::Session, [hr](const WorkspaceRequest &request) {
        return hr->update(
            request.session().personId, request.arguments().at(0), request.jsonBody().value_or(QJsonObject()));
    });
    router.add("GET", u"/api/people/timeclock"_s, Access::Session, [people](const WorkspaceRequest &request) {
        return people->week(request.session().personId, request.query(u"week"_s), request.query(u"person"_s));
    });
    router.add("POST", u"/api/people/timeclock/in"_s, Access::Session,
        [people](const WorkspaceRequest &request) { return people->clockIn(request.session().personId); });
    router.add("POST", u"/api/people/timeclock/out"_s, Access::Session,
        [people](const WorkspaceRequest &request) { return people->clockOut(request.session().personId); });
    router.add("PATCH", u"/api/people/timeclock/:id"_s, Access::Session, [people](const WorkspaceRequest &request) {
        return people->editEntry(
            request.session().personId, request.arguments().at(0), request.jsonBody().value_or(QJsonObject()));
    });

    const auto owner = [payroll](auto handler) {
        return [payroll, handler](const WorkspaceRequest &request) {
            const QString &me = request.session().personId;
            if (!payroll->mayUse(me))
                return WorkspaceReply::error(403, u"Payroll is open to owners only."_s);
            return handler(*payroll, me, request);
        };
    };
    const auto body = [](const WorkspaceRequest &request) { return request.jsonBody().value_or(QJsonObject()); };
    router.add("GET", u"/api/payroll"_s, Access::Session,
        owner([](PeoplePayrollStore &store, const QString &, const WorkspaceRequest &request) {
            return store.overview(request.query(u"period"_s));
        }));
    router.add("GET", u"/api/payroll/:period/export"_s, Access::Session,
        owner([](PeoplePayrollStore &store, const QString &, const WorkspaceRequest &request) {
            return store.exportCSV(request.arguments().at(0));
        }));
    router.add("PATCH", u"/api/payroll/:period"_s, Access::Session,
        owner([body](PeoplePayrollStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.saveNotes(me, request.arguments().at(0), body(request));
        }));
    router.add("POST", u"/api/payroll/:period/:action"_s, Access::Session,
        owner([body](PeoplePayrollStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.act(me, request.arguments().at(0), request.arguments().at(1), body(request));
        }));
    router.add("DELETE", u"/api/payroll/adjustments/:id"_s, Access::Session,
        owner([](PeoplePayrollStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.removeAdjustment(me, request.arguments().at(0));
        }));
}

} // namespace PeopleRoutes
