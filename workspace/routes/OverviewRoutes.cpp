#include "workspace/routes/OverviewRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/OverviewStore.h"

#include <QDate>

using namespace Qt::StringLiterals;

namespace {

// The demo: the products the company delivers with work at every stage, and
// orders of printed goods on their way to customers.
void plant(OverviewStore &overview)
{
    const QDate today = QDate::currentDate();
    const auto day = [&today](int days) { return today.addDays(days).toString(Qt::ISODate); };
    const QString sites
        = overview.addBoard(u"Website builds"_s, { u"Discovery"_s, u"Design"_s, u"Build"_s, u"Review"_s, u"Live"_s });
    overview.addItem(
        sites, u"Discovery"_s, u"Online booking and intake forms"_s, u"c-tidewater"_s, u"p-tomas"_s, day(9));
    overview.addItem(sites, u"Design"_s, u"Menu pages and ordering"_s, u"c-fernhill"_s, u"p-sam"_s, day(5));
    overview.addItem(sites, u"Design"_s, u"New patient area"_s, u"c-brightwater"_s, u"p-priya"_s, day(12));
    overview.addItem(sites, u"Build"_s, u"Portfolio relaunch"_s, u"c-oakline"_s, u"p-sam"_s, day(3));
    overview.addItem(sites, u"Review"_s, u"Quote request flow"_s, u"c-marlow"_s, u"p-priya"_s, day(1));
    overview.addItem(sites, u"Live"_s, u"Clinic site refresh"_s, u"c-harbor"_s, u"p-sam"_s, day(-4));
    const QString care
        = overview.addBoard(u"Care plans"_s, { u"Onboarding"_s, u"Active"_s, u"Renewal due"_s, u"Renewed"_s });
    overview.addItem(care, u"Onboarding"_s, u"Monthly care plan"_s, u"c-tidewater"_s, u"p-jonah"_s, day(7));
    overview.addItem(care, u"Active"_s, u"Quarterly care plan"_s, u"c-brightwater"_s, u"p-jonah"_s, {});
    overview.addItem(care, u"Active"_s, u"Monthly care plan"_s, u"c-harbor"_s, u"p-jonah"_s, {});
    overview.addItem(care, u"Renewal due"_s, u"Annual care plan"_s, u"c-marlow"_s, u"p-maren"_s, day(6));
    overview.addItem(care, u"Renewed"_s, u"Annual care plan"_s, u"c-oakline"_s, u"p-maren"_s, {});
    const QString print
        = overview.addBoard(u"Print and signage"_s, { u"Brief"_s, u"Proof"_s, u"Printing"_s, u"Done"_s });
    overview.addItem(print, u"Proof"_s, u"Window decals"_s, u"c-fernhill"_s, u"p-sam"_s, day(2));
    overview.addItem(print, u"Printing"_s, u"Appointment cards"_s, u"c-brightwater"_s, u"p-sam"_s, day(4));
    overview.addItem(print, u"Brief"_s, u"Class timetable posters"_s, u"c-tidewater"_s, u"p-priya"_s, day(10));

    overview.addOrder(u"c-fernhill"_s, u"500 menu cards, 2 window decals"_s, u"packing"_s, {}, day(2));
    overview.addOrder(u"c-brightwater"_s, u"1,000 appointment cards"_s, u"shipped"_s, u"Parcelway"_s, day(1));
    overview.addOrder(u"c-marlow"_s, u"Vehicle magnets, set of 4"_s, u"shipped"_s, u"Parcelway"_s, day(-1));
    overview.addOrder(u"c-tidewater"_s, u"Class passes, 300"_s, u"packing"_s, {}, day(5));
    overview.addOrder(u"c-harbor"_s, u"Reception sign"_s, u"delivered"_s, u"Parcelway"_s, day(-2));
}

} // namespace

namespace OverviewRoutes {

void add(WorkspaceServer &server)
{
    const auto overview = std::make_shared<OverviewStore>(server.store());
    if (!overview->createSchema())
        return;
    if (!overview->hasBoards())
        plant(*overview);

    using Handler = std::function<WorkspaceReply(OverviewStore &, const QString &, const WorkspaceRequest &)>;
    const auto gated = [overview](Handler handler) {
        return [overview, handler](const WorkspaceRequest &request) {
            const QString &me = request.session().personId;
            if (!overview->mayUse(me))
                return WorkspaceReply::error(403, u"The overview is not open to you."_s);
            return handler(*overview, me, request);
        };
    };
    WorkspaceRouter &router = server.router();
    using Access = WorkspaceRouter::Access;
    router.add("GET", u"/api/overview/team"_s, Access::Session,
        gated([](OverviewStore &store, const QString &, const WorkspaceRequest &) { return store.team(); }));
    router.add("GET", u"/api/overview/boards"_s, Access::Session,
        gated([](OverviewStore &store, const QString &, const WorkspaceRequest &) { return store.boards(); }));
    router.add("PATCH", u"/api/overview/items/:id"_s, Access::Session,
        gated([](OverviewStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.moveItem(me, request.arguments().at(0), request.jsonBody().value_or(QJsonObject()));
        }));
    router.add("GET", u"/api/overview/orders"_s, Access::Session,
        gated([](OverviewStore &store, const QString &, const WorkspaceRequest &) { return store.orders(); }));
    router.add("POST", u"/api/overview/orders/:id/advance"_s, Access::Session,
        gated([](OverviewStore &store, const QString &, const WorkspaceRequest &request) {
            return store.advanceOrder(request.arguments().at(0));
        }));
}

} // namespace OverviewRoutes
