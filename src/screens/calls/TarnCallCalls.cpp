#include "screens/calls/TarnCallCalls.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnCallCalls {

QCoro::Task<QList<TarnCall>> calls(TarnAPI &api)
{
    return api.request<QList<TarnCall>>(TarnPath(u"/api/calls"_s));
}

QCoro::Task<TarnCall> saveCallCell(TarnAPI &api, const QString &id, const TarnCallCell &cell)
{
    return api.request<TarnCall>(TarnPath(u"/api/calls"_s).id(id), TarnMethod::Patch, cell);
}

QCoro::Task<TarnCall> startSalesCall(TarnAPI &api, const TarnSalesCallStart &start)
{
    return api.request<TarnCall>(TarnPath(u"/api/calls"_s), TarnMethod::Post, start);
}

QCoro::Task<QByteArray> callRecording(TarnAPI &api, const QString &id)
{
    return api.downloadFile(TarnPath(u"/api/calls"_s).id(id).segment("recording"_L1), recordingLimit);
}

QCoro::Task<QList<TarnSalesLead>> salesLeads(TarnAPI &api)
{
    return api.request<QList<TarnSalesLead>>(TarnPath(u"/api/sales/leads"_s));
}

QCoro::Task<TarnSalesLeadDetail> salesLead(TarnAPI &api, const QString &id)
{
    return api.request<TarnSalesLeadDetail>(TarnPath(u"/api/sales/leads"_s).id(id));
}

} // namespace TarnCallCalls
