#include "workspace/routes/PaymentsRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/BooksSql.h"
#include "workspace/routes/PaymentsCardSessions.h"
#include "workspace/routes/PaymentsSeed.h"
#include "workspace/routes/PaymentsStore.h"

#include "money/TarnLedgerDates.h"
#include "money/TarnPaymentRefundState.h"

#include <QDate>
#include <QJsonArray>
#include <QJsonObject>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

using namespace Qt::StringLiterals;
using namespace BooksSql;

namespace {

using Access = WorkspaceRouter::Access;

constexpr auto refundPrefix = "refund-"_L1;

QString today()
{
    return QDate::currentDate().toString(Qt::ISODate);
}

// What an invoice still owes: its amount less the payments received for it.
// A refund does not reopen an invoice.
qint64 remaining(const QSqlDatabase &db, const QString &invoiceID, qint64 amount)
{
    return amount
        - single(db, u"SELECT COALESCE(SUM(amount), 0) FROM payments WHERE invoice_id = ? AND status = 'Paid'"_s,
            { invoiceID });
}

TarnPaymentRefundState refundState(const QSqlDatabase &db, const QString &paymentID)
{
    QList<TarnPaymentRefundState::Request> requests;
    QSqlQuery q = run(db, u"SELECT amount, status FROM payment_refund_requests WHERE payment_id = ?"_s, { paymentID });
    while (q.next())
        requests.append({ paymentID, q.value(0).toLongLong(), q.value(1).toString() });
    return TarnPaymentRefundState(requests);
}

QJsonArray refundRequestsJSON(const QSqlDatabase &db)
{
    QJsonArray requests;
    QSqlQuery q = run(db, u"SELECT id, payment_id, amount, status, reason FROM payment_refund_requests ORDER BY id"_s);
    while (q.next()) {
        requests.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"payment_id"_s, q.value(1).toString() },
            { u"amount"_s, q.value(2).toLongLong() }, { u"status"_s, q.value(3).toString() },
            { u"reason"_s, q.value(4).toString() } });
    }
    return requests;
}

QJsonArray openInvoicesJSON(const QSqlDatabase &db)
{
    QJsonArray invoices;
    QSqlQuery q = run(db,
        u"SELECT id, client_id, client, invoice_number, due_on, amount FROM payment_invoices ORDER BY due_on, id"_s);
    while (q.next()) {
        const QString id = q.value(0).toString();
        const qint64 amount = q.value(5).toLongLong();
        const qint64 owed = remaining(db, id, amount);
        if (owed <= 0)
            continue;
        QJsonObject invoice { { u"id"_s, id }, { u"client_id"_s, q.value(1).toString() },
            { u"client"_s, q.value(2).toString() }, { u"due_on"_s, q.value(4).toString() }, { u"amount"_s, amount },
            { u"remaining"_s, owed } };
        if (!q.value(3).isNull())
            invoice.insert(u"invoice_number"_s, q.value(3).toString());
        invoices.append(invoice);
    }
    return invoices;
}

// The terminal is the Payments app's; deciding a refund is an owner's call.
std::optional<WorkspaceReply> refusal(WorkspaceServer &server, const WorkspaceRequest &request, bool ownerOnly)
{
    const std::optional<WorkspacePerson> person = server.store().person(request.session().personId);
    if (!person || !person->apps.contains("Payments"_L1))
        return WorkspaceReply::error(403, u"Payments is not open to you."_s);
    if (ownerOnly && !person->owner)
        return WorkspaceReply::error(403, u"Only an owner can decide a refund."_s);
    return std::nullopt;
}

struct Invoice {
    QString id;
    QString clientID;
    QString client;
    qint64 owed = 0;
};

std::optional<Invoice> invoice(const QSqlDatabase &db, const QString &id)
{
    QSqlQuery q = run(db, u"SELECT client_id, client, amount FROM payment_invoices WHERE id = ?"_s, { id });
    if (!q.next())
        return std::nullopt;
    return Invoice { id, q.value(0).toString(), q.value(1).toString(), remaining(db, id, q.value(2).toLongLong()) };
}

void insertPayment(const QSqlDatabase &db, const QString &id, const Invoice &paid, qint64 amount, const QString &status,
    const QString &date, const QString &method, const QString &reference)
{
    run(db,
        u"INSERT INTO payments (id, client_id, client, invoice_id, amount, status, date, method, reference)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { id, paid.clientID, paid.client, orNull(paid.id), amount, status, date, method, orNull(reference) });
}

QJsonObject receipt(const QSqlDatabase &db, const QString &paymentID)
{
    QSqlQuery q = run(db, u"SELECT status, amount FROM payments WHERE id = ?"_s, { paymentID });
    q.next();
    return { { u"id"_s, paymentID }, { u"status"_s, q.value(0).toString() }, { u"amount"_s, q.value(1).toLongLong() } };
}

WorkspaceReply charge(WorkspaceServer &server, const WorkspaceRequest &request)
{
    const QJsonObject body = request.jsonBody().value_or(QJsonObject());
    if (body.value("confirmation"_L1).toString() != "CHARGE CARD"_L1)
        return WorkspaceReply::error(400, u"Confirm the charge with CHARGE CARD."_s);
    const QString key = body.value("request_key"_L1).toString();
    if (key.isEmpty() || key.size() > 200)
        return WorkspaceReply::error(400, u"A charge needs a request key."_s);
    QSqlDatabase db = server.store().database();
    // The same attempt again (its answer was lost): the first receipt, no new charge.
    QSqlQuery earlier = run(db, u"SELECT payment_id FROM payment_charges WHERE request_key = ?"_s, { key });
    if (earlier.next())
        return WorkspaceReply::json(receipt(db, earlier.value(0).toString()));

    const std::optional<Invoice> owed = invoice(db, body.value("invoice_id"_L1).toString());
    if (!owed || owed->clientID != body.value("client_id"_L1).toString())
        return WorkspaceReply::error(404, u"That invoice is not open for this client."_s);
    const qint64 amount = body.value("amount"_L1).toInteger();
    if (amount < 1 || amount > owed->owed)
        return WorkspaceReply::error(400, u"Charge between $0.01 and what the invoice still owes."_s);
    const QString profile = body.value("payment_profile_id"_L1).toString();
    if (single(db, u"SELECT COUNT(*) FROM payment_cards WHERE payment_profile_id = ? AND client_id = ?"_s,
            { profile, owed->clientID })
        == 0)
        return WorkspaceReply::error(404, u"That card is not saved for this client."_s);

    const QString id = newID("pay-"_L1);
    db.transaction();
    insertPayment(db, id, *owed, amount, u"Paid"_s, today(), u"card"_s, QString());
    run(db, u"INSERT INTO payment_charges (request_key, payment_id) VALUES (?, ?)"_s, { key, id });
    db.commit();
    return WorkspaceReply::json(receipt(db, id));
}

WorkspaceReply recordOffline(WorkspaceServer &server, const WorkspaceRequest &request)
{
    const QJsonObject body = request.jsonBody().value_or(QJsonObject());
    const QString reference = body.value("reference"_L1).toString().trimmed();
    const QString paidOn = body.value("paid_on"_L1).toString();
    if (reference.isEmpty() || reference.size() > 120)
        return WorkspaceReply::error(400, u"Give the payment a reference of up to 120 characters."_s);
    if (!TarnLedgerDates::isDay(paidOn))
        return WorkspaceReply::error(400, u"Give the day it was paid as YYYY-MM-DD."_s);
    QSqlDatabase db = server.store().database();
    const std::optional<Invoice> owed = invoice(db, request.arguments().value(0));
    if (!owed || owed->owed <= 0)
        return WorkspaceReply::error(404, u"That invoice is not open."_s);
    const QString id = newID("pay-"_L1);
    insertPayment(db, id, *owed, owed->owed, u"Paid"_s, paidOn, u"offline"_s, reference);
    return WorkspaceReply::json(QJsonObject { { u"id"_s, id } });
}

WorkspaceReply requestRefund(WorkspaceServer &server, const WorkspaceRequest &request)
{
    const QJsonObject body = request.jsonBody().value_or(QJsonObject());
    const QString paymentID = body.value("payment_id"_L1).toString();
    const qint64 amount = body.value("amount"_L1).toInteger();
    const QString reason = body.value("reason"_L1).toString().trimmed();
    QSqlDatabase db = server.store().database();
    QSqlQuery payment = run(db, u"SELECT amount, status FROM payments WHERE id = ?"_s, { paymentID });
    if (!payment.next())
        return WorkspaceReply::error(404, u"That payment is not in the terminal."_s);
    const qint64 paid = payment.value(0).toLongLong();
    const QString status = payment.value(1).toString();
    const TarnPaymentRefundState state = refundState(db, paymentID);
    if (!state.canRefund(paymentID, status, paid))
        return WorkspaceReply::error(409, u"This payment cannot be refunded now."_s);
    if (amount < 1 || amount > state.leftToRefund(paymentID, paid))
        return WorkspaceReply::error(400, u"Refund between $0.01 and what is left of the payment."_s);
    if (reason.size() > 500)
        return WorkspaceReply::error(400, u"Keep the reason under 500 characters."_s);
    const QString id = newID("rr-"_L1);
    run(db,
        u"INSERT INTO payment_refund_requests (id, payment_id, amount, status, reason) VALUES (?, ?, ?, 'Requested', ?)"_s,
        { id, paymentID, amount, reason });
    return WorkspaceReply::json(QJsonObject { { u"id"_s, id } });
}

WorkspaceReply decide(WorkspaceServer &server, const WorkspaceRequest &request, bool approve)
{
    const QString id = request.arguments().value(0);
    const QString note = request.jsonBody().value_or(QJsonObject()).value("note"_L1).toString();
    QSqlDatabase db = server.store().database();
    QSqlQuery asked = run(db,
        u"SELECT r.payment_id, r.amount, r.status, p.client_id, p.client FROM payment_refund_requests r"
        " JOIN payments p ON p.id = r.payment_id WHERE r.id = ?"_s,
        { id });
    if (!asked.next())
        return WorkspaceReply::error(404, u"That refund request does not exist."_s);
    if (asked.value(2).toString() != "Requested"_L1)
        return WorkspaceReply::error(409, u"This refund request was already decided."_s);
    const QString status = approve ? u"Refunded"_s : u"Denied"_s;
    db.transaction();
    run(db, u"UPDATE payment_refund_requests SET status = ?, note = ? WHERE id = ?"_s, { status, note, id });
    if (approve) {
        // The money going back is listed as a payment of its own.
        const Invoice payer { QString(), asked.value(3).toString(), asked.value(4).toString(), 0 };
        insertPayment(db, refundPrefix + id, payer, asked.value(1).toLongLong(), u"Refunded"_s, today(), u"refund"_s,
            asked.value(0).toString());
    }
    db.commit();
    return WorkspaceReply::json(QJsonObject { { u"status"_s, status } });
}

} // namespace

namespace PaymentsRoutes {

void add(WorkspaceServer &server)
{
    const QSqlDatabase db = server.store().database();
    if (!PaymentsStore::prepare(db))
        return;
    PaymentsSeed::plant(db);

    WorkspaceRouter &router = server.router();
    const auto guarded = [&server](bool ownerOnly, auto handler) {
        return [&server, ownerOnly, handler](const WorkspaceRequest &request) {
            if (std::optional<WorkspaceReply> refused = refusal(server, request, ownerOnly))
                return std::move(*refused);
            return handler(request);
        };
    };
    const auto body = [](const WorkspaceRequest &request) { return request.jsonBody().value_or(QJsonObject()); };

    router.add("GET", u"/api/payments-terminal/payments"_s, Access::Session,
        guarded(false, [&server](const WorkspaceRequest &) {
            const QSqlDatabase store = server.store().database();
            PaymentsStore::runDueSchedules(store, QDate::currentDate());
            return WorkspaceReply::json(QJsonObject { { u"payments"_s, PaymentsStore::paymentsJSON(store) },
                { u"refund_requests"_s, refundRequestsJSON(store) }, { u"open_invoices"_s, openInvoicesJSON(store) },
                { u"clients"_s, PaymentsStore::clientsJSON(store) } });
        }));
    router.add("GET", u"/api/payments-terminal/cards"_s, Access::Session,
        guarded(false, [&server](const WorkspaceRequest &request) {
            return WorkspaceReply::json(
                PaymentsStore::cardsJSON(server.store().database(), request.query(u"client_id"_s)));
        }));
    router.add("POST", u"/api/payments-terminal/payments"_s, Access::Session,
        guarded(false, [&server, body](const WorkspaceRequest &request) {
            return PaymentsStore::recordPayment(server.store().database(), body(request));
        }));
    router.add("PATCH", u"/api/payments-terminal/payments/:payment"_s, Access::Session,
        guarded(false, [&server, body](const WorkspaceRequest &request) {
            return PaymentsStore::updatePayment(server.store().database(), request.arguments().at(0), body(request));
        }));
    router.add("POST", u"/api/payments-terminal/schedules"_s, Access::Session,
        guarded(false, [&server, body](const WorkspaceRequest &request) {
            return PaymentsStore::manageSchedule(server.store().database(), body(request));
        }));
    router.add("POST", u"/api/payments-terminal/card-sessions"_s, Access::Session,
        guarded(false, [&server, body](const WorkspaceRequest &request) {
            const QString host = QString::fromLatin1(request.header("Host").value_or(QByteArray()));
            return PaymentsCardSessions::start(
                server.store().database(), request.session().personId, host, body(request));
        }));
    router.add("POST", u"/api/payments-terminal/card-sessions/:session/finish"_s, Access::Session,
        guarded(false, [&server](const WorkspaceRequest &request) {
            return PaymentsCardSessions::finish(
                server.store().database(), request.session().personId, request.arguments().at(0));
        }));
    // The processor's page: its token is its only credential.
    router.add("GET", u"/card-sessions/:token"_s, Access::Public, [&server](const WorkspaceRequest &request) {
        return PaymentsCardSessions::page(server.store().database(), request.arguments().at(0));
    });
    router.add("POST", u"/card-sessions/:token"_s, Access::Public, [&server](const WorkspaceRequest &request) {
        return PaymentsCardSessions::submit(server.store().database(), request.arguments().at(0), request.body());
    });
    if (server.options().testFaults) {
        router.add("POST", u"/api/test/payments-terminal/card-sessions/:session/expire"_s, Access::Public,
            [&server](const WorkspaceRequest &request) {
                return PaymentsCardSessions::expire(server.store().database(), request.arguments().at(0));
            });
    }
    router.add("POST", u"/api/payments-terminal/charge"_s, Access::Session,
        guarded(false, [&server](const WorkspaceRequest &request) { return charge(server, request); }));
    router.add("POST", u"/api/payments-terminal/invoices/:invoice/record"_s, Access::Session,
        guarded(false, [&server](const WorkspaceRequest &request) { return recordOffline(server, request); }));
    router.add("POST", u"/api/payments-terminal/refund-requests"_s, Access::Session,
        guarded(false, [&server](const WorkspaceRequest &request) { return requestRefund(server, request); }));
    router.add("POST", u"/api/payments-terminal/refund-requests/:request/approve"_s, Access::Session,
        guarded(true, [&server](const WorkspaceRequest &request) { return decide(server, request, true); }));
    router.add("POST", u"/api/payments-terminal/refund-requests/:request/deny"_s, Access::Session,
        guarded(true, [&server](const WorkspaceRequest &request) { return decide(server, request, false); }));
}

} // namespace PaymentsRoutes
