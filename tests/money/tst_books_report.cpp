#include "money/MoneyTestSession.h"
#include "money/NativeBooksReport.h"

#include <QDate>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

// The Reports page against the demo year: the period's figures and the
// register paged a hundred entries at a time.
class TestBooksReport : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void yearPagedByHundreds();
    void periodRefusedHere();

private:
    // Runs the action and waits until nothing is loading.
    void settle(NativeBooksReport &report, const std::function<void()> &action);

    MoneyTestSession session;
};

void TestBooksReport::initTestCase()
{
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
}

void TestBooksReport::settle(NativeBooksReport &report, const std::function<void()> &action)
{
    QSignalSpy changed(&report, &NativeBooksReport::changed);
    action();
    while (report.loading())
        QVERIFY(changed.wait());
}

void TestBooksReport::yearPagedByHundreds()
{
    NativeBooksReport report(*session.api);
    const QDate today = QDate::currentDate();
    settle(
        report, [&] { report.load(today.addYears(-1).toString(Qt::ISODate), today.toString(Qt::ISODate), QString()); });
    QCOMPARE(report.error(), QString());
    QVERIFY(report.revenue().startsWith(u'$') && report.revenue() != u"$0.00"_s);
    QVERIFY(report.registerTotal() > 100);
    QCOMPARE(report.registerModel()->rowCount(), 100);
    QVERIFY(report.hasMore());

    settle(report, [&] { report.more(); });
    QCOMPARE(report.registerModel()->rowCount(), std::min(200, report.registerTotal()));
    while (report.hasMore())
        settle(report, [&] { report.more(); });
    QCOMPARE(report.registerModel()->rowCount(), report.registerTotal());
}

void TestBooksReport::periodRefusedHere()
{
    NativeBooksReport report(*session.api);
    session.workspace->clearRequests();
    report.load(u"2026-03-01"_s, u"2026-02-01"_s, QString());
    QCOMPARE(report.error(), u"Choose a period from one YYYY-MM-DD day to a later one."_s);
    QVERIFY(!report.loading());
    QCOMPARE(session.workspace->requests().size(), 0);
}

QTEST_GUILESS_MAIN(TestBooksReport)
#include "tst_books_report.moc"
