#include "money/MoneyTestSession.h"
#include "money/NativeReconciliation.h"

#include <QDate>
#include <QJsonArray>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString day(int fromToday)
{
    return QDate::currentDate().addDays(fromToday).toString(Qt::ISODate);
}

} // namespace

// The reconciliation panel against the demo books: what is refused before
// anything is sent, and a balanced statement closed.
class TestReconciliationView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void refusedHere_data();
    void refusedHere();
    void closesBalancedStatement();

private:
    void previewAt(NativeReconciliation &panel, const QString &date);

    MoneyTestSession session;
};

void TestReconciliationView::initTestCase()
{
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    QCOMPARE(NativeReconciliation::balanceCents(u"-12.50"_s), std::optional<qint64>(-1250));
    QCOMPARE(NativeReconciliation::balanceCents(u"1,204.00"_s), std::optional<qint64>(120400));
}

void TestReconciliationView::previewAt(NativeReconciliation &panel, const QString &date)
{
    QSignalSpy changed(&panel, &NativeReconciliation::changed);
    panel.preview(u"acct-1000"_s, date);
    while (panel.loading())
        QVERIFY(changed.wait());
}

void TestReconciliationView::refusedHere_data()
{
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("balance");
    QTest::addColumn<QString>("error");
    // The demo's newest rows are not reviewed yet.
    QTest::addRow("rows to match") << day(0) << u"0"_s
                                   << u"Match or categorize every bank row through this date first."_s;
    QTest::addRow("not an amount") << day(-200) << u"12,50"_s
                                   << u"Type the statement ending balance in USD, such as 1250.00."_s;
    QTest::addRow("unbalanced") << day(-200) << u"1.00"_s
                                << u"The statement ending balance differs from the adjusted balance by $1.00."_s;
    QTest::addRow("no preview") << u"2026-02-30"_s << u"0"_s << u"Preview the reconciliation first."_s;
}

void TestReconciliationView::refusedHere()
{
    QFETCH(QString, date);
    QFETCH(QString, balance);
    QFETCH(QString, error);
    NativeReconciliation panel(*session.api);
    previewAt(panel, date);
    session.workspace->clearRequests();
    QVERIFY(!panel.close(balance));
    QCOMPARE(panel.error(), error);
    QCOMPARE(session.workspace->requests().size(), 0);
}

void TestReconciliationView::closesBalancedStatement()
{
    NativeReconciliation panel(*session.api);
    // Before the feed's months no row is imported, so nothing has cleared.
    previewAt(panel, day(-200));
    QVERIFY(panel.hasPreview());
    QCOMPARE(panel.unmatchedCount(), 0);
    QCOMPARE(panel.adjustedBalance(), u"$0.00"_s);
    QCOMPARE(panel.outstandingTotal(), panel.ledgerBalance());

    QSignalSpy closed(&panel, &NativeReconciliation::closed);
    QVERIFY(panel.close(u"0.00"_s));
    QVERIFY(closed.wait());
    QVERIFY(!panel.closedID().isEmpty());
    QCOMPARE(panel.lastClosedDate(), day(-200));
    QCOMPARE(panel.error(), QString());
}

QTEST_GUILESS_MAIN(TestReconciliationView)
#include "tst_reconciliation_view.moc"
