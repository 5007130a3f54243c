#pragma once

#include "inbox/TarnInboxAction.h"
#include "inbox/TarnInboxActionResult.h"
#include "inbox/TarnInboxAssist.h"
#include "inbox/TarnInboxCreated.h"
#include "inbox/TarnInboxCustomer.h"
#include "inbox/TarnInboxList.h"
#include "inbox/TarnInboxNotification.h"
#include "inbox/TarnInboxThread.h"

#include <QCoroTask>
#include <QList>
#include <QString>

class TarnAPI;

// The shared inbox's endpoints. Every id and query value is escaped by
// TarnPath. `scope` is "mine", "unassigned" or "all"; `view` "open",
// "snoozed" or "done"; `kind` "all" or a channel such as "text".
namespace TarnInboxCalls {

QCoro::Task<TarnInboxList> inbox(TarnAPI &api, const QString &scope, const QString &view, const QString &kind);
QCoro::Task<TarnInboxThread> inboxThread(TarnAPI &api, const QString &id);
QCoro::Task<TarnInboxActionResult> inboxAction(TarnAPI &api, const QString &id, const TarnInboxAction &action);
QCoro::Task<TarnInboxAssist> inboxAssist(TarnAPI &api, const QString &id, const QString &draft);
QCoro::Task<TarnInboxCustomer> inboxCreateCustomer(
    TarnAPI &api, const QString &id, const QString &boardID, const QString &name);
QCoro::Task<TarnInboxCreated> newInboxConversation(
    TarnAPI &api, const QString &clientID, const QString &customer, const QString &kind);
QCoro::Task<QList<TarnInboxNotification>> inboxNotifications(TarnAPI &api);
QCoro::Task<> dismissInboxNotification(TarnAPI &api, const QString &entryID);

} // namespace TarnInboxCalls
