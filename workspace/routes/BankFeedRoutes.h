#pragma once

class WorkspaceServer;

// The books' bank feed: connecting the bank's accounts, the feed's summary,
// the bank's balance on a day and its reconciliation against the books.
namespace BankFeedRoutes {

// After the books' routes: the demo connection feeds the demo books.
void add(WorkspaceServer &server);

} // namespace BankFeedRoutes
