#pragma once

class WorkspaceServer;

// The documents under "/api/documents" and their signing envelopes under
// "/api/envelopes" (see workspace/README.md for the paths and keys), and the
// signers' page under "/sign/" (`SigningRoutes`).
namespace DocumentRoutes {

// Plants the demo's documents when there are none, and registers the routes.
void add(WorkspaceServer &server);

} // namespace DocumentRoutes
