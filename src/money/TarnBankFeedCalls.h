#pragma once

#include "money/TarnBankFeed.h"
#include "money/TarnBankFeedRequests.h"

#include <QCoroTask>
#include <QString>

class TarnAPI;

// The books' bank feed (owners only). `accountID` is a feed account's id,
// not the books' bank account it feeds.
namespace TarnBankFeedCalls {

// Connects the bank's next account not yet connected; answers the feed as it
// then stands.
QCoro::Task<TarnMercurySummary> connectMercury(TarnAPI &api);
QCoro::Task<TarnMercurySummary> mercurySummary(TarnAPI &api);
QCoro::Task<TarnMercurySummary> setExternalBaseline(
    TarnAPI &api, const QString &accountID, const TarnExternalBaseline &baseline);
QCoro::Task<TarnExternalReconciliation> reconcileExternalBalance(
    TarnAPI &api, const QString &accountID, const TarnExternalReconcile &day);

} // namespace TarnBankFeedCalls
