#include "screens/workplan/WorkPlanRules.h"

#include <QLocale>
#include <QRegularExpression>
#include <QTime>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace WorkPlanRules {

QDate weekOf(const QDate &day)
{
    return day.addDays(1 - day.dayOfWeek());
}

QString weekLabel(const QDate &monday)
{
    const QDate sunday = monday.addDays(6);
    const QLocale english(QLocale::English);
    const QString end = english.toString(sunday, u"d MMM yyyy"_s);
    if (monday.year() != sunday.year())
        return u"%1 – %2"_s.arg(english.toString(monday, u"d MMM yyyy"_s), end);
    if (monday.month() != sunday.month())
        return u"%1 – %2"_s.arg(english.toString(monday, u"d MMM"_s), end);
    return u"%1 – %2"_s.arg(monday.day()).arg(end);
}

QString dayLabel(const QString &isoDay)
{
    const QDate day = QDate::fromString(isoDay, Qt::ISODate);
    return day.isValid() ? QLocale(QLocale::English).toString(day, u"dddd d MMM"_s) : isoDay;
}

QList<WorkPlanRow> rows(const TarnWorkPlan &plan, const QString &person)
{
    struct Placed {
        WorkPlanRow row;
        qsizetype position;
    };
    QList<Placed> placed;
    for (qsizetype at = 0; at < plan.people.size(); ++at) {
        const TarnWorkPlanPerson &who = plan.people.at(at);
        if (!person.isEmpty() && who.id != person)
            continue;
        for (const TarnWorkEntry &entry : who.entries)
            placed.append({ { entry.id, who.name, entry }, at });
    }
    // Stable: entries the service answered in the same place keep its order.
    std::stable_sort(placed.begin(), placed.end(), [](const Placed &a, const Placed &b) {
        const TarnWorkEntry &x = a.row.entry;
        const TarnWorkEntry &y = b.row.entry;
        if (x.day != y.day)
            return x.day < y.day;
        if (a.position != b.position)
            return a.position < b.position;
        return x.time.value_or(QString()) < y.time.value_or(QString());
    });
    QList<WorkPlanRow> out;
    out.reserve(placed.size());
    for (const Placed &p : placed)
        out.append(p.row);
    return out;
}

QList<WorkPlanProgress> progress(const TarnWorkPlan &plan)
{
    QList<WorkPlanProgress> out;
    for (const TarnWorkPlanPerson &who : plan.people) {
        const auto done = std::count_if(
            who.entries.begin(), who.entries.end(), [](const TarnWorkEntry &entry) { return entry.done; });
        out.append({ who.id, who.name, who.role, int(who.entries.size()), int(done) });
    }
    return out;
}

std::optional<QString> normalizedTime(const QString &typed)
{
    const QString text = typed.trimmed();
    if (text.isEmpty())
        return QString();
    static const QRegularExpression shape(u"^(\\d{1,2}):?(\\d{2})$"_s);
    const QRegularExpressionMatch match = shape.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QTime time(match.captured(1).toInt(), match.captured(2).toInt());
    if (!time.isValid())
        return std::nullopt;
    return time.toString(u"HH:mm"_s);
}

} // namespace WorkPlanRules
