#pragma once

class WorkspaceServer;

// The books under "/api/accounting/", over `BooksLedger`: the overview, the
// report and register queries, journal entries and their reversal, voids,
// bank rows (import, match, categorize), reconciliation, the company name and
// the link to the workspace's own invoices and payments. Open to people with
// the Books app who keep the books. The demo company's year of books plants
// itself when the ledger is empty.
namespace BooksRoutes {

void add(WorkspaceServer &server);

} // namespace BooksRoutes
