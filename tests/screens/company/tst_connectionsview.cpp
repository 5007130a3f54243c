#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/company/NativeConnectionsView.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;

struct BaselineRow {
    QString date;
    QString balance;
    std::optional<qint64> cents; // none: refused with `refusal`
    QString refusal;
};

struct DescribeRow {
    TarnExternalReconciliation result;
    QString text;
};

} // namespace

Q_DECLARE_METATYPE(BaselineRow)
Q_DECLARE_METATYPE(DescribeRow)

// The Connections section's state: its typed baselines and reconciliation
// sentences, and the bank feed against the local workspace's demo.
class TestConnectionsView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void typedBaseline_data();
    void typedBaseline();
    void describe_data();
    void describe();
    void ownerSeesTheFeed();
    void othersReadNothing();
    void connectBaselineAndReconcile();
    void googleStartsInTheBrowser();

private:
    [[nodiscard]] std::unique_ptr<NativeConnectionsView> opened(const QString &who);
    [[nodiscard]] static bool act(NativeConnectionsView &view, const std::function<void()> &action);

    InboxTestClient client;
};

void TestConnectionsView::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

std::unique_ptr<NativeConnectionsView> TestConnectionsView::opened(const QString &who)
{
    TarnAPI &api = client.as(who);
    (void)tarnWaitFor(api.refreshSession());
    auto view = std::make_unique<NativeConnectionsView>(api);
    QSignalSpy loaded(view.get(), &NativeConnectionsView::refreshed);
    view->appear();
    if (loaded.isEmpty() && !loaded.wait())
        return {};
    return view;
}

bool TestConnectionsView::act(NativeConnectionsView &view, const std::function<void()> &action)
{
    QSignalSpy done(&view, &NativeConnectionsView::actionFinished);
    action();
    return !done.isEmpty() || done.wait();
}

void TestConnectionsView::typedBaseline_data()
{
    const QString day = u"Give the day as YYYY-MM-DD."_s;
    const QString amount = u"Type the balance in dollars, such as 12,500.00."_s;
    QTest::addColumn<BaselineRow>("row");
    QTest::addRow("grouped dollars") << BaselineRow { u" 2026-03-02 "_s, u"$12,500.00"_s, 1'250'000, {} };
    QTest::addRow("overdrawn") << BaselineRow { u"2026-03-02"_s, u"-45.1"_s, -4'510, {} };
    QTest::addRow("empty account") << BaselineRow { u"2026-03-02"_s, u"0"_s, 0, {} };
    QTest::addRow("the day itself") << BaselineRow { u"2026-03-10"_s, u"1"_s, 100, {} };
    QTest::addRow("day after") << BaselineRow { u"2026-03-11"_s, u"1"_s, std::nullopt,
        u"The bank's balance is for today or an earlier day."_s };
    QTest::addRow("no such day") << BaselineRow { u"2026-02-30"_s, u"1"_s, std::nullopt, day };
    QTest::addRow("day as typed elsewhere") << BaselineRow { u"3/2/2026"_s, u"1"_s, std::nullopt, day };
    QTest::addRow("decimal comma") << BaselineRow { u"2026-03-02"_s, u"12,50"_s, std::nullopt, amount };
    QTest::addRow("two signs") << BaselineRow { u"2026-03-02"_s, u"--5"_s, std::nullopt, amount };
    QTest::addRow("nothing typed") << BaselineRow { u"2026-03-02"_s, u""_s, std::nullopt, amount };
}

void TestConnectionsView::typedBaseline()
{
    QFETCH(BaselineRow, row);
    QString refusal;
    const std::optional<TarnExternalBaseline> got
        = NativeConnectionsView::baseline(row.date, row.balance, QDate(2026, 3, 10), &refusal);
    QCOMPARE(got.has_value(), row.cents.has_value());
    QCOMPARE(refusal, row.refusal);
    if (got) {
        QCOMPARE(got->balance, *row.cents);
        QCOMPARE(got->date, row.date.trimmed());
    }
}

void TestConnectionsView::describe_data()
{
    QTest::addColumn<DescribeRow>("row");
    const QString day = u"2026-03-10"_s;
    QTest::addRow("balanced") << DescribeRow { { {}, {}, day, 150'000, 150'000, 0, 0, true },
        u"Balanced on 2026-03-10: the bank and the books both show $1,500.00."_s };
    QTest::addRow("one row behind") << DescribeRow { { {}, {}, day, 150'000, 151'840, -1'840, 1, false },
        u"On 2026-03-10 the bank shows $1,500.00 and the books $1,518.40, $18.40 apart: 1 row to categorize in "
        u"the books."_s };
    QTest::addRow("rows behind") << DescribeRow {
        { {}, {}, day, 2'500, 0, 2'500, 3, false },
        u"On 2026-03-10 the bank shows $25.00 and the books $0.00, $25.00 apart: 3 rows to categorize in the books."_s
    };
    QTest::addRow("apart with nothing to categorize") << DescribeRow { { {}, {}, day, 100, 0, 100, 0, false },
        u"On 2026-03-10 the bank shows $1.00 and the books $0.00, $1.00 apart."_s };
}

void TestConnectionsView::describe()
{
    QFETCH(DescribeRow, row);
    QCOMPARE(NativeConnectionsView::describe(row.result), row.text);
}

void TestConnectionsView::ownerSeesTheFeed()
{
    const std::unique_ptr<NativeConnectionsView> view = opened(maren);
    QVERIFY(view);
    QCOMPARE(view->errorText(), QString());
    QVERIFY(view->googleConnected());
    QCOMPARE(view->googleEmail(), maren);
    QCOMPARE(view->accounts()->rowCount(), 1);
    const TarnMercuryAccount &checking = view->accounts()->rows().constFirst();
    QCOMPARE(checking.name, u"Operating checking"_s);
    QCOMPARE(view->uncategorized(), 3);
    QCOMPARE(view->available(), 2);
    QCOMPARE(view->rows()->rowCount(), 8);
    const QModelIndex newest = view->rows()->index(0);
    const QHash<int, QByteArray> roles = view->rows()->roleNames();
    QCOMPARE(view->rows()->data(newest, roles.key("categorized")).toBool(), false);
}

void TestConnectionsView::othersReadNothing()
{
    const std::unique_ptr<NativeConnectionsView> view = opened(tomas);
    QVERIFY(view);
    QVERIFY(view->loaded());
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->accounts()->rowCount(), 0);
    QCOMPARE(view->available(), 0);
}

void TestConnectionsView::connectBaselineAndReconcile()
{
    const std::unique_ptr<NativeConnectionsView> view = opened(maren);
    QVERIFY(view);
    QSignalSpy inserted(view->accounts(), &QAbstractItemModel::rowsInserted);
    QVERIFY(act(*view, [&] { view->connectBank(); }));
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->accounts()->rowCount(), 2);
    QCOMPARE(inserted.size(), 1);
    const TarnMercuryAccount savings = view->accounts()->rows().at(1);
    QCOMPARE(savings.name, u"Reserve savings"_s);

    // A refused typing is shown and nothing is sent.
    view->setBaseline(savings.id, u"yesterday"_s, u"100"_s);
    QCOMPARE(view->errorText(), u"Give the day as YYYY-MM-DD."_s);
    QVERIFY(!view->busy());

    const QString before = QDate::currentDate().addDays(-2).toString(Qt::ISODate);
    QVERIFY(act(*view, [&] { view->setBaseline(savings.id, before, u"2,000.00"_s); }));
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->accounts()->rows().at(1).baseline_balance, 200'000);

    QVERIFY(act(*view, [&] { view->reconcile(savings.id, NativeConnectionsView::today()); }));
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->reconciledAccount(), savings.id);
    QVERIFY2(view->reconciliation().contains(u"to categorize in the books"_s), qPrintable(view->reconciliation()));
    QCOMPARE(view->accounts()->rows().at(1).reconciled_on, NativeConnectionsView::today());

    // A day in the future is refused before anything is sent.
    view->reconcile(savings.id, QDate::currentDate().addDays(1).toString(Qt::ISODate));
    QCOMPARE(view->errorText(), u"The bank's balance is for today or an earlier day."_s);
    QVERIFY(!view->busy());

    // A reconciliation before the baseline is the service's to refuse.
    QVERIFY(act(*view, [&] { view->reconcile(savings.id, u"2001-01-01"_s); }));
    QCOMPARE(view->errorText(), u"Reconcile on the baseline's day or later."_s);
}

void TestConnectionsView::googleStartsInTheBrowser()
{
    // Jonah's mailbox is not connected: the browser is to open the service's
    // own Google page for the mailbox.
    const std::unique_ptr<NativeConnectionsView> view = opened(u"jonah@halvard.example"_s);
    QVERIFY(view);
    QSignalSpy started(view.get(), &NativeConnectionsView::googleConnectStarted);
    view->connectGoogle();
    QVERIFY(started.wait());
    const QUrl start = started.constFirst().constFirst().toUrl();
    QCOMPARE(start.host(), client.workspace->url().host());
    QCOMPARE(start.path(), u"/api/native/google/start"_s);
    QVERIFY(start.query().contains(u"service=gmail"_s));
}

QTEST_GUILESS_MAIN(TestConnectionsView)
#include "tst_connectionsview.moc"
