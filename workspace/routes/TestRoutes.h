#pragma once

class WorkspaceServer;

// The controls under "/api/test/" that exist only with "--test-faults":
// canned faults, the request log, and sign-in codes without a browser.
namespace TestRoutes {

void add(WorkspaceServer &server);

} // namespace TestRoutes
