#pragma once

#include <QDateTime>
#include <QString>

// The booking links' words, QtCore only.
namespace ScheduleLabels {

// "30 min", "1 hour", "1 h 30 min".
[[nodiscard]] QString duration(qint64 minutes);
// A coming time as the lists show it in `now`'s zone: "Today 14:00",
// "Tomorrow 09:30", "Thu 3 Dec, 10:00".
[[nodiscard]] QString when(const QString &startAt, const QDateTime &now);

} // namespace ScheduleLabels
