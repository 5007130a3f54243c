#include "screens/customers/TarnCustomerCalls.h"

#include "screens/customers/CustomerRules.h"
#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace {

// An empty filter is left out of the query rather than sent empty.
std::optional<QString> given(const QString &value)
{
    return value.isEmpty() ? std::nullopt : std::optional(value);
}

TarnPath clientPath(const QString &client)
{
    return TarnPath(u"/api/crm360/clients"_s).id(client);
}

TarnPath recordPath(const QString &client)
{
    return TarnPath(u"/api/records"_s).id(client);
}

} // namespace

namespace TarnCustomerCalls {

QCoro::Task<TarnCustomerList> crm360Clients(TarnAPI &api, const QString &stage)
{
    return api.request<TarnCustomerList>(TarnPath(u"/api/crm360/clients"_s).query("stage"_L1, given(stage)));
}

QCoro::Task<TarnCustomerList> clientSearch(TarnAPI &api, const QString &text)
{
    return api.request<TarnCustomerList>(TarnPath(u"/api/clients"_s).query("q"_L1, text));
}

QCoro::Task<TarnCustomerProfile> crm360Profile(TarnAPI &api, const QString &client)
{
    return api.request<TarnCustomerProfile>(clientPath(client));
}

QCoro::Task<TarnCustomerProfile> crm360SaveDetails(
    TarnAPI &api, const QString &client, const TarnCustomerDetails &details)
{
    return api.request<TarnCustomerProfile>(clientPath(client), TarnMethod::Patch, details);
}

QCoro::Task<TarnTimelinePage> crm360Timeline(TarnAPI &api, const QString &client, const QString &before, int limit)
{
    return api.request<TarnTimelinePage>(clientPath(client)
                                             .segment("timeline"_L1)
                                             .query("before"_L1, given(before))
                                             .query("limit"_L1, QString::number(limit)));
}

QCoro::Task<TarnOK> crm360ChangeStage(TarnAPI &api, const QString &client, const QString &stage)
{
    return api.request<TarnOK>(clientPath(client).segment("stage"_L1), TarnMethod::Post, TarnStageChange { stage });
}

QCoro::Task<TarnOK> crm360UpdateTask(TarnAPI &api, const QString &task, const TarnCustomerTaskUpdate &update)
{
    return api.request<TarnOK>(TarnPath(u"/api/crm360/tasks"_s).id(task), TarnMethod::Patch, update);
}

QCoro::Task<TarnOK> crm360DeleteTask(TarnAPI &api, const QString &task)
{
    return api.request<TarnOK>(TarnPath(u"/api/crm360/tasks"_s).id(task), TarnMethod::Delete);
}

QCoro::Task<TarnCreatedID> crm360AddNote(TarnAPI &api, const QString &client, const QString &body)
{
    return api.request<TarnCreatedID>(
        clientPath(client).segment("notes"_L1), TarnMethod::Post, TarnCustomerNote { body });
}

QCoro::Task<TarnCreatedID> addCRMContact(TarnAPI &api, const QString &client, const TarnCRMContactRequest &contact)
{
    return api.request<TarnCreatedID>(clientPath(client).segment("contacts"_L1), TarnMethod::Post, contact);
}

QCoro::Task<TarnOK> deleteCRMContact(TarnAPI &api, const QString &contact)
{
    return api.request<TarnOK>(TarnPath(u"/api/crm360/contacts"_s).id(contact), TarnMethod::Delete);
}

QCoro::Task<TarnCreatedID> uploadRecordFile(TarnAPI &api, const QString &client, const TarnRecordUpload &file)
{
    return api.request<TarnCreatedID>(recordPath(client).segment("files"_L1), TarnMethod::Post, file);
}

QCoro::Task<QByteArray> downloadRecordFile(TarnAPI &api, const QString &client, const QString &file)
{
    return api.downloadFile(recordPath(client).segment("files"_L1).id(file), CustomerRules::fileLimitBytes);
}

QCoro::Task<TarnOK> deleteRecordFile(TarnAPI &api, const QString &client, const QString &file)
{
    return api.request<TarnOK>(recordPath(client).segment("files"_L1).id(file), TarnMethod::Delete);
}

QCoro::Task<TarnCreatedID> addRecordReminder(
    TarnAPI &api, const QString &client, const TarnRecordReminderRequest &reminder)
{
    return api.request<TarnCreatedID>(recordPath(client).segment("reminders"_L1), TarnMethod::Post, reminder);
}

QCoro::Task<TarnOK> setSalesFollowUp(TarnAPI &api, const QString &client, const QString &on)
{
    return api.request<TarnOK>(
        TarnPath(u"/api/sales"_s).id(client).segment("follow-up"_L1), TarnMethod::Post, TarnSalesFollowUp { on });
}

QCoro::Task<TarnOK> archiveRecord(TarnAPI &api, const QString &client)
{
    return api.request<TarnOK>(recordPath(client).segment("archive"_L1), TarnMethod::Post);
}

QCoro::Task<TarnOK> sendCRMDraft(TarnAPI &api, const QString &draft)
{
    return api.request<TarnOK>(TarnPath(u"/api/crm360/drafts"_s).id(draft).segment("send"_L1), TarnMethod::Post);
}

QCoro::Task<TarnOK> discardCRMDraft(TarnAPI &api, const QString &draft)
{
    return api.request<TarnOK>(TarnPath(u"/api/crm360/drafts"_s).id(draft), TarnMethod::Delete);
}

} // namespace TarnCustomerCalls
