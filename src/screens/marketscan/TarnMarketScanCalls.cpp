#include "screens/marketscan/TarnMarketScanCalls.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnMarketScanCalls {

QCoro::Task<QList<TarnMarketScan>> marketScans(TarnAPI &api)
{
    return api.request<QList<TarnMarketScan>>(TarnPath(u"/api/market-scans"_s));
}

QCoro::Task<TarnMarketScan> marketScan(TarnAPI &api, const TarnMarketScanRequest &request)
{
    return api.request<TarnMarketScan>(TarnPath(u"/api/market-scans"_s), TarnMethod::Post, request);
}

QCoro::Task<TarnMarketScan> marketScanResult(TarnAPI &api, const QString &id)
{
    return api.request<TarnMarketScan>(TarnPath(u"/api/market-scans"_s).id(id));
}

} // namespace TarnMarketScanCalls
