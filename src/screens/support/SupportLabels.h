#pragma once

#include <QDate>
#include <QString>

// The board's words for its values, as cards and lists show them.
namespace SupportLabels {

// "To do", "In progress", "Waiting", "Done"; an unknown status as it is.
[[nodiscard]] QString status(const QString &status);
// "Low", "Normal", "High", "Urgent".
[[nodiscard]] QString priority(const QString &priority);
// "Every week", "Every month", "Every quarter".
[[nodiscard]] QString every(const QString &every);
// A due day against today: "Overdue by 3 days", "Overdue since yesterday",
// "Due today", "Due tomorrow", "Due Mon 30 Nov"; empty for none or an
// unreadable day. A done task is never overdue: "Was due Mon 30 Nov".
[[nodiscard]] QString due(const QString &day, const QDate &today, bool done);
// "45 min", "1 h", "2 h 05 min".
[[nodiscard]] QString minutes(qint64 minutes);
// A running timer's time: "0:04:09", "12:00:00".
[[nodiscard]] QString elapsed(qint64 milliseconds);

} // namespace SupportLabels
