#pragma once

#include "screens/schedule/ScheduleDay.h"
#include "screens/schedule/TarnCalendarEvent.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QTimeZone>

#include <optional>
#include <utility>

// The calendar's week: which instants it spans in a time zone and where each
// event falls on its days, QtCore only.
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

} // namespace ScheduleRules
