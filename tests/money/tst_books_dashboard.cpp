#include "money/MoneyTestSession.h"
#include "money/NativeBooksDashboard.h"
#include "money/TarnBooksCalls.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

// The Dashboard page against the demo year.
class TestBooksDashboard : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void yearOfBars();
    void chartScale_data();
    void chartScale();
};

using Scale = NativeBooksDashboard::ChartScale;
Q_DECLARE_METATYPE(Scale)

// The value axis always has room for the largest bar, round labels and at
// most five of them, and never a zero range (an empty year still draws).
void TestBooksDashboard::chartScale_data()
{
    QTest::addColumn<qint64>("largestCents");
    QTest::addColumn<Scale>("scale");
    QTest::addRow("empty year") << qint64(0) << Scale { 1, 2, 1, u"$%.0f"_s };
    QTest::addRow("a few dollars") << qint64(350) << Scale { 4, 5, 1, u"$%.0f"_s };
    QTest::addRow("hundreds") << qint64(33800) << Scale { 400, 5, 1, u"$%.0f"_s };
    QTest::addRow("just under thousands") << qint64(999999) << Scale { 10000, 3, 1, u"$%.0f"_s };
    QTest::addRow("thousands, exactly a step") << qint64(1200000) << Scale { 15, 4, 1000, u"$%.0fk"_s };
    QTest::addRow("hundreds of thousands") << qint64(33800000) << Scale { 400, 5, 1000, u"$%.0fk"_s };
}

void TestBooksDashboard::chartScale()
{
    QFETCH(qint64, largestCents);
    QFETCH(Scale, scale);
    const Scale made = NativeBooksDashboard::scaleFor(largestCents);
    QCOMPARE(made.top, scale.top);
    QCOMPARE(made.ticks, scale.ticks);
    QCOMPARE(made.unit, scale.unit);
    QCOMPARE(made.labelFormat, scale.labelFormat);
}

void TestBooksDashboard::yearOfBars()
{
    MoneyTestSession session;
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    NativeBooksDashboard dashboard(*session.api);
    QSignalSpy changed(&dashboard, &NativeBooksDashboard::changed);
    dashboard.show(tarnWaitFor(TarnBooksCalls::books(*session.api)), {}, QDate::currentDate());
    while (dashboard.loading())
        QVERIFY(changed.wait());
    QCOMPARE(dashboard.error(), QString());

    // Two bars a month, money in first, every month of the demo year busy.
    QAbstractListModel *bars = dashboard.bars();
    QCOMPARE(bars->rowCount(), 2 * NativeBooksDashboard::monthCount);
    const QHash<int, QByteArray> roles = bars->roleNames();
    const auto value = [&](int row, const QByteArray &role) { return bars->data(bars->index(row), roles.key(role)); };
    for (int row = 0; row < bars->rowCount(); ++row) {
        QCOMPARE(value(row, "kind").toString(), row % 2 ? u"Money out"_s : u"Money in"_s);
        QVERIFY(value(row, "cents").toDouble() > 0);
        QVERIFY(value(row, "cents").toDouble() <= dashboard.largestBar());
    }
    QCOMPARE(value(23, "month").toString(), QDate::currentDate().toString(u"yyyy-MM"_s));
    QVERIFY(dashboard.moneyIn() != dashboard.moneyOut());
    // The chart's series: a label and a value of each kind per month, all
    // under the axis top.
    QCOMPARE(dashboard.chartMonths().size(), NativeBooksDashboard::monthCount);
    for (const QVariantList &values : { dashboard.chartIn(), dashboard.chartOut() }) {
        QCOMPARE(values.size(), NativeBooksDashboard::monthCount);
        QVERIFY(std::ranges::all_of(
            values, [&](const QVariant &v) { return v.toDouble() > 0 && v.toDouble() <= dashboard.chartTop(); }));
    }
    QCOMPARE(dashboard.bankNote(), u"1 account · 3 to categorize in Mercury"_s);
}

QTEST_GUILESS_MAIN(TestBooksDashboard)
#include "tst_books_dashboard.moc"
