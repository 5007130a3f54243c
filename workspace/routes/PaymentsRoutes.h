#pragma once

class WorkspaceServer;

// The payments terminal under "/api/payments-terminal/": the payments list,
// saved cards, card charges (once per request key), offline payments, and
// refunds that are requested first and move money only when an owner
// approves them. The demo company's month of payments plants itself when the
// terminal's tables are empty.
namespace PaymentsRoutes {

void add(WorkspaceServer &server);

} // namespace PaymentsRoutes
