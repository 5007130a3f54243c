#include "money/TarnBankFeedCalls.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnBankFeedCalls {

namespace {

TarnPath feedAccount(const QString &accountID, QLatin1StringView action)
{
    return TarnPath(u"/api/accounting/mercury/accounts"_s).id(accountID).segment(action);
}

} // namespace

QCoro::Task<TarnMercurySummary> connectMercury(TarnAPI &api)
{
    return api.request<TarnMercurySummary>(TarnPath(u"/api/accounting/mercury/connect"_s), TarnMethod::Post);
}

QCoro::Task<TarnMercurySummary> mercurySummary(TarnAPI &api)
{
    return api.request<TarnMercurySummary>(TarnPath(u"/api/accounting/mercury"_s));
}

QCoro::Task<TarnMercurySummary> setExternalBaseline(
    TarnAPI &api, const QString &accountID, const TarnExternalBaseline &baseline)
{
    return api.request<TarnMercurySummary>(feedAccount(accountID, "baseline"_L1), TarnMethod::Post, baseline);
}

QCoro::Task<TarnExternalReconciliation> reconcileExternalBalance(
    TarnAPI &api, const QString &accountID, const TarnExternalReconcile &day)
{
    return api.request<TarnExternalReconciliation>(feedAccount(accountID, "reconcile"_L1), TarnMethod::Post, day);
}

} // namespace TarnBankFeedCalls
