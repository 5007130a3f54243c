#include "money/TarnLedgerDates.h"
#include "money/TarnMoneyInput.h"

#include <QDate>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

class TestMoneyInput : public QObject
{
    Q_OBJECT

private slots:
    void cents_data();
    void cents();
    void text_data();
    void text();
    void isDay_data();
    void isDay();
    void isDayAgreesWithQDate();
    void isStale_data();
    void isStale();
};

void TestMoneyInput::cents_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<bool>("allowZero");
    QTest::addColumn<qint64>("cents"); // -1: refused

    struct Case { const char *name; QString input; bool allowZero; qint64 cents; };
    const Case cases[] = {
        {"whole", u"12"_s, false, 1200},
        {"trailing point", u"12."_s, false, 1200},
        {"leading point", u".5"_s, false, 50},
        {"two decimals", u"0.07"_s, false, 7},
        {"ten whole digits", u"9999999999.99"_s, false, 999999999999},
        {"ten digits counting leading zeros", u"0000000001"_s, false, 100},
        {"eleven whole digits", u"12345678901"_s, false, -1},
        {"eleven digits counting leading zeros", u"00000000001"_s, false, -1},
        {"three decimals", u"12.345"_s, false, -1},
        {"minus sign", u"-5"_s, false, -1},
        {"plus sign", u"+5"_s, false, -1},
        {"zero refused", u"0"_s, false, -1},
        {"zero allowed", u"0"_s, true, 0},
        {"zero cents allowed", u".00"_s, true, 0},
        {"zero cents refused", u"0.00"_s, false, -1},
        {"empty", QString(), true, -1},
        {"point alone", u"."_s, true, -1},
        {"two points", u"1.2.3"_s, false, -1},
        {"exponent", u"1e3"_s, false, -1},
        {"dollar sign and grouping", u"$1,234.56"_s, false, 123456},
        {"several groups", u"1,234,567.89"_s, false, 123456789},
        {"surrounding spaces", u"  12.50 "_s, false, 1250},
        {"no-break space grouping", u"1\u00A0234.50"_s, false, 123450},
        {"narrow no-break space grouping", u"1\u202F234"_s, false, 123400},
        {"decimal comma refused", u"12,50"_s, false, -1},
        {"comma before four digits refused", u"1,2345"_s, false, -1},
        {"comma at the end refused", u"12,"_s, false, -1},
        {"currency word refused", u"USD 5"_s, false, -1},
        {"dollar before point", u"$.99"_s, false, 99},
        {"Arabic-Indic digits", u"\u0661\u0662"_s, false, -1},
        {"fullwidth digits", u"\uFF11\uFF12"_s, false, -1},
        {"parentheses", u"(5)"_s, false, -1},
    };
    for (const Case &c : cases)
        QTest::addRow("%s", c.name) << c.input << c.allowZero << c.cents;
}

void TestMoneyInput::cents()
{
    QFETCH(QString, input);
    QFETCH(bool, allowZero);
    QFETCH(qint64, cents);
    const std::optional<qint64> read = TarnMoneyInput::cents(input, allowZero);
    QCOMPARE(read.value_or(-1), cents);
}

void TestMoneyInput::text_data()
{
    QTest::addColumn<qint64>("cents");
    QTest::addColumn<QString>("text");

    QTest::addRow("dollars and cents") << qint64(12345) << u"123.45"_s;
    QTest::addRow("negative cents") << qint64(-5) << u"-0.05"_s;
    QTest::addRow("zero") << qint64(0) << u"0.00"_s;
    QTest::addRow("single cent digit") << qint64(7) << u"0.07"_s;
    QTest::addRow("round dollar") << qint64(100) << u"1.00"_s;
    QTest::addRow("no grouping") << qint64(123456789000) << u"1234567890.00"_s;
    QTest::addRow("negative thousands") << qint64(-100000) << u"-1000.00"_s;
    QTest::addRow("largest") << std::numeric_limits<qint64>::max() << u"92233720368547758.07"_s;
    QTest::addRow("most negative") << std::numeric_limits<qint64>::min() << u"-92233720368547758.08"_s;
}

void TestMoneyInput::text()
{
    QFETCH(qint64, cents);
    QFETCH(QString, text);
    QCOMPARE(TarnMoneyInput::text(cents), text);
    // What the form shows must read back as the same amount.
    if (cents >= 0 && cents <= 999'999'999'999)
        QCOMPARE(TarnMoneyInput::cents(TarnMoneyInput::text(cents), true), std::optional<qint64>(cents));
}

void TestMoneyInput::isDay_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("day");

    QTest::addRow("plain day") << u"2024-03-05"_s << true;
    QTest::addRow("leap day") << u"2024-02-29"_s << true;
    QTest::addRow("century leap day") << u"2000-02-29"_s << true;
    QTest::addRow("century non-leap") << u"1900-02-29"_s << false;
    QTest::addRow("first year") << u"0001-01-01"_s << true;
    QTest::addRow("year zero") << u"0000-01-01"_s << false;
    QTest::addRow("last day") << u"9999-12-31"_s << true;
    QTest::addRow("month zero") << u"2024-00-10"_s << false;
    QTest::addRow("day 31 of April") << u"2024-04-31"_s << false;
    QTest::addRow("unpadded") << u"2024-3-5"_s << false;
    QTest::addRow("slashes") << u"2024/03/05"_s << false;
    QTest::addRow("trailing space") << u"2024-03-05 "_s << false;
    QTest::addRow("with time") << u"2024-03-05T00:00:00Z"_s << false;
    QTest::addRow("signed year") << u"+024-03-05"_s << false;
    QTest::addRow("Arabic-Indic digits") << u"\u0662\u0660\u0662\u0664-03-05"_s << false;
    QTest::addRow("empty") << QString() << false;
}

void TestMoneyInput::isDay()
{
    QFETCH(QString, text);
    QFETCH(bool, day);
    QCOMPARE(TarnLedgerDates::isDay(text), day);
}

// isDay reads the digits itself for speed; it must accept exactly the days
// that survive QDate's parse-and-format round trip.
void TestMoneyInput::isDayAgreesWithQDate()
{
    for (const int year : {1, 4, 100, 400, 1582, 1600, 1900, 1970, 2000, 2023, 2024, 2100, 9999}) {
        for (int month = 0; month <= 13; ++month) {
            for (int day = 0; day <= 32; ++day) {
                const QString text = QString::asprintf("%04d-%02d-%02d", year, month, day);
                const QDate parsed = QDate::fromString(text, u"yyyy-MM-dd"_s);
                const bool roundTrip = parsed.isValid() && parsed.toString(u"yyyy-MM-dd"_s) == text;
                QVERIFY2(TarnLedgerDates::isDay(text) == roundTrip, qPrintable(text));
            }
        }
    }
}

void TestMoneyInput::isStale_data()
{
    QTest::addColumn<std::optional<QString>>("checkedAt");
    QTest::addColumn<qint64>("nowMs"); // milliseconds after 2024-01-01T00:00:00Z
    QTest::addColumn<bool>("stale");

    const qint64 limit = TarnLedgerDates::staleSeconds * 1000;
    const QString base = u"2024-01-01T00:00:00Z"_s;
    struct Case { const char *name; std::optional<QString> checkedAt; qint64 nowMs; bool stale; };
    const Case cases[] = {
        {"never checked", std::nullopt, limit * 10, false},
        {"not a date-time", u"yesterday"_s, limit * 10, false},
        {"a day only", u"2024-01-01"_s, limit * 10, false},
        {"no zone", u"2024-01-01T00:00:00"_s, limit * 10, false},
        {"space instead of T", u"2024-01-01 00:00:00Z"_s, limit * 10, false},
        {"hour 24", u"2024-01-01T24:00:00Z"_s, limit * 10, false},
        {"second 60", u"2024-01-01T00:00:60Z"_s, limit * 10, false},
        {"impossible day", u"2024-02-30T00:00:00Z"_s, limit * 10, false},
        {"empty fraction", u"2024-01-01T00:00:00.Z"_s, limit * 10, false},
        {"ten fraction digits", u"2024-01-01T00:00:00.0000000001Z"_s, limit * 10, false},
        {"offset of 24 hours", u"2024-01-01T00:00:00+24:00"_s, limit * 10, false},
        {"trailing text", u"2024-01-01T00:00:00Zx"_s, limit * 10, false},
        {"fresh", base, 1000, false},
        {"exactly 36 hours", base, limit, false},
        {"36 hours and a millisecond", base, limit + 1, true},
        {"36 hours and a second", base, limit + 1000, true},
        {"lower-case t and z", u"2024-01-01t00:00:00z"_s, limit + 1000, true},
        {"fraction keeps it fresh", u"2024-01-01T00:00:00.0000001Z"_s, limit, false},
        {"half second stamp at limit", u"2024-01-01T00:00:00.5Z"_s, limit + 500, false},
        {"half second stamp past limit", u"2024-01-01T00:00:00,5Z"_s, limit + 501, true},
        {"offset east at limit", u"2024-01-01T12:00:00+12:00"_s, limit, false},
        {"offset east past limit", u"2024-01-01T12:00:00+1200"_s, limit + 1000, true},
        {"offset in hours only", u"2024-01-01T05:00:00+05"_s, limit + 1000, true},
        {"offset west", u"2023-12-31T20:30:00-03:30"_s, limit, false},
        {"offset west past limit", u"2023-12-31T20:30:00-03:30"_s, limit + 1, true},
        {"far in the future", u"2024-01-03T12:00:01Z"_s, 0, true},
        {"just in the future", u"2024-01-02T12:00:00Z"_s, 0, false},
        {"across a year end", u"2023-12-30T12:00:00Z"_s, 0, false},
        {"across a year end, stale", u"2023-12-30T11:59:59Z"_s, 0, true},
    };
    for (const Case &c : cases)
        QTest::addRow("%s", c.name) << c.checkedAt << c.nowMs << c.stale;
}

void TestMoneyInput::isStale()
{
    QFETCH(std::optional<QString>, checkedAt);
    QFETCH(qint64, nowMs);
    QFETCH(bool, stale);
    const QDateTime start(QDate(2024, 1, 1), QTime(0, 0), Qt::UTC);
    QCOMPARE(TarnLedgerDates::isStale(checkedAt, start.addMSecs(nowMs)), stale);
    // The same moment seen from another zone changes nothing.
    QCOMPARE(TarnLedgerDates::isStale(checkedAt, start.addMSecs(nowMs).toOffsetFromUtc(-7 * 3600)), stale);
}

QTEST_APPLESS_MAIN(TestMoneyInput)
#include "tst_money_input.moc"
