#pragma once

#include "screens/calls/TarnCall.h"
#include "screens/calls/TarnCallRequests.h"
#include "screens/calls/TarnSalesLead.h"
#include "screens/calls/TarnSalesLeadDetail.h"

#include <QByteArray>
#include <QCoroTask>
#include <QList>
#include <QString>

class TarnAPI;

// The call book's and the sales leads' endpoints.
namespace TarnCallCalls {

// A recording is a few minutes of telephone-rate audio at most.
constexpr qint64 recordingLimit = 20 * 1024 * 1024;

QCoro::Task<QList<TarnCall>> calls(TarnAPI &api);
// Answers the call as it now is; a stale `version` is refused.
QCoro::Task<TarnCall> saveCallCell(TarnAPI &api, const QString &id, const TarnCallCell &cell);
QCoro::Task<TarnCall> startSalesCall(TarnAPI &api, const TarnSalesCallStart &start);
// The recording's bytes (a WAV file from the local workspace).
QCoro::Task<QByteArray> callRecording(TarnAPI &api, const QString &id);
QCoro::Task<QList<TarnSalesLead>> salesLeads(TarnAPI &api);
QCoro::Task<TarnSalesLeadDetail> salesLead(TarnAPI &api, const QString &id);

} // namespace TarnCallCalls
