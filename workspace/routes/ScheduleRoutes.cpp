#include "workspace/routes/ScheduleRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/ScheduleBookingPage.h"
#include "workspace/routes/ScheduleSeed.h"
#include "workspace/routes/ScheduleStore.h"

#include <QDate>

using namespace Qt::StringLiterals;

namespace ScheduleRoutes {

void add(WorkspaceServer &server)
{
    // The workspace's own address without its closing slash.
    const auto schedule = std::make_shared<ScheduleStore>(server.store(), server.url().toString().chopped(1));
    if (!schedule->createSchema())
        return;
    // A data folder whose demo weeks have passed gets this week's again.
    const QDate today = QDate::currentDate();
    if (!schedule->hasEventsInWeekOf(today.addDays(1 - today.dayOfWeek())))
        ScheduleSeed::plant(*schedule, today);

    using Handler = std::function<WorkspaceReply(ScheduleStore &, const QString &, const WorkspaceRequest &)>;
    const auto gated = [schedule](Handler handler) {
        return [schedule, handler](const WorkspaceRequest &request) {
            const QString &me = request.session().personId;
            if (!schedule->mayUse(me))
                return WorkspaceReply::error(403, u"The calendar is not open to you."_s);
            return handler(*schedule, me, request);
        };
    };
    WorkspaceRouter &router = server.router();
    using Access = WorkspaceRouter::Access;
    router.add("GET", u"/api/calendar/events"_s, Access::Session,
        gated([](ScheduleStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.events(me, request.query(u"from"_s), request.query(u"to"_s));
        }));
    router.add("GET", u"/api/calendar/booking-links"_s, Access::Session,
        gated([](ScheduleStore &store, const QString &me, const WorkspaceRequest &) { return store.links(me); }));
    router.add("POST", u"/api/calendar/booking-links"_s, Access::Session,
        gated([](ScheduleStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.createLink(me, request.jsonBody().value_or(QJsonObject()));
        }));
    router.add("GET", u"/api/calendar/booking-links/:id/bookings"_s, Access::Session,
        gated([](ScheduleStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.bookings(me, request.arguments().at(0));
        }));

    // The page clients book on, with no sign-in.
    const auto page = std::make_shared<ScheduleBookingPage>(server.store(), QTimeZone::systemTimeZone());
    router.add("GET", u"/book/:slug"_s, Access::Public,
        [page](const WorkspaceRequest &request) { return page->show(request.arguments().at(0)); });
    router.add("POST", u"/book/:slug"_s, Access::Public,
        [page](const WorkspaceRequest &request) { return page->book(request.arguments().at(0), request.body()); });
}

} // namespace ScheduleRoutes
