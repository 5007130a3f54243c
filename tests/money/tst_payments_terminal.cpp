#include "money/MoneyTestSession.h"
#include "money/TarnPaymentRefundState.h"
#include "money/TarnPaymentsCalls.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using TarnPaymentsCalls::RefundDecision;

struct RefundCase {
    qint64 amount = 0;
    std::optional<RefundDecision> decision;
    // Empty: the request is refused by the service.
    QString requestError;
    QString pill;
    qint64 left = 0;
};

TarnPaymentsTerminal terminal(TarnAPI &api)
{
    return tarnWaitFor(TarnPaymentsCalls::payments(api));
}

TarnPaymentRefundState refundStateOf(const TarnPaymentsTerminal &list)
{
    QList<TarnPaymentRefundState::Request> requests;
    for (const TarnPaymentRefundRequest &request : list.refund_requests)
        requests.append(TarnPaymentRefundState::Request::from(request));
    return TarnPaymentRefundState(requests);
}

std::optional<TarnPayment> paymentOf(const TarnPaymentsTerminal &list, const QString &id)
{
    const auto found = std::find_if(
        list.payments.begin(), list.payments.end(), [&id](const TarnPayment &payment) { return payment.id == id; });
    return found == list.payments.end() ? std::nullopt : std::optional(*found);
}

} // namespace

Q_DECLARE_METATYPE(RefundCase)

// The payments terminal against the real local workspace: offline payments,
// and refunds that move money only when an owner approves them and never
// beyond what was paid. Charges once per key: tst_payments_view.
class TestPaymentsTerminal : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void refunds_data();
    void refunds();
    void offlinePayment();
    void closedToPeopleWithoutPayments();

private:
    MoneyTestSession session;
};

void TestPaymentsTerminal::init()
{
    // A fresh workspace per test: each one moves money.
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
}

void TestPaymentsTerminal::refunds_data()
{
    QTest::addColumn<RefundCase>("refund");
    // The demo's payment pay-1031 is 480.00 paid, with no refund yet.
    QTest::addRow("approve part") << RefundCase { 12000, RefundDecision::Approve, {}, u"Partly refunded"_s, 36000 };
    QTest::addRow("waiting") << RefundCase { 1000, std::nullopt, {}, u"Refund requested"_s, 47000 };
    QTest::addRow("above what was paid") << RefundCase { 48001, std::nullopt,
        u"Refund between $0.01 and what is left of the payment."_s, u"Paid"_s, 48000 };
    QTest::addRow("nothing") << RefundCase { 0, std::nullopt,
        u"Refund between $0.01 and what is left of the payment."_s, u"Paid"_s, 48000 };
}

void TestPaymentsTerminal::refunds()
{
    QFETCH(RefundCase, refund);
    TarnAPI &api = *session.api;
    const QString payment = u"pay-1031"_s;
    const QString reason = u"Returned"_s;
    if (!refund.requestError.isEmpty()) {
        QCOMPARE(
            errorOf(TarnPaymentsCalls::requestPaymentRefund(api, payment, refund.amount, reason)), refund.requestError);
    } else {
        const QString id = tarnWaitFor(TarnPaymentsCalls::requestPaymentRefund(api, payment, refund.amount, reason)).id;
        // A second request waits for the first to be decided.
        QCOMPARE(errorOf(TarnPaymentsCalls::requestPaymentRefund(api, payment, 1, reason)),
            u"This payment cannot be refunded now."_s);
        if (refund.decision) {
            const QString note = u"Checked"_s;
            const TarnRefundAction action
                = tarnWaitFor(TarnPaymentsCalls::decidePaymentRefund(api, id, *refund.decision, note));
            QCOMPARE(action.status, *refund.decision == RefundDecision::Approve ? u"Refunded"_s : u"Denied"_s);
            QCOMPARE(errorOf(TarnPaymentsCalls::decidePaymentRefund(api, id, *refund.decision, note)),
                u"This refund request was already decided."_s);
        }
    }

    const TarnPaymentsTerminal list = terminal(api);
    const TarnPaymentRefundState state = refundStateOf(list);
    const std::optional<TarnPayment> paid = paymentOf(list, payment);
    QVERIFY(paid);
    QCOMPARE(state.pill(payment, paid->status, paid->amount).text, refund.pill);
    QCOMPARE(state.leftToRefund(payment, paid->amount), refund.left);
    const qint64 sentBack = refund.decision == RefundDecision::Approve ? refund.amount : 0;
    const qint64 refundsListed = std::count_if(list.payments.begin(), list.payments.end(),
        [](const TarnPayment &p) { return p.id.startsWith("refund-"_L1) && p.reference == u"pay-1031"_s; });
    QCOMPARE(refundsListed, sentBack > 0 ? 1 : 0);
}

void TestPaymentsTerminal::offlinePayment()
{
    TarnAPI &api = *session.api;
    const TarnOpenInvoice invoice = terminal(api).open_invoices.first();
    const QString reference = u"Cheque 881"_s;
    const QString badDay = u"2026-02-30"_s;
    QCOMPARE(errorOf(TarnPaymentsCalls::recordOfflineInvoicePayment(api, invoice.id, reference, badDay)),
        u"Give the day it was paid as YYYY-MM-DD."_s);
    const QString day = u"2026-11-02"_s;
    const QString id = tarnWaitFor(TarnPaymentsCalls::recordOfflineInvoicePayment(api, invoice.id, reference, day)).id;

    const std::optional<TarnPayment> recorded = paymentOf(terminal(api), id);
    QVERIFY(recorded);
    QCOMPARE(recorded->amount, invoice.remaining);
    QCOMPARE(recorded->reference, reference);
    QCOMPARE(recorded->date, day);
    QCOMPARE(errorOf(TarnPaymentsCalls::recordOfflineInvoicePayment(api, invoice.id, reference, day)),
        u"That invoice is not open."_s);
}

void TestPaymentsTerminal::closedToPeopleWithoutPayments()
{
    // Tomas keeps the books but has no Payments app.
    const QString failed = session.signInAs(u"tomas@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    QCOMPARE(errorOf(TarnPaymentsCalls::payments(*session.api)), u"Payments is not open to you."_s);
}

QTEST_GUILESS_MAIN(TestPaymentsTerminal)
#include "tst_payments_terminal.moc"
