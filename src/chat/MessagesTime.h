#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>
#include <QStringView>

#include <optional>

// The service's time strings and the timeline's day and time labels.
namespace MessagesTime {

// Milliseconds since 1970 of an internet date-time ("2024-03-01T10:00:00Z",
// with or without fractional seconds, "Z" or an offset) or of
// "yyyy-MM-dd HH:mm:ss" read as UTC; nothing for any other text. Parsed by
// hand: the timeline reads thousands of them per layout.
[[nodiscard]] std::optional<qint64> msecs(QStringView text);
[[nodiscard]] std::optional<QDateTime> date(const std::optional<QString> &text);

// This computer's offset from UTC at a moment.
[[nodiscard]] qint64 utcOffsetMs(qint64 msecs);
// Days since 1970 of a wall-clock time in milliseconds.
[[nodiscard]] qint64 dayOf(qint64 wallMsecs);

// "Today", "Yesterday", or the weekday, month and day, with the year only
// when it differs from `now`'s.
[[nodiscard]] QString dayLabel(const QDateTime &date, const QDateTime &now, const QLocale &locale = QLocale());
// A row header's time: the locale's short time, no date.
[[nodiscard]] QString timeLabel(const QDateTime &date, const QLocale &locale = QLocale());

} // namespace MessagesTime
