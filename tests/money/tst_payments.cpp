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
using Received = TarnPaymentTotals::Received;

namespace {

TarnPayment payment(const QString &id, const QString &status, qint64 amount, const QString &date = u"2024-03-05"_s)
{
    return { id, u"Acme"_s, amount, status, date, {}, {}, {}, {} };
}

// Run in a child process: two refunds whose sum passes 64 bits.
[[noreturn]] void sumOverflowingRefunds()
{
    const qint64 big = std::numeric_limits<qint64>::max() - 10;
    const TarnPaymentRefundState state({ { u"p1"_s, big, u"Refunded"_s }, { u"p1"_s, 11, u"Refunded"_s } });
    // Reaching here means the sum wrapped.
    std::printf("wrapped to %lld\n", static_cast<long long>(state.refunded(u"p1"_s)));
    std::exit(0);
}

// A payment of 10000 cents, "Paid", unless a row says otherwise.
struct RefundRow {
    const char *name;
    QList<Request> requests;
    qint64 left;
    bool refundable;
    TarnPaymentPill pill;
    QString status = u"Paid"_s;
    QString id = u"pay-1"_s;
    qint64 amount = 10000;
};

struct FilterRow {
    const char *name;
    TarnPayment payment;
    QList<Request> requests;
    QList<TarnPaymentFilter> shownUnder;
};

} // namespace

class TestPayments : public QObject {
    Q_OBJECT

private slots:
    // One payment against its refund requests: what is left, whether it can
    // be refunded, and its pill.
    void refunds_data()
    {
        QTest::addColumn<RefundRow>("row");
        const QString p = u"pay-1"_s;
        const TarnPaymentPill paid { 0, u"Paid"_s };
        const TarnPaymentPill refunded { 3, u"Refunded"_s };
        const TarnPaymentPill requested { 2, u"Refund requested"_s };
        const RefundRow rows[] = {
            { "partly refunded stays refundable", { { p, 3000, u"Refunded"_s } }, 7000, true,
                { 0, u"Partly refunded"_s } },
            { "refunds add up to the whole", { { p, 3000, u"Refunded"_s }, { p, 7000, u"Refunded"_s } }, 0, false,
                refunded },
            { "over-refunded", { { p, 12000, u"Refunded"_s } }, -2000, false, refunded },
            { "refunded and requested: request shows first",
                { { p, 3000, u"Refunded"_s }, { p, 2000, u"Requested"_s } }, 5000, false, requested },
            { "requests of another payment",
                { { u"pay-2"_s, 4000, u"Requested"_s }, { u"pay-2"_s, 100, u"Refunded"_s } }, 10000, true, paid },
            { "declined request ignored", { { p, 4000, u"Declined"_s } }, 10000, true, paid },
            { "a refund is never refundable", {}, 10000, false, paid, u"Paid"_s, u"refund-pay-1"_s },
            { "refund- only as a prefix", {}, 10000, true, paid, u"Paid"_s, u"pay-refund-1"_s },
            { "pending", {}, 10000, false, { 1, u"Pending"_s }, u"Pending"_s },
            { "failed", {}, 10000, false, { 3, u"Failed"_s }, u"Failed"_s },
            { "zero payment is not refunded by nothing", {}, 0, false, paid, u"Paid"_s, p, 0 },
        };
        for (const RefundRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void refunds()
    {
        QFETCH(RefundRow, row);
        const TarnPaymentRefundState state(row.requests);
        QCOMPARE(state.leftToRefund(row.id, row.amount), row.left);
        QCOMPARE(state.canRefund(row.id, row.status, row.amount), row.refundable);
        QCOMPARE(state.pill(row.id, row.status, row.amount), row.pill);
    }

    void overflowingRefundsStop()
    {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), { u"--sum-overflowing-refunds"_s });
        QVERIFY(child.waitForFinished(30000));
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        QVERIFY2(child.readAllStandardError().contains("overflows"), "the stop names the overflow");
    }

    void filter_data()
    {
        QTest::addColumn<FilterRow>("row");
        using F = TarnPaymentFilter;
        const FilterRow rows[] = {
            { "pending", payment(u"p"_s, u"Pending"_s, 500), {}, { F::all, F::pending } },
            { "partly refunded is both paid and refunded", payment(u"p"_s, u"Paid"_s, 500),
                { { u"p"_s, 100, u"Refunded"_s } }, { F::all, F::paid, F::refunded } },
            { "wholly refunded leaves paid", payment(u"p"_s, u"Paid"_s, 500), { { u"p"_s, 500, u"Refunded"_s } },
                { F::all, F::refunded } },
            { "refund awaiting decision stays paid", payment(u"p"_s, u"Paid"_s, 500),
                { { u"p"_s, 500, u"Requested"_s } }, { F::all, F::paid } },
            { "a refund row", payment(u"refund-p"_s, u"Paid"_s, -500), {}, { F::all, F::refunded } },
            { "refunded status", payment(u"p"_s, u"Refunded"_s, 500), {}, { F::all, F::refunded } },
            { "failed shows only under all", payment(u"p"_s, u"Failed"_s, 500), {}, { F::all } },
        };
        for (const FilterRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void filter()
    {
        QFETCH(FilterRow, row);
        const TarnPaymentRefundState state(row.requests);
        for (const TarnPaymentFilter f : { TarnPaymentFilter::all, TarnPaymentFilter::paid, TarnPaymentFilter::pending,
                 TarnPaymentFilter::refunded })
            QCOMPARE(matches(f, row.payment, state), row.shownUnder.contains(f));
    }

    // The "Paid" payments of today's month, refunds netted; today may be a
    // date-time.
    void receivedInMonth()
    {
        const QList<TarnPayment> march {
            payment(u"a"_s, u"Paid"_s, 1000, u"2024-03-01"_s),
            payment(u"b"_s, u"Paid"_s, 2500, u"2024-03-31T23:59:59Z"_s),
            payment(u"c"_s, u"Pending"_s, 9000, u"2024-03-10"_s),
            payment(u"d"_s, u"Paid"_s, 7000, u"2024-02-29"_s),
            payment(u"e"_s, u"Paid"_s, 7000, u"2023-03-15"_s),
            payment(u"f"_s, u"paid"_s, 7000, u"2024-03-15"_s),
            payment(u"refund-a"_s, u"Paid"_s, -400, u"2024-03-02"_s),
        };
        QCOMPARE(TarnPaymentTotals::receivedInMonth(march, u"2024-03-20"_s), (Received { 3100, 3 }));
        QCOMPARE(TarnPaymentTotals::receivedInMonth(march, u"2024-03-20T08:00:00-05:00"_s), (Received { 3100, 3 }));
    }
};

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--sum-overflowing-refunds") == 0)
        sumOverflowingRefunds();
    QCoreApplication app(argc, argv);
    TestPayments test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_payments.moc"
