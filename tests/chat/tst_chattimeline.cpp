#include "chat/ChatRowLayout.h"
#include "chat/MessagesTime.h"

#include <QTest>

#include <ctime>

using namespace Qt::StringLiterals;

namespace {

TarnMessage message(const char *user, const char *createdAt, qint64 seq, bool deleted = false)
{
    TarnMessage m;
    m.id = u"m%1"_s.arg(seq);
    m.user_id = QString::fromLatin1(user);
    m.created_at = QString::fromLatin1(createdAt);
    m.seq = seq;
    if (deleted)
        m.deleted_at = m.created_at;
    return m;
}

qint64 utc(int day, int hour, int minute, int second = 0, int ms = 0)
{
    return QDateTime(QDate(2024, 3, day), QTime(hour, minute, second, ms), Qt::UTC).toMSecsSinceEpoch();
}

QDateTime at(const char *iso)
{
    return QDateTime::fromString(QString::fromLatin1(iso), Qt::ISODate);
}

} // namespace

// The timeline's rules in a zone an hour east of UTC, so that local days
// and UTC days differ.
class TestChatTimeline : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void parsing_data();
    void parsing();
    void rows_data();
    void rows();
    void dayLabels_data();
    void dayLabels();
    void timeLabels_data();
    void timeLabels();
};

void TestChatTimeline::initTestCase()
{
    qputenv("TZ", "Europe/Berlin");
    tzset();
}

void TestChatTimeline::parsing_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<std::optional<qint64>>("msecs");
    const std::optional<qint64> none;
    QTest::addRow("space separated is UTC") << u"2024-03-01 10:00:00"_s << std::optional(utc(1, 10, 0));
    QTest::addRow("fractional seconds") << u"2024-03-01T10:00:00.123Z"_s << std::optional(utc(1, 10, 0, 0, 123));
    QTest::addRow("whole seconds") << u"2024-03-01T10:00:00Z"_s << std::optional(utc(1, 10, 0));
    QTest::addRow("an offset") << u"2024-03-01T12:30:00+02:30"_s << std::optional(utc(1, 10, 0));
    QTest::addRow("microseconds, lower case")
        << u"2024-03-01t10:00:00.500999z"_s << std::optional(utc(1, 10, 0, 0, 500));
    QTest::addRow("leap day") << u"2024-02-29 00:00:00"_s << std::optional(utc(1, 0, 0) - 86'400'000);
    QTest::addRow("no zone after a T") << u"2024-03-01T10:00:00"_s << none;
    QTest::addRow("no such day") << u"2023-02-29 10:00:00"_s << none;
    QTest::addRow("no seconds") << u"2024-03-01 10:00"_s << none;
    QTest::addRow("zone after a space") << u"2024-03-01 10:00:00Z"_s << none;
    QTest::addRow("empty fraction") << u"2024-03-01T10:00:00.Z"_s << none;
    QTest::addRow("words") << u"yesterday at ten"_s << none;
}

void TestChatTimeline::parsing()
{
    QFETCH(QString, text);
    QFETCH(std::optional<qint64>, msecs);
    QCOMPARE(MessagesTime::msecs(text), msecs);
    const std::optional<QDateTime> date = MessagesTime::date(text);
    QCOMPARE(date.has_value(), msecs.has_value());
    if (date)
        QCOMPARE(date->toMSecsSinceEpoch(), *msecs);
}

void TestChatTimeline::rows_data()
{
    QTest::addColumn<QList<TarnMessage>>("messages");
    QTest::addColumn<qsizetype>("index");
    QTest::addColumn<std::optional<qint64>>("newFrom");
    QTest::addColumn<ChatRowLayout>("layout");

    struct Row {
        const char *label;
        QList<TarnMessage> messages;
        std::optional<qint64> newFrom;
        ChatRowLayout layout;
    };
    const auto pair
        = [](const char *first, const char *second, const char *secondUser = "a", bool firstDeleted = false) {
              return QList<TarnMessage> { message("a", first, 1, firstDeleted), message(secondUser, second, 2) };
          };
    const std::optional<qint64> none;
    const Row rows[] {
        { "299 s later joins", pair("2024-03-01T10:00:00Z", "2024-03-01T10:04:59Z"), none, { false, false, false } },
        { "300 s later breaks", pair("2024-03-01T10:00:00Z", "2024-03-01T10:05:00Z"), none, { false, false, true } },
        { "another author", pair("2024-03-01T10:00:00Z", "2024-03-01T10:00:10Z", "b"), none, { false, false, true } },
        { "after a deleted message", pair("2024-03-01T10:00:00Z", "2024-03-01T10:00:10Z", "a", true), none,
            { false, false, true } },
        { "across local midnight", pair("2024-03-01T22:58:00Z", "2024-03-01T23:01:00Z"), none, { true, false, true } },
        { "UTC midnight is not local midnight", pair("2024-03-01T23:58:00Z", "2024-03-02T00:01:00Z"), none,
            { false, false, false } },
        { "first unread inside a group", pair("2024-03-01T10:00:00Z", "2024-03-01T10:01:00Z"), 2,
            { false, true, true } },
        { "unread elsewhere", pair("2024-03-01T10:00:00Z", "2024-03-01T10:01:00Z"), 1, { false, false, false } },
        { "unreadable times, same author", pair("soon", "later"), none, { false, false, false } },
        { "unreadable times, another author", pair("soon", "later", "b"), none, { false, false, true } },
        { "unreadable time, first unread", pair("2024-03-01T10:00:00Z", "later"), 2, { false, true, true } },
    };
    for (const Row &row : rows)
        QTest::addRow("%s", row.label) << row.messages << qsizetype(1) << row.newFrom << row.layout;
    // Berlin moves to summer time at 01:00 UTC: 22:01 UTC is then already tomorrow.
    const QList<TarnMessage> summer { message("a", "2024-03-31T00:30:00Z", 1), message("a", "2024-03-31T21:58:00Z", 2),
        message("a", "2024-03-31T22:01:00Z", 3) };
    QTest::addRow("the offset after a clock change")
        << summer << qsizetype(2) << none << ChatRowLayout { true, false, true };
    const QList<TarnMessage> one { message("a", "soon", 1) };
    QTest::addRow("the first row") << one << qsizetype(0) << none << ChatRowLayout { true, false, true };
    QTest::addRow("the first row, unread")
        << one << qsizetype(0) << std::optional<qint64>(1) << ChatRowLayout { true, true, true };
}

void TestChatTimeline::rows()
{
    QFETCH(QList<TarnMessage>, messages);
    QFETCH(qsizetype, index);
    QFETCH(std::optional<qint64>, newFrom);
    QFETCH(ChatRowLayout, layout);
    const ChatRowLayout single = ChatRowLayout::compute(messages, index, newFrom);
    QCOMPARE(single.day, layout.day);
    QCOMPARE(single.new_, layout.new_);
    QCOMPARE(single.header, layout.header);
    QCOMPARE(ChatRowLayout::computeAll(messages, newFrom).at(index), layout);
}

void TestChatTimeline::dayLabels_data()
{
    QTest::addColumn<QDateTime>("date");
    QTest::addColumn<QString>("label");
    QTest::addRow("today") << at("2024-03-05T06:00:00Z") << u"Today"_s;
    QTest::addRow("today by the local calendar") << at("2024-03-04T23:30:00Z") << u"Today"_s;
    QTest::addRow("yesterday") << at("2024-03-04T12:00:00Z") << u"Yesterday"_s;
    QTest::addRow("this year") << at("2024-03-01T10:00:00Z") << u"Friday, March 1"_s;
    QTest::addRow("another year") << at("2023-12-29T10:00:00Z") << u"Friday, December 29, 2023"_s;
}

void TestChatTimeline::dayLabels()
{
    QFETCH(QDateTime, date);
    QFETCH(QString, label);
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    QCOMPARE(MessagesTime::dayLabel(date, at("2024-03-05T12:00:00Z"), english), label);
}

void TestChatTimeline::timeLabels_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("label");
    QTest::addRow("en_US") << QLocale(QLocale::English, QLocale::UnitedStates) << u"10:05 AM"_s;
    QTest::addRow("de_DE") << QLocale(QLocale::German, QLocale::Germany) << u"10:05"_s;
    // Its short style has seconds; a row never shows them.
    QTest::addRow("C") << QLocale::c() << u"10:05"_s;
}

void TestChatTimeline::timeLabels()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, label);
    // Asked twice, so a format kept from another locale would show.
    QCOMPARE(MessagesTime::timeLabel(at("2024-03-01T09:05:07Z"), locale), label);
    QCOMPARE(MessagesTime::timeLabel(at("2024-03-01T09:05:07Z"), QLocale::c()), u"10:05"_s);
    QCOMPARE(MessagesTime::timeLabel(at("2024-03-01T09:05:07Z"), locale), label);
}

QTEST_GUILESS_MAIN(TestChatTimeline)
#include "tst_chattimeline.moc"
