#include "screens/customers/CustomerRules.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// A service time at the given local wall-clock time.
QString at(const QDateTime &local)
{
    return local.toUTC().toString(Qt::ISODateWithMs);
}

TarnTimelineEvent timelineEvent(
    const QString &id, const QString &kind, const QDateTime &local, const QString &body = {})
{
    return { .id = id, .kind = kind, .at = at(local), .title = u"t"_s, .body = body, .author_name = std::nullopt };
}

} // namespace

// The register's rules: stage order, timeline rows, search, file limits.
class TestCustomerRules : public QObject {
    Q_OBJECT

private slots:
    void stagesKeepPipelineOrder();
    void timelineGroupsByLocalDay();
    void matching_data();
    void matching();
    void dayText_data();
    void dayText();
    void fileRefusal_data();
    void fileRefusal();
};

void TestCustomerRules::stagesKeepPipelineOrder()
{
    QStringList labels;
    for (const CustomerRules::Stage &stage : CustomerRules::stages())
        labels.append(stage.label);
    QCOMPARE(labels, (QStringList { u"Lead"_s, u"Qualified"_s, u"Proposal"_s, u"Customer"_s, u"Lost"_s }));
    QVERIFY(CustomerRules::stageOrder(u"lead"_s) < CustomerRules::stageOrder(u"proposal"_s));
    // A stage this build does not know sorts after every known one, named as it came.
    QCOMPARE(CustomerRules::stageOrder(u"dormant"_s), CustomerRules::stages().size());
    QCOMPARE(CustomerRules::stageLabel(u"dormant"_s), u"dormant"_s);
}

void TestCustomerRules::timelineGroupsByLocalDay()
{
    const QDateTime now(QDate(2026, 3, 12), QTime(15, 0));
    // Late evening and early morning of the same local day stay one group,
    // whatever their UTC dates.
    const QList<TarnTimelineEvent> events = {
        timelineEvent(u"a"_s, u"note"_s, QDateTime(QDate(2026, 3, 12), QTime(23, 30))),
        timelineEvent(u"b"_s, u"stage"_s, QDateTime(QDate(2026, 3, 12), QTime(0, 30)), u"lead → qualified"_s),
        timelineEvent(u"c"_s, u"inbox"_s, QDateTime(QDate(2026, 3, 11), QTime(9, 0))),
        timelineEvent(u"d"_s, u"call"_s, QDateTime(QDate(2025, 12, 30), QTime(9, 0))),
        timelineEvent(u"e"_s, u"fax"_s, QDateTime(QDate(2025, 12, 30), QTime(8, 0))),
    };
    const QList<CustomerTimelineRow> rows = CustomerRules::timelineRows(events, now);
    QCOMPARE(rows.size(), 5);
    QList<bool> firsts;
    QStringList days;
    QStringList kinds;
    for (const CustomerTimelineRow &row : rows) {
        firsts.append(row.firstOfDay);
        days.append(row.dayLabel);
        kinds.append(row.kindLabel);
    }
    QCOMPARE(firsts, (QList<bool> { true, false, true, true, false }));
    QCOMPARE(days.at(0), u"Today"_s);
    QCOMPARE(days.at(1), u"Today"_s);
    QCOMPARE(days.at(2), u"Yesterday"_s);
    QVERIFY2(days.at(3).contains(u"2025"_s), qPrintable(days.at(3)));
    QCOMPARE(kinds, (QStringList { u"Note"_s, u"Stage"_s, u"Message"_s, u"Call"_s, u"Activity"_s }));
    QCOMPARE(rows.at(1).body, u"Lead → Qualified"_s);
}

void TestCustomerRules::matching_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("matches");

    const struct {
        const char *label;
        QString text;
        bool matches;
    } rows[] {
        { "empty matches all", u"  "_s, true },
        { "any case", u"FERN"_s, true },
        { "accents ignored both ways", u"cafe"_s, true },
        { "every word must appear", u"fern dental"_s, false },
        { "words in name and company", u"bakery group"_s, true },
        { "email", u"orders@"_s, true },
        { "phone digits across spacing", u"5550113"_s, true },
        { "phone in parts", u"555 0113"_s, true },
        { "digits not in the phone", u"0999"_s, false },
        { "other name", u"oakline"_s, false },
    };
    for (const auto &row : rows)
        QTest::addRow("%s", row.label) << row.text << row.matches;
}

void TestCustomerRules::matching()
{
    QFETCH(QString, text);
    QFETCH(bool, matches);
    const TarnCustomerSummary customer { .id = u"c"_s,
        .name = u"Fernhill Bakery Café"_s,
        .stage = u"lead"_s,
        .email = u"orders@fernhill.example"_s,
        .phone = u"+1 555-0113"_s,
        .company = u"Fernhill Group"_s,
        .follow_up_on = std::nullopt,
        .open_tasks = 0 };
    QCOMPARE(CustomerRules::matches(customer, text), matches);
}

void TestCustomerRules::dayText_data()
{
    QTest::addColumn<QString>("day");
    QTest::addColumn<QString>("shown");

    const struct {
        const char *label;
        QString day, shown;
    } rows[] {
        { "this year without it", u"2026-03-02"_s, u"2 Mar"_s },
        { "another year with it", u"2025-12-30"_s, u"30 Dec 2025"_s },
        { "a time reads as its day", u"2026-03-02T23:10:00.000Z"_s, u"2 Mar"_s },
        { "none", {}, {} },
        { "not a day", u"2026-02-30"_s, {} },
    };
    for (const auto &row : rows)
        QTest::addRow("%s", row.label) << row.day << row.shown;
}

void TestCustomerRules::dayText()
{
    QFETCH(QString, day);
    QFETCH(QString, shown);
    QCOMPARE(CustomerRules::dayText(day, QDate(2026, 6, 1)), shown);
}

void TestCustomerRules::fileRefusal_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QString>("refusal");

    const struct {
        const char *label;
        qint64 size;
        QString refusal;
    } rows[] {
        { "at the limit", CustomerRules::fileLimitBytes, {} },
        { "one byte over, named", CustomerRules::fileLimitBytes + 1,
            u"“plan.pdf” is larger than 10 MB, the limit for a customer's files."_s },
        { "empty", 0, u"“plan.pdf” is empty."_s },
    };
    for (const auto &row : rows)
        QTest::addRow("%s", row.label) << row.size << row.refusal;
}

void TestCustomerRules::fileRefusal()
{
    QFETCH(qint64, size);
    QFETCH(QString, refusal);
    QCOMPARE(CustomerRules::fileRefusal(u"plan.pdf"_s, size).value_or(QString()), refusal);
}

QTEST_GUILESS_MAIN(TestCustomerRules)
#include "tst_customerrules.moc"
