#include "screens/owner/OwnerFigures.h"

#include <QLocale>

#include <numeric>

using namespace Qt::StringLiterals;

namespace {

QString counted(qint64 n, const QString &one, const QString &many)
{
    return n == 1 ? u"1 "_s + one : u"%1 %2"_s.arg(n).arg(many);
}

// How many of `total` are past due, or that none are.
QString overdueLine(qint64 total, qint64 overdue, const QString &one, const QString &many)
{
    if (total == 0)
        return u"Nothing outstanding"_s;
    const QString open = counted(total, one, many);
    return overdue == 0 ? open + u", none overdue"_s : u"%1, %2 overdue"_s.arg(open).arg(overdue);
}

} // namespace

namespace OwnerFigures {

QString money(qint64 cents)
{
    return QLocale(QLocale::English).toCurrencyString(double(cents) / 100, u"$"_s, 0);
}

QString minutes(qint64 minutes)
{
    if (minutes <= 0)
        return {};
    const qint64 hours = minutes / 60;
    const qint64 rest = minutes % 60;
    if (hours == 0)
        return u"%1m"_s.arg(rest);
    return rest == 0 ? u"%1h"_s.arg(hours) : u"%1h %2m"_s.arg(hours).arg(rest);
}

QList<OwnerFigure> figures(const TarnTeamSnapshot &s)
{
    const TarnMoneyMonth now = s.months.value(1);
    const TarnMoneyMonth before = s.months.value(0);
    const qint64 calls = std::accumulate(
        s.team.begin(), s.team.end(), qint64(0), [](qint64 sum, const TarnTeamWeek &week) { return sum + week.calls; });
    return {
        { u"moneyIn"_s, u"Money in"_s, money(now.money_in), u"Last month "_s + money(before.money_in), u"documents"_s,
            u"Dashboard"_s, false },
        { u"moneyOut"_s, u"Money out"_s, money(now.money_out), u"Last month "_s + money(before.money_out),
            u"documents"_s, u"Transactions"_s, false },
        { u"invoices"_s, u"Open invoices"_s, money(s.open_invoices_amount),
            overdueLine(s.open_invoices, s.open_invoices_overdue, u"invoice"_s, u"invoices"_s), u"documents"_s,
            u"Invoices"_s, s.open_invoices_overdue > 0 },
        { u"bills"_s, u"Unpaid bills"_s, money(s.unpaid_bills_amount),
            overdueLine(s.unpaid_bills, s.unpaid_bills_overdue, u"bill"_s, u"bills"_s), u"documents"_s, u"Expenses"_s,
            s.unpaid_bills_overdue > 0 },
        { u"payments"_s, u"Payments received"_s, money(s.payments_received_amount),
            counted(s.payments_received, u"payment this month"_s, u"payments this month"_s), u"payments"_s, {}, false },
        { u"support"_s, u"Support load"_s, QString::number(s.support_open),
            overdueLine(s.support_open, s.support_overdue, u"open task"_s, u"open tasks"_s), u"support"_s,
            u"Maintenance"_s, s.support_overdue > 0 },
        { u"inbox"_s, u"Inbox waiting"_s, QString::number(s.inbox_waiting),
            s.inbox_waiting == 0
                ? u"Every conversation has an answer"_s
                : counted(s.inbox_waiting, u"conversation needs a reply"_s, u"conversations need a reply"_s),
            u"calls"_s, u"Inbox"_s, s.inbox_waiting > 0 },
        { u"calls"_s, u"Calls this week"_s, QString::number(calls), u"Made and taken since Monday"_s, u"calls"_s,
            u"Calls"_s, false },
    };
}

} // namespace OwnerFigures
