#include "screens/people/TimeClockRules.h"

using namespace Qt::StringLiterals;

namespace TimeClockRules {

QDate weekStart(QDate day)
{
    return day.addDays(1 - day.dayOfWeek());
}

WeekHours weekHours(const QList<TarnTimeEntry> &entries, QDate monday, const QTimeZone &zone, const QDateTime &now)
{
    WeekHours hours;
    const auto midnight = [&](int day) { return QDateTime(monday.addDays(day), QTime(0, 0), zone); };
    for (const TarnTimeEntry &entry : entries) {
        const QDateTime start = QDateTime::fromString(entry.clock_in, Qt::ISODateWithMs);
        const QDateTime end = entry.clock_out ? QDateTime::fromString(*entry.clock_out, Qt::ISODateWithMs) : now;
        if (!start.isValid() || !end.isValid() || end <= start)
            continue;
        // Days are cut at the zone's midnights, so a day across a clock
        // change is 23 or 25 hours long and still counted whole.
        for (int day = 0; day < 7; ++day) {
            const QDateTime from = std::max(start, midnight(day));
            const QDateTime to = std::min(end, midnight(day + 1));
            if (to > from)
                hours.daySeconds.at(day) += from.secsTo(to);
        }
    }
    for (const qint64 seconds : hours.daySeconds)
        hours.totalSeconds += seconds;
    return hours;
}

QString hoursText(qint64 seconds)
{
    const qint64 minutes = seconds / 60;
    return u"%1:%2"_s.arg(minutes / 60).arg(minutes % 60, 2, 10, QChar(u'0'));
}

QString editProblem(const QDateTime &clockIn, const QDateTime &clockOut, const QString &reason, const QDateTime &now)
{
    if (reason.trimmed().isEmpty())
        return u"Say why the entry is being corrected."_s;
    if (reason.size() > reasonLimit)
        return u"A reason is at most %1 characters."_s.arg(reasonLimit);
    if (!clockIn.isValid())
        return u"The clock-in time is not a time."_s;
    if (clockIn > now || (clockOut.isValid() && clockOut > now))
        return u"An entry cannot reach into the future."_s;
    if (clockOut.isValid() && clockOut <= clockIn)
        return u"Clocking out comes after clocking in."_s;
    if (clockOut.isValid() && clockIn.secsTo(clockOut) > longestEntrySeconds)
        return u"An entry is at most %1 hours; split a longer one."_s.arg(longestEntrySeconds / 3600);
    return {};
}

} // namespace TimeClockRules
