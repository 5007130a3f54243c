#pragma once

#include "screens/people/TarnTimeEntry.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QTimeZone>

#include <array>

// The time clock's arithmetic, on QtCore alone so the workspace checks an
// edit by the same rules the screen does.
namespace TimeClockRules {

// An entry longer than this is a forgotten clock-out, not a shift.
constexpr qint64 longestEntrySeconds = 16 * 3600;
constexpr qsizetype reasonLimit = 500;

// The hours of one week, Monday first, in the zone they were asked for.
struct WeekHours {
    std::array<qint64, 7> daySeconds {};
    qint64 totalSeconds = 0;
};

// The Monday of the week holding `day`.
[[nodiscard]] QDate weekStart(QDate day);

// What each day of the week beginning `monday` holds of `entries`: an entry
// across midnight counts on both days, and only its part inside the week
// counts at all. An entry still open counts up to `now`.
[[nodiscard]] WeekHours weekHours(
    const QList<TarnTimeEntry> &entries, QDate monday, const QTimeZone &zone, const QDateTime &now);

// "7:05" for seven hours and five minutes; seconds are dropped.
[[nodiscard]] QString hoursText(qint64 seconds);

// Why a correction cannot be saved, or an empty text when it can; an
// invalid `clockOut` leaves the entry open.
[[nodiscard]] QString editProblem(
    const QDateTime &clockIn, const QDateTime &clockOut, const QString &reason, const QDateTime &now);

} // namespace TimeClockRules
