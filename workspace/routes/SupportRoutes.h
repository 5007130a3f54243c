#pragma once

class WorkspaceServer;

// The support board under "/api/support" (see workspace/README.md for the
// paths and keys).
namespace SupportRoutes {

// Plants the demo board when there are no tasks, and registers the routes.
// After the inbox's routes, which plant the customers the board names.
void add(WorkspaceServer &server);

} // namespace SupportRoutes
