#include "screens/overview/TarnOverviewCalls.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnOverviewCalls {

QCoro::Task<QList<TarnTeamActivity>> overviewTeam(TarnAPI &api)
{
    return api.request<QList<TarnTeamActivity>>(TarnPath(u"/api/overview/team"_s));
}

QCoro::Task<QList<TarnProductBoard>> productBoards(TarnAPI &api)
{
    return api.request<QList<TarnProductBoard>>(TarnPath(u"/api/overview/boards"_s));
}

QCoro::Task<TarnBoardItem> moveBoardItem(TarnAPI &api, const QString &itemId, const TarnBoardMove &move)
{
    return api.request<TarnBoardItem>(TarnPath(u"/api/overview/items"_s).id(itemId), TarnMethod::Patch, move);
}

QCoro::Task<QList<TarnOrder>> fulfilmentOrders(TarnAPI &api)
{
    return api.request<QList<TarnOrder>>(TarnPath(u"/api/overview/orders"_s));
}

QCoro::Task<TarnOrder> advanceOrder(TarnAPI &api, const QString &orderId)
{
    return api.request<TarnOrder>(
        TarnPath(u"/api/overview/orders"_s).id(orderId).segment("advance"_L1), TarnMethod::Post);
}

} // namespace TarnOverviewCalls
