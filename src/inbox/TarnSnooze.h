#pragma once

#include "inbox/TarnSnoozeChoice.h"

#include <QDateTime>
#include <QList>

// The snooze presets, computed from the current time in the person's own
// time zone (`now` carries it) and the first day of their week.
//
// - "Later today": three hours on, offered only before 21:00, so that it
//   still falls on the same day.
// - "Tomorrow morning": the next calendar day at 08:00.
// - "Next week": 08:00 on the next first day of the week; on that day
//   itself, a week later.
namespace TarnSnooze {

inline constexpr int laterTodayHours = 3;
inline constexpr int lastLaterTodayHour = 20; // 20:59 still offers it, 21:00 not
inline constexpr int morningHour = 8;

[[nodiscard]] QList<TarnSnoozeChoice> choices(const QDateTime &now, Qt::DayOfWeek firstDayOfWeek = Qt::Monday);

} // namespace TarnSnooze
