#include "screens/overview/OverviewRules.h"

#include <QLocale>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace OverviewRules {

QString doingLabel(const TarnTeamActivity &person)
{
    if (!person.working_on)
        return u"Nothing in progress"_s;
    return person.working_for ? *person.working_on + u" · "_s + *person.working_for : *person.working_on;
}

QString nextLabel(const TarnTeamActivity &person, const QDateTime &now)
{
    if (!person.next_event || !person.next_at)
        return {};
    const QDateTime at = QDateTime::fromString(*person.next_at, Qt::ISODateWithMs).toTimeZone(now.timeZone());
    return u"Next: %1 at %2"_s.arg(*person.next_event, at.toString(u"HH:mm"_s));
}

QString nextStatus(const QString &status)
{
    if (status == "packing"_L1)
        return u"shipped"_s;
    return status == "shipped"_L1 ? u"delivered"_s : QString();
}

QString statusLabel(const QString &status)
{
    if (status == "packing"_L1)
        return u"Packing"_s;
    if (status == "shipped"_L1)
        return u"Shipped"_s;
    return status == "delivered"_L1 ? u"Delivered"_s : status;
}

bool late(const TarnOrder &order, const QDate &today)
{
    const QDate eta = QDate::fromString(order.eta, Qt::ISODate);
    return order.status != "delivered"_L1 && eta.isValid() && eta < today;
}

QString etaLabel(const TarnOrder &order, const QDate &today)
{
    if (order.status == "delivered"_L1)
        return u"Delivered"_s;
    const QDate eta = QDate::fromString(order.eta, Qt::ISODate);
    if (!eta.isValid())
        return {};
    const qint64 days = today.daysTo(eta);
    if (days < 0)
        return days == -1 ? u"1 day late"_s : u"%1 days late"_s.arg(-days);
    if (days == 0)
        return u"Due today"_s;
    if (days == 1)
        return u"Due tomorrow"_s;
    return u"Due "_s + QLocale(QLocale::English).toString(eta, u"ddd d MMM"_s);
}

} // namespace OverviewRules
