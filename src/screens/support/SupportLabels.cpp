#include "screens/support/SupportLabels.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString dayName(const QDate &day)
{
    return QLocale(QLocale::English).toString(day, u"ddd d MMM"_s);
}

QString titleOf(const QString &value, const QStringList &values, const QStringList &titles)
{
    const qsizetype at = values.indexOf(value);
    return at < 0 ? value : titles.at(at);
}

} // namespace

namespace SupportLabels {

QString status(const QString &status)
{
    return titleOf(status, { u"todo"_s, u"in_progress"_s, u"waiting"_s, u"done"_s },
        { u"To do"_s, u"In progress"_s, u"Waiting"_s, u"Done"_s });
}

QString priority(const QString &priority)
{
    return titleOf(
        priority, { u"low"_s, u"normal"_s, u"high"_s, u"urgent"_s }, { u"Low"_s, u"Normal"_s, u"High"_s, u"Urgent"_s });
}

QString every(const QString &every)
{
    return titleOf(
        every, { u"week"_s, u"month"_s, u"quarter"_s }, { u"Every week"_s, u"Every month"_s, u"Every quarter"_s });
}

QString due(const QString &day, const QDate &today, bool done)
{
    const QDate date = QDate::fromString(day, Qt::ISODate);
    if (!date.isValid())
        return {};
    if (done)
        return u"Was due "_s + dayName(date);
    const qint64 days = today.daysTo(date);
    if (days == -1)
        return u"Overdue since yesterday"_s;
    if (days < 0)
        return u"Overdue by %1 days"_s.arg(-days);
    if (days == 0)
        return u"Due today"_s;
    if (days == 1)
        return u"Due tomorrow"_s;
    return u"Due "_s + dayName(date);
}

QString minutes(qint64 minutes)
{
    if (minutes < 60)
        return u"%1 min"_s.arg(minutes);
    if (minutes % 60 == 0)
        return u"%1 h"_s.arg(minutes / 60);
    return u"%1 h %2 min"_s.arg(minutes / 60).arg(minutes % 60, 2, 10, QChar(u'0'));
}

QString elapsed(qint64 milliseconds)
{
    const qint64 seconds = std::max<qint64>(0, milliseconds / 1000);
    return u"%1:%2:%3"_s.arg(seconds / 3600)
        .arg(seconds / 60 % 60, 2, 10, QChar(u'0'))
        .arg(seconds % 60, 2, 10, QChar(u'0'));
}

} // namespace SupportLabels
