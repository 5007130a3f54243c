#include "money/TarnPaymentFilter.h"
#include "money/TarnPaymentRecords.h"
#include "money/TarnPaymentRefundState.h"
#include "money/TarnPaymentTotals.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using Request = TarnPaymentRefundState::Request;

Q_DECLARE_METATYPE(QList<TarnPaymentRefundState::Request>)
Q_DECLARE_METATYPE(TarnPaymentPill)
Q_DECLARE_METATYPE(QList<TarnPayment>)
Q_DECLARE_METATYPE(TarnPaymentTotals::Received)
Q_DECLARE_METATYPE(TarnPayment)
Q_DECLARE_METATYPE(QList<TarnPaymentFilter>)

namespace {

TarnPayment payment(const QString &id, const QString &status, qint64 amount, const QString &date = u"2024-03-05"_s)
{
    TarnPayment p;
    p.id = id;
    p.client = u"Acme"_s;
    p.amount = amount;
    p.status = status;
    p.date = date;
    return p;
}

// Run in a child process: two refunds whose sum passes 64 bits.
[[noreturn]] void sumOverflowingRefunds()
{
    const qint64 big = std::numeric_limits<qint64>::max() - 10;
    const TarnPaymentRefundState state({{u"p1"_s, big, u"Refunded"_s}, {u"p1"_s, 11, u"Refunded"_s}});
    // Reaching here means the sum wrapped.
    std::printf("wrapped to %lld\n", static_cast<long long>(state.refunded(u"p1"_s)));
    std::exit(0);
}

} // namespace

class TestPayments : public QObject
{
    Q_OBJECT

private slots:
    void refunds_data();
    void refunds();
    void overflowingRefundsStop();
    void filter_data();
    void filter();
    void receivedInMonth_data();
    void receivedInMonth();
};

// One payment against a set of refund requests: what is left, whether it can
// be refunded, and its pill.
void TestPayments::refunds_data()
{
    QTest::addColumn<QList<Request>>("requests");
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("status");
    QTest::addColumn<qint64>("amount");
    QTest::addColumn<qint64>("left");
    QTest::addColumn<bool>("refundable");
    QTest::addColumn<TarnPaymentPill>("pill");

    const QString p = u"pay-1"_s;
    const TarnPaymentPill paid{0, u"Paid"_s};
    QTest::addRow("open request blocks a second one")
        << QList<Request>{{p, 4000, u"Requested"_s}} << p << u"Paid"_s << qint64(10000) << qint64(6000) << false
        << TarnPaymentPill{2, u"Refund requested"_s};
    QTest::addRow("wholly refunded")
        << QList<Request>{{p, 10000, u"Refunded"_s}} << p << u"Paid"_s << qint64(10000) << qint64(0) << false
        << TarnPaymentPill{3, u"Refunded"_s};
    QTest::addRow("partly refunded stays refundable")
        << QList<Request>{{p, 3000, u"Refunded"_s}} << p << u"Paid"_s << qint64(10000) << qint64(7000) << true
        << TarnPaymentPill{0, u"Partly refunded"_s};
    QTest::addRow("refunds add up to the whole")
        << QList<Request>{{p, 3000, u"Refunded"_s}, {p, 7000, u"Refunded"_s}} << p << u"Paid"_s << qint64(10000)
        << qint64(0) << false << TarnPaymentPill{3, u"Refunded"_s};
    QTest::addRow("over-refunded")
        << QList<Request>{{p, 12000, u"Refunded"_s}} << p << u"Paid"_s << qint64(10000) << qint64(-2000) << false
        << TarnPaymentPill{3, u"Refunded"_s};
    QTest::addRow("refunded and requested: request shows first")
        << QList<Request>{{p, 3000, u"Refunded"_s}, {p, 2000, u"Requested"_s}} << p << u"Paid"_s << qint64(10000)
        << qint64(5000) << false << TarnPaymentPill{2, u"Refund requested"_s};
    QTest::addRow("no requests") << QList<Request>{} << p << u"Paid"_s << qint64(10000) << qint64(10000) << true << paid;
    QTest::addRow("requests of another payment")
        << QList<Request>{{u"pay-2"_s, 4000, u"Requested"_s}, {u"pay-2"_s, 100, u"Refunded"_s}} << p << u"Paid"_s
        << qint64(10000) << qint64(10000) << true << paid;
    QTest::addRow("declined request ignored")
        << QList<Request>{{p, 4000, u"Declined"_s}} << p << u"Paid"_s << qint64(10000) << qint64(10000) << true << paid;
    QTest::addRow("status compared exactly")
        << QList<Request>{{p, 4000, u"requested"_s}, {p, 4000, u"REFUNDED"_s}} << p << u"Paid"_s << qint64(10000)
        << qint64(10000) << true << paid;
    QTest::addRow("a refund is never refundable")
        << QList<Request>{} << u"refund-pay-1"_s << u"Paid"_s << qint64(10000) << qint64(10000) << false << paid;
    QTest::addRow("refund- only as a prefix")
        << QList<Request>{} << u"pay-refund-1"_s << u"Paid"_s << qint64(10000) << qint64(10000) << true << paid;
    QTest::addRow("pending") << QList<Request>{} << p << u"Pending"_s << qint64(10000) << qint64(10000) << false
                             << TarnPaymentPill{1, u"Pending"_s};
    QTest::addRow("request on a pending payment")
        << QList<Request>{{p, 1, u"Requested"_s}} << p << u"Pending"_s << qint64(10000) << qint64(9999) << false
        << TarnPaymentPill{2, u"Refund requested"_s};
    QTest::addRow("failed") << QList<Request>{} << p << u"Failed"_s << qint64(10000) << qint64(10000) << false
                            << TarnPaymentPill{3, u"Failed"_s};
    QTest::addRow("lower-case paid is another status")
        << QList<Request>{} << p << u"paid"_s << qint64(10000) << qint64(10000) << false << TarnPaymentPill{3, u"paid"_s};
    QTest::addRow("voided with refunds keeps its status")
        << QList<Request>{{p, 10000, u"Refunded"_s}} << p << u"Voided"_s << qint64(10000) << qint64(0) << false
        << TarnPaymentPill{3, u"Voided"_s};
    QTest::addRow("zero payment is not refunded by nothing")
        << QList<Request>{} << p << u"Paid"_s << qint64(0) << qint64(0) << false << paid;
}

void TestPayments::refunds()
{
    QFETCH(QList<Request>, requests);
    QFETCH(QString, id);
    QFETCH(QString, status);
    QFETCH(qint64, amount);
    QFETCH(qint64, left);
    QFETCH(bool, refundable);
    QFETCH(TarnPaymentPill, pill);

    const TarnPaymentRefundState state(requests);
    QCOMPARE(state.leftToRefund(id, amount), left);
    QCOMPARE(state.canRefund(id, status, amount), refundable);
    const TarnPaymentPill shown = state.pill(id, status, amount);
    QCOMPARE(shown.tone, pill.tone);
    QCOMPARE(shown.text, pill.text);
}

void TestPayments::overflowingRefundsStop()
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {u"--sum-overflowing-refunds"_s});
    QVERIFY(child.waitForFinished(30000));
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);
    QVERIFY2(child.readAllStandardError().contains("overflows"), "the stop names the overflow");
}

void TestPayments::filter_data()
{
    QTest::addColumn<TarnPayment>("payment");
    QTest::addColumn<QList<Request>>("requests");
    QTest::addColumn<QList<TarnPaymentFilter>>("shownUnder");

    using F = TarnPaymentFilter;
    const QList<Request> none;
    QTest::addRow("paid") << payment(u"p"_s, u"Paid"_s, 500) << none << QList<F>{F::all, F::paid};
    QTest::addRow("pending") << payment(u"p"_s, u"Pending"_s, 500) << none << QList<F>{F::all, F::pending};
    QTest::addRow("partly refunded is both paid and refunded")
        << payment(u"p"_s, u"Paid"_s, 500) << QList<Request>{{u"p"_s, 100, u"Refunded"_s}}
        << QList<F>{F::all, F::paid, F::refunded};
    QTest::addRow("wholly refunded leaves paid")
        << payment(u"p"_s, u"Paid"_s, 500) << QList<Request>{{u"p"_s, 500, u"Refunded"_s}} << QList<F>{F::all, F::refunded};
    QTest::addRow("refund awaiting decision stays paid")
        << payment(u"p"_s, u"Paid"_s, 500) << QList<Request>{{u"p"_s, 500, u"Requested"_s}} << QList<F>{F::all, F::paid};
    QTest::addRow("a refund row") << payment(u"refund-p"_s, u"Paid"_s, -500) << none << QList<F>{F::all, F::refunded};
    QTest::addRow("refunded status") << payment(u"p"_s, u"Refunded"_s, 500) << none << QList<F>{F::all, F::refunded};
    QTest::addRow("failed shows only under all") << payment(u"p"_s, u"Failed"_s, 500) << none << QList<F>{F::all};
}

void TestPayments::filter()
{
    QFETCH(TarnPayment, payment);
    QFETCH(QList<Request>, requests);
    QFETCH(QList<TarnPaymentFilter>, shownUnder);
    const TarnPaymentRefundState state(requests);
    for (const TarnPaymentFilter f :
         {TarnPaymentFilter::all, TarnPaymentFilter::paid, TarnPaymentFilter::pending, TarnPaymentFilter::refunded})
        QCOMPARE(matches(f, payment, state), shownUnder.contains(f));
}

void TestPayments::receivedInMonth_data()
{
    QTest::addColumn<QList<TarnPayment>>("payments");
    QTest::addColumn<QString>("today");
    QTest::addColumn<TarnPaymentTotals::Received>("received");

    const QList<TarnPayment> march{
        payment(u"a"_s, u"Paid"_s, 1000, u"2024-03-01"_s),
        payment(u"b"_s, u"Paid"_s, 2500, u"2024-03-31T23:59:59Z"_s),
        payment(u"c"_s, u"Pending"_s, 9000, u"2024-03-10"_s),
        payment(u"d"_s, u"Paid"_s, 7000, u"2024-02-29"_s),
        payment(u"e"_s, u"Paid"_s, 7000, u"2023-03-15"_s),
        payment(u"f"_s, u"paid"_s, 7000, u"2024-03-15"_s),
        payment(u"refund-a"_s, u"Paid"_s, -400, u"2024-03-02"_s),
    };
    QTest::addRow("only paid of this month, refunds net") << march << u"2024-03-20"_s << TarnPaymentTotals::Received{3100, 3};
    QTest::addRow("today as a date-time") << march << u"2024-03-20T08:00:00-05:00"_s << TarnPaymentTotals::Received{3100, 3};
    QTest::addRow("month with one payment") << march << u"2024-02-01"_s << TarnPaymentTotals::Received{7000, 1};
    QTest::addRow("empty month") << march << u"2024-04-01"_s << TarnPaymentTotals::Received{0, 0};
    QTest::addRow("no payments") << QList<TarnPayment>{} << u"2024-03-20"_s << TarnPaymentTotals::Received{0, 0};
    QTest::addRow("short dates compare whole")
        << QList<TarnPayment>{payment(u"a"_s, u"Paid"_s, 5, u"2024-3"_s)} << u"2024-03-01"_s
        << TarnPaymentTotals::Received{0, 0};
}

void TestPayments::receivedInMonth()
{
    QFETCH(QList<TarnPayment>, payments);
    QFETCH(QString, today);
    QFETCH(TarnPaymentTotals::Received, received);
    const TarnPaymentTotals::Received got = TarnPaymentTotals::receivedInMonth(payments, today);
    QCOMPARE(got.total, received.total);
    QCOMPARE(got.count, received.count);
}

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--sum-overflowing-refunds") == 0)
        sumOverflowingRefunds();
    QCoreApplication app(argc, argv);
    TestPayments test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_payments.moc"
