#include "assistant/TarnAgentCalls.h"

#include "assistant/TarnAgentAsk.h"
#include "assistant/TarnAgentRename.h"
#include "assistant/TarnAgentResume.h"
#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace {

const QString requestsPath = u"/api/agent-requests"_s;

} // namespace

namespace TarnAgentCalls {

QCoro::Task<TarnAgentConversation> loadConversation(TarnAPI &api)
{
    return api.request<TarnAgentConversation>(TarnPath(requestsPath));
}

QCoro::Task<TarnAgentAccepted> askAgent(TarnAPI &api, const QString &content, const std::optional<QString> &page,
    TarnPiloRun run, const QString &requestKey)
{
    return api.request<TarnAgentAccepted>(TarnPath(requestsPath), TarnMethod::Post,
        TarnAgentAsk { .content = content, .page = page, .run = run, .request_key = requestKey });
}

QCoro::Task<TarnAgentResumed> resumeAgentRequest(
    TarnAPI &api, const QString &id, const QString &decision, const QString &reconciliation)
{
    return api.request<TarnAgentResumed>(TarnPath(requestsPath).id(id).segment("resume"_L1), TarnMethod::Post,
        TarnAgentResume { decision, reconciliation });
}

QCoro::Task<TarnOK> removeAgentRequest(TarnAPI &api, const QString &id)
{
    return api.request<TarnOK>(TarnPath(requestsPath).id(id), TarnMethod::Delete);
}

QCoro::Task<TarnOK> renameAgentRequest(TarnAPI &api, const QString &id, const QString &title)
{
    return api.request<TarnOK>(TarnPath(requestsPath).id(id), TarnMethod::Patch, TarnAgentRename { title });
}

QCoro::Task<TarnBlockedAgentRequests> blockedAgentRequests(TarnAPI &api)
{
    return api.request<TarnBlockedAgentRequests>(TarnPath(requestsPath).segment("blocked"_L1));
}

} // namespace TarnAgentCalls
