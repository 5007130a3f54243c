#pragma once

class WorkspaceServer;

// The client portals under "/api/portals", and what a portal's keys open
// under "/api/portal-keys" (see workspace/README.md for the paths and keys).
namespace PortalRoutes {

// Plants the demo's portals when there are none, and registers the routes.
void add(WorkspaceServer &server);

} // namespace PortalRoutes
