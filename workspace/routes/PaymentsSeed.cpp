#include "workspace/routes/PaymentsSeed.h"

#include "workspace/routes/BooksSql.h"
#include "workspace/routes/PaymentsStore.h"

#include <QDate>
#include <QSqlQuery>
#include <QVariant>

using namespace Qt::StringLiterals;
using namespace BooksSql;

namespace {

struct Payment {
    QString id;
    QString clientID;
    QString client;
    QString invoiceID;
    qint64 amount = 0;
    QString status;
    QString date;
    QString method;
    QString reference;
};

void insertPayment(const QSqlDatabase &db, const Payment &payment)
{
    run(db,
        u"INSERT INTO payments (id, client_id, client, invoice_id, amount, status, date, method, reference)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { payment.id, payment.clientID, payment.client, orNull(payment.invoiceID), payment.amount, payment.status,
            payment.date, payment.method, orNull(payment.reference) });
}

// A month of card payments for the demo company, dated back from today, with
// open invoices to charge and a refund in each state.
void plantMonth(QSqlDatabase db)
{
    struct Client {
        QString id;
        QString name;
        QString cardType;
        QString last4;
    };
    const Client clients[] = {
        { u"c-brightwater"_s, u"Brightwater Dental"_s, u"Visa"_s, u"4242"_s },
        { u"c-oakline"_s, u"Oakline Studio"_s, u"Mastercard"_s, u"5100"_s },
        { u"c-fernhill"_s, u"Fernhill Bakery"_s, u"Visa"_s, u"1881"_s },
        { u"c-marlow"_s, u"Marlow & Sons"_s, u"American Express"_s, u"0005"_s },
        { u"c-tidewater"_s, u"Tidewater Yoga"_s, u"Discover"_s, u"6011"_s },
    };
    const QDate now = QDate::currentDate();
    db.transaction();
    for (const Client &client : clients) {
        run(db,
            u"INSERT INTO payment_cards (payment_profile_id, client_id, card_type, last4, expiration)"
            " VALUES (?, ?, ?, ?, ?)"_s,
            { QString(u"pp-"_s + client.id.mid(2)), client.id, client.cardType, client.last4,
                now.addYears(2).toString(u"MM/yy"_s) });
    }
    const qint64 amounts[] = { 48000, 125050, 36075, 89900, 21000, 64500, 150000, 27550, 99000, 43210, 72000, 18800 };
    int number = 1031;
    for (int i = 0; i < 12; ++i, ++number) {
        const Client &client = clients[i % 5];
        const QString invoiceID = u"inv-%1"_s.arg(number);
        const QDate paidOn = now.addDays(-2 * i - 1);
        run(db,
            u"INSERT INTO payment_invoices (id, client_id, client, invoice_number, due_on, amount)"
            " VALUES (?, ?, ?, ?, ?, ?)"_s,
            { invoiceID, client.id, client.name, QString::number(number), paidOn.addDays(14).toString(Qt::ISODate),
                amounts[i] });
        // One in four is a pending card payment still settling.
        insertPayment(db,
            { u"pay-%1"_s.arg(number), client.id, client.name, invoiceID, amounts[i],
                i % 4 == 3 ? u"Pending"_s : u"Paid"_s, paidOn.toString(Qt::ISODate), u"card"_s, {} });
    }
    const struct {
        QString id;
        QString payment;
        qint64 amount;
        QString status;
        QString reason;
    } refunds[] = {
        { u"rr-1"_s, u"pay-1032"_s, 25000, u"Requested"_s, u"Two chairs arrived scratched."_s },
        { u"rr-2"_s, u"pay-1035"_s, 21000, u"Refunded"_s, u"Class cancelled."_s },
        { u"rr-3"_s, u"pay-1037"_s, 150000, u"Denied"_s, u"Asked for a full refund after delivery."_s },
    };
    for (const auto &refund : refunds) {
        run(db,
            u"INSERT INTO payment_refund_requests (id, payment_id, amount, status, reason) VALUES (?, ?, ?, ?, ?)"_s,
            { refund.id, refund.payment, refund.amount, refund.status, refund.reason });
    }
    insertPayment(db,
        { u"refund-rr-2"_s, u"c-tidewater"_s, u"Tidewater Yoga"_s, {}, 21000, u"Refunded"_s,
            now.addDays(-5).toString(Qt::ISODate), u"refund"_s, u"pay-1035"_s });
    const struct {
        int number;
        int client;
        qint64 amount;
        int dueIn;
    } open[] = { { 1043, 0, 56000, 10 }, { 1044, 1, 212500, 20 }, { 1045, 3, 9800, -3 } };
    for (const auto &owed : open) {
        run(db,
            u"INSERT INTO payment_invoices (id, client_id, client, invoice_number, due_on, amount)"
            " VALUES (?, ?, ?, ?, ?, ?)"_s,
            { u"inv-%1"_s.arg(owed.number), clients[owed.client].id, clients[owed.client].name,
                QString::number(owed.number), now.addDays(owed.dueIn).toString(Qt::ISODate), owed.amount });
    }
    db.commit();
}

// Three recurring charges on the demo cards, one paused, each with its past
// runs listed as card payments. An offline payment waits to be marked paid.
void plantSchedules(QSqlDatabase db)
{
    const QDate now = QDate::currentDate();
    const struct {
        QString id;
        QString client;
        QString name;
        qint64 amount;
        QString interval;
        int nextIn;
        QString status;
        int pastRuns;
    } schedules[] = {
        { u"sch-oakline"_s, u"c-oakline"_s, u"Oakline Studio"_s, 45000, u"monthly"_s, 12, u"Active"_s, 3 },
        { u"sch-tidewater"_s, u"c-tidewater"_s, u"Tidewater Yoga"_s, 8500, u"weekly"_s, 7, u"Active"_s, 4 },
        { u"sch-fernhill"_s, u"c-fernhill"_s, u"Fernhill Bakery"_s, 12000, u"monthly"_s, 20, u"Paused"_s, 2 },
    };
    db.transaction();
    for (const auto &schedule : schedules) {
        const QDate next = now.addDays(schedule.nextIn);
        run(db,
            u"INSERT INTO payment_schedules (id, client_id, client, payment_profile_id, amount, interval, next_on,"
            " status) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s,
            { schedule.id, schedule.client, schedule.name, QString(u"pp-"_s + schedule.client.mid(2)), schedule.amount,
                schedule.interval, next.toString(Qt::ISODate), schedule.status });
        for (int run = 1; run <= schedule.pastRuns; ++run) {
            const QDate day = schedule.interval == "weekly"_L1 ? next.addDays(-7 * run) : next.addMonths(-run);
            const QString date = day.toString(Qt::ISODate);
            insertPayment(db,
                { u"pay-%1-%2"_s.arg(schedule.id, date), schedule.client, schedule.name, {}, schedule.amount, u"Paid"_s,
                    date, u"card"_s, PaymentsStore::runReference(schedule.interval) });
        }
    }
    insertPayment(db,
        { u"pay-offline-1"_s, u"c-marlow"_s, u"Marlow & Sons"_s, {}, 64000, u"Pending"_s,
            now.addDays(-2).toString(Qt::ISODate), u"offline"_s, u"Bank transfer, awaiting funds"_s });
    db.commit();
}

} // namespace

namespace PaymentsSeed {

void plant(const QSqlDatabase &db)
{
    if (single(db, u"SELECT COUNT(*) FROM payment_invoices"_s) == 0)
        plantMonth(db);
    if (single(db, u"SELECT COUNT(*) FROM payment_schedules"_s) == 0)
        plantSchedules(db);
}

} // namespace PaymentsSeed
