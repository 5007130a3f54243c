#include "money/MoneyTestSession.h"
#include "money/TarnPaymentsCalls.h"

#include <QDate>
#include <QTest>
#include <QUrl>
#include <QUrlQuery>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

std::optional<TarnPayment> paymentOf(TarnAPI &api, const QString &id)
{
    const QList<TarnPayment> all = tarnWaitFor(TarnPaymentsCalls::payments(api)).payments;
    const auto found = std::find_if(all.begin(), all.end(), [&id](const TarnPayment &p) { return p.id == id; });
    return found == all.end() ? std::nullopt : std::optional(*found);
}

QString day(int fromToday)
{
    return QDate::currentDate().addDays(fromToday).toString(Qt::ISODate);
}

struct DraftCase {
    TarnPaymentRecordDraft draft;
    // Empty: recorded.
    QString error;
};

struct ChangeCase {
    QString payment;
    TarnPaymentChange change;
    QString error;
    QString status;
};

struct ScheduleCase {
    QString schedule;
    QStringList actions;
    // The refusal of the last action, or empty.
    QString error;
    QString status;
};

struct CardCase {
    QByteArray form;
    QString problem;
};

TarnPaymentScheduleAction on(const QString &schedule, const QString &action)
{
    return { action, schedule, std::nullopt, std::nullopt, std::nullopt, std::nullopt, std::nullopt };
}

} // namespace

Q_DECLARE_METATYPE(DraftCase)
Q_DECLARE_METATYPE(ChangeCase)
Q_DECLARE_METATYPE(ScheduleCase)
Q_DECLARE_METATYPE(CardCase)

// Offline payments recorded and changed, recurring charges, and cards saved
// through the processor's page, against the real local workspace.
class TestPaymentPlans : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void recordPayment_data();
    void recordPayment();
    void updatePayment_data();
    void updatePayment();
    void staleChangeAnswersTheCurrentPayment();
    void scheduleActions_data();
    void scheduleActions();
    void cardPageRefuses_data();
    void cardPageRefuses();
    void cardSavedThroughThePage();
    void expiredSession();
    void closedToPeopleWithoutPayments();

private:
    // The card page's answer to the form, posted as a browser does.
    TestWorkspace::Answer post(const QString &url, const QByteArray &form);
    TestWorkspace::Answer get(const QString &url) { return session.workspace->send("GET", QUrl(url).path()); }

    MoneyTestSession session;
};

void TestPaymentPlans::initTestCase()
{
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
}

TestWorkspace::Answer TestPaymentPlans::post(const QString &url, const QByteArray &form)
{
    return session.workspace->send(
        "POST", QUrl(url).path(), form, { { "Content-Type", "application/x-www-form-urlencoded" } });
}

void TestPaymentPlans::recordPayment_data()
{
    QTest::addColumn<DraftCase>("row");
    const auto draft = [](qint64 amount, QString status, QString reference, QString paidOn, QString client) {
        return TarnPaymentRecordDraft { std::move(client), amount, std::move(status), std::move(reference),
            std::move(paidOn) };
    };
    const QString marlow = u"c-marlow"_s;
    QTest::addRow("pending transfer") << DraftCase { draft(125000, u"Pending"_s, u"Transfer 7"_s, day(0), marlow), {} };
    QTest::addRow("paid cheque") << DraftCase { draft(1, u"Paid"_s, u"Cheque 12"_s, u"2024-02-29"_s, marlow), {} };
    QTest::addRow("refunded is no state to record") << DraftCase { draft(100, u"Refunded"_s, u"x"_s, day(0), marlow),
        u"A recorded payment is \"Paid\" or \"Pending\"."_s };
    QTest::addRow("nothing") << DraftCase { draft(0, u"Paid"_s, u"x"_s, day(0), marlow),
        u"Record an amount of at least $0.01."_s };
    QTest::addRow("no reference") << DraftCase { draft(100, u"Paid"_s, u"  "_s, day(0), marlow),
        u"Give the payment a reference of up to 120 characters."_s };
    QTest::addRow("no such day") << DraftCase { draft(100, u"Paid"_s, u"x"_s, u"2025-02-29"_s, marlow),
        u"Give the day it was paid as YYYY-MM-DD."_s };
    QTest::addRow("unknown client") << DraftCase { draft(100, u"Paid"_s, u"x"_s, day(0), u"c-nobody"_s),
        u"That client is not in the workspace."_s };
}

void TestPaymentPlans::recordPayment()
{
    QFETCH(DraftCase, row);
    TarnAPI &api = *session.api;
    if (!row.error.isEmpty()) {
        QCOMPARE(errorOf(TarnPaymentsCalls::recordPayment(api, row.draft)), row.error);
        return;
    }
    const QString id = tarnWaitFor(TarnPaymentsCalls::recordPayment(api, row.draft)).id;
    const std::optional<TarnPayment> recorded = paymentOf(api, id);
    QVERIFY(recorded);
    QCOMPARE(recorded->client, u"Marlow & Sons"_s);
    QCOMPARE(recorded->amount, row.draft.amount);
    QCOMPARE(recorded->status, row.draft.status);
    QCOMPARE(recorded->date, row.draft.paidOn);
    QCOMPARE(recorded->method, u"offline"_s);
    QCOMPARE(recorded->invoice_id, std::nullopt);
    QCOMPARE(recorded->version, 1);
}

void TestPaymentPlans::updatePayment_data()
{
    QTest::addColumn<ChangeCase>("row");
    const QString cannot = u"Card payments and refunds cannot be changed; refund a card payment instead."_s;
    const QString onlyPaid = u"A pending payment can be marked paid; nothing else changes its status."_s;
    const auto change
        = [](std::optional<QString> status, std::optional<QString> reference, std::optional<QString> paidOn) {
              return TarnPaymentChange { 1, std::move(status), std::move(reference), std::move(paidOn) };
          };
    QTest::addRow("pending marked paid") << ChangeCase { u"pending"_s, change(u"Paid"_s, {}, {}), {}, u"Paid"_s };
    QTest::addRow("reference and day") << ChangeCase { u"pending"_s,
        change(std::nullopt, u"Transfer 9"_s, u"2026-01-31"_s), {}, u"Pending"_s };
    QTest::addRow("paid goes back to pending") << ChangeCase { u"paid"_s, change(u"Pending"_s, {}, {}), onlyPaid, {} };
    QTest::addRow("pending marked refunded")
        << ChangeCase { u"pending"_s, change(u"Refunded"_s, {}, {}), onlyPaid, {} };
    QTest::addRow("a bad day") << ChangeCase { u"pending"_s, change(std::nullopt, {}, u"2026-13-01"_s),
        u"Give the day it was paid as YYYY-MM-DD."_s, {} };
    QTest::addRow("card payment") << ChangeCase { u"pay-1031"_s, change(std::nullopt, u"x"_s, {}), cannot, {} };
    QTest::addRow("refund") << ChangeCase { u"refund-rr-2"_s, change(std::nullopt, u"x"_s, {}), cannot, {} };
    QTest::addRow("missing") << ChangeCase { u"pay-none"_s, change(u"Paid"_s, {}, {}),
        u"That payment is not in the terminal."_s, {} };
}

void TestPaymentPlans::updatePayment()
{
    QFETCH(ChangeCase, row);
    TarnAPI &api = *session.api;
    QString id = row.payment;
    if (id == "pending"_L1 || id == "paid"_L1) {
        const TarnPaymentRecordDraft draft { u"c-oakline"_s, 5000, id == "paid"_L1 ? u"Paid"_s : u"Pending"_s,
            u"Transfer 8"_s, day(-1) };
        id = tarnWaitFor(TarnPaymentsCalls::recordPayment(api, draft)).id;
    }
    if (!row.error.isEmpty()) {
        QCOMPARE(errorOf(TarnPaymentsCalls::updatePayment(api, id, row.change)), row.error);
        return;
    }
    const TarnPayment changed = tarnWaitFor(TarnPaymentsCalls::updatePayment(api, id, row.change));
    QCOMPARE(changed.status, row.status);
    QCOMPARE(changed.version, 2);
    QCOMPARE(changed.reference, row.change.reference.value_or(u"Transfer 8"_s));
    QCOMPARE(changed.date, row.change.paid_on.value_or(day(-1)));
    QCOMPARE(paymentOf(api, id), changed);
}

void TestPaymentPlans::staleChangeAnswersTheCurrentPayment()
{
    TarnAPI &api = *session.api;
    const QString id = tarnWaitFor(
        TarnPaymentsCalls::recordPayment(api, { u"c-quill"_s, 9900, u"Pending"_s, u"Transfer 3"_s, day(-3) }))
                           .id;
    const TarnPaymentChange first { 1, std::nullopt, u"Transfer 3b"_s, std::nullopt };
    QCOMPARE(tarnWaitFor(TarnPaymentsCalls::updatePayment(api, id, first)).version, 2);
    // Someone else read version 1 too, and marks it paid.
    const TestWorkspace::Answer stale = session.send("PATCH", u"api/payments-terminal/payments/"_s + id,
        QJsonObject { { u"version"_s, 1 }, { u"status"_s, u"Paid"_s } });
    QCOMPARE(stale.status, 409);
    QCOMPARE(stale.json().value("error"_L1).toString(),
        u"Someone changed this payment in the meantime; it now shows their change."_s);
    const QJsonObject current = stale.json().value("payment"_L1).toObject();
    QCOMPARE(current.value("reference"_L1).toString(), u"Transfer 3b"_s);
    QCOMPARE(current.value("status"_L1).toString(), u"Pending"_s);
    QCOMPARE(paymentOf(api, id)->status, u"Pending"_s);
}

void TestPaymentPlans::scheduleActions_data()
{
    QTest::addColumn<ScheduleCase>("row");
    const QString cancelled = u"This schedule was cancelled."_s;
    // The demo's Oakline schedule runs, Fernhill's is paused.
    QTest::addRow("pause") << ScheduleCase { u"sch-oakline"_s, { u"pause"_s }, {}, u"Paused"_s };
    QTest::addRow("pause twice") << ScheduleCase { u"sch-oakline"_s, { u"pause"_s, u"pause"_s },
        u"This schedule is already paused."_s, u"Paused"_s };
    QTest::addRow("resume") << ScheduleCase { u"sch-fernhill"_s, { u"resume"_s }, {}, u"Active"_s };
    QTest::addRow("resume a running one")
        << ScheduleCase { u"sch-oakline"_s, { u"resume"_s }, u"This schedule is not paused."_s, u"Active"_s };
    QTest::addRow("cancel a paused one") << ScheduleCase { u"sch-fernhill"_s, { u"cancel"_s }, {}, u"Cancelled"_s };
    QTest::addRow("nothing after cancel")
        << ScheduleCase { u"sch-oakline"_s, { u"cancel"_s, u"resume"_s }, cancelled, u"Cancelled"_s };
    QTest::addRow("unknown action") << ScheduleCase { u"sch-oakline"_s, { u"skip"_s },
        u"An action is \"create\", \"pause\", \"resume\" or \"cancel\"."_s, u"Active"_s };
}

void TestPaymentPlans::scheduleActions()
{
    QFETCH(ScheduleCase, row);
    // A fresh workspace per row: each one changes the demo's schedules.
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    TarnAPI &api = *session.api;
    for (qsizetype i = 0; i + 1 < row.actions.size(); ++i)
        tarnWaitFor(TarnPaymentsCalls::managePaymentSchedule(api, on(row.schedule, row.actions.at(i))));
    const TarnPaymentScheduleAction last = on(row.schedule, row.actions.last());
    QCOMPARE(errorOf(TarnPaymentsCalls::managePaymentSchedule(api, last)), row.error);

    const QString client = u"c-"_s + row.schedule.mid(4);
    const QList<TarnPaymentSchedule> listed = tarnWaitFor(TarnPaymentsCalls::paymentCards(api, client)).schedules;
    if (row.status == "Cancelled"_L1) {
        QVERIFY(listed.isEmpty());
        return;
    }
    QCOMPARE(listed.size(), 1);
    QCOMPARE(listed.first().status, row.status);
    QVERIFY(listed.first().next_on >= day(0));
}

void TestPaymentPlans::cardPageRefuses_data()
{
    QTest::addColumn<CardCase>("row");
    const QByteArray expiry = "expiry=" + QDate::currentDate().addYears(1).toString(u"MM%2Fyy"_s).toLatin1();
    QTest::addRow("check digit") << CardCase { "number=4242+4242+4242+4241&cvc=123&" + expiry,
        u"Check the card number."_s };
    QTest::addRow("too short") << CardCase { "number=42&cvc=123&" + expiry, u"Check the card number."_s };
    QTest::addRow("expired last month") << CardCase { "number=4242424242424242&cvc=123&expiry="
            + QDate::currentDate().addMonths(-1).toString(u"MM%2Fyy"_s).toLatin1(),
        u"This card has expired."_s };
    QTest::addRow("no month 13") << CardCase { "number=4242424242424242&cvc=123&expiry=13%2F40",
        u"Give the expiry as MM/YY."_s };
    QTest::addRow("four digits on a Visa")
        << CardCase { "number=4242424242424242&cvc=1234&" + expiry, u"Give the 3-digit security code."_s };
    QTest::addRow("three on an American Express")
        << CardCase { "number=378282246310005&cvc=123&" + expiry, u"Give the 4-digit security code."_s };
}

void TestPaymentPlans::cardPageRefuses()
{
    QFETCH(CardCase, row);
    const TarnCardSession started = tarnWaitFor(TarnPaymentsCalls::startCardSession(*session.api, u"c-quill"_s));
    const TestWorkspace::Answer refused = post(started.url, row.form);
    QCOMPARE(refused.status, 400);
    const QString page = QString::fromUtf8(refused.body);
    QVERIFY2(page.contains(row.problem), qPrintable(page));
    // What was typed stays, except the security code.
    const QUrlQuery typed(QString::fromLatin1(row.form).replace(u'+', u' '));
    QVERIFY(page.contains(u"value=\"%1\""_s.arg(typed.queryItemValue(u"number"_s))));
    QVERIFY(!page.contains(u"value=\"%1\""_s.arg(typed.queryItemValue(u"cvc"_s))));
    QCOMPARE(tarnWaitFor(TarnPaymentsCalls::finishCardSession(*session.api, started.id)).status, u"open"_s);
}

void TestPaymentPlans::cardSavedThroughThePage()
{
    TarnAPI &api = *session.api;
    const QString client = u"c-harbor"_s;
    const TarnCardSession started = tarnWaitFor(TarnPaymentsCalls::startCardSession(api, client));
    QCOMPARE(QUrl(started.url).host(), session.workspace->url().host());
    const TestWorkspace::Answer form = get(started.url);
    QCOMPARE(form.status, 200);
    QVERIFY(form.body.contains("Card number"));
    QCOMPARE(tarnWaitFor(TarnPaymentsCalls::finishCardSession(api, started.id)).status, u"open"_s);

    const QString expiry = QDate::currentDate().addYears(2).toString(u"MM/yy"_s);
    const TestWorkspace::Answer saved
        = post(started.url, "number=5555-5555-5555-4444&cvc=321&expiry=" + QUrl::toPercentEncoding(expiry));
    QCOMPARE(saved.status, 200);
    QVERIFY2(saved.body.contains("You can close this page."), saved.body.constData());
    QVERIFY(!saved.body.contains("5555555555554444") && !saved.body.contains("321"));

    const TarnCardSessionProgress done = tarnWaitFor(TarnPaymentsCalls::finishCardSession(api, started.id));
    QCOMPARE(done.status, u"completed"_s);
    QVERIFY(done.card);
    QCOMPARE(done.card->card_type, u"Mastercard"_s);
    QCOMPARE(done.card->last4, u"4444"_s);
    QCOMPARE(done.card->expiration, expiry);
    QCOMPARE(tarnWaitFor(TarnPaymentsCalls::finishCardSession(api, started.id)), done);
    QCOMPARE(tarnWaitFor(TarnPaymentsCalls::paymentCards(api, client)).cards, QList { *done.card });
    // The page is done with: posting again saves nothing.
    QVERIFY(post(started.url, "number=4242424242424242&cvc=123&expiry=" + QUrl::toPercentEncoding(expiry))
                .body.contains("ending 4444"));
}

void TestPaymentPlans::expiredSession()
{
    TarnAPI &api = *session.api;
    const TarnCardSession started = tarnWaitFor(TarnPaymentsCalls::startCardSession(api, u"c-quill"_s));
    QCOMPARE(
        session.workspace->send("POST", u"api/test/payments-terminal/card-sessions/%1/expire"_s.arg(started.id)).status,
        200);
    QCOMPARE(tarnWaitFor(TarnPaymentsCalls::finishCardSession(api, started.id)).status, u"expired"_s);
    const TestWorkspace::Answer page = get(started.url);
    QCOMPARE(page.status, 410);
    QCOMPARE(post(started.url, "number=4242424242424242&cvc=123&expiry=12%2F40").status, 410);
}

void TestPaymentPlans::closedToPeopleWithoutPayments()
{
    const TarnCardSession mine = tarnWaitFor(TarnPaymentsCalls::startCardSession(*session.api, u"c-quill"_s));
    // Tomas keeps the books but has no Payments app.
    QVERIFY(session.signInAs(u"tomas@halvard.example"_s).isEmpty());
    TarnAPI &api = *session.api;
    const QString refused = u"Payments is not open to you."_s;
    QCOMPARE(errorOf(TarnPaymentsCalls::paymentCards(api, u"c-oakline"_s)), refused);
    QCOMPARE(
        errorOf(TarnPaymentsCalls::recordPayment(api, { u"c-oakline"_s, 100, u"Paid"_s, u"x"_s, day(0) })), refused);
    QCOMPARE(errorOf(TarnPaymentsCalls::updatePayment(api, u"pay-offline-1"_s, { 1, u"Paid"_s, {}, {} })), refused);
    QCOMPARE(errorOf(TarnPaymentsCalls::managePaymentSchedule(api, on(u"sch-oakline"_s, u"pause"_s))), refused);
    QCOMPARE(errorOf(TarnPaymentsCalls::startCardSession(api, u"c-oakline"_s)), refused);
    QCOMPARE(errorOf(TarnPaymentsCalls::finishCardSession(api, mine.id)), refused);
    QVERIFY(session.signInAs(u"maren@halvard.example"_s).isEmpty());
}

QTEST_GUILESS_MAIN(TestPaymentPlans)
#include "tst_payment_plans.moc"
