#include "inbox/TarnInboxActionResult.h"
#include "inbox/TarnInboxThread.h"
#include "inbox/TarnSnooze.h"
#include "service/TarnJSONObject.h"

#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace {

struct SnoozeRow {
    QString now; // "yyyy-MM-dd HH:mm", in UTC
    Qt::DayOfWeek firstDay;
    QStringList expected; // "label yyyy-MM-dd HH:mm"
};

QDateTime at(const QString &text)
{
    return QDateTime(
        QDate::fromString(text.left(10), Qt::ISODate), QTime::fromString(text.mid(11), u"HH:mm"_s), QTimeZone::utc());
}

QStringList shown(const QList<TarnSnoozeChoice> &choices)
{
    QStringList out;
    for (const TarnSnoozeChoice &choice : choices)
        out.append(choice.label + u' ' + choice.date.toString(u"yyyy-MM-dd HH:mm"_s));
    return out;
}

// Whether decoding throws, for the records' rows.
template <typename T> bool decodes(const QByteArray &json)
{
    try {
        (void)TarnJSON::decode<T>(json);
        return true;
    } catch (const TarnDecodeError &) {
        return false;
    }
}

} // namespace

Q_DECLARE_METATYPE(SnoozeRow)

// The snooze presets across the hours, weekdays and calendar ends where
// they change, and the inbox records' acceptance rules.
class TestInboxRules : public QObject {
    Q_OBJECT

private slots:
    void snoozeChoices_data();
    void snoozeChoices();
    void records_data();
    void records();
};

void TestInboxRules::snoozeChoices_data()
{
    QTest::addColumn<SnoozeRow>("row");
    // 2026-11-25 is a Wednesday.
    QTest::addRow("20:59 still offers later today") << SnoozeRow { u"2026-11-25 20:59"_s, Qt::Monday,
        { u"Later today 2026-11-25 23:59"_s, u"Tomorrow morning 2026-11-26 08:00"_s,
            u"Next week 2026-11-30 08:00"_s } };
    QTest::addRow("21:00 does not") << SnoozeRow { u"2026-11-25 21:00"_s, Qt::Monday,
        { u"Tomorrow morning 2026-11-26 08:00"_s, u"Next week 2026-11-30 08:00"_s } };
    QTest::addRow("Sunday: next week is tomorrow") << SnoozeRow { u"2026-11-29 10:00"_s, Qt::Monday,
        { u"Later today 2026-11-29 13:00"_s, u"Tomorrow morning 2026-11-30 08:00"_s,
            u"Next week 2026-11-30 08:00"_s } };
    QTest::addRow("Monday: next week is seven days on, across the month end") << SnoozeRow {
        u"2026-11-30 10:00"_s, Qt::Monday,
        { u"Later today 2026-11-30 13:00"_s, u"Tomorrow morning 2026-12-01 08:00"_s, u"Next week 2026-12-07 08:00"_s }
    };
    QTest::addRow("year end") << SnoozeRow { u"2026-12-31 22:30"_s, Qt::Monday,
        { u"Tomorrow morning 2027-01-01 08:00"_s, u"Next week 2027-01-04 08:00"_s } };
    QTest::addRow("leap day") << SnoozeRow { u"2028-02-28 09:00"_s, Qt::Monday,
        { u"Later today 2028-02-28 12:00"_s, u"Tomorrow morning 2028-02-29 08:00"_s,
            u"Next week 2028-03-06 08:00"_s } };
    QTest::addRow("weeks starting on Sunday, on a Sunday") << SnoozeRow { u"2026-11-29 21:00"_s, Qt::Sunday,
        { u"Tomorrow morning 2026-11-30 08:00"_s, u"Next week 2026-12-06 08:00"_s } };
    QTest::addRow("weeks starting on Sunday, on a Saturday") << SnoozeRow { u"2026-11-28 12:00"_s, Qt::Sunday,
        { u"Later today 2026-11-28 15:00"_s, u"Tomorrow morning 2026-11-29 08:00"_s,
            u"Next week 2026-11-29 08:00"_s } };
}

void TestInboxRules::snoozeChoices()
{
    QFETCH(SnoozeRow, row);
    const QList<TarnSnoozeChoice> choices = TarnSnooze::choices(at(row.now), row.firstDay);
    QCOMPARE(shown(choices), row.expected);
    for (const TarnSnoozeChoice &choice : choices)
        QCOMPARE(choice.date.timeZone(), QTimeZone::utc());
}

void TestInboxRules::records_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("isThread"); // else an action result
    QTest::addColumn<bool>("accepted");

    const QByteArray entry = R"({"id":"e1","direction":"inbound","body":"Hi","created_at":"2026-11-25T10:00:00Z",)"
                             R"("mentions":[],"attachments":[{"id":"a","name":"x.jpg","status":"ready"}],)"
                             R"("can_discard":false,"status":null})";
    const QByteArray thread = R"({"id":"t1","kind":"text","customer_address":"+15550100",)"
                              R"("business_address":"+15550199","client_name":"","can_edit":true,)"
                              R"("ai_configured":false,"assignees":[],"mention_targets":[],)"
                              R"("entries":[)"
        + entry + "]";
    QTest::addRow("an action result from {}") << "{}"_ba << false << true;
    QTest::addRow("an action result with fields") << R"({"ok":true})"_ba << false << true;
    QTest::addRow("an action result that is not an object") << "[]"_ba << false << false;
    QTest::addRow("a thread that may not send") << thread + R"(,"can_send":false})" << true << true;
    QTest::addRow("a thread without can_send") << thread + "}" << true << false;
    QTest::addRow("an entry with a mention that is not text")
        << QByteArray(thread + R"(,"can_send":true})").replace(R"("mentions":[])", R"("mentions":[7])") << true
        << false;
}

void TestInboxRules::records()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, isThread);
    QFETCH(bool, accepted);
    QCOMPARE(isThread ? decodes<TarnInboxThread>(json) : decodes<TarnInboxActionResult>(json), accepted);
}

QTEST_GUILESS_MAIN(TestInboxRules)
#include "tst_inboxrules.moc"
