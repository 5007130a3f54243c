#pragma once

class WorkspaceServer;

// The people screen's time clock under "/api/people/timeclock" (see
// workspace/README.md for the paths and keys).
namespace PeopleRoutes {

// Plants the demo's time clock when it is empty, and registers the routes.
void add(WorkspaceServer &server);

} // namespace PeopleRoutes
