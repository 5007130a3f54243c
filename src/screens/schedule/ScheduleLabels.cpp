#include "screens/schedule/ScheduleLabels.h"

#include <QLocale>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace ScheduleLabels {

QString duration(qint64 minutes)
{
    if (minutes < 60)
        return u"%1 min"_s.arg(minutes);
    const QString hours = minutes < 120 ? u"1 hour"_s : u"%1 hours"_s.arg(minutes / 60);
    return minutes % 60 == 0 ? hours : u"%1 h %2 min"_s.arg(minutes / 60).arg(minutes % 60);
}

QString when(const QString &startAt, const QDateTime &now)
{
    const QDateTime at = QDateTime::fromString(startAt, Qt::ISODateWithMs).toTimeZone(now.timeZone());
    if (!at.isValid())
        return {};
    const QString time = at.toString(u"HH:mm"_s);
    const qint64 days = now.date().daysTo(at.date());
    if (days == 0)
        return u"Today "_s + time;
    if (days == 1)
        return u"Tomorrow "_s + time;
    return QLocale(QLocale::English).toString(at, u"ddd d MMM, HH:mm"_s);
}

} // namespace ScheduleLabels
