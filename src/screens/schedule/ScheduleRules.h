#pragma once

#include "screens/schedule/ScheduleDay.h"
#include "screens/schedule/ScheduleMonthDay.h"
#include "screens/schedule/TarnCalendarEvent.h"
#include "screens/schedule/TarnCalendarEventDraft.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QTimeZone>

#include <optional>
#include <utility>
#include <variant>

// The calendar's week and month: which instants they span in a time zone and
// where each event falls on their days, QtCore only.
namespace ScheduleRules {

// The Monday of the week `day` is in.
[[nodiscard]] QDate weekStart(const QDate &day);
// From the local midnight starting Monday to the one starting the next
// Monday: a week holding a clock change is 167 or 169 hours long.
[[nodiscard]] std::pair<QDateTime, QDateTime> weekRange(const QDate &monday, const QTimeZone &zone);
// "23 – 29 November 2026", "30 November – 6 December 2026",
// "28 December 2026 – 3 January 2027".
[[nodiscard]] QString weekLabel(const QDate &monday);

struct Placement {
    int start = 0; // minutes of the day's wall clock
    int end = 0;
};
// Where an event lies on `day` in `zone`, clipped to that day; nothing when
// it does not touch the day. An all-day event covers the whole day.
[[nodiscard]] std::optional<Placement> placeOn(const TarnCalendarEvent &event, const QDate &day, const QTimeZone &zone);
// "09:00 – 10:30" in `zone`, or "All day".
[[nodiscard]] QString timeLabel(const TarnCalendarEvent &event, const QTimeZone &zone);
// The seven days from `monday` with the events on each, by start.
[[nodiscard]] QList<ScheduleDay> days(
    const QDate &monday, const QList<TarnCalendarEvent> &events, const QTimeZone &zone, const QDate &today);

// The month grid: six weeks from the Monday of the week holding the 1st.
inline constexpr int monthGridDays = 42;
// How many titles a day of the month grid shows.
inline constexpr int monthTitles = 3;

// The first day of the month `day` is in.
[[nodiscard]] QDate monthStart(const QDate &day);
// From the local midnight starting the grid's first day to the one after
// its last: exactly its days whatever clock changes lie between.
[[nodiscard]] std::pair<QDateTime, QDateTime> monthRange(const QDate &first, const QTimeZone &zone);
// "November 2026".
[[nodiscard]] QString monthLabel(const QDate &first);
// The grid's 42 days for the month starting `first`, each with the events
// touching it in `zone`, all-day first, then by start.
[[nodiscard]] QList<ScheduleMonthDay> monthDays(
    const QDate &first, const QList<TarnCalendarEvent> &events, const QTimeZone &zone, const QDate &today);

// A new event as typed: a title, a day ("yyyy-MM-dd"), a start and an end
// ("HH:mm", the end on the same day) in `zone` and an optional location;
// the draft to send, or why it cannot be sent. A wall time the clocks skip
// that day is refused rather than moved.
[[nodiscard]] std::variant<TarnCalendarEventDraft, QString> eventDraft(const QString &title, const QString &day,
    const QString &start, const QString &end, const QString &location, const QTimeZone &zone);

} // namespace ScheduleRules
