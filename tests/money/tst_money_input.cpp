#include "money/TarnLedgerDates.h"
#include "money/TarnMoneyInput.h"

#include <QDate>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

struct CentsRow {
    const char *name;
    QString input;
    bool allowZero;
    std::optional<qint64> cents;
};

struct StaleRow {
    const char *name;
    std::optional<QString> checkedAt;
    qint64 nowMs; // after 2024-01-01T00:00:00Z
    bool stale;
};

const std::optional<qint64> refused;

} // namespace

class TestMoneyInput : public QObject {
    Q_OBJECT

private slots:
    void cents_data()
    {
        QTest::addColumn<CentsRow>("row");
        const CentsRow rows[] = {
            { "trailing point", u"12."_s, false, 1200 },
            { "leading point", u".5"_s, false, 50 },
            { "ten whole digits", u"9999999999.99"_s, false, 999999999999 },
            { "eleven digits counting leading zeros", u"00000000001"_s, false, refused },
            { "three decimals", u"12.345"_s, false, refused },
            { "minus sign", u"-5"_s, false, refused },
            { "zero refused", u"0.00"_s, false, refused },
            { "zero allowed", u"0"_s, true, 0 },
            { "point alone", u"."_s, true, refused },
            { "dollar sign and grouping", u"$1,234.56"_s, false, 123456 },
            { "no-break space grouping", u"1\u00A0234.50"_s, false, 123450 },
            { "decimal comma refused", u"12,50"_s, false, refused },
            { "comma before four digits refused", u"1,2345"_s, false, refused },
            { "Arabic-Indic digits", u"\u0661\u0662"_s, false, refused },
        };
        for (const CentsRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void cents()
    {
        QFETCH(CentsRow, row);
        QCOMPARE(TarnMoneyInput::cents(row.input, row.allowZero), row.cents);
    }

    // What the form shows reads back as the same amount; the most negative
    // value prints through its unsigned magnitude.
    void text()
    {
        QCOMPARE(TarnMoneyInput::text(12345), u"123.45"_s);
        QCOMPARE(TarnMoneyInput::cents(u"123.45"_s, true), std::optional<qint64>(12345));
        QCOMPARE(TarnMoneyInput::text(-5), u"-0.05"_s);
        QCOMPARE(TarnMoneyInput::text(std::numeric_limits<qint64>::min()), u"-92233720368547758.08"_s);
    }

    // The sign goes before the dollar sign; commas group whole dollars only.
    void dollars_data()
    {
        QTest::addColumn<qint64>("cents");
        QTest::addColumn<QString>("shown");
        QTest::addRow("cents only, negative") << qint64(-5) << u"-$0.05"_s;
        QTest::addRow("three digits, no comma") << qint64(99999) << u"$999.99"_s;
        QTest::addRow("first comma") << qint64(125000) << u"$1,250.00"_s;
        QTest::addRow("six digits") << qint64(33800000) << u"$338,000.00"_s;
        QTest::addRow("negative millions") << qint64(-123456789) << u"-$1,234,567.89"_s;
        QTest::addRow("most negative") << std::numeric_limits<qint64>::min() << u"-$92,233,720,368,547,758.08"_s;
    }
    void dollars()
    {
        QFETCH(qint64, cents);
        QFETCH(QString, shown);
        QCOMPARE(TarnMoneyInput::dollars(cents), shown);
    }

    // isDay reads the digits itself for speed; it must accept exactly the days
    // that survive QDate's parse-and-format round trip, and no other spelling.
    void isDayAgreesWithQDate()
    {
        for (const int year : { 0, 1, 4, 100, 400, 1582, 1600, 1900, 1970, 2000, 2023, 2024, 2100, 9999 }) {
            for (int month = 0; month <= 13; ++month) {
                for (int day = 0; day <= 32; ++day) {
                    const QString text = QString::asprintf("%04d-%02d-%02d", year, month, day);
                    const QDate parsed = QDate::fromString(text, u"yyyy-MM-dd"_s);
                    const bool roundTrip = parsed.isValid() && parsed.toString(u"yyyy-MM-dd"_s) == text;
                    QVERIFY2(TarnLedgerDates::isDay(text) == roundTrip, qPrintable(text));
                }
            }
        }
        for (const QString &text : { u"2024/03/05"_s, u"2024-03-05T00:00:00Z"_s, u"\u0662\u0660\u0662\u0664-03-05"_s })
            QVERIFY2(!TarnLedgerDates::isDay(text), qPrintable(text));
    }

    void isStale_data()
    {
        QTest::addColumn<StaleRow>("row");
        const qint64 limit = TarnLedgerDates::staleSeconds * 1000;
        const QString base = u"2024-01-01T00:00:00Z"_s;
        const StaleRow rows[] = {
            { "never checked", std::nullopt, limit * 10, false },
            { "no zone", u"2024-01-01T00:00:00"_s, limit * 10, false },
            { "space instead of T", u"2024-01-01 00:00:00Z"_s, limit * 10, false },
            { "hour 24", u"2024-01-01T24:00:00Z"_s, limit * 10, false },
            { "empty fraction", u"2024-01-01T00:00:00.Z"_s, limit * 10, false },
            { "ten fraction digits", u"2024-01-01T00:00:00.0000000001Z"_s, limit * 10, false },
            { "offset of 24 hours", u"2024-01-01T00:00:00+24:00"_s, limit * 10, false },
            { "trailing text", u"2024-01-01T00:00:00Zx"_s, limit * 10, false },
            { "exactly 36 hours", base, limit, false },
            { "36 hours and a millisecond", base, limit + 1, true },
            { "lower-case t and z", u"2024-01-01t00:00:00z"_s, limit + 1000, true },
            { "fraction keeps it fresh", u"2024-01-01T00:00:00.0000001Z"_s, limit, false },
            { "half second stamp past limit", u"2024-01-01T00:00:00,5Z"_s, limit + 501, true },
            { "offset east at limit", u"2024-01-01T12:00:00+12:00"_s, limit, false },
            { "offset east past limit", u"2024-01-01T12:00:00+1200"_s, limit + 1000, true },
            { "offset in hours only", u"2024-01-01T05:00:00+05"_s, limit + 1000, true },
            { "offset west", u"2023-12-31T20:30:00-03:30"_s, limit, false },
            { "far in the future", u"2024-01-03T12:00:01Z"_s, 0, true },
            { "just in the future", u"2024-01-02T12:00:00Z"_s, 0, false },
        };
        for (const StaleRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void isStale()
    {
        QFETCH(StaleRow, row);
        const QDateTime now = QDateTime(QDate(2024, 1, 1), QTime(0, 0), Qt::UTC).addMSecs(row.nowMs);
        QCOMPARE(TarnLedgerDates::isStale(row.checkedAt, now), row.stale);
        // The same moment seen from another zone changes nothing.
        QCOMPARE(TarnLedgerDates::isStale(row.checkedAt, now.toOffsetFromUtc(-7 * 3600)), row.stale);
    }
};

QTEST_APPLESS_MAIN(TestMoneyInput)
#include "tst_money_input.moc"
