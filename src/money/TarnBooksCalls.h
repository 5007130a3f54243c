#pragma once

#include "money/TarnBankCSV.h"
#include "money/TarnBooks.h"
#include "money/TarnBooksBank.h"
#include "money/TarnBooksEntryID.h"
#include "money/TarnBooksRegister.h"
#include "service/TarnCreatedID.h"
#include "service/TarnOK.h"

#include <QCoroTask>
#include <QList>
#include <QString>

#include <optional>

class TarnAPI;

// The books area's endpoints. Dates are "YYYY-MM-DD", amounts integer cents;
// every id placed in a path is escaped.
namespace TarnBooksCalls {

// A register page always holds this many entries; the next page is asked
// for with the offset moved on by as many.
inline constexpr int registerPageSize = 100;

QCoro::Task<TarnBooks> books(TarnAPI &api);
QCoro::Task<TarnBooksReport> booksReport(TarnAPI &api, const QString &start, const QString &end);
QCoro::Task<TarnBooksRegister> booksRegister(
    TarnAPI &api, const QString &start, const QString &end, const QString &accountID, qint64 offset);

QCoro::Task<TarnOK> setBooksCompany(TarnAPI &api, const QString &name);
QCoro::Task<TarnOK> setBooksSourceLinked(TarnAPI &api, bool enabled);
// Posts a workspace "invoice" or "payment" into the books; answers the new
// entry's id. The income account is sent for an invoice only.
QCoro::Task<TarnCreatedID> postBooksSource(
    TarnAPI &api, const QString &kind, const QString &id, const std::optional<QString> &incomeAccountID);

QCoro::Task<TarnBooksImportResult> importBooksBankRows(
    TarnAPI &api, const QString &bankID, const QList<TarnBankCSV::Row> &rows);
QCoro::Task<TarnBooksEntryID> matchBooksBankRow(TarnAPI &api, const QString &rowID, const QString &entryID);
QCoro::Task<TarnOK> unmatchBooksBankRow(TarnAPI &api, const QString &rowID);
// Posts an entry between the row's bank account and `accountID`.
QCoro::Task<TarnBooksEntryID> categorizeBooksBankRow(TarnAPI &api, const QString &rowID, const QString &accountID);

QCoro::Task<TarnBooksReconciliation> booksReconciliation(TarnAPI &api, const QString &bankID, const QString &date);
QCoro::Task<TarnBooksReconciliationClosed> closeBooksReconciliation(
    TarnAPI &api, const QString &bankID, const QString &date, qint64 balance);

// Answers the reversing entry's id.
QCoro::Task<TarnCreatedID> reverseBooksEntry(TarnAPI &api, const QString &id, const QString &date);
QCoro::Task<TarnBooksEntryID> voidBooksBill(TarnAPI &api, const QString &id, const QString &date);
QCoro::Task<TarnBooksEntryID> voidBooksInvoice(TarnAPI &api, const QString &id, const QString &date);
QCoro::Task<TarnBooksEntryID> voidBooksBillPayment(TarnAPI &api, const QString &id, const QString &date);
QCoro::Task<TarnBooksEntryID> voidBooksCustomerReceipt(TarnAPI &api, const QString &id, const QString &date);

} // namespace TarnBooksCalls
