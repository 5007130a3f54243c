#pragma once

class WorkspaceServer;

// Market scans under "/api/market-scans": the person's recent scans, a new
// one, and one with its businesses. Open to those with the "Market Scan" app.
namespace MarketScanRoutes {

void add(WorkspaceServer &server);

} // namespace MarketScanRoutes
