#include "inbox/TarnInboxCalls.h"

#include "inbox/TarnInboxRequests.h"
#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace {

TarnPath threadPath(const QString &id)
{
    return TarnPath(u"/api/inbox"_s).id(id);
}

} // namespace

namespace TarnInboxCalls {

QCoro::Task<TarnInboxList> inbox(TarnAPI &api, const QString &scope, const QString &view, const QString &kind)
{
    return api.request<TarnInboxList>(
        TarnPath(u"/api/inbox"_s).query("scope"_L1, scope).query("view"_L1, view).query("kind"_L1, kind));
}

QCoro::Task<TarnInboxThread> inboxThread(TarnAPI &api, const QString &id)
{
    return api.request<TarnInboxThread>(threadPath(id));
}

QCoro::Task<TarnInboxActionResult> inboxAction(TarnAPI &api, const QString &id, const TarnInboxAction &action)
{
    return api.request<TarnInboxActionResult>(threadPath(id).id(action.action), TarnMethod::Post, action);
}

QCoro::Task<TarnInboxAssist> inboxAssist(TarnAPI &api, const QString &id, const QString &draft)
{
    return api.request<TarnInboxAssist>(
        threadPath(id).segment("assist"_L1), TarnMethod::Post, TarnInboxAssistRequest { draft });
}

QCoro::Task<TarnInboxCustomer> inboxCreateCustomer(
    TarnAPI &api, const QString &id, const QString &boardID, const QString &name)
{
    return api.request<TarnInboxCustomer>(threadPath(id).segment("create-customer"_L1), TarnMethod::Post,
        TarnInboxCustomerRequest { .board_id = boardID, .name = name });
}

QCoro::Task<TarnInboxCreated> newInboxConversation(
    TarnAPI &api, const QString &clientID, const QString &customer, const QString &kind)
{
    return api.request<TarnInboxCreated>(TarnPath(u"/api/inbox/new"_s), TarnMethod::Post,
        TarnInboxNewConversation { .kind = kind, .client_id = clientID, .customer_address = customer });
}

QCoro::Task<QList<TarnInboxNotification>> inboxNotifications(TarnAPI &api)
{
    return api.request<QList<TarnInboxNotification>>(TarnPath(u"/api/inbox/notifications"_s));
}

QCoro::Task<> dismissInboxNotification(TarnAPI &api, const QString &entryID)
{
    return api.request<void>(TarnPath(u"/api/inbox/notifications"_s), TarnMethod::Post, TarnInboxDismissal { entryID });
}

} // namespace TarnInboxCalls
