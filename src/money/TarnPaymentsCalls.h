#pragma once

#include "money/TarnPaymentCards.h"
#include "money/TarnPaymentRecords.h"
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
QCoro::Task<TarnPaymentCards> cards(TarnAPI &api, const QString &clientID);

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

} // namespace TarnPaymentsCalls
