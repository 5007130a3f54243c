#include "money/TarnBooks.h"
#include "money/TarnBooksRegister.h"
#include "money/TarnPaymentRecords.h"
#include "service/TarnJSONObject.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

using Decode = std::function<QString(const QByteArray &)>;
Q_DECLARE_METATYPE(Decode)

namespace {

// A books overview as the service sends it, every optional part present.
const char overview[] = R"({
  "company": "Halvard Supply LLC",
  "source_linked": true,
  "source_review": {
    "invoices": [{"id": "inv-7", "amount": 12000, "title": "Invoice 7", "date": "2024-03-01"}],
    "payments": [{"id": "pay-9", "amount": 5000}]
  },
  "parties": [{"id": "pt-1", "kind": "vendor", "name": "Paper Co", "email": "", "phone": "", "address": "", "active": 1}],
  "accounts": [{"id": "a-1", "code": "1000", "name": "Checking", "type": "Asset", "debits": 500000, "credits": 120000, "bank": 1}],
  "entries": [{"id": "e-1", "entry_date": "2024-03-02", "memo": "Card payment", "source_type": "payment", "source_id": "pay-1", "amount": 5000}],
  "entry_count": 41,
  "bills": [{"id": "b-1", "vendor": "Paper Co", "bill_number": null, "due_date": "2024-03-30", "amount": 9000, "remaining": 9000, "status": "Open"}],
  "bill_payments": [{"id": "bp-1", "amount": 100, "bill_id": "b-0", "paid_on": "2024-02-01"}],
  "customer_invoices": [{"id": "ci-1", "customer": "Acme", "invoice_number": "INV-1", "due_on": "2024-03-20", "amount": 10000, "remaining": 4000, "status": "Partly paid"}],
  "document_lines": [{"id": "dl-1", "document_kind": "invoice", "document_id": "ci-1", "position": 1, "description": "Design", "quantity": "1.5", "unit_price_cents": 9500, "amount_cents": 14250, "account_id": "a-4"}],
  "customer_receipts": [{"id": "cr-1", "amount": 6000, "invoice_id": "ci-1"}],
  "bank_rows": [{"id": "br-1", "bank_account_id": "a-1", "row_date": "2024-03-03", "description": "DEPOSIT", "amount": -250, "source": "mercury", "mercury_status": "posted"}],
  "bank_matches": [{"id": "e-1", "entry_date": "2024-03-02", "memo": "Card payment", "bank_account_id": "a-1", "amount": 5000}],
  "bank_matched": [{"id": "br-0", "row_date": "2024-03-01", "description": "FEE", "amount": -100, "source_type": null}]
})";

QJsonValue edited(const QJsonValue &value, QStringList path, const std::function<QJsonValue(const QJsonValue &)> &change)
{
    if (path.isEmpty())
        return change(value);
    const QString key = path.takeFirst();
    if (value.isArray()) {
        QJsonArray array = value.toArray();
        const int index = key.toInt();
        array[index] = edited(array.at(index), path, change);
        return array;
    }
    QJsonObject object = value.toObject();
    const QJsonValue next = edited(object.value(key), path, change);
    if (next.isUndefined())
        object.remove(key);
    else
        object.insert(key, next);
    return object;
}

} // namespace

class TestMoneyRecords : public QObject
{
    Q_OBJECT

private slots:
    void overviewDecodes();
    void overviewShape_data();
    void overviewShape();
    void paymentRecords_data();
    void paymentRecords();
};

void TestMoneyRecords::overviewDecodes()
{
    const TarnBooks books = TarnJSON::decode<TarnBooks>(QByteArray(overview));
    QCOMPARE(books.company, u"Halvard Supply LLC"_s);
    QVERIFY(books.source_linked);
    QCOMPARE(books.source_review->invoices.value(0).title, std::optional(u"Invoice 7"_s));
    QCOMPARE(books.source_review->payments.value(0).title, std::optional<QString>());
    QCOMPARE(books.accounts.value(0).bank, 1);
    QCOMPARE(books.entries.value(0).source_id, std::optional(u"pay-1"_s));
    QCOMPARE(books.entry_count, 41);
    QCOMPARE(books.bills.value(0).bill_number, std::optional<QString>());
    QCOMPARE(books.customer_invoices.value(0).remaining, 4000);
    QCOMPARE(books.document_lines->value(0).quantity, u"1.5"_s);
    QCOMPARE(books.bank_rows.value(0).amount, -250);
    QVERIFY(books.bank_rows.value(0).isMercury());
    QCOMPARE(books.bank_matched->value(0).source_type, std::optional<QString>());
    QCOMPARE(books.customer_receipts->value(0).invoice_id, std::optional(u"ci-1"_s));
}

// One change to the overview, and whether the whole answer is still accepted.
void TestMoneyRecords::overviewShape_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QJsonValue>("value"); // undefined: remove the key
    QTest::addColumn<bool>("accepted");

    const QJsonValue removed(QJsonValue::Undefined);
    QTest::addRow("optional lists absent") << u"bank_matches"_s << removed << true;
    QTest::addRow("optional list null") << u"parties"_s << QJsonValue() << true;
    QTest::addRow("source review absent") << u"source_review"_s << removed << true;
    QTest::addRow("entry without source") << u"entries/0/source_type"_s << removed << true;
    QTest::addRow("company missing") << u"company"_s << removed << false;
    QTest::addRow("accounts missing") << u"accounts"_s << removed << false;
    QTest::addRow("bank flag missing") << u"accounts/0/bank"_s << removed << false;
    QTest::addRow("cents with a fraction") << u"bills/0/amount"_s << QJsonValue(90.5) << false;
    QTest::addRow("cents as text") << u"customer_invoices/0/amount"_s << QJsonValue(u"100"_s) << false;
    QTest::addRow("linked as a number") << u"source_linked"_s << QJsonValue(1) << false;
    QTest::addRow("quantity as a number") << u"document_lines/0/quantity"_s << QJsonValue(1.5) << false;
    QTest::addRow("bad element of an optional list") << u"bank_matched/0/amount"_s << removed << false;
    QTest::addRow("review without payments") << u"source_review/payments"_s << removed << false;
    QTest::addRow("mercury status absent") << u"bank_rows/0/mercury_status"_s << removed << true;
    QTest::addRow("row source missing") << u"bank_rows/0/source"_s << removed << false;
}

void TestMoneyRecords::overviewShape()
{
    QFETCH(QString, path);
    QFETCH(QJsonValue, value);
    QFETCH(bool, accepted);
    const QJsonValue json = edited(TarnJSON::parse(QByteArray(overview)), path.split(u'/'),
                                   [&value](const QJsonValue &) { return value; });
    bool decoded = true;
    try {
        (void)TarnBooks::fromJSON(TarnJSONObject(json));
    } catch (const TarnDecodeError &) {
        decoded = false;
    }
    QCOMPARE(decoded, accepted);
}

// Each payments and register record from a typical answer, and the answer
// with one key taken away.
void TestMoneyRecords::paymentRecords_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<Decode>("decode");
    QTest::addColumn<QString>("summary");

    const Decode payment = [](const QByteArray &b) -> QString {
        const auto p = TarnJSON::decode<TarnPayment>(b);
        return p.id + u' ' + QString::number(p.amount) + u' ' + p.date + u' ' + p.invoice_id.value_or(u"-"_s);
    };
    const Decode card = [](const QByteArray &b) -> QString {
        const auto c = TarnJSON::decode<TarnPaymentCard>(b);
        return c.card_type + u' ' + c.last4 + u' ' + (c.saved ? (*c.saved ? u"saved"_s : u"unsaved"_s) : u"-"_s);
    };
    const Decode action = [](const QByteArray &b) -> QString { return TarnJSON::decode<TarnRefundAction>(b).status; };
    const Decode request = [](const QByteArray &b) -> QString {
        const auto r = TarnJSON::decode<TarnPaymentRefundRequest>(b);
        return r.payment_id + u' ' + QString::number(r.amount) + u' ' + r.status;
    };
    const Decode reconciliation = [](const QByteArray &b) -> QString {
        const auto r = TarnJSON::decode<TarnBooksReconciliationClosed>(b);
        return r.id + u' ' + QString::number(r.preview.adjusted_balance) + u' '
            + r.preview.last_closed_date.value_or(u"-"_s);
    };
    const Decode registerPage = [](const QByteArray &b) -> QString {
        const auto r = TarnJSON::decode<TarnBooksRegister>(b);
        return QString::number(r.offset) + u'/' + QString::number(r.total) + u' '
            + r.entries.value(0).lines.value(1).name + u' ' + r.entries.value(0).reverses_id.value_or(u"-"_s);
    };
    const QString refused = u"refused"_s;

    QTest::addRow("payment") << QByteArray(R"({"id":"p1","client":"Acme","amount":5000,"status":"Paid","date":"2024-03-02","invoice_id":"w1"})")
                             << payment << u"p1 5000 2024-03-02 w1"_s;
    QTest::addRow("payment without date") << QByteArray(R"({"id":"p1","client":"Acme","amount":5,"status":"Paid"})")
                                          << payment << refused;
    QTest::addRow("card") << QByteArray(R"({"payment_profile_id":"pp","card_type":"Visa","last4":"4242","expiration":"12/29","saved":true})")
                          << card << u"Visa 4242 saved"_s;
    QTest::addRow("card with numeric last4") << QByteArray(R"({"payment_profile_id":"pp","card_type":"Visa","last4":4242,"expiration":"12/29"})")
                                             << card << refused;
    QTest::addRow("refund action") << QByteArray(R"({"status":"Refunded"})") << action << u"Refunded"_s;
    QTest::addRow("refund request") << QByteArray(R"({"id":"r1","payment_id":"p1","amount":4000,"status":"Requested","reason":null})")
                                    << request << u"p1 4000 Requested"_s;
    QTest::addRow("closed reconciliation")
        << QByteArray(R"({"id":"rc1","preview":{"bank_account_id":"a-1","statement_date":"2024-03-31","ledger_balance":100,"outstanding_total":-20,"adjusted_balance":80,"imported_count":3,"unmatched_count":0,"future_match_count":1}})")
        << reconciliation << u"rc1 80 -"_s;
    QTest::addRow("closed reconciliation without preview") << QByteArray(R"({"id":"rc1"})") << reconciliation << refused;
    QTest::addRow("register page")
        << QByteArray(R"({"start":"2024-03-01","end":"2024-03-31","account_id":"","total":250,"limit":100,"offset":100,"entries":[{"id":"e9","entry_date":"2024-03-09","memo":"Reverse","reverses_id":"e1","amount":700,"lines":[{"entry_id":"e9","code":"1000","name":"Cash","type":"Asset","debit":700,"credit":0},{"entry_id":"e9","code":"5000","name":"Office","type":"Expense","debit":0,"credit":700}]}]})")
        << registerPage << u"100/250 Office e1"_s;
    QTest::addRow("register line without credit")
        << QByteArray(R"({"start":"s","end":"e","account_id":"","total":1,"limit":100,"offset":0,"entries":[{"id":"e9","entry_date":"d","memo":"m","amount":7,"lines":[{"entry_id":"e9","code":"1","name":"n","type":"t","debit":7}]}]})")
        << registerPage << refused;
}

void TestMoneyRecords::paymentRecords()
{
    QFETCH(QByteArray, json);
    QFETCH(Decode, decode);
    QFETCH(QString, summary);
    QString got;
    try {
        got = decode(json);
    } catch (const TarnDecodeError &) {
        got = u"refused"_s;
    }
    QCOMPARE(got, summary);
}

QTEST_APPLESS_MAIN(TestMoneyRecords)
#include "tst_money_records.moc"
