#pragma once

#include "screens/customers/TarnCustomerList.h"
#include "screens/customers/TarnCustomerProfile.h"
#include "screens/customers/TarnCustomerRequests.h"
#include "screens/customers/TarnTimelinePage.h"
#include "service/TarnCreatedID.h"
#include "service/TarnOK.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>

class TarnAPI;

// The customer register's endpoints. `client` is a customer's id (the
// shared clients' id); every id and query value is escaped by TarnPath.
namespace TarnCustomerCalls {

// `stage` empty lists every stage; archived customers are left out.
QCoro::Task<TarnCustomerList> crm360Clients(TarnAPI &api, const QString &stage);
QCoro::Task<TarnCustomerList> clientSearch(TarnAPI &api, const QString &text);
QCoro::Task<TarnCustomerProfile> crm360Profile(TarnAPI &api, const QString &client);
QCoro::Task<TarnCustomerProfile> crm360SaveDetails(
    TarnAPI &api, const QString &client, const TarnCustomerDetails &details);
// `before` is the previous page's `next_before`, empty for the newest page.
QCoro::Task<TarnTimelinePage> crm360Timeline(TarnAPI &api, const QString &client, const QString &before, int limit);
QCoro::Task<TarnOK> crm360ChangeStage(TarnAPI &api, const QString &client, const QString &stage);
QCoro::Task<TarnOK> crm360UpdateTask(TarnAPI &api, const QString &task, const TarnCustomerTaskUpdate &update);
QCoro::Task<TarnOK> crm360DeleteTask(TarnAPI &api, const QString &task);
QCoro::Task<TarnCreatedID> crm360AddNote(TarnAPI &api, const QString &client, const QString &body);
QCoro::Task<TarnCreatedID> addCRMContact(TarnAPI &api, const QString &client, const TarnCRMContactRequest &contact);
QCoro::Task<TarnOK> deleteCRMContact(TarnAPI &api, const QString &contact);
// The size limit is checked by the caller first (CustomerRules::fileRefusal).
QCoro::Task<TarnCreatedID> uploadRecordFile(TarnAPI &api, const QString &client, const TarnRecordUpload &file);
QCoro::Task<QByteArray> downloadRecordFile(TarnAPI &api, const QString &client, const QString &file);
QCoro::Task<TarnOK> deleteRecordFile(TarnAPI &api, const QString &client, const QString &file);
QCoro::Task<TarnCreatedID> addRecordReminder(
    TarnAPI &api, const QString &client, const TarnRecordReminderRequest &reminder);
QCoro::Task<TarnOK> setSalesFollowUp(TarnAPI &api, const QString &client, const QString &on);
QCoro::Task<TarnOK> archiveRecord(TarnAPI &api, const QString &client);
QCoro::Task<TarnOK> sendCRMDraft(TarnAPI &api, const QString &draft);
QCoro::Task<TarnOK> discardCRMDraft(TarnAPI &api, const QString &draft);

} // namespace TarnCustomerCalls
