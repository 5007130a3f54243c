#pragma once

#include "money/TarnPaymentCards.h"
#include "money/TarnPaymentRecords.h"
#include "money/TarnPaymentRequests.h"
#include "money/TarnPaymentsTerminal.h"
#include "service/TarnCreatedID.h"

#include <QCoroTask>
#include <QString>

class TarnAPI;

// The payments terminal's endpoints. Amounts are integer cents; every id
// placed in a path is escaped.
namespace TarnPaymentsCalls {

enum class RefundDecision { Approve, Deny };

QCoro::Task<TarnPaymentsTerminal> payments(TarnAPI &api);
// The client's saved cards with the schedules that charge them.
QCoro::Task<TarnPaymentCards> paymentCards(TarnAPI &api, const QString &clientID);

// Answers the new request's id; no money moves until it is approved.
QCoro::Task<TarnCreatedID> requestPaymentRefund(
    TarnAPI &api, const QString &paymentID, qint64 amount, const QString &reason);
QCoro::Task<TarnRefundAction> decidePaymentRefund(
    TarnAPI &api, const QString &requestID, RefundDecision decision, const QString &note);

// Charges what is left on the invoice to the card. `requestKey` names this
// attempt: a retry after a lost answer sends the same key and is charged once.
QCoro::Task<TarnChargeReceipt> chargeInvoice(
    TarnAPI &api, const TarnOpenInvoice &invoice, const TarnPaymentCard &card, const QString &requestKey);
QCoro::Task<TarnCreatedID> recordOfflineInvoicePayment(
    TarnAPI &api, const QString &invoiceID, const QString &reference, const QString &paidOn);

// An offline payment not tied to an invoice.
QCoro::Task<TarnCreatedID> recordPayment(TarnAPI &api, const TarnPaymentRecordDraft &draft);
// Answers the payment as it now stands. A stale version is refused with the
// current record; card payments and refunds cannot be changed.
QCoro::Task<TarnPayment> updatePayment(TarnAPI &api, const QString &paymentID, const TarnPaymentChange &change);

// Answers the schedule after the action.
QCoro::Task<TarnPaymentSchedule> managePaymentSchedule(TarnAPI &api, const TarnPaymentScheduleAction &action);

// Opens a card session for the client: the page's address for the browser,
// and the id it is followed by.
QCoro::Task<TarnCardSession> startCardSession(TarnAPI &api, const QString &clientID);
// Where the session stands; once completed it answers the same card however
// often it is asked.
QCoro::Task<TarnCardSessionProgress> finishCardSession(TarnAPI &api, const QString &sessionID);

} // namespace TarnPaymentsCalls
