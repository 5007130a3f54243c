#include "screens/support/SupportBoardRules.h"
#include "screens/support/SupportLabels.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QDate today(2026, 3, 10);

TarnSupportTaskSummary card(const QString &id, const QString &status, const QString &priority,
    std::optional<QString> due, std::optional<QString> client = {}, std::optional<QString> assignee = {})
{
    TarnSupportTaskSummary task;
    task.id = id;
    task.title = u"Task "_s + id;
    task.status = status;
    task.priority = priority;
    task.due_date = std::move(due);
    if (client) {
        task.client_id = u"c-"_s + client->toLower();
        task.client_name = client;
    }
    if (assignee) {
        task.assignee_id = u"p-"_s + assignee->toLower();
        task.assignee_name = assignee;
    }
    return task;
}

// Cards around 2026-03-10: overdue, due today, within the week, later, none, done.
const QList<TarnSupportTaskSummary> cards {
    card(u"a"_s, u"todo"_s, u"normal"_s, u"2026-03-08"_s, u"Fernhill Bakery"_s, u"Jonah"_s),
    card(u"b"_s, u"in_progress"_s, u"urgent"_s, u"2026-03-10"_s, u"Oakline Studio"_s, u"Maren"_s),
    card(u"c"_s, u"waiting"_s, u"high"_s, u"2026-03-16"_s, u"Fernhill Bakery"_s, u"Maren"_s),
    card(u"d"_s, u"todo"_s, u"low"_s, u"2026-03-17"_s, {}, u"Jonah"_s),
    card(u"e"_s, u"todo"_s, u"urgent"_s, {}, u"Brightwater Dental"_s),
    card(u"f"_s, u"done"_s, u"normal"_s, u"2026-03-01"_s, u"Oakline Studio"_s, u"Maren"_s),
};

QStringList idsOf(const QList<qsizetype> &rows)
{
    QStringList out;
    for (const qsizetype row : rows)
        out.append(cards.at(row).id);
    return out;
}

} // namespace

// The board's rules over a fixed set of cards on a fixed day.
class TestSupportRules : public QObject {
    Q_OBJECT

private slots:
    void filters_data();
    void filters();
    void columnsOrder_data();
    void columnsOrder();
    void due_data();
    void due();
    void durations();
    void names_data();
    void names();
    void fileRefusal();
};

void TestSupportRules::filters_data()
{
    QTest::addColumn<TarnSupportFilters>("filters");
    QTest::addColumn<QStringList>("expected");
    const struct {
        const char *label;
        TarnSupportFilters filters;
        QStringList expected;
    } rows[] {
        { "none", {}, { u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s } },
        { "mine", SupportBoardRules::filtersOf(u"mine"_s, u"p-maren"_s), { u"b"_s, u"c"_s, u"f"_s } },
        { "overdue leaves done work out", SupportBoardRules::filtersOf(u"overdue"_s, {}), { u"a"_s } },
        { "this week: overdue up to six days on", SupportBoardRules::filtersOf(u"week"_s, {}),
            { u"a"_s, u"b"_s, u"c"_s } },
        { "today", { .due = u"today"_s }, { u"b"_s } },
        { "no due day", { .due = u"none"_s }, { u"e"_s } },
        { "a customer and a priority", { .client_id = u"c-fernhill bakery"_s, .priority = u"high"_s }, { u"c"_s } },
        { "text in any case over title, customer, assignee", { .text = u"OAKLINE"_s }, { u"b"_s, u"f"_s } },
        { "every word must match somewhere", { .text = u"fernhill  maren"_s }, { u"c"_s } },
        { "an empty filter is no filter", { .assignee_id = QString(), .text = QString() },
            { u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s } },
        { "a view's filters under a typed search",
            SupportBoardRules::merged(
                SupportBoardRules::filtersOf(u"mine"_s, u"p-maren"_s), { .assignee_id = QString(), .text = u"c"_s }),
            { u"c"_s } },
    };
    for (const auto &row : rows)
        QTest::addRow("%s", row.label) << row.filters << row.expected;
}

void TestSupportRules::filters()
{
    QFETCH(TarnSupportFilters, filters);
    QFETCH(QStringList, expected);
    QStringList matched;
    for (const TarnSupportTaskSummary &task : cards)
        if (SupportBoardRules::matches(task, filters, today))
            matched.append(task.id);
    QCOMPARE(matched, expected);
    // The columns hold exactly the matching cards.
    QStringList inColumns;
    for (const SupportBoardRules::Column &column : SupportBoardRules::columns(cards, filters, today, false))
        inColumns += idsOf(column.rows);
    inColumns.sort();
    QCOMPARE(inColumns, expected);
}

void TestSupportRules::columnsOrder_data()
{
    QTest::addColumn<bool>("byClient");
    QTest::addColumn<QStringList>("todo");
    // Due first (none last), the more pressing first on the same day.
    QTest::addRow("by due day") << false << QStringList { u"a"_s, u"d"_s, u"e"_s };
    // Customers by name, those without one last.
    QTest::addRow("by client") << true << QStringList { u"e"_s, u"a"_s, u"d"_s };
}

void TestSupportRules::columnsOrder()
{
    QFETCH(bool, byClient);
    QFETCH(QStringList, todo);
    const QList<SupportBoardRules::Column> columns = SupportBoardRules::columns(cards, {}, today, byClient);
    QCOMPARE(columns.size(), 4);
    QCOMPARE(columns.first().status, u"todo"_s);
    QCOMPARE(idsOf(columns.first().rows), todo);
    QCOMPARE(columns.last().status, u"done"_s);
    QCOMPARE(idsOf(columns.last().rows), QStringList { u"f"_s });
}

void TestSupportRules::due_data()
{
    QTest::addColumn<QString>("day");
    QTest::addColumn<bool>("done");
    QTest::addColumn<QString>("label");
    QTest::addRow("overdue") << u"2026-03-07"_s << false << u"Overdue by 3 days"_s;
    QTest::addRow("yesterday") << u"2026-03-09"_s << false << u"Overdue since yesterday"_s;
    QTest::addRow("today") << u"2026-03-10"_s << false << u"Due today"_s;
    QTest::addRow("tomorrow") << u"2026-03-11"_s << false << u"Due tomorrow"_s;
    QTest::addRow("later, across a month") << u"2026-04-02"_s << false << u"Due Thu 2 Apr"_s;
    QTest::addRow("done work is never overdue") << u"2026-03-07"_s << true << u"Was due Sat 7 Mar"_s;
    QTest::addRow("unreadable") << u"07/03/2026"_s << false << QString();
}

void TestSupportRules::due()
{
    QFETCH(QString, day);
    QFETCH(bool, done);
    QFETCH(QString, label);
    QCOMPARE(SupportLabels::due(day, today, done), label);
}

void TestSupportRules::durations()
{
    QCOMPARE(SupportLabels::minutes(45), u"45 min"_s);
    QCOMPARE(SupportLabels::minutes(120), u"2 h"_s);
    QCOMPARE(SupportLabels::minutes(125), u"2 h 05 min"_s);
    QCOMPARE(SupportLabels::elapsed(249'999), u"0:04:09"_s);
    QCOMPARE(SupportLabels::elapsed(43'200'000), u"12:00:00"_s);
    QCOMPARE(SupportLabels::elapsed(-5), u"0:00:00"_s); // a clock a little behind the service's
}

void TestSupportRules::names_data()
{
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("expected");
    QTest::addRow("status") << SupportLabels::status(u"in_progress"_s) << u"In progress"_s;
    QTest::addRow("an unknown status as it came") << SupportLabels::status(u"archived"_s) << u"archived"_s;
    QTest::addRow("priority") << SupportLabels::priority(u"urgent"_s) << u"Urgent"_s;
    QTest::addRow("schedule") << SupportLabels::every(u"quarter"_s) << u"Every quarter"_s;
    QTest::addRow("a built-in view is not a saved one")
        << QString::number(SupportBoardRules::isBuiltIn(u"week"_s) && !SupportBoardRules::isBuiltIn(u"sv-1"_s))
        << u"1"_s;
    QTest::addRow("a saved view's id stands for no filters")
        << QString::number(SupportBoardRules::filtersOf(u"sv-1"_s, u"p-maren"_s).isEmpty()) << u"1"_s;
}

void TestSupportRules::names()
{
    QFETCH(QString, shown);
    QFETCH(QString, expected);
    QCOMPARE(shown, expected);
}

void TestSupportRules::fileRefusal()
{
    QCOMPARE(SupportBoardRules::fileRefusal(u"a.pdf"_s, SupportBoardRules::fileLimit), std::nullopt);
    QCOMPARE(SupportBoardRules::fileRefusal(u"scan.pdf"_s, SupportBoardRules::fileLimit + 1),
        u"“scan.pdf” is larger than 5 MB, the most a task's file may be."_s);
}

QTEST_APPLESS_MAIN(TestSupportRules)
#include "tst_supportrules.moc"
