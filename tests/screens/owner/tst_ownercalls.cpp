#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/owner/TarnOwnerCalls.h"
#include "screens/support/TarnSupportCalls.h"
#include "support/FailureOf.h"

#include <QDate>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;

struct AccessRow {
    QString email;
    bool opens;
};

} // namespace

Q_DECLARE_METATYPE(AccessRow)

// The dashboard's snapshot against the local workspace and its demo company.
class TestOwnerCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void onlyOwners_data();
    void onlyOwners();
    void demoSnapshot();
    void supportFiguresFollowTheBoard();

private:
    InboxTestClient client;
};

void TestOwnerCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestOwnerCalls::onlyOwners_data()
{
    QTest::addColumn<AccessRow>("row");
    QTest::addRow("owner") << AccessRow { maren, true };
    // A manager who keeps the books is still not an owner.
    QTest::addRow("books manager") << AccessRow { u"tomas@halvard.example"_s, false };
    QTest::addRow("member") << AccessRow { u"priya@halvard.example"_s, false };
    QTest::addRow("contractor") << AccessRow { u"ada@halvard.example"_s, false };
}

void TestOwnerCalls::onlyOwners()
{
    QFETCH(AccessRow, row);
    const QString failure = failureOf(TarnOwnerCalls::teamSnapshot(client.as(row.email)));
    QCOMPARE(failure.isEmpty(), row.opens);
    if (!row.opens)
        QCOMPARE(failure, u"The dashboard is open to the company's owners."_s);
}

void TestOwnerCalls::demoSnapshot()
{
    const TarnTeamSnapshot snapshot = tarnWaitFor(TarnOwnerCalls::teamSnapshot(client.as(maren)));
    const QDate today = QDate::fromString(snapshot.today, Qt::ISODate);
    QVERIFY(today.isValid());
    QCOMPARE(snapshot.months.size(), 2);
    QCOMPARE(snapshot.months.at(0).month, today.addMonths(-1).toString(u"yyyy-MM"_s));
    QCOMPARE(snapshot.months.at(1).month, today.toString(u"yyyy-MM"_s));
    const QDate monday = QDate::fromString(snapshot.week_start, Qt::ISODate);
    QCOMPARE(monday.dayOfWeek(), 1);
    QVERIFY(monday <= today && monday.daysTo(today) < 7);

    // The demo has something in every figure, so a broken query shows as a zero.
    QVERIFY(snapshot.open_invoices > 0 && snapshot.open_invoices_amount > 0);
    QVERIFY(snapshot.support_open > 0);
    QVERIFY(snapshot.inbox_waiting > 0);

    QCOMPARE(snapshot.team.size(), 6);
    QCOMPARE(snapshot.team.first().name, u"Maren Holt"_s);
}

void TestOwnerCalls::supportFiguresFollowTheBoard()
{
    TarnAPI &api = client.as(maren);
    const TarnTeamSnapshot before = tarnWaitFor(TarnOwnerCalls::teamSnapshot(api));
    TarnSupportTaskDraft draft { .title = u"Printer jams on the second tray"_s,
        .assignee_id = u"p-jonah"_s,
        .due_date = QDate::fromString(before.today, Qt::ISODate).addDays(-1).toString(Qt::ISODate) };
    tarnWaitFor(TarnSupportCalls::createSupportTask(api, draft));

    const TarnTeamSnapshot after = tarnWaitFor(TarnOwnerCalls::teamSnapshot(api));
    QCOMPARE(after.support_open, before.support_open + 1);
    QCOMPARE(after.support_overdue, before.support_overdue + 1);
    const auto jonah = [](const TarnTeamSnapshot &snapshot) {
        return std::find_if(snapshot.team.begin(), snapshot.team.end(), [](const TarnTeamWeek &week) {
            return week.id == "p-jonah"_L1;
        })->support_open;
    };
    QCOMPARE(jonah(after), jonah(before) + 1);
}

QTEST_GUILESS_MAIN(TestOwnerCalls)
#include "tst_ownercalls.moc"
