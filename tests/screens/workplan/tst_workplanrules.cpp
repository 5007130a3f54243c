#include "screens/workplan/WorkPlanRules.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct WeekRow {
    QDate day;
    QDate monday;
    QString label;
};

struct TimeRow {
    QString typed;
    std::optional<QString> time;
};

TarnWorkEntry entry(const QString &id, const QString &day, const std::optional<QString> &time = {}, bool done = false)
{
    return { .id = id,
        .person_id = {},
        .kind = u"admin"_s,
        .title = id,
        .day = day,
        .time = time,
        .client_id = {},
        .client_name = {},
        .notes = {},
        .done = done,
        .done_by_name = {},
        .version = 1 };
}

} // namespace

Q_DECLARE_METATYPE(WeekRow)
Q_DECLARE_METATYPE(TimeRow)

class TestWorkPlanRules : public QObject {
    Q_OBJECT

private slots:
    void weeks_data();
    void weeks();
    void times_data();
    void times();
    void orderAndFilter();
};

void TestWorkPlanRules::weeks_data()
{
    QTest::addColumn<WeekRow>("row");
    QTest::addRow("a Monday is its own week") << WeekRow { { 2026, 11, 23 }, { 2026, 11, 23 }, u"23 – 29 Nov 2026"_s };
    QTest::addRow("a Sunday belongs to the week before")
        << WeekRow { { 2026, 11, 29 }, { 2026, 11, 23 }, u"23 – 29 Nov 2026"_s };
    QTest::addRow("across a month") << WeekRow { { 2026, 12, 2 }, { 2026, 11, 30 }, u"30 Nov – 6 Dec 2026"_s };
    QTest::addRow("across a year") << WeekRow { { 2026, 1, 1 }, { 2025, 12, 29 }, u"29 Dec 2025 – 4 Jan 2026"_s };
}

void TestWorkPlanRules::weeks()
{
    QFETCH(WeekRow, row);
    QCOMPARE(WorkPlanRules::weekOf(row.day), row.monday);
    QCOMPARE(WorkPlanRules::weekLabel(row.monday), row.label);
}

void TestWorkPlanRules::times_data()
{
    QTest::addColumn<TimeRow>("row");
    QTest::addRow("none") << TimeRow { u"  "_s, QString() };
    QTest::addRow("one-digit hour") << TimeRow { u"9:30"_s, u"09:30"_s };
    QTest::addRow("without a colon") << TimeRow { u"1415"_s, u"14:15"_s };
    QTest::addRow("past midnight") << TimeRow { u"24:00"_s, std::nullopt };
    QTest::addRow("minutes over 59") << TimeRow { u"10:75"_s, std::nullopt };
    QTest::addRow("words") << TimeRow { u"noon"_s, std::nullopt };
}

void TestWorkPlanRules::times()
{
    QFETCH(TimeRow, row);
    QCOMPARE(WorkPlanRules::normalizedTime(row.typed), row.time);
}

void TestWorkPlanRules::orderAndFilter()
{
    const TarnWorkPlan plan { .week = u"2026-11-23"_s,
        .may_coach = false,
        .people = {
            { u"p-a"_s, u"Ana"_s, u"admin"_s,
                { entry(u"a-wed"_s, u"2026-11-25"_s), entry(u"a-mon-late"_s, u"2026-11-23"_s, u"16:00"_s, true),
                    entry(u"a-mon"_s, u"2026-11-23"_s, {}, true) },
                {} },
            { u"p-b"_s, u"Ben"_s, u"member"_s,
                { entry(u"b-mon-early"_s, u"2026-11-23"_s, u"08:00"_s), entry(u"b-tue"_s, u"2026-11-24"_s) }, {} },
        } };
    QStringList everyone;
    for (const WorkPlanRow &row : WorkPlanRules::rows(plan, {}))
        everyone.append(row.id + u'/' + row.person_name);
    // By day, then the team's order, so Ben's early call follows Ana's afternoon.
    QCOMPARE(everyone,
        (QStringList { u"a-mon/Ana"_s, u"a-mon-late/Ana"_s, u"b-mon-early/Ben"_s, u"b-tue/Ben"_s, u"a-wed/Ana"_s }));
    QCOMPARE(WorkPlanRules::rows(plan, u"p-b"_s).size(), 2);
    QCOMPARE(WorkPlanRules::progress(plan),
        (QList<WorkPlanProgress> {
            { u"p-a"_s, u"Ana"_s, u"admin"_s, 3, 2 }, { u"p-b"_s, u"Ben"_s, u"member"_s, 2, 0 } }));
}

QTEST_GUILESS_MAIN(TestWorkPlanRules)
#include "tst_workplanrules.moc"
