#include "money/TarnBooksCalls.h"

#include "money/TarnBooksRequests.h"
#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnBooksCalls {

namespace {

TarnPath bankRow(const QString &rowID, QLatin1StringView action)
{
    return TarnPath(u"/api/accounting/bank-rows"_s).id(rowID).segment(action);
}

QCoro::Task<TarnBooksEntryID> voidRecord(TarnAPI &api, QString collection, const QString &id, const QString &date)
{
    return api.request<TarnBooksEntryID>(
        TarnPath(std::move(collection)).id(id).segment("void"_L1), TarnMethod::Post, TarnBooksEffectiveDate { date });
}

} // namespace

QCoro::Task<TarnBooks> books(TarnAPI &api)
{
    return api.request<TarnBooks>(TarnPath(u"/api/accounting/books"_s));
}

QCoro::Task<TarnBooksReport> booksReport(TarnAPI &api, const QString &start, const QString &end)
{
    return api.request<TarnBooksReport>(
        TarnPath(u"/api/accounting/report"_s).query("start"_L1, start).query("end"_L1, end));
}

QCoro::Task<TarnBooksRegister> booksRegister(
    TarnAPI &api, const QString &start, const QString &end, const QString &accountID, qint64 offset)
{
    return api.request<TarnBooksRegister>(TarnPath(u"/api/accounting/register"_s)
                                              .query("start"_L1, start)
                                              .query("end"_L1, end)
                                              .query("account_id"_L1, accountID)
                                              .query("limit"_L1, QString::number(registerPageSize))
                                              .query("offset"_L1, QString::number(offset)));
}

QCoro::Task<TarnOK> setBooksCompany(TarnAPI &api, const QString &name)
{
    return api.request<TarnOK>(
        TarnPath(u"/api/accounting/company"_s), TarnMethod::Patch, TarnBooksCompanyName { name });
}

QCoro::Task<TarnOK> setBooksSourceLinked(TarnAPI &api, bool enabled)
{
    return api.request<TarnOK>(
        TarnPath(u"/api/accounting/source-link"_s), TarnMethod::Patch, TarnBooksSourceLink { enabled });
}

QCoro::Task<TarnCreatedID> postBooksSource(
    TarnAPI &api, const QString &kind, const QString &id, const std::optional<QString> &incomeAccountID)
{
    return api.request<TarnCreatedID>(TarnPath(u"/api/accounting/source-post"_s), TarnMethod::Post,
        TarnBooksSourcePost { kind, id, incomeAccountID });
}

QCoro::Task<TarnBooksImportResult> importBooksBankRows(
    TarnAPI &api, const QString &bankID, const QList<TarnBankCSV::Row> &rows)
{
    return api.request<TarnBooksImportResult>(
        TarnPath(u"/api/accounting/bank-import"_s), TarnMethod::Post, TarnBooksBankImport { bankID, rows });
}

QCoro::Task<TarnBooksEntryID> matchBooksBankRow(TarnAPI &api, const QString &rowID, const QString &entryID)
{
    return api.request<TarnBooksEntryID>(
        bankRow(rowID, "match"_L1), TarnMethod::Post, TarnBooksEntryChoice { entryID });
}

QCoro::Task<TarnOK> unmatchBooksBankRow(TarnAPI &api, const QString &rowID)
{
    return api.request<TarnOK>(bankRow(rowID, "unmatch"_L1), TarnMethod::Post);
}

QCoro::Task<TarnBooksEntryID> categorizeBooksBankRow(TarnAPI &api, const QString &rowID, const QString &accountID)
{
    return api.request<TarnBooksEntryID>(
        bankRow(rowID, "post"_L1), TarnMethod::Post, TarnBooksAccountChoice { accountID });
}

QCoro::Task<TarnBooksReconciliation> booksReconciliation(TarnAPI &api, const QString &bankID, const QString &date)
{
    return api.request<TarnBooksReconciliation>(TarnPath(u"/api/accounting/reconciliation"_s)
                                                    .query("bank_account_id"_L1, bankID)
                                                    .query("statement_date"_L1, date));
}

QCoro::Task<TarnBooksReconciliationClosed> closeBooksReconciliation(
    TarnAPI &api, const QString &bankID, const QString &date, qint64 balance)
{
    return api.request<TarnBooksReconciliationClosed>(TarnPath(u"/api/accounting/reconciliations"_s), TarnMethod::Post,
        TarnBooksStatementClose { bankID, date, balance });
}

QCoro::Task<TarnCreatedID> reverseBooksEntry(TarnAPI &api, const QString &id, const QString &date)
{
    return api.request<TarnCreatedID>(TarnPath(u"/api/accounting/entries"_s).id(id).segment("reverse"_L1),
        TarnMethod::Post, TarnBooksEffectiveDate { date });
}

QCoro::Task<TarnBooksEntryID> voidBooksBill(TarnAPI &api, const QString &id, const QString &date)
{
    return voidRecord(api, u"/api/accounting/bills"_s, id, date);
}

QCoro::Task<TarnBooksEntryID> voidBooksInvoice(TarnAPI &api, const QString &id, const QString &date)
{
    return voidRecord(api, u"/api/accounting/customer-invoices"_s, id, date);
}

QCoro::Task<TarnBooksEntryID> voidBooksBillPayment(TarnAPI &api, const QString &id, const QString &date)
{
    return voidRecord(api, u"/api/accounting/bill-payments"_s, id, date);
}

QCoro::Task<TarnBooksEntryID> voidBooksCustomerReceipt(TarnAPI &api, const QString &id, const QString &date)
{
    return voidRecord(api, u"/api/accounting/customer-receipts"_s, id, date);
}

} // namespace TarnBooksCalls
