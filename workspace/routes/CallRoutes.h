#pragma once

class WorkspaceServer;

// The call book under "/api/calls" and the sales leads under
// "/api/sales/leads" (see workspace/README.md for the paths and keys).
namespace CallRoutes {

// Plants the demo's leads and calls when the book is empty, and registers
// the routes.
void add(WorkspaceServer &server);

} // namespace CallRoutes
