#pragma once

#include <QDateTime>
#include <QString>
#include <QStringView>

#include <optional>

// Fixed-format dates of the books and payments: wire days "YYYY-MM-DD" and the
// service's ISO 8601 "checked at" stamps.
namespace TarnLedgerDates {

// The stale threshold: a check older than a day and a half needs redoing.
inline constexpr qint64 staleSeconds = 129'600;

// A calendar day written exactly "YYYY-MM-DD" (ASCII digits, year 0001 to
// 9999, a real day of the proleptic Gregorian calendar): the same days that
// QDate::fromString(text, u"yyyy-MM-dd") reads and formats back unchanged.
[[nodiscard]] bool isDay(QStringView text);

// Seconds since 1970-01-01T00:00:00Z plus nanoseconds, exact to the digits given.
struct Instant {
    qint64 seconds = 0;
    qint32 nanoseconds = 0;
    friend bool operator==(const Instant &, const Instant &) = default;
};

// An ISO 8601 date-time in extended form with a time zone:
// "YYYY-MM-DDThh:mm:ss", optional fractional seconds ("." or "," and 1 to 9
// digits), then "Z" or an offset "+hh:mm", "+hhmm" or "+hh". "T" and "Z" may
// be lower case. A stamp without a zone is refused rather than guessed, since
// the local zone of this machine says nothing about when the server checked.
[[nodiscard]] std::optional<Instant> parseDateTime(QStringView text);

// True when checkedAt is a date-time (as above) more than staleSeconds away
// from now, in either direction: a stamp far in the future means a clock is
// wrong, and asking for a new check is the safe answer. Exactly staleSeconds
// apart is not stale.
[[nodiscard]] bool isStale(const std::optional<QString> &checkedAt, const QDateTime &now);

} // namespace TarnLedgerDates
