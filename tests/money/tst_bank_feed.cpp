#include "MoneyTestSession.h"
#include "money/TarnBankFeedCalls.h"
#include "money/TarnBooksCalls.h"
#include "workspace/routes/BankFeedStream.h"

#include <QDate>
#include <QDateTime>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;

enum class Call { Summary, Connect, Baseline, Reconcile };

struct BodyRow {
    Call call;
    TarnExternalBaseline baseline;
    QString refusal;
};

QString today()
{
    return QDate::currentDate().toString(Qt::ISODate);
}

QString daysAgo(int days)
{
    return QDate::currentDate().addDays(-days).toString(Qt::ISODate);
}

} // namespace

Q_DECLARE_METATYPE(BodyRow)

// The bank feed's endpoints against the local workspace and its demo books,
// whose checking account is connected with a baseline before its fed rows.
class TestBankFeed : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void ownersOnly();
    void demoBalanceDiffersByWhatIsUncategorized();
    void connectingBringsThePredictedRows();
    void refusals_data();
    void refusals();
    void reconcileAgainstANewBaseline();

private:
    [[nodiscard]] TarnMercuryAccount account(const QString &name);
    [[nodiscard]] QString callError(Call call, const QString &accountID, const TarnExternalBaseline &baseline);

    MoneyTestSession session;
};

void TestBankFeed::initTestCase()
{
    const QString error = session.start(maren);
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

TarnMercuryAccount TestBankFeed::account(const QString &name)
{
    const TarnMercurySummary summary = tarnWaitFor(TarnBankFeedCalls::mercurySummary(*session.api));
    for (const TarnMercuryAccount &one : summary.accounts)
        if (one.name == name)
            return one;
    return {};
}

QString TestBankFeed::callError(Call call, const QString &accountID, const TarnExternalBaseline &baseline)
{
    TarnAPI &api = *session.api;
    switch (call) {
    case Call::Summary:
        return errorOf(TarnBankFeedCalls::mercurySummary(api));
    case Call::Connect:
        return errorOf(TarnBankFeedCalls::connectMercury(api));
    case Call::Baseline:
        return errorOf(TarnBankFeedCalls::setExternalBaseline(api, accountID, baseline));
    case Call::Reconcile:
        return errorOf(TarnBankFeedCalls::reconcileExternalBalance(api, accountID, { baseline.date }));
    }
    return {};
}

void TestBankFeed::ownersOnly()
{
    const QString feedID = account(u"Operating checking"_s).id;
    QVERIFY(!feedID.isEmpty());
    // Tomas keeps the books but does not own the company.
    QVERIFY(session.signInAs(tomas).isEmpty());
    for (const Call call : { Call::Summary, Call::Connect, Call::Baseline, Call::Reconcile })
        QCOMPARE(callError(call, feedID, { today(), 100 }), u"The bank feed is open to the company's owners."_s);
    QVERIFY(session.signInAs(maren).isEmpty());
    QCOMPARE(account(u"Reserve savings"_s).id, QString());
}

void TestBankFeed::demoBalanceDiffersByWhatIsUncategorized()
{
    const TarnMercurySummary summary = tarnWaitFor(TarnBankFeedCalls::mercurySummary(*session.api));
    QCOMPARE(summary.accounts.size(), 1);
    QCOMPARE(summary.available, 2);
    const TarnMercuryAccount &checking = summary.accounts.constFirst();
    QCOMPARE(checking.bank_account_id, u"acct-1000"_s);
    QCOMPARE(checking.uncategorized, 3);
    QVERIFY(checking.baseline_date.has_value());
    const TarnBooks books = tarnWaitFor(TarnBooksCalls::books(*session.api));
    qint64 open = 0;
    for (const TarnBooksBankRow &row : books.bank_rows) {
        open += row.bank_account_id == checking.bank_account_id && row.isMercury() ? row.amount : 0;
        QCOMPARE(row.mercury_status, row.isMercury() ? std::optional(u"uncategorized"_s) : std::nullopt);
    }
    QVERIFY(open != 0);
    QCOMPARE(checking.balance.value_or(0) - checking.books_balance, open);
}

void TestBankFeed::connectingBringsThePredictedRows()
{
    const TarnMercurySummary summary = tarnWaitFor(TarnBankFeedCalls::connectMercury(*session.api));
    QCOMPARE(summary.available, 1);
    const TarnMercuryAccount savings = account(u"Reserve savings"_s);
    QCOMPARE(savings.mask, u"7310"_s);
    QCOMPARE(savings.balance, std::nullopt);
    const qint64 connected = QDateTime::fromString(savings.connected_at, Qt::ISODateWithMs).toMSecsSinceEpoch();
    const int due
        = BankFeedStream::dueCount(connected, BankFeedStream::historyRows, QDateTime::currentMSecsSinceEpoch());
    QCOMPARE(savings.uncategorized, due);

    QList<BankFeedStream::Row> expected;
    for (int n = 0; n < due; ++n)
        expected.append(BankFeedStream::row(connected, BankFeedStream::historyRows, n));
    QList<BankFeedStream::Row> fed;
    const TarnBooks books = tarnWaitFor(TarnBooksCalls::books(*session.api));
    for (const TarnBooksBankRow &row : books.bank_rows) {
        if (row.bank_account_id == savings.bank_account_id)
            fed.append({ 0, row.row_date, row.description, row.amount, {} });
    }
    QCOMPARE(fed.size(), expected.size());
    for (const BankFeedStream::Row &row : expected) {
        QVERIFY2(fed.contains(BankFeedStream::Row { 0, row.date, row.description, row.amount, {} }),
            qPrintable(row.description));
    }
    QVERIFY(std::any_of(books.accounts.begin(), books.accounts.end(),
        [&](const TarnBooksAccount &a) { return a.id == savings.bank_account_id && a.bank != 0; }));

    QCOMPARE(tarnWaitFor(TarnBankFeedCalls::connectMercury(*session.api)).available, 0);
    QCOMPARE(callError(Call::Connect, {}, {}), u"Every account at the bank is already connected."_s);
}

void TestBankFeed::refusals_data()
{
    QTest::addColumn<BodyRow>("row");
    const QString day = u"Give the day of the balance, today or earlier."_s;
    QTest::addRow("baseline without a day") << BodyRow { Call::Baseline, { {}, 100 }, day };
    QTest::addRow("baseline on no such day") << BodyRow { Call::Baseline, { u"2024-02-30"_s, 100 }, day };
    QTest::addRow("baseline tomorrow") << BodyRow { Call::Baseline,
        { QDate::currentDate().addDays(1).toString(Qt::ISODate), 100 }, day };
    QTest::addRow("baseline over the bank limit") << BodyRow { Call::Baseline, { today(), 100'000'000'001 },
        u"Give the balance in cents, within the bank limit."_s };
    QTest::addRow("reconcile before the baseline")
        << BodyRow { Call::Reconcile, { u"2000-01-01"_s, 0 }, u"Reconcile on the baseline's day or later."_s };
    QTest::addRow("reconcile tomorrow") << BodyRow { Call::Reconcile,
        { QDate::currentDate().addDays(1).toString(Qt::ISODate), 0 }, u"Reconcile on a day up to today."_s };
}

void TestBankFeed::refusals()
{
    QFETCH(BodyRow, row);
    const QString checking = account(u"Operating checking"_s).id;
    QCOMPARE(callError(row.call, checking, row.baseline), row.refusal);
    QCOMPARE(
        callError(row.call, u"feed-missing"_s, { today(), 1 }), u"That account is not connected to the bank feed."_s);
}

void TestBankFeed::reconcileAgainstANewBaseline()
{
    TarnMercuryAccount tax = account(u"Tax holding"_s);
    if (tax.id.isEmpty()) {
        tarnWaitFor(TarnBankFeedCalls::connectMercury(*session.api));
        tax = account(u"Tax holding"_s);
    }
    QCOMPARE(callError(Call::Reconcile, tax.id, { today(), 0 }), u"Set the balance the bank showed on a day first."_s);

    // The baseline sits before every fed row: the bank's balance today is it
    // plus every row, none of which the books hold yet.
    const QString before = daysAgo(3);
    const TarnMercurySummary after
        = tarnWaitFor(TarnBankFeedCalls::setExternalBaseline(*session.api, tax.id, { before, 500'000 }));
    const auto at = std::find_if(
        after.accounts.begin(), after.accounts.end(), [&](const TarnMercuryAccount &a) { return a.id == tax.id; });
    QVERIFY(at != after.accounts.end());
    QCOMPARE(at->baseline_date, before);
    const TarnBooks books = tarnWaitFor(TarnBooksCalls::books(*session.api));
    qint64 fed = 0;
    for (const TarnBooksBankRow &row : books.bank_rows)
        fed += row.bank_account_id == tax.bank_account_id && row.row_date <= today() ? row.amount : 0;
    QCOMPARE(at->balance, 500'000 + fed);

    const TarnExternalReconciliation reconciled
        = tarnWaitFor(TarnBankFeedCalls::reconcileExternalBalance(*session.api, tax.id, { today() }));
    QCOMPARE(reconciled.external_balance, 500'000 + fed);
    QCOMPARE(reconciled.books_balance, 0);
    QCOMPARE(reconciled.difference, 500'000 + fed);
    QCOMPARE(reconciled.uncategorized, at->uncategorized);
    QVERIFY(!reconciled.balanced);
    const TarnMercuryAccount shown = account(u"Tax holding"_s);
    QCOMPARE(shown.reconciled_on, today());
    QCOMPARE(shown.reconciled_difference, reconciled.difference);
}

QTEST_GUILESS_MAIN(TestBankFeed)
#include "tst_bank_feed.moc"
