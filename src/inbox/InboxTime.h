#pragma once

#include <QDateTime>
#include <QString>

// How the inbox shows the service's times: the time of day for today, else
// the day and month, in the desktop's time zone.
namespace InboxTime {

[[nodiscard]] QString label(const QString &serviceTime, const QDateTime &now = QDateTime::currentDateTime());

} // namespace InboxTime
