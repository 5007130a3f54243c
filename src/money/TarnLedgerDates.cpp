#include "money/TarnLedgerDates.h"

#include <QDate>

using namespace Qt::StringLiterals;

namespace {

bool isAsciiDigit(QChar c)
{
    return c.unicode() >= u'0' && c.unicode() <= u'9';
}

// Reads `count` ASCII digits at `at`; -1 when any of them is not a digit.
int digits(QStringView text, qsizetype at, int count)
{
    if (at + count > text.size())
        return -1;
    int value = 0;
    for (int i = 0; i < count; ++i) {
        const QChar c = text[at + i];
        if (!isAsciiDigit(c))
            return -1;
        value = value * 10 + (c.unicode() - u'0');
    }
    return value;
}

std::optional<QDate> day(QStringView text)
{
    if (text.size() != 10 || text[4] != u'-' || text[7] != u'-')
        return std::nullopt;
    const int year = digits(text, 0, 4);
    const int month = digits(text, 5, 2);
    const int dayOfMonth = digits(text, 8, 2);
    // Year 0000 has no "yyyy" spelling in QDate, so it cannot round-trip.
    if (year < 1 || month < 0 || dayOfMonth < 0 || !QDate::isValid(year, month, dayOfMonth))
        return std::nullopt;
    return QDate(year, month, dayOfMonth);
}

} // namespace

bool TarnLedgerDates::isDay(QStringView text)
{
    return day(text).has_value();
}

std::optional<TarnLedgerDates::Instant> TarnLedgerDates::parseDateTime(QStringView text)
{
    if (text.size() < 20)
        return std::nullopt;
    const std::optional<QDate> date = day(text.first(10));
    if (!date || (text[10] != u'T' && text[10] != u't'))
        return std::nullopt;
    const int hour = digits(text, 11, 2);
    const int minute = digits(text, 14, 2);
    const int second = digits(text, 17, 2);
    if (text[13] != u':' || text[16] != u':' || hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0
        || second > 59)
        return std::nullopt;

    qsizetype at = 19;
    qint32 nanoseconds = 0;
    if (at < text.size() && (text[at] == u'.' || text[at] == u',')) {
        ++at;
        int count = 0;
        while (at < text.size() && isAsciiDigit(text[at])) {
            if (count == 9)
                return std::nullopt;
            nanoseconds = nanoseconds * 10 + (text[at].unicode() - u'0');
            ++count;
            ++at;
        }
        if (count == 0)
            return std::nullopt;
        for (int i = count; i < 9; ++i)
            nanoseconds *= 10;
    }

    if (at >= text.size())
        return std::nullopt;
    qint64 offsetSeconds = 0;
    const QChar zone = text[at];
    if (zone == u'Z' || zone == u'z') {
        ++at;
    } else if (zone == u'+' || zone == u'-') {
        const int offsetHours = digits(text, at + 1, 2);
        if (offsetHours < 0 || offsetHours > 23)
            return std::nullopt;
        at += 3;
        int offsetMinutes = 0;
        if (at < text.size()) {
            if (text[at] == u':')
                ++at;
            offsetMinutes = digits(text, at, 2);
            if (offsetMinutes < 0 || offsetMinutes > 59)
                return std::nullopt;
            at += 2;
        }
        offsetSeconds = (offsetHours * 60 + offsetMinutes) * 60;
        if (zone == u'-')
            offsetSeconds = -offsetSeconds;
    } else {
        return std::nullopt;
    }
    if (at != text.size())
        return std::nullopt;

    const qint64 days = date->toJulianDay() - QDate(1970, 1, 1).toJulianDay();
    const qint64 seconds = days * 86'400 + hour * 3'600 + minute * 60 + second - offsetSeconds;
    return Instant { seconds, nanoseconds };
}

bool TarnLedgerDates::isStale(const std::optional<QString> &checkedAt, const QDateTime &now)
{
    if (!checkedAt || !now.isValid())
        return false;
    const std::optional<Instant> checked = parseDateTime(*checkedAt);
    if (!checked)
        return false;
    const qint64 nowMs = now.toMSecsSinceEpoch();
    // Whole seconds and nanoseconds apart, kept separate so that no digit of
    // the stamp's fraction is rounded away at the threshold.
    qint64 seconds = (nowMs / 1000 - (nowMs % 1000 < 0 ? 1 : 0)) - checked->seconds;
    qint64 nanoseconds = ((nowMs % 1000 + 1000) % 1000) * 1'000'000 - checked->nanoseconds;
    if (nanoseconds < 0) {
        nanoseconds += 1'000'000'000;
        --seconds;
    }
    if (seconds < 0) {
        // |d| for d = seconds + ns/1e9 with 0 <= ns < 1e9.
        if (nanoseconds > 0) {
            seconds = -seconds - 1;
            nanoseconds = 1'000'000'000 - nanoseconds;
        } else {
            seconds = -seconds;
        }
    }
    return seconds > staleSeconds || (seconds == staleSeconds && nanoseconds > 0);
}
