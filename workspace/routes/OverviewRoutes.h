#pragma once

class WorkspaceServer;

// The overview under "/api/overview/": the team now, the product boards and
// fulfilment. Open to those with the "Overview" app.
namespace OverviewRoutes {

void add(WorkspaceServer &server);

} // namespace OverviewRoutes
