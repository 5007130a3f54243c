#include "money/MoneyTestSession.h"
#include "money/NativeBankRows.h"
#include "money/TarnBooksCalls.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

// The Banking page's rows against the demo books: a row categorized, then
// unmatched and matched again to the entry it made.
class TestBankRows : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void categorizeUnmatchMatch();

private:
    // Runs a change and hands the reloaded books over, as the books view
    // does; the change says `notice` once it went through.
    void changeAndReload(const std::function<void()> &change, const QString &notice);

    MoneyTestSession session;
    std::unique_ptr<NativeBankRows> rows;
};

void TestBankRows::initTestCase()
{
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    rows = std::make_unique<NativeBankRows>(*session.api);
    rows->setBooks(tarnWaitFor(TarnBooksCalls::books(*session.api)));
}

void TestBankRows::changeAndReload(const std::function<void()> &change, const QString &notice)
{
    QSignalSpy reload(rows.get(), &NativeBankRows::booksChanged);
    QSignalSpy done(rows.get(), &NativeBankRows::done);
    change();
    QVERIFY(rows->busy());
    QVERIFY(reload.wait());
    QCOMPARE(rows->error(), QString());
    QCOMPARE(done.size(), 1);
    QCOMPARE(done.first().first().toString(), notice);
    rows->setBooks(tarnWaitFor(TarnBooksCalls::books(*session.api)));
}

void TestBankRows::categorizeUnmatchMatch()
{
    QAbstractListModel *waiting = rows->unmatched();
    const int before = waiting->rowCount();
    QCOMPARE(before, 3);
    const int matchedBefore = rows->matched()->rowCount();
    const QString row = waiting->data(waiting->index(0), Qt::UserRole + 1).toString();
    QVERIFY(rows->candidates(row).isEmpty());

    changeAndReload([&] { rows->categorize(row, u"acct-6400"_s); }, u"Categorized"_s);
    QCOMPARE(waiting->rowCount(), before - 1);
    QCOMPARE(rows->matched()->rowCount(), matchedBefore + 1);

    changeAndReload([&] { rows->unmatch(row); }, u"Unmatched"_s);
    QCOMPARE(waiting->rowCount(), before);
    // The entry the categorizing posted is now the row's one candidate.
    const QVariantList candidates = rows->candidates(row);
    QCOMPARE(candidates.size(), 1);
    changeAndReload(
        [&] { rows->match(row, candidates.first().toMap().value(u"id"_s).toString()); }, u"Matched to ledger"_s);
    QCOMPARE(waiting->rowCount(), before - 1);
}

QTEST_GUILESS_MAIN(TestBankRows)
#include "tst_bank_rows.moc"
