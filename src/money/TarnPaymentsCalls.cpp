#include "money/TarnPaymentsCalls.h"

#include "money/TarnPaymentRequests.h"
#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnPaymentsCalls {

QCoro::Task<TarnPaymentsTerminal> payments(TarnAPI &api)
{
    return api.request<TarnPaymentsTerminal>(TarnPath(u"/api/payments-terminal/payments"_s));
}

QCoro::Task<TarnPaymentCards> paymentCards(TarnAPI &api, const QString &clientID)
{
    return api.request<TarnPaymentCards>(TarnPath(u"/api/payments-terminal/cards"_s).query("client_id"_L1, clientID));
}

QCoro::Task<TarnCreatedID> requestPaymentRefund(
    TarnAPI &api, const QString &paymentID, qint64 amount, const QString &reason)
{
    return api.request<TarnCreatedID>(TarnPath(u"/api/payments-terminal/refund-requests"_s), TarnMethod::Post,
        TarnPaymentRefundAsk { paymentID, amount, reason });
}

QCoro::Task<TarnRefundAction> decidePaymentRefund(
    TarnAPI &api, const QString &requestID, RefundDecision decision, const QString &note)
{
    const QLatin1StringView action = decision == RefundDecision::Approve ? "approve"_L1 : "deny"_L1;
    return api.request<TarnRefundAction>(
        TarnPath(u"/api/payments-terminal/refund-requests"_s).id(requestID).segment(action), TarnMethod::Post,
        TarnPaymentRefundNote { note });
}

QCoro::Task<TarnChargeReceipt> chargeInvoice(
    TarnAPI &api, const TarnOpenInvoice &invoice, const TarnPaymentCard &card, const QString &requestKey)
{
    const QString description = u"Invoice %1"_s.arg(invoice.invoice_number.value_or(invoice.id));
    return api.request<TarnChargeReceipt>(TarnPath(u"/api/payments-terminal/charge"_s), TarnMethod::Post,
        TarnPaymentCharge {
            invoice.client_id, invoice.id, invoice.remaining, description, requestKey, card.payment_profile_id });
}

QCoro::Task<TarnCreatedID> recordOfflineInvoicePayment(
    TarnAPI &api, const QString &invoiceID, const QString &reference, const QString &paidOn)
{
    return api.request<TarnCreatedID>(TarnPath(u"/api/payments-terminal/invoices"_s).id(invoiceID).segment("record"_L1),
        TarnMethod::Post, TarnPaymentOfflineRecord { reference, paidOn });
}

QCoro::Task<TarnCreatedID> recordPayment(TarnAPI &api, const TarnPaymentRecordDraft &draft)
{
    return api.request<TarnCreatedID>(TarnPath(u"/api/payments-terminal/payments"_s), TarnMethod::Post, draft);
}

QCoro::Task<TarnPayment> updatePayment(TarnAPI &api, const QString &paymentID, const TarnPaymentChange &change)
{
    return api.request<TarnPayment>(
        TarnPath(u"/api/payments-terminal/payments"_s).id(paymentID), TarnMethod::Patch, change);
}

QCoro::Task<TarnPaymentSchedule> managePaymentSchedule(TarnAPI &api, const TarnPaymentScheduleAction &action)
{
    return api.request<TarnPaymentSchedule>(TarnPath(u"/api/payments-terminal/schedules"_s), TarnMethod::Post, action);
}

QCoro::Task<TarnCardSession> startCardSession(TarnAPI &api, const QString &clientID)
{
    return api.request<TarnCardSession>(
        TarnPath(u"/api/payments-terminal/card-sessions"_s), TarnMethod::Post, TarnCardSessionStart { clientID });
}

QCoro::Task<TarnCardSessionProgress> finishCardSession(TarnAPI &api, const QString &sessionID)
{
    return api.request<TarnCardSessionProgress>(
        TarnPath(u"/api/payments-terminal/card-sessions"_s).id(sessionID).segment("finish"_L1), TarnMethod::Post);
}

} // namespace TarnPaymentsCalls
