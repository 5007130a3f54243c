#pragma once

#include "screens/marketscan/TarnMarketScan.h"
#include "screens/marketscan/TarnMarketScanRequest.h"

#include <QCoroTask>
#include <QList>

class TarnAPI;

// The market scan's endpoints.
namespace TarnMarketScanCalls {

// The recent scans, newest first, without their businesses.
QCoro::Task<QList<TarnMarketScan>> marketScans(TarnAPI &api);
// Runs a scan and answers it whole.
QCoro::Task<TarnMarketScan> marketScan(TarnAPI &api, const TarnMarketScanRequest &request);
QCoro::Task<TarnMarketScan> marketScanResult(TarnAPI &api, const QString &id);

} // namespace TarnMarketScanCalls
