#pragma once

#include "screens/overview/TarnBoardMove.h"
#include "screens/overview/TarnOrder.h"
#include "screens/overview/TarnProductBoard.h"
#include "screens/overview/TarnTeamActivity.h"

#include <QCoroTask>
#include <QList>

class TarnAPI;

// The overview's endpoints: the team now, the product boards and fulfilment.
namespace TarnOverviewCalls {

QCoro::Task<QList<TarnTeamActivity>> overviewTeam(TarnAPI &api);
QCoro::Task<QList<TarnProductBoard>> productBoards(TarnAPI &api);
// The item as it now is; a stale version is refused with the item as the
// other person left it.
QCoro::Task<TarnBoardItem> moveBoardItem(TarnAPI &api, const QString &itemId, const TarnBoardMove &move);
// Orders not yet delivered, and those delivered in the last week.
QCoro::Task<QList<TarnOrder>> fulfilmentOrders(TarnAPI &api);
// Moves an order on: packing to shipped, shipped to delivered.
QCoro::Task<TarnOrder> advanceOrder(TarnAPI &api, const QString &orderId);

} // namespace TarnOverviewCalls
