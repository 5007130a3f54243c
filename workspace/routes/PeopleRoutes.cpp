#include "workspace/routes/PeopleRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
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

    WorkspaceRouter &router = server.router();
    using Access = WorkspaceRouter::Access;
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
}

} // namespace PeopleRoutes
