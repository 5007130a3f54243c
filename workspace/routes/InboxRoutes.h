#pragma once

class WorkspaceServer;

// The shared inbox under "/api/inbox" (see workspace/README.md for the
// paths and keys), and with "--test-faults" "POST /api/test/inbox/inbound",
// which delivers a customer's text.
namespace InboxRoutes {

// Plants the demo inbox when there are no threads, and registers the routes.
void add(WorkspaceServer &server);

} // namespace InboxRoutes
