#include "money/MoneyTestSession.h"
#include "money/TarnBooksCalls.h"
#include "money/TarnPaymentsCalls.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

// One books or payments call: what goes over the wire and what its answer
// decodes to. The workspace answers each with the canned `answer`, so the
// row checks both directions without depending on the service's data.
struct Call {
    QByteArray method;
    // As sent: ids escaped.
    QString path;
    QString query;
    QString body;
    QString answer;
    // Runs the call and names what it decoded.
    std::function<QString(TarnAPI &)> run;
    QString decoded;
};

QList<Call> calls();

} // namespace

Q_DECLARE_METATYPE(Call)

// Calls as they go over the wire to a real workspace: the method, the escaped
// path and query and the body exactly as sent, and the answer decoded. The
// rows are what the workspace's own routes would not notice: ids holding
// every character a path must escape, and bodies with a rule of their own.
class TestMoneyCalls : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void wire_data();
    void wire();

private:
    MoneyTestSession session;
};

namespace {

// An id with every character a path must not carry raw.
const QString awkward = u"a/b?c&d=e+f#g h"_s;
const QString escaped = u"a%2Fb%3Fc%26d%3De%2Bf%23g%20h"_s;

QString normalJSON(const QString &text)
{
    return QString::fromUtf8(QJsonDocument::fromJson(text.toUtf8()).toJson(QJsonDocument::Compact));
}

const TarnOpenInvoice invoice { .id = u"inv 9"_s,
    .client_id = u"c1"_s,
    .client = u"Brightwater"_s,
    .invoice_number = u"1042"_s,
    .due_on = u"2026-11-30"_s,
    .amount = 50000,
    .remaining = 12550 };
const TarnPaymentCard card {
    .payment_profile_id = u"pp/7"_s, .card_type = u"Visa"_s, .last4 = u"4242"_s, .expiration = u"12/28"_s, .saved = true
};

QList<Call> calls()
{
    using namespace TarnBooksCalls;
    using namespace TarnPaymentsCalls;
    const QString entry = uR"({"entry_id":"e-1"})"_s;
    const QString ok = uR"({"ok":true})"_s;
    const QString created = uR"({"id":"n-1"})"_s;
    const QString dated = uR"({"date":"2026-11-02"})"_s;
    const QString day = u"2026-11-02"_s;
    const auto entryOf = [](QCoro::Task<TarnBooksEntryID> task) { return tarnWaitFor(std::move(task)).entry_id; };
    const auto idOf = [](QCoro::Task<TarnCreatedID> task) { return tarnWaitFor(std::move(task)).id; };
    const auto okOf = [](QCoro::Task<TarnOK> task) { return tarnWaitFor(std::move(task)).ok ? u"ok"_s : u"no"_s; };

    return {
        { "GET", u"/api/accounting/register"_s,
            u"start=2026-01-01&end=2026-12-31&account_id=a%2F1&limit=100&offset=200"_s, {},
            uR"({"start":"2026-01-01","end":"2026-12-31","account_id":"a/1","total":250,"limit":100,"offset":200,
                "entries":[]})"_s,
            [](TarnAPI &api) {
                const TarnBooksRegister page
                    = tarnWaitFor(booksRegister(api, u"2026-01-01"_s, u"2026-12-31"_s, u"a/1"_s, 200));
                return u"%1/%2"_s.arg(page.offset).arg(page.total);
            },
            u"200/250"_s },
        // A payment never names an income account, even when one is given.
        { "POST", u"/api/accounting/source-post"_s, {}, uR"({"kind":"payment","id":"p1"})"_s, created,
            [idOf](TarnAPI &api) { return idOf(postBooksSource(api, u"payment"_s, u"p1"_s, u"4000"_s)); }, u"n-1"_s },
        { "POST", u"/api/accounting/bank-rows/%1/match"_s.arg(escaped), {}, uR"({"entry_id":"e-1"})"_s, entry,
            [entryOf](TarnAPI &api) { return entryOf(matchBooksBankRow(api, awkward, u"e-1"_s)); }, u"e-1"_s },
        { "POST", u"/api/accounting/bank-rows/%1/unmatch"_s.arg(escaped), {}, {}, ok,
            [okOf](TarnAPI &api) { return okOf(unmatchBooksBankRow(api, awkward)); }, u"ok"_s },
        { "POST", u"/api/accounting/bank-rows/%1/post"_s.arg(escaped), {}, uR"({"account_id":"6100"})"_s, entry,
            [entryOf](TarnAPI &api) { return entryOf(categorizeBooksBankRow(api, awkward, u"6100"_s)); }, u"e-1"_s },
        { "POST", u"/api/accounting/entries/%1/reverse"_s.arg(escaped), {}, dated, created,
            [idOf, day](TarnAPI &api) { return idOf(reverseBooksEntry(api, awkward, day)); }, u"n-1"_s },
        { "POST", u"/api/accounting/bill-payments/%1/void"_s.arg(escaped), {}, dated, entry,
            [entryOf, day](TarnAPI &api) { return entryOf(voidBooksBillPayment(api, awkward, day)); }, u"e-1"_s },
        { "GET", u"/api/payments-terminal/cards"_s, u"client_id=%1"_s.arg(escaped), {},
            uR"({"cards":[{"payment_profile_id":"pp1","card_type":"Visa","last4":"4242","expiration":"12/28"}]})"_s,
            [](TarnAPI &api) { return tarnWaitFor(cards(api, awkward)).cards.value(0).last4; }, u"4242"_s },
        { "POST", u"/api/payments-terminal/refund-requests/%1/approve"_s.arg(escaped), {}, uR"({"note":"Fine"})"_s,
            uR"({"status":"Refunded"})"_s,
            [](TarnAPI &api) {
                return tarnWaitFor(decidePaymentRefund(api, awkward, RefundDecision::Approve, u"Fine"_s)).status;
            },
            u"Refunded"_s },
        // The card is named by its profile id and what is left on the invoice is charged.
        { "POST", u"/api/payments-terminal/charge"_s, {},
            uR"({"client_id":"c1","invoice_id":"inv 9","amount":12550,"description":"Invoice 1042",
                "confirmation":"CHARGE CARD","request_key":"k-1","payment_profile_id":"pp/7"})"_s,
            uR"({"id":"pay-1","status":"Paid","amount":12550})"_s,
            [](TarnAPI &api) { return tarnWaitFor(chargeInvoice(api, invoice, card, u"k-1"_s)).id; }, u"pay-1"_s },
    };
}

} // namespace

void TestMoneyCalls::initTestCase()
{
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
}

void TestMoneyCalls::wire_data()
{
    QTest::addColumn<Call>("call");
    int row = 0;
    for (const Call &call : calls())
        QTest::addRow("%d %s %s", ++row, call.method.constData(), qPrintable(call.path)) << call;
}

void TestMoneyCalls::wire()
{
    QFETCH(Call, call);
    session.workspace->clearFaults();
    session.workspace->clearRequests();
    session.workspace->setFault(
        QJsonObject { { u"method"_s, QString::fromLatin1(call.method) }, { u"path"_s, call.path }, { u"status"_s, 200 },
            { u"content_type"_s, u"application/json"_s }, { u"body"_s, call.answer }, { u"times"_s, 1 } });

    QCOMPARE(call.run(*session.api), call.decoded);

    const QJsonArray sent = session.workspace->requests();
    QCOMPARE(sent.size(), 1);
    const QJsonObject request = sent.at(0).toObject();
    QCOMPARE(request.value("method"_L1).toString(), QString::fromLatin1(call.method));
    QCOMPARE(request.value("path"_L1).toString(), call.path);
    QCOMPARE(request.value("query"_L1).toString(), call.query);
    const QString body = request.value("body"_L1).toString();
    QCOMPARE(body.isEmpty() ? QString() : normalJSON(body), call.body.isEmpty() ? QString() : normalJSON(call.body));
}

QTEST_GUILESS_MAIN(TestMoneyCalls)
#include "tst_money_calls.moc"
