#include "inbox/TarnSnooze.h"

#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace TarnSnooze {

namespace {

QDateTime morningOf(const QDate &day, const QDateTime &now)
{
    return QDateTime(day, QTime(morningHour, 0), now.timeZone());
}

} // namespace

QList<TarnSnoozeChoice> choices(const QDateTime &now, Qt::DayOfWeek firstDayOfWeek)
{
    QList<TarnSnoozeChoice> out;
    const QDate today = now.date();
    if (now.time().hour() <= lastLaterTodayHour) {
        // Whole minutes: a preset shown at 14:02:37 reads "17:02", and sends that.
        const QDateTime minute(today, QTime(now.time().hour(), now.time().minute()), now.timeZone());
        const QDateTime later = minute.addSecs(qint64(laterTodayHours) * 3600);
        if (later.date() == today)
            out.append({ u"Later today"_s, later });
    }
    out.append({ u"Tomorrow morning"_s, morningOf(today.addDays(1), now) });
    int ahead = (int(firstDayOfWeek) - today.dayOfWeek() + 7) % 7;
    if (ahead == 0)
        ahead = 7;
    out.append({ u"Next week"_s, morningOf(today.addDays(ahead), now) });
    return out;
}

} // namespace TarnSnooze
