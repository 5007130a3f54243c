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

// Every books and payments call against a real workspace over HTTPS: the
// method, the escaped path, the query and the body exactly as sent, and the
// answer decoded into its record.
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
    const QString reconciliation = uR"({"bank_account_id":"b1","statement_date":"2026-10-31","ledger_balance":100,
        "outstanding_total":-20,"adjusted_balance":80,"imported_count":3,"unmatched_count":1,"future_match_count":0})"_s;
    const QList<TarnBankCSV::Row> rows { { u"2026-10-01"_s, u"Coffee"_s, -450, QString() },
        { u"2026-10-02"_s, u"Deposit \"A\""_s, 125000, u"ref-9"_s } };

    return {
        { "GET", u"/api/accounting/books"_s, {}, {},
            uR"({"company":"Halvard & Co.","source_linked":false,"accounts":[],"entries":[],"entry_count":0,
                "bills":[],"customer_invoices":[],"bank_rows":[]})"_s,
            [](TarnAPI &api) { return tarnWaitFor(books(api)).company; }, u"Halvard & Co."_s },
        { "GET", u"/api/accounting/report"_s, u"start=2026-01-01&end=2026-03-31"_s, {},
            uR"({"start":"2026-01-01","end":"2026-03-31","revenue":900,"expenses":400,"net_income":500})"_s,
            [](TarnAPI &api) {
                return QString::number(tarnWaitFor(booksReport(api, u"2026-01-01"_s, u"2026-03-31"_s)).net_income);
            },
            u"500"_s },
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
        { "PATCH", u"/api/accounting/company"_s, {}, uR"({"name":"Halvard & Co. LLC"})"_s, ok,
            [okOf](TarnAPI &api) { return okOf(setBooksCompany(api, u"Halvard & Co. LLC"_s)); }, u"ok"_s },
        { "PATCH", u"/api/accounting/source-link"_s, {}, uR"({"enabled":true})"_s, ok,
            [okOf](TarnAPI &api) { return okOf(setBooksSourceLinked(api, true)); }, u"ok"_s },
        { "POST", u"/api/accounting/source-post"_s, {}, uR"({"kind":"invoice","id":"i1","income_account_id":"4000"})"_s,
            created, [idOf](TarnAPI &api) { return idOf(postBooksSource(api, u"invoice"_s, u"i1"_s, u"4000"_s)); },
            u"n-1"_s },
        // A payment never names an income account, even when one is given.
        { "POST", u"/api/accounting/source-post"_s, {}, uR"({"kind":"payment","id":"p1"})"_s, created,
            [idOf](TarnAPI &api) { return idOf(postBooksSource(api, u"payment"_s, u"p1"_s, u"4000"_s)); }, u"n-1"_s },
        { "POST", u"/api/accounting/bank-import"_s, {}, uR"({"bank_account_id":"b1","rows":[
                {"date":"2026-10-01","description":"Coffee","amount":-450,"reference":""},
                {"date":"2026-10-02","description":"Deposit \"A\"","amount":125000,"reference":"ref-9"}]})"_s,
            uR"({"imported":1,"duplicates":1})"_s,
            [rows](TarnAPI &api) {
                const TarnBooksImportResult result = tarnWaitFor(importBooksBankRows(api, u"b1"_s, rows));
                return u"%1+%2"_s.arg(result.imported).arg(result.duplicates);
            },
            u"1+1"_s },
        { "POST", u"/api/accounting/bank-rows/%1/match"_s.arg(escaped), {}, uR"({"entry_id":"e-1"})"_s, entry,
            [entryOf](TarnAPI &api) { return entryOf(matchBooksBankRow(api, awkward, u"e-1"_s)); }, u"e-1"_s },
        { "POST", u"/api/accounting/bank-rows/%1/unmatch"_s.arg(escaped), {}, {}, ok,
            [okOf](TarnAPI &api) { return okOf(unmatchBooksBankRow(api, awkward)); }, u"ok"_s },
        { "POST", u"/api/accounting/bank-rows/%1/post"_s.arg(escaped), {}, uR"({"account_id":"6100"})"_s, entry,
            [entryOf](TarnAPI &api) { return entryOf(categorizeBooksBankRow(api, awkward, u"6100"_s)); }, u"e-1"_s },
        { "GET", u"/api/accounting/reconciliation"_s, u"bank_account_id=b1&statement_date=2026-10-31"_s, {},
            reconciliation,
            [](TarnAPI &api) {
                return QString::number(
                    tarnWaitFor(booksReconciliation(api, u"b1"_s, u"2026-10-31"_s)).adjusted_balance);
            },
            u"80"_s },
        { "POST", u"/api/accounting/reconciliations"_s, {},
            uR"({"bank_account_id":"b1","statement_date":"2026-10-31","statement_balance":80})"_s,
            uR"({"id":"rec-1","preview":%1})"_s.arg(reconciliation),
            [](TarnAPI &api) {
                const TarnBooksReconciliationClosed closed
                    = tarnWaitFor(closeBooksReconciliation(api, u"b1"_s, u"2026-10-31"_s, 80));
                return u"%1 %2"_s.arg(closed.id).arg(closed.preview.unmatched_count);
            },
            u"rec-1 1"_s },
        { "POST", u"/api/accounting/entries/%1/reverse"_s.arg(escaped), {}, dated, created,
            [idOf, day](TarnAPI &api) { return idOf(reverseBooksEntry(api, awkward, day)); }, u"n-1"_s },
        { "POST", u"/api/accounting/bills/%1/void"_s.arg(escaped), {}, dated, entry,
            [entryOf, day](TarnAPI &api) { return entryOf(voidBooksBill(api, awkward, day)); }, u"e-1"_s },
        { "POST", u"/api/accounting/customer-invoices/%1/void"_s.arg(escaped), {}, dated, entry,
            [entryOf, day](TarnAPI &api) { return entryOf(voidBooksInvoice(api, awkward, day)); }, u"e-1"_s },
        { "POST", u"/api/accounting/bill-payments/%1/void"_s.arg(escaped), {}, dated, entry,
            [entryOf, day](TarnAPI &api) { return entryOf(voidBooksBillPayment(api, awkward, day)); }, u"e-1"_s },
        { "POST", u"/api/accounting/customer-receipts/%1/void"_s.arg(escaped), {}, dated, entry,
            [entryOf, day](TarnAPI &api) { return entryOf(voidBooksCustomerReceipt(api, awkward, day)); }, u"e-1"_s },
        { "GET", u"/api/payments-terminal/payments"_s, {}, {},
            uR"({"payments":[{"id":"p1","client":"Brightwater","client_id":"c1","amount":900,"status":"Paid",
                "date":"2026-11-01"}],"refund_requests":[],"open_invoices":[]})"_s,
            [](TarnAPI &api) { return tarnWaitFor(payments(api)).payments.value(0).client; }, u"Brightwater"_s },
        { "GET", u"/api/payments-terminal/cards"_s, u"client_id=%1"_s.arg(escaped), {},
            uR"({"cards":[{"payment_profile_id":"pp1","card_type":"Visa","last4":"4242","expiration":"12/28"}]})"_s,
            [](TarnAPI &api) { return tarnWaitFor(cards(api, awkward)).cards.value(0).last4; }, u"4242"_s },
        { "POST", u"/api/payments-terminal/refund-requests"_s, {},
            uR"({"payment_id":"p1","amount":2500,"reason":"Damaged"})"_s, created,
            [idOf](TarnAPI &api) { return idOf(requestPaymentRefund(api, u"p1"_s, 2500, u"Damaged"_s)); }, u"n-1"_s },
        { "POST", u"/api/payments-terminal/refund-requests/%1/approve"_s.arg(escaped), {}, uR"({"note":"Fine"})"_s,
            uR"({"status":"Refunded"})"_s,
            [](TarnAPI &api) {
                return tarnWaitFor(decidePaymentRefund(api, awkward, RefundDecision::Approve, u"Fine"_s)).status;
            },
            u"Refunded"_s },
        { "POST", u"/api/payments-terminal/refund-requests/%1/deny"_s.arg(escaped), {}, uR"({"note":""})"_s,
            uR"({"status":"Denied"})"_s,
            [](TarnAPI &api) {
                return tarnWaitFor(decidePaymentRefund(api, awkward, RefundDecision::Deny, QString())).status;
            },
            u"Denied"_s },
        // The card is named by its profile id and what is left on the invoice is charged.
        { "POST", u"/api/payments-terminal/charge"_s, {},
            uR"({"client_id":"c1","invoice_id":"inv 9","amount":12550,"description":"Invoice 1042",
                "confirmation":"CHARGE CARD","request_key":"k-1","payment_profile_id":"pp/7"})"_s,
            uR"({"id":"pay-1","status":"Paid","amount":12550})"_s,
            [](TarnAPI &api) { return tarnWaitFor(chargeInvoice(api, invoice, card, u"k-1"_s)).id; }, u"pay-1"_s },
        { "POST", u"/api/payments-terminal/invoices/inv%209/record"_s, {},
            uR"({"reference":"Cheque 88","paid_on":"2026-11-02"})"_s, created,
            [idOf, day](
                TarnAPI &api) { return idOf(recordOfflineInvoicePayment(api, invoice.id, u"Cheque 88"_s, day)); },
            u"n-1"_s },
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
