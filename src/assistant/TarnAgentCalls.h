#pragma once

#include "assistant/TarnAgentAccepted.h"
#include "assistant/TarnAgentConversation.h"
#include "assistant/TarnAgentResumed.h"
#include "assistant/TarnBlockedAgentRequests.h"
#include "assistant/TarnPiloRun.h"
#include "service/TarnOK.h"

#include <QCoroTask>
#include <QString>

#include <optional>

class TarnAPI;

// The assistant's endpoints: the person's conversation with the agent, and
// the owner's review of blocked work.
namespace TarnAgentCalls {

QCoro::Task<TarnAgentConversation> loadConversation(TarnAPI &api);
// `requestKey` is the client's own key for this request: asking again with
// it gives the first request's id instead of a second request.
QCoro::Task<TarnAgentAccepted> askAgent(TarnAPI &api, const QString &content, const std::optional<QString> &page,
    TarnPiloRun run, const QString &requestKey);
QCoro::Task<TarnAgentResumed> resumeAgentRequest(
    TarnAPI &api, const QString &id, const QString &decision, const QString &reconciliation);
QCoro::Task<TarnOK> removeAgentRequest(TarnAPI &api, const QString &id);
QCoro::Task<TarnOK> renameAgentRequest(TarnAPI &api, const QString &id, const QString &title);
QCoro::Task<TarnBlockedAgentRequests> blockedAgentRequests(TarnAPI &api);

} // namespace TarnAgentCalls
