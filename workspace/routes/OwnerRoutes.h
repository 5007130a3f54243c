#pragma once

class WorkspaceServer;

// The owner's dashboard under "/api/owner/": figures read from the books, the
// payments terminal, the support board, the inbox and the call book. Owners
// only; everyone else is refused.
namespace OwnerRoutes {

void add(WorkspaceServer &server);

} // namespace OwnerRoutes
