#include "screens/calls/CallBookRules.h"

#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace {

struct NumberRow {
    QString typed;
    QString dialled; // empty: refused
};

struct FilterRow {
    TarnCall call;
    QString filter;
    QString search;
    bool shown;
};

struct LeadRow {
    QString search;
    bool shown;
};

struct LabelRow {
    QString startedAt;
    QString expected;
};

TarnCall call(const QString &direction, const QString &outcome)
{
    return { .id = u"c1"_s,
        .direction = direction,
        .client_name = u"Brightwater Dental"_s,
        .person_id = u"p-tomas"_s,
        .person_name = u"Tomas Reyes"_s,
        .number = u"+1 555 0111"_s,
        .started_at = {},
        .outcome = outcome,
        .notes = u"Wants a quote by Friday."_s,
        .status = u"ended"_s };
}

} // namespace

Q_DECLARE_METATYPE(NumberRow)
Q_DECLARE_METATYPE(FilterRow)
Q_DECLARE_METATYPE(LabelRow)
Q_DECLARE_METATYPE(LeadRow)

// The dialer's number rule, the book's filters and search, and its labels.
class TestCallRules : public QObject {
    Q_OBJECT

private slots:
    void numbers_data();
    void numbers();
    void filters_data();
    void filters();
    void leadSearch_data();
    void leadSearch();
    void durations();
    void startedLabels_data();
    void startedLabels();
};

void TestCallRules::numbers_data()
{
    QTest::addColumn<NumberRow>("row");
    QTest::addRow("spaced national") << NumberRow { u"555 0111 22"_s, u"555011122"_s };
    QTest::addRow("international with brackets") << NumberRow { u" +1 (555) 010-0111 "_s, u"+15550100111"_s };
    QTest::addRow("00 becomes +") << NumberRow { u"0044 20 7946 0018"_s, u"+442079460018"_s };
    QTest::addRow("dots") << NumberRow { u"555.010.0111"_s, u"5550100111"_s };
    QTest::addRow("fifteen digits") << NumberRow { u"+123456789012345"_s, u"+123456789012345"_s };
    QTest::addRow("sixteen digits") << NumberRow { u"+1234567890123456"_s, {} };
    QTest::addRow("six digits") << NumberRow { u"555 011"_s, {} };
    QTest::addRow("letters") << NumberRow { u"555-CALL-NOW"_s, {} };
    QTest::addRow("plus inside") << NumberRow { u"555+0111222"_s, {} };
    QTest::addRow("empty") << NumberRow { u"  "_s, {} };
}

void TestCallRules::numbers()
{
    QFETCH(NumberRow, row);
    QCOMPARE(CallBookRules::dialledNumber(row.typed), row.dialled);
}

void TestCallRules::filters_data()
{
    QTest::addColumn<FilterRow>("row");
    QTest::addRow("all shows out") << FilterRow { call(u"out"_s, u"answered"_s), u"all"_s, {}, true };
    QTest::addRow("in hides out") << FilterRow { call(u"out"_s, u"answered"_s), u"in"_s, {}, false };
    QTest::addRow("out shows out") << FilterRow { call(u"out"_s, u"no-answer"_s), u"out"_s, {}, true };
    QTest::addRow("missed inbound") << FilterRow { call(u"in"_s, u"missed"_s), u"missed"_s, {}, true };
    QTest::addRow("voicemail counts as missed") << FilterRow { call(u"in"_s, u"voicemail"_s), u"missed"_s, {}, true };
    QTest::addRow("unanswered outbound is not missed")
        << FilterRow { call(u"out"_s, u"no-answer"_s), u"missed"_s, {}, false };
    QTest::addRow("answered is not missed") << FilterRow { call(u"in"_s, u"answered"_s), u"missed"_s, {}, false };
    QTest::addRow("search by customer, any case")
        << FilterRow { call(u"in"_s, u"answered"_s), u"all"_s, u"brightWATER"_s, true };
    QTest::addRow("search by unspaced number")
        << FilterRow { call(u"in"_s, u"answered"_s), u"all"_s, u"5550111"_s, true };
    QTest::addRow("every word must match")
        << FilterRow { call(u"in"_s, u"answered"_s), u"all"_s, u"tomas quote"_s, true };
    QTest::addRow("one word missing") << FilterRow { call(u"in"_s, u"answered"_s), u"all"_s, u"tomas invoice"_s,
        false };
    QTest::addRow("search and filter both apply")
        << FilterRow { call(u"out"_s, u"answered"_s), u"in"_s, u"tomas"_s, false };
}

void TestCallRules::filters()
{
    QFETCH(FilterRow, row);
    QCOMPARE(
        CallBookRules::inFilter(row.call, row.filter) && CallBookRules::matchesSearch(row.call, row.search), row.shown);
}

void TestCallRules::leadSearch_data()
{
    QTest::addColumn<LeadRow>("row");
    QTest::addRow("nothing typed") << LeadRow { u"  "_s, true };
    QTest::addRow("name, any case") << LeadRow { u"HARBOR"_s, true };
    QTest::addRow("interest and owner together") << LeadRow { u"website priya"_s, true };
    QTest::addRow("source") << LeadRow { u"referral"_s, true };
    QTest::addRow("number without its spaces") << LeadRow { u"5550142"_s, true };
    QTest::addRow("one word missing") << LeadRow { u"harbor bakery"_s, false };
}

void TestCallRules::leadSearch()
{
    QFETCH(LeadRow, row);
    const TarnSalesLead lead { .id = u"c-harbor"_s,
        .name = u"Harbor Physio"_s,
        .phone = u"+1 555 0142"_s,
        .status = u"new"_s,
        .source = u"Referral"_s,
        .interest = u"A new website with booking"_s,
        .owner_name = u"Priya Nair"_s };
    QCOMPARE(CallBookRules::leadMatchesSearch(lead, row.search), row.shown);
}

void TestCallRules::durations()
{
    const QList<QPair<qint64, QString>> rows { { 0, u"0:00"_s }, { 42, u"0:42"_s }, { 725, u"12:05"_s },
        { 3729, u"1:02:09"_s }, { -5, u"0:00"_s } };
    for (const auto &[seconds, label] : rows)
        QCOMPARE(CallBookRules::durationLabel(seconds), label);
}

void TestCallRules::startedLabels_data()
{
    QTest::addColumn<LabelRow>("row");
    // "now" is Wednesday 2026-03-11 15:00 UTC.
    QTest::addRow("today") << LabelRow { u"2026-03-11T09:05:00.000Z"_s, u"09:05"_s };
    QTest::addRow("just after midnight") << LabelRow { u"2026-03-11T00:01:00.000Z"_s, u"00:01"_s };
    QTest::addRow("yesterday") << LabelRow { u"2026-03-10T23:59:00.000Z"_s, u"Yesterday 23:59"_s };
    QTest::addRow("this week") << LabelRow { u"2026-03-06T14:05:00.000Z"_s, u"Fri 14:05"_s };
    QTest::addRow("a week ago") << LabelRow { u"2026-03-04T14:05:00.000Z"_s, u"4 Mar"_s };
    QTest::addRow("unreadable") << LabelRow { u"soon"_s, QString() };
}

void TestCallRules::startedLabels()
{
    QFETCH(LabelRow, row);
    const QDateTime now(QDate(2026, 3, 11), QTime(15, 0), QTimeZone::utc());
    QCOMPARE(CallBookRules::startedLabel(row.startedAt, now), row.expected);
}

QTEST_GUILESS_MAIN(TestCallRules)
#include "tst_callrules.moc"
